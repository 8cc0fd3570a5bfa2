; The language in a nutshell.
yield off
count=0
procedure bump step
[
count=count+step
]
for i 1 3
[
call bump i
]
if count>5
[
say done count
]
else
say later
x=007
say x x+1 "and" x+1/4
list=[red green blue
for i 1 3
say i list.i
s="abcdef"
say s|2|3 s||2 ~s
v=count
say $v
mood
procedure made
for j 1 30000
[
]
set RText born made
for i 1 1000
text=RText 0 0 9 9
quit
;= done 6
;= 007 8 and 7.25
;= 1 red
;= 2 green
;= 3 blue
;= bcd ef 6
;= 6
;! mood is undefined
;! Keyword "mood" is undefined
