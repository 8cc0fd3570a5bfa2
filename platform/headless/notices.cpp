#include "platform/headless/notices.h"

#include "formats/base/latin1.h"

#include <ostream>
#include <string>

namespace platform {

namespace {

std::string escaped(std::string_view text) {
    std::string result;
    for (const char c : text) {
        switch (c) {
        case '\n': result += "\\n"; break;
        case '\r': result += "\\r"; break;
        case '\t': result += "\\t"; break;
        case '\\': result += "\\\\"; break;
        default: result += c; break;
        }
    }
    return result;
}

} // namespace

void Notices::line(std::string_view kind, std::initializer_list<std::string_view> fields) {
    output_ << clock_.loopMs() << '\t' << kind;
    for (const std::string_view field : fields)
        output_ << '\t' << formats::utf8FromLatin1(escaped(field));
    output_ << std::endl;
}

} // namespace platform
