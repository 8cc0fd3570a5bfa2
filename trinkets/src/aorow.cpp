#include "aorow.h"

#include <array>
#include <cstring>

namespace aorow {

namespace {

/// A fill takes three bytes: shorter runs, and those in a row's last pixels, are cheaper as
/// literals.
constexpr std::size_t kShortestFill = 3;
constexpr std::size_t kPixelsLeftForFill = 4;

std::size_t equalPixels(std::span<const std::uint8_t> pixels, std::size_t from) {
    std::size_t end = from + 1;
    while (end < pixels.size() && pixels[end] == pixels[from]) ++end;
    return end - from;
}

/// One stretch of equal pixels as as many clear or fill tokens as it needs.
void appendRuns(std::size_t length, std::optional<std::uint8_t> colour,
                std::vector<std::uint8_t>& out) {
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
    explicit LiteralWriter(std::vector<std::uint8_t>& out) : out_(out) {}

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
    std::vector<std::uint8_t>& out_;
    std::size_t countAt_ = 0;
    bool open_ = false;
};

void drawRun(const RowRun& run, int from, int count, std::uint8_t* at, std::ptrdiff_t step) {
    const auto n = static_cast<std::size_t>(count);
    if (run.kind == RowRun::Kind::Fill) {
        const std::uint8_t colour = run.colours[0];
        if (step == 1) {
            std::memset(at, colour, n);
            return;
        }
        for (int i = 0; i < count; ++i) at[i * step] = colour;
        return;
    }
    const std::uint8_t* source = run.colours.data() + from;
    if (step == 1) {
        std::memcpy(at, source, n);
        return;
    }
    for (int i = 0; i < count; ++i) at[i * step] = source[i];
}

// Rows that are whole. Noisy pictures have runs of a few pixels, so that neither calls nor loops
// pay: runs are written in pieces that may overlap, with few branches that depend on the length.
// What stands behind a run is never touched, since it may lie under clear pixels.

struct Wide {
    std::uint64_t low;
    std::uint64_t high;
};

template <class Piece>
void copyTwice(std::uint8_t* at, const std::uint8_t* from, int count) {
    constexpr int kSize = sizeof(Piece);
    Piece first;
    Piece last;
    std::memcpy(&first, from, kSize);
    std::memcpy(&last, from + count - kSize, kSize);
    std::memcpy(at, &first, kSize);
    std::memcpy(at + count - kSize, &last, kSize);
}

constexpr int kWide = sizeof(Wide);
constexpr int kBlock = 4 * kWide; ///< longer runs are written in blocks of this size first
constexpr std::uint64_t kEveryByte = 0x0101010101010101u;

/// Writes the pixels of a surface's row.
struct RowWriter {
    std::uint8_t* line;

    void copy(int x, const std::uint8_t* from, int count) const {
        std::uint8_t* at = line + x;
        if (count <= 4) {
            const int last = count - 1;
            at[0] = from[0];
            at[last / 2] = from[last / 2];
            at[count / 2] = from[count / 2];
            at[last] = from[last];
        } else if (count <= 8) {
            copyTwice<std::uint32_t>(at, from, count);
        } else if (count < kWide) {
            copyTwice<std::uint64_t>(at, from, count);
        } else {
            for (; count > kBlock; count -= kBlock, at += kBlock, from += kBlock)
                std::memcpy(at, from, kBlock);
            const int last = count - kWide;
            for (const int place : {0, std::min(kWide, last), std::min(2 * kWide, last), last})
                std::memcpy(at + place, from + place, kWide);
        }
    }
    void fill(int x, std::uint8_t colour, int count) const {
        std::uint8_t* at = line + x;
        const Wide wide{colour * kEveryByte, colour * kEveryByte};
        if (count < kWide) {
            std::array<std::uint8_t, kWide> pixels;
            std::memcpy(pixels.data(), &wide, kWide);
            return copy(x, pixels.data(), count);
        }
        for (; count > kBlock; count -= kBlock, at += kBlock)
            for (int i = 0; i < kBlock; i += kWide) std::memcpy(at + i, &wide, kWide);
        const int last = count - kWide;
        for (const int place : {0, std::min(kWide, last), std::min(2 * kWide, last), last})
            std::memcpy(at + place, &wide, kWide);
    }
};

/// Writes pixels that lie in any other way.
struct SteppingWriter {
    std::uint8_t* line;
    std::ptrdiff_t step;

