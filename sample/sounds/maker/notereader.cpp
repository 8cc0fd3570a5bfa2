#include "notereader.h"

#include "fixedmath.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

namespace {

constexpr std::string_view kDigits = "0123456789";
constexpr int kMaxBeats = 4096;
constexpr int kMaxDivisor = 96;
constexpr std::size_t kMaxDecimals = 3;
constexpr std::int64_t kSemitone = fixedmath::kOctave / 12;
constexpr int kMiddleOctave = 4; ///< that of a4
constexpr int kMaxOctave = 8;

std::string quoted(std::string_view word) { return "\"" + std::string(word) + "\""; }

/// Takes the text up to `mark` off the front; without a mark everything.
std::string_view cut(std::string_view& text, char mark) {
    const auto at = std::min(text.find(mark), text.size());
    const std::string_view front = text.substr(0, at);
    text.remove_prefix(std::min(at + 1, text.size()));
    return front;
}

/// A letter, # or b, an octave: relative to a4.
std::optional<std::int64_t> readPitch(std::string_view text) {
    constexpr std::array<int, 7> kSemitones = {0, 2, -9, -7, -5, -4, -2}; // a to g, from a
    if (text.empty() || text[0] < 'a' || text[0] > 'g') return std::nullopt;
    int semitones = kSemitones.at(static_cast<std::size_t>(text[0] - 'a'));
    text.remove_prefix(1);
    if (!text.empty() && (text[0] == '#' || text[0] == 'b')) {
        semitones += text[0] == '#' ? 1 : -1;
        text.remove_prefix(1);
    }
    const int octave = readNumber(text, 0, kMaxOctave);
    if (octave < 0) return std::nullopt;
    return (semitones + (octave - kMiddleOctave) * 12) * kSemitone;
}

} // namespace

int readNumber(std::string_view text, int low, int high) {
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool whole = error == std::errc{} && end == text.data() + text.size();
    return whole && value >= low && value <= high ? value : low - 1;
}

std::int64_t readBeats(std::string_view text) {
    std::string_view rest = text;
    const bool fraction = text.find('/') != std::string_view::npos;
    const std::string_view front = cut(rest, fraction ? '/' : '.');
    const int whole = front.empty() && !fraction ? 0 : readNumber(front, 0, kMaxBeats);
    if (whole < 0 || rest.find_first_not_of(kDigits) != std::string_view::npos) return 0;
    if (fraction) {
        const int divisor = readNumber(rest, 1, kMaxDivisor);
        return divisor < 1 ? 0 : whole * kTicksPerBeat / divisor;
    }
    if (rest.size() > kMaxDecimals) return 0;
    std::int64_t ticks = whole * kTicksPerBeat;
    std::int64_t place = kTicksPerBeat;
    for (const char digit : rest) ticks += (digit - '0') * (place /= 10);
    return ticks;
}

std::string NoteReader::take(std::string_view word) {
    if (word == "|") return takeBar();
    if (word == "(") return open();
    if (word.starts_with(')')) return close(word.substr(1));
    if (!word.starts_with('@')) return takeNote(word);
    const int volume = readNumber(word.substr(1), 1, 200);
    if (volume < 1) return quoted(word) + ": a volume is @1 to @200";
    volume_ = volume;
    return {};
}

std::string NoteReader::finish() const {
    return repeats_.empty() ? std::string() : "a \"(\" of the voice before is not closed";
}

std::string NoteReader::takeBar() const {
    if (barTicks_ == 0 || now_ % barTicks_ == 0) return {};
    const auto hundredths = now_ % barTicks_ * 100 / kTicksPerBeat;
    return "bar line after " + std::to_string(hundredths / 100) + "." +
           std::to_string(hundredths % 100 / 10) + std::to_string(hundredths % 10) +
           " beats of a bar";
}

std::string NoteReader::open() {
    if (repeats_.size() == kMaxNesting) return "too many repeats in each other";
    repeats_.push_back({voice_.notes.size(), now_});
    return {};
}

std::string NoteReader::close(std::string_view times) {
    const int count = readNumber(times, 2, 1000);
    if (count < 2) return "behind \")\" stands how often, from 2 to 1000";
    if (repeats_.empty()) return "\")\" without \"(\"";
    const Repeat repeat = repeats_.back();
    repeats_.pop_back();
    const std::int64_t length = now_ - repeat.start;
    const std::vector<Note> notes(voice_.notes.begin() + static_cast<std::ptrdiff_t>(repeat.note),
                                  voice_.notes.end());
    if (voice_.notes.size() + notes.size() * static_cast<std::size_t>(count) > kMaxNotes)
        return "a voice has more than " + std::to_string(kMaxNotes) + " notes";
    for (int round = 1; round < count; ++round)
        for (Note note : notes) {
            note.start += round * length;
            voice_.notes.push_back(note);
        }
    return advance(length * (count - 1));
}

/// PITCH[>PITCH][+PITCH...][:BEATS], "-" for a rest.
std::string NoteReader::takeNote(std::string_view word) {
    std::string_view length = word;
    std::string_view pitches = cut(length, ':');
    if (word.find(':') != std::string_view::npos) {
        length_ = readBeats(length);
        if (length_ == 0) return quoted(word) + ": the length is no number of beats";
    }
    if (pitches == "-") return advance(length_);
    if (pitches.empty() || pitches.ends_with('+')) return quoted(word) + " is no note";
    while (!pitches.empty()) {
        std::string_view end = cut(pitches, '+');
        const bool glides = end.find('>') != std::string_view::npos;
        const auto from = readPitch(cut(end, '>'));
        const auto to = glides ? readPitch(end) : from;
        if (!from || !to) return quoted(word) + " is no note";
        if (voice_.notes.size() == kMaxNotes)
            return "a voice has more than " + std::to_string(kMaxNotes) + " notes";
        voice_.notes.push_back({now_, length_, *from, *to, volume_});
    }
    return advance(length_);
}

std::string NoteReader::advance(std::int64_t ticks) {
    now_ += ticks;
    if (now_ > kMaxTicks) return "the voice is too long";
    voice_.end = now_;
    return {};
}
