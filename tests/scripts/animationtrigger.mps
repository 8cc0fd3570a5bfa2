; A clock of four events a second while passes of the program come every 90 ms, never when an event
; is due: how many events there were after each pass. Stopped for a while, it begins anew, and makes
; up for nothing.
;$ --step 90
yield off
include things.mps
procedure beat
n=n+1
procedure watch
[
call cut
for i 1 word
[
pause 0.05
line=line+" "+n
]
]
n=0
t.1=RAnimationTrigger 4
set t.1 newFrame beat
call do "run 1 start, watch 33, tell, run 1 stop, watch 8, run 1 start, watch 8, tell"
call do "let 1 framesPerSecond 10, watch 13, let 1 framesPerSecond 0, watch 8, tell"
call do "let 1 framesPerSecond 4, watch 8, run 1 start, watch 4, let 1 framesPerSecond 2000"
call do "watch 8, lose t.1, watch 4, tell"
quit
;=  0 0 1 1 1 2 2 2 3 3 3 4 4 5 5 5 6 6 6 7 7 7 8 8 9 9 9 10 10 10 11 11 11
;=  11 11 11 11 11 11 11 11 11 11 12 12 12 13 13 13
;=  14 15 16 17 18 19 20 20 21 22 23 24 25 25 25 25 25 25 25 25 25
;=  25 25 26 26 26 27 27 27 27 27 28 28 28 29 30 31 32 33 34 35 35 35 35 35
