; The lantern room, above the four doors. The lamp is wiped with the gull's feather, filled with the captain's oil, and lit with
; Tilli's flame; these were given for fish, coin and shell. Then the ending begins.
yield off
StartTransition
Scene 115
include story.mps
include voice.mps
call arriveAt "PBA"

; ---- what is written on the plaque; Tilli has come along and reads it

procedure tell words
[
    set plaque text words
    get plaque textHeight tall
    set plaque y 61-tall\2
    call speak tilliVoice words
]

; ---- what the lamp needs, in this order, and what is said of each

; texts take
need.1="Limpa o vidro com a pena!"
; texts take
need.2="Agora o óleo, para a lâmpada arder!"
; texts take
need.3="E agora a chama!"
; texts take
lack.1="Falta a pena. A gaivota dá uma a quem lhe der um peixe."
; texts take
lack.2="Falta o óleo. O capitão dá-o por uma moeda."
; texts take
lack.3="Falta a chama. A Tilli dá-a por uma concha."

procedure layOut
[
    for n step steps
    [
        call carries needed.n
        has.n=RESULT
        if RESULT
        [
            thing.n=RGraphicAnswer 2971+n -18+50*n 362 20
            set thing.n value n
            set thing.n tag n
            set thing.n addedToContainer remember
            play thing.n setAOCursor 1
            play puzzle addAnswer "thing."+n
        ]
    ]
]

procedure remember
    get RECEIVER tag brought

; Once it burns, a click shows the feast again.
procedure advise
[
    if step>steps
        call celebrate
    else if has.step
        call tell need.step
    else
        call tell lack.step
]

procedure use
[
    call useGift needed.brought
    if RESULT
    [
        drop thing.brought
        PlaySound 242
        set lamp sequence step
        if step>steps
            call light
        else
        [
            set glass value step
            call advise
        ]
    ]
    else
    [
        play puzzle removeAnswerFromContainer "thing."+brought "glass"
        call advise
    ]
]

procedure light
[
    PlaySound 248
    ; texts take
    call tell "A lâmpada arde! O farol brilha outra vez!"
    play dusk start
]

procedure celebrate
[
    call stopSpeaking
    relay "ending.mps"
]

procedure goDown
[
    call stopSpeaking
    PlaySound 208
    play port stopBackgroundMusic 1
    relay "lighthouse.mps"
]

procedure typed
[
    get RECEIVER key what
    if what="Esc"
        call goDown
]

; ---- the scene

plaque=RText 168 61 304 -1 20
set plaque movable 0
set plaque touchy 0
set plaque wrap 1
set plaque colorIndex 4
play plaque setFont 20
lamp=RAnimation 2971 5
set lamp movable 0
play lamp setAOCursor 1
set lamp mouseDown advise
back=RPButton 2975 20
set back hit goDown
keys=RKbdInp 0
set keys keyPressed typed
dusk=RQueue 1
play dusk add DelayAction 4500
set dusk finished celebrate

call findStep
set lamp sequence step
puzzle=RPuzzle 0
glass=RValueContainer -1 250 130 140 230 6
set glass movable 0
set glass touchy 0
set glass value step
set glass answerPlaced use
play puzzle addContainer "glass"
call layOut

port=RScenePort 0
get port backgroundMusicID heard
if heard#113
    play port startBackgroundMusic 113 100 2
EndTransition 0
if step>steps
    call tell "A lâmpada arde! O farol brilha outra vez!"
else
    call advise
