; What the scenes of the progress screen share: the screen is screen, a port of the world is world.
; Every event is said.
procedure onSelected
[
get screen selectedLocation number
get screen selectedLocationName place
say "selected" number place
]
procedure onClosed
say "closed"
procedure listen
[
set screen locationSelected onSelected
set screen closed onClosed
]
procedure open place
[
screen=RLapTrap place
call listen
]
; answers that are all correct, or all wrong
procedure answer place count guess
for i 1 count
play world guess place
procedure visit place count
set world visitedCount place count

procedure tellLevels place
[
get world currentLevel place level
get world isAutoLevelingEnabled place changes
colors=""
for i 1 4
[
get world levelColor i place color
colors=colors+" "+color
]
say "  "+place+": level" level "colours"+colors+", by itself" changes
]
procedure tellFlag flag
[
get world flag value
say "  "+flag value
]
procedure tellFlags
[
call tellFlag "seenChooseActivity"
call tellFlag "seenLapTrapInPractice"
call tellFlag "seenLapTrapInGame"
call tellFlag "seenProgressLevels"
call tellFlag "seenCairoMap"
call tellFlag "seenOasisMap"
]
procedure tellMusic
[
get world isBackgroundMusicOff off
get port isBackgroundMusicEnabled enabled
say "  music off" off "enabled" enabled
]
