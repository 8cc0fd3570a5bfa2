; The parrot and its bubble, included by scenes in which it stands. They call `perch` with the animation, how it is turned,
; and the bubble: left, middle and width. Then `tell` has it say something, `tellGladly` with leaps, and `tellTask`, a
; procedure of the scene, what there is to do, which a click on the parrot asks for.
;
; Its sequences are 1 silent, 2 and 3 the beak shut and open, 4 open in a leap, 5 glad.
include voice.mps

; Milliseconds until it begins, behind the sound of what it speaks of. Who goes on at once hears only the last sentence.
patience=350

; What follows a longer sound.
procedure letSound ms
    patienceNow=ms

procedure moveBeak
    if opening<0
    [
        set parrot sequence 1
        gladly=0
    ]
    else if opening
        set parrot sequence 3+gladly
    else
        set parrot sequence 2

procedure tell said
[
    set bubble text said
    get bubble textHeight tall
    set bubble y bubbleMiddle-tall\2
    call speakAfter patienceNow parrotVoice said
    patienceNow=patience
]

procedure tellGladly said
[
    call tell said
    gladly=1
    set parrot sequence 5
]

procedure squawk
[
    PlaySound 213
    call letSound 900
    call tellTask
]

procedure perch looks mirrored left bubbleMiddle broad
[
    bubble=RText left 0 broad -1 20
    set bubble movable 0
    set bubble touchy 0
    set bubble wrap 1
    set bubble colorIndex 4
    play bubble setFont 20
    parrot=RAnimation looks 20
    set parrot drawDirection mirrored
    set parrot movable 0
    play parrot setAOCursor 1
    set parrot mouseDown squawk
    mouth.parrotVoice=moveBeak
    patienceNow=patience
    gladly=0
]
