; Containers of actions and all that actions do. Whose end is told stands with the millisecond.
;$ --until 60000
yield off
include steps.mps
procedure done
[
get RECEIVER name who
line=line+" "+who+"@"+now
]
procedure begin
[
call cut
now=0
play c.word start
]
; A member: a container, e for none that takes time, a delay, or one that may not be interrupted.
procedure member
if word|1|1="c"
play c.number add word
else if word="e"
play c.number add EmptyAction
else if word>0
play c.number add DelayAction word
else
play c.number add DelayAction 0-word 0
procedure fill
[
call cut
number=word
set c.number finished done
for ~words
[
call cut
call member
]
]
procedure queue
[
number=words|1|1
c.number=RQueue 1
call fill
]
procedure both
[
number=words|1|1
c.number=RCompositeAction 1
call fill
]
procedure any
[
number=words|1|1
c.number=RRandomAction 0
call fill
]
procedure active
for k 1 3
[
get c.k isActive got
line=line+" "+got
]
; what an end starts comes before its own event; rounds, none at first, without end
call do "queue 2 10, queue 3 5, queue 1 c.2 c.3 e, give c.1 repeatCount 3, begin 1, begin 1"
call do "await 90, tell"
c.1=RQueue 0
call do "fill 1 1 e, look c.1 repeatCount, give c.1 repeatCount -1, begin 1, await 90, active, tell"
; what takes no time takes none; many do not pile up, and without end they leave time to others
call do "queue 1, both 2, any 3, begin 1, begin 2, begin 3, queue 2 e, queue 3 c.2, queue 1"
for k 1 2000
play c.1 add EmptyAction
call do "give c.2 repeatCount -1, give c.3 repeatCount -1, begin 1, begin 3, await 90, active"
call do "ask c.3 halt, active, tell"
; members that halt and start each other without end
for k 1 2
[
c.k=RCompositeAction 1
play c.k add VerbAction "c."+(3-k) 1 halt
play c.k add VerbAction "c."+(3-k) 1 start
]
call do "begin 1, await 90, lose c.1, note still, tell"
;=  c.2@9 c.3@14 c.2@24 c.3@29 c.2@39 c.1@44 c.3@44
;=  1 1 0 0
;=  c.1@0 0 1 1 0 0 0
;=  still
;! RQueue - start method ignored, already running!
;! Invoking method "start"\ncaused event "finished" (ignored)\n
;! Invoking method "start"\ncaused event "finished" (ignored)\n
;! Invoking method "start"\ncaused event "finished" (ignored)\n

; by chance: all before one comes again; what is gone is not drawn; or any
procedure drawn
[
get RECEIVER name who
who=who||1
line=line+who
]
procedure rounds times
[
line=line+" "
for k 2 4
[
c.k=RQueue 1
play c.k add DelayAction 1
play c.1 add "c."+k
set c.k finished drawn
]
for round 1 times
[
for k 1 3
call do "begin 1, await 3"
line=line+"_"
]
play c.1 start
call do "lose c.2, lose c.3, lose c.4, await 3"
]
c.1=RRandomAction 1
call rounds 9
call rounds 2
set c.1 useAllBeforeRepeat 0
call rounds 10
; what may not be interrupted is not halted
call do "any 1 -10, begin 1, ask c.1 halt, look c.1 isActive, await 90, tell"
;=  342_432_432_234_342_234_423_234_234_ 423_432_ 242_442_444_222_243_223_223_442_233_242_ 1 c.1@9

; nested containers, of members that may be interrupted and others that may not, at every stage;
; between braces what is known after the change: who is active, and members
procedure stages what
for after 20 155 45
[
call do "both 2 30 -60, any 3 20, queue 4 10 -10, queue 1 40 c.2 c.3 c.4 25, begin 1"
call wait after
if what="drop"
call do "lose c.2, both 2"
else
play c.1 what
line=line+" {"
for k 1 4
[
get c.k isActive got
line=line+got
]
get c.1 actionCount got
line=line+got+"}"
if what="pause"
call do "await 90, ask c.1 resume"
call do "await 190"
if after%90=65
call tell
]
call stages halt
call stages pause
call stages clear
call stages drop
;=  {11005} c.2@79 c.3@99 c.4@119 c.1@144 {11005} c.2@99 c.3@119 c.4@139 c.1@164
;=  c.2@99 {10015} c.4@129 c.1@154 c.2@99 c.3@119 c.4@139 {00005}
;=  {10005} c.2@189 c.3@209 c.4@229 c.1@254 {11005} c.2@189 c.3@209 c.4@229 c.1@254
;=  c.2@99 {10105} c.3@209 c.4@229 c.1@254 c.2@99 c.3@119 c.4@139 {10005} c.1@254
;=  {11005} c.2@79 c.3@99 c.4@119 c.1@144 {11005} c.2@99 c.3@119 c.4@139 c.1@164
;=  c.2@99 {10015} c.4@129 c.1@154 c.2@99 c.3@119 c.4@139 {00000}
;=  {10004} c.3@59 c.4@79 c.1@104 {10004} c.3@125 c.4@145 c.1@170
;=  c.2@99 {10104} c.3@119 c.4@139 c.1@164 c.2@99 c.3@119 c.4@139 {10004} c.1@164

