// The process-wide critical section of file input and output. A worker thread holds it while it
// resolves names through the search path and opens files; the main thread holds it while it changes
// the search path.
#pragma once

#include <mutex>

[[nodiscard]] std::mutex& OMIOSection();
