; The raft: crates that are nailed together by fives, in twelve shapes, are to cover it without a gap. The mirror
; and the windlass flip and turn those that are carried over them. Who manages it wins a fish.
yield off
StartTransition
Scene 111 105

activity="OWS2"
task.1="Enche a jangada! Leva os caixotes à roda do leme: ela vira-os."
task.2="Vira os caixotes na roda do leme até caberem todos!"
task.3="O espelho também ajuda: troca a esquerda e a direita."
task.4="Todos os doze! Cabem na jangada grande?"
task.5="Uma jangada nova! Que caixotes cabem onde?"

; The rafts of each level, and those for who has mastered the last one. A plan has the columns and rows of the raft, and
; for each piece its letter, its view, its column and its row, as they fit.
plans=[3 3 3 1 7
plan.1.1="0504E001D130A300I612"
plan.1.2="0504G320J400I201L003"
plan.1.3="0504E600D331A102K110"
plan.2.1="0605J540K601H412D420A133F100"
plan.2.2="0605J740C320F100I501E212G032"
plan.2.3="0605I011K241L010A103H022J100"
plan.3.1="0805B001H140J623I203C252K260G230A300"
plan.3.2="0805K100I033F002B030L014D250J401G352"
plan.3.3="0805K461H511C350F130G101L004D243J600"
plan.4.1="1006G320A062K724E100C111B042L101F170H113I664D050J581"
plan.5.1="0705A302D552L010H140C232K303I200"
plan.5.2="0706G340H530I301D032F303E243C223A010"
plan.5.3="0806K460H513I244F352D601L000G103J030"
plan.5.4="0905I771G101J620H000L004B042K550A062E121"
plan.5.5="0806E300D520F113L171G043J102A050H133K040"
plan.5.6="1005K160A021C351E101G102D073I633J740F271L000"
plan.5.7="1006L020H470E250J024G071D274I502C321F353B000A113"

; Where rafts have no cells, by columns and rows.
gaps.5.1=""
gaps.5.2="0065"
gaps.5.3="2232233342435253"
gaps.5.4=""
gaps.5.5="007005"
gaps.5.6=""
gaps.5.7="4252435300"

; The sizes of the pieces in cells as they lie in view 0; those that are brought upright then are turned.
breadths="233333334425"
lengths="323233332241"
turned="100000000010"

include game.mps

; ---- the plan

procedure readPlan
[
    kind=level+mastered
    RandomNumber 1 plans.kind which
    which=RESULT
    plan=plan.kind.which
    columns=plan|1|2
    rows=plan|3|2
    many=(~plan-4)\4
    for k 1 many
    [
        at=4*k+1
        piece.k=(plan|at|1)@"ABCDEFGHIJKL"
        fits.k=plan|(at+1)|1
        column.k=plan|(at+2)|1
        row.k=plan|(at+3)|1
    ]
]

; Small rafts are drawn larger, and their pieces.
procedure scale
[
    cell=24
    crateArt=2720
    gapArt=2712
    if (columns<9)*(rows<6)
    [
        cell=30
        crateArt=2740
        gapArt=2740
    ]
    if rows=4
    [
        cell=36
        crateArt=2760
        gapArt=2760
    ]
]

procedure hasCell column row
[
    RESULT=1
    missing=""
    if kind=5
        missing=gaps.kind.which
    if ~missing
    [
        for k 1 ~missing 2
            if (missing|k|1=column)*(missing|(k+1)|1=row)
            [
                RESULT=0
                break
            ]
    ]
]

; A letter in front has the rest added as text: what begins with a hyphen is a number.
procedure outline
    for row 0 rows-1
    [
        cells="r"
        for column 0 columns-1
        [
            call hasCell column row
            if RESULT
                cells=cells+"X"
            else
                cells=cells+"-"
        ]
        cells=cells|2
        play board setSolutionString row+1 cells
    ]

; ---- the pieces

; At the first level all lie as they fit but the first one, which the windlass has to turn once. Mirrored views turn
; the other way round.
procedure bring k
[
    piece=piece.k
    view=turned|piece|1
    if kind=1
        view=(fits.k\4)*4+((fits.k+(k=1)*(3-2*(fits.k>3)))%4)
    set board pieceGraphicID piece crateArt+piece
    set board pieceView piece view
    breadth.k=breadths|piece|1
    length.k=lengths|piece|1
    if view%2
    [
        breadth.k=lengths|piece|1
        length.k=breadths|piece|1
    ]
]

; They stand on the quay in two or three rows, as far from each other as there is room.
procedure unload
[
    across=(many+1)\2
    lines=2
    if many>8
    [
        across=(many+2)\3
        lines=3
    ]
    high=0
    for line 1 lines
    [
        call measure line
        high=high+longest
    ]
    foot=257
    gapY=(220-high*cell)\(lines+1)
    for line 1 lines
    [
        call measure line
        foot=foot+(longest*cell)+gapY
        gapX=(466-broad*cell)\(inLine+1)
        at=4+gapX
        for k 1 many
            if (k-1)\across+1=line
            [
                play board setPieceHomeBox piece.k at 244 at+breadth.k*cell foot
                at=at+(breadth.k*cell)+gapX
            ]
    ]
]

procedure measure line
[
    inLine=0
    broad=0
    longest=0
    for k 1 many
        if (k-1)\across+1=line
        [
            inLine=inLine+1
            broad=broad+breadth.k
            if length.k>longest
                longest=length.k
        ]
]

; Who has failed twice finds pieces in their places, one more each time.
procedure help
[
    helped=tries-1
    if helped>(many-2)
        helped=many-2
    for k 1 helped
    [
        set board pieceView piece.k fits.k
        play board setPieceCellXY piece.k column.k row.k
        set board pieceIsAnchored piece.k 1
    ]
]

procedure layOut
[
    drop board
    call showLevel
    call readPlan
    call scale
    board=RPentominoGame 236-columns*cell\2 161-rows*cell\2 10
    set board cellWidth cell
    set board cellHeight cell
    set board cellsH columns
    set board cellsV rows
    set board solutionBoxGraphicID gapArt
    set board rotaterGraphicID 2713
    set board flipperGraphicID 2714
    call outline
    set board piecePickedUpSoundID 241
    set board pieceSnappedSoundID 242
    set board pieceGoHomeSoundID 243
    set board pieceRotatedSoundID 251
    set board pieceFlippedSoundID 252
    set board pieceSpotAOCursorID 1
    set board pieceGrabAOCursorID 1
    for k 1 many
        call bring k
    call unload
    if tries>1
        call help
    set board piecePickedUp begin
    set board solved cheer
    call tellHelp
    begun=0
    busy=0
]

procedure begin
    begun=1

procedure cheer
[
    begun=0
    tries=0
    for k 1 many
        set board pieceIsAnchored piece.k 1
    call award fishPrize
    if RESULT
        ; texts take
        call rejoice " Ganhaste um peixe. Está na mala, no porto."
    else
        call rejoiceOnly
]

which=0
call furnish
call layOut
EndTransition 0
