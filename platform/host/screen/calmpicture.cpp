#include "platform/host/screen/calmpicture.h"

#include "platform/host/screen/pixels.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <utility>

namespace platform {

namespace {

constexpr int kBlockSide = 8; // pixels

// Steps and limits are a little stricter than the guidelines', by more than means are rounded.
constexpr float kRounding = 0.0005F;
constexpr float kLightStep = 0.1F - kRounding;
constexpr float kBright = 0.8F + kRounding;
constexpr float kRedStep = 20.0F / 320.0F - kRounding;
constexpr float kSaturated = 0.8F - kRounding; ///< part of the red in all three
constexpr float kNeverBright = 2.0F;

// A field of 10 degrees, with the blocks that it has at its edges, and the quarter of it.
constexpr int kDegreesWidth = 341;
constexpr int kDegreesHeight = 256;
constexpr int kDegreesColumns = kDegreesWidth / kBlockSide + 2;
constexpr int kDegreesRows = kDegreesHeight / kBlockSide + 1;
constexpr int kMostFlashing = kDegreesWidth * kDegreesHeight / 4 / (kBlockSide * kBlockSide);

/// Three sums in one number: a block of the greatest values fills 20 of 21 bits.
class LinearSums {
  public:
    static constexpr int kBits = 21;
    static constexpr float kGreatest = 16383;

    LinearSums() {
        for (std::size_t i = 0; i < red_.size(); ++i) {
            const float value = static_cast<float>(i) / 255.0F;
            const float linear =
                value <= 0.04045F ? value / 12.92F : std::pow((value + 0.055F) / 1.055F, 2.4F);
            const auto level = static_cast<std::uint64_t>(std::lround(linear * kGreatest));
            red_[i] = level << (2 * kBits);
            green_[i] = level << kBits;
            blue_[i] = level;
        }
    }
    [[nodiscard]] std::uint64_t of(std::uint32_t colour) const {
        return red_[(colour >> 16) & 0xFF] + green_[(colour >> 8) & 0xFF] + blue_[colour & 0xFF];
    }

  private:
    using Table = std::array<std::uint64_t, 256>;
    Table red_;
    Table green_;
    Table blue_;
};

std::size_t blocksIn(int columns, int rows) {
    return static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows);
}

} // namespace

CalmPicture::CalmPicture(const Surface& wanted, const Palette& palette)
    : columns_((wanted.width() + kBlockSide - 1) / kBlockSide),
      rows_((wanted.height() + kBlockSide - 1) / kBlockSide),
      blocks_(blocksIn(columns_, rows_), {.light = FlashCount(kLightStep, kBright),
                                          .red = FlashCount(kRedStep, kNeverBright)}),
      wanted_(blocksIn(wanted.width(), wanted.height())),
      shown_(wanted.width(), wanted.height(), 32), stale_(wanted.bounds()) {
    read(wanted, palette);
    for (Block& block : blocks_) {
        block.light.begin(block.wantedLight);
        block.red.begin(block.wantedRed);
        block.waits = false;
    }
    waiting_.clear();
    copyPixels(shown_.bounds());
}

Rect CalmPicture::follow(const Surface& wanted, const Palette& palette, std::uint32_t nowMs) {
    if (!stale_.empty()) read(wanted, palette);
    Rect changed;
    std::erase_if(waiting_, [&](std::size_t block) {
        if (!allows(blocks_[block], nowMs)) return false;
        changed = hull(changed, show(block, nowMs));
        return true;
    });
    if (waiting_.empty() || !isSmall(nowMs)) return changed;
    for (const std::size_t block : waiting_) {
        blocks_[block].flashedMs = nowMs;
        changed = hull(changed, show(block, nowMs));
    }
    waiting_.clear();
    return changed;
}

Rect CalmPicture::pixelsOf(std::size_t block) const {
    const int left = static_cast<int>(block) % columns_ * kBlockSide;
    const int top = static_cast<int>(block) / columns_ * kBlockSide;
    return {left, top, std::min(left + kBlockSide, shown_.width()),
            std::min(top + kBlockSide, shown_.height())};
}

bool CalmPicture::allows(const Block& block, std::uint32_t nowMs) {
    return block.light.allows(block.wantedLight, nowMs) && block.red.allows(block.wantedRed, nowMs);
}

