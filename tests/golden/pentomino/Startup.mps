; A board of 5 by 4 cells that four pieces cover when they are turned and mirrored.
yield off
ActivateDLL golden.rsc
procedure lifted
say "picked up"
procedure won
say "solved"
procedure onKey
[
get keys key word
if word="t"
for i 7 10
[
get board pieceCellX i column
get board pieceCellY i row
get board pieceView i view
say "  piece" i "at" column row "view" view
]
if word="s"
play board stamp
if word="u"
play board unstamp
if word="m"
play board offset 60 20
if word="a"
set board pieceIsAnchored 8 1
if word="r"
play board reset
if word="h"
set board piecesVisible 0
if word="v"
set board piecesVisible 1
]
Scene 100
board=RPentominoGame 100 80 5
set board cellsH 5
set board cellsV 4
set board cellWidth 20
set board cellHeight 20
set board rotaterGraphicID 420
set board flipperGraphicID 421
set board solutionBoxGraphicID 422
for row 1 4
play board setSolutionString row "XXXXX"
for i 7 10
[
set board pieceGraphicID i 400+i
play board setPieceHomeBox i i*130-880 300 i*130-780 400
]
set board piecePickedUp lifted
set board solved won
keys=RKbdInp 0
set keys keyPressed onKey
DisplayScreen
