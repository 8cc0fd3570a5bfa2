// The lines of standard output that tell what a person would have noticed: the main loop's
// milliseconds, the kind of thing, its fields, all separated by tabs. In UTF-8; a line break inside
// a field is written as \n (a carriage return as \r), a tab as \t and a backslash as \\.
#pragma once

#include "platform/host/visit/virtualclock.h"

#include <initializer_list>
#include <iosfwd>
#include <string_view>

namespace platform {

class Notices {
  public:
    /// Both must outlive the notices.
    Notices(std::ostream& output, const VirtualClock& clock) : output_(output), clock_(clock) {}

    /// Writes one line through to its destination. The fields are Latin-1.
    void line(std::string_view kind, std::initializer_list<std::string_view> fields);

  private:
    std::ostream& output_;
    const VirtualClock& clock_;
};

} // namespace platform
