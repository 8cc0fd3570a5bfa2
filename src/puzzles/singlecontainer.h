// Containers for one answer, which is right or not. See rcontainer.h.
#pragma once

#include "rcontainer.h"

class SingleContainer : public RContainer {
  public:
    [[nodiscard]] Hit hitScore(RAnswer& answer, platform::Point position) final;
    [[nodiscard]] bool isFull() const final { return answers().size() == 1; }
    [[nodiscard]] bool isSolved() const final { return isFull() && isRight(*answers().front()); }
    /// In the middle of where it is to rest, above the container.
    void placeAnswer(RAnswer& answer) final;

  protected:
    using RContainer::RContainer;
    SingleContainer(const SingleContainer& other) = default;

    [[nodiscard]] virtual bool isRight(RAnswer& answer) const = 0;
    /// How well it lies on the container; 0: not at all.
    [[nodiscard]] virtual std::int64_t scoreOf(RAnswer& answer) { return overlapScore(answer); }
    /// Where it is to rest.
    [[nodiscard]] virtual platform::Rect targetFor(RAnswer&) const { return boundingRectangle(); }
};
