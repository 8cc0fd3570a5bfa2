#!/usr/bin/env bash
# Compares the words that a page describes with those that the program has, both ways.
#
#     vocabulary.sh class PAGE MPS words CLASS...  tables of a page, with the words of its classes
#     vocabulary.sh pages FOLDER MPS words         pages of classes, with the classes
#     vocabulary.sh commands PAGE MPS words        headings with arguments, with the commands
#     vocabulary.sh player PAGE SOURCE...          tables of a player's properties, with their rows
#     vocabulary.sh keywords PAGE SOURCE           headings of the guide, with the keywords
#     vocabulary.sh options PAGE PROGRAM           the table of options, with what --help shows
#
# MPS is zorbet-mps.
set -euo pipefail
kind=$1 page=$2
shift 2

# Words of classes as "property NAME ACCESS", "method NAME", "event NAME".
classRows() { "$@" | sed -n -e 's/  .*//' -e '/^\(property\|method\|event\) /p'; }

# The same from the tables below the headings "Properties", "Methods" and "Events".
pageRows() {
  awk -F ' *[|] *' '
    /^#+ / {
      kind = /^#+ Properties$/ ? "property" : /^#+ Methods$/ ? "method" : /^#+ Events$/ ? "event" : ""
    }
    kind != "" && $2 ~ /^`[A-Za-z0-9]+`$/ {
      name = substr($2, 2, length($2) - 2)
      print kind " " name (kind == "property" ? " " $4 : "")
    }' "$page"
}

# The same of the properties that are no class's.
playerRows() {
  sed -n -e 's/^ *{"\([A-Za-z0-9]*\)".*nullptr},$/property \1 read/p;t' \
    -e 's/^ *{"\([A-Za-z0-9]*\)".*},.*/property \1 read\/write/p' \
    -e 's/.* kPlayerName = "\([A-Za-z]*\)";/property \1 read\/write/p' "$@"
}

playerPageRows() {
  awk -F ' *[|] *' '
    /^#+ / { inside = /^#+ (Stored|Computed) properties$/ }
    inside && $2 ~ /^`[A-Za-z0-9]+`$/ {
      print "property " substr($2, 2, length($2) - 2) " " $4
    }' "$page"
}

case $kind in
  class)
    have=$(classRows "$@")
    told=$(pageRows)
    ;;
  pages)
    # What all have in common stands on one page.
    have=$("$@" | sed -n -e '/^class object/d' -e '/^class OMTrinket /d' -e '/^class OMAnimation /d' \
      -e '/^class Action /d' -e '/^class ActionContainer /d' -e '/^class RContainer /d' -e '/^class RAnswer /d' \
      -e 's/^class \([^ ]*\).*/\1/p')
    told=$(cd "$page" && ls | sed -n -e '/^trinkets.md$/d' -e '/^actions.md$/d' \
      -e '/^containers.md$/d' -e '/^answers.md$/d' -e 's/\.md$//p')
    ;;
  player)
    have=$(playerRows "$@")
    told=$(playerPageRows)
    ;;
  commands)
    # With their arguments, which the page writes in capitals.
    have=$("$@" | sed -n -E -e 's/^command ([A-Za-z]*)  (.*)$/\1 \U\2/p' -e 's/^command ([A-Za-z]*)$/\1/p')
    told=$(sed -n 's/^### `\([A-Za-z]*[^`]*\)`.*/\1/p' "$page")
    ;;
  keywords)
    have=$(sed -n 's/^ *{"\([a-z]*\)", Form::.*/\1/p' "$1"; echo include)
    told=$(sed -n '/^###* .*`/p' "$page" | grep -o '`[a-z]*`' | tr -d '`')
    ;;
  options)
    have=$("$1" --help | sed -n 's/^ *\(-h,\)\{0,1\}\(--[a-z-]*\).*/\2/p')
    told=$(sed -n 's/^| `\(--[a-z-]*\).*/\1/p' "$page")
    ;;
esac

[ -n "$have" ] || { echo "nothing found in $*" >&2; exit 1; }
if ! diff -u --label "the page" --label "the program" \
  <(sort -u <<<"$told") <(sort -u <<<"$have"); then
  echo "$page does not tell what the program has"
  exit 1
fi
