; Scene ports: keys, clicks, pauses and the end of the game, and the music from scene to scene.
yield off
procedure clicked
say "clicked"
procedure returned
say "return"
procedure space
[
say "space"
play port pauseBackgroundMusic
]
procedure pausing
say "paused"
procedure going
[
say "resumed"
play port resumeBackgroundMusic
]
procedure leaving
[
get port backgroundMusicID id
get port backgroundMusicVolume volume
say "leaving with" id "at" volume
]
procedure typed
[
get RECEIVER key what
say "typed" what
]
procedure rowed
say "boat"

port=RScenePort 0
set port backgroundClicked clicked
set port returnPressed returned
set port spacebarPressed space
set port paused pausing
set port resumed going
set port exittingGame leaving
keys=RKbdInp 0
set keys keyPressed typed
get port isBackgroundMusicEnabled on
get port backgroundMusicID id
get port backgroundMusicVolume volume
say on id volume
play port startBackgroundMusic 100
pause 4
play port stopBackgroundMusic 1
pause 0.3
; The fade stands still while the scene is changed, longer than it lasts.
StartTransition
drop port
Scene 100
boat=RAnimation 2001 7
set boat mouseDown rowed
port=RScenePort 0
set port exittingGame leaving
set port backgroundClicked clicked
pause 2
get port backgroundMusicID id
say "still" id
EndTransition 0
pause 1
play port startBackgroundMusic 101
pause 2
set port isBackgroundMusicEnabled 0
pause 1
play port startBackgroundMusic 102 90 2
set port isBackgroundMusicEnabled 1
pause 1
StartTransition
