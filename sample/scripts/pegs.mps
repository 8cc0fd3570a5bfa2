; The board with the holes: a little buoy that jumps over another one takes it away. Few are to be left; how few,
; the level tells. Who manages it wins a shell.
yield off
StartTransition
Scene 110 105

activity="OWS1"
task.1="Salta por cima das boias até não poderes mais. Deixa só quatro!"
task.2="Consegues deixar só três boias no fim?"
task.3="E agora, só duas boias no fim!"
task.4="O mais difícil: no fim só pode ficar uma boia!"
task.5="Outro buraco vazio! No fim só pode ficar uma boia."

; The hole that is empty at first, for each level; for who has solved one of that level already it is drawn by lot.
empty=[1 13 4 5

; How a single buoy can be left, for each such hole: the holes of every jump, from where, over what, to where.
way.1="DBAFEDACFGDBJFCLHEMIFBEICFJOJFFIMNMLKLM"
way.2="GDBABDIHGCEHGDBJFCLHEBEINMLKLMMIFCFJOJF"
way.3="JFCACFHIJBEIGDBJFCNIECEHLMNONMMHDBDGKGD"
way.4="ABDFCADEFJFCACFMHDGDBONMLMNNIEFEDBDGKGD"
way.5="LHEJIHBEICFJGDBABDNMLDHMLMNOJFFIMNMLKLM"
way.6="ACFDBAFEDGDBABDLHEDEFJFCNMLKLMMIFCFJOJF"
way.7="BDGFEDACFGDBJFCLHEMIFBEICFJOJFFIMNMLKLM"
way.8="CEHJFCMIFCFJGHIBDGKGDONMLMNNIEDEFJFCACF"
way.9="BEIGDBLHECEHJFCACFNMLFIMLMNONMMHDBDGKGD"
way.10="CFJDEFABDGDBJFCLHEMIFBEICFJOJFFIMNMLKLM"
way.11="DGKABDIHGCEHGDBJFCLHEBEINMLKLMMIFCFJOJF"
way.12="NMLDHMABDCEHGDBJFCLHEMIFCFJOJFFEDBDGKGD"
way.13="DHMABDCEHGDBJFCLHEMIFBEICFJOJFFIMNMLKLM"
way.14="LMNDHMABDCEHGDBJFCMHDBDGKGDNIEDEFCFJOJF"
way.15="FJOACFHIJBEIGDBJFCNIECEHLMNONMMHDBDGKGD"
letters="ABCDEFGHIJKLMNO"

include game.mps

procedure letterAt spot
    RESULT=(way|spot|1)@letters

; The first jumps of the way are done, three more with each failure. Which holes are empty then is followed here,
; since a game can be filled and emptied only; arrows show the next jump.
procedure help
[
    for hole 1 15
        isFull.hole=hole#bare
    done=3*(tries-1)
    if done>9
        done=9
    for k 1 done
    [
        call letterAt k*3-2
        isFull.RESULT=0
        call letterAt k*3-1
        isFull.RESULT=0
        call letterAt k*3
        isFull.RESULT=1
    ]
    play game fill
    for hole 1 15
        if isFull.hole=0
            play game removePeg hole
    call letterAt done*3+1
    call pointAt holeX.RESULT+18 holeY.RESULT
    call letterAt done*3+3
    call pointAt holeX.RESULT+18 holeY.RESULT+20
    play hinting start
]

procedure layOut
[
    call lookAway
    play hinting halt
    drop game
    call showLevel
    game=RPegGame 10
    set game pegID 2711
    set game pegMovingZ 60
    set game pegsLeftForSolved 5-level
    set game solved cheer
    set game noMoreMoves consider
    hole=1
    for row 0 4
        for column 0 row
        [
            holeX.hole=220-(36*row)+72*column
            holeY.hole=104+68*row
            set game pegX hole holeX.hole
            set game pegY hole holeY.hole
            hole=hole+1
        ]
    bare=empty.level
    get world wsTotalCorrectGuessCount activity level won
    if won
    [
        RandomNumber 1 15 last
        bare=RESULT
        last=bare
    ]
    way=way.bare
    play game removePeg bare
    play game reset
    if tries>1
        call help
    call tellHelp
    begun=1
    busy=0
]

procedure cheer
[
    begun=0
    tries=0
    call award shellPrize
    if RESULT
        ; texts take
        call rejoice " Ganhaste uma concha. Está na mala, no porto."
    else
        call rejoiceOnly
]

procedure consider
[
    begun=0
    tries=tries+1
    call regret "Já não há saltos. Carrega em 'De novo'!"
]

; The arrows stay for a while: a game does not tell of its jumps.
hinting=RQueue 1
play hinting add DelayAction 9000
set hinting finished lookAway
last=0
call furnish
call layOut
EndTransition 0
