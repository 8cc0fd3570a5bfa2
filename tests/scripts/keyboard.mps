; The names of all keys, and which of several objects hears them. In the first visit the script
; writes down what is pressed in the second: every key that has a name, and some characters, then
; the same with the Control key.
;> 5 key W
;$ then --input content/keys --until 5000
yield off
procedure heard
[
get RECEIVER "name" who
get RECEIVER "key" letter
line=line+" "+letter
if ~line>70
call tell
]
procedure tell
[
say who+line
line=""
]
procedure once
[
call heard
drop second
]
names=[Backspace Tab Enter Pause Esc PageUp PageDown End Home Left Up Right Down Insert Delete
names=[F1 F2 F3 F4 F5 F6 F7 F8 F9 F10 F11 F12 a Z 9 " " '"' ~ "Ã©"
procedure W
[
OpenFile "keys"
for ctrl 0 1
for i 1 34
[
time=ctrl*34+i+10
which="key "+names.i
if ctrl
which="key Ctrl-"+names.i
WriteToFile time*10+" "+which 1
]
for i 1 5
WriteToFile 1000+(i*10)+(" key "+i) 1
CloseFile
quit
]
procedure first
[
get RECEIVER "key" letter
if letter="W"
call W
else
call heard
]
line=""
keys=RKbdInp 0
get keys "key" letter
say "before the first key ["+letter+"]"
set keys keyPressed first
pause 1.11
call tell
; the last one made hears the keys; it goes in its own handler; then there is none for a while
second=RKbdInp 0
set second keyPressed once
pause 0.02
call tell
pause 0.01
call tell
drop keys
pause 0.01
third=RKbdInp 0
set third keyPressed heard
pause 1
call tell
;= before the first key []
;= before the first key []
;= keys Backspace Tab Enter Pause Esc PageUp PageDown End Home Left Up Right Down
;= keys Insert Delete F1 F2 F3 F4 F5 F6 F7 F8 F9 F10 F11 F12 a Z 9   " ~ é Ctrl-Backspace
;= keys Ctrl-Tab Ctrl-Enter Ctrl-Pause Ctrl-Esc Ctrl-PageUp Ctrl-PageDown Ctrl-End
;= keys Ctrl-Home Ctrl-Left Ctrl-Up Ctrl-Right Ctrl-Down Ctrl-Insert Ctrl-Delete
;= keys Ctrl-F1 Ctrl-F2 Ctrl-F3 Ctrl-F4 Ctrl-F5 Ctrl-F6 Ctrl-F7 Ctrl-F8 Ctrl-F9
;= keys Ctrl-F10 Ctrl-F11 Ctrl-F12 Ctrl-A Ctrl-Z Ctrl-9 Ctrl-  Ctrl-" Ctrl-~ Ctrl-é
;= keys
;= second 1
;= keys 2
;= third 4 5
