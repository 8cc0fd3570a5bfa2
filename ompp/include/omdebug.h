// Checks: how the framework and the game guard their invariants.
//
// A fatal check that fails shows a box and ends the process. A non-fatal check has no effect of its
// own: it only tells its caller, who goes on along its failure path. Tests may listen to the
// non-fatal ones.
#pragma once

#include "omlink.h"

#include <string>
#include <string_view>

namespace OMDebug {

/// Where a check stands in the sources.
struct Place {
    const char* file;
    unsigned line;
    /// As a default argument: the place of the call.
    static constexpr Place here(const char* file = __builtin_FILE(),
                                unsigned line = __builtin_LINE()) {
        return {file, line};
    }
};

/// One failed check. The texts are those of the call.
struct Failure {
    std::string_view condition;
    std::string_view message;
    std::string_view file;
    unsigned line;
};

/// Shows "OMDebug Fatal Error!" with the condition, the place and the message, and ends the process
/// with exit code -1.
[[noreturn]] void fatal(std::string_view condition, std::string_view message,
                        Place place = Place::here());

/// The text of the fatal box: at most 511 characters; the first piece that does not fit is left out
/// with all that follows it.
[[nodiscard]] std::string fatalText(const Failure& failure);

/// A fatal check. `condition` is the text of the condition that must not hold, or of the rule.
inline void require(bool holds, std::string_view condition, std::string_view message,
                    Place place = Place::here()) {
    if (!holds) [[unlikely]]
        fatal(condition, message, place);
}

/// A non-fatal check: returns `holds`.
bool check(bool holds, std::string_view condition, std::string_view message,
           Place place = Place::here());

/// Is told of every failed non-fatal check; for tests and tools.
void setCheckListener(OMLinkTo<void(const Failure&)> listener);

/// The two rules of every framework object's constructor: no global instances, and no instance
/// before the application object. Fatal.
void requireApp(std::string_view className, Place place = Place::here());
/// Told by the application object when it begins and ends.
void noteApp(bool exists);

} // namespace OMDebug
