#include "scene/rscenprt.h"

#include "omsclass.h"
#include "scene/backgroundmusic.h"

#include <utility>
#include <vector>

namespace {

constexpr OMSEntry kRScenePortVocabulary[] = {
    oms::data<&RScenePort::backgroundMusicID, &RScenePort::setBackgroundMusicID>(
        "backgroundMusicID", "id of a sound, -1 for none")
        .of("sound"),
    oms::data<&RScenePort::backgroundMusicVolume, &RScenePort::setBackgroundMusicVolume>(
        "backgroundMusicVolume", "0 to 100"),
    oms::data<&RScenePort::isBackgroundMusicEnabled, &RScenePort::setBackgroundMusicEnabled>(
        "isBackgroundMusicEnabled", "whether there is music at all"),
    oms::method<&RScenePort::startBackgroundMusic>("startBackgroundMusic",
                                                   "[sound], [volume], [fade]"),
    oms::method<&RScenePort::stopBackgroundMusic>("stopBackgroundMusic", "[fade]"),
    oms::method<&RScenePort::pauseBackgroundMusic>("pauseBackgroundMusic"),
    oms::method<&RScenePort::resumeBackgroundMusic>("resumeBackgroundMusic"),
    oms::event("backgroundClicked", "a click met nothing else"),
    oms::event("exittingGame", "the game is about to end"),
    oms::event("paused", "the game pauses"),
    oms::event("resumed", "it goes on"),
    oms::event("returnPressed", "the Enter key"),
    oms::event("spacebarPressed", "the space bar"),
};

BackgroundMusic& music() { return *BackgroundMusic::current(); }

} // namespace

const OMSClass RScenePort::kClass{"RScenePort", &OMScriptableObject::kClass, kRScenePortVocabulary,
                                  &RScenePort::createFromScript, "[0]"};

// Life

RScenePort::RScenePort() {
    if (OMTrinketWindow* window = OMTrinketWindow::mainWindow())
        clicks_.emplace(*window, [](platform::Point) { tell("backgroundClicked"); });
    all_.append(this);
}

void RScenePort::onRetire() {
    clicks_.reset();
    all_.remove(this);
}

std::unique_ptr<OMScriptableObject> RScenePort::createFromScript() {
    return BackgroundMusic::current() ? std::make_unique<RScenePort>() : nullptr;
}

// What is told

void RScenePort::tell(std::string_view event) {
    const OMUnderWay underWay;
    std::vector<RScenePort*> ports; // those that are there now
    for (OMListLocator<RScenePort> each(all_); RScenePort* port = each.next();)
        ports.push_back(port);
    for (RScenePort* port : ports) port->fireEvent(event);
}

bool RScenePort::hearsClicks() {
    return all_.find([](const RScenePort& port) { return port.isHeard("backgroundClicked"); });
}

bool RScenePort::handleCommand(int command) {
    if (command == kSpaceCommand)
        tell("spacebarPressed");
    else if (command == kReturnCommand)
        tell("returnPressed");
    else
        return false;
    return true;
}

// The background music

int RScenePort::backgroundMusicID() const { return music().id(); }

void RScenePort::setBackgroundMusicID(int id) { music().setId(id); }

int RScenePort::backgroundMusicVolume() const { return music().volume(); }

void RScenePort::setBackgroundMusicVolume(int volume) { music().setVolume(volume); }

int RScenePort::isBackgroundMusicEnabled() const { return music().isEnabled() ? 1 : 0; }

void RScenePort::setBackgroundMusicEnabled(int value) {
    if (value != isBackgroundMusicEnabled()) music().setEnabled(!music().isEnabled());
}

/// The last argument that is given says which of those before it count, also when they are empty.
void RScenePort::startBackgroundMusic(std::optional<int> id, std::optional<int> volume,
                                      std::optional<int> fadeSeconds) {
    if (fadeSeconds || volume)
        music().start(id.value_or(0), volume.value_or(0), fadeSeconds.value_or(0));
    else
        music().start(id.value_or(music().id()), music().volume(), 0);
}

void RScenePort::stopBackgroundMusic(int fadeSeconds) { music().stop(fadeSeconds); }

void RScenePort::pauseBackgroundMusic() { music().pause(); }

void RScenePort::resumeBackgroundMusic() { music().resume(); }
