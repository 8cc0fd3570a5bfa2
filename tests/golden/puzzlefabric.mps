; Pieces of cloth. The first container refuses what would be too much and keeps what is right; its
; counter hangs below it, that of the second one above.
;: rsc golden
;$ screens
;> 100 screenshot start.png
;> 110 key o
; one after the other, till nothing is free
;> 120 down 132 302
;> 130 move 200 200
;> 140 move 370 90
;> 150 screenshot over.png
;> 160 up 370 90
;> 170 down 62 302
;> 180 move 200 200
;> 190 move 380 90
;> 200 up 380 90
;> 210 screenshot three.png
;> 220 key t
;> 230 down 342 302
;> 240 move 350 200
;> 250 move 400 90
;> 260 up 400 90
;> 270 key t
;> 280 down 542 302
;> 290 move 450 200
;> 300 move 450 90
;> 310 up 450 90
; two taken from the beginning: three have no room there, two have
;> 320 down 362 85
;> 330 move 300 150
;> 340 move 200 220
;> 350 screenshot taken.png
;> 360 up 200 220
;> 370 down 222 302
;> 380 move 300 200
;> 390 move 400 90
;> 400 up 400 90
;> 410 down 432 302
;> 420 move 400 200
;> 430 move 380 90
;> 440 up 380 90
;> 450 screenshot other.png
;> 460 key t
; three are not too much, two more are, one is right and locks
;> 470 down 222 302
;> 480 move 200 200
;> 490 move 100 90
;> 500 up 100 90
;> 510 down 132 302
;> 520 move 150 200
;> 530 move 150 90
;> 540 up 150 90
;> 550 down 542 302
;> 560 move 300 200
;> 570 move 180 90
;> 580 up 180 90
;> 590 key t
;> 600 screenshot solved.png
;> 610 down 62 85
;> 620 move 100 150
;> 630 move 120 220
;> 640 up 120 220
; dropped outside while all is right
;> 650 down 132 302
;> 660 move 150 250
;> 670 move 250 200
;> 680 up 250 200
; disabled and enabled
;> 690 key d
;> 700 down 422 85
;> 710 move 450 150
;> 720 move 450 220
;> 730 up 450 220
;> 740 key e
;> 750 down 422 85
;> 760 move 450 150
;> 770 move 450 220
;> 780 up 450 220
;> 790 key t
; moved with their answers and counters
;> 800 key s
;> 810 screenshot moved.png
;> 820 key t
yield off
ActivateDLL golden.rsc
include puzzle.mps
procedure act
[
if word="o"
[
set c.1 correctSegments 6
set c.1 correctSegments -1
get c.1 correctSegments segments
say "correct segments:" segments
]
if word="d"
set c.2 enabled 0
if word="e"
set c.2 enabled 1
if word="s"
play p shiftContainers 30 60
]
Scene 100
answers=6
containers=2
c.1=RFabricContainer 284 60 80 5
set c.1 correctSegments 4
set c.1 infoAOID 285
set c.1 infoVerticalOffset 6
c.2=RFabricContainer 284 360 80 5
set c.2 correctSegments 5
set c.2 infoAOID 285
set c.2 infoVerticalOffset -8
a.1=RGraphicAnswer 271 60 300 10
a.2=RGraphicAnswer 272 130 300 10
set a.2 value 2
a.3=RGraphicAnswer 273 220 300 10
set a.3 value 3
a.4=RGraphicTextAnswer 272 340 300 10
play a.4 setFont 300
set a.4 text "AB"
set a.4 textOffsetX 20
set a.4 textOffsetY 5
set a.4 textColorIndex 255
set a.4 value 2
a.5=RDoubleGraphicTextAnswer 265 430 300 10
set a.5 graphic1ID 267
set a.5 value 2
a.6=RGraphicAnswer 271 540 300 10
set a.6 value "none"
p=RPuzzle 0
for i 1 answers
play p addAnswer "a."+i
for i 1 containers
play p addContainer "c."+i
set c.1 lockCorrectAnswers 1
set c.1 rejectIncorrectAnswers 1
call listen
DisplayScreen
;= correct segments: 4
;= a.2 pickedUp
;= c.2 answerFlyOn
;= a.2 dropped at 368 88
;= a.2 addedToContainer
;= c.2 answerPlaced
;= a.1 pickedUp
;= c.2 answerFlyOn
;= a.1 dropped at 378 88
;= a.1 addedToContainer
;= c.2 answerPlaced
;=   a.1 420 83 6 used 1 movable 1
;=   a.2 360 83 6 used 1 movable 1
;=   a.3 220 300 10 used 0 movable 1
;=   a.4 340 300 10 used 0 movable 1
;=   a.5 430 292 10 used 0 movable 1
;=   a.6 540 300 10 used 0 movable 1
;=   c.1 holds 0 full 0 solved 0
;=   c.2 holds 2 full 0 solved 0
;=   p used 0 full 0 solved 0
;= a.4 pickedUp
;= c.2 answerFlyOn
;= a.4 dropped at 398 88
;= a.4 addedToContainer
;= c.2 answerPlaced
;=   a.1 420 83 6 used 1 movable 1
;=   a.2 360 83 6 used 1 movable 1
;=   a.3 220 300 10 used 0 movable 1
;=   a.4 450 83 6 used 1 movable 1
;=   a.5 430 292 10 used 0 movable 1
;=   a.6 540 300 10 used 0 movable 1
;=   c.1 holds 0 full 0 solved 0
;=   c.2 holds 3 full 1 solved 1
;=   p used 0 full 0 solved 0
;= a.6 pickedUp
;= a.6 dropped at 448 88
;= a.2 pickedUp
;= c.2 answerRemoved
;= a.2 removedFromContainer
;= c.2 answerFlyOff
;= a.2 dropped at 198 218
;= a.3 pickedUp
;= a.3 dropped at 398 88
;= a.5 pickedUp
;= c.2 answerFlyOn
;= a.5 dropped at 378 80
;= a.5 addedToContainer
;= c.2 answerPlaced
;=   a.1 420 83 6 used 1 movable 1
;=   a.2 130 300 10 used 0 movable 1
;=   a.3 220 300 10 used 0 movable 1
;=   a.4 450 83 6 used 1 movable 1
;=   a.5 358 72 6 used 1 movable 1
;=   a.6 540 300 10 used 0 movable 1
;=   c.1 holds 0 full 0 solved 0
;=   c.2 holds 3 full 1 solved 1
;=   p used 0 full 0 solved 0
;= a.3 pickedUp
;= c.1 answerFlyOn
;= a.3 dropped at 98 88
;= a.3 addedToContainer
;= c.1 answerPlaced
;= a.2 pickedUp
;= a.2 dropped at 148 88
;= a.6 pickedUp
;= c.1 answerFlyOn
;= a.6 dropped at 178 88
;= a.6 addedToContainer
;= c.1 answerPlaced
;= p puzzleSolved
;=   a.1 420 83 6 used 1 movable 1
;=   a.2 130 300 10 used 0 movable 1
;=   a.3 60 83 6 used 1 movable 0
;=   a.4 450 83 6 used 1 movable 1
;=   a.5 358 72 6 used 1 movable 1
;=   a.6 150 83 6 used 1 movable 0
;=   c.1 holds 2 full 0 solved 1
;=   c.2 holds 3 full 1 solved 1
;=   p used 0 full 0 solved 1
;= a.2 pickedUp
;= a.2 dropped at 248 198
;= p puzzleSolved
;= a.1 pickedUp
;= c.2 answerRemoved
;= a.1 removedFromContainer
;= c.2 answerFlyOff
;= a.1 dropped at 448 218
;=   a.1 60 300 10 used 0 movable 1
;=   a.2 130 300 10 used 0 movable 1
;=   a.3 60 83 6 used 1 movable 0
;=   a.4 450 83 6 used 1 movable 1
;=   a.5 358 72 6 used 1 movable 1
;=   a.6 150 83 6 used 1 movable 0
;=   c.1 holds 2 full 0 solved 1
;=   c.2 holds 2 full 0 solved 0
;=   p used 0 full 0 solved 0
;=   a.1 60 300 10 used 0 movable 1
;=   a.2 130 300 10 used 0 movable 1
;=   a.3 90 143 6 used 1 movable 0
;=   a.4 480 143 6 used 1 movable 1
;=   a.5 388 132 6 used 1 movable 1
;=   a.6 180 143 6 used 1 movable 0
;=   c.1 holds 2 full 0 solved 1
;=   c.2 holds 2 full 0 solved 0
;=   p used 0 full 0 solved 0
;! RFabricContainer: correctSegments out of range
;! RFabricContainer: correctSegments out of range
