; Containers of all kinds without a player: what is right, where answers come to rest, who is
; locked, where they go with their container, and what sounds. Missing sounds are told by boxes, and
; so is what is heard when.
;: rsc golden
yield off
ActivateDLL golden.rsc
include steps.mps
; What they are made of.
c.1=RValueContainer 220
call do "look c.1 x y width height z"
c.1=RValueContainer 220 9
call do "look c.1 x y width height z"
c.1=RValueContainer 280 40 50 8
call do "look c.1 x y width height z"
c.1=RValueContainer 280 40 50 300 200 8
call do "look c.1 x y width height z, tell"
c.1=RValueContainer -1 40 50 300 200 8
call do "look c.1 x y width height z"
c.1=RValueContainer -1 40 50 300 200
call do "look c.1 x y width height z"
c.1=RValueContainer 99 40 50 300 200 8
call do "look c.1 x y width height z"
c.1=RValueContainer -1 40 50 -300 200 8
call do "look c.1 x y width height z"
c.1=RValueContainer -1 40 50 8
call do "look c.1 x y width height z, tell"
;=  302,197,30,36,50 302,197,30,36,9 40,50,70,60,8 40,50,70,60,8
;=  40,50,300,200,8 40,50,300,200,0 40,50,300,200,8 40,50,0,200,8 40,50,0,0,8
;! ASEQ resource 99 not found.

