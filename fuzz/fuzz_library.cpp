// A damaged resource library: parsed, listed and read in every buffer mode, from the file, through
// kept headers, from a copy in memory, and as a module. Whatever the bytes are, a resource lies
// within the file, all ways of reading it give the same bytes, and the resource manager knows what
// the library lists.
#include "fuzzmachine.h"

#include "omistreamdll16.h"
#include "omistreamres.h"
#include "omopenlibrary.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace {

using fuzzing::Bytes;
using fuzzing::expect;

constexpr const char* kName = "a.rsc";
constexpr std::size_t kMostUnit = 32768;
constexpr std::size_t kMostStreams = 12; ///< read in one input
constexpr std::size_t kMostPieces = 512; ///< in which one resource is read
constexpr std::size_t kRecord = 12;      ///< bytes of one resource in the table
constexpr std::size_t kMostTable = 0x10000;

using Names = std::vector<std::pair<std::string, int>>;

void checkPlaces(const formats::library::Index& library, const Names& names, std::size_t fileSize) {
    expect(names.size() <= kMostTable / kRecord, "no more resources than the table has room for");
    for (const auto& [type, id] : names) {
        const auto place = library.find(id, type);
        expect(place.has_value(), "what is listed is found");
        expect(place->offset <= fileSize, "a resource begins within the file");
        expect(place->length < fileSize - place->offset + kMostUnit,
               "a resource passes the end by less than one unit");
    }
}

Names listAll() {
    Names names;
    for (const std::string& type : OMIStreamDLL16::getResTypes(kName))
        for (const int id : OMIStreamDLL16::getResIDs(kName, type)) names.emplace_back(type, id);
    return names;
}

Bytes readInPieces(OMIStream& stream) {
    Bytes all(stream.current().begin(), stream.current().end()); // of a copy in memory: everything
    for (std::size_t pieces = 0; stream.fill() > 0; ++pieces) {
        expect(pieces <= kMostPieces, "a stream ends");
        all.insert(all.end(), stream.current().begin(), stream.current().end());
    }
    expect(all.size() <= stream.length(), "a stream gives no more than its length");
    return all;
}

/// What the file holds at the resource's place.
Bytes expected(const Bytes& file, const formats::library::Index::Place& place) {
    const auto begin = file.begin() + static_cast<std::ptrdiff_t>(place.offset);
    const std::size_t there = file.size() - static_cast<std::size_t>(place.offset);
    return {begin, begin + static_cast<std::ptrdiff_t>(std::min(place.length, there))};
}

void readEverywhere(const formats::library::Index& library, const Names& names, const Bytes& file) {
    std::size_t streams = 0;
    for (const auto& [type, id] : names) {
        if (id == 0 || ++streams > kMostStreams) continue;
        const Bytes wanted = expected(file, *library.find(id, type));
        const int piece = static_cast<int>(wanted.size() / 100 + 1);
        for (const int mode : {kOMIStreamCache, kOMIStreamBuffered, piece}) {
            OMIStreamDLL16 stream(id, type, kName, mode);
            expect(readInPieces(stream) == wanted, "a stream gives the bytes of the resource");
            stream.seek(static_cast<std::int64_t>(wanted.size() / 2));
            stream.fill();
            OMIStreamDLL16 copy(stream);
            copy.fill();
        }
    }
}

/// As the resources of a module.
void readModule(const formats::library::Index& library, const Names& names, const Bytes& file) {
    OMResFile module(kName);
    std::size_t streams = 0;
    for (const auto& [type, id] : names) {
        if (id == 0 || ++streams > kMostStreams) continue;
        const Bytes wanted = expected(file, *library.find(id, type));
        const int piece = static_cast<int>(wanted.size() / 100 + 1);
        for (const int mode : {kOMIStreamCache, piece}) {
            OMIStreamRes stream(id, type, &module, mode);
            expect(readInPieces(stream) == wanted, "a module gives the bytes of the resource");
        }
    }
}

void useManager(const Names& names) {
    OMResMgrUseDLL16(kName, true);
    for (const auto& [type, id] : names)
        expect(OMResMgrFindFile(id, type) != nullptr, "the manager finds what is listed");
    OMResMgrStopUsing(kName, true);
    for (const auto& [type, id] : names)
        expect(OMResMgrFindFile(id, type) == nullptr, "the manager forgets");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzing::World world;
    const Bytes bytes = fuzzing::Choices(data, size).rest();
    world.files.put(kName, bytes);
    world.makeApp();
    const auto file = world.files.open(kName, platform::OpenMode::Read);
    const auto library = OMReadLibrary(*file);
    const Names names = listAll();
    if (!library) {
        expect(names.empty(), "what is no library has no resources");
        return 0;
    }
    checkPlaces(*library, names, bytes.size());
    readEverywhere(*library, names, bytes);
    OMOpenLibrary::setKeepOpen(true);
    readEverywhere(*library, names, bytes);
    OMIStreamDLL16::cacheInfo(kName);
    readEverywhere(*library, names, bytes);
    readModule(*library, names, bytes);
    useManager(names);
    OMIStreamDLL16::uncacheInfo(kName);
    OMCachedFile::cache(kName);
    readEverywhere(*library, names, bytes);
    OMCachedFile::uncache(kName);
    return 0;
}
