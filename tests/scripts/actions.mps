; What happens when in nested containers, with members that may be interrupted and others that may not:
; untouched, halted, paused, cleared and with a member dropped, at every stage. The boxes of the report
; tell when; a pause of the script lasts 900 ms.
yield off

procedure queueDone
MessageBox "  queue finished"
procedure bothDone
MessageBox "  both finished"
procedure drawnDone
MessageBox "  drawn finished"
procedure innerDone
MessageBox "  inner finished"

; The queue: 40 ms; both: 30 ms, and 60 ms that may not be interrupted; drawn: 20 ms; twice 10 ms, the
; second of which may not be interrupted; 25 ms. 165 ms in all.
procedure build
[
both=RCompositeAction 1
play both add DelayAction 30
play both add DelayAction 60 0
set both finished bothDone
drawn=RRandomAction 0
play drawn add DelayAction 20
set drawn finished drawnDone
inner=RQueue 1
play inner add DelayAction 10
play inner add DelayAction 10 0
set inner finished innerDone
queue=RQueue 1
play queue add DelayAction 40
play queue add "both"
play queue add "drawn"
play queue add "inner"
play queue add DelayAction 25
set queue finished queueDone
]

procedure tell
[
get queue isActive q
get both isActive b
get drawn isActive d
get inner isActive i
get queue actionCount n
MessageBox "  "+n+" members; queue "+q+" both "+b+" drawn "+d+" inner "+i
]

; What is done to the queue when the timer is over.
procedure goOn
[
play queue resume
]
procedure change
[
MessageBox "  "+what
if what="halt"
play queue halt
else if what="clear"
play queue clear
else if what="pause"
[
play queue pause
timer=RQueue 1
play timer add DelayAction 100
set timer finished goOn
play timer start
]
else if what="drop"
[
drop both
both=RCompositeAction 1
]
call tell
]

procedure try after
[
MessageBox what+" after "+after
call build
timer=RQueue 1
play timer add DelayAction after
set timer finished change
play timer start
play queue start
pause 1
]

what="nothing"
call try 10
what="halt"
for stage 1 4
call try stage*45-25
what="pause"
for stage 1 4
call try stage*45-25
what="clear"
for stage 1 4
call try stage*45-25
what="drop"
for stage 1 4
call try stage*45-25

; A queue that goes in its own handler, one that goes in that of its member, and one that is started
; again by its own.
procedure goes
[
MessageBox "  gone"
drop queue
]
procedure again
[
rounds=rounds+1
MessageBox "  round "+rounds
if rounds<3
play RECEIVER start
]
MessageBox "goes at its end"
call build
set queue finished goes
play queue start
pause 1
MessageBox "goes with its member"
call build
set inner finished goes
play queue start
pause 1
rounds=0
queue=RQueue 1
play queue add DelayAction 10
set queue finished again
play queue start
pause 1
quit
;@ 1 nothing after 10
;@ 11   nothing
;@ 11   5 members; queue 1 both 0 drawn 0 inner 0
;@ 101   both finished
;@ 121   drawn finished
;@ 141   inner finished
;@ 166   queue finished
;@ 901 halt after 20
;@ 921   halt
;@ 921   5 members; queue 1 both 1 drawn 0 inner 0
;@ 981   both finished
;@ 1001   drawn finished
;@ 1021   inner finished
;@ 1046   queue finished
;@ 1801 halt after 65
;@ 1866   halt
;@ 1866   5 members; queue 1 both 1 drawn 0 inner 0
;@ 1901   both finished
;@ 1921   drawn finished
;@ 1941   inner finished
;@ 1966   queue finished
;@ 2701 halt after 110
;@ 2801   both finished
;@ 2811   halt
;@ 2811   5 members; queue 1 both 0 drawn 0 inner 1
;@ 2831   inner finished
;@ 2856   queue finished
;@ 3601 halt after 155
;@ 3701   both finished
;@ 3721   drawn finished
;@ 3741   inner finished
;@ 3756   halt
;@ 3756   5 members; queue 0 both 0 drawn 0 inner 0
;@ 4501 pause after 20
;@ 4521   pause
;@ 4521   5 members; queue 1 both 0 drawn 0 inner 0
;@ 4701   both finished
;@ 4721   drawn finished
;@ 4741   inner finished
;@ 4766   queue finished
;@ 5401 pause after 65
;@ 5466   pause
;@ 5466   5 members; queue 1 both 1 drawn 0 inner 0
;@ 5601   both finished
;@ 5621   drawn finished
;@ 5641   inner finished
;@ 5666   queue finished
;@ 6301 pause after 110
;@ 6401   both finished
;@ 6411   pause
;@ 6411   5 members; queue 1 both 0 drawn 1 inner 0
;@ 6521   drawn finished
;@ 6541   inner finished
;@ 6566   queue finished
;@ 7201 pause after 155
;@ 7301   both finished
;@ 7321   drawn finished
;@ 7341   inner finished
;@ 7356   pause
;@ 7356   5 members; queue 1 both 0 drawn 0 inner 0
;@ 7466   queue finished
;@ 8101 clear after 20
;@ 8121   clear
;@ 8121   5 members; queue 1 both 1 drawn 0 inner 0
;@ 8181   both finished
;@ 8201   drawn finished
;@ 8221   inner finished
;@ 8246   queue finished
;@ 9001 clear after 65
;@ 9066   clear
;@ 9066   5 members; queue 1 both 1 drawn 0 inner 0
;@ 9101   both finished
;@ 9121   drawn finished
;@ 9141   inner finished
;@ 9166   queue finished
;@ 9901 clear after 110
;@ 10001   both finished
;@ 10011   clear
;@ 10011   5 members; queue 1 both 0 drawn 0 inner 1
;@ 10031   inner finished
;@ 10056   queue finished
;@ 10801 clear after 155
;@ 10901   both finished
;@ 10921   drawn finished
;@ 10941   inner finished
;@ 10956   clear
;@ 10956   0 members; queue 0 both 0 drawn 0 inner 0
;@ 11701 drop after 20
;@ 11721   drop
;@ 11721   4 members; queue 1 both 0 drawn 0 inner 0
;@ 11761   drawn finished
;@ 11781   inner finished
;@ 11806   queue finished
;@ 12601 drop after 65
;@ 12666   drop
;@ 12666   4 members; queue 1 both 0 drawn 0 inner 0
;@ 12727   drawn finished
;@ 12747   inner finished
;@ 12772   queue finished
;@ 13501 drop after 110
;@ 13601   both finished
;@ 13611   drop
;@ 13611   4 members; queue 1 both 0 drawn 1 inner 0
;@ 13621   drawn finished
;@ 13641   inner finished
;@ 13666   queue finished
;@ 14401 drop after 155
;@ 14501   both finished
;@ 14521   drawn finished
;@ 14541   inner finished
;@ 14556   drop
;@ 14556   4 members; queue 1 both 0 drawn 0 inner 0
;@ 14566   queue finished
;@ 15301 goes at its end
;@ 15401   both finished
;@ 15421   drawn finished
;@ 15441   inner finished
;@ 15466   gone
;@ 16201 goes with its member
;@ 16301   both finished
;@ 16321   drawn finished
;@ 16341   gone
;@ 17111   round 1
;@ 17121   round 2
;@ 17131   round 3
