; The pentomino board: all pieces in all views, the nearest cells, what is covered, new sizes, what is refused; and a
; player who carries a piece to the tools.
yield off
procedure told
MessageBox "never heard"
procedure born
new=RECEIVER
procedure tell what
[
say what text
text=""
]
; of a piece: its cell and view; of the one that is looked at: its frame and place
procedure at piece
[
get board pieceCellX piece p
get board pieceCellY piece q
get board pieceView piece r
text=text+" "+piece+":"+p+","+q+"/"+r
]
procedure look
[
get new frame p
get new x q
get new y r
text=text+" "+p+":"+q+","+r
]
procedure put piece column row
[
play board setPieceCellXY piece column row
call at piece
]
procedure make n graphic
[
set board pieceGraphicID n graphic
play board setPieceHomeBox n 300 200 420 400
]
procedure begin rows
[
board=RPentominoGame 40 20 3
set board cellsH 10
set board cellsV rows
set board cellWidth 24
set board cellHeight 24
]
text=""
board=RPentominoGame 40 20 3
get board cellsH a
get board cellsV b
get board cellWidth c
get board piecesVisible d
say a b c d
call begin 6
set OMAnimation born born
for n 1 12
call make n 2720+n
;= 20 20 0 1

; At home it stands in the middle, on the lower edge; halves are rounded toward zero.
call make 9 2729
for n 0 7
[
set board pieceView 9 n
call look
]
call tell "9"
set board pieceView 9 8
set board pieceView 9 -1
call at 9
call make 12 2732
play board setPieceHomeBox 12 10 20 43 90
call look
set board pieceView 12 1
call look
get new z a
set board z 8
get new z b
call tell "depth "+a+b
;= 9  1:312,352 5:336,304 4:312,352 8:336,304 2:312,352 6:336,304 3:312,352 7:336,304
;= depth 49  9:,/7 1:-33,66 5:14,-30

; All pieces fill 10 x 6 cells without a gap, turned in all four ways and mirrored: each is seen in each view.
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
play board reset
if turn=8
set board solved told
set board cellsH columns
set board cellsV rows
for n 1 rows
play board setSolutionString n full||columns
for n 1 12
[
set board pieceView which.n view.n
play board setPieceCellXY which.n left.n top.n
get board pieceCellX which.n a
if a=left.n
laid=laid+1
a=rows-top.n-high.n
top.n=left.n
left.n=a
a=wide.n
wide.n=high.n
high.n=a
if view.n<4
view.n=(view.n+1)%4
else
view.n=(view.n+3)%4+4
]
a=columns
columns=rows
rows=a
if turn=4
for n 1 12
[
left.n=columns-left.n-wide.n
view.n=(view.n+4)%8
]
]

;! Invoking method "setPieceCellXY"\ncaused event "solved" (ignored)\n
; The cell under the left upper corner, and the pixel from which on it is that one.
procedure cells size
[
set board side size
last=""
for n -12 117
[
set new axis from+n
get board cell 12 c
if c#last
text=text+" "+c+"@"+n
last=c
]
call tell size
]
call tell laid
call begin 10
call make 12 2732
play board setPieceCellXY 12 0 0
axis="x"
from=40
side="cellWidth"
cell="pieceCellX"
call cells 20
call cells 21
call cells 1
set board cellWidth 24
play board setPieceCellXY 12 0 0
set board pieceView 12 1
axis="y"
from=20
side="cellHeight"
cell="pieceCellY"
call cells 21
;= 96 
;= 20  0@-10 1@10 2@30 3@50 4@70 5@90 @110
;= 21  0@-11 1@11 2@32 3@53 4@74 5@95 @116
;= 1  0@-1 1@1 2@2 3@3 4@4 5@5 @6
;= 21  0@-11 1@11 2@32 3@53 4@74 5@95 @116

