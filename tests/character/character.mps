; Characters. What is seen of the layers is looked at every 45 ms: the pose 2010, what it plays (2001, 1200 ms),
; fidgets (2006, 1020 ms) and speeches of 2010, each by a letter and how often it was seen, with + when it moved, ! when
; it had finished then.
;$ --until 1400000
yield off
procedure onBorn
[
n=n+1
layer.n=RECEIVER
letter.n=role
]
procedure look
[
state=""
frame=0
for i 1 n
if layer.i#("layer."+i)
[
get layer.i visible seen
get layer.i "frame" f
if seen
[
state=state+letter.i
frame=frame*10+f
]
]
if state=""
state="."
]
procedure flush
[
if moved
told=told+"+"
told=told+times
if ends
told=told+"!"
told=told+" "
ends=0
]
procedure watch title count
[
told=title+": "
last=""
for w 1 count
[
pause 0.05
call look
if state#last
[
if last#""
call flush
told=told+state
last=state
times=0
moved=0
]
else if frame#was
moved=1
was=frame
times=times+1
]
call flush
]
procedure show title count
[
call watch title count
say told
]
procedure ended
ends=ends+1
procedure make
[
n=0
role="p"
tilli=RCharacter 2010 0 0 30
set tilli finished ended
]
procedure halt
[
set tilli finished
play tilli stop
set tilli finished ended
]
procedure fidget group min max id
[
play tilli addFidgetGroup group min max
role="f"
play tilli addFidget group id
role="w"
]
n=0
ends=0
role="w"
set OMAnimation born onBorn
; what is played may end in the midst of a drag; the pointer goes from one layer to the next
procedure onUp
said=said+" up"
procedure onOn
said=said+" on"
procedure onOff
said=said+" off"
procedure onFinished
said=said+" finished"
tilli=RCharacter 2031 100 100 30
said=":"
set tilli mouseUp onUp
set tilli flyOn onOn
set tilli flyOff onOff
set tilli finished onFinished
play tilli playAnim 2017 5
;> 66 move 150 150
;> 76 down 150 150
pause 1.5
set tilli settlePoseID 2017
;> 1406 move 160 150
;> 1416 up 160 150
;> 1426 move 600 20
pause 0.1
get tilli "x" left
say said left
;= : on finished up off on off 111
; handlers that drop it, and who waits for it
procedure gone
[
drop tilli
say "dropped"
]
call make
set tilli finished gone
play tilli playAnim 2001
pause 1.5
;= dropped
call make
set tilli mouseDown gone
play tilli playAnim 2001
;> 2856 down 56 98
pause 0.1
;= dropped
call make
procedure act kind word one two three
[
role="w"
if three>"9"
role=three
if kind="end"
call halt
if kind="play"
play tilli word one two three
if kind="set"
set tilli word one
]
; plays so many of the rows of steps: a title, how long it is watched, what is done before that with which words
procedure steps count
[
drop [ seen
for s 1 count
[
step=step+7
call act rows.(step-4) rows.(step-3) rows.(step-2) rows.(step-1) rows.step
call watch rows.(step-6) rows.(step-5)
seen.s=told
]
say seen.1 seen.2 seen.3 seen.4 seen.5 seen.6 seen.7
]
step=0
; an animation in place of the pose, of which it is told; played so often, and hidden at the end; also unseen
rows=["once" 30 play playAnim 2001 "" ""
rows=["also once" 30 play playAnim 2001 0 ""
rows=["twice, hidden" 60 play playAnim 2001 2 0
rows=["hidden" 30 play playAnim 2001 "" ""
rows=["shown" 3 set visible 1 "" ""
rows=["without end" 60 play playAnim 2001 -1 ""
rows=["stopped" 3 end "" "" "" ""
call steps 7
;= once: w+26! p4  also once: w+26! p4  twice, hidden: w+53! .7  hidden: .30!  shown: p3  without end: w+60  stopped: p3 
; the pose in all states
rows=["it stands" 20 "" "" "" "" ""
rows=["it moves" 40 set animateSettled 1 "" ""
rows=["another" 30 set settlePoseID 2006 "" q
rows=["plays" 5 play playAnim 2001 -1 ""
rows=["not seen" 10 set settlePoseID 67546 "" p
rows=["it is" 3 end "" "" "" ""
rows=["none" 3 set settlePoseID -1 "" p
call steps 7
;= it stands: p20  it moves: p+40  another: q+30  plays: w+5  not seen: w+10  it is: p3  none: .3 
rows=["hidden" 3 set visible 0 "" ""
rows=["paused" 3 play pause "" "" ""
rows=["made anew" 3 set settlePoseID 2010 "" p
rows=["shown" 40 set visible 1 "" ""
rows=["resumed" 40 play resume "" "" ""
rows=["it stands" 40 set animateSettled 0 "" ""
call steps 6
;= hidden: .3  paused: .3  made anew: .3  shown: p40  resumed: p+40  it stands: p40  seen.7
; only what plays is paused
rows=["it moves" 40 set animateSettled 1 "" ""
rows=["plays" 5 play playAnim 2001 2 ""
rows=["paused" 20 play pause "" "" ""
rows=["resumed" 60 play resume "" "" ""
rows=["paused" 20 play pause "" "" ""
rows=["plays" 20 play playAnim 2001 -1 ""
rows=["still paused" 40 end "" "" "" ""
call steps 7
;= it moves: p+40  plays: w+5  paused: w20  resumed: w+46! p+14  paused: p20  plays: w+20  still paused: p40 
rows=["resumed" 40 play resume "" "" ""
rows=["it stands" 20 set animateSettled 0 "" ""
call steps 2
;= resumed: p+40  it stands: p20  seen.3 seen.4 seen.5 seen.6 seen.7
; speeches are their sequences, seen until they are over and their sounds, too (203 lasts up to 1120 ms, its
; pictures 800); what was added first counts
rows=["silent" 3 play addSpeechAnim 2010 "" ""
rows=["silent" 3 play addSpeechAnim 2016 "" ""
rows=["silent" 3 play addSpeechAnim 2003 "" ""
rows=["speech" 40 play playSpeech 206 "" ""
rows=["twice there" 40 play playSpeech 205 0 ""
rows=["shown" 3 set visible 1 "" ""
rows=["another" 150 play playSpeech 222 "" ""
call steps 7
;= silent: p3  silent: p3  silent: p3  speech: w+27! p13  twice there: w+27! .13  shown: p3  another: w+106! p44 
rows=["sounds on" 40 play playSpeech 203 "" ""
rows=["paused" 3 play playSpeech 203 "" ""
rows=["paused" 40 play pause "" "" ""
rows=["resumed" 40 play resume "" "" ""
call steps 4
;= sounds on: w+25! p15  paused: w+3  paused: w40  resumed: w+21! p19  seen.5 seen.6 seen.7
; kept loaded: each animation is a layer of its own when it is spoken first, and then no more
speeches=[2010 2016 2003
spoken=[205 206 222 222 205
call make
for i 1 3
play tilli addSpeechAnim speeches.i
told="layers"
for times 1 5
[
SetSpeechCaching times<5
play tilli playSpeech spoken.times
call halt
told=told+" "+n
]
say told
;= layers 2 2 3 3 4

; its layers follow it, and stay when it lets go of others
words=[x y z
procedure where title
[
told=title
for i 1 3
[
get layer.1 words.i a
get layer.2 words.i b
told=told+" "+a+","+b
]
get hat x a
say told a
]
call make
play tilli place 40 30
set tilli "z" 60
role="w"
play tilli playAnim 2001 0-1
hat=RAnimation 2004 50 20 5
play tilli addTrinket "hat"
play tilli offset 0-3 0
call where "placed"
;= placed 37,21 30,2 60,60 48
play tilli removeTrinkets
play tilli place 0 0
call where "alone"
;= alone 16,0 28,0 60,60 48
drop hat

; fidgets of ten minutes: every 5 to 9 seconds, and each of three once before any is played again
call make
call fidget 7 5 10 2006
call fidget 7 5 10 2002
call fidget 7 5 10 2004
for i 0 20
waits.i=0
count=0
wrong=0
rest=0
fidgets=":"
for w 1 13334
[
pause 0.05
get layer.1 visible seen
if seen
rest=rest+1
else
[
if rest
[
k=(rest*45+500)\1000
waits.k=waits.k+1
rest=0
count=count+1
for i 2 4
[
get layer.i visible seen
if seen
fidgets=fidgets+i
]
if count%3=0
[
if (2@fidgets)*(3@fidgets)*(4@fidgets)=0
wrong=wrong+1
fidgets=":"
]
]
]
]
told=":"
for i 1 20
if waits.i
told=told+" "+i
say "waits of" told "seconds, fidgets:" count>60 wrong
;= waits of : 5 6 7 8 9 seconds, fidgets: 1 0
; intervals of any size: how many times 9 ms
intervals=[5 5 5 2 0 1 -3 0 -9 -4
for row 1 9 2
[
call make
k=row+1
call fidget 1 intervals.row intervals.k 2006
for count 1 700
[
get layer.2 visible seen
if seen
break
pause 0.01
]
say intervals.row intervals.k count
]
;= 5 5 555
;= 5 2 557
;= 0 1 3
;= -3 0 3
;= -9 -4 3
call make
call fidget 1 2147483646 2147483647 2006
call show "never" 10
;= never: p10 
; none begins while it is busy, hidden or paused: then its group waits anew
call make
call fidget 7 1 1 2006
set tilli finished
play tilli playAnim 2001 0-1
pause 1.5
play tilli stop
call show "busy" 20
;= busy: p14 f+6 
play tilli stop
set tilli visible 0
pause 1.5
set tilli visible 1
call show "hidden" 20
;= hidden: p14 f+6 
play tilli stop
play tilli pause
pause 1.5
play tilli resume
call show "paused" 20
;= paused: p14 f+6 
; a group goes with its fidgets, also in the midst of one; numbers of groups are kept apart
play tilli addFidgetGroup 8 300 300
play tilli addFidget 8 2004
pause 1
play tilli removeFidgetGroup 7
call show "removed" 30
;= removed: p30 
; a fidget over the pose
play tilli addFidgetGroup 9 1 1
role="g"
play tilli addFidget 9 2006 0
call show "over the pose" 40
;= over the pose: p22 pg+18 
play tilli removeFidgetGroup 9

; refusals
set tilli finished
play tilli addSpeechAnim 2010
play tilli playAnim 404 }
;! ASEQ resource 404 not found.
;! RCharacter: animation 404 not found
play tilli playSpeech 404 }
;! RCharacter: unknown animation for speech ID 404
play tilli addSpeechAnim 404
;! ASEQ resource 404 not found.
;! RCharacter: unable to load animation 404
play tilli addFidget 7 2006
;! RCharacter: Unknown fidget group 7
play tilli removeFidgetGroup 7
;! RCharacter: unknown fidget group 7
play tilli addFidgetGroup 7 1 2
play tilli addFidget 7 404
;! ASEQ resource 404 not found.
;! RCharacter: Unable to load fidget animation 404
set tilli settlePoseID 404
;! ASEQ resource 404 not found.
;! RCharacter: unable to load settle pose 404
play tilli playAnim 2001
play tilli playAnim 2006 }
;! RCharacter: busy, cannot play animation 2006
play tilli playSpeech 205 }
;! RCharacter: busy, cannot play speech 205
