#!/bin/sh
# play.sh FILE.mps WORK
#
# Plays a script with the program, without a window, and compares what comes of it with what comments expect:
#
#   ;= TEXT        what is said, in this order
#   ;! TEXT        the boxes that are shown, in this order, those that are no alerts as CAPTION | TEXT | ANSWER
#   ;@ MS TEXT     the same with their times
#   ;# MS WORDS    the other lines of the report
#   ;% TEXT        a line of the log; others may stand between these
#   ;~ SOUND       what is heard (tourlisten.cpp)
#   ;> MS EVENT    what happens from outside, as in input files; also "tap X Y" and "pull X Y X Y ...", a hasty click
#                  and drag: the button goes down at once, and all else follows every 10 ms; screenshots are
#                  compared with the pictures FILE/NAME.png (of a screenshot NAME.LATER.png too), pixel by pixel
#   ;$ OPTIONS     a run of the program with these options; all runs must come to the same. Some words are no
#                  options of the program: "ini:KEY=VALUE" is a setting of ZORBET.INI, "depth:N" and "at:X,Y"
#                  tell the comparison of pictures about the screen, "compiled" has zorbet-mps compile the script,
#                  "text" does nothing.
#   ;$ screens     the runs on all kinds of screen
#   ;$ then OPTIONS   another visit with the same folders; the events below are those of that visit
#   ;: rsc NAME    the libraries of the build's folder libraries/NAME, or "none", instead of the sample's
#   ;: face        the type face of the tests is the only one of the machine
#   ;: same NAME   its pictures are those of another script
#   ;: code N      what the program must end with, if not 0
#   ;: file PATH   the lines from here on are this file: content/..., or home/...
#
# What lies in tests/include, and in the folder include beside the script, is content of all; the folder FILE and
# BUILT/NAME, where there are such, hold more of the content. A visit ends at its last event, or after 20 seconds
# without one. With ZORBET_RENEW=1 in the environment pictures are stored and texts put into the comments that are
# there (as many as there are texts); look at each.
set -u
script=$1 work=$2
name=$(basename "$script" .mps) beside=${script%.mps} room=$(dirname "$script")
# The rest comes from the environment: PROGRAM COMPARE LISTEN MPS SOUNDS FACE LIBRARIES BUILT FEW
rm -rf "$work"
mkdir -p "$work/is" "$work/was" "$work/files/content" "$work/files/home"
failed=0
fail() { printf '%s\n' "$*" >&2 && failed=1; }

# Takes the file apart.
awk -v work="$work" '
BEGIN { out = work "/files/content/Startup.mps"; visit = 0 }
{ raw = $0; sub(/\r$/, "") } # scripts have the line ends of their authors
function rest(text) { sub(/^[ \t]*;. ?/, "", text); return text }
/^[ \t]*;= ?/ { print rest($0) > (work "/was/said") }
/^[ \t]*;[!@]/ { print rest($0) > (work "/was/boxes"); if (/^[ \t]*;@/) print > (work "/timed") }
/^[ \t]*;# / { print rest($0) > (work "/was/report") }
/^[ \t]*;% / { print rest($0) > (work "/was/log") }
/^[ \t]*;~ / { print rest($0) > (work "/was/heard") }
function event(ms, what) { print ms, what > (work "/input." visit) }
/^[ \t]*;> / {
    if ($3 == "tap" || $3 == "pull") {
        event(ms = $2, "down " $4 " " $5)
        for (i = 6; i < NF; i += 2) event(ms += 10, "move " $i " " $(i + 1))
        event(ms + 10, "up " $(NF - 1) " " $NF)
    }
    else print rest($0) > (work "/input." visit)
}
/^[ \t]*;\$ then/ { line = rest($0); sub(/^then ?/, "", line); print line > (work "/then." ++visit); next }
/^[ \t]*;\$ / { print rest($0) > (work "/runs") }
/^[ \t]*;: file / { out = work "/files/" $3; folder = out; sub("/[^/]*$", "", folder)
                    system("mkdir -p \"" folder "\""); next }
/^[ \t]*;: / { print $3 > (work "/is." $2) }
{ print raw > out }' "$script" || exit 1
if grep -q '^screens$' "$work/runs" 2>/dev/null; then
    printf '%s\n' " " "ini:UseDirectDraw=1" "ini:UseDirectDraw=1 ini:DisplayFullScreen=1" \
        "ini:UseDirectDraw=1 --screen 640x480x16 depth:16" "ini:UseDirectDraw=1 --screen 640x480x24 depth:24" \
        "ini:UseDirectDraw=1 --screen 640x480x32 depth:32" >"$work/runs"
fi
[ -f "$work/runs" ] || echo " " >"$work/runs"
[ -z "${FEW:-}" ] || sed -i -n '1p;$p' "$work/runs"
if [ -f "$work/is.face" ]; then
    mkdir "$work/fonts"
    cp "$FACE" "$work/fonts" || exit 1
    echo "<fontconfig><dir>$work/fonts</dir><cachedir>$work/cache</cachedir></fontconfig>" >"$work/fonts.conf"
    export FONTCONFIG_FILE="$work/fonts.conf"
fi

# visit FOLDER NUMBER OPTIONS...
visit() {
    folder=$1 number=$2
    shift 2
    until=20000
    if [ -f "$work/input.$number" ]; then
        until=$(awk '/^[0-9]/ { last = $1 + 1 + ($2 == "click" ? 200 : $2 == "drag" ? 50 * NF : 0) }
            $2 == "key" && NF > 3 { last += 100 * (NF - 3) } END { print last }' "$work/input.$number")
        set -- --input "$work/input.$number" "$@"
    fi
    case " $* " in *" --until "*) ;; *) set -- --until $until "$@" ;; esac
    [ ! -f "$work/was/heard" ] || set -- --record-sound "$folder/sound" "$@"
    (cd "$folder" && exec "$PROGRAM" --headless --content content --home home --seed 1 "$@" </dev/null) >>"$folder/report"
    code=$?
    [ $code -eq "$(cat "$work/is.code" 2>/dev/null || echo 0)" ] || fail "$folder: the program ended with $code"
}

