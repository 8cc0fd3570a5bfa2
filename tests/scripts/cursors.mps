; Cursors over a button: the platform's, two of a library, one that is missing; while it is held and
; when it is put into a group.
;: rsc golden
;> 100 move 56 310
;> 250 down 56 310
;> 300 move 156 310
;> 350 up 156 310
;> 500 double 156 310
;> 550 move 500 100
;> 600 quit
yield off
include things.mps
procedure second
play t.1 setAOCursor 1 2
procedure third
play t.1 setAOCursor 99
procedure fourth
[
group=OMMultiTrinket 7
play group addTrinket "t.1"
play t.1 setAOCursor 2
]
ActivateDLL golden.rsc
t.1=RAnimation 12014 40 296 7
set t.1 mouseDown second
set t.1 mouseUp third
set t.1 dblClick fourth
play t.1 setAOCursor -2
;# 0 title Zorbet Voyages
;# 100 cursor -2
;# 250 cursor 1
;# 250 cursor 2
;# 350 cursor 1
;# 350 cursor -1
;# 500 cursor 2
;# 550 cursor -1
;# 601 end quit
