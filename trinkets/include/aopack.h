// Packs what a canvas shows into a new animation resource of one frame that stands still.
#pragma once

#include "platform/geometry.h"

#include <cstddef>
#include <cstdint>
#include <vector>

class OMCanvas;

/// The bytes of an `ASEQ` resource (formats/animation/animation.h) with the pixels of `area`, those
/// of index `transparent` left out; an empty area stands for the whole canvas. What of it the
/// canvas does not have is cut off. Empty when nothing is left, and after a box when the canvas has
/// not 8 bits.
[[nodiscard]] std::vector<std::byte> AOPack(OMCanvas& canvas, const platform::Rect& area,
                                            std::uint8_t transparent);
