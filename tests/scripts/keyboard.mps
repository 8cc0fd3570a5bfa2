; The names of all keys, and which of several objects hears them.
; every key that has a name, and some characters; the same with the Control key
;> 100 key Backspace
;> 110 key Tab
;> 120 key Enter
;> 130 key Pause
;> 140 key Esc
;> 150 key PageUp
;> 160 key PageDown
;> 170 key End
;> 180 key Home
;> 190 key Left
;> 200 key Up
;> 210 key Right
;> 220 key Down
;> 230 key Insert
;> 240 key Delete
;> 250 key F1
;> 260 key F2
;> 270 key F3
;> 280 key F4
;> 290 key F5
;> 300 key F6
;> 310 key F7
;> 320 key F8
;> 330 key F9
;> 340 key F10
;> 350 key F11
;> 360 key F12
;> 370 key a
;> 380 key Z
;> 390 key 9
;> 400 key  
;> 410 key "
;> 420 key |
;> 430 key ~
;> 440 key Ã©
;> 450 key Ctrl-Backspace
;> 460 key Ctrl-Tab
;> 470 key Ctrl-Enter
;> 480 key Ctrl-Pause
;> 490 key Ctrl-Esc
;> 500 key Ctrl-PageUp
;> 510 key Ctrl-PageDown
;> 520 key Ctrl-End
;> 530 key Ctrl-Home
;> 540 key Ctrl-Left
;> 550 key Ctrl-Up
;> 560 key Ctrl-Right
;> 570 key Ctrl-Down
;> 580 key Ctrl-Insert
;> 590 key Ctrl-Delete
;> 600 key Ctrl-F1
;> 610 key Ctrl-F2
;> 620 key Ctrl-F3
;> 630 key Ctrl-F4
;> 640 key Ctrl-F5
;> 650 key Ctrl-F6
;> 660 key Ctrl-F7
;> 670 key Ctrl-F8
;> 680 key Ctrl-F9
;> 690 key Ctrl-F10
;> 700 key Ctrl-F11
;> 710 key Ctrl-F12
;> 720 key Ctrl-a
;> 730 key Ctrl-Z
;> 740 key Ctrl-9
;> 750 key Ctrl- 
;> 760 key Ctrl-"
;> 770 key Ctrl-|
;> 780 key Ctrl-~
;> 790 key Ctrl-Ã©
; from here on there are others that hear the keys
;> 800 key 1
;> 810 key 2
;> 820 key 3
;> 830 key 4
;> 840 key 5
yield off
procedure heard
[
get RECEIVER "name" who
get RECEIVER "key" letter
say who "["+letter+"]"
]
procedure once
[
call heard
drop second
]
procedure next
[
call heard
n=n+1
if n=70
drop wait
]
n=0
first=RKbdInp 0
get first "key" letter
say "before the first key ["+letter+"]"
set first keyPressed next
wait
; the last one made hears the keys; it goes in its own handler; then there is none for a while
second=RKbdInp 0
set second keyPressed once
set first keyPressed heard
pause 0.028
drop first
pause 0.01
third=RKbdInp 0
set third keyPressed heard
pause 1
quit
;= before the first key []
;= first [Backspace]
;= first [Tab]
;= first [Enter]
;= first [Pause]
;= first [Esc]
;= first [PageUp]
;= first [PageDown]
;= first [End]
;= first [Home]
;= first [Left]
;= first [Up]
;= first [Right]
;= first [Down]
;= first [Insert]
;= first [Delete]
;= first [F1]
;= first [F2]
;= first [F3]
;= first [F4]
;= first [F5]
;= first [F6]
;= first [F7]
;= first [F8]
;= first [F9]
;= first [F10]
;= first [F11]
;= first [F12]
;= first [a]
;= first [Z]
;= first [9]
;= first [ ]
;= first ["]
;= first [|]
;= first [~]
;= first [é]
;= first [Ctrl-Backspace]
;= first [Ctrl-Tab]
;= first [Ctrl-Enter]
;= first [Ctrl-Pause]
;= first [Ctrl-Esc]
;= first [Ctrl-PageUp]
;= first [Ctrl-PageDown]
;= first [Ctrl-End]
;= first [Ctrl-Home]
;= first [Ctrl-Left]
;= first [Ctrl-Up]
;= first [Ctrl-Right]
;= first [Ctrl-Down]
;= first [Ctrl-Insert]
;= first [Ctrl-Delete]
;= first [Ctrl-F1]
;= first [Ctrl-F2]
;= first [Ctrl-F3]
;= first [Ctrl-F4]
;= first [Ctrl-F5]
;= first [Ctrl-F6]
;= first [Ctrl-F7]
;= first [Ctrl-F8]
;= first [Ctrl-F9]
;= first [Ctrl-F10]
;= first [Ctrl-F11]
;= first [Ctrl-F12]
;= first [Ctrl-A]
;= first [Ctrl-Z]
;= first [Ctrl-9]
;= first [Ctrl- ]
;= first [Ctrl-"]
;= first [Ctrl-|]
;= first [Ctrl-~]
;= first [Ctrl-é]
;= second [1]
;= first [2]
;= third [4]
;= third [5]
