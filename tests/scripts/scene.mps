; A scene with a moving object; the same in the window (tests/start) and without one.
yield off
StartTransition
Scene 100
procedure shown
[
frames=frames+1
if frames=5
[
get boat frame number
say "showing" number
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
;= showing 5
