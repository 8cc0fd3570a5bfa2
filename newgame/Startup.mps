; The game begins here. This script says what is kept from one day to the next, and who plays; then the
; scene takes over.
yield off

; The game keeps a number for its player, which is 0 at first. The 1 has it saved in the player's file.
world=RWorldPort 0
play world addIntProperty gardenVisits 1
play world activateDataFile
play world activatePlayer "Gardener"

; One visit more. It is saved by itself, at the latest when the game ends.
get world gardenVisits visits
set world gardenVisits visits+1

relay "garden.mps"
