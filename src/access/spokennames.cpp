#include "access/spokennames.h"

#include "activities/rmap.h"
#include "backpack/rbackpck.h"
#include "omao.h"
#include "omkeytargets.h"
#include "omlog.h"
#include "ommultitrinket.h"
#include "omplatform.h"
#include "omresourcelog.h"
#include "omsclass.h"
#include "omsregistry.h"
#include "puzzles/ranswer.h"
#include "puzzles/rcontainer.h"
#include "rhotspot.h"
#include "rpbutton.h"
#include "rsellist.h"
#include "rtext.h"
#include "startup/programresources.h"
#include "yheap.h"

#include "formats/base/latin1.h"
#include "platform/initext.h"

#include <algorithm>
#include <sstream>
#include <vector>

using platform::Point;
using platform::Rect;

namespace {

constexpr char kBehindSection = '\n';

/// Of a file, without its folders and extension, in lower case.
std::string sectionOf(std::string_view script) {
    const std::string_view name = script.substr(script.find_last_of("\\/") + 1);
    return formats::lowerLatin1(name.substr(0, name.find_last_of('.')));
}

/// As in the table: names of scripts with blanks between; none is one, too.
std::vector<std::string> sectionsOf(std::string_view names) {
    std::istringstream words{std::string(names)};
    std::vector<std::string> sections;
    for (std::string word; words >> word;) sections.push_back(sectionOf(word));
    if (sections.empty()) sections.emplace_back();
    return sections;
}

std::string keyIn(std::string_view section, std::string_view what) {
    return std::string(section) + kBehindSection + formats::lowerLatin1(what);
}

bool isLetter(char c) { return formats::isAsciiLetter(c) || static_cast<unsigned char>(c) >= 0xC0; }

/// A property of the class that holds a text; empty without it.
std::string textIn(const OMTrinket& trinket, std::string_view property) {
    const OMSR* const entry = trinket.classEntry();
    const OMSEntry* const row = entry ? entry->scriptClass().find(property) : nullptr;
    if (!row || !row->get || row->isNumber) return {};
    // Getters are for scripts, which may change what they read from.
    return RSpokenLine(row->get(const_cast<OMTrinket&>(trinket)));
}

/// As `textIn`, where scripts may keep what they like; a name has a letter.
std::string userText(const OMTrinket& trinket) {
    std::string text = textIn(trinket, "userData");
    return std::ranges::any_of(text, isLetter) ? text : std::string();
}

void join(std::string& texts, const std::string& text) {
    if (!texts.empty() && !text.empty()) texts += ' ';
    texts += text;
}

std::string ownTexts(const OMTrinket& trinket, std::size_t part) {
    if (const auto* list = dynamic_cast<const RSelList*>(&trinket)) {
        const SelectionList& names = const_cast<RSelList*>(list)->list();
        const int entry = names.firstVisible() + static_cast<int>(part);
        return entry < names.count() ? RSpokenLine(names.entry(entry)) : std::string();
    }
    std::string texts;
    for (const char* property : {"text", "text1", "text2"}) join(texts, textIn(trinket, property));
    return texts;
}

int kindOf(const OMTrinket& trinket) {
    const auto is = [&trinket]<class Class>(const Class*) {
        return dynamic_cast<const Class*>(&trinket) != nullptr;
    };
    constexpr const RPButton* kButton = nullptr;
    constexpr const RSelList* kList = nullptr;
    constexpr const RText* kText = nullptr;
    constexpr const RBackPack* kBackpack = nullptr;
    constexpr const RMap* kMap = nullptr;
    constexpr const RAnswer* kAnswer = nullptr;
    constexpr const RContainer* kContainer = nullptr;
    constexpr const OMAnimation* kAnimation = nullptr;
    if (is(kButton)) return spokentext::kButton;
    if (is(kList)) return spokentext::kList;
    if (is(kText)) return spokentext::kText;
    if (is(kBackpack)) return spokentext::kBackpack;
    if (is(kMap)) return spokentext::kMap;
    if (is(kAnswer)) return spokentext::kPiece;
    if (is(kContainer)) return spokentext::kPlace;
    if (is(kAnimation)) return spokentext::kPicture;
    return spokentext::kPlace;
}

} // namespace

std::string RSpokenLine(std::string_view text) {
    std::string line;
    bool isParted = false;
    for (const char c : text) {
        const bool isBlank = c == ' ' || c == '\n' || c == '\r' || c == '\t' || c == '\xA0';
        if (!isBlank) {
            if (isParted && !line.empty()) line += ' ';
            line += c;
        }
        isParted = isBlank;
    }
    return line;
}

SpokenNames::SpokenNames(const OMTrinketWindow& window, const RGameTexts& texts)
    : window_(window), texts_(texts) {
    readAgain();
}

