; Inside the lighthouse: the fire burns, the cat sleeps and answers clicks, the signpost leads back to
; the harbour, the map on the wall to the chart table, and the stairs to the workshop. The player's name
; stands on the ribbon over the map. The telescope shows the sea, which a click closes again. The chest and
; the round door are locked. Books, the ship in the bottle and the kettle answer clicks, too. Sounds of what
; moves are steps of the animations.
yield off
StartTransition
Scene 101
include story.mps
include words.mps
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

; ---- the map on the wall

procedure showMap
[
    set wallmap sequence 2
    PlaySound 207
]

procedure dimMap
    set wallmap sequence 1

procedure takeMap
    call leave "map.mps"

; ---- the stairs, which the sign belongs to

procedure showStairs
[
    set shopsign sequence 2
    PlaySound 207
]

procedure dimStairs
    set shopsign sequence 1

procedure climb
    call leave "workshop.mps"

; ---- what lights up under the pointer and moves when it is clicked: the telescope, the chest, the round door

procedure light
[
    set RECEIVER sequence 2
    PlaySound 207
]

procedure dim
    set RECEIVER sequence 1

procedure tryIt
    set RECEIVER sequence 3

; The door to which the player has the key glints meanwhile.
procedure restDoor
[
    get world hasKey opened
    set rounddoor sequence 1+(3*opened)
]

; ---- the chest opens when the twelve signs of the games are there, and has the key of the round door; behind that is
; the tower, and above its doors the lamp. What is missing stands on a strip of paper.

procedure tellThere words
[
    call rewrite notice words 367
    set writing.notice visible 1
    set paper visible 1
]

procedure tryChest
[
    get world hasKey opened
    if opened
        call tellThere "A chave está contigo!"
    else
    [
        call openChest
        if RESULT
        [
            set chest flyOn
            set chest flyOff
            set chest sequence 4
            call restDoor
            PlaySound 248
            call tellThere "A chave da porta redonda!"
        ]
        else
        [
            set chest sequence 3
            call tellThere "Sinais: "+gathered+" de "+signs
        ]
    ]
]

procedure tryDoor
[
    get world hasKey opened
    if opened
    [
        set rounddoor flyOn
        set rounddoor flyOff
        set rounddoor mouseDown
        set rounddoor sequence 5
        PlaySound 207
        play entering start
    ]
    else
    [
        set rounddoor sequence 3
        call tellThere "A chave está na arca."
    ]
]

procedure enterTower
[
    call findRoom
    call leave RESULT
]

; ---- what moves once when it is clicked

procedure stir
    set RECEIVER sequence 2

; ---- the telescope. It goes on turning when the pointer leaves it. What it shows lies over all else, and so
; does the area that takes the click.

procedure pointAt
[
    get telescope sequence shown
    if shown#3
        call light
]

procedure leaveAlone
[
    get telescope sequence shown
    if shown#3
        call dim
]

procedure lookOut
[
    RandomNumber 1 2
    set view sequence RESULT
    set paper visible 0
    set writing.notice visible 0
    set view visible 1
    set cover visible 1
]

procedure lookAway
[
    PlaySound 212
    set cover visible 0
    set view visible 0
    set view sequence 1
    set telescope sequence 1
]

; ---- what is there. The pointer may rest on any of it, so cursors are set before handlers.

fire=RAnimation 2102 1
cat=RAnimation 2101 2
back=RAnimation 2103 20
wallmap=RAnimation 2104 1
shopsign=RAnimation 2105 3
stairs=RHotSpot 470 42 164 324 2
telescope=RAnimation 2110 3
chest=RAnimation 2112 4
rounddoor=RAnimation 2113 4
books=RAnimation 2114 1
bottle=RAnimation 2115 1
kettle=RAnimation 2116 1
view=RAnimation 2111 40
cover=RHotSpot 0 0 640 480 41

set fire soundSync 0
set fire movable 0
set cat soundSync 0
set cat movable 0
set back movable 0
set wallmap movable 0
set shopsign movable 0
set shopsign touchy 0
set stairs movable 0
set telescope soundSync 0
set telescope movable 0
set chest soundSync 0
set chest movable 0
set rounddoor soundSync 0
set rounddoor movable 0
set books soundSync 0
set books movable 0
set bottle soundSync 0
set bottle movable 0
set kettle soundSync 0
set kettle movable 0
set view soundSync 0
set view touchy 0
set view visible 0
set cover movable 0
set cover visible 0

play fire setAOCursor 1
play cat setAOCursor 1
play back setAOCursor 1
play wallmap setAOCursor 1
play stairs setAOCursor 1
play telescope setAOCursor 1
play chest setAOCursor 1
play rounddoor setAOCursor 1
play books setAOCursor 1
play bottle setAOCursor 1
play kettle setAOCursor 1
play cover setAOCursor 1

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
set telescope mouseDown tryIt
set telescope flyOn pointAt
set telescope flyOff leaveAlone
set chest mouseDown tryChest
set chest flyOn light
set chest flyOff dim
set rounddoor mouseDown tryDoor
set rounddoor flyOn light
set rounddoor flyOff restDoor
set telescope special lookOut
set cover mouseDown lookAway
set books mouseDown stir
set bottle mouseDown stir
set kettle mouseDown stir

paper=RAnimation 2117 35
set paper touchy 0
set paper visible 0
call write "" 14 367 448 36
notice=writings
set writing.notice visible 0
entering=RQueue 1
play entering add DelayAction 900
set entering finished enterTower
get world hasKey opened
if opened
[
    set chest flyOn
    set chest flyOff
    set chest sequence 5
    call restDoor
]

; On the map, and up in the workshop, something can be won.
procedure glitter places left top
[
    found=0
    for k 1 ~places 4
    [
        get world wsNextItemInQueue places|k|4 item
        if item
            found=1
    ]
    if found
    [
        glints=glints+1
        glint.glints=RAnimation 2118 left top 5
        set glint.glints touchy 0
        set glint.glints movable 0
    ]
]

glints=0
call glitter "OWS3" 436 100
call glitter "CWS1CWS2CWS3CWS4OWS1OWS2OWS4" 586 224

; What is written on the ribbon and the two boards, by its middle.
get world playerName visitor
call write visitor 14 406 83 4
call write "Mapa da baía" 14 402 196 4
call write "A oficina" 14 552 306 4

firesound=-1

; The music of the last scene still fades out; this one begins when hardly anything of it is left.
port=RScenePort 0
music=RQueue 1
play music add DelayAction 950
play music add VerbAction "port" 1 "startBackgroundMusic" 101 100 2
play music start
EndTransition 0