; What is covered, also by a piece that lies where it did; what is turned on the board.
call begin 6
call make 2 2722
call make 4 2724
call make 12 2732
call put 2 0 0
call put 4 1 1
call put 4 2 2
call put 4 2 1
call put 2 1 0
call put 12 0 1
call put 12 0 3
call tell "a cross, one in its corner, one on it, a step aside, over it, below it:"
play board reset
call put 12 0 0
set board pieceView 12 1
call at 12
call put 4 1 0
set board pieceView 12 2
call at 12
set board pieceView 12 3
call put 12 9 1
set board pieceView 12 0
call at 12
play board setPieceHomeBox 4 300 200 420 400
call put 2 0 0
call tell "turned where it lies, but not onto another one or beyond the board:"
call put 4 7 1
set board pieceCellX 4 6
set board pieceCellY 4 2
call at 4
set board pieceCellX 4 1
set board pieceCellY 4 0
call at 4
set board pieceCellY 4 3
call at 4
call tell "by column and row:"
;= a cross, one in its corner, one on it, a step aside, over it, below it:  2:0,0/0 4:,/0 4:2,2/0 4:,/0 2:1,0/0 12:,/0 12:0,3/0
;= turned where it lies, but not onto another one or beyond the board:  12:0,0/0 12:0,0/1 4:1,0/0 12:,/2 12:9,1/3 12:,/0 2:0,0/0
;= by column and row:  4:7,1/0 4:6,2/0 4:,/0 4:,/0
; a new piece takes the slot; one that is none changes nothing
call put 2 0 0
set board pieceGraphicID 2 99
call at 2
set board pieceGraphicID 2 2725
get board pieceGraphicID 2 a
get new x b
get new y c
call put 4 0 0
set board piecesVisible 0
get new visible d
set board pieceGraphicID 3 2723
get new visible e
set board piecesVisible 5
get new visible f
get board piecesVisible g
text=text+" new "+a+" at "+b+","+c+" visible "+d+e+f+g
set board pieceGraphicID 4 2724
play board setPieceCellXY 4 0 0
play board offset 30 7
get new x a
get new y b
call at 4
call tell "moved to "+a+","+b
;= moved to 70,27  2:0,0/0 2:0,0/0 4:0,0/0 new 2725 at 0,0 visible 0011 4:0,0/0
; what is anchored stays, what is not goes home, also where its place is on the board no longer
play board reset
call make 2 2722
call put 2 0 0
call put 4 4 0
call put 12 0 4
set board pieceIsAnchored 2 7
get board pieceIsAnchored 2 a
get board pieceIsAnchored 4 b
get board pieceIsAnchored 5 c
set board cellHeight 1
play board reset
set board cellHeight 24
call at 2
call at 4
call at 12
call put 4 0 0
call put 4 4 0
call put 12 0 4
set board pieceIsAnchored 2 0
play board reset
call at 2
call tell "anchored "+a+b+c
;= anchored 10  2:0,0/0 4:4,0/0 12:0,4/0 2:0,0/0 4:,/0 12:,/0 4:,/0 4:4,0/0 12:0,4/0 2:,/0
; new sizes empty the board, the same ones do not
call put 2 3 1
play board setSolutionString 1 "X"
set board cellsH 10
call put 4 5 3
call put 4 3 2
for k 1 2
[
if k=1
set board cellsH 9
else
set board cellsV 9
call at 2
call put 4 3 2
call put 2 0 3
call put 2 3 1
play board reset
call put 2 3 1
]
set board cellsH 2000000
set board cellsV 2000000
set board cellWidth 2000000
set board cellHeight -5
get board cellsH c
get board cellsV d
get board cellWidth e
get board cellHeight f
call at 2
call tell "sizes "+c+" "+d+" "+e+" "+f
;= sizes 1000 1000 1000 0  2:3,1/0 4:5,3/0 4:,/0 2:3,1/0 4:3,2/0 2:0,3/0 2:,/0 2:3,1/0 2:3,1/0 4:3,2/0 2:0,3/0 2:,/0 2:3,1/0 2:,/0
;= -1 [][][][][] 3:,/0
;= still  2:7,3/0 2:7,3/0

; What is refused.
call begin 6
call make 2 2722
play board setPieceCellXY 0 1 1
play board setPieceHomeBox 13 1 2 3 4
property=[pieceCellX pieceCellY pieceGraphicID pieceIsAnchored pieceView
for k 1 5
[
set board property.k 0 1
get board property.k 13 a
text=text+"["+a+"]"
]
play board setPieceCellXY 3 1 1
call at 3
get board pieceGraphicID 3 a
call tell a
for k -1 8 9
play board setPieceCellXY 2 k 0
for k -1 4 5
play board setPieceCellXY 2 0 k
play board setPieceCellXY 2 2147483647 0
call put 2 7 3
set board pieceCellX 2 8
for k 0 7 7
play board setSolutionString k "X"
play board setSolutionString 6 full
play board setSolutionString 6 full+"X"
set board cellsH 0
set board cellsV -4
call at 2
call tell "still"
;! ASEQ resource 99 not found.
;! RPentominoGame: invalid piece number
;! RPentominoGame: invalid piece number
;! RPentominoGame: invalid piece number
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
;! RPentominoGame: invalid (X,Y) for piece 2
;! RPentominoGame: invalid row number
;! RPentominoGame: invalid row number
;! RPentominoGame: solution string too long
;! RPentominoGame: cellsH must be greater than 0
;! RPentominoGame: cellsV must be greater than 0

; It is solved whenever a piece is put down so that exactly the pattern is covered.
play board setSolutionString 6 "----------"
call make 4 2724
set board solved told
play board setSolutionString 1 "XX"
play board setSolutionString 2 full
play board setSolutionString 2 "XXX-------"
play board setPieceCellXY 4 1 0
play board setPieceCellXY 2 5 2
MessageBox "one too many"
play board setPieceCellXY 4 0 0
play board reset
MessageBox "solved twice"
play board setPieceCellXY 4 0 0
set board pieceView 4 8
MessageBox "no piece covers with x"
play board setSolutionString 1 "Xx"
set board pieceView 4 0
;! one too many
;! solved twice
;! Invoking method "setPieceCellXY"\ncaused event "solved" (ignored)\n
;! Setting property "pieceView"\ncaused event "solved" (ignored)\n
;! no piece covers with x
quit
