; Answers and containers with values. The second and the fifth container keep what is right, the fifth
; one refuses what is wrong, the third one has no picture, and the fourth one is disabled at first, with
; an answer in it. The second answer has insets, the third one is wider than its containers.
;: rsc golden
;$ screens
; over the second one alone, then over two alike: the first one gets it
;> 100 down 62 302
;> 110 move 200 250
;> 120 move 152 142
;> 130 screenshot second.png
;> 140 move 122 112
;> 150 screenshot tie.png
;> 160 up 122 112
;> 170 screenshot first.png
;> 180 key t
; wrong in the second one, which another then finds full
;> 190 down 77 112
;> 200 move 100 114
;> 210 move 130 114
;> 220 move 177 122
;> 230 up 177 122
;> 240 down 152 302
;> 250 move 160 250
;> 260 move 172 152
;> 270 screenshot taken.png
;> 280 up 172 152
;> 290 key t
; out of it, and dropped where nothing is
;> 300 down 167 112
;> 310 move 167 160
;> 320 move 240 230
;> 330 move 300 252
;> 340 screenshot outside.png
;> 350 up 300 252
; the right one, which cannot be taken out any more
;> 360 down 152 302
;> 370 move 172 200
;> 380 move 168 120
;> 390 screenshot over.png
;> 400 up 168 120
;> 410 screenshot locked.png
;> 420 down 172 106
;> 430 move 172 160
;> 440 move 300 250
;> 450 up 300 250
;> 460 key t
; wider than its container, then in the one without a picture
;> 470 down 252 302
;> 480 move 200 250
;> 490 move 62 132
;> 500 up 62 132
;> 510 screenshot wide.png
;> 520 down 50 122
;> 530 move 200 130
;> 540 move 292 112
;> 550 up 292 112
; its value begins with the right number
;> 560 down 410 302
;> 570 move 300 200
;> 580 move 100 130
;> 590 up 100 130
;> 600 screenshot placed.png
;> 610 key t
; refused: disabled, with an answer that it keeps; then by a container that takes only what is right
;> 620 down 62 302
;> 630 move 300 200
;> 640 move 420 120
;> 650 up 420 120
;> 660 down 62 302
;> 670 move 300 200
;> 680 move 520 120
;> 690 up 520 120
;> 700 down 405 122
;> 710 move 420 180
;> 720 move 510 300
;> 730 up 510 300
;> 740 key t
; enabled again, it lets go
;> 750 key e
;> 760 down 405 122
;> 770 move 450 120
;> 780 move 504 134
;> 790 up 504 134
;> 800 screenshot enabled.png
; all full, and one wrong
;> 810 down 62 302
;> 820 move 300 200
;> 830 move 422 112
;> 840 up 422 112
;> 850 key t
; all of them moved, then one, then one dragged
;> 860 key s
;> 870 screenshot moved.png
;> 880 key p
;> 890 key m
;> 900 down 422 150
;> 910 move 450 200
;> 920 screenshot carried.png
;> 930 move 522 310
;> 940 up 522 310
;> 950 screenshot dropped.png
;> 960 key t
; what was wrong is right now
;> 970 key v
;> 980 down 540 324
;> 990 move 500 330
;> 1000 move 400 400
;> 1010 up 400 400
;> 1020 key t
;> 1030 down 62 302
;> 1040 move 300 350
;> 1050 move 530 320
;> 1060 up 530 320
;> 1070 key t
; all go home; what was locked stays fixed until it is let go
;> 1080 key r
;> 1090 key t
;> 1100 screenshot home.png
;> 1110 down 152 302
;> 1120 move 160 200
;> 1130 move 200 160
;> 1140 up 200 160
;> 1150 key u
;> 1160 down 152 302
;> 1170 move 160 200
;> 1180 move 200 160
;> 1190 up 200 160
;> 1200 key t
yield off
ActivateDLL golden.rsc
include puzzle.mps
procedure act
[
if word="e"
set c.4 enabled 1
if word="s"
play p shiftContainers 20 40
if word="p"
play c.1 place 20 20
if word="m"
set c.4 movable 1
if word="v"
set c.4 value 3
if word="r"
play p reset
if word="u"
play p unanchorAnswers
]
Scene 100
answers=5
containers=5
c.1=RValueContainer 280 60 100 5
c.2=RValueContainer 280 150 100 5
c.3=RValueContainer -1 300 100 45 35 5
c.4=RValueContainer 280 400 100 5
c.5=RValueContainer 280 500 100 5
set c.1 value 3
set c.2 value 5
set c.3 value 7
set c.4 value 4
set c.5 value 9
a.1=RGraphicAnswer 260 60 300 10
set a.1 value 3
a.2=RGraphicAnswer 261 150 300 10
set a.2 value "5"
set a.2 extraLeft 5
set a.2 extraTop 3
set a.2 extraRight 10
a.3=RGraphicAnswer 262 250 300 10
set a.3 value 7
a.4=RGraphicTextAnswer 263 400 300 10
play a.4 setFont 300
set a.4 text "AB"
set a.4 textOffsetX 28
set a.4 textOffsetY 8
set a.4 textColorIndex 255
set a.4 value "3 apples"
a.5=RDoubleGraphicTextAnswer 265 500 300 10
set a.5 graphic1ID 267
set a.5 graphic2ID 268
set a.5 attribute 9
p=RPuzzle 0
for i 1 answers
play p addAnswer "a."+i
for i 1 containers
play p addContainer "c."+i
set c.2 lockCorrectAnswers 1
set c.5 lockCorrectAnswers 1
set c.5 rejectIncorrectAnswers 1
play p addAnswerToContainer "a.5" "c.4"
set c.4 enabled 0
call listen
DisplayScreen
;= a.1 pickedUp
;= c.2 answerFlyOn
;= c.2 answerFlyOff
;= c.1 answerFlyOn
;= a.1 dropped at 120 110
;= a.1 addedToContainer
;= c.1 answerPlaced
;=   a.1 75 110 6 used 1 movable 1
;=   a.2 150 300 10 used 0 movable 1
;=   a.3 250 300 10 used 0 movable 1
;=   a.4 400 300 10 used 0 movable 1
;=   a.5 403 110 6 used 1 movable 0
;=   c.1 holds 1 full 1 solved 1
;=   c.2 holds 0 full 0 solved 0
;=   c.3 holds 0 full 0 solved 0
;=   c.4 holds 1 full 1 solved 0
;=   c.5 holds 0 full 0 solved 0
;=   p used 0 full 0 solved 0
;= a.1 pickedUp
;= c.1 answerRemoved
;= a.1 removedFromContainer
;= c.1 answerFlyOff
;= c.2 answerFlyOn
;= a.1 dropped at 175 120
;= a.1 addedToContainer
;= c.2 answerPlaced
;= a.2 pickedUp
;= a.2 dropped at 170 150
;=   a.1 165 110 6 used 1 movable 1
;=   a.2 150 300 10 used 0 movable 1
;=   a.3 250 300 10 used 0 movable 1
;=   a.4 400 300 10 used 0 movable 1
;=   a.5 403 110 6 used 1 movable 0
;=   c.1 holds 0 full 0 solved 0
;=   c.2 holds 1 full 1 solved 0
;=   c.3 holds 0 full 0 solved 0
;=   c.4 holds 1 full 1 solved 0
;=   c.5 holds 0 full 0 solved 0
;=   p used 0 full 0 solved 0
;= a.1 pickedUp
;= c.2 answerRemoved
;= a.1 removedFromContainer
;= c.2 answerFlyOff
;= a.1 dropped at 298 250
;= a.2 pickedUp
;= c.2 answerFlyOn
;= a.2 dropped at 166 118
;= a.2 addedToContainer
;= c.2 answerPlaced
;=   a.1 60 300 10 used 0 movable 1
;=   a.2 170 104 6 used 1 movable 0
;=   a.3 250 300 10 used 0 movable 1
;=   a.4 400 300 10 used 0 movable 1
;=   a.5 403 110 6 used 1 movable 0
;=   c.1 holds 0 full 0 solved 0
;=   c.2 holds 1 full 1 solved 1
;=   c.3 holds 0 full 0 solved 0
;=   c.4 holds 1 full 1 solved 0
;=   c.5 holds 0 full 0 solved 0
;=   p used 0 full 0 solved 0
;= a.3 pickedUp
;= c.1 answerFlyOn
;= a.3 dropped at 60 130
;= a.3 addedToContainer
;= c.1 answerPlaced
;= a.3 pickedUp
;= c.1 answerRemoved
;= a.3 removedFromContainer
;= c.1 answerFlyOff
;= c.3 answerFlyOn
;= a.3 dropped at 290 110
;= a.3 addedToContainer
;= c.3 answerPlaced
;= a.4 pickedUp
;= c.1 answerFlyOn
;= a.4 dropped at 90 128
;= a.4 addedToContainer
;= c.1 answerPlaced
;=   a.1 60 300 10 used 0 movable 1
;=   a.2 170 104 6 used 1 movable 0
;=   a.3 275 107 6 used 1 movable 1
;=   a.4 71 117 6 used 1 movable 1
;=   a.5 403 110 6 used 1 movable 0
;=   c.1 holds 1 full 1 solved 1
;=   c.2 holds 1 full 1 solved 1
;=   c.3 holds 1 full 1 solved 1
;=   c.4 holds 1 full 1 solved 0
;=   c.5 holds 0 full 0 solved 0
;=   p used 0 full 0 solved 0
;= a.1 pickedUp
;= a.1 dropped at 418 118
;= a.1 pickedUp
;= a.1 dropped at 518 118
;=   a.1 60 300 10 used 0 movable 1
;=   a.2 170 104 6 used 1 movable 0
;=   a.3 275 107 6 used 1 movable 1
;=   a.4 71 117 6 used 1 movable 1
;=   a.5 403 110 6 used 1 movable 0
;=   c.1 holds 1 full 1 solved 1
;=   c.2 holds 1 full 1 solved 1
;=   c.3 holds 1 full 1 solved 1
;=   c.4 holds 1 full 1 solved 0
;=   c.5 holds 0 full 0 solved 0
;=   p used 0 full 0 solved 0
;= a.5 pickedUp
;= c.4 answerRemoved
;= a.5 removedFromContainer
;= c.4 answerFlyOff
;= c.5 answerFlyOn
;= a.5 dropped at 502 122
;= a.5 addedToContainer
;= c.5 answerPlaced
;= a.1 pickedUp
;= c.4 answerFlyOn
;= a.1 dropped at 420 110
;= a.1 addedToContainer
;= c.4 answerPlaced
;= p containersFull
;= p answersUsed
;= p puzzleWrong
;=   a.1 415 110 6 used 1 movable 1
;=   a.2 170 104 6 used 1 movable 0
;=   a.3 275 107 6 used 1 movable 1
;=   a.4 71 117 6 used 1 movable 1
;=   a.5 503 110 6 used 1 movable 0
;=   c.1 holds 1 full 1 solved 1
;=   c.2 holds 1 full 1 solved 1
;=   c.3 holds 1 full 1 solved 1
;=   c.4 holds 1 full 1 solved 0
;=   c.5 holds 1 full 1 solved 1
;=   p used 1 full 1 solved 0
;=   a.1 535 310 6 used 1 movable 1
;=   a.2 190 144 6 used 1 movable 0
;=   a.3 295 147 6 used 1 movable 1
;=   a.4 31 37 6 used 1 movable 1
;=   a.5 523 150 6 used 1 movable 0
;=   c.1 holds 1 full 1 solved 1
;=   c.2 holds 1 full 1 solved 1
;=   c.3 holds 1 full 1 solved 1
;=   c.4 holds 1 full 1 solved 0
;=   c.5 holds 1 full 1 solved 1
;=   p used 1 full 1 solved 0
;= a.1 pickedUp
;= c.4 answerRemoved
;= a.1 removedFromContainer
;= c.4 answerFlyOff
;= a.1 dropped at 395 386
;=   a.1 60 300 10 used 0 movable 1
;=   a.2 190 144 6 used 1 movable 0
;=   a.3 295 147 6 used 1 movable 1
;=   a.4 31 37 6 used 1 movable 1
;=   a.5 523 150 6 used 1 movable 0
;=   c.1 holds 1 full 1 solved 1
;=   c.2 holds 1 full 1 solved 1
;=   c.3 holds 1 full 1 solved 1
;=   c.4 holds 0 full 0 solved 0
;=   c.5 holds 1 full 1 solved 1
;=   p used 0 full 0 solved 0
;= a.1 pickedUp
;= c.4 answerFlyOn
;= a.1 dropped at 528 318
;= a.1 addedToContainer
;= c.4 answerPlaced
;= p containersFull
;= p answersUsed
;= p puzzleSolved
;=   a.1 535 310 6 used 1 movable 1
;=   a.2 190 144 6 used 1 movable 0
;=   a.3 295 147 6 used 1 movable 1
;=   a.4 31 37 6 used 1 movable 1
;=   a.5 523 150 6 used 1 movable 0
;=   c.1 holds 1 full 1 solved 1
;=   c.2 holds 1 full 1 solved 1
;=   c.3 holds 1 full 1 solved 1
;=   c.4 holds 1 full 1 solved 1
;=   c.5 holds 1 full 1 solved 1
;=   p used 1 full 1 solved 1
;=   a.1 60 300 10 used 0 movable 1
;=   a.2 150 300 10 used 0 movable 0
;=   a.3 250 300 10 used 0 movable 1
;=   a.4 400 300 10 used 0 movable 1
;=   a.5 500 292 10 used 0 movable 0
;=   c.1 holds 0 full 0 solved 0
;=   c.2 holds 0 full 0 solved 0
;=   c.3 holds 0 full 0 solved 0
;=   c.4 holds 0 full 0 solved 0
;=   c.5 holds 0 full 0 solved 0
;=   p used 0 full 0 solved 0
;= a.2 pickedUp
;= c.2 answerFlyOn
;= a.2 dropped at 198 158
;= a.2 addedToContainer
;= c.2 answerPlaced
;=   a.1 60 300 10 used 0 movable 1
;=   a.2 190 144 6 used 1 movable 0
;=   a.3 250 300 10 used 0 movable 1
;=   a.4 400 300 10 used 0 movable 1
;=   a.5 500 292 10 used 0 movable 1
;=   c.1 holds 0 full 0 solved 0
;=   c.2 holds 1 full 1 solved 1
;=   c.3 holds 0 full 0 solved 0
;=   c.4 holds 0 full 0 solved 0
;=   c.5 holds 0 full 0 solved 0
;=   p used 0 full 0 solved 0
;! Invoking method "reset"\ncaused event "answerRemoved" (ignored)\n
;! event "removedFromContainer" (ignored)\n
;! event "answerRemoved" (ignored)\n
;! event "removedFromContainer" (ignored)\n
;! event "answerRemoved" (ignored)\n
;! event "removedFromContainer" (ignored)\n
;! event "answerRemoved" (ignored)\n
;! event "removedFromContainer" (ignored)\n
;! event "answerRemoved" (ignored)\n
;! event "removedFromContainer" (ignored)\n
