; Handles of sounds, and animations that wait for theirs or do not. The boxes tell when.
yield off
include things.mps
procedure heard
[
get RECEIVER name who
MessageBox who+" is at rest"
]
procedure sound
[
call cut
PlaySound word words|1|1
line=line+" "+RESULT
call cut
]
call do "sound 207 -, sound 205 1, sound 207 0, sound 65535 0, sound -1 0, sound 99 0, sound 207 0"
KillSound 77
PauseSound 77
KillSound 1
KillSound 1
call tell
;=  0 1 2 -1 -1 -1 3
;@ 1 WAVE resource 99 not found.
; its sound of 620 ms begins after 500; the frames behind it take 300; one whose sound is off, and
; one that begins anew while its sound is heard
for i 1 2
[
t.i=RAnimation 2003 i*100 100 5
set t.i paused heard
]
call do "let 1 sequence 2, let 2 soundSync 0, let 2 sequence 2, rest 2, let 1 soundOn 0"
call do "let 1 sequence 2, let 2 soundSync 1, let 2 sequence 2, rest 0.7, let 2 sequence 2, rest 3"
;@ 802 t.2 is at rest
;@ 1454 t.1 is at rest
;@ 2602 t.1 is at rest
;@ 3884 t.2 is at rest
quit
