#include "library/nelayout.h"

#include "filesystem.h"

#include <algorithm>

namespace rsc {

namespace {

constexpr std::string_view kAnew = "; without the line \"layout\" the library is laid out anew";

/// Resources may share bytes, but not without end.
constexpr std::size_t kMostResourceBytes = 4 * kLargestFile;

/// What of a file of this size no resource covers.
std::vector<ByteRange> gaps(std::vector<ByteRange> resources, std::size_t size) {
    std::ranges::sort(resources, {}, &ByteRange::offset);
    std::vector<ByteRange> free;
    std::size_t at = 0;
    for (const ByteRange& range : resources) {
        if (range.offset > at) free.push_back({at, range.offset - at});
        at = std::max(at, range.end());
    }
    if (at < size) free.push_back({at, size - at});
    return free;
}

} // namespace

Bytes layoutOf(const NeLibrary& library) {
    std::vector<ByteRange> resources;
    for (const ResourceEntry& entry : library.entries())
        resources.push_back({entry.offset, entry.length});
    std::vector<ByteRange> kept = gaps(std::move(resources), library.file().size());
    kept.insert(kept.end(), library.table().headers.begin(), library.table().headers.end());
    Bytes layout;
    for (const ByteRange& range : kept) {
        layout.resize(std::max(layout.size(), range.end()));
        std::ranges::copy(library.file().subspan(range.offset, range.length),
                          layout.begin() + static_cast<std::ptrdiff_t>(range.offset));
    }
    return layout;
}

LayoutFiller::LayoutFiller(ByteSpan layout)
    : layout_(layout), table_(readNeTable(layout)), contents_(table_.entries.size()) {
    std::size_t sum = 0;
    for (const ResourceEntry& entry : table_.entries) sum += entry.length;
    if (sizeOfFile() > kLargestFile || sum > kMostResourceBytes)
        throw Refusal("damaged layout: its resources are too large");
}

void LayoutFiller::add(std::string_view type, std::uint16_t id, ByteSpan data) {
    const auto entry = std::ranges::find_if(table_.entries, [&](const ResourceEntry& other) {
        return other.type == type && other.name.empty() && other.id == id;
    });
    if (entry == table_.entries.end()) {
        throw Refusal("the layout has no " + std::string(type) + " " + std::to_string(id) +
                      std::string(kAnew));
    }
    put(static_cast<std::size_t>(entry - table_.entries.begin()), data);
}

void LayoutFiller::addNumber(int number, ByteSpan data) {
    const auto index = static_cast<std::size_t>(number - 1);
    if (index >= table_.entries.size()) {
        throw Refusal("the layout has only " + std::to_string(table_.entries.size()) +
                      " resources");
    }
    put(index, data);
}

void LayoutFiller::put(std::size_t index, ByteSpan data) {
    const ResourceEntry& entry = table_.entries[index];
    if (contents_[index]) throw Refusal(entry.title() + " stands twice in the library");
    if (data.size() > entry.length) {
        throw Refusal(entry.title() + " has " + std::to_string(data.size()) +
                      " bytes, its place in the layout " + std::to_string(entry.length) +
                      std::string(kAnew));
    }
    contents_[index] = data;
}

Bytes LayoutFiller::build() const {
    Bytes file(sizeOfFile(), 0);
    std::ranges::copy(layout_, file.begin());
    for (std::size_t i = 0; i < contents_.size(); ++i) {
        const ResourceEntry& entry = table_.entries[i];
        if (!contents_[i])
            throw Refusal(entry.title() + " of the layout is missing" + std::string(kAnew));
        const auto rest = std::ranges::copy(*contents_[i], placeOf(entry, file).begin()).out;
        std::fill(rest, placeOf(entry, file).end(), std::uint8_t{0});
    }
    checkPlaces(file);
    return file;
}

/// Whether everything is still there after places that overlap have been filled.
void LayoutFiller::checkPlaces(std::span<std::uint8_t> file) const {
    for (std::size_t i = 0; i < contents_.size(); ++i) {
        const ResourceEntry& entry = table_.entries[i];
        const ByteSpan data = *contents_[i];
        const auto place = placeOf(entry, file);
        const auto isZero = [](std::uint8_t byte) { return byte == 0; };
        if (!std::ranges::equal(place.first(data.size()), data) ||
            !std::ranges::all_of(place.subspan(data.size()), isZero)) {
            throw Refusal(entry.title() +
                          " shares bytes with another resource, which are no "
                          "longer the same" +
                          std::string(kAnew));
        }
    }
    for (const auto& [offset, length] : table_.headers)
        if (!std::ranges::equal(file.subspan(offset, length), layout_.subspan(offset, length)))
            throw Refusal("a resource would change the library's headers" + std::string(kAnew));
}

std::span<std::uint8_t> LayoutFiller::placeOf(const ResourceEntry& entry,
                                              std::span<std::uint8_t> file) {
    return file.subspan(entry.offset, entry.length);
}

std::size_t LayoutFiller::sizeOfFile() const {
    std::size_t size = layout_.size();
    for (const ResourceEntry& entry : table_.entries)
        size = std::max(size, entry.offset + entry.length);
    return size;
}

} // namespace rsc
