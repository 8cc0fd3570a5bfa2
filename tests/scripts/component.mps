; The class of the guide for components, which comes from the library "RLamp.lrn"; neither a file
; that is no library nor a missing one is a class.
;$ --components
yield off
include things.mps
t.1=RLamp 5
t.2=RLamp 3
call do "run 2 turnUp, of 2 level, run 2 turnUp 200, of 2 level, let 2 level 12, of 1 level"
call do "of 2 level, let 1 colour red, tell"
x=RBroken 1
y=RMissing 1
say x y
quit
;=  13 100 5 12
;= RBroken RMissing
;! Property colour not found
;! Variable RBroken is empty
;! Variable RMissing is empty
