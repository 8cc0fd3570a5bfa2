#include "rpuzzle.h"

#include "omlog.h"
#include "omsclass.h"
#include "rtext.h"
#include "rvar.h"

#include <algorithm>
#include <type_traits>
#include <utility>

using platform::Point;

namespace {

constexpr OMSEntry kRPuzzleVocabulary[] = {
    oms::readOnly<&RPuzzle::areAnswersUsed>("areAnswersUsed", "every answer is in a container"),
    oms::readOnly<&RPuzzle::areContainersFull>("areContainersFull", "every container is full"),
    oms::data<&RPuzzle::puzzleTextColorIndex, &RPuzzle::setPuzzleTextColorIndex>(
        "puzzleTextColorIndex", "palette index of its texts"),
    oms::data<&RPuzzle::scrambleAnswers, &RPuzzle::setScrambleAnswers>(
        "scrambleAnswers", "starting deals the answers of an entry out by chance"),
    oms::readOnly<&RPuzzle::isSolved>("isSolved", "every container is solved"),
    oms::data<&RPuzzle::lockCorrectAnswers, &RPuzzle::setLockCorrectAnswers>(
        "lockCorrectAnswers", "for containers that are added from now on"),
    oms::data<&RPuzzle::rejectIncorrectAnswers, &RPuzzle::setRejectIncorrectAnswers>(
        "rejectIncorrectAnswers", "for containers that are added from now on"),
    oms::method<&RPuzzle::addAnswer>("addAnswer", "answer"),
    oms::method<&RPuzzle::addAnswerToContainer>("addAnswerToContainer", "answer container"),
    oms::method<&RPuzzle::addContainer>("addContainer", "container"),
    oms::method<&RPuzzle::anchorAnswers>("anchorAnswers"),
    oms::method<&RPuzzle::removeAnswer>("removeAnswer", "answer"),
    oms::method<&RPuzzle::removeAnswerFromContainer>("removeAnswerFromContainer",
                                                     "answer container"),
    oms::method<&RPuzzle::removeContainer>("removeContainer", "container"),
    oms::method<&RPuzzle::reset>("reset"),
    oms::method<&RPuzzle::start>("play"),
    oms::method<&RPuzzle::setAnswer>("setAnswer", "entry attribute text [attribute text ...]"),
    oms::method<&RPuzzle::setContainer>("setContainer", "entry attribute [attribute ...]"),
    oms::method<&RPuzzle::setPuzzleText>(
        "setPuzzleText", "entry number x y z text [align] | entry number x y width height z text"),
    oms::method<&RPuzzle::setPuzzleTextFont>("setPuzzleTextFont",
                                             "face size style color | font \"\" \"\" color"),
    oms::method<&RPuzzle::setPuzzleGraphic>("setPuzzleGraphic", "entry [x y] z animation"),
    oms::method<&RPuzzle::shiftAnswers>("shiftAnswers", "dx dy"),
    oms::method<&RPuzzle::shiftContainers>("shiftContainers", "dx dy"),
    oms::method<&RPuzzle::start>("start"),
    oms::method<&RPuzzle::unanchorAnswers>("unanchorAnswers"),
    oms::event("answersUsed", "an answer was placed, and all are in a container"),
    oms::event("containersFull", "an answer was placed, and every container is full"),
    oms::event("puzzleSolved", "every container is solved"),
    oms::event("puzzleWrong", "all is full or used, but not solved"),
};

/// The answer or container in the variable of that name; null, told to the log, without.
template <class Class>
Class* find(const std::string& variable) {
    auto* object = dynamic_cast<Class*>(OMScriptableObject::named(variable));
    if (object) return object;
    const char* kind = std::is_same_v<Class, RAnswer> ? "answer" : "container";
    if (variable == YVariable::kObjectText)
        OMLog::writef(OMLog::Kind::Warning,
                      "RPuzzle: got an object and no name; write the %s's name in quotes, as in "
                      "\"apple\"",
                      kind);
    else
        OMLog::writef(OMLog::Kind::Warning,
                      "RPuzzle: \"%s\" is the name of no %s, so nothing is done with it",
                      variable.c_str(), kind);
    return nullptr;
}

/// Out of its container. One that a handler has put into another one meanwhile stays there.
void sendHome(RAnswer& answer) {
    if (answer.leaveContainer()) answer.goHome();
}

} // namespace

