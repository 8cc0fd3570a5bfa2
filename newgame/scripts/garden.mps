; The garden: Pip the hedgehog, and three flowers that want to be planted.
;
; Numbers such as 201 name pictures and sounds; resources.manifest says which is which. Behind them stand
; X and Y, the left upper corner, and Z, the depth: what has the larger depth is in front.
yield off
Scene 100

; ---- the sign on the tree tells what was saved

world=RWorldPort 0
get world gardenVisits visits
sign=RText 0 113 -1 -1 10
set sign touchy 0
set sign text "Visits to this garden: "+visits
get sign textWidth wide
set sign x 145-wide\2

; ---- Pip, with a bubble for what he says

pip=RAnimation 201 40 300 50
set pip movable 0

bubble=RAnimation 202 26 190 60
set bubble touchy 0
words=RText 42 200 228 -1 61
set words touchy 0
set words wrap 1

procedure speak sentence
[
set words text sentence
get words textHeight tall
set words y 228-tall\2
set words visible 1
set bubble visible 1
schedule 6 hush
]

; A timer calls this one. Such a procedure is not to be disturbed: it begins with suspend, ends with resume.
procedure hush
[
suspend
set words visible 0
set bubble visible 0
resume
]

; Sequence 2 of picture 201 is a little hop. When it has come to its end, Pip blinks again, which is sequence 1.
procedure hop
[
PlaySound 301
set pip sequence 2
]

procedure rest
set pip sequence 1
set pip paused rest

procedure clicked
[
say "Pip was clicked"
call hop
call speak "Hello, I am Pip! Plant each flower in the pot with as many dots as it has petals."
]
set pip mouseDown clicked

; ---- the puzzle: three flowers, three pots

puzzle=RPuzzle 0
set puzzle rejectIncorrectAnswers 1
set puzzle lockCorrectAnswers 1

; In the bed the flowers stand as 5, 3, 4.
home.3=410
home.4=520
home.5=300

; A flower is an answer, and its number of petals is its value. A pot is a picture in front of a place that takes
; the flower with the right value; so the stem is in the pot.
for n 3 5
[
flower.n=RGraphicAnswer 210+n home.n 364 40
set flower.n value n
play puzzle addAnswer "flower."+n

place.n=RValueContainer -1 n*110-40 126 88 192 20
set place.n value n
play puzzle addContainer "place."+n
pot.n=RAnimation 220+n n*110-40 248 30
set pot.n touchy 0
]

; ---- all is planted: a butterfly comes

butterfly=RAnimation 203 390 120 70
set butterfly touchy 0
set butterfly visible 0

procedure planted
[
say "all is planted"
set butterfly visible 1
call hop
call speak "Thank you! Look who has come to your flowers."
]
set puzzle puzzleSolved planted

call speak "Good morning! Please click me."
