#include "progress/rlaptrap.h"

#include "omformat.h"
#include "omsbirths.h"
#include "omsclass.h"
#include "omtrinketwindow.h"
#include "reports.h"
#include "rpbutton.h"
#include "rtext.h"
#include "scene/backgroundmusic.h"

#include <algorithm>
#include <utility>

using platform::Rect;

namespace {

constexpr OMSEntry kRLapTrapVocabulary[] = {
    oms::readOnly<&RLapTrap::selectedLocation>("selectedLocation",
                                               "number of the location clicked last; 0: none"),
    oms::readOnly<&RLapTrap::selectedLocationName>("selectedLocationName", "its name"),
    oms::event("locationSelected", "a location was clicked"),
    oms::event("closed", "the close button was used"),
};

constexpr int kDepthOfParts = 1; ///< above the panel
constexpr int kDepthOfRefusal = 2;
constexpr int kMusicOn = 1; ///< numbers of the buttons
constexpr int kMusicOff = 2;
constexpr const char* kSeenInPractice = "seenChooseActivity";
constexpr const char* kSeenInGame = "seenLapTrapInGame";

const ProgressLayout& layoutOf(bool inGame) {
    static const ProgressLayouts kOwn = ProgressLayouts::builtIn();
    const LapTrapLayouts* found = LapTrapLayouts::current();
    const ProgressLayouts& all = found ? found->all : kOwn;
    return inGame ? all.game : all.practice;
}

/// Null where nothing can be located, after a failed check, and without such a resource.
std::shared_ptr<AOImage> pictureOf(int id) {
    return AOImage::canLocate() ? AOImage::locate(id) : nullptr;
}

/// A location that a script gives. 0 and what is none are kNowhere.
int locationFrom(const std::string& word) {
    if (const int named = world::locationNamed(word); named != world::kNowhere) return named;
    const int number = OMSToInteger(word);
    if (!world::locationName(number).empty()) return number;
    if (word != "0" && !word.empty())
        RWarn(OMFormat("RLapTrap: unknown location %s", word.c_str()));
    return world::kNowhere;
}

world::LevelColor colorFrom(int value) {
    const auto color = static_cast<world::LevelColor>(value);
    const bool isKnown =
        color == world::LevelColor::Advanced || color == world::LevelColor::WentBack;
    return isKnown ? color : world::LevelColor::None; // a changed file may have others
}

} // namespace

const OMSClass RLapTrap::kClass{"RLapTrap", &RAnimation::kClass, kRLapTrapVocabulary,
                                &RLapTrap::createFromScript,
                                "location [animation (-1: the layout's) [x y] [z]]"};

// ---------------------------------------------------------------------------- opening

RLapTrap::RLapTrap(OMTrinketWindow& window, std::shared_ptr<AOImage> image, int id, int x, int y)
    : RAnimation(window, std::move(image), id, x, y),
      music_([this](int button) { musicPressed(button); }) {
    setMovable(false);
}

RLapTrap::~RLapTrap() { retire(); }

void RLapTrap::onRetire() {
    for (const Part& part : parts_) part.trinket->retire();
    speech_.stop();
    RAnimation::onRetire();
}

std::unique_ptr<OMScriptableObject> RLapTrap::createFromScript() {
    // Numbers of arguments behind the picture.
    constexpr std::size_t kPlace = 2;
    OMSArguments& list = OMSArguments::global();
    int location = locationFrom(list.next());
    ScriptArguments arguments{OMTrinketWindow::mainWindow(), kLayoutPicture};
    if (list.hasNext()) arguments.id = list.nextInteger();
    if (list.remaining() >= kPlace) {
        arguments.x = list.nextInteger();
        arguments.y = list.nextInteger();
    }
    if (list.hasNext()) arguments.z = list.nextInteger();
    if (!arguments.window) return nullptr;

    auto world = std::make_unique<LapTrapWorld>();
    if (location == world::kNowhere) location = world->currentLocation();
    if (arguments.id < 0) {
        const ProgressPicture& panel = layoutOf(world->isInGame()).panel;
        arguments.id = panel.id;
        if (arguments.x == kEmbedded) arguments.x = panel.x;
        if (arguments.y == kEmbedded) arguments.y = panel.y;
    }
    std::shared_ptr<AOImage> image = arguments.id < 0 ? nullptr : pictureOf(arguments.id);
    if (!image) image = AOImage::blank();
    std::unique_ptr<RLapTrap> screen = createFrom<RLapTrap>(arguments, std::move(image));
    screen->open(location, std::move(world));
    return screen;
}

void RLapTrap::open(int location, std::unique_ptr<LapTrapWorld> world) {
    location_ = location;
    world_ = std::move(world);
    inGame_ = world_->isInGame();
    const ProgressLayout& layout = layoutOf(inGame_);
    if (layout.closeButton)
        if (auto* button = add<RPButton>(*layout.closeButton))
            button->setHitLink([this] { close(); });
    if (world_->hasPlayer()) build(layout);
    window()->input().updateFlyOver();
}

