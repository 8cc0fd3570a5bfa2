#include "rcharctr.h"

#include "omao.h"
#include "omformat.h"
#include "omid.h"
#include "omsbirths.h"
#include "omsclass.h"
#include "omtrinketwindow.h"
#include "rcharctrlayer.h"
#include "reports.h"

#include <algorithm>
#include <utility>

using platform::Point;

namespace {

// Layers. They lie above each other in this order.
constexpr int kSettlePoseLayer = 1;
constexpr int kPlayedLayer = 2; ///< an animation, or a speech that is not cached
constexpr int kFirstFidgetLayer = 3;
constexpr int kFirstCachedLayer = 1000;

constexpr int kOnce = 1;              ///< repeat count
constexpr int kAsTheSequenceSays = 0; ///< repeat count
constexpr int kFirstSequence = 0;

constexpr OMSEntry kRCharacterVocabulary[] = {
    oms::data<&RCharacter::animatesSettled, &RCharacter::setAnimateSettled>(
        "animateSettled", "1: the settle pose moves; 0: it shows its first frame"),
    oms::data<&RCharacter::isTouchy, &RCharacter::setTouchy>("enabled", "the same as touchy"),
    oms::data<&RCharacter::settlePoseId, &RCharacter::setSettlePoseId>(
        "settlePoseID", "animation in which it stands; -1: none")
        .of("animation"),
    oms::method<&RCharacter::addFidgetGroup>("addFidgetGroup", "group min max [no-repeat (1)]"),
    oms::method<&RCharacter::addFidget>("addFidget", "group animation [hide-pose (1)]"),
    oms::method<&RCharacter::addSpeechAnim>("addSpeechAnim", "animation"),
    oms::method<&RCharacter::removeFidgetGroup>("removeFidgetGroup", "group"),
    oms::lasting<&RCharacter::playAnimForScript>("playAnim", "animation [repeat (1) [stay (1)]]"),
    oms::lasting<&RCharacter::playSpeechForScript>("playSpeech",
                                                   "speech [stay (1) [listener (0)]]"),
    oms::method<&RCharacter::pause>("pause"),
    oms::lasting<&RCharacter::resumeForScript>("resume"),
    oms::method<&RCharacter::stop>("stop"),
    oms::method<&RCharacter::setAOCursor>("setAOCursor", "[cursor [grab-cursor]]"),
    oms::event("finished", "an animation or a speech has ended"),
};

/// Who asked is told at once.
void refuse(const std::string& text, const OMLink& done) {
    RTell(text);
    done();
}

} // namespace

const OMSClass RCharacter::kClass{"RCharacter", &OMMultiTrinket::kClass, kRCharacterVocabulary,
                                  &RCharacter::createFromScript, "pose (-1: none) x y [z]"};

RCharacter::RCharacter(OMTrinketWindow& window, int settlePose, Point at)
    : OMMultiTrinket(window), origin_(at),
      nextFidgetLayer_(kFirstFidgetLayer), shown_{kSettlePoseLayer} {
    const auto coordinate = [](int value) {
        return value == OMAnimation::kEmbedded ? 0 : nearestPlace(value);
    };
    const Point place{coordinate(at.x), coordinate(at.y)};
    setBounds({place.x, place.y, place.x, place.y}); // while it has no layers
    setSettlePoseId(settlePose);
}

RCharacter::~RCharacter() { retire(); }

void RCharacter::onRetire() {
    setCompletionLink(OMBothLinks(std::exchange(done_, nullptr), takeCompletion()));
    for (const auto& [index, layer] : layers_) layer->animation().retire();
    streamed_.reset();
    OMMultiTrinket::onRetire();
}

std::unique_ptr<OMScriptableObject> RCharacter::createFromScript() {
    OMTrinketWindow* window = OMTrinketWindow::mainWindow();
    if (!window) return nullptr;
    OMSArguments& arguments = OMSArguments::global();
    const int settlePose = arguments.nextInteger();
    Point at{};
    at.x = arguments.nextInteger();
    at.y = arguments.nextInteger();
    if (OMAnimation::usesEmbeddedAnimationCoordinates())
        at = {OMAnimation::kEmbedded, OMAnimation::kEmbedded};
    auto character = std::make_unique<RCharacter>(*window, settlePose, at);
    character->setZ(arguments.nextInteger());
    return character;
}

