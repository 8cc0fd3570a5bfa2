; The story of the game, included by its scenes: where the player is, what they have won, and how it goes on. The world's
; memory keeps all of it; what is seen and heard of it is the scenes'.
;
; Twelve signs, shared out to the four puzzles, open the chest with the key of the tower. Gems, shared out to four games for
; each of its doors, fill the arches around them. Fish, coin and shell are given away for feather, oil and flame, which light
; the lamp. That is a voyage; the next one begins with other signs and other doors.
;
; What is won is never lost, and each game gives something as long as something is missing: from everywhere the lamp can
; still be lit.

; Prizes are items of the backpack, which is the bag at the harbour.
fishPrize=2
shellPrize=3
coinPrize=4

; What is given for them, and where the lamp needs it: first, second, last.
featherGift=5
oilGift=6
flameGift=7
needed.1=featherGift
needed.2=oilGift
needed.3=flameGift
steps=3

signs=12
floors=4
gaps=12
untouched="oooooooooooo"

; Puzzles and games; the first letter of each is that of its hub.
activities="CWS1CWS2CWS3CWS4OWS1OWS2OWS3OWS4"

world=RWorldPort 0

procedure arriveAt here
[
    set world currentLocation here
    get world visitedCount here visits
    set world visitedCount here visits+1
]

; ---- the bag

; RESULT is 1 when there is one in it.
procedure carries item
[
    RESULT=0
    for slot 0 11
    [
        get world backpackItemPresent slot thing
        if thing=item
            RESULT=1
    ]
]

; One of each kind at a time. RESULT is 1 when there was none yet.
procedure award prize
[
    call carries prize
    RESULT=RESULT=0
    if RESULT
        play world backpackAddObject prize
]

; ---- signs and gems

; What was shared out to a game goes to its hub, whose letter it has, when it is solved: so many as the level is. RESULT is
; how many there were.
procedure gather source
[
    hub=source|1|1+"HUB"
    get world currentLevel source shares
    gathered=0
    for share 1 shares
    [
        get world wsNextItemInQueue source item
        if item
        [
            play world addObject item hub
            play world removeNextObjectFromQueue source
            gathered=gathered+1
        ]
    ]
    RESULT=gathered
]

; With all of them the chest opens: RESULT is 1 when it does.
procedure openChest
[
    get world itemsPresentCount "CHUB" gathered
    RESULT=gathered=signs
    if RESULT
        set world hasKey 1
]

; ---- the doors of the tower, which are counted from 0: the closed one is on `floor`, and the letters of `arch` tell which of its
; gaps are filled

procedure findDoor
[
    get world hubRoundsCompleted "OHUB" floor
    get world "arch" arch
    if ~arch=0
        arch=untouched
]

; The gem that belongs to a spot of the arch, which are counted from 1: RESULT.
procedure belongs spot
[
    get world patternItemCount kinds
    get world patternItem (spot-1)%kinds+1 RESULT
]

; A gem of the hub is one of the arch from now on.
procedure fillGap n gem
[
    before=n-1
    behind=n+1
    arch=arch|1|before+"x"+arch|behind
    set world "arch" arch
    play world removeObjectFromLocation gem "OHUB"
]

procedure countGaps
[
    RESULT=0
    for n 1 gaps
        RESULT=RESULT+(arch|n|1="o")
]

; Behind an arch that is full is the next door, whose gems are shared out now.
procedure passDoor
[
    set world hubRoundsCompleted "OHUB" floor+1
    set world "arch" untouched
    set world currentLocation "OHUB"
    play world distributeItems
]

; What is behind the round door: RESULT is the scene.
procedure findRoom
[
    call findDoor
    ; texts skip
    RESULT="tower.mps"
    if floor=floors
        ; texts skip
        RESULT="lamp.mps"
]

; ---- the lamp: `step` is what it needs next, and behind the last one when it burns

procedure findStep
[
    get world lampStep step
    if step=0
        step=1
]

; RESULT is 1 when it was the right gift.
procedure useGift gift
[
    RESULT=0
    if gift=needed.step
    [
        step=step+1
        set world lampStep step
        RESULT=1
    ]
]

; ---- where the story is: RESULT is 1 while there are signs to be won, 2 when the chest can be opened, 3 on the way up the
; tower, 4 at the lamp, 5 when it burns

procedure findChapter
[
    call findStep
    call findDoor
    get world hasKey opened
    get world itemsPresentCount "CHUB" gathered
    RESULT=1+(gathered=signs)
    if opened
        RESULT=3+(floor=floors)+(step>steps)
]

; ---- once more: other signs, gems and doors. voyage is the number of those that were finished; with each of them games begin at
; a higher level at least.

procedure sailAgain
[
    get world "voyage" voyage
    voyage=voyage+1
    play world newGame
    set world "voyage" voyage
    set world "arch" untouched
    set world lampStep 0
    set world hasKey 0
    for k 1 ~activities 4
    [
        get world currentLevel activities|k|4 level
        if (level<4)*(level<(voyage+1))
            set world currentLevel activities|k|4 level+1
    ]
]
