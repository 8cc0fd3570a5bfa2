#!/usr/bin/env bash
# newcomer.sh PROGRAM SAMPLE WORK SCRIPTS [XVFB_RUN]: who starts a game for the first time: its own
# saves, its language, what is told of a folder that is no game or that says wrong things of itself,
# and a window.
program=$1 sample=$2 work=$3 scripts=$4 xvfb=${5:-}
source "$(dirname "$0")/../shell.sh" "$work" data/zorbet
export XDG_DATA_HOME=$work/data

game() { # FOLDER [game.ini]
  mkdir -p "$1"
  cp -r "$sample/RSC" "$1/RSC"
  printf 'w=RWorldPort 0\nplay w activateDataFile\nplay w activatePlayer "%s"\n' "$1" >"$1/Startup.mps"
  [ $# -eq 1 ] || printf "$2" >"$1/game.ini"
}
play() { "$program" --headless --until 300 "$@" >report 2>errors; }
says() { grep -qF -- "$1" errors || fail "nothing told of: $1"; }
saved() { grep -qa "$1" "$2/ZORBET.DAT" || fail "$1 is not saved in $2"; }

game one
game two
game named '; Latin-1\ntitle=\xd3\nidentifier=org.example.pond\n'
game wild 'identifier=../../one\nicon=../one/Startup.mps\nlanguages=\nlanguages=e_n\ncolour=3\n[boxes]\na=b\n[boxes en]\nyes=\xe2\x82\xac\nmaybe=x\nfoo'
for content in one two named; do
  play --content $content
  [ ! -s errors ] || fail "complaints of $content"
done
saved named data/zorbet/org.example.pond
for content in one two; do
  saved $content "$(echo data/zorbet/$content-????????????????)"
done
play --content wild
for line in 1 2 3 4 5 7 9 10 11; do says "wild/game.ini:$line: \""; done
[ "$(ls data/zorbet | wc -l)" -eq 4 ] || fail "the game chose a folder"
mv named pond && cp -r pond copy && sed -i s/named/copied/ copy/Startup.mps && play --content pond && play --content copy
saved named data/zorbet/org.example.pond # moved, they come along, and a game that is there loses none
saved copied "$(echo data/zorbet/org.example.pond@*)"
mv pond named
play --content named --home elsewhere && saved named elsewhere
touch one/ZORBET.INI && play --content one && saved one one

XDG_DATA_HOME=relative HOME=$work/user play --content two
saved two "$(echo user/.local/share/zorbet/two-*)"

# The sample's saves of earlier days go along.
mv one/ZORBET.DAT data/zorbet
echo kept >data/zorbet/ZORBET.BAK
play
saved one data/zorbet/org.zorbet.Zorbet
[ ! -e data/zorbet/ZORBET.DAT ] && [ ! -e data/zorbet/ZORBET.BAK ] || fail "not moved"

printf '1 command 59396\n1 answer No\n' >leave
for row in ':Quer mesmo sair do jogo?' 'languages=en,pt:Do you really want to leave the game?' \
  'languages=fr\n[boxes fr]\nREALLYLEAVE=" Partir? "\n[boxes en]\nreallyLeave=x: Partir? '; do
  printf "${row%:*}" >two/game.ini
  play --content two --input leave
  grep -qF $'\tZorbet Voyages\t0x24\t'"${row##*:}"$'\tNo' report || fail "not said: ${row##*:}"
done

printf '1 command 59393\n' >about
play --content two --input about
grep -qF 'KVO:Zorbet Voyages' report || fail "no version"
printf '0 answer checked Continuar\n' >tick
for boxes in 1 0; do
  play --content named --screen 800x600x8 --input tick
  [ "$(grep -c $'\tdialog\t' report)" -eq $boxes ] || fail "a warning comes again, or never"
done

code=0 && play --content two --screen 640x480x4 || code=$?
[ $code -eq 255 ] && grep -qF 'Video must be 256 colors or more!' report || fail "a shallow screen"
code=0 && play --content nowhere || code=$?
[ $code -eq 2 ] && says 'there is no folder "nowhere"'
rm one/Startup.mps
code=0 && play --content one || code=$?
[ $code -eq 1 ] && says "Startup.mps was not found in $work/one, $work/one/scripts"
rm -r one/RSC
play --content one && says "no resource library was found"
grep -qF $'\tbox\tError\t0x10\tO Zorbet não consegue ler o seu CD.' report || fail "no box"
says "$work/one/RSC"

# A window, on a screen without a monitor: a script runs and ends it.
[ -n "$xvfb" ] || exit 0
cp "$scripts/scene.mps" two/Startup.mps
timeout 60 "$xvfb" -a -s "-screen 0 800x600x24" "$program" --content two --seed 1 >report 2>errors ||
  fail "the window: $?"
tr -d '\r' <"$scripts/scene.mps" | sed -n 's/^;= //p' | cmp - two/debug.txt
