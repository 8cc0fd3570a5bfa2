; Movies: where they are looked for, what they tell, their signals, what handlers may do to them, what
; waits because of them, and when they stand still. A frame lasts 90 ms, pause 0.1.
;$ --cd content --until 60000
yield off
include things.mps
procedure see
call do "of 1 frame, of 2 frame, of 3 frame"
; behind another program they stand still, also one started or resumed there, and after a box
procedure keep
t.3=&RECEIVER
t.1=RSmackerMovie plain.smk 0 0
t.2=RSmackerMovie plain.smk 0 0
t.4=RQueue 1
play t.4 add MovieAction plain.smk
set RSmackerMovie born keep
play t.4 start
set RSmackerMovie born
call do "run 1 start, rest 0.25, run 4 pause, run 2 start, rest 0.22, see"
;> 434 background
call do "rest 0.05, run 4 resume, run 2 stop, let 2 frame 0, run 2 start"
MessageBox "a box"
call do "rest 0.5, see, rest 0.4, see, tell, lose t.1, lose t.2, lose t.4"
;> 929 foreground
;! a box
;=  5 3 3 5 0 3 7 4 7

; sounds wait as long as there is a movie, whatever it is, and are not begun; this one lasts 339 ms
procedure onHit
[
get RECEIVER name who
line=line+" "+who
]
t.5=RPButton 2001 7
t.6=RPButton 2001 300 200 8
for i 5 6
[
set t.i clickSoundID 208
set t.i hit onHit
]
;> 1289 tap 56 310
pause 0.1
t.1=RSmackerMovie lost.smk 0 0
pause 1
t.2=RSmackerMovie plain.smk 0 0
;> 2279 tap 350 306
call do "lose t.1, rest 0.1, run 2 release, rest 1, lose t.2, note gone, rest 0.2, note later"
call do "rest 0.2, tell"
;=  t.6 gone later t.5

; in the game's folder (8 frames), else in RSC (2 in plain.smk, 3 in other.smk); just there; nowhere
files=[plain.smk other.smk D:\RSC\plain.smk "" lost.smk
for k 1 5
[
t.1=RSmackerMovie files.k 30 20
call do "of 1 frames, of 1 width, of 1 height, of 1 frame, of 1 rate, of 1 collecting, tell"
]
;=  8 40 20 0 11 0
;=  3 40 20 0 11 0
;=  2 40 20 0 11 0
;=  0 0 0 0 0 0
;=  0 0 0 0 0 0
; the facts one after the other, or by their index; the two count apart
t.1=RSmackerMovie other.smk 30 20 150
play t.1 }
call do "of 1 summary, of 1 summary, of 1 summary 16, of 1 summary 19, of 1 summaryText 9, tell"
call do "of 1 summary, of 1 summary -1, of 1 summary, of 1 summary 3, of 1 summaryText, tell"
call do "of 1 summaryText 17, of 1 frame, let 1 frame 99, of 1 frame, let 1 frame -3, of 1 frame, tell"
;=  180 9000 0 150 Time necessary to read from the device during SmackWaits (normally idle time)
;=  4 180 9000 3 Speed of the device in bytes/second (usually around 2x the spin speed)
;=   2 2 0

; signals before it goes on; the last frame has none
procedure heard
[
get RECEIVER frame number
line=line+" "+number
count=count+1
if $when
call do deed
]
procedure signals when deed
[
count=0
call do "let 1 frame -3, run 1 start, rest 1, tell"
]
t.1=RSmackerMovie plain.smk 0 0 "" "" 1
set t.1 signal heard
play t.1 addSignals 1 5 "" 3
call signals 0
play t.1 removeSignals 1
play t.1 addSignals 0-7 99 3
call signals 0
call signals "number=0" "run 1 removeSignals 3, run 1 addSignals 6"
call signals "(number=5)*(count<4)" "let 1 frame 4"
play t.1 addSignals 0-1
call signals 0
play t.1 removeSignals 0-1
call signals 0
;=  0 4
;=  0 2 4
;=  0 4 5
;=  0 4 5 4 5
;=  0 1 2 3 4 5 6
;= 

; what handlers do to the movie that calls them, in signal at its second frame and in finished,
; straight and collecting; afterwards the window goes on
procedure turn
set t.1 collecting collects=0
procedure onStep
passed=passed+1
boat=RAnimation 2001 7
set boat frameNotification 1
set boat frameNotify onStep
deeds=["lose t.1" "run 1 release" "run 1 stop" "run 1 start" "turn"
events=[signal finished
when="count=1"
for case 1 5
[
deed=deeds.case
for collects 0 1
for event 1 2
[
t.1=RSmackerMovie other.smk 500 400 "" 0 collects
set t.1 events.event heard
count=0
call do "run 1 addSignals 2, run 1 start, rest 0.4"
passed=0
call do "rest 0.2, lose t.1"
line=line+" "+(passed>0)+","
]
call tell
]
;=  1 1, 2 1, 1 1, 2 1,
;=  1 1, 2 1, 1 1, 2 1,
;=  1 1, 2 1, 1 1, 2 1,
;=  1 1, 2 2 1, 1 1, 2 2 1,
;=  1 1, 2 1, 1 1, 2 1,
