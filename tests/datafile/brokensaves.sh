#!/usr/bin/env bash
# Saves of the real program that fail at their first, second, third ... file operation, in every way.
# After each the data file is the old one or the new one, byte for byte, and a fresh start finds its
# player. Then two programs at once, and homes in which nothing can be kept.
#
#     brokensaves.sh PROGRAM SAMPLE WORK
set -euo pipefail

program=$1 sample=$2 work=$3
rm -rf "$work"
mkdir -p "$work/content" "$work/home"
cp -r "$sample/RSC" "$work/content/RSC"

script() { # SCORE
  cat >"$work/content/Startup.mps" <<END
yield off
world=RWorldPort 0
play world activateDataFile
play world activatePlayer "Ana"
get world playerScore score
say "score" score
set world playerScore $1
quit
END
}

play() { # OPTIONS...
  rm -f "$work/content/debug.txt" "$work/content/zorbelog.txt" 2>"$work/report" || true
  "$program" --headless --content "$work/content" --home "$work/home" --seed 1 --until 5000 "$@" \
    >"$work/report" 2>&1
}

fail() {
  echo "$1" >&2
  cat "$work/content/zorbelog.txt" "$work/home/zorbelog.txt" >&2 || true
  exit 1
}

data=$work/home/ZORBET.DAT
script 11 && play && cp "$data" "$work/old"
script 22 && play && cp "$data" "$work/new"
cmp -s "$work/old" "$work/new" && fail "the saves do not differ"

for how in error full short kill; do
  for ((n = 1; ; ++n)); do
    [ "$n" -le 60 ] || fail "$how: no save ever succeeds"
    rm -f "$work"/home/*
    cp "$work/old" "$data"
    script 22
    code=0
    play --break-file "$n:$how" || code=$?
    cmp -s "$data" "$work/old" || cmp -s "$data" "$work/new" || fail "$n:$how leaves neither file"
    told=0
    grep -aqs "is not stored" "$work"/content/zorbelog.txt "$work"/home/zorbelog.txt && told=1
    [ "$(grep -c '^zorbet: O Zorbet não consegue guardar' "$work/report")" -eq "$told" ] ||
      fail "$n:$how: the player is not told once"
    [ "$how" = kill ] || [ "$code" -eq 0 ] || fail "$n:$how ends the program with $code"
    reached=$told
    [ "$how" != kill ] || [ "$code" -eq 0 ] || reached=1

    script 33
    play || fail "$n:$how: the next start fails"
    grep -qsE '^score (11|22)$' "$work/content/debug.txt" || fail "$n:$how: the player is lost"
    [ "$reached" -eq 1 ] || break
  done
  echo "$how: $((n - 1)) operations"
  [ "$n" -gt 3 ] || fail "$how: hardly anything was broken"
done

# A second program with the same home is told of the first one, looks again, and saves nothing.
script 44
cp -r "$work/content" "$work/second"
sed -i 's/Ana/Rui/' "$work/second/Startup.mps"
sed -i '/^quit/d' "$work/content/Startup.mps"
rm "$work"/home/* "$work/content/debug.txt"
echo '0 answer Retry' >"$work/again"
"$program" --headless --content "$work/content" --home "$work/home" --until 4000000000 >/dev/null &
first=$!
until grep -qs score "$work/content/debug.txt"; do sleep 0.1; done
"$program" --headless --content "$work/second" --home "$work/home" --input "$work/again" >"$work/report"
[ "$(grep -c $'\tbox\tError\t0x115\tO Zorbet já está aberto' "$work/report")" -eq 2 ] || fail "not told"
kill $first
wait $first && grep -qa Ana "$data" && [ "$(ls "$work/home")" = ZORBET.DAT ] || fail "both have saved"

# Where nothing can be kept the player is told at once and once, and the log finds another place.
tells() { # WHAT
  play && [ "$(grep -c "^zorbet: O Zorbet não consegue $1" "$work/report")" -eq 1 ] || fail "$1"
}
rm "$data" && mkdir "$data"
tells "abrir o jogo guardado em $data: fica como está"
rm -r "$work/home" && cp "$work/old" "$work/home"
rm "$work/content/zorbelog.txt" && mkdir "$work/content/zorbelog.txt"
XDG_STATE_HOME=$work/state tells "guardar o jogo na pasta $work/home: algo falhou"
grep -q "Nothing can be stored" "$work/state/zorbet/zorbelog.txt"
