#!/usr/bin/env bash
# randomplayer.sh PROGRAM SAMPLE WORK [SECONDS [SEED]]
#
# Plays every scene of the sample at random, without a window: clicks, drags, double clicks, keys, the exit
# screen, another program in front; every other visit with the mark of keys alone. Scripts, log and sanitizers may
# complain of nothing, the game must end as it should, and no sign and no gem may get lost. A visit begins in each of
# the scenes, anywhere in the story, and is so many seconds long, of the game's own time; one more is taken from scene
# to scene all the time. The same seed is the same visit. For a night:
#
#     for seed in $(seq 1 31 3000); do randomplayer.sh build/release/bin/zorbet build/release/sample night 60 $seed; done
set -euo pipefail
program=$1 sample=$2 work=$3 seconds=${4:-40} seed=${5:-1} voyages=$(realpath "${0%/*}/voyages.mps")
rm -rf "$work"
mkdir -p "$work/content"
cd "$work"
cp -r "$sample"/* content
sed -i 's/\r$//; s/^    quit/    relay "signin.mps"/' content/scripts/*.mps # who leaves comes back
scenes=$(cd content/scripts && grep -l '^StartTransition' *.mps)

# Somebody has come so far by what the children of the voyages do, and may win again what is given away; before they go,
# all is won that was shared out.
sed '1,/activateDataFile/d; /^burned=0/,$d; s/\r//' "$voyages" >content/scripts/chance.mps
cat >>content/scripts/chance.mps <<'END'
include story.mps
procedure begin
[
    play world removePlayer "Ana"
    play world activatePlayer "Ana"
    call any 8
    for RESULT>1
    [
        call goOn
        call any 8
    ]
    call any 40
    for round 1 RESULT
        call something
    call any 12
    play world backpackRemoveObject RESULT-1
    call any 4
    set world lampStep RESULT
    set world chartLevel RESULT
]
procedure count
[
    for round 1 48
        call playGame round%8+1 1
    call findDoor
    call countGaps
    get world itemsPresentCount "CHUB" gathered
    get world itemsPresentCount "OHUB" gems
    if (gathered#signs)+(gems#RESULT)
        MessageBox "There are "+gathered+" signs, and "+gems+" gems for "+RESULT+" gaps."
]
procedure enter scene
[
    call findRoom
    if scene#"tower.mps"
        RESULT=scene
    relay RESULT
]
END

# The input file of a visit. Half of the time the pointer stays near where it was.
visit() {
  awk -v seed="$seed" -v end=$((seconds * 1000)) '
    function any(n) { return int(rand() * n) }
    function say(what) { print t " " what }
    function point(what) { say(what " " x " " y); t += 1 + any(30) }
    function near(at, size) { return any(2) ? any(size) : (at + any(61) + size - 30) % size }
    function tabs(n) { return n ? "Tab " tabs(n - 1) : "" }
    function move() { x = near(x, 640); y = near(y, 480); point("move") }
    BEGIN {
      srand(seed); x = any(640); y = any(480)
      count = split("Esc Esc Esc Enter Enter Up Down Left Right Backspace Delete PageUp PageDown Tab " \
                    "a b C Z - 1 . x y z", names)
      if (mark = seed % 2) print "0 keys on"
      for (t = 1; t < end; t += any(400)) {
        what = any(100)
        if (mark * any(4)) { say(keys = "key " tabs(any(9)) "Enter " tabs(any(9)) "Enter"); t += 25 * length(keys) }
        else if (what < 10) move()
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
  local code=0
  ((++seed))
  printf '%s\n' 'yield off' 'include memory.mps' 'play world activateDataFile' 'include chance.mps' 'call begin' \
    "call enter \"$1\"" >content/Startup.mps
  [ "$1" != Startup.mps ] || cp "$sample/Startup.mps" content
  visit >input
  rm -rf home report && mkdir home
  "$program" --headless --content content --home home --seed "$seed" --step 10 --input input \
    --language "${languages[seed / 2 % 2]}" --until $((seconds * 1000)) >report 2>errors || code=$?
  grep -vE $'\t(title|cursor)\t|\t0x24\t|\tend\tuntil$' report | sort -k 2 -u >>errors || true
  grep -E '^(ERROR|Warning): ' content/zorbelog.txt | sort -u >>errors || true
  [ $code -ne 0 ] || [ -s errors ] || return 0
  echo "$1 with seed $seed ended with $code:" >&2
  cat errors >&2
  failed=1
}

languages=(pt en)
failed=0
for scene in Startup.mps $scenes; do play $scene; done
{
  printf '%s\n' 'yield off' 'include chance.mps' 'play world activatePlayer "Ana"' 'call any 3' 'if RESULT=1' '[' \
    'call count' 'call begin' ']'
  cat -n <<<"$scenes" | sed -E 's/ *(.*)\t(.*)/hop.\1="\2"/'
  printf '%s\n' "call any $(wc -l <<<"$scenes")" 'call enter hop.RESULT'
} >content/scripts/again.mps
for scene in $scenes; do
  printf '%s\n' 'procedure onward' 'relay "again.mps"' 'RandomNumber 1 4' 'idle 0.4*RESULT*RESULT onward' >>"content/scripts/$scene"
done
for scene in $scenes; do play $scene; done
exit $failed
