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
ones=[101 -1 65535
for i 1 3
[
call begin
play port startBackgroundMusic ones.i
call note
]
twos=[102 90 "" 90 101 -5
for i 1 5 2
[
call begin
k=i+1
play port startBackgroundMusic twos.i twos.k
call note
]
threes=["" "" 1 101 "" 1 101 300 ""
for i 1 7 3
[
call begin
k=i+1
l=i+2
play port startBackgroundMusic threes.i threes.k threes.l
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
procedure first
[
say "1"
drop three
]
procedure second
[
say "2"
late=RScenePort 0
set late paused latest
drop two
]
procedure latest
say "late"
procedure third
say "3"
procedure last
say "4"
one=RScenePort 0
two=RScenePort 0
three=RScenePort 0
four=RScenePort 0
set one paused first
set two paused second
set three paused third
set four paused last
;> 500 background
;> 600 foreground
;> 700 background
;= 1
;= 2
;= 4
;= 1
;= 4
;= late
