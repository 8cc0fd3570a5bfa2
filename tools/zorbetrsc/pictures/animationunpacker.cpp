#include "pictures/animationunpacker.h"

#include "formats/animation/row.h"
#include "manifest/manifest.h"
#include "pictures/animationbuilder.h"
#include "pictures/picture.h"
#include "pictures/sequencetext.h"
#include "refusal.h"

#include <algorithm>
#include <bitset>
#include <map>
#include <set>

namespace rsc {

namespace animation = formats::animation;
using formats::Bytes;
using formats::ByteSpan;

namespace {

constexpr std::size_t kPicturesOfALine = 4;

using IndexSet = std::bitset<platform::kPaletteSize>;

std::size_t pixelCount(const animation::Frame& frame) {
    return static_cast<std::size_t>(frame.width) * static_cast<std::size_t>(frame.height);
}

/// The indices of a frame's opaque pixels.
IndexSet usedIndices(const animation::Frame& frame) {
    IndexSet used;
    std::size_t at = 0;
    for (int y = 0; y < frame.height; ++y) {
        animation::RowReader reader(frame.rows.subspan(at), frame.width);
        for (animation::RowRun run; reader.next(run);)
            for (const std::uint8_t index : run.colours) used.set(index);
        at += reader.end().bytes;
    }
    return used;
}

/// An index for transparent pixels, out of those that are not used. Black, which is 0, is the last
/// choice.
std::optional<std::uint8_t> freeIndex(const IndexSet& used) {
    for (std::size_t i = 1; i <= used.size(); ++i)
        if (!used[i % used.size()]) return static_cast<std::uint8_t>(i % used.size());
    return std::nullopt;
}

/// A frame's pixels, the transparent ones with the index `clear`.
Bytes decode(const animation::Frame& frame, std::uint8_t clear) {
    Bytes pixels(pixelCount(frame));
    const auto width = static_cast<std::size_t>(frame.width);
    std::size_t at = 0;
    for (std::size_t y = 0; y < static_cast<std::size_t>(frame.height); ++y) {
        const auto row = std::span(pixels).subspan(y * width, width);
        at += animation::decodeRow(frame.rows.subspan(at), row, clear).bytes;
    }
    return pixels;
}

/// Whether every side of a frame has an opaque pixel, or the frame is but one pixel.
bool isCropped(const animation::Frame& frame, const Bytes& pixels, std::uint8_t clear) {
    const auto width = static_cast<std::size_t>(frame.width);
    const std::size_t last = pixels.size() - width; // row
    const auto opaqueIn = [&](std::size_t first, std::size_t end, std::size_t step) {
        for (std::size_t i = first; i < end; i += step)
            if (pixels[i] != clear) return true;
        return false;
    };
    return pixels.size() == 1 ||
           (opaqueIn(0, width, 1) && opaqueIn(last, pixels.size(), 1) &&
            opaqueIn(0, pixels.size(), width) && opaqueIn(width - 1, pixels.size(), width));
}

/// "-01.png" and so on, so that all have the same length.
std::string pictureSuffix(std::size_t number, std::size_t count) {
    if (count == 1) return ".png";
    const std::string digits = std::to_string(number);
    return "-" + std::string(std::to_string(count).size() - digits.size(), '0') + digits + ".png";
}

class Unpacker {
  public:
    Unpacker(const animation::Animation& stored, int id, const Colours& shown,
             const std::string& name)
        : stored_(stored), id_(id), name_(name) {
        for (std::size_t i = 0; i < shown.size(); ++i) palette_[i].colour = shown[i];
    }

    /// None when a frame cannot be a picture.
    std::optional<UnpackedResource> unpack() {
        for (const animation::Frame& frame : stored_.frames) {
            if (pixelCount(frame) > kMostPixels) return std::nullopt;
            const bool isNew = rows_.insert(frame.rows.data()).second;
            if (!isNew) return std::nullopt; // equal frames are stored once
            used_ |= usedIndices(frame);
        }
        for (const animation::Frame& frame : stored_.frames)
            if (!addPicture(frame)) return std::nullopt;
        addLines();
        return std::move(result_);
    }

