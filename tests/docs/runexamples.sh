#!/usr/bin/env bash
# runexamples.sh PROGRAM SAMPLE PAGE WORK [CHECKER]
#
# Runs the examples of a page of the guide and compares what they say and show with what the page says. Without
# CHECKER, zorbet-mps, blocks marked "check" are left out. A fenced block marked "mps" begins an example, the
# script Startup.mps; these belong to it (none is nothing said, no box), and others are for the eye only:
#
#     mps NAME     another script of the same game
#     output       what it says; "again" in a second run
#     boxes        the texts of the boxes it shows; "report": the whole report of the run
#     input        what happens from outside
#     check        what "zorbet-mps check" prints
#     notes        what standard error has, where the warnings of boxes are too
#     log          lines that stand in the log
#     file NAME    the file NAME that the script writes
program=$(realpath -- "$1") sample=$(realpath -- "$2") page=$(realpath -- "$3") work=$(realpath -m -- "$4")
checker=${5:+$(realpath -- "$5")}
blocks=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)/blocks.awk
source "$(dirname "$0")/../shell.sh" "$work" blocks
rsc=$work/sample && mkdir -p "$rsc" && cp -r "$sample/RSC" "$sample/movies" "$rsc" # the examples share its files
awk -v blocks=blocks -f "$blocks" "$page" >list

failures=0
complain() { echo "$page:$line: $1" && failures=$((failures + 1)); }
# text FILE NAME: what the file has goes into the variable; of one that is missing nothing. Without another process.
text() { local -n into=$2 && into= && [ ! -e "$1" ] || IFS= read -r -d '' into <"$1" || true; }
# A file that is missing is the same as an empty one.
same() { # WHAT WAS IS
  local was is
  text "$2" was && text "$3" is
  [ "$was" = "$is" ] && return
  diff -u --label "the page" --label "the program" <(printf %s "$was") <(printf %s "$is") || true
  complain "$1 differs from the page"
}

examples=()
while read -r number line kind name; do
  at=${example:-}/$kind
  case $kind in
  mps)
    if [ -z "$name" ]; then
      examples+=("$line:$number")
      example=$number
      mkdir -p "$example/content" "$example/home"
      cp -rl "$rsc/RSC" "$rsc/movies" "$example/content"
    fi
    at=$example/content/${name:-Startup.mps} ;;
  file) at=$example/file/$name ;;
  unclosed) complain "a block is not closed" ;;
  output | again | boxes | input | report | check | log | notes) ;;
  *) continue ;;
  esac
  [ -n "${example:-}" ] && [ ! -e "$at" ] || complain "not the first such block of an example"
  [ -d "${at%/*}" ] || mkdir -p "${at%/*}"
  mv "blocks/$number" "$at"
done <list

# A run of the example, in the same home as those before.
play() {
  timeout 60 "$program" --headless --content content --home home --seed 1 --until 5000 \
    ${input:+--input $input} >is.report 2>is.notes
}
said() { [ ! -e content/debug.txt ] || iconv -f latin1 -t utf8 content/debug.txt >is.said; }
for example in "${examples[@]}"; do
  line=${example%:*}
  cd "$work/${example#*:}"
  input=$([ ! -e input ] || echo input)
  code=0 && play || code=$?
  said
  same "what is said" output is.said
  text is.report report
  [[ ! -e notes && $report == *$'\tbox\t'* ]] || same "what the program noted" notes is.notes
  if [ -e report ]; then
    same "the report" report is.report
  else
    : >is.boxes
    [[ $report != *$'\tbox\t'* ]] || awk -F '\t' '$2 == "box" { print $5 }' is.report >is.boxes
    same "the boxes" boxes is.boxes
    [[ $code -eq 0 || $report == *$'\tend\t'$code$'\n' ]] || complain "the program ended with $code"
  fi
  [ ! -e file ] || for file in file/*; do same "$file" "$file" "content/${file#*/}"; done
  [ ! -e log ] || { grep -xFf log content/zorbelog.txt || true; } | sort -u | cmp -s - <(sort -u log) ||
    complain "not all in the log"
  if [ -e check ] && [ -n "$checker" ]; then
    (cd content && "$checker" check Startup.mps >../is.check 2>&1) || true
    same "what the checker prints" check is.check
  fi
  if [ -e again ]; then
    rm -f content/debug.txt
    play || complain "the second run ended with $?"
    said
    same "what is said again" again is.said
  fi
done
echo "${#examples[@]} examples, $failures differences"
[ ${#examples[@]} -gt 0 ] && [ $failures -eq 0 ]
