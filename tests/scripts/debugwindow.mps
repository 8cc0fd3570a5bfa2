; The trace in the debug window: its lines are reported as what a person would have seen.
yield off
debug w
debug on
x=1+2
debug off
say x
quit
;= 3
;# 0 title Zorbet Voyages
;# 1 debug debug
;# 1 debug on
;# 1 debug 
;# 1 debug Startup.mps
;# 1 debug assignment
;# 1 debug x=1+2: x was [x] now [3]
;# 2 end 0
