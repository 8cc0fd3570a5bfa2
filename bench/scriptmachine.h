// The engine as a program has it, on the headless platform: an application, its main loop, and one
// thread whose script comes from a text in memory.
#pragma once

#include "platform/headless/headlessplatform.h"

#include "omapp.h"
#include "rthread.h"
#include "yengine.h"

#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>

class ScriptMachine {
  public:
    ScriptMachine();
    /// Forgets all classes and commands, too.
    ~ScriptMachine();
    ScriptMachine& operator=(ScriptMachine&&) = delete;

    /// Compiles the script and sets its thread running. Lines end with "\n".
    void load(std::string script);
    /// Passes of the main loop until the script waits or has come to its end.
    void runUntilBlocked();
    [[nodiscard]] std::string value(std::string_view variable) const;

  private:
    void unload();
    /// A box is a complaint of the engine: it is thrown as std::runtime_error.
    void throwOnBox();

    std::ostringstream report_;
    platform::HeadlessPlatform platform_;
    std::optional<OMApp> app_;
    std::optional<YEngine> engine_;
    std::unique_ptr<YThread> thread_;
};
