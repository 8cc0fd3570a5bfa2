#include "platform/host/visit/timeline.h"

#include "formats/base/latin1.h"
#include "formats/base/scanner.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <istream>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

namespace {

constexpr int kLargestCommand = 0xFFFF;
constexpr std::uint32_t kBetweenMs = 100; ///< two events of one line

bool isBlank(char c) { return c == ' ' || c == '\t'; }

/// Reads a line from left to right; every step moves on or fails.
class LineReader {
  public:
    explicit LineReader(std::string_view line) : rest_(line) {}

    void skipBlanks() { rest_.remove_prefix(countWhile(isBlank)); }

    /// The next word, empty at the line's end.
    std::string_view word() {
        skipBlanks();
        const std::string_view word =
            rest_.substr(0, countWhile([](char c) { return !isBlank(c); }));
        rest_.remove_prefix(word.size());
        return word;
    }

    /// The next word as a decimal number from `least` to `most`.
    template <class Number>
    std::optional<Number> number(Number least, Number most) {
        const std::string_view digits = word();
        Number value{};
        const auto [end, error] =
            std::from_chars(digits.data(), digits.data() + digits.size(), value);
        const bool whole = error == std::errc() && end == digits.data() + digits.size();
        if (!whole || value < least || value > most) return std::nullopt;
        return value;
    }

    /// Everything behind the one blank that ends the word before, with its other blanks.
    std::string_view remainder() {
        const std::string_view text = rest_.empty() ? rest_ : rest_.substr(1);
        rest_ = {};
        return text;
    }

    /// Everything left without the blanks around it.
    std::string_view text() {
        skipBlanks();
        std::string_view text = rest_;
        while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
        rest_ = {};
        return text;
    }

    bool atEnd() {
        skipBlanks();
        return rest_.empty();
    }

  private:
    template <class Test>
    [[nodiscard]] std::size_t countWhile(Test test) const {
        return static_cast<std::size_t>(std::ranges::find_if_not(rest_, test) - rest_.begin());
    }

