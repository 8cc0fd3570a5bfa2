yield off
ActivateDLL golden.rsc
Scene 100
