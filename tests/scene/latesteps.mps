; Transitions and displays in the handler of a late frame do not step again: one frame a turn.
;$ --step 1000 --until 20000
yield off
include things.mps
procedure shown
call do "of 1 frame, begin, finish 0, show"
t.1=RAnimation 2001 7
set t.1 frameNotify shown
call do "let 1 frameNotification 1, rest 4"
set t.1 frameNotify
call tell
;=  1 2 3 4