void SpokenNames::readAgain() {
    table_.clear();
    if (!OMPlatform().files().exists(kTable)) return;
    auto bytes = platform::readFile(OMPlatform().files(), kTable, kMostTable);
    if (!bytes) return OMLogUnreadable(kTable, "Things are spoken without names");
    std::vector<formats::LackedLetter> lacked;
    const std::string text = formats::latin1FromAuthor(*std::move(bytes), lacked);
    const auto warn = [](int line, const std::string& what) {
        OMLog::write(OMLog::Kind::Warning, kTable + (":" + std::to_string(line)) + ": " + what);
    };
    for (const auto& [line, letter] : lacked)
        warn(line, "Latin-1 has no letter \"" + letter + "\", it became \"?\"");
    for (const platform::IniEntry& entry : platform::readIniText(text)) {
        if (entry.key.empty())
            warn(entry.line, "\"" + std::string(entry.value) +
                                 "\" has no \"=\"; write THING=NAME, or [SCRIPT]");
        for (const std::string& section : sectionsOf(entry.section))
            if (!entry.key.empty()) table_[keyIn(section, entry.key)] = entry.value;
    }
}

/// One of the script goes first.
std::string SpokenNames::tableEntry(std::string_view what) const {
    auto found = table_.find(keyIn(sectionOf(YHeap::current().script()), what));
    if (found == table_.end()) found = table_.find(keyIn({}, what));
    if (found == table_.end()) return {};
    const std::string* const meaning = texts_.meaningOf(found->second, {});
    return meaning ? *meaning : found->second;
}

std::string SpokenNames::tableName(const OMTrinket& trinket) const {
    if (table_.empty()) return {};
    std::string name;
    YHeap& heap = YHeap::current();
    for (int i = YHeap::kPredefined; i < heap.count() && name.empty(); ++i)
        // Others would be made what they lead to.
        if (heap.get(i).kind() == YVariable::Kind::Name && heap.get(i).object() == &trinket)
            name = tableEntry(heap.get(i).text());
    const auto* animation = dynamic_cast<const OMAnimation*>(&trinket);
    const std::string number =
        animation ? ' ' + std::to_string(animation->resourceId()) : std::string();
    if (const OMSR* entry = trinket.classEntry(); name.empty() && entry)
        name = tableEntry(std::string(entry->name()) + number);
    if (name.empty() && animation) name = tableEntry("ASEQ" + number);
    return name;
}

std::string SpokenNames::given(const OMTrinket& trinket, std::size_t part) const {
    std::string name;
    if (dynamic_cast<const RSelList*>(&trinket)) name = ownTexts(trinket, part);
    if (name.empty()) name = tableName(trinket);
    if (name.empty()) name = userText(trinket);
    if (name.empty()) name = ownTexts(trinket, part);
    if (name.empty()) name = textsOn(trinket);
    if (name.empty() && trinket.group()) name = given(*trinket.group(), 0);
    return name;
}

std::string SpokenNames::nameOf(const OMTrinket& trinket, std::size_t part) const {
    std::string name = given(trinket, part);
    return name.empty() ? RWarningText(kindOf(trinket)) : name;
}

std::string SpokenNames::backgroundName() const { return RWarningText(spokentext::kBackground); }

/// Texts whose middles are on it, and that lie above it.
std::string SpokenNames::textsOn(const OMTrinket& trinket) const {
    const Rect place = trinket.boundingRectangle();
    std::vector<const RText*> texts;
    (void)window_.findTrinket([&](OMTrinket& each) {
        const auto* text = dynamic_cast<const RText*>(&each);
        if (text && text != &trinket && text->isShown() && text->z() >= trinket.z()) {
            const Point middle = OMMiddle(text->boundingRectangle());
            if (platform::nearestInside(middle, place) == middle) texts.push_back(text);
        }
        return false;
    });
    std::vector<Rect> places;
    for (const RText* text : texts) places.push_back(text->boundingRectangle());
    std::string all;
    for (const std::size_t each : OMReadingOrder(places))
        join(all, RSpokenLine(texts[each]->text()));
    return all;
}

std::string SpokenNames::nameUnder(const Rect& place, const OMTrinket* carried) const {
    const Point middle = OMMiddle(place);
    std::string name;
    bool isContainer = false;
    (void)window_.findTrinket([&](OMTrinket& each) {
        const Rect own = each.boundingRectangle();
        const bool isOwn = &each == carried || (carried && each.group() == carried);
        if (isOwn || !each.isShown() || own.empty() ||
            platform::nearestInside(middle, own) != middle)
            return false;
        name = given(each, 0);
        isContainer = dynamic_cast<const RContainer*>(&each) != nullptr;
        return isContainer || !name.empty();
    });
    return name.empty() && isContainer ? RWarningText(spokentext::kPlace) : name;
}
