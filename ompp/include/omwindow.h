// The framework's window: a rectangle of the screen that receives the input and the idle time of
// the application. What it shows is its heir's business.
#pragma once

#include "ominstalled.h"
#include "omlist.h"

#include "platform/events.h"
#include "platform/geometry.h"

class OMWindow {
  public:
    /// `rectangle` in screen pixels. Joins the application's windows; fatal without an application.
    explicit OMWindow(const platform::Rect& rectangle);
    virtual ~OMWindow();
    OMWindow& operator=(OMWindow&&) = delete;

    [[nodiscard]] const platform::Rect& rectangle() const { return rectangle_; }
    [[nodiscard]] int width() const { return rectangle_.width(); }
    [[nodiscard]] int height() const { return rectangle_.height(); }

    // Called by the application. Positions are relative to the window's top left corner.
    virtual void mouseDown(platform::Point) {}
    virtual void mouseUp(platform::Point) {}
    /// The button is up again, but the message that said where and when was dropped.
    virtual void mouseReleaseLost() {}
    virtual void mouseMove(platform::Point) {}
    virtual void doubleClick(platform::Point) {}
    virtual void key(const platform::KeyPress&) {}
    virtual void expose() {} ///< the screen's copy of the window was lost and must be shown anew
    virtual void idle() {}   ///< once in every pass of the main loop, before the tasks

  private:
    platform::Rect rectangle_;
};

/// The windows of an application, those made last on top.
struct OMWindowList : OMInstalled<OMWindowList> {
    OMList<OMWindow> all;
    OMWindow* capture = nullptr; ///< has the mouse until the button is up
};
