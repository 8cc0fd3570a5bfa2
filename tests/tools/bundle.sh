#!/usr/bin/env bash
# bundle.sh PROGRAMS BUILD SOURCES WORK: a game is bundled twice, at two places and times and by two users: the bytes
# are the same and tell of neither; it is played elsewhere, from an empty environment; what cannot be bundled is
# refused, and nothing is left of it.
programs=$1 build=$2 sources=$3 work=$4
source "$(dirname "$0")/../shell.sh" "$work" first/annaquill second
PATH=$programs:$PATH

list() { (cd "$1" && find . -mindepth 1 -printf '%m %T@ %y %p\n' | sort); }
entries() { sed -n "s/^$1=//p" "$2"; }

zorbet new pond --title "Pip's <Pond> & \$5 §" >/dev/null
printf '%s\n' 'languages=en,pt-BR' 'author=Ana Silva <ana@example.org>' 'about=Plant what grows at a pond' >>pond/game.ini
mkdir pond/languages pond/notes && touch pond/{debug.txt,zorbelog.txt,ZORBET.DAT,.secret,Startup.mps~,COPYING,settings.ini} \
  pond/languages/{pt.po,pt.po.bak} pond/notes/{kept.txt,lost.txt}
echo 'msgid ""' >pond/languages/pt.po
cp -r pond before
cp -r pond second/game
find second -exec touch -d 2001-02-03 {} +
(cd first/annaquill && zorbet-rsc bundle ../../pond -o out --with notes/kept.txt >../../said 2>&1) || fail "not bundled"
says 'Left out, as no part of what is played (--with takes one along):'
! grep -q warning said || fail "warned"
(umask 077 && cd second && LC_ALL=C TZ=Asia/Tokyo USER=annaquill zorbet-rsc bundle game -o ./o/ --with notes/kept.txt/ >/dev/null)
diff -r before pond && diff -r first/annaquill/out second/o && diff <(list first/annaquill/out) <(list second/o) ||
  fail "not the same"
cd first/annaquill/out
grep -qx 'de Ana Silva' pond-1.0/LEIAME.txt
has=$(cd pond-1.0 && find . -type f | LC_ALL=C sort | tr '\n' ' ')
[ "$has" = './COPYING ./LEIAME.txt ./README.txt ./engine/COPYING ./engine/zorbet ./game/RSC/garden.rsc ./game/RSC/resource.map '\
'./game/Startup.mps ./game/art/pip-1.png ./game/game.ini ./game/languages/pt.po ./game/notes/kept.txt '\
'./game/scripts/garden.mps ./org.example.pond.desktop ./pond ./pond.png ' ] || fail "has $has"
cmp -s pond-1.0/game/RSC/garden.rsc "$work/pond/RSC/garden.rsc"

package=$(echo *.deb)
if command -v dpkg-deb >/dev/null && [ -e "$package" ]; then
  dpkg-deb -x "$package" installed && dpkg-deb -e "$package" installed/control
  diff -r pond-1.0/game installed/usr/share/games/pond && cmp pond-1.0/engine/zorbet installed/usr/lib/games/pond/zorbet
  grep -qx 'Maintainer: Ana Silva <ana@example.org>' installed/control/control
  for validate in 'desktop-file-validate installed/usr/share/applications/org.example.pond.desktop' \
    'appstreamcli validate --no-net installed/usr/share/metainfo/org.example.pond.metainfo.xml'; do
    ! command -v ${validate%% *} >/dev/null || $validate >"$work/said" 2>&1 || { cd "$work"; fail "$validate"; }
  done
fi
! grep -rlF -e "$work" -e "$build" -e "$sources" -e annaquill . || fail "these tell where they were made"
cd "$work"

# Elsewhere, in a folder whose name is hard to quote.
mkdir 'a "$b` c\d%' && mv first/annaquill/out/pond-1.0 'a "$b` c\d%' && moved=$work/'a "$b` c\d%/pond-1.0'
rm -rf first second
env -i "$moved/pond" --headless --home "$work/home" --seed 1 --input "$work/pond/tests/first.input" >said 2>&1 ||
  fail "not played"
