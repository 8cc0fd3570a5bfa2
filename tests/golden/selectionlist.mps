; Selection lists in all their states; two are clicked. What their steps do is in tests/scripts.
;: rsc golden
;> 90 screenshot states.png
;> 190 screenshot moved.png
; the third line, and the first one twice
;> 280 tap 30 160
;> 290 screenshot clicked.png
;> 300 double 30 135
;> 310 up 30 135
include golden.mps
include steps.mps
n=0
procedure list left top wide high lines count letters
[
n=n+1
a.n=RSelList left top wide high 5
call do "give a."+n+" selectedTextColor 255 normalTextColor 10 listBackgroundColor 24"
call do "give a."+n+" highlightedBackgroundColor 22 matchedTextColor 23 visibleLines "+lines
if count
for i 1 count
play a.n addListEntry name.i
if letters#""
for i 1 ~letters
play a.n addChar letters|i|1
]
procedure repeat number what times
for i 1 times
play a.number what
procedure chosen
[
get RECEIVER currentEntry who
say who
]
name=[Mia Bob Zoe Ana Mike Ida Mila Yann Max "Anna Bella Carlo"
; none; fewer names than lines; looked through; the beginning of a name typed; a new name; one that
; is edited
call list 20 20 120 60 3 0 ""
call list 300 20 150 90 5 2 ""
call list 470 20 150 68 4 10 ""
set a.3 currentEntry "Mia"
call list 20 120 150 70 4 10 "mi"
call list 190 120 150 70 4 10 "miX an"
call list 360 120 150 70 4 10 "mi"
play a.6 startNewEntry
; with a name that is not there, and more than fit
call list 20 210 150 100 5 0 ""
for i 1 99
play a.7 addListEntry "Name "+i
for i 1 7
play a.7 addChar "name 7z"|i|1
; in bitmap fonts, without and with a stand-in for the letters that are not there
call list 190 210 130 70 4 10 ""
set a.8 textFontID 302
play a.8 addChar a
call list 340 210 130 70 4 10 ""
set a.9 textFontID 300
set a.9 currentEntry "Mila"
; the highlighted line cut by the box, below and on the right; over the edges of the window, and
; behind a ring
call list 490 210 50 41 3 10 ""
set a.10 currentEntry "Anna"
call list 590 400 120 120 6 10 ""
ring=RAnimation 230 560 380 6
; the colours and the lines of a new one, with a name
a.12=RSelList 160 20 120 60 5
for i 1 4
play a.12 addListEntry name.i
set a.4 entrySelected chosen
DisplayScreen
pause 0.1
; past the view, by lines and pages
call repeat 3 moveHighlightDown 3
call repeat 4 scrollListLineDown 2
call repeat 5 deleteChar 4
call repeat 7 deleteChar 2
call repeat 8 scrollListPageDown 1
call repeat 10 moveHighlightUp 2
call repeat 12 moveHighlightDown 9
set a.9 visibleLines 9
pause 0.1
; taken out: the first, the last, one that is being typed
set a.4 currentEntry "Ana"
call repeat 4 deleteEntry 2
call repeat 5 deleteEntry 1
call repeat 7 deleteEntry 3
call repeat 10 deleteEntry 10
set a.11 x 480
;= Bob
