// A family of global script commands is a class with a member function for each of them and a table
// of their names. What is done with such tables is written here once.
#pragma once

#include "ykeyword.h"

#include <string_view>

template <class Family>
struct RCommandRow {
    std::string_view name;
    void (Family::*run)();
};

/// Registers the commands of a family, which must outlive the registration.
template <class Family, class Rows>
void RRegisterCommands(Family& family, const Rows& rows) {
    for (const auto& row : rows) YCommands::add(row.name, OMLinkToObj(&family, row.run));
}

/// Registers the names alone, with functions that do nothing, for whoever compiles scripts without
/// running them.
template <class Rows>
void RRegisterCommandNames(const Rows& rows) {
    for (const auto& row : rows) YCommands::add(row.name, nullptr);
}
