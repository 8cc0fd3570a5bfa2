; What happens when in nested containers, with members that may be interrupted and others that may not:
; untouched, halted, paused, cleared and with a member dropped, at every stage. The boxes of the report
; tell when; a pause of the script lasts 900 ms.
yield off

procedure queueDone
MessageBox "  queue finished"
procedure bothDone
MessageBox "  both finished"
procedure drawnDone
MessageBox "  drawn finished"
procedure innerDone
MessageBox "  inner finished"

; The queue: 40 ms; both: 30 ms, and 60 ms that may not be interrupted; drawn: 20 ms; twice 10 ms, the
; second of which may not be interrupted; 25 ms. 165 ms in all.
procedure build
[
both=RCompositeAction 1
play both add DelayAction 30
play both add DelayAction 60 0
set both finished bothDone
drawn=RRandomAction 0
play drawn add DelayAction 20
set drawn finished drawnDone
inner=RQueue 1
play inner add DelayAction 10
play inner add DelayAction 10 0
set inner finished innerDone
queue=RQueue 1
play queue add DelayAction 40
play queue add "both"
play queue add "drawn"
play queue add "inner"
play queue add DelayAction 25
set queue finished queueDone
]

procedure tell
[
get queue isActive q
get both isActive b
get drawn isActive d
get inner isActive i
get queue actionCount n
MessageBox "  "+n+" members; queue "+q+" both "+b+" drawn "+d+" inner "+i
]

; What is done to the queue when the timer is over.
procedure goOn
[
play queue resume
]
procedure change
[
MessageBox "  "+what
if what="halt"
play queue halt
else if what="clear"
play queue clear
else if what="pause"
[
play queue pause
timer=RQueue 1
play timer add DelayAction 100
set timer finished goOn
play timer start
]
else if what="drop"
[
drop both
both=RCompositeAction 1
]
call tell
]

procedure try after
[
MessageBox what+" after "+after
call build
timer=RQueue 1
play timer add DelayAction after
set timer finished change
play timer start
play queue start
pause 1
]

what="nothing"
call try 10
what="halt"
for stage 1 4
call try stage*45-25
what="pause"
for stage 1 4
call try stage*45-25
what="clear"
for stage 1 4
call try stage*45-25
what="drop"
for stage 1 4
call try stage*45-25

; A queue that goes in its own handler, one that goes in that of its member, and one that is started
; again by its own.
procedure goes
[
MessageBox "  gone"
drop queue
]
procedure again
[
rounds=rounds+1
MessageBox "  round "+rounds
if rounds<3
play RECEIVER start
]
MessageBox "goes at its end"
call build
set queue finished goes
play queue start
pause 1
MessageBox "goes with its member"
call build
set inner finished goes
play queue start
pause 1
rounds=0
queue=RQueue 1
play queue add DelayAction 10
set queue finished again
play queue start
pause 1
quit
