; Pieces of cloth. The first container refuses what would be too much and keeps what is right; its
; counter hangs below it, that of the second one above.
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