const OMSClass RPuzzle::kClass{"RPuzzle", &OMScriptableObject::kClass, kRPuzzleVocabulary,
                               &oms::create<RPuzzle>, "[0]"};

// ---------------------------------------------------------------------------- what it consists of

RPuzzle::RPuzzle() = default;

RPuzzle::~RPuzzle() { retire(); }

void RPuzzle::onRetire() {
    while (!answers_.empty()) answers_.back()->setKeeper(nullptr);
    for (RContainer* container : std::exchange(containers_, {})) container->removeKeeper(*this);
    setHover(nullptr);
    ++starts_;
    texts_.clear();
    graphics_.clear();
}

bool RPuzzle::holds(const RAnswer& answer) const {
    return std::ranges::find(answers_, &answer) != answers_.end();
}

bool RPuzzle::holds(const RContainer& container) const {
    return std::ranges::find(containers_, &container) != containers_.end();
}

std::vector<platform::Rect> RPuzzle::answerPlaces(const RAnswer& answer) const {
    std::vector<platform::Rect> places;
    for (const RContainer* container : containers_) {
        if (!container->isEnabled() || container->isFull()) continue;
        const auto parts = container->placesFor(answer);
        places.insert(places.end(), parts.begin(), parts.end());
    }
    return places;
}

void RPuzzle::answerGoes(RAnswer& answer) {
    if (&answer == dragged_) endHover();
    std::erase(answers_, &answer);
}

void RPuzzle::containerGoes(RContainer& container) {
    std::erase(containers_, &container);
    if (hover() == &container) setHover(nullptr);
}

void RPuzzle::addAnswer(const std::string& name) {
    auto* answer = find<RAnswer>(name);
    if (!answer || answer->isGoing() || holds(*answer)) return;
    answer->setKeeper(this);
    answers_.push_back(answer);
}

void RPuzzle::removeAnswer(const std::string& name) {
    auto* answer = find<RAnswer>(name);
    if (!answer || !holds(*answer)) return;
    answer->setKeeper(nullptr);
    answer->leaveContainer();
}

void RPuzzle::addContainer(const std::string& name) {
    auto* container = find<RContainer>(name);
    if (!container) return;
    container->setLockCorrectAnswers(locksCorrect_);
    container->setRejectIncorrectAnswers(rejectsIncorrect_);
    if (holds(*container)) return;
    container->addKeeper(*this);
    containers_.push_back(container);
}

void RPuzzle::removeContainer(const std::string& name) {
    auto* container = find<RContainer>(name);
    if (!container || !holds(*container)) return;
    container->removeKeeper(*this);
    if (hover() == container) container->setHighlighted(false);
    containerGoes(*container);
}

bool RPuzzle::areAnswersUsed() const { return std::ranges::all_of(answers_, &RAnswer::isUsed); }

bool RPuzzle::areContainersFull() const {
    return std::ranges::all_of(containers_, &RContainer::isFull);
}

bool RPuzzle::isSolved() const { return std::ranges::all_of(containers_, &RContainer::isSolved); }

// ---------------------------------------------------------------------------- drags and drops

// Every event may be the end of the puzzle, of the answer, and of any container; `holds` tells.

RContainer* RPuzzle::hover() const { return static_cast<RContainer*>(hover_.object()); }

void RPuzzle::setHover(RContainer* container) {
    ++hoverChanges_;
    hover_.watch(container);
}

void RPuzzle::endHover() {
    dragged_ = nullptr;
    if (RContainer* container = hover()) container->setHighlighted(false);
    setHover(nullptr);
}

