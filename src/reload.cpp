#include "reload.h"

#include "access/spokentexts.h"
#include "aoimage.h"
#include "character/speechrecords.h"
#include "omcursor.h"
#include "omlog.h"
#include "ompath.h"
#include "omplatform.h"
#include "progress/rlaptrap.h"
#include "resources/cursors.h"
#include "resources/fontfact.h"
#include "resources/resources.h"
#include "rthread.h"
#include "scene/backgroundmusic.h"
#include "scene/efwindow.h"
#include "sound/gamesounds.h"
#include "texts/gametexts.h"
#include "yengine.h"

#include <utility>
#include <vector>

namespace {

void tellAuthor(const std::string& text, bool failed = false) {
    OMLog::write(OMLog::Kind::Message, text);
    OMPlatform().author().tell(text, failed);
}

} // namespace

RReload::RReload(YEngine& engine, YThread& thread, const Parts& parts, std::string firstScript,
                 YScriptLocator locator)
    : engine_(engine), thread_(thread), parts_(parts), firstScript_(std::move(firstScript)),
      locator_(std::move(locator)) {
    thread_.setUnloadedLink([this] { sceneHasGone(); });
    thread_.setStartedLink([this] { sceneHasBegun(); });
    OMPlatform().author().setReload([this](const platform::Reload& wanted) { begin(wanted); });
}

RReload::~RReload() {
    OMPlatform().author().setReload(nullptr);
    thread_.setUnloadedLink(nullptr);
    thread_.setStartedLink(nullptr);
}

/// A scene that is about to change to another one does so; that one is a new one anyway.
void RReload::begin(const platform::Reload& wanted) {
    wanted_ = {wanted.resources || wanted_.resources, wanted.keepsVariables};
    OMPathListAgain();
    if (!scriptsAreInOrder()) {
        tellAuthor(thread_.scriptName() + " was not loaded again. The scene goes on as it was",
                   true);
        return;
    }
    since_ = OMMilliseconds();
    isBeginning_ = true;
    if (!engine_.isSwitching()) thread_.beginAnew(wanted.keepsVariables);
}

bool RReload::scriptsAreInOrder() const {
    std::vector<std::string> mistakes = YCheckScript(thread_.scriptName(), locator_);
    const bool hasFirst = OMPlatform().files().exists(firstScript_) ||
                          OMPathResolveFilename(firstScript_).has_value();
    if (hasFirst && thread_.scriptName() != firstScript_) {
        const std::vector<std::string> more = YCheckScript(firstScript_, locator_);
        mistakes.insert(mistakes.end(), more.begin(), more.end());
    }
    for (const std::string& mistake : mistakes) {
        OMLog::write(OMLog::Kind::Warning, mistake);
        OMPlatform().author().warn(mistake);
    }
    return mistakes.empty();
}

void RReload::sceneHasGone() {
    if (!std::exchange(isBeginning_, false)) return;
    parts_.sounds.endAll();
    parts_.window.abandonTransitions();
    parts_.music.forgetPauses();
    parts_.window.showCursor(kOMCursorArrow);
    parts_.texts.readAgain();
    parts_.spoken.readAgain();
    loaded_ = wanted_.keepsVariables ? ", with its variables kept," : "";
    if (!std::exchange(wanted_.resources, false)) return;
    loaded_ = ", with pictures and sounds," + loaded_;
    readResources();
}

void RReload::readResources() {
    parts_.cursors.forgetResources();
    parts_.fonts.forgetResources();
    AOImage::forgetResources();
    if (RSpeechRecords* speeches = RSpeechRecords::current()) {
        speeches->forgetResources();
        parts_.resources.readAgain(OMLinkToObj(speeches, &RSpeechRecords::addSequenceSound));
    }
    if (LapTrapLayouts* layouts = LapTrapLayouts::current()) layouts->all = ProgressLayouts::find();
    parts_.music.readAgain();
}

void RReload::sceneHasBegun() {
    const auto since = std::exchange(since_, std::nullopt);
    if (!since) return;
    tellAuthor(thread_.scriptName() + loaded_ + " was loaded again in " +
               std::to_string(OMMilliseconds() - *since) + " ms");
}
