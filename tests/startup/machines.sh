#!/usr/bin/env bash
# What the start looks at, a machine a row: settings, options, what is shown, a line of the log, and whether the
# game then runs. Shown texts are patterns, with | between.
#
#     machines.sh PROGRAM SAMPLE WORK
program=$1 sample=$2 work=$3
source "$(dirname "$0")/../shell.sh" "$work" game
cp -r "$sample/RSC" game/RSC
echo 'say "runs"' >game/Startup.mps && echo 'languages=en' >game/game.ini
echo '0 answer Sair' >refuse
play() { "$program" --headless --content game --home home --until 50 "$@" >report 2>errors; }
warn='Warning: Trying to use DirectDraw, but unable to'
fixed="$warn switch to requested resolution and color depth, using GDI"
while IFS=';' read -r ini options shown log runs; do
  rm -f game/debug.txt game/zorbelog.txt game/ZORBET.*
  printf '[Zorbet Voyages - CD]\n%b' "$ini" >game/ZORBET.INI
  play $options
  came=$(awk -F '\t' '$2 == "box" { print $5 } $2 == "dialog" { print $4 }' report | paste -sd '|')
  said=$(cat game/debug.txt 2>/dev/null || true)
  [[ $came == $shown && $said == "$runs" ]] && grep -qxF "$log" game/zorbelog.txt ||
    fail "$ini $options"
done <<END
;--machine processor=386;Zorbet needs a 486 *;ERROR: x386 found, cannot run;
;--machine memory=8388607;There is not enough memory *;Free memory: 8388607;
;--machine memory=8388608;;Free memory: 8388608;runs
;--machine sound=none;Zorbet cannot use the sound: *;WAVE driver is not available;
;--machine disk=10485760;;HD Free Space on Drive C: 10485760;runs
;--machine disk=10485759;There is little space left on disk C: Zorbet needs 10 * from disk C, *;Using GDI;
;--screen 800x600x8;*are larger*, or Continue.;Current screen size is 800 X 600;runs
;--screen 640x480x32;Zorbet runs better with 256 *;Current screen bit depth: 32;runs
;--screen 800x600x16;*are larger*|Zorbet runs better *;Using GDI;runs
;--screen 800x600x16 --input refuse;*change it, or Continue.;Current screen bit depth: 16;
;--screen 639x600x16;Zorbet needs a screen of 640 *;Current screen size is 639 X 600;
;--screen 800x479x8;Zorbet needs a screen of 640 *;DirectDraw is available;
UseDirectDraw=1\n;--screen 800x600x16;;Displaying in upper left corner using DirectDraw;runs
UseDirectDraw=1\n;--machine driver=none;DirectX does not work *;$warn load DLL, using GDI;runs
UseDirectDraw=1\nDisplayFullScreen=1\n;--screen 800x600x16;;Displaying Full Screen using DirectDraw;runs
UseDirectDraw='1'\n;--machine driver=fixed,memory=9000000;DirectDraw could not switch *;$fixed;runs
END

printf 'informColorsWarning\n5\nGLOBAL_END\n' >saved
rm game/ZORBET.* && play
[ "$(wc -l <game/zorbelog.txt)" -eq 20 ] || fail "another log"
cp saved home/ZORBET.DAT
play --machine sound=none
cmp saved home/ZORBET.BAK && grep -qx 5 home/ZORBET.DAT || fail "a machine that is refused"
printf 'GLOBAL_END\nno player' | tee damaged >home/ZORBET.DAT
play && cmp damaged home/ZORBET.BAD || fail "a damaged world"
printf 'w=RWorldPort 0\nplay w activatePlayer "Ana"\nrelay "nosuch.mps"\n' >game/Startup.mps
code=0 && play || code=$?
[ $code -eq 1 ] && grep -qa Ana home/ZORBET.DAT || fail "a script that is missing"

# Nonsense fills no log; a name that is cut off is the same player's again.
{ echo GLOBAL_END && head -c 2980 /dev/zero && head -c 200000 /dev/zero | tr '\0' '\n'; } >home/ZORBET.DAT
name=$(printf 'C%.0s' {1..1100})
printf 'w=RWorldPort 0\nplay w activateDataFile\nplay w activatePlayer "%s"\n' $name >game/Startup.mps
printf 'x\n%.0s' {1..5000} >game/RSC/audio.map
play && [ "$(grep -c 'unknown property' game/zorbelog.txt)" -eq 10000 ] || fail "unknown properties"
grep 'audio.map' game/zorbelog.txt | sed 1,50d |
  cmp - <(echo 'ERROR: RSC\audio.map line 51: further problems of this map are not logged') || fail "a map"
play && [ "$(grep -ac ^CCC home/ZORBET.DAT)" -eq 1 ] || fail "a long name"