/// The first of those with the highest score; null when none accepts the answer.
RContainer* RPuzzle::bestContainer(RAnswer& answer, Point position) const {
    RContainer* best = nullptr;
    std::int64_t bestScore = 0;
    for (RContainer* container : containers_) {
        const RContainer::Hit hit = container->hitScore(answer, position);
        if (!hit.accepted || hit.score <= bestScore) continue;
        best = container;
        bestScore = hit.score;
    }
    return best;
}

void RPuzzle::answerPickedUp(RAnswer& answer) {
    endHover();
    dragged_ = &answer;
    setHover(answer.container());
    if (RContainer* container = hover()) container->setHighlighted(true);
    answer.leaveContainer();
}

void RPuzzle::answerDragged(RAnswer& answer, Point position) {
    dragged_ = &answer;
    RContainer* before = hover();
    RContainer* best = bestContainer(answer, position);
    if (best == before) return;
    setHover(nullptr);
    const unsigned change = hoverChanges_;
    if (before) before->answerFliesOff(answer);
    if (hoverChanges_ != change || !best || !holds(*best)) return;
    setHover(best);
    best->answerFliesOn(answer);
}

void RPuzzle::answerDropped(RAnswer& answer, Point position) {
    endHover();
    // A handler may have put it into one while it was held.
    if (!answer.leaveContainer() || !holds(answer) || answer.isHeld()) return;
    RContainer* container = bestContainer(answer, position);
    if (!container) {
        answer.goHome();
        if (isSolved()) fireEvent("puzzleSolved");
        return;
    }
    put(answer, *container);
    tellEnd();
}

void RPuzzle::tellEnd() {
    bool ended = false;
    if (areContainersFull()) {
        ended = true;
        fireEvent("containersFull");
    }
    if (areAnswersUsed()) {
        ended = true;
        fireEvent("answersUsed");
    }
    if (isSolved())
        fireEvent("puzzleSolved");
    else if (ended)
        fireEvent("puzzleWrong");
}

/// Unless a handler decides otherwise meanwhile.
void RPuzzle::put(RAnswer& answer, RContainer& container) {
    const bool own = holds(answer) && holds(container);
    answer.setContainer(&container);
    if (answer.container() != &container) return;
    if (!isRetired() && (!own || (holds(answer) && holds(container))))
        container.placeAnswer(answer);
    else
        answer.syncContainer();
}

void RPuzzle::addAnswerToContainer(const std::string& answerName,
                                   const std::string& containerName) {
    auto* answer = find<RAnswer>(answerName);
    auto* container = find<RContainer>(containerName);
    if (!answer || answer->isGoing() || !container || container->contains(*answer)) return;
    if (answer->leaveContainer() && !isRetired() && !container->isRetired())
        put(*answer, *container);
}

void RPuzzle::removeAnswerFromContainer(const std::string& answerName,
                                        const std::string& containerName) {
    auto* answer = find<RAnswer>(answerName);
    auto* container = find<RContainer>(containerName);
    if (!answer || !container || !container->contains(*answer)) return;
    sendHome(*answer);
}

// ---------------------------------------------------------------------------- all at once

void RPuzzle::anchorAnswers() {
    for (RAnswer* answer : answers_) answer->anchor();
}

void RPuzzle::unanchorAnswers() {
    for (RAnswer* answer : answers_) answer->unanchor();
}

void RPuzzle::shiftAnswers(int dx, int dy) {
    for (RAnswer* answer : answers_)
        if (!answer->isUsed()) answer->offset(dx, dy);
}

void RPuzzle::shiftContainers(int dx, int dy) {
    for (RContainer* container : containers_) container->offset(dx, dy);
}

void RPuzzle::reset() {
    forEach(answers_, [](RAnswer& answer, std::size_t) {
        if (answer.isUsed()) sendHome(answer);
    });
}
