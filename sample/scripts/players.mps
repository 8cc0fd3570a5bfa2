; Sets up the world's memory, once in a run of the game, before the guest book. That is before the first
; transition, which writes the data file.
yield off
include memory.mps
play world activateDataFile

include signin.mps
