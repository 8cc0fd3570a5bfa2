; A clock of four events a second while passes of the program come every 90 ms, never when an event
; is due: how many events there were after each pass. Stopped for a while, it begins anew, and makes
; up for nothing.
;$ --step 90
yield off
procedure beat
n=n+1
procedure watch passes
[
line=""
for i 1 passes
[
pause 0.05
line=line+" "+n
]
say line
]
n=0
clock=RAnimationTrigger 4
set clock newFrame beat
play clock start
call watch 33
play clock stop
call watch 8
play clock start
call watch 8
set clock framesPerSecond 10
call watch 13
set clock framesPerSecond 0
call watch 8
set clock framesPerSecond 4
call watch 8
play clock start
call watch 4
set clock framesPerSecond 2000
call watch 8
drop clock
call watch 4
quit
;=  0 0 1 1 1 2 2 2 3 3 3 4 4 5 5 5 6 6 6 7 7 7 8 8 9 9 9 10 10 10 11 11 11
;=  11 11 11 11 11 11 11 11
;=  11 11 12 12 12 13 13 13
;=  14 15 16 17 18 19 20 20 21 22 23 24 25
;=  25 25 25 25 25 25 25 25
;=  25 25 26 26 26 27 27 27
;=  27 27 28 28
;=  28 29 30 31 32 33 34 35
;=  35 35 35 35
