; The peg game: which hole a peg is dropped into, to the pixel, holding one, what handlers do,
; filling and taking out; and whole games at random, as a model has them. The holes lie in a row of
; 42 pixels each; those that are empty are told.
;: rsc golden
;> 5 key W
;$ then --input content/drags --until 20000
yield off
ActivateDLL golden.rsc
include player.mps
include steps.mps
; Peg 6, beside hole 1 and onto its corner, in it, beside a large one's place; peg 13.
spots=["230 115" "50 115" "20 85" "20 145" "20 60" "49 86" "20 115" "259 115" "524 115"
plot=[d1 m2 u2 d1 m3 u3 d1 m4 u4 d1 m5 u5 "empties" d1 m6 u6 "empties"
plot=["hole 6 160" d9 "m149 115" "u149 115" "empties, hole 6 215" d9 m1 u1 "empties, tell"
; Held while its hole is moved; released elsewhere; taken out meanwhile; the size of the first one.
plot=["ask p removePeg 1, ask p reset" d1 "hole 6 1061, hole 10 1061, empties" m7
plot=["empties, hole 6 215, hole 10 383" b0 u7 f0 "empties" d7 "ask p removePeg 1"
plot=["m500 400" "u500 400" "empties, tell, ask p fill, ask p removePeg 13"
plot=["give p pegID 281, ask p fill, give p pegID 450, ask p removePeg 6" d9 m8 u8
plot=["empties, leave, solvedAnew" d1 m7 u7 "empties, leave, solvedGone" d1 m7 u7 "tell, game" end
; A jump goes from one end of a line of three to the other, over a peg into an empty hole. Each is
; tried again and again, and each other pair now and then.
lows=[1 2 4 3 5 6 1 3 6 2 5 4 4 7 8 11 12 13
overs=[2 4 7 5 8 9 3 6 10 5 9 8 5 8 9 12 13 14
highs=[4 7 11 8 12 13 6 10 15 9 14 13 6 9 10 13 14 15
procedure drawJump n
[
k=n*7%18+1
from=lows.k
to=highs.k
if n\18%2
[
from=to
to=lows.k
]
if n%11=0
[
from=n\11%15+1
to=n\165%15+1
]
over=0
for k 1 18
if (from=lows.k)*(to=highs.k)+((to=lows.k)*(from=highs.k))
over=overs.k
]
procedure writeDrags
[
call writePlot
for n 1 3000
[
call drawJump n
call write kA
call write "d"+(from*42-22)+" 115"
call write "m"+(to*42-22)+" 115"
call write "u"+(to*42-22)+" 115"
call write kA
]
]
procedure born
[
pegs=pegs+1
peg.pegs=RECEIVER
]
procedure see
[
for n 1 15
full.n=0
for n 1 pegs
if peg.n#("peg."+n)
[
get peg.n x left
left=(left-5)/42+1
full.left=1
]
]
procedure empties
[
call see
line=line+" :"
for n 1 15
if full.n=0
line=line+" "+n
]
procedure hole
[
call cut
index=word
call cut
set p pegX index word
]
procedure leave
[
play p fill
for i 1 15
if (i#3)*(i#6)
play p removePeg i
]
procedure anew
call do "note anew, ask p reset"
procedure gone
call do "note gone, lose p"
procedure solvedAnew
set p solved anew
procedure solvedGone
set p solved gone
procedure game
[
pegs=0
p=RPegGame 5
set p pegID 450
for n 1 15
[
set p pegX n n*42-37
set p pegY n 100
]
]
procedure onSolved
heard=heard+"solved"
procedure onMore
heard=heard+"more"
; How many pegs there are, and whether no jump is left.
procedure judge
[
ended=1
count=0
for n 1 15
count=count+m.n
for k 1 18
[
over=overs.k
low=lows.k
high=highs.k
if m.over*(m.low#m.high)
ended=0
]
]
set OMAnimation born born
won=0
jumps=0
games=0
ends=[solved more
call do "game, look p pegsLeftForSolved, empties, ask p removePeg 3, ask p fill, ask p removePeg 5"
call do "ask p removePeg 5, ask p removePeg 15, empties, ask p reset, empties, tell"
call do "ask p removePeg 8, ask p removePeg 16, hole 16 77, hole 0 77, ask p reset, empties"
get p pegX 16 left
line=line+left
call do "ask p removePeg 8, ask p removePeg none, ask p reset, empties"
; by chance; none of no picture
seen=0
for k 1 30
[
play p fill
play p removePeg
call see
seen=seen+(full.1=0)+((full.15=0)*100)
]
call do "tell, game, give p pegID -1, ask p fill, empties, tell, give p pegID 99, ask p reset"
call do "give p pegID 450, ask p removePeg 1, ask p reset"
say seen%100>0 seen>99 seen%100<9 seen<900
call follow
set p solved onSolved
set p noMoreMoves onMore
ended=1
for drag 1 3000
[
wait
for ended
[
games=games+1
pegs=0
for n 1 15
play p removePeg n
play p fill
for n 1 15
[
m.n=?<7
if m.n=0
play p removePeg n
]
call judge
]
RandomNumber 1 4
most=RESULT
set p pegsLeftForSolved most
heard=""
wait
call drawJump drag
expected=""
if over
if m.from*m.over*(m.to=0)
[
jumps=jumps+1
m.to=1
m.over=0
m.from=0
call judge
if ended
[
expected=ends.((count>most)+1)
won=won+(count>most=0)
]
]
call see
for n 1 15
heard=heard+":"+full.n
for n 1 15
expected=expected+":"+m.n
if heard#expected
say "BAD" games heard "not" expected
]
say "games" games "jumps" jumps "solved" won
;=  15 : 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 : 5 15 : 15
;=  : 1 : 1
;=  : 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15
;= 1 1 1 1
;=  : 1 : 3 6 : 3 6 : 3 9 13
;=  : 1 10 : 6 10 : 3 6 : 1 3 6
;=  : 9 13 anew : 15 gone
;= games 50 jumps 348 solved 19
;! ASEQ resource 99 not found.
;! Nested interrupt on OMAnimation's event
