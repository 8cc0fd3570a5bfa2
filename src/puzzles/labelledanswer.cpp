#include "labelledanswer.h"

#include "ommemcanvas.h"
#include "omsclass.h"

#include <algorithm>
#include <numeric>
#include <span>
#include <utility>

using platform::Point;
using platform::Rect;

namespace {

constexpr OMSEntry kRGraphicTextAnswerRows[] = {
    oms::data<&RGraphicTextAnswer::text<0>, &RGraphicTextAnswer::setText<0>>(
        "text", "what is written on it"),
    oms::data<&RGraphicTextAnswer::textColorIndex, &RGraphicTextAnswer::setTextColorIndex>(
        "textColorIndex", "palette index, 0 to 255"),
    oms::data<&RGraphicTextAnswer::textOffsetX<0>, &RGraphicTextAnswer::setTextOffsetX<0>>(
        "textOffsetX", "of the text's box from the picture's corner"),
    oms::data<&RGraphicTextAnswer::textOffsetY<0>, &RGraphicTextAnswer::setTextOffsetY<0>>(
        "textOffsetY", "as textOffsetX"),
    oms::method<&RGraphicTextAnswer::chooseFont>("setFont", "font | face [size [style]]"),
};

constexpr auto kRGraphicTextAnswerVocabulary =
    oms::joined(kRGraphicTextAnswerRows, kAnswerTextRows, kAnswerPictureRows, kPlayRows);

constexpr OMSEntry kRDoubleGraphicTextAnswerRows[] = {
    oms::data<&RDoubleGraphicTextAnswer::pictureID<0>, &RDoubleGraphicTextAnswer::setPictureID<0>>(
        "graphic1ID", "a picture; -1: none")
        .of("animation"),
    oms::data<&RDoubleGraphicTextAnswer::pictureOffsetZ<0>,
              &RDoubleGraphicTextAnswer::setPictureOffsetZ<0>>(
        "graphic1OffsetZ", "below 0: behind the base picture; above 0: before the texts"),
    oms::data<&RDoubleGraphicTextAnswer::pictureID<1>, &RDoubleGraphicTextAnswer::setPictureID<1>>(
        "graphic2ID", "a picture; -1: none")
        .of("animation"),
    oms::data<&RDoubleGraphicTextAnswer::pictureOffsetZ<1>,
              &RDoubleGraphicTextAnswer::setPictureOffsetZ<1>>("graphic2OffsetZ",
                                                               "as graphic1OffsetZ"),
    oms::data<&RDoubleGraphicTextAnswer::text<0>, &RDoubleGraphicTextAnswer::setText<0>>(
        "text1", "what is written on it"),
    oms::data<&RDoubleGraphicTextAnswer::text<1>, &RDoubleGraphicTextAnswer::setText<1>>(
        "text2", "what is written on it too"),
    oms::data<&RDoubleGraphicTextAnswer::textColorIndex,
              &RDoubleGraphicTextAnswer::setTextColorIndex>(
        "textColorIndex", "palette index of both texts, 0 to 255"),
    oms::data<&RDoubleGraphicTextAnswer::textOffsetX<0>,
              &RDoubleGraphicTextAnswer::setTextOffsetX<0>>(
        "text1OffsetX", "of the text's box from the base picture's corner"),
    oms::data<&RDoubleGraphicTextAnswer::textOffsetY<0>,
              &RDoubleGraphicTextAnswer::setTextOffsetY<0>>("text1OffsetY", "as text1OffsetX"),
    oms::data<&RDoubleGraphicTextAnswer::textOffsetX<1>,
              &RDoubleGraphicTextAnswer::setTextOffsetX<1>>("text2OffsetX", "as text1OffsetX"),
    oms::data<&RDoubleGraphicTextAnswer::textOffsetY<1>,
              &RDoubleGraphicTextAnswer::setTextOffsetY<1>>("text2OffsetY", "as text1OffsetX"),
    oms::method<&RDoubleGraphicTextAnswer::playAnimations>("playAnimations"),
    oms::method<&RDoubleGraphicTextAnswer::chooseFont>("setFont", "font | face [size [style]]"),
    oms::method<&RDoubleGraphicTextAnswer::stopAnimations>("stopAnimations"),
};

constexpr auto kRDoubleGraphicTextAnswerVocabulary =
    oms::joined(kRDoubleGraphicTextAnswerRows, kAnswerTextRows);

} // namespace

