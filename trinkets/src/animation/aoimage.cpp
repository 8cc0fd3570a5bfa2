#include "aoimage.h"

#include "aorow.h"
#include "formats/base/bytes.h"

#include <algorithm>
#include <set>
#include <tuple>

namespace {

constexpr std::size_t kSwapFlagAt = 5;
constexpr std::size_t kHeaderSize = 10;
constexpr std::size_t kEntrySize = 8;
constexpr int kNegativeFrom = 2048; ///< embedded places above this one are negative
/// How often all bytes together are walked over to change colours. Once is enough unless frames lie
/// across each other, as those of a damaged resource may: thousands of them, each to the end.
constexpr std::size_t kMostWalks = 16;

int embeddedPlace(int low, int high) {
    const int value = low + high * 256;
    return value > kNegativeFrom ? kNegativeFrom - value : value;
}

} // namespace

/// Reads the tables; numbers in the byte order that the resource says.
class AOImage::Reader {
  public:
    explicit Reader(std::span<const std::byte> data)
        : in_(data), swapped_(data.size() > kSwapFlagAt && data[kSwapFlagAt] != std::byte{0}) {}

    /// The empty text, or what is wrong.
    std::string read(AOImage& image) {
        image.sequences_ = std::make_shared<std::vector<AOSequence>>();
        const int sequences = i16();
        const int frames = i16();
        image.framesPerSecond_ = in_.u8();
        in_.skip(kHeaderSize - kSwapFlagAt);
        if (!in_.ok()) return "its header is cut short";
        if (sequences < 1) return "it has no sequence";
        if (frames < 0) return "its number of frames is negative";
        const std::vector<std::int32_t> offsets = readOffsets(frames);
        readPlacement(image);
        if (!in_.ok()) return "its frame table is cut short";
        for (int i = 0; i < sequences; ++i)
            if (!readSequence(image)) return "its sequences are cut short";
        const std::span<const std::byte> frameData = in_.bytes(in_.remaining());
        for (const std::int32_t offset : offsets) readFrame(image, frameData, offset);
        const auto* bytes = reinterpret_cast<const std::uint8_t*>(frameData.data());
        image.data_.assign(bytes, bytes + frameData.size());
        return {};
    }

  private:
    std::uint16_t u16(formats::ByteReader& in) const {
        const std::uint16_t value = in.u16();
        return swapped_ ? static_cast<std::uint16_t>(value << 8 | value >> 8) : value;
    }
    std::int16_t i16() { return static_cast<std::int16_t>(u16(in_)); }
    std::int32_t i32() {
        const std::uint32_t first = u16(in_);
        const std::uint32_t second = u16(in_);
        return static_cast<std::int32_t>(swapped_ ? first << 16 | second : second << 16 | first);
    }

    std::vector<std::int32_t> readOffsets(int count) {
        std::vector<std::int32_t> offsets;
        for (int i = 0; i < count && in_.ok(); ++i) offsets.push_back(i32());
        return offsets;
    }

    void readPlacement(AOImage& image) {
        const int x = in_.u8();
        const int y = in_.u8();
        const int high = in_.u8();
        image.embedded_ = {embeddedPlace(x, high & 0x0F), embeddedPlace(y, high >> 4), in_.u8()};
    }

    bool readSequence(AOImage& image) {
        const int count = i16();
        if (!in_.ok() || count < 0 ||
            static_cast<std::size_t>(count) > in_.remaining() / kEntrySize)
            return false;
        AOSequence sequence;
        sequence.reserve(static_cast<std::size_t>(count) + 1);
        for (int i = 0; i < count; ++i) {
            AOEntry& entry = sequence.emplace_back();
            for (std::int16_t* field : {&entry.dx, &entry.dy, &entry.code, &entry.argument})
                *field = i16();
        }
        if (sequence.empty() || sequence.back().code != AOEntry::kEnd)
            sequence.push_back({0, 0, AOEntry::kEnd, 0});
        image.sequences_->push_back(std::move(sequence));
        return true;
    }

    void readFrame(AOImage& image, std::span<const std::byte> data, std::int32_t offset) const {
        FrameRecord& frame = image.frames_.emplace_back();
        formats::ByteReader in(data);
        in.seek(offset < 0 ? data.size() + 1 : static_cast<std::size_t>(offset));
        in.skip(sizeof(std::int16_t));
        const auto width = static_cast<std::int16_t>(u16(in));
        const auto height = static_cast<std::int16_t>(u16(in));
        if (!in.ok() || width < 0 || height < 0) {
            ++image.brokenFrames_;
            return;
        }
        frame.size = {width, height};
        frame.rows = in.position();
    }

