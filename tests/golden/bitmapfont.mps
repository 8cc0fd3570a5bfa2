; Texts in bitmap fonts: 300 and 301 are the same font in both byte orders; 302 lacks the character
; that stands in for those that are missing.
;: rsc golden
;$ screens
;> 90 screenshot letters.png
;> 270 screenshot lacking.png
;> 450 screenshot letters.little.png
;> 630 screenshot covered.png
;> 810 screenshot moved.png
yield off
ActivateDLL golden.rsc
procedure dress id
for i 1 18
play t.i setFont id
procedure line number left top letters
[
t.number=RText left top 0-1 0-1 number
set t.number text letters
set t.number colorIndex 255
]
Scene 100
call line 1 20 20 "ABCDEFGH"
call line 2 20 40 "HGFEDCBA AAAAA HHHHH"
call line 3 20 60 "M W MWMW iii jjj"
call line 4 20 80 "fff AfA f jA y"
call line 5 20 100 "A^B^C^^ H^ i^"
call line 6 20 120 "___A___ ~A~"
; missing: a character among the others, one behind the last; the stand-in itself
call line 7 20 140 "AxB ÈA }"
call line 8 20 160 "x"
; a blank has no picture
call line 9 20 180 "   A   B"
; over each edge of the window, and over two corners
call line 10 0-7 210 "GWgA"
call line 11 617 230 "GWgA"
call line 12 300 0-4 "GWgA"
call line 13 300 475 "GWgA"
call line 14 0-24 474 "GWgA"
call line 15 622 0-5 "GWgA"
; cut by its own box, of which three pixels of each line are left, or six columns
call line 16 240 20 "GWgA"
set t.16 textHeight 3
call line 17 240 40 "GWgA"
set t.17 textWidth 6
; what hangs over on the left is not in the box
call line 18 240 60 "jA"
call dress 300
DisplayScreen
pause 0.2
call dress 302
pause 0.2
call dress 301
pause 0.2
; partly covered, moved, in other colours, and cut anew
ring=RAnimation 230 30 20 30
figure=RAnimation 200 100 50 1
set t.1 colorIndex 20
set t.2 colorIndex 0
play t.3 place 40 66
play t.4 offset 0-12 3
set t.5 z 40
set t.6 z 1
set t.16 textHeight 9
set t.17 textWidth 30
set t.18 visible 0
pause 0.2
play ring offset 5 40
play t.1 offset 3 1
set t.2 colorIndex 21
set t.18 visible 1
set t.7 text "xA"
