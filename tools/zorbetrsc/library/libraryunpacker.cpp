#include "library/libraryunpacker.h"

#include "fonts/fontbuilder.h"
#include "library/nelayout.h"
#include "manifest/words.h"
#include "pictures/animationunpacker.h"
#include "pictures/cursor.h"
#include "sounds/gamesound.h"
#include "text.h"

#include <algorithm>
#include <numeric>

namespace rsc {

namespace {

constexpr std::string_view kLayoutName = "library.layout";
/// What becomes more than a file of its bytes.
constexpr std::string_view kMadeTypes[] = {"RRGB", "ASEQ", "NFNT", "CURSOR"};

/// Resources may share bytes, but not so many that a small file unpacks to a huge one.
constexpr std::size_t kMostSharing = 4;
constexpr std::size_t kAnySharing = std::size_t{1} << 20;

/// Whether `data` becomes `stored` again when it is filled up with zeros to the next unit.
bool fillsUpTo(ByteSpan data, ByteSpan stored, std::size_t unit) {
    return data.size() <= stored.size() && stored.size() - data.size() < unit &&
           std::ranges::equal(data, stored.first(data.size())) &&
           std::ranges::all_of(stored.subspan(data.size()), [](int byte) { return byte == 0; });
}

/// The bytes of a cursor's file; none when it is no such file.
std::optional<std::size_t> cursorLength(const ResourceEntry& entry, ByteSpan stored) {
    if (entry.type != "CURSOR") return std::nullopt;
    const auto file = formats::picture::readCursorFile(stored); // of damage was told before
    return file.ok() ? std::optional(file.value.length) : std::nullopt;
}

Bytes copyOf(ByteSpan bytes) { return {bytes.begin(), bytes.end()}; }

} // namespace

std::vector<std::size_t> LibraryUnpacker::orderOf(const NeLibrary& library, const MapLibrary* map) {
    std::vector<std::size_t> order(library.entries().size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    if (!map) return order;
    std::map<std::pair<std::string, int>, std::size_t> places;
    for (const formats::map::Resource& resource : map->resources)
        places.try_emplace({resource.type, resource.id}, places.size());
    std::ranges::stable_sort(order, {}, [&](std::size_t index) {
        const ResourceEntry& entry = library.entries()[index];
        const auto place = places.find({entry.type, entry.id});
        return place == places.end() ? places.size() : place->second;
    });
    return order;
}

void LibraryUnpacker::checkSharing() const {
    std::set<Range> ranges;
    for (const ResourceEntry& entry : library_.entries())
        ranges.insert({entry.offset, entry.length});
    std::size_t sum = 0;
    for (const auto& [offset, length] : ranges) sum += length;
    if (sum > kMostSharing * library_.file().size() + kAnySharing)
        throw Refusal("damaged library: its resources overlap");
}

UnpackedLibrary LibraryUnpacker::unpack() {
    checkSharing();
    for (const std::size_t index : order_) unpackEntry(index);
    finish();
    return std::move(result_);
}

void LibraryUnpacker::unpackEntry(std::size_t index) {
    const ResourceEntry& entry = library_.entries()[index];
    const bool isPart = !isExpressible(entry);
    if (!isPart && std::ranges::find(kMadeTypes, entry.type) != std::end(kMadeTypes)) {
        const bool isNew = made_.insert({entry.offset, entry.length}).second;
        if (isNew && unpackMade(entry)) {
            packed_.back().index = index;
            return;
        }
        if (!isNew) note(entry, "stays as it is, since it shares its bytes with another one");
    }
    keepFile(index, isPart);
}

/// Whether a line of the manifest can name it. Takes its type and id, which only one line can have.
bool LibraryUnpacker::isExpressible(const ResourceEntry& entry) {
    const bool named = isResourceType(entry.type) && entry.name.empty() && entry.id != 0;
    if (!named || !keys_.insert({entry.type, entry.id}).second) return false;
    const bool fits = !mapped_ || fitsMap(entry.type) == isMapped(given_.name);
    return fits && entry.length > 0 && asName(entry.type).has_value();
}

bool LibraryUnpacker::unpackColours(const ResourceEntry& entry) {
    const GivenPalette* palette = palettes_.find(given_, entry.id);
    if (!palette) return false;
    Bytes packed = Palette::fromColours(palette->shown).resource();
    if (!fillsUpTo(packed, library_.data(entry), unit())) {
        note(entry, "stays as it is: its picture cannot tell all that it stores");
        return false;
    }
    result_.lines += "    colours " + std::to_string(entry.id) + " " + palette->name() + "\n";
    addMade(std::move(packed));
    return true;
}

bool LibraryUnpacker::unpackMade(const ResourceEntry& entry) {
    if (entry.type == "RRGB") return unpackColours(entry);
    try {
        if (entry.type == "ASEQ") return unpackAnimated(entry);
        const ByteSpan stored = library_.data(entry);
        if (entry.type == "CURSOR" && !formats::picture::isCursorFile(stored)) return false;
        auto unpacked = entry.type == "NFNT" ? unpackFont(stored, entry.id, nameOf(entry))
                                             : unpackCursor(stored, entry.id, nameOf(entry));
        if (!comesBack(entry, unpacked)) return false;
        addUnpacked(std::move(*unpacked));
        return true;
    } catch (const Refusal& refusal) {
        result_.faults.push_back(entry.title() + ": " + refusal.what());
        return false;
    }
}

bool LibraryUnpacker::unpackAnimated(const ResourceEntry& entry) {
    const GivenPalette& palette = palettes_.fitting(given_, entry.id);
    auto unpacked = unpackAnimation(library_.data(entry), entry.id, palette.shown, nameOf(entry));
    if (!comesBack(entry, unpacked)) return false;
    usePalette(palette);
    addUnpacked(std::move(*unpacked));
    return true;
}

bool LibraryUnpacker::comesBack(const ResourceEntry& entry,
                                const std::optional<UnpackedResource>& unpacked) {
    const bool isSame = unpacked && fillsUpTo(unpacked->packed, library_.data(entry), unit());
    if (!isSame) note(entry, "stays as it is: unpacked, it would be packed to other bytes");
    return isSame;
}

void LibraryUnpacker::addUnpacked(UnpackedResource unpacked) {
    result_.lines += unpacked.lines;
    std::ranges::move(unpacked.files, std::back_inserter(result_.files));
    addMade(std::move(unpacked.packed));
}

/// New truecolour pictures of the author are to find the palette in which the others are.
void LibraryUnpacker::usePalette(const GivenPalette& palette) {
    if (!palette.library || used_ == palette.name()) return;
    used_ = palette.name();
    result_.lines += "    use " + used_ + "\n";
}

/// Its entry is filled in by the caller.
void LibraryUnpacker::addMade(Bytes packed) {
    packed_.push_back({0, false, std::move(packed), {}});
    packed_.back().data = packed_.back().made; // stays where it is when `packed_` grows
}

void LibraryUnpacker::keepFile(std::size_t index, bool isPart) {
    const ResourceEntry& entry = library_.entries()[index];
    const std::string file = fileOf(entry);
    result_.lines +=
        "    " +
        (isPart ? "part " + std::to_string(index + 1) + " " + file : fileLine(entry, file)) + "\n";
    packed_.push_back({index, isPart, {}, library_.data(entry)});
}

/// Packing leaves sounds as they are that the game plays; those that it does not must be let pass.
std::string LibraryUnpacker::fileLine(const ResourceEntry& entry, const std::string& file) {
    const std::string rest = std::to_string(entry.id) + " " + file;
    const std::string line = "file " + asName(entry.type).value() + " " + rest;
    if (entry.type != kSoundType) return line;
    const SoundReport report = examineSound(contentOf(entry));
    const bool isWhole = cutOffText(report.facts).empty();
    if (report.isReady() && isWhole && report.facts.kind == formats::sound::Facts::Kind::Riff)
        return "sound " + rest;
    if (report.isReady() || report.heard == Heard::WrongSpeed) return line;
    note(entry, "stays as it is: " + report.fault);
    return line + " unchecked";
}

/// What its file holds: the resource, without what fills it up to the unit where that is known.
ByteSpan LibraryUnpacker::contentOf(const ResourceEntry& entry) const {
    const ByteSpan stored = library_.data(entry);
    const auto riff = riffLength(stored);
    const ByteSpan file =
        stored.first((riff ? riff : cursorLength(entry, stored)).value_or(stored.size()));
    return fillsUpTo(file, stored, unit()) ? file : stored;
}

/// Resources that are the same bytes of the library share a file.
std::string LibraryUnpacker::fileOf(const ResourceEntry& entry) {
    const auto [file, isNew] = files_.try_emplace({entry.offset, entry.length});
    if (isNew) file->second = newFile(entry);
    return file->second;
}

std::string LibraryUnpacker::newFile(const ResourceEntry& entry) {
    const ByteSpan stored = library_.data(entry);
    const std::string& name = nameOf(entry);
    const bool isRiff = riffLength(stored).has_value();
    if (isRiff || cursorLength(entry, stored)) {
        const std::string fileName = name + (isRiff ? ".wav" : ".cur");
        result_.files.push_back({fileName, copyOf(contentOf(entry))});
        return fileName;
    }
    const auto sound = entry.type == "WAVE" ? macSoundToWav(stored) : std::nullopt;
    const std::string file = name + (sound ? ".snd" : ".bin");
    result_.files.push_back({file, copyOf(stored)});
    if (sound) {
        result_.files.push_back({name + ".wav", *sound});
        result_.lines += "    # " + name + ".wav sounds like the next one\n";
    }
    return file;
}

const std::string& LibraryUnpacker::nameOf(const ResourceEntry& entry) {
    std::string& name = names_[&entry];
    if (name.empty()) name = given_.folder + "/" + safeNames_.take(entry);
    return name;
}

void LibraryUnpacker::finish() {
    std::string head = "library " + asName(given_.name).value() + "\n";
    if (!comesBackWithoutLayout()) {
        OutputFile layout{given_.folder + "/" + std::string(kLayoutName), layoutOf(library_)};
        if (!comesBackWith(layout.data))
            throw Refusal("damaged library: its layout cannot be kept");
        head += "    layout " + layout.name + "\n";
        result_.notes.push_back("was made elsewhere: its layout is kept in " + layout.name);
        result_.files.push_back(std::move(layout));
    }
    result_.lines.insert(0, head);
}

bool LibraryUnpacker::comesBackWithoutLayout() const {
    if (packed_.empty() || std::ranges::any_of(packed_, &Packed::isPart)) return false;
    std::size_t size = 0;
    for (const Packed& packed : packed_) size += packed.data.size();
    if (size > library_.file().size()) return false; // bytes are shared
    std::vector<Resource> resources;
    for (const Packed& packed : packed_) {
        const ResourceEntry& entry = library_.entries()[packed.index];
        resources.push_back({entry.type, entry.id, copyOf(packed.data)});
    }
    try {
        const Bytes built = buildNeLibrary(moduleNameOf(given_.name), resources);
        return std::ranges::equal(built, library_.file());
    } catch (const Refusal&) {
        return false;
    }
}

bool LibraryUnpacker::comesBackWith(const Bytes& layout) const {
    try {
        LayoutFiller filler(layout);
        for (const Packed& packed : packed_) {
            const ResourceEntry& entry = library_.entries()[packed.index];
            if (packed.isPart)
                filler.addNumber(static_cast<int>(packed.index) + 1, packed.data);
            else
                filler.add(entry.type, entry.id, packed.data);
        }
        return std::ranges::equal(filler.build(), library_.file());
    } catch (const Refusal&) {
        return false;
    }
}

void LibraryUnpacker::note(const ResourceEntry& entry, const std::string& text) {
    result_.notes.push_back(entry.title() + " " + text);
}

} // namespace rsc
