; Characters. What is seen of the layers is looked at every 45 ms: the pose 2010, what it plays (2001, 1200 ms),
; fidgets (2006, 1020 ms) and speeches of 2010, each by a letter and how often it was seen, with + when it moved.
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
told=told+times+" "
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
say told
]
procedure ended
say "finished"
procedure make
[
n=0
role="p"
tilli=RCharacter 2010 0 0 30
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
; an animation in place of the pose, of which it is told; played so often, and hidden at the end
role="w"
play tilli playAnim 2001
call watch "once" 30
;= finished
;= once: w+26 p4 
play tilli playAnim 2001 0
call watch "also once" 30
;= finished
;= also once: w+26 p4 
play tilli playAnim 2001 2 0
call watch "twice, hidden" 60
;= finished
;= twice, hidden: w+53 .7 
play tilli playAnim 2001 }
call watch "hidden" 30
;= hidden: .30 
set tilli visible 1
play tilli playAnim 2001 0-1
call watch "without end" 60
;= without end: w+60 
set tilli finished
play tilli stop
call watch "stopped" 3
;= stopped: p3 
set tilli finished ended
; the pose in all states
call watch "it stands" 20
;= it stands: p20 
set tilli animateSettled 1
call watch "it moves" 40
;= it moves: p+40 
role="q"
set tilli settlePoseID 2006
call watch "another" 30
;= another: q+30 
role="w"
play tilli playAnim 2001 0-1
role="p"
set tilli settlePoseID 67546
call watch "not seen" 10
;= not seen: w+10 
set tilli finished
play tilli stop
set tilli settlePoseID 0-1
call watch "none" 3
;= none: .3 
set tilli visible 0
play tilli pause
set tilli settlePoseID 2010
call watch "invisible" 3
;= invisible: .3 
set tilli visible 1
call watch "paused" 40
;= paused: p40 
play tilli resume
call watch "resumed" 40
;= resumed: p+40 
set tilli animateSettled 0
call watch "it stands again" 40
;= it stands again: p40 
; only what plays is paused, and waited for anew
set tilli animateSettled 1
role="w"
play tilli playAnim 2001 2
call watch "plays" 5
;= plays: w+5 
play tilli pause
call watch "paused" 20
;= paused: w20 
play tilli resume }
call watch "over" 3
;= over: p3 
play tilli pause
play tilli playAnim 2001 0-1
call watch "plays all the same" 20
;= plays all the same: w+20 
play tilli stop
call watch "still paused" 40
;= still paused: p40 
play tilli resume
call watch "resumed" 40
;= resumed: p+40 
set tilli animateSettled 0
; speeches are their sequences, seen until they are over and their sounds, too; and what was added first counts
play tilli addSpeechAnim 2010
role="o"
play tilli addSpeechAnim 2016
role="s"
set tilli finished ended
play tilli playSpeech 206
call watch "speech" 40
;= finished
;= speech: s+27 p13 
play tilli playSpeech 205 0
call watch "hidden at the end" 40
;= finished
;= hidden at the end: s+27 .13 
set tilli visible 1
play tilli playSpeech 222
call watch "another" 150
;= finished
;= another: s+106 p44 
; its pictures last 800 ms, its sound up to 1120
play tilli addSpeechAnim 2003
play tilli playSpeech 203
call watch "sounds on" 40
;= finished
;= sounds on: s+25 p15 
; kept loaded: each animation is a layer of its own when it is spoken first, and then no more
procedure layers title
[
set tilli finished
play tilli stop
set tilli finished ended
say title "layers" n
]
SetSpeechCaching 1
play tilli playSpeech 205
call layers "kept"
;= kept layers 16
play tilli playSpeech 206
call layers "kept"
;= kept layers 16
play tilli playSpeech 222
call layers "another"
;= another layers 17
play tilli playSpeech 222
call watch "seen" 10
;= seen: s+10 
call layers "kept"
;= kept layers 17
SetSpeechCaching 0
play tilli playSpeech 205
call layers "not kept"
;= not kept layers 18

; its layers follow it, and stay when it lets go of others
procedure where title
[
get layer.1 "x" a
get layer.1 "y" b
get layer.1 "z" c
get layer.2 "x" d
get layer.2 "y" e
get layer.2 "z" f
get hat "x" g
say title a b c d e f g
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
;= placed 37 30 60 21 2 60 48
play tilli removeTrinkets
play tilli place 0 0
call where "alone"
;= alone 16 28 60 0 0 60 48
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
;= 5 5 556
;= 5 2 556
;= 0 1 3
;= -3 0 3
;= -9 -4 3
call make
call fidget 1 2147483646 2147483647 2006
call watch "never" 10
;= never: p10 
; none begins while it is busy, hidden or paused: then its group waits anew
call make
call fidget 7 1 1 2006
set tilli finished
play tilli playAnim 2001 0-1
pause 1.5
play tilli stop
call watch "busy" 20
;= busy: p14 f+6 
play tilli stop
set tilli visible 0
pause 1.5
set tilli visible 1
call watch "hidden" 20
;= hidden: p14 f+6 
play tilli stop
play tilli pause
pause 1.5
play tilli resume
call watch "paused" 20
;= paused: p14 f+6 
; a group goes with its fidgets, also in the midst of one; numbers of groups are kept apart
play tilli addFidgetGroup 8 300 300
play tilli addFidget 8 2004
pause 1
play tilli removeFidgetGroup 7
call watch "removed" 30
;= removed: p30 
; a fidget over the pose
play tilli addFidgetGroup 9 1 1
role="g"
play tilli addFidget 9 2006 0
call watch "over the pose" 40
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
pause 1.5
