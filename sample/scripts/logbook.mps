; Tilli's logbook at the harbour, included by its script: how far the player has come in each game of the
; workshop, where they have been, and whether there is music. What lies where is told in progress.map; here are
; the words. A click on a place that is known leads there.

procedure note words size middle top
    call write words size middle top 110

; From its left side.
procedure jot words size left top
[
    call note words size 0 top
    set writing.writings x left
]

procedure openLog
[
    PlaySound 253
    call stowBag
    call rollUp
    call hush
    logOpen=1
    log=RLapTrap CHUB -1 100
    set log locationSelected choose
    set log closed closeLog
    writtenBefore=writings
    call note "Porto" 14 117 194
    call note "Farol" 14 237 194
    call note "Cartas" 14 117 310
    call note "Oficina" 14 237 310
    call note "Música" 14 104 374
    call jot "Níveis" 20 338 56
    for i 1 4
        call note i 14 392+34*i 60
    for i 1 games
        call jot game.i 14 338 61+40*i
    call jot "A Tilli escolhe o nível." 14 378 383
    call note "" 14 178 336
    hint=writings
]

procedure shutLog
[
    drop log
    if logOpen
        call unwrite writtenBefore
    logOpen=0
]

procedure closeLog
[
    PlaySound 253
    call shutLog
]

; A click on the harbour, where the player is, closes the book.
procedure choose
[
    get log selectedLocationName goal
    get world visitedCount goal visits
    if goal="CHUB"
        call closeLog
    else if visits
    [
        if goal="CBA1"
            call leave "lighthouse.mps"
        else if goal="CBA2"
            call leave "map.mps"
        else
            call leave "workshop.mps"
    ]
    else
    [
        PlaySound 212
        call rewrite hint "Aí ainda não estiveste!" 178
    ]
]

games=7
game.1="Sombras"
game.2="Peixes"
game.3="Carga"
game.4="Sinais"
game.5="Vela"
game.6="Boias"
game.7="Caixotes"

log=0
logOpen=0
logbook=RAnimation 2033 22
set logbook movable 0
play logbook setAOCursor 1
set logbook mouseDown openLog
set logbook flyOn lightUp
set logbook flyOff dim
