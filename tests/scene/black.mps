; Clicks, releases and cursors while the screen is black, and when it is shown again.
;$ --until 900
yield off
procedure onDown
say "down"
procedure onUp
say "up"
procedure onTwice
say "twice"
procedure onBackground
say "background"
procedure tell when
[
get boat "x" left
say when left
]
Scene 100
boat=RAnimation 2001 0 100 7
set boat mouseDown onDown
set boat mouseUp onUp
set boat dblClick onTwice
port=RScenePort 0
set port backgroundClicked onBackground
; what is held is let go
;> 11 down 50 210
pause 0.02
StartTransition
;> 21 up 50 210
; nobody hears of these; the last one is in the same turn as the end
;> 23 down 50 210
;> 24 up 50 210
;> 25 double 50 210
;> 26 up 50 210
;> 27 down 320 50
;> 28 up 320 50
;> 37 move 320 50
;> 37 down 320 50
pause 0.02
EndTransition 1
;= down
;= up
;> 42 double 50 210
;> 43 up 50 210
;> 44 down 320 50
;> 45 up 320 50
pause 0.02
;= twice
;= background
; a release that is forgotten with the rest lets go: between press and release, and in the press's handler
;> 60 down 50 210
;> 64 move 52 210
;> 64 up 52 210
pause 0.01
DisplayScreen
;> 69 move 150 210
pause 0.02
;= down
call tell "let go at"
;= let go at 8
procedure showing
[
DisplayScreen
say "shown"
]
procedure telling
MessageBox "a box"
set boat mouseDown showing
;> 87 down 50 210
;> 87 up 50 210
;> 91 move 150 210
pause 0.02
;= shown
call tell "still at"
;= still at 8
set boat mouseDown telling
;> 105 down 50 210
;> 105 up 50 210
;> 109 move 150 210
pause 0.02
;! a box
;= up
call tell "and at"
;= and at 8
set boat mouseDown onDown
;> 123 down 50 210
;> 124 move 150 210
;> 125 up 150 210
pause 0.02
;= down
;= up
call tell "held again, and at"
;= held again, and at 108
;# 0 title Zorbet Voyages
;# 19 cursor -2
;# 37 cursor -1
; one wait cursor, however many transitions, and the old one at its end, until the pointer moves
play boat setAOCursor -3 -4
;> 141 move 140 212
pause 0.02
StartTransition
StartTransition
;> 159 move 320 50
pause 0.02
EndTransition 0
;> 177 move 140 212
;> 179 move 320 50
;# 136 cursor -3
;# 154 cursor -2
;# 172 cursor -3
;# 179 cursor -1
;# 901 end until
