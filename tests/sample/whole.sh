#!/usr/bin/env bash
# whole.sh PROGRAM SAMPLE WORK INPUT...: the sample played to its end. All that the inputs expect must be so.
set -euo pipefail
program=$1 sample=$2 work=$3
for input in "${@:4}"; do
  rm -rf "$work"
  mkdir -p "$work/home"
  cd "$work"
  "$program" --headless --content "$sample" --home home --input "$input" --seed 1 >report 2>notes || { cat notes >&2; exit 1; }
  grep -P '\texpect\tfailed' report >&2 && exit 1
  [ "$(grep -cP '\texpect\tmet' report)" -eq "$(grep -c '^[0-9]* expect ' "$input")" ] || { cat report >&2; exit 1; }
done
