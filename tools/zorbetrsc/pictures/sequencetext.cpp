#include "pictures/sequencetext.h"

#include "refusal.h"
#include "text.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace rsc {

using formats::animation::Entry;
using formats::animation::Sequence;

namespace {

constexpr int kFirstMarker = -Entry::kFirstMarker;
constexpr int kLargestMarker = -kSmallestInt16;

/// A word cut into its parts: HEAD@dx,dy:argument.
struct StepWord {
    std::string_view head;
    std::int16_t dx = 0;
    std::int16_t dy = 0;
    std::optional<std::int16_t> argument;

    [[nodiscard]] Entry entry(int code) const {
        return {dx, dy, static_cast<std::int16_t>(code), argument.value_or(std::int16_t{0})};
    }
};

std::int16_t shortNumber(std::string_view word, const char* what, int smallest = kSmallestInt16) {
    return static_cast<std::int16_t>(numberInRange(word, what, smallest, kLargestInt16));
}

StepWord cutStep(std::string_view word) {
    StepWord step;
    if (const auto colon = word.find(':'); colon != std::string_view::npos) {
        step.argument = shortNumber(word.substr(colon + 1), "the number behind \":\"");
        word = word.substr(0, colon);
    }
    const auto at = word.find('@');
    step.head = word.substr(0, at);
    if (at == std::string_view::npos) return step;
    const std::string_view offset = word.substr(at + 1);
    const auto comma = offset.find(',');
    if (comma == std::string_view::npos) throw Refusal("an offset is written \"@dx,dy\"");
    step.dx = shortNumber(offset.substr(0, comma), "dx");
    step.dy = shortNumber(offset.substr(comma + 1), "dy");
    return step;
}

struct PlainStep {
    std::string_view word;
    int code;
};
constexpr PlainStep kPlainSteps[] = {
    {"end", Entry::kEnd}, {"loop", Entry::kLoop}, {"hold", Entry::kHold}};

class SequenceParser {
  public:
    explicit SequenceParser(WordReader& words) : words_(words) {}

    Sequence parse() {
        while (!words_.atEnd()) {
            if (ended()) throw Refusal("nothing can follow \"end\"");
            addStep(words_.text("a step"));
            if (std::ssize(entries_) > kLargestInt16 - 1) throw Refusal("the sequence is too long");
        }
        if (!ended()) entries_.push_back({0, 0, Entry::kEnd, 0});
        if (!showsFrame_) throw Refusal("the sequence shows no frame");
        return std::move(entries_);
    }

  private:
    [[nodiscard]] bool ended() const {
        return !entries_.empty() && entries_.back().code == Entry::kEnd;
    }

    void addStep(const std::string& word) {
        if (word == "sound") return addSound();
        if (word == "marker") return addMarker();
        if (word == "code") return addCode();
        const StepWord step = cutStep(word);
        const auto* plain = std::ranges::find(kPlainSteps, step.head, &PlainStep::word);
        if (plain == std::end(kPlainSteps)) return addFrames(step);
        if (step.argument) throw Refusal(inQuotes(step.head) + " takes no \":\"");
        if (plain->code == Entry::kLoop) checkLoop();
        entries_.push_back(step.entry(plain->code));
    }

    /// Without a frame in between, playing would go round without end in a single step.
    void checkLoop() const {
        if (!showsFrame_) throw Refusal("\"loop\" needs a frame before it");
    }

    void addSound() {
        const std::string word = words_.text("the sound's id");
        StepWord step = cutStep(word);
        if (step.argument) throw Refusal("\"sound\" takes no \":\"");
        step.argument = shortNumber(step.head, "the sound's id", 1);
        entries_.push_back(step.entry(Entry::kSound));
    }

    void addMarker() {
        const std::string word = words_.text("the marker's number");
        const StepWord step = cutStep(word);
        const int marker =
            numberInRange(step.head, "the marker's number", kFirstMarker, kLargestMarker);
        entries_.push_back(step.entry(-marker));
    }

    void addCode() {
        const std::string word = words_.text("the code");
        const StepWord step = cutStep(word);
        const int code = numberInRange(step.head, "the code", kSmallestInt16, -1);
        if (code == Entry::kLoop) checkLoop();
        entries_.push_back(step.entry(code));
    }

    void addFrames(const StepWord& step) {
        const auto dash = step.head.find('-');
        const bool isRange = dash != std::string_view::npos;
        const int first = frameNumber(step.head.substr(0, dash));
        const int last = isRange ? frameNumber(step.head.substr(dash + 1)) : first;
        if (step.argument && *step.argument < 0) throw Refusal("a duration is 0 ms or more");
        const int direction = first <= last ? 1 : -1;
        for (int frame = first; frame != last + direction; frame += direction)
            entries_.push_back(step.entry(frame - 1));
        showsFrame_ = true;
    }

    static int frameNumber(std::string_view word) {
        if (!parseNumber(word)) throw Refusal(inQuotes(word) + " is no step of a sequence");
        return numberInRange(word, "the frame", 1, kLargestInt16);
    }

    WordReader& words_;
    Sequence entries_;
    bool showsFrame_ = false;
};

/// Frames that follow each other and are shown alike are worth a range from this number on.
constexpr std::size_t kShortestRange = 3;

/// The steps from `at` on that a range stands for, 1 when there is none.
std::size_t rangeLength(const Sequence& sequence, std::size_t at) {
    const Entry& first = sequence[at];
    if (first.code < 0 || at + 1 >= sequence.size()) return 1;
    const int direction = sequence[at + 1].code < first.code ? -1 : 1;
    std::size_t length = 1;
    Entry next = first;
    while (at + length < sequence.size()) {
        next.code = static_cast<std::int16_t>(next.code + direction);
        if (next.code < 0 || sequence[at + length] != next) break;
        ++length;
    }
    return length < kShortestRange ? 1 : length;
}

/// What stands in front of a step's offset. `argument` becomes what stands behind it.
std::string formatHead(const Entry& entry, int& argument) {
    if (entry.code >= 0) return std::to_string(entry.code + 1);
    const auto* plain = std::ranges::find(kPlainSteps, entry.code, &PlainStep::code);
    if (plain != std::end(kPlainSteps) && argument == 0) return std::string(plain->word);
    if (entry.code == Entry::kSound && argument > 0)
        return "sound " + std::to_string(std::exchange(argument, 0));
    if (entry.code <= Entry::kFirstMarker) return "marker " + std::to_string(-entry.code);
    return "code " + std::to_string(entry.code);
}

std::string formatStep(const Entry& entry, int lastFrame) {
    int argument = entry.argument;
    std::string text = formatHead(entry, argument);
    if (lastFrame != entry.code) text += "-" + std::to_string(lastFrame + 1);
    if (entry.dx != 0 || entry.dy != 0)
        text += "@" + std::to_string(entry.dx) + "," + std::to_string(entry.dy);
    if (argument != 0) text += ":" + std::to_string(argument);
    return text;
}

} // namespace

Sequence parseSequence(WordReader& words) { return SequenceParser(words).parse(); }

std::string formatSequence(const Sequence& sequence) {
    constexpr Entry kPlainEnd{0, 0, Entry::kEnd, 0};
    std::string text;
    for (std::size_t at = 0; at < sequence.size();) {
        const std::size_t next = at + rangeLength(sequence, at);
        const bool isImplied = next == sequence.size() && at > 0 && sequence[at] == kPlainEnd;
        if (!isImplied) {
            if (!text.empty()) text += " ";
            text += formatStep(sequence[at], sequence[next - 1].code);
        }
        at = next;
    }
    return text;
}

} // namespace rsc
