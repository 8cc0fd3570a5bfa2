; Answers of the three kinds, in no puzzle: how their pictures and texts lie over each other, how they
; change, play and are dragged, and where they go home to.
;: rsc golden
;$ screens
;> 90 screenshot start.png
;> 210 screenshot played.png
;> 400 screenshot changed.png
; dragged by a text that hangs over, and by a picture
;> 410 down 55 133
;> 420 move 80 160
;> 430 move 200 200
;> 440 screenshot text.png
;> 450 up 200 200
;> 460 down 62 215
;> 470 move 100 230
;> 480 move 300 340
;> 490 screenshot picture.png
;> 500 up 300 340
;> 510 screenshot dropped.png
yield off
ActivateDLL golden.rsc
procedure write number first second color
[
play d.number setFont 300
set d.number text1 first
set d.number text2 second
set d.number textColorIndex color
]
procedure label number letters over down color
[
play t.number setFont 300
set t.number text letters
set t.number textOffsetX over
set t.number textOffsetY down
set t.number textColorIndex color
]
procedure lay number over1 down1 over2 down2
[
set d.number text1OffsetX over1
set d.number text1OffsetY down1
set d.number text2OffsetX over2
set d.number text2OffsetY down2
]
Scene 100
; a picture; turned; played and stopped; over two edges
g.1=RGraphicAnswer 260 20 20 10
g.2=RGraphicAnswer 261 90 20 10
set g.2 drawDirection 4
g.3=RGraphicAnswer 263 170 20 10
play g.3 playAnimation
g.4=RGraphicAnswer 264 230 20 10
g.5=RGraphicAnswer 264 -22 -11 10
g.6=RGraphicAnswer 267 10
; a text beside, above on the left, across, alone, none, with letters that are not there, over edges
t.1=RGraphicTextAnswer 263 20 120 10
call label 1 "AB" 30 8 255
t.2=RGraphicTextAnswer 263 120 120 10
call label 2 "HAD" -20 -14 20
t.3=RGraphicTextAnswer 264 200 120 10
call label 3 "jfg__" -4 10 0
t.4=RGraphicTextAnswer -1 300 120 10
call label 4 "BADE" 0 0 255
t.5=RGraphicTextAnswer 264 380 120 10
t.6=RGraphicTextAnswer 264 460 120 10
call label 6 "AxB" 5 35 22
play t.6 setFont 302
t.7=RGraphicTextAnswer 264 600 120 10
call label 7 "MEADE" -20 12 255
t.8=RGraphicTextAnswer 261 560 110 10
call label 8 "AA" 30 30 23
set t.8 drawDirection 6
; pictures before, both behind, one over the texts, equal ones, without a base, without pictures
for i 1 7
[
d.i=RDoubleGraphicTextAnswer 265 i*90-70 220 10
set d.i graphic1ID 267
set d.i graphic2ID 268
call lay i 22 2 30 20
call write i "HEAD" "CGA" 255
]
set d.2 graphic1OffsetZ -1
set d.2 graphic2OffsetZ -2
set d.3 graphic1OffsetZ 2
set d.3 graphic2OffsetZ 1
set d.4 graphic1OffsetZ -1
set d.4 graphic2OffsetZ 1
d.8=RDoubleGraphicTextAnswer -1 20 320 10
set d.8 graphic1ID 267
set d.8 graphic2ID 268
call write 8 "EEE" "" 0
set d.5 graphic1ID -1
set d.5 graphic2ID 9999
play d.6 playAnimations
; another object between, and one before
ring.1=RAnimation 234 560 200 10
ring.2=RAnimation 237 100 230 9
copy.1=t.2
copy.2=d.3
play copy.1 place 120 320
play copy.2 place 230 320
DisplayScreen
pause 0.16
play g.3 stopAnimation
play d.6 stopAnimations
play d.8 playAnimations
play t.3 playAnimation
pause 0.1
; the same otherwise
set g.1 graphicID 261
set g.2 drawDirection 0
set g.4 graphicID -1
set t.1 text "A"
set t.2 textOffsetX 5
set t.3 textColorIndex 255
set t.4 text ""
set t.4 graphicID 263
set t.5 text "FF"
play t.6 setFont 300
set t.8 drawDirection 0
set d.1 graphic1OffsetZ -1
set d.2 graphic2OffsetZ 3
set d.3 graphic1ID -1
set d.5 graphic1ID 266
set d.6 text1 ""
set d.7 text2OffsetX -30
set d.7 textColorIndex 20
play d.8 stopAnimations
set copy.1 homeX 20
set copy.2 homeY 420
set copy.2 visible 0
DisplayScreen
;! ASEQ resource 9999 not found.
