; What is written by its middle: `write` adds words in a size of the letters, the middle of the line, its top, and its depth. The
; last line written is writing.writings; `unwrite` takes away all those behind the first so many.
;
; What is there already gets other words by `rewrite`, after
;
;   lettering=&NAME  the text that is meant

procedure rewrite words middle
[
    set lettering text words
    get lettering textWidth wide
    set lettering x middle-wide\2
]

procedure write words size middle top depth
[
    writings=writings+1
    writing.writings=RText 0 top -1 -1 depth
    set writing.writings movable 0
    set writing.writings touchy 0
    set writing.writings colorIndex 4
    play writing.writings setFont size
    lettering=&writing.writings
    call rewrite words middle
]

procedure unwrite keeping
    for writings>keeping
    [
        drop writing.writings
        writings=writings-1
    ]

writings=0
