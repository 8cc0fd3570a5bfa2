#include "omsarguments.h"

#include "ynumber.h"

OMSArguments& OMSArguments::global() {
    static OMSArguments arguments;
    return arguments;
}

void OMSArguments::clear() {
    texts_.clear();
    next_ = 0;
}

std::string OMSArguments::next() { return hasNext() ? texts_[next_++] : std::string(); }

int OMSArguments::nextInteger() { return OMSToInteger(next()); }

int OMSToInteger(std::string_view text) { return ynumber::scanInteger(text); }
