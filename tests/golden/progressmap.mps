; A layout of its own, whose panel is a board over the scene: behind the figure and before it,
; dragged, at a place without levels, in practice, at a place of the script's, and while nobody
; plays.
;: rsc golden
;> 80 screenshot behind.png
; level 3 here; level 2 of CMA is refused
;> 110 click 450 84
;> 130 click 372 124
;> 150 screenshot refused.png
; dragged by the panel and by nothing else, out of the window
;> 200 drag 502 260 300 300
;> 230 down 210 260
;> 240 move 400 380
;> 250 screenshot dragged.png
;> 255 up 400 380
;> 350 screenshot hub.png
;> 440 screenshot practice.png
;> 470 click 96 360
;> 490 click 50 440
;> 530 screenshot placed.png
;> 620 screenshot nobody.png
yield off
ActivateDLL golden.rsc
Scene 100
world=RWorldPort 0
play world addIntProperty seenIt
play world activatePlayer "^W"
set world inGame 1
play world autoLevel CMA
figure=RAnimation 200 380 60 10
screen=RLapTrap CWS2 -1 11111 11111 5
DisplayScreen
pause 0.1
set screen z 20
pause 0.1
set screen x 200
set screen y 200
set screen movable 1
pause 0.1
drop screen
screen=RLapTrap CLOC05
pause 0.1
set world inGame 0
drop screen
screen=RLapTrap CMA -1 20
pause 0.1
set world inGame 1
drop screen
screen=RLapTrap CMA 12300 30 300 20
pause 0.1
play world removePlayer "^W"
drop screen
screen=RLapTrap CWS2
;! ASEQ resource 12999 not found.
;! ASEQ resource 12999 not found.
