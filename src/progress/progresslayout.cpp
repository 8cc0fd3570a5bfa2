#include "progress/progresslayout.h"

#include "formats/base/scanner.h"
#include "omformat.h"
#include "ompath.h"
#include "omplatform.h"
#include "omresourcelog.h"
#include "resources/mapproblems.h"
#include "world/locations.h"

#include <algorithm>
#include <span>

namespace {

constexpr std::string_view kFileName = "progress.map";
constexpr std::size_t kMaxLayoutSize = 65536;
constexpr std::size_t kLineLength = 199;
constexpr char kComment = ';';
constexpr std::string_view kHereWord = "HERE";
constexpr std::string_view kNoFlagWord = "-";

constexpr int kLastResource = 32767;
constexpr int kFarthest = 10'000; ///< pixels from the panel
constexpr int kLastColor = 255;
constexpr int kLastLocation = 46;

/// A location, the picture of its map button, and that one's place. Four level buttons and a check
/// box stand to its right.
struct BuiltInChoice {
    const char* location;
    int picture;
    int x;
    int y;
};
constexpr BuiltInChoice kCairo[] = {
    {"CBA1", 12032, 30, 90},  {"CBA2", 12033, 30, 140}, {"CMA", 12038, 30, 190},
    {"CWS1", 12021, 30, 240}, {"CWS2", 12022, 30, 290}, {"CWS3", 12023, 30, 340},
    {"CWS4", 12024, 30, 390},
};
constexpr BuiltInChoice kOasis[] = {
    {"OMA", 12039, 330, 90},   {"OWS1", 12025, 330, 140}, {"OWS2", 12026, 330, 190},
    {"OWS3", 12027, 330, 240}, {"OWS4", 12028, 330, 290}, {"PWS1", 12029, 330, 340},
    {"PWS2", 12030, 330, 390},
};

constexpr const char* kBuiltInCommon = R"(CLOSE 12001 580 16
REFUSAL 12002 260 200
NAME 40 24 -1 255
MUSIC 12003 480 16 12004 524 16
)";

std::string mapRows(std::span<const BuiltInChoice> choices) {
    std::string rows;
    for (const auto& [location, picture, x, y] : choices)
        rows += OMFormat("MAP %s %d %d %d\n", location, picture, x, y);
    return rows;
}

std::string levelRows(std::span<const BuiltInChoice> choices) {
    std::string rows;
    for (const auto& [location, picture, x, y] : choices)
        rows += OMFormat("LEVELS %s 12011 %d %d 12012 %d %d 12013 %d %d 12014 %d %d 12015 %d %d\n",
                         location, x + 90, y, x + 130, y, x + 170, y, x + 210, y, x + 256, y);
    return rows;
}

std::string builtInText() {
    const std::string practice = "PRACTICE\nPANEL 12100 0 0\nSOUND 12101\nHINT 12102\n";
    const std::string game = "GAME\nPANEL 12200 0 0\nSOUND 12201\nHINT 12202\n";
    return practice + kBuiltInCommon + "PART seenLapTrapInPractice 12103\n" + mapRows(kCairo) +
           mapRows(kOasis) + "PART seenProgressLevels 12104\n" + levelRows(kCairo) +
           levelRows(kOasis) + game + kBuiltInCommon + "PART seenCairoMap 12203 C*\n" +
           mapRows(kCairo) + "MAP CHUB 12035 30 440\nPART seenOasisMap 12204 O* P*\n" +
           mapRows(kOasis) + "MAP OHUB 12036 330 440\nPART seenProgressLevels 12104 C*\n" +
           levelRows(kCairo) + "PART seenProgressLevels 12104 O* P*\n" + levelRows(kOasis);
}

bool matches(std::string_view name, std::string_view place) {
    if (!place.ends_with('*')) return name == place;
    return name.starts_with(place.substr(0, place.size() - 1));
}

bool isPlace(std::string_view place) {
    for (int location = 1; location <= kLastLocation; ++location) {
        const std::string_view name = world::locationName(location);
        if (!name.empty() && matches(name, place)) return true;
    }
    return false;
}

/// Words and numbers of one line; the first that is wrong is remembered.
class Fields {
  public:
    explicit Fields(std::string_view line) : scanner_(line) {}

