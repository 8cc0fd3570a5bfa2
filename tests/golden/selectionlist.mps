; Selection lists in all their states. List 8 is typed into, and looked through, by keys; lists 3 and 5
; are clicked.
;: rsc golden
;$ screens
;> 90 screenshot states.png
;> 270 screenshot moved.png
;> 450 screenshot deleted.png
; the third line; the second one, an empty one, twice; the first one twice
;> 500 down 30 160
;> 501 up 30 160
;> 520 down 310 40
;> 521 up 310 40
;> 530 down 310 101
;> 531 up 310 101
;> 540 double 310 101
;> 541 up 310 101
;> 550 screenshot empty.png
;> 560 down 30 135
;> 561 up 30 135
;> 570 double 30 135
;> 571 up 30 135
;> 580 screenshot chosen.png
;> 600 key m
;> 601 key I
;> 602 key l
;> 610 screenshot matching.png
;> 611 key i
;> 612 key x
;> 620 screenshot new.png
;> 621 key Backspace
;> 622 key Backspace
;> 623 key Down
;> 624 key Down
;> 625 key PageUp
;> 626 key Insert
;> 627 key q
;> 630 screenshot editing.png
;> 631 key Backspace
;> 632 key Backspace
;> 633 key Delete
;> 634 key PageDown
;> 635 key Down
;> 640 screenshot looked.png
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
procedure pressed
[
get keys key shown
if (~shown)=1
play l.8 addChar shown
if shown="Down"
play l.8 moveHighlightDown
if shown="Up"
play l.8 moveHighlightUp
if shown="PageDown"
play l.8 scrollListPageDown
if shown="PageUp"
play l.8 scrollListPageUp
if shown="Backspace"
play l.8 deleteChar
if shown="Delete"
play l.8 deleteEntry
if shown="Insert"
play l.8 startNewEntry
]
procedure chosen
[
get RECEIVER currentEntry who
set note text "chosen: "+who
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
call list 8 20 340 150 68 4
call fill 8 10
note=RText 340 300 0-1 0-1 5
set l.3 entrySelected chosen
set l.5 entrySelected chosen
keys=RKbdInp 0
set keys keyPressed pressed
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
