// What tests of trinkets stand on: an application and a window on a machine in memory, plain
// coloured trinkets, animation resources put together by the test, and resources that lie in
// memory.
#pragma once

#include "ompp/frameworkfixture.h"

#include "aoimage.h"
#include "aorow.h"
#include "omapp.h"
#include "omistream.h"
#include "omtrinketwindow.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace testing_support {

/// A trinket of one colour that remembers how much of it was painted.
class Tile : public OMTrinket {
  public:
    Tile(OMTrinketWindow& window, const platform::Rect& bounds, int color,
         UpdateStyle style = UpdateStyle::Regions)
        : OMTrinket(window, style, bounds), color_(color) {
        OMTrinket::declareProperties();
    }
    void paint(OMMemCanvas& canvas, const OMRegion& clip) override {
        OMRegion shown = clip;
        shown.intersect(boundingRectangle());
        painted += shown.pixelCount();
        canvas.setColor(OMColor(color_));
        canvas.fillRegion(shown);
    }
    void step(std::uint32_t clock) override {
        if (onStep) onStep(clock);
    }

    [[nodiscard]] int color() const { return color_; }

    std::size_t painted = 0; ///< pixels
    std::function<void(std::uint32_t)> onStep;

  private:
    int color_;
};

/// A resource in memory.
class MemoryStream final : public OMIStream {
  public:
    explicit MemoryStream(Bytes bytes) : OMIStream(kOMIStreamCache, {}), bytes_(std::move(bytes)) {
        setLength(bytes_.size());
    }
    std::string_view className() const override { return "MemoryStream"; }

  protected:
    bool openSource() override { return true; }
    std::size_t readSource(std::size_t position, std::span<std::byte> buffer) override {
        std::copy_n(bytes_.begin() + static_cast<std::ptrdiff_t>(position), buffer.size(),
                    buffer.begin());
        return buffer.size();
    }
    void closeSource() override {}

  private:
    Bytes bytes_;
};

/// Puts an animation resource together.
struct AseqBuilder {
    struct Frame {
        int width;
        int height;
        std::vector<std::uint8_t> rows;
    };

    int rate = 0;
    int x = 0;
    int y = 0;
    int depth = 0;
    std::vector<Frame> frames;
    std::vector<AOSequence> sequences;

    /// A frame from its rows: each character is a colour index, "." is transparent.
    AseqBuilder& frame(const std::vector<std::string>& rows) {
        Frame& made = frames.emplace_back();
        made.width = static_cast<int>(rows.at(0).size());
        made.height = static_cast<int>(rows.size());
        for (const std::string& row : rows)
            aorow::encodeRow({reinterpret_cast<const std::uint8_t*>(row.data()), row.size()}, '.',
                             made.rows);
        return *this;
    }
    /// A frame of one colour.
    AseqBuilder& block(int width, int height, char color) {
        return frame(std::vector<std::string>(static_cast<std::size_t>(height),
                                              std::string(static_cast<std::size_t>(width), color)));
    }
    AseqBuilder& sequence(AOSequence entries) {
        sequences.push_back(std::move(entries));
        return *this;
    }

    [[nodiscard]] Bytes build(bool swapped = false) const {
        Bytes out;
        const auto number = [&](std::uint32_t value, int bytes) {
            for (int i = 0; i < bytes; ++i)
                out.push_back(static_cast<std::byte>(value >> 8 * (swapped ? bytes - 1 - i : i)));
        };
        const auto word = [&](int value) { number(static_cast<std::uint32_t>(value), 2); };
        word(static_cast<int>(sequences.size()));
        word(static_cast<int>(frames.size()));
        number(static_cast<std::uint32_t>(rate), 1);
        number(swapped ? 1 : 0, 1);
        number(0, 4);
        std::size_t offset = 0;
        for (const Frame& frame : frames) {
            number(static_cast<std::uint32_t>(offset), 4);
            offset += 6 + frame.rows.size();
        }
        for (const int byte : {x & 255, y & 255, (x >> 8 & 15) | (y >> 8 & 15) << 4, depth})
            number(static_cast<std::uint32_t>(byte), 1);
        for (const AOSequence& sequence : sequences) {
            word(static_cast<int>(sequence.size()));
            for (const AOEntry& entry : sequence)
                for (const int field : {entry.dx, entry.dy, entry.code, entry.argument})
                    word(field);
        }
        for (const Frame& frame : frames) {
            out.insert(out.end(), 2, std::byte{0}); // reserved, in either byte order
            word(frame.width);
            word(frame.height);
            const auto rows = std::as_bytes(std::span(frame.rows));
            out.insert(out.end(), rows.begin(), rows.end());
        }
        return out;
    }
    [[nodiscard]] std::shared_ptr<AOImage> image() const {
        std::string problem;
        auto made = AOImage::read(build(), problem);
        EXPECT_TRUE(made) << problem;
        return made;
    }
};

/// The colour indices of a canvas's rectangle as text, row by row; 0 becomes ".".
inline std::string pixelsOf(OMCanvas& canvas, const platform::Rect& area) {
    const OMPixels pixels = canvas.pixels();
    std::string text;
    for (int y = area.top; y < area.bottom; ++y) {
        for (int x = area.left; x < area.right; ++x) {
            const std::uint8_t pixel = *pixels.at(x, y);
            text += pixel == 0 ? '.' : static_cast<char>(pixel);
        }
        text += '/';
    }
    return text;
}

class ApplicationTest : public FrameworkTest {
  protected:
    OMApp app{OMApp::DisplayMode::PopUp, OMColor(), {0, 0, 640, 480}, 8};
};

class WindowTest : public ApplicationTest {
  protected:
    /// One idle cycle, a millisecond later.
    void cycle() {
        machine.clock().now += 1;
        window.idle();
    }
    int backPixel(int x, int y) { return *window.backBuffer().pixels().at(x, y); }
    int screenPixel(int x, int y) { return *window.canvas().pixels().at(x, y); }

    /// Pixels that a cycle composes and shows.
    struct Work {
        std::uint64_t shown;
        std::size_t composed;
        friend bool operator==(const Work&, const Work&) = default;
        friend std::ostream& operator<<(std::ostream& out, const Work& work) {
            return out << "shown " << work.shown << " composed " << work.composed;
        }
    };
    Work workOfCycle() {
        OMRegion composed;
        window.hooks().beforeTrinkets = [&] { composed = window.dirtyRegion(); };
        const std::uint64_t before = window.canvas().changedPixels();
        cycle();
        window.hooks().beforeTrinkets = nullptr;
        return {window.canvas().changedPixels() - before, composed.pixelCount()};
    }

    OMTrinketWindow window{{0, 0, 100, 80}, nullptr, "Test"};
};

} // namespace testing_support
