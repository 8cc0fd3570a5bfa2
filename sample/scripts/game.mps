; What the two games that go on for a while have in common, included by pegs.mps and crates.mps beside desk.mps:
; before one is begun anew or left, the player is asked. The script of a game has
;
;   layOut           begins a game of the player's level
;   begun            1 while there is something to lose
;
; and what desk.mps wants of activity and tasks.
include desk.mps

; ---- the question, its depth is 200: `asking` is 1 while it is there

procedure write words size middle top
[
    lines=lines+1
    line.lines=RText 0 top -1 -1 210
    set line.lines movable 0
    set line.lines touchy 0
    set line.lines colorIndex 4
    play line.lines setFont size
    set line.lines text words
    get line.lines textWidth wide
    set line.lines x middle-wide\2
]

procedure ask what words
[
    wanted=what
    asking=1
    PlaySound 247
    question=RDialog 2701 200
    play question addButton 2702 1
    play question addButton 2703 0
    set question buttonPressed answered
    lines=0
    call write words 20 318 182
    call write "Sim" 14 258 271
    call write "Não" 14 379 271
]

; Who begins anew before the end has not solved it.
procedure answer agreed
[
    asking=0
    drop question
    drop [ line
    PlaySound 212
    if agreed
    [
        if wanted="again"
        [
            tries=tries+1
            play world incorrectGuess activity
            play world autoLevel activity
            call layOut
        ]
        else
            call goBack
    ]
]

procedure answered
[
    get question selectedButton agreed
    call answer agreed
]

; ---- the buttons and the keys

procedure once
[
    if busy=0
    [
        if begun
            call ask "again" "Queres mesmo começar de novo?"
        else
        [
            PlaySound 212
            call layOut
        ]
    ]
]

procedure leave
[
    if (busy=0)*begun
        call ask "leave" "Queres mesmo sair do jogo?"
    else
        call goBack
]

procedure typed
[
    get RECEIVER key what
    if asking
    [
        if what="Enter"
            call answer 1
        else if what="Esc"
            call answer 0
    ]
    else if what="Esc"
        call leave
]

procedure goOn
    call layOut

; Who has failed twice is helped: layOut sees to that, and `tellHelp` says so.
procedure tellHelp
    if tries>1
        call tell "Ajudei um bocadinho. Agora és tu!"
    else
        call tellTask

asking=0
begun=0
tries=0
