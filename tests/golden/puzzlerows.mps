; Answers in rows: a word in the first container, a sum in the second one.
;: rsc golden
;$ screens
; the word, and a letter before it
;> 100 down 42 302
;> 110 move 60 200
;> 120 move 62 72
;> 130 up 62 72
;> 140 down 132 302
;> 150 move 130 200
;> 160 move 122 77
;> 170 up 122 77
;> 180 key t
;> 190 screenshot word.png
;> 200 down 222 302
;> 210 move 130 200
;> 220 move 32 72
;> 230 screenshot before.png
;> 240 up 32 72
;> 250 screenshot pushed.png
;> 260 key t
; too wide; one that is narrow enough, and the longer word
;> 270 down 322 302
;> 280 move 300 200
;> 290 move 150 80
;> 300 up 150 80
;> 310 key w
;> 320 down 410 302
;> 330 move 300 200
;> 340 move 215 72
;> 350 up 215 72
;> 360 key t
;> 370 screenshot full.png
; taken out of the middle, and put in farther on
;> 380 down 106 71
;> 390 move 110 120
;> 400 move 150 220
;> 410 screenshot gap.png
;> 420 move 192 77
;> 430 up 192 77
;> 440 screenshot later.png
;> 450 key t
; the sum: two with the same middle; one before them; one taken out
;> 460 down 166 71
;> 470 move 250 130
;> 480 move 362 72
;> 490 up 362 72
;> 500 down 322 302
;> 510 move 250 200
;> 520 move 172 82
;> 530 up 172 82
;> 540 screenshot between.png
;> 550 down 106 72
;> 560 move 250 130
;> 570 move 344 72
;> 580 up 344 72
;> 590 key t
;> 600 down 482 302
;> 610 move 450 200
;> 620 move 400 90
;> 630 up 400 90
;> 640 down 166 67
;> 650 move 250 130
;> 660 move 332 72
;> 670 screenshot sum.png
;> 680 up 332 72
;> 690 key t
;> 700 down 382 71
;> 710 move 350 200
;> 720 move 300 250
;> 730 up 300 250
;> 740 key t
;> 750 screenshot right.png
; disabled, and enabled
;> 760 key d
;> 770 down 342 67
;> 780 move 350 200
;> 790 move 300 250
;> 800 up 300 250
;> 810 down 42 302
;> 820 move 200 250
;> 830 move 400 90
;> 840 up 400 90
;> 850 key t
;> 860 key e
; moved with their answers
;> 870 key s
;> 880 key p
;> 890 screenshot moved.png
;> 900 down 42 302
;> 910 move 60 250
;> 920 move 102 192
;> 930 up 102 192
;> 940 screenshot packed.png
;> 950 key t
yield off
ActivateDLL golden.rsc
include puzzle.mps
procedure act
[
if word="w"
play c.1 addAnswerMatch "CAB"
if word="p"
play c.1 place 40 180
if word="d"
set c.2 enabled 0
if word="e"
set c.2 enabled 1
if word="s"
play p shiftContainers 0 20
]
procedure letter number letters
[
play a.number setFont 300
set a.number textColorIndex 255
set a.number attribute letters
]
Scene 100
answers=6
containers=2
c.1=RHorizontalContainer 283 40 60 5
set c.1 answerMatchString "AB"
set c.1 deltaZ 3
c.2=RHorizontalValueContainer 283 340 60 5
set c.2 value 7
a.1=RGraphicTextAnswer 265 40 300 20
set a.1 text "A"
set a.1 textOffsetX 27
set a.1 textOffsetY 12
set a.1 value 1
call letter 1 "A"
a.2=RGraphicTextAnswer 264 130 300 20
set a.2 text "B"
set a.2 textOffsetX 25
set a.2 textOffsetY 11
set a.2 value 2
call letter 2 "B"
a.3=RDoubleGraphicTextAnswer 265 220 300 20
set a.3 graphic1ID 267
set a.3 text1 "C"
set a.3 text1OffsetX 10
set a.3 text1OffsetY 12
set a.3 value 4
call letter 3 "C"
a.4=RGraphicAnswer 260 320 300 20
set a.4 value 5
a.5=RGraphicAnswer 263 400 300 20
set a.5 value 1
set a.5 extraLeft 7
set a.5 extraRight 6
a.6=RGraphicAnswer 262 480 300 20
set a.6 value "one"
p=RPuzzle 0
for i 1 answers
play p addAnswer "a."+i
for i 1 containers
play p addContainer "c."+i
call listen
DisplayScreen
;= a.1 pickedUp
;= c.1 answerFlyOn
;= a.1 dropped at 60 70
;= a.1 addedToContainer
;= c.1 answerPlaced
;= a.2 pickedUp
;= c.1 answerFlyOn
;= a.2 dropped at 120 75
;= a.2 addedToContainer
;= c.1 answerPlaced
;=   a.1 40 69 8 used 1 movable 1
;=   a.2 104 70 8 used 1 movable 1
;=   a.3 220 292 20 used 0 movable 1
;=   a.4 320 300 20 used 0 movable 1
;=   a.5 400 300 20 used 0 movable 1
;=   a.6 480 300 20 used 0 movable 1
;=   c.1 holds 2 full 0 solved 1
;=   c.2 holds 0 full 0 solved 0
;=   p used 0 full 0 solved 0
;= a.3 pickedUp
;= c.1 answerFlyOn
;= a.3 dropped at 30 62
;= a.3 addedToContainer
;= c.1 answerPlaced
;=   a.1 104 69 8 used 1 movable 1
;=   a.2 168 70 8 used 1 movable 1
;=   a.3 40 65 8 used 1 movable 1
;=   a.4 320 300 20 used 0 movable 1
;=   a.5 400 300 20 used 0 movable 1
;=   a.6 480 300 20 used 0 movable 1
;=   c.1 holds 3 full 0 solved 0
;=   c.2 holds 0 full 0 solved 0
;=   p used 0 full 0 solved 0
;= a.4 pickedUp
;= a.4 dropped at 148 78
;= a.5 pickedUp
;= c.1 answerFlyOn
;= a.5 dropped at 205 70
;= a.5 addedToContainer
;= c.1 answerPlaced
;=   a.1 104 69 8 used 1 movable 1
;=   a.2 168 70 8 used 1 movable 1
;=   a.3 40 65 8 used 1 movable 1
;=   a.4 320 300 20 used 0 movable 1
;=   a.5 221 72 8 used 1 movable 1
;=   a.6 480 300 20 used 0 movable 1
;=   c.1 holds 4 full 1 solved 1
;=   c.2 holds 0 full 0 solved 0
;=   p used 0 full 0 solved 0
;= a.1 pickedUp
;= c.1 answerRemoved
;= a.1 removedFromContainer
;= c.1 answerFlyOff
;= c.1 answerFlyOn
;= a.1 dropped at 190 75
;= a.1 addedToContainer
;= c.1 answerPlaced
;=   a.1 164 69 8 used 1 movable 1
;=   a.2 104 70 8 used 1 movable 1
;=   a.3 40 65 8 used 1 movable 1
;=   a.4 320 300 20 used 0 movable 1
;=   a.5 221 72 8 used 1 movable 1
;=   a.6 480 300 20 used 0 movable 1
;=   c.1 holds 4 full 1 solved 0
;=   c.2 holds 0 full 0 solved 0
;=   p used 0 full 0 solved 0
;= a.1 pickedUp
;= c.1 answerRemoved
;= a.1 removedFromContainer
;= c.1 answerFlyOff
;= c.2 answerFlyOn
;= a.1 dropped at 360 70
;= a.1 addedToContainer
;= c.2 answerPlaced
;= a.4 pickedUp
;= c.1 answerFlyOn
;= a.4 dropped at 170 80
;= a.4 addedToContainer
;= c.1 answerPlaced
;= a.2 pickedUp
;= c.1 answerRemoved
;= a.2 removedFromContainer
;= c.1 answerFlyOff
;= c.2 answerFlyOn
;= a.2 dropped at 342 70
;= a.2 addedToContainer
;= c.2 answerPlaced
;=   a.1 340 69 6 used 1 movable 1
;=   a.2 404 70 6 used 1 movable 1
;=   a.3 40 65 8 used 1 movable 1
;=   a.4 164 65 8 used 1 movable 1
;=   a.5 197 72 8 used 1 movable 1
;=   a.6 480 300 20 used 0 movable 1
;=   c.1 holds 3 full 0 solved 0
;=   c.2 holds 2 full 0 solved 0
;=   p used 0 full 0 solved 0
;= a.6 pickedUp
;= a.6 dropped at 398 88
;= a.4 pickedUp
;= c.1 answerRemoved
;= a.4 removedFromContainer
;= c.1 answerFlyOff
;= c.2 answerFlyOn
;= a.4 dropped at 330 70
;= a.4 addedToContainer
;= c.2 answerPlaced
;=   a.1 380 69 6 used 1 movable 1
;=   a.2 444 70 6 used 1 movable 1
;=   a.3 40 65 8 used 1 movable 1
;=   a.4 340 65 6 used 1 movable 1
;=   a.5 197 72 8 used 1 movable 1
;=   a.6 480 300 20 used 0 movable 1
;=   c.1 holds 2 full 0 solved 0
;=   c.2 holds 3 full 0 solved 0
;=   p used 0 full 0 solved 0
;= a.1 pickedUp
;= c.2 answerRemoved
;= a.1 removedFromContainer
;= c.2 answerFlyOff
;= a.1 dropped at 298 248
;=   a.1 40 300 20 used 0 movable 1
;=   a.2 444 70 6 used 1 movable 1
;=   a.3 40 65 8 used 1 movable 1
;=   a.4 340 65 6 used 1 movable 1
;=   a.5 197 72 8 used 1 movable 1
;=   a.6 480 300 20 used 0 movable 1
;=   c.1 holds 2 full 0 solved 0
;=   c.2 holds 2 full 0 solved 1
;=   p used 0 full 0 solved 0
;= a.1 pickedUp
;= a.1 dropped at 398 88
;=   a.1 40 300 20 used 0 movable 1
;=   a.2 444 70 6 used 1 movable 0
;=   a.3 40 65 8 used 1 movable 1
;=   a.4 340 65 6 used 1 movable 0
;=   a.5 197 72 8 used 1 movable 1
;=   a.6 480 300 20 used 0 movable 1
;=   c.1 holds 2 full 0 solved 0
;=   c.2 holds 2 full 0 solved 1
;=   p used 0 full 0 solved 0
;= a.1 pickedUp
;= c.1 answerFlyOn
;= a.1 dropped at 100 190
;= a.1 addedToContainer
;= c.1 answerPlaced
;=   a.1 104 189 8 used 1 movable 1
;=   a.2 444 90 6 used 1 movable 1
;=   a.3 40 185 8 used 1 movable 1
;=   a.4 340 85 6 used 1 movable 1
;=   a.5 161 192 8 used 1 movable 1
;=   a.6 480 300 20 used 0 movable 1
;=   c.1 holds 3 full 0 solved 0
;=   c.2 holds 2 full 0 solved 1
;=   p used 0 full 0 solved 0
