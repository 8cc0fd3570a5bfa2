; Answers and containers with values. The second and the fifth container keep what is right, the fifth
; one refuses what is wrong, the third one has no picture, and the fourth one is disabled at first, with
; an answer in it. The second answer has insets, the third one is wider than its containers.
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
