; The harbour in the morning. A scroll greets who has signed the guest book, in another way when they
; come back in the same run of the game. Everything moves by itself; the boat, the gull and the glitter on
; the water answer clicks, and the signpost leads into the lighthouse. The guest book on its post leads back to
; the guest book, and the sign with the door out of the game.
;
; Tilli the crab is the guide: it welcomes whoever comes for the first time, says something when it is
; clicked, and otherwise blinks, looks about, waves, or has its lantern flicker. On the sand lie its logbook and
; the player's bag.
;
; What is in Tilli's speech records is spoken as these have it, lips and gestures; what else she says, and the captain, is made
; of syllables, by voice.mps.
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

; ---- Tilli

; Adds a sentence to the queue talk.N, of the speech record with that number: the words are in the balloon while it is heard, and
; a little longer.
procedure addSentence n record words
[
    set saying text words
    get saying textHeight tall
    play talk.n add PropertyAction "saying" "text" words
    play talk.n add PropertyAction "saying" "y" 373-tall\2
    play talk.n add PropertyAction "balloon" "visible" 1
    play talk.n add PropertyAction "saying" "visible" 1
    play talk.n add CharacterSpeechAction "tilli" record
    play talk.n add DelayAction 400
    play talk.n add PropertyAction "balloon" "visible" 0
    play talk.n add PropertyAction "saying" "visible" 0
]

; While she speaks she is not interrupted by clicks on her.
procedure listen
[
    get chatting isActive RESULT
    for i 1 talks
    [
        get talk.i isActive busy
        RESULT=RESULT+busy
    ]
    RESULT=RESULT+(speaking*(speaker=tilliVoice))
]

procedure chat
[
    call listen
    if RESULT=0
    [
        told=told=0
        if told
            call say next.chapter
        else
        [
            call hush
            call stepBack
            play chatting start
        ]
    ]
]

; The music has come up, and steps back for who speaks already.
procedure makeRoom
[
    call listen
    if RESULT+speaking
        call stepBack
]

procedure greet
[
    call stepBack
    play talk.1 start
]

; All who speak stop, also before the scene is left.
procedure hush
[
    call stopSpeaking
    sequel=sayNothing
    play welcoming halt
    play chatting halt
    for i 1 talks
        play talk.i halt
    call fallSilent
]

procedure fallSilent
[
    call stepForward
    play reading halt
    set balloon visible 0
    set saying visible 0
    set hail visible 0
    set hailing visible 0
]

; The balloons stay for a little while, to be read.
procedure letRead
    play reading start

procedure say words
[
    call hush
    set saying text words
    get saying textHeight tall
    set saying y 373-tall\2
    set balloon visible 1
    set saying visible 1
    call speak tilliVoice words
    sequel=letRead
]

; What the player has just done is answered at once, and the captain thanks himself.
procedure remark n
    if (n=captains)+(n=captainsMore)
    [
        call hush
        call sayAboard 1300 line.n
    ]
    else
        call say line.n

; Tilli's mouth: shut, wide, narrow or round. All has been said: she breathes, and does by herself what she likes to.
shape.0=0
shape.1=1
shape.2=2
shape.3=2
shape.4=3
shape.5=3

procedure moveTilli
[
    play tilli stop
    if opening+1
        play tilli playAnim 2991+shape.opening -1
]

; ---- the captain of the boat, whose words are over it

procedure sayAboard ms words
[
    set hailing text words
    call hangHail
    set hail visible 1
    set hailing visible 1
    call speakAfter ms captainVoice words
    call stepBack
    sequel=letRead
]

; Wherever the boat is: the tail of the balloon leads to its captain, from the left or from the right.
procedure hangHail
[
    get boat x hailX
    get boat y hailY
    hailY=hailY-82
    if hailY<4
        hailY=4
    set hail drawDirection hailX>372
    hailX=hailX-6
    if hailX>366
        hailX=hailX-204
    if hailX<2
        hailX=2
    play hail place hailX hailY
    get hailing textHeight tall
    set hailing x hailX+20
    set hailing y hailY+38-tall\2
]

