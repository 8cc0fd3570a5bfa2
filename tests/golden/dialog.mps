; A dialog over figures: one lies behind it, one at its depth, one before it. Its last button drops
; it in the handler.
;: rsc golden
; only what is before it is heard, even through its hole
;> 50 screenshot asked.png
;> 60 click 387 180
;> 80 click 62 80
;> 100 click 62 320
;> 120 click 600 20
; pressed, left, and let go beside it; through a picture
;> 140 down 190 230
;> 150 screenshot pressed.png
;> 160 move 190 270
;> 165 screenshot asked.left.png
;> 170 up 190 270
;> 180 down 310 224
;> 190 screenshot second.png
;> 200 up 310 224
; hidden: the figures are heard, and the background is not
;> 240 screenshot before.png
;> 250 click 387 180
;> 270 click 62 80
;> 290 click 600 20
; moved as a whole, and dropped by its button
;> 400 screenshot moved.png
;> 410 down 430 330
;> 415 screenshot last.png
;> 420 up 430 330
;> 430 screenshot before.dropped.png
;> 440 click 600 20
yield off
ActivateDLL golden.rsc
procedure told
[
get RECEIVER name who
say who
]
procedure pressed
[
get question selectedButton value
say "button" value
if value=30
drop question
]
Scene 100
port=RScenePort 0
set port backgroundClicked told
behind=RAnimation 200 385 160 10
level=RAnimation 201 60 60 100
before=RAnimation 202 60 300 102
question=RDialog 440 100
play question addGraphic 444
play question addButton 441 0-10
play question addButton 442 20
play question addButton 443 30
play question addGraphic 445
set question buttonPressed pressed
set question mouseDown told
set behind mouseDown told
set level mouseDown told
set before mouseDown told
DisplayScreen
pause 0.24
set question visible 0
pause 0.17
set question visible 1
play question offset 30 100
;= question
;= question
;= before
;= question
;= question
;= question
;= button 20
;= behind
;= level
;= question
;= button 30
;= port
