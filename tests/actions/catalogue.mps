; What the actions do: delays, moves, animations, calls and properties, sounds. The boxes tell when.
;$ --until 40000
yield off
procedure done
[
get RECEIVER name who
MessageBox "  "+who
]
procedure queue
[
q=RQueue 1
set q finished done
]

MessageBox "Delays: 1250 ms with a pause of 250, none, and 300 times 3, 4 or 5"
call queue
play q add DelayAction 1000
play q start
pause 0.4
play q pause
timer=RQueue 1
play timer add DelayAction 250
play timer start }
play q resume
pause 1
play q start
pause 0.1
play q halt
pause 1.2
MessageBox "halted"
call queue
play q add DelayAction -5
play q start
pause 0.01
play q clear
play q add RandomDelayAction 3 6
set q repeatCount 300
play q start
pause 1.5
play q clear
play q add RandomDelayAction 3 3
play q add RandomDelayAction 4 2
set q repeatCount 1
play q start
pause 0.01
q=RQueue 1
play q add RandomDelayAction -2147483648 2147483647
play q start
;@ 1 Delays: 1250 ms with a pause of 250, none, and 300 times 3, 4 or 5
;@ 1251   q
;@ 2681 halted
;@ 2682   q
;@ 3878   q
;@ 4047   q

; from where, how fast, faster by, and to where
procedure move from by more to
[
anim=RAnimation 2001 0
sign=RHotSpot 1 2 10 10
q=RQueue 1
play q add kind "anim" "sign" from by more to
play q start
places=""
last=1000
a=1
for a=1
[
get q isActive a
get sign axis p
if p#last
places=places+" "+p
last=p
pause 0.01
]
get anim frame a
pause 0.2
get anim frame b
MessageBox kind+places+"; still "+(a-b)
]
axis="x"
kind="MoveXAction"
call move 0 10 0 25
call move 0 10 0 20
call move 50 -3 -2 40
call move 0 1 1 8
call move 7 5 0 7
call move 0 5 -3 4
axis="y"
kind="MoveYAction"
call move 50 -3 -2 40
;@ 4544 MoveXAction 0 10 20 25; still 0
;@ 5039 MoveXAction 0 10 20; still 0
;@ 5534 MoveXAction 50 47 42 40; still 0
;@ 6182 MoveXAction 0 1 3 6 8; still 0
;@ 6380 MoveXAction 7; still 0
;@ 6578 MoveXAction 0 4; still 0
;@ 7073 MoveYAction 50 47 42 40; still 0

procedure place what
[
get sign x a
get sign y b
get q isActive c
MessageBox what+" "+a+" "+b+" active "+c
]
anim=RAnimation 2001 0
q=RCompositeAction 1
set q finished done
play q add MoveXAction "anim" "sign" 0 10 0 15
play q add MoveYAction "anim" "sign" 0 10 0 35
play q start
pause 1
get anim frameNotification a
call place "two moves by one animation, "+a
call queue
play q add MoveXYAction "anim" "sign" 0 10 0 15 0 10 0 35
play q start
pause 0.4
play q pause
call place "both ways"
pause 1
call place "paused"
play q resume
play q halt
get anim frame a
pause 1
get anim frame b
call place "halted, still "+(a-b)
play q start
drop sign
pause 0.2
get q isActive c
MessageBox "without what is moved: "+c
sign=RHotSpot 0 0 10 10
call queue
play q add MoveXAction "anim" "sign" 0 10 0 95
play q start
pause 0.2
drop anim
call place "without the animation, but not in the end of another object"
pause 0.01
call place "in the next turn"
;@ 7524   q
;@ 7973 two moves by one animation, 0 15 35 active 0
;@ 8333 both ways 15 30 active 1
;@ 9233 paused 15 30 active 1
;@ 10133 halted, still 0 15 35 active 0
;@ 10134   q
;@ 10313 without what is moved: 0
;@ 10493 without the animation, but not in the end of another object 20 0 active 1
;@ 10494   q
;@ 10502 in the next turn 95 0 active 0

