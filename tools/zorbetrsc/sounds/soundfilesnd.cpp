#include "sounds/soundfile.h"

#include "platform/host/machine/handle.h"
#include "refusal.h"

#include <sndfile.h>

#include <algorithm>
#include <cstdio>

namespace rsc {

namespace {

constexpr std::size_t kMostValues = std::size_t{1} << 27; ///< of all channels: half a gigabyte
constexpr std::size_t kBlock = std::size_t{1} << 16;      ///< values that are read at once

using SoundHandle = platform::Handle<SNDFILE, sf_close>;

/// A file in memory, as the library reads it.
struct MemoryFile {
    ByteSpan bytes;
    sf_count_t at = 0;

    static MemoryFile& of(void* file) { return *static_cast<MemoryFile*>(file); }

    static sf_count_t length(void* file) { return std::ssize(of(file).bytes); }
    static sf_count_t tell(void* file) { return of(file).at; }
    static sf_count_t seek(sf_count_t offset, int whence, void* file) {
        const sf_count_t start = whence == SEEK_SET   ? 0
                                 : whence == SEEK_CUR ? tell(file)
                                                      : length(file);
        const sf_count_t wanted = offset > length(file) ? length(file) : start + offset;
        return of(file).at = std::clamp<sf_count_t>(wanted, 0, length(file));
    }
    static sf_count_t read(void* to, sf_count_t count, void* file) {
        MemoryFile& self = of(file);
        count = std::clamp<sf_count_t>(count, 0, length(file) - self.at);
        std::copy_n(self.bytes.begin() + self.at, count, static_cast<std::uint8_t*>(to));
        self.at += count;
        return count;
    }
    static sf_count_t write(const void*, sf_count_t, void*) { return 0; }
};

bool isDeep(int format) {
    const int coding = format & SF_FORMAT_SUBMASK;
    return coding != SF_FORMAT_PCM_U8 && coding != SF_FORMAT_PCM_S8;
}

std::vector<float> readAll(SNDFILE* file, std::size_t channels) {
    std::vector<float> values;
    const std::size_t frames = std::max<std::size_t>(kBlock / channels, 1);
    for (;;) {
        const std::size_t before = values.size();
        values.resize(before + frames * channels);
        const sf_count_t count =
            sf_readf_float(file, values.data() + before, static_cast<sf_count_t>(frames));
        values.resize(before + static_cast<std::size_t>(std::max<sf_count_t>(count, 0)) * channels);
        if (sf_error(file) != SF_ERR_NO_ERROR)
            throw Refusal(std::string("the sound is damaged: ") + sf_strerror(file));
        if (count <= 0) return values;
        if (values.size() > kMostValues)
            throw Refusal("the sound is too long: it has more than " + std::to_string(kMostValues) +
                          " samples; cut it into several");
    }
}

} // namespace

bool canReadSounds() { return true; }

SoundSamples readSoundFile(ByteSpan file) {
    if (file.empty()) throw Refusal("the file is empty");
    SF_VIRTUAL_IO calls{MemoryFile::length, MemoryFile::seek, MemoryFile::read, MemoryFile::write,
                        MemoryFile::tell};
    MemoryFile memory{file};
    SF_INFO info{};
    const SoundHandle sound(sf_open_virtual(&calls, SFM_READ, &info, &memory));
    if (!sound)
        throw Refusal("no sound that can be read: export it as a WAVE file (libsndfile says: " +
                      std::string(sf_strerror(nullptr)) + ")");
    SoundSamples samples{info.samplerate, info.channels, isDeep(info.format), {}};
    samples.values = readAll(sound.get(), static_cast<std::size_t>(info.channels));
    if (samples.values.empty()) throw Refusal("the sound has no samples");
    return samples;
}

} // namespace rsc