void RLapTrap::build(const ProgressLayout& layout) {
    introduce(inGame_ ? kSeenInGame : kSeenInPractice, layout.sound);
    for (const ProgressPart& part : layout.parts)
        if (part.isAt(location_)) buildPart(part);
    if (layout.music) {
        music_.add(add<BigOleButton>(layout.music->on));
        music_.add(add<BigOleButton>(layout.music->off));
    }
    if (layout.name) buildName(*layout.name);
    if (layout.refusal) buildRefusal(*layout.refusal);
    refresh();
    startHint(layout.hint);
}

void RLapTrap::buildPart(const ProgressPart& part) {
    introduce(part.flag, part.sound);
    for (const ProgressMapButton& row : part.mapButtons) {
        const int location = resolved(row.location);
        if (location == world::kNowhere) continue;
        auto* button = add<MapButton>(row.picture, location);
        if (!button) continue;
        button->setPressedLink([this, location] { mapButtonPressed(location); });
        mapButtons_.push_back(button);
    }
    for (const ProgressLevels& levels : part.levels) buildLevels(levels);
}

void RLapTrap::buildLevels(const ProgressLevels& levels) {
    const int location = resolved(levels.location);
    if (!world_->currentLevel(location)) return; // it has none
    const auto pressed = [this, index = levels_.size()](int level) {
        levelPressed(levels_[index], level);
    };
    LevelGroup& group = levels_.emplace_back(location, pressed);
    for (const ProgressPicture& picture : levels.buttons)
        group.buttons.add(add<BigOleButton>(picture));
    if (!levels.checkBox) return;
    auto* box = add<AutoLevelCheckBox>(*levels.checkBox, location);
    if (!box) return;
    box->setPressedLink([this, box] { checkBoxPressed(*box); });
    checkBoxes_.push_back(box);
}

void RLapTrap::buildRefusal(const ProgressPicture& picture) {
    refusal_ = add<OMAnimation>(picture);
    if (!refusal_) return;
    parts_.back().depth = kDepthOfRefusal;
    refusal_->setZ(depthAbove(kDepthOfRefusal));
    refusal_->setEventMask(refusal_->eventMask() | kIgnoreMouseDown);
    refusal_->playLinks().finished = [this] { refusalEnded(); };
    refusalEnded();
}

void RLapTrap::buildName(const ProgressName& name) {
    const Rect panel = boundingRectangle();
    const int x = panel.left + name.x;
    const int y = panel.top + name.y;
    auto text =
        std::make_unique<RText>(*window(), Rect{x, y, x + RText::kFitting, y + RText::kFitting});
    name_ = text.get();
    OMSBirths births;
    births.add(*name_, RText::kClass);
    if (name.font != ProgressName::kSystemFont)
        name_->chooseFont(oms::toText(name.font), std::nullopt, std::nullopt);
    name_->setColorIndex(name.color);
    name_->setEventMask(name_->eventMask() | kIgnoreMouseDown);
    adopt(std::move(text), kDepthOfParts);
}

/// What a player sees for the first time is explained.
void RLapTrap::introduce(const std::string& flag, int sound) {
    if (flag.empty()) return speech_.say(sound);
    if (!world_->isSet(flag)) speech_.say(sound);
    world_->set(flag);
}

void RLapTrap::startHint(int sound) {
    const std::int64_t due = clock_.ticks() + kHintTicks;
    const auto look = [this, due, sound] {
        if (clock_.ticks() < due) return;
        hint_.reset();
        if (isVisible()) speech_.say(sound);
    };
    hint_ = std::make_unique<OMTask>(look, OMTask::kWithScripts);
}

int RLapTrap::resolved(int location) const {
    return location == kProgressHere ? location_ : location;
}

template <class Part, class... Arguments>
Part* RLapTrap::add(const ProgressPicture& picture, Arguments... arguments) {
    if (std::ranges::find(missing_, picture.id) != missing_.end()) return nullptr;
    std::shared_ptr<AOImage> image = pictureOf(picture.id);
    if (!image) {
        missing_.push_back(picture.id);
        return nullptr;
    }
    const Rect panel = boundingRectangle();
    auto part = make<Part>(*window(), std::move(image), picture.id,
                           {panel.left + picture.x, panel.top + picture.y}, arguments...);
    Part* added = part.get();
    OMSBirths births;
    births.add(*part, Part::kClass);
    adopt(std::move(part), kDepthOfParts);
    return added;
}

void RLapTrap::adopt(std::unique_ptr<OMTrinket> part, int depth) {
    part->setZ(depthAbove(depth));
    part->setVisible(isVisible());
    parts_.push_back({std::move(part), depth});
}

// ---------------------------------------------------------------------------- what it shows