// Layers

void RCharacter::moveMembers(int dx, int dy) {
    moved_.x += dx;
    moved_.y += dy;
    OMMultiTrinket::moveMembers(dx, dy);
}

/// Null when there is no such animation, or the window is gone.
std::unique_ptr<OMAnimation> RCharacter::load(int id) const {
    if (!window()) return nullptr;
    auto animation = OMAnimation::create(id, origin_.x, origin_.y, *window());
    if (animation) animation->offset(moved_.x, moved_.y);
    return animation;
}

/// Replaces the one that was there.
void RCharacter::addLayer(int index, std::unique_ptr<OMAnimation> animation) {
    auto& layer = layers_[index];
    layer = std::make_unique<RCharacterLayer>(std::move(animation));
    add(layer->animation(), index, 0, shown_.contains(index));
}

RCharacterLayer* RCharacter::layer(int index) const {
    const auto found = layers_.find(index);
    return found == layers_.end() ? nullptr : found->second.get();
}

int RCharacter::freeLayer(int from) const {
    while (layers_.contains(from)) ++from;
    return from;
}

void RCharacter::show(int index, bool shown) {
    if (shown)
        shown_.insert(index);
    else
        shown_.erase(index);
    if (RCharacterLayer* shownLayer = layer(index)) showMember(shownLayer->animation(), shown);
}

/// Brings the layers into their order, above other members of their depth.
void RCharacter::arrange() {
    for (const auto& [index, layer] : layers_)
        add(layer->animation(), index, 0, shown_.contains(index));
}

void RCharacter::removeAll() {
    OMMultiTrinket::removeAll();
    arrange();
}

// The settle pose

void RCharacter::setSettlePoseId(int id) {
    const OMSBirths births;
    settlePoseId_ = id = OMNarrowId(id);
    std::unique_ptr<OMAnimation> animation = id == kNoSettlePose ? nullptr : load(id);
    if (!animation) {
        layers_.erase(kSettlePoseLayer);
        if (id != kNoSettlePose) RTell(OMFormat("RCharacter: unable to load settle pose %d", id));
        return;
    }
    addLayer(kSettlePoseLayer, std::move(animation));
    arrange();
    animateSettlePose();
}

void RCharacter::setAnimateSettled(bool on) {
    if (std::exchange(animateSettled_, on) != on) animateSettlePose();
}

void RCharacter::animateSettlePose() {
    RCharacterLayer* pose = layer(kSettlePoseLayer);
    if (!pose) return;
    pose->rest();
    if (!animateSettled_) return;
    pose->play(kFirstSequence, OMAnimation::kLoopForever, nullptr);
    if (paused_ && movingLayer() == pose) pose->pause();
}

// Playing

int RCharacter::playedLayer() const {
    return animationLayer_ != kNone ? animationLayer_ : speechLayer_;
}

void RCharacter::playAnim(int id, std::optional<int> repeat, bool stayVisible, OMLink done) {
    const OMSBirths births;
    if (isPlaying())
        return refuse(OMFormat("RCharacter: busy, cannot play animation %d", id), done);
    endFidget();
    std::unique_ptr<OMAnimation> animation = load(id);
    if (!animation) return refuse(OMFormat("RCharacter: animation %d not found", id), done);
    const int times = repeat.value_or(kOnce);
    addLayer(kPlayedLayer, std::move(animation));
    animationLayer_ = kPlayedLayer;
    begin(kPlayedLayer, kFirstSequence,
          times == 0 ? kOnce : std::max(times, OMAnimation::kLoopForever), stayVisible,
          std::move(done));
}

