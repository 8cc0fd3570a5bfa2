; Clicks, releases and cursors while the screen is black, and when it is shown again.
;$ --until 900
yield off
include things.mps
procedure onDown
say "down"
procedure onUp
say "up"
procedure onTwice
say "twice"
procedure onBackground
say "background"
procedure showing
[
DisplayScreen
say "shown"
]
procedure telling
MessageBox "a box"
Scene 100
t.1=RAnimation 2001 0 100 7
set t.1 mouseDown onDown
set t.1 mouseUp onUp
set t.1 dblClick onTwice
port=RScenePort 0
set port backgroundClicked onBackground
; what is held is let go; nobody hears of what comes in the dark, the last one in the same turn as the end
;> 11 down 50 210
call do "rest 0.02, begin, rest 0.02, finish 1, rest 0.02"
;> 21 up 50 210
;> 23 down 50 210
;> 24 up 50 210
;> 25 double 50 210
;> 26 up 50 210
;> 27 down 320 50
;> 28 up 320 50
;> 37 move 320 50
;> 37 down 320 50
;= down
;> 42 double 50 210
;> 43 up 50 210
;> 44 down 320 50
;> 45 up 320 50
;= up
;= twice
;= background
; a release that is forgotten with the rest lets go: between press and release, and in the press's handler
;> 60 down 50 210
;> 64 move 52 210
;> 64 up 52 210
;> 69 move 150 210
call do "rest 0.01, show, rest 0.02, of 1 x, tell"
;= down
;=  8
set t.1 mouseDown showing
;> 87 down 50 210
;> 87 up 50 210
;> 91 move 150 210
call do "rest 0.02, of 1 x, tell"
;= shown
;=  8
set t.1 mouseDown telling
;> 105 down 50 210
;> 105 up 50 210
;> 109 move 150 210
call do "rest 0.02, of 1 x, tell"
;! a box
;= up
;=  8
set t.1 mouseDown onDown
;> 123 down 50 210
;> 124 move 150 210
;> 125 up 150 210
call do "rest 0.02, of 1 x, tell"
;= down
;= up
;=  108
;# 0 title Zorbet Voyages
;# 19 cursor -2
;# 37 cursor -1
; one wait cursor, however many transitions, and the old one at its end, until the pointer moves
;> 141 move 140 212
;> 159 move 320 50
;> 177 move 140 212
;> 179 move 320 50
call do "run 1 setAOCursor -3 -4, rest 0.02, begin, begin, rest 0.02, finish 0"
;# 136 cursor -3
;# 154 cursor -2
;# 172 cursor -3
;# 179 cursor -1
;# 901 end until
;% Starting Transition, current ms: 19
;% Ending Transition, current ms: 37
