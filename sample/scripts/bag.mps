; The bag at the harbour, included by its script: what is in it can be given away. The gull takes fish, Tilli
; shells, and the captain of the boat coins; anything else springs back into the bag, and Tilli says who likes it.
; It opens where it lies, so that it hides nobody whom something can be given to.

procedure openBag
[
    PlaySound 212
    call shutLog
    call stowBag
    packOpen=1
    pack=RBackPack 2031 366 314 90
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

procedure stowBag
[
    drop pack
    packOpen=0
]

procedure shutBag
[
    PlaySound 212
    call stowBag
]

; Looks whether the middle of what was dropped lies over the gull, Tilli or the boat: `over` is the number of that taker,
; 0 for nobody.
procedure findTaker
[
    get pack droppedObjectX middle
    get pack droppedObjectW wide
    middle=middle+wide\2
    get pack droppedObjectY level
    get pack droppedObjectH tall
    level=level+tall\2
    over=0
    for i 1 3
    [
        get taker.i x left
        get taker.i width wide
        get taker.i y top
        get taker.i height tall
        if (middle>left)*(middle<(left+wide))*(level>top)*(level<(top+tall))
            over=i
    ]
]

; What Tilli says when a prize was dropped over nobody (0) or a taker: who gets it thanks, all others refuse.
reply.fishPrize.0=9
reply.fishPrize.1=5
reply.fishPrize.2=10
reply.fishPrize.3=11
reply.shellPrize.0=9
reply.shellPrize.1=12
reply.shellPrize.2=6
reply.shellPrize.3=13
reply.coinPrize.0=9
reply.coinPrize.1=14
reply.coinPrize.2=15
reply.coinPrize.3=7
thanks=[5 6 7

; Gifts are the lamp's, whoever they are offered to.
for i 0 3
[
    reply.featherGift.i=16
    reply.oilGift.i=16
    reply.flameGift.i=16
]

; What is given for a prize, for the lamp of the lighthouse; once, so that they only thank for more (17 to 19).
gift.fishPrize=featherGift
gift.shellPrize=flameGift
gift.coinPrize=oilGift

procedure given
[
    get pack droppedObjectIndex slot
    get world backpackItemPresent slot carried
    call findTaker
    said=reply.carried.over
    if (over=1)*(said=thanks.1)
        call cry
    if (over=3)*(said=thanks.3)
        call blowHorn
    if (said=thanks.1)+(said=thanks.2)+(said=thanks.3)
    [
        play pack removeObject slot
        PlaySound 242
        call carries gift.carried
        if RESULT
            said=16+over
        else
            play pack addObject gift.carried
    ]
    call remark said
]

taker.1=&gull
taker.2=&tilli
taker.3=&boat
pack=0
packOpen=0
bag=RAnimation 2032 31
set bag movable 0
play bag setAOCursor 1
set bag mouseDown openBag
set bag flyOn lightUp
set bag flyOff dim
