; The progress screen in the game: at CWS1, then at OMA, over a scene whose figure is seen through the
; panel's hole. Levels of the locations that can be solved are refused or not.
yield off
ActivateDLL golden.rsc
include progress.mps
procedure tellAll
[
call tellLevels "CMA"
call tellLevels "OMA"
call tellLevels "OWS1"
call tellLevels "PWS1"
call tellLevels "PWS2"
]
procedure onFigure
say "the figure"
procedure onKey
[
get keys key word
if word="t"
call tellAll
if word="s"
set world PWS2Solved 1
if word="o"
[
drop screen
call open "OMA"
call tellFlags
]
if word="m"
[
set port isBackgroundMusicEnabled 0
set screen visible 0
set screen visible 1
]
]
Scene 100
port=RScenePort 0
world=RWorldPort 0
play world activatePlayer "MiW"
set world inGame 1
set world currentLocation CWS1
call visit "CHUB" 2
call visit "CMA" 1
call visit "OMA" 1
call visit "OWS4" 1
call visit "PWS2" 2
set world CMASolved 1
set world currentLevel OWS1 4
call answer "OWS1" 10 "incorrectGuess"
play world autoLevel OWS1
figure=RAnimation 200 570 440 10
set figure mouseDown onFigure
keys=RKbdInp 0
set keys keyPressed onKey
call open 0
call tellFlags
DisplayScreen
