; The pattern of a pentomino board as it is seen and stamped: without its picture, of all letters but one, changed after
; it was stamped, moved, hidden; and the stamp of a board that is gone. Cursors over pieces that were made before and after.
;: rsc golden
;> 100 screenshot none.png
;> 110 key 1
;> 120 screenshot seen.png
;> 130 key 2
;> 140 screenshot changed.png
;> 150 key 3
;> 160 screenshot hidden.png
;> 170 key 4
;> 180 screenshot larger.png
;> 190 key 5
;> 200 screenshot left.png
;> 210 key 6
;> 220 move 100 370
;> 230 down 100 370
;> 240 up 100 370
;> 250 move 460 390
;> 260 down 460 390
;> 270 up 460 390
;> 280 key 7
;> 290 down 460 390
;> 300 up 460 390
yield off
ActivateDLL golden.rsc
procedure onKey
[
get keys key word
if word="1"
[
set board solutionBoxGraphicID 99
get board solutionBoxGraphicID a
set board solutionBoxGraphicID 422
play board stamp
say a
]
if word="2"
[
play board setSolutionString 1 "-X"
play board offset 0 20
]
if word="3"
[
play board offset 0 -20
set board visible 0
play board unstamp
play board unstamp
]
if word="4"
[
set board visible 1
set board cellsV 3
play board setSolutionString 2 "X"
set board cellHeight 40
play board stamp
]
if word="5"
drop board
if word="6"
[
board=RPentominoGame 100 80 5
get board pieceGrabAOCursorID a
get board pieceSpotAOCursorID b
set board pieceGraphicID 7 407
play board setPieceHomeBox 7 30 300 130 400
set board pieceGrabAOCursorID -4
set board pieceSpotAOCursorID -2
set board pieceGraphicID 10 410
play board setPieceHomeBox 10 420 300 520 400
say a b
]
if word="7"
set board pieceGrabAOCursorID 65535
]
Scene 100
board=RPentominoGame 100 80 5
set board cellsH 5
set board cellsV 4
set board cellWidth 20
set board cellHeight 20
play board setSolutionString 1 "X-?"
play board stamp
keys=RKbdInp 0
set keys keyPressed onKey
DisplayScreen
;= -1
;= -1 -1
;! ASEQ resource 99 not found.
;# 0 title Zorbet Voyages
;# 220 cursor -2
;# 230 cursor -4
;# 240 cursor -2
;# 260 cursor -4
;# 270 cursor -2
;# 290 cursor -1
;# 300 cursor -2
;# 302 cursor -1
;# 302 end until
