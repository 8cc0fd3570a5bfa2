#!/usr/bin/env bash
# randomplayer.sh PROGRAM SAMPLE WORK [SECONDS [SEED]]
#
# Plays every scene of the sample at random, without a window: clicks, drags, double clicks, keys, the exit
# screen, another program in front. No script may be complained of, and the game must end as it should. A visit
# begins in each of the scenes, at one of the four levels of its game, and is so many seconds long, of the game's
# own time; one more is taken from scene to scene all the time. The same seed is the same visit. For a night:
#
#     for seed in $(seq 100); do randomplayer.sh build/release/bin/zorbet build/release/sample night 3600 $seed; done
set -euo pipefail
program=$1 sample=$2 work=$3 seconds=${4:-40} seed=${5:-1}
rm -rf "$work"
mkdir -p "$work/content"
cd "$work"
cp -r "$sample/RSC" "$sample/scripts" "$sample/movies" content
sed -i 's/^    quit/    relay "signin.mps"/' content/scripts/*.mps # who leaves comes back
scenes=$(cd content/scripts && grep -l '^StartTransition' ./*.mps | sed 's,^./,,; s,\.mps$,,')

# The input file of a visit. Half of the time the pointer stays near where it was.
visit() {
  awk -v seed="$seed" -v end=$((seconds * 1000)) '
    function any(n) { return int(rand() * n) }
    function say(what) { print t " " what }
    function point(what) { say(what " " x " " y); t += 1 + any(30) }
    function near(at, size) { return any(2) ? any(size) : (at + any(61) + size - 30) % size }
    function move() { x = near(x, 640); y = near(y, 480); point("move") }
    BEGIN {
      srand(seed); x = any(640); y = any(480)
      count = split("Esc Esc Esc Enter Enter Up Down Left Right Backspace Delete PageUp PageDown Tab " \
                    "a b C Z - 1 . x y z", names)
      for (t = 1; t < end; t += any(400)) {
        what = any(100)
        if (what < 10) move()
        else if (what < 45) { if (any(4)) move(); point("down"); point("up") }
        else if (what < 65) { move(); point("down"); for (n = any(5); n >= 0; --n) move(); point("up") }
        else if (what < 68) { point("down"); point("up"); point("double"); point("up") }
        else if (what < 88) say("key " names[1 + any(count)])
        else if (what < 91) say("command 32")
        else if (what < 93) { say("answer No"); say("command 59396") }
        else if (what < 95) { say("background"); t += any(200); say("foreground") }
        else t += 4000
      }
    }'
}

play() { # SCENE
  local code=0 level=$((++seed % 4 + 1))
  # What there is before the guest book, and all that can be won.
  {
    printf '%s\n' 'yield off' 'include memory.mps' 'play world activateDataFile'
    echo 'play world activatePlayer "Ana"'
    for place in CWS1 CWS2 CWS3 CWS4 OWS4 OWS1 OWS2; do echo "set world currentLevel \"$place\" $level"; done
    echo "set world chartLevel $((level + 2))"
    for prize in 2 3 4; do echo "play world backpackAddObject $prize"; done
    echo "relay \"$1.mps\""
  } >content/Startup.mps
  [ "$1" != Startup ] || cp "$sample/Startup.mps" content
  visit >input
  rm -rf home report && mkdir home
  "$program" --headless --content content --home home --seed "$seed" --step 10 --input input \
    --until $((seconds * 1000)) >report 2>errors || code=$?
  grep $'\tbox\t' report | grep -v $'\t0x24\t' | sort -k 5 -u >>errors || true
  [ $code -ne 0 ] || [ -s errors ] || return 0
  echo "$1.mps with seed $seed ended with $code:" >&2
  cat errors >&2
  failed=1
}

failed=0
for scene in Startup $scenes; do play $scene; done
n=0
for scene in $scenes; do printf 'hop.%d="%s.mps"\n' $((n += 1)) "$scene"; done >hops
# The first statement of a timer's handler is done at once.
printf '%s\n' 'procedure onward' 'relay next' "RandomNumber 1 $n" 'next=hop.RESULT' 'idle 0.8 onward' >>hops
for scene in $scenes; do cat hops >>"content/scripts/$scene.mps"; done
for scene in $scenes; do play $scene; done
exit $failed
