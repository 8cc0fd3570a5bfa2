#!/usr/bin/env bash
# installed.sh CMAKE BUILD SOURCES WORK: what "cmake --install" makes runs wherever it is moved to, also where nobody may
# write, knows no path of its making, and has no more in it than what was made for it.
cmake=$1 build=$2 sources=$3 work=$4
[ ! -e "$work" ] || chmod -R u+w "$work"
source "$(dirname "$0")/../shell.sh" "$work"

touch "$build"/{sample,newgame}/zorbelog.txt # as every player of the build's games leaves it
"$cmake" --install "$build" --prefix "$work/made" >/dev/null
rm -rf elsewhere && mv made elsewhere && prefix=$work/elsewhere
! grep -rlF -e "$build" -e "$sources" -e "$work" "$prefix" || fail "these tell where they were made"
left=$(find "$prefix/share/zorbet" -name '*.txt' ! -name spoken.txt -o -name '*.INI' -o -name '*.DAT')
[ -z "$left" ] || fail "left by players: $left"
"$sources/tests/docs/links.sh" "$prefix/share/doc/zorbet"

# The sample game, whose place is read-only but for root; without it the programs say so.
chmod -R a-w "$prefix"
cp -R "$prefix/bin" .
export XDG_DATA_HOME=$work/data XDG_STATE_HOME=$work/state PATH=$prefix/bin:$PATH
zorbet --headless --seed 1 --until 9000 >report
grep -q $'\tend\tuntil$' report && ! grep -q $'\tbox\t' report || fail "the game was not played: $(cat report)"
[ -e data/zorbet/org.zorbet.Zorbet ] || fail "no folder for its saves"
code=0 && bin/zorbet --headless --until 1 >said 2>&1 || code=$?
grep -q 'install it too' said && [ $code -eq 2 ] || fail "without the sample game: $(cat said)"
rm -r bin

# What programs find of each other, beside each other and as a package lays them out.
zorbet new pond >/dev/null
zorbet test pond >said || fail "the tests of the new game: $(cat said)"
zorbet-mps profile pond --until 500 >said || fail "zorbet beside zorbet-mps: $(cat said)"
chmod u+w "$prefix" "$prefix/bin" && mkdir "$prefix/games" && mv "$prefix/bin/zorbet" "$prefix/games"
zorbet-mps profile pond --until 500 >said || fail "zorbet in games: $(cat said)"
"$prefix/games/zorbet" --headless --until 500 >said || fail "the sample game from games: $(cat said)"

# The manuals and completions have every command of the help, and every option.
wordsOf() { sed -n 's/^ *\(-[a-z],\)\{0,1\}\(--[a-z-]*\).*/\2/p'; }
export PATH=$prefix/games:$PATH
for program in zorbet zorbet-mps zorbet-rsc; do
  page=$(echo "$prefix"/share/man/man?/$program.?)
  commands=$($program --help | sed -n '/^Commands:/,/^$/s/^  \([a-z]*\) .*/\1/p')
  [ -n "$commands" ] || fail "no commands of $program"
  source "$prefix/share/bash-completion/completions/$program"
  complete=$(complete -p $program) && complete=${complete#complete -F } && complete=${complete% "$program"}
  completes() { # WORD...: every word that follows is among what the last of these can become
    local words=("${COMP_WORDS[@]}") word
    COMP_CWORD=$((${#words[@]} - 1))
    $complete || true # it tells the shell how to show files, which only a shell that completes can hear
    for word in "$@"; do [[ " ${COMPREPLY[*]} " == *" $word "* ]] || fail "${words[*]} does not become $word"; done
  }
  COMP_WORDS=($program '') && completes $commands
  for command in '' $commands; do
    options=$($program $command --help | wordsOf)
    COMP_WORDS=($program $command --) && completes $options
    for option in $options; do
      grep -qF "\\fB${option//-/\\-}\\fR" "$page" || fail "the manual of $program has no $option"
    done
  done
done
COMP_WORDS=(zorbet --content po) && complete=_zorbet && completes pond
COMP_WORDS=(zorbet test po) && completes pond
COMP_WORDS=(zorbet-mps check pond/St) && complete=_zorbet_mps && completes pond/Startup.mps
