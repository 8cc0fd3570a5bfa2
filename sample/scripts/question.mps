; A question over the scene, answered with Yes or No: included by the scripts that ask, beside words.mps and voice.mps; who speaks stops. They have
;
;   paper            the picture of the question, in the colours of the scene; its buttons have the next two numbers
;   agree            what follows a Yes; `wanted` is what was asked for
;
; Its depth is 200. `asking` is 1 while it is there; keys are for `answerKey` then.

procedure ask what words
[
    wanted=what
    asking=1
    call stopSpeaking
    PlaySound 247
    question=RDialog paper 200
    play question addButton paper+1 1
    play question addButton paper+2 0
    set question buttonPressed answered
    writtenBefore=writings
    call write words 20 318 182 210
    call write "Sim" 14 258 271 210
    call write "Não" 14 379 271 210
]

procedure answer agreed
[
    asking=0
    drop question
    call unwrite writtenBefore
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
