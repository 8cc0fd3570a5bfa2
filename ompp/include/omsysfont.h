// The system font: the bitmap font that the program carries, the same on every machine.
#pragma once

#include "omfont.h"

class OMSysFont final : public OMTypefaceFont {
  public:
    OMSysFont();
};
