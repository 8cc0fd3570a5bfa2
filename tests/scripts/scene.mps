; A scene with a moving object; the same in the window and without one.
yield off
StartTransition
Scene 100
procedure shown
[
frames=frames+1
if frames=5
[
get boat frame f
get boat z depth
say "five frames, showing" f "at depth" depth
quit
]
]
frames=0
boat=RAnimation 2001 7
set boat frameNotification 1
set boat frameNotify shown
EndTransition 0
say "the scene stands"
;= the scene stands
;= five frames, showing 5 at depth 7
