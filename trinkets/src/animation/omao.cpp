#include "omao.h"

#include "aosounds.h"
#include "formats/animation/animation.h"
#include "omdebug.h"
#include "omid.h"
#include "omistream.h"
#include "omlog.h"
#include "omresourcelog.h"
#include "omsbirths.h"
#include "omsclass.h"
#include "omtrinketwindow.h"

#include <algorithm>

using platform::Point;
using platform::Rect;

OMLinkTo<std::unique_ptr<OMIStream>(int id)> OMAnimation::locator_;
AOImageStore OMAnimation::store_;

namespace {

constexpr OMSEntry kOMAnimationVocabulary[] = {
    oms::data<&OMAnimation::frameNumber, &OMAnimation::setFrameNumber>(
        "frame", "number of the frame shown, counted in its sequence; writing shows another"),
    oms::data<&OMAnimation::sequenceNumber, &OMAnimation::setSequenceNumber>(
        "sequence", "number of the sequence; writing restarts"),
    oms::data<&OMAnimation::drawDirection, &OMAnimation::setDrawDirection>("drawDirection",
                                                                           "0 to 7"),
    oms::data<&OMAnimation::param, &OMAnimation::setParam>(
        "param", "[index] field of the current entry: 0 or 1 code, 2 dx, 3 dy, 4 argument"),
    oms::data<&OMAnimation::isSoundOn, &OMAnimation::setSoundOn>("soundOn", "sound entries play"),
    oms::lasting<&OMAnimation::forever>("forever"),
    oms::method<&OMAnimation::stamp>("stamp"),
    oms::method<&OMAnimation::unstamp>("unstamp"),
    oms::event("paused", "finished or held, after the sounds it waits for"),
    oms::event("special", "a notification marker was reached"),
};

/// The field that scripts number so; null for any other number.
std::int16_t AOEntry::*fieldOf(int number) {
    switch (number) {
    case 0:
    case 1: return &AOEntry::code;
    case 2: return &AOEntry::dx;
    case 3: return &AOEntry::dy;
    case 4: return &AOEntry::argument;
    default: return nullptr;
    }
}

int chosen(int coordinate, int embedded) {
    return coordinate != OMAnimation::kEmbedded ? coordinate : embedded;
}

constexpr int kNoResource = 0; ///< id

Rect originOf(const AOImage& image, int x, int y) {
    const int left = OMTrinket::nearestPlace(chosen(x, image.embedded().x));
    const int top = OMTrinket::nearestPlace(chosen(y, image.embedded().y));
    return {left, top, left, top};
}

} // namespace

const OMSClass OMAnimation::kClass{"OMAnimation", &OMTrinket::kClass, kOMAnimationVocabulary};

OMAnimation::OMAnimation(OMTrinketWindow& window, std::shared_ptr<AOImage> image, int id, int x,
                         int y)
    : OMSCopied(window, UpdateStyle::Regions, originOf(*image, x, y)) {
    all_.append(this);
    useImage(std::move(image), id);
    restart();
    if (windowDepth() != OMCanvas::kIndexedDepth) fetchPalette();
    prepareDeepFrames();
    OMTrinket::setAttribute(Attribute::Z, image_->embedded().depth);
}

OMAnimation::OMAnimation(const OMAnimation& other)
    : OMSCopied(other), image_(other.image_), id_(other.id_),
      framesPerSecond_(other.framesPerSecond_), sequence_(other.sequence_),
      position_(other.position_), shown_(other.shown_), current_(other.shown_),
      shownFrame_(other.shownFrame_), shownOffset_(other.shownOffset_),
      state_(other.awaitedSound_ != kNoSound ? State::Resumed : other.state_), dueMs_(other.dueMs_),
      repeatCount_(other.repeatCount_), soundOn_(other.soundOn_), soundSync_(other.soundSync_),
      catchUp_(other.catchUp_), direction_(other.direction_), stopPosition_(other.stopPosition_),
      playLinks_(other.playLinks_), palette_(other.palette_), deepFrames_(other.deepFrames_) {
    all_.append(this);
    for (const Sequence& sequence : other.sequences_)
        sequences_.push_back({sequence.inImage, sequence.own
                                                    ? std::make_unique<AOSequence>(*sequence.own)
                                                    : nullptr});
}

OMAnimation::~OMAnimation() { retire(); }

void OMAnimation::onRetire() {
    if (AOSounds* sounds = AOSounds::current(); sounds && !soundRecords_.empty()) {
        sounds->stop(*this);
        sounds->forget(*this);
    }
    all_.remove(this);
    stop();
    playLinks_ = {};
    OMTrinket::onRetire();
}

