#include "omplatform.h"

#include <cstdio>
#include <cstdlib>

namespace {
platform::Platform* installed = nullptr;
}

void OMSetPlatform(platform::Platform* platform) { installed = platform; }

bool OMHasPlatform() { return installed != nullptr; }

platform::Platform& OMPlatform() {
    if (!installed) [[unlikely]] {
        std::fputs("the framework was used without a platform\n", stderr);
        std::abort();
    }
    return *installed;
}
