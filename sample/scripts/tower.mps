; Inside the tower: four doors, one above the other, and around each an arch of gems that repeat a pattern. Twelve are
; missing; those that were won in the games lie on the tray. When all are back in their places the door opens, and above
; it is the next one. Doors, patterns and gems are the world's memory's.
yield off
StartTransition
Scene 113
include story.mps
include voice.mps
call arriveAt "OMA"

places=39

; Where the gems of the arch lie, from the foot on the left to that on the right.
left=[102 102 102 102 102 102 102 103 108 115 125 138 153 171 191 212 235 258 283 308 333 358 381 404 425 445 463 478 491 501 508 513 514 514 514 514 514 514 514
top=[391 366 341 316 291 266 241 216 192 168 145 124 104 86 71 58 48 40 36 34 36 40 48 58 71 86 104 124 145 168 192 216 241 266 291 316 341 366 391

; ---- what is written on the plaque; its middle. Tilli has come along and reads it, but counts only once.

procedure engrave words
[
    set plaque textWidth -1
    set plaque text words
    get plaque textWidth wide
    if wide>208
        set plaque textWidth 208
    get plaque textHeight tall
    set plaque y 147-tall\2
    get plaque textWidth wide
    set plaque x 320-wide\2
]

procedure tell words
[
    call engrave words
    call speak tilliVoice words
]

; What is missing, and what can be done: `lying` is how many gems are on the tray. The door opens when nothing is missing, also when
; the player left before they had gone through it.
procedure count
[
    call countGaps
    missing=RESULT
    ; texts take
    advice=" Que pedra vem a seguir?"
    if lying=0
        ; texts take
        advice=" Procura na oficina e no mapa!"
    if missing=0
        call open
    else if missing=1
        call engrave "Só falta uma pedra!"+advice
    else
        call engrave "Porta "+(floor+1)+" de "+floors+": faltam "+missing+" pedras."+advice
]

; ---- the arch

procedure lay place
[
    call belongs place
    stone.place=RAnimation 2900+RESULT left.place top.place 10
    set stone.place movable 0
    set stone.place touchy 0
]

procedure leaveOpen place n
[
    call belongs place
    socket.n=RValueContainer 2930 left.place top.place 5
    set socket.n movable 0
    set socket.n value RESULT
    set socket.n tag n
    set socket.n answerPlaced takeIn
    play puzzle addContainer "socket."+n
]

procedure build
[
    for place 1 places
        gapAt.place=0
    for n 1 gaps
    [
        get world missingItemSlot n place
        gapAt.place=n
    ]
    for place 1 places
    [
        n=gapAt.place
        if n=0
            call lay place
        else if arch|n|1="x"
            call lay place
        else
            call leaveOpen place n
    ]
]

; ---- the tray: the gems that the player has, which the hub keeps

procedure spread
[
    gems=0
    for slot 1 gaps
    [
        get world itemPresent slot "OHUB" item
        if item
        [
            gems=gems+1
            gem.gems=RGraphicAnswer 2900+item 100+32*gems 436 20
            set gem.gems value item
            set gem.gems tag gems
            set gem.gems pickedUp lift
            set gem.gems addedToContainer remember
            play gem.gems setAOCursor 1
            play puzzle addAnswer "gem."+gems
        ]
    ]
    lying=gems
]

procedure lift
    set RECEIVER z 60

procedure remember
    get RECEIVER tag brought

; What was brought to a place: a gem that fits is one of the arch from now on, and the memory has its place instead of the
; gem. Any other goes back to the tray. Who is wrong twice is shown where it belongs.
procedure takeIn
[
    get RECEIVER tag n
    get RECEIVER isSolved fits
    get gem.brought value item
    if fits
    [
        misses=0
        lying=lying-1
        call fillGap n item
        set gem.brought z 10
        call count
    ]
    else
    [
        play puzzle removeAnswerFromContainer "gem."+brought "socket."+n
        set gem.brought z 20
        misses=misses+1
        if misses=1
            call tell "Essa não! Vê como as pedras se repetem."
        else
            call showWhere
    ]
]

procedure showWhere
[
    call tell "Essa pedra cabe onde há luz."
    PlaySound 207
    for n 1 gaps
        if arch|n|1="o"
        [
            get socket.n value wanted
            set socket.n highlighted wanted=item
        ]
    play dusk halt
    play dusk start
]

procedure dim
    for n 1 gaps
        if arch|n|1="o"
            set socket.n highlighted 0

; ---- the door

procedure open
[
    PlaySound 248
    call engrave "A porta abre-se!"
    call speakAfter 1000 tilliVoice "A porta abre-se!"
    set door sequence 2
    set sparkles visible 1
    set sparkles sequence 1
    play climbing start
]

procedure climb
[
    call stopSpeaking
    call passDoor
    call findRoom
    relay RESULT
]

procedure goDown
[
    call stopSpeaking
    PlaySound 208
    play port stopBackgroundMusic 1
    relay "lighthouse.mps"
]

procedure rattle
[
    if missing
    [
        PlaySound 208
        set door sequence 3
        call count
    ]
]

procedure typed
[
    get RECEIVER key what
    if what="Esc"
        call goDown
]

; ---- the scene

plaque=RText 216 151 208 -1 75
set plaque movable 0
set plaque touchy 0
set plaque wrap 1
set plaque colorIndex 4
play plaque setFont 14

door=RAnimation 2931 4
set door movable 0
play door setAOCursor 1
set door mouseDown rattle
back=RPButton 2932 20
set back hit goDown
keys=RKbdInp 0
set keys keyPressed typed
sparkles=RAnimation 2933 100 120 70
set sparkles visible 0
set sparkles touchy 0
set sparkles movable 0
climbing=RQueue 1
play climbing add DelayAction 3400
set climbing finished climb
dusk=RQueue 1
play dusk add DelayAction 1600
set dusk finished dim

call findDoor
misses=0
puzzle=RPuzzle 0
set puzzle lockCorrectAnswers 1
call build
call spread

port=RScenePort 0
get port backgroundMusicID heard
if heard#113
    play port startBackgroundMusic 113 100 2
EndTransition 0
call count
get plaque text words
if missing
    call speakAfter 600 tilliVoice words
