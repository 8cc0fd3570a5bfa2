// What a recording of these samples is, to the byte.
#pragma once

#include "formats/sound/wave.h"

#include <string>

namespace testing_support {

inline std::string recordingOf(const formats::sound::Format& format, formats::Bytes samples) {
    formats::Bytes file =
        formats::sound::riffHead(format, static_cast<std::uint32_t>(samples.size()));
    file.insert(file.end(), samples.begin(), samples.end());
    if (samples.size() % 2 == 1) file.push_back(0);
    return {file.begin(), file.end()};
}

} // namespace testing_support
