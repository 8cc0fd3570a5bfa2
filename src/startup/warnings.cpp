#include "startup/warnings.h"

#include "omapp.h"
#include "omplatform.h"
#include "omsarguments.h"
#include "startup/programresources.h"

namespace {

constexpr std::string_view kErrorCaption = "Error";
constexpr const char* kGoOn = "Continuar";
constexpr const char* kStop = "Sair";
constexpr std::string_view kOff = "0";

} // namespace

void RShowErrorBox(const std::string& text) {
    OMPlatform().dialogs().messageBox(text, kErrorCaption, platform::boxstyle::kIconStop);
}

void RTellPlayer(const std::string& text) {
    if (OMApp* app = OMApp::getApp()) {
        app->tellPlayer(text, kErrorCaption);
    } else {
        OMPlatform().tellPlayer(text, kErrorCaption);
    }
}

bool RAskToRetry(const std::string& text) {
    using namespace platform::boxstyle;
    return OMPlatform().dialogs().messageBox(text, kErrorCaption,
                                             kRetryCancel | kCancelFirst | kIconStop) ==
           platform::Button::Retry;
}

bool RWarn(int textId, std::string_view switchName, const RWarningSwitches& switches) {
    if (OMSToInteger(switches.read(switchName)) == 0) return true;
    const platform::WarningAnswer answer = OMPlatform().dialogs().warning(
        {.caption = OMPlatform().modules().versionString("ProductName"),
         .text = RWarningText(textId),
         .checkBox = RWarningText(warningtext::kDoNotShowAgain),
         .goOn = kGoOn,
         .stop = kStop});
    if (answer.checked) switches.write(switchName, kOff);
    return answer.goOn;
}
