; Scene ports: keys, clicks, pauses and the end of the game, also in transitions; who is told of it
; in which order; which arguments of the music count. Keys are heard with and without a command.
;> 100 tap 320 50
;> 120 key  
;> 130 key Ctrl- 
;> 140 key Enter
;> 150 command 32
;> 160 command 59394
;> 170 background
;> 180 foreground
;> 190 answer No
;> 200 key Ctrl-q
;> 210 command 59408
;> 220 background
;> 250 tap 320 50
;> 350 tap 320 50
;> 700 answer Yes
;> 700 command 59396
yield off
include things.mps
procedure clicked
call do "note clicked"
procedure returned
call do "note return"
procedure space
call do "note space"
procedure going
call do "note resumed"
procedure typed
[
get RECEIVER key what
line=line+" ["+what+"]"
]
procedure leaving
[
get t.1 backgroundMusicID id
say line "leaving with" id
]
; all are told in their order, whatever they do: the first one drops the third, the second one makes
; another and goes
procedure heard
[
get RECEIVER name who
line=line+" "+who
if who="t.2"
drop t.4
if who="t.3"
[
t.6=RScenePort 0
set t.6 paused heard
drop t.3
]
]
keys=RKbdInp 0
set keys keyPressed typed
t.1=RScenePort 0
set t.1 backgroundClicked clicked
set t.1 exittingGame leaving
set t.1 returnPressed returned
set t.1 spacebarPressed space
set t.1 resumed going
for i 2 5
[
t.i=RScenePort 0
set t.i paused heard
]
call do "rest 0.2, tell, rest 0.05, begin, rest 0.1, finish 0, note shown, rest 0.1, tell"
;=  clicked space [ ] [Ctrl- ] return [Enter] space return t.2 t.3 t.5 resumed
;=  t.2 t.5 t.6 resumed [Ctrl-Q] t.2 t.5 t.6 shown clicked
;! Zorbet Voyages | Quer mesmo sair do jogo? | No
;% Debug Level changed to ERRORS

; the last argument says which ones count; each from 100 at 40
procedure music
[
get t.1 backgroundMusicID a
get t.1 backgroundMusicVolume b
get t.1 isBackgroundMusicEnabled c
line=line+" "+a+"/"+b+"/"+c
]
procedure start a b c
[
call do "run 1 stopBackgroundMusic, run 1 startBackgroundMusic 100 40"
play t.1 startBackgroundMusic a b c
call music
]
call music
call start "" "" ""
words=[101 "" "" -1 "" "" 65535 "" "" 102 90 "" "" 90 "" 101 -5 "" "" "" 1 101 "" 1 101 300 ""
for i 1 25 3
call start words.i words.(i+1) words.(i+2)
call tell
;=  -1/100/1 100/40/1 101/40/1 -1/40/1 -1/40/1 102/90/1 0/90/1 101/0/1 0/0/1 101/0/1 101/100/1
;! Bad WAVE resource id: 0
;! Bad WAVE resource id: 0
; a resource that is not there is remembered, and all is while the music is off; any other number
; than there is switches it
call do "run 1 startBackgroundMusic 99 50 2, music, let 1 isBackgroundMusicEnabled 0"
call do "run 1 startBackgroundMusic 100 60 5, music, let 1 isBackgroundMusicEnabled 7, music"
call do "let 1 isBackgroundMusicEnabled 7, let 1 backgroundMusicVolume 200"
call do "let 1 backgroundMusicID 65637, music, tell, begin, rest 1"
;! WAVE resource 99 not found.
;=  99/50/1 100/60/0 100/60/1 101/100/0
;! Zorbet Voyages | Quer mesmo sair do jogo? | Yes
;=  t.2 t.5 t.6 leaving with 101
