; Tilli and the captain at the harbour, included by its script: what they say, when they are clicked or given something, and what
; Tilli does by itself. `chapter` is where the story is. What is in Tilli's speech records is spoken as these have it, lips and
; gestures; what else she says, and the captain, is made of syllables, by voice.mps.
;
; They speak one at a time: `hush` ends it, before somebody else speaks and before the scene is left.

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

; What has happened, for which one record serves, and what is to be done next, which is told at every other click on Tilli.
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
