; Handles of sounds, and animations that wait for theirs or do not. The boxes tell when.
yield off
procedure heard
[
get RECEIVER name who
MessageBox who+" is at rest"
]
procedure sound id loop
[
PlaySound id loop
text=text+" "+RESULT
]
text="handles"
call sound 207 ""
call sound 205 1
call sound 207 0
call sound 65535 0
call sound -1 0
call sound 99 0
call sound 207 0
KillSound 77
PauseSound 77
KillSound 1
KillSound 1
MessageBox text
;@ 1 WAVE resource 99 not found.
;@ 1 handles 0 1 2 -1 -1 -1 3
; its sound of 620 ms begins after 500; the frames behind it take 300
first=RAnimation 2003 100 100 5
set first paused heard
set first sequence 2
second=RAnimation 2003 200 100 5
set second paused heard
set second soundSync 0
set second sequence 2
pause 2
; one whose sound is off, and one that begins anew while its sound is heard
set first soundOn 0
set first sequence 2
set second soundSync 1
set second sequence 2
pause 0.7
set second sequence 2
pause 3
;@ 802 second is at rest
;@ 1454 first is at rest
;@ 2602 first is at rest
;@ 3884 second is at rest
quit
