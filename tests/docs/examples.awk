# Splits a page of the guide into the blocks of its examples, one file each.
#
#     awk -v blocks=FOLDER -f examples.awk PAGE.md
#
# A fenced block marked "mps" begins an example: the script Startup.mps. What follows up to the next
# one belongs to it:
#
#     mps NAME     another script of the same game       -> FOLDER/NNN.game.NAME
#     output       what it says                          -> FOLDER/NNN.output
#     again        what it says in a second run          -> FOLDER/NNN.again
#     boxes        the texts of the boxes it shows       -> FOLDER/NNN.boxes
#     input        what happens from outside             -> FOLDER/NNN.input
#     report       the whole report of the run           -> FOLDER/NNN.report
#     check        what "zorbet-mps check" prints        -> FOLDER/NNN.check
#     log          lines that stand in the log           -> FOLDER/NNN.log
#     file NAME    the file NAME that the script writes  -> FOLDER/NNN.file.NAME
#
# FOLDER/NNN.line is the line of the page where the example begins. Blocks with another mark, or
# none, are for the eye only.

function fail(text) {
    printf "%s:%d: %s\n", FILENAME, FNR, text > "/dev/stderr"
    failed = 1
    exit 1
}

function openBlock(kind, name, extra) {
    target = ""
    if (kind !~ /^(mps|output|again|boxes|input|report|check|log|file)$/) return
    if (extra != "") fail("too many words behind the fence")
    if ((kind == "file" && name == "") || (name != "" && kind !~ /^(mps|file)$/))
        fail("\"" kind "\" with a name too few or too many")
    if (kind == "mps" && name == "") {
        example = sprintf("%03d", ++count)
        printf "%d\n", FNR > (blocks "/" example ".line")
        close(blocks "/" example ".line")
    }
    if (count == 0) fail("\"" kind "\" before any example")
    if (kind == "mps" && name != "") kind = "game"
    gsub("/", "%", name) # folders of the game
    target = blocks "/" example "." kind (name == "" ? "" : "." name)
    if (target in used) fail("a second \"" kind "\" of one example")
    used[target] = 1
    printf "" > target
}

/^```/ {
    if (inside) {
        inside = 0
        if (target != "") close(target)
    } else {
        inside = 1
        openedAt = FNR
        split("", words)
        split(substr($0, 4), words, " ")
        openBlock(words[1], words[2], words[3])
    }
    next
}

inside && target != "" { print > target }

END {
    if (failed) exit 1
    if (inside) {
        printf "%s:%d: the block is not closed\n", FILENAME, openedAt > "/dev/stderr"
        exit 1
    }
    if (count == 0) {
        printf "%s: no examples\n", FILENAME > "/dev/stderr"
        exit 1
    }
}
