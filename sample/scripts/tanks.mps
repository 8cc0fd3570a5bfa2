; The tanks with fish: shells with numbers are put onto the plates below the tanks. At first there are fish
; to be counted, then sums; at the last level the shells are sums themselves, whose parts are two labels.
yield off
StartTransition
Scene 106 105

activity="CWS2"
task.1="Quantos peixes há em cada aquário? Põe a concha certa!"
task.2="Agora são mais. E há uma concha que sobra!"
task.3="Faz as contas: que número é o de cada aquário?"
task.4="Que conta dá o número de cada aquário?"
task.5="Contas novas! Qual é a de cada aquário?"
renewed=0

where.1="No primeiro aquário"
where.2="No aquário do meio"
where.3="No último aquário"

tanks=3

; Fish swim in nine places of a tank, three in a row. These are taken first; few fish look scattered so.
order=[5 1 9 3 7 4 6 2 8

procedure shoal entry tank many
    for k 1 many
    [
        cell=order.k-1
        swimX=150*tank-121+38*(cell%3)+(k*5)%7
        swimY=112+36*(cell\3)+(k*3)%8
        play puzzle setPuzzleGraphic entry swimX swimY 6 2471+(tank+entry)%3
    ]

procedure shell entry number
    play puzzle setAnswer entry number number

; How many fish are in each tank; then with a number that no tank has.
procedure count entry a b c
[
    play puzzle setContainer entry a b c
    call shell entry a
    call shell entry b
    call shell entry c
    call shoal entry 1 a
    call shoal entry 2 b
    call shoal entry 3 c
]

procedure countMore entry a b c d
[
    call count entry a b c
    call shell entry d
]

; What is to be computed, or is the result, stands on a slate in the tank.
procedure slate entry tank words
[
    play puzzle setPuzzleGraphic entry 150*tank-121 128 6 2426
    play puzzle setPuzzleText entry tank 150*tank-63 142 7 words 2
]

procedure sum entry tank words number
[
    play puzzle setContainer entry number
    call slate entry tank words
    call shell entry number
]

; The label of an answer shows the first part of its sum; the other one follows from it.
procedure parts entry tank first number
[
    play puzzle setContainer entry number
    call slate entry tank number
    play puzzle setAnswer entry number first
]

; For who has mastered the sums: other numbers each time, the last one for no tank. The first part is such that the
; other one has one digit, too.
procedure compose
[
    call draw 4 11 18
    for k 1 4
    [
        RandomNumber drawn.k-9 9
        if k<4
            call parts 1 k RESULT drawn.k
        else
            play puzzle setAnswer 1 drawn.k RESULT
    ]
]

procedure build
[
    answers=3
    if level=2
        answers=4
    if level=3
        answers=5
    if level=4
        answers=4
    holders=tanks
    for i 1 tanks
    [
        holder.i=RValueContainer 2422 150*i-127 286 5
        set holder.i movable 0
    ]
    for i 1 answers
    [
        if level<4
        [
            call spread i answers 72
            answer.i=RGraphicTextAnswer 2440+i RESULT 398 10
            set answer.i textColorIndex 4
            set answer.i textOffsetY 19
            play answer.i setFont 28
        ]
        else
        [
            call spread i answers 96
            answer.i=RDoubleGraphicTextAnswer 2446 RESULT 404 10
            set answer.i graphic1ID 2447
            set answer.i graphic2ID 2448
            set answer.i graphic1OffsetZ -1
            set answer.i graphic2OffsetZ -1
            set answer.i textColorIndex 4
            set answer.i text1OffsetY 15
            set answer.i text2OffsetY 15
            play answer.i setFont 28
        ]
    ]
    set puzzle lockCorrectAnswers 1
    if level=1
    [
        call count 1 1 3 2
        call count 2 2 5 4
        call count 3 4 1 3
        call count 4 3 2 5
    ]
    else if level=2
    [
        call countMore 1 4 7 5 6
        call countMore 2 6 9 8 7
        call countMore 3 8 5 7 9
    ]
    else if level=3
    [
        call sum 1 1 "2 + 3" 5
        call sum 1 2 "4 + 4" 8
        call sum 1 3 "6 + 1" 7
        call shell 1 6
        call shell 1 9
        call sum 2 1 "5 + 4" 9
        call sum 2 2 "3 + 3" 6
        call sum 2 3 "2 + 8" 10
        call shell 2 8
        call shell 2 7
        call sum 3 1 "9 - 2" 7
        call sum 3 2 "8 - 4" 4
        call sum 3 3 "5 + 3" 8
        call shell 3 5
        call shell 3 6
    ]
    else if mastered
        call compose
    else
    [
        call parts 1 1 7 12
        call parts 1 2 9 11
        call parts 1 3 6 14
        play puzzle setAnswer 1 13 8
        call parts 2 1 8 15
        call parts 2 2 5 10
        call parts 2 3 9 18
        play puzzle setAnswer 2 16 7
        call parts 3 1 6 13
        call parts 3 2 8 17
        call parts 3 3 4 11
        play puzzle setAnswer 3 12 9
    ]
]

procedure centreLabel which middle
[
    set ruler text what
    get ruler textWidth wide
    set answer.i which middle-wide\2
]

procedure dress
[
    if level<4
        call centre 36
    else
    [
        for i 1 answers
        [
            get answer.i "text1" what
            get answer.i "attribute" total
            call centreLabel "text1OffsetX" 22
            what=total-what
            set answer.i "text2" what
            call centreLabel "text2OffsetX" 74
        ]
    ]
]

procedure judge
[
    call judgeHolders
    get answer.wrongAnswer "value" is
    get holder.wrongHolder "value" goal
    if is>goal
        hint=where.wrongHolder+" é menos."
    else
        hint=where.wrongHolder+" é mais."
]

procedure assist
[
    call showPair "value"
    if level<3
        call tell "Conta comigo, devagarinho: "+goal+"! Vê as setas."
    else
        call tell "A conta dá "+goal+". Vê as setas!"
]

; ---- bubbles rise in the tanks, one after the other, and rest below the sand until their turn comes again

pause.1=1500
pause.2=2600
pause.3=900

procedure bubble tank
[
    air.tank=RAnimation 3350+tank 150*tank-44 240 6
    set air.tank touchy 0
    set air.tank movable 0
    set air.tank visible 0
    rising.tank=RQueue -1
    play rising.tank add DelayAction pause.tank
    play rising.tank add PropertyAction "air."+tank "visible" 1
    play rising.tank add MoveYAction "air."+tank "air."+tank 232 -2 0 108
    play rising.tank add PropertyAction "air."+tank "visible" 0
    play rising.tank start
]

for i 1 tanks
    call bubble i

include puzzle.mps
call open
EndTransition 0
