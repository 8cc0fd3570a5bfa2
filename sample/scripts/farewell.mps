; The farewell: all of the harbour stands still, as it was when the player left, and Tilli waves. Then the game ends; a click or a
; key ends it at once.
yield off
world=RWorldPort 0
include voice.mps

procedure leave
    quit

tilli=RCharacter 2010 236 300 30
set tilli movable 0
set tilli mouseDown leave
port=RScenePort 0
set port backgroundClicked leave
keys=RKbdInp 0
set keys keyPressed leave

balloon=RAnimation 2017 4 329 25
set balloon movable 0
set balloon mouseDown leave
saying=RText 20 362 226 -1 26
set saying touchy 0
set saying movable 0
set saying wrap 1
set saying colorIndex 4
play saying setFont 20
get world playerName visitor
; texts take
goodbye="Até logo, "+visitor+"!"
set saying text goodbye

waving=RQueue 1
play waving add CharacterAnimAction "tilli" 2014 2
play waving add CharacterAnimAction "tilli" 2012
play waving start
schedule 4 leave
call speak tilliVoice goodbye