; a pause holds what runs, whatever was resumed by itself in between; then without what was paused
procedure hold
[
play c.1 pause
call wait 90
play c.1 resume
]
call do "any 3 20, both 2 c.3 10, queue 1 c.2 5, begin 1, await 9, ask c.1 pause, hold"
call do "ask c.1 resume, await 90, tell, begin 1, ask c.1 pause, ask c.3 resume, hold, await 4"
call do "ask c.1 pause, lose c.2, hold, note on, await 90, tell"
call do "both 1, queue 2 50, fill 1 c.2 e, begin 1, lose c.2, note none, await 90, tell"
;=  c.2@109 c.3@109 c.1@114
;=  on c.1@189
;=  none c.1@0

; an end is told to the container that added the member last; another one waits until it is halted
call do "queue 2 -5, both 3, queue 1 c.1 c.2, fill 3 c.2, fill 1 c.2, fill 3 c.2, fill 2 c.1"
call do "begin 1"
for k 1 2
call do "await 27, active, ask c.1 halt"
call do "begin 3, active, await 27, lose c.3, begin 1, await 90, tell"
;=  c.2@4 1 0 0 c.2@31 1 0 0 0 1 1 c.3@4 c.2@4 c.2@4 c.1@9 c.2@9
;! RQueue - cannot add c.1
;! RQueue - cannot add c.1
;! RQueue - start method ignored, already running!
; as many inside each other as there may be
d.1=RQueue 1
for n 2 32
[
d.n=RQueue 1
play d.n add "d."+(n-1)
]
c.1=RQueue 1
play c.1 add "d.32"
drop d.5
play c.1 add "d.32"
d.5=RQueue 1
play d.5 add "d.4"
play d.6 add "d.5"
play c.1 clear
play d.6 add "d.5"
play d.1 add "c.1"
;! RQueue - cannot add d.32
;! RQueue - cannot add d.5
;! RQueue - cannot add c.1

; by type and by variable; a play that waits has waited for the end after a resume, and for a halt
c.2=RQueue 1 0
call do "ask c.1 add c.2, fill 2 5, look c.1 isInterruptible actionCount, lose c.2"
call do "look c.1 actionCount isInterruptible, ask c.1 add Nothing 1, ask c.1 add line"
call do "queue 2 20 1, begin 2"
play c.2 resume }
call do "note _over, queue 1 5, ask c.1 add VerbAction c.2 1 halt, ask c.1 start"
play c.2 start }
call do "note _halted, tell"
;=  0,1 0,1 c.2@0 _over c.1@0 _halted
;! Unknown action or container: Nothing
;! Unknown action or container: line

; Delays: with a pause, halted, none, 300 times 3, 4 or 5 (by chance), and 3 and 4 of no width.
call do "queue 1 1000, begin 1, await 360, hold, await 700, begin 1, await 90, ask c.1 halt"
call do "await 950, queue 1, ask c.1 add DelayAction -5, begin 1, await 9, ask c.1 clear, tell"
call do "ask c.1 add RandomDelayAction 3 6, give c.1 repeatCount 300, begin 1, await 1350"
call do "ask c.1 clear, give c.1 repeatCount 1, ask c.1 add RandomDelayAction 3 3"
call do "ask c.1 add RandomDelayAction 4 2, begin 1, await 9, tell, queue 1"
call do "ask c.1 add RandomDelayAction -2147483648 2147483647, ask c.1 start"

