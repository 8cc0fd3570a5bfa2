#include "pentominopiece.h"

#include <array>
#include <utility>

using platform::Point;

PentominoPiece::PentominoPiece(PentominoPlayer& player, int number, OMTrinketWindow& window,
                               std::shared_ptr<AOImage> image, int id)
    : OMAnimation(window, std::move(image), id, kEmbedded, kEmbedded), player_(player),
      number_(number) {
    pause();
    setView(0);
}

void PentominoPiece::setView(int view) {
    /// Positions in the sequence, by view.
    constexpr std::array<int, kPentominoViews> kFrames{0, 4, 3, 7, 1, 5, 2, 6};
    view_ = view;
    setPosition(kFrames[static_cast<std::size_t>(view)]);
}

void PentominoPiece::onBeginDrag(Point point) {
    OMAnimation::onBeginDrag(point);
    if (isRetired()) return;
    held_ = true;
    player_.piecePickedUp(*this);
}

void PentominoPiece::dragBy(int& dx, int& dy) {
    OMAnimation::dragBy(dx, dy);
    if (held_ && !isRetired()) player_.pieceDragged(*this);
}

void PentominoPiece::onDrop(Point point) {
    OMAnimation::onDrop(point);
    letGo();
}

void PentominoPiece::onReleaseLost() {
    OMAnimation::onReleaseLost();
    letGo();
}

void PentominoPiece::letGo() {
    if (std::exchange(held_, false) && !isRetired()) player_.pieceDropped(*this);
}
