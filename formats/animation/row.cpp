#include "formats/animation/row.h"

#include <algorithm>

namespace formats::animation {

namespace {

/// A fill takes three bytes: shorter runs, and those in a row's last pixels, are cheaper as
/// literals.
constexpr std::size_t kShortestFill = 3;
constexpr std::size_t kPixelsLeftForFill = 4;

std::size_t equalPixels(ByteSpan pixels, std::size_t from) {
    std::size_t end = from + 1;
    while (end < pixels.size() && pixels[end] == pixels[from]) ++end;
    return end - from;
}

/// One stretch of equal pixels as as many clear or fill tokens as it needs.
void appendRuns(std::size_t length, std::optional<std::uint8_t> colour, Bytes& out) {
    while (length > 0) {
        const auto part = std::min<std::size_t>(length, kLongestRun);
        out.push_back(colour ? kFillToken : kClearToken);
        if (colour) out.push_back(*colour);
        out.push_back(static_cast<std::uint8_t>(part));
        length -= part;
    }
}

/// The literal token that is being filled; closed by every other token.
class LiteralWriter {
  public:
    explicit LiteralWriter(Bytes& out) : out_(out) {}

    void append(std::uint8_t pixel) {
        if (!open_ || out_[countAt_] == kLongestRun) {
            countAt_ = out_.size();
            out_.push_back(0);
            open_ = true;
        }
        ++out_[countAt_];
        out_.push_back(pixel);
    }
    void close() { open_ = false; }

  private:
    Bytes& out_;
    std::size_t countAt_ = 0;
    bool open_ = false;
};

} // namespace

void encodeRow(ByteSpan pixels, std::optional<std::uint8_t> transparent, Bytes& out) {
    LiteralWriter literals(out);
    std::size_t at = 0;
    while (at < pixels.size()) {
        const std::uint8_t colour = pixels[at];
        const std::size_t run = equalPixels(pixels, at);
        const bool clear = colour == transparent;
        const bool fill = run >= kShortestFill && pixels.size() - at >= kPixelsLeftForFill;
        if (clear || fill) {
            appendRuns(run, clear ? std::nullopt : std::optional(colour), out);
            literals.close();
            at += run;
        } else {
            literals.append(colour);
            ++at;
        }
    }
}

RowEnd decodeRow(ByteSpan data, std::span<std::uint8_t> pixels, std::uint8_t transparent) {
    std::fill(pixels.begin(), pixels.end(), transparent);
    RowReader reader(data, static_cast<int>(pixels.size()));
    RowRun run;
    auto at = pixels.begin();
    while (reader.next(run)) {
        if (run.kind == RowRun::Kind::Fill)
            std::fill_n(at, run.length, run.colours[0]);
        else if (run.kind == RowRun::Kind::Literal)
            std::copy_n(run.colours.begin(), run.length, at);
        at += run.length;
    }
    return reader.end();
}

RowEnd skipRow(ByteSpan data, int width) {
    RowReader reader(data, width);
    RowRun run;
    while (reader.next(run)) {
    }
    return reader.end();
}

} // namespace formats::animation