    std::string_view rest_;
};

/// What a line brings, one after the other, every kBetweenMs; none when it cannot be read.
using LineEvents = std::vector<decltype(TimelineEvent::what)>;

std::optional<std::string> latin1Text(std::string_view text) {
    const auto characters = formats::decodeUtf8(text);
    return characters ? formats::latin1FromCharacters(*characters) : std::string(text);
}

constexpr std::array<std::string_view, 27> kKeyNames{
    "Backspace", "Tab", "Enter", "Pause", "Esc",    "PageUp", "PageDown", "End", "Home",
    "Left",      "Up",  "Right", "Down",  "Insert", "Delete", "F1",       "F2",  "F3",
    "F4",        "F5",  "F6",    "F7",    "F8",     "F9",     "F10",      "F11", "F12"};
constexpr auto kFirstKey = static_cast<std::uint16_t>(Key::Backspace);
static_assert(kFirstKey + kKeyNames.size() - 1 == static_cast<std::size_t>(Key::F12));

constexpr std::string_view kControl = "Ctrl-";
constexpr std::string_view kShift = "Shift-"; ///< of keys that have names
constexpr std::string_view kOn = "on";
constexpr std::string_view kOff = "off";

std::uint16_t controlled(std::uint16_t code) {
    const bool letter = (code >= 'a' && code <= 'z') || (code >= 'A' && code <= 'Z');
    return letter ? code & 0x1F : code;
}

template <Message::Kind kind>
LineEvents readPlain(LineReader&) {
    return {Message{.kind = kind}};
}

std::optional<Point> readPosition(LineReader& line) {
    using Limits = std::numeric_limits<int>;
    const auto x = line.number(Limits::min(), Limits::max());
    const auto y = line.number(Limits::min(), Limits::max());
    return x && y ? std::optional(Point{*x, *y}) : std::nullopt;
}

template <Message::Kind kind>
LineEvents readMouse(LineReader& line) {
    const auto position = readPosition(line);
    if (!position) return {};
    return {Message{.kind = kind, .position = *position}};
}

/// The button goes down where the way begins, and up at its end.
LineEvents carried(std::span<const Point> way) {
    LineEvents events;
    const auto add = [&events](Message::Kind kind, Point position) {
        events.emplace_back(Message{.kind = kind, .position = position});
    };
    add(Message::Kind::MouseMove, way.front());
    add(Message::Kind::MouseDown, way.front());
    for (const Point& further : way.subspan(1)) add(Message::Kind::MouseMove, further);
    add(Message::Kind::MouseUp, way.back());
    return events;
}

LineEvents readClick(LineReader& line) {
    const auto position = readPosition(line);
    return position ? carried(std::span(&*position, 1)) : LineEvents();
}

LineEvents readDrag(LineReader& line) {
    std::vector<Point> way;
    do {
        const auto position = readPosition(line);
        if (!position) return {};
        way.push_back(*position);
    } while (!line.atEnd());
    return way.size() > 1 ? carried(way) : LineEvents();
}

std::optional<KeyPress> pressNamed(std::string_view name) {
    while (name.size() > 1 && isBlank(name.front())) name.remove_prefix(1);
    const bool control = name.starts_with(kControl);
    if (control) name.remove_prefix(kControl.size());
    const bool shift = name.starts_with(kShift);
    if (shift) name.remove_prefix(kShift.size());
    while (name.size() > 1 && isBlank(name.back())) name.remove_suffix(1);
    const auto code = keyNamed(name);
    if (!code || (shift && *code < kFirstKey)) return std::nullopt;
    return KeyPress{control ? controlled(*code) : *code, control, shift};
}

LineEvents readKeys(LineReader& line) {
    std::vector<std::string_view> names;
    for (LineReader words = line; !words.atEnd();) names.push_back(words.word());
    if (names.size() < 2) names = {line.remainder()}; // a blank may be the key itself
    line.text();
    LineEvents events;
    for (const std::string_view name : names) {
        const auto press = pressNamed(name);
        if (!press) return {};
        events.emplace_back(Message{.kind = Message::Kind::Key, .key = *press});
    }
    return events;
}

template <Message::Kind on, Message::Kind off>
LineEvents readSwitch(LineReader& line) {
    const std::string_view what = line.word();
    if (what != kOn && what != kOff) return {};
    return {Message{.kind = what == kOn ? on : off}};
}

LineEvents readCommand(LineReader& line) {
    const auto command = line.number(0, kLargestCommand);
    if (!command) return {};
    return {Message{.kind = Message::Kind::Command, .command = *command}};
}

LineEvents readAnswer(LineReader& line) {
    constexpr std::string_view kChecked = "checked";
    LineReader words = line;
    const bool checked = words.word() == kChecked;
    const auto button = latin1Text(checked ? words.text() : line.text());
    line.text();
    if (!button || button->empty()) return {};
    return {TimelineAnswer{*button, checked}};
}

LineEvents readClose(LineReader&) { return {TimelineAnswer{.closesWindow = true}}; }

LineEvents readScreenshot(LineReader& line) {
    const std::string_view file = line.text();
    if (file.empty()) return {};
    return {TimelineScreenshot{std::string(file)}};
}

LineEvents readExpectation(LineReader& line) {
    using Kind = TimelineExpectation::Kind;
    const std::string_view what = line.word();
    TimelineExpectation expected;
    const auto takes = [](std::string& place, std::string_view text) {
        const auto latin1 = latin1Text(text);
        place = latin1.value_or("");
        return latin1 && !latin1->empty();
    };
    if (what == "no") {
        expected.kind = Kind::NoWarnings;
        return line.word() == "warnings" ? LineEvents{expected} : LineEvents();
    }
    if (what == "said" || what == "box") {
        expected.kind = what == "said" ? Kind::Said : Kind::Box;
        return takes(expected.text, line.text()) ? LineEvents{expected} : LineEvents();
    }
    if (what != "variable" && what != "property") return {};
    expected.kind = what == "variable" ? Kind::Variable : Kind::Property;
    if (!takes(expected.variable, line.word())) return {};
    if (what == "property" && !takes(expected.property, line.word())) return {};
    takes(expected.text, line.text()); // a value may be empty
    return {expected};
}

LineEvents readRun(LineReader& line) {
    const auto text = latin1Text(line.text());
    if (!text || text->empty()) return {};
    return {TimelineRun{*text}};
}

struct Verb {
    std::string_view name;
    LineEvents (*read)(LineReader&);
    std::string_view wants; ///< what has to follow, for the complaint
};

constexpr std::string_view kNothing = "nothing after it";
constexpr std::string_view kPosition = "two numbers, x and y";
constexpr std::string_view kSwitch = "\"on\" or \"off\"";

constexpr std::array kVerbs{
    Verb{"move", readMouse<Message::Kind::MouseMove>, kPosition},
    Verb{"down", readMouse<Message::Kind::MouseDown>, kPosition},
    Verb{"up", readMouse<Message::Kind::MouseUp>, kPosition},
    Verb{"double", readMouse<Message::Kind::DoubleClick>, kPosition},
    Verb{"click", readClick, kPosition},
    Verb{"drag", readDrag, "two positions or more, each of two numbers, x and y"},
    Verb{"key", readKeys, "one Latin-1 character or the name of a key"},
    Verb{"keys", readSwitch<Message::Kind::KeysOn, Message::Kind::KeysOff>, kSwitch},
    Verb{"speech", readSwitch<Message::Kind::SpeechOn, Message::Kind::SpeechOff>, kSwitch},
    Verb{"command", readCommand, "a number from 0 to 65535"},
    Verb{"answer", readAnswer, "the text of a button"},
    Verb{"close", readClose, kNothing},
    Verb{"background", readPlain<Message::Kind::Background>, kNothing},
    Verb{"foreground", readPlain<Message::Kind::Foreground>, kNothing},
    Verb{"expose", readPlain<Message::Kind::Expose>, kNothing},
    Verb{"nothing", readPlain<Message::Kind::Null>, kNothing},
    Verb{"screenshot", readScreenshot, "a file name"},
    Verb{
        "expect", readExpectation,
        "\"said TEXT\", \"box TEXT\", \"variable NAME VALUE\", \"property NAME PROPERTY VALUE\" or "
        "\"no warnings\""},
    Verb{"run", readRun, "a line of the script language"},
    Verb{"quit", readPlain<Message::Kind::Quit>, kNothing},
};

/// Reads the line of events; what is wrong with it, if anything.
std::optional<std::string> readEvents(LineReader line, Timeline& timeline) {
    using Limits = std::numeric_limits<std::uint32_t>;
    const auto time = line.number(Limits::min(), Limits::max());
    if (!time) return "the line does not begin with a time in milliseconds";
    const std::string_view name = line.word();
    const auto verb = std::ranges::find(kVerbs, name, &Verb::name);
    if (verb == kVerbs.end()) return "unknown event " + formats::inQuotes(name);
    LineEvents events = verb->read(line);
    if (events.empty() || !line.atEnd()) {
        return formats::inQuotes(name) + " wants " + std::string(verb->wants);
    }
    if ((events.size() - 1) * kBetweenMs > Limits::max() - *time)
        return "what follows in the line would come after the last millisecond that there is";
    std::uint32_t timeMs = *time;
    for (auto& what : events) {
        timeline.push_back({timeMs, std::move(what)});
        timeMs += kBetweenMs;
    }
    return std::nullopt;
}

bool readData(LineReader& line, Visit& visit) {
    if (!visit.data) visit.data.emplace();
    const std::string_view digits = line.word();
    if (digits.size() % 2 != 0) return false;
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        std::uint8_t byte = 0;
        const char* const end = digits.data() + i + 2;
        const auto [rest, error] = std::from_chars(digits.data() + i, end, byte, 16);
        if (error != std::errc() || rest != end) return false;
        visit.data->push_back(static_cast<char>(byte));
    }
    return true;
}

