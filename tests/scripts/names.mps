; Objects under several names, and a loop behind an else in a recursion.
yield off
boat=RAnimation 2001 7
ref=&boat
set boat x 40
boat=ref
get boat x left
say "still there at" left
set boat dblClick remember
for i 1 2
crew.i=&boat
set boat x 70
get crew.2 x left
say "the same boat at" left
call rounds 1
procedure remember
[
boat=RECEIVER
me=RECEIVER
get me movable free
say "remembered" free
]
procedure rounds n
if n=0
say "leaf"
else
for i 1 3
[
say "round" i
call rounds 0
]