    formats::ByteReader in_;
    bool swapped_;
};

std::shared_ptr<AOImage> AOImage::read(std::span<const std::byte> data, std::string& problem) {
    auto image = std::make_shared<AOImage>();
    problem = Reader(data).read(*image);
    return problem.empty() ? image : nullptr;
}

const std::shared_ptr<AOImage>& AOImage::blank() {
    static const std::shared_ptr<AOImage> kBlank = [] {
        auto image = std::make_shared<AOImage>();
        image->sequences_ =
            std::make_shared<std::vector<AOSequence>>(1, AOSequence{{0, 0, AOEntry::kHold, 0},
                                                                    {0, 0, AOEntry::kHold, 0},
                                                                    {0, 0, AOEntry::kLoop, 0},
                                                                    {0, 0, AOEntry::kEnd, 0}});
        return image;
    }();
    return kBlank;
}

AOSize AOImage::frameSize(int index) const {
    if (index < 0 || index >= frameCount()) return {};
    return frames_[static_cast<std::size_t>(index)].size;
}

std::span<const std::uint8_t> AOImage::packedRows(int index) const {
    if (index < 0 || index >= frameCount()) return {};
    return std::span(data_).subspan(frames_[static_cast<std::size_t>(index)].rows);
}

const AOFrame& AOImage::frame(int index) const {
    static const AOFrame kNone;
    if (index < 0 || index >= frameCount()) return kNone;
    if (const AOFrame* known = unpacked_.find(index)) return *known;
    return unpacked_.keep(index, unpackedFrame(index, kAOIndexPixels, 1));
}

AOFrame AOImage::unpackedFrame(int index, const AOPixelTable& pixels, int bytesPerPixel) const {
    return {frameSize(index), packedRows(index), pixels, bytesPerPixel};
}

void AOImage::replaceEntry(int sequence, int position, const AOEntry& entry) {
    sequences_->at(static_cast<std::size_t>(sequence)).at(static_cast<std::size_t>(position)) =
        entry;
}

std::shared_ptr<AOImage> AOImage::recoloured(const AOColorMap& map) const {
    auto copy = std::make_shared<AOImage>();
    copy->framesPerSecond_ = framesPerSecond_;
    copy->embedded_ = embedded_;
    copy->sequences_ = sequences_;
    copy->frames_ = frames_;
    copy->data_ = data_;
    copy->brokenFrames_ = brokenFrames_;
    std::set<std::tuple<std::size_t, int, int>> done; // several frames may be the same one
    std::size_t left = data_.size() * kMostWalks;
    for (const FrameRecord& frame : frames_)
        if (done.emplace(frame.rows, frame.size.width, frame.size.height).second)
            left -= recolourFrame(frame, map, left, *copy);
    return copy;
}

/// Stops behind the row that reaches `most` bytes, and returns no more than that.
std::size_t AOImage::recolourFrame(const FrameRecord& frame, const AOColorMap& map,
                                   std::size_t most, AOImage& copy) const {
    if (frame.size.width == 0) return 0;
    const auto all = std::span(data_).subspan(frame.rows);
    std::size_t taken = 0;
    for (int row = 0; row < frame.size.height && taken < std::min(all.size(), most); ++row)
        taken += recolourRow(all.subspan(taken), frame.size.width, map, copy);
    return std::min(taken, most);
}

/// Frames may share their data, so each colour is looked up in what was there before. Returns the
/// bytes that the row takes.
std::size_t AOImage::recolourRow(std::span<const std::uint8_t> row, int width,
                                 const AOColorMap& map, AOImage& copy) const {
    aorow::RowReader reader(row, width);
    aorow::RowRun run;
    while (reader.next(run))
        for (const std::uint8_t& colour : run.colours)
            copy.data_[static_cast<std::size_t>(&colour - data_.data())] = map[colour];
    return reader.end().bytes;
}

std::shared_ptr<AOImage> AOImageStore::find(int id) const {
    const auto found = images_.find(id);
    return found == images_.end() ? nullptr : found->second.lock();
}

void AOImageStore::keep(int id, const std::shared_ptr<AOImage>& image) {
    std::erase_if(images_, [](const auto& entry) { return entry.second.expired(); });
    images_[id] = image;
}
