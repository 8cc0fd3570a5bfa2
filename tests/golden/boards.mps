; A dialog, a backpack, a board of pegs and one of pentominoes, with figures before and behind them.
; What they do is in tests/dialog, tests/backpack and tests/activities.
;: rsc golden
; a figure is seen through the dialog's hole; a button, under a picture, drops the dialog
;> 50 screenshot asked.png
;> 60 tap 292 114
;> 65 screenshot pressed.png
;> 150 screenshot mirrors.png
; a piece over both tools, then on the board; a thing that is larger than its cell; a jump
;> 200 down 400 390
;> 205 move 494 101
;> 210 move 494 206
;> 215 screenshot turned.png
;> 220 up 82 24
;> 225 pull 147 264 300 240
;> 240 screenshot thing.png
;> 250 down 535 325
;> 255 move 600 280
;> 260 screenshot peg.png
;> 265 pull 600 280 575 245
;> 295 screenshot snapped.png
; the backpack is dragged, and closed
;> 390 pull 35 280 120 380
;> 440 screenshot moved.png
;> 450 tap 205 305
;> 580 screenshot left.png
include golden.mps
include steps.mps
procedure pressed
drop question
procedure turn first
for i 0 3
set p pieceView 7+i first+i
items=[1 5 28 1 19
world=RWorldPort 0
play world activatePlayer Ana
for i 1 5
play world backpackAddObject items.i
play world backpackRemoveObject 3
f.1=RAnimation 200 200 200 10
f.2=RAnimation 201 365 50 100
pack=RBackPack 430 60 180 5
question=RDialog 440 100
play question addGraphic 444
for i 1 3
play question addButton 440+i i*10
play question addGraphic 445
play question offset 0-20 0-110
set question buttonPressed pressed
game=RPegGame 10
set game pegID 450
set game pegMovingZ 50
hole=1
for row 0 4
for column 0 row
[
set game pegX hole 560-row*20+column*40
set game pegY hole 230+row*40
hole=hole+1
]
play game reset
stripe=RAnimation 262 550 255 20
set stripe touchy 0
p=RPentominoGame 10 10 5
call do "give p cellsH 5 cellsV 4 cellWidth 20 cellHeight 20 rotaterGraphicID 420"
call do "give p flipperGraphicID 421 solutionBoxGraphicID 422"
for row 1 4
play p setSolutionString row "XXXX-"
for i 7 10
[
set p pieceGraphicID i 400+i
play p setPieceHomeBox i i*110-760 360 i*110-660 460
]
call turn 0
DisplayScreen
pause 0.1
call turn 4
play pack removeObject 2
play pack addObject 28
play pack addObject 19
set pack z 20
pause 0.26
set p pieceView 8 5
play p setPieceCellXY 8 0 1
play p stamp
set p pieceIsAnchored 8 1
play p offset 60 20
set p piecesVisible 0
set game pegID 263
play game fill
play pack place 30 170
pause 0.16
set p piecesVisible 1
play p unstamp
play p reset
drop game
set pack z 5
