; Nothing that a script knows outlives it but what it wrote into a file. So the name of who is playing,
; and how the harbour is to greet, become a small script in the game's folder: player.mps, which other
; scenes include. The one in the folder of scripts serves until then, and where no file can be written.
;
; A name must have no quotes in it.
procedure remember who how
[
OpenFile "player.mps"
WriteToFile "; Written by the game: who is playing, and how the harbour greets." 1
WriteToFile 'visitor="'+who+'"' 1
WriteToFile 'greeting="'+how+'"' 1
CloseFile
]
