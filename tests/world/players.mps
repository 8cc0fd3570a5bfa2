; Players by name or place, what ports show of them, properties of one name, and methods that change the record, from one
; visit to the next. The second visit begins with those who were saved.
;$ then
yield off
procedure who name
[
play world activatePlayer name
get world playerName a
get world playersCount b
text=text+" "+a+"/"+b
]
text="found"
world=RWorldPort 0
play world addGlobalIntProperty volume
play world addIntProperty coats ""
play world activateDataFile
get world playersCount count
if count
[
call who "#1"
call who "#2"
get world coats a
get world inGame b
get world playerScore c
get world informColorsWarning d
get world volume e
say count text "again:" a b c d e
quit
]
call who "#0"
call who "Ana"
call who "ana"
call who "#1"
call who "#9"
call who "#-1"
call who "#9"
call who "#3"
call who "2"
say text
play world removePlayer "2"
play world removePlayer "nobody"
play world removePlayer "#0x"
a="nobody"
get world playerName a
get world playersCount b
say a b
call who "ana"
play world removePlayer "0"
play world removePlayer "#9"
play world removePlayer "#-1"
get world playerName a
get world playersCount b
say "still" a b
;= found #0/1 Ana/2 ana/3 Ana/3 #9/4 #-1/5 #9/5 #9/5 2/6
;= nobody 5
;= still ana 2

; another port shows whom it activated itself, until that one is removed
other=RWorldPort 0
play world activatePlayer "Ana"
get other playerName a
play other activatePlayer "Rui"
get world playerName b
get other playerName c
play other removePlayer "Ana"
say a b c
get world playerName a
get other playerName b
get other playersCount c
say b c
;= ana Ana Rui
;= Rui 2

; a global, the program's own, and a player's property of one name: the last one is seen, the player's while one is shown
play world addGlobalIntProperty informColorsWarning
play world addGlobalIntProperty hats
set world hats 1
play world addGlobalIntProperty hats
set world hats 2
play world addIntProperty hats
play world addIntProperty activatePlayer
play world activatePlayer "Eva"
get world hats a
play world removePlayer "Eva"
get world hats b
say a b
;= 0 2

; Items, answers, levels and games of a player.
call who "Ana Lua"
set world currentLocation CWS1
play world backpackAddObject 29
play world backpackAddObject 0
play world backpackRemoveObject 12
play world backpackAddObject 28
play world backpackAddObject 3
play world backpackRemoveObject 0
get world backpackItemPresent 0 a
get world backpackItemPresent 1 b
for i 1 7
play world addObject 12+i ""
play world addObject 0 CHUB
play world addObject 29 CHUB
play world addObject 5 CBA1
play world removeObjectFromLocation 19 CWS1
get world itemsPresentCount "" c
get world itemsPresentCount CHUB d
play world removeObjectFromLocation 14 CWS1
get world itemPresent 2 "" e
get world itemPresent 3 "" f
say "items" a b c d e f
play world correctGuess ""
play world incorrectGuess CWS2
play world incorrectGuess PBA
get world wsTotalCorrectGuessCount "" "" a
get world wsTotalGuessCount CWS2 "" b
get world wsTotalCorrectGuessCount CWS2 "" c
play world autoLevel CMA
get world currentLevel CMA d
say "answers" a b c "level" d
set world currentLocation CHUB
play world distributeItems
get world wsNextItemInQueue CWS1 a
for i 1 3
play world removeNextObjectFromQueue CWS1
get world wsNextItemInQueue CWS1 b
play world newGame
get world itemsPresentCount CWS1 c
get world currentLocation d
say "queued" (a>0) b "new game" c d
for i 1 4
[
threshold=[wsAutoLevelingA wsAutoLevelingB wsAutoLevelingX wsAutoLevelingY
get world threshold.i PWS2 a
set world threshold.i OWS4 i-9
get world threshold.i OWS4 b
get world threshold.i OWS3 c
set world threshold.i CHUB 9
get world threshold.i CHUB d
get world threshold.i "" e
say "threshold" a b c "["+d+e+"]"
]
;= items 0 3 6 0 0 15
;= answers 1 1 0 level 2
;= queued 1 0 new game 0 CBA1
;= threshold 5 -8 5 []
;= threshold 6 -7 6 []
;= threshold 4 -6 4 []
;= threshold 10 -5 10 []
;= 3 found Rui/3 Ana Lua/3 again: 4 0 12 0 0
; what is kept
set world coats 4
set world inGame 1
set world playerScore 12
set world informColorsWarning 0
set world volume 5
quit
;! Property playerName not found
;! Property playerName not found
