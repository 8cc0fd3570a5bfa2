; The progress screen in practice, opened at CMA, which was never visited. At CWS1 five answers were
; correct; at CWS2 the player went back from level 2; at CWS3 the level is to stay. What is seen of OWS4
; ends until it was visited, and the third level has no colours.
yield off
ActivateDLL golden.rsc
include progress.mps
procedure onKey
[
get keys key word
if word="t"
[
call tellLevels "CWS1"
call tellLevels "CWS2"
call tellLevels "CWS3"
call tellLevels "CMA"
call tellLevels "OWS2"
]
if word="f"
call tellFlags
if word="m"
call tellMusic
if word="c"
[
play world correctGuess CWS1
play world autoLevel CWS1
]
if word="w"
[
call answer "OWS2" 10 "incorrectGuess"
play world autoLevel OWS2
]
if word="v"
[
call visit "OWS4" 1
call visit "PWS1" 1
]
if word="o"
set screen visible 1
if word="n"
call open "OWS4"
]
Scene 100
port=RScenePort 0
world=RWorldPort 0
play world activatePlayer "FAgy"
set world currentLocation CMA
call visit "CBA1" 1
call visit "CWS1" 1
call visit "CWS2" 3
call answer "CWS1" 5 "correctGuess"
set world currentLevel CWS2 2
call answer "CWS2" 10 "incorrectGuess"
play world autoLevel CWS2
set world isAutoLevelingEnabled CWS3 0
call answer "CWS3" 6 "correctGuess"
play world autoLevel CWS3
for i 1 3
play world autoLevel CMA
set world currentLevel OWS2 2
call answer "OWS2" 6 "correctGuess"
play world autoLevel OWS2
set world currentLevel OWS2 4
keys=RKbdInp 0
set keys keyPressed onKey
call tellFlags
call open 0
call tellFlags
DisplayScreen
