; Second names: who owns an object, and what goes when such a name is stored to.
;> 500 double 80 310
;> 501 up 80 310
;> 600 double 80 310
;> 1003 quit
;$ text
;$ compiled
yield off
procedure born
count=count+1
procedure remember
[
boat=RECEIVER
get boat movable free
say "remembered" free
]
count=0
set RAnimation born born
boat=RAnimation 2001 7
ref=&boat
boat=ref
fish=RAnimation 2003 6
; An object of its own gives way, under all its names; no copy is made.
crew.3=RAnimation 2002 8
other=&crew.3
i=3
crew.i=&fish
set crew.3 x 50
get fish x left
say left "objects" count
get other x left
; A second name goes on to another object; the first one lives on.
i=1
crew.i=&boat
crew.i=&fish
get boat x left
; An owner stays the owner of what is stored in it under a second name.
crew.2=boat
i=2
alias=&crew.2
crew.i=alias
set crew.2 x 70
get alias x left
say left "objects" count
; Names that lead nowhere take nothing.
crew.nobody=&boat
say crew.nobody
; With its owner an object goes under all names, and under any of them.
drop crew.i
drop crew.1
get alias x left
get fish x left
get crew.3 x left
set boat dblClick remember
;= 50 objects 3
;= 70 objects 4
;= crew.nobody
;= remembered 1
;= remembered 1
;! other is not a trinket,\nso "get" won't work here
;! alias is not a trinket,\nso "get" won't work here
;! fish is not a trinket,\nso "get" won't work here
;! crew.3 is not a trinket,\nso "get" won't work here
