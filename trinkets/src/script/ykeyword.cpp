#include "ykeyword.h"

namespace YCommands {

namespace {

struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const {
        return std::hash<std::string_view>()(text);
    }
};

// A map keeps what the order of registration means: among equal names the first is the one.
using Table = std::unordered_map<std::string, YKeyword, Hash, std::equal_to<>>;

Table& table() {
    static Table theTable;
    return theTable;
}

} // namespace

void add(std::string_view name, OMLink function) {
    table().try_emplace(std::string(name), name, std::move(function));
}

const YKeyword* find(std::string_view name) {
    const auto found = table().find(name);
    return found == table().end() ? nullptr : &found->second;
}

void clear() { table().clear(); }

} // namespace YCommands
