// Machines that carry the program's texts.
#pragma once

#include "memoryfiles.h"
#include "startup/programresources.h"

inline const RProgramTexts& carriedTexts() {
    static const RProgramTexts texts;
    return texts;
}
inline void carryTexts(testing_support::MemoryPlatform& machine) {
    for (const platform::ProgramResource& resource : carriedTexts().resources())
        machine.modules().resources[{std::string(resource.type), resource.id}] = {
            resource.bytes.begin(), resource.bytes.end()};
}
