# Writes the frames of the opening movie, FOLDER/101.svg and so on, out of the drawings of the game:
#
#     awk -v folder=FOLDER -f frames.awk background.svg boat-[1-8].svg gull-[1-6].svg scroll-[1-3].svg title.svg
#
# With `-v ending=1` it writes what the ending shows instead: FOLDER/night.svg, the harbour at night; FOLDER/tower.svg, the lighthouse,
# which stands before the beam; and the beam as it turns, FOLDER/beam-01.svg and so on.
#
# Night at the harbour turns into morning. What the drawings show by day is dimmed in a few steps, so
# that the movie needs few colours; sky, stars, moon, sun and the lighthouse's beam are drawn here.

FNR == 1 {
    drawing = FILENAME
    sub(/.*\//, "", drawing)
    sub(/\.svg$/, "", drawing)
    part = ""
}
/^<|^  <title>/ { next }
# A drawing is kept by its outermost groups, and the background's by their names; what has none is "all".
drawing == "background" || drawing == "title" {
    if (match($0, /^  <(defs|g id="[^"]*")>/)) {
        part = $0
        gsub(/^  <(g id=")?|"?>$/, "", part)
    }
    if (part != "") add(drawing, part, $0)
    if ($0 ~ /^  <\/(defs|g)>/) part = ""
    next
}
{ add(drawing, "all", $0) }

function add(name, piece, line) { lines[name, piece, ++count[name, piece]] = line }

# ---- numbers

function clamp(v) { return v < 0 ? 0 : v > 1 ? 1 : v }
# How far the frame is on the way from one to another, 0 to 1.
function along(from, to) { return clamp((frame - from) / (to - from)) }
function smooth(v) { return v * v * (3 - 2 * v) }
# Goes a little too far at the end, and comes back.
function springy(v) { v -= 1; return v * v * (2.6 * v + 1.6) + 1 }

# ---- colours: by day as they are drawn, by night dark and blue

function digit(c) { return index("0123456789abcdef", c) - 1 }
function component(color, at) { return 16 * digit(substr(color, at, 1)) + digit(substr(color, at + 1, 1)) }
function mix(night, day) { return int(night + (day - night) * light / LEVELS + 0.5) }
function dimmed(color,    r, g, b) {
    if (lampsBurn && color in lit) return color
    if (color in window) return blend("#ffd257", color) # behind it a lamp burns
    r = component(color, 2); g = component(color, 4); b = component(color, 6)
    return sprintf("#%02x%02x%02x", mix(r * 0.2 + 14, r), mix(g * 0.23 + 18, g), mix(b * 0.36 + 44, b))
}
function blend(night, day) {
    return sprintf("#%02x%02x%02x", mix(component(night, 2), component(day, 2)),
                   mix(component(night, 4), component(day, 4)), mix(component(night, 6), component(day, 6)))
}
# The line with all its colours dimmed. What was computed once for a light is kept.
function dim(line,    done, color) {
    done = ""
    while (match(line, /#[0-9a-f][0-9a-f][0-9a-f][0-9a-f][0-9a-f][0-9a-f]/)) {
        color = substr(line, RSTART, 7)
        if (!((light, lampsBurn, color) in known)) known[light, lampsBurn, color] = dimmed(color)
        done = done substr(line, 1, RSTART - 1) known[light, lampsBurn, color]
        line = substr(line, RSTART + 7)
    }
    return done line
}

# ---- writing

function put(text) { printf "%s\n", text > file }
# A piece of a drawing, from its line `first` to its line `last`, or all of it.
function show(name, piece, first, last,    i) {
    if (last == 0) last = count[name, piece]
    if (first == 0) first = 1
    for (i = first; i <= last; i++) put(dim(lines[name, piece, i]))
}
function at(x, y, scale) {
    put(sprintf("<g transform=\"translate(%.1f %.1f) scale(%.3f)\">", x, y, scale))
}
function end() { put("</g>") }
function ellipse(x, y, rx, ry, color) {
    put(sprintf("<ellipse cx=\"%.1f\" cy=\"%.1f\" rx=\"%.1f\" ry=\"%.1f\" fill=\"%s\"/>", x, y, rx, ry, color))
}

# ---- the sky: the colours of the morning spread in rings from where the sun comes up

function sky(    i, r) {
    put("<rect width=\"640\" height=\"480\" fill=\"#18204a\"/>")
    for (i = 1; i <= rings; i++) {
        r = (1700 - 1660 * i / rings) * smooth(along(6 + 34 * i / rings, 50 + 12 * i / rings))
        if (r > 3) ellipse(168, 222, r, r * 0.47, ring[i])
    }
}

function stars(    i, r) {
    for (i = 1; i <= starCount; i++) {
        r = (1 + (i * 7 + int(frame / 3)) % 5 * 0.22) * (1 - along(10 + i % 5 * 3, 26 + i % 5 * 3)) * 1.5
        if (r > 0.3) ellipse(starX[i], starY[i], r, r, "#fff6c8")
    }
}

function moon(    y) {
    y = 70 + 190 * smooth(along(6, 46))
    if (y > 250) return
    put(sprintf("<path transform=\"translate(440 %.1f)\" d=\"M8 -24A25 25 0 1 0 24 10A20 20 0 0 1 8 -24Z\" fill=\"#fff1c2\"/>", y))
}

function sun(    y) {
    y = 276 - 70 * smooth(along(22, 60))
    if (frame < 22) return
    ellipse(168, y, 34, 34, "#fff8d8")
    ellipse(168, y, 29, 29, "#fffdf0")
}

# The beam turns once in two seconds: long to the sides, where it fades away, and a glow towards us.
function beam(    turn, side, strength, part, reach, wide) {
    strength = 0.14 * (1 - light / LEVELS / 0.6)
    if (strength <= 0) return
    turn = (frame - 4) / 30 * 6.2832
    side = cos(turn)
    for (part = 1; part <= 3; part++) {
        reach = part / 3
        wide = (16 + 26 * (1 - side * side)) * reach
        put(sprintf("<path d=\"M548 60L%.1f %.1fL%.1f %.1fZ\" fill=\"#ffe9a0\" opacity=\"%.2f\"/>",
            548 + 660 * side * reach, 60 + 80 * sin(turn) * reach - wide,
            548 + 660 * side * reach, 60 + 80 * sin(turn) * reach + wide, strength))
        put(sprintf("<circle cx=\"548\" cy=\"60\" r=\"%.1f\" fill=\"#ffe9a0\" opacity=\"%.2f\"/>",
            (30 + 16 * (1 + sin(turn))) * reach, strength))
    }
}

# The sea's waves are always there, the sun's path on it comes from the horizon.
function sea(    i, paths) {
    paths = int(13 * along(34, 58))
    for (i = 1; i <= count["background", "sea"]; i++) {
        if (lines["background", "sea", i] ~ /q[0-9.]+ -[0-9.]+ [0-9.]+ 0q-/ && paths-- <= 0) continue
        put(dim(lines["background", "sea", i]))
    }
}

function boat() {
    if (frame < 24) return
    at(-130 + 345 * smooth(along(24, 74)), 216 + 14 * along(24, 74), 1)
    show("boat-" (1 + int(frame / 2) % 8), "all")
    end()
}

function gull() {
    if (frame < 46) return
    at(-90 + 9.2 * (frame - 46), 178 - 26 * along(46, 80) + 3 * sin(frame / 2), 0.8)
    show("gull-" (1 + int(frame / 1.4) % 6), "all")
    end()
}

# Its letters drop one by one, then the scroll with the second word unrolls.
function title(    i, x, drop, day) {
    day = light
    light = LEVELS
    x = 84
    for (i = 1; i <= 6; i++) {
        drop = along(36 + 3 * i, 46 + 3 * i)
        if (drop > 0) {
            at(x, 112 - 210 * (1 - springy(drop)), 1.2)
            show("title", "letter-" i)
            end()
        }
        x += advance[i] * 1.2
    }
    if (frame > 58) {
        at(152, 120, 0.82)
        show("scroll-" (frame < 60 ? 1 : frame < 62 ? 2 : 3), "all")
        end()
        if (frame > 62) {
            at(249, 152, 0.29)
            show("title", "word")
            end()
        }
    }
    light = day
}

# The picture is seen through a round opening: it opens around the lantern and closes on the boat.
function iris(    r, x, y, hole) {
    x = 548; y = 60
    r = 820 * smooth(along(0, 13))
    if (frame > 78) {
        x = 273; y = 288
        r = 460 * (1 - along(79, LAST - 1)) ^ 1.2
    }
    if (r > 800) return
    hole = r < 2 ? "" : sprintf("M%.1f %.1fa%.1f %.1f 0 1 0 %.1f 0a%.1f %.1f 0 1 0 %.1f 0Z",
                                x - r, y, r, r, 2 * r, r, r, -2 * r)
    put("<path d=\"M0 0H640V480H0Z" hole "\" fill=\"#000000\" fill-rule=\"evenodd\"/>")
}

function open(name) {
    file = sprintf("%s/%s.svg", folder, name)
    light = int(LEVELS * along(14, 58))
    put("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"640\" height=\"480\" viewBox=\"0 0 640 480\" stroke-linecap=\"round\" stroke-linejoin=\"round\">")
    show("background", "defs")
}

function shut() {
    put("</svg>")
    close(file)
}

function land(    i, names) {
    split("beach hill path woods cottage lighthouse houses quay boulders jetty rocks grasses", names, " ")
    for (i = 1; i in names; i++) {
        lampsBurn = names[i] == "lighthouse"
        show("background", names[i])
    }
    lampsBurn = 0
}

function picture() {
    open(frame + 101)
    sky()
    stars()
    moon()
    sun()
    if (light > LEVELS * 0.8) show("background", "streaks")
    show("background", "islands")
    sea()
    beam()
    boat()
    land()
    gull()
    title()
    iris()
    shut()
}

# ---- for the ending. Its beam is of three colours of the sky, since pictures of the game cover what is behind them or do not.

function night(    part, turn, side, reach, wide, step) {
    frame = 4
    open("night")
    sky()
    stars()
    put("<g transform=\"translate(-330 50)\">") # beside the scroll
    moon()
    end()
    show("background", "islands")
    sea()
    land()
    shut()
    open("tower")
    lampsBurn = 1
    show("background", "lighthouse")
    lampsBurn = 0
    shut()
    split("#3a3f5e #56566a #736f78", shade, " ")
    for (step = 1; step <= BEAMS; step++) {
        open(sprintf("beam-%02d", step))
        turn = (step - 1) / BEAMS * 6.2832
        side = cos(turn)
        for (part = 3; part >= 1; part--) {
            reach = part / 3
            wide = (16 + 26 * (1 - side * side)) * reach
            if (sin(turn) > -0.7)
                put(sprintf("<path d=\"M548 60L%.1f %.1fL%.1f %.1fZ\" fill=\"%s\" shape-rendering=\"crispEdges\"/>",
                    548 + 620 * side * reach, 60 + 40 * sin(turn) * reach - wide,
                    548 + 620 * side * reach, 60 + 40 * sin(turn) * reach + wide, shade[4 - part]))
        }
        for (part = 3; part >= 1; part--)
            put(sprintf("<circle cx=\"548\" cy=\"60\" r=\"%.1f\" fill=\"%s\" shape-rendering=\"crispEdges\"/>",
                (22 + 12 * (1 + sin(turn))) * part / 3, shade[4 - part]))
        shut()
    }
}

END {
    LEVELS = 12
    LAST = 89 # CMakeLists.txt counts on 90 frames
    rings = split("#1d2656 #242d64 #2c3373 #373b82 #46428f #574a98 #6a539e #7d5ea4 #906aa9 #a179ae " \
                  "#b089b4 #b79cc0 #b3adcf #a6bbdd #90c0e6 #7fc1ea #87c5eb #90c9ec #98ceed #a2d1ee #afd5ed " \
                  "#bdd7eb #cdd7e7 #ddd4e0 #ecd0d6 #f5cdcb #fccbbf #ffccb3 #ffd1aa #ffd7a5 #ffdfa4 #ffe7ad", ring, " ")
    starCount = split("40 96 150 210 262 318 372 400 470 506 590 612 76 128 232 288 344 60 180 452 606 500 20 560", starX, " ")
    split("60 24 84 40 110 62 28 130 52 120 36 140 128 168 176 150 172 190 130 170 96 18 140 200", starY, " ")
    split("66 60 44 62 58 38", advance, " ")
    split("#ffe9a0 #fff7cf #f4c870 #ffd257 #fffdf0", lamp, " ")
    for (i in lamp) lit[lamp[i]] = 1
    window["#6d86b5"] = window["#9db6d6"] = 1
    BEAMS = 12
    if (ending) night()
    else for (frame = 0; frame <= LAST; frame++) picture()
}
