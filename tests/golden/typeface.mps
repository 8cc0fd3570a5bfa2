; Texts in a type face of all sizes and styles; faces that are not there, for which there is the
; system font; and a face for which the program has a bitmap font, number 31.
;: rsc golden
;: face
;$ screens
;> 90 screenshot styles.png
;> 270 screenshot changed.png
yield off
ActivateDLL golden.rsc
procedure line left top letters
[
n=n+1
t.n=RText left top 0-1 0-1 5
set t.n text letters
set t.n colorIndex 255
]
procedure face size style
play t.n setFont "Golden Letters" size style
n=0
sample="AfgBCy jA^ xE_ WM"
Scene 100
; as the bitmap font, and larger
call line 20 20 sample
play t.n setFont 300
call line 20 40 sample
call face 10 0
call line 20 60 sample
call face 16 0
call line 20 90 sample
call face 24 0
; bold, italic, underlined, and all of them
for i 0 2
[
size=10+i*5+(i*i)
top=140+i*100
call line 20 top sample
call face size 1
call line 20 top+size+5 sample
call face size 2
call line 345 top sample
call face size 4
call line 345 top+size+5 sample
call face size 7
]
; found whatever the case of its name; without a style; without a size
call line 340 20 sample
play t.n setFont "golden letters" 10 0
call line 340 40 sample
play t.n setFont "Golden Letters" 10
call line 340 60 sample
play t.n setFont "Golden Letters"
; not there
call line 340 90 "No such face"
play t.n setFont "Nowhere" 20 1
call line 340 110 "No such font"
play t.n setFont 999
; replaced, and not replaced
call line 500 20 "AfgBC"
play t.n setFont Arial 12 1
call line 500 40 "AB"
play t.n setFont Arial 12 2
; lines in a box
call line 500 90 "A B C D E F G H A B C D"
set t.n wrap 1
set t.n textWidth 81
call face 10 4
DisplayScreen
pause 0.2
; one after the other in the same text
call face 24 3
set t.n textWidth 110
set t.n text "ABC CBA"
for i 1 4
play t.i setFont "Golden Letters" 24-i*4 0
; at the edges
play t.5 place 0-9 140
play t.8 place 560 140
play t.9 offset 0 0-3
;! NFNT resource 999 not found.
