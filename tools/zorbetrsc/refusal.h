// Why the tool cannot do what it was asked: a text for the author and, once it is known, the line
// of the manifest that asked for it. Thrown where the fault is found, printed by the command.
#pragma once

#include "formats/base/result.h"

#include <stdexcept>
#include <string>
#include <utility>

namespace rsc {

class Refusal : public std::runtime_error {
  public:
    static constexpr int kNoLine = 0;

    explicit Refusal(const std::string& text, int line = kNoLine)
        : std::runtime_error(text), line_(line) {}

    [[nodiscard]] int line() const { return line_; }

  private:
    int line_;
};

/// The value of a result; thrown when there is none.
template <class Value>
Value valueOf(formats::Result<Value> result) {
    if (!result.ok()) throw Refusal(result.refusal);
    return std::move(result.value);
}

/// Runs `work`; a refusal out of it that has no line yet gets this one.
template <class Work>
decltype(auto) atLine(int line, Work&& work) {
    try {
        return work();
    } catch (const Refusal& refusal) {
        if (refusal.line() != Refusal::kNoLine) throw;
        throw Refusal(refusal.what(), line);
    }
}

/// What an author should know though all is packed.
struct Warning {
    std::string text;
    int line = 0; ///< of the manifest
};

} // namespace rsc
