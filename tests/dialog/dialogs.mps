; Dialogs: what is missing, their depths, a handler that opens the next one, and who hears of the background
; while ports and dialogs come and go.
;$ --until 60000
yield off
procedure onBorn
[
get RECEIVER "z" depth
get RECEIVER "x" left
all=all+" "+left+","+depth
]
procedure onBeside
say "beside"
procedure onBoat
say "boat"
procedure onTwice
say "twice"
procedure onButton
[
get question selectedButton value
say "button" value
drop question
call ask
get question selectedButton value
say "the next one: ["+value+"]"
]
procedure ask
[
question=RDialog 67553 20
play question addButton 2203 1
play question addButton 2205 0-3
set question buttonPressed onButton
set question mouseDown onBeside
]
Scene 100
; its parts lie one above it, and it is not dragged; the number of the picture has 16 bits
set OMAnimation born onBorn
set RPButton born onBorn
set RHotSpot born onBorn
all="parts"
call ask
say all
;= parts 0,21 1,21 359,21 501,21
set OMAnimation born
set RPButton born
set RHotSpot born
boat=RAnimation 2001 20
set boat mouseDown onBoat
set boat dblClick onTwice
;> 11 down 5 5
;> 16 move 105 105
;> 21 up 105 105
;> 31 double 56 310
;> 41 up 56 310
;> 51 click 535 335
;= beside
;= beside
;= button -3
;= the next one: []
pause 0.1
set question "z" 18
;> 101 double 56 310
;> 111 up 56 310
;= twice
pause 0.1
; its parts are not touchy when it is not
set question "z" 20
set question touchy 0
;> 191 click 56 310
;> 211 click 535 335
;= boat
pause 0.1
set question touchy 1
;> 281 click 380 335
;= beside
;= button 1
;= the next one: []
pause 0.1
drop question
; what is missing
question=RDialog 99 3
play question addButton 99 1
play question addGraphic 99
;! ASEQ resource 99 not found.
;! ASEQ resource 99 not found.
;! ASEQ resource 99 not found.
set question mouseDown onBeside
get question "z" depth
;> 371 click 5 5
;= beside
pause 0.1
drop question boat
; two ports and two dialogs, made in turn, go in these orders, with a new
; background in the midst: the ports that hear of a click before each
procedure onBackground
[
get RECEIVER name who
told=told+(who|7)
]
orders=["1234" "4321" "2413" "3142" "1324" "4231"
for order 1 6
[
told=":"
for i 1 3 2
[
thing.i=RScenePort 0
set thing.i backgroundClicked onBackground
k=i+1
thing.k=RDialog 2017 20
set thing.k visible 0
]
for step 1 4
[
pause 0.1
told=told+"."
if step=2
Scene 100
i=orders.order
i=i|step|1
drop thing.i
]
pause 0.1
say orders.order told
]
;= 1234 :....
;= 4321 :...1.
;= 2413 :..13.3.
;= 3142 :....
;= 1324 :....
;= 4231 :..13.1.
;> 641 down 5 5
;> 731 down 5 5
;> 821 down 5 5
;> 911 down 5 5
;> 1001 down 5 5
;> 1091 down 5 5
;> 1181 down 5 5
;> 1271 down 5 5
;> 1361 down 5 5
;> 1451 down 5 5
;> 1541 down 5 5
;> 1631 down 5 5
;> 1721 down 5 5
;> 1811 down 5 5
;> 1901 down 5 5
;> 1991 down 5 5
;> 2081 down 5 5
;> 2171 down 5 5
;> 2261 down 5 5
;> 2351 down 5 5
;> 2441 down 5 5
;> 2531 down 5 5
;> 2621 down 5 5
;> 2711 down 5 5
;> 2801 down 5 5
;> 2891 down 5 5
;> 2981 down 5 5
;> 3071 down 5 5
;> 3161 down 5 5
;> 3251 down 5 5
