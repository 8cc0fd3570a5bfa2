#!/usr/bin/env bash
# tour.sh PROGRAM LISTEN INPUT SOUNDS WORK: the recorded visit to the sample game: what a person would have noticed,
# a picture for every place, what was heard, and what is kept: who comes back goes on where they were.
set -euo pipefail
program=$1 listen=$2 tour=$3 sounds=$4 work=$5
rm -rf "$work"
mkdir -p "$work"/{home,elsewhere,abroad}
cd "$work"

fail() { echo "$*" >&2; exit 1; }
# visit HOME SOUND: of the events that come in. Frames per second in the title are left out of the report.
visit() {
  "$program" --headless --input /dev/stdin --seed 1 --home "$1" --record-sound "$2" >all || fail "ended with $?"
  ! grep $'\tbox\t' all || fail "something is wrong with the scripts"
  ! grep $'\texpect\tfailed' all || fail "not as expected"
  grep -vP '\ttitle\t\d+$' all >report
}
# kept HOME WHAT: the players and their charts; the first one's bag, levels, and whether these change by themselves.
kept() {
  local is
  is=$(export LC_ALL=C && tr '\0' ' ' <"$1/ZORBET.DAT" |
    awk '/(playerName|^chartLevel)$/ { getline; printf "%s ", $0 }'
    sed '1,/^GLOBAL_END$/d' "$1/ZORBET.DAT" | od -An -v -tu1 -w1 | awk '{ byte[NR - 1] = $1 }
      END { for (i = 0; i < 4; ++i) printf "%d,%d,%d ", byte[240 + 4 * i], byte[768 + 232 * i], byte[660 + 232 * i] }')
  [ "$is" = "$2" ] || fail "kept in $1: $is"
}

cat >noticed <<END
0:title:Zorbet Voyages
101:none 6034:-1 6036:-2 6036:-1 8200:1 9300:-1 10265:-2 10265:-1 13800:1 17386:-1 23900:1
26305:-1 31600:1 32000:-1 32002:-2 32002:-1 32100:1 38400:-1 38402:-2 38402:-1 56402:-2 56402:-1
58000:1 58600:-1 62200:1 62700:-1 62702:-2 62702:-1 68600:1 69100:-1 69102:-2 69102:-1 69500:1
85900:-1 87802:-2 87802:-1 88100:1 88200:-1 88202:-2 88202:-1 88600:1 96600:-1 96802:-2 96802:-1
97100:1 97200:-1 97202:-2 97202:-1 97600:1 104300:-1 104502:-2 104502:-1 104800:1 104900:-1
104902:-2 104902:-1 105300:1 109100:-1 112102:-2 112102:-1 112400:1 112500:-1 112502:-2
112502:-1 112900:1 113300:-1 113600:1 116000:-1 119002:-2 119002:-1 119300:1 119800:-1 119802:-2
119802:-1 133202:-2 133202:-1 133500:1 133600:-1 133602:-2 133602:-1 133700:1 139600:-1
139802:-2 139802:-1 141600:1 141700:-1 141702:-2 141702:-1 141800:1 144300:-1 147600:1 147700:-1
147702:-2 147702:-1 156000:1 156200:-1 160500:1 161100:-1 161600:29 161700:28 162000:29
162000:-1 162000:1 167500:29 167600:28 167900:29 167900:-1 167900:1 171400:29 171500:28
171800:29 171800:-1
174601:end:quit
END
# In this order; + is where music comes up.
cat >heard <<END
opening +signin parrot parrot-2-3 click desk-bell +harbour tilli-1 tilli-3 waves tilli-4 horn captain-4-1
tilli-2-3|tilli-5-2|tilli-1-3 hover knock +lighthouse purr|meow crackle crackle purr|meow hover knock +map click click
click click click bosun rock click bosun fanfare coins knock +lighthouse rounddoor hover knock +workshop hover click
pickup snap pickup snap pickup almost pickup gohome pickup snap pickup snap solved pickup snap pickup snap pickup
levelup knock click pickup snap pickup snap pickup almost pickup gohome pickup snap pickup snap solved knock click
pickup snap pickup snap pickup thud gohome pickup snap solved knock click pickup snap pickup snap pickup almost pickup
slide solved knock click pickup snap pickup snap pickup gohome pickup solved knock hover click almost click solved
almost click knock click pickup windlass snap pickup snap pickup snap pickup snap solved knock musicbox +lighthouse
chest hover knock +harbour hover page page hover click horn snap captain-4-1 snap tilli-2-3 tilli-1-3
END
ines=$'In\xeas 2 '
for home in home elsewhere; do
  visit $home sound-$home <"$tour"
  sed -E 's/\tcursor\t|\t/:/; s/\t/:/' report | diff -u <(sed '/title/!y/ /\n/' noticed) - || fail "noticed in $home"
  kept $home "${ines}6,3,1 7,1,0 2,1,1 0,1,1 "
done
[ "$(sha256sum -- *.png | sort -u -k 1,1 | wc -l)" -eq "$(grep -c ' screenshot ' "$tour")" ] ||
  fail "pictures show nothing new, so that a click was not seen"
"$listen" sound-home "$sounds" heard
diff -r sound-home sound-elsewhere || fail "another visit sounds different"

# A click skips the opening, and who is in the book signs in. Through the harbour and the lighthouse, up the
# stairs, to the board with the shadows.
visit home back <<END
200 click 320 240
700 click 400 282
1100 key Enter
2500 click 553 395
4000 click 500 120
5500 click 100 120
7500 quit
END
kept home "${ines}6,3,1 7,1,0 2,1,1 0,1,1 "
# The space bar skips the opening, and somebody signs a name that is not in the book yet.
printf '%s\n' '300 key  ' '700 key z i t a' '1200 key Enter' '2500 quit' | visit home newcomer
kept home "${ines}Zita 0 6,3,1 7,1,0 2,1,1 0,1,1 "
# The first letter finds the name, which is taken out at the second request. If it were not there, the letter
# would be a new name.
printf '%s\n' '200 click 320 240' '700 key z' '900 key Delete Delete' '1500 quit' | visit home farewell
kept home "${ines}6,3,1 7,1,0 2,1,1 0,1,1 "
# A flag has the book speak English. Who signs it hears English in the next run, too; the book is its old self.
visit abroad english <<END
200 click 320 240
1500 click 490 446
3000 expect property bubble text Hello! Write your name, or pick it in the book.
3100 key b Enter
5000 expect property welcome text Good morning, Beatriz!
5100 quit
END
visit abroad again <<END
200 click 320 240
1000 expect property bubble text Olá! És tu, Beatriz?
1000 expect property players currentEntry Beatriz
1200 key Enter
3000 expect property welcome text Good morning, Beatriz!
3100 quit
END
