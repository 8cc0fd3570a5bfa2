; The board with the holes: a little buoy that jumps over another one takes it away. Few are to be left; how few,
; the level tells. Who manages it wins a shell.
yield off
StartTransition
Scene 110 105

activity="OWS1"
task.1="Salta por cima das boias para as tirar! Deixa só quatro."
task.2="Consegues deixar só três boias?"
task.3="E agora, só duas boias!"
task.4="O mais difícil: no fim só pode ficar uma boia!"

; The hole that is empty at first, for each level.
empty=[1 13 4 5

include game.mps

procedure layOut
[
    drop game
    call showLevel
    game=RPegGame 10
    set game pegID 2711
    set game pegMovingZ 60
    set game pegsLeftForSolved 5-level
    set game solved cheer
    set game noMoreMoves consider
    hole=1
    for row 0 4
        for column 0 row
        [
            set game pegX hole 220-(36*row)+72*column
            set game pegY hole 104+68*row
            hole=hole+1
        ]
    play game removePeg empty.level
    play game reset
    call tell task.level
    begun=1
    busy=0
]

procedure cheer
[
    begun=0
    call award shellPrize
    if RESULT
        call rejoice " Ganhaste uma concha. Está na mala, no porto."
    else
        call rejoice ""
]

procedure consider
[
    begun=0
    call regret "Já não há saltos. Carrega em 'De novo'!"
]

call furnish
call layOut
EndTransition 0
