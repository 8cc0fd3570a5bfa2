; What is written by its middle: `write` adds a line in a size of the letters, with its middle, top, and depth; it is
; writing.writings. `rewrite` gives the line with that number other words. `unwrite` takes away all behind the first so many.

procedure rewrite nth words middle
[
    set writing.nth text words
    get writing.nth textWidth wide
    set writing.nth x middle-wide\2
]

procedure write words size middle top depth
[
    writings=writings+1
    writing.writings=RText 0 top -1 -1 depth
    set writing.writings movable 0
    set writing.writings touchy 0
    set writing.writings colorIndex 4
    play writing.writings setFont size
    call rewrite writings words middle
]

procedure unwrite keeping
    for writings>keeping
    [
        drop writing.writings
        writings=writings-1
    ]

writings=0
