; The chart table: a game on charts of the bay. The player plans a route with the arrows, move by move,
; and sets sail: the boat goes from cell to cell, to the treasure, onto a peril, or off the chart.
; There are three charts, each harder than the one before, and then new ones without end, drawn by lot; which one
; comes next is kept for each player.
;
; The map tells that a voyage is over, not how it ended: the script foresees that from the route, since it
; knows where the perils are. The parrot says it.
yield off
StartTransition
Scene 103
include story.mps
include parrot.mps
include words.mps
call arriveAt "CBA2"

; ---- the charts, row by row: 1 rocks, 2 sand, 3 whirlpools; and where boat and treasure are, in columns
; and rows counted from 0. The pictures show the same.

columns=8
rows=6
cells=48
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

; ---- what the parrot says when it is clicked

procedure tellTask
    if sailing=0
        call tell "Carrega nas setas para fazer a rota, e depois na vela verde!"

; ---- the boat. shipX and shipY are its place on the screen; it has a margin of 12 pixels around a cell.

procedure rest
[
]

procedure putShip newX newY
[
    play ship offset newX-shipX newY-shipY
    shipX=newX
    shipY=newY
]

; It goes there in so many beats of 40 milliseconds, and then what comes next is called.
procedure glide goalX goalY time next
[
    fromX=shipX
    fromY=shipY
    beats=time
    beaten=0
    play beat start
]

procedure glideOn
[
    beaten=beaten+1
    call putShip (goalX-fromX)*beaten\beats+fromX (goalY-fromY)*beaten\beats+fromY
    if beaten=beats
    [
        play beat stop
        call next
    ]
]

; The place of the cell that it sails to.
procedure findCell
[
    cellX=column*52+16
    cellY=row*52+84
]

; It looks to where it sails; up and down the chart it looks as before.
procedure steer heading
[
    if heading>1
        set ship drawDirection heading-2
    if heading=0
        set ship sequence 3
    else if heading=1
        set ship sequence 4
    else
        set ship sequence 2
]

procedure moor
[
    adrift=0
    play beat stop
    beats=0
    beaten=0
    column=homeColumn
    row=homeRow
    call findCell
    call putShip cellX cellY
    set ship sequence 1
    set ship drawDirection goldCell%columns<(homeCell%columns)
    set pointer visible 0
]

; ---- the route: route.1 to route.planned are its moves, and lie as little arrows on the plank

longest=18

; A move is pointed at: 1 it is made, 2 it was wrong, 3 it is missing.
procedure pointAt nth how
[
    set pointer x nth*24-6
    set pointer sequence how
    set pointer visible (nth>longest)=0
]

procedure layPlan
[
    if adrift
        call moor
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

; ---- the search: away.1 to away.cells are how many moves it is from a cell to the treasure, -1 where no way leads

; The cell that lies next to a cell, or 0 when that is off the chart.
procedure look cell direction
[
    column=(cell-1)%columns+stepRight.direction
    row=(cell-1)\columns+stepDown.direction
    beside=row*columns+column+1
    if (column<0)+(column=columns)+(row<0)+(row=rows)
        beside=0
]

procedure search
[
    for c 1 cells
        away.c=0-1
    away.goldCell=0
    queue.1=goldCell
    first=0
    last=1
    for first<last
    [
        first=first+1
        here=queue.first
        for heading 0 3
        [
            call look here heading
            if beside
                if (away.beside<0)*(ground.beside="o")
                [
                    away.beside=away.here+1
                    last=last+1
                    queue.last=beside
                ]
        ]
    ]
]

; Dots show the first part of a good route.
procedure showWay length
[
    drop [ way
    here=homeCell
    dots=0
    for (dots<length)*(away.here>1)
    [
        closer=0
        for heading 0 3
        [
            call look here heading
            if beside
                if away.beside=(away.here-1)
                    closer=beside
        ]
        here=closer
        dots=dots+1
        way.dots=RAnimation 2345 (here-1)%columns*52+34 (here-1)\columns*52+102 12
        set way.dots touchy 0
    ]
]

; ---- the voyage

; passed is the last move at which the boat was at the treasure.
procedure foresee
[
    column=homeColumn
    row=homeRow
    here=homeCell
    fate=short
    passed=0
    n=0
    for (n<planned)*(fate=short)
    [
        n=n+1
        call look here route.n
        here=beside
        if here=0
            fate=lost
        else if ground.here#"o"
            fate=ground.here
        else if here=goldCell
            passed=n
    ]
    if (fate=short)*(here=goldCell)
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
            call moor
            sailed=0
            set OMAnimation born stepped
            play sea move
        ]
    ]
]

procedure nextMove
[
    sailed=sailed+1
    call steer route.sailed
    call pointAt sailed 1
    call look row*columns+column+1 route.sailed
    call findCell
]

