; The signal line: flags with letters make the word for what is in the picture. At the last level there is a
; letter that is not needed.
yield off
StartTransition
Scene 108 105

activity="CWS4"
task.1="O que está no quadro? Escreve com as bandeiras!"
task.2="Agora são quatro letras. Que palavra é?"
task.3="Cinco letras! Consegues escrever a palavra?"
task.4="Cuidado: há uma letra a mais!"
task.5="Palavras novas, e duas letras a mais!"
renewed=1

; Pictures by their numbers, less 2500.
fish=1
whale=3
octopus=4
crab=5
turtle=6
star=2
hammer=8
saw=9
brush=10
spanner=11
anchor=12
sun=13
moon=14
sea=15
sail=16
buoy=17
wave=18
boat=19
lighthouse=20
shell=21

; Words, their pictures, and letters that are not needed.
procedure offer word picture letter
[
    offers=offers+1
    word.offers=word
    picture.offers=picture
    extra.offers=letter
]

; A word of each language has as many letters as its level wants, so that the words are no translations.

procedure portuguese
[
    if level=1
    [
        call offer "SOL" sun ""
        call offer "LUA" moon ""
        call offer "MAR" sea ""
    ]
    else if level=2
    [
        call offer "VELA" sail ""
        call offer "BOIA" buoy ""
        call offer "ONDA" wave ""
    ]
    else if level=3
    [
        call offer "PEIXE" fish ""
        call offer "POLVO" octopus ""
        call offer "BARCO" boat ""
        call offer "FAROL" lighthouse ""
    ]
    else
    [
        ; texts skip
        call offer "BALEIA" whale "M"
        ; texts skip
        call offer "PINCEL" brush "A"
        ; texts skip
        call offer "CONCHA" shell "T"
    ]
    if mastered
    [
        call offer "PEIXE" fish ""
        call offer "POLVO" octopus ""
        call offer "BARCO" boat ""
        call offer "FAROL" lighthouse ""
        call offer "CHAVE" spanner ""
        call offer "SERRA" saw ""
        call offer "VELA" sail ""
        call offer "BOIA" buoy ""
        call offer "ONDA" wave ""
    ]
]

procedure english
[
    if level=1
    [
        call offer "SUN" sun ""
        call offer "SEA" sea ""
        call offer "SAW" saw ""
    ]
    else if level=2
    [
        call offer "SAIL" sail ""
        call offer "BUOY" buoy ""
        call offer "CRAB" crab ""
    ]
    else if level=3
    [
        call offer "SHELL" shell ""
        call offer "WHALE" whale ""
        call offer "BRUSH" brush ""
    ]
    else
    [
        ; texts skip
        call offer "ANCHOR" anchor "T"
        ; texts skip
        call offer "TURTLE" turtle "S"
        ; texts skip
        call offer "HAMMER" hammer "I"
    ]
    if mastered
    [
        call offer "SHELL" shell ""
        call offer "WHALE" whale ""
        call offer "BRUSH" brush ""
        call offer "SAIL" sail ""
        call offer "BUOY" buoy ""
        call offer "CRAB" crab ""
        call offer "FISH" fish ""
        call offer "STAR" star ""
        call offer "MOON" moon ""
        call offer "BOAT" boat ""
        call offer "WAVE" wave ""
    ]
]

; Another word than the last time.
current=0

procedure choose
[
    offers=0
    GetLanguage
    if RESULT="en"
        call english
    else
        call portuguese
    RandomNumber 1 offers current
    current=RESULT
    wanted=word.current
    surplus=extra.current
    if mastered
        call addLetters
]

; Two letters that are not in the word.
procedure addLetters
[
    alphabet="AEIOLMNRSTBC"
    surplus=""
    for (~surplus)<2
    [
        RandomNumber 1 12
        letter=alphabet|RESULT|1
        if (letter@wanted)+(letter@surplus)=0
            surplus=surplus+letter
    ]
]

procedure build
[
    call choose
    letters=~wanted
    lineLeft=236-26*letters
    holders=1
    holder.1=RHorizontalContainer 2430+letters lineLeft 204 5
    set holder.1 movable 0
    set holder.1 slideSound 244
    set holder.1 deltaZ 5
    play puzzle setContainer 1 wanted
    play puzzle setPuzzleGraphic 1 198 99 6 2500+picture.current
    flags=wanted+surplus
    answers=~flags
    for i 1 answers
    [
        call spread i answers 52
        answer.i=RGraphicTextAnswer 2461+(i-1)%4 RESULT 374 10
        set answer.i textColorIndex 4
        set answer.i textOffsetY 23
        play answer.i setFont 28
        ; texts skip
        play puzzle setAnswer 1 flags|i|1 flags|i|1
    ]
]

; Letters in their places are right; the first other place is missed.
procedure judge
[
    for k letters 1 -1
        isRight.k=0
    for i 1 answers
    [
        wrong.i=0
        get answer.i isUsed used
        if used
        [
            get answer.i "x" left
            get answer.i "attribute" letter
            at=(left+26-lineLeft)\52+1
            isRight.at=(wanted|at|1)=letter
            wrong.i=isRight.at=0
        ]
    ]
    for k letters 1 -1
        if isRight.k=0
            missed=k
    hint="A letra "+missed+" é outra."
]

procedure assist
[
    letter=wanted|missed|1
    for i 1 answers
    [
        get answer.i "attribute" is
        get answer.i isUsed used
        if (is=letter)*(wrong.i+(used=0)>0)
            shown=i
    ]
    call pointAtAnswer shown
    call pointAt lineLeft+52*missed-26 216
    call tell "A letra "+missed+" é esta: "+letter+"!"
]

procedure dress
    call centre 26

include puzzle.mps
call open
EndTransition 0
