; Answers and containers with attributes, all from the puzzle's entry, as are the texts and two pictures
; beside them. The second container looks for its own pixels under the hot point, the third one puts
; answers at a point, and the fourth one takes only what its word tag tells and keeps it. The second
; answer has a hot point, the third one insets.
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
