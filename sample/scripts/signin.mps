; The guest book on the harbour master's desk: who is playing? A name is picked in the list, or typed;
; with Enter, the green button or a double click it is signed, and the harbour greets by it.
;
; Who has signed is a player, kept in the world's memory from one run of the game to the next. players.mps has
; set it up. Who played last is highlighted at first. A flag begins this scene anew in its language; the door leaves
; the game.
;
; The parrot says how things stand, and what cannot be done.
yield off

world=RWorldPort 0

; The harbour, which leads back to here, has none.
SetDoubleClicksEnabled 1
StartTransition
Scene 102
paper=2220
include words.mps
include question.mps
include parrot.mps

; ---- what the parrot says

procedure tellTask
    call tell "Escreve o teu nome, ou escolhe-o no livro!"

; What addChar answers when it does not take a character, by its codes.
refusal.1="N„o cabe nem mais uma letra!"
refusal.2="Um nome comeÁa por uma letra."
refusal.3="SÛ um espaÁo de cada vez!"
refusal.4="O livro est· cheio. Apaga primeiro um nome."

; ---- the buttons: 1 up, 2 down, 3 new name, 4 take out, 5 sign

procedure dress which can
[
    set button.which enabled can
    if can#lit.which
    [
        lit.which=can
        set button.which sequence 2-can
    ]
]

; Looks at the list again: who is highlighted, and what can be done.
procedure look
[
    get players currentEntry who
    get players entryIsNew fresh
    get players entryIsValid valid
    get players listIsFull full
    get players canMoveHighlightUp can
    call dress 1 can
    get players canMoveHighlightDown can
    call dress 2 can
    call dress 3 (full+fresh)=0
    call dress 4 (~who>0)+fresh>0
    call dress 5 valid
]

; After every change of the list.
procedure describe
[
    asked=""
    call look
    if fresh
    [
        if valid
            call tell "Um nome novo: "+who
        else if ~who=0
            call tell "Escreve o teu nome!"
        else
            call tell who+" j· est· no livro."
    ]
    else if ~who=0
        call tell "O livro est· vazio. Escreve o teu nome!"
    else
        call tell "…s tu, "+who+"?"
]

; A dimmed button was clicked.
procedure whyNot
[
    get RECEIVER enabled can
    if can=0
    [
        get RECEIVER tag which
        if which<3
            call stay
        else if (which=3)*full*(fresh=0)
            call tell refusal.4
        else
            call describe
    ]
]

procedure stay
[
    if fresh
        call tell "Primeiro acaba o nome novo, ou apaga-o."
    else
        call describe
]

procedure goUp
[
    get players canMoveHighlightUp can
    if can
    [
        play players moveHighlightUp
        call describe
    ]
    else
        call stay
]

procedure goDown
[
    get players canMoveHighlightDown can
    if can
    [
        play players moveHighlightDown
        call describe
    ]
    else
        call stay
]

; The second click of a double click presses no button, but a hasty finger means two steps.
procedure upAgain
[
    PlaySound 212
    call goUp
]

procedure downAgain
[
    PlaySound 212
    call goDown
]

procedure turnBack
[
    if fresh
        call stay
    else
    [
        play players scrollListPageUp
        call describe
    ]
]

procedure turnOn
[
    if fresh
        call stay
    else
    [
        play players scrollListPageDown
        call describe
    ]
]

procedure beginNew
[
    if full
        call tell refusal.4
    else
    [
        play players startNewEntry
        call describe
    ]
]

; Names of the list are taken out at the second request only, and their players with them.
procedure takeOut
[
    call look
    if fresh
    [
        play players deleteEntry
        call describe
    ]
    else if ~who=0
        call describe
    else if asked=who
    [
        play players deleteEntry
        get players deletedEntry gone
        play world removePlayer gone
        call describe
        call tell "Apaguei o nome "+gone+"."
    ]
    else
    [
        asked=who
        call tell "Apagar "+who+"? Ent„o carrega outra vez!"
    ]
]

; The sail was at another location once; who knows it from then keeps the level.
procedure moveSail
[
    get world currentLevel "PWS1" reached
    if reached>1
    [
        set world currentLevel "OWS4" reached
        set world currentLevel "PWS1" 1
    ]
]

procedure sign
[
    call look
    if valid
    [
        play world activatePlayer who
        call moveSail
        ; From here on every click of a hasty player counts.
        SetDoubleClicksEnabled 0
        ; What was chosen now counts from now on; else what they have chosen before, if they have.
        get world spoken chosen
        if ~chosen=0
            get world language chosen
        set world language chosen
        if ~chosen
            SetLanguage chosen
        ; Whoever signs next in this run chooses for themselves.
        set world spoken ""
        set world turn turns+1
        call stopSpeaking
        PlaySound 214
        ; Whether there is to be music is switched in the logbook.
        get world isBackgroundMusicOff silent
        set port isBackgroundMusicEnabled 1-silent
        play port stopBackgroundMusic 1
        relay "harbour.mps"
    ]
    else
        call describe
]

