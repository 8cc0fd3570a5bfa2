; Containers of actions: rounds, members that take no time, what may not be interrupted, pauses, members that come and
; go, containers in several others. The boxes tell when; a pause of 0.1 lasts 90 ms.
yield off
procedure done
[
get RECEIVER name who
MessageBox who
]
procedure tell what
MessageBox what+a+b+c

MessageBox "A queue goes through its members in rounds"
first=RQueue 1
play first add DelayAction 10
second=RQueue 1
play second add DelayAction 5
queue=RQueue 3
play queue add "first"
play queue add "second"
play queue add EmptyAction
set queue finished done
set first finished done
set second finished done
play queue start
play queue start
pause 0.1
;@ 1 A queue goes through its members in rounds
;@ 1 RQueue - start method ignored, already running!
; what the end of a member starts comes before its own event
;@ 11 first
;@ 16 second
;@ 26 first
;@ 31 second
;@ 41 first
;@ 46 queue
;@ 46 second
endless=RQueue 0
get endless repeatCount a
set endless repeatCount -1
play endless add DelayAction 1
play endless add EmptyAction
set endless finished done
play endless start
pause 0.1
get endless isActive b
MessageBox "once at first, endless now: "+a+b
;@ 181 once at first, endless now: 11
drop endless

MessageBox "What takes no time takes none"
queue=RQueue 1
both=RCompositeAction 1
any=RRandomAction 0
set queue finished done
set both finished done
set any finished done
play queue start
play both start
play any start
;@ 181 What takes no time takes none
;@ 181 Invoking method "start"\ncaused event "finished" (ignored)\n
;@ 181 Invoking method "start"\ncaused event "finished" (ignored)\n
;@ 181 Invoking method "start"\ncaused event "finished" (ignored)\n
; many do not pile up, and without end they leave time to others
many=RQueue 2
for i 1 1000
play many add EmptyAction
set many finished done
play many start
endless=RQueue -1
play endless add EmptyAction
outer=RQueue -1
play outer add "endless"
play outer start
pause 0.1
get endless isActive a
play outer halt
get endless isActive b
get outer isActive c
call tell "endless: "
;@ 183 many
;@ 271 endless: 100
; members that halt and start each other without end
outer=RQueue -1
inner=RQueue 1
play inner add VerbAction "inner" 1 halt
play outer add "inner"
play outer start
one=RCompositeAction 1
two=RCompositeAction 1
play one add VerbAction "two" 1 halt
play one add VerbAction "two" 1 start
play two add VerbAction "one" 1 halt
play two add VerbAction "one" 1 start
play one start
pause 0.1
MessageBox "still here"
;@ 361 still here
drop outer
drop inner
drop one
drop two

MessageBox "A queue that is halted goes on with what may not be interrupted"
queue=RQueue 1
play queue add DelayAction 100
play queue add DelayAction 100
play queue add DelayAction 20 0
play queue add DelayAction 10
set queue finished done
get queue isInterruptible a
play queue start
pause 0.01
play queue halt
get queue isActive b
play queue halt
get queue isActive c
call tell "interruptible, active, active: "
pause 0.03
get queue isActive a
play queue halt
get queue isActive b
get queue actionCount c
call tell "in the last one: "
pause 0.2
play queue start
play queue clear
get queue actionCount a
pause 0.03
play queue clear
get queue actionCount b
get queue isInterruptible c
call tell "cleared in the end: "
play queue start
;@ 361 A queue that is halted goes on with what may not be interrupted
;@ 370 interruptible, active, active: 011
;@ 397 in the last one: 104
;@ 604 cleared in the end: 401
;@ 604 Invoking method "start"\ncaused event "finished" (ignored)\n

MessageBox "All have finished with the last member"
all=RCompositeAction 1
play all add DelayAction 30
play all add DelayAction 10 0
play all add EmptyAction
set all finished done
play all start
pause 0.1
play all start
play all halt
get all isActive a
MessageBox "halted: "+a
pause 0.1
;@ 604 All have finished with the last member
;@ 634 all
;@ 694 halted: 1
;@ 704 all
all=RCompositeAction 1
set all finished done
play all add DelayAction 30
play all start
play all pause
pause 0.1
get all isActive a
play all resume
play all halt
get all isActive b
pause 0.1
MessageBox "paused, halted: "+a+b
;@ 964 paused, halted: 10