void RCharacter::playSpeech(int speech, std::optional<bool> stayVisible,
                            std::optional<int> listener, OMLink done) {
    const OMSBirths births;
    speech = OMNarrowId(speech);
    const auto busy = [speech] {
        return OMFormat("RCharacter: busy, cannot play speech %d", speech);
    };
    if (isPlaying()) return refuse(busy(), done);
    const RSpeechRecord* found = findSpeech(speech);
    if (!found)
        return refuse(OMFormat("RCharacter: unknown animation for speech ID %d", speech), done);
    const RSpeechRecord record = *found; // a listener may have speeches added
    endFidget();
    if (const RSpeechRecords* all = RSpeechRecords::current()) {
        const auto told = all->listeners[listener.value_or(0) == 0 ? 0 : 1];
        told(speech);
    }
    if (isRetired()) return done();
    if (isPlaying()) return refuse(busy(), done);
    const int index = speechLayer(record.animation);
    if (index == kNone)
        return refuse(OMFormat("RCharacter: animation %d not found", record.animation), done);
    streamed_.emplace(record.animation, record.sequence);
    speechLayer_ = index;
    begin(index, record.sequence, kAsTheSequenceSays, stayVisible.value_or(true), std::move(done));
}

void RCharacter::begin(int index, int sequence, int repeat, bool stayVisible, OMLink done) {
    stayVisible_ = stayVisible;
    done_ = std::move(done);
    show(kSettlePoseLayer, false);
    show(index, true);
    layer(index)->play(sequence, repeat, [this] { ended(); });
}

/// Also at the end that `stop` makes. Nothing of the character is touched after the event.
void RCharacter::ended() {
    const int index = playedLayer();
    animationLayer_ = speechLayer_ = kNone;
    layer(index)->rest();
    show(index, false);
    if (index == kPlayedLayer) layers_.erase(index);
    streamed_.reset();
    show(kSettlePoseLayer, true);
    if (!stayVisible_) setVisible(false);
    const OMLink done = std::exchange(done_, nullptr); // another one may wait after the event
    fireEvent("finished");
    done();
}

RCharacterLayer* RCharacter::movingLayer() const {
    if (isPlaying()) return layer(playedLayer());
    if (fidget_) return layer(fidget_->fidget.layer);
    return animateSettled_ ? layer(kSettlePoseLayer) : nullptr;
}

void RCharacter::pause() {
    if (RCharacterLayer* moving = movingLayer()) moving->pause();
    paused_ = true;
}

void RCharacter::resume() {
    for (const auto& [index, layer] : layers_) layer->resume();
    paused_ = false;
}

void RCharacter::stop() {
    if (isPlaying())
        ended();
    else
        endFidget();
}

// Speeches

const RSpeechRecord* RCharacter::findSpeech(int speech) const {
    const auto found = std::ranges::find(speeches_, speech, &RSpeechRecord::speech);
    return found == speeches_.end() ? nullptr : &*found;
}

void RCharacter::addSpeechAnim(int animation) {
    animation = OMNarrowId(animation);
    RSpeechRecords* all = RSpeechRecords::current();
    const std::vector<RSpeechRecord>* records = all ? all->of(animation) : nullptr;
    if (!records) return RTell(OMFormat("RCharacter: unable to load animation %d", animation));
    for (const RSpeechRecord& record : *records)
        if (!findSpeech(record.speech)) speeches_.push_back(record);
}

/// Where that animation is now; kNone when it cannot be loaded.
int RCharacter::speechLayer(int animation) {
    const RSpeechRecords* all = RSpeechRecords::current();
    const bool caching = all && all->caching;
    const auto cached = cachedSpeeches_.find(animation);
    if (caching && cached != cachedSpeeches_.end()) return cached->second;
    std::unique_ptr<OMAnimation> loaded = load(animation);
    if (!loaded) return kNone;
    const int index = caching ? freeLayer(kFirstCachedLayer) : kPlayedLayer;
    if (caching) cachedSpeeches_.emplace(animation, index);
    addLayer(index, std::move(loaded));
    return index;
}

// Fidgets

