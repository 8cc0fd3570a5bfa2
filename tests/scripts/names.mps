; Objects under several names, and a loop behind an else in a recursion.
;> 500 double 80 310
;> 501 up 80 310
;> 600 double 80 310
;> 601 up 80 310
;> 1003 quit
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
;= still there at 40
;= the same boat at 70
;= round 1
;= leaf
;= round 2
;= leaf
;= round 3
;= leaf
;= remembered 1
;= remembered 1