;=  c.1@1089 c.1@0
; Moves: from where, how fast, faster by, to where. The animation, a.1, stands then; a.2 is moved.
procedure still
[
get a.1 frame old
call wait 180
get a.1 frame new
line=line+" "+(old=new)
]
procedure move
[
axis=words|1|1
for k 1 5
[
call cut
part.k=word
]
a.1=RAnimation 2001 0
c.1=RQueue 1
play c.1 add "Move"+part.1+"Action" "a.1" "a.2" part.2 part.3 part.4 part.5
play c.1 start
line=line+" "+axis
last=1000
busy=1
for busy
[
get c.1 isActive busy
if axis="X"
get a.2 x left
else
get a.2 y left
if left#last
line=line+" "+left
last=left
call wait 9
]
line=line+" still"
call still
]
procedure again
[
a.1=RAnimation 2001 0
c.1=RQueue 1
set c.1 finished done
]
a.2=RHotSpot 1 2 10 10
call do "move X 0 10 0 25, move X 0 10 0 20, move X 50 -3 -2 40, move X 0 1 1 8, tell"
call do "move X 7 5 0 7, move X 0 5 -3 4, move Y 50 -3 -2 40, look a.2 x y, tell"
; two by one animation, both ways at once
a.1=RAnimation 2001 0
call do "both 1, ask c.1 add MoveXAction a.1 a.2 0 10 0 15"
call do "ask c.1 add MoveYAction a.1 a.2 0 10 0 35, begin 1, await 900, look a.1 frameNotification"
call do "look a.2 x y, look c.1 isActive"
call again
play c.1 add MoveXYAction "a.1" "a.2" 0 10 0 15 0 10 0 35
call do "begin 1, await 360, look a.2 x y, hold, look a.2 x y, ask c.1 halt, note still, still"
call do "look a.2 x y, tell"
; without what is moved, and without the animation: not in the end of others, but in the next turn
call do "begin 1, lose a.2, await 9"
a.2=RHotSpot 0 0 10 10
call again
call do "ask c.1 add MoveXAction a.1 a.2 0 10 0 95, begin 1, await 180, lose a.1, look a.2 x y"
call do "look c.1 isActive, await 9, look a.2 x y, look c.1 isActive, tell"
;=  c.1@1186 c.1@6
;=  X 0 10 20 25 still 1 X 0 10 20 still 1 X 50 47 42 40 still 1 X 0 1 3 6 8 still 1
;=  X 7 still 1 X 0 4 still 1 Y 50 47 42 40 still 1 4,40
;=  c.1@450 0 15,35 0 15,30 15,30 still 1 15,35
; A picture where it is wanted, and where its resource lies; without end; of no picture.
procedure born
a.3=RECEIVER
set OMAnimation born born
call do "queue 1, ask c.1 add AnimAction 2003 30 40 7 1 1, begin 1, await 450, look a.3 x y z, hold"
call do "await 1800"
call again
call do "ask c.1 add AnimAction 2003 8 2, begin 1, await 90, look a.3 x y z, await 1800"
call again
call do "ask c.1 add AnimAction 2003 0 -1, begin 1, await 2700, ask c.1 halt, look c.1 isActive"
line=line+" "+a.3
play c.1 start
drop c.1
line=line+a.3
call tell
set OMAnimation born
call again
call do "ask c.1 add AnimAction -1 0 1, ask c.1 add AnimAction 77 0 1, ask c.1 start"
;=  c.1@0 20,0 1 c.1@180 95,0 0
;! ASEQ resource 77 not found.
; Several wait for one animation, also for one that a move stops; one that goes while they are held;
; one that comes to rest meanwhile and stays so; and one that is halted.
call do "both 1, ask c.1 add PlayAnimAction a.1, ask c.1 add PlayAnimAction a.1"
call do "ask c.1 add MoveXAction a.1 a.1 0 9 0 9, begin 1, await 900, queue 1"
call do "ask c.1 add PlayAnimAction a.1, begin 1, lose a.1, look c.1 isActive, ask c.1 pause"
call do "await 9, ask c.1 resume, look c.1 isActive, await 9"
a.1=RAnimation 2003 0
call do "queue 1, ask c.1 add PlayAnimAction a.1, begin 1, ask c.1 pause, ask a.1 play, await 1800"
call do "still"
a.1=RAnimation 2003 0
call do "queue 1, ask c.1 add PlayAnimAction a.1, begin 1, await 180, ask c.1 halt, still, tell"
;=  76,48,7 c.1@840 20,289,8 c.1@1600 0 a.3a.3
; Calls and properties, also one that clears its queue.
call do "queue 1, ask c.1 add VerbAction a.2 1 offset 30 4, ask c.1 add PropertyAction a.2 x 50"
call do "begin 1, look a.2 x y, ask c.1 clear, ask c.1 add VerbAction a.2 1 offset 30 4"
call do "ask c.1 add VerbAction a.2 1 sing, ask c.1 add PropertyAction a.2 colour red"
call do "ask c.1 add VerbAction c.1 1 clear, fill 1 e, begin 1, look c.1 actionCount, look a.2 x y"
call do "tell"
;=  c.1@150 1 1 c.1@9 c.1@800 1 1
;! Invoking method "start"\ncaused event "finished" (ignored)\n
;! Invoking method "start"\ncaused event "finished" (ignored)\n
; A sound of 230 ms, read at once or piece by piece; none, and a missing one.
for i 0 1
[
call again
play c.1 add SoundAction 207 i
call do "begin 1, await 45, hold, await 400, begin 1, ask c.1 halt, await 500"
]
call do "ask c.1 clear, tell, ask c.1 add SoundAction -1, ask c.1 add SoundAction 6, ask c.1 start"
quit
;=  50,4 0 80,8
;=  c.1@367 c.1@367
;! VerbAction, verb not supported: sing
;! PropertyAction, property not found: colour
;! WAVE resource 6 not found.
;! Invoking method "start"\ncaused event "finished" (ignored)\n
