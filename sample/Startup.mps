; The sample game begins here. All it does is to say so in the log, and to hand over to the first
; scene, whose script replaces this one.
yield off
LogMessage "The sample game begins."
relay "signin.mps"
