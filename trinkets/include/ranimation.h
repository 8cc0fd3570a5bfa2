// The animation of scripts: an animated object with playback control and, when asked for, an event
// for every frame that is shown.
//
//     a=RAnimation id z            at the position embedded in the resource
//     a=RAnimation id x y z        11111 as x or y stands for the embedded one
#pragma once

#include "omao.h"

#include <optional>
#include <string>
#include <vector>

class RAnimation : public OMSCopied<RAnimation, OMAnimation> {
  public:
    static const OMSClass kClass;

    using OMSCopied::OMSCopied;
    /// A copy has no listeners.
    RAnimation(const RAnimation& other);

    /// What listeners to frames are told.
    enum class FrameNews : std::uint8_t { Shown, AnimationGoes };

    ~RAnimation() override { retire(); }

    /// 1 while "frameNotify" is raised for every frame that is shown.
    [[nodiscard]] int frameNotification() const { return notifies_ ? 1 : 0; }
    /// On with 1.
    void setFrameNotification(int value) { notifies_ = value == 1; }
    /// Told of every frame that is shown, after the event, and that the animation goes. The number
    /// returned is for removeFrameListener.
    int addFrameListener(OMLinkTo<void(FrameNews)> listener);
    void removeFrameListener(int number);
    [[nodiscard]] bool hasFrameListeners() const { return !listeners_.empty(); }

    [[nodiscard]] const std::string& userData() const { return userData_; }
    void setUserData(const std::string& text) { userData_ = text; }

    void hide() { setVisible(false); }
    void show() { setVisible(true); }
    /// Paints the current frame into the background picture, where it is or at `x`, `y`.
    void paintIntoBackground(std::optional<int> x, std::optional<int> y);
    /// As resume. Nobody waits for an animation that has ended and plays no more.
    void resumeForScript();
    /// In every frame, pixels of one colour index become another. Indices that do not exist change
    /// nothing.
    void replacePaletteEntry(int old, int replacement);
    /// See OMSetCursors.
    void setAOCursor(std::optional<int> normal, std::optional<int> grab);

  protected:
    void onRetire() override;
    void frameShown() override;

  private:
    struct Listener {
        int number;
        OMLinkTo<void(FrameNews)> link;
    };

    void tellListeners(FrameNews news);

    bool notifies_ = false;
    int lastListener_ = 0;
    std::vector<Listener> listeners_; ///< in the order of their numbers
    std::string userData_;
};
