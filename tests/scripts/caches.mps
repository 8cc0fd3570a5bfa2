; A scene goes on while its sounds are copied to the hard disk in the background; a sound that is
; played in the midst of it waits for the rest, and the copy goes when nobody plays from it any
; more.
yield off
CacheDLL sounds.rsc 1 0 1
CacheDLL light.rsc 0 1
StartTransition
Scene 100
procedure shown
[
frames=frames+1
if frames=3
[
PlaySound 210
say "three frames, sound" RESULT
UncacheDLL sounds.rsc
]
if frames=6
[
UncacheAllDLLs
UncacheAllDLLs 1
Scene 200
RandomNumber 4 4
say "six frames," RESULT
quit
]
]
frames=0
boat=RAnimation 2001 7
set boat frameNotification 1
set boat frameNotify shown
EndTransition 0
say "the scene stands"
;= the scene stands
;= three frames, sound 0
;= six frames, 4
;! ASEQ resource 200 not found.