call makeKinds 60 40
procedure make kind
[
drop p a.1 a.2 a.3 a.4
p=RPuzzle 0
c.1=kinds.kind
play c.1 place 100 50
]
procedure answer number picture
[
a.number=RGraphicAnswer picture 300 300 5
set a.number attribute number
play p addAnswer "a."+number
]
procedure three first second third
[
call answer 1 first
call answer 2 second
call answer 3 third
]
wants=[value attribute value answerMatchString value correctSegments

; Values are compared as numbers, and texts letter for letter.
texts=["3" "2" "03" " 3" "3 apples" "-3" "apples" "apples" "3" "3" "0" "3.9" "99999999999" "Porto"
texts=["porto" "Porto " ""
values=["3" "3" "3" "3" "3" "-3" "0" "1" "3.9" "three" "three" "3" "2147483647" "Porto" "Porto"
values=["Porto" "Porto"
for j 1 2
[
call make j
call answer 1 266
for i 1 17
[
set c.1 wants.j values.i
set a.1 attribute texts.i
call do "put a.1 c.1, look c.1 isSolved, take a.1 c.1"
]
call do "tell"
]
call do "put a.1 c.1, look c.1 answerCount isFull isSolved, take a.1 c.1"
call do "give c.1 answerCount 1 isFull 1 isSolved 1, look c.1 answerCount isFull isSolved, tell"
;=  1 0 1 1 1 1 1 0 1 0 1 1 1 1 1 1 1
;=  1 0 0 0 0 1 0 0 0 0 0 0 0 1 0 0 0
;=  1,1,0 0,0,0
; Other properties, and one that there is not, which is no empty one; an attribute is a value until
; there is one.
call do "give a.1 attribute Porto tag Faro, put a.1 c.1, look c.1 isSolved"
call do "give c.1 answerProperty tag, look c.1 isSolved, give c.1 attribute Faro, look c.1 isSolved"
call do "give c.1 answerProperty weight, look c.1 isSolved, give c.1 attribute , look c.1 isSolved"
call make 1
call answer 1 266
call do "give c.1 value 7, put a.1 c.1, give a.1 attribute 7, look c.1 isSolved, give a.1 value 8"
call do "look c.1 isSolved, tell"
;=  1 0 1 0 0 1 0

; The middle comes to the middle, halves are rounded toward zero; then to a point, and the hot point
; there.
pictures=[266 263 261 262 266 266 266 266
insets=["" "" "" "" " extraLeft 5 extraTop 2 extraBottom 1" " extraRight 5 extraBottom 3"
insets=[" extraLeft -4" " extraLeft 30"
for j 1 2
[
call make j
for i 1 8
[
call answer 1 pictures.i
call do "give a.1 extraTop 0"+insets.i+", put a.1 c.1, look a.1 x y z"
]
call tell
]
;=  120,60,11 117,57,11 112,46,11 83,60,11 117,59,11 122,61,11 122,60,11 105,60,11
;=  120,60,11 117,57,11 112,46,11 83,60,11 117,59,11 122,61,11 122,60,11 105,60,11
points=["extraLeft 0" "extraLeft 5" "extraLeft -5 isUsingHotPoint 1" "isUsingHotPoint 1"
points=["isUsingHotPoint 0"
call do "give c.1 answerAnchorPointX 7 answerAnchorPointY -3"
for i 1 5
[
call answer 1 266
call do "give a.1 extraTop 3 extraRight 1 extraBottom 2 hotPointX 4 hotPointY 9 "+points.i
call do "give c.1 anchorAnswerAtPoint "+(i<4)+", put a.1 c.1, look a.1 x y z"
]
call tell
;=  107,47,11 107,47,11 103,38,11 116,50,11 120,59,11

; Right answers are locked by some; all answers by who is disabled, until they leave or are
; released.
for j 1 6
[
call make j
set c.1 wants.j 3
call answer 1 266
call do "give c.1 lockCorrectAnswers 1, give a.1 attribute 4, put a.1 c.1, look a.1 movable"
call do "take a.1 c.1, give a.1 attribute 3, put a.1 c.1, look c.1 isSolved, look a.1 movable"
call do "give c.1 enabled 5, look a.1 movable, give c.1 enabled 0, look a.1 movable, take a.1 c.1"
call do "look a.1 movable, give a.1 attribute 4, put a.1 c.1, look a.1 movable, give a.1 movable 0"
call do "take a.1 c.1, look a.1 movable, put a.1 c.1, give c.1 enabled 1, look a.1 movable"
call do "give c.1 enabled 0, lose c.1, look a.1 isUsed movable, tell"
]
;=  1 1 0 1 0 1 0 0 1 0,1
;=  1 1 0 1 0 1 0 0 1 0,1
;=  1 1 1 1 0 1 0 0 1 0,1
;=  1 1 1 1 0 1 0 0 1 0,1
;=  1 1 1 1 0 1 0 0 1 0,1
;=  1 1 0 1 0 1 0 0 1 0,1
; Answers go where their container goes, also in a group; one that goes leaves.
for j 1 6
[
call make j
call answer 1 266
call answer 2 266
call do "put a.1 c.1, look a.1 x y z, give c.1 x 130, look a.1 x y z, give c.1 y -20"
call do "look a.1 x y z, ask c.1 place 200 100, ask c.1 offset -3 8, look a.1 x y z"
call do "give c.1 visible 0 visible 1"
group=OMMultiTrinket 0
play group addTrinket "c.1" 20
play group offset 11 7
call do "look a.1 x y z, look a.2 x y z, lose a.1, look c.1 x y answerCount, tell"
drop group
]
;=  120,60,11 150,60,11 150,-10,11 217,118,11 228,125,21 300,300,5 208,115,0
;=  120,60,11 150,60,11 150,-10,11 217,118,11 228,125,21 300,300,5 208,115,0
;=  120,70,5 150,70,5 150,0,5 217,128,5 228,135,15 300,300,5 208,115,0
;=  100,60,11 130,60,11 130,-10,11 197,118,11 208,125,21 300,300,5 208,115,0
;=  100,60,11 130,60,11 130,-10,11 197,118,11 208,125,21 300,300,5 208,115,0
;=  93,60,11 123,60,11 123,-10,11 190,118,11 201,125,21 300,300,5 208,115,0

; Copies are empty and have the settings; of who is locked in, they are free.
shared=" lockCorrectAnswers rejectIncorrectAnswers enabled x y z tag width height"
own=["value highlighted"
own=["attribute answerProperty anchorAnswerAtPoint answerAnchorPointX answerAnchorPointY doPixelCompare"
own=["value solvedAnswerCount droppedSound" "deltaZ slideSound" "value deltaZ slideSound"
own=["correctSegments infoVerticalOffset"
news=["value 9 highlighted 1"
news=["attribute 9 answerProperty tag anchorAnswerAtPoint 1 answerAnchorPointX 9 answerAnchorPointY 8 doPixelCompare 1"
news=["value 9 solvedAnswerCount 9 droppedSound 9" "deltaZ 9 slideSound 8"
news=["value 9 deltaZ 8 slideSound 7" "correctSegments 9 infoVerticalOffset 8"
for j 1 6
[
call make j
call answer 1 266
call do "give c.1 "+news.j
call do "give c.1 lockCorrectAnswers 1 rejectIncorrectAnswers 1 enabled 0 x 9 y 8 z 7 tag t width 1"
call do "put a.1 c.1"
c.2=c.1
a.2=a.1
for i 1 2
[
call do "look c."+i+" "+own.j
call do "look c."+i+shared
]
call do "look c.2 answerCount, ask c.2 place 0 0, look a.1 isUsed y, look a.2 movable isUsed, tell"
]
;=  9,1 1,1,0,9,8,7,t,60,40 9,1 1,1,0,9,8,7,t,60,40 0 1,18 1,0
;=  9,tag,1,9,8,1 1,1,0,9,8,7,t,60,40 9,tag,1,9,8,1 1,1,0,9,8,7,t,60,40 0 1,16 1,0
;=  9,9,9 1,1,0,9,8,7,t,60,40 9,9,9 1,1,0,9,8,7,t,60,40 0 1,28 1,0
;=  9,8 1,1,0,9,8,7,t,60,40 9,8 1,1,0,9,8,7,t,60,40 0 1,18 1,0
;=  9,8,7 1,1,0,9,8,7,t,60,40 9,8,7 1,1,0,9,8,7,t,60,40 0 1,18 1,0
;=  9,8 1,1,0,9,8,7,t,60,40 9,8 1,1,0,9,8,7,t,60,40 0 1,18 1,0
; What is lit shows its second sequence, if there is one.
c.1=RValueContainer 280 100 50 10
c.2=RValueContainer -1 100 50 60 40 10
for i 1 2
for j 1 0 -1
call do "give c."+i+" highlighted "+j+", look c."+i+" highlighted sequence"
call tell
;=  1,2 0,1 1,1 0,1

; Stacks.
call make 3
c.1=RStackingContainer -1 100 50 60 100 30
call do "look c.1 answerCount isFull isSolved answerValue"
call three 260 261 266
call do "give c.1 droppedSound 8 value 6, give a.1 z 12, give a.3 extraTop 9"
for i 1 3
call do "put a."+i+" c.1, look a."+i+" x y z, look c.1 answerCount isFull isSolved answerValue"
call tell
call do "give c.1 solvedAnswerCount 3, look c.1 isSolved, give c.1 solvedAnswerCount 2"
call do "look c.1 isSolved, give c.1 solvedAnswerCount 0, look c.1 isSolved"
call do "give c.1 solvedAnswerCount -1, look c.1 isSolved, ask p removeAnswer a.1 0, look a.2 x y"
call do "look a.3 x y, ask p removeAnswer a.3 0, look a.2 x y"
call do "look c.1 answerCount isFull isSolved answerValue, tell"
;=  0,0,1,0 110,110,12 1,0,0,1 112,61,5 2,0,0,3 120,41,5 3,1,1,6
;=  1 0 0 1 112,101 120,81 112,101 1,0,0,2
;! WAVE resource 8 not found.
numbers=["2147483647" "2147483647" "apples" "-7 pears"
call make 3
for i 1 4
[
call answer i 266
set a.i attribute numbers.i
call do "put a."+i+" c.1"
]
call do "look c.1 answerCount isSolved answerValue, take a.1 c.1"
call do "look c.1 answerCount isSolved answerValue, give c.1 answerValue 3, give a.2 value 7"
call do "look c.1 answerCount isSolved answerValue, tell"
;=  4,0,2147483647 3,0,2147483640 3,1,0
; One changes its size in it: those above fall as far as it was high before.
call make 3
c.1=RStackingContainer -1 100 50 60 100 30
call three 266 266 266
call do "put a.1 c.1, put a.2 c.1, put a.3 c.1, give a.2 extraBottom 15, take a.2 c.1, look a.3 x y"
call do "put a.2 c.1, look a.2 x y, look c.1 isFull, tell"
;=  120,110 120,105 0

; Rows: in the order of the middles, half a pixel counts; gaps stay until the next is placed.
procedure reads
[
call do "look c.1 answerMatchString"
for i 1 4
if (~a.i)=1
call do "look a."+i+" x"
]
procedure insert number left
[
call do "ask a."+number+" place "+left+" 50, put a."+number+" c.1"
call reads
]
call make 4
c.1=RHorizontalContainer -1 100 50 100 40 30
call three 266 266 266
call answer 4 266
call do "give a.1 snapSound 1, give a.2 snapSound 2, give a.3 snapSound 3, give a.4 snapSound 4"
call do "give c.1 slideSound 8"
call insert 2 170
call insert 1 99
call insert 3 120
call tell
call do "give a.4 extraRight 1"
call insert 4 120
call do "look a.4 y z, take a.4 c.1, take a.1 c.1"
call reads
call do "give c.1 deltaZ -5, give a.1 extraLeft -2 extraRight 4"
call insert 1 190
call do "look a.1 y z, tell"
;=  2 300 100 300 300 12 100 120 300 300 123 100 120 140 300
;=  1423 100 139 159 120 60,31 23 300 139 159 300 231 142 100 120 300 60,25
;! WAVE resource 2 not found.
;! WAVE resource 1 not found.
;! WAVE resource 8 not found.
;! WAVE resource 3 not found.
;! WAVE resource 4 not found.
;! WAVE resource 8 not found.
;! WAVE resource 1 not found.
;! WAVE resource 8 not found.
; Into the gap that it had left: nobody else moves.
call do "take a.2 c.1"
call insert 2 105
call tell
;=  231 142 100 120 300
;! WAVE resource 2 not found.
; The right texts: any of them, nothing is read as nothing.
procedure match
[
call cut
play c.1 addAnswerMatch word
]
call make 4
call three 266 266 266
call do "give a.1 attribute m, give a.2 attribute ar, look c.1 isSolved, put a.1 c.1, match mar"
call do "match arm, look c.1 isSolved, put a.2 c.1, look c.1 isSolved, take a.1 c.1"
call do "ask a.1 place 180 50, put a.1 c.1, look c.1 answerMatchString isSolved"
call do "give c.1 answerMatchString Arm, look c.1 isSolved, match arm, look c.1 isSolved"
call do "ask c.1 dumpAnswerMatches, look c.1 isSolved, take a.1 c.1, take a.2 c.1"
call do "look c.1 isSolved, give c.1 answerMatchString , look c.1 isSolved, tell"
;=  0 0 1 arm,1 0 1 0 0 1

; Cloth: five parts of 30 pixels; the first free ones side by side are covered.
procedure cover number amount
[
call answer number 266
call do "give a."+number+" value "+amount+", put a."+number+" c.1"
call do "look a."+number+" x y z, look c.1 frame isFull"
]
call make 6
c.1=RFabricContainer 284 100 50 30
call do "look c.1 isSolved, give c.1 correctSegments 3 lockCorrectAnswers 1"
call cover 1 1
call cover 2 2
call do "look c.1 isSolved, look a.1 movable, look a.2 movable, take a.1 c.1"
call do "give c.1 correctSegments 2, look c.1 isSolved frame, look a.2 x y, tell"
call cover 1 -3
call cover 3 pears
call cover 4 1
call tell
;=  1 105,52,31 2,0 150,52,31 4,0 1 0 0 1,3 150,52
;=  105,52,31 4,0 195,52,31 5,0 225,52,31 6,1
; Ten parts of an area, not all as wide as others, and of a picture that has one frame; one too many
; is the last.
c.1=RFabricContainer -1 100 50 103 40 5
for i 1 11
[
call answer i 266
call do "give a."+i+" extraRight 10 value 1, put a."+i+" c.1, look a."+i+" x"
]
call tell
;=  100 110 120 130 141 151 161 172 182 192 192
c.2=RFabricContainer 440 100 50 5
c.3=RFabricContainer 284 100 50 5
for i 1 3
for j 5 11 3
call do "give c."+i+" correctSegments "+j+", look c."+i+" correctSegments"
call do "give c.1 correctSegments 10 correctSegments -1, look c.1 correctSegments, tell"
;=  5 8 8 5 8 8 5 5 5 10
;! RFabricContainer: correctSegments out of range
;! RFabricContainer: correctSegments out of range
;! RFabricContainer: correctSegments out of range
;! RFabricContainer: correctSegments out of range
;! RFabricContainer: correctSegments out of range
; The information goes with the cloth.
procedure born
c.9=&RECEIVER
set OMAnimation born born
call make 6
c.1=RFabricContainer 284 100 50 30
call do "give c.1 infoAOID 285, look c.9 x y z frame, give c.1 infoVerticalOffset 4, look c.9 x y"
call do "give c.1 infoVerticalOffset -4, look c.9 x y"
call cover 1 1
call do "look c.9 frame"
call cover 2 3
call do "look c.9 frame, take a.2 c.1, take a.1 c.1, look c.9 frame, ask c.1 place 110 70"
call do "look c.9 x y, tell, give c.1 z 40, look c.9 z, give c.1 visible 0, look c.9 visible"
call do "give c.1 visible 1, look c.9 visible"
c.2=c.1
call do "look c.9 x y z, give c.1 infoAOID -1, look c.9 x y z, give c.2 infoAOID 99, look c.9 x"
call do "look c.2 infoAOID, tell"
quit
;=  154,74,31,1 154,78 154,34 105,52,31 2,0 2 165,52,31 5,0 4 1 164,54
;=  41 0 1 164,54,41 164,54,41 41 99
;! ASEQ resource 99 not found.
;! it.here is not a trinket,\nso "get" won't work here
