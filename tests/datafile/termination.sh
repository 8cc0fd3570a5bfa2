#!/usr/bin/env bash
# termination.sh PROGRAM SAMPLE WORK [XVFB_RUN]: the host asks the program to end, with each of the
# signals that do so, also while a box is open in a window: the world is saved, the script told,
# which does not go on behind the box, and the exit code says that all is well. Nothing can be seen
# without a screen: that is refused.
program=$1 sample=$2 work=$3 xvfb=${4:-}
source "$(dirname "$0")/../shell.sh" "$work" content
cp -r "$sample/RSC" "$work/content/RSC"

check() { # SIGNAL STATEMENT COMMAND...
  local signal=$1 code=0 said=$work/content/debug.txt
  fail() { echo "$signal: $*" >&2; cat "$work/report" "$said" >&2; exit 1; }
  printf '%s\n' 'yield off' 'procedure leave' 'say "leaving"' 'port=RScenePort 0' \
    'set port exittingGame leave' 'world=RWorldPort 0' 'play world activateDataFile' \
    'play world activatePlayer "Ana"' 'say "playing"' "$2" >"$work/content/Startup.mps"
  shift 2
  rm -rf "$work/home" "$said"
  mkdir -p "$work/home"
  "$@" --content "$work/content" --home "$work/home" >"$work/report" 2>&1 &
  local process=$! target=$!
  timeout 30 sh -c "until grep -qs playing '$said'; do sleep 0.1; done"
  # What starts the program for a screen hands no signals on.
  [ "$1" = "$program" ] || target=$(pgrep -f -n "^$program .*$work/home")
  kill "-$signal" "$target"
  wait "$process" || code=$?
  [ "$code" -eq 0 ] || fail "exit code $code"
  grep -qa Ana "$work/home/ZORBET.DAT" || fail "nothing saved"
  [ "$(cat "$said")" = $'playing\nleaving' ] || fail "the script went another way"
}

for signal in TERM INT HUP; do
  check "$signal" '' "$program" --headless
  [ -z "$xvfb" ] || check "$signal" $'MessageBox "!"\nsay "on"' "$xvfb" -a "$program"
done
[ -n "$xvfb" ] || exit 0
check TERM '' "$xvfb" -a "$program"
if [ ! -e /dev/dri ]; then
  code=0 && env -u DISPLAY -u WAYLAND_DISPLAY -u SDL_VIDEODRIVER timeout 60 "$program" 2>"$work/report" || code=$?
  [ $code -eq 2 ] && grep -q 'no window can be opened (there is no screen' "$work/report"
fi
