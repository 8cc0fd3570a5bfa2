; Containers: rounds, members that take no time, chance, pauses, members that go, and several containers. The boxes tell
; when; a pause of 0.1 lasts 90 ms. What happens to nested ones at every stage is in tests/scripts/actions.mps.
yield off
one=0
two=0
procedure done
[
get RECEIVER name who
MessageBox who
]
; a member: a container by its name, e for none that takes time, a delay, or one that may not be interrupted
procedure put member
if member|1|1="c"
play c.n add member
else if member="e"
play c.n add EmptyAction
else if member>0
play c.n add DelayAction member
else if member<0
play c.n add DelayAction 0-member 0
; makes a queue with up to two members
procedure queue n one two
[
c.n=RQueue 1
call fill n one two
]
procedure fill n one two
[
set c.n finished done
call put one
call put two
one=0
two=0
]
procedure tell what
[
get c.1 isActive a
get c.2 isActive b
get c.3 isActive c
MessageBox what+a+b+c
]

; what the end of a member starts comes before its own event
call queue 2 10
call queue 3 5
call queue 1 "c.2" "c.3"
call put "e"
set c.1 repeatCount 3
play c.1 start
play c.1 start
pause 0.1
;@ 1 RQueue - start method ignored, already running!
;@ 11 c.2
;@ 16 c.3
;@ 26 c.2
;@ 31 c.3
;@ 41 c.2
;@ 46 c.1
;@ 46 c.3
c.1=RQueue 0
get c.1 repeatCount n
set c.1 repeatCount -1
call fill 1 1 "e"
play c.1 start
pause 0.1
call tell "once at first, endless now "
;@ 181 once at first, endless now 100
; what takes no time takes none; many do not pile up, and without end they leave time to others
c.1=RQueue 1
c.2=RCompositeAction 1
c.3=RRandomAction 0
for k 1 3
[
call fill k
play c.k start
]
call queue 2 "e"
set c.2 repeatCount -1
call queue 3 "c.2"
set c.3 repeatCount -1
call queue 1
for k 1 2000
call put "e"
play c.1 start
play c.3 start
pause 0.1
call tell "endless "
play c.3 halt
call tell "halted "
; members that halt and start each other without end
c.1=RCompositeAction 1
c.2=RCompositeAction 1
for k 1 2
[
play c.k add VerbAction "c."+(3-k) 1 halt
play c.k add VerbAction "c."+(3-k) 1 start
]
play c.1 start
pause 0.1
MessageBox "still here"
drop c.1
;@ 181 Invoking method "start"\ncaused event "finished" (ignored)\n
;@ 181 Invoking method "start"\ncaused event "finished" (ignored)\n
;@ 181 Invoking method "start"\ncaused event "finished" (ignored)\n
;@ 182 c.1
;@ 271 endless 011
;@ 271 halted 000
;@ 361 still here

; by chance: all before one comes again; what is gone is not drawn; or any
procedure drawn
[
get RECEIVER name who
who=who||1
count.who=count.who+1
]
procedure rounds what times
[
for k 1 3
[
count.k=0
d.k=RQueue 1
play d.k add DelayAction 1
play c.1 add "d."+k
set d.k finished drawn
]
odd=0
for round 1 times
[
for k 1 3
[
play c.1 start
pause 0.003
]
if (count.1=round)*(count.2=round)*(count.3=round)=0
odd=odd+1
]
MessageBox what+count.1+" "+count.2+" "+count.3+", uneven "+odd
play c.1 start
drop [ d
pause 0.003
]
c.1=RRandomAction 1
call rounds "all " 20
call rounds "of the new ones " 2
set c.1 useAllBeforeRepeat 0
call rounds "any " 20
; what may not be interrupted is not halted
c.1=RRandomAction 0
call fill 1 -10
play c.1 start
play c.1 halt
call tell "halted "
pause 0.1
;@ 481 all 20 20 20, uneven 0
;@ 495 of the new ones 2 2 2, uneven 0
;@ 617 any 17 23 20, uneven 19
;@ 619 halted 100
;@ 629 c.1

; a pause holds what runs, whatever was paused or resumed by itself in between; then without the one that was paused
procedure hold
[
play c.1 pause
pause 0.1
play c.1 resume
]
c.3=RRandomAction 0
call fill 3 20
c.2=RCompositeAction 1
call fill 2 "c.3" 10
call queue 1 "c.2" 5
play c.1 start
pause 0.01
play c.1 pause
call hold
play c.1 resume
pause 0.1
play c.1 start
play c.1 pause
play c.3 resume
call hold
pause 0.005
play c.1 pause
drop c.2
call hold
MessageBox "goes on without a member"
pause 0.1
; one that was the only one to run
c.1=RCompositeAction 1
call queue 2 50
call fill 1 "c.2" "e"
play c.1 start
drop c.2
MessageBox "nothing runs any more"
pause 0.1
;@ 819 c.2
;@ 819 c.3
;@ 824 c.1
;@ 1082 goes on without a member
;@ 1088 c.1
;@ 1172 nothing runs any more
;@ 1173 c.1

; an end is told to the container that added the member last; another one waits until it is halted
call queue 2 -5
c.3=RCompositeAction 1
call queue 1 "c.1" "c.2"
call fill 3 "c.2"
call fill 1 "c.2"
call fill 3 "c.2"
call fill 2 "c.1"
play c.1 start
for k 1 2
[
pause 0.03
call tell "waits "
play c.1 halt
]
play c.3 start
call tell "the other one "
pause 0.03
drop c.3
play c.1 start
pause 0.1
;@ 1262 RQueue - cannot add c.1
;@ 1262 RQueue - cannot add c.1
;@ 1267 c.2
;@ 1289 waits 100
;@ 1294 c.2
;@ 1316 waits 100
;@ 1316 RQueue - start method ignored, already running!
;@ 1316 the other one 011
;@ 1321 c.3
;@ 1321 c.2
;@ 1348 c.2
;@ 1353 c.1
;@ 1353 c.2
; as many inside each other as there may be
d.1=RQueue 1
for n 2 32
[
d.n=RQueue 1
play d.n add "d."+(n-1)
]
call queue 1
play c.1 add "d.32"
drop d.5
play c.1 add "d.32"
d.5=RQueue 1
play d.5 add "d.4"
play d.6 add "d.5"
play c.1 clear
play d.6 add "d.5"
play d.1 add "c.1"
;@ 1433 RQueue - cannot add d.32
;@ 1433 RQueue - cannot add d.5
;@ 1433 RQueue - cannot add c.1

; by type and by variable; a play that waits has waited for the end after a resume, and for a halt
c.2=RQueue 1 0
play c.1 add "c.2"
call fill 2 5
get c.1 isInterruptible a
get c.1 actionCount b
drop c.2
get c.1 actionCount c
get c.1 isInterruptible d
MessageBox "stubborn, members, and without: "+a+b+c+d
play c.1 add Nothing 1
spot=RHotSpot 0 0 10 10
play c.1 add "spot"
call queue 2 20 1
play c.2 start
play c.2 resume }
MessageBox "over"
call queue 1 5
play c.1 add VerbAction "c.2" 1 halt
play c.1 start
play c.2 start }
MessageBox "halted"
;@ 1433 stubborn, members, and without: 0101
;@ 1433 Unknown action or container: Nothing
;@ 1433 Unknown action or container: spot
;@ 1454 c.2
;@ 1454 over
;@ 1459 c.1
;@ 1459 halted
quit
