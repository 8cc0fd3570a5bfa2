#include "goldenresources.h"

#include "formats/animation/animation.h"

#include <cstdio>
#include <cstdlib>
#include <list>
#include <span>
#include <string>

namespace golden {

namespace {

constexpr int kLongestRun = 250;
constexpr int kClear = 0;
constexpr int kFill = 255;

struct Letter {
    char letter;
    std::uint8_t index;
};
constexpr Letter kLetters[] = {
    {'k', 10}, {'n', 11},  {'s', 12}, {'t', 13},  {'p', 14},  {'r', 20},
    {'g', 21}, {'b', 22},  {'y', 23}, {'c', 24},  {'m', 25},  {'o', 26},
    {'v', 27}, {'w', 100}, {'K', 0},  {'W', 255}, {'R', 249}, {'I', 252},
};

[[noreturn]] void mistake(const char* what) {
    std::fprintf(stderr, "the art is wrong: %s\n", what);
    std::exit(1);
}

/// The stretch of equal letters, or of letters other than ".", at the start of a text.
std::string_view stretch(std::string_view text, Packing packing) {
    const bool equal = text.front() == '.' || packing == Packing::Fills;
    const std::size_t end = equal ? text.find_first_not_of(text.front()) : text.find_first_of('.');
    return text.substr(0, end);
}

Row packed(std::string_view letters, Packing packing) {
    Row row;
    while (!letters.empty()) {
        const std::string_view run = stretch(letters, packing);
        const int length = static_cast<int>(run.size());
        if (run.front() == '.')
            row.clear(length);
        else if (packing == Packing::Fills)
            row.fill(run.front(), length);
        else
            row.single(run);
        letters.remove_prefix(run.size());
    }
    return row;
}

Bytes written(const formats::Bytes& numbers) {
    const auto bytes = std::as_bytes(std::span(numbers));
    return {bytes.begin(), bytes.end()};
}

} // namespace

std::uint8_t indexOf(char letter) {
    for (const Letter& known : kLetters)
        if (known.letter == letter) return known.index;
    mistake("an unknown letter");
}

// Rows and frames

int Row::counted(int pixels) {
    if (pixels < 1 || pixels > kLongestRun) mistake("a run of no pixels, or of more than 250");
    width_ += pixels;
    return pixels;
}

Row& Row::clear(int pixels) {
    add(kClear);
    add(counted(pixels));
    return *this;
}

Row& Row::fillIndex(int index, int pixels) {
    add(kFill);
    add(index);
    add(counted(pixels));
    return *this;
}

Row& Row::single(std::string_view letters) {
    add(counted(static_cast<int>(letters.size())));
    for (const char letter : letters) add(indexOf(letter));
    return *this;
}

Row& Row::same(char letter, int pixels) {
    return single(std::string(static_cast<std::size_t>(pixels), letter));
}

Frame drawn(const std::vector<std::string_view>& art, int scale, Packing packing) {
    Frame frame;
    for (const std::string_view line : art) {
        std::string wide;
        for (const char letter : line) wide.append(static_cast<std::size_t>(scale), letter);
        frame += repeated(packed(wide, packing), scale);
    }
    return frame;
}

Frame repeated(const Row& row, int rows) { return Frame(static_cast<std::size_t>(rows), row); }

Frame& operator+=(Frame& frame, const Frame& more) {
    frame.insert(frame.end(), more.begin(), more.end());
    return frame;
}

// Resources

Bytes Animation::resource() const {
    formats::animation::Animation made{rate, x, y, depth, {}, {}};
    std::list<formats::Bytes> rows;
    for (const Frame& frame : frames) {
        const int width = frame.front().width();
        formats::Bytes& all = rows.emplace_back();
        for (const Row& row : frame) {
            if (row.width() != width) mistake("rows of different widths");
            all.insert(all.end(), row.bytes().begin(), row.bytes().end());
        }
        made.frames.push_back({width, static_cast<int>(frame.size()), all});
    }
    for (const std::vector<Step>& steps : sequences) {
        auto& sequence = made.sequences.emplace_back();
        for (const Step& step : steps) {
            auto& entry = sequence.emplace_back();
            entry.dx = static_cast<std::int16_t>(step.dx);
            entry.dy = static_cast<std::int16_t>(step.dy);
            entry.code = static_cast<std::int16_t>(step.code);
            entry.argument = static_cast<std::int16_t>(step.argument);
        }
    }
    const auto order = bigEndian ? std::endian::big : std::endian::little;
    return written(formats::animation::write(made, order));
}

Bytes resource(const Palette& palette) {
    formats::ByteWriter out;
    for (const Color& color : palette) out.u16(color.red).u16(color.green).u16(color.blue);
    return written(out.bytes());
}

} // namespace golden