void CalmPicture::read(const Surface& wanted, const Palette& palette) {
    const ColourReader reader(wanted, palette);
    for (int y = stale_.top; y < stale_.bottom; ++y)
        reader.read(y, stale_.left,
                    std::span(wanted_).subspan(blocksIn(shown_.width(), y) +
                                                   static_cast<std::size_t>(stale_.left),
                                               static_cast<std::size_t>(stale_.width())));
    for (int row = stale_.top / kBlockSide; row * kBlockSide < stale_.bottom; ++row)
        for (int column = stale_.left / kBlockSide; column * kBlockSide < stale_.right; ++column) {
            const std::size_t block = blocksIn(columns_, row) + static_cast<std::size_t>(column);
            measure(block);
            if (!std::exchange(blocks_[block].waits, true)) waiting_.push_back(block);
        }
    stale_ = {};
}

void CalmPicture::measure(std::size_t block) {
    static const LinearSums kSums;
    const Rect pixels = pixelsOf(block);
    std::uint64_t sums = 0;
    for (int y = pixels.top; y < pixels.bottom; ++y) {
        const std::uint32_t* row = wanted_.data() + blocksIn(shown_.width(), y);
        for (int x = pixels.left; x < pixels.right; ++x) sums += kSums.of(row[x]);
    }
    constexpr std::uint64_t kMask = (std::uint64_t{1} << LinearSums::kBits) - 1;
    const float whole =
        LinearSums::kGreatest * static_cast<float>(pixels.width() * pixels.height());
    const float red = static_cast<float>(sums >> (2 * LinearSums::kBits)) / whole;
    const float green = static_cast<float>((sums >> LinearSums::kBits) & kMask) / whole;
    const float blue = static_cast<float>(sums & kMask) / whole;
    const bool isSaturated = red >= kSaturated * (red + green + blue);
    blocks_[block].wantedLight = 0.2126F * red + 0.7152F * green + 0.0722F * blue;
    blocks_[block].wantedRed = isSaturated ? std::max(red - green - blue, 0.0F) : 0.0F;
}

bool CalmPicture::isSmall(std::uint32_t nowMs) const {
    // Blocks that flash above and to the left of each corner of blocks.
    const std::size_t stride = static_cast<std::size_t>(columns_) + 1;
    std::vector<int> above(stride * (static_cast<std::size_t>(rows_) + 1));
    for (std::size_t i = 0; i < blocks_.size(); ++i) {
        const Block& block = blocks_[i];
        const bool flashes =
            block.waits || (block.flashedMs && nowMs - *block.flashedMs < FlashCount::kSpanMs);
        const std::size_t corner = i + i / static_cast<std::size_t>(columns_);
        above[corner + stride + 1] =
            (flashes ? 1 : 0) + above[corner + stride] + above[corner + 1] - above[corner];
    }
    const auto width = static_cast<std::size_t>(std::min(columns_, kDegreesColumns));
    const std::size_t height = static_cast<std::size_t>(std::min(rows_, kDegreesRows)) * stride;
    for (std::size_t top = 0; top + height < above.size(); top += stride)
        for (std::size_t corner = top; corner + width < top + stride; ++corner) {
            const int flashing = above[corner + height + width] - above[corner + height] -
                                 above[corner + width] + above[corner];
            if (flashing > kMostFlashing) return false;
        }
    return true;
}

void CalmPicture::copyPixels(const Rect& pixels) {
    for (int y = pixels.top; y < pixels.bottom; ++y) {
        const std::uint32_t* from = wanted_.data() + blocksIn(shown_.width(), y) + pixels.left;
        std::uint8_t* to = shown_.row(y) + static_cast<std::size_t>(pixels.left) * 4;
        for (int x = pixels.left; x < pixels.right; ++x, ++from, to += 4) {
            to[0] = static_cast<std::uint8_t>(*from);
            to[1] = static_cast<std::uint8_t>(*from >> 8);
            to[2] = static_cast<std::uint8_t>(*from >> 16);
            to[3] = static_cast<std::uint8_t>(*from >> 24);
        }
    }
}

Rect CalmPicture::show(std::size_t index, std::uint32_t nowMs) {
    Block& block = blocks_[index];
    block.light.move(block.wantedLight, nowMs);
    block.red.move(block.wantedRed, nowMs);
    block.waits = false;
    const Rect pixels = pixelsOf(index);
    copyPixels(pixels);
    return pixels;
}

} // namespace platform
