; Answers and containers in other colours, beside others with the same pictures. Only screens of 256
; colours can do that.
;: rsc golden
;$
;$ ini:UseDirectDraw=1
;> 50 screenshot start.png
; over the container that has another colour for its highlight too
;> 100 down 62 202
;> 120 move 157 72
;> 130 screenshot over.png
include golden.mps
a.1=RGraphicAnswer 261 60 200 10
a.2=RGraphicAnswer 261 120 200 10
c.1=RAttributeContainer 280 40 60 5
c.2=RAttributeContainer 280 140 60 5
c.3=RFabricContainer 284 260 60 5
c.4=RFabricContainer 284 440 60 5
set c.4 infoAOID 285
p=RPuzzle 0
play p addAnswer "a.1"
play p addContainer "c.2"
play a.1 replacePaletteEntry 21 24
play c.2 replacePaletteEntry 27 22
play c.2 replacePaletteEntry 100 23
play c.4 replacePaletteEntry 13 23
DisplayScreen
