; Inside the lighthouse: the fire burns, the cat sleeps and answers clicks, the signpost leads back to
; the harbour. The player's name stands over the map on the wall. The sounds of the cat and the fire are
; steps of their animations.
yield off
StartTransition
Scene 101

; ---- the cat purrs or miaows, whichever it likes

procedure wake
[
RandomNumber 2 3
set cat sequence RESULT
]

procedure sleepOn
[
set cat sequence 1
]

; ---- the fire crackles by itself too

procedure poke
[
KillSound firesound
PlaySound 211
firesound=RESULT
]

; ---- the signpost

procedure lightUp
[
set back sequence 2
PlaySound 207
]

procedure dimSign
[
set back sequence 1
]

procedure goOutside
[
KillSound firesound
PlaySound 208
KillSound music
relay harbour.mps
]

fire=RAnimation 2102 1
cat=RAnimation 2101 2
back=RAnimation 2103 20

set fire soundSync 0
set fire movable 0
set fire mouseDown poke
set cat soundSync 0
set cat mouseDown wake
set cat paused sleepOn
set cat movable 0
set back movable 0
set back mouseDown goOutside
set back flyOn lightUp
set back flyOff dimSign

play fire setAOCursor 1
play cat setAOCursor 1
play back setAOCursor 1

world=RWorldPort 0
get world playerName visitor
owner=RText 0 90 -1 -1 1
set owner touchy 0
set owner movable 0
set owner colorIndex 4
play owner setFont 14
set owner text visitor
get owner textWidth wide
set owner x 403-wide\2

firesound=-1
PlaySound 101 1
music=RESULT
EndTransition 0
