#!/usr/bin/env bash
# The host asks the program to end, with each of the signals that do so, also while a box is open, in a
# window where there is a virtual screen: the world is saved, the script told, which does not go on behind
# the box, and the exit code says that all is well. Nothing can be seen without a screen: that is refused.
#
#     termination.sh PROGRAM SAMPLE WORK [XVFB_RUN]
set -euo pipefail

program=$1 sample=$2 work=$3 xvfb=${4:-}
rm -rf "$work"
mkdir -p "$work/content"
cp -r "$sample/RSC" "$work/content/RSC"

check() { # SIGNAL STATEMENT COMMAND...
  local signal=$1
  printf '%s\n' 'yield off' 'procedure leave' 'say "leaving"' 'port=RScenePort 0' \
    'set port exittingGame leave' 'world=RWorldPort 0' 'play world activateDataFile' \
    'play world activatePlayer "Ana"' 'say "playing"' "$2" >"$work/content/Startup.mps"
  shift 2
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
  [ "$(cat "$work/content/debug.txt")" = $'playing\nleaving' ] ||
    { echo "$signal: the script went another way" >&2; cat "$work/content/debug.txt" >&2; exit 1; }
}

for signal in TERM INT HUP; do
  check "$signal" '' "$program" --headless
  [ -z "$xvfb" ] || check "$signal" $'MessageBox "!"\nsay "on"' "$xvfb" -a "$program"
done
[ -z "$xvfb" ] || check TERM '' "$xvfb" -a "$program"
if [ -n "$xvfb" ] && [ ! -e /dev/dri ]; then
  code=0 && env -u DISPLAY -u WAYLAND_DISPLAY -u SDL_VIDEODRIVER timeout 60 "$program" 2>"$work/report" || code=$?
  [ $code -eq 2 ] && grep -q 'no window can be opened (there is no screen' "$work/report"
fi
