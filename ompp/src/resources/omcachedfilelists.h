// The records of all cached files, and those whose background copy is under way.
#pragma once

#include "omcachedfile.h"
#include "omtask.h"

#include <memory>
#include <vector>

struct OMCachedFileLists {
    static OMCachedFileLists& get();

    std::vector<std::unique_ptr<OMCachedFile>> records;
    std::vector<OMCachedFile*> background; ///< in the order in which they are copied
    std::unique_ptr<OMTask> task;          ///< while there are background copies
};
