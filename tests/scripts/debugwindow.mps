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
