#include "omlog.h"

#include "omplatform.h"

#include <memory>
#include <span>
#include <string>

namespace {

constexpr std::string_view kFull =
    "\n(This file is full. Take it away, and the next one begins.)\n";

} // namespace

bool OMAddText(platform::File& file, std::string_view text, std::uint64_t most) {
    const std::uint64_t size = file.size();
    if (size + text.size() + kFull.size() <= most)
        return file.write(std::as_bytes(std::span(text)));
    if (size + kFull.size() > most) return true;
    // Shorter texts do not get in behind it.
    std::string rest(static_cast<std::size_t>(most - kFull.size() - size), ' ');
    rest += kFull;
    return file.write(std::as_bytes(std::span(rest)));
}

namespace OMLog {

namespace {

constexpr int kFirstLevelCommand = 59407;
constexpr std::string_view kLevelNames[] = {"NONE\n\n", "ERRORS\n\n", "WARNINGS\n\n", "ALL\n\n"};

struct LogState {
    int level = kAll;
    std::string fallbackDirectory;
};

LogState& logState() {
    static LogState theState;
    return theState;
}

bool isLevel(int value) { return value >= kNone && value <= kAll; }

std::string_view levelName(int value) {
    return isLevel(value) ? kLevelNames[value] : std::string_view();
}

std::string_view prefix(Kind kind) {
    const int level = logState().level;
    if (!isLevel(level)) return {};
    if (kind == Kind::Error && level >= kErrors) return "ERROR: ";
    if (kind == Kind::Warning && level >= kWarnings) return "Warning: ";
    return {};
}

void rawWrite(std::string_view text, platform::OpenMode mode) {
    platform::Files& files = OMPlatform().files();
    const auto writeTo = [text](const std::unique_ptr<platform::File>& file) {
        return file && OMAddText(*file, text, kMostBytes);
    };
    if (writeTo(files.open(kFileName, mode))) return;
    const std::string& second = logState().fallbackDirectory;
    if (!second.empty() && writeTo(files.open(second + std::string(kFileName), mode))) return;
    writeTo(OMPlatform().openLog(kFileName, mode));
}

} // namespace

void write(Kind kind, std::string_view text) {
    std::string line(prefix(kind));
    line += text;
    line += '\n';
    rawWrite(line, platform::OpenMode::Append);
}

void start() {
    std::string text = "Starting Logging, Debug Level set to ";
    text += levelName(logState().level);
    rawWrite(text, platform::OpenMode::Write);
}

void close() { rawWrite("\nClosing Log\n\n", platform::OpenMode::Append); }

void setFallbackDirectory(std::string_view directory) { logState().fallbackDirectory = directory; }

void setLevel(int level) {
    logState().level = level;
    std::string text = "Debug Level changed to ";
    text += levelName(level);
    rawWrite(text, platform::OpenMode::Append);
}

bool handleCommand(int command) {
    if (command < kFirstLevelCommand || command > kFirstLevelCommand + kAll) return false;
    setLevel(command - kFirstLevelCommand);
    return true;
}

} // namespace OMLog
