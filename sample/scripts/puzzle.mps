; What all puzzles have in common, included by their scripts. The script of a puzzle has
;
;   activity         its location in the world's memory, which counts answers and knows the level
;   build            makes answer.1 to answer.answers and holder.1 to holder.holders, and fills the data
;                    set of puzzle for the level
;   dress            what there is to do when the puzzle has been filled, as putting texts in the middle
;   task.1 to 5      what the parrot says when a puzzle of that level begins
;   judge            tells which answers are wrong, in wrong.1 to wrong.answers, and in hint what the parrot says
;   assist           helps who was wrong twice
;   renewed          1: there is one data set only, so each puzzle is laid out anew
;
; and calls `open` at its end. Depths: containers 5, answers 10, one that is dragged 60.
include desk.mps

; ---- answers: they have the sounds that are set before they are made

SetAnswerPickUpSound 241
SetAnswerSnapSound 242
SetAnswerGoHomeSound 243

procedure lift
[
    call calm
    get RECEIVER tag held
    set RECEIVER z 60
]

; Only containers that set a depth of their own change it afterwards.
procedure lower
[
    set RECEIVER z 10
]

procedure prepare
[
    for i 1 answers
    [
        play answer.i setAOCursor 1
        set answer.i tag i
        set answer.i pickedUp lift
        set answer.i dropped lower
        play puzzle addAnswer "answer."+i
    ]
    for i 1 holders
        play puzzle addContainer "holder."+i
    set puzzle scrambleAnswers scrambles
    set puzzle puzzleSolved cheer
    set puzzle puzzleWrong consider
]

; The answers, N of them, lie side by side: where the one with that number begins.
procedure spread k n breadth
    RESULT=12+(450*(k-1)+225)\n-breadth\2

; Texts of answers are put in their middle.
procedure centre middle
[
    for i 1 answers
    [
        get answer.i text what
        set ruler text what
        get ruler textWidth wide
        set answer.i textOffsetX middle-wide\2
    ]
]

; ---- what is wrong: where answers lie, in inside.1 to inside.answers, which is 0 for those in no container, and for
; the one that is held

procedure locate
    for i 1 answers
    [
        inside.i=0
        get answer.i isUsed used
        if used*(held#i)
        [
            for h 1 holders
            [
                IntersectTest "answer."+i "holder."+h
                if RESULT
                    inside.i=h
            ]
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
    for filled holders 1 -1
    [
        get holder.filled isSolved good
        if good=0
            adding=filled
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
                get holder.(inside.i) isSolved good
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

; ---- the course of things

; Containers that tell what is taken out of them are deaf while all of it is taken out at once.
procedure settle
[
    call calm
    tries=0
    held=0
    if holders
    [
        for i 1 holders
            set holder.i answerRemoved
    ]
]

; A level is laid out anew. What was there goes: the puzzle first, since it listens to the rest.
procedure layOut
[
    call settle
    drop puzzle
    drop [ answer
    drop [ holder
    call showLevel
    puzzle=RPuzzle 0
    play puzzle setPuzzleTextFont 28 0 "" 4
    answers=0
    holders=0
    scrambles=1
    call build
    call prepare
    call begin
]

; Where the answers go home all at once they are not heard.
procedure hush how
[
    for i 1 answers
        set answer.i goHomeSound how
]

procedure begin
[
    call settle
    call hush -1
    play puzzle reset
    play puzzle unanchorAnswers
    call hush 243
    play puzzle start
    call dress
    call tellTask
    busy=0
]

procedure goOn
[
    get world currentLevel activity reached
    if (reached=level)*(mastered=0)*(renewed=0)
        call begin
    else
        call layOut
]

procedure cheer
[
    if busy=0
    [
        busy=1
        call calm
        play puzzle anchorAnswers
        call rejoiceOnly
    ]
]

procedure consider
[
    if busy=0
    [
        tries=tries+1
        held=0
        call judge
        call regret hint
        if easier
            play puzzle anchorAnswers
        call shake
    ]
]

; ---- the buttons

procedure once
[
    if busy=0
    [
        PlaySound 212
        call goOn
    ]
]

procedure leave
[
    call goBack
]

procedure typed
[
    get RECEIVER key what
    if what="Esc"
        call leave
]

procedure open
[
    call furnish
    ruler=RText 0 0 -1 -1 -1
    set ruler visible 0
    play ruler setFont 28
    holders=0
    shakes=0
    call layOut
]
