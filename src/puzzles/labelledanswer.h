// What the answers with texts share: a base picture, texts that lie at offsets from its corner, and
// further pictures. All of them are one trinket: one place, one depth, one rectangle around them.
//
// From the back to the front: pictures with offsets below 0, the base picture, those with 0, the
// texts, those above 0; of equal ones, and of the texts, the first comes first.
#pragma once

#include "ranswer.h"
#include "textblock.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class LabelledAnswer : public RAnswer {
  public:
    static constexpr int kNoPicture = -1; ///< instead of an id

    ~LabelledAnswer() override;

    [[nodiscard]] platform::Rect boundingRectangle() const override;
    /// An opaque pixel of a picture, or inside of a text's box.
    [[nodiscard]] bool containsPoint(platform::Point point) const override;
    void paint(OMMemCanvas& canvas, const OMRegion& clip) override;
    void paintAt(OMMemCanvas& canvas, platform::Point at) override;

    // For scripts; texts and further pictures are numbered from 0.

    template <std::size_t kNumber>
    [[nodiscard]] const std::string& text() const {
        return labels_[kNumber].block.text();
    }
    template <std::size_t kNumber>
    void setText(const std::string& text) {
        changeText(labels_[kNumber], text);
    }
    /// Of the text's box from the corner, in pixels.
    template <std::size_t kNumber>
    [[nodiscard]] int textOffsetX() const {
        return labels_[kNumber].offset.x;
    }
    template <std::size_t kNumber>
    void setTextOffsetX(int x) {
        changeOffset(labels_[kNumber].offset.x, x);
    }
    template <std::size_t kNumber>
    [[nodiscard]] int textOffsetY() const {
        return labels_[kNumber].offset.y;
    }
    template <std::size_t kNumber>
    void setTextOffsetY(int y) {
        changeOffset(labels_[kNumber].offset.y, y);
    }
    template <std::size_t kNumber>
    [[nodiscard]] int pictureID() const {
        return pictures_[kNumber].id;
    }
    template <std::size_t kNumber>
    [[nodiscard]] int pictureOffsetZ() const {
        return pictures_[kNumber].offsetZ;
    }
    template <std::size_t kNumber>
    void setPictureOffsetZ(int offset) {
        changeOffsetZ(pictures_[kNumber], offset);
    }
    // Of all texts.
    [[nodiscard]] int textColorIndex() const { return labels_.front().block.colorIndex(); }
    /// One that does not exist fails a check and changes nothing.
    void setTextColorIndex(int index);
    /// See TextBlock.
    void chooseFont(const std::string& font, std::optional<int> size, std::optional<int> style);
    /// All pictures; one whose sequence had ended is seen again.
    void playAnimations();
    void stopAnimations();

  protected:
    void onRetire() override;
    /// `missing` is the message of the check for a font source. At least one text.
    LabelledAnswer(OMTrinketWindow& window, std::shared_ptr<AOImage> image, int id, int x, int y,
                   const char* missing, std::size_t texts, std::size_t pictures);
    LabelledAnswer(const LabelledAnswer& other);

    /// Plays at once, as new animations do. Null: no picture; the id is kept.
    void setPicture(std::size_t number, std::shared_ptr<AOImage> image, int id);

  private:
    class Picture;
    struct Label {
        TextBlock block;
        platform::Point offset{}; ///< of its box from the corner
    };
    struct Further {
        std::unique_ptr<Picture> picture; ///< or null
        int id = kNoPicture;
        int offsetZ = 0;
    };

    void changeText(Label& label, const std::string& text);
    void changeOffset(int& offset, int pixels);
    void changeOffsetZ(Further& further, int offset);

    /// Empty without a text.
    [[nodiscard]] static platform::Rect boxOf(const Label& label, platform::Point corner);
    void paintFrom(OMMemCanvas& canvas, const OMRegion& clip, platform::Point corner);

    std::vector<Label> labels_;
    std::vector<Further> pictures_;
    std::vector<std::size_t> order_; ///< numbers of the pictures, from the back to the front
};

/// An answer that is a picture with a text.
///
///     a=RGraphicTextAnswer id z
///     a=RGraphicTextAnswer id x y z      id -1: a text without a picture
class RGraphicTextAnswer final : public OMSCopied<RGraphicTextAnswer, LabelledAnswer> {
  public:
    static const OMSClass kClass;

    RGraphicTextAnswer(OMTrinketWindow& window, std::shared_ptr<AOImage> image, int id, int x,
                       int y);

  private:
    static constexpr std::size_t kTexts = 1;
    static constexpr std::size_t kPictures = 0; ///< besides the base picture
};

/// An answer of a base picture with two further pictures and two texts, such as a fraction or a
/// pair of things.
///
///     a=RDoubleGraphicTextAnswer id z
///     a=RDoubleGraphicTextAnswer id x y z      id -1: no base picture
class RDoubleGraphicTextAnswer final : public OMSCopied<RDoubleGraphicTextAnswer, LabelledAnswer> {
  public:
    static const OMSClass kClass;

    RDoubleGraphicTextAnswer(OMTrinketWindow& window, std::shared_ptr<AOImage> image, int id, int x,
                             int y);

    // For scripts.

    /// Of the further pictures, numbered from 0.
    template <std::size_t kNumber>
    void setPictureID(int id) {
        setPicture(kNumber, pictureOf(id), id);
    }

  private:
    static constexpr std::size_t kTexts = 2;
    static constexpr std::size_t kPictures = 2; ///< besides the base picture

    friend class RAnswer; // asks for the base picture

    [[nodiscard]] static std::shared_ptr<AOImage> imageOf(int id);
    /// Null: none.
    [[nodiscard]] static std::shared_ptr<AOImage> pictureOf(int id);
};
