#include "platform/headless/waverecorder.h"

#include "formats/sound/wave.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <ostream>
#include <string_view>

namespace platform {

namespace {

constexpr std::size_t kHeaderSize = 44;

/// The header of a file with `dataSize` bytes of samples.
void writeHeader(std::ostream& output, const SoundFormat& format, std::uint32_t dataSize) {
    const formats::Bytes head =
        formats::sound::riffHead({format.rate, format.channels, format.bits}, dataSize);
    output.write(reinterpret_cast<const char*>(head.data()), std::ssize(head));
}

std::uint32_t limitedSize(std::uint64_t bytes) {
    constexpr std::uint64_t most = std::numeric_limits<std::uint32_t>::max() - kHeaderSize;
    return static_cast<std::uint32_t>(std::min(bytes, most));
}

} // namespace

WaveFolder::WaveFolder(std::string folder, std::ostream& notes)
    : folder_(std::move(folder)), notes_(notes) {}

std::string WaveFolder::nextFile(int rate) {
    std::array<char, 32> name{};
    std::snprintf(name.data(), name.size(), "%03d-%d.wav", ++files_, rate);
    std::error_code ignored; // a folder that cannot be made shows when the file is opened
    std::filesystem::create_directories(folder_, ignored);
    return (std::filesystem::path(folder_) / name.data()).string();
}

void WaveFolder::complain(const std::string& file) {
    notes_ << "recording " << file << " cannot be written" << std::endl;
    folder_.clear();
}

void WaveRecorder::play(std::span<const std::uint8_t> samples, const SoundFormat& format) {
    if (!folder_.isUsed() || samples.empty()) return;
    if (!file_.is_open()) begin(format);
    file_.write(reinterpret_cast<const char*>(samples.data()),
                static_cast<std::streamsize>(samples.size()));
    bytes_ += samples.size();
    if (!file_) complain();
}

void WaveRecorder::begin(const SoundFormat& format) {
    name_ = folder_.nextFile(format.rate);
    format_ = format;
    bytes_ = 0;
    file_.open(name_, std::ios::binary | std::ios::trunc);
    writeHeader(file_, format_, 0);
}

void WaveRecorder::finish() {
    if (!file_.is_open()) return;
    if (bytes_ % 2 == 1) file_.put('\0');
    file_.seekp(0);
    writeHeader(file_, format_, limitedSize(bytes_));
    file_.close();
    if (!file_) complain();
    file_.clear();
}

void WaveRecorder::complain() {
    folder_.complain(name_);
    file_.close();
    file_.clear();
}

} // namespace platform
