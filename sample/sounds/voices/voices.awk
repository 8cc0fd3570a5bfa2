# Writes the scores of the syllables that Tilli, the parrot and the captain speak in: for each of them the five vowels, each low,
# in the middle and high. scripts/voice.mps puts sentences together from them. And the sentences that Tilli has speech records of,
# which she speaks in the same syllables, and as fast.
#
#   awk -v folder=FOLDER -f voices.awk
#
# writes FOLDER/NAME-V-P.tune, V being the vowel (1 to 5: a, e, i, o, u) and P the pitch (1 to 3), and FOLDER/tilli-N.tune (3 to 6).
# With -v lips=1 it tells when Tilli's mouth opens in the sentences: milliseconds and vowel.
#
# A vowel is known by the two resonances of the mouth, its formants. Their frequencies are the averages of G. E. Peterson and
# H. L. Barney, "Control methods used in a study of the vowels", J. Acoust. Soc. Am. 24 (1952), for men; who is small has them higher.

BEGIN {
    split("730 530 270 570 300", first, " ")
    split("1090 1840 2290 840 870", second, " ")
    # name, size of the mouth, three notes, their seconds, loudness; and what only this one has
    TILLI_SIZE = 1.35
    TILLI_NOTES = "c5 e5 g5"
    TILLI_SECONDS = 0.07
    TILLI_PEAK = 40
    TILLI_MANNER = "vibrato 25 9 40|slide -250 35"
    voice("tilli", TILLI_SIZE, TILLI_NOTES, TILLI_SECONDS, TILLI_PEAK, TILLI_MANNER, "")
    voice("parrot", 1.15, "e4 g4 b4", 0.08, 38, "vibrato 50 26|slide 300 40", "rasp")
    voice("captain", 0.92, "a2 c3 e3", 0.12, 54, "vibrato 12 6 60|slide -120 60", "")
    sentence(3, "Ola! Eu sou a Tilli. Que bom ver-te!")
    sentence(4, "O farol apagou-se. Ajudas-me a acende-lo?")
    sentence(5, "No meu diario ves ate onde chegaste!")
    sentence(6, "Cuidado com as pincas: elas fazem cocegas!")
}

function voice(name, size, notes, seconds, peak, manner, rasp,    pitch, vowel, note) {
    split(notes, note, " ")
    for (pitch = 1; pitch <= 3; pitch++)
        for (vowel = 1; vowel <= 5; vowel++)
            syllable(folder "/" name "-" vowel "-" pitch ".tune", note[pitch], vowel, size, seconds, peak, manner, rasp)
}

function syllable(file, note, vowel, size, seconds, peak, manner, rasp) {
    print "tempo 60\npeak " peak "\nlowpass 5000" > file
    mouth(file, "mouth", note, vowel, size, manner)
    if (rasp) print "instrument rasp\n    noise 3\n    envelope 6 30\n    decay 60 15" > file
    print "voice mouth 100\n    " note ":" seconds > file
    if (rasp) print "voice rasp 30\n    " note ":" seconds > file
    close(file)
}

function mouth(file, name, note, vowel, size, manner,    harmonic, levels, line, lines, count) {
    for (harmonic = 1; harmonic <= 32; harmonic++)
        levels = levels " " level(harmonic * hertz(note), first[vowel] * size, second[vowel] * size, harmonic)
    print "instrument " name "\n    wave" levels "\n    envelope 14 55\n    decay 160 55" > file
    count = split(manner, lines, "|")
    for (line = 1; line <= count; line++) print "    " lines[line] > file
}

# A sentence without accents: its syllables as scripts/voice.mps has them, each with a mouth of its own.
function sentence(number, words,    file, note, spot, letter, vowel, vowels, stops, count, n, at, pitch, before) {
    file = folder "/tilli-" number ".tune"
    for (spot = 1; spot <= length(words); spot++) {
        letter = tolower(substr(words, spot, 1))
        vowel = index("aeiou", letter)
        if (vowel && !before) vowels[++count] = vowel
        if (count && index(",.:!?", letter)) stops[count] = letter
        before = vowel
    }
    split(TILLI_NOTES, note, " ")
    print "tempo 60\npeak " TILLI_PEAK "\nlowpass 5000" > file
    for (n = 1; n <= count; n++) {
        pitch = substr("2313", n % 4 + 1, 1)
        if (stops[n] == ".") pitch = 1
        else if (stops[n] != "" && stops[n] != ",") pitch = 3
        mouth(file, "mouth" n, note[pitch], vowels[n], TILLI_SIZE, TILLI_MANNER)
        print "voice mouth" n " 100 " at + 0 "\n    " note[pitch] ":" TILLI_SECONDS > file
        if (lips) print number, at * 1000, vowels[n]
        at += 0.14 + (stops[n] == "" ? 0 : stops[n] == "," ? 0.16 : 0.3)
    }
    close(file)
}

# What the mouth lets through of a harmonic, in percent. Higher ones are weaker by themselves.
function level(frequency, low, high, harmonic,    percent) {
    percent = int(100 * (peakAt(frequency, low, 160) + 0.55 * peakAt(frequency, high, 260) + 0.12) / harmonic ^ 0.6)
    return percent > 100 ? 100 : percent
}

function peakAt(frequency, formant, width) {
    return exp(-((frequency - formant) / width) ^ 2 / 2)
}

# Of a note without sign: a4 has 440.
function hertz(note) {
    return 440 * 2 ^ ((index("c d ef g a b", substr(note, 1, 1)) - 10) / 12 + substr(note, 2) - 4)
}
