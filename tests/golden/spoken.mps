; Spoken texts: names of the mark's places by the table, by userData, by texts on them and by their kinds, what is
; dragged, texts that appear, in reading order, and the last of what changes quickly.
;: rsc golden
;$ --keys --speak --language en
;> 1000 key Enter
;> 2000 key Tab Tab Tab Enter
;> 2500 key Up Esc
;> 2800 key Enter
;> 3000 key Up Enter
;> 4000 speech off
;> 4100 key Tab
;> 4200 speech on
;> 4300 background
;> 4310 foreground
;> 4600 nothing
;# 0 title Zorbet Voyages
;# 1 spoken Texts are spoken.
;# 101 spoken the button
;# 301 spoken labelled
;# 301 spoken first
;# 301 spoken second
;# 1001 title 3
;# 1381 spoken two
;# 2000 spoken button
;# 2100 spoken labelled
;# 2200 spoken o peixe, can be moved
;# 2300 spoken in the hand: o peixe
;# 2500 spoken over place
;# 2501 title 2
;# 2600 spoken put back: o peixe
;# 2800 spoken in the hand: o peixe
;# 3000 spoken over place
;# 3100 spoken let go: o peixe
;# 4000 spoken Texts are not spoken any more.
;# 4200 spoken Texts are spoken.
;# 4200 spoken the button
;# 4500 spoken labelled
;# 4500 spoken first
;# 4500 spoken second
;# 4500 spoken two
;# 4602 end until
;% Warning: spoken.txt:2: "broken" has no "="; write THING=NAME, or [SCRIPT]
include golden.mps
procedure hear
[
set lower text "one"
set lower text "two"
]
b.1=RPButton 250 20 40 5
b.2=RPButton 250 200 45 5
b.3=RPButton 250 420 45 5
set b.1 hit hear
set b.2 hit hear
set b.3 hit hear
right=RText 300 120 -1 -1 5
set right text "second"
left=RText 20 120 -1 -1 5
set left text "first"
on=RText 450 55 30 10 6
set on text "labelled"
lower=RText 20 400 -1 -1 5
set lower text ""
c=RAttributeContainer -1 60 250 40 40 4
a=RGraphicAnswer 260 70 310 8
p=RPuzzle 0
play p addContainer "c"
play p addAnswer "a"
;: file content/spoken.txt
b.1=what only other scripts have
broken
[startup]
b.1=o botão
ASEQ 260=o peixe
;: file content/languages/en.po
msgid "o botão"
msgstr "the button"
;: file content/game.ini
languages=pt,en
