#!/bin/sh
# sweep.sh ZORBET ZORBET-MPS SAMPLE WORK: every class with every word that the tables tell. Each property is read and set to absurd values, each method is
# called without arguments, with absurd ones and with too many; all events have handlers that destroy: who was hit,
# all there is, all and the script with it; or that put other objects into the place; the pointer moves and clicks
# everywhere meanwhile. Nothing may end the program but the end of the time, and every warning must be a box.
set -eu
program=$1 mps=$2 sample=$3 work=$4
rm -rf "$work"
mkdir -p "$work/RSC" "$work/home"
cp "$sample"/RSC/* "$work/RSC"
cp "$sample/movies/opening.smk" "$work"
cd "$work"
"$mps" words >words

# What classes are made with, and what is done with it then. Those that are only bases of others have no line.
cat >made <<'END'
OMMultiTrinket 20|play it addTrinket bystander
RAnimation 2001 7|set it frameNotification 1|play it play
RAnimationTrigger 30|play it start
RAttributeContainer,RFabricContainer,RHorizontalContainer,RHorizontalValueContainer,RStackingContainer,\
RValueContainer -1 300 100 120 100 1|answer=RGraphicAnswer 2310 100 200 5|set answer dropped gone|\
game=RPuzzle 0|play game addContainer it|play game addAnswer answer|play game addAnswerToContainer answer it
RGraphicAnswer,RGraphicTextAnswer,RDoubleGraphicTextAnswer 2305 100 200 5|@place|set place answerPlaced gone|\
game=RPuzzle 0|play game addContainer place|play game addAnswer it
RPuzzle 0|@place|answer=RGraphicAnswer 2310 100 200 5|play it addContainer place|play it addAnswer answer
RCompositeAction,RQueue,RRandomAction 1|play it add DelayAction 20|play it add MoveAction bystander 9 9 30|play it start
RBackPack 2104 300 100 20
RCharacter 2010 11111 11111 30|play it addFidgetGroup 1 10 20|play it addFidget 1 2010|play it playAnim 2010
RDialog 2017 100|play it addButton 2201 1
RHotSpot 100 100 300 300 20
RKbdInp,RScenePort 0
RLapTrap place -1 180 120 20
RMap 40 40 20|set it cellsH 3|set it cellsV 4|set it cellSizeH 50|set it cellSizeV 50|set it moveDelay 20|\
play it addMove 2 2|play it move
RPButton,RTrigger 2001 100 100 20
RPegGame 10|set it pegID 2414|for hole 1 15|set it pegX hole hole*30|play it fill|play it removePeg 3
RPentominoGame 200 60 5|set it cellWidth 20|set it cellHeight 20|set it rotaterGraphicID 2202|\
set it pieceGraphicID 1 2414
RSelList,RText 100 100 200 60 9
RSmackerMovie opening.smk 0 0|play it start
RWorldPort 0|play it addIntProperty a|play it activateDataFile|play it activatePlayer Ana
END
sed -i 's/@place/place=RAttributeContainer -1 0 0 640 480 1/' made

# The pointer goes everywhere, the same way each time.
awk 'function at() { return int(rand() * 640) " " int(rand() * 480) }
BEGIN {
    srand(7)
    for (ms = 60; ms < 90000; ms += 12) {
        print ms, (ms % 5 ? "down" : "double"), at() "\n" ms + 4, "move", at() "\n" ms + 8, "up", at()
        if (ms % 7 == 0) print ms + 9, "key", (ms % 2 ? "Enter" : "Left")
    }
}' >input

# script CLASS MAKING HANDLER NEXT
script() {
    awk -v class="$1" -v making="$2" -v handler="$3" -v next_script="$4" '
    $1 == "class" { parent[$2] = $3; of = $2; next }
    { all[$1, of] = all[$1, of] " " $2 }
    function words(kind,   name, text) {
        for (name = class; name != ""; name = parent[name]) text = text all[kind, name]
        return split(text, word, " ")
    }
    function make(name,   parts, count, i) {
        count = split(making, parts, "|")
        print name "=" class " " parts[1]
        for (i = 2; i <= count; ++i) {
            sub(/$/, " ", parts[i])
            gsub(/ it /, " " name " ", parts[i])
            print parts[i]
        }
    }
    END {
        count = split("0 1 0-1 99999999 0-99999999 \"\" x words other ^other", value, " ")
        print "yield off\nwords=\"a text of some words\"\nScene 2001\nsay \"" class "\""
        print "procedure anew"
        print "[\nbystander=RAnimation 2003 6"; make("it"); make("other")
        n = words("event")
        for (i = 1; i <= n; ++i) print "set it " word[i] " gone\nset other " word[i] " gone"
        print "]"
        print "procedure gone\n["
        destroy["receiver"] = "drop RECEIVER"
        destroy["all"] = "drop it\ndrop other\ndrop bystander"
        destroy["script"] = "drop it\nrelay " next_script
        print destroy[handler]
        if (handler == "another") { make("it"); print "other=RText 0 0 50 20 5" }
        print "]\ncall anew"
        n = words("property")
        for (i = 1; i <= n; ++i) {
            print "get it " word[i] " was"
            for (v = count; v >= 1; --v) print "set it " word[i] " " value[v]
            print "get it " word[i] " is\nset it " word[i] " was"
        }
        n = words("method")
        for (i = 1; i <= n; ++i) {
            call = "play it " word[i]
            print call
            for (v = count; v >= 1; --v)
                print call " " value[v] "\n" call " " value[v] " " value[v] " " value[v]
            print call " 1 2 3 4 5 6 7 8 9 10 11 12\ncall anew"
        }
        print "say \"through\"\npause 1.6\nrelay " next_script
    }' words
}

# Of each handler one game, a script a class.
failed=0
for handler in receiver all script another; do
    : >expected
    count=0
    while read classes making; do
        for class in $(echo "$classes" | tr , ' '); do
            script "$class" "$making" $handler "\"$((count += 1)).mps\"" >"$((count - 1)).mps"
            echo "$class" >>expected
            [ $handler = script ] || echo through >>expected
        done
    done <made
    echo quit >"$count.mps"
    echo 'relay "0.mps"' >Startup.mps
    rm -f debug.txt
    "$program" --headless --content . --home home --seed 1 --input input --until 90000 >report 2>errors </dev/null || failed=1
    grep -q '	end	0$' report || failed=1
    [ $handler != script ] || sed -i '/^through$/d' debug.txt
    cmp expected debug.txt || failed=1
    if [ $failed -ne 0 ]; then
        echo "handler \"$handler\", class $(grep -v through debug.txt | tail -n 1): see $PWD" >&2
        tail -n 3 report errors >&2
        break
    fi
done
# A class without a line above would be left out in silence.
for class in $(awk '$1 == "class" && $2 ~ /^(R|OMMulti)/ && $2 !~ /^(RContainer|RAnswer)$/ { print $2 }' words); do
    grep -Eq "(^|,)$class[ ,]" made || { echo "$class is not swept" >&2 && failed=1; }
done
exit $failed
