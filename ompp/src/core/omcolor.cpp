#include "omcolor.h"

#include "omdebug.h"

namespace {

bool isPaletteIndex(int index) { return index >= 0 && index < platform::kPaletteSize; }

} // namespace

OMColor::OMColor(int index) {
    if (OMDebug::check(isPaletteIndex(index), "!ok", "OMColor::OMColor - invalid index!"))
        index_ = index;
}

void OMColor::set(int index) {
    if (!OMDebug::check(isPaletteIndex(index), "!ok", "OMColor::set - invalid index!")) return;
    *this = OMColor();
    index_ = index;
}
