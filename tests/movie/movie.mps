; Movies straight onto the window and among other objects: where their frames go, what is seen of the rest,
; and in which colours. A frame lasts 90 ms, pause 0.1. On a screen that was made black only what is drawn anew
; is seen, and after EndTransition 1 only what the window draws anew. The movies are those of the folder include,
; made by zorbet-rsc movie --frame-time 9000 of plain frames of the colours 20 to 27; in parts.smk two blocks change
; in the second frame and one in the third, colours.smk has other palettes from its third and sixth on.
;: rsc golden
;$ ini:UseDirectDraw=0
;$ ini:UseDirectDraw=1 ini:DisplayFullScreen=1
;$ ini:UseDirectDraw=1 --screen 640x480x16 depth:16
;$ ini:UseDirectDraw=1 --screen 640x480x24 depth:24
;$ --screen 640x480x32 depth:32
yield off
procedure onBelow
say "below after" steps>0
procedure onMovie
[
get movie "x" left
say "the movie" left
]
procedure onFinished
[
get RECEIVER frame number
get RECEIVER name who
say who "finished at" number "after" steps "steps below"
]
procedure onStep
steps=steps+1
ActivateDLL golden.rsc
; before the first scene all is black. A movie in the window's colours has those of another one at its next
; frame, though nothing of it changes
movie=RSmackerMovie parts.smk 100 50 "" 0
other=RSmackerMovie colours.smk 640 50
play movie start
pause 0.2
play other start
pause 0.15
;> 316 screenshot others.png
pause 0.2
;> 496 screenshot changed.png
play other stop
pause 0.1
;> 586 screenshot own.png
; collecting, too
other=RSmackerMovie colours.smk 200 50 "" "" 1
set movie collecting 1
set movie frame 1
play movie start
play other start
pause 0.15
;> 721 screenshot collected.png
pause 0.2
;> 901 screenshot collectedlater.png
pause 0.1
set other collecting 0
;> 996 screenshot straight.png
pause 0.01
drop movie other

Scene 100
below=RAnimation 251 90 40 5
above=RAnimation 202 120 60 40
set below frameNotification 1
set below frameNotify onStep
set below mouseDown onBelow
play below forever
movie=RSmackerMovie parts.smk 100 50 "" 0
edge=RSmackerMovie plain.smk 620 470 "" 0
set movie finished onFinished
set movie mouseDown onMovie
set edge finished onFinished
; not seen, not hit
;> 1050 click 110 51
;= below after 1
pause 0.2
; then the window rests, and the movie is not dragged
steps=0
play movie start
;> 1185 screenshot started.png
;> 1190 drag 110 51 150 51
;> 1215 down 110 45
;> 1216 up 110 45
;= the movie 100
;= below after 0
pause 0.05
GoToBlack
;> 1265 screenshot black.png
;> 1275 screenshot parts.png
pause 0.1
; another one, clipped, is shown until it is dropped; the window then draws what both have covered
play edge start
GoToBlack
;> 1375 screenshot edge.png
pause 0.6
;= movie finished at 7 after 0 steps below
drop edge
EndTransition 1
;> 1865 screenshot left.png
pause 0.1
; from its last frame on it is shown whole
DisplayScreen
GoToBlack
steps="any"
play movie start
;> 1950 screenshot last.png
pause 0.1
;= movie finished at 7 after any steps below

; the scene is shown around it when the script wants it shown, and the movie over it at once
set below frameNotify
movie=RSmackerMovie plain.smk 100 50 "" 0
StartTransition
play movie start
;> 2040 screenshot dark.png
pause 0.05
EndTransition 0
;> 2082 screenshot around.png
pause 0.01
; just what is new
StartTransition
more=RAnimation 200 200 50 3
EndTransition 1
;> 2091 screenshot quick.png
pause 0.01
; invisible, and seen again at the next frame
set movie visible 0
DisplayScreen
;> 2148 screenshot hidden.png
pause 0.1
set movie visible 1
;> 2238 screenshot seen.png
pause 0.1
; elsewhere; the old picture stays
play movie place 300 200
;> 2328 screenshot elsewhere.png
; all of it after another program had the screen
;> 2338 background
;> 2348 foreground
;> 2353 screenshot elsewhere.back.png
pause 0.1
play movie stop
; no trace of it on either page
pause 0.01
DisplayScreen
play more offset 1 0
pause 0.01
;> 2386 screenshot gone.png
play more offset 1 0
;> 2389 screenshot goneagain.png
pause 0.1

; collecting: at first what the screen showed there; then among the others, and only what changes is drawn
drop more below
above=RAnimation 202 120 60 40
movie=RSmackerMovie parts.smk 100 50 "" 0 1
set movie "z" 30
play movie place 300 200
;> 2486 screenshot piece.png
pause 0.05
play movie place 100 50
play movie start
;> 2561 screenshot among.png
pause 0.05
GoToBlack
EndTransition 1
;> 2626 screenshot amongparts.png
pause 0.1
play movie place 120 80
DisplayScreen
;> 2661 screenshot moved.png
; dragged; its last picture stays
;> 2666 drag 125 95 225 195
pause 1
;> 3556 screenshot dragged.png
pause 0.01
play movie release
get movie collecting collects
get movie frames number
say "released" collects number
;= released 0 0
;> 3570 screenshot released.png
pause 0.01

; in the middle of it among the others, at once
movie=RSmackerMovie plain.smk 110 65 "" 0
play movie start
pause 0.02
set movie collecting 1
;> 3597 screenshot among0.png
pause 0.01
set above "z" 32767
;> 3606 screenshot among0above.png
pause 0.01
; back over all others, at once too; but not while another one is current, the one that was opened last
edge=RSmackerMovie plain.smk 620 470 "" 0
play edge start
lost=RSmackerMovie plain.smk 0 0
set movie collecting 0
get movie collecting collects
drop lost
set movie collecting 0
get movie collecting stays
drop edge
set movie collecting 0
get movie collecting now
say "collects" collects stays now
;= collects 1 1 0
;> 3611 screenshot over.png
pause 0.1
;> 3700 screenshot over1.png
play movie stop
pause 0.01
;> 3709 screenshot released.again.png
; where frames go, not whether there are any
set movie collecting 1
set movie collecting 0
play above place 90 100
pause 0.01
;> 3718 screenshot awake.png
play above place 120 60
set movie frame 4
play movie start
set movie collecting 1
pause 0.05
;> 3763 screenshot among4.png
