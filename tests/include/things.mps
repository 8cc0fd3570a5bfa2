; More steps (steps.mps), for objects t.1 and so on: "of 1 PROPERTY WORDS" puts a property into line,
; "let 1 PROPERTY [WORD] VALUE" sets one, "run 1 METHOD WORDS" calls a method, "rest SECONDS" pauses,
; "lose t.1" drops it; begin and finish HOW are transitions, show is DisplayScreen.
include steps.mps
procedure five
[
call cut
thing=word
call cut
member=word
call cut
one=word
call cut
two=word
call cut
three=word
]
procedure of
[
call five
got="none"
get t.thing member one two got
line=line+" "+got
]
procedure let
[
call five
if ~two
set t.thing member one two
else
set t.thing member one
]
procedure run
[
call five
play t.thing member one two three
]
procedure rest
[
call cut
pause word
]
procedure begin
StartTransition
procedure finish
[
call cut
EndTransition word
]
procedure show
DisplayScreen
