#include "platform/files.h"

namespace platform {

std::optional<std::string> readFile(Files& files, std::string_view path, std::size_t limit) {
    const std::unique_ptr<File> file = files.open(path, OpenMode::Read);
    if (!file) return std::nullopt;
    const std::uint64_t size = file->size();
    if (size > limit) return std::nullopt;
    std::string text(static_cast<std::size_t>(size), '\0');
    text.resize(file->read(std::as_writable_bytes(std::span(text))));
    return text;
}

} // namespace platform
