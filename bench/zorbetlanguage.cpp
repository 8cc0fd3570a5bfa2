// Our own scripts, run by the main loop.
#include "scriptlanguage.h"
#include "scriptmachine.h"

namespace {

class ZorbetLanguage final : public ScriptLanguage {
  public:
    [[nodiscard]] std::string_view name() const override { return "zorbet"; }

    void load(const LoopSource& source) override {
        const std::string rounds = std::to_string(kLoopRounds);
        machine_.load("yield off\n" + std::string(source.setUp) + "for k 1 " + rounds +
                      "\n[\n"
                      "for i 1 " +
                      rounds + "\n[\n" + std::string(source.body) + "]\n]\n");
    }
    void run() override { machine_.runUntilBlocked(); }
    [[nodiscard]] std::string value(std::string_view variable) override {
        return machine_.value(variable);
    }

  private:
    ScriptMachine machine_;
};

} // namespace

std::unique_ptr<ScriptLanguage> makeZorbetLanguage() { return std::make_unique<ZorbetLanguage>(); }
