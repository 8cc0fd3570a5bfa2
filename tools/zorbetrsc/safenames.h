// Names for the files that resources are unpacked to. Types and names of resources may be any
// bytes; file names are made of letters, digits and "_" alone, and none differs from another only
// by case.
#pragma once

#include "library/nelibrary.h"

#include <map>
#include <set>

namespace rsc {

class SafeNames {
  public:
    /// A new name, TYPE-ID, without an extension: what follows it begins with "." or "-".
    std::string take(const ResourceEntry& entry);

    /// A new name made of any text.
    std::string take(std::string_view text);

  private:
    std::string unique(const std::string& name);

    std::set<std::string> taken_;        ///< in lower case, as the next ones
    std::map<std::string, int> numbers_; ///< how often each name was wanted, at least
};

} // namespace rsc
