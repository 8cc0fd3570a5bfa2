; Movies straight onto the window and among other objects: where their frames go, and in which
; colours. A frame lasts 90 ms, pause 0.1. On a black screen only what is drawn anew is seen, after
; EndTransition 1 what the window draws anew. The movies are of plain frames of colours 20 to 27;
; two blocks of parts.smk change in frame 2 and one in 3, colours.smk has other palettes from frames
; 3 and 6 on, all of a few colours.
;: rsc golden
;$ ini:UseDirectDraw=1 ini:DisplayFullScreen=1
;$ ini:UseDirectDraw=1 --screen 640x480x24 depth:24
;$ --screen 640x480x32 depth:32
yield off
include things.mps
procedure black
GoToBlack
procedure onBelow
line=line+" below "+(counted>0)
procedure onMovie
call do "note movie"
procedure onFinished
[
get RECEIVER frame number
line=line+" at "+number+" after "+counted
]
procedure onStep
counted=counted+1
ActivateDLL golden.rsc
; in the window's colours it has those of another one at its next frame, though nothing changes
t.1=RSmackerMovie parts.smk 100 50 "" 0
t.2=RSmackerMovie colours.smk 640 50
call do "run 1 start, rest 0.2, run 2 start, rest 0.35, run 2 stop, rest 0.1"
;> 316 screenshot others.png
;> 586 screenshot own.png
t.2=RSmackerMovie colours.smk 200 50 "" "" 1
call do "let 1 collecting 1, let 1 frame 1, run 1 start, run 2 start, rest 0.45"
;> 721 screenshot collected.png
call do "let 2 collecting 0, rest 0.01, lose t.1, lose t.2"
;> 996 screenshot straight.png

Scene 100
t.4=RAnimation 251 90 40 5
t.5=RAnimation 202 120 60 40
t.1=RSmackerMovie parts.smk 100 50 "" 0
t.3=RSmackerMovie plain.smk 620 470 "" 0
set t.4 frameNotify onStep
set t.4 mouseDown onBelow
set t.1 finished onFinished
set t.1 mouseDown onMovie
set t.3 finished onFinished
; not seen, not hit
call do "let 4 frameNotification 1, run 4 forever, rest 0.2"
;> 1050 tap 110 51
; then the window rests, and the movie is not dragged
counted=0
call do "run 1 start, rest 0.05, black, rest 0.1"
;> 1185 screenshot started.png
;> 1190 pull 110 51 150 51
;> 1215 tap 110 45
;> 1275 screenshot parts.png
; another one, clipped, is shown until it is dropped; the window then draws what both have covered
call do "run 3 start, black, rest 0.6, lose t.3, finish 1, rest 0.1"
;> 1375 screenshot edge.png
;> 1865 screenshot left.png
; from its last frame on it is shown whole
call do "show, black, run 1 start, rest 0.1, tell"
;> 1950 screenshot last.png
;=  below 1 movie below 0 at 7 after 0 at 7 after 8
; the scene is shown around it when the script wants it shown, and the movie over it at once
set t.4 frameNotify
t.1=RSmackerMovie plain.smk 100 50 "" 0
call do "begin, run 1 start, rest 0.05, finish 0, rest 0.02"
;> 2082 screenshot around.png
; invisible, and seen again at the next frame
t.6=RAnimation 200 200 50 3
call do "let 1 visible 0, show, rest 0.1, let 1 visible 1, rest 0.1"
;> 2148 screenshot hidden.png
;> 2238 screenshot seen.png
; elsewhere; all of it after another program had the screen; then no trace of it on either page
call do "run 1 place 300 200, rest 0.1"
;> 2328 screenshot elsewhere.png
;> 2338 background
;> 2348 foreground
;> 2353 screenshot elsewhere.back.png
call do "run 1 stop, rest 0.01, show, run 6 offset 1 0, rest 0.01, run 6 offset 1 0, rest 0.1"
;> 2386 screenshot gone.png
;> 2389 screenshot goneagain.png

; collecting: at first what the screen showed there; then among the others, drawing what changes
call do "lose t.6, lose t.4"
t.5=RAnimation 202 120 60 40
t.1=RSmackerMovie parts.smk 100 50 "" 0 1
call do "let 1 z 30, run 1 place 300 200, rest 0.05, run 1 place 100 50, run 1 start"
;> 2486 screenshot piece.png
call do "rest 0.05, black, finish 1, rest 0.1"
;> 2561 screenshot among.png
;> 2626 screenshot amongparts.png
call do "run 1 place 120 80, show, rest 1, rest 0.01, run 1 release, rest 0.01"
;> 2666 pull 125 95 225 195
;> 3556 screenshot dragged.png
;> 3570 screenshot released.png
; in the middle of it among the others, at once
t.1=RSmackerMovie plain.smk 110 65 "" 0
call do "run 1 start, rest 0.02, let 1 collecting 1, rest 0.01, let 5 z 32767, rest 0.01"
;> 3597 screenshot among0.png
; back over all others, at once; but not while another one is current, the one opened last
t.3=RSmackerMovie plain.smk 620 470 "" 0
call do "run 3 start"
t.7=RSmackerMovie plain.smk 0 0
call do "let 1 collecting 0, of 1 collecting, lose t.7, let 1 collecting 0, of 1 collecting"
call do "lose t.3, let 1 collecting 0, of 1 collecting, tell, rest 0.1, run 1 stop, rest 0.01"
;=  1 1 0
;> 3611 screenshot over.png
; where frames go, not whether there are any
call do "let 1 collecting 1, let 1 collecting 0, run 5 place 90 100, rest 0.01"
;> 3718 screenshot awake.png
call do "run 5 place 120 60, let 1 frame 4, run 1 start, let 1 collecting 1, rest 0.05"
;> 3763 screenshot among4.png
