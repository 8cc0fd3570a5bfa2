#include "commands.h"

#include "omapp.h"
#include "omao.h"
#include "omlog.h"
#include "omplatform.h"
#include "omrandom.h"
#include "omsarguments.h"
#include "omtrinket.h"
#include "scenes/efwindow.h"
#include "ykeyword.h"

#include <span>
#include <utility>

namespace {

OMSArguments& arguments() { return OMSArguments::global(); }

void messageBox() { OMApp::getApp()->alert(arguments().next()); }

/// RESULT gets a number from `low` to `high`; with a third argument never that one.
void randomNumber() {
    std::int64_t low = arguments().nextInteger();
    std::int64_t high = arguments().nextInteger();
    const std::string exclude = arguments().next();
    if (low > high) std::swap(low, high);
    std::int64_t drawn = 0;
    if (low != high) {
        const std::int64_t count = high - low + 1;
        drawn = count > 0xFFFFFFFF ? OMRandom() : OMRandomBelow(static_cast<std::uint32_t>(count));
        if (!exclude.empty() && drawn == OMSToInteger(exclude) - low) drawn = (drawn + 1) % count;
    }
    OMScriptableObject::setResult(static_cast<int>(low + drawn));
}

void intersectTest() {
    const auto next = [] {
        return dynamic_cast<OMTrinket*>(OMScriptableObject::named(arguments().next()));
    };
    const OMTrinket* a = next();
    const OMTrinket* b = next();
    OMScriptableObject::setResult(a && b && a->intersects(*b) ? 1 : 0);
}

void logMessage() { OMLog::write(OMLog::Kind::Message, arguments().next()); }
void setDebugLevel() { OMLog::setLevel(arguments().nextInteger()); }

} // namespace

RCommands::RCommands(EffectsWindow& window) : window_(window) {
    YCommands::add("CloseFile", [this] { output_.reset(); });
    YCommands::add("DisplayScreen", [this] { window_.displayScreen(); });
    YCommands::add("EndTransition", [this] { endTransition(); });
    YCommands::add("FreezeScreen", [this] { window_.freezeScreen(); });
    YCommands::add("GoToBlack", [this] { window_.goToBlack(); });
    YCommands::add("IntersectTest", intersectTest);
    YCommands::add("MessageBox", messageBox);
    YCommands::add("OpenFile", [this] { openFile(); });
    YCommands::add("RandomNumber", randomNumber);
    YCommands::add("Scene", [this] { scene(); });
    YCommands::add("SetCorralTrinketNormalization",
                   [] { OMTrinket::setCorralNormalization(arguments().nextInteger() != 0); });
    YCommands::add("SetDoubleClicksEnabled",
                   [this] { window_.setDoubleClicksEnabled(arguments().nextInteger() != 0); });
    YCommands::add("SetUseEmbeddedAnimationCoordinates", [] {
        OMAnimation::setUseEmbeddedAnimationCoordinates(arguments().nextInteger() != 0);
    });
    YCommands::add("StartTransition", [this] { window_.startTransition(); });
    YCommands::add("WriteToFile", [this] { writeToFile(); });

    YCommands::add("LogMessage", logMessage);
    YCommands::add("SetDebugLevel", setDebugLevel);
}

RCommands::~RCommands() { YCommands::clear(); }

void RCommands::scene() {
    const int image = arguments().nextInteger();
    const int palette = arguments().hasNext() ? arguments().nextInteger() : image;
    window_.restorePalette(image, palette);
}

void RCommands::endTransition() { window_.endTransition(arguments().nextInteger() != 0); }

void RCommands::openFile() {
    output_.reset();
    output_ = OMPlatform().files().open(arguments().next(), platform::OpenMode::Write);
}

void RCommands::writeToFile() {
    if (!output_) return;
    std::string text = arguments().next();
    if (!arguments().next().empty()) text += '\n';
    output_->write(std::as_bytes(std::span(text)));
}
