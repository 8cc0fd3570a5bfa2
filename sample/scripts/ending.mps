; The ending: the lighthouse burns again, boats come home by its light, and whoever has helped celebrates. Then the names of
; all, and the game can be played once more, in another way: newGame shares out other signs and gems.
yield off
StartTransition
Scene 114
include story.mps
include voice.mps
include words.mps
call arriveAt "OHUB"

; ---- words on the scroll, one after the other, spoken by Tilli

procedure unroll words
[
    set scroll visible 1
    call rewrite line words 320
]

procedure tell words
[
    call unroll words
    call speak tilliVoice words
    sequel=goOn
]

; The mouth shut, wide, narrow or round. Then she dances again.
shape.0=2
shape.1=3
shape.2=4
shape.3=4
shape.4=5
shape.5=5

procedure moveTilli
    if opening+1
        set tilli sequence shape.opening
    else
        set tilli sequence 1

procedure goOn
[
    said=said+1
    if said<speeches
        play breath start
    else if said=speeches
        play roll start
]

procedure sayNext
    call tell speech.said

; Who has made it. The last line stays.
procedure showNext
[
    credits=credits+1
    call unroll credit.credits
    if credits<lines
        play roll start
    else
        call offer
]

procedure offer
[
    again=RPButton 2960 40
    set again hit onceMore
    home=RPButton 2961 40
    set home hit goHome
    call label "Nova viagem" 516
    call label "Porto" 597
]

; White, for the night.
procedure label words middle
[
    call write words 14 middle 446 40
    set writing.writings colorIndex 255
]

; ---- fireworks, wherever there is sky

procedure launch
[
    RandomNumber 0 2
    which=RESULT
    RandomNumber 20 400
    across=RESULT
    RandomNumber 50 130
    drop rocket
    rocket=RAnimation 2956+which across RESULT 12
    set rocket movable 0
    set rocket touchy 0
    set rocket paused fade
    PlaySound 245
    play show start
]

procedure fade
    set rocket visible 0

; ---- the gull

procedure fly
[
    play gull offset 3 0
    get gull x across
    if across>640
        play gull place -84 150
]

; ---- on

procedure leave where
[
    call stopSpeaking
    PlaySound 208
    play port stopBackgroundMusic 1
    relay where
]

procedure onceMore
[
    call sailAgain
    call leave "harbour.mps"
]

procedure goHome
    call leave "harbour.mps"

; ---- the scene

beam=RAnimation 2951 2
tower=RAnimation 2952 0 0 3
gull=RAnimation 2955 -84 150 14
tilli=RAnimation 2954 30
scroll=RAnimation 2959 20
for i 1 3
    boat.i=RAnimation 2953 -60-(170*i) 212+12*i 5+i
set beam touchy 0
set tower touchy 0
set gull touchy 0
set scroll touchy 0
set tilli movable 0
for i 1 3
    set boat.i touchy 0
set gull frameNotification 1
set gull frameNotify fly
call write "" 20 320 31 21
line=writings

sailing=RCompositeAction 1
for i 1 3
    play sailing add MoveXAction "boat."+i "boat."+i -60-(170*i) 6 0 285-95*i

get world playerName visitor
; texts take
speech.0="O farol brilha outra vez!"
; texts take
speech.1="Os barcos acham o caminho!"
; texts take
speech.2="Obrigada, "+visitor+"!"
get world "voyage" voyage
if voyage
[
    ; texts take
    speech.0="O farol brilha de novo!"
    ; texts take
    speech.1="Já o acendeste "+(voyage+1)+" vezes!"
]
speeches=3
; texts take
credit.1="Com a Tilli e o papagaio,"
; texts take
credit.2="a gaivota e o capitão,"
; texts take
credit.3="e contigo, "+visitor+"!"
; texts take
credit.4="Fim"
lines=4
said=0
credits=0
mouth.tilliVoice=moveTilli
breath=RQueue 1
play breath add DelayAction 900
set breath finished sayNext
roll=RQueue 1
play roll add DelayAction 2400
set roll finished showNext
show=RQueue 1
play show add RandomDelayAction 500 1400
set show finished launch
rocket=0

port=RScenePort 0
play port startBackgroundMusic 114 100 1
EndTransition 0
PlaySound 248
play sailing start
play show start
play breath start