procedure hailUs
[
    call blowHorn
    call hush
    call sayAboard 1300 aboard.hails
    hails=hails%3+1
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

; ---- what Tilli does by itself, and what it says

play tilli addFidgetGroup 1 3 7
play tilli addFidget 1 2012
play tilli addFidgetGroup 2 7 13
play tilli addFidget 2 2013
play tilli addFidget 2 2014
play tilli addFidget 2 2015
play tilli addSpeechAnim 2016

saying=RText 20 389 226 -1 26
set saying touchy 0
set saying movable 0
set saying visible 0
set saying wrap 1
set saying colorIndex 4
play saying setFont 20
hailing=RText 20 389 226 -1 26
set hailing touchy 0
set hailing movable 0
set hailing visible 0
set hailing wrap 1
set hailing colorIndex 4
play hailing setFont 20

; Where the story is: what has happened, for which one record serves, and what is to be done next, which is told at every other
; click on Tilli.
call findChapter
chapter=RESULT
set lens sequence 1+(chapter=5)
get world "voyage" voyage
; texts take
news="O farol apagou-se. Ajudas-me a acendê-lo?"
if voyage
    ; texts take
    news="O vento apagou o farol outra vez. Ajudas-me?"
if chapter=5
    ; texts take
    news="O farol brilha! Foste tu que o acendeste!"
; texts take
next.1="Doze sinais abrem a arca do farol. Procura na oficina!"
; texts take
next.2="Já ganhaste doze sinais! Abre a arca, no farol."
; texts take
next.3="A torre precisa de pedras. Procura na oficina e no mapa!"
; texts take
next.4="A lâmpada precisa de uma pena, de óleo e de uma chama!"
; texts take
next.5="A lâmpada arde! Sobe à torre, para ver a festa outra vez."
told=0

talks=4
for i 1 talks
[
    talk.i=RQueue 1
    set talk.i finished stepForward
]
call addSentence 1 221 "Olá! Eu sou a Tilli. Que bom ver-te!"
play talk.1 add DelayAction 600
call addSentence 1 222 news
call addSentence 2 222 "Onde brilha, há sinais ou pedras para ganhar!"
call addSentence 3 223 "No meu diário vês até onde chegaste!"
call addSentence 4 224 "Cuidado com as pinças: elas fazem cócegas!"
chatting=RRandomAction 1
for i 2 4
    play chatting add "talk."+i

welcoming=RQueue 1
play welcoming add DelayAction 2200
set welcoming finished greet
reading=RQueue 1
play reading add DelayAction 1600
set reading finished fallSilent

; What Tilli says of what is given, and of who does not want it.
line.5="A gaivota adora peixe! Toma uma pena dela!"
line.6="Que linda concha! Toma esta chama, para a lâmpada!"
line.17="Outro peixe! A gaivota está feliz!"
line.18="Outra concha! Que linda!"
line.8="A mala está vazia. Há prémios na oficina e no mapa!"
line.9="Para quem é? Leva-o até lá!"
line.10="Peixe? Eu não! A gaivota é que adora."
line.11="O capitão não quer peixe. Dá-o à gaivota!"
line.12="A gaivota não quer conchas. Eu gosto tanto!"
line.13="O capitão não quer conchas. Eu gosto tanto!"
line.14="A gaivota não come moedas! O capitão quer."
line.15="Uma moeda? É para o capitão do barco!"
line.16="Isto é para a lâmpada, no alto da torre!"

; What the captain says: when he gets the coin, and when he or his boat is clicked.
captains=7
captainsMore=19
line.7="Obrigado! Toma este óleo, para a lâmpada!"
line.19="Outra moeda? Muito obrigado!"
aboard.1="Olá! Eu sou o capitão deste barco!"
aboard.2="Sem a luz do farol, tenho de ir devagar."
if chapter=5
    ; texts take
    aboard.2="Com a luz do farol já não me perco!"
aboard.3="Procuro uma moeda. Viste alguma?"
hails=1
mouth.tilliVoice=moveTilli

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
