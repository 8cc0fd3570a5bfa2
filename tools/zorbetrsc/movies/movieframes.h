// The frames of a movie as their author gives them: PNG files, and what is to be done with their
// colours. The files are read twice, once for their colours and once for their pixels, since all of
// a long movie may not fit into memory.
#pragma once

#include "filesystem.h"
#include "pictures/palette.h"
#include "pictures/picture.h"

#include <filesystem>

namespace rsc {

struct MovieColourOptions {
    std::vector<int> paletteAt; ///< frames, counted from 1, that begin new colours
    std::optional<std::filesystem::path> palette; ///< an indexed PNG whose colours are used
    bool remap = false;                           ///< treats indexed pictures as truecolour ones
};

class MovieFrames {
  public:
    /// Reads the frames for their size and colours; at least one must be named. Refuses, with the
    /// file's name, what cannot be read and sizes that movies cannot have, here or in `indices`.
    MovieFrames(std::vector<std::filesystem::path> files, const MovieColourOptions& options);

    [[nodiscard]] std::size_t count() const { return files_.size(); }
    [[nodiscard]] int width() const { return width_; }
    [[nodiscard]] int height() const { return height_; }

    /// The colours that begin with this frame, counted from 0; null when they go on.
    [[nodiscard]] const Palette* newPalette(std::size_t frame) const;
    /// The pixels of a frame, row by row from the top left; transparent ones are black.
    [[nodiscard]] Bytes indices(std::size_t frame);

  private:
    /// Frames that follow one another and have the same colours.
    struct Scene {
        std::size_t first = 0;
        Palette palette;
        bool keepsIndices = false; ///< of its indexed frames
        ColourLookup lookup;
    };

    [[nodiscard]] Picture read(std::size_t frame) const;
    [[nodiscard]] Scene makeScene(std::size_t first, std::size_t end) const;
    [[nodiscard]] Scene& sceneOf(std::size_t frame);

    std::vector<std::filesystem::path> files_;
    bool remap_;
    int width_ = 0;
    int height_ = 0;
    std::vector<Scene> scenes_; ///< in their order
};

/// The PNG files that these paths name, in their order; a folder stands for those in it, in the
/// order of their names, in which numbers count as such: 2.png comes before 10.png.
[[nodiscard]] std::vector<std::filesystem::path>
listFrameFiles(const std::vector<std::filesystem::path>& paths);

} // namespace rsc
