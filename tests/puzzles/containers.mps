; Containers of all kinds without a player: what is right, where answers come to rest, who is
; locked, where they go with their container, and what sounds. Missing sounds are told by boxes.
;: rsc golden
yield off
ActivateDLL golden.rsc
include steps.mps
; What they are made of.
c.1=RValueContainer 220
c.2=RValueContainer 220 9
c.3=RValueContainer 280 40 50 8
c.4=RValueContainer 280 40 50 300 200 8
c.5=RValueContainer -1 40 50 300 200 8
c.6=RValueContainer -1 40 50 300 200
c.7=RValueContainer 99 40 50 300 200 8
c.8=RValueContainer -1 40 50 -300 200 8
c.9=RValueContainer -1 40 50 8
for i 1 9
[
call do "look c."+i+" x y width height z"
if i%5=4
call tell
]
call makeKinds 60 40
procedure make kind
[
drop p a.1 a.2 a.3 a.4
p=RPuzzle 0
c.1=kinds.kind
play c.1 place 100 50
for i 1 4
[
a.i=RGraphicAnswer 266 300 300 5
set a.i attribute i
play p addAnswer "a."+i
]
]
wants=[value attribute value answerMatchString value correctSegments
; Values are compared as numbers, and texts letter for letter.
texts=["3" "2" "03" "3 apples" "apples" "99999999999" "Porto" "porto" "Porto " ""
values=["3" "3" "3" "3" "0" "2147483647" "Porto" "Porto" "Porto" "Porto"
for j 1 2
[
call make j
for i 1 10
[
set c.1 wants.j values.i
set a.1 attribute texts.i
call do "put a.1 c.1, look c.1 isSolved, take a.1 c.1"
]
]
; Other properties, and one that there is not, which is no empty one; an attribute is a value until
; there is one.
call do "put a.1 c.1, look c.1 answerCount isFull isSolved, give a.1 attribute Porto tag Faro"
call do "look c.1 isSolved, give c.1 answerProperty tag, look c.1 isSolved, give c.1 attribute Faro"
call do "look c.1 isSolved, give c.1 answerProperty weight, look c.1 isSolved, give c.1 attribute "
call do "look c.1 isSolved"
call make 1
call do "give c.1 value 7, put a.1 c.1, give a.1 attribute 7, look c.1 isSolved, give a.1 value 8"
call do "look c.1 isSolved, tell"
; The middle comes to the middle, halves are rounded toward zero; the corner to a point; the hot
; point to the corner or the point.
call make 1
a.1=RGraphicAnswer 262 300 300 5
call do "put a.1 c.1, look a.1 x y z, take a.1 c.1, give a.2 extraLeft 5 extraTop 2 extraBottom 1"
call do "put a.2 c.1, look a.2 x y z"
call make 2
call do "give a.1 extraLeft 5 extraTop 3 extraBottom 2 hotPointX 4 hotPointY 9"
call do "give a.2 isUsingHotPoint 1 hotPointX 4 hotPointY 9, give c.1 answerAnchorPointX 7"
call do "give c.1 answerAnchorPointY -3 anchorAnswerAtPoint 1"
for j 1 2
[
for i 1 2
call do "put a."+i+" c.1, look a."+i+" x y, take a."+i+" c.1"
set c.1 anchorAnswerAtPoint 0
]
call tell
; Right answers are locked by some; all answers by who is disabled, until they leave or are
; released. They go where their container goes, also in a group; one that goes leaves.
procedure hold
[
call make j
set c.1 wants.j 3
call do "give c.1 lockCorrectAnswers 1, give a.1 attribute 4, put a.1 c.1, look a.1 movable"
call do "take a.1 c.1, give a.1 attribute 3, put a.1 c.1, look c.1 isSolved, look a.1 movable"
call do "give c.1 enabled 5, look a.1 movable, give c.1 enabled 0, look a.1 movable, take a.1 c.1"
call do "look a.1 movable, give a.1 attribute 4, put a.1 c.1, look a.1 movable, give a.1 movable 0"
call do "take a.1 c.1, look a.1 movable, put a.1 c.1, give c.1 enabled 1, look a.1 movable"
call do "give c.1 enabled 0, lose c.1, look a.1 isUsed movable"
call make j
call do "put a.1 c.1, give c.1 x 130 y -20, look a.1 x y z, ask c.1 place 200 100"
call do "ask c.1 offset -3 8, give c.1 visible 0 visible 1"
group=OMMultiTrinket 0
play group addTrinket "c.1" 20
play group offset 11 7
call do "look a.1 x y z, look a.2 y z, lose a.1, look c.1 x y answerCount, tell"
drop group
]
for j 2 6 2
call hold
; Copies are empty and have the settings; of who is locked in, they are free.
owns=["value highlighted"
owns=["attribute answerProperty anchorAnswerAtPoint answerAnchorPointY doPixelCompare"
owns=["value solvedAnswerCount droppedSound" "deltaZ slideSound" "value deltaZ slideSound"
owns=["correctSegments infoVerticalOffset"
procedure each given
[
words=owns.j+" lockCorrectAnswers rejectIncorrectAnswers tag "
for ~words
[
call cut
if given=1
set c.1 word 8
else
[
get c.2 word got
line=line+","+got
]
]
]
for j 1 6
[
call make j
call each 1
call do "give c.1 enabled 0, put a.1 c.1"
c.2=c.1
a.2=a.1
call each 2
call do "look c.2 width y enabled answerCount, ask c.2 place 0 0, look a.1 y"
call do "look a.2 movable isUsed"
call tell
]
; Stacks: how many are right, who falls (as far as the one below was high before), sums.
call make 3
c.1=RStackingContainer -1 100 50 60 100 30
a.1=RGraphicAnswer 260 300 300 12
a.2=RGraphicAnswer 261 300 300 5
call do "give a.1 attribute 1, give a.2 attribute 2, give a.3 extraTop 9, give c.1 value 6"
call do "look c.1 answerCount isFull isSolved, give c.1 droppedSound 8"
for i 1 3
call do "put a."+i+" c.1, look a."+i+" x y z, look c.1 answerCount isFull isSolved answerValue"
call do "tell, give c.1 solvedAnswerCount 3, look c.1 isSolved, give c.1 solvedAnswerCount 0"
call do "look c.1 isSolved, give c.1 solvedAnswerCount -1, look c.1 isSolved, take a.1 c.1"
call do "look a.2 y, look a.3 y, give a.2 extraBottom 15, give c.1 droppedSound -1, take a.2 c.1"
call do "look a.3 x y, tell, take a.3 c.1"
numbers=["2147483647" "2147483647" "apples" "-7 pears"
for i 1 4
[
set a.i attribute numbers.i
call do "put a."+i+" c.1"
]
call do "look c.1 answerValue, take a.1 c.1, look c.1 answerValue, give c.1 answerValue 3"
call do "give a.2 value 7, look c.1 answerValue"
; Rows: in the order of the middles, half a pixel counts; gaps stay until the next is placed; who
; slides is heard, and nobody who only comes back into his gap.
procedure reads
[
call do "look c.1 answerMatchString"
for i 1 4
call do "look a."+i+" x"
]
procedure insert
[
call cut
i=word
call cut
call do "ask a."+i+" place "+word+" 50, put a."+i+" c.1, reads"
]
call make 4
c.1=RHorizontalContainer -1 100 50 100 40 30
for i 1 4
set a.i snapSound i
call do "give c.1 slideSound 8, insert 2 170, insert 1 99, insert 3 120, tell"
call do "give a.4 extraRight 1, insert 4 120, look a.4 y z, take a.4 c.1, take a.1 c.1, reads"
call do "give c.1 deltaZ -5, give a.1 extraLeft -2 extraRight 4, insert 1 190, look a.1 y z"
call do "take a.2 c.1, insert 2 105"
call tell
; The right texts: any of them, nothing is read as nothing.
procedure match
[
call cut
play c.1 addAnswerMatch word
]
call make 4
call do "give a.1 attribute m, give a.2 attribute ar, look c.1 isSolved, put a.1 c.1, match mar"
call do "match arm, look c.1 isSolved, put a.2 c.1, look c.1 isSolved, take a.1 c.1"
call do "ask a.1 place 180 50, put a.1 c.1, look c.1 answerMatchString isSolved"
call do "give c.1 answerMatchString Arm, look c.1 isSolved, match arm, look c.1 isSolved"
call do "ask c.1 dumpAnswerMatches, look c.1 isSolved, take a.1 c.1, take a.2 c.1"
call do "look c.1 isSolved, give c.1 answerMatchString , look c.1 isSolved, tell"
; Cloth: its frames and its information, which goes with it.
procedure born
c.9=&RECEIVER
set OMAnimation born born
call make 6
c.1=RFabricContainer 284 100 50 30
call do "give c.1 infoAOID 285, look c.9 x y z frame, give c.1 infoVerticalOffset 4, look c.9 x y"
call do "give c.1 infoVerticalOffset -4, look c.9 x y, give c.1 correctSegments 3"
call do "give c.1 lockCorrectAnswers 1, give a.1 value 1, give a.2 value 2, put a.1 c.1"
call do "look c.1 frame isSolved, look c.9 frame, put a.2 c.1, look c.1 frame isSolved"
call do "look c.9 frame, look a.2 x y z movable, look a.1 movable, take a.1 c.1, look a.2 x"
call do "look c.1 frame, tell, give a.1 value -3, give a.3 value pears, give a.4 value 1"
call do "put a.1 c.1, put a.3 c.1, look c.1 frame isFull, put a.4 c.1, look c.1 frame isFull"
call do "look c.9 frame, look a.1 x, look a.3 x, look a.4 x, ask c.1 place 110 70, look c.9 x y"
call do "give c.1 z 40, look c.9 z, give c.1 visible 0, look c.9 visible, give c.1 visible 1"
call do "look c.9 visible"
c.2=c.1
call do "look c.9 x y z, give c.1 infoAOID -1, look c.9 x y z, give c.2 infoAOID 99, look c.9 x"
call do "look c.2 infoAOID, tell"
; Ten parts of an area, not all as wide as others, and of a picture that has one frame; one too many
; is the last.
c.1=RFabricContainer -1 100 50 103 40 5
for i 1 11
[
a.i=RGraphicAnswer 266 300 300 5
call do "give a."+i+" extraRight 10 value 1, put a."+i+" c.1, look a."+i+" x"
]
c.2=RFabricContainer 440 100 50 5
c.3=RFabricContainer 284 100 50 5
call do "give c.1 correctSegments 10 correctSegments 11 correctSegments -1"
call do "look c.1 correctSegments, give c.2 correctSegments 10, look c.2 correctSegments"
call do "give c.3 correctSegments 5, give c.3 correctSegments 6, look c.3 correctSegments, tell"
quit
;=  302,197,30,36,50 302,197,30,36,9 40,50,70,60,8 40,50,70,60,8
;=  40,50,300,200,8 40,50,300,200,0 40,50,300,200,8 40,50,0,200,8 40,50,0,0,8
;=  1 0 1 1 1 1 1 1 1 1 1 0 0 0 0 0 1 0 0 0 1,1,0 1 0 1 0 0 1 0
;=  83,60,11 117,59,11 107,47 103,38 117,59 116,51
;=  1 1 0 1 0 1 0 0 1 0,1 150,-10,11 228,125,21 300,5 208,115,0
;=  1 1 1 1 0 1 0 0 1 0,1 130,-10,11 208,125,21 300,5 208,115,0
;=  1 1 0 1 0 1 0 0 1 0,1 123,-10,11 201,125,21 300,5 208,115,0
;= ,8,1,1,1,8 60,50,0,0 60 1,0
;= ,8,8,1,8,1,1,1,8 60,50,0,0 58 1,0
;= ,8,8,8,1,1,8 60,50,0,0 70 1,0
;= ,8,8,1,1,8 60,50,0,0 60 1,0
;= ,8,8,8,1,1,8 60,50,0,0 60 1,0
;= ,8,8,1,1,8 60,50,0,0 60 1,0
;=  0,0,0 110,110,12 1,0,0,1 112,61,5 2,0,0,3 120,41,5 3,1,1,6
;=  1 0 1 101 81 120,130
;=  2147483647 2147483640 0 2 300 100 300 300 12 100 120 300 300 123 100 120 140 300
;=  1423 100 139 159 120 60,31 23 300 139 159 300 231 142 100 120 300 60,25 231 142 100 120 300
;=  0 0 1 arm,1 0 1 0 0 1
;=  154,74,31,1 154,78 154,34 2,0 2 4,1 4 150,52,31,0 0 150 3
;=  5,0 6,1 4 105 195 225 164,54 41 0 1 164,54,41 164,54,41 41 99
;=  100 110 120 130 141 151 161 172 182 192 192 10 10 5
;! ASEQ resource 99 not found.
;! WAVE resource 8 not found.
;! WAVE resource 2 not found.
;! WAVE resource 1 not found.
;! WAVE resource 8 not found.
;! WAVE resource 3 not found.
;! WAVE resource 4 not found.
;! WAVE resource 8 not found.
;! WAVE resource 1 not found.
;! WAVE resource 8 not found.
;! WAVE resource 2 not found.
;! ASEQ resource 99 not found.
;! it.here is not a trinket,\nso "get" won't work here
;! RFabricContainer: correctSegments out of range
;! RFabricContainer: correctSegments out of range
;! RFabricContainer: correctSegments out of range
