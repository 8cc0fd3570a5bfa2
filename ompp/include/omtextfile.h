// Text files that grow line by line: the log, what scripts say.
#pragma once

#include "platform/files.h"

#include <cstdint>
#include <string_view>

/// Adds a text to the end of a file that was opened for it, unless the file would get longer than
/// `most` bytes. The last thing in a file that is full says so. False when it could not be written.
bool OMAddText(platform::File& file, std::string_view text, std::uint64_t most);
