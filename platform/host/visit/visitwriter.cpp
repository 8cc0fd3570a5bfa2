#include "platform/host/visit/visitwriter.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <utility>

namespace platform {

namespace {

constexpr std::uint64_t kLineMs = 250; ///< of turns, so that a sudden end loses no more

} // namespace

VisitWriter::VisitWriter(const std::string& file)
    : path_(file), folder_(std::filesystem::path(file).parent_path().string()),
      name_(std::filesystem::path(file).stem().string()) {}

bool VisitWriter::open() {
    std::error_code error;
    if (std::filesystem::exists(path_, error)) {
        errno = EEXIST;
        return false;
    }
    file_.open(path_, std::ios::binary);
    return file_.is_open();
}

void VisitWriter::line(const std::string& text) {
    file_ << text << std::endl;
    if (file_ || std::exchange(hasFailed_, true)) return;
    std::fprintf(stderr,
                 "zorbet: %s cannot be written any more: %s. The visit is not recorded from here "
                 "on\n",
                 path_.c_str(), std::strerror(errno));
}

void VisitWriter::begin(std::uint32_t seed, std::string_view scene, std::string_view language,
                        std::string_view data) {
    line("# A recorded visit; zorbet --headless --input plays it again.");
    line("seed " + std::to_string(seed));
    if (!scene.empty()) line("scene " + std::string(scene));
    if (!language.empty()) line("language " + std::string(language));
    line(dataLines(data));
}

void VisitWriter::write(std::uint32_t timeMs, const Happening& what) { line(lineOf(timeMs, what)); }

void VisitWriter::turn(std::uint32_t ms) {
    if (turns_.empty() || turns_.back().ms != ms) turns_.push_back({ms, 0});
    ++turns_.back().count;
    turnsMs_ += ms;
    if (turnsMs_ >= kLineMs) writeTurns();
}

void VisitWriter::writeTurns() {
    if (turns_.empty()) return;
    line(lineOf(turns_));
    turns_.clear();
    turnsMs_ = 0;
}

} // namespace platform
