// An animation resource (`ASEQ`), parsed and checked once: frames, and sequences that say how they
// are shown. Shared by all animations that play it. The frames stay packed; those that are shown
// are kept beside in the form that they are drawn from. Main thread only, reading too.
//
// Tables that do not fit into the resource make it unusable. A frame that lies outside of it, or
// has a negative size, becomes an empty frame; rows that are cut short end transparent.
#pragma once

#include "aoframe.h"
#include "aosequences.h"
#include "omlink.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

class OMCanvas;
class OMIStream;

/// The new colour index of each.
using AOColorMap = std::array<std::uint8_t, 256>;

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
    /// The image of a resource, shared by all who have it; null when there is none, or a damaged
    /// one.
    [[nodiscard]] static std::shared_ptr<AOImage> locate(int id);
    /// For those who can go without: a blank image where there is no such resource, which numbers
    /// below 0 ask for.
    [[nodiscard]] static std::shared_ptr<AOImage> locateOrBlank(int id);
    /// From now on resources are read anew; who has an image keeps it.
    static void forgetResources();
    /// How the `ASEQ` resource of an id is found.
    static void setSourceLocator(OMLinkTo<std::unique_ptr<OMIStream>(int id)> locator);
    /// Whether there is a way; else the check fails that has these texts.
    [[nodiscard]] static bool
    canLocate(const char* message = "SourceURL is not installed in OMAnimation",
              const char* condition = "url == NULL");

    [[nodiscard]] int framesPerSecond() const { return framesPerSecond_; }
    [[nodiscard]] const Placement& embedded() const { return embedded_; }
    /// At least one.
    [[nodiscard]] const AOSequences& sequences() const { return sequences_; }
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
    AOSequences sequences_;
    std::vector<FrameRecord> frames_;
    std::vector<std::uint8_t> data_; ///< the frame data
    int brokenFrames_ = 0;
    mutable AOFrameCache unpacked_;
};

/// Packs what a canvas shows into a new animation resource of one frame that stands still: the
/// pixels of `area`, those of index `transparent` left out; an empty area stands for the whole
/// canvas. What of it the canvas does not have is cut off. Empty when nothing is left, and after a
/// box when the canvas has not 8 bits.
[[nodiscard]] std::vector<std::byte> AOPack(OMCanvas& canvas, const platform::Rect& area,
                                            std::uint8_t transparent);
