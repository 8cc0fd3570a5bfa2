; Scene ports: keys, clicks, pauses and the end of the game, and the music from scene to scene. the
; background, the space bar, another program and back, Enter, the exit screen, in a transition too
;> 500 click 320 50
;> 1000 key  
;> 1300 background
;> 1400 foreground
;> 1600 key Enter
;> 1700 answer No
;> 1800 key Ctrl-q
;> 5000 click 320 50
;> 6800 click 320 50
;> 6900 click 56 310
;> 7000 command 32
;> 12000 answer Yes
;> 12000 command 59396
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
;= 1 -1 100
;= clicked
;= space
;= typed  
;= paused
;= resumed
;= return
;= typed Enter
;= paused
;= resumed
;= typed Ctrl-Q
;= still 100
;= clicked
;= boat
;= leaving with 102 at 90
;! Zorbet Voyages | Quer mesmo sair do jogo? | No
;! Zorbet Voyages | Quer mesmo sair do jogo? | Yes
;# 0 title Zorbet Voyages
;# 3871 cursor -2
;# 5671 title 2
;# 5671 cursor -1
;# 6722 title 8
;# 7772 title 7
;# 10171 cursor -2
;# 12001 end 0
;~ harbour
;~ lighthouse
