#include "omsysfont.h"

#include "omplatform.h"

OMSysFont::OMSysFont() : OMTypefaceFont("System font") {
    setFace(OMPlatform().typefaces().systemFont());
}
