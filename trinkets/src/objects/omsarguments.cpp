#include "omsarguments.h"

#include "omformat.h"
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

namespace oms {

std::string toText(int value) { return std::to_string(value); }

std::string toText(double value) {
    char buffer[ynumber::kBufferSize];
    return std::string(ynumber::format(value, buffer));
}

std::string toText(const platform::Rect& value) {
    return OMFormat("%d %d %d %d", value.left, value.top, value.right, value.bottom);
}

double realFromText(std::string_view text) { return ynumber::scan(text); }

} // namespace oms
