; What is wrong in a puzzle, and help, included by puzzle.mps: wrong answers shake their heads, arrows show what belongs
; where, or what to take out and put in where numbers are added. The scripts of puzzles say in `judge` and `assist`
; which of this they use.

; ---- what is wrong: where answers lie, in inside.1 to inside.answers, which is 0 for those in no container, and for
; the one that is held

procedure locate
    for i 1 answers
    [
        inside.i=0
        get answer.i isUsed used
        if used*(held#i)=0
            continue
        for h 1 holders
        [
            IntersectTest "answer."+i "holder."+h
            if RESULT
                inside.i=h
        ]
    ]

; Those in containers that are not solved are wrong: so many, the first one in the first such container.
procedure judgeHolders
[
    call locate
    wrongs=0
    for h holders 1 -1
    [
        get holder.h isSolved good
        for i 1 answers
            if inside.i=h
            [
                wrong.i=good=0
                wrongs=wrong.i+wrongs
                if wrong.i
                [
                    wrongAnswer=i
                    wrongHolder=h
                ]
            ]
    ]
    for i 1 answers
        if inside.i=0
            wrong.i=0
]

; They shake their heads; `calm` ends it, and takes the arrows away.
sway=[6 -6 5 -5 3 -3 0

procedure shake
[
    shakes=1
    shaking=RQueue 1
    for i 1 answers
        get answer.i "x" rest.i
    for beat 1 7
    [
        for i 1 answers
            if wrong.i
                play shaking add PropertyAction "answer."+i "x" rest.i+sway.beat
        play shaking add DelayAction 80
    ]
    set shaking finished settled
    play shaking start
]

procedure settled
[
    shakes=0
    if (tries>1)*(busy=0)
        call assist
]

procedure calm
[
    call lookAway
    if shakes
    [
        shakes=0
        play shaking halt
        for i 1 answers
            if wrong.i
                set answer.i x rest.i
    ]
]

; ---- help

procedure pointAtAnswer i
[
    get answer.i "x" left
    get answer.i "y" top
    get answer.i width across
    call pointAt left+across\2 top
]

; What is wrong goes home, and arrows show one answer and its container. What the two are compared by is told.
procedure showPair by
[
    for i 1 answers
        if wrong.i
            play puzzle removeAnswerFromContainer "answer."+i "holder."+inside.i
    get holder.wrongHolder by goal
    for i 1 answers
    [
        get answer.i by is
        get answer.i isUsed used
        if (is=goal)*(used=0)
            shown=i
    ]
    call pointAtAnswer shown
    get holder.wrongHolder "x" left
    get holder.wrongHolder "y" top
    get holder.wrongHolder width across
    call pointAt left+across\2 top+30
]

; Of containers that add, `completes` finds the first one that is not solved, and answers that make up its sum, as
; many of those that are in it as can be: these have fits.1 to fits.answers. They are to be MANY, or any number with 0.
procedure complete many
[
    call locate
    for adding 1 holders
    [
        get holder.adding isSolved good
        if good=0
            break
    ]
    get holder.adding summed goal
    best=-1
    for choice 1 31
        call weighChoice many
]

procedure weighChoice many
[
    left=choice
    total=0
    chosen=0
    kept=0
    for i 1 answers
    [
        bit.i=left%2
        left=left\2
        if bit.i
        [
            get answer.i "value" size
            total=total+size
            chosen=chosen+1
            if inside.i=adding
                kept=kept+1
            else if inside.i
            [
                into=inside.i
                get holder.into isSolved good
                if good
                    total=1000
            ]
        ]
    ]
    if (total=goal)*((many=0)+(chosen=many)>0)*(kept>best)
    [
        best=kept
        for i 1 answers
            fits.i=bit.i
    ]
]

; An arrow shows what is to be taken out, and `takeOut` is 1, or else what is to be put in next.
procedure showPart
[
    shown=0
    takeOut=0
    for i answers 1 -1
        if fits.i*(inside.i#adding)*(held#i)
            shown=i
    for i 1 answers
        if (inside.i=adding)*(fits.i=0)
        [
            shown=i
            takeOut=1
        ]
    if shown
        call pointAtAnswer shown
]