    std::string_view word() {
        const std::string_view found = scanner_.word();
        ok_ = ok_ && !found.empty();
        return found;
    }
    int number(int least, int most) {
        const std::optional<int> found = scanner_.number();
        ok_ = ok_ && found && *found >= least && *found <= most;
        return found.value_or(0);
    }
    int sound() { return number(OMEffectSounds::kNoSound, kLastResource); }
    int coordinate() { return number(-kFarthest, kFarthest); }
    ProgressPicture picture() {
        return {number(1, kLastResource), coordinate(), coordinate()}; // in this order
    }
    int location() {
        const std::string_view name = word();
        if (name == kHereWord) return kProgressHere;
        const int found = world::locationNamed(name);
        ok_ = ok_ && found != world::kNowhere;
        return found;
    }
    [[nodiscard]] bool hasMore() {
        scanner_.skipBlanks();
        return ok_ && !scanner_.atEnd();
    }
    /// Whether everything was right, and nothing is left.
    [[nodiscard]] bool areRight() { return ok_ && !hasMore(); }

  private:
    formats::TextScanner scanner_;
    bool ok_ = true;
};

class Reader {
  public:
    Reader(std::string_view path, std::string_view text) : problems_(path), scanner_(text) {}

    void readInto(ProgressLayouts& layouts);

  private:
    /// Where a line has its place.
    enum class Place { Anywhere, InLayout, InPart };
    struct Word {
        std::string_view name;
        Place place;
        /// Takes what the fields say; false when they are wrong.
        bool (Reader::*take)(Fields&);
        const char* form; ///< told when they are wrong
    };
    static const Word kWords[];

    void readLine(std::string_view line);
    /// What was read, if all of the line was right.
    template <class Value, class Target>
    static bool keep(Fields& fields, const Value& value, Target& target) {
        if (!fields.areRight()) return false;
        target = value;
        return true;
    }
    void problem(const char* text) { problems_(scanner_.lineNumber(), text); }

    bool begin(ProgressLayout& layout, Fields& fields);
    bool takePractice(Fields& fields) { return begin(layouts_->practice, fields); }
    bool takeGame(Fields& fields) { return begin(layouts_->game, fields); }
    bool takePanel(Fields& fields);
    template <std::optional<ProgressPicture> ProgressLayout::*Picture>
    bool takePicture(Fields& fields) {
        return keep(fields, fields.picture(), layout_->*Picture);
    }
    bool takeName(Fields& fields);
    bool takeMusic(Fields& fields);
    template <int ProgressLayout::*Sound>
    bool takeSound(Fields& fields) {
        return keep(fields, fields.sound(), layout_->*Sound);
    }
    bool takePart(Fields& fields);
    bool takeMapButton(Fields& fields);
    bool takeLevels(Fields& fields);

    MapProblems problems_;
    formats::TextScanner scanner_;
    ProgressLayouts* layouts_ = nullptr;
    ProgressLayout* layout_ = nullptr; ///< null before the first
    ProgressPart* part_ = nullptr;     ///< null after a part that is left out
};

const Reader::Word Reader::kWords[] = {
    {"PRACTICE", Place::Anywhere, &Reader::takePractice, "not of the form PRACTICE"},
    {"GAME", Place::Anywhere, &Reader::takeGame, "not of the form GAME"},
    {"PANEL", Place::InLayout, &Reader::takePanel, "not of the form PANEL id [x y]"},
    {"SOUND", Place::InLayout, &Reader::takeSound<&ProgressLayout::sound>,
     "not of the form SOUND id"},
    {"HINT", Place::InLayout, &Reader::takeSound<&ProgressLayout::hint>, "not of the form HINT id"},
    {"CLOSE", Place::InLayout, &Reader::takePicture<&ProgressLayout::closeButton>,
     "not of the form CLOSE id x y"},
    {"REFUSAL", Place::InLayout, &Reader::takePicture<&ProgressLayout::refusal>,
     "not of the form REFUSAL id x y"},
    {"NAME", Place::InLayout, &Reader::takeName, "not of the form NAME x y font colour"},
    {"MUSIC", Place::InLayout, &Reader::takeMusic, "not of the form MUSIC id x y id x y"},
    {"PART", Place::InLayout, &Reader::takePart,
     "not of the form PART flag sound [location]..., it is left out as a whole"},
    {"MAP", Place::InPart, &Reader::takeMapButton, "not of the form MAP location id x y"},
    {"LEVELS", Place::InPart, &Reader::takeLevels,
     "not of the form LEVELS location, 4 x (id x y), [id x y]"},
};

