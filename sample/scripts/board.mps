; The board with the shadows: sea animals and tools are put on their shadows; at the last level the parts of
; a boat, where only what is drawn of a gap counts and not its rectangle.
yield off
StartTransition
Scene 105

activity="CWS1"
task.1="Arrasta cada animal para a sua sombra!"
task.2="Cada ferramenta tem o seu lugar. Qual é o de cada uma?"
task.3="Animais e ferramentas: onde fica cada um?"
task.4="Vamos montar um barco! Onde encaixa cada peça?"
task.5="Coisas novas, todas misturadas! Qual é a sombra de cada uma?"
renewed=0

; Things by the numbers of their pictures, less 2500; less 2550 those of their shadows, but the last ones, which are
; drawn for those who have mastered the board only, have theirs less 2650.
fish=1
seastar=2
whale=3
octopus=4
crab=5
turtle=6
jellyfish=7
hammer=8
saw=9
brush=10
spanner=11
anchor=12

whose.1="do peixe"
whose.2="da estrela"
whose.3="da baleia"
whose.4="do polvo"
whose.5="do caranguejo"
whose.6="da tartaruga"
whose.7="da medusa"
whose.8="do martelo"
whose.9="da serra"
whose.10="do pincel"
whose.11="da chave"
whose.12="da âncora"
whose.13="do Sol"
whose.14="da Lua"
whose.15="da boia"
whose.16="do barco"
whose.17="do farol"
whose.18="da concha"

; Where their pictures are.
graphic=[1 2 3 4 5 6 7 8 9 10 11 12 13 14 17 19 20 21

; ---- cards with shadows

procedure hang left top
[
    holders=holders+1
    holder.holders=RAttributeContainer 2421 left top 5
    set holder.holders movable 0
    cardX.holders=left
    cardY.holders=top
]

; Things are put onto the cards in their order.
procedure shadow entry thing
[
    at=at+1
    play puzzle setAnswer entry thing 2500+graphic.thing
    play puzzle setContainer entry thing
    play puzzle setPuzzleGraphic entry cardX.at+28 cardY.at+23 5 2550+graphic.thing+100*(thing>12)
]

procedure three entry a b c
[
    at=0
    call shadow entry a
    call shadow entry b
    call shadow entry c
]

procedure four entry a b c d
[
    call three entry a b c
    call shadow entry d
]

procedure six entry a b c d e f
[
    call four entry a b c d
    call shadow entry e
    call shadow entry f
]

procedure buildCards
[
    if level=1
    [
        for i 0 2
            call hang 26+146*i 160
    ]
    else if level=2
    [
        for i 0 1
            call hang 99+146*i 97
        for i 0 1
            call hang 99+146*i 219
    ]
    else
    [
        for i 0 2
            call hang 26+146*i 97
        for i 0 2
            call hang 26+146*i 219
    ]
    answers=holders
    for i 1 answers
    [
        call spread i answers 76
        answer.i=RGraphicAnswer -1 RESULT 392 10
    ]
    set puzzle lockCorrectAnswers 1
    if level=1
    [
        call three 1 fish seastar whale
        call three 2 octopus turtle crab
        call three 3 jellyfish whale turtle
        call three 4 crab fish seastar
    ]
    else if level=2
    [
        call four 1 hammer saw brush spanner
        call four 2 anchor spanner hammer brush
        call four 3 saw anchor brush hammer
    ]
    else if mastered
    [
        call draw 6 1 18
        call six 1 drawn.1 drawn.2 drawn.3 drawn.4 drawn.5 drawn.6
    ]
    else
    [
        call six 1 fish hammer whale saw crab anchor
        call six 2 octopus jellyfish brush spanner turtle seastar
        call six 3 turtle whale fish hammer spanner brush
    ]
]

; ---- the boat: its parts have the numbers of their pictures, the gaps are number 9 of each

procedure part gap left top homeLeft homeTop hotLeft hotTop
[
    holders=holders+1
    holder.holders=RAttributeContainer gap left top 6
    set holder.holders movable 0
    set holder.holders doPixelCompare 1
    set holder.holders anchorAnswerAtPoint 1
    set holder.holders answerAnchorPointX hotLeft
    set holder.holders answerAnchorPointY hotTop
    answers=holders
    answer.answers=RGraphicAnswer -1 homeLeft homeTop 10
    set answer.answers isUsingHotPoint 1
    set answer.answers hotPointX hotLeft
    set answer.answers hotPointY hotTop
]

procedure boat entry
[
    for i 0 3
    [
        play puzzle setAnswer entry i 2600+(10*i)+entry
        play puzzle setContainer entry i
    ]
    play puzzle setPuzzleGraphic entry 239 108 5 2650
]

procedure buildBoat
[
    scrambles=0
    set puzzle rejectIncorrectAnswers 1
    set puzzle lockCorrectAnswers 1
    call part 2609 134 284 112 414 105 28
    call part 2619 242 156 14 356 30 70
    call part 2629 166 176 330 374 48 66
    call part 2639 242 106 412 424 22 15
    for k 1 3
        call boat k
]

procedure build
[
    if (level=4)*(mastered=0)
        call buildBoat
    else
        call buildCards
]

; Things bring no texts.
procedure dress
[
]

; Two that are wrong have been swapped.
procedure judge
[
    call judgeHolders
    get answer.wrongAnswer "attribute" thing
    hint="Essa sombra não é "+whose.thing+"."
    if wrongs=2
    [
        get holder.wrongHolder "attribute" other
        hint="Trocaste o lugar "+whose.other+" e "+whose.thing+"."
    ]
]

procedure assist
[
    call showPair "attribute"
    call tell "Vê as setas! De quem é esta sombra?"
]

include puzzle.mps
call open
EndTransition 0
