; Cursors over a boat: the platform's, two of a library, one that is missing; while it is held and
; when it is put into a group.
;> 1000 move 56 310
;> 1500 move 500 100
;> 2000 move 56 310
;> 2500 down 56 310
;> 3000 move 156 310
;> 3500 up 156 310
;> 4000 move 500 100
;> 4500 move 156 310
;> 5000 double 156 310
;> 5500 move 500 100
;> 6000 quit
yield off
procedure second
play boat setAOCursor 1 2
procedure third
[
play boat setAOCursor 99
get boat x left
say "dropped at" left
]
procedure fourth
[
group=OMMultiTrinket 7
play group addTrinket "boat"
play boat setAOCursor 2
say "in a group"
]
boat=RAnimation 2001 7
set boat mouseDown second
set boat mouseUp third
set boat dblClick fourth
play boat setAOCursor -2
;= dropped at 104
;= in a group
;# 0 title Zorbet Voyages
;# 1000 cursor -2
;# 1052 title 9
;# 1500 cursor -1
;# 2000 cursor -2
;# 2102 title 7
;# 2500 cursor 1
;# 2500 cursor 2
;# 3152 title 8
;# 3500 cursor 1
;# 3500 cursor -1
;# 4202 title 7
;# 5000 cursor 2
;# 5252 title 8
;# 5500 cursor -1
;# 6001 end quit
