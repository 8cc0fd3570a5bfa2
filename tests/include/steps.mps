; Steps: a text of verbs with their words, with commas between them, as in "put a.1 c.1, look a.1 x y, tell". Answers
; are a.1 and so on, containers c.1 and so on, the puzzle is p. What is seen stands in line until it is told.
line=""
procedure cut
[
end=" "@words
word=words|1|(end-1)
words=words|(end+1)
]
procedure do steps
[
steps=steps+", "
for ~steps
[
end=", "@steps
words=steps|1|(end-1)+" "
steps=steps|(end+2)
call cut
call $word
]
]
procedure pick
[
call cut
one=word
index=word|3
family=word|1|1@"ac"
]
procedure look
[
call pick
mark=" "
for ~words
[
call cut
if family=1
get a.index word got
else
get c.index word got
line=line+mark+got
mark=","
]
]
procedure give
[
call pick
for ~words
[
call cut
setting=word
call cut
if family=1
set a.index setting word
else
set c.index setting word
]
]
procedure lay
[
call pick
call cut
left=word
call cut
if family=1
play a.index "place" left word
else
play c.index "place" left word
]
procedure tell
[
say line
line=""
]
procedure puzzle
[
call cut
method=word
call pick
call cut
play p method one word
]
procedure put
[
call pick
call cut
play p addAnswerToContainer one word
]
procedure take
[
call pick
call cut
play p removeAnswerFromContainer one word
]
procedure lose
[
call cut
drop var word
]
; One of each kind, for copies.
procedure makeKinds wide high
[
kinds.1=RValueContainer -1 0 0 wide high 10
kinds.2=RAttributeContainer -1 0 0 wide high 10
kinds.3=RStackingContainer -1 0 0 wide high 10
kinds.4=RHorizontalContainer -1 0 0 wide high 10
kinds.5=RHorizontalValueContainer -1 0 0 wide high 10
kinds.6=RFabricContainer -1 0 0 wide high 10
]
