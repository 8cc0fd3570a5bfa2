// The animation of scripts: an animated object with playback control and, when asked for, an event
// for every frame that is shown.
//
//     a=RAnimation id z            at the position embedded in the resource
//     a=RAnimation id x y z        11111 as x or y stands for the embedded one
#pragma once

#include "omao.h"

#include <optional>
#include <string>

class RAnimation : public OMAnimation {
  public:
    static const OMSClass kClass;

    using OMAnimation::OMAnimation;

    [[nodiscard]] std::unique_ptr<OMScriptableObject> duplicate() override;

    /// 1 while "frameNotify" is raised for every frame that is shown.
    [[nodiscard]] int frameNotification() const { return notifies_ ? 1 : 0; }
    /// On with 1. Clears the callback.
    void setFrameNotification(int value) { setFrameNotification(value == 1, nullptr); }
    /// `callback` is called after each event.
    void setFrameNotification(bool on, OMLink callback);
    [[nodiscard]] const std::string& userData() const { return userData_; }
    void setUserData(const std::string& text) { userData_ = text; }

    void hide() { setVisible(false); }
    void show() { setVisible(true); }
    /// Paints the current frame into the background picture, where it is or at `x`, `y`.
    void paintIntoBackground(std::optional<int> x, std::optional<int> y);
    /// As pause.
    void suspend() { pause(); }
    /// As resume. Nobody waits for an animation that has ended and plays no more.
    void resumeForScript();
    /// In every frame, pixels of one colour index become another. Indices that do not exist change
    /// nothing.
    void replacePaletteEntry(int old, int replacement);
    /// See OMSetCursors.
    void setAOCursor(std::optional<int> normal, std::optional<int> grab);

  protected:
    RAnimation(const RAnimation& other) = default;
    void frameShown() override;

  private:
    bool notifies_ = false;
    OMLink frameCallback_;
    std::string userData_;
};
