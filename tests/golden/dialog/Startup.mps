; A dialog over figures: one lies behind it, one at its depth, one before it. Its last button drops it in
; the handler.
yield off
ActivateDLL golden.rsc
procedure onBehind
say "behind"
procedure onLevel
say "at its depth"
procedure onBefore
say "before"
procedure onBackground
say "background"
procedure onBeside
say "the dialog"
procedure onButton
[
get question selectedButton value
say "button" value
if value=30
[
drop question
question=0
say "dropped"
]
]
procedure ask
[
question=RDialog 440 100
play question addGraphic 444
play question addButton 441 0-10
play question addButton 442 20
play question addButton 443 30
play question addGraphic 445
set question buttonPressed onButton
set question mouseDown onBeside
get question selectedButton value
say "selected: ["+value+"]"
]
procedure onKey
[
get keys key word
if word="a"
call ask
if word="h"
set question visible 0
if word="v"
set question visible 1
if word="m"
play question offset 30 100
]
Scene 100
port=RScenePort 0
set port backgroundClicked onBackground
behind=RAnimation 200 385 160 10
level=RAnimation 201 60 60 100
before=RAnimation 202 60 300 102
set behind mouseDown onBehind
set level mouseDown onLevel
set before mouseDown onBefore
keys=RKbdInp 0
set keys keyPressed onKey
DisplayScreen
