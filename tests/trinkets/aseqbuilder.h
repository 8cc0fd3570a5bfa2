// Puts animation resources together, damaged ones too.
#pragma once

#include "ompp/memoryfiles.h"

#include "aoimage.h"
#include "formats/animation/animation.h"
#include "formats/animation/row.h"

#include <stdexcept>

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
            formats::animation::encodeRow(
                {reinterpret_cast<const std::uint8_t*>(row.data()), row.size()}, '.', made.rows);
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

    [[nodiscard]] Bytes build(std::endian order = std::endian::little) const {
        formats::animation::Animation made{rate, x, y, depth, {}, sequences};
        for (const Frame& frame : frames)
            made.frames.push_back({frame.width, frame.height, frame.rows});
        return toBytes(formats::animation::write(made, order));
    }
    [[nodiscard]] std::shared_ptr<AOImage> image() const {
        std::string problem;
        auto made = AOImage::read(build(), problem);
        if (!made) throw std::runtime_error(problem);
        return made;
    }
};

} // namespace testing_support
