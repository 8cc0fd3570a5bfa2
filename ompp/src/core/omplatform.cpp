#include "omplatform.h"

#include <cstdio>
#include <cstdlib>
#include <set>
#include <utility>

namespace {

platform::Platform* installed = nullptr;

std::set<void (*)()>& cleaners() {
    static std::set<void (*)()> theCleaners;
    return theCleaners;
}

} // namespace

void OMSetPlatform(platform::Platform* platform) { installed = platform; }

bool OMHasPlatform() { return installed != nullptr; }

platform::Platform& OMPlatform() {
    if (!installed) [[unlikely]] {
        std::fputs("the framework was used without a platform\n", stderr);
        std::abort();
    }
    return *installed;
}

void OMEndProcess(int exitCode) {
    for (void (*clean)() : std::exchange(cleaners(), {})) clean();
    OMPlatform().terminate(exitCode);
    std::abort(); // terminate is virtual: compilers do not trust it not to return
}

void OMAtSuddenEnd(void (*clean)()) { cleaners().insert(clean); }