; The map has put a mark onto a cell: the boat follows. Before the treasure it stops.
procedure stepped
[
    call nextMove
    if (fate=found)*(sailed=planned)
        call glide cellX-(stepRight.direction*28) cellY-(stepDown.direction*28) 5 rest
    else
        call glide cellX cellY 8 rest
]

procedure hitRock
[
    PlaySound 231
    set ship sequence 5
    call glide backX backY 6 lament
]

procedure runAground
[
    PlaySound 232
    set ship sequence 6
    call lament
]

procedure goRound
[
    PlaySound 233
    set ship sequence 7
    call lament
]

; The fog has the boat for a while.
procedure goAstray
[
    PlaySound 234
    set ship sequence 8
    call glide shipX shipY 34 comeBack
]

procedure comeBack
[
    set ship sequence 2
    if route.sailed>1
        set ship drawDirection 3-route.sailed
    call glide backX backY 8 lament
]

; Each peril has a way of its own.
procedure crash
[
    backX=shipX
    backY=shipY
    call nextMove
    if fate=1
        call glide (cellX+shipX)\2 (cellY+shipY)\2 4 hitRock
    else if fate=2
        call glide cellX-(stepRight.direction*12) cellY-(stepDown.direction*12) 9 runAground
    else if fate=3
        call glide cellX cellY 8 goRound
    else
        call glide (cellX+shipX)\2 (cellY+shipY)\2 6 goAstray
]

procedure arrive
[
    set OMAnimation born
    if fate=found
        next=rejoice
    else if fate=short
        next=stayBehind
    else
        next=crash
    if beaten=beats
        call next
]

procedure stayBehind
[
    set ship sequence 1
    call lament
]

; The parrot says what went wrong, and on the plank it is pointed at. From the second time on it shows a way.
procedure lament
[
    if fate=lost
        set ship sequence 1
    message=news.fate
    if (fate=short)*passed
        message="Passámos pelo tesouro! A rota tem de acabar lá."
    else if (fate=short)*(planned=longest)
        message="Ainda não chegámos ao tesouro. Procura um caminho mais curto."
    if fate#short
        call pointAt sailed 2
    else if passed
        call pointAt passed+1 2
    else
        call pointAt planned+1 3
    misses=misses+1
    if misses>1
    [
        call showWay misses*2
        call tell message+" Segue os pontos!"
    ]
    else
        call tell message
    adrift=1
    sailing=0
]