void OMAnimation::useImage(std::shared_ptr<AOImage> image, int id) {
    image_ = std::move(image);
    id_ = OMNarrowId(id);
    framesPerSecond_ = image_->framesPerSecond();
    sequence_ = 0;
    sequences_.clear();
    for (int i = 0; i < image_->sequenceCount(); ++i) sequences_.push_back({i, nullptr});
}

/// What is shown first is ready when it is painted.
void OMAnimation::prepareDeepFrames() {
    if (windowDepth() == OMCanvas::kIndexedDepth) return;
    if (AODeepFrames* frames = deepFrames(window()->backBuffer())) (void)frames->frame(shownFrame_);
}

void OMAnimation::changeImage(std::shared_ptr<AOImage> image, int id) {
    silence();
    pendingFinish_ = false;
    pictureChanges();
    const Point from = origin();
    setBounds({from.x, from.y, from.x, from.y});
    shownFrame_ = -1;
    shownOffset_ = {};
    deepFrames_.reset();
    const int rate =
        framesPerSecond_ == image_->framesPerSecond() ? image->framesPerSecond() : framesPerSecond_;
    useImage(std::move(image), id);
    framesPerSecond_ = rate; // which somebody has set
    restart();
    prepareDeepFrames();
    fireCompletion();
}

// Loading

void OMAnimation::setSourceLocator(OMLinkTo<std::unique_ptr<OMIStream>(int id)> locator) {
    locator_ = std::move(locator);
}

std::unique_ptr<OMAnimation> OMAnimation::create(int id, int x, int y, OMTrinketWindow& window) {
    std::shared_ptr<AOImage> image = locate(id);
    if (!image) return nullptr;
    auto animation = make<OMAnimation>(window, std::move(image), id, {x, y});
    OMSBirths births;
    births.add(*animation, kClass);
    return animation;
}

std::unique_ptr<OMAnimation> OMAnimation::createFromImage(std::span<const std::byte> resource,
                                                          int x, int y, OMTrinketWindow& window) {
    std::string problem;
    std::shared_ptr<AOImage> image = AOImage::read(resource, problem);
    if (!image) {
        OMLog::writef(OMLog::Kind::Error, "A picture in memory cannot be an animation: %s",
                      problem.c_str());
        return nullptr;
    }
    return std::make_unique<OMAnimation>(window, std::move(image), kNoResource, x, y);
}

std::shared_ptr<AOImage> OMAnimation::locate(int id) {
    if (!OMDebug::check(static_cast<bool>(locator_), "url == NULL",
                        "Source URL not installed in OMAnimation"))
        return nullptr;
    if (auto known = store_.find(id)) return known;
    const std::unique_ptr<OMIStream> stream = locator_(id);
    if (!stream) return nullptr;
    std::string problem;
    std::shared_ptr<AOImage> image = AOImage::read(stream->readAll(), problem);
    if (!image) {
        OMLogResource(OMLog::Kind::Error, "Animation", id, *stream, "cannot be used: " + problem);
        return nullptr;
    }
    if (image->brokenFrames() > 0)
        OMLogResource(OMLog::Kind::Warning, "Animation", id, *stream,
                      OMFormat("has %d frames that lie outside of it and show nothing",
                               image->brokenFrames()));
    store_.keep(id, image);
    return image;
}

std::shared_ptr<AOImage> OMAnimation::locateOrBlank(int id) {
    std::shared_ptr<AOImage> image = id < 0 ? nullptr : locate(id);
    return image ? image : AOImage::blank();
}

OMAnimation::ScriptArguments OMAnimation::readArguments(bool withSize) {
    // Numbers of arguments.
    constexpr std::size_t kLongForm = 4;
    constexpr std::size_t kFormWithSize = 5;
    OMSArguments& list = OMSArguments::global();
    ScriptArguments arguments{OMTrinketWindow::mainWindow(), list.nextInteger()};
    if (list.count() >= kLongForm) {
        arguments.x = list.nextInteger();
        arguments.y = list.nextInteger();
    }
    if (withSize && list.count() >= kFormWithSize) {
        const int width = list.nextInteger();
        arguments.size = {width, list.nextInteger()};
    }
    if (list.hasNext()) arguments.z = list.nextInteger();
    return arguments;
}

// Sequences

const AOSequence& OMAnimation::entriesOf(const Sequence& sequence) const {
    return sequence.own ? *sequence.own : image_->sequence(sequence.inImage);
}

const AOSequence& OMAnimation::entries() const {
    static const AOSequence kNone{{0, 0, AOEntry::kEnd, 0}};
    return sequences_.empty() ? kNone : entriesOf(sequences_[static_cast<std::size_t>(sequence_)]);
}

