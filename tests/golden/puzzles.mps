; Answers in containers of all kinds, and the puzzle's own texts and pictures. What a drop does is
; in tests/puzzles.
;: rsc golden
;$ screens
;> 90 screenshot start.png
; over the second container, then over two alike; then one with insets, and a wide one where no
; picture is
;> 100 down 22 262
;> 110 move 142 82
;> 120 move 82 52
;> 130 screenshot tie.png
;> 140 up 82 52
;> 150 drag 82 262 127 52
;> 180 drag 142 262 182 57
; the hot point over what is transparent, then over a pixel; and one to a point
;> 210 down 302 332
;> 220 move 267 17
;> 230 screenshot beside.png
;> 240 move 302 22
;> 250 screenshot hit.png
;> 260 up 302 22
;> 270 drag 422 262 392 62
; a stack, a row with one before the others, and cloth
;> 300 drag 362 332 482 62
;> 330 drag 422 332 472 32
;> 360 drag 260 262 500 32
;> 390 drag 22 332 42 162
;> 420 drag 112 332 102 167
;> 450 down 202 332
;> 460 move 12 162
;> 470 screenshot row.png
;> 480 up 12 162
;> 490 drag 72 402 470 160
;> 520 drag 22 402 480 160
;> 550 drag 322 262 480 160
;> 580 screenshot placed.png
; the lowest of the stack, put back on top; the middle of the row, to the other row; the first of
; the cloth
;> 590 down 482 82
;> 600 move 560 300
;> 610 screenshot taken.png
;> 620 move 482 32
;> 630 up 482 32
;> 640 down 86 161
;> 650 move 322 162
;> 660 screenshot gap.png
;> 670 up 322 162
;> 680 drag 150 162 232 165
;> 710 down 462 155
;> 720 move 470 300
;> 730 screenshot cloth.png
;> 740 up 470 300
; moved with what is in them, and carried from there
;> 850 screenshot moved.png
;> 860 down 312 181
;> 870 move 400 420
;> 880 screenshot carried.png
;> 890 up 400 420
;> 950 screenshot home.png
yield off
ActivateDLL golden.rsc
include steps.mps
Scene 100
a.1=RGraphicAnswer 260 20 260 10
a.2=RGraphicAnswer 261 80 260 10
a.3=RGraphicAnswer 262 140 260 10
a.4=RGraphicTextAnswer 263 250 260 10
a.5=RDoubleGraphicTextAnswer 265 320 260 10
a.6=RGraphicTextAnswer 264 420 260 10
a.7=RGraphicTextAnswer 265 20 330 10
a.8=RGraphicTextAnswer 264 110 330 10
a.9=RDoubleGraphicTextAnswer 265 200 330 10
a.10=RGraphicAnswer 261 300 330 10
a.11=RGraphicAnswer 260 360 330 10
a.12=RGraphicAnswer 264 420 330 10
a.13=RGraphicAnswer 271 20 400 10
a.14=RGraphicAnswer 272 70 400 10
for i 4 9
[
play a.i setFont 300
set a.i textColorIndex 255
]
call do "give a.2 extraLeft 5 extraTop 3 extraRight 10 value 5"
call do "give a.4 text AB textOffsetX 28 textOffsetY 8"
call do "give a.5 graphic1ID 267 graphic2ID 268 text2 gH"
call do "give a.5 text2OffsetX 70 text2OffsetY 30 textColorIndex 20"
call do "give a.6 text FACE textOffsetX -4 textOffsetY -12 extraLeft 9 extraBottom 20"
call do "give a.7 text A textOffsetX 27 textOffsetY 12"
call do "give a.8 text B textOffsetX 25 textOffsetY 11"
call do "give a.9 text1 C text1OffsetX 10 text1OffsetY 12 graphic1ID 267, give a.12 extraBottom -5"
call do "give a.10 isUsingHotPoint 1 hotPointX 20 hotPointY 30, give a.13 value 1"
call do "give a.14 value 2, give a.5 value 2"
c.1=RValueContainer 280 20 40 5
c.2=RValueContainer 280 110 40 5
c.3=RValueContainer -1 200 45 45 35 5
c.4=RAttributeContainer 281 280 40 5
c.5=RAttributeContainer 280 380 40 5
c.6=RStackingContainer 282 470 20 5
c.7=RHorizontalContainer 283 20 150 5
c.8=RHorizontalValueContainer 283 240 150 5
c.9=RFabricContainer 284 460 150 5
call do "give c.4 doPixelCompare 1"
call do "give c.5 anchorAnswerAtPoint 1 answerAnchorPointX 20 answerAnchorPointY -10"
call do "give c.2 value 5 lockCorrectAnswers 1, give c.7 deltaZ 3"
call do "give c.9 infoAOID 285 infoVerticalOffset 6"
p=RPuzzle 0
for i 1 14
play p addAnswer "a."+i
for i 1 9
play p addContainer "c."+i
play p setPuzzleTextFont 300 "" "" 255
play p setPuzzleText 1 1 520 400 30 "HEAD"
play p setPuzzleText 1 2 520 420 30 "BADE" 2
play p setPuzzleText 1 3 520 440 30 "CAGE" 3
play p setPuzzleText 1 4 220 400 60 40 30 "AB CD EF GH"
play p setPuzzleGraphic 1 3 224
play p setPuzzleGraphic 1 560 400 4 266
play p start
DisplayScreen
pause 0.83
play p shiftContainers 10 20
play c.5 place 400 250
call do "give c.1 highlighted 1, give c.9 infoVerticalOffset -8"
pause 0.17
play p reset
;! RAttributeContainer attempting pixel comparison: RAnswer must have hot point enabled
