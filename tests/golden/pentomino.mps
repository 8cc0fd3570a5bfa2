; A board of 5 by 4 cells that four pieces cover when they are turned and mirrored.
;: rsc golden
;$ screens
;> 100 screenshot home.png
; 10 in view 6: mirrored and turned twice
;> 110 down 439 391
;> 120 move 464 101
;> 130 screenshot mirrored.png
;> 140 move 466 97
;> 150 move 309 231
;> 160 move 464 206
;> 170 screenshot turned.png
;> 180 move 466 209
;> 190 move 309 231
;> 200 move 464 206
;> 210 move 466 209
;> 220 move 309 231
;> 230 move 100 102
;> 240 screenshot held.png
;> 250 up 100 102
;> 260 screenshot snapped.png
; 7 in view 1; one that covers what is covered goes home
;> 270 down 59 391
;> 280 move 464 226
;> 290 move 466 229
;> 300 move 309 251
;> 310 move 109 131
;> 320 up 109 131
;> 330 screenshot sent.png
;> 340 drag 59 351 118 120
; 8 in view 5, anchored; the pattern is stamped and seen below hidden pieces
;> 370 down 189 351
;> 380 move 464 81
;> 390 move 466 77
;> 400 move 309 211
;> 410 move 464 186
;> 420 move 466 189
;> 430 move 309 211
;> 440 move 464 186
;> 450 move 466 189
;> 460 move 309 211
;> 470 move 464 186
;> 480 move 466 189
;> 490 move 309 211
;> 500 move 129 111
;> 510 up 129 111
;> 520 key a
;> 530 key t
;> 540 screenshot three.png
;> 550 key h
;> 560 key s
;> 570 screenshot hidden.png
;> 580 key v
;> 590 key m
;> 600 screenshot moved.png
;> 610 key u
;> 620 screenshot unstamped.png
; 9 in view 7, the last one
;> 630 down 309 371
;> 640 move 464 81
;> 650 move 466 77
;> 660 move 309 211
;> 670 move 464 186
;> 680 move 466 189
;> 690 move 309 211
;> 700 move 234 108
;> 710 up 234 108
;> 720 key t
;> 730 screenshot solved.png
; the anchored piece stays
;> 740 drag 189 131 309 211
;> 770 key r
;> 780 key t
;> 790 screenshot reset.png
;> 800 key t
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
;= picked up
;= picked up
;= picked up
;= picked up
;=   piece 7 at 0 1 view 1
;=   piece 8 at 1 1 view 5
;=   piece 9 at   view 0
;=   piece 10 at 0 0 view 6
;= picked up
;= solved
;=   piece 7 at 0 1 view 1
;=   piece 8 at 1 1 view 5
;=   piece 9 at 3 0 view 7
;=   piece 10 at 0 0 view 6
;=   piece 7 at   view 1
;=   piece 8 at 1 1 view 5
;=   piece 9 at   view 7
;=   piece 10 at   view 6
;=   piece 7 at   view 1
;=   piece 8 at 1 1 view 5
;=   piece 9 at   view 7
;=   piece 10 at   view 6
