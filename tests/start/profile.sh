#!/usr/bin/env bash
# profile.sh ZORBET-MPS SAMPLE WORK: counts by line and by procedure, and the stacks; times are this machine's.
mps=$1 sample=$2 work=$3
source "$(dirname "$0")/../shell.sh" "$work" game
cp -r "$sample/RSC" game
printf '%s\n' 'yield off' 'procedure twice n' 'n=n+n' 'procedure clicked' '[' 'for i 1 3' 'call twice i' ']' \
  'boat=RAnimation 2001 7' 'set boat mouseDown clicked' >game/Startup.mps
echo '400 click 56 310' >visit
"$mps" profile game --input visit --until 1000 --folded stacks >told
awk '{ $1 = "" } / line$/ || $3 == "Startup.mps:3" || $3 == "Startup.mps:9" { print $2, $3 }
  $4 == "twice" || $4 == "clicked" { print $3, $4 }' told | diff - <(printf '%s\n' 'times line' '1 Startup.mps:9' \
  '3 Startup.mps:3' '16 clicked' '9 twice') || { cat told && exit 1; }
grep -qx 'clicked;twice;Startup.mps:3 [0-9]*' stacks
code=0 && "$mps" profile game --input nothing 2>told || code=$?
[ $code -eq 1 ] && grep -q nothing told
