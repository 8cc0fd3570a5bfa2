; More steps (steps.mps), for objects t.1 and so on: "of 1 PROPERTY WORDS" puts a property into line,
; "let 1 PROPERTY VALUE" sets one, "run 1 METHOD WORDS" calls a method, "rest SECONDS" pauses,
; "lose t.1" drops it; begin and finish HOW are transitions, show is DisplayScreen.
include steps.mps
procedure four
[
call cut
thing=word
call cut
member=word
call cut
one=word
call cut
two=word
]
procedure of
[
call four
got="none"
get t.thing member one two got
line=line+" "+got
]
procedure let
[
call four
set t.thing member one
]
procedure run
[
call four
play t.thing member one two
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
