// Puts animation resources together. See aoimage.h for their layout.
#pragma once

#include "aoimage.h"
#include "aorow.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace testing_support {

inline AOEntry entry(int code, int argument = 0, int dx = 0, int dy = 0) {
    return {static_cast<std::int16_t>(dx), static_cast<std::int16_t>(dy),
            static_cast<std::int16_t>(code), static_cast<std::int16_t>(argument)};
}

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

    [[nodiscard]] std::vector<std::byte> build(bool swapped = false) const {
        std::vector<std::byte> out;
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
        if (!made) throw std::runtime_error(problem);
        return made;
    }
};

} // namespace testing_support
