# Splits a page that is followed step by step into its steps, in their order.
#
#     awk -v steps=FOLDER -f steps.awk PAGE.md
#
# A step is a picture or a fenced block. A block is a file when the paragraph before it ends with a name, so:
# `scripts/fruit.mps`: Where that ends with "end of `NAME`:", the block is added to the file. Others are
#
#     ```sh                      commands that the reader types
#     ```output                  all that the commands before it print
#     ```text                    for the eye only
#
# and a picture is
#
#     ![...](FOLDER/NAME.png)    what a screenshot NAME.png of the commands before it shows
#
# FOLDER/NNN.text is the content of a block. FOLDER/list has a line "NNN LINE KIND NAME" for each step:
# its place in the page, one of the kinds commands, output, file, more and picture, and the name of the
# file or picture.

function fail(text) {
    printf "%s:%d: %s\n", FILENAME, FNR, text > "/dev/stderr"
    failed = 1
    exit 1
}

function addStep(kind, name) {
    count++
    printf "%03d %d %s %s\n", count, FNR, kind, name > (steps "/list")
}

function openBlock(mark) {
    target = ""
    if (match(before, /`[^`]+`:$/))
        addStep(before ~ /end of `[^`]+`:$/ ? "more" : "file", substr(before, RSTART + 1, RLENGTH - 3))
    else if (mark == "sh") addStep("commands", "")
    else if (mark == "output") addStep("output", "")
    else if (mark == "text") return
    else fail("no text before the block names its file")
    target = sprintf("%s/%03d.text", steps, count)
    printf "" > target
}

/^```/ {
    if (inside && target != "") close(target)
    if (!inside) {
        openedAt = FNR
        openBlock(substr($0, 4))
    }
    inside = !inside
    before = ""
    next
}

inside {
    if (target != "") print > target
    next
}

match($0, /^!\[[^]]*\]\([^)]*\)/) {
    name = substr($0, RSTART, RLENGTH - 1)
    sub(/.*\(/, "", name)
    addStep("picture", name)
}

# The paragraph so far.
NF == 0 { ended = 1 }
NF > 0 {
    before = ended ? $0 : before " " $0
    ended = 0
}

END {
    if (failed) exit 1
    if (inside) {
        printf "%s:%d: the block is not closed\n", FILENAME, openedAt > "/dev/stderr"
        exit 1
    }
}
