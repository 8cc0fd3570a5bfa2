; A dialog over figures: one lies behind it, one at its depth, one before it. Its last button drops it in
; the handler.
;: rsc golden
;$ screens
; the figures and the background are heard
;> 100 click 387 180
;> 120 click 62 80
;> 140 click 62 320
;> 160 click 600 20
;> 180 screenshot before.png
; only what is before it is, even through its hole
;> 200 key a
;> 210 screenshot asked.png
;> 220 click 387 180
;> 240 click 62 80
;> 260 click 62 320
;> 280 click 600 20
;> 300 click 210 150
; pressed, left, and let go beside it
;> 320 down 190 230
;> 330 screenshot pressed.png
;> 340 move 190 270
;> 350 screenshot asked.left.png
;> 360 up 190 270
;> 370 click 190 230
; through a picture
;> 390 down 310 224
;> 400 screenshot second.png
;> 410 up 310 224
; hidden: the figures are heard, the background is not
;> 500 key h
;> 510 screenshot before.again.png
;> 520 click 387 180
;> 540 click 62 80
;> 560 click 600 20
;> 580 key v
;> 590 screenshot asked.again.png
; moved as a whole, and dropped by its button
;> 600 key m
;> 610 screenshot moved.png
;> 620 down 430 330
;> 630 screenshot last.png
;> 640 up 430 330
;> 650 screenshot before.dropped.png
;> 660 click 600 20
;> 680 click 387 180
; and another one, which knows nothing of it
;> 700 key a
;> 710 screenshot asked.anew.png
;> 720 click 430 230
;> 740 click 600 20
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
;= behind
;= at its depth
;= before
;= background
;= selected: []
;= the dialog
;= the dialog
;= before
;= the dialog
;= the dialog
;= the dialog
;= the dialog
;= button -10
;= the dialog
;= button 20
;= behind
;= at its depth
;= the dialog
;= button 30
;= dropped
;= background
;= behind
;= selected: []
;= the dialog
;= button 30
;= dropped
;= background
