; The peg game: which hole a peg is dropped into, to the pixel, holding one, what handlers do,
; filling and taking out; and whole games at random, as a model has them. The holes lie in a row of
; 42 pixels each; those that are empty are told, behind the depth of a peg that has another one.
;: rsc golden
;> 5 key W
;$ then --input content/drags --until 20000
yield off
ActivateDLL golden.rsc
include player.mps
include steps.mps
; Peg 6, beside hole 1 and onto its corner, in it, beside a large one's place; peg 13.
spots=["230 115" "285 315" "345 315" "315 285" "315 345" "344 286" "315 315" "259 115" "524 115"
plot=[d1 m2 u2 d1 m3 u3 d1 m4 u4 d1 m5 u5 "empties" d1 m6 u6 "empties, give p pegMovingZ 90"
plot=["hole 6 160" d9 "m149 115" "u149 115" "empties, hole 6 215" d9 m1 u1 "empties, tell"
; Held while its hole is moved; released elsewhere; taken out meanwhile; the size of the first one.
plot=["ask p removePeg 1, ask p reset" d1 "hole 6 1061, hole 10 1061, empties" m7
plot=["empties, hole 6 215, hole 10 383" b0 u7 f0 "empties" d7 "ask p removePeg 1"
plot=["m500 400" "u500 400" "empties, tell, large" d9 m8 u8 "empties, leave, solvedAnew" d1 m7 u7
plot=["empties, leave, solvedGone" d1 m7 u7 "game, leave, moreGone" d1 m7 u7 "tell, game, row" end
; A jump goes two steps along a line, a column or the third way, over a peg into an empty hole.
rank=[1 2 2 3 3 3 4 4 4 4 5 5 5 5 5
file=[1 1 2 1 2 3 1 2 3 4 1 2 3 4 5
procedure findOver
[
over=0
down=rank.to-rank.from
aside=file.to-file.from
if (down%2=0)*(aside%2=0)*(down*down<5)*(aside*aside<5)*(down*aside<0=0)*(from#to)
[
down=rank.from+(down/2)
over=down*(down-1)/2+file.from+(aside/2)
]
]
; By numbers that come again in the second visit.
procedure drawJump
for
[
seed=(seed*171+11213)%53125
from=seed\9%15+1
seed=(seed*171+11213)%53125
to=seed\9%15+1
call findOver
if (over>0)+(seed%40=0)>0
break
]
procedure writeDrags
[
call writePlot
seed=1
for n 1 3000
[
call drawJump
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
deep=""
for n 1 15
full.n=0
for n 1 pegs
if peg.n#("peg."+n)
[
get peg.n x left
get peg.n y top
get peg.n z depth
left=(left-5)/42+1
if top=300
left=1
full.left=1
if depth#5
deep=depth
]
]
procedure empties
[
call see
line=line+" "+deep+":"
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
procedure large
[
call do "ask p fill, ask p removePeg 13, give p pegID 281, ask p fill, give p pegID 450"
call do "ask p removePeg 6"
]
procedure anew
call do "note anew, ask p reset"
procedure gone
call do "note gone, lose p"
procedure solvedAnew
set p solved anew
procedure solvedGone
set p solved gone
procedure moreGone
[
set p pegsLeftForSolved 0
set p noMoreMoves gone
]
procedure game
[
pegs=0
p=RPegGame 5
set p pegID 450
for n 1 15
[
set p pegX n n*42-37
set p pegY n 100
m.n=0
]
set p pegX 1 300
set p pegY 1 300
]
procedure onSolved
heard=heard+"solved"
procedure onMore
heard=heard+"more"
procedure row
[
set p pegX 1 5
set p pegY 1 100
set p solved onSolved
set p noMoreMoves onMore
seed=1
ended=1
]
; How many pegs there are, and whether no jump is left.
procedure judge
[
ended=1
count=0
for from 1 15
[
count=count+m.from
for to 1 15
[
call findOver
if over
if m.from*m.over*(m.to=0)
ended=0
]
]
]
set OMAnimation born born
solvedGames=0
jumps=0
games=0
call do "game, look p pegsLeftForSolved pegMovingZ, empties, ask p removePeg 3, ask p fill"
call do "ask p removePeg 5, ask p removePeg 5, ask p removePeg 15, empties, ask p reset, empties"
call do "tell"
wrong=[0 16 -1 none
for k 1 4
[
play p removePeg 8
play p removePeg wrong.k
set p pegX wrong.k 77
get p pegX wrong.k left
get p pegY wrong.k top
line=line+left+top
call do "ask p reset, empties"
]
; by chance each of them; none of no picture
call do "game, tell"
for n 1 15
emptied.n=0
for k 1 80
[
play p fill
if k>40
play p removePeg ""
else
play p removePeg
play p reset
call see
for n 1 15
if full.n=0
emptied.n=1
]
count=0
for n 1 15
count=count+emptied.n
line=" "+count
call do "give p pegID -1, ask p fill, empties, tell, give p pegID 99, ask p reset, give p pegID 450"
call do "ask p removePeg 1, ask p reset"
call follow
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
set p pegsLeftForSolved RESULT
heard=""
wait
call drawJump
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
expected="solved"
if count>RESULT
expected="more"
solvedGames=solvedGames+(expected="solved")
]
]
call see
for n 1 15
if full.n#m.n
say "BAD" games n full.n
if heard#expected
say "BAD" games heard expected
]
say "games" games "jumps" jumps "solved" solvedGames

;=  15,5 : 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 : 5 15 : 15
;=  : 1 : 1 : 1 : 1
;=  15 : 11
;=  : 1 : 3 6 : 3 6 : 3 9 13
;=  90: 1 10 90: 6 10 : 3 6 : 1 3 6
;=  : 9 13 anew : 15 gone gone
;= games 30 jumps 207 solved 13
;! ASEQ resource 99 not found.
;! Nested interrupt on OMAnimation's event