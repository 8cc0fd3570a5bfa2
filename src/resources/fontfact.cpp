#include "resources/fontfact.h"

#include "omdebug.h"
#include "omfont.h"
#include "omformat.h"
#include "omid.h"
#include "omistream.h"
#include "omlog.h"
#include "omnfntfont.h"
#include "omttfont.h"

#include <algorithm>

namespace {

struct GameSubstitution {
    const char* face;
    int style;
    int size;
    int nfnt;
};
constexpr GameSubstitution kGameSubstitutions[] = {
    {"Geneva", 1, 10, 10},  {"Geneva", 0, 12, 11},  {"Geneva", 0, 14, 12},  {"Chicago", 0, 12, 20},
    {"Chicago", 0, 14, 21}, {"Chicago", 0, 10, 22}, {"Chicago", 0, 11, 23}, {"Arial", 0, 12, 30},
    {"Arial", 1, 12, 31},   {"Arial", 0, 10, 32},   {"Arial", 0, 11, 33},   {"Lumo", 0, 14, 40},
    {"Fenwyx", 0, 16, 50},
};

/// The rest of a line that has no end of its own.
constexpr const char* kDumping = ", dumping";

template <class... Cases>
struct Overloaded : Cases... {
    using Cases::operator()...;
};
template <class... Cases>
Overloaded(Cases...) -> Overloaded<Cases...>;

/// "font %p", "NFNT font %d" or "TT font %s %d %d".
std::string described(const RFontKey& key) {
    return std::visit(
        Overloaded{
            [](OMFont* font) { return OMFormat("font %p", static_cast<void*>(font)); },
            [](int id) { return OMFormat("NFNT font %d", id); },
            [](const RTrueTypeKey& face) {
                return OMFormat("TT font %s %d %d", face.face.c_str(), face.style, face.size);
            },
        },
        key);
}

/// As what stands for another font is named.
std::string substituteName(const RFontKey& key) {
    OMFont* const* font = std::get_if<OMFont*>(&key);
    return font ? OMFormat("%p", static_cast<void*>(*font)) : described(key);
}

std::string notReleased(const RFontKey& key) {
    return std::visit(
        Overloaded{
            [](OMFont*) { return std::string("FontFactory: Unknown font not released."); },
            [](int id) { return OMFormat("FontFactory: NFNT font with ID %d not released.", id); },
            [](const RTrueTypeKey& face) {
                return OMFormat("FontFactory: TrueType font %s %d %d not released.",
                                face.face.c_str(), face.style, face.size);
            },
        },
        key);
}

void note(const std::string& text) { OMLog::write(OMLog::Kind::Message, text); }
void warn(const std::string& text) { OMLog::write(OMLog::Kind::Warning, text); }

std::unique_ptr<OMFont> makeTrueType(const RTrueTypeKey& key) {
    if (key.face.empty() || !OMTTFont::isInstalled(key.face)) {
        warn("FontFactory: Cannot load TT font " + key.face);
        return nullptr;
    }
    auto font = std::make_unique<OMTTFont>(key.face);
    font->setSize(key.size);
    font->setStyle(key.style);
    return font;
}

} // namespace

FontFactory::FontFactory() = default;

FontFactory::~FontFactory() {
    for (const Record& record : records_) warn(notReleased(record.key));
}

void FontFactory::forgetResources() {
    for (Record& record : records_)
        record.isOutdated = record.isOutdated || std::holds_alternative<int>(record.key);
}

// Using

OMFont& FontFactory::useFont(std::unique_ptr<OMFont> font) {
    const RFontKey key(font.get());
    note("Starting to use " + described(key));
    if (const RFontKey* substitute = substituteFor(key)) {
        const RFontKey other = *substitute;
        note("\tSubstituting " + substituteName(other) + " for font " + described(key));
        forgetSubstitutions(*font);
        return use(other, 1);
    }
    return addRecord(key, std::move(font));
}

OMFont& FontFactory::useFont(OMFont& font) { return use(&font, 0); }

