; What the world's memory keeps of this game beside what it knows by itself. Set up once in a run, before the data file is
; read.
;
; Transitions warn while CStatueDataset is 0. Whether a player was greeted is about one run, so it is not stored.
; chartLevel is the chart that a player has come to at the chart table, chartSeed what it is drawn from when it is none
; of the first three. language is the one that they chose with a flag of the guest book; spoken is what was chosen there
; in this run. turn is the number of the last time that they signed: whose is the highest played last. What arch, lampStep,
; hasKey and voyage are is told in story.mps.
world=RWorldPort 0
play world addGlobalIntProperty CStatueDataset
set world CStatueDataset 1
play world addIntProperty greeted 0
play world addIntProperty chartLevel
play world addIntProperty chartSeed
play world addIntProperty turn
play world addStringProperty language
play world addStringProperty arch
play world addIntProperty lampStep
play world addIntProperty hasKey
play world addIntProperty voyage
play world addGlobalStringProperty spoken 0
