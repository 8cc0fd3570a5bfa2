; The selection list: what each step answers, and what it leaves behind: the entry, new, valid.
;$ text
;$ compiled
yield off
include steps.mps
procedure see
[
get l currentEntry who
get l entryIsNew new
get l entryIsValid valid
line=line+" ["+who+"]"+new+valid
]
words=[canAddChar canDeleteChar canMoveHighlightUp canMoveHighlightDown
words=[canScrollListUp canScrollListDown listIsFull
procedure can
[
line=line+" "
for i 1 7
[
get l words.i got
line=line+got
]
]
; The answer to each character; _ is a blank.
procedure type
[
call cut
line=line+" "
for i 1 ~word
[
letter=word|i|1
if letter="_"
letter=" "
play l addChar letter
line=line+RESULT
]
call see
]
procedure back
[
call cut
for i 1 word
play l deleteChar
call see
]
procedure turn
[
call cut
play l word
call see
]
procedure at
[
call cut
set l currentEntry word
call see
]
procedure entry
[
call cut
play l addListEntry word
]
procedure gone
[
play l deleteEntry
get l deletedEntry name
get l notifyDeleted notify
line=line+" "+name+notify
call see
]
; a list of no names
l=RSelList 100 100 200 60
play l addChar ""
code=RESULT
play l addChar "ab"
say code RESULT
;= 5 5
call do "see, can, turn moveHighlightDown, turn scrollListPageUp, back 1, gone, type z, can"
call do "back 1, tell"
;=  []00 1000000 []00 []00 []00 0 []00 0 [Z]11 1100000 []00
; names in their order; equal ones; one of more than 16 characters
call do "entry Mia, entry Ana, entry Bob, entry Bob, see"
play l addListEntry ""
play l addListEntry "Clementine of Orange"
call do "can, at Z, at Clem, can, turn moveHighlightDown, turn moveHighlightDown"
call do "turn moveHighlightDown, can, tell"
;=  [Ana]01 1001010 [Ana]01 [Clementine of Or]01 1011100 [Mia]01 [Mia]01 [Mia]01 1010100
; prefixes, words and the end of a name
call do "type mi, type a, can, type x, can, turn moveHighlightUp, turn scrollListLineUp, at Ana"
call do "back 1, tell"
;=  00 [Mia]01 0 [Mia]01 1110100 0 [Miax]11 1100000 [Miax]11 [Miax]11 [Miax]11 [Mia]01
call do "type _, type _, type be, type lla__, type CARLO_, tell, type sun!, can, gone, type _"
call do "type b, back 2, tell"
;=  0 [Mia ]11 3 [Mia ]11 00 [Mia Be]11 00003 [Mia Bella ]11 000000 [Mia Bella Carlo ]11
;=  1111 [Mia Bella Carlo ]11 0100000 0 [Mia]01 2 [Mia]01 0 [Bob]01 [Bob]01
call do "type È¿_È, gone, tell"
;=  0000 […‡ …]11 0 [Mia]01
; a name of its own although another begins so
call do "turn startNewEntry, can, type bo, type b, turn startNewEntry, type y, back 2, entry Bo"
call do "see, back 2, tell"
;=  []10 1000000 00 [Bo]11 0 [Bob]10 [Bob]10 0 [Boby]11 [Bo]11 [Bo]10 [Ana]01
call do "type m, turn startNewEntry, gone, tell, type q, type 1234567890abcdef, gone, tell"
;=  0 [Mia]01 [M]11 0 [Mia]01
;=  0 [Q]11 0000000000000001 [Q1234567890abcde]11 0 [Mia]01
; taken out at both ends
call do "at Mia, gone, at Ana, gone, gone, tell, gone, gone, gone, gone, tell"
;=  [Mia]01 Mia1 [Clementine of Or]01 [Ana]01 Ana1 [Bo]01 Bo1 [Bob]01
;=  Bob1 [Bob]01 Bob1 [Clementine of Or]01 Clementine of Or1 []00 Clementine of Or1 []00
; 99 names
for i 1 98
play l addListEntry "Name "+i
call do "can, type name, type _9, type x, can, entry Zoe, back 1, tell, entry Zoe, see, can"
call do "type q, tell"
;=  1001010 0000 [Name 1]01 00 [Name 9]01 0 [Name 9x]11 1100001 [Name 9]01
;=  [Name 9]01 1111111 4 [Name 9]01
call do "at Zoe, turn startNewEntry, entry Zoe, type name_5, type 5, gone, can, tell"
;=  [Zoe]01 [Zoe]01 000000 [Name 5]01 0 [Name 55]01 Name 551 [Name 56]01 1011110
quit
