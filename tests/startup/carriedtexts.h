// Machines that carry the program's texts.
#pragma once

#include "memoryfiles.h"
#include "startup/programresources.h"

inline void carryTexts(testing_support::MemoryPlatform& machine) {
    static const RProgramTexts texts;
    for (const platform::ProgramResource& resource : texts.resources())
        machine.modules().resources[{std::string(resource.type), resource.id}] = {
            resource.bytes.begin(), resource.bytes.end()};
}
