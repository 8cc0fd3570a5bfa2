; The names of all keys. The first visit writes down what is pressed in the second: every key that
; has a name, and some characters, then the same with the Control key.
;> 5 quit
;$ then --input content/keys --until 800
yield off
procedure heard
[
get keys "key" letter
line=line+" "+letter
if ~line>70
call tell
]
procedure tell
[
say line
line=""
]
names=[Backspace Tab Enter Pause Esc PageUp PageDown End Home Left Up Right Down Insert Delete
names=[F1 F2 F3 F4 F5 F6 F7 F8 F9 F10 F11 F12 a Z 9 " " '"' ~ "é"
OpenFile "keys"
for i 1 68
[
which="key "+names.i
if i>34
which="key Ctrl-"+names.(i-34)
WriteToFile i*10+" "+which 1
]
CloseFile
line=""
keys=RKbdInp 0
get keys "key" letter
say "before the first key ["+letter+"]"
set keys keyPressed heard
pause 0.8
;= before the first key []
;= before the first key []
;=  Backspace Tab Enter Pause Esc PageUp PageDown End Home Left Up Right Down
;=  Insert Delete F1 F2 F3 F4 F5 F6 F7 F8 F9 F10 F11 F12 a Z 9   " ~ é Ctrl-Backspace
;=  Ctrl-Tab Ctrl-Enter Ctrl-Pause Ctrl-Esc Ctrl-PageUp Ctrl-PageDown Ctrl-End
;=  Ctrl-Home Ctrl-Left Ctrl-Up Ctrl-Right Ctrl-Down Ctrl-Insert Ctrl-Delete
;=  Ctrl-F1 Ctrl-F2 Ctrl-F3 Ctrl-F4 Ctrl-F5 Ctrl-F6 Ctrl-F7 Ctrl-F8 Ctrl-F9
;=  Ctrl-F10 Ctrl-F11 Ctrl-F12 Ctrl-A Ctrl-Z Ctrl-9 Ctrl-  Ctrl-" Ctrl-~ Ctrl-é
