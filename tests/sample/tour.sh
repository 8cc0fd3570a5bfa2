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
101:none 6034:-1 6036:-2 6036:-1 8200:1 9000:-1 9847:-2 9847:-1 13800:1 16968:-1 21600:1
27310:-1 29000:1 29500:-1 29502:-2 29502:-1 29600:1 35500:-1 35502:-2 35502:-1 52402:-2
52402:-1 56900:1 57400:-1 57402:-2 57402:-1 57500:1 60000:-1 60002:-2 60002:-1 61400:1 64300:-1
64600:1 76300:-1 76802:-2 76802:-1 77600:1 77700:-1 77702:-2 77702:-1 78900:1 86900:-1 87102:-2
87102:-1 87900:1 88000:-1 88002:-2 88002:-1 89400:1 89800:-1 90100:1 90500:-1 91300:1 92700:-1
96402:-2 96402:-1 97200:1 97300:-1 97302:-2 97302:-1 98400:1 104800:-1 105102:-2 105102:-1
105900:1 106000:-1 106002:-2 106002:-1 107400:1 107800:-1 108100:1 110400:-1 114102:-2 114102:-1
114960:1 115060:-1 115062:-2 115062:-1 127912:-2 127912:-1 129210:1 129310:-1 129312:-2 129312:-1
129410:1 136750:-1 137822:-2 137822:-1 139780:1 139880:-1 139882:-2 139882:-1 145580:1 145680:-1
145682:-2 145682:-1 148680:1 148880:-1 153680:1 153880:-1 154560:29 154660:28 154960:29 154960:-1 161290:29
161390:28 161690:29 161690:-1 161690:1 165400:-1 168620:29 168720:28 169020:29 169020:-1
173321:end:quit
END
# In this order; + is where music comes up.
cat >heard <<END
opening +signin parrot parrot-2-3 click desk-bell +harbour tilli-1 tilli-3 waves tilli-4 horn captain-4-1
tilli-4|tilli-5|tilli-6 hover knock +lighthouse purr|meow crackle crackle purr|meow hover knock +map
click bosun rock click bosun fanfare coins knock +lighthouse hover knock +workshop hover click pickup snap
pickup snap pickup almost pickup gohome pickup snap pickup snap solved pickup snap pickup snap
pickup levelup knock click pickup snap pickup snap pickup almost pickup gohome pickup snap pickup
solved knock click pickup snap pickup snap pickup thud gohome pickup knock click pickup snap
pickup snap pickup almost pickup slide solved knock click pickup snap pickup snap pickup gohome
pickup solved knock click almost click solved almost click knock click pickup windlass snap pickup
snap pickup snap pickup solved knock knock +lighthouse hover knock +harbour hover page tilli-2 page
hover click horn snap captain-4-1 snap tilli-2-3 tilli-1-3 click
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
