#!/usr/bin/env bash
# gametest.sh PROGRAM SAMPLE WORK: the tests of a small game, in one scene of it: what passes, what fails and how it
# is told, and what is left of it.
program=$1 sample=$2 work=$3
source "$(dirname "$0")/../shell.sh" "$work" game/tests/deep
cp -r "$sample/RSC" game
printf '%s\n' 'yield off' 'Scene 100' 'RandomNumber 1 1000' 'number=RESULT' 'boat=RAnimation 2001 7' \
  'world=RWorldPort 0' 'play world activateDataFile' 'get world playerName who' 'say "hello" who' \
  'set boat colour 1' >game/quay.mps
printf '%s\n' 'world=RWorldPort 0' 'play world activateDataFile' 'play world activatePlayer "Ana"' >game/tests/player.mps
printf '%s\n' 'seed 5' 'scene quay' '500 expect said hello Ana' '500 screenshot deep/quay.png' \
  '500 expect property boat z 7' '500 expect box Property colour not found' >game/tests/good.input
printf '%s\n' 'scene quay.mps' '400 expect said hello' '500 expect no warnings' '500 screenshot quay.png' \
  '500 expect variable nobody 1' >game/tests/wrong.input
echo '5 dance' >game/tests/odd.input
cp -r game before

"$program" test game good --renew >/dev/null
cp game/tests/deep/quay.png game/tests/quay.png
"$program" test game good | sed -E 's/ +[0-9.]+ s$//' >said
sed -i 's/^Scene 100/Scene 100\nbuoy=RAnimation 2003 9/' game/quay.mps
code=0 && "$program" test game --results left --junit result.xml >>said || code=$?
[ $code -eq 1 ]
sed -i -E 's/ +[0-9.]+ s$//; s/[0-9]+ pixels differ, the first one at [0-9 ]+;/some pixels differ;/' said
diff -u - said <<'END'
ok      good  3 expectations, 1 picture
1 test, 0 failed
FAILED  good  3 expectations, 1 picture
        deep/quay.png: some pixels differ; see left/good/deep/quay.difference.png
FAILED  odd  0 expectations, 0 pictures
        game/tests/odd.input:1: unknown event "dance"
FAILED  wrong  3 expectations, 1 picture
        at 400 expected said hello, but there is: hello Ana
        at 500 expected no warnings, but there is: quay.mps:11: Property colour not found\n    set boat colour 1
        at 500 expected variable nobody 1, but there is: never set
        quay.png: some pixels differ; see left/wrong/quay.difference.png
3 tests, 3 failed
END
[ "$(grep -c '<failure message=' result.xml)" -eq 6 ] && [ -s left/good/deep/quay.difference.png ]
grep -q 'Property colour' left/wrong/zorbelog.txt
rm -r game/tests/deep game/tests/quay.png && git diff --no-index --quiet before/tests game/tests
[ ! -e game/debug.txt ]
code=0 && "$program" test game nothing 2>/dev/null || code=$?
[ $code -eq 2 ]