FidgetGroup* RCharacter::findGroup(int id) const {
    const auto found = std::ranges::find(groups_, id, &FidgetGroup::id);
    return found == groups_.end() ? nullptr : found->get();
}

void RCharacter::addFidgetGroup(int group, int minimumSeconds, int maximumSeconds,
                                std::optional<bool> noRepeat) {
    const FidgetGroup::Interval interval{minimumSeconds, maximumSeconds};
    FidgetGroup* made = findGroup(group);
    if (made) {
        made->setInterval(interval);
        made->setNoRepeat(noRepeat.value_or(true));
    } else {
        groups_.push_back(std::make_unique<FidgetGroup>(group, interval, noRepeat.value_or(true)));
        made = groups_.back().get();
    }
    made->schedule(clock_.ticks());
    if (!fidgetTimer_)
        fidgetTimer_ = std::make_unique<OMTask>([this] { runFidgets(); }, OMTask::kWithScripts);
}

void RCharacter::addFidget(int group, int animation, std::optional<bool> hidesSettlePose) {
    const OMSBirths births;
    FidgetGroup* groupOfIt = findGroup(group);
    if (!groupOfIt) return RTell(OMFormat("RCharacter: Unknown fidget group %d", group));
    std::unique_ptr<OMAnimation> loaded = load(animation);
    if (!loaded)
        return RTell(OMFormat("RCharacter: Unable to load fidget animation %d", animation));
    const int index = freeLayer(nextFidgetLayer_);
    nextFidgetLayer_ = index + 1;
    addLayer(index, std::move(loaded));
    groupOfIt->add(index, hidesSettlePose.value_or(true));
}

void RCharacter::removeFidgetGroup(int group) {
    const auto found = std::ranges::find(groups_, group, &FidgetGroup::id);
    if (found == groups_.end())
        return RTell(OMFormat("RCharacter: unknown fidget group %d", group));
    if (fidget_ && fidget_->group == found->get()) endFidget();
    for (const Fidget& fidget : (*found)->fidgets()) layers_.erase(fidget.layer);
    groups_.erase(found);
    if (groups_.empty()) fidgetTimer_.reset();
}

void RCharacter::runFidgets() {
    const std::int64_t now = clock_.ticks();
    const auto due =
        std::ranges::find_if(groups_, [now](const auto& group) { return group->isDue(now); });
    if (due == groups_.end()) return;
    (*due)->schedule(now);
    if (isVisible() && !isPlaying() && !fidget_ && !paused_) beginFidget(**due);
}

void RCharacter::beginFidget(FidgetGroup& group) {
    const std::optional<Fidget> fidget = group.pick();
    if (!fidget) return;
    fidget_ = {&group, *fidget};
    if (fidget->hidesSettlePose) show(kSettlePoseLayer, false);
    show(fidget->layer, true);
    layer(fidget->layer)->play(kFirstSequence, kOnce, [this] { endFidget(); });
}

void RCharacter::endFidget() {
    if (!fidget_) return;
    const Playing ended = *std::exchange(fidget_, std::nullopt);
    layer(ended.fidget.layer)->rest();
    show(ended.fidget.layer, false);
    show(kSettlePoseLayer, true);
    ended.group->schedule(clock_.ticks());
}

// For scripts

void RCharacter::playAnimForScript(int id, std::optional<int> repeat,
                                   std::optional<bool> stayVisible) {
    playAnim(id, repeat, stayVisible.value_or(true), takeCompletion());
}

void RCharacter::playSpeechForScript(int speech, std::optional<bool> stayVisible,
                                     std::optional<int> listener) {
    playSpeech(speech, stayVisible, listener, takeCompletion());
}

/// Who waited for what plays goes on waiting.
void RCharacter::resumeForScript() {
    resume();
    if (isPlaying())
        done_ = OMBothLinks(std::move(done_), takeCompletion());
    else
        fireCompletion();
}

void RCharacter::setAOCursor(std::optional<int> normal, std::optional<int> grab) {
    OMSetCursors(*this, normal, grab, "Cursor URL is not installed in RCharacter");
}
