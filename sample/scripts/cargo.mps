; The boat at the quay: crates are stacked on deck until they weigh what is wanted. The scales tell what is
; on board. At the third level there must be three crates, at the last one there are two stacks. Who has
; mastered it loads two stacks and a row in turn.
yield off
StartTransition
Scene 107 105

activity="CWS3"
task.1="O barco leva o peso da placa. Que caixas pões a bordo?"
task.2="Agora a carga é mais pesada. Vê o que diz a balança!"
task.3="Desta vez têm de ser três caixas, nem mais nem menos!"
task.4="Duas pilhas de caixas: cada uma com o seu peso!"
stacks="Carga nova: duas caixas atrás, três à frente!"
row="Carga nova, lado a lado: o peso da placa!"
renewed=0
summed="value"

crates=5

; Where the stacks are; the boat is loaded in the middle, or before and behind it.
procedure hold left
[
    holders=holders+1
    holder.holders=RStackingContainer 2423 left 138 5
    set holder.holders movable 0
    set holder.holders droppedSound 245
    set holder.holders answerPlaced stow
    holdX.holders=left
]

; A row of crates, as long as the deck.
procedure line
[
    holders=1
    holder.1=RHorizontalValueContainer 3360 110 256 5
    set holder.1 movable 0
    set holder.1 slideSound 244
    set holder.1 answerPlaced stow
    holdX.1=213
]

procedure wanted entry which weight
[
    play puzzle setContainer entry weight
    play puzzle setPuzzleGraphic entry holdX.which+18 96 6 2425
    play puzzle setPuzzleText entry which holdX.which+50 103 7 weight 2
]

procedure load entry a b c d e
[
    play puzzle setAnswer entry a a
    play puzzle setAnswer entry b b
    play puzzle setAnswer entry c c
    play puzzle setAnswer entry d d
    play puzzle setAnswer entry e e
]

; For who has mastered it: other crates each time, two for the first stack, three for the other one; or three for the row.
procedure compose
[
    call draw 5 1 9
    if inRow
        call wanted 1 1 drawn.1+drawn.2+drawn.3
    else
    [
        call wanted 1 1 drawn.1+drawn.2
        call wanted 1 2 drawn.3+drawn.4+drawn.5
    ]
    call load 1 drawn.1 drawn.2 drawn.3 drawn.4 drawn.5
]

procedure build
[
    inRow=mastered*(stars%2=0)
    task.5=stacks
    if inRow
    [
        task.5=row
        call line
    ]
    else if level<4
        call hold 186
    else
    [
        call hold 120
        call hold 230
    ]
    answers=crates
    for i 1 answers
    [
        call spread i answers 76
        answer.i=RGraphicTextAnswer 2450+i RESULT 426 10
        set answer.i textColorIndex 4
        set answer.i textOffsetY 10
        play answer.i setFont 28
    ]
    if level=3
        set holder.1 solvedAnswerCount 3
    if level=1
    [
        call wanted 1 1 5
        call load 1 1 2 3 4 6
        call wanted 2 1 4
        call load 2 1 1 2 3 5
        call wanted 3 1 6
        call load 3 1 2 3 5 7
    ]
    else if level=2
    [
        call wanted 1 1 10
        call load 1 2 3 5 6 9
        call wanted 2 1 12
        call load 2 3 4 5 7 8
        call wanted 3 1 11
        call load 3 1 4 6 7 9
    ]
    else if level=3
    [
        call wanted 1 1 12
        call load 1 2 3 4 6 9
        call wanted 2 1 15
        call load 2 3 4 5 7 8
        call wanted 3 1 14
        call load 3 1 4 5 6 9
    ]
    else if mastered
        call compose
    else
    [
        call wanted 1 1 8
        call wanted 1 2 12
        call load 1 3 5 4 2 6
        call wanted 2 1 9
        call wanted 2 2 11
        call load 2 2 7 3 8 5
        call wanted 3 1 10
        call wanted 3 2 13
        call load 3 4 6 1 5 7
    ]
]

; ---- the scales; what is in the middle of the dial changes with every crate

procedure weigh
[
    get holder.1 answerValue aboard.1
    burden=aboard.1
    get holder.1 "value" goal
    heavy=aboard.1>goal
    if holders=2
    [
        get holder.2 answerValue aboard.2
        burden=burden+aboard.2
        get holder.2 "value" goal
        heavy=(aboard.2>goal)+heavy
    ]
    call showBurden
    tries=heavy*(tooHeavy=0)+tries
    get puzzle isSolved done
    takeOut=0
    helping=(tries>1)*(done=0)
    if helping
        call show
    if heavy
        call tell "Upa, é peso a mais! Tira uma caixa."
    else if takeOut
        call tell "Tira a caixa da seta!"
    else if helping
        call count
    else if tooHeavy
        call tellTask
    tooHeavy=heavy
]

procedure stow
[
    held=0
    call weigh
]

; Who was wrong twice is helped with each crate.
procedure show
[
    call lookAway
    call complete 3*(level=3)
    call showPart
]

; The parrot counts along, for the first stack that is not right.
procedure count
[
    for counted 1 holders
    [
        get holder.counted isSolved good
        if good=0
            break
    ]
    get holder.counted "value" goal
    call tell "Já pesa "+aboard.counted+". Quanto falta para "+goal+"?"
]

procedure judge
[
    call judgeHolders
    get holder.wrongHolder answerValue is
    get holder.wrongHolder "value" goal
    if is=goal
        hint="O peso está certo, mas têm de ser três caixas."
    else if is>goal
        hint="É peso a mais. Tira uma caixa!"
    else
        hint="Ainda é pouco. Põe mais "+(goal-is)+"!"
]

procedure assist
    call show

procedure showBurden
[
    set dial text burden
    get dial textWidth wide
    set dial x 62-wide\2
]

procedure dress
[
    call centre 38
    for i 1 holders
        set holder.i answerRemoved weigh
    burden=0
    tooHeavy=0
    call showBurden
]

dial=RText 0 136 -1 -1 20
set dial movable 0
set dial touchy 0
set dial colorIndex 4
play dial setFont 28

include puzzle.mps
call open
call write "Peso" 14 62 104 20
EndTransition 0
