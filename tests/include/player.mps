; A player who does a lot: in the first visit he only presses W, and the script writes down what he
; does in the second one. Gestures are k, d, m, u, w, b or f for key, down, move, up, double,
; background or foreground, and behind that the key's letter, which is the name of the procedure
; that is called, a point as in "d20 30", or the number of one of the spots. A plot is a list of
; gestures and of steps (steps.mps), which are done with key A; it ends with "end".
verbs=["key " "down " "move " "up " "double " "background" "foreground"
spots.0=""
procedure write gesture
[
verb=gesture|1|1@"kdmuwbf"
spot=gesture|2
if (verb>1)*((" "@spot)=0)
spot=spots.spot
what=verbs.verb+spot
WriteToFile t+" "+what 1
t=t+1
]
procedure nextOfPlot
[
scene=scene+1
item=plot.scene
isGesture=(item|1|1@"dmuwbf")*(item|2|1<":")
]
procedure writePlot
for
[
call nextOfPlot
if isGesture
call write item
else
call write kA
if item="end"
break
; what follows comes in the same turn
if item="blink"
t=t-1
]
procedure A
drop wait
; Waits for the keys, and does the steps; so they are done in no handler.
procedure follow
for
[
wait
call nextOfPlot
for isGesture
call nextOfPlot
if item="end"
break
call do item
]
procedure blink
[
StartTransition
EndTransition 0
]
procedure W
[
OpenFile "drags"
t=50
call writeDrags
CloseFile
]
scene=0
procedure onKey
[
get keys key word
call $word
]
keys=RKbdInp 0
set keys keyPressed onKey
; what the script does behind its includes is for the second visit
pause 0.01
if ~t>1
wait
