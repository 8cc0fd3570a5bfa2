# What shell tests share. Sourced as "shell.sh WORK [FOLDER...]": the rest is done in WORK, which is empty but for these
# folders.
set -euo pipefail
rm -rf "$1" && mkdir -p "$1" && cd "$1"
[ $# -eq 1 ] || mkdir -p "${@:2}"

fail() { # TEXT: ends the test, and shows what the programs have said
  echo "$*; it said:" >&2
  cat said report errors {.,home,content,game}/zorbelog.txt game/debug.txt 2>/dev/null >&2 || true
  exit 1
}
says() { grep -qF -- "$1" said || fail "nothing told of: $1"; } # TEXT
