; A game in two languages: what stands in quotes, from the next script on.
;$ text
;$ compiled
yield off
GetLanguage
say RESULT "Bom dia" lua
;= pt Bom dia lua
SetLanguage "../en"
SetLanguage "xx"
GetLanguage
say RESULT
;= xx
SetLanguage "en"
say "Bom dia"
;= Bom dia
relay "second.mps"
;% Warning: "../en" is no language: write its tag, such as "pt" or "en"
;> 200 quit
;: file content/game.ini
languages=pt,en
;: file content/scripts/second.mps
yield off
sign=RText 10 10 200 20
greeting="Bom dia"
set sign text greeting
get sign text shown
say shown
;= Good morning
say "Bom dia" 'Bom dia'|1|4 "lua" lua
;= Good morning Good moon lua
say "sol" "mar" "barco" "Olá, Ana"
;= sun? mar barco Hi, "Ana"
if greeting="Bom dia"
say "the same"
;= the same
;: file content/languages/en.po
# by hand
msgid ""
msgstr "Language: en\n"

msgid "Bom dia"
msgstr "Good evening"

msgctxt "scripts/second.mps"
msgid "Bom dia"
msgstr "Good morning"

msgid "lua"
msgstr "moon"

msgid "sol"
msgstr "sunš"

#, fuzzy
msgid "mar"
msgstr "sea"

msgid "barco"
msgstr ""

msgid "Olá, Ana"
msgstr "Hi, \"Ana\""
