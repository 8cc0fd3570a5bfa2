#!/usr/bin/env bash
# Follows a page step by step in an empty folder: writes its files, types its commands, and compares what
# they print and what was on the screen with what the page says and shows. steps.awk tells how a page is
# read. Commands that print more than the page says, or end with another exit code than 0, are faults.
#
#     followpage.sh PROGRAMS COMPARE PAGE WORK
#
# PROGRAMS is the folder with zorbet, zorbet-rsc, zorbet-mps and soundmaker, COMPARE is goldencompare.
# What was made stays in WORK. With ZORBET_RENEW=1 in the environment the page's pictures are made anew.
set -euo pipefail
programs=$(realpath -- "$1") compare=$(realpath -- "$2") page=$(realpath -- "$3") work=$(realpath -m -- "$4")
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)

rm -rf "$work"
mkdir -p "$work/steps" "$work/reader" "$work/bin" "$work/home"
awk -v steps="$work/steps" -f "$here/steps.awk" "$page"

# A window would stay open until somebody closes it. A start that wants one is played for two seconds
# without it, and prints only the boxes that it shows.
cat >"$work/bin/zorbet" <<END
#!/usr/bin/env bash
set -o pipefail
for word; do
  [ "\$word" != --headless ] || exec "$programs/zorbet" "\$@"
done
"$programs/zorbet" "\$@" --headless --until 2000 | awk -F '\t' '\$2 == "box" { print "box: " \$5 }'
END
chmod +x "$work/bin/zorbet"
export PATH="$work/bin:$programs:$PATH" HOME="$work/home"
unset XDG_DATA_HOME

stop() {
  echo "$page:$line: $1"
  exit 1
}

# The reader's terminal: a "cd" lasts.
type_commands() {
  {
    echo "cd \"$folder\""
    echo "trap 'pwd -P >\"$work/folder\"' EXIT"
    cat "$1"
  } >"$work/commands"
  timeout 120 bash -e "$work/commands" >"$work/printed" 2>&1 </dev/null || {
    cat "$work/printed"
    stop "the commands end with an error"
  }
  folder=$(cat "$work/folder")
}

# What the last commands printed, against what the page says.
check_printed() {
  diff -u --label "the page" --label "the programs" "$1" "$work/printed" ||
    stop "what is printed differs from the page"
  : >"$work/printed"
}

# The screenshot of that name, wherever the reader keeps it, against the page's picture.
check_picture() {
  local name=${1##*/} picture shown
  picture=$(dirname "$page")/$1
  shown=$(find "$work/reader" -name "$name" -path '*/visits/*')
  [ -n "$shown" ] || stop "no screenshot $name"
  if [ "${ZORBET_RENEW:-}" = 1 ]; then
    mkdir -p "$(dirname "$picture")"
    cp "$shown" "$picture"
  else
    "$compare" "$shown" "$picture" "$work/different-$name" || stop "the screen differs from $1"
  fi
}

folder=$work/reader
steps=0
: >"$work/printed"
while read -r number line kind name; do
  text=$work/steps/$number.text
  steps=$((steps + 1))
  [ "$kind" = output ] || check_printed /dev/null
  case $kind in
    commands) type_commands "$text" ;;
    output) check_printed "$text" ;;
    file) cp "$text" "$folder/$name" || stop "$name cannot be written" ;;
    more)
      [ -e "$folder/$name" ] || stop "there is no $name to be added to"
      cat "$text" >>"$folder/$name"
      ;;
    picture) check_picture "$name" ;;
  esac
done <"$work/steps/list"
check_printed /dev/null

echo "$steps steps"
[ "$steps" -gt 0 ]
