; What the scripts of puzzles share: a player who does a lot. In the first visit he only presses w, and the script
; writes down what he does in the second one: gestures, which are k, d, m or u for key, down, move or up, and behind
; that the key's letter or a point, or the number of one of the spots. What follows key b comes in the same turn.
verbs=["key " "down " "move " "up "
procedure write gesture
[
verb=gesture|1|1@"kdmu"
spot=gesture|2
if (verb>1)*((" "@spot)=0)
spot=spots.spot
what=verbs.verb+spot
WriteToFile t+" "+what 1
if gesture#"kb"
t=t+1
]
procedure writeAll
[
OpenFile "drags"
t=30
call writeDrags
CloseFile
]
; Events by short names, with their objects.
procedure hear what
[
get RECEIVER name who
heard=heard+" "+who+"."+what
]
procedure onPickedUp
call hear "up"
procedure onDropped
call hear "drop"
procedure onAdded
call hear "in"
procedure onRemoved
call hear "out"
procedure onFlyOn
call hear "on"
procedure onFlyOff
call hear "off"
procedure onPlaced
call hear "put"
procedure onTaken
call hear "take"
procedure onFull
call hear "full"
procedure onUsed
call hear "used"
procedure onSolved
call hear "solved"
procedure onWrong
call hear "wrong"
procedure tell
[
say act heard
heard=""
]
heard=""
