// Tcl: the loops are the body of a procedure, which is what Tcl compiles to byte code, and reach
// the variables by `global`.
#include "scriptlanguage.h"

#include <tcl.h>

#include <stdexcept>

namespace {

class TclLanguage final : public ScriptLanguage {
  public:
    [[nodiscard]] std::string_view name() const override { return "Tcl"; }

    void load(const LoopSource& source) override {
        interpreter_.reset(Tcl_CreateInterp());
        const std::string rounds = std::to_string(kLoopRounds);
        evaluate(std::string(source.setUp));
        evaluate("proc loops {} {\n"
                 "global i k a b j s x item\n"
                 "for {set k 1} {$k <= " +
                 rounds +
                 "} {incr k} {\n"
                 "for {set i 1} {$i <= " +
                 rounds + "} {incr i} {\n" + std::string(source.body) + "\n}\n}\n}");
    }
    void run() override { evaluate("loops"); }
    [[nodiscard]] std::string value(std::string_view variable) override {
        evaluate("set " + std::string(variable));
        return Tcl_GetStringResult(interpreter_.get());
    }

  private:
    struct Delete {
        void operator()(Tcl_Interp* interpreter) const { Tcl_DeleteInterp(interpreter); }
    };

    void evaluate(const std::string& script) {
        if (Tcl_Eval(interpreter_.get(), script.c_str()) == TCL_OK) return;
        throw std::runtime_error(std::string("Tcl: ") + Tcl_GetStringResult(interpreter_.get()));
    }

    std::unique_ptr<Tcl_Interp, Delete> interpreter_;
};

} // namespace

std::unique_ptr<ScriptLanguage> makeTclLanguage() {
    Tcl_FindExecutable(nullptr); // prepares the library
    return std::make_unique<TclLanguage>();
}
