#include "omscall.h"

#include "omformat.h"
#include "ynumber.h"

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
