#!/usr/bin/env bash
# Runs the examples of one page of the guide with the real program and compares what they say and
# show with what the page says. Blocks that are not there stand for nothing said and no box shown.
#
#     runexamples.sh PROGRAM SAMPLE PAGE WORK [CHECKER]
#
# SAMPLE is the built sample game, whose pictures the examples use. CHECKER is zorbet-mps; without it
# blocks marked "check" are left out. What was really written stays in WORK.
set -euo pipefail
shopt -s nullglob
program=$(realpath -- "$1") sample=$(realpath -- "$2") page=$(realpath -- "$3") work=$(realpath -m -- "$4")
checker=${5:+$(realpath -- "$5")}
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)

[ -d "$sample/RSC" ] || { echo "$sample is no built sample game" >&2; exit 1; }
rm -rf "$work"
mkdir -p "$work/blocks"
cd "$work"
awk -v blocks=blocks -f "$here/examples.awk" "$page"

failures=0

# compare WHAT EXPECTED ACTUAL: either file may be missing, which is the same as empty.
compare() {
  local expected=$2 actual=$3
  [ -e "$expected" ] || expected=/dev/null
  [ -e "$actual" ] || actual=/dev/null
  if ! diff -u --label "the page" --label "the program" "$expected" "$actual"; then
    echo "$page:$line: $1 differs from the page"
    failures=$((failures + 1))
  fi
}

complain() {
  echo "$page:$line: $1"
  failures=$((failures + 1))
}

# A run of the example, in the same home as those before.
play() {
  (cd "$example" && timeout 60 "$program" --headless --content content --home home --seed 1 \
    --until 5000 "${input[@]}" >report.txt 2>notes.txt)
}

for script in blocks/[0-9][0-9][0-9].mps; do
  example=$(basename "$script" .mps)
  blocks=$work/blocks/$example
  line=$(cat "$blocks.line")
  mkdir -p "$example/content" "$example/home"
  cp -r "$sample/RSC" "$example/content"
  cp "$script" "$example/content/Startup.mps"
  for game in "$blocks".game.*; do
    name=${game#"$blocks".game.}
    name=${name//%//}
    mkdir -p "$(dirname "$example/content/$name")"
    cp "$game" "$example/content/$name"
  done
  input=()
  [ -e "$blocks.input" ] && input=(--input "$blocks.input")

  code=0
  play || code=$?
  awk -F '\t' '$2 == "box" { print $5 }' "$example/report.txt" >"$example/boxes.txt"

  compare "what is said" "$blocks.output" "$example/content/debug.txt"
  compare "what the program noted" /dev/null "$example/notes.txt"
  if [ -e "$blocks.report" ]; then
    compare "the report" "$blocks.report" "$example/report.txt"
  else
    compare "the boxes" "$blocks.boxes" "$example/boxes.txt"
    [ "$code" -eq 0 ] || grep -q "	end	$code\$" "$example/report.txt" ||
      complain "the program ended with $code"
  fi
  for file in "$blocks".file.*; do
    name=${file#"$blocks".file.}
    compare "the file $name" "$file" "$example/content/$name"
  done
  if [ -e "$blocks.log" ]; then
    while IFS= read -r wanted; do
      grep -qxF -- "$wanted" "$example/content/zorbelog.txt" || complain "not in the log: $wanted"
    done <"$blocks.log"
  fi
  if [ -e "$blocks.input" ]; then
    while read -r _ what file; do
      [ "$what" != screenshot ] || [ -s "$example/$file" ] || complain "no screenshot $file"
    done <"$blocks.input"
  fi
  if [ -e "$blocks.check" ] && [ -n "$checker" ]; then
    (cd "$example/content" && "$checker" check Startup.mps >../check.txt 2>&1) || true
    compare "what the checker prints" "$blocks.check" "$example/check.txt"
  fi
  if [ -e "$blocks.again" ]; then
    rm -f "$example/content/debug.txt"
    play || complain "the second run ended with $?"
    compare "what is said again" "$blocks.again" "$example/content/debug.txt"
  fi
done

total=$(ls blocks/[0-9][0-9][0-9].mps | wc -l)
echo "$total examples, $failures differences"
[ "$failures" -eq 0 ]
