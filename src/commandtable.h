// A family of global script commands is a class with a member function for each of them and a table
// of their names.
//
//     constexpr RCommandRow<RSoundCommands> RSoundCommands::kRows[] = {
//         RCommand<&RSoundCommands::playSound>("PlaySound", "id [loop]"), // void playSound(int,
//         bool)
//     };
#pragma once

#include "omscall.h"
#include "ykeyword.h"

#include <string_view>

template <class Family>
struct RCommandRow {
    std::string_view name;
    std::string_view arguments;
    void (*run)(Family&);
};

namespace detail {

template <auto Member>
struct Command;
template <class Family, class... Arguments, void (Family::*Member)(Arguments...)>
struct Command<Member> {
    using Row = RCommandRow<Family>;
    static void run(Family& family) { oms::callWithArguments(family, Member); }
};

} // namespace detail

template <auto Member>
constexpr auto RCommand(std::string_view name, std::string_view arguments = {}) {
    return typename detail::Command<Member>::Row{name, arguments, &detail::Command<Member>::run};
}

/// Registers the commands of a family, which must outlive the registration.
template <class Family, class Rows>
void RRegisterCommands(Family& family, const Rows& rows) {
    for (const auto& row : rows)
        YCommands::add(row.name, [&family, run = row.run] { run(family); });
}

/// Registers the names alone, with functions that do nothing, for whoever compiles scripts without
/// running them.
template <class Rows>
void RRegisterCommandNames(const Rows& rows) {
    for (const auto& row : rows) YCommands::add(row.name, nullptr);
}
