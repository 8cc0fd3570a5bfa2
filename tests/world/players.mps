; Players by name or place, what ports show of them, properties of one name, methods that change the
; record, and what is kept until the next visit, which reads the players only when it writes.
;$ then
yield off
include things.mps
procedure who
[
call cut
play t.1 activatePlayer word
get t.1 playerName name
get t.1 playersCount count
line=line+" "+name+"/"+count
]
procedure add
[
call cut
for i 1 5
play t.1 word CWS3
play t.1 autoLevel CWS3
get t.1 currentLevel CWS3 got
line=line+" "+got
]
procedure bye
[
say "bye"
quit
]
t.1=RWorldPort 0
get t.1 informWinGWarning visit
set t.1 informWinGWarning visit+1
call do "run 1 addIntProperty coats, run 1 addIntProperty boots 0"
if visit=2
[
play t.1 addGlobalIntProperty informColorsWarning
call do "run 1 addIntProperty playerName, who Zoe, tell"
; the same level keeps the answers, another one forgets them
call do "add correctGuess, let 1 currentLevel CWS3 257, add correctGuess, add incorrectGuess"
call do "add incorrectGuess, add incorrectGuess, let 1 currentLevel CWS3 2, add incorrectGuess"
call do "let 1 currentLevel CWS3 3, add incorrectGuess, tell"
StartTransition
call do "who #0, who #1, who #2, who #3, of 1 coats, of 1 boots, of 1 inGame, of 1 playerScore"
call do "of 1 isAutoLevelingEnabled, of 1 informColorsWarning, run 1 activateDataFile"
call do "of 1 playersCount, tell, run 1 addGlobalIntProperty CStatueDataset 0"
call do "let 1 CStatueDataset 3, begin, let 1 CStatueDataset none, begin"
quit
]
play t.1 activateDataFile
call do "of 1 informResolutionWarning, of 1 informDirectDrawVersionWarning"
call do "of 1 informDirectDrawNotFoundWarning, of 1 informDirectDrawSwitchFailedWarning, tell"
;=  1 1 1 1
call do "who #0, who Ana, who ana, who #1, who #9, who #-1, who #9, who #3, who 2, tell"
;=  #0/1 Ana/2 ana/3 Ana/3 #9/4 #-1/5 #9/5 #9/5 2/6
call do "run 1 removePlayer 2, run 1 removePlayer nobody, run 1 removePlayer #0x, of 1 playerName"
call do "of 1 playersCount, who ana, run 1 removePlayer 0, run 1 removePlayer #9"
call do "run 1 removePlayer #-1, of 1 playerName, of 1 playersCount, tell"
;! Property playerName not found
;=  none 5 ana/5 ana 2

; another port shows whom it activated itself, until that one is removed
t.2=RWorldPort 0
call do "run 1 activatePlayer Ana, of 2 playerName, run 2 activatePlayer Rui, of 1 playerName"
call do "of 2 playerName, run 2 removePlayer Ana, of 1 playerName, of 2 playerName"
call do "of 2 playersCount, tell"
;! Property playerName not found
;=  ana Ana Rui none Rui 2

; of properties of one name the last one is seen, a player's while one is shown
call do "run 1 addGlobalIntProperty informColorsWarning, run 1 addGlobalIntProperty hats"
call do "let 1 hats 1, run 1 addGlobalIntProperty hats, let 1 hats 2"
call do "run 1 addIntProperty hats, run 1 addIntProperty activatePlayer, who Eva, of 1 hats"
call do "run 1 removePlayer Eva, of 1 hats, tell"
;=  Eva/3 0 2

