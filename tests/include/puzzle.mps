; What the scenes of puzzles share. Answers are a.1 to a.answers, containers c.1 to c.containers, the
; puzzle is p. Every event is said with the name of its object. Of the keys, t tells what all of them
; know; the others are for the scene's own procedure act, in the name word.
procedure tell event
[
get RECEIVER name who
say who event
]
procedure onPickedUp
call tell "pickedUp"
procedure onDropped
[
get RECEIVER x left
get RECEIVER y top
call tell "dropped at "+left+" "+top
]
procedure onAdded
call tell "addedToContainer"
procedure onRemoved
call tell "removedFromContainer"
procedure onFlyOn
call tell "answerFlyOn"
procedure onFlyOff
call tell "answerFlyOff"
procedure onPlaced
call tell "answerPlaced"
procedure onTaken
call tell "answerRemoved"
procedure onUsed
call tell "answersUsed"
procedure onFull
call tell "containersFull"
procedure onSolved
call tell "puzzleSolved"
procedure onWrong
call tell "puzzleWrong"

procedure tellAll
[
for i 1 answers
[
get a.i x left
get a.i y top
get a.i z depth
get a.i isUsed used
get a.i movable free
say "  a."+i left top depth "used" used "movable" free
]
for i 1 containers
[
get c.i answerCount count
get c.i isFull full
get c.i isSolved solved
say "  c."+i "holds" count "full" full "solved" solved
]
get p areAnswersUsed used
get p areContainersFull full
get p isSolved solved
say "  p used" used "full" full "solved" solved
]
procedure onKey
[
get keys key word
if word="t"
call tellAll
else
call act
]
events=[pickedUp dropped addedToContainer removedFromContainer answerFlyOn answerFlyOff answerPlaced
events=[answerRemoved answersUsed containersFull puzzleSolved puzzleWrong
handlers=[onPickedUp onDropped onAdded onRemoved onFlyOn onFlyOff onPlaced onTaken onUsed onFull
handlers=[onSolved onWrong
procedure listen
[
for i 1 answers
for event 1 4
set a.i events.event handlers.event
for i 1 containers
for event 5 8
set c.i events.event handlers.event
for event 9 12
set p events.event handlers.event
keys=RKbdInp 0
set keys keyPressed onKey
]