/// Steps in the window as all animations do, but is never shown there: its answer paints it. Its
/// place counts from the answer's corner.
class LabelledAnswer::Picture final : public OMAnimation {
  public:
    Picture(LabelledAnswer& answer, std::shared_ptr<AOImage> image, int id)
        : OMAnimation(*answer.window(), std::move(image), id, 0, 0), answer_(answer) {
        OMAnimation::setAttribute(Attribute::Visible, 0);
    }
    Picture(LabelledAnswer& answer, const Picture& other)
        : OMAnimation(other), answer_(answer), seen_(other.seen_) {}

    [[nodiscard]] bool isSeen() const { return seen_; }
    void playAgain() {
        setVisible(true);
        play();
    }
    void paintFrom(OMMemCanvas& canvas, const OMRegion& clip, Point corner) {
        const Rect place = platform::shifted(frameRectangle(), corner.x, corner.y);
        if (seen_) draw(canvas, clip, {place.left, place.top});
    }

    /// The end of a sequence hides an animation.
    void setAttribute(Attribute which, int value, int second) override {
        if (which != Attribute::Visible) return OMAnimation::setAttribute(which, value, second);
        pictureChanges();
        seen_ = value != 0;
    }

  protected:
    void pictureChanges() override { answer_.markChanged(); }

  private:
    LabelledAnswer& answer_;
    bool seen_ = true;
};

LabelledAnswer::LabelledAnswer(OMTrinketWindow& window, std::shared_ptr<AOImage> image, int id,
                               int x, int y, const char* missing, std::size_t texts,
                               std::size_t pictures)
    : RAnswer(window, std::move(image), id, x, y), labels_(texts, Label{TextBlock(missing)}),
      pictures_(pictures), order_(pictures) {
    std::iota(order_.begin(), order_.end(), std::size_t{0});
}

LabelledAnswer::LabelledAnswer(const LabelledAnswer& other)
    : RAnswer(other), labels_(other.labels_), order_(other.order_) {
    for (const Further& further : other.pictures_)
        pictures_.push_back(
            {further.picture ? std::make_unique<Picture>(*this, *further.picture) : nullptr,
             further.id, further.offsetZ});
}

LabelledAnswer::~LabelledAnswer() { retire(); }

void LabelledAnswer::onRetire() {
    RAnswer::onRetire(); // while its pictures tell what it covers
    for (const Further& further : pictures_)
        if (further.picture) further.picture->retire();
}

// ---------------------------------------------------------------------------- texts

void LabelledAnswer::changeText(Label& label, const std::string& text) {
    if (text == label.block.text()) return;
    markChanged();
    label.block.setText(text);
}

void LabelledAnswer::changeOffset(int& offset, int pixels) {
    markChanged();
    offset = nearestPlace(pixels);
}

void LabelledAnswer::setTextColorIndex(int index) {
    markChanged();
    for (Label& label : labels_)
        if (!label.block.setColorIndex(index)) return;
}

void LabelledAnswer::chooseFont(const std::string& font, std::optional<int> size,
                                std::optional<int> style) {
    TextBlock& first = labels_.front().block;
    markChanged();
    if (!first.chooseFont(font, size, style)) return;
    for (Label& label : std::span(labels_).subspan(1)) label.block.setFont(first.fontUse());
}

// ---------------------------------------------------------------------------- pictures

void LabelledAnswer::setPicture(std::size_t number, std::shared_ptr<AOImage> image, int id) {
    markChanged();
    Further& further = pictures_[number];
    further.id = id;
    further.picture.reset();
    if (!image || !window()) return;
    further.picture = std::make_unique<Picture>(*this, std::move(image), id);
    // All have the colours of one palette, even if another one has come since.
    if (palette()) further.picture->setPalette(palette());
}

void LabelledAnswer::changeOffsetZ(Further& further, int offset) {
    markChanged();
    further.offsetZ = offset;
    std::ranges::stable_sort(order_, {}, [this](std::size_t number) {
        return std::pair(pictures_[number].offsetZ, number);
    });
}

void LabelledAnswer::playAnimations() {
    for (const Further& further : pictures_)
        if (further.picture) further.picture->playAgain();
    play();
}

/// Who waits for the base picture is told at last: the answer may be gone then.
void LabelledAnswer::stopAnimations() {
    for (const Further& further : pictures_)
        if (further.picture) further.picture->stop();
    endPlayback();
}

