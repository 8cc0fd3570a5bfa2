; Steps: a text of verbs with their words, with commas between them, as in "put a.1 c.1, look a.1 x
; y, tell". Answers are a.1 and so on, containers c.1 and so on, what the scene is about is p. What
; is seen stands in line until it is told. While the steps wait the milliseconds are counted in now.
; Handlers may do steps within steps.
line=""
now=0
here=1
level=0
words=""
procedure cut
[
end=" "@words
word=words|1|(end-1)
words=words|(end+1)
]
procedure do given
[
kept.level=words
level=level+1
steps.level=given
for ~steps.level
[
end=", "@steps.level
if end=0
end=~steps.level+1
words=steps.level|1|(end-1)+" "
steps.level=steps.level|(end+2)
call cut
call $word
]
level=level-1
words=kept.level
]
procedure pick
[
call cut
one=word
index=word|3
family=word|1|1
if family="a"
it.here=&a.index
else if family="c"
it.here=&c.index
else if one="q"
it.here=&q
else
it.here=&p
]
procedure look
[
call pick
mark=" "
for ~words
[
call cut
get it.here word got
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
set it.here setting word
]
]
procedure ask
[
call pick
parts=0
for ~words
[
call cut
parts=parts+1
part.parts=word
]
if parts=1
play it.here part.1
else if parts=2
play it.here part.1 part.2
else if parts=3
play it.here part.1 part.2 part.3
else if parts=4
play it.here part.1 part.2 part.3 part.4
else if parts=5
play it.here part.1 part.2 part.3 part.4 part.5
else if parts=6
play it.here part.1 part.2 part.3 part.4 part.5 part.6
else if parts=7
play it.here part.1 part.2 part.3 part.4 part.5 part.6 part.7
else if parts=8
play it.here part.1 part.2 part.3 part.4 part.5 part.6 part.7 part.8
else if parts=9
play it.here part.1 part.2 part.3 part.4 part.5 part.6 part.7 part.8 part.9
else if parts=10
play it.here part.1 part.2 part.3 part.4 part.5 part.6 part.7 part.8 part.9 part.10
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
procedure note
[
call cut
line=line+" "+word
]
procedure tell
[
say line
line=""
]
procedure wait time
for tick 1 time
[
pause 0.0011
now=now+1
]
procedure await
[
call cut
call wait word
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
