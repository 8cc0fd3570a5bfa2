; A class that comes from a component library, "rtestcomponent.lrn".
yield off
first=RTestComponent 5
second=RTestComponent -3
set second level 12
get first level a
get second level b
say a b
set first colour red
drop first
; Neither a file that is no library nor a missing one is a class.
x=RBroken 1
y=RMissing 1
say x y
quit
