#!/usr/bin/env bash
# The host asks the program to end, with each of the signals that do so: the world is saved, and the
# exit code says that all is well. With a window too, where there is a virtual screen.
#
#     termination.sh PROGRAM SAMPLE WORK [XVFB_RUN]
set -euo pipefail

program=$1 sample=$2 work=$3 xvfb=${4:-}
rm -rf "$work"
mkdir -p "$work/content"
cp -r "$sample/RSC" "$work/content/RSC"
cat >"$work/content/Startup.mps" <<'END'
yield off
world=RWorldPort 0
play world activateDataFile
play world activatePlayer "Ana"
set world playerScore 7
say "playing"
END

check() { # SIGNAL COMMAND...
  local signal=$1
  shift
  rm -rf "$work/home" "$work/content/debug.txt"
  mkdir -p "$work/home"
  "$@" --content "$work/content" --home "$work/home" >"$work/report" 2>&1 &
  local process=$!
  for ((i = 0; i < 300; ++i)); do
    grep -qs playing "$work/content/debug.txt" && break
    sleep 0.1
  done
  # What starts the program for a screen hands no signals on.
  local target=$process
  [ "$1" = "$program" ] || target=$(pgrep -f -n "^$program .*$work/home")
  kill "-$signal" "$target"
  local code=0
  wait "$process" || code=$?
  [ "$code" -eq 0 ] || { echo "$signal: exit code $code" >&2; cat "$work/report" >&2; exit 1; }
  grep -qa Ana "$work/home/ZORBET.DAT" || { echo "$signal: nothing saved" >&2; exit 1; }
}

for signal in TERM INT HUP; do
  check "$signal" "$program" --headless
  if [ -n "$xvfb" ]; then SDL_AUDIODRIVER=dummy check "$signal" "$xvfb" -a "$program"; fi
done