    void fill(int x, std::uint8_t colour, int count) const {
        for (std::uint8_t* at = line + x * step; count > 0; --count, at += step) *at = colour;
    }
    void copy(int x, const std::uint8_t* from, int count) const {
        for (std::uint8_t* at = line + x * step; count > 0; --count, at += step) *at = *from++;
    }
};

/// Draws all of a row of `width` pixels.
template <class Writer>
void drawAll(const std::uint8_t* data, int width, Writer writer) {
    for (int x = 0; x < width;) {
        const int token = *data++;
        if (token == kClearToken) {
            x += *data++;
        } else if (token == kFillToken) {
            writer.fill(x, data[0], data[1]);
            x += data[1];
            data += 2;
        } else {
            writer.copy(x, data, token);
            x += token;
            data += token;
        }
    }
}

/// Draws `count` pixels of a row from pixel `skip` on.
template <class Writer>
void drawPart(const std::uint8_t* data, int skip, int count, Writer writer) {
    int x = -skip; // place of the run in the line
    while (x < count) {
        const int token = *data++;
        if (token == kClearToken) {
            x += *data++;
            continue;
        }
        const bool fill = token == kFillToken;
        const int length = fill ? data[1] : token;
        const int from = std::max(x, 0);
        const int shown = std::min(x + length, count) - from;
        if (shown > 0) {
            if (fill)
                writer.fill(from, data[0], shown);
            else
                writer.copy(from, data + (from - x), shown);
        }
        data += fill ? 2 : token;
        x += length;
    }
}

template <class Writer>
void drawRow(const std::uint8_t* data, const PartOfRows& part, Writer writer) {
    if (part.count == part.width)
        drawAll(data, part.width, writer);
    else
        drawPart(data, part.skip, part.count, writer);
}

} // namespace

void encodeRow(std::span<const std::uint8_t> pixels, std::optional<std::uint8_t> transparent,
               std::vector<std::uint8_t>& out) {
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

RowEnd decodeRow(std::span<const std::uint8_t> data, std::span<std::uint8_t> pixels,
                 std::uint8_t transparent) {
    std::fill(pixels.begin(), pixels.end(), transparent);
    return drawRow(data, static_cast<int>(pixels.size()), 0, pixels);
}

RowEnd drawRow(std::span<const std::uint8_t> data, int width, int skip, PixelLine line) {
    RowReader reader(data, width);
    RowRun run;
    int x = -skip; // place of the run in the line
    while (reader.next(run)) {
        const int from = std::max(x, 0);
        const int to = std::min(x + run.length, line.count);
        if (from < to && run.kind != RowRun::Kind::Clear)
            drawRun(run, from - x, to - from, line.at + from * line.step, line.step);
        x += run.length;
    }
    return reader.end();
}

RowEnd drawRow(std::span<const std::uint8_t> data, int width, int skip,
               std::span<std::uint8_t> destination) {
    return drawRow(data, width, skip,
                   PixelLine{destination.data(), 1, static_cast<int>(destination.size())});
}

void drawWholeRows(const std::uint8_t* data, std::span<const std::uint32_t> starts,
                   const PartOfRows& part, std::uint8_t* at) {
    for (const std::uint32_t start : starts) {
        if (part.step == 1)
            drawRow(data + start, part, RowWriter{at});
        else
            drawRow(data + start, part, SteppingWriter{at, part.step});
        at += part.nextRow;
    }
}

RowEnd skipRow(std::span<const std::uint8_t> data, int width) {
    RowReader reader(data, width);
    RowRun run;
    while (reader.next(run)) {
    }
    return reader.end();
}

bool hitRow(std::span<const std::uint8_t> data, int width, int x) {
    if (x < 0) return false;
    RowReader reader(data, width);
    RowRun run;
    while (reader.next(run)) {
        if (x < run.length) return run.kind != RowRun::Kind::Clear;
        x -= run.length;
    }
    return false;
}

} // namespace aorow
