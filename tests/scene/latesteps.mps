; Transitions and displays in the handler of a frame that is late do not step again: one frame a turn.
;$ --step 1000 --until 20000
yield off
procedure shown
[
get boat frame number
told=told+" "+number
StartTransition
EndTransition 0
DisplayScreen
]
told=":"
boat=RAnimation 2001 7
set boat frameNotification 1
set boat frameNotify shown
pause 4
set boat frameNotify
say told
;= : 1 2 3 4
