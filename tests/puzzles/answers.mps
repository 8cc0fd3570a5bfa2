; Answers with texts and several pictures: the room that they take, what they hold, and what a copy
; has of it. answermix.mps shows them. The base picture is 26 x 30.
yield off
include steps.mps
; Texts widen an answer and leave its home; no text takes no room.
a.1=RGraphicTextAnswer 2310 20 30 5
call do "ask a.1 setFont 20, give a.1 textOffsetX -6 textOffsetY -3, look a.1 x y width height"
call do "give a.1 text A, look a.1 x y width height, give a.1 text ABAB, look a.1 x y width height"
call do "give a.1 x 0, look a.1 x y homeX homeY, give a.1 homeX 20, look a.1 x y"
call do "give a.1 graphicID -1, look a.1 x y width height, tell, give a.1 text "
call do "look a.1 x y width height, give a.1 textOffsetX 2000000000 text A, look a.1 width height"
call do "tell"
;=  27,35,26,30 21,32,32,33 21,32,46,33 0,32,27,35 14,32 7,27,46,22
;=  13,30,0,0 12,22
; What is missing is left out, and a colour that there is not changes nothing.
a.2=RDoubleGraphicTextAnswer 99 20 30 5
call do "give a.2 graphic1ID 98 textColorIndex 7 textColorIndex 256"
call do "look a.2 x y z width height textColorIndex graphic1ID, tell"
;=  20,30,5,0,0,7,98
;! ASEQ resource 99 not found.
;! ASEQ resource 98 not found.
; A copy has all, and goes its own way.
all="graphic1ID 2320 graphic2ID 2331 text1OffsetX -9 text1OffsetY 4 text2OffsetX 5 text2OffsetY 60"
a.3=RDoubleGraphicTextAnswer 2310 20 30 5
call do "ask a.3 setFont 20, give a.3 "+all
call do "give a.3 text1 AB text2 B tag t attribute seven extraLeft 1 graphic2OffsetZ 2"
a.4=a.3
call do "look a.4 graphic1ID graphic2ID graphic2OffsetZ text1 text2 attribute tag extraLeft"
call do "look a.4 x y z width height homeX homeY value, tell"
drop a.3
; One whose pictures end is gone until it plays again; a copy plays its own.
call do "give a.4 graphic1ID -1 graphic2ID 2012, look a.4 width"
a.3=a.4
play a.3 stopAnimations
pause 3
call do "look a.4 width visible, look a.3 width, ask a.4 playAnimations, look a.4 width"
call do "give a.4 text1OffsetX 0 graphic2ID -1 text2 B, look a.4 x width height value, tell"
quit
;=  2320,2331,2,AB,B,seven,t,1 18,35,5,58,82,27,35,seven
;=  154 35,1 154 154 27,26,82,seven
