; Texts as lines, in the system font. Around each is an outline, two pixels away from its box.
;: rsc golden
;$ screens
;> 90 screenshot lines.png
;> 270 screenshot changed.png
;> 300 drag 22 22 422 402
;> 330 screenshot dragged.png
yield off
ActivateDLL golden.rsc
procedure outline number
[
get t.number x left
get t.number y top
get t.number textWidth wide
get t.number textHeight high
box.number=RHotSpot left-2 top-2 wide+4 high+4
set box.number outlined 1
]
procedure block number left top wide high letters
[
t.number=RText left top wide high 5
set t.number wrap 1
set t.number text letters
set t.number colorIndex 255
call outline number
]
Scene 100
; fitted, and wrapped with a fitted width: as long as it is
call block 1 20 20 0-1 0-1 "A single line, as long as it is."
set t.1 wrap 0
call block 2 20 45 120 0-1 "The lantern crab lives below the old lighthouse and polishes his claws every morning."
call block 3 160 45 120 40 "The lantern crab lives below the old lighthouse and polishes his claws every morning."
call block 4 300 45 60 0-1 "A Dampfschiffskapitaen a word wider than lines"
call block 5 380 45 73 0-1 "jack-in-the-box merry-go-round --- -x"
call block 6 480 45 120 0-1 "one

three, and words that are wrapped
"
call block 7 20 212 0-1 0-1 "ÄÖÜäöüß ÀÉÎõñç ÅÆØåæø ¿¡ «Þð» ©½§ ÿ"
call block 8 20 280 60 0-1 "  two  blanks    in between   "
call block 9 100 280 1 0-1 "abc d"
call block 10 300 180 0-1 0-1 "two lines,
the second one is the longer one"
call block 11 150 185 0-1 0-1 ""
call block 12 180 185 0 0-1 "zero"
call block 13 220 185 60 0 "no height"
call block 14 150 250 200 0-1 "not wrapped, and longer than its box is wide"
set t.14 wrap 0
; one behind the other, and one that is not seen
call block 15 20 360 200 0-1 "in front, in front, in front, in front, in front, in front"
call block 16 26 365 200 0-1 "behind behind behind behind behind behind behind"
set t.15 z 20
set t.16 colorIndex 20
set t.16 z 10
ring=RAnimation 233 100 350 15
call block 17 400 300 100 0-1 "not to be seen"
set t.17 visible 0
set box.17 visible 0
DisplayScreen
pause 0.2
; the same otherwise
set t.1 text "Another line,
and one more."
set t.2 textWidth 100
set t.3 textHeight 0-1
set t.4 wrap 0
set t.5 textWidth 0-1
set t.6 text ""
set t.7 textWidth 100
set t.8 textWidth 61
set t.9 textWidth 9
set t.10 wrap 0
set t.10 textWidth 70
set t.11 text "filled"
set t.12 textWidth 200
set t.13 textHeight 7
set t.14 wrap 1
set t.15 z 1
set t.16 text "left over"
set t.17 visible 1
twin=t.5
play twin place 480 130
for i 1 17
call outline i
