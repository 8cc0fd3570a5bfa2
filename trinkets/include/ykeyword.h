// The global commands of the script language: one process-wide table of names and functions that
// the modules fill at start-up. A command reads its arguments from OMSArguments::global().
#pragma once

#include "omlink.h"

#include <string>
#include <string_view>
#include <unordered_map>

class YKeyword {
  public:
    YKeyword(std::string_view name, OMLink function)
        : name_(name), function_(std::move(function)) {}

    [[nodiscard]] const std::string& name() const { return name_; }
    void invoke() const { function_(); }

  private:
    std::string name_;
    OMLink function_;
};

namespace YCommands {

/// The first registration of a name stays.
void add(std::string_view name, OMLink function);
/// The command of exactly that name (case counts), or null. Stays valid until `clear`.
[[nodiscard]] const YKeyword* find(std::string_view name);
void clear();

} // namespace YCommands