void Reader::readInto(ProgressLayouts& layouts) {
    layouts_ = &layouts;
    // One character more tells that a line is longer.
    for (std::string_view line = scanner_.line(kLineLength + 1); !line.empty();
         line = scanner_.line(kLineLength + 1)) {
        const std::string_view words = line.substr(0, line.find(kComment));
        if (words.size() > kLineLength)
            problem("longer than 199 characters, left out");
        else if (words.find_first_not_of(" \t") != std::string_view::npos)
            readLine(words);
    }
}

void Reader::readLine(std::string_view line) {
    Fields fields(line);
    const auto* word = std::ranges::find(kWords, fields.word(), &Word::name);
    if (word == std::end(kWords)) return problem("begins with no word of a layout, left out");
    if (word->place != Place::Anywhere && !layout_)
        return problem("PRACTICE or GAME must come before it, left out");
    if (word->place == Place::InPart && !part_) return;
    if (!(this->*word->take)(fields)) problem(word->form);
}

/// What comes before the first part is there at all locations.
bool Reader::begin(ProgressLayout& layout, Fields& fields) {
    if (!fields.areRight()) return false;
    layout = {};
    layout_ = &layout;
    part_ = &layout_->parts.emplace_back();
    return true;
}

bool Reader::takePanel(Fields& fields) {
    ProgressPicture panel{fields.number(1, kLastResource), OMAnimation::kEmbedded,
                          OMAnimation::kEmbedded};
    if (fields.hasMore()) {
        panel.x = fields.coordinate();
        panel.y = fields.coordinate();
    }
    return keep(fields, panel, layout_->panel);
}

bool Reader::takeName(Fields& fields) {
    const ProgressName name{fields.coordinate(), fields.coordinate(),
                            fields.number(ProgressName::kSystemFont, kLastResource),
                            fields.number(0, kLastColor)};
    return keep(fields, name, layout_->name);
}

bool Reader::takeMusic(Fields& fields) {
    return keep(fields, ProgressMusic{fields.picture(), fields.picture()}, layout_->music);
}

bool Reader::takePart(Fields& fields) {
    part_ = nullptr;
    ProgressPart part;
    part.flag = fields.word();
    if (part.flag == kNoFlagWord) part.flag.clear();
    part.sound = fields.sound();
    while (fields.hasMore()) part.places.emplace_back(fields.word());
    if (!fields.areRight() || !std::ranges::all_of(part.places, isPlace)) return false;
    part_ = &layout_->parts.emplace_back(std::move(part));
    return true;
}

bool Reader::takeMapButton(Fields& fields) {
    const ProgressMapButton button{fields.location(), fields.picture()};
    if (fields.areRight()) part_->mapButtons.push_back(button);
    return fields.areRight();
}

bool Reader::takeLevels(Fields& fields) {
    ProgressLevels levels{};
    levels.location = fields.location();
    for (ProgressPicture& button : levels.buttons) button = fields.picture();
    if (fields.hasMore()) levels.checkBox = fields.picture();
    if (fields.areRight()) part_->levels.push_back(levels);
    return fields.areRight();
}

} // namespace

bool ProgressPart::isAt(int location) const {
    const std::string_view name = world::locationName(location);
    return places.empty() || std::ranges::any_of(places, [name](const std::string& place) {
               return !name.empty() && matches(name, place);
           });
}

ProgressLayouts ProgressLayouts::builtIn() {
    const std::string text = builtInText();
    ProgressLayouts layouts;
    Reader("the built-in layouts", text).readInto(layouts);
    return layouts;
}

ProgressLayouts ProgressLayouts::read(std::string_view path, std::string_view text) {
    ProgressLayouts layouts = builtIn();
    Reader(path, text).readInto(layouts);
    return layouts;
}

ProgressLayouts ProgressLayouts::find() {
    const std::optional<std::string> path = OMPathResolveFilename(kFileName);
    if (!path) return builtIn();
    platform::Files& files = OMPlatform().files();
    if (const auto text = platform::readFile(files, *path, kMaxLayoutSize))
        return read(*path, *text);
    OMLogUnreadable(*path, "The built-in layout is used");
    return builtIn();
}
