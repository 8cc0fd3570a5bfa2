; Scene ports: which arguments of the music count, and who is told of what in which order.
;$ --until 3000
yield off
port=RScenePort 0
procedure note
[
get port backgroundMusicID id
get port backgroundMusicVolume volume
get port isBackgroundMusicEnabled on
told=told+" "+id+"/"+volume+"/"+on
]
procedure begin
[
play port stopBackgroundMusic
play port startBackgroundMusic 100 40
]
told="at first"
call note
call begin
play port startBackgroundMusic
call note
; the last argument says which ones count; each from 100 at 40
words=[101 "" "" -1 "" "" 65535 "" "" 102 90 "" "" 90 "" 101 -5 "" "" "" 1 101 "" 1 101 300 ""
for i 1 25 3
[
call begin
play port startBackgroundMusic words.i words.(i+1) words.(i+2)
call note
]
say told
;= at first -1/100/1 100/40/1 101/40/1 -1/40/1 -1/40/1 102/90/1 0/90/1 101/0/1 0/0/1 101/0/1 101/100/1
;! Bad WAVE resource id: 0
;! Bad WAVE resource id: 0
; a resource that is not there is remembered, and all is while the music is off; any other number than there is
; switches it
told="then"
play port startBackgroundMusic 99 50 2
call note
;! WAVE resource 99 not found.
set port isBackgroundMusicEnabled 1
set port isBackgroundMusicEnabled 0
set port isBackgroundMusicEnabled 0
play port startBackgroundMusic 100 60 5
call note
set port isBackgroundMusicEnabled 7
call note
set port isBackgroundMusicEnabled 7
set port backgroundMusicVolume 200
set port backgroundMusicID 65637
call note
say told
;= then 99/50/1 100/60/0 100/60/1 101/100/0

; all are told in their order, whatever they do: the first one drops the third, the second one makes another and goes
procedure heard
[
get RECEIVER name who
say who
if who="port.1"
drop port.3
if who="port.2"
[
port.5=RScenePort 0
set port.5 paused heard
drop port.2
]
]
for i 1 4
[
port.i=RScenePort 0
set port.i paused heard
]
;> 500 background
;> 600 foreground
;> 700 background
;= port.1
;= port.2
;= port.4
;= port.1
;= port.4
;= port.5
