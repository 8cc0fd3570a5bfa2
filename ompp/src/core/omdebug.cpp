#include "omdebug.h"

#include "omplatform.h"

#include <cstdio>
#include <cstdlib>
#include <initializer_list>

namespace OMDebug {

namespace {

constexpr std::string_view kFatalCaption = "OMDebug Fatal Error!";
constexpr std::size_t kFatalTextSize = 512;
constexpr int kFatalExitCode = -1;

bool appExists = false;

OMLinkTo<void(const Failure&)>& checkListener() {
    static OMLinkTo<void(const Failure&)> listener;
    return listener;
}

} // namespace

std::string fatalText(const Failure& failure) {
    const std::string line = "Line # " + std::to_string(failure.line) + "\n";
    std::string text = std::string(kFatalCaption) + "\n";
    for (std::string_view piece :
         {failure.condition, std::string_view("\n\n"), failure.file, std::string_view("\n"),
          std::string_view(line), failure.message}) {
        if (text.size() + piece.size() >= kFatalTextSize) break;
        text += piece;
    }
    return text;
}

void fatal(std::string_view condition, std::string_view message, Place place) {
    const std::string text = fatalText({condition, message, place.file, place.line});
    OMPlatform().dialogs().messageBox(text, kFatalCaption, platform::boxstyle::kOk);
    OMEndProcess(kFatalExitCode);
}

bool check(bool holds, std::string_view condition, std::string_view message, Place place) {
    if (!holds) checkListener()({condition, message, place.file, place.line});
    return holds;
}

void setCheckListener(OMLinkTo<void(const Failure&)> listener) {
    checkListener() = std::move(listener);
}

void noteApp(bool exists) { appExists = exists; }

void requireApp(std::string_view className, Place place) {
    if (appExists) [[likely]]
        return;
    const std::string name(className);
    // Before the platform is installed only static initialisers run.
    if (!OMHasPlatform()) {
        const std::string text =
            name + "::" + name + " - global instances of " + name + " are not allowed!";
        std::fprintf(stderr, "%s\n",
                     fatalText({"!OMApp::isInitialized()", text, place.file, place.line}).c_str());
        std::exit(kFatalExitCode);
    }
    fatal("OMApp::getApp() == NULL",
          name + "::" + name + " - must have an OMApp instance before creating an " + name + "!",
          place);
}

} // namespace OMDebug
