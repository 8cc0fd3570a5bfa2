; The names of all keys, and which of several objects hears them.
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
