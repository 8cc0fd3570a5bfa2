; A question over the scene, answered with Yes or No: included by the scripts that ask. They have
;
;   paper            the picture of the question, in the colours of the scene; its buttons have the next two numbers
;   agree            what follows a Yes; `wanted` is what was asked for
;
; Its depth is 200. `asking` is 1 while it is there; keys are for `answerKey` then.

procedure write words size middle top
[
    lines=lines+1
    line.lines=RText 0 top -1 -1 210
    set line.lines movable 0
    set line.lines touchy 0
    set line.lines colorIndex 4
    play line.lines setFont size
    set line.lines text words
    get line.lines textWidth wide
    set line.lines x middle-wide\2
]

procedure ask what words
[
    wanted=what
    asking=1
    PlaySound 247
    question=RDialog paper 200
    play question addButton paper+1 1
    play question addButton paper+2 0
    set question buttonPressed answered
    lines=0
    call write words 20 318 182
    call write "Sim" 14 258 271
    call write "Não" 14 379 271
]

procedure answer agreed
[
    asking=0
    drop question
    drop [ line
    PlaySound 212
    if agreed
        call agree
]

procedure answered
[
    get question selectedButton agreed
    call answer agreed
]

procedure answerKey what
[
    if what="Enter"
        call answer 1
    else if what="Esc"
        call answer 0
]

asking=0
