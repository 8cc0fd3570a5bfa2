// Actions that move a trinket, a step with every frame of an animation, which may be the trinket
// itself.
//
// Each axis has a velocity that its acceleration changes with every frame. An axis that would pass
// its final coordinate stays there; the action has finished when that is so for all of them. Ended
// or halted, it leaves the trinket at the final place and the animation standing, unless another
// move still goes by that animation.
#pragma once

#include "action.h"
#include "ranimation.h"

#include <cstdint>
#include <memory>
#include <vector>

class MoveAction final : public OMSCopied<MoveAction, Action> {
  public:
    enum class Direction : std::uint8_t { X, Y };

    /// Coordinates in pixels, velocity in pixels a frame.
    struct Axis {
        Direction direction;
        int initial;
        int velocity;
        int acceleration; ///< of the velocity, a frame
        int final;
    };

    MoveAction(RAnimation& animation, OMTrinket& trinket, std::vector<Axis> axes,
               bool interruptible);
    MoveAction(const MoveAction& other);

    template <Direction... directions>
    [[nodiscard]] static std::unique_ptr<Action> createAlong(ActionParameters& parameters) {
        return create(parameters, {directions...});
    }

  protected:
    void begin() override;
    void end(End) override;
    void hold() override;
    void goOn() override;

  private:
    /// Where an axis has come to.
    struct Motion {
        Axis axis;
        std::int64_t current;
        std::int64_t velocity;
        bool arrived;

        explicit Motion(const Axis& along)
            : axis(along), current(along.initial), velocity(along.velocity),
              arrived(along.initial == along.final) {}
        void advance();
    };

    [[nodiscard]] static std::unique_ptr<Action>
    create(ActionParameters& parameters, std::initializer_list<Direction> directions);
    [[nodiscard]] RAnimation* animation() const;
    [[nodiscard]] OMTrinket* trinket() const;
    void frame(RAnimation::FrameNews news);
    void placeTrinket();

    OMSWatch animation_;
    OMSWatch trinket_;
    std::vector<Axis> axes_;
    std::vector<Motion> motions_; ///< while active
    int listener_ = 0;            ///< to the frames, while active
};