/// "16*2", or "16" for one.
bool readTurns(std::string_view run, Visit& visit) {
    using Limits = std::numeric_limits<std::uint32_t>;
    const std::size_t times = std::min(run.find('*'), run.size());
    const auto ms = LineReader(run.substr(0, times)).number(1u, Limits::max());
    const auto count = times == run.size()
                           ? std::optional(1u)
                           : LineReader(run.substr(times + 1)).number(1u, Limits::max());
    if (ms && count) visit.turns.push_back({*ms, *count});
    return ms && count;
}

bool readTurns(LineReader& line, Visit& visit) {
    do
        if (!readTurns(line.word(), visit)) return false;
    while (!line.atEnd());
    return true;
}

enum class Read { Done, Wrong, NoSetting };

Read readSetting(LineReader line, Visit& visit) {
    const std::string_view name = line.word();
    bool isRight = true;
    if (name == "seed")
        isRight =
            (visit.seed = line.number(0u, std::numeric_limits<std::uint32_t>::max())).has_value();
    else if (name == "step")
        isRight = (visit.stepMs = line.number(1u, kMostStepMs)).has_value();
    else if (name == "scene")
        isRight = !(visit.scene = line.text()).empty();
    else if (name == "language")
        isRight = !(visit.language = line.word()).empty();
    else if (name == "data")
        isRight = readData(line, visit);
    else if (name == "turns")
        isRight = readTurns(line, visit);
    else
        return Read::NoSetting;
    return isRight && line.atEnd() ? Read::Done : Read::Wrong;
}

bool isSkipped(std::string_view line) {
    LineReader reader(line);
    reader.skipBlanks();
    return reader.atEnd() || reader.word().starts_with('#');
}

/// Drops what editors leave on a line: the byte order mark and the carriage return.
std::string_view trimmed(std::string_view line, int number) {
    constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
    if (number == 1 && line.starts_with(kUtf8Mark)) line.remove_prefix(kUtf8Mark.size());
    if (line.ends_with('\r')) line.remove_suffix(1);
    return line;
}

} // namespace

