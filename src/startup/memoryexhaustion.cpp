#include "startup/memoryexhaustion.h"

#include "omplatform.h"
#include "startup/programresources.h"
#include "startup/warnings.h"

#include <new>

namespace {

constexpr int kExitNoMemory = 1;
constexpr std::size_t kReserve = std::size_t{256} << 10; ///< bytes

} // namespace

RMemoryHandler::RMemoryHandler()
    : text_(RWarningText(warningtext::kNoMoreMemory)),
      reserve_(std::make_unique<char[]>(kReserve)) {
    std::set_new_handler(&endWithoutMemory);
}

RMemoryHandler::~RMemoryHandler() { std::set_new_handler(nullptr); }

void RMemoryHandler::endWithoutMemory() {
    std::set_new_handler(nullptr);
    current()->reserve_.reset();
    RShowErrorBox(current()->text_);
    OMEndProcess(kExitNoMemory);
}
