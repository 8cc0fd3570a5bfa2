; Answers in containers of all kinds and in none, and the puzzle's own texts and pictures. What a
; drop does is in tests/puzzles.
;: rsc golden
;> 50 screenshot start.png
; over two alike; the hot point over a pixel; a gap in one row and another one
;> 100 pull 22 262 82 52
;> 115 screenshot tie.png
;> 140 pull 342 262 302 22
;> 155 screenshot hit.png
;> 240 screenshot placed.png
;> 250 pull 48 183 322 162
;> 265 screenshot gap.png
; moved with what is in them, and played
;> 370 screenshot moved.png
;> 520 screenshot home.png
include golden.mps
include steps.mps
procedure make number left top
[
play a.number setFont 300
call do "give a."+number+" text1OffsetX 22 text1OffsetY 2 text1 HEAD text2OffsetX 30"
call do "give a."+number+" text2OffsetY 20 graphic1ID 267 graphic2ID 268 text2 CGA"
set a.number textColorIndex 255
]
procedure label number picture left letters over down color
[
a.number=RGraphicTextAnswer picture left 330 10
play a.number setFont 300
call do "give a."+number+" textOffsetX "+over+" textOffsetY "+down+" textColorIndex "+color
set a.number text letters
]
pictures=[260 261 262 263 264 264 271 272
for i 1 8
a.i=RGraphicAnswer pictures.i i*80-60 260 10
call do "give a.2 extraLeft 5 extraTop 3 extraRight 10 value 5 drawDirection 4, give a.7 value 1"
call do "give a.8 value 2, give a.5 isUsingHotPoint 1 hotPointX 20 hotPointY 30"
; a text beside its picture, above on the left, across, without one, with letters that are not
; there, over an edge
call label 11 263 20 "AB" 30 8 255
call label 12 263 120 "HAD" -20 -14 20
call label 13 264 200 "jfg__" -4 10 0
call label 14 -1 300 "BADE" 0 0 255
call label 15 264 380 "AxB" 5 35 22
call label 16 264 600 "MEADE" -20 12 255
play a.15 setFont 302
; as they are; both pictures behind; one over the texts; another thing between; without a base
for i 21 25
[
a.i=RDoubleGraphicTextAnswer 265-(266*(i=25)) i*100-2080 400 10
call make i
]
call do "give a.22 graphic1OffsetZ -1 graphic2OffsetZ -2"
call do "give a.23 graphic1OffsetZ 2 graphic2OffsetZ 1, give a.12 extraBottom -5"
call do "give a.24 graphic1OffsetZ -1 graphic2OffsetZ 1"
ring=RAnimation 237 310 410 9
for i 1 2
c.i=RValueContainer 280 i*90-70 40 5
c.3=RValueContainer -1 200 45 45 35 5
c.4=RAttributeContainer 281 280 40 5
c.5=RAttributeContainer 280 380 40 5
c.6=RStackingContainer 282 470 20 5
c.7=RHorizontalContainer 283 20 150 5
c.8=RHorizontalValueContainer 283 240 150 5
c.9=RFabricContainer 284 460 150 5
call do "give c.4 doPixelCompare 1, give c.9 infoAOID 285 infoVerticalOffset 6"
call do "give c.5 anchorAnswerAtPoint 1 answerAnchorPointX 20 answerAnchorPointY -10"
call do "give c.2 value 5 lockCorrectAnswers 1, give c.7 deltaZ 3"
play a.2 replacePaletteEntry 21 24
play c.1 replacePaletteEntry 27 22
play c.1 replacePaletteEntry 100 23
play c.9 replacePaletteEntry 13 23
p=RPuzzle 0
for i 1 25
if (i<9)+(i>10)*((i<17)+(i>20))
play p addAnswer "a."+i
for i 1 9
play p addContainer "c."+i
play p setPuzzleTextFont 300 "" "" 255
play p setPuzzleText 1 1 520 440 30 "HEAD"
play p setPuzzleText 1 3 560 360 30 "CAGE" 3
play p setPuzzleText 1 4 220 440 60 40 30 "AB CD EF GH"
play p setPuzzleGraphic 1 3 224
play p setPuzzleGraphic 1 560 100 4 266
play p start
DisplayScreen
pause 0.18
call do "put a.2 c.2, put a.3 c.3, put a.16 c.5, put a.4 c.6, put a.6 c.6, put a.11 c.6"
call do "put a.12 c.7, put a.23 c.7, put a.15 c.7, put a.13 c.8, put a.7 c.9, put a.8 c.9"
pause 0.13
play p shiftContainers 10 20
play c.5 place 400 250
play a.1 playAnimation
play a.21 playAnimations
call do "give c.3 highlighted 1, give c.1 highlighted 1, give c.9 infoVerticalOffset -8"
pause 0.17
play p reset
;! RAttributeContainer attempting pixel comparison: RAnswer must have hot point enabled
