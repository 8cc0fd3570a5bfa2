#!/usr/bin/env bash
# Compares the words that a page describes with those that the program has, both ways.
#
#     vocabulary.sh class PAGE SOURCE...     tables of a class page, with the class tables
#     vocabulary.sh player PAGE SOURCE...    tables of a player's properties, with the rows of theirs
#     vocabulary.sh commands PAGE SOURCE...  commands and their arguments in headings, with the tables
#     vocabulary.sh keywords PAGE SOURCE     headings of the guide, with the compiler's keywords
#     vocabulary.sh options PAGE PROGRAM     the table of options, with what --help shows
set -euo pipefail
kind=$1 page=$2
shift 2

# Rows of class tables as "property NAME read/write", "property NAME read", "property NAME write",
# "method NAME", "event NAME".
classRows() {
  awk '
    /OMSEntry k[A-Za-z]*Vocabulary\[\]/ { inside = 1 }
    inside { text = text " " $0 }
    inside && /^};/ { inside = 0 }
    END {
      while (match(text, /oms::(data|readOnly|writeOnly|method|lasting|event)[<(]/)) {
        row = substr(text, RSTART + 5, RLENGTH - 6)
        text = substr(text, RSTART + RLENGTH)
        match(text, /"[^"]*"|::kDefaultMethod/)
        name = substr(text, RSTART + 1, RLENGTH - 2)
        if (name !~ /^[A-Za-z]+$/) name = "default"
        if (row == "data") print "property " name " read/write"
        else if (row == "readOnly") print "property " name " read"
        else if (row == "writeOnly") print "property " name " write"
        else if (row == "event") print "event " name
        else print "method " name
      }
    }' "$@"
}

# The same from the tables below the headings "Properties", "Methods" and "Events".
pageRows() {
  awk -F ' *[|] *' '
    /^#+ / {
      kind = /^#+ Properties$/ ? "property" : /^#+ Methods$/ ? "method" : /^#+ Events$/ ? "event" : ""
    }
    kind != "" && $2 ~ /^`[A-Za-z]+`$/ {
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
  player)
    have=$(playerRows "$@")
    told=$(playerPageRows)
    ;;
  commands)
    # With their arguments, which the page writes in capitals.
    have=$(cat "$@" | tr '\n' ' ' | grep -oE 'RCommand<[^>]*>\( *"[^)]*"\)' |
      sed -E -e 's/^[^"]*"([^"]*)", *"([^"]*)"\)$/\1 \U\2/' -e 's/^[^"]*"([^"]*)"\)$/\1/')
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
