; A clock of four events a second while passes of the program come every 90 ms, never when an event is
; due: the boxes tell when each event came. Stopped for a while, it begins anew.
;$ --step 90
yield off
procedure beat
[
n=n+1
MessageBox "event "+n
if n=20
play clock stop
if n=22
set clock framesPerSecond 10
if n=26
set clock framesPerSecond 0
if n=28
drop clock
]
n=0
clock=RAnimationTrigger 4
set clock newFrame beat
play clock start
pause 8
play clock start
pause 3
; nothing is made up for while it stood still
set clock framesPerSecond 4
pause 3
quit
;! event 1
;! event 2
;! event 3
;! event 4
;! event 5
;! event 6
;! event 7
;! event 8
;! event 9
;! event 10
;! event 11
;! event 12
;! event 13
;! event 14
;! event 15
;! event 16
;! event 17
;! event 18
;! event 19
;! event 20
;! event 21
;! event 22
;! event 23
;! event 24
;! event 25
;! event 26
;! event 27
;! event 28
