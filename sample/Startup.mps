; The sample game begins here: the opening movie, and then the first scene, whose script replaces this one.
; A click, the space bar or Enter skips the movie; where it cannot be played, nobody waits for it.
;
; The movie begins and ends black, so that its colours and those of the scene are never mixed up.
yield off
LogMessage "The sample game begins."

procedure begin
[
    GoToBlack
    play port resumeBackgroundMusic
    relay "players.mps"
]

procedure skip
[
    GoToBlack
    play opening halt
    call begin
]

; Music, if there were any, would wait for the end of the movie.
port=RScenePort 0
set port backgroundClicked skip
set port spacebarPressed skip
set port returnPressed skip
play port pauseBackgroundMusic

; The pause has the script come to its end first, so that it hears of the movie's.
opening=RQueue 1
play opening add DelayAction 100
play opening add MovieAction "movies\opening.smk" -1 1
set opening finished begin
play opening start
