// What the benchmark needs of a script language: to prepare one loop in a new interpreter, to run
// it, and to tell the value of a variable afterwards. Errors of the language are thrown as
// std::runtime_error.
#pragma once

#include <memory>
#include <string>
#include <string_view>

/// Rounds of the outer and of the inner loop; script counters of the engine have 16 bits.
inline constexpr int kLoopRounds = 1000;

/// One measured loop in one language. The language puts its own two nested counting loops with the
/// global variables k (outer) and i (inner) around `body`.
struct LoopSource {
    std::string_view setUp; ///< run once, not measured
    std::string_view body;
    std::string_view result; ///< variable or element to compare at the end
};

class ScriptLanguage {
  public:
    virtual ~ScriptLanguage() = default;

    [[nodiscard]] virtual std::string_view name() const = 0;
    /// Starts a new interpreter, runs the set-up and compiles the loops as far as the language does
    /// that ahead.
    virtual void load(const LoopSource& source) = 0;
    virtual void run() = 0;
    [[nodiscard]] virtual std::string value(std::string_view variable) = 0;
};

[[nodiscard]] std::unique_ptr<ScriptLanguage> makeZorbetLanguage();
[[nodiscard]] std::unique_ptr<ScriptLanguage> makeTclLanguage();
[[nodiscard]] std::unique_ptr<ScriptLanguage> makeLuaLanguage();
