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
; and calls `open` at its end. While nothing happens for a while the parrot says again what there is to do. Depths: containers 5, answers 10, one that is dragged 60.
include desk.mps
include hints.mps

; ---- answers: they have the sounds that are set before they are made

SetAnswerPickUpSound 241
SetAnswerSnapSound 242
SetAnswerGoHomeSound 243

procedure lift
[
    idle 40 remind
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

; Only as long as the parrot has not said anything better. A timer's handler is spread over several passes of the program,
; so it keeps other events out until it is done.
procedure remind
[
    suspend
    if (busy=0)*(tries=0)
        call tellTask
    resume
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
    idle 40 remind
]
