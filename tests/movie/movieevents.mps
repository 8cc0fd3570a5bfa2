; Movies: where they are looked for, what they tell of themselves, their signals, what handlers may do to
; them, what waits because of them, and when they stand still. A frame lasts 90 ms, pause 0.1.
;$ --cd content --until 60000
yield off
; behind another program they stand still, also one that is started or resumed there, and after a box
procedure tell when
[
get m frame a
get other frame b
get film frame c
say when a b c
]
procedure keep
film=&RECEIVER
m=RSmackerMovie plain.smk 0 0
other=RSmackerMovie plain.smk 0 0
films=RQueue 1
play films add MovieAction plain.smk
set RSmackerMovie born keep
play films start
set RSmackerMovie born
play m start
pause 0.25
call tell "before"
;= before 3 0 3
play films pause
play other start
pause 0.22
call tell "halted"
;= halted 5 3 3
;> 434 background
pause 0.05
play films resume
play other stop
set other frame 0
play other start
MessageBox "a box"
;! a box
pause 0.5
call tell "behind"
;= behind 5 0 3
;> 929 foreground
pause 0.1
call tell "afterwards"
;= afterwards 6 1 4
pause 0.3
call tell "at last"
;= at last 7 4 7
drop m other films

; sounds wait as long as there is a movie, whatever it is, and are not begun; this one lasts 339 ms
procedure onHit
[
get RECEIVER name who
say who "hit"
]
first=RPButton 2001 7
second=RPButton 2001 300 200 8
set first clickSoundID 208
set second clickSoundID 208
set first hit onHit
set second hit onHit
;> 1289 click 56 310
pause 0.1
m=RSmackerMovie lost.smk 0 0
pause 1
say "a movie"
;= a movie
other=RSmackerMovie plain.smk 0 0
drop m
;> 2279 click 350 306
pause 0.1
;= second hit
play other release
pause 1
say "closed"
;= closed
drop other
pause 0.2
say "no movie"
;= no movie
pause 0.2
;= first hit

words=[width height frames frame rate collecting
procedure values
[
told=""
for i 1 6
[
get m words.i value
told=told+" "+value
]
say told
]
; in the game's folder (8 frames), else in RSC (plain.smk has 2 there, other.smk 3); or just there
files=[plain.smk other.smk D:\RSC\plain.smk lost.smk ""
for i 1 5
[
m=RSmackerMovie files.i 30 20
get m frames number
say files.i number
]
;= plain.smk 8
;= other.smk 3
;= D:\RSC\plain.smk 2
;= lost.smk 0
;=  0
m=RSmackerMovie other.smk 30 20 500
call values
;=  40 20 3 0 11 0
; the facts one after the other, or by their index; the two count apart
get m summary a
get m summary b
get m summary 16 c
get m summary 19 d
get m summary e
get m summary -1 f
get m summary g
say a b c d e f g
;= 0 9000 0 500 0 0 9000
get m summaryText 9 a
get m summaryText b
get m summaryText 17 c
say a
say b c
;= Time necessary to read from the device during SmackWaits (normally idle time)
;= Speed of the device in bytes/second (usually around 2x the spin speed) 
play m }
get m frame a
get m summary 3 b
get m summary 0 c
set m frame 99
get m frame d
set m frame 0-3
get m frame e
say "played" a b c "kept inside" d e
;= played 2 3 180 kept inside 2 0

; one that cannot be played
procedure never
say "never"
m=RSmackerMovie gone.smk 30 20 5000 0 1
set m finished never
set m signal never
play m addSignals 1 -1
set m frame 3
set m collecting 1
play m start }
play m stop
play m release
call values
;=  0 0 0 0 0 0

; signals before it goes on; the last frame has none
procedure onSignal
[
get m frame number
told=told+" "+number
count=count+1
if case="change"
[
if number=0
play m removeSignals 3
if number=4
play m addSignals 5 6
]
if (case="again")*(number=5)*(count<4)
set m frame 4
if case="anew"
[
set m signal
play m stop
play m start
set m signal onSignal
]
]
procedure signals title
[
case=title
told=""
count=0
set m frame 0-3
play m start
pause 1
say case told
]
m=RSmackerMovie plain.smk 0 0 "" "" 1
set m signal onSignal
play m addSignals 1 5 "" 3
call signals "1 and 5:"
;= 1 and 5:  0 4
play m removeSignals 1
play m addSignals 0-7 99 3
call signals "1, 3 and 5:"
;= 1, 3 and 5:  0 2 4
call signals "change"
;= change  0 4 5
call signals "again"
;= again  0 4 5 4 5
play m addSignals 0-1
call signals "anew"
;= anew  0 1 2 3 4 5 6
play m removeSignals 0-1
call signals "none"
;= none 

; what handlers do to the movie that calls them, in signal at its second frame and in finished, straight and
; collecting; afterwards the window goes on
procedure ended
[
get RECEIVER frame number
told=told+" "+number
count=count+1
if count=1
[
if deed="drop"
drop m
if deed="release"
play m release
if deed="stop"
play m stop
if deed="start"
play m start
if deed="toggle"
set m collecting collects=0
]
]
procedure onStep
steps=steps+1
boat=RAnimation 2001 7
set boat frameNotification 1
set boat frameNotify onStep
deeds=[drop release stop start toggle
events=[signal finished
for case 1 5
[
deed=deeds.case
told=""
for collects 0 1
for event 1 2
[
m=RSmackerMovie other.smk 500 400 "" 0 collects
play m addSignals 2
word=events.event
set m word ended
count=0
play m start
pause 0.4
steps=0
pause 0.2
told=told+" "+(steps>0)+","
m=0
]
say deed+":"+told
]
;= drop: 1 1, 2 1, 1 1, 2 1,
;= release: 1 1, 2 1, 1 1, 2 1,
;= stop: 1 1, 2 1, 1 1, 2 1,
;= start: 1 1, 2 2 1, 1 1, 2 2 1,
;= toggle: 1 1, 2 1, 1 1, 2 1,
drop boat
