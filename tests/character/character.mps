; Characters. What is seen of the layers is looked at every 45 ms: the pose 2010 (p), what it plays
; (w; 2001 takes 1200 ms), fidgets (e; 2006 takes 1020 ms) and speeches of 2010, each by its letter
; and how often it was seen, with + when it moved, ! when it had finished then.
;$ --until 400000
yield off
include things.mps
procedure onBorn
[
n=n+1
t.n=RECEIVER
letter.n=role
]
procedure glance
[
state=""
frame=0
for i 11 n
if t.i#("t."+i)
[
get t.i visible seen
get t.i "frame" f
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
line=line+"+"
line=line+times
if ends
line=line+"!"
line=line+" "
ends=0
]
; "see TIMES" looks so often, "as LETTER" is what layers are from now on
procedure see
[
call cut
line=line+"/ "
last=""
for w 1 word
[
pause 0.05
call glance
if state#last
[
if last#""
call flush
line=line+state
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
procedure as
[
call cut
role=word
]
procedure ended
ends=ends+1
procedure make
[
n=10
role="p"
t.1=RCharacter 2010 0 0 30
set t.1 finished ended
role="w"
]
procedure halt
[
set t.1 finished
play t.1 stop
set t.1 finished ended
]
procedure fidget letter group min max id
[
play t.1 addFidgetGroup group min max
role=letter
play t.1 addFidget group id
role="w"
]
n=10
ends=0
role="w"
set OMAnimation born onBorn
; what is played may end in the midst of a drag; the pointer goes from one layer to the next
procedure onUp
call do "note up"
procedure onOn
call do "note on"
procedure onOff
call do "note off"
t.1=RCharacter 2031 100 100 30
set t.1 mouseUp onUp
set t.1 flyOn onOn
set t.1 flyOff onOff
;> 66 move 150 150
;> 76 down 150 150
;> 1406 move 160 150
;> 1416 up 160 150
;> 1426 move 600 20
call do "run 1 playAnim 2017 5, rest 1.5, let 1 settlePoseID 2017, rest 0.1, of 1 x, tell"
; a handler that drops it
procedure gone
[
drop t.1
say "dropped"
]
call make
set t.1 mouseDown gone
;> 1526 down 56 98
call do "run 1 playAnim 2001, rest 0.1"
call make
; an animation in place of the pose; played so often, and hidden at the end; also unseen
call do "run 1 playAnim 2001, see 30, run 1 playAnim 2001 0, see 30, run 1 playAnim 2001 2 0"
call do "see 60, run 1 playAnim 2001, see 30, let 1 visible 1, see 3, run 1 playAnim 2001 -1"
call do "see 60, halt, see 3, tell"
; the pose in all states
call do "see 20, let 1 animateSettled 1, see 40, as q, let 1 settlePoseID 2006, see 30, as w"
call do "run 1 playAnim 2001 -1, see 5, as p, let 1 settlePoseID 67546, see 10, halt, see 3"
call do "let 1 settlePoseID -1, see 3, tell"
call do "let 1 visible 0, run 1 pause, see 3, let 1 settlePoseID 2010, see 3, let 1 visible 1"
call do "see 40, run 1 resume, see 40, let 1 animateSettled 0, see 40, tell"
; only what plays is paused
call do "let 1 animateSettled 1, see 40, as w, run 1 playAnim 2001 2, see 5, run 1 pause, see 20"
call do "run 1 resume, see 60, run 1 pause, see 20, run 1 playAnim 2001 -1, see 20, halt, see 40"
call do "run 1 resume, see 40, let 1 animateSettled 0, see 20, tell"
; speeches are their sequences, seen until their sounds are over, too (203 lasts up to 1120 ms, its
; pictures 800); what was added first counts
call do "run 1 addSpeechAnim 2010, run 1 addSpeechAnim 2016, run 1 addSpeechAnim 2003, see 3"
call do "run 1 playSpeech 206, see 40, run 1 playSpeech 205 0, see 40, let 1 visible 1, see 3"
call do "run 1 playSpeech 222, see 150, tell"
call do "run 1 playSpeech 203, see 40, run 1 playSpeech 203, see 3, run 1 pause, see 40"
call do "run 1 resume, see 40, tell"
; kept loaded: each animation is a layer of its own when it is spoken first, and then no more
spoken=[205 206 222 222 205
call do "make, run 1 addSpeechAnim 2010, run 1 addSpeechAnim 2016, run 1 addSpeechAnim 2003"
for times 1 5
[
SetSpeechCaching times<5
play t.1 playSpeech spoken.times
call halt
line=line+" "+(n-10)
]
call tell

; its layers follow it, and stay when it lets go of others
procedure where
call do "of 11 x, of 12 x, of 11 y, of 12 y, of 11 z, of 12 z, of 2 x"
call do "make, run 1 place 40 30, let 1 z 60, run 1 playAnim 2001 -1"
t.2=RAnimation 2004 50 20 5
play t.1 addTrinket "t.2"
play t.1 offset 0-3 0
call do "where, run 1 removeTrinkets, run 1 place 0 0, where, tell"
drop t.2

; fidgets of two minutes: every 5 to 9 seconds, and each of three once before any is played again
call make
call fidget e 7 5 10 2006
call fidget g 7 5 10 2002
call fidget h 7 5 10 2004
call do "see 1300, tell, see 1300, tell"
; none begins while it is busy, hidden or paused: then its group waits anew
call make
call fidget e 7 1 1 2006
set t.1 finished
call do "run 1 playAnim 2001 -1, rest 1.5, run 1 stop, see 20, run 1 stop, let 1 visible 0"
call do "rest 1.5, let 1 visible 1, see 20, run 1 stop, run 1 pause, rest 1.5, run 1 resume, see 20"
call tell
; a group goes with its fidgets, also in the midst of one; a fidget over the pose
call do "run 1 addFidgetGroup 8 300 300, run 1 addFidget 8 2004, rest 1, run 1 removeFidgetGroup 7"
call do "see 30, run 1 addFidgetGroup 9 1 1, as g, run 1 addFidget 9 2006 0, see 40"
call do "run 1 removeFidgetGroup 9, tell"

; refusals
call do "run 1 playAnim 404, run 1 playSpeech 404, run 1 addSpeechAnim 2010"
call do "run 1 addSpeechAnim 404, run 1 addFidget 7 2006, run 1 removeFidgetGroup 7"
call do "run 1 addFidgetGroup 7 1 2, run 1 addFidget 7 404, let 1 settlePoseID 404"
call do "run 1 playAnim 2001, run 1 playAnim 2006, run 1 playSpeech 205"
;=  on up off on off 111
;= dropped
;= / w+26! p4 / w+26! p4 / w+53! .7 / .30! / p3 / w+60 / p3 
;= / p20 / p+40 / q+30 / w+5 / w+10 / p3 / .3 
;= / .3 / .3 / p40 / p+40 / p40 
;= / p+40 / w+5 / w20 / w+46! p+14 / p20 / w+20 / p40 / p+40 / p20 
;= / p3 / w+27! p13 / w+27! .13 / p3 / w+106! p44 
;= / w+25! p15 / w+3 / w40 / w+21! p19 
;=  2 2 3 3 4
;=  37 21 30 2 60 60 48 16 0 28 0 60 60 48
;= / p199 g+12 p178 h+15 p199 e+23 p200 h+15 p177 e+23 p133 g+12 p111 h+3 
;= / h+12 p199 e+23 p200 g+12 p200 h+15 p155 g+12 p178 e+22 p156 e+22 p94 
;= / p14 e+6 / p14 e+6 / p14 e+6 
;= / p30 / p21 pg+19 
;! ASEQ resource 404 not found.
;! RCharacter: animation 404 not found
;! RCharacter: unknown animation for speech ID 404
;! ASEQ resource 404 not found.
;! RCharacter: unable to load animation 404
;! RCharacter: Unknown fidget group 7
;! RCharacter: unknown fidget group 7
;! ASEQ resource 404 not found.
;! RCharacter: Unable to load fidget animation 404
;! ASEQ resource 404 not found.
;! RCharacter: unable to load settle pose 404
;! RCharacter: busy, cannot play animation 2006
;! RCharacter: busy, cannot play speech 205
