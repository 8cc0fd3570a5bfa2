#include "copytimes.h"

#include "mediamachine.h"

#include "omcachedfile.h"

#include <algorithm>
#include <chrono>
#include <stdexcept>
#include <thread>

namespace {

constexpr std::size_t kFileBytes = 100 * 1000 * 1000;
constexpr const char* kSource = "large.rsc";
constexpr const char* kCopy = "copy.rsc";
constexpr auto kRest = std::chrono::microseconds(200); ///< between passes

using Clock = std::chrono::steady_clock;

double milliseconds(Clock::duration duration) {
    return std::chrono::duration<double, std::milli>(duration).count();
}

} // namespace

CopyTimes measureBackgroundCopy(CopyTarget target) {
    MediaMachine machine;
    machine.put(kSource, std::vector<std::byte>(kFileBytes, std::byte{0x5A}));
    bool complete = false;
    const auto completed = [&complete] { complete = true; };
    CopyTimes times;
    times.bytes = kFileBytes;
    const Clock::time_point start = Clock::now();
    if (target == CopyTarget::Memory)
        OMCachedFile::cacheInBkgd(kSource, completed, 0, false);
    else
        OMCachedFile::cacheInBkgd(kSource, kCopy, completed, 0, false);
    while (OMCachedFile::isCached(kSource) && !complete) {
        const Clock::time_point passStart = Clock::now();
        machine.app().pass();
        times.passMs.push_back(milliseconds(Clock::now() - passStart));
        std::this_thread::sleep_for(kRest);
    }
    times.seconds = std::chrono::duration<double>(Clock::now() - start).count();
    if (!complete) throw std::runtime_error("the copy failed");
    OMCachedFile::clear();
    std::sort(times.passMs.begin(), times.passMs.end());
    return times;
}
