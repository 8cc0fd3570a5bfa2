; The harbour in the morning. Everything moves by itself; Tilli the crab answers clicks, and the
; signpost leads into the lighthouse.
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

; ---- the fish leaps every now and then. A handler of `schedule` is spread over several passes of
; the program, so it keeps other events out until it is done.

procedure leap
[
suspend
set fish visible 1
set fish sequence 1
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
set tilli sequence 2
]

procedure calmDown
[
set tilli sequence 1
]

; ---- the signpost

procedure lightUp
[
set sign sequence 2
]

procedure dimSign
[
set sign sequence 1
]

procedure goInside
[
relay lighthouse.mps
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

; The boat may be dragged about; what only moves for itself lets clicks through.
set smallcloud touchy 0
set bigcloud touchy 0
set glitter touchy 0
set smoke touchy 0
set flag touchy 0
set fish touchy 0
set gull touchy 0

set tilli mouseDown greet
set tilli paused calmDown
set tilli movable 0
set sign mouseDown goInside
set sign flyOn lightUp
set sign flyOff dimSign
set sign movable 0

EndTransition 0
