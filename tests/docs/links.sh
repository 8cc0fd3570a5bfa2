#!/usr/bin/env bash
# links.sh FOLDER: what its pages link to is there, files and headings within pages, and docs/README.md lists all
# the others of docs.
set -euo pipefail
cd "$1"
mapfile -t pages < <(find . -name '*.md' -not -path './build/*' | sort)
declare -A there=() listed=([./docs/README.md]=1)
links=0 broken=0
complain() { echo "$*"; broken=$((broken + 1)); }

# "PAGE#NAME" for each heading, NAME as links call it; then "FILE#NAME PAGE LINE" for each link to something of ours.
while read -r target page line; do
  [ -n "$page" ] || { there["$target"]=1; continue; }
  file=${target%%#*} links=$((links + 1))
  [ "$page" != ./docs/README.md ] || listed["$file"]=1
  [ -e "$file" ] && [ -n "${there["$target"]:-}" -o "$file" = "$target" ] || complain "$page:$line: nothing at $target"
done < <(awk '
  FNR == 1 { fenced = 0 }
  /^```/ { fenced = !fenced }
  fenced { next }
  /^#+ / {
    text = tolower($0)
    gsub(/^#+ +|[^a-z0-9 _-]/, "", text)
    gsub(/ /, "-", text)
    again = seen[FILENAME, text]++
    print FILENAME "#" text (again ? "-" again : "")
  }
  {
    while (match($0, /\]\([^)]*\)/)) {
      target = substr($0, RSTART + 2, RLENGTH - 3)
      $0 = substr($0, RSTART + RLENGTH)
      if (target ~ /^[a-z]+:/) continue
      folder = FILENAME
      if (target !~ /^#/) sub(/[^\/]*$/, "", folder)
      target = folder target
      while (sub(/[^\/.][^\/]*\/\.\.\//, "", target)) {}
      links[++count] = target " " FILENAME " " FNR
    }
  }
  END { for (i = 1; i <= count; ++i) print links[i] }' "${pages[@]}")
for page in "${pages[@]}"; do
  [[ $page != ./docs/* || -n "${listed["$page"]:-}" ]] || complain "docs/README.md does not list $page"
done
echo "${#pages[@]} pages, $links links, $broken broken"
[ "$links" -gt 0 ] && [ "$broken" -eq 0 ]
