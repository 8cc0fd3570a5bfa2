#include "platform/host/machine/hostmachine.h"

#include <csignal>
#include <fstream>
#include <initializer_list>
#include <limits>
#include <string>
#include <unistd.h>

namespace platform {

namespace {

constexpr std::uint64_t kKilobyte = 1024;

volatile std::sig_atomic_t requested = 0;

void request(int) { requested = 1; }

} // namespace

std::uint64_t residentMemory() {
    std::ifstream report("/proc/self/statm");
    std::uint64_t whole = 0;
    std::uint64_t resident = 0;
    if (!(report >> whole >> resident)) return 0;
    return resident * static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE));
}

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

void catchTermination() {
    struct sigaction action {};
    action.sa_handler = request;
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) ::sigaction(signal, &action, nullptr);
}

bool terminationRequested() { return requested != 0; }

} // namespace platform
