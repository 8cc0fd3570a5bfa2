; What scenes tell the world's memory: where the player is, and what they have won. Prizes are items of the
; backpack, which is the bag at the harbour.

fishPrize=2
shellPrize=3
coinPrize=4

; What is given for them, for the lamp of the lighthouse.
featherGift=5
oilGift=6
flameGift=7

world=RWorldPort 0

procedure arriveAt here
[
    set world currentLocation here
    get world visitedCount here visits
    set world visitedCount here visits+1
]

; One of each kind at a time. RESULT is 1 when there was none yet.
procedure award prize
[
    isNew=1
    for slot 0 11
    [
        get world backpackItemPresent slot carried
        if carried=prize
            isNew=0
    ]
    if isNew
        play world backpackAddObject prize
    RESULT=isNew
]

; What was shared out to a game of one of the two hubs, signs for the chest or gems for the tower, goes to the hub when it
; is solved: so many as the level is. RESULT is how many there were.
procedure gather game hub
[
    get world currentLevel game many
    found=0
    for n 1 many
    [
        get world wsNextItemInQueue game item
        if item
        [
            play world addObject item hub
            play world removeNextObjectFromQueue game
            found=found+1
        ]
    ]
    RESULT=found
]
