// What all files have in common, wherever they lie.
#include "platform/files.h"

namespace platform {

namespace {

thread_local std::error_code refusal;

} // namespace

std::error_code Files::lastRefusal() { return refusal; }

void Files::setLastRefusal(std::error_code why) { refusal = why; }

std::optional<std::string> readFile(Files& files, std::string_view path, std::size_t limit) {
    const std::unique_ptr<File> file = files.open(path, OpenMode::Read);
    if (!file) return std::nullopt;
    const std::uint64_t size = file->size();
    if (size > limit) {
        Files::setLastRefusal(std::make_error_code(std::errc::file_too_large));
        return std::nullopt;
    }
    std::string text(static_cast<std::size_t>(size), '\0');
    text.resize(file->read(std::as_writable_bytes(std::span(text))));
    if (Files::lastRefusal()) return std::nullopt;
    return text;
}

} // namespace platform
