; A player carries pieces to the tools and drops them; handlers put the held one elsewhere, make another one of it or
; drop the board. The sounds are not there, so that boxes tell which one is played.
;: rsc golden
; four times round, with a step on the tool; mirrored, straight to the other tool and back
;> 90 down 439 391
;> 100 move 464 206
;> 110 move 466 209
;> 120 move 309 231
;> 190 move 464 206
;> 210 move 309 231
;> 280 move 464 206
;> 300 move 309 231
;> 370 move 464 206
;> 390 move 309 231
;> 460 move 464 101
;> 480 move 464 206
;> 490 move 464 101
;> 500 move 309 231
;> 510 up 309 231
; another rotater; the flipper counts on both; what is left on it holds the next one up until that is off
;> 1000 key r
;> 1010 down 439 371
;> 1020 move 447 114
;> 1030 up 447 114
;> 1040 down 59 391
;> 1050 move 464 101
;> 1060 move 570 101
;> 1070 move 464 101
;> 1080 up 464 101
;> 1090 key v
; put on the board while it is held, then carried on; it has left nothing there
;> 1100 down 59 391
;> 1110 move 370 300
;> 1120 key p
;> 1130 move 390 320
;> 1140 up 390 320
;> 1150 key v
; reset while it is held, after it was put where it began; a button that is released elsewhere drops it
;> 1200 down 129 151
;> 1210 key p
;> 1220 move 470 300
;> 1230 key o
;> 1240 move 129 151
;> 1250 background
;> 1255 up 129 151
;> 1260 foreground
;> 1270 move 570 400
;> 1280 key v
; a handler makes the piece anew when it is picked up, and when the pattern is covered
;> 1300 key a
;> 1310 down 109 131
;> 1320 move 129 131
;> 1330 up 129 131
;> 1340 key v
;> 1400 key s
;> 1410 down 59 391
;> 1420 move 109 131
;> 1430 up 109 131
;> 1440 key v
; one drops the board when the pattern is covered, and when a piece is picked up
;> 1500 key d
;> 1510 down 59 391
;> 1520 move 109 131
;> 1530 up 109 131
;> 1600 key b
;> 1610 key e
;> 1620 down 59 391
;> 1630 move 109 131
;> 1640 up 109 131
yield off
ActivateDLL golden.rsc
procedure tell what
[
get board pieceCellX 7 a
get board pieceCellY 7 b
get board pieceView 7 c
get board pieceCellX 10 d
get board pieceView 10 e
MessageBox what+a+","+b+"/"+c+" and "+d+"/"+e
]
procedure lifted
MessageBox "lifted"
procedure covered
MessageBox "covered"
procedure again
[
MessageBox "made again"
call piece 7
]
procedure gone
[
MessageBox "gone"
drop board
]
procedure piece n
[
set board pieceGraphicID n 400+n
play board setPieceHomeBox n n*130-880 300 n*130-780 400
]
procedure begin
[
board=RPentominoGame 100 80 5
set board cellsH 5
set board cellsV 4
set board cellWidth 20
set board cellHeight 20
set board rotaterGraphicID 420
set board flipperGraphicID 421
set board pieceFlippedSoundID 21
set board pieceGoHomeSoundID 22
set board piecePickedUpSoundID 23
set board pieceRotatedSoundID 24
set board pieceSnappedSoundID 25
set board piecePickedUp lifted
call piece 7
call piece 10
]
procedure onKey
[
get keys key word
if word="r"
[
set board rotaterGraphicID 99
set board rotaterGraphicID -1
get board rotaterGraphicID a
set board rotaterGraphicID 440
MessageBox "rotater "+a
]
if word="v"
call tell "at "
if word="p"
play board setPieceCellXY 7 0 0
if word="o"
[
play board setPieceCellXY 10 1 2
play board reset
]
if word="a"
set board piecePickedUp again
if word="s"
[
set board piecePickedUp
play board setSolutionString 1 "--X"
play board setSolutionString 2 "--X"
play board setSolutionString 3 "XXX"
set board solved again
]
if word="d"
set board solved gone
if word="b"
call begin
if word="e"
set board piecePickedUp gone
]
call begin
keys=RKbdInp 0
set keys keyPressed onKey
DisplayScreen
views="views "
for n 1 6
[
pause 0.1
get board pieceView 10 c
views=views+c
]
MessageBox views
;! WAVE resource 23 not found.
;! lifted
;! WAVE resource 24 not found.
;! WAVE resource 24 not found.
;! WAVE resource 24 not found.
;! WAVE resource 24 not found.
;! WAVE resource 21 not found.
;! WAVE resource 22 not found.
;! views 012304
;! ASEQ resource 99 not found.
;! rotater 420
;! WAVE resource 23 not found.
;! lifted
;! WAVE resource 21 not found.
;! WAVE resource 22 not found.
;! WAVE resource 23 not found.
;! lifted
;! WAVE resource 21 not found.
;! WAVE resource 22 not found.
;! at ,/4 and /0
;! WAVE resource 23 not found.
;! lifted
;! WAVE resource 25 not found.
;! at 1,1/4 and /0
;! WAVE resource 23 not found.
;! lifted
;! WAVE resource 25 not found.
;! at 0,0/4 and /0
;! WAVE resource 23 not found.
;! made again
;! at ,/0 and /0
;! WAVE resource 23 not found.
;! made again
;! WAVE resource 25 not found.
;! at ,/0 and /0
;! WAVE resource 23 not found.
;! gone
;! WAVE resource 23 not found.
;! gone
