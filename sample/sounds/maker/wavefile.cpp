#include "wavefile.h"

#include "score.h"

namespace {

void append(std::string& bytes, std::uint32_t value, int count) {
    for (; count > 0; --count, value >>= 8) bytes += static_cast<char>(value & 0xFF);
}

} // namespace

std::string waveFile(const std::vector<std::uint8_t>& samples) {
    const auto size = static_cast<std::uint32_t>(samples.size());
    std::string bytes = "RIFF";
    append(bytes, 36 + size + size % 2, 4);
    bytes += "WAVEfmt ";
    append(bytes, 16, 4); // size of the format
    append(bytes, 1, 2);  // PCM
    append(bytes, 1, 2);  // mono
    append(bytes, kSampleRate, 4);
    append(bytes, kSampleRate, 4); // bytes a second
    append(bytes, 1, 2);           // bytes a sample
    append(bytes, 8, 2);           // bits a sample
    bytes += "data";
    append(bytes, size, 4);
    bytes.append(samples.begin(), samples.end());
    if (size % 2 == 1) bytes += '\0';
    return bytes;
}
