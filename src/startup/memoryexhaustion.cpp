#include "startup/memoryexhaustion.h"

#include "omplatform.h"
#include "startup/programresources.h"
#include "startup/warnings.h"

#include <memory>
#include <new>
#include <string>

namespace {

constexpr int kExitNoMemory = 1;
constexpr std::size_t kReserve = std::size_t{256} << 10; ///< bytes that the box is shown with

struct Reserve {
    std::string text;
    std::unique_ptr<char[]> memory;
};

Reserve& reserve() {
    static Reserve kept;
    return kept;
}

void endWithoutMemory() {
    std::set_new_handler(nullptr);
    reserve().memory.reset();
    RShowErrorBox(reserve().text);
    OMEndProcess(kExitNoMemory);
}

} // namespace

void RInstallMemoryHandler() {
    reserve() = {RWarningText(warningtext::kNoMoreMemory), std::make_unique<char[]>(kReserve)};
    std::set_new_handler(endWithoutMemory);
}

void RRemoveMemoryHandler() {
    std::set_new_handler(nullptr);
    reserve() = {};
}