# same WHAT: what came in the run is what was expected.
same() {
    [ -f "$work/is/$1" ] || : >"$work/is/$1"
    [ -f "$work/was/$1" ] || : >"$work/was/$1"
    diff -u --label "expected: $1" --label "run \"$run\"" "$work/was/$1" "$work/is/$1" >&2 || failed=1
}

# renew MARK WHAT: puts what came into the comments with this mark, when they are as many.
renew() {
    awk -v mark="$1" -v texts="$work/is/$2" '
    index($0, mark) && match($0, /^[ \t]*/) && substr($0, RLENGTH + 1, 2) == mark {
        if ((getline text < texts) > 0) {
            end = /\r$/ ? "\r" : ""
            print substr($0, 1, RLENGTH) mark " " text end
            next
        } }
    { print }' "$script" >"$work/renewed" && cat "$work/renewed" >"$script"
}

pictures=$room/$(cat "$work/is.same" 2>/dev/null || echo "$name")
shots=$(cat "$work"/input.* 2>/dev/null | sed -n 's/^[0-9]* screenshot //p')
for picture in "$beside"/*.png; do
    [ ! -f "$picture" ] || echo "$shots" | grep -q "^$(basename "$picture" .png)\." ||
        fail "nothing is compared with $picture"
done
count=0
while read -r run; do
    count=$((count + 1))
    folder=$work/$count
    mkdir -p "$folder" && cp -r "$work/files/content" "$work/files/home" "$folder"
    libraries=$(cat "$work/is.rsc" 2>/dev/null || echo sample)
    [ ! -d "$LIBRARIES/$libraries/RSC" ] || cp -r "$LIBRARIES/$libraries/RSC" "$folder/content"
    for extra in "$room/include" "$room/../include" "$beside" "$BUILT/$name"; do
        [ ! -d "$extra" ] || cp -r "$extra/." "$folder/content"
    done
    options='' depth='' at=''
    for word in $run; do
        case $word in
        ini:*) echo "${word#ini:}" >>"$folder/settings" ;;
        depth:*) depth="--depth ${word#depth:}" ;;
        at:*) at="--at ${word#at:}" ;;
        text) ;;
        compiled)
            "$MPS" compile "$folder/content/Startup.mps" -o "$folder/compiled.mps" >&2 || failed=1
            mv "$folder/compiled.mps" "$folder/content/Startup.mps" ;;
        *) options="$options $word" ;;
        esac
    done
    [ ! -f "$folder/settings" ] ||
        (echo "[Zorbet Voyages - CD]" && cat "$folder/settings") >"$folder/content/ZORBET.INI"
    case $options in *--screen*) # nobody is there to be warned of large and deep screens
        for home in content home; do
            [ -f "$folder/$home/ZORBET.DAT" ] ||
                printf 'informResolutionWarning\n0\ninformColorsWarning\n0\nGLOBAL_END\n' >"$folder/$home/ZORBET.DAT"
        done ;;
    esac
    visit "$folder" 0 $options
    number=0
    while [ -f "$work/then.$((number += 1))" ]; do
        visit "$folder" $number $options $(cat "$work/then.$number")
    done

    cat "$folder/content/debug.txt" >"$work/is/said" 2>/dev/null || : >"$work/is/said"
    timed=$([ ! -f "$work/timed" ] || echo 1)
    awk -F '\t' -v timed="$timed" '
    $2 != "box" && $2 != "dialog" { next }
    { text = $2 == "dialog" ? $3 " | " $4 " | " $5 " | " $6 : $3 == "Alert" ? $5 : $3 " | " $5 " | " $6 }
    { print (timed ? $1 " " : "") text }' "$folder/report" >"$work/is/boxes"
    renewed=$([ "${ZORBET_RENEW:-}$count" != 11 ] || echo 1)
    if [ -n "$renewed" ]; then
        renew ';=' said
        if [ -n "$timed" ]; then renew ';@' boxes; else renew ';!' boxes; fi
        cp "$work/is/said" "$work/is/boxes" "$work/was"
    fi
    same said
    same boxes
    awk -F '\t' -v OFS=' ' '$2 != "box" && $2 != "dialog" { $1 = $1; print }' "$folder/report" >"$work/is/report"
    [ ! -f "$work/was/report" ] || same report
    if [ -f "$work/was/log" ]; then
        awk '{ sub(/\r$/, "") }
        NR == FNR { expected[++count] = $0; next }
        $0 == expected[found + 1] { ++found }
        END { if (found < count) { print "not in the log, or not there: " expected[found + 1]; exit 1 } }
        ' "$work/was/log" "$folder/content/zorbelog.txt" >&2 || failed=1
    fi
    [ ! -f "$work/was/heard" ] || "$LISTEN" "$folder/sound" "$SOUNDS" "$work/was/heard" ||
        fail "something else was heard"
    for shot in $shots; do
        picture=$pictures/${shot%%.*}.png
        [ -z "$renewed" ] || { mkdir -p "$pictures" && cp "$folder/$shot" "$picture"; }
        "$COMPARE" "$folder/$shot" "$picture" "$folder/difference-$shot" $depth $at ||
            fail "$folder/$shot differs from $picture (run \"$run\")"
    done
done <"$work/runs"
exit $failed