// ---------------------------------------------------------------------------- what is seen

Rect LabelledAnswer::boxOf(const Label& label, Point corner) {
    if (label.block.text().empty()) return {};
    const Rect& extent = label.block.extent();
    return platform::shifted({0, 0, extent.width(), extent.height()}, corner.x + label.offset.x,
                             corner.y + label.offset.y);
}

Rect LabelledAnswer::boundingRectangle() const {
    const Point corner = this->corner();
    Rect all;
    const auto add = [&all](const Rect& part) { all = platform::hull(all, part); };
    add(frameRectangle());
    for (const Further& further : pictures_)
        if (further.picture && further.picture->isSeen())
            add(platform::shifted(further.picture->frameRectangle(), corner.x, corner.y));
    for (const Label& label : labels_) add(boxOf(label, corner));
    return all.empty() ? frameRectangle() : all;
}

bool LabelledAnswer::containsPoint(Point point) const {
    const Point corner = this->corner();
    const Point inside{point.x - corner.x, point.y - corner.y};
    return RAnswer::containsPoint(point) ||
           std::ranges::any_of(pictures_,
                               [&](const Further& further) {
                                   return further.picture && further.picture->isSeen() &&
                                          further.picture->containsPoint(inside);
                               }) ||
           std::ranges::any_of(labels_, [&](const Label& label) {
               return OMContains(boxOf(label, corner), point);
           });
}

void LabelledAnswer::paint(OMMemCanvas& canvas, const OMRegion& clip) {
    paintFrom(canvas, clip, corner());
}

void LabelledAnswer::paintAt(OMMemCanvas& canvas, Point at) {
    const Rect all = boundingRectangle();
    const Point from = corner();
    paintFrom(canvas, OMRegion(canvas.bounds()),
              {at.x + from.x - all.left, at.y + from.y - all.top});
}

void LabelledAnswer::paintFrom(OMMemCanvas& canvas, const OMRegion& clip, Point corner) {
    const auto paintPictures = [&](auto isDue) {
        for (const std::size_t number : order_)
            if (const Further& each = pictures_[number]; each.picture && isDue(each.offsetZ))
                each.picture->paintFrom(canvas, clip, corner);
    };
    paintPictures([](int offset) { return offset < 0; });
    draw(canvas, clip, corner);
    paintPictures([](int offset) { return offset == 0; });
    for (const Label& label : labels_) {
        const Rect box = boxOf(label, corner);
        label.block.paint(canvas, clip, box, box.left - label.block.extent().left);
    }
    paintPictures([](int offset) { return offset > 0; });
}

// A picture with a text

const OMSClass RGraphicTextAnswer::kClass{"RGraphicTextAnswer", &RAnswer::kClass,
                                          kRGraphicTextAnswerVocabulary,
                                          &createAnswer<RGraphicTextAnswer>, kArguments};

RGraphicTextAnswer::RGraphicTextAnswer(OMTrinketWindow& window, std::shared_ptr<AOImage> image,
                                       int id, int x, int y)
    : OMSCopied(window, std::move(image), id, x, y, "URL has to be installed in RGraphicTextAnswer",
                kTexts, kPictures) {}

// Three pictures with two texts

const OMSClass RDoubleGraphicTextAnswer::kClass{
    "RDoubleGraphicTextAnswer", &RAnswer::kClass, kRDoubleGraphicTextAnswerVocabulary,
    &createAnswer<RDoubleGraphicTextAnswer>, kArguments};

RDoubleGraphicTextAnswer::RDoubleGraphicTextAnswer(OMTrinketWindow& window,
                                                   std::shared_ptr<AOImage> image, int id, int x,
                                                   int y)
    : OMSCopied(window, std::move(image), id, x, y,
                "URL has to be installed in RDoubleGraphicTextAnswer", kTexts, kPictures) {}

/// Without a locator it goes without its pictures. The message is not that of other animations.
std::shared_ptr<AOImage> RDoubleGraphicTextAnswer::pictureOf(int id) {
    return id >= 0 && AOImage::canLocate() ? AOImage::locate(id) : nullptr;
}

std::shared_ptr<AOImage> RDoubleGraphicTextAnswer::imageOf(int id) {
    return id >= 0 && AOImage::canLocate() ? AOImage::locateOrBlank(id) : AOImage::blank();
}
