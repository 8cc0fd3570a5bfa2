; Texts in bitmap fonts, the system font and a type face. Font 302 lacks the character that stands
; in for those that are missing, 301 is 300 in the other byte order.
;: rsc golden
;: face
;$ screens
;> 90 screenshot shown.png
;> 180 screenshot lacking.png
;> 270 screenshot shown.little.png
;> 290 pull 302 62 602 462
;> 360 screenshot changed.png
include golden.mps
include steps.mps
procedure write left top letters
[
n=n+1
a.n=RText left top -1 -1 5
set a.n text letters
set a.n colorIndex 255
]
procedure dress id
for i 1 14
play a.i setFont id
procedure face left top size style
[
call write left top "AfgBCy jA^ _xE"
play a.n setFont "Golden Letters" size style
]
procedure outline number
[
get a.number x left
get a.number y top
get a.number textWidth wide
get a.number textHeight high
box.number=RHotSpot left-2 top-2 wide+4 high+4
set box.number outlined 1
]
procedure block left top wide high letters
[
call write left top letters
call do "give a."+n+" wrap 1 textWidth "+wide+" textHeight "+high
call outline n
]
n=0
call write 20 20 "ABCDEFGH HHH"
call write 20 35 "M W MWM iii jjj"
call write 20 50 "fff AfA f jA y A^B^C^^ H^ i^"
; missing: among the others, behind the last; the stand-in itself; a blank has no picture
call write 20 65 "AxB éA }"
call write 20 80 "   A  ~_ B"
; over the edges of the window, and over two corners
lefts=[-7 617 300 300 -24 622
tops=[210 230 -4 475 474 -5
for k 1 6
call write lefts.k tops.k "GWgA"
; cut by its own box; what hangs over on the left is not in the box
call write 180 20 "GWgA"
set a.n textHeight 3
call write 180 35 "GWgA"
set a.n textWidth 6
call write 180 50 "jA"
call dress 300
; the face: bold, italic, underlined, all of them; another case of its name; no style, no size
call face 20 100 10 0
call face 20 120 24 0
for i 0 1
[
call face 20 i*40+150 i*9+10 1
call face 20 i*40+165 i*9+10 2
call face 240 i*40+150 i*9+10 4
call face 240 i*40+165 i*9+10 7
]
call face 240 100 10 0
play a.n setFont "golden letters" 10 0
call face 340 100 10 0
play a.n setFont "Golden Letters" 10
call face 240 115 10 0
play a.n setFont "Golden Letters"
; not there, for which there is the system font; replaced by a bitmap font, and not
call write 440 100 "No such face"
play a.n setFont "Nowhere" 20 1
call write 440 115 "No such font"
play a.n setFont 999
call write 540 100 "AfgBC"
play a.n setFont Arial 12 1
call write 540 115 "AB"
play a.n setFont Arial 12 2
; lines: fitted, wrapped with a fitted width, cut, with a word that is wider, with hyphens, line
; feeds and blanks, in no width, in none at all
call block 300 20 -1 -1 "As long as it is."
call block 300 45 100 40 "The lantern crab lives below the old lighthouse and polishes his claws."
call block 420 20 60 -1 "A Dampfschiffskapitaen"
call block 500 20 73 -1 "jack-in-the-box --- -x"
call block 440 180 120 -1 "one

three, and words that are wrapped
"
call block 20 240 -1 -1 "ÄÖÜäöüß ÀÉÎõñç ÅÆØåæø ¿¡ «Þð» ©½§ ÿ"
call block 20 280 60 -1 "  two  blanks    in between   "
call block 100 280 1 -1 "ab d"
call block 130 260 -1 -1 ""
call block 150 280 60 0 "no height"
call block 230 280 120 -1 "not wrapped, and longer than its box is wide"
set a.n wrap 0
call block 400 280 100 -1 "not to be seen"
set a.n visible 0
call block 20 390 200 -1 "in front, in front, in front, in front, in front, in front"
call block 26 395 200 -1 "behind behind behind behind behind behind behind"
call do "give a.44 z 20, give a.45 colorIndex 20 z 10"
ring=RAnimation 233 100 380 15
DisplayScreen
pause 0.1
call dress 302
pause 0.09
call dress 301
pause 0.11
; the same otherwise
ring.1=RAnimation 230 30 20 30
play a.2 offset 10 3
play a.3 offset -12 3
call do "give a.1 colorIndex 20, give a.4 z 40, give a.5 visible 0, give a.12 textHeight 9"
set a.13 textWidth 30
play ring.1 offset 5 10
for i 15 19
play a.i setFont "Golden Letters" i*4-50 3
call do "give a.32 textWidth 100, give a.33 wrap 0, give a.34 textWidth -1, give a.35 textHeight 7"
call do "give a.36 text x, give a.37 textWidth 100, give a.38 textWidth 61, give a.39 textWidth 9"
call do "give a.40 textWidth 200, give a.41 textHeight -1, give a.42 wrap 1, give a.43 visible 1"
call do "give a.44 z 1, give a.45 text over"
twin=a.32
play twin place 480 240
for i 32 n
call outline i
;! NFNT resource 999 not found.
