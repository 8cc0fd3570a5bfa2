// What happens when there is no memory left: the person is told, and the process ends.
#pragma once

#include "ominstalled.h"

#include <memory>
#include <string>

/// While it lives. The platform is installed before and goes afterwards.
class RMemoryHandler : public OMInstalled<RMemoryHandler> {
  public:
    RMemoryHandler();
    ~RMemoryHandler();

  private:
    static void endWithoutMemory();

    std::string text_;
    std::unique_ptr<char[]> reserve_; ///< what the box is shown with
};
