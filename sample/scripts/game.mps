; What the two games that go on for a while have in common, included by pegs.mps and crates.mps beside desk.mps:
; before one is begun anew or left, the player is asked. The script of a game has
;
;   layOut           begins a game of the player's level
;   begun            1 while there is something to lose
;
; and what desk.mps wants of activity and tasks.
include desk.mps

; ---- what follows a Yes. Who begins anew before the end has not solved it.

paper=2701
include question.mps

procedure agree
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
        call ask "leave" "Queres voltar à oficina?"
    else
        call goBack
]

procedure typed
[
    get RECEIVER key what
    if asking
        call answerKey what
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

begun=0
tries=0
