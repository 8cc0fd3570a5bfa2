; The chart table: a game on charts of the bay. The player plans a route with the arrows, move by move,
; and sets sail: the boat's marks go from cell to cell, to the treasure, onto a peril, or off the chart.
; There are three charts, each harder than the one before; which one comes next is kept for each player.
;
; The map tells that a voyage is over, not how it ended: the script foresees that from the route, since it
; knows where the perils are. The parrot says it.
yield off
StartTransition
Scene 103
include memory.mps
call arriveAt "CBA2"

; ---- the charts, row by row: 1 rocks, 2 sand, 3 whirlpools; and where boat and treasure are, in columns
; and rows counted from 0. The pictures show the same.

columns=8
rows=6
charts=3
perils.1="oooooooo"+"ooo2oooo"+"ooo22ooo"+"o1oooo1o"+"oooo1ooo"+"oooooooo"
perils.2="oo1ooooo"+"oooo22o1"+"1o2o2ooo"+"oo22oo3o"+"ooooo1oo"+"oo3oooo1"
perils.3="oo1ooo2o"+"1o1o3o2o"+"oooo1ooo"+"o22o121o"+"o3oooo1o"+"ooo11o3o"
boatColumn=[0 0 0
boatRow=[5 4 0
goldColumn=[6 7 7
goldRow=[1 0 5

; A move by its direction: 0 up, 1 down, 2 right, 3 left.
stepRight.0=0
stepDown.0=0-1
stepRight.1=0
stepDown.1=1
stepRight.2=1
stepDown.2=0
stepRight.3=0-1
stepDown.3=0

; How a voyage can end: 0 too soon, 1 to 3 on a peril, 4 off the chart, 5 at the treasure.
short=0
lost=4
found=5
news.0="Ainda não chegámos ao tesouro. A rota tem de ser mais comprida."
news.1="Batemos numa rocha! Tenta outro caminho."
news.2="Encalhámos na areia! Tenta outro caminho."
news.3="Um remoinho apanhou-nos! Tenta outro caminho."
news.4="Saímos do mapa! Temos de ficar dentro da baía."
news.5="Viva! Encontrámos o tesouro!"

; ---- the parrot's bubble

procedure tell said
[
    set bubble text said
    get bubble textHeight tall
    set bubble y 41-tall\2
    set parrot sequence 2
]

procedure fallSilent
[
    set parrot sequence 1
]

procedure squawk
[
    PlaySound 213
    if sailing=0
        call tell "Carrega nas setas para fazer a rota, e depois na vela verde!"
]

; ---- the route: route.1 to route.planned are its moves, and lie as little arrows on the plank

longest=18

procedure layPlan
[
    play sea clearMoves
    for i 1 longest
    [
        set arrow.i visible (i>planned)=0
        if (i>planned)=0
        [
            set arrow.i sequence route.i+1
            play sea addMove route.i 1
        ]
    ]
]

procedure plan direction
[
    if sailing=0
    [
        PlaySound 212
        if planned=longest
            call tell "A rota está cheia. Carrega na vela verde!"
        else
        [
            planned=planned+1
            route.planned=direction
            call layPlan
        ]
    ]
]

procedure pointed
[
    get RECEIVER tag heading
    call plan heading
]

; What begins with the move that was clicked is taken back.
procedure shorten
[
    if sailing=0
    [
        PlaySound 212
        get RECEIVER tag k
        planned=k-1
        call layPlan
    ]
]

procedure takeBack
[
    if (sailing=0)*planned
    [
        PlaySound 212
        planned=planned-1
        call layPlan
    ]
]

procedure wipe
[
    if sailing=0
    [
        PlaySound 212
        planned=0
        call layPlan
        call tell "A rota está limpa. Por onde vamos?"
    ]
]

; ---- the voyage

procedure foresee
[
    column=boatColumn.level
    row=boatRow.level
    fate=short
    n=0
    for (n<planned)*(fate=short)
    [
        n=n+1
        heading=route.n
        column=column+stepRight.heading
        row=row+stepDown.heading
        if (column<0)+(column=columns)+(row<0)+(row=rows)
            fate=lost
        else
        [
            there=terrain|(row*columns+column+1)|1
            if there#"o"
                fate=there
        ]
    ]
    if (fate=short)*(column=goldColumn.level)*(row=goldRow.level)
        fate=found
]

procedure setSail
[
    if sailing=0
    [
        if planned=0
            call tell "Primeiro carrega nas setas, para fazer a rota."
        else
        [
            sailing=1
            PlaySound 236
            call foresee
            call tell "Lá vamos nós!"
            play sea move
        ]
    ]
]

procedure arrive
[
    if fate=found
    [
        call award coinPrize
        if RESULT
            call tell news.fate+" E uma moeda, que está na mala, no porto."
        else
            call tell news.fate
        PlaySound 235
        set gold sequence 2
        set gold visible 1
        set world chartLevel level%charts+1
        play celebration start
    ]
    else
    [
        call tell news.fate
        sailing=0
    ]
]

; ---- a chart is laid on the table. A map keeps its trails, so each chart is a new one.

procedure layChart
[
    get world chartLevel level
    terrain=perils.level
    sea=RMap 28 96 10
    set sea movable 0
    set sea cellsH columns
    set sea cellsV rows
    set sea cellSizeH 52
    set sea cellSizeV 52
    set sea mapGraphicID 2300+level
    for i 0 3
        set sea directionGraphicID i 2310+i
    for i 1 3
        set sea trapSoundID i 230+i
    set sea offMapSoundID 234
    set sea moveDelay 320
    set sea startX boatColumn.level
    set sea startY boatRow.level
    set sea finishX goldColumn.level
    set sea finishY goldRow.level
    set sea startGraphicID 2304
    set sea finishGraphicID 2305
    play sea setTerrain terrain
    set sea finished arrive
    gold=RAnimation 2305 29+(52*goldColumn.level) 98+(52*goldRow.level) 30
    set gold visible 0
    set gold touchy 0
    set number text "Carta "+level+" de "+charts
    get number textWidth wide
    set number x 236-wide\2
    planned=0
    call layPlan
    sailing=0
]

procedure nextChart
[
    call layChart
    if level=1
        call tell "Os três tesouros são teus! Queres navegar outra vez?"
    else
        call tell "Outra carta! O tesouro está mais bem escondido."
]

; ---- back into the lighthouse

procedure goBack
[
    PlaySound 208
    play port stopBackgroundMusic 1
    relay lighthouse.mps
]

procedure typed
[
    get RECEIVER key what
    if what="Up"
        call plan 0
    else if what="Down"
        call plan 1
    else if what="Right"
        call plan 2
    else if what="Left"
        call plan 3
    else if what="Enter"
        call setSail
    else if what="Backspace"
        call takeBack
    else if what="Delete"
        call wipe
    else if what="Esc"
        call goBack
]

; ---- what lies on the table

bubble=RText 34 18 424 -1 20
set bubble movable 0
set bubble touchy 0
set bubble wrap 1
set bubble colorIndex 4
play bubble setFont 20

parrot=RAnimation 2306 20
set parrot drawDirection 1
set parrot movable 0
play parrot setAOCursor 1
set parrot mouseDown squawk
set parrot paused fallSilent

for i 1 longest
[
    arrow.i=RAnimation 2320 24*i 443 20
    set arrow.i visible 0
    set arrow.i movable 0
    set arrow.i tag i
    play arrow.i setAOCursor 1
    set arrow.i mouseDown shorten
]

; The click is played by the handlers: buttons with a sound of their own wait for its end.
for i 1 7
    button.i=RPButton 2330+i 20
for i 1 4
[
    set button.i tag i-1
    set button.i hit pointed
]
set button.5 hit setSail
set button.6 hit wipe
set button.7 hit goBack

procedure label caption middle top
[
    labels=labels+1
    label.labels=RText 0 top -1 -1 20
    set label.labels movable 0
    set label.labels touchy 0
    set label.labels colorIndex 4
    play label.labels setFont 14
    set label.labels text caption
    get label.labels textWidth wide
    set label.labels x middle-wide\2
]

labels=0
call label "Limpar" 513 446
call label "Farol" 591 446

number=RText 0 412 -1 -1 20
set number movable 0
set number touchy 0
set number colorIndex 4
play number setFont 14

keys=RKbdInp 0
set keys keyPressed typed

get world chartLevel level
if level=0
    set world chartLevel 1
call layChart
call tell "Faz com as setas a rota do barco até ao tesouro!"

; ---- after the fanfare a new chart is laid

celebration=RQueue 1
play celebration add DelayAction 4000
set celebration finished nextChart

; ---- the music of the last scene still fades out

port=RScenePort 0
music=RQueue 1
play music add DelayAction 950
play music add VerbAction "port" 1 "startBackgroundMusic" 103 100 2
play music start
EndTransition 0
