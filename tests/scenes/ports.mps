; Scene ports: which arguments of the music count, and who is told of what in which order.
;$ --until 3000
yield off
port=RScenePort 0
procedure tell
[
get port backgroundMusicID id
get port backgroundMusicVolume volume
get port isBackgroundMusicEnabled on
say id volume on
]
call tell
;= -1 100 1
; each from 100 at 40, as many as there are
procedure from
[
play port stopBackgroundMusic
play port startBackgroundMusic 100 40
]
call from
play port startBackgroundMusic
call tell
;= 100 40 1
play port startBackgroundMusic 101
call tell
;= 101 40 1
play port startBackgroundMusic 102 90
call tell
;= 102 90 1
call from
play port startBackgroundMusic "" 90
;! Bad WAVE resource id: 0
call tell
;= 0 90 1
call from
play port startBackgroundMusic "" "" 1
;! Bad WAVE resource id: 0
call tell
;= 0 0 1
play port startBackgroundMusic 101 "" 1
call tell
;= 101 0 1
play port startBackgroundMusic 101 300 ""
call tell
;= 101 100 1
play port startBackgroundMusic 101 0-5
call tell
;= 101 0 1
call from
play port startBackgroundMusic 0-1
call tell
;= -1 40 1
call from
play port startBackgroundMusic 65535
call tell
;= -1 40 1
; a resource that is not there is remembered, as is all while the music is off
call from
play port startBackgroundMusic 99 50 2
call tell
;= 99 50 1
;! WAVE resource 99 not found.
set port isBackgroundMusicEnabled 0
play port startBackgroundMusic 100 60 5
call tell
;= 100 60 0
set port isBackgroundMusicEnabled 7
call tell
;= 100 60 1
set port isBackgroundMusicEnabled 7
set port backgroundMusicVolume 200
set port backgroundMusicID 65637
call tell
;= 101 100 0

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
