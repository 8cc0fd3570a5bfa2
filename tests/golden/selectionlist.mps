; Selection lists in all their states; lists 3 and 5 are clicked.
;: rsc golden
;$ screens
;> 90 screenshot states.png
;> 270 screenshot moved.png
;> 450 screenshot deleted.png
; the third line; the second one, an empty one, twice; the first one twice
;> 500 click 30 160
;> 520 click 310 40
;> 540 click 310 101
;> 560 double 310 101
;> 565 up 310 101
;> 570 screenshot empty.png
;> 580 click 30 135
;> 600 double 30 135
;> 605 up 30 135
;> 610 screenshot chosen.png
yield off
ActivateDLL golden.rsc
procedure list number left top wide high lines
[
l.number=RSelList left top wide high 5
set l.number visibleLines lines
set l.number selectedTextColor 255
set l.number normalTextColor 10
set l.number listBackgroundColor 24
set l.number highlightedBackgroundColor 22
set l.number matchedTextColor 23
]
procedure fill number count
for i 1 count
play l.number addListEntry name.i
procedure type number letters
for i 1 ~letters
play l.number addChar letters|i|1
procedure repeat number what times
for i 1 times
play l.number what
procedure chosen
[
get RECEIVER currentEntry who
say who
]
name=[Mia Bob Zoe Ana Mike Ida Mila Yann Max "Anna Bella Carlo"
Scene 100
; none; the colours and the lines of a new one, with a name; fewer names than lines
call list 1 20 20 120 60 3
l.2=RSelList 160 20 120 60 5
call fill 2 4
call list 3 300 20 150 90 5
call fill 3 2
; looked through; the beginning of a name typed; a new name; one that is edited
call list 4 470 20 150 68 4
call fill 4 10
set l.4 currentEntry "Mia"
call list 5 20 120 150 70 4
call fill 5 10
call type 5 "mi"
call list 6 190 120 150 70 4
call fill 6 10
call type 6 "miX an"
call list 7 360 120 150 70 4
call fill 7 10
call type 7 "mi"
play l.7 startNewEntry
; full, with a name that is not there
call list 9 20 210 150 100 5
for i 1 99
play l.9 addListEntry "Name "+i
call type 9 "name 7z"
; in bitmap fonts, without and with a stand-in for the letters that are not there
call list 10 190 210 130 70 4
call fill 10 10
set l.10 textFontID 302
call type 10 "an"
call list 11 340 210 130 70 4
call fill 11 10
set l.11 textFontID 300
set l.11 currentEntry "Mila"
; the highlighted line cut by the box, below and on the right
call list 12 490 210 50 41 3
call fill 12 10
set l.12 currentEntry "Anna"
call list 13 560 210 60 18 5
call fill 13 10
play l.13 moveHighlightDown
; over the edges of the window, and behind a ring
call list 14 590 400 120 120 6
call fill 14 10
ring=RAnimation 230 560 380 6
set l.3 entrySelected chosen
set l.5 entrySelected chosen
DisplayScreen
pause 0.2
; highlights moved past the view; scrolled by a line and by a page, with the highlight taken along
call repeat 4 moveHighlightDown 3
call repeat 5 scrollListLineDown 2
call repeat 6 deleteChar 4
call repeat 7 deleteChar 1
call repeat 9 deleteChar 2
call repeat 10 scrollListPageDown 1
call repeat 11 moveHighlightDown 2
call repeat 11 scrollListPageUp 1
call repeat 12 moveHighlightUp 2
call repeat 13 scrollListLineDown 1
call repeat 14 moveHighlightDown 9
pause 0.2
; taken out: the first, the last, one that is being typed
call repeat 4 scrollListPageDown 1
set l.4 currentEntry "Zoe"
call repeat 4 deleteEntry 1
set l.5 currentEntry "Ana"
call repeat 5 deleteEntry 2
call repeat 6 deleteEntry 1
call repeat 7 deleteEntry 1
set l.9 currentEntry "Name 99"
call repeat 9 deleteEntry 3
call type 10 "zz"
set l.10 visibleLines 2
set l.11 visibleLines 9
call repeat 12 deleteEntry 8
call repeat 13 deleteEntry 10
set l.14 x 480
;= Bob
