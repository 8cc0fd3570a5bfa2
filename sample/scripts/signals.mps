; The signal line: flags with letters make the word for what is in the picture. At the last level there is a
; letter that is not needed.
yield off
StartTransition
Scene 108 105

activity="CWS4"
hint="Ainda não é essa a palavra. Muda as letras!"
task.1="O que está no quadro? Escreve com as bandeiras!"
task.2="Agora são quatro letras. Que palavra é?"
task.3="Cinco letras! Consegues escrever a palavra?"
task.4="Cuidado: há uma letra a mais!"

letters.1=3
letters.2=4
letters.3=5
letters.4=6

; Pictures by their numbers, less 2500.
fish=1
whale=3
octopus=4
crab=5
turtle=6
hammer=8
saw=9
brush=10
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

procedure write entry word picture
[
    for k 1 ~word
        play puzzle setAnswer entry word|k|1 word|k|1
    play puzzle setContainer entry word
    play puzzle setPuzzleGraphic entry 198 99 6 2500+picture
]

; With a letter that is not needed.
procedure writeMore entry word picture letter
[
    call write entry word picture
    ; texts skip
    play puzzle setAnswer entry letter letter
]

; A word of each language has as many letters as its level wants, so that the words are no translations.

procedure portuguese
[
    if level=1
    [
        call write 1 "SOL" sun
        call write 2 "LUA" moon
        call write 3 "MAR" sea
    ]
    else if level=2
    [
        call write 1 "VELA" sail
        call write 2 "BOIA" buoy
        call write 3 "ONDA" wave
    ]
    else if level=3
    [
        call write 1 "PEIXE" fish
        call write 2 "POLVO" octopus
        call write 3 "BARCO" boat
        call write 4 "FAROL" lighthouse
    ]
    else
    [
        call writeMore 1 "BALEIA" whale "M"
        call writeMore 2 "PINCEL" brush "A"
        call writeMore 3 "CONCHA" shell "T"
    ]
]

procedure english
[
    if level=1
    [
        call write 1 "SUN" sun
        call write 2 "SEA" sea
        call write 3 "SAW" saw
    ]
    else if level=2
    [
        call write 1 "SAIL" sail
        call write 2 "BUOY" buoy
        call write 3 "CRAB" crab
    ]
    else if level=3
    [
        call write 1 "SHELL" shell
        call write 2 "WHALE" whale
        call write 3 "BRUSH" brush
    ]
    else
    [
        call writeMore 1 "ANCHOR" anchor "T"
        call writeMore 2 "TURTLE" turtle "S"
        call writeMore 3 "HAMMER" hammer "I"
    ]
]

procedure build
[
    holders=1
    holder.1=RHorizontalContainer 2430+letters.level 236-26*letters.level 204 5
    set holder.1 movable 0
    set holder.1 slideSound 244
    set holder.1 deltaZ 5
    answers=letters.level
    if level=4
        answers=answers+1
    for i 1 answers
    [
        call spread i answers 52
        answer.i=RGraphicTextAnswer 2461+(i-1)%4 RESULT 374 10
        set answer.i textColorIndex 4
        set answer.i textOffsetY 23
        play answer.i setFont 28
    ]
    GetLanguage
    if RESULT="en"
        call english
    else
        call portuguese
]

procedure dress
    call centre 26

include puzzle.mps
call open
EndTransition 0