; ---- the flags: the book is opened anew in their language, by whose tags they are numbered

tag.1="pt"
tag.2="en"

procedure translate
[
    call stopSpeaking
    get RECEIVER tag which
    set world spoken tag.which
    SetLanguage tag.which
    relay "signin.mps"
]

; ---- the way out

procedure wayOut
    call ask "leave" "Queres mesmo sair?"

procedure agree
    quit

; ---- the keyboard

; Only what a name is made of is written. The memory takes #1 and 1 for places among the players.
letters="abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ-' "
accents="‡·‚„‰ÂÊÁËÈÍÎÏÌÓÔÒÚÛÙıˆ¯˘˙˚¸˝˛ˇ¿¡¬√ƒ≈∆«»… ÀÃÕŒœ–—“”‘’÷ÿŸ⁄€‹›ﬁﬂ"

procedure spell
[
    if (what@letters)+(what@accents)
    [
        play players addChar what
        code=RESULT
        if code=0
            call describe
        else
            call tell refusal.code
    ]
    else
        call tell "SÛ letras, por favor!"
]

procedure takeBack
[
    get players canDeleteChar can
    if can
    [
        play players deleteChar
        call describe
    ]
    else
        call tell "N„o h· letras para tirar."
]

; Who types is not interrupted at every letter.
procedure typed
[
    call letSound 800
    get RECEIVER key what
    if asking
        call answerKey what
    else if what="Esc"
        call wayOut
    else if what="Backspace"
        call takeBack
    else if what="Up"
        call goUp
    else if what="Down"
        call goDown
    else if what="PageUp"
        call turnBack
    else if what="PageDown"
        call turnOn
    else if what="Delete"
        call takeOut
    else if what="Enter"
        call sign
    else if ~what=1
        call spell
]

; ---- the book

players=RSelList 354 178 180 115 20
set players textFontID 20
set players visibleLines 5
set players listBackgroundColor 246
set players highlightedBackgroundColor 9
set players normalTextColor 0
set players selectedTextColor 4
set players matchedTextColor 1
set players mouseDown describe
set players entrySelected sign

; Who has played before, and some names for a start, which become players when they are signed. The
; letter in front has names compared as texts: a hyphen begins a number.
procedure enter newcomer
[
    set players currentEntry newcomer
    get players currentEntry who
    get players listIsFull full
    if ("n"+who#("n"+newcomer))*(full=0)
        play players addListEntry newcomer
]

get world playersCount count
turns=0
latest=""
n=0
for n<count
[
    play world activatePlayer "#"+n
    get world playerName who
    call enter who
    get world turn signed
    if signed>turns
    [
        turns=signed
        get world playerName latest
    ]
    n=n+1
]
call enter "Ana"
call enter "Beatriz"
call enter "Duarte"
call enter "Francisca"
call enter "InÍs"
call enter "Jo„o"
call enter "Leonor"
call enter "Mariana"
call enter "Rafael"
call enter "Tom·s"
set players currentEntry latest

; The numbers tell whyNot which of them it is.
for i 1 5
[
    button.i=RPButton 2200+i 20
    lit.i=1
    set button.i tag i
    set button.i clickSoundID 212
    set button.i mouseDown whyNot
]
set button.1 hit goUp
set button.1 dblClick upAgain
set button.2 hit goDown
set button.2 dblClick downAgain
set button.3 hit beginNew
set button.4 hit takeOut
set button.5 hit sign

GetLanguage
for i 1 2
[
    flag.i=RPButton 2206+i 20
    set flag.i tag i
    set flag.i clickSoundID 212
    set flag.i hit translate
    set flag.i sequence 1+(tag.i=RESULT)
    set flag.i enabled tag.i#RESULT
]
door=RPButton 2215 20
set door clickSoundID 212
set door hit wayOut

; ---- what is written around it, and the parrot

call write "Quem Ès tu?" 20 222 152 20
call write "Visitantes" 20 444 152 20
call write "Dois cliques num nome" 14 222 348 20
call write "tambÈm assinam o livro." 14 222 366 20
call write "Novo" 14 389 359 20
call write "Apagar" 14 460 359 20
call write "Assinar" 14 537 359 20
call perch 2206 0 42 69 300

keys=RKbdInp 0
set keys keyPressed typed

asked=""
call look
call letSound 1200
if ~latest
    call tell "Ol·! …s tu, "+who+"?"
else
    call tell "Ol·! Escreve o teu nome, ou escolhe-o no livro."
port=RScenePort 0
play port startBackgroundMusic 102 100 2
EndTransition 0
