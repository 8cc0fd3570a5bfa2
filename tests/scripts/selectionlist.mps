; The selection list: what each step answers and leaves behind; typed by the script, and then the same
; steps once more by keys.
; the steps that the script has done before
;> 100 key a
;> 110 key n
;> 120 key a
;> 130 key x
;> 140 key Backspace
;> 150 key  
;> 160 key  
;> 170 key b
;> 180 key Backspace
;> 190 key Backspace
;> 200 key Backspace
;> 210 key Backspace
;> 220 key Backspace
;> 230 key Backspace
;> 240 key m
;> 250 key i
;> 260 key A
;> 270 key Enter
;> 280 key Enter
;> 290 key z
;> 300 key Delete
;> 310 key b
;> 320 key Backspace
;> 330 key Enter
;> 340 key q
;> 350 key 1
;> 360 key 2
;> 370 key 3
;> 380 key 4
;> 390 key 5
;> 400 key 6
;> 410 key 7
;> 420 key 8
;> 430 key 9
;> 440 key 0
;> 450 key a
;> 460 key b
;> 470 key c
;> 480 key d
;> 490 key e
;> 500 key f
;> 510 key Delete
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
;= empty: [] new 0 valid 0
;= empty: add 1 delete 0 up 0 down 0 scroll up 0 down 0 full 0
;= deleted  notify 0 [] new 0 valid 0
;= no character, two: 5 5
;= z 0 [Z] new 1 valid 1
;= empty: add 1 delete 1 up 0 down 0 scroll up 0 down 0 full 0
;= empty: [] new 0 valid 0
;= named: [Ana] new 0 valid 1
;= named: add 1 delete 0 up 0 down 1 scroll up 0 down 1 full 0
;= named: [Ana] new 0 valid 1
;= named: [Clementine of Or] new 0 valid 1
;= named: add 1 delete 0 up 1 down 1 scroll up 1 down 0 full 0
;= named: [Mia] new 0 valid 1
;= named: [Mia] new 0 valid 1
;= named: [Mia] new 0 valid 1
;= named: [Mia] new 0 valid 1
;= named: add 1 delete 0 up 1 down 0 scroll up 1 down 0 full 0
;= m 0 [Mia] new 0 valid 1
;= i 0 [Mia] new 0 valid 1
;= a 0 [Mia] new 0 valid 1
;= matching: add 1 delete 1 up 1 down 0 scroll up 1 down 0 full 0
;= x 0 [Miax] new 1 valid 1
;= new: add 1 delete 1 up 0 down 0 scroll up 0 down 0 full 0
;= new: [Miax] new 1 valid 1
;= taken back: [Mia] new 0 valid 1
;=   0 [Mia ] new 1 valid 1
;=   3 [Mia ] new 1 valid 1
;= b 0 [Mia B] new 1 valid 1
;= e 0 [Mia Be] new 1 valid 1
;= l 0 [Mia Bel] new 1 valid 1
;= l 0 [Mia Bell] new 1 valid 1
;= a 0 [Mia Bella] new 1 valid 1
;=   0 [Mia Bella ] new 1 valid 1
;=   3 [Mia Bella ] new 1 valid 1
;= C 0 [Mia Bella C] new 1 valid 1
;= A 0 [Mia Bella Ca] new 1 valid 1
;= R 0 [Mia Bella Car] new 1 valid 1
;= L 0 [Mia Bella Carl] new 1 valid 1
;= O 0 [Mia Bella Carlo] new 1 valid 1
;=   0 [Mia Bella Carlo ] new 1 valid 1
;= s 1 [Mia Bella Carlo ] new 1 valid 1
;= u 1 [Mia Bella Carlo ] new 1 valid 1
;= n 1 [Mia Bella Carlo ] new 1 valid 1
;= ! 1 [Mia Bella Carlo ] new 1 valid 1
;= taken back: add 0 delete 1 up 0 down 0 scroll up 0 down 0 full 0
;= deleted  notify 0 [Mia] new 0 valid 1
;=   2 [Mia] new 0 valid 1
;= b 0 [Bob] new 0 valid 1
;= nothing typed: [Bob] new 0 valid 1
;= È 0 […] new 1 valid 1
;= ¿ 0 […‡] new 1 valid 1
;=   0 […‡ ] new 1 valid 1
;= È 0 […‡ …] new 1 valid 1
;= deleted  notify 0 [Mia] new 0 valid 1
;= started: [] new 1 valid 0
;= started: add 1 delete 0 up 0 down 0 scroll up 0 down 0 full 0
;= b 0 [B] new 1 valid 1
;= o 0 [Bo] new 1 valid 1
;= b 0 [Bob] new 1 valid 0
;= started: [Bob] new 1 valid 0
;= y 0 [Boby] new 1 valid 1
;= shorter: [Bo] new 1 valid 1
;= shorter: [Bo] new 1 valid 0
;= shorter: [Ana] new 0 valid 1
;= m 0 [Mia] new 0 valid 1
;= from a beginning: [M] new 1 valid 1
;= deleted  notify 0 [Mia] new 0 valid 1
;= deleted Mia notify 1 [Clementine of Or] new 0 valid 1
;= deleted Ana notify 1 [Bo] new 0 valid 1
;= deleted Bo notify 1 [Bob] new 0 valid 1
;= deleted Bob notify 1 [Bob] new 0 valid 1
;= deleted Bob notify 1 [Clementine of Or] new 0 valid 1
;= deleted Clementine of Or notify 1 [] new 0 valid 0
;= deleted Clementine of Or notify 1 [] new 0 valid 0
;= 98: add 1 delete 0 up 0 down 1 scroll up 0 down 1 full 0
;= n 0 [Name 1] new 0 valid 1
;= a 0 [Name 1] new 0 valid 1
;= m 0 [Name 1] new 0 valid 1
;= e 0 [Name 1] new 0 valid 1
;=   0 [Name 1] new 0 valid 1
;= 9 0 [Name 9] new 0 valid 1
;= x 0 [Name 9x] new 1 valid 1
;= 98: add 1 delete 1 up 0 down 0 scroll up 0 down 0 full 1
;= 99: [Name 9] new 0 valid 1
;= 99: add 1 delete 1 up 1 down 1 scroll up 1 down 1 full 1
;= q 4 [Name 9] new 0 valid 1
;= 99: [Zoe] new 0 valid 1
;= n 0 [Name 1] new 0 valid 1
;= a 0 [Name 1] new 0 valid 1
;= m 0 [Name 1] new 0 valid 1
;= e 0 [Name 1] new 0 valid 1
;=   0 [Name 1] new 0 valid 1
;= 5 0 [Name 5] new 0 valid 1
;= 5 0 [Name 55] new 0 valid 1
;= deleted Name 55 notify 1 [Name 56] new 0 valid 1
;= 99: add 1 delete 0 up 1 down 1 scroll up 1 down 1 full 0
;= a answer 0 [Ana] new 0 valid 1
;= n answer 0 [Ana] new 0 valid 1
;= a answer 0 [Ana] new 0 valid 1
;= x answer 0 [Anax] new 1 valid 1
;= Backspace answer - [Ana] new 0 valid 1
;=   answer 0 [Ana ] new 1 valid 1
;=   answer 3 [Ana ] new 1 valid 1
;= b answer 0 [Ana B] new 1 valid 1
;= Backspace answer - [Ana ] new 1 valid 1
;= Backspace answer - [Ana] new 0 valid 1
;= Backspace answer - [Ana] new 0 valid 1
;= Backspace answer - [Ana] new 0 valid 1
;= Backspace answer - [Ana] new 0 valid 1
;= Backspace answer - [Ana] new 0 valid 1
;= m answer 0 [Mia] new 0 valid 1
;= i answer 0 [Mia] new 0 valid 1
;= A answer 0 [Mia] new 0 valid 1
;= Enter answer - [Mia] new 1 valid 0
;= Enter answer - [Mia] new 1 valid 0
;= z answer 0 [Miaz] new 1 valid 1
;= Delete answer - [Mia] new 0 valid 1
;= b answer 0 [Bob] new 0 valid 1
;= Backspace answer - [Bob] new 0 valid 1
;= Enter answer - [] new 1 valid 0
;= q answer 0 [Q] new 1 valid 1
;= 1 answer 0 [Q1] new 1 valid 1
;= 2 answer 0 [Q12] new 1 valid 1
;= 3 answer 0 [Q123] new 1 valid 1
;= 4 answer 0 [Q1234] new 1 valid 1
;= 5 answer 0 [Q12345] new 1 valid 1
;= 6 answer 0 [Q123456] new 1 valid 1
;= 7 answer 0 [Q1234567] new 1 valid 1
;= 8 answer 0 [Q12345678] new 1 valid 1
;= 9 answer 0 [Q123456789] new 1 valid 1
;= 0 answer 0 [Q1234567890] new 1 valid 1
;= a answer 0 [Q1234567890a] new 1 valid 1
;= b answer 0 [Q1234567890ab] new 1 valid 1
;= c answer 0 [Q1234567890abc] new 1 valid 1
;= d answer 0 [Q1234567890abcd] new 1 valid 1
;= e answer 0 [Q1234567890abcde] new 1 valid 1
;= f answer 1 [Q1234567890abcde] new 1 valid 1
;= Delete answer - [Mia] new 0 valid 1
;= by keys: 42 steps, 42 the same
