#include "commands/commands.h"

#include "character/speechrecords.h"
#include "movie/rsmackermovie.h"
#include "omao.h"
#include "omapp.h"
#include "omlog.h"
#include "omrandom.h"
#include "omsarguments.h"
#include "resources/resources.h"
#include "scene/efwindow.h"
#include "sound/gamesounds.h"
#include "texts/gametexts.h"
#include "world/worldmemory.h"
#include "ykeyword.h"

#include <algorithm>
#include <functional>
#include <optional>

namespace {

// ---------------------------------------------------------------------------- how they are called

using Parts = RCommands::Parts;

/// An argument of a command's function: a part of the game for a reference to it, else the script's
/// next one.
template <class Argument>
decltype(auto) argument(const Parts& parts) {
    if constexpr (std::is_reference_v<Argument> &&
                  !std::is_const_v<std::remove_reference_t<Argument>>)
        return std::get<Argument>(parts);
    else
        return oms::nextArgument<Argument>();
}

/// An integer or a text that comes back is the RESULT.
template <auto Function, class Result, class... Arguments>
void call(const Parts& parts) {
    // Braces fix the order in which the arguments are read.
    std::tuple<decltype(argument<Arguments>(parts))...> arguments{argument<Arguments>(parts)...};
    const auto run = [](auto&... values) { return std::invoke(Function, values...); };
    if constexpr (!std::is_void_v<Result>)
        OMScriptableObject::setResult(std::apply(run, arguments));
    else
        std::apply(run, arguments);
}

template <auto Function>
struct Command;
template <class Result, class... Arguments, Result (*Function)(Arguments...)>
struct Command<Function> {
    static constexpr auto run = &call<Function, Result, Arguments...>;
};
template <class Part, class Result, class... Arguments, Result (Part::*Member)(Arguments...)>
struct Command<Member> {
    static constexpr auto run = &call<Member, Result, Part&, Arguments...>;
};
template <class Part, class Result, Result (Part::*Member)() const>
struct Command<Member> {
    static constexpr auto run = &call<Member, Result, Part&>;
};

struct Row {
    RCommandWords words;
    void (*run)(const Parts& parts);
};

/// A member function of a part of the game, or any other function, which may take parts.
template <auto Function>
constexpr Row RCommand(std::string_view name, std::string_view arguments = {}) {
    return {{name, arguments}, Command<Function>::run};
}

// ---------------------------------------------------------------------------- what they do

int intersectTest(const std::string& first, const std::string& second) {
    const auto named = [](const std::string& name) {
        return dynamic_cast<OMTrinket*>(OMScriptableObject::named(name));
    };
    const OMTrinket* a = named(first);
    const OMTrinket* b = named(second);
    return a && b && a->intersects(*b) ? 1 : 0;
}

void logMessage(const std::string& text) { OMLog::write(OMLog::Kind::Message, text); }

void messageBox(const std::string& text) {
    OMApp::getApp()->box(text, OMApp::kAlertStyle, "Alert");
}

int playSound(RGameSounds& sounds, int id, bool loop) { return sounds.play(id, nullptr, loop); }

/// A number from the lower to the higher one, but for the excluded one.
int randomNumber(int from, int to, std::optional<int> exclude) {
    const std::int64_t low = std::min(from, to);
    const std::int64_t count = std::int64_t{std::max(from, to)} - low + 1;
    std::int64_t drawn = 0;
    if (count > 1) {
        drawn = count > 0xFFFFFFFF ? OMRandom() : OMRandomBelow(static_cast<std::uint32_t>(count));
        if (exclude && drawn == *exclude - low) drawn = (drawn + 1) % count;
    }
    return static_cast<int>(low + drawn);
}

void restorePalette(EffectsWindow& window, RMovies& movies) {
    if (window.canvas().depth() == OMCanvas::kIndexedDepth) movies.restoreWindowPalette();
}

void scene(EffectsWindow& window, int image, std::optional<int> palette) {
    window.restorePalette(image, palette.value_or(image));
}

template <std::int16_t AnswerSounds::*Sound>
void setAnswerSound(RDefaultAnswerSounds& sounds, int id) {
    sounds.*Sound = OMNarrowId(id);
}

void setSpeechCaching(bool on) {
    if (RSpeechRecords* speeches = RSpeechRecords::current()) speeches->caching = on;
}

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

void startTransition(EffectsWindow& window) {
    window.startTransition();
    world::WorldMemory* memory = world::WorldMemory::current();
    if (!memory) return;
    checkStatueDataset(*memory);
    memory->writeDataFile();
}

void writeToFile(ROutputFile& file, std::string text, const std::string& newLine) {
    if (!newLine.empty()) text += '\n';
    file.write(text);
}

constexpr Row kRows[] = {
    RCommand<&ROutputFile::close>("CloseFile"),
    RCommand<&EffectsWindow::displayScreen>("DisplayScreen"),
    RCommand<&EffectsWindow::endTransition>("EndTransition", "quick"),
    RCommand<&EffectsWindow::freezeScreen>("FreezeScreen"),
    RCommand<&RGameTexts::language>("GetLanguage"),
    RCommand<&EffectsWindow::goToBlack>("GoToBlack"),
    RCommand<&intersectTest>("IntersectTest", "a b"),
    RCommand<&logMessage>("LogMessage", "text"),
    RCommand<&messageBox>("MessageBox", "text"),
    RCommand<&ROutputFile::open>("OpenFile", "file"),
    RCommand<&randomNumber>("RandomNumber", "low high [except]"),
    RCommand<&restorePalette>("RestorePalette"),
    RCommand<&scene>("Scene", "picture [palette]"),
    RCommand<&setAnswerSound<&AnswerSounds::goHome>>("SetAnswerGoHomeSound", "sound"),
    RCommand<&setAnswerSound<&AnswerSounds::pickUp>>("SetAnswerPickUpSound", "sound"),
    RCommand<&setAnswerSound<&AnswerSounds::snap>>("SetAnswerSnapSound", "sound"),
    RCommand<&OMTrinket::setCorralNormalization>("SetCorralTrinketNormalization", "yes"),
    RCommand<&OMLog::setLevel>("SetDebugLevel", "level"),
    RCommand<&EffectsWindow::setDoubleClicksEnabled>("SetDoubleClicksEnabled", "yes"),
    RCommand<&RGameTexts::setLanguage>("SetLanguage", "language"),
    RCommand<&setSpeechCaching>("SetSpeechCaching", "yes"),
    RCommand<&OMAnimation::setUseEmbeddedAnimationCoordinates>("SetUseEmbeddedAnimationCoordinates",
                                                               "yes"),
    RCommand<&startTransition>("StartTransition"),
    RCommand<&writeToFile>("WriteToFile", "text [newline]"),
    // Resource files.
    RCommand<&RResources::activateDLL>("ActivateDLL", "file [permanent]"),
    RCommand<&RResources::cacheDLL>("CacheDLL", "file [background] [permanent] [harddrive]"),
    RCommand<&RResources::deactivateAllDLLs>("DeactivateAllDLLs", "[force]"),
    RCommand<&RResources::deactivateDLL>("DeactivateDLL", "file"),
    RCommand<&RResources::uncacheAllDLLs>("UncacheAllDLLs", "[force]"),
    RCommand<&RResources::uncacheDLL>("UncacheDLL", "file"),
    // Sounds.
    RCommand<&RGameSounds::kill>("KillSound", "handle"),
    RCommand<&RGameSounds::pause>("PauseSound", "handle"),
    RCommand<&playSound>("PlaySound", "sound [loop]"),
    RCommand<&RGameSounds::resume>("ResumeSound", "handle"),
};

} // namespace

RCommands::RCommands(EffectsWindow& window, RResources& resources, RGameSounds& sounds,
                     RMovies& movies, RGameTexts& texts)
    : parts_(window, resources, sounds, movies, output_, answerSounds_, texts) {
    for (const Row& row : kRows)
        YCommands::add(row.words.name, [this, run = row.run] { run(parts_); });
}

RCommands::~RCommands() {
    // What they have switched for all objects; another game may come.
    OMTrinket::setCorralNormalization(true);
    OMAnimation::setUseEmbeddedAnimationCoordinates(false);
    YCommands::clear();
}

std::vector<RCommandWords> RCommands::words() {
    std::vector<RCommandWords> words;
    for (const Row& row : kRows) words.push_back(row.words);
    return words;
}