; items, answers, levels and games of a player
play t.1 activatePlayer "Ana Lua"
set t.1 currentLocation CWS1
call do "run 1 backpackAddObject 29, run 1 backpackAddObject 0, run 1 backpackRemoveObject 12"
call do "run 1 backpackAddObject 28, run 1 backpackAddObject 3, run 1 backpackRemoveObject 0"
call do "run 1 backpackRemoveObject -1, of 1 backpackItemPresent 0, of 1 backpackItemPresent 1"
for i 1 7
play t.1 addObject 12+i ""
call do "run 1 addObject 0 CHUB, run 1 addObject 29 CHUB, run 1 addObject 5 CBA1"
call do "run 1 removeObjectFromLocation 19 CWS1, of 1 itemsPresentCount"
call do "of 1 itemsPresentCount CHUB, run 1 removeObjectFromLocation 14 CWS1, of 1 itemPresent 2"
call do "of 1 itemPresent 3, tell"
;=  0 3 6 0 0 15
call do "run 1 correctGuess, run 1 incorrectGuess CWS2, run 1 incorrectGuess PBA"
call do "of 1 wsTotalCorrectGuessCount, of 1 wsTotalGuessCount CWS2"
call do "of 1 wsTotalCorrectGuessCount CWS2, run 1 autoLevel CMA, of 1 currentLevel CMA, tell"
;=  1 1 0 2
set t.1 currentLocation CHUB
call do "run 1 distributeItems, of 1 wsNextItemInQueue CWS1"
line=" "+(got>0)
call do "run 1 removeNextObjectFromQueue CWS1, run 1 removeNextObjectFromQueue CWS1"
call do "run 1 removeNextObjectFromQueue CWS1, of 1 wsNextItemInQueue CWS1, run 1 newGame"
call do "of 1 itemsPresentCount CWS1, of 1 currentLocation, tell"
;=  1 0 0 CBA1
call do "let 1 wsAutoLevelingA OWS4 -8, of 1 wsAutoLevelingA PWS2, of 1 wsAutoLevelingA OWS4"
call do "let 1 wsAutoLevelingB OWS4 -7, of 1 wsAutoLevelingB PWS2, of 1 wsAutoLevelingB OWS4"
call do "let 1 wsAutoLevelingX OWS4 -6, of 1 wsAutoLevelingX PWS2, of 1 wsAutoLevelingX OWS4"
call do "let 1 wsAutoLevelingY OWS4 -5, of 1 wsAutoLevelingY PWS2, of 1 wsAutoLevelingY OWS4"
call do "let 1 wsAutoLevelingA CHUB 9, of 1 wsAutoLevelingA CHUB, of 1 wsAutoLevelingA, tell"
;=  5 -8 6 -7 4 -6 10 -5  
; what is kept
call do "let 1 coats 4, let 1 boots 4, let 1 inGame 1, let 1 playerScore 12"
call do "let 1 informColorsWarning 0, run 1 addGlobalIntProperty volume"
port=RScenePort 0
set port exittingGame bye
quit "other.mps"
;= bye
;=  Zoe/1
;=  1 2 2 1 1 2 3
;=  Zoe/4 ana/4 Rui/4 Ana Lua/4 4 0 0 12 1 0 4
;! CStatueDataset is now 0, please inform Ilse or Bram
;% World Memory - starting up!
;% Warning: World Memory - the global informColorsWarning is the program's own and is not added again: use it as it is, or another name
;% Warning: World Memory - every player has a property playerName, and none is added: use it as it is, or another name
;% World Memory - activating player Zoe
;% World Memory - creating new player Zoe
;% OHUB Pattern
;% 	Door 3	Pattern: Red Gem 3, Red Gem 1, Yellow Gem 3, Yellow Gem 1
;% 			Empty Slots: 7, 2, 37, 11, 10, 6, 22, 13, 31, 1, 23, 24
;% 	Door 4	Pattern: Green Gem 4, Green Gem 3, Blue Gem 2, No Item
;% Distributing items for CHUB
;% Auto-leveling has determined player can advance a level in CWS3.  New level: 2
;% Auto-leveling has determined player needs to go back a level in CWS3.  New level is 1.
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
;% Closing Log
;: file content/other.mps
say "never"
