; The raft: crates that are nailed together by fives, in twelve shapes, are to cover it without a gap. The mirror
; and the windlass flip and turn those that are carried over them. Who manages it wins a fish.
yield off
StartTransition
Scene 111 105

activity="OWS2"
task.1="Enche a jangada! Os caixotes viram na roda do leme."
task.2="Vira os caixotes na roda do leme, até caberem todos!"
task.3="O espelho também ajuda: troca a esquerda e a direita."
task.4="Todos os doze! Cabem na jangada grande?"

; How large the raft is at each level, in crates.
columns=[5 6 8 10
rows=[4 5 5 6

; How the pieces lie when they are brought: upright, since there is not much room.
upright=[0 0 0 0 0 0 0 0 1 1 0 1

include game.mps

procedure bring piece view
[
    many=many+1
    brought.many=piece
    set board pieceGraphicID piece 2720+piece
    set board pieceView piece view
]

procedure four a b c d
[
    call bring a upright.a
    call bring b upright.b
    call bring c upright.c
    call bring d upright.d
]

procedure six a b c d e f
[
    call four a b c d
    call bring e upright.e
    call bring f upright.f
]

; At the first level they lie as they fit, but for one, which is to be turned.
procedure easy which
[
    if which=1
    [
        call bring 4 0
        call bring 9 6
        call bring 1 3
        call bring 5 0
    ]
    else if which=2
    [
        call bring 5 1
        call bring 11 0
        call bring 9 1
        call bring 1 0
    ]
    else
    [
        call bring 6 2
        call bring 5 7
        call bring 9 2
        call bring 11 1
    ]
]

procedure middling which
[
    if which=1
        call six 11 8 1 4 6 10
    else if which=2
        call six 6 3 10 9 5 7
    else
        call six 1 8 11 10 9 12
]

procedure hard which
[
    if which=1
    [
        call four 9 10 3 2
        call four 11 7 8 1
    ]
    else if which=2
    [
        call four 6 12 9 7
        call four 10 2 11 4
    ]
    else
    [
        call four 7 8 11 3
        call four 12 6 4 10
    ]
]

procedure all
[
    call six 1 2 3 4 5 6
    call six 9 12 11 7 8 10
]

; Up to six stand side by side on the quay, more in two rows; the longest fit into the lower one.
procedure unload
[
    across=many
    if many>6
        across=(many+1)\2
    for k 1 many
    [
        spot=(k-1)%across
        foot=420
        if many>6
            foot=350+(k>across)*126
        play board setPieceHomeBox brought.k 8+(spot*456\across) 244 8+((spot+1)*456\across) foot
    ]
]

procedure layOut
[
    drop board
    call showLevel
    board=RPentominoGame 236-(columns.level*12) 154-(rows.level*12) 10
    set board cellWidth 24
    set board cellHeight 24
    set board cellsH columns.level
    set board cellsV rows.level
    set board solutionBoxGraphicID 2712
    set board rotaterGraphicID 2713
    set board flipperGraphicID 2714
    for k 1 rows.level
        play board setSolutionString k "XXXXXXXXXX"|1|columns.level
    set board piecePickedUpSoundID 241
    set board pieceSnappedSoundID 242
    set board pieceGoHomeSoundID 243
    set board pieceRotatedSoundID 251
    set board pieceFlippedSoundID 252
    set board pieceSpotAOCursorID 1
    set board pieceGrabAOCursorID 1
    many=0
    RandomNumber 1 3
    if level=1
        call easy RESULT
    else if level=2
        call middling RESULT
    else if level=3
        call hard RESULT
    else
        call all
    call unload
    set board piecePickedUp begin
    set board solved cheer
    call tell task.level
    begun=0
    busy=0
]

procedure begin
    begun=1

procedure cheer
[
    begun=0
    for k 1 many
        set board pieceIsAnchored brought.k 1
    call award fishPrize
    if RESULT
        call rejoice " Ganhaste um peixe. Está na mala, no porto."
    else
        call rejoice ""
]

call furnish
call layOut
EndTransition 0
