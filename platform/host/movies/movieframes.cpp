#include "platform/host/movies/movieframes.h"

#include "platform/waveout.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace platform {

namespace {

constexpr std::uint32_t kMaxFrames = 0xFFFFFF;
constexpr std::uint32_t kMaxTreesSize = 4 << 20; // the largest useful ones have half a megabyte
constexpr std::uint32_t kMaxFrameSize = 64 << 20;

bool isPlayable(const formats::MovieHeader& header, std::size_t track) {
    const auto format = header.sound(track);
    return format && !header.hasOtherCodec(track) && format->rate >= WaveOut::kMinRate &&
           format->rate <= WaveOut::kMaxRate;
}

bool isSane(const formats::MovieHeader& header, std::uint64_t fileSize) {
    const auto isSide = [](std::uint64_t side) {
        return side >= 1 && side <= MovieFacts::kMaxSide;
    };
    return isSide(header.width) && isSide(header.shownHeight()) && header.frames >= 1 &&
           header.frames < kMaxFrames && header.treesSize <= kMaxTreesSize &&
           header.frameTime() <= std::numeric_limits<int>::max() &&
           header.framesStart() <= fileSize;
}

/// From the file's place on; fewer than asked for when there are no more.
formats::Bytes readBytes(MovieFile& file, std::uint64_t size) {
    formats::Bytes bytes(size);
    bytes.resize(file.read(std::as_writable_bytes(std::span(bytes))));
    return bytes;
}

} // namespace

std::optional<MovieFacts> MovieFacts::read(File& file) {
    formats::Bytes bytes(formats::MovieHeader::kSize);
    if (!file.seek(0)) return std::nullopt;
    bytes.resize(file.read(std::as_writable_bytes(std::span(bytes))));
    const auto header = formats::readMovieHeader(bytes);
    if (!header || !isSane(*header, file.size())) return std::nullopt;
    MovieFacts facts;
    facts.width = static_cast<int>(header->width);
    facts.height = static_cast<int>(header->height);
    facts.doubled = header->isDoubled();
    facts.frames = static_cast<int>(header->frames);
    facts.frameTime = static_cast<int>(header->frameTime());
    facts.header = *header;
    for (std::size_t track = formats::kMovieTracks; track-- > 0;)
        if (isPlayable(*header, track)) facts.track = track;
    return facts;
}

std::unique_ptr<MovieFrames> MovieFrames::open(MovieFile& file, const MovieFacts& facts,
                                               const Clock& clock) {
    const formats::MovieHeader& header = facts.header;
    file.seek(formats::MovieHeader::kSize);
    const formats::Bytes tables = readBytes(file, header.tablesSize());
    const formats::Bytes trees = readBytes(file, header.treesSize);
    if (tables.size() != header.tablesSize() || trees.size() != header.treesSize) return nullptr;
    auto entries = formats::readMovieTables(tables);
    entries.resize(header.frames); // without the ring frame
    for (const formats::MovieFrameEntry& entry : entries)
        if (entry.size > kMaxFrameSize) return nullptr;
    auto decoder = formats::MovieDecoder::make(header, trees, facts.track);
    if (!decoder) return nullptr;
    return std::unique_ptr<MovieFrames>(
        new MovieFrames(file, facts, clock, std::move(entries), *std::move(decoder)));
}

MovieFrames::MovieFrames(MovieFile& file, const MovieFacts& facts, const Clock& clock,
                         std::vector<formats::MovieFrameEntry> entries,
                         formats::MovieDecoder decoder)
    : file_(file), clock_(clock), width_(static_cast<std::size_t>(facts.width)),
      treesSize_(facts.header.treesSize), start_(facts.header.framesStart()),
      entries_(std::move(entries)), decoder_(std::move(decoder)), place_(start_) {
    for (int i = 0; i < facts.frames; ++i) {
        const formats::MovieFrameEntry& entry = entries_[static_cast<std::size_t>(i)];
        size_ += entry.size;
        const bool isWhole = start_ + size_ <= file_.size();
        if (isWhole && facts.track && entry.contents & entry.hasSound(*facts.track))
            lastWithSound_ = i;
    }
}

void MovieFrames::next() {
    decoder_.forgetSound();
    if (frame_ < static_cast<int>(entries_.size())) ++frame_;
    if (frame_ == static_cast<int>(entries_.size())) return;
    const formats::MovieFrameEntry& entry = entries_[static_cast<std::size_t>(frame_)];
    const std::uint64_t place = std::exchange(place_, place_ + entry.size);
    if (place_ > file_.size()) return;
    file_.seek(place);
    bytes_.resize(entry.size);
    if (file_.read(std::as_writable_bytes(std::span(bytes_))) != entry.size) return;
    largestFrame_ = std::max<std::size_t>(largestFrame_, entry.size);
    const std::uint32_t start = clock_.milliseconds();
    if (decoder_.decode(bytes_, entry.contents))
        std::ranges::transform(decoder_.palette(), palette_.begin(), [](const auto& colour) {
            return Rgb{colour.red, colour.green, colour.blue};
        });
    decodeMs_ += clock_.milliseconds() - start;
    largestSound_ = std::max(largestSound_, decoder_.sound().size());
}

void MovieFrames::rewind() {
    decoder_.rewind();
    palette_ = {};
    frame_ = -1;
    place_ = start_;
}

const std::uint8_t* MovieFrames::row(int y) const {
    return decoder_.picture().data() + static_cast<std::size_t>(y) * width_;
}

std::size_t MovieFrames::highestMemory() const {
    constexpr std::size_t kPictures = 2; // the last one, and one that is drawn
    return kPictures * decoder_.picture().size() + treesSize_ + largestFrame_ + largestSound_ +
           entries_.size() * sizeof(formats::MovieFrameEntry);
}

} // namespace platform
