// All words that scripts can use, and the nearest one to a misspelt word.
#pragma once

#include "omsproperty.h"

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

struct OMSClass;
struct OMSEntry;

namespace mps {

class Vocabulary {
  public:
    using Kind = OMScriptableObjectProperty::Kind;
    using Classes = std::set<const OMSClass*>;

    Vocabulary();

    /// Null when there is none; those that only the program makes objects of count, too.
    [[nodiscard]] const OMSClass* classNamed(std::string_view name) const;
    /// The row of that name that an object of the class has, at times at least; null without.
    [[nodiscard]] static const OMSEntry* find(const OMSClass& known, std::string_view name);
    /// Whether objects get properties while the game runs that no table knows.
    [[nodiscard]] static bool isOpen(const OMSClass& known);
    /// Whether players have a property of that name.
    [[nodiscard]] bool isOfPlayers(std::string_view name) const;
    /// The arguments of a command; null when there is no such command.
    [[nodiscard]] const std::string_view* command(std::string_view name) const;

    /// "; did you mean WORD?", or nothing.
    [[nodiscard]] std::string nearClass(std::string_view word) const;
    [[nodiscard]] std::string nearCommand(std::string_view word) const;
    [[nodiscard]] std::string nearEntry(const Classes& classes, Kind kind,
                                        std::string_view word) const;

  private:
    std::map<std::string_view, const OMSClass*> classes_;
    std::map<std::string_view, std::string_view> commands_;
    std::vector<std::string> playerProperties_;
};

} // namespace mps
