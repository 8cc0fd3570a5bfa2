#include "pictures/animationbuilder.h"

#include "formats/animation/row.h"
#include "manifest/words.h"
#include "pictures/palettelift.h"
#include "pictures/picture.h"
#include "refusal.h"

#include <algorithm>
#include <array>
#include <map>
#include <tuple>

namespace rsc {

using formats::Bytes;
using formats::animation::Entry;
using formats::animation::Sequence;

namespace {

/// A frame as palette indices; which of its pixels are opaque stands beside them, because opaque
/// pixels may use every index.
struct IndexedFrame {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> indices;
    std::vector<bool> opaque;

    [[nodiscard]] std::size_t at(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
               static_cast<std::size_t>(x);
    }
};

struct Box {
    int left = 0;
    int top = 0;
    int right = 0; ///< outside, as bottom
    int bottom = 0;
};

/// The opaque part of a frame; a single pixel when there is none.
Box opaqueBox(const IndexedFrame& frame) {
    Box box{frame.width, frame.height, 0, 0};
    for (int y = 0; y < frame.height; ++y) {
        for (int x = 0; x < frame.width; ++x) {
            if (!frame.opaque[frame.at(x, y)]) continue;
            box.left = std::min(box.left, x);
            box.right = std::max(box.right, x + 1);
            box.top = std::min(box.top, y);
            box.bottom = y + 1;
        }
    }
    return box.right == 0 ? Box{0, 0, 1, 1} : box;
}

/// What a picture that keeps its indices loses because the platform has colours of its own in some
/// entries.
ColourLoss fixedLossOf(const Picture& picture, const IndexedFrame& frame, int tolerance) {
    std::array<std::size_t, platform::kPaletteSize> counts{};
    for (std::size_t i = 0; i < frame.indices.size(); ++i)
        if (frame.opaque[i]) ++counts[frame.indices[i]];
    ColourLoss loss;
    loss.isIndexed = true;
    for (std::size_t index = 0; index < picture.palette().size(); ++index) {
        if (counts[index] == 0) continue;
        ++loss.colours;
        loss.pixels += counts[index];
        const bool isFree =
            index >= platform::kFirstFreeColour && index < platform::kFirstHighStaticColour;
        const platform::Rgb wanted = picture.palette()[index].colour;
        if (isFree || componentDistance(wanted, platform::staticPalette()[index]) <= tolerance)
            continue;
        ++loss.lost;
        loss.lostPixels += counts[index];
    }
    return loss;
}

class PixelMapper {
  public:
    PixelMapper(const AnimationPlan& plan, const Palette* palette) : plan_(plan) {
        if (palette) lookup_.emplace(*palette);
    }

    IndexedFrame map(const Picture& picture) {
        const bool keepIndices = keepsIndices(picture);
        if (!keepIndices && !lookup_)
            throw Refusal("the picture needs a palette: write \"use PALETTE\" above the animation");
        if (!keepIndices && plan_.transparency.kind == Transparency::Kind::Index)
            throw Refusal("\"transparent index\" needs an indexed picture");
        IndexedFrame frame{picture.width(), picture.height(), {}, {}};
        frame.indices.resize(picture.size());
        frame.opaque.resize(picture.size());
        for (std::size_t i = 0; i < picture.size(); ++i) {
            frame.opaque[i] = isOpaque(picture, i);
            if (frame.opaque[i])
                frame.indices[i] =
                    keepIndices ? picture.index(i) : lookup_->nearest(picture.pixel(i).colour);
        }
        return frame;
    }

    /// Of a picture that was mapped.
    ColourLoss lossOf(const Picture& picture, const IndexedFrame& frame, int tolerance) {
        if (keepsIndices(picture)) return fixedLossOf(picture, frame, tolerance);
        std::vector<platform::Rgb> pixels;
        for (std::size_t i = 0; i < picture.size(); ++i)
            if (frame.opaque[i]) pixels.push_back(picture.pixel(i).colour);
        return lookup_->lossOf(std::move(pixels), tolerance);
    }

  private:
    [[nodiscard]] bool keepsIndices(const Picture& picture) const {
        return picture.isIndexed() && !plan_.remap;
    }

    [[nodiscard]] bool isOpaque(const Picture& picture, std::size_t i) const {
        const Pixel pixel = picture.pixel(i);
        switch (plan_.transparency.kind) {
        case Transparency::Kind::None: return true;
        case Transparency::Kind::Index: return picture.index(i) != plan_.transparency.index;
        case Transparency::Kind::Colour:
            return pixel.opaque() && pixel.colour != plan_.transparency.colour;
        case Transparency::Kind::Alpha: break;
        }
        return pixel.opaque();
    }

