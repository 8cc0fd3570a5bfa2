#include "access/spokentexts.h"

#include "dialog/rdialog.h"
#include "omkeytargets.h"
#include "omlog.h"
#include "omplatform.h"
#include "omticks.h"
#include "rsellist.h"
#include "rtext.h"
#include "startup/programresources.h"
#include "startup/warnings.h"
#include "yheap.h"

#include <utility>

using platform::Rect;
using platform::Speech;

namespace {

constexpr std::uint32_t kSettleMs = 300;  ///< a text stands still before it is spoken
constexpr std::uint32_t kAgainMs = 5'000; ///< until the same text is worth it again

} // namespace

SpokenTexts::SpokenTexts(OMApp& app, OMTrinketWindow& window, const KeyPlayer& keys,
                         const RGameTexts& texts)
    : app_(app), window_(window), keys_(keys), texts_(texts), names_(window, texts),
      task_([this] { step(); }, OMTask::kWithScripts) {
    app.setSpeechLink([this](bool on) { setOn(on); });
}

SpokenTexts::~SpokenTexts() {
    app_.setSpeechLink(nullptr);
    OMPlatform().speech().hush();
}

void SpokenTexts::setInBackground(bool on) {
    isInBackground_ = on;
    if (on) OMPlatform().speech().hush();
}

/// That it ends is the last thing to be heard.
void SpokenTexts::setOn(bool on) {
    Speech& speech = OMPlatform().speech();
    if (on) speech.setOn(true);
    speak(RWarningText(on ? spokentext::kOn : spokentext::kOff), Speech::Turn::AtOnce);
    speech.setOn(on);
    toldNoVoice_ = false;
    told_.reset();
    seen_.clear();
    spokenMs_.clear();
}

void SpokenTexts::speak(const std::string& text, Speech::Turn turn) {
    OMPlatform().speech().speak(text, texts_.language(), turn);
}

void SpokenTexts::step() {
    if (!OMPlatform().speech().isOn() || isInBackground_) return;
    followScene();
    if (window_.isPresenting() && !window_.isResting()) {
        followMark();
        followTexts();
    }
    followVoice();
}

/// A voice that goes in the middle of the game is missed without a box.
void SpokenTexts::followVoice() {
    const Speech& speech = OMPlatform().speech();
    if (speech.voice() == Speech::Voice::Ready) {
        hadVoice_ = true;
        toldNoVoice_ = false;
    }
    if (speech.voice() != Speech::Voice::Missing || std::exchange(toldNoVoice_, true)) return;
    OMLog::write(OMLog::Kind::Warning, "Texts are not spoken: " + speech.complaint());
    OMPlatform().complain("Texts are not spoken: " + speech.complaint());
    if (!hadVoice_) RTellPlayer(RWarningText(spokentext::kNoVoice));
}

void SpokenTexts::followScene() {
    const std::string& script = YHeap::current().script();
    if (script == scene_) return;
    if (!std::exchange(scene_, script).empty()) OMPlatform().speech().hush();
    told_.reset();
    spokenMs_.clear();
}

// ---------------------------------------------------------------------------- the mark

void SpokenTexts::followMark() {
    const std::optional<KeyPlayer::Attention> now = keys_.attention();
    const bool wasCarried = told_ && told_->isCarried;
    const bool isSame = now && told_ && told_->trinket.object() == now->trinket &&
                        told_->isBackground == !now->trinket && told_->part == now->part;
    Speech::Turn turn = now && now->isChosen ? Speech::Turn::AtOnce : Speech::Turn::Next;
    if (wasCarried && !(now && now->isCarried)) {
        if (const auto* trinket = static_cast<OMTrinket*>(told_->trinket.object()))
            speak(RWarningText(keys_.wasPutBack() ? spokentext::kPutBack : spokentext::kLetGo) +
                      names_.nameOf(*trinket, 0),
                  Speech::Turn::AtOnce);
        turn = Speech::Turn::Next;
    }
    if (!now) return told_.reset();
    if (now->isCarried) {
        if (!isSame || !wasCarried || now->place != told_->place) tellCarried(*now, wasCarried);
    } else if (!isSame) {
        tellMark(*now, turn);
    }
    told_.emplace(
        Told{OMSWatch(now->trinket), !now->trinket, now->part, now->place, now->isCarried});
}

void SpokenTexts::tellMark(const KeyPlayer::Attention& now, Speech::Turn turn) {
    if (!now.trinket) return speak(names_.backgroundName(), turn);
    std::string text = names_.nameOf(*now.trinket, now.part);
    if (OMIsDragged(*now.trinket)) text += RWarningText(spokentext::kCanBeMoved);
    speak(text, turn);
}

void SpokenTexts::tellCarried(const KeyPlayer::Attention& now, bool wasCarried) {
    if (!now.trinket) return;
    if (!wasCarried)
        return speak(RWarningText(spokentext::kInHand) + names_.nameOf(*now.trinket, 0),
                     Speech::Turn::AtOnce);
    const std::string name = names_.nameUnder(now.place, now.trinket);
    if (!name.empty()) speak(RWarningText(spokentext::kOver) + name, Speech::Turn::AtOnce);
}

// ---------------------------------------------------------------------------- texts

/// Of what is read as it appears; none for all else.
std::optional<std::string> SpokenTexts::textOf(OMTrinket& trinket) const {
    if (const auto* text = dynamic_cast<const RText*>(&trinket)) return RSpokenLine(text->text());
    if (const auto* list = dynamic_cast<const RSelList*>(&trinket))
        return RSpokenLine(list->currentEntry());
    if (dynamic_cast<const RDialog*>(&trinket)) return names_.tableName(trinket);
    return std::nullopt;
}

/// In reading order, each when it has stood still for a while: of what changes all the time the
/// last is spoken.
void SpokenTexts::followTexts() {
    const std::uint32_t now = OMMilliseconds();
    std::map<const OMTrinket*, Seen> seen;
    std::vector<Rect> places;
    std::vector<Seen*> due;
    (void)window_.findTrinket([&](OMTrinket& trinket) {
        const Rect place = trinket.boundingRectangle();
        if (!trinket.isShown() ||
            platform::intersection(place, window_.backBuffer().bounds()).empty())
            return false;
        const auto text = textOf(trinket);
        if (!text) return false;
        const auto before = seen_.find(&trinket);
        const bool isOld = before != seen_.end() && before->second.trinket.object() == &trinket &&
                           before->second.text == *text;
        Seen& entry = seen.emplace(&trinket, Seen{OMSWatch(&trinket), *text,
                                                  isOld ? before->second.sinceMs : now,
                                                  isOld ? before->second.isDone : text->empty()})
                          .first->second;
        if (!entry.isDone && now - entry.sinceMs >= kSettleMs) {
            places.push_back(place);
            due.push_back(&entry);
        }
        return false;
    });
    for (const std::size_t each : OMReadingOrder(places)) {
        due[each]->isDone = true;
        if (!wasJustSpoken(due[each]->text)) speak(due[each]->text, Speech::Turn::Next);
    }
    seen_.swap(seen);
}

/// From now on it was.
bool SpokenTexts::wasJustSpoken(const std::string& text) {
    const std::uint32_t now = OMMilliseconds();
    std::erase_if(spokenMs_, [now](const auto& each) { return now - each.second >= kAgainMs; });
    return !spokenMs_.emplace(text, now).second;
}