std::optional<std::uint16_t> keyNamed(std::string_view name) {
    const auto named = std::ranges::find(kKeyNames, name);
    if (named != kKeyNames.end()) {
        return static_cast<std::uint16_t>(kFirstKey + (named - kKeyNames.begin()));
    }
    const auto character = latin1Text(name);
    if (!character || character->size() != 1) return std::nullopt;
    const auto code = static_cast<unsigned char>((*character)[0]);
    return code >= 0x20 ? std::optional<std::uint16_t>(code) : std::nullopt;
}

std::variant<Visit, TimelineError> parseVisit(std::istream& input) {
    Visit visit;
    std::string text;
    int number = 0;
    while (std::getline(input, text)) {
        ++number;
        const std::string_view line = trimmed(text, number);
        if (isSkipped(line)) continue;
        if (const Read read = readSetting(LineReader(line), visit); read == Read::Wrong) {
            return TimelineError{
                number, "this wants one word: \"seed N\", \"step N\" of at most " +
                            std::to_string(kMostStepMs) +
                            ", \"scene NAME\", \"language TAG\", \"data BYTES\" of two hexadecimal "
                            "digits each; or \"turns MS*COUNT\" and further ones"};
        } else if (read == Read::Done) {
            continue;
        }
        if (auto wrong = readEvents(LineReader(line), visit.timeline))
            return TimelineError{number, *std::move(wrong)};
    }
    if (input.bad()) return TimelineError{number + 1, "the input cannot be read"};
    std::ranges::stable_sort(visit.timeline, {}, &TimelineEvent::timeMs);
    return visit;
}

// ---------------------------------------------------------------------------- writing

namespace {

constexpr std::size_t kDataBytes = 40; ///< of a line

std::string_view verbOf(Message::Kind kind) {
    switch (kind) {
    case Message::Kind::MouseDown: return "down";
    case Message::Kind::MouseUp: return "up";
    case Message::Kind::MouseMove: return "move";
    case Message::Kind::DoubleClick: return "double";
    case Message::Kind::Key: return "key";
    case Message::Kind::Command: return "command";
    case Message::Kind::Background: return "background";
    case Message::Kind::Foreground: return "foreground";
    case Message::Kind::Expose: return "expose";
    case Message::Kind::KeysOn:
    case Message::Kind::KeysOff: return "keys";
    case Message::Kind::SpeechOn:
    case Message::Kind::SpeechOff: return "speech";
    case Message::Kind::Quit: return "quit";
    case Message::Kind::Null: break;
    }
    return "nothing";
}

std::string textOf(const KeyPress& key) {
    const std::string held(key.control ? kControl : std::string_view());
    if (key.code >= kFirstKey)
        return (held + std::string(key.shift ? kShift : std::string_view()))
            .append(kKeyNames[key.code - kFirstKey]);
    const int letter = key.control && key.code < 0x20 ? key.code | 0x60 : key.code;
    return held + formats::utf8FromLatin1(std::string(1, static_cast<char>(letter)));
}

std::string textOf(const Message& message) {
    const std::string verb(verbOf(message.kind));
    switch (message.kind) {
    case Message::Kind::MouseDown:
    case Message::Kind::MouseUp:
    case Message::Kind::MouseMove:
    case Message::Kind::DoubleClick:
        return verb + ' ' + std::to_string(message.position.x) + ' ' +
               std::to_string(message.position.y);
    case Message::Kind::Key: return verb + ' ' + textOf(message.key);
    case Message::Kind::KeysOn:
    case Message::Kind::SpeechOn: return verb + ' ' + std::string(kOn);
    case Message::Kind::KeysOff:
    case Message::Kind::SpeechOff: return verb + ' ' + std::string(kOff);
    case Message::Kind::Command: return verb + ' ' + std::to_string(message.command);
    default: return verb;
    }
}

std::string textOf(const TimelineAnswer& answer) {
    if (answer.closesWindow) return "close";
    return (answer.checked ? "answer checked " : "answer ") +
           formats::utf8FromLatin1(answer.button);
}

std::string textOf(const TimelineScreenshot& shot) { return "screenshot " + shot.file; }

std::string textOf(const TimelineRun& run) { return "run " + formats::utf8FromLatin1(run.line); }

} // namespace

std::string lineOf(std::uint32_t timeMs, const Happening& what) {
    return std::to_string(timeMs) + ' ' +
           std::visit([](const auto& each) { return textOf(each); }, what);
}

std::string lineOf(std::span<const Turns> turns) {
    std::string line = "turns";
    for (const Turns& each : turns) {
        line += ' ' + std::to_string(each.ms);
        if (each.count > 1) line += '*' + std::to_string(each.count);
    }
    return line;
}

std::string dataLines(std::string_view bytes) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string lines = "data ";
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (i > 0 && i % kDataBytes == 0) lines += "\ndata ";
        const auto byte = static_cast<unsigned char>(bytes[i]);
        lines += kDigits[byte / 16];
        lines += kDigits[byte % 16];
    }
    return lines;
}

} // namespace platform
