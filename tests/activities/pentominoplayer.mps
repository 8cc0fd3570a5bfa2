; A player carries pieces to the tools and drops them; handlers put the held one elsewhere, make another one of it or drop
; the board. The sounds are not there, so that boxes tell which one is played. The script goes on every 90 ms.
;: rsc golden
; four times round, with a step on the tool; mirrored, straight to the other tool and back
;> 10 down 439 391
;> 20 move 464 206
;> 25 move 466 209
;> 30 move 309 231
;> 100 move 464 206
;> 120 move 309 231
;> 190 move 464 206
;> 210 move 309 231
;> 280 move 464 206
;> 300 move 309 231
;> 370 move 464 101
;> 380 move 464 206
;> 390 move 464 101
;> 400 move 309 231
;> 410 up 309 231
; on both tools the flipper counts; what is left on it holds the next one up until that is off
;> 460 drag 439 371 447 114
;> 490 down 59 391
;> 500 move 464 101
;> 510 move 570 101
;> 520 move 464 101
;> 530 up 464 101
; put on the board while it is held, then carried on
;> 550 down 59 391
;> 560 move 370 300
;> 640 move 390 320
;> 650 up 390 320
; reset while it is held, after it was put where it began; a button that is released elsewhere drops it
;> 730 down 129 151
;> 820 move 470 300
;> 910 move 129 151
;> 920 background
;> 925 up 129 151
;> 930 foreground
;> 940 move 570 400
; handlers
;> 1000 drag 109 131 129 131
;> 1090 drag 59 391 109 131
;> 1180 drag 59 391 109 131
;> 1270 drag 59 391 109 131
yield off
ActivateDLL golden.rsc
procedure tell what
[
get board pieceCellX 7 a
get board pieceCellY 7 b
get board pieceView 7 c
get board pieceCellX 10 d
get board pieceView 10 e
MessageBox what+a+","+b+"/"+c+" and "+d+"/"+e
]
procedure again
[
MessageBox "made again"
call piece 7
]
procedure gone
[
MessageBox "gone"
drop board
]
procedure piece n
[
set board pieceGraphicID n 400+n
play board setPieceHomeBox n n*130-880 300 n*130-780 400
]
property=[cellsH cellsV cellWidth cellHeight rotaterGraphicID flipperGraphicID
property=[pieceFlippedSoundID pieceGoHomeSoundID piecePickedUpSoundID pieceRotatedSoundID pieceSnappedSoundID
value=[5 4 20 20 420 421 21 22 23 24 25
procedure begin
[
board=RPentominoGame 100 80 5
for k 1 11
set board property.k value.k
call piece 7
call piece 10
]
call begin
DisplayScreen
views="views "
for n 1 5
[
pause 0.1
get board pieceView 10 e
views=views+e
]
MessageBox views
set board piecePickedUpSoundID -1
set board rotaterGraphicID 99
set board rotaterGraphicID -1
get board rotaterGraphicID a
set board rotaterGraphicID 440
MessageBox "rotater "+a
pause 0.1
call tell "on both "
;! WAVE resource 23 not found.
;! WAVE resource 24 not found.
;! WAVE resource 24 not found.
;! WAVE resource 24 not found.
;! WAVE resource 24 not found.
;! WAVE resource 21 not found.
;! WAVE resource 22 not found.
;! views 12304
;! ASEQ resource 99 not found.
;! rotater 420
;! WAVE resource 21 not found.
;! WAVE resource 22 not found.
;! WAVE resource 21 not found.
;! WAVE resource 22 not found.
;! on both ,/4 and /0
pause 0.1
play board setPieceCellXY 7 0 0
pause 0.1
call tell "carried on "
pause 0.1
play board setPieceCellXY 7 0 0
pause 0.1
play board setPieceCellXY 10 1 2
play board reset
pause 0.1
call tell "where it began "
;! WAVE resource 25 not found.
;! carried on 1,1/4 and /0
;! WAVE resource 25 not found.
;! where it began 0,0/4 and /0
; made anew when it is picked up, and when the pattern is covered
set board piecePickedUp again
pause 0.1
call tell "at home "
set board piecePickedUp
play board setSolutionString 1 "--X"
play board setSolutionString 2 "--X"
play board setSolutionString 3 "XXX"
set board solved again
pause 0.1
call tell "at home "
; the board goes when the pattern is covered, and when a piece is picked up
set board solved gone
pause 0.1
call begin
set board piecePickedUp gone
pause 0.1
;! made again
;! at home ,/0 and /0
;! made again
;! WAVE resource 25 not found.
;! at home ,/0 and /0
;! gone
;! WAVE resource 23 not found.
;! gone
