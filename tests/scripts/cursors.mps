; Cursors over a boat: the platform's, two of a library, one that is missing; while it is held and
; when it is put into a group.
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
