#!/usr/bin/env bash
# Checks that what the pages of a folder link to is there: files, and headings within pages; and that
# docs/README.md lists all the others of docs.
#
#     links.sh FOLDER
set -euo pipefail
cd "$1"
mapfile -t pages < <(find . -name '*.md' -not -path './build/*' | sort)

# "PAGE anchor NAME" for each heading, NAME as links call it, and "PAGE LINE TARGET" for each link to
# something of ours.
scan() {
  awk '
    FNR == 1 { fenced = 0 }
    /^```/ { fenced = !fenced }
    fenced { next }
    /^#+ / {
      text = tolower($0)
      sub(/^#+ +/, "", text)
      gsub(/[^a-z0-9 _-]/, "", text)
      gsub(/ /, "-", text)
      again = seen[FILENAME, text]++
      print FILENAME, "anchor", text (again ? "-" again : "")
    }
    {
      while (match($0, /\]\([^)]*\)/)) {
        target = substr($0, RSTART + 2, RLENGTH - 3)
        $0 = substr($0, RSTART + RLENGTH)
        if (target !~ /^[a-z]+:/) print FILENAME, FNR, target
      }
    }' "${pages[@]}"
}

# Sets page_there to a path in the form in which find names pages: without "folder/../".
normal() {
  local path=$1
  while [[ $path =~ ^(.*/)?[^./][^/]*/\.\./(.*)$ ]]; do
    path=${BASH_REMATCH[1]}${BASH_REMATCH[2]}
  done
  page_there=$path
}

declare -A anchors=() listed=([./docs/README.md]=1)
links=()
while read -r page kind value; do
  if [ "$kind" = anchor ]; then
    anchors["$page#$value"]=1
  else
    links+=("$page $kind $value")
  fi
done < <(scan)

broken=0
for link in "${links[@]}"; do
  read -r page line target <<<"$link"
  file=${target%%#*}
  anchor=${target#"$file"}
  [ -n "$file" ] && file=${page%/*}/$file || file=$page
  normal "$file"
  [ "$page" != ./docs/README.md ] || listed["$page_there"]=1
  if [ ! -e "$file" ] ||
    { [ -n "$anchor" ] && [ -z "${anchors["$page_there$anchor"]:-}" ]; }; then
    echo "$page:$line: nothing at $target"
    broken=$((broken + 1))
  fi
done
for page in "${pages[@]}"; do
  [[ $page != ./docs/* || -n "${listed["$page"]:-}" ]] && continue
  echo "docs/README.md does not list $page"
  broken=$((broken + 1))
done

echo "${#pages[@]} pages, ${#links[@]} links, $broken broken"
[ "${#links[@]}" -gt 0 ] && [ "$broken" -eq 0 ]
