; What happens when in nested containers, with members that may be interrupted and others that may
; not: untouched, halted, paused, cleared and with a member dropped, at every stage. Milliseconds
; stand behind what has finished, and between braces what is known after the change: members, and
; who is active of queue, both, drawn, inner.
yield off
procedure tick
ms=ms+1
clock=RAnimationTrigger 1000
set clock newFrame tick
play clock start
procedure done
[
get RECEIVER name who
line=line+" "+who+ms
]
; The queue: 40 ms; both: 30 ms, and 60 ms that may not be interrupted; drawn: 20 ms; twice 10 ms,
; the second of which may not be interrupted; 25 ms. 165 ms in all.
procedure build
[
both=RCompositeAction 1
play both add DelayAction 30
play both add DelayAction 60 0
drawn=RRandomAction 0
play drawn add DelayAction 20
inner=RQueue 1
play inner add DelayAction 10
play inner add DelayAction 10 0
queue=RQueue 1
play queue add DelayAction 40
play queue add "both"
play queue add "drawn"
play queue add "inner"
play queue add DelayAction 25
set queue finished done
set both finished done
set drawn finished done
set inner finished done
]
procedure goOn
play queue resume
procedure wait length
[
timer=RQueue 1
play timer add DelayAction length
play timer start
]
procedure change
[
if what="drop"
[
drop both
both=RCompositeAction 1
]
else
play queue what
if what="pause"
[
call wait 100
set timer finished goOn
]
get queue isActive q
get both isActive b
get drawn isActive d
get inner isActive i
get queue actionCount n
line=line+" {"+n+q+b+d+i+"}"
]
procedure try
[
line=what+" "+after+":"
call build
call wait after
set timer finished change
play queue start
ms=0
pause 0.35
say line
]
methods=[halt pause clear drop
for method 1 4
for stage 1 4
[
what=methods.method
after=stage*45-25
call try
]
; A queue that goes in its own handler, one that goes in that of its member, and one that is started
; again by its own.
procedure goes
[
line=line+" gone"+ms
drop queue
]
procedure again
[
call done
rounds=rounds+1
if rounds<3
play RECEIVER start
]
procedure last
[
play queue start
ms=0
pause 0.35
say line
line=""
]
line=""
call build
set queue finished goes
call last
call build
set inner finished goes
call last
rounds=0
queue=RQueue 1
play queue add DelayAction 10
set queue finished again
call last
quit
;= halt 20: {51100} both80 drawn100 inner120 queue145
;= halt 65: {51100} both100 drawn120 inner140 queue165
;= halt 110: both100 {51001} inner130 queue155
;= halt 155: both100 drawn120 inner140 {50000}
;= pause 20: {51000} both200 drawn220 inner240 queue265
;= pause 65: {51100} both200 drawn220 inner240 queue265
;= pause 110: both100 {51010} drawn220 inner240 queue265
;= pause 155: both100 drawn120 inner140 {51000} queue265
;= clear 20: {51100} both80 drawn100 inner120 queue145
;= clear 65: {51100} both100 drawn120 inner140 queue165
;= clear 110: both100 {51001} inner130 queue155
;= clear 155: both100 drawn120 inner140 {00000}
;= drop 20: {41000} drawn60 inner80 queue105
;= drop 65: {41000} drawn126 inner146 queue171
;= drop 110: both100 {41010} drawn120 inner140 queue165
;= drop 155: both100 drawn120 inner140 {41000} queue165
;=  both100 drawn120 inner140 gone165
;=  both100 drawn120 gone140
;=  queue10 queue20 queue30
