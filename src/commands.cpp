#include "commands.h"

#include "omao.h"
#include "omapp.h"
#include "omlog.h"
#include "omplatform.h"
#include "omrandom.h"
#include "omsarguments.h"
#include "omtrinket.h"
#include "scenes/efwindow.h"
#include "world/rworldport.h"
#include "ykeyword.h"

#include <span>
#include <utility>

namespace {

constexpr int kIndexedDepth = 8;

OMSArguments& arguments() { return OMSArguments::global(); }

/// The value is lost when a script forgets to set it; its authors want to hear of it.
void checkStatueDataset(world::WorldMemory& memory) {
    RWorldPort port(memory);
    port.declareProperties();
    const std::optional<std::string> value = port.getProperty(world::kWatchedName);
    if (!value) {
        OMLog::write(OMLog::Kind::Message, "*** CStatueDataset is not defined ***");
    } else if (OMSToInteger(*value) == 0) {
        OMApp::getApp()->alert("CStatueDataset is now 0, please inform Ilse or Bram");
        OMLog::write(OMLog::Kind::Message, "\n**** CStatueDataset is now 0 ****\n");
    }
}

} // namespace

constexpr RCommandRow<RCommands> RCommands::kRows[] = {
    {"CloseFile", &RCommands::closeFile},
    {"DisplayScreen", &RCommands::displayScreen},
    {"EndTransition", &RCommands::endTransition},
    {"FreezeScreen", &RCommands::freezeScreen},
    {"GoToBlack", &RCommands::goToBlack},
    {"IntersectTest", &RCommands::intersectTest},
    {"LogMessage", &RCommands::logMessage},
    {"MessageBox", &RCommands::messageBox},
    {"OpenFile", &RCommands::openFile},
    {"RandomNumber", &RCommands::randomNumber},
    {"RestorePalette", &RCommands::restorePalette},
    {"Scene", &RCommands::scene},
    {"SetCorralTrinketNormalization", &RCommands::setCorralTrinketNormalization},
    {"SetDebugLevel", &RCommands::setDebugLevel},
    {"SetDoubleClicksEnabled", &RCommands::setDoubleClicksEnabled},
    {"SetUseEmbeddedAnimationCoordinates", &RCommands::setUseEmbeddedAnimationCoordinates},
    {"StartTransition", &RCommands::startTransition},
    {"WriteToFile", &RCommands::writeToFile},
};

RCommands::RCommands(EffectsWindow& window) : window_(window) { RRegisterCommands(*this, kRows); }

RCommands::~RCommands() { YCommands::clear(); }

void RCommands::registerNames() { RRegisterCommandNames(kRows); }

void RCommands::closeFile() { output_.reset(); }

void RCommands::displayScreen() { window_.displayScreen(); }

void RCommands::endTransition() { window_.endTransition(arguments().nextInteger() != 0); }

void RCommands::freezeScreen() { window_.freezeScreen(); }

void RCommands::goToBlack() { window_.goToBlack(); }

void RCommands::intersectTest() {
    const auto next = [] {
        return dynamic_cast<OMTrinket*>(OMScriptableObject::named(arguments().next()));
    };
    const OMTrinket* a = next();
    const OMTrinket* b = next();
    OMScriptableObject::setResult(a && b && a->intersects(*b) ? 1 : 0);
}

void RCommands::logMessage() { OMLog::write(OMLog::Kind::Message, arguments().next()); }

void RCommands::messageBox() { OMApp::getApp()->alert(arguments().next()); }

void RCommands::openFile() {
    output_.reset();
    output_ = OMPlatform().files().open(arguments().next(), platform::OpenMode::Write);
}

/// RESULT gets a number from `low` to `high`; with a third argument never that one.
void RCommands::randomNumber() {
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

void RCommands::restorePalette() {
    const OMLink restore = paletteRestorer_;
    if (window_.canvas().depth() == kIndexedDepth) restore();
}

void RCommands::scene() {
    const int image = arguments().nextInteger();
    const std::string palette = arguments().next();
    window_.restorePalette(image, palette.empty() ? image : OMSToInteger(palette));
}

void RCommands::setCorralTrinketNormalization() {
    OMTrinket::setCorralNormalization(arguments().nextInteger() != 0);
}

void RCommands::setDebugLevel() { OMLog::setLevel(arguments().nextInteger()); }

void RCommands::setDoubleClicksEnabled() {
    window_.setDoubleClicksEnabled(arguments().nextInteger() != 0);
}

void RCommands::setUseEmbeddedAnimationCoordinates() {
    OMAnimation::setUseEmbeddedAnimationCoordinates(arguments().nextInteger() != 0);
}

void RCommands::startTransition() {
    window_.startTransition();
    world::WorldMemory* memory = world::WorldMemory::current();
    if (!memory) return;
    checkStatueDataset(*memory);
    memory->writeDataFile();
}

void RCommands::writeToFile() {
    if (!output_) return;
    std::string text = arguments().next();
    if (!arguments().next().empty()) text += '\n';
    output_->write(std::as_bytes(std::span(text)));
}
