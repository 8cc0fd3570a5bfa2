#!/usr/bin/env bash
# followpage.sh PROGRAMS COMPARE PAGE WORK: follows a page step by step in an empty folder: writes its files, types
# its commands (blocks marked "sh"), and compares what they print with what the page says ("output") and what was on
# the screen with the pictures it shows: that of a screenshot NAME.png of the commands before. Blocks marked "text"
# are for the eye only. Commands that print more, or end with another exit code than 0, are faults.
# With ZORBET_RENEW=1 in the environment the page's pictures are made anew.
programs=$(realpath -- "$1") compare=$(realpath -- "$2") page=$(realpath -- "$3") work=$(realpath -m -- "$4")
blocks=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)/blocks.awk
source "$(dirname "$0")/../shell.sh" "$work" blocks reader bin home
awk -v blocks="$work/blocks" -v follow=1 -f "$blocks" "$page" >"$work/list"

# A start that wants a window is played for two seconds without it, and prints only the boxes that it shows. Commands
# such as "zorbet new" are as they are.
cat >"$work/bin/zorbet" <<END
#!/usr/bin/env bash
set -o pipefail
[[ \$1 == --* && " \$* " != *" --headless "* ]] || exec "$programs/zorbet" "\$@"
"$programs/zorbet" "\$@" --headless --until 2000 2> >(grep '^zorbet: ' >&2) | awk -F '\t' '\$2 == "box" { print "box: " \$5 }'
END
chmod +x "$work/bin/zorbet"
export PATH="$work/bin:$programs:$PATH" HOME="$work/home"
unset XDG_DATA_HOME

stop() { echo "$page:$line: $1" && exit 1; }
folder=$work/reader
type_commands() { # the reader's terminal: a "cd" lasts
  printf '%s\n' "cd \"$folder\"" "trap 'pwd -P >\"$work/folder\"' EXIT" | cat - "$1" >"$work/commands"
  timeout 120 bash -e "$work/commands" >"$work/printed" 2>&1 </dev/null ||
    { cat "$work/printed"; stop "the commands end with an error"; }
  folder=$(cat "$work/folder")
}
text() { local -n into=$2 && into= && IFS= read -r -d '' into <"$1" || true; } # without another process
timeless() { sed 's/[0-9]*\.[0-9] s$/N s/' "$1"; }
check_printed() { # what the last commands printed
  local told printed
  text "$1" told && text "$work/printed" printed
  [ "$told" != "$printed" ] || { : >"$work/printed" && return; }
  diff -u --label "the page" --label "the programs" <(timeless "$1") <(timeless "$work/printed") ||
    stop "what is printed differs from the page"
  : >"$work/printed"
}
check_picture() { # wherever the reader keeps the screenshot
  local picture shown
  picture=${page%/*}/$1
  shown=$(find "$work/reader" -name "${1##*/}" \( -path '*/visits/*' -o -path '*/reader/*/tests/*' \))
  [ -n "$shown" ] || stop "no screenshot ${1##*/}"
  [ "${ZORBET_RENEW:-}" != 1 ] || cp "$shown" "$picture"
  "$compare" "$shown" "$picture" "$work/different-${1##*/}" || stop "the screen differs from $1"
}

: >"$work/printed"
while read -r number line kind name; do
  block=$work/blocks/$number
  [ "$kind" = output ] || check_printed /dev/null
  case $kind in
  sh) type_commands "$block" ;;
  output) check_printed "$block" ;;
  file) cp "$block" "$folder/$name" ;;
  more) [ -e "$folder/$name" ] && cat "$block" >>"$folder/$name" ;;
  picture) check_picture "$name" ;;
  text) ;;
  *) stop "no text before the block names its file, or it is not closed" ;;
  esac
done <"$work/list"
check_printed /dev/null
[ -s "$work/list" ]
