#include "resources/palettehook.h"

#include "formats/picture/palette.h"

#include <algorithm>

void RLiftPalette(OMPalette& colors) {
    const auto lift = [](const OMColor& stored) -> OMColor {
        const auto shown = formats::picture::lift({stored.red(), stored.green(), stored.blue()});
        return {shown.red, shown.green, shown.blue};
    };
    std::transform(colors.begin() + platform::kFirstFreeColour,
                   colors.begin() + platform::kFirstHighStaticColour,
                   colors.begin() + platform::kFirstFreeColour, lift);
}
