#!/usr/bin/env bash
# reload.sh PROGRAMS WORK: what an author saves while the game runs is loaded again: scripts, pictures, manifests,
# libraries, translations, in all the ways that editors save; mistakes in them are told, and the scene goes on.
programs=$1 work=$2
source "$(dirname "$0")/../shell.sh" "$work" shared
export SDL_VIDEODRIVER=dummy SDL_AUDIODRIVER=dummy
game=

finish() { [ -z "$game" ] || kill "$game" 2>/dev/null || true; }
trap finish EXIT
count() { cat "$2" 2>/dev/null | grep -cF -- "$1" || true; } # TEXT FILE
awaits() { # TEXT NUMBER [FILE]: so many lines, within ten seconds
  for _ in $(seq 200); do
    [ "$(count "$1" "${3:-errors}")" -lt "$2" ] || return 0
    sleep 0.05
  done
  fail "not told $2 times: $1"
}
# A save and how often it must be told: SAVE TEXT [FILE].
told() { before=$(count "$2" "${3:-errors}") && eval "$1" && awaits "$2" $((before + 1)) "${3:-errors}"; }
edit() { sed -i "$1" "pond/$2"; } # a new file takes the old one's name

# What only goes with what.
refused() { code=0 && "$programs/zorbet" "${@:2}" >errors 2>&1 || code=$?; [ $code -eq 2 ] && grep -qF -- "$1" errors || fail "$1"; }
refused 'add --author' --reload at-once
refused '"soon" is none; write on-key or at-once' --author --reload soon
refused 'leave out --headless' --author --reload on-key --headless

"$programs/zorbet" new pond >/dev/null
garden=pond/scripts/garden.mps
# The scene ticks; a picture lies elsewhere; the first script has a library copied for good, into the game's folder.
printf 'procedure tick\r\n[\r\nsay "tick one"\r\nschedule 0.3 tick\r\n]\r\nschedule 0.3 tick\r\n' >>$garden
touch pond/ZORBET.INI # the home is there, too
printf 'CacheDLL garden.rsc 0 1 1\r\n' | cat - pond/Startup.mps >start && mv start pond/Startup.mps
mv pond/art/flower-3.png shared
edit 's|art/flower-3.png|../shared/flower-3.png|' resources.manifest
edit 's/^languages=.*/languages=en,pt/' game.ini
"$programs/zorbet" --content pond --language pt --author --reload at-once >/dev/null 2>errors &
game=$!
awaits 'tick one' 1 pond/debug.txt

loaded='garden.mps was loaded again in '
with='garden.mps, with pictures and sounds, was loaded again in '
told "edit 's/tick one/tick two/' scripts/garden.mps" "$loaded"
awaits 'tick two' 1 pond/debug.txt
told "cp $garden copy && sed 's/tick two/tick three/' copy >$garden" 'tick three' pond/debug.txt # in its place
told "rm $garden && sed 's/tick two/tick four/' copy >$garden" 'tick four' pond/debug.txt       # removed and made
told "sed 's/tick two/tick five/' copy >$garden.tmp && mv $garden.tmp $garden" 'tick five' pond/debug.txt
told "mkdir pond/more && cp $garden pond/more" "$loaded" # in a folder that was not there
awaits 'tick five' "$(($(count 'tick five' pond/debug.txt) + 1))" pond/debug.txt
before=$(count "$loaded" errors)
for _ in 1 2 3 4 5 6 7 8; do edit 's/tick five/tick six/' scripts/garden.mps; done # as one
awaits 'tick six' 2 pond/debug.txt
[ "$(count "$loaded" errors)" -le $((before + 3)) ] || fail "steps of a save are loaded one by one"

# Pictures, wherever they lie, and a manifest; what was copied is copied again.
told 'cp pond/art/flower-4.png shared/flower-3.png' 'ASEQ resource 213 from file garden.rsc(Cached)' pond/zorbelog.txt
awaits "$with" 1
told "printf 'picture 230 ../shared/new/flower.png\r\n' >>pond/resources.manifest" 'could not be packed'
told 'mkdir shared/new && cp pond/art/flower-4.png shared/new/flower.png' "$with"
told "edit 's/^bubble=RAnimation 202/bubble=RAnimation 230/' scripts/garden.mps" 'ASEQ resource 230 from file garden.rsc(Cached)' pond/zorbelog.txt
told "'$programs/zorbet-rsc' pack pond/resources.manifest -o pond/RSC" "$with" # by hand

# Mistakes.
goesOn() { sixes=$(count 'tick six' pond/debug.txt) && awaits 'tick six' $((sixes + 2)) pond/debug.txt; }
told "cp $garden copy && printf 'if a [\r\n' >>$garden" "garden.mps:$(($(wc -l <$garden) + 1)): "
awaits 'garden.mps was not loaded again' 1
goesOn
told "mv copy $garden" "$loaded"
told "cp pond/Startup.mps start && printf ']\r\n' >>pond/Startup.mps" 'garden.mps was not loaded again'
told 'mv start pond/Startup.mps' "$loaded"
told "mv $garden copy" 'garden.mps was not loaded again'
goesOn
told "mv copy $garden" "$loaded"
told "edit 's/^palette/palete/' resources.manifest" 'resources.manifest:7: unknown keyword "palete"'
told ': >shared/flower-3.png && edit s/^palete/palette/ resources.manifest' 'flower-3.png: '
goesOn
told 'cp pond/art/flower-5.png shared/flower-3.png' "$with"
goesOn
told "mkdir -p pond/languages && printf 'msgid \"tick six\"\nmsgstr \"tique\"\n' >pond/languages/pt.po" 'tique' pond/debug.txt
[ "$(count "$with" errors)" -lt 10 ] || fail "what the game does itself is loaded again"

kill $game && wait $game || fail "code $?"
game=
