; Cursors over a button: the platform's, two of a library, one that is missing; while it is held and
; when it is put into a group.
;: rsc golden
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
ActivateDLL golden.rsc
procedure second
play button setAOCursor 1 2
procedure third
[
play button setAOCursor 99
get button x left
say "dropped at" left
]
procedure fourth
[
group=OMMultiTrinket 7
play group addTrinket "button"
play button setAOCursor 2
say "in a group"
]
button=RAnimation 12014 40 296 7
set button sequence 2
set button mouseDown second
set button mouseUp third
set button dblClick fourth
play button setAOCursor -2
;= dropped at 140
;= in a group
;# 0 title Zorbet Voyages
;# 1000 cursor -2
;# 1002 title 12
;# 1500 cursor -1
;# 2000 cursor -2
;# 2002 title 10
;# 2500 cursor 1
;# 2500 cursor 2
;# 3002 title 11
;# 3500 cursor 1
;# 3500 cursor -1
;# 4002 title 10
;# 5000 cursor 2
;# 5002 title 11
;# 5500 cursor -1
;# 6001 end quit
