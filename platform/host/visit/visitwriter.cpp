#include "platform/host/visit/visitwriter.h"

#include <filesystem>

namespace platform {

namespace {

constexpr std::uint64_t kLineMs = 250; ///< of turns, so that a sudden end loses no more

} // namespace

VisitWriter::VisitWriter(const std::string& file)
    : file_(file, std::ios::binary), folder_(std::filesystem::path(file).parent_path().string()),
      name_(std::filesystem::path(file).stem().string()) {}

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
