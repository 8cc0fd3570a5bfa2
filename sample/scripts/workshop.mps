; The workshop up the stairs of the lighthouse. Five things lead to puzzles: the board with shadows, the
; tank with fish, the toy boat with its cargo, the signal flags, and the torn sail. Two more on the floor lead to
; games: the board with holes, and the box with crates. What each of them is stands on the plaque while the pointer is over it. The signpost leads back down.
; The toolbox, the bucket, the lantern and the porthole answer clicks, and lead nowhere. The music box on the wall is turned by
; hand.
;
; The music is that of the puzzles too: it goes on when one of them is entered or left.
yield off
StartTransition
Scene 104
include story.mps
call arriveAt "OHUB"

; ---- the plaque; what is on it is in the middle

procedure engrave words
[
    set plaque text words
    get plaque textWidth wide
    set plaque x 320-wide\2
]

; ---- what leads to puzzles and games

things=7
name.1="Onde fica cada coisa?"
name.2="Quantos peixes são?"
name.3="A carga do barco"
name.4="As bandeiras de sinais"
name.5="A vela rasgada"
name.6="Saltar por cima"
name.7="A jangada dos caixotes"
scene.1="board.mps"
scene.2="tanks.mps"
scene.3="cargo.mps"
scene.4="signals.mps"
scene.5="sail.mps"
scene.6="pegs.mps"
scene.7="crates.mps"
activity.1="CWS1"
activity.2="CWS2"
activity.3="CWS3"
activity.4="CWS4"
activity.5="OWS4"
activity.6="OWS1"
activity.7="OWS2"

procedure lightUp
[
    get RECEIVER tag which
    set RECEIVER sequence 2
    PlaySound 207
    call engrave name.which
]

procedure dim
[
    set RECEIVER sequence 1
    call engrave "A oficina"
]

; It glitters where there is something to be won.
procedure glitter which
[
    get world wsNextItemInQueue activity.which item
    if item
    [
        get thing.which x left
        get thing.which width wide
        get thing.which y top
        glint.which=RAnimation 2489 left+wide-30 top-6 30
        set glint.which touchy 0
        set glint.which movable 0
    ]
]

procedure enter
[
    get RECEIVER tag which
    call quieten
    PlaySound 212
    relay scene.which
]

; ---- what moves once when it is clicked

procedure stir
    set RECEIVER sequence 2

; ---- the music box plays while its crank is held, and goes on where it was; the music of the workshop waits meanwhile

procedure wind
[
    call rest
    turning=1
    play port pauseBackgroundMusic
    if melody
        ResumeSound melody
    else
    [
        PlaySound 8400 1
        melody=RESULT
    ]
]

procedure rest
    if turning
    [
        turning=0
        PauseSound melody
        play port resumeBackgroundMusic
    ]

; At either end of its three turns the crank is set to the middle, so that it can go on.
procedure windBack
[
    get musicbox frame number
    if (number=1)+(number=24)
        set musicbox frame number\3+8+(number=1)
]

procedure nameBox
    call engrave "Roda a manivela!"

procedure unnameBox
    call engrave "A oficina"

procedure quieten
[
    call rest
    if melody
        KillSound melody
]

; ---- the signpost

procedure lightSign
[
    set sign sequence 2
    PlaySound 207
]

procedure dimSign
[
    set sign sequence 1
]

procedure goDown
[
    call quieten
    PlaySound 208
    play port stopBackgroundMusic 1
    relay "lighthouse.mps"
]

plaque=RText 0 58 -1 -1 5
set plaque movable 0
set plaque touchy 0
set plaque colorIndex 4
play plaque setFont 20
call engrave "A oficina"

; The pointer may rest on one of them, so cursors are set before handlers.
for i 1 things
[
    thing.i=RAnimation 2400+i 10+i
    set thing.i tag i
    set thing.i movable 0
    play thing.i setAOCursor 1
]
toy.1=RAnimation 2485 19
toy.2=RAnimation 2486 9
toy.3=RAnimation 2487 9
toy.4=RAnimation 2488 8
for i 1 4
[
    set toy.i soundSync 0
    set toy.i movable 0
    play toy.i setAOCursor 1
]
turning=0
melody=0
musicbox=RTrigger 3350 8
set musicbox framePixelDelta 5
sign=RAnimation 2409 20
set sign movable 0
play sign setAOCursor 1

for i 1 things
[
    set thing.i mouseDown enter
    set thing.i flyOn lightUp
    set thing.i flyOff dim
]
for i 1 things
    call glitter i
for i 1 4
    set toy.i mouseDown stir
set musicbox mouseDown wind
set musicbox mouseUp rest
set musicbox fired windBack
set musicbox flyOn nameBox
set musicbox flyOff unnameBox
set sign mouseDown goDown
set sign flyOn lightSign
set sign flyOff dimSign

; The music of the lighthouse still fades out; this one begins when hardly anything of it is left. Who
; comes back from a puzzle hears it already.
port=RScenePort 0
get port backgroundMusicID heard
if heard#104
[
    music=RQueue 1
    play music add DelayAction 950
    play music add VerbAction "port" 1 "startBackgroundMusic" 104 100 2
    play music start
]
EndTransition 0
