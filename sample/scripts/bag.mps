; The bag at the harbour, included by its script: what is in it can be given away. The gull takes fish, Tilli
; shells, and the captain of the boat coins; anything else springs back into the bag.

procedure lightBag
[
    set bag sequence 2
    PlaySound 207
]

procedure dimBag
[
    set bag sequence 1
]

procedure openBag
[
    PlaySound 212
    call shutLog
    drop pack
    pack=RBackPack 2031 440 180 90
    set pack movable 0
    set pack objectDropped given
    set pack closed shutBag
    isEmpty=1
    for slot 0 11
    [
        get world backpackItemPresent slot carried
        if carried
            isEmpty=0
    ]
    if isEmpty
        call remark 8
]

procedure shutBag
[
    PlaySound 212
    drop pack
]

; Whether the middle of what was dropped lies over `taker`: RESULT.
procedure reaches
[
    get pack droppedObjectX middle
    get pack droppedObjectW wide
    middle=middle+wide\2
    get pack droppedObjectY level
    get pack droppedObjectH tall
    level=level+tall\2
    get taker x left
    get taker width wide
    get taker y top
    get taker height tall
    RESULT=(middle>left)*(middle<(left+wide))*(level>top)*(level<(top+tall))
]

procedure hand said
[
    play pack removeObject slot
    PlaySound 242
    call remark said
]

procedure given
[
    get pack droppedObjectIndex slot
    get world backpackItemPresent slot carried
    if carried=fishPrize
    [
        taker=&gull
        call reaches
        if RESULT
        [
            call cry
            call hand 5
        ]
    ]
    else if carried=shellPrize
    [
        taker=&tilli
        call reaches
        if RESULT
            call hand 6
    ]
    else if carried=coinPrize
    [
        taker=&boat
        call reaches
        if RESULT
        [
            call blowHorn
            call hand 7
        ]
    ]
]

pack=0
bag=RAnimation 2032 31
set bag movable 0
play bag setAOCursor 1
set bag mouseDown openBag
set bag flyOn lightBag
set bag flyOff dimBag
