#include "manifest/manifest.h"

#include "fonts/fontlines.h"
#include "formats/base/latin1.h"
#include "library/maps.h"
#include "library/nelibrary.h"
#include "manifest/words.h"
#include "pictures/cursor.h"
#include "pictures/sequencetext.h"
#include "refusal.h"
#include "sounds/gamesound.h"
#include "text.h"

#include <algorithm>
#include <climits>
#include <map>
#include <span>
#include <utility>

namespace rsc {

namespace {

constexpr std::size_t kColourDigits = 6;

std::string numbered(std::string_view type, int id) {
    return std::string(type) + " " + std::to_string(id);
}

platform::Rgb parseColour(std::string_view text) {
    int value = 0;
    const char* end = text.data() + text.size();
    const auto [last, error] = std::from_chars(text.data(), end, value, 16);
    if (text.size() != kColourDigits || error != std::errc() || last != end || value < 0)
        throw Refusal(inQuotes(text) + " is no colour: it is written RRGGBB");
    return {static_cast<std::uint8_t>(value >> 16), static_cast<std::uint8_t>(value >> 8),
            static_cast<std::uint8_t>(value)};
}

class ManifestParser {
  public:
    explicit ManifestParser(std::string_view defaultIdentifier) {
        manifest_.mapIdentifier = defaultIdentifier;
    }

    Manifest parse(std::string_view text) {
        while (!text.empty()) {
            ++line_;
            const auto end = std::min(text.find('\n'), text.size());
            atLine(line_, [&] { readLine(text.substr(0, end)); });
            text.remove_prefix(std::min(end + 1, text.size()));
        }
        return std::move(manifest_);
    }

  private:
    /// The block that a line belongs to.
    enum class Block : std::uint8_t { Any, Palette, Library, Animation, Font };

    struct Keyword {
        std::string_view word;
        Block block;
        void (ManifestParser::*read)(WordReader&);
    };
    static std::span<const Keyword> keywords();

    void readLine(std::string_view line) {
        WordReader words(splitWords(line));
        if (words.atEnd()) return;
        const std::string word = words.text("a keyword");
        const auto keyword = std::ranges::find(keywords(), word, &Keyword::word);
        if (keyword == keywords().end()) refuseKeyword(word);
        checkBlock(*keyword);
        (this->*keyword->read)(words);
        words.finish();
    }

    [[noreturn]] static void refuseKeyword(const std::string& word) {
        const auto meant = std::ranges::find(keywords(), formats::lowerAscii(word), &Keyword::word);
        if (meant != keywords().end())
            throw Refusal("unknown keyword " + inQuotes(word) + ": write " + inQuotes(meant->word));
        std::string known;
        for (const Keyword& keyword : keywords())
            known += (known.empty() ? "" : ", ") + std::string(keyword.word);
        throw Refusal("unknown keyword " + inQuotes(word) + ": a line begins with one of " + known);
    }

    void checkBlock(const Keyword& keyword) const {
        const std::string start = inQuotes(keyword.word) + " belongs below ";
        if (keyword.block == Block::Palette && !inPalette_)
            throw Refusal(start + "a \"palette\" line");
        if (keyword.block == Block::Library && manifest_.libraries.empty())
            throw Refusal(start + "a \"library\" line");
        if (keyword.block == Block::Animation && !animation_)
            throw Refusal(start + "an \"animation\" or \"picture\" line");
        if (keyword.block == Block::Font && !font_) throw Refusal(start + "a \"font\" line");
    }

    void readMap(WordReader& words) {
        if (manifest_.mapLine != 0)
            throw Refusal("the map stands already in line " + std::to_string(manifest_.mapLine));
        manifest_.mapLine = line_;
        manifest_.mapIdentifier.reset();
        if (!words.skip("none")) {
            const std::string given = words.text("the map's identifier");
            manifest_.mapIdentifier = formats::latin1FromUtf8(given);
            if (!manifest_.mapIdentifier)
                throw Refusal(inQuotes(given) +
                              " has a letter that Latin-1, and so the map, lacks");
            checkMapIdentifier(*manifest_.mapIdentifier);
        }
        leaveBlocks();
    }

    void readAudioMap(WordReader&) {
        manifest_.audioMapLine = line_;
        leaveBlocks();
    }

    void readPalette(WordReader& words) {
        const std::string name = words.text("the palette's name");
        for (const PalettePlan& other : manifest_.palettes)
            if (other.name == name) throw Refusal(alreadyThere("palette " + name, other.line));
        manifest_.palettes.push_back({name, line_, words.skip("reduced"), {}, {}});
        leaveBlocks();
        inPalette_ = true;
    }

    void readFrom(WordReader& words) {
        PalettePlan& palette = manifest_.palettes.back();
        if (palette.indexed) throw Refusal("a palette has either \"from\" or \"indexed\"");
        do palette.pictures.push_back({words.text("a picture's name"), line_});
        while (!words.atEnd());
    }

