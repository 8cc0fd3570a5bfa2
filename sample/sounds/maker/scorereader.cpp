#include "scorereader.h"

#include "notereader.h"

#include <algorithm>
#include <array>
#include <memory>
#include <span>

namespace {

using Words = std::vector<std::string_view>;

constexpr int kMaxMs = 20000;
constexpr std::int64_t kMaxSeconds = 120;
constexpr std::int64_t kMaxNoteSeconds = 1800;
constexpr std::size_t kMaxHarmonics = 32;
constexpr std::size_t kMaxInstruments = 64;
constexpr std::size_t kMaxVoices = 64;

Words splitLine(std::string_view line) {
    constexpr std::string_view kBlanks = " \t\r";
    Words words;
    while (true) {
        const auto begin = line.find_first_not_of(kBlanks);
        if (begin == std::string_view::npos) return words;
        const auto end = std::min(line.find_first_of(kBlanks, begin), line.size());
        const std::string_view word = line.substr(begin, end - begin);
        if (word.starts_with('#')) return words;
        words.push_back(word);
        line.remove_prefix(end);
    }
}

/// Reads a score; every member function serves one kind of line. `words` is the current one.
class Reader {
  public:
    Score read(std::string_view text);

  private:
    struct Keyword;
    static const std::array<Keyword, 16> kKeywords;

    [[noreturn]] void fail(const std::string& text) const { throw ScoreFault(line_, text); }
    void need(bool holds, const char* form) const {
        if (!holds) fail(std::string("write \"") + form + "\"");
    }
    /// A word of the line as a number.
    [[nodiscard]] int number(std::size_t word, int low, int high) const;
    /// The same in tenths: "5" or "5.5".
    [[nodiscard]] int tenths(std::size_t word, int low, int high) const;
    [[nodiscard]] std::vector<int> harmonics(std::size_t first, std::size_t end) const;
    Instrument& instrument();

    void takeLine();
    void takeSetting();
    void takeTone();
    void beginInstrument();
    void beginVoice();
    void takeNotes();
    void endVoice();
    void checkWhole();

