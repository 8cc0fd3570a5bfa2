// Requests from the host that the program end: the signals that a shell, a closing session or a
// service sends. They are kept until the program asks, and it ends in its own orderly way.
#pragma once

namespace platform {

/// From now on such signals no longer end the process.
void catchTermination();

/// Whether one has come.
[[nodiscard]] bool terminationRequested();

} // namespace platform
