; A ring is dragged beyond the window and back, by its rim; through its hole the figure behind it is
; caught. Dropped for the first time, it may leave the window.
yield off
ActivateDLL golden.rsc
procedure dropped
SetCorralTrinketNormalization 0
Scene 100
figure=RAnimation 200 310 215 5
ring=RAnimation 233 300 200 9
set ring mouseUp dropped
DisplayScreen
