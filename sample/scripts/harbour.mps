; The harbour in the morning. A scroll greets who has signed the guest book, in another way when they
; come back in the same run of the game. Everything moves by itself; Tilli the crab, the boat, the gull
; and the glitter on the water answer clicks, and the signpost leads into the lighthouse.
;
; Sounds: those of the waves, the fish and Tilli are steps of their animations. The others are played
; from here; one that still plays is ended before it is played anew.
yield off
StartTransition
Scene 100

; ---- what happens when a frame was shown

procedure moveBoat
[
get boat x boatx
if boatx<190
[
play boat offset 1 0
]
]

procedure moveGull
[
play gull offset 3 0
get gull x gullx
if gullx>640
[
RandomNumber 60 130
play gull place -84 RESULT
]
RandomNumber 1 130
if RESULT=1
call cry
]

procedure moveBigCloud
[
play bigcloud offset 1 0
get bigcloud x cloudx
if cloudx>640
[
set bigcloud x -130
]
]

procedure moveSmallCloud
[
play smallcloud offset 1 0
get smallcloud x cloudx
if cloudx>640
[
set smallcloud x -84
]
]

; ---- the gull cries now and then, and when it is clicked; the boat has a horn

procedure cry
[
KillSound gullsound
PlaySound 202
gullsound=RESULT
]

procedure blowHorn
[
KillSound hornsound
PlaySound 204
hornsound=RESULT
]

; ---- the fish leaps every now and then, and when the glitter is clicked. A handler of `schedule` is spread over several passes of
; the program, so it keeps other events out until it is done.

procedure leap
[
suspend
set fish visible 1
set fish sequence 2
resume
]

procedure diveAway
[
set fish visible 0
schedule 4 leap
]

; ---- Tilli

procedure greet
[
RandomNumber 2 3
set tilli sequence RESULT
]

procedure calmDown
[
set tilli sequence 1
]

; ---- the signpost

procedure lightUp
[
set sign sequence 2
PlaySound 207
]

procedure dimSign
[
set sign sequence 1
]

procedure goInside
[
KillSound hornsound
KillSound gullsound
PlaySound 208
KillSound music
relay lighthouse.mps
]

; ---- the greeting: it is on the scroll while that is unrolled

procedure turnScroll
[
get welcome visible shown
set welcome visible shown=0
]

procedure rollUp
[
drop welcome
set scroll visible 0
]

; ---- the scene, from back to front

smallcloud=RAnimation 2008 1
bigcloud=RAnimation 2007 2
glitter=RAnimation 2005 3
smoke=RAnimation 2006 4
flag=RAnimation 2004 5
fish=RAnimation 2003 6
boat=RAnimation 2001 7
gull=RAnimation 2002 8
sign=RAnimation 2009 20
tilli=RAnimation 2010 30

set smallcloud frameNotification 1
set smallcloud frameNotify moveSmallCloud
set bigcloud frameNotification 1
set bigcloud frameNotify moveBigCloud
set boat frameNotification 1
set boat frameNotify moveBoat
set gull frameNotification 1
set gull frameNotify moveGull
set fish paused diveAway
set fish sequence 2

; Sounds go with the pictures of an animation, the pictures do not wait for them.
set fish soundSync 0
set glitter soundSync 0
set tilli soundSync 0
set glitter sequence 2

; The boat may be dragged about; what only moves for itself lets clicks through.
set smallcloud touchy 0
set bigcloud touchy 0
set smoke touchy 0
set flag touchy 0
set fish touchy 0

set gull mouseDown cry
set gull movable 0
set boat mouseDown blowHorn
set glitter mouseDown leap
set glitter movable 0
set tilli mouseDown greet
set tilli paused calmDown
set tilli movable 0
set sign mouseDown goInside
set sign flyOn lightUp
set sign flyOff dimSign
set sign movable 0

play gull setAOCursor 1
play boat setAOCursor 1
play glitter setAOCursor 1
play tilli setAOCursor 1
play sign setAOCursor 1

scroll=RAnimation 2011 40
set scroll touchy 0
set scroll special turnScroll
set scroll paused rollUp
world=RWorldPort 0
get world playerName visitor
get world greeted again
greeting="Bom dia"
if again
greeting="Olá"
set world greeted 1
welcome=RText 0 31 -1 -1 41
set welcome touchy 0
set welcome visible 0
set welcome colorIndex 4
play welcome setFont 20
set welcome text greeting+", "+visitor+"!"
get welcome textWidth wide
set welcome x 320-wide\2

gullsound=-1
hornsound=-1
PlaySound 100 1
music=RESULT
EndTransition 0
