; The harbour in the morning. A scroll greets who has signed the guest book, in another way when they
; come back in the same run of the game. Everything moves by itself; the boat, the gull and the glitter on
; the water answer clicks, and the signpost leads into the lighthouse. The guest book on its post leads back to
; the guest book, and the sign with the door out of the game.
;
; Tilli the crab is the guide: it welcomes whoever comes for the first time, says something when it is
; clicked, and otherwise blinks, looks about, waves, or has its lantern flicker. On the sand lie its logbook and
; the player's bag.
;
; Sounds: those of the waves, the fish and Tilli are steps of their animations. The others are played
; from here; one that still plays is ended before it is played anew.
yield off
StartTransition
Scene 100
include story.mps
include words.mps
include voice.mps
call arriveAt "CHUB"
paper=2070
include question.mps

; ---- what happens when a frame was shown

procedure moveBoat
[
    get boat x boatx
    if boatx<190
    [
        play boat offset 1 0
    ]
    get hail visible hailed
    if hailed
        call hangHail
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

; ---- the fish leaps every now and then, and when the glitter is clicked

procedure leap
[
    set fish visible 1
    set fish sequence 2
]

procedure diveAway
[
    set fish visible 0
    play dive halt
    play dive start
]

; ---- what leads elsewhere: the signpost, the guest book, and the door

procedure lightUp
[
    set RECEIVER sequence 2
    PlaySound 207
]

procedure dim
[
    set RECEIVER sequence 1
]

procedure leave where
[
    call hush
    KillSound hornsound
    KillSound gullsound
    PlaySound 208
    play port stopBackgroundMusic 1
    relay where
]

procedure goInside
    call leave "lighthouse.mps"

; Who comes back from the diploma is at the harbour again.
procedure unroll
[
    call hush
    KillSound hornsound
    KillSound gullsound
    PlaySound 253
    play port stopBackgroundMusic 1
    call "diploma.mps"
]

procedure goSign
    call leave "signin.mps"

procedure wayOut
[
    call hush
    call ask "leave" "Queres mesmo sair?"
]

; What is on the screen becomes the picture behind the farewell, but Tilli, who waves there. What moves meanwhile is not heard: it
; would be handled instead of the rest of this.
procedure agree
[
    suspend
    call hush
    call rollUp
    set tilli visible 0
    play port stopBackgroundMusic 2
    DisplayScreen
    FreezeScreen
    relay "farewell.mps"
]

; What is open is closed first.
procedure typed
[
    get RECEIVER key what
    if asking
        call answerKey what
    else if what="Esc"
    [
        if logOpen
            call closeLog
        else if packOpen
            call shutBag
        else
            call wayOut
    ]
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
    drop scroll
]

; ---- the scene, from back to front

cloud.1=RAnimation 2008 1
cloud.2=RAnimation 2007 2
front=RAnimation 2060 3
lens=RAnimation 2063 4
glitter=RAnimation 2005 3
smoke=RAnimation 2006 4
flag=RAnimation 2004 5
fish=RAnimation 2003 6
boat=RAnimation 2001 7
gull=RAnimation 2002 8
guests=RAnimation 2061 19
sign=RAnimation 2009 518 350 20
door=RAnimation 2062 21
balloon=RAnimation 2017 4 329 25
hail=RAnimation 2990 0 0 25
tilli=RCharacter 2010 236 300 30

; The pointer may rest on one of them, so cursors are set before handlers.
play gull setAOCursor 1
play boat setAOCursor 1
play glitter setAOCursor 1
play tilli setAOCursor 1
play sign setAOCursor 1
play guests setAOCursor 1
play door setAOCursor 1

; Clouds drift from where they are out of the picture, and come back on the other side; for ever.
for i 1 2
[
    get cloud.i x drawn
    get cloud.i width wide
    drifting.i=RQueue -1
    play drifting.i add MoveXAction "cloud."+i "cloud."+i drawn 1 0 640
    play drifting.i add MoveXAction "cloud."+i "cloud."+i -wide 1 0 drawn
    play drifting.i start
]

set boat frameNotification 1
set boat frameNotify moveBoat
set gull frameNotification 1
set gull frameNotify moveGull
set fish paused diveAway
set fish sequence 2

; Sounds go with the pictures of an animation, the pictures do not wait for them.
set fish soundSync 0
set glitter soundSync 0
set glitter sequence 2

; The boat may be dragged about; what only moves for itself lets clicks through.
set cloud.1 touchy 0
set cloud.2 touchy 0
set front touchy 0
set lens touchy 0
set smoke touchy 0
set flag touchy 0
set fish touchy 0

set gull mouseDown cry
set gull movable 0
set boat mouseDown hailUs
set glitter mouseDown leap
set glitter movable 0
set balloon visible 0
set balloon touchy 0
set hail visible 0
set hail touchy 0
set tilli animateSettled 1
set tilli mouseDown chat
set tilli movable 0
set sign mouseDown goInside
set sign flyOn lightUp
set sign flyOff dim
set sign movable 0
set guests mouseDown goSign
set guests flyOn lightUp
set guests flyOff dim
set guests movable 0
set door mouseDown wayOut
set door flyOn lightUp
set door flyOff dim
set door movable 0

scroll=RAnimation 2011 40
set scroll touchy 0
set scroll special turnScroll
set scroll paused rollUp
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

; ---- where the story is: the lamp of the lighthouse burns at its end

call findChapter
chapter=RESULT
set lens sequence 1+(chapter=5)
get world "voyage" voyage
include guides.mps

dive=RQueue 1
play dive add DelayAction 4000
set dive finished leap

; ---- what lies on the sand

if voyage+(chapter=5)>0
[
    diploma=RAnimation 3359 29
    set diploma movable 0
    play diploma setAOCursor 1
    set diploma mouseDown unroll
    set diploma flyOn lightUp
    set diploma flyOff dim
]
include logbook.mps
include bag.mps

keys=RKbdInp 0
set keys keyPressed typed

; The music of the last scene still fades out; this one begins when hardly anything of it is left.
port=RScenePort 0
music=RQueue 1
play music add DelayAction 950
play music add VerbAction "port" 1 "startBackgroundMusic" 100 100 2
play music add DelayAction 2100
set music finished makeRoom
play music start

gullsound=-1
hornsound=-1
if again=0
    play welcoming start
EndTransition 0