procedure born
shown=RECEIVER
procedure look what
[
get shown x a
get shown y b
get shown z c
MessageBox what+" "+a+" "+b+" "+c
]
set OMAnimation born born
call queue
play q add AnimAction 2003 30 40 7 1 1
play q start
call look "shown at"
pause 0.5
play q pause
pause 2
play q resume
pause 1
MessageBox shown+" is gone"
call queue
play q add AnimAction 2003 8 2
play q start
call look "where its resource lies"
pause 3
call queue
play q add AnimAction 2003 0 -1
play q start
pause 3
call look "without end"
play q halt
MessageBox shown+" is gone"
play q start
drop q
MessageBox shown+" is gone"
set OMAnimation born
call queue
play q add AnimAction -1 0 1
play q start
play q add AnimAction 77 0 1
play q start
;@ 10502 shown at 46 115 7
;@ 13053   q
;@ 13652 shown is gone
;@ 13652 where its resource lies 20 289 8
;@ 15253   q
;@ 19052 without end 11 233 0
;@ 19052 shown is gone
;@ 19052 shown is gone
;@ 19052 Invoking method "start"\ncaused event "finished" (ignored)\n
;@ 19052 ASEQ resource 77 not found.
;@ 19052 Invoking method "start"\ncaused event "finished" (ignored)\n

procedure still what
[
get q isActive c
get anim frame a
pause 0.3
get anim frame b
MessageBox what+": active "+c+", still "+(a=b)
]
; several wait for one animation, also for one that a move stops
anim=RAnimation 2001 0
q=RCompositeAction 1
set q finished done
play q add PlayAnimAction "anim"
play q add PlayAnimAction "anim"
play q add MoveXAction "anim" "anim" 0 9 0 9
play q start
pause 1
call queue
play q add PlayAnimAction "anim"
play q start
drop anim
get q isActive a
play q pause
pause 0.01
get q isActive b
play q resume
pause 0.01
get q isActive c
MessageBox "without the animation "+a+b+c
; one that has come to rest while it was paused stays so
anim=RAnimation 2003 0
call queue
play q add PlayAnimAction "anim"
play q start
play q pause
play anim play
pause 2
call still "at rest"
anim=RAnimation 2003 0
call queue
play q add PlayAnimAction "anim"
play q start
pause 0.2
play q halt
call still "halted"
;@ 19203   q
;@ 19962   q
;@ 19970 without the animation 110
;@ 20771   q
;@ 22040 at rest: active 0, still 1
;@ 22490 halted: active 0, still 1

MessageBox "Calls and properties"
sign=RHotSpot 0 0 10 10
call queue
play q add VerbAction "sign" 1 offset 30 4
play q start
call place "moved"
play q add PropertyAction "sign" x 50
play q start
call place "moved and set"
q=RQueue 1
play q add VerbAction "sign" 1 sing
play q add PropertyAction "sign" colour red
play q add VerbAction "q" 1 clear
play q add EmptyAction
play q start
get q actionCount a
call place "clears itself: "+a
;@ 22490 Calls and properties
;@ 22490 Invoking method "start"\ncaused event "finished" (ignored)\n
;@ 22490 moved 30 4 active 0
;@ 22490 Invoking method "start"\ncaused event "finished" (ignored)\n
;@ 22490 moved and set 50 8 active 0
;@ 22490 VerbAction, verb not supported: sing
;@ 22490 PropertyAction, property not found: colour
;@ 22490 clears itself: 0 50 8 active 0

MessageBox "Sounds of 230 ms"
for i 0 1
[
call queue
play q add SoundAction 207 i
play q start
pause 0.05
play q pause
pause 1
play q resume
pause 1
play q start
play q halt
pause 1
]
play q clear
play q add SoundAction -1
play q start
play q add SoundAction 6
play q start
;@ 22490 Sounds of 230 ms
;@ 23668   q
;@ 26413   q
;@ 27980 Invoking method "start"\ncaused event "finished" (ignored)\n
;@ 27980 WAVE resource 6 not found.
;@ 27980 Invoking method "start"\ncaused event "finished" (ignored)\n
quit
