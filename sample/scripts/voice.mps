; The voices of Tilli, the parrot and the captain, included by scenes in which one of them speaks: `speak` has a sentence
; heard in syllables, which follow the text, in every language. Each vowel of the text, or group of them, is one, and the
; melody goes down at a full stop and up at other ends. While somebody speaks the music steps back. Only one of them speaks
; at a time; who is interrupted stops. A scene that is left calls `stopSpeaking` first, so that the music is as loud as before.
;
; A sentence is read while it is spoken, from one syllable to the next, so that a long one takes no longer to begin.
;
; A scene may have
;
;   mouth.WHO        a procedure that is called when the mouth of Tilli (0), the parrot (1) or the captain (2) moves: `opening`
;                    is the vowel, 0 when the mouth is shut between two, -1 when all has been said
;   sequel           what is to be done when all has been said, once; or by `whenSaid`, which does it at once in silence

tilliVoice=0
parrotVoice=1
captainVoice=2

; Sounds 8301 to 8355: 20 for each voice, three pitches for each vowel.
firstSyllable=8301

; Twenty letters for each vowel. Numbers are spoken, too.
vowelLetters="aA·¡‚¬„√‡¿‰ƒÂ≈Ê∆aaaa"+"eEÈ…Í Ë»ÎÀ0123456789"+"iIÌÕÓŒÏÃÔœyY˝›iiiiii"+"oOÛ”Ù‘ı’Ú“ˆ÷¯ÿoooooo"+"uU˙⁄˚€˘Ÿ¸‹uuuuuuuuuu"
stops=",.:!?"

; The pitches of syllables that follow each other, over and over; milliseconds from one to the next, and how long of these
; the mouth is open.
melody.0="2313"
melody.1="1323"
melody.2="2122"
pace.0=140
pace.1=135
pace.2=190
gapeTime=85

; ---- the music

procedure stepBack
[
    get stage backgroundMusicVolume loudness
    if loudness=100
    [
        set stage backgroundMusicVolume 60
        steppedBack=1
    ]
]

; Music that fades meanwhile goes on fading.
procedure stepForward
[
    get stage backgroundMusicVolume loudness
    if steppedBack*(loudness=60)
        set stage backgroundMusicVolume 100
    steppedBack=0
]

; ---- the text: `utteredTo` is the place of its next letter

; The next vowel: 0 at the end of the text. `endSign` is the last sign before it that ends a sentence or a part of one.
procedure findVowel
[
    vowel=0
    endSign=""
    for (vowel=0)*(utteredTo<textEnd)
    [
        glyph=utterance|utteredTo|1
        vowel=(glyph@vowelLetters+19)\20
        if glyph@stops
            endSign=glyph
        utteredTo=utteredTo+1
    ]
]

; Vowels that follow each other are one syllable.
procedure passVowels
[
    glyph="a"
    for (glyph@vowelLetters)*(utteredTo<textEnd)
    [
        glyph=utterance|utteredTo|1
        utteredTo=utteredTo+(glyph@vowelLetters>0)
    ]
]

; ---- the syllables

procedure waitFor span
[
    play voice clear
    play voice add DelayAction span
    play voice start
]

; The one that was found is heard, and the next one is looked for: what lies between tells pitch and pause.
procedure utter
[
    opening=vowel
    syllables=syllables+1
    pitch=melody.speaker|(syllables%4+1)|1
    span=pace.speaker
    call passVowels
    call findVowel
    if endSign=","
        span=span+160
    else if endSign="."
        pitch=1
    else if ~endSign
        pitch=3
    if (~endSign)*(endSign#",")
        span=span+300
    call stepBack
    PlaySound firstSyllable+(20*speaker)+(3*(opening-1))+pitch-1
    syllable=RESULT
    call mouth.speaker
    play gape halt
    play gape start
    call waitFor span
]

procedure shutMouth
[
    opening=0
    call mouth.speaker
]

procedure goOnSpeaking
    if vowel
        call utter
    else
    [
        call stopSpeaking
        call doSequel
    ]

procedure doSequel
[
    following=sequel
    sequel=sayNothing
    call following
]

procedure stopSpeaking
    if speaking
    [
        speaking=0
        KillSound syllable
        play voice halt
        play gape halt
        opening=-1
        call mouth.speaker
        call stepForward
    ]

; `speaker` changes when the one before has stopped. The text is cut as it was translated, which a text that is never seen knows.
procedure speakAfter span nextSpeaker nextWords
[
    call stopSpeaking
    speaker=nextSpeaker
    set reader text nextWords
    get reader text utterance
    textEnd=~utterance+1
    utteredTo=1
    syllables=0
    speaking=1
    call findVowel
    call waitFor span
]

procedure speak nextSpeaker nextWords
    call speakAfter 20 nextSpeaker nextWords

procedure whenSaid following
    if speaking
        sequel=following
    else
        call following

procedure sayNothing
[
]

stage=RScenePort 0
reader=RText 0 0 -1 -1 -1
set reader visible 0
voice=RQueue 1
set voice finished goOnSpeaking
gape=RQueue 1
play gape add DelayAction gapeTime
set gape finished shutMouth
for speaker 0 2
    mouth.speaker=sayNothing
sequel=sayNothing
speaking=0
syllable=-1
steppedBack=0
