; The torn sail: patches are sewn onto it until just the tears are covered. A patch is as long as its number
; says; it goes to the first free place that is long enough. At the last level the whole sail is torn.
yield off
StartTransition
Scene 109 105

activity="OWS4"
task.1="A vela está rasgada! Põe remendos em todos os rasgões."
task.2="Mais rasgões! Que remendos, juntos, os tapam todos?"
task.3="Escolhe bem os remendos: nem a mais, nem a menos!"
task.4="A vela toda está rasgada! Que remendos lhe servem?"
task.5="Outra vela rasgada! Que remendos lhe servem?"
renewed=0
summed="correctSegments"

; How long a segment of the sail is, and where the first one begins.
segment=36
sailLeft=57
sailTop=124

; As many tears as are wanted, from the left; the patches that there are.
procedure tear entry many
[
    play puzzle setContainer entry many
    for k 1 many
        play puzzle setPuzzleGraphic entry sailLeft+(k-1)*segment sailTop+30 5 2428
]

procedure patch entry size
    play puzzle setAnswer entry size size

procedure three entry many a b c
[
    call tear entry many
    call patch entry a
    call patch entry b
    call patch entry c
]

procedure four entry many a b c d
[
    call three entry many a b c
    call patch entry d
]

procedure five entry many a b c d e
[
    call four entry many a b c d
    call patch entry e
]

; For who has mastered it: another number of tears each time, which patches of all four sizes can always cover.
tears=0

procedure compose
[
    RandomNumber 5 10 tears
    tears=RESULT
    RandomNumber 1 2
    call five 1 tears 1 2 3 4 RESULT
]

procedure build
[
    holders=1
    holder.1=RFabricContainer 2427 sailLeft sailTop 5
    set holder.1 movable 0
    set holder.1 infoAOID 2429
    set holder.1 infoVerticalOffset 4
    set holder.1 answerPlaced sew
    answers=2+level
    if level=4
        answers=4+mastered
    for i 1 answers
    [
        answer.i=RGraphicTextAnswer -1 12 380 10
        set answer.i textColorIndex 4
        set answer.i textOffsetY 33
        play answer.i setFont 28
    ]
    if level=1
    [
        call three 1 3 1 2 2
        call three 2 4 3 1 2
        call three 3 5 3 2 4
    ]
    else if level=2
    [
        call four 1 6 1 2 3 4
        call four 2 7 4 2 3 1
        call four 3 5 3 1 4 2
    ]
    else if level=3
    [
        call five 1 8 1 2 3 4 2
        call five 2 9 2 3 4 1 1
        call five 3 7 3 1 2 3 2
    ]
    else if mastered
        call compose
    else
    [
        call four 1 10 4 3 2 3
        call four 2 10 2 4 1 4
        call four 3 10 1 4 3 2
    ]
]

; ---- patches get their pictures when their sizes are known, and lie side by side

procedure dress
[
    set holder.1 answerRemoved closeUp
    tooMuch=0
    all=0
    for i 1 answers
    [
        get answer.i "value" size
        set answer.i graphicID 2480+size
        all=all+size
    ]
    gap=(450-(all*segment))\(answers+1)
    at=12+gap
    for i 1 answers
    [
        get answer.i "value" size
        set answer.i homeX at
        at=at+(size*segment)+gap
        set ruler text size
        get ruler textWidth wide
        set answer.i textOffsetX (size*segment)\2-(wide\2)
    ]
]

; ---- too much is told at once; the sail shows its first picture while it is bare

procedure measure
[
    get holder.1 frame covered
    get holder.1 correctSegments wanted
    much=covered-1>wanted
    tries=much*(tooMuch=0)+tries
    takeOut=0
    helping=(tries>1)*(covered-1#wanted)
    if helping
        call assist
    if much
        call tell "Assim tapas pano que está bom. Tira um remendo!"
    else if takeOut
        call tell "Tira o remendo da seta!"
    else if helping
        call tell "Já tapaste "+(covered-1)+". Quanto falta para "+wanted+"?"
    else if tooMuch
        call tellTask
    tooMuch=much
]

; What is left on the sail moves up to the left when a patch is taken off, so that no tear stays open between
; patches: each is taken off and sewn on again, silently, while the sail is deaf.
procedure closeUp
[
    for i 1 answers
    [
        sewnAt.i=-1
        get answer.i isUsed used
        if used*(held#i)
        [
            get answer.i "x" left
            sewnAt.i=(left+9-sailLeft)\segment
        ]
    ]
    call silence -1 -1
    set holder.1 answerRemoved
    set holder.1 answerPlaced
    for k 0 9
        for i 1 answers
            if sewnAt.i=k
            [
                play puzzle removeAnswerFromContainer "answer."+i "holder.1"
                play puzzle addAnswerToContainer "answer."+i "holder.1"
            ]
    set holder.1 answerRemoved closeUp
    set holder.1 answerPlaced sew
    call silence 242 243
    call measure
]

procedure silence snap goHome
    for i 1 answers
    [
        set answer.i snapSound snap
        set answer.i goHomeSound goHome
    ]

procedure sew
[
    held=0
    call measure
]

procedure judge
[
    call judgeHolders
    get holder.1 frame covered
    get holder.1 correctSegments wanted
    if covered-1>wanted
        hint="Há remendos a mais. Tira um!"
    else
        hint="Ainda faltam rasgões: "+(wanted-covered+1)+"."
]

; Who was wrong twice is helped with each patch.
procedure assist
[
    call lookAway
    call complete 0
    call showPart
]

include puzzle.mps
call open
EndTransition 0
