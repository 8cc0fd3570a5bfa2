; Two rings in a group are dragged beyond the window's edge and back, then dropped; another one
; is moved by the script.
yield off
ActivateDLL golden.rsc
Scene 100
a=RAnimation 230 400 100 5
b=RAnimation 231 470 180 5
g=OMMultiTrinket 20
play g addTrinket "a"
play g addTrinket "b" 1
c=RAnimation 232 200 300 6
d=RAnimation 235 240 350 6
h=OMMultiTrinket 10
play h addTrinket "c"
play h addTrinket "d"
DisplayScreen
pause 1
play h offset 0-50 0-100
