#!/usr/bin/env bash
# recorded.sh PROGRAM GAME WORK: a visit in a window is recorded and played again without one, to the same saved
# games; other saved games stay as they are.
program=$1 game=$2 work=$3
source "$(dirname "$0")/../shell.sh" "$work" content
cp -r "$game/RSC" content
printf '%s\n' 'world=RWorldPort 0' 'play world activateDataFile' 'play world activatePlayer "Ana"' \
  'procedure tick' '[' 'say turns ?' ']' 'idle 0.2 tick' 'turns=0' 'for 1=1' 'turns=turns+1' >content/Startup.mps
fail() { echo "$*" >&2; head -n 9 visit.input report* errors >&2; exit 1; }
replay() { "$program" --headless --content content --input visit.input "$@" >report 2>errors; }
for visit in first second; do
  rm -f visit.input
  rm -f content/debug.txt
  SDL_VIDEODRIVER=dummy SDL_AUDIODRIVER=dummy "$program" --content content --home home --record visit.input &
  sleep 1
  kill $!
  wait $! || fail "the window ended with $?"
  mv content/debug.txt said
  replay --home "$visit" || fail "not played again"
  cmp content/debug.txt said && cmp home/ZORBET.DAT "$visit/ZORBET.DAT" || fail "another visit"
done
printf x >>second/ZORBET.DAT && cp second/ZORBET.DAT others
! replay --home second && grep -q 'second/ZORBET.DAT holds other saved games' errors || fail "nothing refused"
cmp second/ZORBET.DAT others && rm content/debug.txt && replay && cmp content/debug.txt said ||
  fail "not in a folder of its own"
