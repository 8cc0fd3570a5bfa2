#!/usr/bin/env bash
# keys.sh PROGRAM SAMPLE INPUT WORK: the sample played without a mouse. All that the input expects must be so.
set -euo pipefail
program=$1 sample=$2 input=$3 work=$4
rm -rf "$work"
mkdir -p "$work/home"
cd "$work"
"$program" --headless --content "$sample" --home home --input "$input" --seed 1 >report 2>notes || { cat notes >&2; exit 1; }
grep -P '\texpect\tfailed' report >&2 && exit 1
[ "$(grep -cP '\texpect\tmet' report)" -eq "$(grep -c '^[0-9]* expect ' "$input")" ] || { cat report >&2; exit 1; }
