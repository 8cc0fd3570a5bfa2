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

/// "A, B or C"
std::string joined(const std::vector<std::string>& places) {
    std::string text;
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (i > 0) text += i + 1 == places.size() ? " or " : ", ";
        text += places[i];
    }
    return text;
}

/// The folder `name` of each root, as the host calls it, but for drives that are not there.
std::vector<std::string> foldersOf(std::span<const std::string> roots, std::string_view name) {
    std::vector<std::string> folders;
    for (const std::string& root : roots)
        if (OMPlatform().files().freeSpace(root))
            folders.push_back(OMPlatform().files().hostName(root + std::string(name)));
    return folders;
}

constexpr std::string_view kRemedy = "Is it the right folder? --content names the game's.";

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

bool RMayGoOn(int textId, std::string_view switchName, const RWarningSwitches& switches) {
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

void RTellNoLibrary(std::span<const std::string> roots) {
    OMPlatform().complain(
        "no resource library was found: there is no .rsc file and no resource.map "
        "in " +
        joined(foldersOf(roots, "RSC")) + ". " + std::string(kRemedy));
}

void RTellNoStartScript(std::span<const std::string> roots, const std::string& script) {
    std::vector<std::string> folders = foldersOf(roots, "scripts");
    folders.insert(folders.begin(),
                   OMPlatform().files().hostName(OMPlatform().files().currentDirectory()));
    OMPlatform().complain("the script " + script + " was not found in " + joined(folders) + ". " +
                          std::string(kRemedy));
}
