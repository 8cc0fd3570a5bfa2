; The voices of Tilli, the parrot and the captain, included by scenes in which one of them speaks: `speak` has a sentence
; heard in syllables, which follow the text, in every language. Each vowel of the text, or group of them, is one, and the
; melody goes down at a full stop and up at other ends. While somebody speaks the music steps back.
;
; A scene may have a procedure that is to run when all has been said: `set voice finished`, which calls `stepForward`.
; Only one of them speaks at a time; who is interrupted stops.

; 0 is Tilli, 1 the parrot, 2 the captain.
tilliVoice=0

; Sounds 8300 to 8355: 20 for each voice, three pitches for each vowel.
firstSyllable=8300
vowels=5
vowel.1="aAáÁâÂãÃàÀ"
vowel.2="eEéÉêÊ"
vowel.3="iIíÍyY"
vowel.4="oOóÓôÔõÕ"
vowel.5="uUúÚ"
digits="0123456789"

; The pitches of syllables that follow each other, over and over, and how long each of them rests between two.
melody.0="2313"
melody.1="1323"
melody.2="2122"
rest.0=1
rest.1=10
rest.2=30

; The number of the vowel that a letter is, 0 for other letters: RESULT. Numbers are spoken, too.
procedure listenTo letter
[
    hears=2*(letter@digits>0)
    for each 1 vowels
        if letter@vowel.each
            hears=each
    RESULT=hears
]

; What is written is a list of syllables: what is sounded, its pitch, and the silence behind it.
procedure sound which
[
    syllables=syllables+1
    said.syllables=which
    pitch.syllables=melody.who|(syllables%4+1)|1
    silence.syllables=rest.who
]

; The end of a sentence or of a part of it: the syllable before it has its melody.
procedure breathe mark
[
    if syllables
    [
        silence.syllables=320
        if mark=","
            silence.syllables=160
        else if mark="."
            pitch.syllables=1
        else
            pitch.syllables=3
    ]
]

procedure spell words
[
    syllables=0
    within=0
    for spot 1 ~words
    [
        letter=words|spot|1
        call listenTo letter
        if RESULT*(within=0)
            call sound RESULT
        within=RESULT
        if letter@",.:!?"
            call breathe letter
    ]
]

; ---- the music

procedure stepBack
[
    get stage backgroundMusicVolume loud
    if loud=100
        set stage backgroundMusicVolume 60
]

procedure stepForward
[
    get stage backgroundMusicVolume loud
    if loud=60
        set stage backgroundMusicVolume 100
]

procedure stopSpeaking
[
    play voice clear
    call stepForward
]

procedure speak who words
[
    call stopSpeaking
    call spell words
    for spot 1 syllables
    [
        play voice add SoundAction firstSyllable+(20*who)+(3*(said.spot-1))+pitch.spot
        play voice add DelayAction silence.spot
    ]
    if syllables
    [
        call stepBack
        play voice start
    ]
]

stage=RScenePort 0
voice=RQueue 1
set voice finished stepForward
