// An animation resource (`ASEQ`), parsed and checked once: frames, and sequences that say how they
// are shown. Shared by all animations that play it. What changes afterwards is seen by all of them:
// only single entries do (replaceEntry). The frames stay packed; those that are shown are kept
// beside in the form that they are drawn from. Main thread only, reading too.
//
// Tables that do not fit into the resource make it unusable. A frame that lies outside of it, or
// has a negative size, becomes an empty frame; rows that are cut short end transparent.
#pragma once

#include "aoframe.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

namespace formats::animation {
struct Entry;
}

/// Who looks into one includes formats/animation/animation.h.
using AOEntry = formats::animation::Entry;

/// The new colour index of each.
using AOColorMap = std::array<std::uint8_t, 256>;

/// Always ends with an entry of code kEnd.
using AOSequence = std::vector<AOEntry>;

class AOImage {
  public:
    struct Placement {
        int x = 0;
        int y = 0;
        int depth = 0;
    };

    /// Copies what it needs. Null when the resource cannot be used; `problem` then says why.
    [[nodiscard]] static std::shared_ptr<AOImage> read(std::span<const std::byte> data,
                                                       std::string& problem);
    /// One without frames, for what may go without a picture; always the same. Playing it ends at
    /// once.
    [[nodiscard]] static const std::shared_ptr<AOImage>& blank();

    [[nodiscard]] int framesPerSecond() const { return framesPerSecond_; }
    [[nodiscard]] const Placement& embedded() const { return embedded_; }
    /// At least one.
    [[nodiscard]] int sequenceCount() const { return static_cast<int>(sequences_->size()); }
    /// 0 <= index < sequenceCount().
    [[nodiscard]] const AOSequence& sequence(int index) const {
        return (*sequences_)[static_cast<std::size_t>(index)];
    }
    /// Sequence and position must exist; the last entry of a sequence stays its end.
    void replaceEntry(int sequence, int position, const AOEntry& entry);
    [[nodiscard]] bool sharesSequences(const AOImage& other) const {
        return sequences_ == other.sequences_;
    }
    [[nodiscard]] int frameCount() const { return static_cast<int>(frames_.size()); }
    /// 0 x 0 for a number that has no frame.
    [[nodiscard]] AOSize frameSize(int index) const;
    /// Its rows as the resource has them (formats/animation/row.h), and what follows them; empty
    /// for a number that has no frame.
    [[nodiscard]] std::span<const std::uint8_t> packedRows(int index) const;
    /// For canvases of 8 bits, kept; an empty frame for a number that has none. Lives until another
    /// frame is asked for.
    [[nodiscard]] const AOFrame& frame(int index) const;
    /// A frame for canvases of another depth, or to be used once; see AOFrame's constructor.
    [[nodiscard]] AOFrame unpackedFrame(int index, const AOPixelTable& pixels,
                                        int bytesPerPixel) const;
    /// How many frames could not be read.
    [[nodiscard]] int brokenFrames() const { return brokenFrames_; }

    /// A copy whose frames have the colour map[c] where this one has c. Both share the sequences.
    /// Of frames that lie across each other, the last ones may keep their colours.
    [[nodiscard]] std::shared_ptr<AOImage> recoloured(const AOColorMap& map) const;

  private:
    struct FrameRecord {
        AOSize size;
        std::size_t rows = 0; ///< offset in `data_`
    };

    std::size_t recolourFrame(const FrameRecord& frame, const AOColorMap& map, std::size_t most,
                              AOImage& copy) const;
    std::size_t recolourRow(std::span<const std::uint8_t> row, int width, const AOColorMap& map,
                            AOImage& copy) const;

    int framesPerSecond_ = 0;
    Placement embedded_;
    std::shared_ptr<std::vector<AOSequence>> sequences_;
    std::vector<FrameRecord> frames_;
    std::vector<std::uint8_t> data_; ///< the frame data
    int brokenFrames_ = 0;
    mutable AOFrameCache unpacked_;
};

/// The images in use, by resource id: whoever asks while another still has the image gets the same.
class AOImageStore {
  public:
    [[nodiscard]] std::shared_ptr<AOImage> find(int id) const;
    void keep(int id, const std::shared_ptr<AOImage>& image);

  private:
    std::unordered_map<int, std::weak_ptr<AOImage>> images_;
};
