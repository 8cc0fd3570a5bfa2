# awk -v blocks=BLOCKS -v follow=1 -f blocks.awk PAGE.md
#
# Splits a page of the guide into its fenced blocks and pictures: BLOCKS/NNN is what stands in a block. Prints
# "NNN LINE KIND NAME" for each: its place in the page, and the words behind the fence. On a page that is followed
# the paragraph before a block may name a file: it is a "file" after "`NAME`:", and "more" of one after "end of
# `NAME`:". Pictures are a "picture" with their file.
function tell(what) {
    printf "%03d %d %s\n", ++count, FNR, what
    target = sprintf("%s/%03d", blocks, count)
}
/^```/ {
    inside = !inside
    close(target)
    if (inside) {
        if (follow && match(before, /`[^`]+`:$/))
            tell((before ~ /end of `[^`]+`:$/ ? "more " : "file ") substr(before, RSTART + 1, RLENGTH - 3))
        else tell(substr($0, 4))
        printf "" >target
    }
    before = ""
    next
}
inside { print >target; next }
/^!\[[^]]*\]\([^)]*\)/ { tell("picture " substr($0, index($0, "](") + 2, index($0, ")") - index($0, "](") - 2)) }
NF { before = ended ? $0 : before " " $0 }
{ ended = !NF }
END { if (inside) print count " EOF unclosed" }
