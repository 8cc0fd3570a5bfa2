// Movies that hold whatever a movie can hold: blocks of all kinds and details in runs of all
// lengths, palettes of all commands, sound of all kinds, several tracks.
#pragma once

#include "formats/movie/moviefile.h"

#include <algorithm>
#include <random>

namespace testing_support {

using formats::Bytes;

class RandomMovie {
  public:
    explicit RandomMovie(unsigned seed) : random_(seed) {}

    Bytes make(std::size_t frames) {
        formats::MovieHeader header;
        header.later = below(2) != 0;
        header.width = 4 * (1 + below(12)) + (below(4) == 0 ? below(4) : 0);
        header.height = 4 * (1 + below(9)) + (below(4) == 0 ? below(4) : 0);
        header.flags = 2 * below(4) + (below(2) ? formats::MovieHeader::kRingFlag : 0);
        header.setFrameTime(1 + static_cast<int>(below(20000)));
        std::vector<formats::MovieFrame> made(frames + header.hasRing());
        for (std::size_t track = 0; track < 3; ++track) {
            if (track > 0 && below(2)) continue;
            const formats::MovieSoundFormat format{8000, below(2) ? 8 : 16, below(2) ? 1 : 2,
                                                   below(3) != 0};
            header.setSound(track, format);
            for (auto& frame : made)
                if (below(4)) frame.sounds[track] = makeSound(format);
        }
        for (auto& frame : made)
            if (below(2)) frame.palette = makePalette();
        const Bytes trees = addPictures(made, header);
        return formats::makeMovieFile(header, trees, made);
    }

  private:
    static constexpr std::size_t kBit = 4; ///< no value of a tree, but a bit
    struct Told {
        std::size_t tree = 0;
        std::uint16_t value = 0;
    };

    std::uint32_t below(std::uint32_t end) { return static_cast<std::uint32_t>(random_() % end); }
    /// Few, so that they repeat, or any.
    std::uint16_t word() {
        return static_cast<std::uint16_t>(below(4) ? below(5) * 0x3311 : random_());
    }

    std::vector<Told> tellPicture(std::size_t blocks, bool later) {
        std::vector<Told> told;
        const auto put = [&](std::size_t tree) { told.push_back({tree, word()}); };
        while (blocks > 0) {
            const std::uint16_t kind = static_cast<std::uint16_t>(below(4));
            const std::uint16_t length =
                static_cast<std::uint16_t>(below(3) ? below(5) : below(64));
            const formats::BlockRun run = formats::BlockRun::fromValue(
                static_cast<std::uint16_t>(kind | length << 2 | (kind == 3 ? below(256) << 8 : 0)));
            told.push_back({3, run.value()});
            std::size_t pairs = 8;
            if (later && kind == 1) {
                pairs = 8U >> below(3);
                told.push_back({kBit, pairs == 2});
                if (pairs != 2) told.push_back({kBit, pairs == 4});
            }
            std::size_t count = std::min(run.length(), blocks);
            blocks -= count;
            for (; count > 0; --count) {
                if (kind == 0) put(1), put(0);
                for (std::size_t i = 0; kind == 1 && i < pairs; ++i) put(2);
            }
        }
        return told;
    }

    /// Gives the trees.
    Bytes addPictures(std::vector<formats::MovieFrame>& frames, formats::MovieHeader& header) {
        std::vector<std::vector<Told>> told(frames.size());
        for (auto& frame : told)
            frame = tellPicture(std::size_t{header.width / 4} * (header.height / 4), header.later);
        formats::BitWriter out;
        std::vector<formats::WordTree> trees;
        for (std::size_t tree = 0; tree < 4; ++tree) {
            std::vector<formats::Values> values(frames.size());
            for (std::size_t i = 0; i < frames.size(); ++i)
                for (const Told& one : told[i])
                    if (one.tree == tree) values[i].push_back(one.value);
            const std::vector<formats::ValueSpan> spans(values.begin(), values.end());
            trees.push_back(formats::WordTree::forFrames(spans).value());
            trees.back().write(out);
            header.treeSizes[tree] = trees.back().sizeInMemory();
        }
        for (std::size_t i = 0; i < frames.size(); ++i) {
            formats::BitWriter bits;
            std::vector<formats::WordTree::FrameWriter> writers(trees.begin(), trees.end());
            for (const Told& one : told[i])
                one.tree == kBit ? bits.putBit(one.value) : writers[one.tree].put(bits, one.value);
            frames[i].picture = bits.take();
            if (frames[i].picture.empty()) frames[i].picture.push_back(0);
        }
        return out.take();
    }

    Bytes makePalette() {
        formats::ByteWriter out;
        out.u8(0);
        for (std::uint32_t told = 0; told < 256;) {
            const std::uint32_t count = 1 + below(std::min(256 - told, below(4) ? 5U : 64U));
            const std::uint32_t command = below(3);
            if (command == 0) out.u8(0x80 | (count - 1));
            if (command == 1) out.u8(0x40 | (count - 1)).u8(below(257 - count));
            if (command == 2) out.u8(below(64)).u8(below(64)).u8(below(64));
            told += command == 2 ? 1 : count;
        }
        out.padTo(4).zeros(4 * below(2));
        Bytes chunk = out.take();
        chunk[0] = static_cast<std::uint8_t>(chunk.size() / 4);
        return chunk;
    }

    Bytes makeSound(const formats::MovieSoundFormat& format) {
        Bytes samples(format.bytesOfPoint() * (4 + below(300)));
        const std::uint32_t range = 1 + below(256);
        for (std::uint8_t& sample : samples) sample = static_cast<std::uint8_t>(below(range));
        return formats::makeSoundChunk(format, samples);
    }

    std::mt19937 random_;
};

} // namespace testing_support
