; From every state of the story the lamp can still be lit: children who do this and that at any time, and after a while
; whatever is possible. One by one they sail twice; who does not come to the end is told.
;% the lamp burned 400 times over 19200 gems, and went out 400 times
yield off
include memory.mps
include story.mps
play world activateDataFile

procedure any n
RandomNumber 1 n

; what somebody does who does something: one of the games, won or lost
procedure playGame k won
[
where=activities|(4*k-3)|4
if won
[
call gather where
play world correctGuess where
]
else
play world incorrectGuess where
play world autoLevel where
]
procedure chooseLevel
[
call any 8
where=activities|(4*RESULT-3)|4
call any 4
set world currentLevel where RESULT
]
; the gem at one place of the tray is held to one gap
procedure tryGem slot n
[
get world itemPresent slot "OHUB" gem
get world missingItemSlot n spot
call belongs spot
if gem*(gem=RESULT)*(arch|n|1="o")
[
call fillGap n gem
laid=laid+1
]
]
procedure climb
[
get world hasKey opened
call findDoor
if opened*(floor<floors)
[
call countGaps
if RESULT=0
call passDoor
]
]
procedure tryTower
[
get world hasKey opened
call findDoor
if opened*(floor<floors)
[
call any gaps
slot=RESULT
call any gaps
call tryGem slot RESULT
call any 3
if RESULT=1
call climb
]
]
procedure winPrize
[
call any 3
call award RESULT+1
]
; what is given away is gone
procedure givePrize k
[
prize=k+1
call carries prize
if RESULT
[
for slot 0 11
[
get world backpackItemPresent slot thing
if thing=prize
play world backpackRemoveObject slot
]
call award prize+3
]
]
procedure tryLamp k
[
call findRoom
call carries k+4
if RESULT*(floor=floors)
[
call findStep
if step<(steps+1)
call useGift k+4
]
]
procedure something
[
call any 12
what=RESULT
call any 8
game=RESULT
call any 3
if what<5
call playGame game RESULT<3
else if what=5
call chooseLevel
else if what=6
call openChest
else if what<10
call tryTower
else if what=10
call winPrize
else if what=11
call givePrize RESULT
else
call tryLamp RESULT
]

; whatever is possible, in its order; nobody plays more than so many games
procedure goOn
[
call openChest
for k 1 8
call playGame k 1
for slot gaps 1 -1
for n 1 gaps
[
call findDoor
call tryGem slot n
]
call climb
for k 1 3
[
call award k+1
call givePrize k
call tryLamp k
]
]
procedure finish
[
tries=0
call findChapter
for (RESULT<5)*(tries<40)
[
tries=tries+1
call goOn
call findChapter
]
burned=burned+(RESULT=5)
]

burned=0
laid=0
out=0
for child 1 200
[
play world activatePlayer "child"+child
for sailed 1 2
[
call any 400
for deed 1 RESULT
call something
call finish
call sailAgain
call findChapter
out=out+(RESULT=1)
]
]
LogMessage "the lamp burned "+burned+" times over "+laid+" gems, and went out "+out+" times"
quit
