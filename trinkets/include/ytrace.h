// What a script's author sees of each instruction while debugging is on.
#pragma once

#include "omformat.h"

#include <string>

class YEngine;
class YFlow;
struct YProgramInstruction;

class YTrace {
  public:
    explicit YTrace(YEngine& engine) : engine_(engine) {}

    [[nodiscard]] bool isOn() const { return on_; }
    void turn(bool on) { on_ = on; }

    /// Begins the next instruction.
    void begin() { detail_.clear(); }
    /// Adds to what is shown of the instruction; costs nothing without a trace.
    template <class... Arguments>
    void detail(const char* format, Arguments... arguments) {
        if (!on_) [[likely]]
            return;
        if constexpr (sizeof...(arguments) == 0)
            detail_ += format;
        else
            detail_ += OMFormat(format, arguments...);
    }
    /// Shows what the instruction has done, and that `next` follows; turns itself off when the
    /// person asks for no more.
    void show(const YProgramInstruction& code, const YProgramInstruction& next, const YFlow& flow,
              bool interruptEnded);

  private:
    YEngine& engine_;
    bool on_ = false;
    std::string detail_;
};
