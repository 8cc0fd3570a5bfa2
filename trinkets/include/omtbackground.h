// What lies under all trinkets of a window: it fills the parts of the back buffer that are composed
// anew, and hears the clicks that no trinket takes.
#pragma once

#include "omlink.h"
#include "omregion.h"

#include "ompalette.h"

#include <cstdint>

class OMMemCanvas;

class OMTBackground {
  public:
    using MouseLink = OMLinkTo<void(platform::Point)>; ///< window pixels

    // Bits of the event mask: what the background does not hear.
    static constexpr std::uint32_t kIgnoreMouseDown = 0x01;
    static constexpr std::uint32_t kIgnoreMouseUp = 0x02;
    static constexpr std::uint32_t kIgnoreMouseMove = 0x04;
    static constexpr std::uint32_t kIgnoreDoubleClick = 0x08;

    OMTBackground() = default;
    virtual ~OMTBackground() = default;
    OMTBackground& operator=(OMTBackground&&) = delete;

    /// Paints at least the part of `dirty` that it covers into the back buffer. Returns what it
    /// painted: the trinkets there are painted again.
    virtual OMRegion paint(OMMemCanvas& backBuffer, const OMRegion& dirty) = 0;

    virtual void setPalette(const OMPalette&) {}
    /// The canvas that keeps the picture, for those who paint into it; null when there is none.
    [[nodiscard]] virtual OMMemCanvas* picture() { return nullptr; }

    [[nodiscard]] std::uint32_t eventMask() const { return eventMask_; }
    void setEventMask(std::uint32_t mask) { eventMask_ = mask; }

    MouseLink mouseDown;
    MouseLink mouseUp;
    MouseLink mouseMove;
    MouseLink doubleClick;

  private:
    std::uint32_t eventMask_ = 0;
};
