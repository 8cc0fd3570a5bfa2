; Lines that are run from outside, one at the end of a pass: each kind of statement, expressions, what is
; refused, and what they bring about: a script that is woken, an object that goes as it is born, a box of a
; handler, other scripts.
;> 100 run score
;> 100 run score+half
;> 100 run (name="Ana")
;> 100 run crew.i
;> 100 run crew.nobody
;> 100 run nobody
;> 100 run RText
;> 100 run boat
;> 100 run ref
;> 100 run vanish
;> 100 run 1/0
;> 100 run name/2
;> 100 run (score
;> 100 run "score
;> 200 run score="olá "+name
;> 200 expect variable score olá Ana
;> 200 run list=[ 7 8
;> 200 run list.2
;> 200 run set boat x 20
;> 200 run get boat x score
;> 200 run say "x is" score
;> 200 run fish=RAnimation 2003 6
;> 200 run play fish
;> 200 run play fish }
;> 200 run RandomNumber 5 5
;> 200 run MessageBox "Ahoy"
;> 200 run fish=&boat
;> 200 run fish
;> 200 run drop fish list.1
;> 200 run fish
;> 200 run set boat mouseDown clicked
;> 240 tap 70 310
;> 300 run x=
;> 300 run set boat colour 1
;> 300 run set boat mouseDown nobody
;> 300 run get nobody x y
;> 300 run play boat dance
;> 300 run set boat
;> 300 run Dance 1
;> 300 run a = 1
;> 300 run PlaySound 99999
;> 300 run call clicked
;> 300 run if score
;> 300 run procedure p
;> 300 run wait
;> 300 run [
;> 400 run drop wait
;> 500 run set RAnimation born vanish
;> 500 run fish=RAnimation 2003 6
;> 500 run set RAnimation born complain
;> 500 run fish=RAnimation 2003 6
;> 600 run set RAnimation born leave
;> 600 run fish=RAnimation 2003 6
;> 600 run score
;> 700 run relay "Startup.mps"
;> 700 run score
;> 800 expect property boat x 6
;> 800 run quit
;> 900 run score
yield off
procedure clicked
say "clicked"
procedure vanish
drop RECEIVER
procedure complain
set nobody x 1
procedure leave
relay "next.mps"
score=12
half=0.5
name="Ana"
i=1
crew.1=5
boat=RAnimation 2001 7
ref=&boat
say "waits"
wait
say "goes on"
;= waits
;= x is 20
;= clicked
;= goes on
;= next
;= waits
;! Ahoy
;! WAVE resource 99999 not found.
;! nobody is not a trinket,\nso "set" won't work here
;# 0 title Zorbet Voyages
;# 100 run score 12
;# 101 run score+half 12.5
;# 102 run (name="Ana") 1
;# 103 run crew.i 5
;# 104 run crew.nobody crew.nobody is not set
;# 105 run nobody nobody is not set
;# 106 run RText RText is a class
;# 107 run boat RAnimation
;# 108 run ref RAnimation (a second name)
;# 109 run vanish Startup.mps:66
;# 110 run 1/0 a division by zero, or a power that has no value
;# 111 run name/2 a text stands where a number is needed
;# 112 run (score parentheses or quotes do not match: (score
;# 113 run "score a quote is not closed: "score
;# 200 run score="olá "+name olá Ana
;# 201 expect met variable score olá Ana
;# 201 run list=[ 7 8 done
;# 202 run list.2 8
;# 203 run set boat x 20 done
;# 204 run get boat x score 20
;# 205 run say "x is" score done
;# 206 run fish=RAnimation 2003 6 RAnimation
;# 207 run play fish done
;# 208 run play fish } done
;# 209 run RandomNumber 5 5 done, RESULT is 5
;# 210 run MessageBox "Ahoy" done
;# 211 run fish=&boat RAnimation
;# 212 run fish RAnimation
;# 213 run drop fish list.1 done
;# 214 run fish fish is not set
;# 215 run set boat mouseDown clicked done
;# 300 run x= a value is missing; "drop x" empties the variable
;# 301 run set boat colour 1 Property colour not found
;# 302 run set boat mouseDown nobody Procedure nobody not found
;# 303 run get nobody x y nobody is not a trinket, so "get" won't work here
;# 304 run play boat dance Method dance not found
;# 305 run set boat the statement lacks a word: set boat
;# 306 run Dance 1 there is no command Dance; an expression is written without blanks
;# 307 run a = 1 there is no command a; an expression is written without blanks
;# 308 run PlaySound 99999 done, RESULT is -1
;# 309 run call clicked "call" leads the script to another place, which a line cannot do
;# 310 run if score "if" leads the script to another place, which a line cannot do
;# 311 run procedure p "procedure" leads the script to another place, which a line cannot do
;# 312 run wait "wait" leads the script to another place, which a line cannot do
;# 313 run [ "[" leads the script to another place, which a line cannot do
;# 400 run drop wait done
;# 500 run set RAnimation born vanish done
;# 501 run fish=RAnimation 2003 6 0
;# 502 run set RAnimation born complain done
;# 503 run fish=RAnimation 2003 6 RAnimation
;# 600 run set RAnimation born leave done
;# 601 run fish=RAnimation 2003 6 RAnimation
;# 602 run score score is not set
;# 700 run relay "Startup.mps" done
;# 701 run score score is not set
;# 800 expect met property boat x 6
;# 800 run quit done
;# 801 end 0
;: file content/next.mps
say "next"
score="of the next"