procedure rejoice
[
    set ship sequence 1
    set pointer visible 0
    drop [ way
    play world correctGuess "OWS3"
    call gather "OWS3"
    call award coinPrize
    call letSound 1000
    if RESULT
        call tellGladly news.fate+" E uma moeda, que está na mala, no porto."
    else
        call tellGladly news.fate
    PlaySound 235
    set gold sequence 2
    set world chartLevel level+1
    set world chartSeed 0
    play celebration start
]

; ---- new charts are drawn by lot, and kept by the number that the lot began with

; lot is one of so many numbers, counted from 0.
procedure drawLot many
[
    chance=(chance*171+11213)%53125
    lot=chance*many\53125
]

; A peril stays only where the treasure can still be reached. Sand likes to lie beside sand: islands grow.
procedure tryPeril
[
    coast=0
    for heading 0 3
    [
        call look spot heading
        if beside
            coast=(ground.beside=2)+coast
    ]
    call drawLot 6
    if coast*(lot>1)+(lot>3)
        ground.spot=2
    else if lot<3
        ground.spot=1
    else
        ground.spot=3
    call search
    if (away.homeCell<0)+(away.homeCell>longest)
        ground.spot="o"
    else
        wanted=wanted-1
]

; Four cells of sand would have a hole in the middle.
procedure breakUp
[
    for spot columns+2 cells
    [
        west=spot-1
        north=spot-columns
        corner=north-1
        if (west%columns>0)*(ground.spot=2)*(ground.west=2)*(ground.north=2)*(ground.corner=2)
            ground.spot=1
    ]
]

; One is drawn after the other from the same number, until the way to the treasure is not too easy.
easiest=10

procedure drawChart
[
    get world chartSeed chance
    if chance=0
    [
        RandomNumber 1 30000
        chance=RESULT
        set world chartSeed chance
    ]
    journey=0
    for journey<easiest
    [
        call scatter
        journey=away.homeCell
    ]
]

procedure scatter
[
    for k 1 cells
    [
        ground.k="o"
        deck.k=k
    ]
    call drawLot rows
    homeRow=lot
    call drawLot rows
    goldCell=lot*columns+1
    call drawLot 2
    homeColumn=lot*(columns-1)
    goldCell=goldCell+columns-1-homeColumn
    homeCell=homeRow*columns+homeColumn+1
    for k cells 2 -1
    [
        call drawLot k
        lot=lot+1
        spot=deck.lot
        deck.lot=deck.k
        deck.k=spot
    ]
    wanted=level\2+11
    if wanted>20
        wanted=20
    for k 1 cells
    [
        spot=deck.k
        if wanted*(spot#homeCell)*(spot#goldCell)
            call tryPeril
    ]
    call breakUp
    call search
]

; What is drawn becomes part of the table. Pictures by their number: 1 rock, 2 whirlpool, 3 to 5 woods, and six layers
; of islands from 6 on, each alone, on to the right, and downwards.
procedure dab picture
[
    set pen sequence picture
    play pen paint (k-1)%columns*52+28 (k-1)\columns*52+96
]

procedure paintChart
[
    pen=RAnimation 2340 28 96 0
    play pen paint 28 96
    pen=RAnimation 2342 28 96 0
    set pen visible 0
    for layer 6 21 3
        for k 1 cells
            if ground.k=2
            [
                call dab layer
                call look k 2
                if beside
                    if ground.beside=2
                        call dab layer+1
                call look k 1
                if beside
                    if ground.beside=2
                        call dab layer+2
            ]
    for k 1 cells
    [
        if ground.k=1
            call dab 1
        else if ground.k=3
            call dab 2
        else if ground.k=2
            call dab k%3+3
    ]
    drop pen
]

; ---- a chart is laid on the table. A map keeps its trails, so each chart is a new one.

procedure readChart
[
    terrain=perils.level
    for k 1 cells
        ground.k=terrain|k|1
    homeColumn=boatColumn.level
    homeRow=boatRow.level
    homeCell=homeRow*columns+homeColumn+1
    goldCell=goldRow.level*columns+goldColumn.level+1
]

procedure layChart
[
    get world chartLevel level
    set world currentLevel "OWS3" level-(level>4)*(level-4)
    sea=RMap 28 96 10
    set sea movable 0
    set sea cellsH columns
    set sea cellsV rows
    set sea cellSizeH 52
    set sea cellSizeV 52
    if level>charts
    [
        call drawChart
        call paintChart
        call rewrite number "Carta "+level 236
    ]
    else
    [
        call readChart
        set sea mapGraphicID 2300+level
        call rewrite number "Carta "+level+" de "+charts 236
    ]
    for i 0 3
        set sea directionGraphicID i 2310+i
    set sea moveDelay 320
    set sea startX homeColumn
    set sea startY homeRow
    set sea finishX (goldCell-1)%columns
    set sea finishY (goldCell-1)\columns
    set sea startGraphicID 2346
    terrain="o"
    for k 1 cells
        terrain=terrain+ground.k
    terrain=terrain|2
    play sea setTerrain terrain
    set sea finished arrive
    gold=RAnimation 2343 (goldCell-1)%columns*52-1 (goldCell-1)\columns*52+66 30
    set gold movable 0
    set gold touchy 0
    set gold soundSync 0
    call search
    misses=0
    planned=0
    call moor
    call layPlan
    sailing=0
]

; The parrot ends its sentence first.
procedure listenOn
    call whenSaid nextChart

procedure nextChart
[
    call layChart
    if level>(charts+1)
    [
        if level%2
            call tell "Uma carta nova! Aqui ainda ninguém navegou."
        else
            call tell "Mais uma carta! O vento é bom: vamos a isto!"
    ]
    else if level>charts
        call tell "Os três tesouros são teus! Agora há cartas novas, sem fim."
    else
        call tell "Outra carta! O tesouro está mais bem escondido."
]

; ---- back into the lighthouse

procedure goBack
[
    call stopSpeaking
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

call perch 2306 1 34 41 424

for i 1 longest
[
    arrow.i=RAnimation 2320 24*i 443 20
    set arrow.i visible 0
    set arrow.i movable 0
    set arrow.i tag i
    play arrow.i setAOCursor 1
    set arrow.i mouseDown shorten
]

pointer=RAnimation 2344 18 436 21
set pointer movable 0
set pointer touchy 0

; The boat begins at a place of its own, 0 0; it is moved from there.
ship=RAnimation 2341 0 0 15
set ship movable 0
set ship touchy 0
shipX=0
shipY=0
adrift=0
beat=RAnimationTrigger 25
set beat newFrame glideOn

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

call write "Limpar" 14 513 446 20
call write "Farol" 14 591 446 20
call write "" 14 236 412 20
number=writings

keys=RKbdInp 0
set keys keyPressed typed

get world chartLevel level
if level=0
    set world chartLevel 1
call layChart
call letSound 2000
call tell "Faz com as setas a rota do barco até ao tesouro!"

; ---- after the fanfare a new chart is laid

celebration=RQueue 1
play celebration add DelayAction 4000
set celebration finished listenOn

; ---- the music of the last scene still fades out

port=RScenePort 0
music=RQueue 1
play music add DelayAction 950
play music add VerbAction "port" 1 "startBackgroundMusic" 103 100 2
play music start
EndTransition 0
