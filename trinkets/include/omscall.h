// The call that a script makes into an object right now. While one runs, events do not reach their
// handlers: the first that has one shows the text of the call as a warning.
#pragma once

#include "omlink.h"

#include <string>
#include <string_view>

class OMSCall {
  public:
    enum class Kind { SettingProperty, InvokingMethod };
    OMSCall(Kind kind, std::string_view name);
    ~OMSCall();
    OMSCall& operator=(OMSCall&&) = delete;

    [[nodiscard]] static bool isRunning();
    static void noteIgnored(std::string_view event);
    /// Shows what was noted and forgets it.
    static void warn();
    /// How warnings are shown; installed by the engine.
    static void setWarningLink(OMLinkTo<void(std::string_view text)> link);

  private:
    bool outer_;
    std::string outerContext_;
};