  private:
    bool addPicture(const animation::Frame& frame) {
        auto clear = freeIndex(used_);
        if (!clear) clear = freeIndex(usedIndices(frame));
        if (!clear && hasClearPixels(frame)) return false;
        const Bytes pixels = decode(frame, clear.value_or(0));
        auto palette = palette_;
        if (clear) {
            cropped_ = cropped_ && isCropped(frame, pixels, *clear);
            if (std::ranges::find(pixels, *clear) != pixels.end()) palette[*clear].alpha = 0;
        }
        const auto number = result_.files.size() + 1;
        result_.files.push_back({name_ + pictureSuffix(number, stored_.frames.size()),
                                 writeIndexedPng(frame.width, frame.height, pixels, palette)});
        return true;
    }

    static bool hasClearPixels(const animation::Frame& frame) {
        return decode(frame, 0) != decode(frame, 1);
    }

    void addLines() {
        const bool isStill =
            stored_.frames.size() == 1 && stored_.framesPerSecond == animation::kStillRate &&
            stored_.sequences.size() == 1 && stored_.sequences[0] == animation::stillSequence();
        const std::string id = std::to_string(id_);
        if (isStill)
            addLine("    picture " + id + " " + result_.files[0].name);
        else
            addLine("    animation " + id);
        if (!isStill && stored_.framesPerSecond != 0)
            addLine("        rate " + std::to_string(stored_.framesPerSecond));
        if (stored_.x != 0 || stored_.y != 0 || stored_.depth != 0) {
            addLine("        place " + std::to_string(stored_.x) + " " + std::to_string(stored_.y) +
                    (stored_.depth == 0 ? "" : " " + std::to_string(stored_.depth)));
        }
        if (!cropped_) addLine("        crop no");
        if (isStill) return;
        addFrameLines();
        for (const animation::Sequence& sequence : stored_.sequences)
            addLine("        sequence " + formatSequence(sequence));
    }

    void addFrameLines() {
        for (std::size_t i = 0; i < result_.files.size(); ++i) {
            if (i % kPicturesOfALine == 0)
                result_.lines += (i == 0 ? "        frame" : "\n        frame");
            result_.lines += " " + result_.files[i].name;
        }
        result_.lines += "\n";
    }

    void addLine(const std::string& line) { result_.lines += line + "\n"; }

    const animation::Animation& stored_;
    int id_;
    const std::string& name_;
    std::array<Pixel, platform::kPaletteSize> palette_;
    std::set<const std::uint8_t*> rows_; ///< where the frames' rows begin
    IndexSet used_;                      ///< by any frame
    bool cropped_ = true;                ///< no frame has a transparent margin
    UnpackedResource result_;
};

/// What packing the lines and pictures gives.
Bytes repack(const UnpackedResource& unpacked) {
    const Manifest manifest =
        parseManifest("map none\nlibrary a.rsc\n" + unpacked.lines, std::string_view());
    const auto& content = manifest.libraries.at(0).resources.at(0).content;
    std::map<std::string_view, ByteSpan> files;
    for (const OutputFile& picture : unpacked.files) files[picture.name] = picture.data;
    return buildAnimation(std::get<AnimationPlan>(content), nullptr, [&](const FileName& file) {
        return Picture::fromPng(files.at(file.path));
    });
}

} // namespace

std::optional<UnpackedResource> unpackAnimation(ByteSpan resource, int id, const Colours& shown,
                                                const std::string& name) {
    const auto stored = valueOf(animation::readWhole(resource));
    try {
        auto unpacked = Unpacker(stored, id, shown, name).unpack();
        if (!unpacked) return std::nullopt;
        unpacked->packed = repack(*unpacked);
        const Bytes& packed = unpacked->packed;
        if (packed.size() > resource.size() ||
            !std::ranges::equal(packed, resource.first(packed.size())) ||
            std::ranges::any_of(resource.subspan(packed.size()),
                                [](int byte) { return byte != 0; }))
            return std::nullopt;
        return unpacked;
    } catch (const Refusal&) { // what only other tools make
        return std::nullopt;
    }
}

} // namespace rsc
