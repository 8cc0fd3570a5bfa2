; Answers of the three kinds, in no puzzle: how their pictures and texts lie over each other, how
; they change, play and are dragged, and where they go home to.
;: rsc golden
;$ screens
;> 130 screenshot played.png
;> 320 screenshot changed.png
; dragged by a text that hangs over, and by a picture
;> 330 down 55 133
;> 340 move 200 200
;> 350 screenshot text.png
;> 360 up 200 200
;> 370 down 62 215
;> 380 move 300 340
;> 390 screenshot picture.png
;> 400 up 300 340
;> 410 screenshot dropped.png
yield off
ActivateDLL golden.rsc
include steps.mps
procedure label number picture left letters over down color
[
a.number=RGraphicTextAnswer picture left 120 10
play a.number setFont 300
set a.number text letters
call do "give a."+number+" textOffsetX "+over+" textOffsetY "+down+" textColorIndex "+color
]
Scene 100
; a picture; turned; played and stopped; over two edges
a.1=RGraphicAnswer 260 20 20 10
a.2=RGraphicAnswer 261 90 20 10
a.3=RGraphicAnswer 263 170 20 10
a.4=RGraphicAnswer 264 230 20 10
a.5=RGraphicAnswer 264 -22 -11 10
a.6=RGraphicAnswer 267 10
set a.2 drawDirection 4
play a.3 playAnimation
; a text beside, above on the left, across, alone, none, with letters that are not there, over an
; edge, on a turned one
call label 11 263 20 "AB" 30 8 255
call label 12 263 120 "HAD" -20 -14 20
call label 13 264 200 "jfg__" -4 10 0
call label 14 -1 300 "BADE" 0 0 255
call label 15 264 380 "" 0 0 255
call label 16 264 460 "AxB" 5 35 22
call label 17 264 600 "MEADE" -20 12 255
call label 18 261 560 "AA" 30 30 23
play a.16 setFont 302
set a.18 drawDirection 6
; pictures before, both behind, one over the texts, equal ones, one that plays; without a base,
; without pictures
for i 21 27
[
a.i=RDoubleGraphicTextAnswer 265 i*90-1870 220 10
play a.i setFont 300
call do "give a."+i+" graphic1ID 267 graphic2ID 268 text1OffsetX 22 text1OffsetY 2"
call do "give a."+i+" text2OffsetX 30 text2OffsetY 20 textColorIndex 255"
set a.i text1 "HEAD"
set a.i text2 "CGA"
]
a.28=RDoubleGraphicTextAnswer -1 20 320 10
call do "give a.28 graphic1ID 267 graphic2ID 268 text1 EEE"
call do "give a.22 graphic1OffsetZ -1 graphic2OffsetZ -2"
call do "give a.23 graphic1OffsetZ 2 graphic2OffsetZ 1"
call do "give a.24 graphic1OffsetZ -1 graphic2OffsetZ 1"
call do "give a.25 graphic1ID -1 graphic2ID 9999"
play a.26 playAnimations
; another object between, and one before
ring.1=RAnimation 234 560 200 10
ring.2=RAnimation 237 100 230 9
a.31=a.12
a.32=a.23
play a.31 place 120 320
play a.32 place 230 320
DisplayScreen
pause 0.16
play a.3 stopAnimation
play a.26 stopAnimations
play a.28 playAnimations
play a.13 playAnimation
pause 0.1
; the same otherwise
call do "give a.1 graphicID 261, give a.2 drawDirection 0, give a.4 graphicID -1"
call do "give a.11 text A, give a.12 textOffsetX 5"
call do "give a.13 textColorIndex 255, give a.14 graphicID 263, give a.15 text FF"
call do "give a.18 drawDirection 0"
call do "give a.21 graphic1OffsetZ -1, give a.22 graphic2OffsetZ 3, give a.23 graphic1ID -1"
call do "give a.25 graphic1ID 266"
call do "give a.27 text2OffsetX -30 textColorIndex 20, give a.31 homeX 20"
call do "give a.32 homeY 420 visible 0"
set a.14 text ""
set a.26 text1 ""
play a.16 setFont 300
play a.28 stopAnimations
DisplayScreen
;! ASEQ resource 9999 not found.
