#include "omappinitterm.h"

#include <vector>

namespace {

/// Made when it is first asked for, as static objects have no order among files.
std::vector<OMAppInitTerm*>& registered() {
    static std::vector<OMAppInitTerm*> all;
    return all;
}

} // namespace

OMAppInitTerm::OMAppInitTerm(void (*initialize)(), void (*terminate)())
    : initialize_(initialize), terminate_(terminate) {
    registered().push_back(this);
}

OMAppInitTerm::~OMAppInitTerm() { std::erase(registered(), this); }

void OMAppInitTerm::initializeAll() {
    for (const OMAppInitTerm* entry : registered())
        if (entry->initialize_) entry->initialize_();
}

void OMAppInitTerm::terminateAll() {
    for (auto entry = registered().rbegin(); entry != registered().rend(); ++entry)
        if ((*entry)->terminate_) (*entry)->terminate_();
}