OMFont& FontFactory::useNFNT(int id) { return use(int{OMNarrowId(id)}, 0); }

OMFont& FontFactory::useTrueType(std::string_view face, int style, int size) {
    return use(RTrueTypeKey{std::string(face), style, size}, 0);
}

/// `replaced` counts the substitutions on the way here: those that go round in a circle end.
OMFont& FontFactory::use(const RFontKey& key, int replaced) {
    note("Starting to use " + described(key));
    const RFontKey* substitute = substituteFor(key);
    if (substitute && replaced < std::ssize(substitutions_)) {
        note("\tSubstituting " + substituteName(*substitute) + " for font " + described(key));
        return use(RFontKey(*substitute), replaced + 1);
    }
    if (Record* record = find(key)) {
        ++record->uses;
        return *record->font;
    }
    if (std::unique_ptr<OMFont> font = make(key)) return addRecord(key, std::move(font));
    return useFont(std::make_unique<OMSysFont>());
}

FontFactory::Record* FontFactory::find(const RFontKey& key) {
    // A font may be asked for by itself, whatever it was made for.
    OMFont* const* font = std::get_if<OMFont*>(&key);
    const auto found = std::ranges::find_if(records_, [&](const Record& record) {
        return font ? record.font.get() == *font : !record.isOutdated && record.key == key;
    });
    return found == records_.end() ? nullptr : &*found;
}

std::unique_ptr<OMFont> FontFactory::make(const RFontKey& key) const {
    if (const auto* id = std::get_if<int>(&key)) return makeNFNT(*id);
    if (const auto* face = std::get_if<RTrueTypeKey>(&key)) return makeTrueType(*face);
    return nullptr; // a font that is not the factory's
}

std::unique_ptr<OMFont> FontFactory::makeNFNT(int id) const {
    constexpr const char* kNoLocator = "NFNT URL is not installed in FontFactory";
    if (!OMDebug::check(static_cast<bool>(locator_), "NFNTURL == NULL", kNoLocator)) {
        warn(kNoLocator);
        return nullptr;
    }
    if (const std::unique_ptr<OMIStream> stream = locator_(id)) {
        auto font = std::make_unique<OMNFNTFont>(*stream);
        if (!font->isEmpty()) return font;
    }
    warn(OMFormat("FontFactory: Cannot load NFNT font with id %d", id));
    return nullptr;
}

OMFont& FontFactory::addRecord(RFontKey key, std::unique_ptr<OMFont> font) {
    records_.push_back({std::move(key), std::move(font)});
    return *records_.back().font;
}

void FontFactory::doneUsing(OMFont& font) {
    const auto record =
        std::ranges::find(records_, &font, [](const Record& listed) { return listed.font.get(); });
    if (record == records_.end()) return;
    const bool last = --record->uses == 0;
    note("Done using " + described(record->key) + (last ? kDumping : ""));
    if (!last) return;
    forgetSubstitutions(font);
    records_.erase(record);
}

// Substitutions

void FontFactory::addSubstitution(const RFontKey& source, const RFontKey& substitute) {
    const auto known = std::ranges::find(substitutions_, source, &Substitution::source);
    if (known != substitutions_.end())
        known->substitute = substitute;
    else
        substitutions_.push_back({source, substitute});
}

void FontFactory::addGameSubstitutions() {
    for (const GameSubstitution& row : kGameSubstitutions)
        addSubstitution(RTrueTypeKey{row.face, row.style, row.size}, row.nfnt);
}

const RFontKey* FontFactory::substituteFor(const RFontKey& key) const {
    const auto found = std::ranges::find(substitutions_, key, &Substitution::source);
    return found == substitutions_.end() ? nullptr : &found->substitute;
}

/// Another font may come to lie where this one was.
void FontFactory::forgetSubstitutions(const OMFont& font) {
    const RFontKey key(const_cast<OMFont*>(&font));
    std::erase_if(substitutions_,
                  [&](const Substitution& s) { return s.source == key || s.substitute == key; });
}
