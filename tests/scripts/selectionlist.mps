; The selection list: what each step answers and leaves behind; typed by the script, and then the same
; steps once more by keys.
yield off

procedure state
[
get l currentEntry who
get l entryIsNew new
get l entryIsValid valid
shows="["+who+"] new "+new+" valid "+valid
]
procedure tell
[
call state
say what shows
]
procedure can
[
get l canAddChar a
get l canDeleteChar b
get l canMoveHighlightUp c
get l canMoveHighlightDown d
get l canScrollListUp e
get l canScrollListDown f
get l listIsFull g
say what "add" a "delete" b "up" c "down" d "scroll up" e "down" f "full" g
]
procedure deleted
[
play l deleteEntry
get l deletedEntry gone
get l notifyDeleted notify
call state
say "deleted" gone "notify" notify shows
]
procedure type letters
for i 1 ~letters
[
play l addChar letters|i|1
code=RESULT
call state
say letters|i|1 code shows
]
procedure names
[
play l addListEntry "Mia"
play l addListEntry "Ana"
play l addListEntry "Bob"
play l addListEntry "Bob"
]

; ---- a list of no names
l=RSelList 100 100 200 60
what="empty:"
call tell
call can
play l moveHighlightDown
play l scrollListPageUp
play l deleteChar
call deleted
play l addChar ""
code=RESULT
play l addChar "ab"
say "no character, two:" code RESULT
call type "z"
call can
play l deleteChar
call tell

; ---- names in their order; equal ones; one of more than 16 characters
call names
play l addListEntry ""
play l addListEntry "Clementine of Orange"
what="named:"
call tell
call can
set l currentEntry "Z"
call tell
set l currentEntry "Clem"
call tell
call can
for i 1 4
[
play l moveHighlightDown
call tell
]
call can

; ---- prefixes, words and the end of a name
call type "mia"
what="matching:"
call can
call type "x"
what="new:"
call can
play l moveHighlightUp
play l scrollListLineUp
set l currentEntry "Ana"
call tell
play l deleteChar
what="taken back:"
call tell
call type "  bella  CARLO sun!"
call can
call deleted
call type " b"
play l deleteChar
play l deleteChar
what="nothing typed:"
call tell
call type "È¿ È"
call deleted

; ---- a name of its own although another begins so
what="started:"
play l startNewEntry
call tell
call can
call type "bob"
play l startNewEntry
call tell
call type "y"
play l deleteChar
play l deleteChar
what="shorter:"
call tell
play l addListEntry "Bo"
call tell
play l deleteChar
play l deleteChar
call tell
call type "m"
play l startNewEntry
what="from a beginning:"
call tell
call deleted

; ---- taken out at both ends
set l currentEntry "Mia"
call deleted
set l currentEntry "Ana"
for i 1 6
call deleted

; ---- 99 names
for i 1 98
play l addListEntry "Name "+i
what="98:"
call can
call type "name 9x"
call can
play l addListEntry "Zoe"
play l deleteChar
play l addListEntry "Zoe"
what="99:"
call tell
call can
call type "q"
set l currentEntry "Zoe"
play l startNewEntry
call tell
play l addListEntry "Zoe"
call type "name 55"
call deleted
call can
drop l

; ---- the same by the script and by keys
procedure step
[
n=n+1
RESULT="-"
if letter="Backspace"
play l deleteChar
else if letter="Enter"
play l startNewEntry
else if letter="Delete"
play l deleteEntry
else
play l addChar letter
call state
answer="answer "+RESULT+" "+shows
]
procedure pressed
[
get keyboard "key" letter
call step
if by.n#answer
say "step" n "differs:" by.n answer
else
same=same+1
if n=count
drop wait
]
steps=[a n a x Backspace " " " " b Backspace Backspace Backspace Backspace Backspace Backspace m i A Enter Enter z
steps=[Delete b Backspace Enter q 1 2 3 4 5 6 7 8 9 0 a b c d e
steps=[f Delete
count=42
l=RSelList 100 100 200 60
call names
n=0
for j 1 count
[
letter=steps.j
call step
by.n=answer
say letter answer
]
drop l
l=RSelList 100 100 200 60
call names
keyboard=RKbdInp 0
set keyboard keyPressed pressed
n=0
same=0
wait
say "by keys:" n "steps," same "the same"
quit
