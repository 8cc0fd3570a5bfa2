; Clicks, releases and cursors while the screen is black, and when it is shown again.
;$ --until 900
yield off
include things.mps
procedure onDown
call do "note down"
procedure onUp
call do "note up"
procedure onTwice
call do "note twice"
procedure onBackground
call do "note background"
procedure showing
DisplayScreen
procedure telling
MessageBox "a box"
Scene 100
t.1=RAnimation 2001 0 100 7
set t.1 mouseDown onDown
set t.1 mouseUp onUp
set t.1 dblClick onTwice
port=RScenePort 0
set port backgroundClicked onBackground
; what is held is let go; nobody hears of what comes in the dark, the last one in the same turn as
; the end
;> 11 tap 50 210
;> 23 down 50 210
;> 24 up 50 210
;> 25 double 50 210
;> 26 up 50 210
;> 37 move 320 50
;> 37 down 320 50
;> 42 double 50 210
;> 43 up 50 210
;> 44 down 320 50
;> 45 up 320 50
call do "rest 0.02, begin, note dark, rest 0.02, finish 1, note shown, rest 0.02, tell"
;=  down dark up shown twice background
; a release that is forgotten with the rest lets go: between press and release, in the press's
; handler, and behind a box there
;> 60 down 50 210
;> 64 move 52 210
;> 64 up 52 210
;> 69 move 150 210
call do "rest 0.01, show, rest 0.02, of 1 x, tell"
;=  down 8
set t.1 mouseDown showing
;> 87 down 50 210
;> 87 up 50 210
;> 91 move 150 210
call do "rest 0.02, of 1 x, tell"
;=  8
set t.1 mouseDown telling
;> 105 down 50 210
;> 105 up 50 210
;> 109 move 60 210
call do "rest 0.02, of 1 x, tell"
;! a box
;=  up 8
; one wait cursor, however many transitions, and the old one at its end, until the pointer moves
;> 123 move 40 212
;> 141 move 320 50
;> 159 move 40 212
;> 161 move 320 50
call do "run 1 setAOCursor -3 -4, rest 0.02, begin, begin, rest 0.02, finish 0"
;# 0 title Zorbet Voyages
;# 19 cursor -2
;# 37 cursor -1
;# 118 cursor -3
;# 136 cursor -2
;# 154 cursor -3
;# 161 cursor -1
;# 901 end until
;% Starting Transition, current ms: 19
;% Ending Transition, current ms: 37
