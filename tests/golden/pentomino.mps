; A pentomino board of 5 by 4 cells: pieces in all views, on the tools, on the board and at home;
; the pattern, and its stamp. What pieces do is in tests/activities.
;: rsc golden
;$ screens
;> 50 screenshot views.png
;> 140 screenshot mirrors.png
;> 200 down 439 391
;> 205 move 464 101
;> 210 screenshot mirrored.png
;> 215 move 309 231
;> 220 move 464 206
;> 225 screenshot turned.png
;> 230 move 120 108
;> 235 screenshot held.png
;> 240 up 120 108
;> 245 screenshot snapped.png
;> 310 screenshot three.png
;> 400 screenshot hidden.png
;> 490 screenshot moved.png
;> 580 screenshot unstamped.png
yield off
ActivateDLL golden.rsc
procedure turn first
for i 0 3
set board pieceView 7+i first+i
views=[1 5 0 6
columns=[0 1 0 0
rows=[1 1 0 0
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
play board setSolutionString row "XXXX-"
for i 7 10
[
set board pieceGraphicID i 400+i
play board setPieceHomeBox i i*130-880 300 i*130-780 400
]
call turn 0
DisplayScreen
pause 0.1
call turn 4
pause 0.1
for i 7 10
set board pieceView i 0
pause 0.1
for k 1 4
if k#3
[
i=k+6
set board pieceView i views.k
play board setPieceCellXY i columns.k rows.k
]
pause 0.1
set board piecesVisible 0
play board stamp
pause 0.1
set board piecesVisible 1
set board pieceIsAnchored 8 1
play board offset 60 20
pause 0.1
play board unstamp
play board reset
