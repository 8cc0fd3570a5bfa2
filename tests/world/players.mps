; Players by name or place, what ports show of them, properties of one name, methods that change the
; record, and what is kept until the next visit, which reads the players only when it writes.
;$ then
yield off
include steps.mps
procedure pair
[
call cut
one=word
call cut
two=word
]
procedure run
[
call cut
method=word
call pair
play world method one two
]
procedure of
[
call cut
property=word
call pair
got="none"
get world property one two got
line=line+" "+got
]
procedure who
[
call cut
play world activatePlayer word
get world playerName name
get world playersCount count
line=line+" "+name+"/"+count
]
world=RWorldPort 0
get world informWinGWarning visit
set world informWinGWarning visit+1
play world addIntProperty coats ""
play world addIntProperty boots 0
if visit=2
[
call do "who Zoe, tell, run addGlobalIntProperty informColorsWarning, run addIntProperty playerName"
StartTransition
call do "who #0, who #1, who #2, who #3, of coats, of boots, of inGame, of playerScore"
call do "of isAutoLevelingEnabled, of informColorsWarning, run activateDataFile, of playersCount"
call tell
play world addGlobalIntProperty CStatueDataset 0
set world CStatueDataset 3
StartTransition
set world CStatueDataset none
StartTransition
quit
]
play world activateDataFile
warnings=[informResolutionWarning informColorsWarning informDirectDrawNotFoundWarning
warnings=[informDirectDrawSwitchFailedWarning informDirectDrawVersionWarning
for i 1 5
[
get world warnings.i got
line=line+" "+got
]
call tell
;=  1 1 1 1 1
call do "who #0, who Ana, who ana, who #1, who #9, who #-1, who #9, who #3, who 2, tell"
;=  #0/1 Ana/2 ana/3 Ana/3 #9/4 #-1/5 #9/5 #9/5 2/6
call do "run removePlayer 2, run removePlayer nobody, run removePlayer #0x, of playerName"
call do "of playersCount, who ana, run removePlayer 0, run removePlayer #9, run removePlayer #-1, of playerName"
call do "of playersCount, tell"
;! Property playerName not found
;=  none 5 ana/5 ana 2

; another port shows whom it activated itself, until that one is removed
other=RWorldPort 0
play world activatePlayer "Ana"
get other playerName a
play other activatePlayer "Rui"
get world playerName b
get other playerName c
play other removePlayer "Ana"
say a b c
;= ana Ana Rui
call do "of playerName, tell"
;! Property playerName not found
;=  none
get other playerName b
get other playersCount c
say b c
;= Rui 2

; of one name: the last one is seen, a player's while one is shown
call do "run addGlobalIntProperty informColorsWarning, run addGlobalIntProperty hats"
set world hats 1
play world addGlobalIntProperty hats
set world hats 2
call do "run addIntProperty hats, run addIntProperty activatePlayer"
call do "who Eva, of hats, run removePlayer Eva, of hats, tell"
;=  Eva/3 0 2

; items, answers, levels and games of a player
play world activatePlayer "Ana Lua"
set world currentLocation CWS1
call do "run backpackAddObject 29, run backpackAddObject 0, run backpackRemoveObject 12"
call do "run backpackAddObject 28, run backpackAddObject 3, run backpackRemoveObject 0"
call do "run backpackRemoveObject -1, of backpackItemPresent 0, of backpackItemPresent 1"
for i 1 7
play world addObject 12+i ""
call do "run addObject 0 CHUB, run addObject 29 CHUB, run addObject 5 CBA1"
call do "run removeObjectFromLocation 19 CWS1, of itemsPresentCount, of itemsPresentCount CHUB"
call do "run removeObjectFromLocation 14 CWS1, of itemPresent 2, of itemPresent 3, tell"
;=  0 3 6 0 0 15
call do "run correctGuess, run incorrectGuess CWS2, run incorrectGuess PBA"
call do "of wsTotalCorrectGuessCount, of wsTotalGuessCount CWS2"
call do "of wsTotalCorrectGuessCount CWS2, run autoLevel CMA"
call do "of currentLevel CMA, tell"
;=  1 1 0 2
set world currentLocation CHUB
call do "run distributeItems, of wsNextItemInQueue CWS1"
line=" "+(got>0)
call do "run removeNextObjectFromQueue CWS1, run removeNextObjectFromQueue CWS1"
call do "run removeNextObjectFromQueue CWS1, of wsNextItemInQueue CWS1, run newGame"
call do "of itemsPresentCount CWS1, of currentLocation, tell"
;=  1 0 0 CBA1
threshold=[wsAutoLevelingA wsAutoLevelingB wsAutoLevelingX wsAutoLevelingY
for i 1 4
[
get world threshold.i PWS2 a
set world threshold.i OWS4 i-9
get world threshold.i OWS4 b
get world threshold.i OWS3 c
set world threshold.i CHUB 9
get world threshold.i CHUB d
get world threshold.i "" e
line=line+" "+a+b+c+"["+d+e+"]"
]
call tell
;=  5-85[] 6-76[] 4-64[] 10-510[]
; what is kept
set world coats 4
set world boots 4
set world inGame 1
set world playerScore 12
set world informColorsWarning 0
play world addGlobalIntProperty volume
quit
;=  Zoe/1
;=  Zoe/4 ana/4 Rui/4 Ana Lua/4 4 0 0 12 1 0 4
;! CStatueDataset is now 0, please inform Ilse or Bram
;% World Memory - starting up!
;% World Memory - activating player Zoe
;% World Memory - creating new player Zoe
;% Warning: World Memory - the global informColorsWarning is the program's own and is not added again: use it as it is, or another name
;% Warning: World Memory - every player has a property playerName, and none is added: use it as it is, or another name
;% *** CStatueDataset is not defined ***
;% World Memory - writing data file, sDataFileActive: 0
;% World Memory - reading data file, sDataFileActive: 1
;% Player: unknown property hats
;% World Memory - activating player #0
;% Setting CStatueDataset to 3
;% World Memory - writing data file, sDataFileActive: 1
;% Querying CStatueDataset, value is 0
;% **** CStatueDataset is now 0 ****
;% World Memory - writing data file, sDataFileActive: 1
;% World Memory shutting down
