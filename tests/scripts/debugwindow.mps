; The trace in the debug window: its lines are reported as what a person would have seen.
yield off
debug w
debug on
x=1+2
if x>5
[
say more
]
else
say x
debug off
quit
;= 3
;# 0 title Zorbet Voyages
;# 1 debug debug
;# 1 debug on
;# 1 debug 
;# 1 debug Startup.mps
;# 1 debug assignment
;# 1 debug x=1+2: x was [x] now [3]
;# 1 debug check condition
;# 1 debug condition [x>5] is false
;# 1 debug jumping
;# 1 debug to  
;# 1 debug 
;# 1 debug say
;# 2 end 0