MessageBox "One of several"
procedure drawn
[
get RECEIVER name who
who=who||1
count.who=count.who+1
]
any=RRandomAction 1
for i 1 3
[
count.i=0
member.i=RQueue 1
play member.i add DelayAction 1
play any add "member."+i
set member.i finished drawn
]
for round 1 20
[
for i 1 3
[
play any start
pause 0.003
]
if (count.1=round)*(count.2=round)*(count.3=round)=0
MessageBox "one too often in round "+round
]
; what is gone is not drawn, though two had not had their turn
play any start
drop [ member
pause 0.003
member.2=RQueue 1
set member.2 finished drawn
play member.2 add DelayAction 1
play any add "member.2"
count.2=0
play any start
pause 0.003
play any start
pause 0.003
MessageBox "again "+count.2
set any useAllBeforeRepeat 0
play any add DelayAction 10 0
a=0
for a=0
[
play any start
pause 0.003
get any isActive a
]
play any halt
get any isActive b
pause 0.02
get any isActive c
call tell "may not be halted: "
; members are put back, so one may be drawn twice in a row and another not at all
any=RRandomAction 0
for i 1 3
[
count.i=0
member.i=RQueue 1
play member.i add DelayAction 1
play any add "member."+i
set member.i finished drawn
]
get any useAllBeforeRepeat a
for i 1 30
[
play any start
pause 0.003
]
MessageBox "all "+a+": "+count.1+" "+count.2+" "+count.3
;@ 964 One of several
;@ 1090 again 2
;@ 1112 may not be halted: 110
;@ 1172 all 0: 10 12 8

MessageBox "A pause holds what runs now"
outer=RQueue 1
middle=RCompositeAction 1
inner=RRandomAction 0
play inner add DelayAction 20
play middle add "inner"
play middle add RandomDelayAction 10 10
play outer add "middle"
play outer add DelayAction 5
set outer finished done
set inner finished done
play outer start
pause 0.01
play outer pause
play outer pause
pause 0.1
play outer resume
play outer resume
pause 0.1
;@ 1172 A pause holds what runs now
;@ 1282 inner
;@ 1287 outer
; whatever was paused or resumed by itself in between; and without the one that was paused
play outer start
play outer pause
play inner resume
play outer pause
pause 0.1
play outer resume
pause 0.005
play outer pause
drop middle
pause 0.1
MessageBox "goes on"
play outer resume
pause 0.1
;@ 1545 goes on
;@ 1551 outer

MessageBox "Members come and go"
queue=RQueue 1
gone=RQueue 1
play gone add DelayAction 50
set gone finished done
play queue add DelayAction 10
play queue add "gone"
play queue add DelayAction 5
set queue finished done
play queue start
pause 0.02
drop gone
get queue actionCount a
MessageBox "back at the first of "+a
pause 0.1
;@ 1635 Members come and go
;@ 1653 back at the first of 2
;@ 1669 queue
all=RCompositeAction 1
last=RQueue 1
play last add DelayAction 50
play all add "last"
play all add EmptyAction
set all finished done
play all start
drop last
MessageBox "the only one that ran"
pause 0.1
;@ 1743 the only one that ran
;@ 1744 all
procedure destroy
[
call done
drop queue
]
own=RQueue 1
play own add DelayAction 10
set own finished destroy
queue=RQueue 1
play queue add "own"
set queue finished done
play queue start
pause 0.1
MessageBox "no "+queue
;@ 1843 queue
;@ 1843 own
;@ 1923 no queue

MessageBox "In several containers"
outer=RQueue 1
inner=RQueue 1
other=RCompositeAction 1
set outer finished done
set other finished done
play outer add "outer"
for i 1 2
[
play outer add "inner"
play other add "inner"
]
play inner add "outer"
play inner add DelayAction 5 0
play outer start
for i 1 2
[
pause 0.03
get outer isActive a
play outer halt
get outer isActive b
MessageBox "waits for an end that the other one is told: "+a+b
]
get outer isInterruptible a
MessageBox "interruptible: "+a
play other start
pause 0.03
drop other
play outer start
pause 0.1
;@ 1923 In several containers
;@ 1923 RQueue - cannot add outer
;@ 1923 RQueue - cannot add outer
;@ 1950 waits for an end that the other one is told: 11
;@ 1977 waits for an end that the other one is told: 10
;@ 1977 interruptible: 0
;@ 1977 RQueue - start method ignored, already running!
;@ 1982 other
;@ 2014 outer
; as many inside each other as there may be
chain.1=RQueue 1
for i 2 32
[
chain.i=RQueue 1
play chain.i add "chain."+(i-1)
]
tooMuch=RQueue 1
play tooMuch add "chain.32"
drop chain.5
play tooMuch add "chain.32"
get tooMuch actionCount a
chain.5=RQueue 1
play chain.5 add "chain.4"
play chain.6 add "chain.5"
play tooMuch clear
play chain.6 add "chain.5"
play chain.1 add "tooMuch"
get chain.1 actionCount b
MessageBox "in the outermost "+a+", in the innermost "+b
;@ 2094 RQueue - cannot add chain.32
;@ 2094 RQueue - cannot add chain.5
;@ 2094 RQueue - cannot add tooMuch
;@ 2094 in the outermost 1, in the innermost 0

MessageBox "By type and by variable"
inner=RQueue 1 0
outer=RQueue 1
play outer add "inner"
play inner add DelayAction 5
get inner isInterruptible a
get outer isInterruptible b
get outer actionCount c
call tell "stubborn: "
drop inner
get outer actionCount a
MessageBox "left: "+a
play outer add Nothing 1
sign=RHotSpot 0 0 10 10
play outer add "sign"
;@ 2094 By type and by variable
;@ 2094 stubborn: 001
;@ 2094 left: 0
;@ 2094 Unknown action or container: Nothing
;@ 2094 Unknown action or container: sign
; a play that waits has waited for the end that comes after a resume
q=RQueue 1
play q add DelayAction 20
play q add DelayAction 1
other=RQueue 1
play other add DelayAction 5
play other add VerbAction "q" 1 halt
play q start
play q resume }
MessageBox "over"
play other start
play q start }
MessageBox "halted"
quit
;@ 2115 over
;@ 2120 halted