    void readIndexed(WordReader& words) {
        PalettePlan& palette = manifest_.palettes.back();
        if (palette.indexed || !palette.pictures.empty())
            throw Refusal("a palette has either \"from\" or one \"indexed\"");
        palette.indexed = FileName{words.text("the picture's name"), line_};
    }

    void readLibrary(WordReader& words) {
        const std::string name = checkedLibraryName(words.text("the library's name"));
        for (const LibraryPlan& other : manifest_.libraries)
            if (other.name == name) throw Refusal(alreadyThere("library " + name, other.line));
        manifest_.libraries.push_back({name, line_, {}, {}});
        resourceLines_.clear();
        leaveBlocks();
    }

    void readLayout(WordReader& words) {
        auto& layout = manifest_.libraries.back().layout;
        if (layout) throw Refusal(alreadyThere("the layout", layout->line));
        layout = FileName{words.text("the file's name"), line_};
        leaveBlocks();
    }

    void readUse(WordReader& words) {
        usedPalette_ = paletteNamed(words);
        leaveBlocks();
    }

    void readColours(WordReader& words) {
        const int id = readId(words);
        addResource("RRGB", id, ColoursPlan{paletteNamed(words)});
    }

    void readPicture(WordReader& words) {
        readAnimation(words);
        animation_->frames.push_back({{words.text("the picture's name"), line_}, 0, 0});
    }

    void readAnimation(WordReader& words) {
        AnimationPlan animation;
        animation.palette = usedPalette_;
        animation_ = &addResource("ASEQ", readId(words), std::move(animation));
    }

    void readFont(WordReader& words) {
        const int id = readId(words);
        font_ = &addResource("NFNT", id, parseFont(words, line_));
    }

    void readCursor(WordReader& words) {
        const int id = readId(words);
        CursorPlan cursor{{words.text("the picture's name"), line_}, {}};
        cursor.hotSpot.x = words.number("x of the hot spot", 0, kLargestCursor - 1);
        cursor.hotSpot.y = words.number("y of the hot spot", 0, kLargestCursor - 1);
        addResource("CURSOR", id, std::move(cursor));
    }

    void readFile(WordReader& words) {
        const std::string type = words.text("the type");
        if (!isResourceType(type))
            throw Refusal(inQuotes(type) + " is no type: it has four characters, or is a standard "
                                           "type such as CURSOR");
        const int id = readId(words);
        PlainFilePlan plain{{words.text("the file's name"), line_}};
        if (type == kSoundType) plain.isUnchecked = words.skip("unchecked");
        addResource(type, id, std::move(plain));
    }

    void readSound(WordReader& words) {
        const int id = readId(words);
        SoundPlan sound{{words.text("the file's name"), line_}, {}};
        if (words.skip("rate")) {
            const int rate = words.number("the rate", 1, INT_MAX);
            if (std::ranges::find(formats::sound::kRates, rate) == formats::sound::kRates.end())
                throw Refusal("the rate is " + std::to_string(rate) + ", the game's sounds have " +
                              gameRates());
            sound.rate = rate;
        }
        addResource(std::string(kSoundType), id, std::move(sound));
    }

    void readPart(WordReader& words) {
        const int number = words.number("the number", 1, kLargestInt16);
        PartPlan part{number, {words.text("the file's name"), line_}};
        manifest_.libraries.back().resources.push_back({{}, 0, line_, std::move(part)});
        leaveBlocks();
    }

    void readRate(WordReader& words) {
        animation_->rate = words.number("the rate", 1, kLargestByte);
    }

    void readPlace(WordReader& words) {
        animation_->x = words.number("x", formats::animation::kSmallestPlace,
                                     formats::animation::kLargestPlace);
        animation_->y = words.number("y", formats::animation::kSmallestPlace,
                                     formats::animation::kLargestPlace);
        if (!words.atEnd()) animation_->depth = words.number("the depth", 0, kLargestByte);
    }

    void readCrop(WordReader& words) {
        if (!words.skip("no")) throw Refusal("\"crop\" is followed by \"no\"");
        animation_->crop = false;
    }

    void readRemap(WordReader&) { animation_->remap = true; }

    void readTransparent(WordReader& words) {
        Transparency& transparency = animation_->transparency;
        if (words.skip("alpha")) {
            transparency = {};
        } else if (words.skip("none")) {
            transparency.kind = Transparency::Kind::None;
        } else if (words.skip("index")) {
            transparency.kind = Transparency::Kind::Index;
            transparency.index = words.number("the index", 0, kLargestByte);
        } else if (words.skip("colour")) {
            transparency.kind = Transparency::Kind::Colour;
            transparency.colour = parseColour(words.text("the colour"));
        } else {
            throw Refusal("\"transparent\" is followed by \"alpha\", \"none\", \"index N\" or "
                          "\"colour RRGGBB\"");
        }
    }

