; Answers are stacked: any number of them in the first container, two in the second one. The second
; answer needs more room than its picture has, the fifth one less and is wider than the stacks; the
; sixth one is right in none.
;: rsc golden
;$ screens
; each rests on the one below, and a fourth one is too high
;> 100 down 62 302
;> 110 move 80 250
;> 120 move 82 152
;> 130 screenshot over.png
;> 140 up 82 152
;> 150 down 152 302
;> 160 move 120 250
;> 170 move 72 122
;> 180 up 72 122
;> 190 down 260 302
;> 200 move 200 250
;> 210 move 90 120
;> 220 up 90 120
;> 230 screenshot three.png
;> 240 key t
;> 250 down 532 302
;> 260 move 300 200
;> 270 move 62 132
;> 280 screenshot high.png
;> 290 up 62 132
; the lowest one taken out, and put back on top
;> 300 down 72 162
;> 310 move 72 180
;> 320 move 150 230
;> 330 screenshot taken.png
;> 340 move 72 130
;> 350 up 72 130
;> 360 screenshot top.png
;> 370 key t
; the one in the middle goes to the other stack
;> 380 down 85 150
;> 390 move 120 160
;> 400 move 220 160
;> 410 up 220 160
;> 420 screenshot middle.png
;> 430 key t
; two that are right together, when the third one is gone
;> 440 down 340 302
;> 450 move 300 250
;> 460 move 230 140
;> 470 up 230 140
;> 480 down 432 302
;> 490 move 300 250
;> 500 move 212 120
;> 510 up 212 120
;> 520 key t
;> 530 screenshot full.png
;> 540 down 225 180
;> 550 move 160 180
;> 560 move 90 120
;> 570 up 90 120
;> 580 screenshot solved.png
;> 590 key t
; dropped outside, while all is right
;> 600 down 532 302
;> 610 move 500 200
;> 620 move 400 220
;> 630 up 400 220
; disabled it keeps its answers, and takes no others
;> 640 key d
;> 650 down 62 172
;> 660 move 100 250
;> 670 move 100 300
;> 680 up 100 300
;> 690 key t
;> 700 key e
; moved with its answers; then the lowest one goes
;> 710 key p
;> 720 screenshot moved.png
;> 730 down 302 322
;> 740 move 350 250
;> 750 move 450 220
;> 760 up 450 220
;> 770 key h
;> 780 screenshot fallen.png
;> 790 key t
;> 800 key x
;> 810 key t
yield off
ActivateDLL golden.rsc
include puzzle.mps
procedure act
[
if word="d"
set c.1 enabled 0
if word="e"
set c.1 enabled 1
if word="p"
play c.1 place 300 250
if word="h"
set c.2 highlighted 1
if word="x"
play p removeAnswerFromContainer "a.1" "c.1"
]
Scene 100
answers=6
containers=2
c.1=RStackingContainer 282 60 100 5
set c.1 value 6
c.2=RStackingContainer 282 200 100 5
set c.2 value 9
set c.2 solvedAnswerCount 2
a.1=RGraphicAnswer 260 60 300 10
set a.1 value 1
a.2=RGraphicAnswer 264 150 300 10
set a.2 value 2
set a.2 extraBottom -5
a.3=RGraphicAnswer 263 250 300 10
set a.3 value 3
a.4=RGraphicTextAnswer 263 330 300 10
play a.4 setFont 300
set a.4 text "AB"
set a.4 textOffsetX 3
set a.4 textOffsetY 27
set a.4 textColorIndex 255
set a.4 value "5 or so"
a.5=RDoubleGraphicTextAnswer 265 430 300 10
set a.5 graphic1ID 267
set a.5 graphic2ID 268
set a.5 value 4
set a.5 extraTop 8
set a.5 extraLeft 1
set a.5 extraRight 4
a.6=RGraphicAnswer 262 530 300 10
p=RPuzzle 0
for i 1 answers
play p addAnswer "a."+i
for i 1 containers
play p addContainer "c."+i
call listen
DisplayScreen
;= a.1 pickedUp
;= c.1 answerFlyOn
;= a.1 dropped at 80 150
;= a.1 addedToContainer
;= c.1 answerPlaced
;= a.2 pickedUp
;= c.1 answerFlyOn
;= a.2 dropped at 70 120
;= a.2 addedToContainer
;= c.1 answerPlaced
;= a.3 pickedUp
;= c.1 answerFlyOn
;= a.3 dropped at 80 118
;= a.3 addedToContainer
;= c.1 answerPlaced
;=   a.1 70 160 10 used 1 movable 1
;=   a.2 60 125 10 used 1 movable 1
;=   a.3 77 100 10 used 1 movable 1
;=   a.4 330 300 10 used 0 movable 1
;=   a.5 430 292 10 used 0 movable 1
;=   a.6 530 300 10 used 0 movable 1
;=   c.1 holds 3 full 1 solved 1
;=   c.2 holds 0 full 0 solved 0
;=   p used 0 full 0 solved 0
;= a.6 pickedUp
;= a.6 dropped at 60 130
;= a.1 pickedUp
;= c.1 answerRemoved
;= a.1 removedFromContainer
;= c.1 answerFlyOff
;= c.1 answerFlyOn
;= a.1 dropped at 70 128
;= a.1 addedToContainer
;= c.1 answerPlaced
;=   a.1 70 100 10 used 1 movable 1
;=   a.2 60 165 10 used 1 movable 1
;=   a.3 77 140 10 used 1 movable 1
;=   a.4 330 300 10 used 0 movable 1
;=   a.5 430 292 10 used 0 movable 1
;=   a.6 530 300 10 used 0 movable 1
;=   c.1 holds 3 full 1 solved 1
;=   c.2 holds 0 full 0 solved 0
;=   p used 0 full 0 solved 0
;= a.3 pickedUp
;= c.1 answerRemoved
;= a.3 removedFromContainer
;= c.1 answerFlyOff
;= c.2 answerFlyOn
;= a.3 dropped at 212 150
;= a.3 addedToContainer
;= c.2 answerPlaced
;=   a.1 70 125 10 used 1 movable 1
;=   a.2 60 165 10 used 1 movable 1
;=   a.3 217 175 10 used 1 movable 1
;=   a.4 330 300 10 used 0 movable 1
;=   a.5 430 292 10 used 0 movable 1
;=   a.6 530 300 10 used 0 movable 1
;=   c.1 holds 2 full 0 solved 0
;=   c.2 holds 1 full 0 solved 0
;=   p used 0 full 0 solved 0
;= a.4 pickedUp
;= c.2 answerFlyOn
;= a.4 dropped at 220 138
;= a.4 addedToContainer
;= c.2 answerPlaced
;= a.5 pickedUp
;= c.2 answerFlyOn
;= a.5 dropped at 210 110
;= a.5 addedToContainer
;= c.2 answerPlaced
;=   a.1 70 125 10 used 1 movable 1
;=   a.2 60 165 10 used 1 movable 1
;=   a.3 217 175 10 used 1 movable 1
;=   a.4 217 138 10 used 1 movable 1
;=   a.5 199 98 10 used 1 movable 1
;=   a.6 530 300 10 used 0 movable 1
;=   c.1 holds 2 full 0 solved 0
;=   c.2 holds 3 full 0 solved 0
;=   p used 0 full 0 solved 0
;= a.3 pickedUp
;= c.2 answerRemoved
;= a.3 removedFromContainer
;= c.2 answerFlyOff
;= c.1 answerFlyOn
;= a.3 dropped at 82 115
;= a.3 addedToContainer
;= c.1 answerPlaced
;= p puzzleSolved
;=   a.1 70 125 10 used 1 movable 1
;=   a.2 60 165 10 used 1 movable 1
;=   a.3 77 100 10 used 1 movable 1
;=   a.4 217 163 10 used 1 movable 1
;=   a.5 199 123 10 used 1 movable 1
;=   a.6 530 300 10 used 0 movable 1
;=   c.1 holds 3 full 1 solved 1
;=   c.2 holds 2 full 0 solved 1
;=   p used 0 full 0 solved 1
;= a.6 pickedUp
;= a.6 dropped at 398 218
;= p puzzleSolved
;=   a.1 70 125 10 used 1 movable 0
;=   a.2 60 165 10 used 1 movable 0
;=   a.3 77 100 10 used 1 movable 0
;=   a.4 217 163 10 used 1 movable 1
;=   a.5 199 123 10 used 1 movable 1
;=   a.6 530 300 10 used 0 movable 1
;=   c.1 holds 3 full 1 solved 1
;=   c.2 holds 2 full 0 solved 1
;=   p used 0 full 0 solved 1
;= a.2 pickedUp
;= c.1 answerRemoved
;= a.2 removedFromContainer
;= c.1 answerFlyOff
;= a.2 dropped at 448 213
;=   a.1 310 310 10 used 1 movable 1
;=   a.2 150 300 10 used 0 movable 1
;=   a.3 317 285 10 used 1 movable 1
;=   a.4 217 163 10 used 1 movable 1
;=   a.5 199 123 10 used 1 movable 1
;=   a.6 530 300 10 used 0 movable 1
;=   c.1 holds 2 full 0 solved 0
;=   c.2 holds 2 full 0 solved 1
;=   p used 0 full 0 solved 0
;=   a.1 60 300 10 used 0 movable 1
;=   a.2 150 300 10 used 0 movable 1
;=   a.3 317 325 10 used 1 movable 1
;=   a.4 217 163 10 used 1 movable 1
;=   a.5 199 123 10 used 1 movable 1
;=   a.6 530 300 10 used 0 movable 1
;=   c.1 holds 1 full 0 solved 0
;=   c.2 holds 2 full 0 solved 1
;=   p used 0 full 0 solved 0
;! Invoking method "removeAnswerFromContainer"\ncaused event "answerRemoved" (ignored)\n
;! event "removedFromContainer" (ignored)\n
