; The class of the guide for components, which comes from the library "RLamp.lrn".
;$ --components
yield off
first=RLamp 5
second=RLamp 3
play second turnUp
play second turnUp 200
get second level full
set second level 12
get first level a
get second level b
say a b full
set first colour red
drop first
; Neither a file that is no library nor a missing one is a class.
x=RBroken 1
y=RMissing 1
say x y
quit
;= 5 12 100
;= RBroken RMissing
;! Property colour not found
;! Variable RBroken is empty
;! Variable RMissing is empty