    void readFrame(WordReader& words) {
        const std::size_t first = animation_->frames.size();
        do animation_->frames.push_back({{words.text("a picture's name"), line_}, 0, 0});
        while (!words.atEnd() && !words.peek()->is("offset"));
        if (!words.skip("offset")) return;
        const int dx = words.number("dx", kSmallestInt16, kLargestInt16);
        const int dy = words.number("dy", kSmallestInt16, kLargestInt16);
        for (std::size_t i = first; i < animation_->frames.size(); ++i) {
            animation_->frames[i].dx = dx;
            animation_->frames[i].dy = dy;
        }
    }

    void readSequence(WordReader& words) {
        animation_->sequences.push_back({line_, parseSequence(words)});
    }

    void readChars(WordReader& words) { parseChars(words, *font_); }
    void readLeading(WordReader& words) { parseLeading(words, *font_); }
    void readBytes(WordReader& words) { parseByteOrder(words, *font_); }

    int readId(WordReader& words) { return words.number("the id", 1, kLargestId); }

    PaletteIndex paletteNamed(WordReader& words) {
        const std::string name = words.text("the palette's name");
        const auto palette = std::ranges::find(manifest_.palettes, name, &PalettePlan::name);
        if (palette == manifest_.palettes.end())
            throw Refusal("there is no palette " + inQuotes(name) + " above");
        return static_cast<PaletteIndex>(palette - manifest_.palettes.begin());
    }

    /// Leaves the blocks; the content stays in its place until the next one is added.
    template <class Content>
    Content& addResource(const std::string& type, int id, Content content) {
        const auto [other, isNew] = resourceLines_.try_emplace({type, id}, line_);
        if (!isNew) throw Refusal(alreadyThere(numbered(type, id), other->second));
        auto& resources = manifest_.libraries.back().resources;
        resources.push_back({type, static_cast<std::uint16_t>(id), line_, std::move(content)});
        leaveBlocks();
        return std::get<Content>(resources.back().content);
    }

    static std::string alreadyThere(const std::string& what, int line) {
        return what + " stands already in line " + std::to_string(line);
    }

    void leaveBlocks() {
        animation_ = nullptr;
        font_ = nullptr;
        inPalette_ = false;
    }

    Manifest manifest_;
    int line_ = 0;
    bool inPalette_ = false; ///< below the line of the last palette
    std::optional<PaletteIndex> usedPalette_;
    std::map<std::pair<std::string, int>, int> resourceLines_; ///< of the last library
    AnimationPlan* animation_ = nullptr; ///< the last resource of the last library, or none
    FontPlan* font_ = nullptr;           ///< the same
};

std::span<const ManifestParser::Keyword> ManifestParser::keywords() {
    static constexpr Keyword kKeywords[] = {
        {"map", Block::Any, &ManifestParser::readMap},
        {"audiomap", Block::Any, &ManifestParser::readAudioMap},
        {"palette", Block::Any, &ManifestParser::readPalette},
        {"library", Block::Any, &ManifestParser::readLibrary},
        {"use", Block::Any, &ManifestParser::readUse},
        {"from", Block::Palette, &ManifestParser::readFrom},
        {"indexed", Block::Palette, &ManifestParser::readIndexed},
        {"layout", Block::Library, &ManifestParser::readLayout},
        {"colours", Block::Library, &ManifestParser::readColours},
        {"picture", Block::Library, &ManifestParser::readPicture},
        {"animation", Block::Library, &ManifestParser::readAnimation},
        {"font", Block::Library, &ManifestParser::readFont},
        {"cursor", Block::Library, &ManifestParser::readCursor},
        {"sound", Block::Library, &ManifestParser::readSound},
        {"file", Block::Library, &ManifestParser::readFile},
        {"part", Block::Library, &ManifestParser::readPart},
        {"rate", Block::Animation, &ManifestParser::readRate},
        {"place", Block::Animation, &ManifestParser::readPlace},
        {"crop", Block::Animation, &ManifestParser::readCrop},
        {"remap", Block::Animation, &ManifestParser::readRemap},
        {"transparent", Block::Animation, &ManifestParser::readTransparent},
        {"frame", Block::Animation, &ManifestParser::readFrame},
        {"sequence", Block::Animation, &ManifestParser::readSequence},
        {"chars", Block::Font, &ManifestParser::readChars},
        {"leading", Block::Font, &ManifestParser::readLeading},
        {"bytes", Block::Font, &ManifestParser::readBytes},
    };
    return kKeywords;
}

} // namespace

Manifest parseManifest(std::string_view text, std::string_view defaultIdentifier) {
    Manifest manifest =
        ManifestParser(defaultIdentifier).parse(formats::utf8FromAuthor(std::string(text)));
    checkManifest(manifest);
    return manifest;
}

} // namespace rsc
