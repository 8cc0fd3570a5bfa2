// What the scenes of the golden pictures show: figures, backgrounds and palettes.
#pragma once

#include "goldenresources.h"

#include <vector>

namespace golden {

struct Picture {
    int id;
    Animation animation;
};
/// The `ASEQ` resources.
[[nodiscard]] std::vector<Picture> pictures();
[[nodiscard]] std::vector<Picture> puzzlePictures();
[[nodiscard]] std::vector<Picture> gamePictures();
[[nodiscard]] std::vector<Picture> progressPictures();

struct Colors {
    int id;
    Palette palette;
};
/// The `RRGB` resources.
[[nodiscard]] std::vector<Colors> palettes();

} // namespace golden