[ "$(grep -c $'\texpect\tmet\t' said)" -eq "$(grep -c ' expect ' pond/tests/first.input)" ] || fail "not as expected"
export XDG_DATA_HOME=$work/data
"$moved/pond" --add-to-menu
entry=data/applications/org.example.pond.desktop
[ "$(entries Name $entry)" = "Pip's <Pond> & \$5 §" ]
[ "$(entries Exec $entry)" = "\"$work/"'a \\"\\$b\\` c\\\\d%%/pond-1.0/pond"' ] || fail "$(entries Exec $entry)"
[ "$(entries Icon $entry)" = "$work/"'a "$b` c\\d%/pond-1.0/pond.png' ] || fail "$(entries Icon $entry)"
"$moved/pond" --remove-from-menu && [ ! -e $entry ]
sed -i s/libpng16.so.16/libpng99.so.16/ "$moved/pond" "$moved/engine/zorbet"
code=0 && env -i "$moved/pond" --headless --until 1 >said 2>&1 || code=$?
[ $code -eq 127 ] && says 'lacks libpng99.so.16. Install what is missing; in Debian and Ubuntu by: sudo apt install libpng16-16'

# Refusals: what is done to the game, what is said of it, options.
refused() {
  rm -rf bad && cp -r pond bad && (cd bad && eval "$1")
  code=0 && zorbet-rsc bundle bad -o made "${@:3}" >said 2>&1 || code=$?
  says "$2"
  [ $code -eq 1 ] && [ ! -e made ] || fail "code $code"
}
ini() { echo "sed -i '$1' game.ini"; }
refused 'rm game.ini' 'write one that nobody else has, such as identifier=org.example.pond'
refused "$(ini /^title/d)" 'bad/game.ini: says no title; write it as title=The Pond'
refused "$(ini s/^version=.*/version=/)" 'bad/game.ini: says no version; write version=1.0'
refused "$(ini s/^version=.*/version=1.0-beta/)" 'the version "1.0-beta" is none that packages have'
refused "$(ini s/^version=.*/version=..\\/1/)" 'the version "../1" is none'
refused "$(ini 's/^icon=.*/icon=art\/none.png/')" '"icon" wants the name of a PNG file in the game'\''s folder'
refused "$(ini /^icon/d)" 'says no icon for the menu; write icon=art/pond.png'
refused 'echo text >art/pip-1.png' 'the icon art/pip-1.png '
refused "$(ini s/^identifier=.*/identifier=org.zorbet.Zorbet/)" 'name the game by --name, such as --name pond'
refused '' '"../x" is no name for a program' --name ../x
refused 'echo "library" >>resources.manifest' 'bad/resources.manifest:'
refused 'echo "if a [" >>scripts/garden.mps' 'bad/scripts/garden.mps:'
refused 'mv Startup.mps begin.mps' 'there is no Startup.mps, with which a game begins'
refused 'touch RLamp.lrn' 'bad/RLamp.lrn: the game brings native code'
refused '' '--with ../pond: there is no such file or folder in bad' --with ../pond
SOURCE_DATE_EPOCH=soon refused '' 'SOURCE_DATE_EPOCH is "soon"'
mkdir made && touch made/mine
code=0 && zorbet-rsc bundle pond -o made >said 2>&1 || code=$?
[ $code -eq 1 ] && says 'the folder "made" is not empty, and nothing in it is replaced' && [ "$(ls made)" = mine ]
code=0 && zorbet-rsc bundle pond -o pond/out >said 2>&1 || code=$?
[ $code -eq 1 ] && says "lies in the game's folder" && diff -r before pond
rm -r made && (ulimit -f 2000 && trap '' XFSZ && refused '' 'cannot be written') # as on a full disk
