# Draws the pieces of the crate game out of one crate: for each of the twelve shapes of five crates, in a colour
# of its own, the eight ways in which it can lie.
#
#   awk -v folder=FOLDER -v size=SIZE -v name=NAME -f pieces.awk cell.svg
#
# writes FOLDER/NAME-PP-E.svg, PP being the number of the shape and E the place in the animation's sequence. SIZE is
# that of a cell in pixels.
# What belongs where is told in docs/classes/RPentominoGame.md. The colours of the crate in cell.svg stand for the
# three shades of each piece.

# The drawing without the lines around it.
/^<|<title>/ { next }
{ cell = cell $0 "\n" }

END {
    ink = "#46375f"
    split("XX/.X/XX .X./XXX/.X. XX./.XX/..X XX./XXX .X./XXX/X.. X../XXX/X.. ..X/..X/XXX XX./.X./.XX " \
          "XXXX/...X ..XX/XXX. X./XX/X./X. XXXXX", shapes, " ")
    split("#ee6a55 #f2b548 #7db661 #469bb5 #8a78a4 #b9a6c8 #c98a55 #5f8fb0 #f6b8a8 #ffd654 #c4e4da #fff4de",
          plain, " ")
    split("#ff9a80 #ffd654 #a5cd6c #6fbbc5 #b9a6c8 #e6dcee #eab87c #8ebcd6 #ffd9d0 #fff0a0 #e6f7ee #fffdf0",
          light, " ")
    split("#c04a4c #c98a55 #6aa958 #3f7f9c #5d5078 #8a78a4 #9c6040 #46708f #d98a84 #f2b548 #61b0c1 #e2c594",
          dark, " ")
    split("0 4 6 2 1 5 7 3", views, " ")
    for (piece = 1; piece <= 12; piece++)
        for (entry = 1; entry <= 8; entry++) draw(piece, entry)
}

# Lays the shape out in `lies`, from 1 on, and sets `columns` and `rows`.
function lay(shape, view,    lines, turned, row, column, k) {
    rows = split(shape, lines, "/")
    columns = length(lines[1])
    for (row = 1; row <= rows; row++)
        for (column = 1; column <= columns; column++)
            lies[row, column] = substr(lines[row], column, 1) == "X"
    for (k = view % 4; k > 0; k--) { # a quarter clockwise
        for (row = 1; row <= rows; row++)
            for (column = 1; column <= columns; column++)
                turned[column, rows + 1 - row] = lies[row, column]
        swap()
        copy(turned)
    }
    if (view < 4) return
    for (row = 1; row <= rows; row++)
        for (column = 1; column <= columns; column++)
            turned[row, columns + 1 - column] = lies[row, column]
    copy(turned)
}

function swap(    other) {
    other = rows
    rows = columns
    columns = other
}

function copy(from,    row, column) {
    for (row = 1; row <= rows; row++)
        for (column = 1; column <= columns; column++) lies[row, column] = from[row, column]
}

function isThere(row, column) {
    return row >= 1 && row <= rows && column >= 1 && column <= columns && lies[row, column]
}

# The edges of this crate that have no other one beside them, a little inside of it.
function edges(row, column,    left, top, right, bottom, path) {
    left = (column - 1) * size + 1
    top = (row - 1) * size + 1
    right = left + size - 2
    bottom = top + size - 2
    if (!isThere(row - 1, column)) path = path "M" left " " top "H" right
    if (!isThere(row + 1, column)) path = path "M" left " " bottom "H" right
    if (!isThere(row, column - 1)) path = path "M" left " " top "V" bottom
    if (!isThere(row, column + 1)) path = path "M" right " " top "V" bottom
    return path
}

function draw(piece, entry,    file, tinted, row, column, outline) {
    lay(shapes[piece], views[entry])
    tinted = cell
    gsub("#f2b548", "base", tinted)
    gsub("#ffd654", light[piece], tinted)
    gsub("#c98a55", dark[piece], tinted)
    gsub("base", plain[piece], tinted)
    file = sprintf("%s/%s-%02d-%d.svg", folder, name, piece, entry)
    printf "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"%d\" height=\"%d\" " \
           "stroke-linecap=\"square\">\n", columns * size, rows * size > file
    for (row = 1; row <= rows; row++)
        for (column = 1; column <= columns; column++) {
            if (!lies[row, column]) continue
            printf "<g transform=\"translate(%d %d) scale(%s)\" stroke-linecap=\"round\">\n%s</g>\n",
                   (column - 1) * size, (row - 1) * size, size / 24, tinted > file
            outline = outline edges(row, column)
        }
    printf "<path d=\"%s\" fill=\"none\" stroke=\"%s\" stroke-width=\"2\"/>\n</svg>\n", outline, ink > file
    close(file)
}
