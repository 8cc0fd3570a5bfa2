#include "aoimage.h"

#include "formats/animation/animation.h"
#include "formats/animation/row.h"

#include <algorithm>
#include <set>
#include <tuple>

namespace animation = formats::animation;

namespace {

/// How often all bytes together are walked over to change colours. Once is enough unless frames lie
/// across each other, as those of a damaged resource may: thousands of them, each to the end.
constexpr std::size_t kMostWalks = 16;

} // namespace

std::shared_ptr<AOImage> AOImage::read(std::span<const std::byte> data, std::string& problem) {
    auto [stored, refusal] = animation::read(formats::asNumbers(data));
    problem = refusal;
    if (!refusal.empty()) return nullptr;
    auto image = std::make_shared<AOImage>();
    image->framesPerSecond_ = stored.framesPerSecond;
    image->embedded_ = {stored.x, stored.y, stored.depth};
    for (AOSequence& sequence : stored.sequences)
        if (sequence.empty() || sequence.back().code != AOEntry::kEnd)
            sequence.push_back({0, 0, AOEntry::kEnd, 0});
    image->sequences_ = std::make_shared<std::vector<AOSequence>>(std::move(stored.sequences));
    const formats::ByteSpan frameData = stored.frameData;
    image->data_.assign(frameData.begin(), frameData.end());
    for (const animation::Frame& frame : stored.frames) {
        const bool broken = !frame.rows.data() || frame.width < 0 || frame.height < 0;
        image->brokenFrames_ += broken ? 1 : 0;
        image->frames_.push_back(broken ? FrameRecord{}
                                        : FrameRecord{{frame.width, frame.height},
                                                      frameData.size() - frame.rows.size()});
    }
    return image;
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
    animation::RowReader reader(row, width);
    animation::RowRun run;
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
