#include "commands/commands.h"

#include "character/rcharctr.h"
#include "omao.h"
#include "omapp.h"
#include "omid.h"
#include "omlog.h"
#include "omplatform.h"
#include "omrandom.h"
#include "omsarguments.h"
#include "omtrinket.h"
#include "puzzles/ranswer.h"
#include "scene/efwindow.h"
#include "world/worldmemory.h"
#include "ykeyword.h"

#include <algorithm>
#include <span>

namespace {

/// The value is lost when a script forgets to set it; its authors want to hear of it.
void checkStatueDataset(world::WorldMemory& memory) {
    const std::optional<std::string> value = memory.value(world::kWatchedName);
    if (!value) {
        OMLog::write(OMLog::Kind::Message, "*** CStatueDataset is not defined ***");
    } else if (OMSToInteger(*value) == 0) {
        OMApp::getApp()->alert("CStatueDataset is now 0, please inform Ilse or Bram");
        OMLog::write(OMLog::Kind::Message, "\n**** CStatueDataset is now 0 ****\n");
    }
}

} // namespace

constexpr RCommandRow<RCommands> RCommands::kRows[] = {
    RCommand<&RCommands::closeFile>("CloseFile"),
    RCommand<&RCommands::displayScreen>("DisplayScreen"),
    RCommand<&RCommands::endTransition>("EndTransition", "quick"),
    RCommand<&RCommands::freezeScreen>("FreezeScreen"),
    RCommand<&RCommands::goToBlack>("GoToBlack"),
    RCommand<&RCommands::intersectTest>("IntersectTest", "a b"),
    RCommand<&RCommands::logMessage>("LogMessage", "text"),
    RCommand<&RCommands::messageBox>("MessageBox", "text"),
    RCommand<&RCommands::openFile>("OpenFile", "file"),
    RCommand<&RCommands::randomNumber>("RandomNumber", "low high [except]"),
    RCommand<&RCommands::restorePalette>("RestorePalette"),
    RCommand<&RCommands::scene>("Scene", "picture [palette]"),
    RCommand<&RCommands::setAnswerGoHomeSound>("SetAnswerGoHomeSound", "id"),
    RCommand<&RCommands::setAnswerPickUpSound>("SetAnswerPickUpSound", "id"),
    RCommand<&RCommands::setAnswerSnapSound>("SetAnswerSnapSound", "id"),
    RCommand<&RCommands::setCorralTrinketNormalization>("SetCorralTrinketNormalization", "yes"),
    RCommand<&RCommands::setDebugLevel>("SetDebugLevel", "level"),
    RCommand<&RCommands::setDoubleClicksEnabled>("SetDoubleClicksEnabled", "yes"),
    RCommand<&RCommands::setSpeechCaching>("SetSpeechCaching", "yes"),
    RCommand<&RCommands::setUseEmbeddedAnimationCoordinates>("SetUseEmbeddedAnimationCoordinates",
                                                             "yes"),
    RCommand<&RCommands::startTransition>("StartTransition"),
    RCommand<&RCommands::writeToFile>("WriteToFile", "text [newline]"),
};

RCommands::RCommands(EffectsWindow& window) : window_(window) { RRegisterCommands(*this, kRows); }

RCommands::~RCommands() {
    // What they have switched for all objects; another game may come.
    RCharacter::setSpeechCaching(false);
    RAnswer::defaultSounds = {};
    OMTrinket::setCorralNormalization(true);
    OMAnimation::setUseEmbeddedAnimationCoordinates(false);
    YCommands::clear();
}

std::vector<RCommandWords> RCommands::words() { return RCommandWordsOf(kRows); }

void RCommands::closeFile() { output_.close(); }

void RCommands::displayScreen() { window_.displayScreen(); }

void RCommands::endTransition(bool quickly) { window_.endTransition(quickly); }

void RCommands::freezeScreen() { window_.freezeScreen(); }

void RCommands::goToBlack() { window_.goToBlack(); }

void RCommands::intersectTest(const std::string& first, const std::string& second) {
    const auto named = [](const std::string& name) {
        return dynamic_cast<OMTrinket*>(OMScriptableObject::named(name));
    };
    const OMTrinket* a = named(first);
    const OMTrinket* b = named(second);
    OMScriptableObject::setResult(a && b && a->intersects(*b) ? 1 : 0);
}

void RCommands::logMessage(const std::string& text) { OMLog::write(OMLog::Kind::Message, text); }

void RCommands::messageBox(const std::string& text) { OMApp::getApp()->alert(text); }

void RCommands::openFile(const std::string& path) { output_.open(path); }

/// RESULT gets a number from the lower to the higher one, but for the excluded one.
void RCommands::randomNumber(int from, int to, std::optional<int> exclude) {
    const std::int64_t low = std::min(from, to);
    const std::int64_t count = std::int64_t{std::max(from, to)} - low + 1;
    std::int64_t drawn = 0;
    if (count > 1) {
        drawn = count > 0xFFFFFFFF ? OMRandom() : OMRandomBelow(static_cast<std::uint32_t>(count));
        if (exclude && drawn == *exclude - low) drawn = (drawn + 1) % count;
    }
    OMScriptableObject::setResult(static_cast<int>(low + drawn));
}

void RCommands::restorePalette() {
    const OMLink restore = paletteRestorer_;
    if (window_.canvas().depth() == OMCanvas::kIndexedDepth) restore();
}

void RCommands::scene(int image, std::optional<int> palette) {
    window_.restorePalette(image, palette.value_or(image));
}

void RCommands::setAnswerGoHomeSound(int id) { RAnswer::defaultSounds.goHome = OMNarrowId(id); }

void RCommands::setAnswerPickUpSound(int id) { RAnswer::defaultSounds.pickUp = OMNarrowId(id); }

void RCommands::setAnswerSnapSound(int id) { RAnswer::defaultSounds.snap = OMNarrowId(id); }

void RCommands::setCorralTrinketNormalization(bool on) { OMTrinket::setCorralNormalization(on); }

void RCommands::setDebugLevel(int level) { OMLog::setLevel(level); }

void RCommands::setDoubleClicksEnabled(bool on) { window_.setDoubleClicksEnabled(on); }

void RCommands::setSpeechCaching(bool on) { RCharacter::setSpeechCaching(on); }

void RCommands::setUseEmbeddedAnimationCoordinates(bool on) {
    OMAnimation::setUseEmbeddedAnimationCoordinates(on);
}

void RCommands::startTransition() {
    window_.startTransition();
    world::WorldMemory* memory = world::WorldMemory::current();
    if (!memory) return;
    checkStatueDataset(*memory);
    memory->writeDataFile();
}

void RCommands::writeToFile(std::string text, const std::string& newLine) {
    if (!newLine.empty()) text += '\n';
    output_.write(text);
}
