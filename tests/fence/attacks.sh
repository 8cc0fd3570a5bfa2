#!/usr/bin/env bash
# attacks.sh PROGRAM RSC COMPONENT WORK: a game is a guest. None may read a secret that lies beside
# its folder, change what lies there, bring code, or grow without end.
program=$1 rsc=$2 component=$3 work=$4
source "$(dirname "$0")/../shell.sh" "$work" victim game cd RSC home config/zorbet
v="C:${work//\//\\}\\victim" # as scripts name it
e=${v//\\/\\\\}              # the same for printf
echo 'say LEAKED' >victim/secret.mps
echo precious >victim/precious
cp -r "$rsc" game/RSC
touch -d 2001-01-01 victim/precious victim
for link in link.mps=secret.mps link=precious folder=; do ln -s "../victim/${link#*=}" "game/${link%=*}"; done
ln -s ../.. game/up
ln victim/precious game/hard
ln -s ../victim scripts
cp "$component" victim/REvil.lrn
mkfifo game/pipe
outside() { find victim cd RSC -printf '%p %s %t\n'; }
before=$(outside)

play() {
  local code=0
  timeout 60 "$program" --headless --content game --cd cd --home home --until 200 "$@" >report 2>errors || code=$?
  case $code in 0 | 1 | 255) ;; *) fail "it ended with $code" ;; esac # the last two: as designed
}
# run SCRIPT [OPTION...]: the script is that of printf.
run() {
  printf "$1\n" >game/Startup.mps
  rm -f game/debug.txt game/zorbelog.txt
  play "${@:2}"
}
refused() { # what WHERE: something is told of it, and nothing happened
  [ "$(outside)" = "$before" ] || fail "changed by $1"
  ! grep -qs LEAKED game/debug.txt || fail "read by $1"
}
told() { grep -qsF -- "$1" game/zorbelog.txt home/zorbelog.txt report || fail "not told: $1"; }

# Every way to a file outside, for writing and as a script's part.
writes=()
for path in "$v\\FILE" '..\victim\FILE' '../victim/FILE' 'RSC\..\..\victim\FILE' "${v#C:}\\FILE" \
  'c:..\victim\FILE' 'folder\FILE' 'folder\..\victim\FILE' 'up\victim\FILE' '..\scripts\FILE' \
  'D:\..\..\victim\FILE' '\\?\'"$v\\FILE" 'C:\proc\self\cwd\victim\FILE'; do
  path=${path//\\/\\\\}
  writes+=("${path/FILE/precious}" "${path/FILE/new}")
  run "include \"${path/FILE/secret.mps}\"" && refused "include $path"
done
writes+=(link hard pipe zorbet.dat 'D:\\new' '..\\RSC\\new' 'C:\\dev\\shm\\zorbet' '')
run "$(printf 'OpenFile "%s"\nWriteToFile x\n' "${writes[@]}")" && refused OpenFile
[ "$(grep -c OpenFile: game/zorbelog.txt)" -eq ${#writes[@]} ] || fail "one was opened"
for statement in include relay; do
  for path in link.mps pipe "$e\\\\secret.mps"; do run "$statement \"$path\"" && refused "$statement $path"; done
done
told "$v\\secret.mps is not for this game"
run "include \"$e\\\\secret.mps\"" --trust
grep -q LEAKED game/debug.txt || fail "an author is not trusted"

# Links where the program itself writes.
for name in debug.txt zorbelog.txt; do
  for link in "ln -s ../victim/precious" "ln -s ../victim/new" "ln victim/precious"; do
    printf 'say hello\nLogMessage hello\n' >game/Startup.mps
    rm -f game/debug.txt game/zorbelog.txt
    $link game/$name
    play
    refused "$link $name"
    [ $name = debug.txt ] || told hello
  done
done

# A link that comes and goes while the file is opened.
echo mine >mine
while sleep 0.001; do
  ln -sfn ../victim/precious game/swap.new && mv -fT game/swap.new game/swap
  cp mine game/swap.new && mv -fT game/swap.new game/swap
done 2>/dev/null &
racer=$!
run 'yield off\ni=1\nfor i<500\n[\nOpenFile swap\nWriteToFile x\nCloseFile\ni=i+1\n]'
kill $racer
wait $racer 2>/dev/null || true
refused "a race"

# Native code: what is loaded leaves a mark before anything else of it runs.
export ZORBET_LOADED=$work/home/loaded XDG_CONFIG_HOME=$work/config
cp "$component" game/REVIL.LRN
ln -s ../victim/REvil.lrn game/RLink.lrn
echo none >game/RBad.lrn
while IFS='|' read -r class options permit expected says; do
  rm -f home/loaded
  printf '%b' "$permit" >config/zorbet/games.ini
  run "x=$class 1" $options
  [ -e home/loaded ] && loaded=yes || loaded=no
  [ $loaded = "$expected" ] || fail "$class with \"$options\" and \"$permit\" loaded: $loaded"
  [ -z "$says" ] || told "$says"
done <<ROWS
REvil|||no|--components
REvil||components=yes|no|
RLink|--components||no|
$e\\\\REvil|--components||no|
..\\\\victim\\\\REvil|--components||no|
RBad|--components||no|RBad.lrn is not loaded: $work/game/RBad.lrn: 
REvil|--components||yes|
REvil||[$work/game]\ncomponents=yes|yes|
ROWS
refused "a component"

flood() { run "i=0\nyield off\nfor $1\n[\ni=i+1\n$2\n]" && told "$3"; }
flood 1 'q.i=RQueue 1' 'there are more than 100000 objects'
flood 1 'q.i=i' 'there can be no more'
flood 'i<1100' 'OpenFile i' 'all that they may in one run'
[ "$(ls game | wc -l)" -lt 1020 ] || fail "too many files"
printf 'say hello\nsay hello\n' >game/Startup.mps
truncate -s 67108850 game/debug.txt
play
[ "$(stat -c %s game/debug.txt)" -le 67108864 ] || fail "debug.txt grows"
