// A family of global script commands is a class with a member function for each of them and a table
// of their names.
//
//     constexpr RCommandRow<Bells> Bells::kRows[] = {
//         RCommand<&Bells::ring>("RingBell", "bell [times]"), // void ring(int, std::optional<int>)
//     };
#pragma once

#include "omsarguments.h"
#include "ykeyword.h"

#include <string_view>
#include <vector>

/// What authors are told of a command.
struct RCommandWords {
    std::string_view name;
    std::string_view arguments;
};

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

template <class Rows>
std::vector<RCommandWords> RCommandWordsOf(const Rows& rows) {
    std::vector<RCommandWords> words;
    for (const auto& row : rows) words.push_back({row.name, row.arguments});
    return words;
}
