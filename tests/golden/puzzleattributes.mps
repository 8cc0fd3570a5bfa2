; Answers and containers with attributes, all from the puzzle's entry, as are the texts and two pictures
; beside them. The second container looks for its own pixels under the hot point, the third one puts
; answers at a point, and the fourth one takes only what its word tag tells and keeps it. The second
; answer has a hot point, the third one insets.
;: rsc golden
;$ screens
;> 100 screenshot start.png
;> 110 key t
; without a hot point over the one that looks for its pixels
;> 120 down 62 252
;> 130 move 100 200
;> 140 move 180 100
;> 150 move 190 110
;> 160 up 190 110
;> 170 key t
; the hot point over what is transparent, then over a pixel
;> 180 down 162 252
;> 190 move 150 100
;> 200 move 147 37
;> 210 screenshot beside.png
;> 220 move 182 42
;> 230 screenshot hit.png
;> 240 up 182 42
;> 250 screenshot key.png
; the hot point beside the first container, then in it
;> 260 down 164 47
;> 270 move 120 70
;> 280 move 97 62
;> 290 screenshot near.png
;> 300 move 60 80
;> 310 up 60 80
;> 320 screenshot sun.png
;> 330 key t
; its hot point at the point of the third one, and home
;> 340 down 37 42
;> 350 move 200 20
;> 360 move 302 52
;> 370 up 302 52
;> 380 screenshot point.png
;> 390 down 302 22
;> 400 move 302 120
;> 410 move 250 200
;> 420 up 250 200
; the same without hot points
;> 430 down 262 252
;> 440 move 300 200
;> 450 move 310 80
;> 460 screenshot hovering.png
;> 470 up 310 80
;> 480 screenshot moon.png
;> 490 key t
; refused, and taken when it is what is asked for
;> 500 down 402 252
;> 510 move 420 150
;> 520 move 450 80
;> 530 up 450 80
;> 540 key g
;> 550 down 402 252
;> 560 move 420 150
;> 570 move 450 80
;> 580 screenshot over.png
;> 590 up 450 80
;> 600 screenshot locked.png
;> 610 down 445 120
;> 620 move 420 250
;> 630 move 420 300
;> 640 up 420 300
; the rest
;> 650 key a
;> 660 down 62 312
;> 670 move 60 200
;> 680 move 60 80
;> 690 up 60 80
;> 700 key t
;> 710 down 162 312
;> 720 move 200 150
;> 730 move 182 42
;> 740 up 182 42
;> 750 key t
;> 760 screenshot solved.png
;> 770 key s
;> 780 key p
;> 790 screenshot moved.png
;> 800 key t
yield off
ActivateDLL golden.rsc
include puzzle.mps
procedure act
[
if word="g"
set a.4 tag "Sun"
if word="s"
play p shiftContainers 10 30
if word="a"
play p shiftAnswers 0 60
if word="p"
play c.3 place 500 250
]
Scene 100
answers=4
containers=4
c.1=RAttributeContainer 280 40 60 5
c.2=RAttributeContainer 281 160 60 5
set c.2 doPixelCompare 1
c.3=RAttributeContainer 280 300 60 5
set c.3 anchorAnswerAtPoint 1
set c.3 answerAnchorPointX 20
set c.3 answerAnchorPointY -10
c.4=RAttributeContainer 280 440 60 5
set c.4 answerProperty tag
a.1=RGraphicAnswer 260 60 250 10
a.2=RGraphicAnswer 261 160 250 10
set a.2 isUsingHotPoint 1
set a.2 hotPointX 20
set a.2 hotPointY 30
a.3=RGraphicTextAnswer 264 260 250 10
play a.3 setFont 300
set a.3 textOffsetX -4
set a.3 textOffsetY -12
set a.3 textColorIndex 255
set a.3 extraLeft 9
set a.3 extraBottom 20
a.4=RDoubleGraphicTextAnswer 265 400 250 10
play a.4 setFont 300
set a.4 graphic1ID 267
set a.4 graphic2ID 268
set a.4 text1OffsetX 10
set a.4 text1OffsetY 12
set a.4 text2OffsetX 70
set a.4 text2OffsetY 30
set a.4 text2 "gH"
set a.4 textColorIndex 20
p=RPuzzle 0
for i 1 answers
play p addAnswer "a."+i
for i 1 containers
play p addContainer "c."+i
set c.4 lockCorrectAnswers 1
set c.4 rejectIncorrectAnswers 1
play p setAnswer 1 "sun" 261 "key" 260 "moon" "FACE" "Sun!" "AB"
play p setContainer 1 "sun" "key" "moon" "Sun"
play p setPuzzleTextFont 300 "" "" 255
play p setPuzzleText 1 1 320 400 30 "HEAD"
play p setPuzzleText 1 2 320 420 30 "BADE" 2
play p setPuzzleText 1 3 320 440 30 "CAGE" 3
play p setPuzzleText 1 4 20 400 60 40 30 "AB CD EF GH"
play p setPuzzleGraphic 1 3 224
play p setPuzzleGraphic 1 560 400 4 266
play p start
call listen
DisplayScreen
;=   a.1 60 250 10 used 0 movable 1
;=   a.2 160 250 10 used 0 movable 1
;=   a.3 256 238 10 used 0 movable 1
;=   a.4 400 242 10 used 0 movable 1
;=   c.1 holds 0 full 0 solved 0
;=   c.2 holds 0 full 0 solved 0
;=   c.3 holds 0 full 0 solved 0
;=   c.4 holds 0 full 0 solved 0
;=   p used 0 full 0 solved 0
;= a.1 pickedUp
;= a.1 dropped at 188 108
;=   a.1 60 250 10 used 0 movable 1
;=   a.2 160 250 10 used 0 movable 1
;=   a.3 256 238 10 used 0 movable 1
;=   a.4 400 242 10 used 0 movable 1
;=   c.1 holds 0 full 0 solved 0
;=   c.2 holds 0 full 0 solved 0
;=   c.3 holds 0 full 0 solved 0
;=   c.4 holds 0 full 0 solved 0
;=   p used 0 full 0 solved 0
;= a.2 pickedUp
;= c.2 answerFlyOn
;= c.2 answerFlyOff
;= c.2 answerFlyOn
;= a.2 dropped at 180 40
;= a.2 addedToContainer
;= c.2 answerPlaced
;= a.2 pickedUp
;= c.2 answerRemoved
;= a.2 removedFromContainer
;= c.2 answerFlyOff
;= c.1 answerFlyOn
;= a.2 dropped at 58 78
;= a.2 addedToContainer
;= c.1 answerPlaced
;=   a.1 60 250 10 used 0 movable 1
;=   a.2 35 40 6 used 1 movable 1
;=   a.3 256 238 10 used 0 movable 1
;=   a.4 400 242 10 used 0 movable 1
;=   c.1 holds 1 full 1 solved 0
;=   c.2 holds 0 full 0 solved 0
;=   c.3 holds 0 full 0 solved 0
;=   c.4 holds 0 full 0 solved 0
;=   p used 0 full 0 solved 0
;= a.2 pickedUp
;= c.1 answerRemoved
;= a.2 removedFromContainer
;= c.1 answerFlyOff
;= c.3 answerFlyOn
;= a.2 dropped at 300 50
;= a.2 addedToContainer
;= c.3 answerPlaced
;= a.2 pickedUp
;= c.3 answerRemoved
;= a.2 removedFromContainer
;= c.3 answerFlyOff
;= a.2 dropped at 248 198
;= a.3 pickedUp
;= c.3 answerFlyOn
;= a.3 dropped at 304 66
;= a.3 addedToContainer
;= c.3 answerPlaced
;=   a.1 60 250 10 used 0 movable 1
;=   a.2 160 250 10 used 0 movable 1
;=   a.3 320 50 6 used 1 movable 1
;=   a.4 400 242 10 used 0 movable 1
;=   c.1 holds 0 full 0 solved 0
;=   c.2 holds 0 full 0 solved 0
;=   c.3 holds 1 full 1 solved 1
;=   c.4 holds 0 full 0 solved 0
;=   p used 0 full 0 solved 0
;= a.4 pickedUp
;= a.4 dropped at 448 70
;= a.4 pickedUp
;= c.4 answerFlyOn
;= a.4 dropped at 448 70
;= a.4 addedToContainer
;= c.4 answerPlaced
;= a.1 pickedUp
;= c.1 answerFlyOn
;= a.1 dropped at 58 78
;= a.1 addedToContainer
;= c.1 answerPlaced
;=   a.1 57 65 6 used 1 movable 1
;=   a.2 160 310 10 used 0 movable 1
;=   a.3 320 50 6 used 1 movable 1
;=   a.4 431 66 6 used 1 movable 0
;=   c.1 holds 1 full 1 solved 1
;=   c.2 holds 0 full 0 solved 0
;=   c.3 holds 1 full 1 solved 1
;=   c.4 holds 1 full 1 solved 1
;=   p used 0 full 0 solved 0
;= a.2 pickedUp
;= c.2 answerFlyOn
;= a.2 dropped at 180 40
;= a.2 addedToContainer
;= c.2 answerPlaced
;= p containersFull
;= p answersUsed
;= p puzzleSolved
;=   a.1 57 65 6 used 1 movable 1
;=   a.2 162 45 6 used 1 movable 1
;=   a.3 320 50 6 used 1 movable 1
;=   a.4 431 66 6 used 1 movable 0
;=   c.1 holds 1 full 1 solved 1
;=   c.2 holds 1 full 1 solved 1
;=   c.3 holds 1 full 1 solved 1
;=   c.4 holds 1 full 1 solved 1
;=   p used 1 full 1 solved 1
;=   a.1 67 95 6 used 1 movable 1
;=   a.2 172 75 6 used 1 movable 1
;=   a.3 520 240 6 used 1 movable 1
;=   a.4 441 96 6 used 1 movable 0
;=   c.1 holds 1 full 1 solved 1
;=   c.2 holds 1 full 1 solved 1
;=   c.3 holds 1 full 1 solved 1
;=   c.4 holds 1 full 1 solved 1
;=   p used 1 full 1 solved 1
;! RAttributeContainer attempting pixel comparison: RAnswer must have hot point enabled
