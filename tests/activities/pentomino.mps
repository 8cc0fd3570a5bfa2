; The pentomino board, p: all pieces in all views, the nearest cells, what is covered, new sizes,
; what is refused. Of pieces are told cell and view, of the last one that was made, a.1, frame and
; place.
yield off
include steps.mps
procedure told
MessageBox "never heard"
procedure born
a.1=RECEIVER
procedure at
[
call cut
get p pieceCellX word left
get p pieceCellY word top
get p pieceView word number
line=line+" "+word+":"+left+","+top+"/"+number
]
procedure make
for ~words
[
call cut
set p pieceGraphicID word 2720+word
play p setPieceHomeBox word 300 200 420 400
]
procedure begin
[
p=RPentominoGame 40 20 3
call do "give p cellsH 10 cellsV 6 cellWidth 24 cellHeight 24"
]
procedure lay
[
others=words
call cut
index=word
call cut
far=word
call cut
play p setPieceCellXY index far word
words=others
call at
]
; sets the property of a piece
procedure piece
[
call cut
setting=word
call cut
index=word
call cut
set p setting index word
]
procedure read
[
call cut
setting=word
call cut
get p setting word got
line=line+" "+got
]
p=RPentominoGame 40 20 3
set OMAnimation born born
call do "look p cellsH cellsV cellWidth piecesVisible, begin, make 1 2 3 4 5 6 7 8 9 10 11 12 9"
; At home it stands in the middle, on the lower edge; halves are rounded toward zero.
for n 0 7
[
set p pieceView 9 n
call do "look a.1 frame x y"
]
call do "piece pieceView 9 8, piece pieceView 9 -1, at 9, tell, make 12"
call do "ask p setPieceHomeBox 12 10 20 43 90, look a.1 frame x y, piece pieceView 12 1"
call do "look a.1 frame x y z, give p z 8, look a.1 z"
; All pieces fill 10 x 6 cells without a gap, turned in all four ways and mirrored: each is seen in
; each view.
which=[1 4 9 2 3 11 6 5 12 10 7 8
view=[2 0 6 0 1 1 0 0 0 4 3 0
left=[0 0 0 1 2 3 4 5 5 6 7 7
top=[0 3 4 0 1 0 3 1 5 3 0 1
wide=[2 3 4 3 3 4 3 3 5 4 3 3
high=[3 2 2 3 3 2 3 3 1 2 3 3
full="XXXXXXXXXX"
columns=10
rows=6
laid=0
for turn 1 8
[
play p reset
if turn=8
set p solved told
call do "give p cellsH "+columns+" cellsV "+rows
for n 1 rows
play p setSolutionString n full||columns
for n 1 12
[
set p pieceView which.n view.n
play p setPieceCellXY which.n left.n top.n
get p pieceCellX which.n got
laid=laid+(got=left.n)
got=rows-top.n-high.n
top.n=left.n
left.n=got
got=wide.n
wide.n=high.n
high.n=got
view.n=(view.n+1+((view.n>3)*2))%4+((view.n>3)*4)
if turn=4
[
left.n=rows-left.n-wide.n
view.n=(view.n+4)%8
]
]
got=columns
columns=rows
rows=got
]
line=line+" "+laid
; The cell under the left upper corner, and the pixel from which on it is that one.
procedure cells
[
last=""
for n -12 117
[
set a.1 axis from+n
get p cell 12 got
if got#last
line=line+" "+got+"@"+n
last=got
]
]
axis="x"
from=40
cell="pieceCellX"
call do "tell, begin, give p cellsV 10 cellWidth 20, make 12, lay 12 0 0, cells, tell"
call do "give p cellWidth 24, lay 12 0 0, piece pieceView 12 1"
axis="y"
from=20
cell="pieceCellY"
; a cross, one in its corner, one on it, a step aside, over it, below it; turned where it lies, but
; not onto another one or beyond the board; by column and row
call do "give p cellHeight 21, cells, tell, begin, make 2 4 12, lay 2 0 0, lay 4 1 1, lay 4 2 2"
call do "lay 4 2 1, lay 2 1 0, lay 12 0 1, lay 12 0 3, ask p reset, lay 12 0 0"
call do "piece pieceView 12 1, at 12, lay 4 1 0, tell, piece pieceView 12 2, at 12"
call do "piece pieceView 12 3, lay 12 9 1, piece pieceView 12 0, at 12"
call do "ask p setPieceHomeBox 4 300 200 420 400, lay 2 0 0, lay 4 7 1, piece pieceCellX 4 6"
call do "piece pieceCellY 4 2, at 4, piece pieceCellX 4 1, piece pieceCellY 4 0, at 4"
; a new piece takes the slot; one that is none changes nothing
call do "tell, lay 2 0 0, piece pieceGraphicID 2 99, at 2, piece pieceGraphicID 2 2725"
call do "read pieceGraphicID 2, look a.1 x y, lay 4 0 0, give p piecesVisible 0, look a.1 visible"
call do "piece pieceGraphicID 3 2723, look a.1 visible, give p piecesVisible 5, look a.1 visible"
call do "look p piecesVisible, piece pieceGraphicID 4 2724, lay 4 0 0, ask p offset 30 7"
call do "look a.1 x y, at 4, tell, ask p reset, make 2, lay 2 0 0, lay 4 4 0, lay 12 0 4"
; what is anchored stays, what is not goes home, also where its place is on the board no longer
call do "piece pieceIsAnchored 2 7, read pieceIsAnchored 2, read pieceIsAnchored 4"
call do "give p cellHeight 1, ask p reset, give p cellHeight 24, at 2, at 4, at 12, lay 4 0 0"
call do "lay 4 4 0, lay 12 0 4, piece pieceIsAnchored 2 0, ask p reset, at 2, tell"
; new sizes empty the board, the same ones do not
call do "lay 2 3 1, ask p setSolutionString 1 X, give p cellsH 10, lay 4 5 3, lay 4 3 2"
sizes=[cellsH cellsV
for k 1 2
call do "give p "+sizes.k+" 9, at 2, lay 4 3 2, lay 2 0 3, lay 2 3 1, ask p reset, lay 2 3 1"
call do "tell, give p cellsH 2000000 cellsV 2000000 cellWidth 2000000 cellHeight -5"
call do "look p cellsH cellsV cellWidth cellHeight, at 2, begin, make 2"
; What is refused.
call do "ask p setPieceCellXY 0 1 1, ask p setPieceHomeBox 13 1 2 3 4, piece pieceCellX 0 1"
call do "piece pieceGraphicID 13 1, read pieceView 13, read pieceGraphicID 3, lay 3 1 1, lay 2 -1 0"
call do "lay 2 8 0, lay 2 0 -1, lay 2 0 4, lay 2 7 3, piece pieceCellX 2 8, tell"
call do "ask p setSolutionString 0 X, ask p setSolutionString 7 X"
call do "ask p setSolutionString 6 XXXXXXXXXX, ask p setSolutionString 6 XXXXXXXXXXX"
call do "give p cellsH 0 cellsV -4, at 2, ask p setSolutionString 6 ----------, make 4"
; It is solved whenever a piece is put down so that exactly the pattern is covered.
set p solved told
call do "ask p setSolutionString 1 XX, ask p setSolutionString 2 XXXXXXXXXX"
call do "ask p setSolutionString 2 XXX-------, lay 4 1 0, lay 2 5 2"
MessageBox "one too many"
call do "lay 4 0 0, ask p reset"
MessageBox "solved twice"
call do "lay 4 0 0, piece pieceView 4 8"
MessageBox "no piece covers with x"
call do "ask p setSolutionString 1 Xx, piece pieceView 4 0, tell"
quit
;=  20,20,0,1 1,312,352 5,336,304 4,312,352 8,336,304 2,312,352 6,336,304 3,312,352 7,336,304 9:,/7
;=  1,-33,66 5,14,-30,4 9 96
;=  12:0,0/0 0@-10 1@10 2@30 3@50 4@70 5@90 @110
;=  12:0,0/0 0@-11 1@11 2@32 3@53 4@74 5@95 @116
;=  2:0,0/0 4:,/0 4:2,2/0 4:,/0 2:1,0/0 12:,/0 12:0,3/0 12:0,0/0 12:0,0/1 4:1,0/0
;=  12:,/2 12:9,1/3 12:,/0 2:0,0/0 4:7,1/0 4:6,2/0 4:,/0
;=  2:0,0/0 2:0,0/0 2725 0,0 4:0,0/0 0 0 1 1 4:0,0/0 70,27 4:0,0/0
;=  2:0,0/0 4:4,0/0 12:0,4/0 1 0 2:0,0/0 4:,/0 12:,/0 4:,/0 4:4,0/0 12:0,4/0 2:,/0
;=  2:3,1/0 4:5,3/0 4:,/0 2:3,1/0 4:3,2/0 2:0,3/0 2:,/0 2:3,1/0 2:3,1/0 4:3,2/0 2:0,3/0 2:,/0 2:3,1/0
;=  1000,1000,1000,0 2:,/0  -1 3:,/0 2:,/0 2:,/0 2:,/0 2:,/0 2:7,3/0
;=  2:7,3/0 4:1,0/0 2:5,2/0 4:0,0/0 4:0,0/0
;! Invoking method "setPieceCellXY"\ncaused event "solved" (ignored)\n
;! ASEQ resource 99 not found.
;! RPentominoGame: invalid piece number
;! RPentominoGame: invalid piece number
;! RPentominoGame: invalid piece number
;! RPentominoGame: invalid piece number
;! RPentominoGame: no piece for piece number 3
;! RPentominoGame: invalid (X,Y) for piece 2
;! RPentominoGame: invalid (X,Y) for piece 2
;! RPentominoGame: invalid (X,Y) for piece 2
;! RPentominoGame: invalid (X,Y) for piece 2
;! RPentominoGame: invalid (X,Y) for piece 2
;! RPentominoGame: invalid row number
;! RPentominoGame: invalid row number
;! RPentominoGame: solution string too long
;! RPentominoGame: cellsH must be greater than 0
;! RPentominoGame: cellsV must be greater than 0
;! one too many
;! solved twice
;! Invoking method "setPieceCellXY"\ncaused event "solved" (ignored)\n
;! Setting property "pieceView"\ncaused event "solved" (ignored)\n
;! no piece covers with x
