// Sound resources (formats/sound/wave.h) out of a stream.
#pragma once

#include "formats/sound/wave.h"

class OMIStream;

/// Reads the header wherever the stream stands. An unknown header gives a length of 0. Unusual
/// values fail checks and are taken as they are; a RIFF WAVE file without format is a fatal error.
[[nodiscard]] formats::sound::Header OMReadWaveHeader(OMIStream& stream);
