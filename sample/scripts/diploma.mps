; The diploma of who has lit the lamp of the lighthouse. Tilli reads it aloud, and the seal falls onto it. It is kept as a text,
; too, in the game's folder, if that may be written: for a printer, or for somebody at home.
;
; It is called by the scene in which it lies, and leads back there. There is nothing to wait for, so the wait cursor of a
; transition would only flicker.
yield off
GoToBlack
Scene 3354
world=RWorldPort 0
include voice.mps
include words.mps

; ---- what is written on it

get world playerName visitor
; texts take
title.1="DIPLOMA"
title.2=visitor
; texts take
title.3="acendeu o farol da baía."
; texts take
title.4="Os barcos já acham o caminho!"
titles=4
call write title.1 28 380 64 10
call write title.2 20 380 129 10
call write title.3 20 380 188 10
call write title.4 20 380 220 10

; A new name is a new file.
procedure keep
[
    OpenFile title.1+" "+visitor+".txt"
    for i 1 titles
        WriteToFile title.i 1
    CloseFile
]

; ---- back to where it lies

procedure leave
[
    call stopSpeaking
    PlaySound 208
    play port stopBackgroundMusic 1
    exit
]

procedure typed
[
    get RECEIVER key what
    if what="Esc"
        call leave
]

; ---- Tilli, and the seal with the first letter of the name, which fall together, with a thud

tilli=RAnimation 3357 12
set tilli touchy 0
seal=RAnimation 3355 560 -130 20
initial=RText 0 -96 -1 -1 21
set initial colorIndex 4
play initial setFont 20
set initial text visitor|1|1
get initial textWidth wide
set initial x 608-wide\2
stamp=OMMultiTrinket 20
play stamp addTrinket "seal"
play stamp addTrinket "initial" 1
set stamp touchy 0
back=RPButton 3358 30
set back hit leave
keys=RKbdInp 0
set keys keyPressed typed
port=RScenePort 0

joy=RCompositeAction 1
play joy add SoundAction 248
play joy add PlayAnimAction "tilli"
play joy add AnimAction 3356 264 190 25 1
sealing=RQueue 1
play sealing add DelayAction 1200
play sealing add MoveXYAction "seal" "stamp" 560 -5 0 440 -130 2 2 304
play sealing add SoundAction 245
play sealing add "joy"
set sealing finished keep

play port startBackgroundMusic 114 100 1
DisplayScreen
play sealing start
call speak tilliVoice title.1+", "+visitor+" "+title.3+" "+title.4
