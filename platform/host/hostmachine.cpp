#include "platform/host/hostmachine.h"

#include <sys/sysinfo.h>

#include <limits>

namespace platform {

std::uint64_t HostMachine::availableMemory() const {
    struct sysinfo info {};
    // One that does not tell is believed to have enough.
    if (::sysinfo(&info) != 0) return std::numeric_limits<std::int32_t>::max();
    return (std::uint64_t{info.freeram} + info.bufferram + info.freeswap) * info.mem_unit;
}

} // namespace platform
