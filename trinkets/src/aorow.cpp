#include "aorow.h"

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

/// The same without a call for the short runs that noisy pictures are full of: long ones are
/// written in whole words, the last of which overlaps the one before.
template <class Word>
void setWords(std::uint8_t* at, std::uint64_t pattern, int count) {
    constexpr int kSize = sizeof(Word);
    const auto word = static_cast<Word>(pattern);
    for (int i = 0; i + kSize < count; i += kSize) std::memcpy(at + i, &word, kSize);
    std::memcpy(at + count - kSize, &word, kSize);
}

template <class Word>
void copyWords(std::uint8_t* at, const std::uint8_t* from, int count) {
    constexpr int kSize = sizeof(Word);
    for (int i = 0; i + kSize < count; i += kSize) std::memcpy(at + i, from + i, kSize);
    std::memcpy(at + count - kSize, from + count - kSize, kSize);
}

constexpr int kFewPixels = 32;
constexpr std::uint64_t kEveryByte = 0x0101010101010101u;

struct ForwardWriter {
    std::uint8_t* line;

    void fill(int x, std::uint8_t colour, int count) const {
        std::uint8_t* at = line + x;
        const std::uint64_t pattern = colour * kEveryByte;
        if (count >= kFewPixels)
            std::memset(at, colour, static_cast<std::size_t>(count));
        else if (count >= 8)
            setWords<std::uint64_t>(at, pattern, count);
        else if (count >= 4)
            setWords<std::uint32_t>(at, pattern, count);
        else
            setWords<std::uint8_t>(at, pattern, count);
    }
    void copy(int x, const std::uint8_t* from, int count) const {
        std::uint8_t* at = line + x;
        if (count >= kFewPixels)
            std::memcpy(at, from, static_cast<std::size_t>(count));
        else if (count >= 8)
            copyWords<std::uint64_t>(at, from, count);
        else if (count >= 4)
            copyWords<std::uint32_t>(at, from, count);
        else
            copyWords<std::uint8_t>(at, from, count);
    }
};

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

template <class Writer>
void drawWhole(const std::uint8_t* data, int skip, int count, Writer writer) {
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

void drawWholeRow(const std::uint8_t* data, int skip, PixelLine line) {
    if (line.step == 1)
        drawWhole(data, skip, line.count, ForwardWriter{line.at});
    else
        drawWhole(data, skip, line.count, SteppingWriter{line.at, line.step});
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
