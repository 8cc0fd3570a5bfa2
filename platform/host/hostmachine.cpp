#include "platform/host/hostmachine.h"

#include <fstream>
#include <limits>
#include <string>

namespace platform {

namespace {

constexpr std::uint64_t kKilobyte = 1024;

} // namespace

/// What the host keeps in memory of files counts: it gives that up for programs.
std::uint64_t HostMachine::availableMemory() const {
    std::ifstream report("/proc/meminfo");
    std::string name;
    std::uint64_t amount = 0;
    std::string unit;
    std::uint64_t kilobytes = 0;
    while (report >> name >> amount && std::getline(report, unit))
        if (name == "MemAvailable:" || name == "SwapFree:") kilobytes += amount;
    // A host that does not tell is believed to have enough.
    return kilobytes > 0 ? kilobytes * kKilobyte : std::numeric_limits<std::int32_t>::max();
}

} // namespace platform
