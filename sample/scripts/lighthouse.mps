; Inside the lighthouse: the fire burns, the cat sleeps, the signpost leads back to the harbour.
yield off
StartTransition
Scene 101

procedure lightUp
[
set back sequence 2
]

procedure dimSign
[
set back sequence 1
]

procedure goOutside
[
relay harbour.mps
]

fire=RAnimation 2102 1
cat=RAnimation 2101 2
back=RAnimation 2103 20

set fire touchy 0
set cat movable 0
set back movable 0
set back mouseDown goOutside
set back flyOn lightUp
set back flyOff dimSign

EndTransition 0