AOEntry OMAnimation::at(int position) const {
    if (position < 0 || position > sequenceLength()) return {0, 0, AOEntry::kEnd, 0};
    return entries()[static_cast<std::size_t>(position)];
}

int OMAnimation::sequenceLength() const { return static_cast<int>(entries().size()) - 1; }

Point OMAnimation::origin() const {
    const Rect r = frameRectangle();
    return {r.left - shownOffset_.x, r.top - shownOffset_.y};
}

int OMAnimation::frameCount() const {
    return static_cast<int>(std::count_if(entries().begin(), entries().end(),
                                          [](const AOEntry& entry) { return entry.isFrame(); }));
}

void OMAnimation::setSequence(int index, bool startAgain) {
    if (!OMDebug::check(index >= 0 && index < sequenceCount(),
                        "(seq < 0) || (seq >= numberOfSequences)", "Invalid sequence"))
        return;
    sequence_ = index;
    if (startAgain)
        restart();
    else
        setPosition(position_);
}

void OMAnimation::setPosition(int position) { goTo(std::clamp(position, 0, sequenceLength())); }

void OMAnimation::restart() {
    rewind();
    awaitedSound_ = kNoSound;
    state_ = at(0).code == AOEntry::kHold ? State::Held : State::Playing;
}

/// To the start, behind a hold there: it was obeyed by not playing yet.
void OMAnimation::rewind() {
    goTo(0);
    if (at(0).code == AOEntry::kHold) position_ = 1;
}

void OMAnimation::goTo(int position) {
    ++jumps_;
    position_ = position;
    dueMs_.reset();
    for (int entry = position; entry < sequenceLength(); ++entry)
        if (this->at(entry).isFrame()) return show(entry);
    current_ = shown_ = position;
}

void OMAnimation::show(int position) {
    const AOEntry entry = at(position);
    const Rect before = frameRectangle();
    const Point from = origin();
    const Rect after =
        AOBounds(image_->frameSize(entry.code), {from.x + entry.dx, from.y + entry.dy}, direction_);
    if (entry.code != shownFrame_ || after != before) pictureChanges();
    setBounds(after);
    shownFrame_ = entry.code;
    shownOffset_ = {entry.dx, entry.dy};
    current_ = shown_ = position;
}

int OMAnimation::frameNumber() const {
    int number = 0;
    for (int i = 0; i <= shown_; ++i) number += at(i).isFrame() ? 1 : 0;
    return number;
}

void OMAnimation::setFrameNumber(int number) {
    if (number < 1) return;
    for (int i = 0; i < sequenceLength(); ++i)
        if (at(i).isFrame() && --number == 0) return goTo(i);
}

void OMAnimation::setSequenceNumber(int number) { setSequence(std::max(number, 0) - 1, true); }

std::string OMAnimation::param() const {
    const auto field = fieldOf(OMSArguments::global().nextInteger());
    return field ? oms::toText(int{at(current_).*field}) : std::string();
}

void OMAnimation::setParam(int value) {
    const auto field = fieldOf(OMSArguments::global().nextInteger());
    if (!field || current_ >= sequenceLength()) return;
    editableEntries()[static_cast<std::size_t>(current_)].*field = static_cast<std::int16_t>(value);
    entryReplaced(current_);
}

// Drawing

void OMAnimation::setDrawDirection(int direction) {
    if (direction == direction_) return;
    pictureChanges();
    direction_ = direction;
    const Rect r = frameRectangle();
    setBounds(AOBounds(image_->frameSize(shownFrame_), {r.left, r.top}, direction_));
}

void OMAnimation::paint(OMMemCanvas& canvas, const OMRegion& clip) {
    const Rect r = frameRectangle();
    draw(canvas, clip, {r.left, r.top});
}

void OMAnimation::paintAt(OMMemCanvas& canvas, Point at) {
    draw(canvas, OMRegion(canvas.bounds()), at);
}

void OMAnimation::draw(OMMemCanvas& canvas, const OMRegion& clip, Point at) {
    if (canvas.depth() == 8)
        frame().draw(canvas, clip, at, direction_);
    else if (AODeepFrames* frames = deepFrames(canvas))
        frames->frame(shownFrame_).draw(canvas, clip, at, direction_);
}

void OMAnimation::stamp() {
    if (!window()) return;
    window()->stamp(*this, boundingRectangle(),
                    [this](OMMemCanvas& canvas, Point at) { paintAt(canvas, at); });
}

void OMAnimation::unstamp() {
    if (window()) window()->unstamp(*this);
}

bool OMAnimation::containsPoint(Point point) const {
    const Rect r = frameRectangle();
    const AOFrame& shown = deepFrames_ ? deepFrames_->frame(shownFrame_) : frame();
    return shown.hit(point, {r.left, r.top}, direction_);
}
