; What the actions do: delays, moves, animations, calls and properties, sounds. The boxes tell when.
;$ --until 40000
yield off
procedure done
MessageBox "  done"
procedure queue
[
q=RQueue 1
set q finished done
]
procedure run seconds
[
play q start
pause seconds
]
procedure hold seconds
[
play q pause
pause seconds
play q resume
]
procedure tell what
[
get sign x a
get sign y b
get q isActive c
MessageBox what+" "+a+","+b+" active "+c
]
; whether an animation stands
procedure still what
[
get anim frame a
pause 0.2
get anim frame b
call tell what+(a=b)
]
sign=RHotSpot 1 2 10 10

; with a pause of 270 ms, halted, none, 300 times 3, 4 or 5, and 3 and 4 of no width
call queue
play q add DelayAction 1000
call run 0.4
call hold 0.3
pause 1
call run 0.1
play q halt
pause 1.2
call tell "halted"
call queue
play q add DelayAction -5
call run 0.01
play q clear
play q add RandomDelayAction 3 6
set q repeatCount 300
call run 1.5
play q clear
play q add RandomDelayAction 3 3
play q add RandomDelayAction 4 2
set q repeatCount 1
call run 0.01
q=RQueue 1
play q add RandomDelayAction -2147483648 2147483647
play q start
;@ 1271   done
;@ 2701 halted 1,2 active 0
;@ 2702   done
;@ 3898   done
;@ 4067   done

; from where, how fast, faster by, and to where
procedure move from by more to
[
anim=RAnimation 2001 0
q=RQueue 1
play q add "Move"+axis+"Action" "anim" "sign" from by more to
play q start
places=axis
last=1000
a=1
for a
[
get q isActive a
if axis="X"
get sign x p
else
get sign y p
if p#last
places=places+" "+p
last=p
pause 0.01
]
call still places+"; still "
]
axis="X"
call move 0 10 0 25
call move 0 10 0 20
call move 50 -3 -2 40
call move 0 1 1 8
call move 7 5 0 7
call move 0 5 -3 4
axis="Y"
call move 50 -3 -2 40
; two by one animation, both ways at once
anim=RAnimation 2001 0
q=RCompositeAction 1
set q finished done
play q add MoveXAction "anim" "sign" 0 10 0 15
play q add MoveYAction "anim" "sign" 0 10 0 35
call run 1
get anim frameNotification a
call tell "two, "+a
call queue
play q add MoveXYAction "anim" "sign" 0 10 0 15 0 10 0 35
call run 0.4
call tell "both ways"
call hold 1
call tell "held"
play q halt
call still "halted, still "
; without what is moved, and without the animation: not in the end of another object, but in the next turn
play q start
drop sign
pause 0.01
sign=RHotSpot 0 0 10 10
call queue
play q add MoveXAction "anim" "sign" 0 10 0 95
call run 0.2
drop anim
call tell "gone"
pause 0.01
call tell "arrived"
;@ 4564 X 0 10 20 25; still 1 25,2 active 0
;@ 5059 X 0 10 20; still 1 20,2 active 0
;@ 5554 X 50 47 42 40; still 1 40,2 active 0
;@ 6202 X 0 1 3 6 8; still 1 8,2 active 0
;@ 6400 X 7; still 1 7,2 active 0
;@ 6598 X 0 4; still 1 4,2 active 0
;@ 7093 Y 50 47 42 40; still 1 4,40 active 0
;@ 7544   done
;@ 7993 two, 0 15,35 active 0
;@ 8353 both ways 15,30 active 1
;@ 9253 held 15,30 active 1
;@ 9433 halted, still 1 15,35 active 0
;@ 9434   done
;@ 9622 gone 20,0 active 1
;@ 9623   done
;@ 9631 arrived 95,0 active 0

; a picture where it is wanted, and where its resource lies; without end; of no picture
procedure born
shown=RECEIVER
procedure look what
[
get shown x a
get shown y b
get shown z c
MessageBox what+a+","+b+","+c
]
set OMAnimation born born
call queue
play q add AnimAction 2003 30 40 7 1 1
call run 0.5
call look "shown "
call hold 2
pause 1
call queue
play q add AnimAction 2003 8 2
call run 0.1
call look "at its place "
pause 2
call queue
play q add AnimAction 2003 0 -1
call run 3
play q halt
call tell shown+" is gone"
play q start
drop q
MessageBox shown+" is gone"
set OMAnimation born
call queue
play q add AnimAction -1 0 1
play q add AnimAction 77 0 1
play q start
;@ 10081 shown 76,48,7
;@ 12182   done
;@ 12871 at its place 20,289,8
;@ 14382   done
;@ 17371 shown is gone 95,0 active 0
;@ 17371 shown is gone
;@ 17371 ASEQ resource 77 not found.
;@ 17371 Invoking method "start"\ncaused event "finished" (ignored)\n
; several wait for one animation, also for one that a move stops; one that goes, while they are held; one that comes to
; rest meanwhile and stays so; and one that is halted
anim=RAnimation 2001 0
q=RCompositeAction 1
set q finished done
play q add PlayAnimAction "anim"
play q add PlayAnimAction "anim"
play q add MoveXAction "anim" "anim" 0 9 0 9
call run 1
call queue
play q add PlayAnimAction "anim"
play q start
drop anim
call tell "gone"
call hold 0.01
call tell "held"
pause 0.01
anim=RAnimation 2003 0
call queue
play q add PlayAnimAction "anim"
play q start
play q pause
play anim play
pause 2
call still "at rest "
anim=RAnimation 2003 0
call queue
play q add PlayAnimAction "anim"
call run 0.2
play q halt
call still "halted "
;@ 17522   done
;@ 18271 gone 95,0 active 1
;@ 18280 held 95,0 active 1
;@ 18281   done
;@ 19090   done
;@ 20269 at rest 1 95,0 active 0
;@ 20629 halted 1 95,0 active 0

; calls and properties, also one that clears its queue
q=RQueue 1
play q add VerbAction "sign" 1 offset 30 4
play q add PropertyAction "sign" x 50
play q start
call tell "moved and set"
play q clear
play q add VerbAction "sign" 1 offset 30 4
play q add VerbAction "sign" 1 sing
play q add PropertyAction "sign" colour red
play q add VerbAction "q" 1 clear
play q add EmptyAction
play q start
get q actionCount a
call tell "moved, left: "+a
;@ 20629 moved and set 50,4 active 0
;@ 20629 VerbAction, verb not supported: sing
;@ 20629 PropertyAction, property not found: colour
;@ 20629 moved, left: 0 80,8 active 0

; a sound of 230 ms, read at once or piece by piece; none, and a missing one
for i 0 1
[
call queue
play q add SoundAction 207 i
call run 0.05
call hold 1
pause 1
play q start
play q halt
pause 1
]
play q clear
play q add SoundAction -1
play q add SoundAction 6
play q start
;@ 21807   done
;@ 24552   done
;@ 26119 WAVE resource 6 not found.
;@ 26119 Invoking method "start"\ncaused event "finished" (ignored)\n
quit
