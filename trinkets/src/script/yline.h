// A line of the script language that stands in no script: its author types it while the game runs.
// It is a statement that the thread carries out as if it were its next one, or an expression, whose
// value is wanted. Statements that lead to another place in the script are refused.
#pragma once

#include "rvar.h"

#include <memory>
#include <string>
#include <string_view>

class YEngine;
class YProgram;
class YThread;
struct YProgramInstruction;

class YLine {
  public:
    /// The thread has a script.
    YLine(YEngine& engine, YThread& thread) : engine_(engine), thread_(thread) {}

    /// What came of it: the value, "done", or what is wrong. Words that the line alone has brought
    /// into the table of variables are taken out again.
    [[nodiscard]] std::string run(std::string_view line);

  private:
    [[nodiscard]] std::string outcome(std::string_view line);
    [[nodiscard]] std::string carryOut(const YProgram& program);
    [[nodiscard]] std::string valueAfter(const YProgramInstruction& code,
                                         const std::string& resultBefore) const;

    YEngine& engine_;
    YThread& thread_;
};

namespace yvalue {

/// What a variable that holds something holds: "number", "text", "procedure", the class of an
/// object.
[[nodiscard]] std::string typeOf(YVariable& variable, const YThread* thread);
/// Its value for people: cut when it is long; of a procedure where it is, of an object that it has
/// another owner, if so.
[[nodiscard]] std::string shown(YVariable& variable, const YThread* thread);
/// A text cut as values are.
[[nodiscard]] std::string cut(std::string text);

} // namespace yvalue
