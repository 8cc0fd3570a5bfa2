; What all games of the workshop have in common, included by puzzle.mps and game.mps: the parrot with its bubble,
; the plate with the level, and two buttons. The script of a game has
;
;   activity         its location in the world's memory, which counts answers and knows the level
;   task.1 to 4      what the parrot says when a game of that level begins
;   task.5           what it says when one begins after the last level was solved: such games are composed by lot
;   once             what the button with the arrow does
;   leave            what the button to the workshop does
;   typed            what keys do
;   goOn             what follows when a game was solved, a while later
;
; and calls `furnish`. Depths: what lies on the table up to 60, the rest 20, sparkles 70.
include story.mps
include parrot.mps
include words.mps

; ---- the parrot

procedure tellTask
    call tell task.(level+mastered)

; ---- the level: `showLevel` reads it, and shows it. Games of the last level that were solved are counted on the
; star; from the first one on the level is mastered.

procedure showLevel
[
    get world currentLevel activity level
    for i 1 4
        set lamp.i sequence 2-(i>level)
    call rewrite plate "Nível "+level 562
    stars=0
    if level=4
        get world wsTotalCorrectGuessCount activity 4 stars
    mastered=stars>0
    set medal visible mastered
    set writing.tally visible mastered
    call rewrite tally stars 562
]

; N different numbers from LOW to HIGH are drawn by lot: drawn.1 to drawn.N, never as they were drawn last.
procedure draw n low high
[
    recent=lot
    for lot=recent
    [
        lot=""
        for d 1 n
        [
            call drawOne d low high
            lot=lot+drawn.d+" "
        ]
    ]
]

procedure drawOne d low high
[
    taken=1
    for taken
    [
        RandomNumber low high
        drawn.d=RESULT
        taken=0
        for e 1 d
            taken=(drawn.e=drawn.d)*(e<d)+taken
    ]
]

; ---- an arrow points at something

procedure pointAt middle top
[
    arrows=arrows+1
    arrow.arrows=RAnimation 2780 middle-15 top-38 65
    set arrow.arrows movable 0
    set arrow.arrows touchy 0
]

procedure lookAway
[
    arrows=0
    drop [ arrow
]

; ---- a game was solved: what more there is to say comes behind the praise

praise.1="Muito bem!"
praise.2="Boa! Está tudo certo!"
praise.3="Que esperteza! Muito bem!"

; Signs for the chest, or gems for the tower: RESULT is a word about them.
procedure takeShare
[
    call gather activity
    news=""
    if RESULT*(hub="CHUB")
    [
        ; texts take
        news=" Há mais sinais na arca do farol!"
        get world itemsPresentCount hub gathered
        if gathered=signs
            ; texts take
            news=" São doze sinais: abre a arca do farol!"
    ]
    else if RESULT
        ; texts take
        news=" Há mais pedras para a torre!"
    RESULT=news
]

procedure rejoice more
[
    busy=1
    call takeShare
    if ~more=0
        more=RESULT
    play world correctGuess activity
    play world autoLevel activity
    get world currentLevel activity reached
    if reached>level
    [
        PlaySound 248
        call letSound 1000
        call tellGladly "Viva! Passas para o nível "+reached+"!"+more
    ]
    else
    [
        PlaySound 246
        RandomNumber 1 3
        call letSound 1000
        call tellGladly praise.RESULT+more
    ]
    if level=4
        call showLevel
    set sparkles visible 1
    set sparkles sequence 1
    play interval start
]

; Nothing was won but the praise, or a star.
procedure rejoiceOnly
    if level=4
        ; texts take
        call rejoice " Mais uma estrela!"
    else
        call rejoice ""

; ---- it was not: `easier` tells whether the next one is of an easier level

procedure regret advice
[
    PlaySound 247
    call letSound 700
    play world incorrectGuess activity
    play world autoLevel activity
    get world currentLevel activity reached
    easier=reached<level
    if easier
    [
        busy=1
        call tell "Quase! Vamos tentar uma mais fácil."
        play interval start
    ]
    else
        call tell "Quase! "+advice
]

; The parrot ends its sentence first.
procedure listenOn
    call whenSaid goOn

procedure goBack
[
    call stopSpeaking
    PlaySound 208
    relay "workshop.mps"
]

; ---- what is on the screen at every game

procedure furnish
[
    call perch 2411 1 34 41 424
    call write "De novo" 14 519 451 20
    call write "Oficina" 14 596 451 20
    call write "" 14 562 253 20
    plate=writings
    call write "" 14 562 353 21
    tally=writings
    medal=RAnimation 2781 536 334 20
    set medal touchy 0
    set medal movable 0
    for i 1 4
    [
        lamp.i=RAnimation 2414 471+30*i 274 20
        set lamp.i movable 0
        set lamp.i touchy 0
    ]
    again=RPButton 2412 20
    set again hit once
    home=RPButton 2413 20
    set home hit leave
    keys=RKbdInp 0
    set keys keyPressed typed
    sparkles=RAnimation 2415 29 96 70
    set sparkles visible 0
    set sparkles touchy 0
    set sparkles movable 0
    interval=RQueue 1
    play interval add DelayAction 3400
    set interval finished listenOn

    ; Two right answers of the last six lead on to the next level, six wrong ones back.
    set world wsAutoLevelingA activity 1
    set world wsAutoLevelingB activity 2
    set world wsAutoLevelingX activity 1
    set world wsAutoLevelingY activity 6
    call arriveAt activity
    lot="none"
    arrows=0
    busy=0
]
