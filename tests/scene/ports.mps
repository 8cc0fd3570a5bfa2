; Scene ports: which arguments of the music count, and who is told of what in which order.
;$ --until 3000
yield off
include things.mps
t.1=RScenePort 0
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
; the last argument says which ones count; each from 100 at 40
call music
call start "" "" ""
words=[101 "" "" -1 "" "" 65535 "" "" 102 90 "" "" 90 "" 101 -5 "" "" "" 1 101 "" 1 101 300 ""
for i 1 25 3
call start words.i words.(i+1) words.(i+2)
call tell
;=  -1/100/1 100/40/1 101/40/1 -1/40/1 -1/40/1 102/90/1 0/90/1 101/0/1 0/0/1 101/0/1 101/100/1
;! Bad WAVE resource id: 0
;! Bad WAVE resource id: 0
; a resource that is not there is remembered, and all is while the music is off; any other number than there is
; switches it
call do "run 1 startBackgroundMusic 99 50 2, music, let 1 isBackgroundMusicEnabled 1"
call do "let 1 isBackgroundMusicEnabled 0, let 1 isBackgroundMusicEnabled 0"
call do "run 1 startBackgroundMusic 100 60 5, music, let 1 isBackgroundMusicEnabled 7, music"
call do "let 1 isBackgroundMusicEnabled 7, let 1 backgroundMusicVolume 200"
call do "let 1 backgroundMusicID 65637, music, tell"
;! WAVE resource 99 not found.
;=  99/50/1 100/60/0 100/60/1 101/100/0

; all are told in their order, whatever they do: the first one drops the third, the second one makes another and goes
procedure heard
[
get RECEIVER name who
say who
if who="t.2"
drop t.4
if who="t.3"
[
t.6=RScenePort 0
set t.6 paused heard
drop t.3
]
]
for i 2 5
[
t.i=RScenePort 0
set t.i paused heard
]
;> 500 background
;> 600 foreground
;> 700 background
;= t.2
;= t.3
;= t.5
;= t.2
;= t.5
;= t.6
