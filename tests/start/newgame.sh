#!/usr/bin/env bash
# newgame.sh PROGRAMS COMPARE WORK: who makes a game with "zorbet new": it runs as it is, can be checked, packed and
# changed, and what cannot be made leaves nothing and harms nothing.
programs=$1 compare=$(realpath "$2") work=$3
source "$(dirname "$0")/../shell.sh" "$work"
PATH=$programs:$PATH

play() { # GAME: its visit, from an empty home
  rm -rf home && zorbet --headless --content "$1" --home home --seed 1 --input "$1/tests/first.input" >said 2>&1
  [ "$(grep -c $'\texpect\tmet\t' said)" -eq "$(grep -c ' expect ' "$1/tests/first.input")" ] || fail "not as expected"
}

# With RSC as it comes, and with RSC made anew.
zorbet new pond --title 'The Pond, étang' >said
says 'cd pond'
sed -n 's/^title=//p' pond/game.ini | grep -qxF 'The Pond, étang' && grep -qx identifier=org.example.pond pond/game.ini || fail "game.ini"
zorbet --version --content pond >said 2>&1 && says 'game: The Pond, étang 1.0'
[ -z "$(zorbet-mps check pond)" ] || fail "the check finds something"
play pond
"$compare" first.png pond/tests/first.png different.png
mv pond/RSC packed && (cd pond && zorbet-rsc pack resources.manifest -o RSC) && diff -r packed pond/RSC

# The three changes that its README.md proposes.
change() { sed -i "$1" "pond/$2" && ! cmp -s "$empty/$2" "pond/$2" || fail "nothing to change in $2"; }
mkdir -p "Été 2/" && (cd "Été 2" && zorbet new .) >said && empty="Été 2"
grep -qx 'title=Été 2' "$empty/game.ini" && grep -qx identifier=org.example.t_2 "$empty/game.ini" || fail "a folder's name"
change 's/Good morning! Please click me\./Hello!/' scripts/garden.mps
change 's/^home\.3=410/home.3=360/' scripts/garden.mps
change 's/442 395/392 395/' tests/first.input
change 's/#f07068/#60b0f0/g' art/flower-3.svg
play pond

# Refusals.
refused() { # TEXT ARGUMENT...
  code=0 && zorbet "${@:2}" >said 2>&1 || code=$?
  says "$1"
}
touch file && ln -s nowhere link && mkdir closed
ls -R >before
refused '"pond" is not empty' new pond/ && [ $code -eq 1 ] || fail "code $code"
refused '"file" is there already' new file
refused '"link" is there already' new link
refused "there is no folder \"$work/no\" to make the game in" new no/game
refused 'is no title' new game --title ''
refused 'is no title' new game --title $'two\nlines'
refused 'DIR is required' new && [ $code -eq 2 ] || fail "code $code"
refused 'no option may stand before' --content pond new game
(ulimit -f 4 && trap '' XFSZ && refused 'cannot be made: ' new full && [ $code -eq 1 ]) # as on a full disk
(ulimit -f 4 && trap '' XFSZ && refused 'cannot be made: ' new closed)
mkdir bin && cp "$(command -v zorbet)" bin && code=0 && bin/zorbet new game >said 2>&1 || code=$?
says 'install the program anew' && rm -r bin
ls -R | diff before - || fail "something was left, or taken"