void RLapTrap::refresh() {
    for (LevelGroup& group : levels_) {
        for (int level = 1; level <= world::kLevels; ++level)
            if (BigOleButton* button = group.buttons.button(level))
                button->setColor(colorFrom(world_->levelColor(group.location, level)));
        group.buttons.select(world_->currentLevel(group.location).value_or(0));
    }
    for (AutoLevelCheckBox* box : checkBoxes_)
        box->setChecked(world_->isAutoLeveling(box->location()));
    for (MapButton* button : mapButtons_)
        button->update(button->location() == location_, world_->visits(button->location()));
    const BackgroundMusic* music = BackgroundMusic::current();
    const bool musicIsOff = music ? !music->isEnabled() : world_->isMusicOff();
    music_.select(musicIsOff ? kMusicOff : kMusicOn);
    if (name_) name_->setText(world_->playerName());
    showParts();
}

void RLapTrap::showParts() {
    for (const Part& part : parts_)
        part.trinket->setVisible(isVisible() && (part.trinket.get() != refusal_ || refusing_));
}

void RLapTrap::setAttribute(Attribute which, int value, int second) {
    const Rect before = boundingRectangle();
    RAnimation::setAttribute(which, value, second);
    const Rect after = boundingRectangle();
    if (which == Attribute::Visible) {
        showParts();
        // One that was closed can be opened again; meanwhile the world may have changed.
        if (isVisible() && world_) refresh();
    }
    for (const Part& part : parts_) {
        OMTrinket& trinket = *part.trinket;
        trinket.offset(after.left - before.left, after.top - before.top);
        if (which == Attribute::Z) trinket.setZ(depthAbove(part.depth));
        if (which == Attribute::Touchy) trinket.setTouchy(isTouchy());
    }
}

std::string RLapTrap::selectedLocationName() const {
    return std::string(world::locationName(selected_));
}

// ---------------------------------------------------------------------------- what is pressed

bool RLapTrap::isFixed(int location) {
    return RIsLevelFixed({.inGame = inGame_,
                          .location = world::locationName(location),
                          .screenLocation = world::locationName(location_),
                          .visits = world_->visits(location),
                          .isSolved = world_->isSolved(location)});
}

void RLapTrap::levelPressed(const LevelGroup& group, int level) {
    hint_.reset();
    if (refusing_) return;
    if (level != world_->currentLevel(group.location)) {
        if (isFixed(group.location))
            showRefusal();
        else
            world_->setCurrentLevel(group.location, level);
    }
    refresh();
}

void RLapTrap::showRefusal() {
    if (!refusal_) return;
    refusing_ = true;
    refusal_->setSequence(0, true);
    refusal_->setRepeatCount(1);
    refusal_->play();
    refusal_->setVisible(isVisible());
}

void RLapTrap::refusalEnded() {
    refusing_ = false;
    refusal_->pause();
    refusal_->setVisible(false);
}

void RLapTrap::checkBoxPressed(AutoLevelCheckBox& box) {
    hint_.reset();
    box.setChecked(!box.isChecked());
    world_->setAutoLeveling(box.location(), box.isChecked());
    refresh();
}

void RLapTrap::musicPressed(int button) {
    hint_.reset();
    const bool on = button == kMusicOn;
    if (BackgroundMusic* music = BackgroundMusic::current()) music->setEnabled(on);
    world_->setMusicOff(!on);
    refresh();
}

void RLapTrap::mapButtonPressed(int location) {
    hint_.reset();
    selected_ = location;
    refresh();
    fireEvent("locationSelected");
    if (!isRetired()) refresh();
}

void RLapTrap::close() {
    hint_.reset();
    speech_.stop();
    setVisible(false);
    fireEvent("closed");
}

// Speeches

void LapTrapSpeech::say(int sound) {
    if (sound == OMEffectSounds::kNoSound) return;
    waiting_.push_back(sound);
    if (!handle_) next();
}

void LapTrapSpeech::next() {
    while (!waiting_.empty()) {
        const int sound = waiting_.front();
        waiting_.pop_front();
        OMEffectSounds* sounds = OMEffectSounds::require(
            "soundURLEx == NULL", "Extended Sound URL is not installed in RLapTrap");
        if (!sounds) continue;
        const auto handle = std::make_shared<int>(OMEffectSounds::kNotPlaying);
        handle_ = handle;
        *handle = sounds->playEffect(sound, [this, which = std::weak_ptr(handle)] {
            // Of a speech that was stopped, nothing is left.
            if (which.expired()) return;
            handle_.reset();
            next();
        });
        if (handle_ != handle) return; // it has ended already
        if (*handle != OMEffectSounds::kNotPlaying) return;
        handle_.reset();
    }
}

void LapTrapSpeech::stop() {
    waiting_.clear();
    if (!handle_) return;
    const int handle = *std::exchange(handle_, nullptr);
    if (OMEffectSounds* sounds = OMEffectSounds::current()) sounds->endEffect(handle);
}
