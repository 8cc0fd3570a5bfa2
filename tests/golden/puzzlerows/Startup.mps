; Answers in rows: a word in the first container, a sum in the second one.
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
