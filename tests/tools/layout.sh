#!/usr/bin/env bash
# layout.sh ZORBET-MPS TESTS WORK: the scripts of the tests, as different authors wrote them, are formatted: they stay the
# same scripts with the same letters, and formatting them again changes nothing.
mps=$1 tests=$2 work=$3
source "$(dirname "$0")/../shell.sh" "$work" scripts
cp "$tests"/include/*.mps "$tests"/*/include/*.mps "$tests"/../sample/scripts/{memory,story}.mps scripts
for script in "$tests"/*/*.mps; do
  sed '/^;: file/,$d' "$script" >"scripts/$(basename "${script%/*}").$(basename "$script")"
done
cd scripts
tell() {
  "$mps" disasm --no-lines *.mps >"../listing.$1"
  cat ./*.mps | tr -d ' \t\r\n' >"../letters.$1"
}
tell was
"$mps" format --write . >../changed
tell is
cmp ../listing.was ../listing.is
cmp ../letters.was ../letters.is
[ "$(wc -l <../changed)" -gt 30 ]
"$mps" format --check .