    const AnimationPlan& plan_;
    std::optional<ColourLookup> lookup_;
};

/// An index that no opaque pixel of the frame uses; none when all pixels are opaque.
std::optional<std::uint8_t> clearIndex(const IndexedFrame& frame) {
    std::array<bool, platform::kPaletteSize> used{};
    bool allOpaque = true;
    for (std::size_t i = 0; i < frame.indices.size(); ++i) {
        if (frame.opaque[i])
            used[frame.indices[i]] = true;
        else
            allOpaque = false;
    }
    if (allOpaque) return std::nullopt;
    const auto* free = std::ranges::find(used, false);
    if (free == used.end())
        throw Refusal("the picture has transparent pixels and uses all 256 colours");
    return static_cast<std::uint8_t>(free - used.begin());
}

Bytes packRows(const IndexedFrame& frame, const Box& box) {
    const auto clear = clearIndex(frame);
    Bytes rows;
    std::vector<std::uint8_t> row(static_cast<std::size_t>(box.right - box.left));
    for (int y = box.top; y < box.bottom; ++y) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            const std::size_t at = frame.at(box.left, y) + i;
            row[i] = frame.opaque[at] ? frame.indices[at] : clear.value_or(0);
        }
        formats::animation::encodeRow(row, clear, rows);
    }
    return rows;
}

/// Where a listed frame went: the number of its stored frame and the shift of its steps.
struct PlacedFrame {
    int number = 0;
    int dx = 0;
    int dy = 0;
};

class AnimationBuilder {
  public:
    AnimationBuilder(const AnimationPlan& plan, const Palette* palette, const PictureLoader& load,
                     const ColourWatch& watch)
        : plan_(plan), mapper_(plan, palette), load_(load), watch_(watch) {}

    Bytes build() {
        animation_.framesPerSecond =
            plan_.rate.value_or(plan_.sequences.empty() ? formats::animation::kStillRate : 0);
        animation_.x = plan_.x;
        animation_.y = plan_.y;
        animation_.depth = plan_.depth;
        for (const FramePlan& frame : plan_.frames)
            placed_.push_back(atLine(frame.file.line, [&] { return place(frame); }));
        for (const SequencePlan& sequence : plan_.sequences)
            atLine(sequence.line, [&] { addSequence(sequence.entries); });
        if (plan_.sequences.empty()) addSequence(formats::animation::stillSequence());
        if (const std::string problem = whyNotStored(animation_); !problem.empty())
            throw Refusal(problem);
        return write(animation_);
    }

  private:
    PlacedFrame place(const FramePlan& plan) {
        const Picture picture = load_(plan.file);
        const IndexedFrame frame = mapper_.map(picture);
        watchColours(plan.file, picture, frame);
        const Box box = plan_.crop ? opaqueBox(frame) : Box{0, 0, frame.width, frame.height};
        const int width = box.right - box.left;
        const int height = box.bottom - box.top;
        const auto [stored, isNew] =
            numbers_.try_emplace({width, height, packRows(frame, box)}, animation_.frames.size());
        if (isNew) animation_.frames.push_back({width, height, std::get<Bytes>(stored->first)});
        return {static_cast<int>(stored->second), plan.dx + box.left, plan.dy + box.top};
    }

    void watchColours(const FileName& file, const Picture& picture, const IndexedFrame& frame) {
        if (!watch_.onLoss) return;
        const ColourLoss loss = mapper_.lossOf(picture, frame, watch_.tolerance);
        if (loss.lost > 0) watch_.onLoss(file, loss);
    }

    void addSequence(const Sequence& entries) {
        Sequence& sequence = animation_.sequences.emplace_back(entries);
        for (Entry& entry : sequence) {
            if (entry.code < 0) continue;
            const PlacedFrame& frame = placed_[static_cast<std::size_t>(entry.code)];
            entry.code = static_cast<std::int16_t>(frame.number);
            entry.dx = shifted(entry.dx, frame.dx);
            entry.dy = shifted(entry.dy, frame.dy);
        }
    }

    static std::int16_t shifted(int offset, int by) {
        const int sum = offset + by;
        if (sum < kSmallestInt16 || sum > kLargestInt16)
            throw Refusal("a step's offset, with that of its frame, is " + std::to_string(sum) +
                          ", allowed is " + std::to_string(kSmallestInt16) + " to " +
                          std::to_string(kLargestInt16));
        return static_cast<std::int16_t>(sum);
    }

    const AnimationPlan& plan_;
    PixelMapper mapper_;
    const PictureLoader& load_;
    const ColourWatch& watch_;
    /// Width, height and rows of every stored frame; keeps the rows.
    std::map<std::tuple<int, int, Bytes>, std::size_t> numbers_;
    std::vector<PlacedFrame> placed_;
    formats::animation::Animation animation_;
};

} // namespace

Bytes buildAnimation(const AnimationPlan& plan, const Palette* palette, const PictureLoader& load,
                     const ColourWatch& watch) {
    return AnimationBuilder(plan, palette, load, watch).build();
}

} // namespace rsc
