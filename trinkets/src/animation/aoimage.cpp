#include "aoimage.h"

#include "formats/animation/animation.h"
#include "formats/animation/row.h"
#include "omapp.h"
#include "omcanvas.h"
#include "omdebug.h"
#include "omformat.h"
#include "omistream.h"
#include "omlog.h"
#include "omresourcelog.h"

#include <algorithm>
#include <set>
#include <tuple>
#include <unordered_map>

namespace animation = formats::animation;

namespace {

/// How often all bytes together are walked over to change colours. Once is enough unless frames lie
/// across each other, as those of a damaged resource may: thousands of them, each to the end.
constexpr std::size_t kMostWalks = 16;

OMLinkTo<std::unique_ptr<OMIStream>(int id)> sourceLocator;
std::unordered_map<int, std::weak_ptr<AOImage>> imagesInUse; ///< by resource id

} // namespace

// Resources

void AOImage::setSourceLocator(OMLinkTo<std::unique_ptr<OMIStream>(int id)> locator) {
    sourceLocator = std::move(locator);
}

bool AOImage::canLocate(const char* message, const char* condition) {
    return OMDebug::check(static_cast<bool>(sourceLocator), condition, message);
}

std::shared_ptr<AOImage> AOImage::locate(int id) {
    if (!canLocate("Source URL not installed in OMAnimation")) return nullptr;
    if (const auto found = imagesInUse.find(id); found != imagesInUse.end())
        if (std::shared_ptr<AOImage> image = found->second.lock()) return image;
    const std::unique_ptr<OMIStream> stream = sourceLocator(id);
    if (!stream) return nullptr;
    std::string problem;
    std::shared_ptr<AOImage> image = read(stream->readAll(), problem);
    if (!image) {
        OMLogResource(OMLog::Kind::Error, "Animation", id, *stream, "cannot be used: " + problem);
        return nullptr;
    }
    if (image->brokenFrames() > 0)
        OMLogResource(OMLog::Kind::Warning, "Animation", id, *stream,
                      OMFormat("has %d frames that lie outside of it and show nothing",
                               image->brokenFrames()));
    std::erase_if(imagesInUse, [](const auto& entry) { return entry.second.expired(); });
    imagesInUse[id] = image;
    return image;
}

void AOImage::forgetResources() { imagesInUse.clear(); }

std::shared_ptr<AOImage> AOImage::locateOrBlank(int id) {
    std::shared_ptr<AOImage> image = id < 0 ? nullptr : locate(id);
    return image ? image : blank();
}

std::shared_ptr<AOImage> AOImage::read(std::span<const std::byte> data, std::string& problem) {
    auto [stored, refusal] = animation::read(formats::asNumbers(data));
    problem = refusal;
    if (!refusal.empty()) return nullptr;
    auto image = std::make_shared<AOImage>();
    image->framesPerSecond_ = stored.framesPerSecond;
    image->embedded_ = {stored.x, stored.y, stored.depth};
    image->sequences_ = AOSequences(std::move(stored.sequences));
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
        image->sequences_ = AOSequences(
            {{{0, 0, AOEntry::kHold, 0}, {0, 0, AOEntry::kHold, 0}, {0, 0, AOEntry::kLoop, 0}}});
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

std::shared_ptr<AOImage> AOImage::recoloured(const AOColorMap& map) const {
    auto copy = std::make_shared<AOImage>(*this);
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

std::vector<std::byte> AOPack(OMCanvas& canvas, const platform::Rect& area,
                              std::uint8_t transparent) {
    if (canvas.depth() != 8) {
        OMApp::getApp()->alert(OMFormat("Can't pack from a %d-bit canvas.", canvas.depth()));
        return {};
    }
    const OMPixels pixels = canvas.pixels();
    const platform::Rect shown =
        platform::intersection(area.empty() ? canvas.bounds() : area, pixels.area);
    if (shown.empty()) return {};
    const auto width = static_cast<std::size_t>(shown.width());
    formats::Bytes rows;
    rows.reserve(width * static_cast<std::size_t>(shown.height()) * 2);
    for (int y = shown.top; y < shown.bottom; ++y)
        animation::encodeRow({pixels.at(shown.left, y), width}, transparent, rows);

    animation::Animation still;
    still.framesPerSecond = animation::kStillRate;
    still.frames = {{shown.width(), shown.height(), rows}};
    still.sequences = {animation::stillSequence()};
    const formats::Bytes resource = animation::write(still);
    const auto bytes = std::as_bytes(std::span(resource));
    return {bytes.begin(), bytes.end()};
}
