#!/usr/bin/env bash
# brokensaves.sh PROGRAM SAMPLE WORK: saves that fail at their first, second, third ... file
# operation, in every way. After each the data file is the old one or the new one, byte for byte,
# and a fresh start finds its player. Then two programs at once, and homes in which nothing can be
# kept.
program=$1 sample=$2 work=$3
source "$(dirname "$0")/../shell.sh" "$work" content home
cp -r "$sample/RSC" content/RSC
data=home/ZORBET.DAT

# save SCORE OPTIONS...: a visit that finds the score of before and leaves this one.
save() {
  printf '%s\n' 'yield off' 'world=RWorldPort 0' 'play world activateDataFile' 'play world activatePlayer "Ana"' \
    'get world playerScore score' 'say "score" score' "set world playerScore $1" quit >content/Startup.mps
  rm -f content/debug.txt content/zorbelog.txt 2>report || true
  "$program" --headless --content content --home home --seed 1 --until 5000 "${@:2}" >report 2>&1
}

save 11 && cp $data old
save 22 && cp $data new
cmp -s old new && fail "the saves do not differ"
for how in error full short kill; do
  reached=1
  for ((n = 1; reached; ++n)); do
    [ "$n" -le 60 ] || fail "$how: no save ever succeeds"
    rm -f home/*
    cp old $data
    code=0 && save 22 --break-file "$n:$how" || code=$?
    cmp -s $data old || cmp -s $data new || fail "$n:$how leaves neither file"
    told=0 && grep -aqs "is not stored" content/zorbelog.txt home/zorbelog.txt && told=1
    [ "$(grep -c '^zorbet: O Zorbet não consegue guardar' report)" -eq "$told" ] ||
      fail "$n:$how: the player is not told once"
    [ "$how" = kill ] || [ "$code" -eq 0 ] || fail "$n:$how ends the program with $code"
    [ $told -ne 0 ] || [ $code -ne 0 ] || reached=
    save 33 || fail "$n:$how: the next start fails"
    grep -qsE '^score (11|22)$' content/debug.txt || fail "$n:$how: the player is lost"
  done
  echo "$how: $((n - 2)) operations"
  [ "$n" -gt 4 ] || fail "$how: hardly anything was broken"
done

# A second program with the same home is told of the first one, looks again, and saves nothing.
cp -r content second
sed -i 's/Ana/Rui/' second/Startup.mps
sed -i '/^quit/d' content/Startup.mps
rm home/* content/debug.txt
echo '0 answer Retry' >again
"$program" --headless --content content --home home --until 4000000000 >/dev/null &
first=$!
until grep -qs score content/debug.txt; do sleep 0.1; done
"$program" --headless --content second --home home --input again >report
[ "$(grep -c $'\tbox\tError\t0x115\tO Zorbet já está aberto' report)" -eq 2 ] || fail "not told"
kill $first
wait $first && grep -qa Ana $data && [ "$(ls home)" = ZORBET.DAT ] || fail "both have saved"

# Where nothing can be kept the player is told at once and once, and the log finds another place.
tells() { # WHAT
  save 44 && [ "$(grep -c "^zorbet: O Zorbet não consegue $1" report)" -eq 1 ] || fail "$1"
}
rm $data && mkdir $data
tells "abrir o jogo guardado em $work/$data: fica como está"
rm -r home && cp old home
rm content/zorbelog.txt && mkdir content/zorbelog.txt
XDG_STATE_HOME=$work/state tells "guardar o jogo na pasta $work/home: algo falhou"
grep -q "Nothing can be stored" state/zorbet/zorbelog.txt
