; The sample game begins here. All it does is to say so in the log, to have every click of a hasty
; player count, and to hand over to the first scene, whose script replaces this one.
yield off
LogMessage "The sample game begins."
SetDoubleClicksEnabled 0
relay harbour.mps
