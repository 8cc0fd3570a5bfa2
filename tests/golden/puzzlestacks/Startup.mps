; Answers are stacked: any number of them in the first container, two in the second one. The second
; answer needs more room than its picture has, the fifth one less and is wider than the stacks; the
; sixth one is right in none.
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
