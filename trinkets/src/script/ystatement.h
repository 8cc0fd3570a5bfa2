// What one statement does with variables, objects and commands. Statements that steer the thread
// are the thread's own.
#pragma once

#include "yprogram.h"

#include <memory>
#include <string>

class OMScriptableObject;
class YEngine;
class YThread;
class YTrace;

class YStatement {
  public:
    /// `thread` is whose handlers it attaches, `program` what the instruction is in.
    YStatement(YThread& thread, YEngine& engine, YTrace& trace, const YProgram& program,
               const YProgram::Instruction& code)
        : thread_(thread), engine_(engine), trace_(trace), program_(program), code_(code) {}

    /// Any assignment.
    void assign();
    /// Of a test.
    [[nodiscard]] bool isTrue();
    void say();
    /// Drops what the operand names. The last operand that this takes.
    int drop(int operand);
    void runCommand();

    // With objects.
    void set();
    void get();
    /// `playing` tells while the thread has to wait for it.
    void play(const std::shared_ptr<bool>& playing);

  private:
    [[nodiscard]] YVariable& operand(int number) const { return *code_.operands[number]; }
    [[nodiscard]] YVariable& word() const { return operand(0); }
    [[nodiscard]] YVariable& last() const { return operand(code_.count - 1); }
    /// Fills the argument list with the string forms of the operands `from` to `to` - 1.
    void pushArguments(int from, int to);
    /// A warning with the statement's place.
    void report(const std::string& what);

    void construct(YVariable& target);
    void dropVariable(YVariable& word);

    void refuse(const char* consequence);
    void removeHandler(OMScriptableObject* object, const std::string& event);
    void attachHandler(OMScriptableObject* object, const std::string& event,
                       const std::string& procedure);
    void setProperty(OMScriptableObject& object, const std::string& name, const std::string& value);
    std::string nameOfReceiver(OMScriptableObject& object);

    YThread& thread_;
    YEngine& engine_;
    YTrace& trace_;
    const YProgram& program_;
    const YProgram::Instruction& code_;
};

/// The string form.
inline std::string textOf(YVariable& variable) {
    YScratch scratch;
    return std::string(variable.string(scratch));
}