    Score score_;
    Words words_;
    int line_ = 0;
    std::int64_t barTicks_ = 0;
    bool inInstrument_ = false;
    std::unique_ptr<NoteReader> notes_; ///< of the last voice
};

/// What a keyword's line looks like, and who takes it.
struct Reader::Keyword {
    std::string_view word;
    void (Reader::*take)();
    const char* form;
    std::size_t minWords;
    std::size_t maxWords;
};

constexpr std::array<Reader::Keyword, 16> Reader::kKeywords = {{
    {"tempo", &Reader::takeSetting, "tempo BEATS", 2, 2},
    {"bar", &Reader::takeSetting, "bar BEATS", 2, 2},
    {"loop", &Reader::takeSetting, "loop BEATS", 2, 2},
    {"peak", &Reader::takeSetting, "peak LEVEL", 2, 2},
    {"lowpass", &Reader::takeSetting, "lowpass HZ", 2, 2},
    {"echo", &Reader::takeSetting, "echo MS PERCENT", 3, 3},
    {"instrument", &Reader::beginInstrument, "instrument NAME", 2, 2},
    {"wave", &Reader::takeTone, "wave PERCENT...", 2, kMaxHarmonics + 1},
    {"strike", &Reader::takeTone, "strike MS PERCENT...", 3, kMaxHarmonics + 2},
    {"noise", &Reader::takeTone, "noise SHARPNESS", 2, 2},
    {"envelope", &Reader::takeTone, "envelope ATTACK RELEASE", 3, 3},
    {"decay", &Reader::takeTone, "decay MS [SUSTAIN]", 2, 3},
    {"vibrato", &Reader::takeTone, "vibrato CENTS HZ [AFTER]", 3, 4},
    {"tremolo", &Reader::takeTone, "tremolo PERCENT HZ", 3, 3},
    {"slide", &Reader::takeTone, "slide CENTS MS", 3, 3},
    {"voice", &Reader::beginVoice, "voice INSTRUMENT VOLUME [BEAT]", 3, 4},
}};

int Reader::number(std::size_t word, int low, int high) const {
    const int value = readNumber(words_[word], low, high);
    if (value < low)
        fail("\"" + std::string(words_[word]) + "\": a number from " + std::to_string(low) +
             " to " + std::to_string(high) + " stands here");
    return value;
}

int Reader::tenths(std::size_t word, int low, int high) const {
    const std::int64_t value = readBeats(words_[word]) * 10 / kTicksPerBeat;
    if (value < low || value > high) fail("\"" + std::string(words_[word]) + "\" is out of range");
    return static_cast<int>(value);
}

std::vector<int> Reader::harmonics(std::size_t first, std::size_t end) const {
    std::vector<int> levels;
    for (std::size_t word = first; word < end; ++word) levels.push_back(number(word, -100, 100));
    if (std::ranges::all_of(levels, [](int level) { return level == 0; }))
        fail("one harmonic must not be 0");
    return levels;
}

Instrument& Reader::instrument() {
    if (!inInstrument_) fail("\"" + std::string(words_[0]) + "\" stands below an instrument");
    return score_.instruments.back();
}

Score Reader::read(std::string_view text) {
    while (!text.empty()) {
        const auto end = std::min(text.find('\n'), text.size());
        words_ = splitLine(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        ++line_;
        if (!words_.empty()) takeLine();
    }
    checkWhole();
    return std::move(score_);
}

void Reader::takeLine() {
    const auto keyword = std::ranges::find(kKeywords, words_[0], &Keyword::word);
    if (keyword == kKeywords.end()) return takeNotes();
    need(words_.size() >= keyword->minWords && words_.size() <= keyword->maxWords, keyword->form);
    (this->*keyword->take)();
}

void Reader::takeSetting() {
    const std::string_view word = words_[0];
    if (!score_.voices.empty()) fail("\"" + std::string(word) + "\" stands before the voices");
    if (word == "tempo") score_.tempo = number(1, 20, 400);
    if (word == "bar") barTicks_ = number(1, 1, 64) * kTicksPerBeat;
    if (word == "loop") score_.loop = number(1, 1, 1024) * kTicksPerBeat;
    if (word == "peak") score_.peak = number(1, 1, 127);
    if (word == "lowpass") score_.lowpassHz = number(1, 200, 10000);
    if (word == "echo") {
        score_.echoMs = number(1, 10, 1000);
        score_.echo = number(2, 1, 60);
    }
}

void Reader::beginInstrument() {
    endVoice();
    if (score_.instruments.size() == kMaxInstruments) fail("too many instruments");
    if (std::ranges::find(score_.instruments, words_[1], &Instrument::name) !=
        score_.instruments.end())
        fail("there is an instrument \"" + std::string(words_[1]) + "\" already");
    score_.instruments.emplace_back().name = words_[1];
    inInstrument_ = true;
}

void Reader::takeTone() {
    Instrument& tone = instrument();
    const std::string_view word = words_[0];
    if (word == "wave") tone.wave = harmonics(1, words_.size());
    if (word == "strike") {
        tone.strikeMs = number(1, 1, kMaxMs);
        tone.strike = harmonics(2, words_.size());
    }
    if (word == "noise") tone.sharpness = number(1, 1, 50);
    if (word == "envelope") {
        tone.attackMs = number(1, 0, kMaxMs);
        tone.releaseMs = number(2, 0, kMaxMs);
    }
    if (word == "decay") {
        tone.decayMs = number(1, 1, kMaxMs);
        tone.sustain = words_.size() > 2 ? number(2, 0, 100) : 0;
    }
    if (word == "vibrato") {
        tone.vibratoCents = number(1, 1, 1200);
        tone.vibratoTenths = tenths(2, 1, 500);
        tone.vibratoAfterMs = words_.size() > 3 ? number(3, 0, kMaxMs) : 0;
    }
    if (word == "tremolo") {
        tone.tremolo = number(1, 1, 100);
        tone.tremoloTenths = tenths(2, 1, 500);
    }
    if (word == "slide") {
        tone.slideCents = number(1, -2400, 2400);
        tone.slideMs = number(2, 1, kMaxMs);
    }
}

void Reader::beginVoice() {
    endVoice();
    inInstrument_ = false;
    if (score_.voices.size() == kMaxVoices) fail("too many voices");
    const auto found = std::ranges::find(score_.instruments, words_[1], &Instrument::name);
    if (found == score_.instruments.end())
        fail("there is no instrument \"" + std::string(words_[1]) + "\"");
    const int volume = number(2, 1, 200);
    std::int64_t start = 0;
    if (words_.size() > 3 && words_[3] != "0") {
        start = readBeats(words_[3]);
        if (start == 0) fail("\"" + std::string(words_[3]) + "\" is no beat");
    }
    const auto index = static_cast<std::size_t>(found - score_.instruments.begin());
    if (score_.voices.empty()) score_.voices.reserve(kMaxVoices); // note readers point to them
    score_.voices.push_back({index, volume, {}, 0});
    notes_ = std::make_unique<NoteReader>(score_.voices.back(), start, barTicks_);
}

void Reader::takeNotes() {
    if (!notes_)
        fail("\"" + std::string(words_[0]) + "\" is no keyword, and there is no voice yet");
    for (const std::string_view word : words_)
        if (const std::string fault = notes_->take(word); !fault.empty()) fail(fault);
}

void Reader::endVoice() {
    if (!notes_) return;
    if (const std::string fault = notes_->finish(); !fault.empty()) fail(fault);
    if (score_.loop > 0 && score_.voices.back().end > score_.loop)
        fail("the voice before is longer than the loop");
    notes_.reset();
}

void Reader::checkWhole() {
    endVoice();
    if (std::ranges::all_of(score_.voices, [](const Voice& voice) { return voice.notes.empty(); }))
        fail("there are no notes");
    std::int64_t longest = score_.loop;
    std::int64_t sum = 0;
    for (const Voice& voice : score_.voices) {
        longest = std::max(longest, voice.end);
        for (const Note& note : voice.notes) sum += note.length;
    }
    const std::int64_t second = score_.tempo * kTicksPerBeat; // 60 of them
    if (longest * 60 > kMaxSeconds * second) fail("the score is longer than two minutes");
    if (sum * 60 > kMaxNoteSeconds * second)
        fail("the notes together are longer than half an hour");
}

} // namespace

Score readScore(std::string_view text) { return Reader().read(text); }
