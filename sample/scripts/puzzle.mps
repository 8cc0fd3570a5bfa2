; What all puzzles have in common, included by their scripts. The script of a puzzle has
;
;   activity         its location in the world's memory, which counts answers and knows the level
;   build            makes answer.1 to answer.answers and holder.1 to holder.holders, and fills the data
;                    set of puzzle for the level
;   dress            what there is to do when the puzzle has been filled, as putting texts in the middle
;   task.1 to 4      what the parrot says when a puzzle of that level begins
;   hint             what it says when the answers are not right yet
;
; and calls `open` at its end. Depths: containers 5, answers 10, one that is dragged 60.

; ---- the parrot's bubble

procedure tell said
[
set bubble text said
get bubble textHeight tall
set bubble y 41-tall\2
set parrot sequence 2
]

procedure fallSilent
[
set parrot sequence 1
]

procedure squawk
[
PlaySound 213
call tell task.level
]

; ---- answers: they have the sounds that are set before they are made

SetAnswerPickUpSound 241
SetAnswerSnapSound 242
SetAnswerGoHomeSound 243

procedure lift
[
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
set answer.i pickedUp lift
set answer.i dropped lower
play answer.i setAOCursor 1
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
get world currentLevel activity level
for i 1 4
set lamp.i sequence 2-(i>level)
set plate text "Nível "+level
get plate textWidth wide
set plate x 562-wide\2
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
call tell task.level
busy=0
]

procedure goOn
[
get world currentLevel activity reached
if reached=level
call begin
else
call layOut
]

praise.1="Muito bem!"
praise.2="Boa! Está tudo certo!"
praise.3="Que esperteza! Muito bem!"

procedure cheer
[
if busy=0
[
busy=1
play puzzle anchorAnswers
play world correctGuess activity
play world autoLevel activity
get world currentLevel activity reached
if reached>level
[
PlaySound 248
call tell "Viva! Passas para o nível "+reached+"!"
]
else
[
PlaySound 246
RandomNumber 1 3
call tell praise.RESULT
]
set parrot sequence 3
set sparkles visible 1
set sparkles sequence 1
play interval start
]
]

procedure consider
[
if busy=0
[
PlaySound 247
play world incorrectGuess activity
play world autoLevel activity
get world currentLevel activity reached
if reached<level
[
busy=1
play puzzle anchorAnswers
call tell "Quase! Vamos tentar uma mais fácil."
play interval start
]
else
call tell "Quase! "+hint
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
PlaySound 208
relay "workshop.mps"
]

procedure typed
[
get RECEIVER key what
if what="Esc"
call leave
]

; ---- what is on the screen at every puzzle

procedure label caption middle top
[
labels=labels+1
label.labels=RText 0 top -1 -1 20
set label.labels movable 0
set label.labels touchy 0
set label.labels colorIndex 4
play label.labels setFont 14
set label.labels text caption
get label.labels textWidth wide
set label.labels x middle-wide\2
]

procedure open
[
bubble=RText 34 18 424 -1 20
set bubble movable 0
set bubble touchy 0
set bubble wrap 1
set bubble colorIndex 4
play bubble setFont 20
parrot=RAnimation 2411 20
set parrot drawDirection 1
set parrot movable 0
set parrot mouseDown squawk
set parrot paused fallSilent
play parrot setAOCursor 1
labels=0
call label "De novo" 519 451
call label "Oficina" 596 451
call label "" 562 253
plate=&label.3
for i 1 4
[
lamp.i=RAnimation 2414 471+30*i 274 20
set lamp.i movable 0
set lamp.i touchy 0
]
again=RPButton 2412 20
set again hit once
home=RPButton 2413 20
set home hit leave
keys=RKbdInp 0
set keys keyPressed typed
sparkles=RAnimation 2415 29 96 70
set sparkles visible 0
set sparkles touchy 0
set sparkles movable 0
ruler=RText 0 0 -1 -1 -1
set ruler visible 0
play ruler setFont 28
interval=RQueue 1
play interval add DelayAction 3400
set interval finished goOn

; Two right answers of the last six lead on to the next level, six wrong ones back.
world=RWorldPort 0
set world wsAutoLevelingA activity 1
set world wsAutoLevelingB activity 2
set world wsAutoLevelingX activity 1
set world wsAutoLevelingY activity 6
holders=0
call layOut
]
