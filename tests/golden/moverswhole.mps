; Eight rings that cross each other, some in front of others; everything is drawn again each time.
;: rsc golden
;: same movers
;$ screens
;> 50 screenshot start.png
;> 300 screenshot crossing.png
;> 900 screenshot end.png
yield off
ActivateDLL golden.rsc
Scene 100
a=RAnimation 230 20 40 1
b=RAnimation 231 60 200 2
c=RAnimation 232 300 60 3
d=RAnimation 233 200 150 3
e=RAnimation 234 420 40 4
f=RAnimation 235 350 300 5
g=RAnimation 236 500 200 6
h=RAnimation 237 100 350 7
DisplayScreen
for i 1 60
[
play a offset 5 3
play b offset 6 0-2
play c offset 0-3 4
play d offset 2 1
play e offset 0-5 5
play f offset 0-4 0-3
play g offset 0-7 1
play h offset 3 0-4
DisplayScreen
pause 0.01
]
