// Damaged palettes, loaded by the game's window under a picture. The first bytes of an input choose
// the depth of the screen and the lengths; the rest are two palettes, one loaded after the other. A
// palette that is long enough is on the screen with the platform's colours kept, a shorter one
// changes nothing, and the picture is seen in the colours that were loaded last.
#include "fuzzmachine.h"

#include "aodeep.h"
#include "memorystream.h"
#include "scene/efwindow.h"
#include "trinkets/aseqbuilder.h"

#include <optional>

namespace {

using fuzzing::Bytes;
using fuzzing::expect;
using platform::Rgb;

constexpr int kPictureId = 1;
constexpr int kOtherPictureId = 2;
constexpr int kPaletteId = 3;
constexpr std::size_t kWords = 6; ///< bytes of one colour

/// A row of all colour indices.
Bytes picture(int offset) {
    testing_support::AseqBuilder builder;
    testing_support::AseqBuilder::Frame& frame = builder.frames.emplace_back();
    frame.width = 256;
    frame.height = 1;
    std::vector<std::uint8_t> row(256);
    for (std::size_t i = 0; i < row.size(); ++i) row[i] = static_cast<std::uint8_t>(i);
    formats::animation::encodeRow(row, std::nullopt, frame.rows);
    return builder.sequence({{static_cast<std::int16_t>(offset), 0, 0, 0}}).build();
}

/// What a palette resource makes of an entry.
Rgb expectedEntry(const Bytes& palette, std::size_t index) {
    if (index < 10 || index > 245) return platform::staticPalette()[index];
    const auto component = [&](std::size_t which) {
        return std::to_integer<std::uint8_t>(palette.at(index * kWords + which * 2));
    };
    const Rgb color{component(0), component(1), component(2)};
    if (color == Rgb{0, 0, 0}) return {1, 1, 1};
    return color == Rgb{255, 255, 255} ? Rgb{254, 254, 254} : color;
}

/// The colour of a pixel of the picture, by hand.
std::uint32_t pixelOf(Rgb color, std::size_t index, int depth) {
    if (depth == 8) return static_cast<std::uint32_t>(index);
    if (depth == 16)
        return static_cast<std::uint32_t>(color.red / 8 * 1024 + color.green / 8 * 32 +
                                          color.blue / 8);
    return static_cast<std::uint32_t>(color.red * 65536 + color.green * 256 + color.blue);
}

std::uint32_t pixelAt(OMCanvas& canvas, int x) {
    const OMPixels pixels = canvas.pixels();
    std::uint32_t value = 0;
    for (int byte = 0; byte < pixels.bytesPerPixel; ++byte)
        value |= std::uint32_t{pixels.at(x, 0)[byte]} << 8 * byte;
    return value;
}

/// The two palettes, and how they come into the window.
struct Loading {
    int depth;
    bool filtered;
    bool idleBetween;
    bool otherPicture; ///< for the second palette
    Bytes first;
    Bytes second;
};

Loading readLoading(fuzzing::Choices choices) {
    Loading loading{};
    loading.depth = choices.depth();
    const int how = choices.byte();
    loading.filtered = (how & 1) != 0;
    loading.idleBetween = (how & 2) != 0;
    loading.otherPicture = (how & 4) != 0;
    const auto wanted = static_cast<std::size_t>(choices.word() & 0x7FFF);
    const Bytes rest = choices.rest();
    const auto cut = rest.begin() + static_cast<std::ptrdiff_t>(std::min(wanted, rest.size()));
    loading.first.assign(rest.begin(), cut);
    loading.second.assign(cut, rest.end());
    return loading;
}

class Loader {
  public:
    explicit Loader(Loading loading) : loading_(std::move(loading)) {
        // The screen outlives the inputs, and its palette with it.
        OMPlatform().display().setPalette(
            platform::kFirstFreeColour,
            std::span(expected_).subspan(platform::kFirstFreeColour,
                                         platform::kFirstHighStaticColour -
                                             platform::kFirstFreeColour));
        OMDebug::setCheckListener([this](const OMDebug::Failure&) { ++failures_; });
    }
    ~Loader() { OMDebug::setCheckListener(nullptr); }
    Loader& operator=(Loader&&) = delete;

    void run() {
        EffectsWindow window({0, 0}, "Fuzz");
        window.setBackgroundLocator([](int id) {
            return std::make_unique<testing_support::MemoryStream>(
                picture(id == kPictureId ? 0 : 1));
        });
        window.setPaletteLocator(
            [this](int) { return std::make_unique<testing_support::MemoryStream>(*palette_); });
        window.setPaletteFilter([this](OMPalette& colors) {
            if (loading_.filtered) std::swap(colors[20], colors[21]);
        });
        load(window, kPictureId, loading_.first);
        if (loading_.idleBetween) {
            window.idle();
            check(window, 0);
        }
        const int second = loading_.otherPicture ? kOtherPictureId : kPictureId;
        load(window, second, loading_.second);
        window.idle();
        check(window, loading_.otherPicture ? 1 : 0);
    }

  private:
    void load(EffectsWindow& window, int picture, const Bytes& bytes) {
        palette_ = &bytes;
        const int before = failures_;
        expect(window.restorePalette(picture, kPaletteId), "a picture is found");
        const bool usable = bytes.size() >= kWords * 256;
        expect(failures_ - before == (usable ? 0 : 1), "short palettes fail one check");
        if (!usable) return;
        for (std::size_t i = 0; i < expected_.size(); ++i) expected_[i] = expectedEntry(bytes, i);
        if (loading_.filtered) std::swap(expected_[20], expected_[21]);
        loaded_ = true;
    }

    void check(EffectsWindow& window, int left) {
        expect(window.canvas().devicePalette() == expected_, "the window has the colours");
        expect(window.backBuffer().devicePalette() == expected_, "the back buffer has the colours");
        if (loading_.depth == 8)
            expect(OMPlatform().display().palette() == expected_, "the screen has the colours");
        else
            expect(AOPaletteRecord::current() != nullptr,
                   "deep screens keep a record of the colours");
        if (loading_.depth != 8 && !loaded_) return; // nothing to show the picture in
        for (std::size_t i = 0; i < expected_.size(); ++i)
            expect(pixelAt(window.canvas(), left + static_cast<int>(i)) ==
                       pixelOf(expected_[i], i, loading_.depth),
                   "the picture is seen in the colours");
    }

    Loading loading_;
    const Bytes* palette_ = nullptr;
    OMDevicePalette expected_ = platform::staticPalette();
    bool loaded_ = false;
    int failures_ = 0;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzing::World world;
    Loading loading = readLoading(fuzzing::Choices(data, size));
    world.makeApp(loading.depth, EffectsWindow::kWidth, EffectsWindow::kHeight);
    Loader(std::move(loading)).run();
    return 0;
}
