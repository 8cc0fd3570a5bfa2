// Why the tool cannot do what it was asked: a text for the author and, once it is known, the line
// of the manifest that asked for it. Thrown where the fault is found, printed by the command.
#pragma once

#include "formats/base/result.h"

#include <cstdint>
#include <optional>
#include <span>
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
    if (!result.refusal.empty()) throw Refusal(result.refusal);
    return std::move(result.value);
}

/// What the reader of a format gives; refused with its reason when that is nothing.
template <class Value>
Value readOrRefuse(std::optional<Value> (&read)(std::span<const std::uint8_t>, std::string&),
                   std::span<const std::uint8_t> bytes) {
    std::string problem;
    std::optional<Value> value = read(bytes, problem);
    if (!value) throw Refusal(problem);
    return std::move(*value);
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

} // namespace rsc
