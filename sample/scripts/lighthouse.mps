; Inside the lighthouse: the fire burns, the cat sleeps and answers clicks, the signpost leads back to
; the harbour, the map on the wall to the chart table, and the stairs to the workshop. The player's name
; stands over the map. The sounds of the cat and the fire are steps of their animations.
yield off
StartTransition
Scene 101
include memory.mps
call arriveAt "CBA1"

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

procedure leave where
[
    KillSound firesound
    PlaySound 208
    play port stopBackgroundMusic 1
    relay where
]

procedure goOutside
    call leave "harbour.mps"

; ---- the map on the wall; what it is stands below it

procedure showMap
[
    set wallmap sequence 2
    set caption visible 1
    PlaySound 207
]

procedure dimMap
[
    set wallmap sequence 1
    set caption visible 0
]

procedure takeMap
    call leave "map.mps"

; ---- the stairs, which the sign belongs to

procedure showStairs
[
    set shopsign sequence 2
    set upstairs visible 1
    PlaySound 207
]

procedure dimStairs
[
    set shopsign sequence 1
    set upstairs visible 0
]

procedure climb
    call leave "workshop.mps"

; ---- what is there. The pointer may rest on any of it, so cursors are set before handlers.

fire=RAnimation 2102 1
cat=RAnimation 2101 2
back=RAnimation 2103 20
wallmap=RAnimation 2104 1
shopsign=RAnimation 2105 3
stairs=RHotSpot 470 42 164 324 2

set fire soundSync 0
set fire movable 0
set cat soundSync 0
set cat movable 0
set back movable 0
set wallmap movable 0
set shopsign movable 0
set shopsign touchy 0
set stairs movable 0

play fire setAOCursor 1
play cat setAOCursor 1
play back setAOCursor 1
play wallmap setAOCursor 1
play stairs setAOCursor 1

set fire mouseDown poke
set cat mouseDown wake
set cat paused sleepOn
set back mouseDown goOutside
set back flyOn lightUp
set back flyOff dimSign
set wallmap mouseDown takeMap
set wallmap flyOn showMap
set wallmap flyOff dimMap
set stairs mouseDown climb
set stairs flyOn showStairs
set stairs flyOff dimStairs

; What is written on the wall, by its middle: at the map, and at the sign.
procedure write words middle top
[
    lines=lines+1
    line.lines=RText 0 top -1 -1 2
    set line.lines touchy 0
    set line.lines movable 0
    set line.lines colorIndex 4
    play line.lines setFont 14
    set line.lines text words
    get line.lines textWidth wide
    set line.lines x middle-wide\2
]

lines=0
get world playerName visitor
call write visitor 403 90
call write "Mapa da baía" 403 192
caption=&line.2
set caption visible 0
call write "A oficina" 452 224
upstairs=&line.3
set upstairs visible 0

firesound=-1

; The music of the last scene still fades out; this one begins when hardly anything of it is left.
port=RScenePort 0
music=RQueue 1
play music add DelayAction 950
play music add VerbAction "port" 1 "startBackgroundMusic" 101 100 2
play music start
EndTransition 0
