// Cursors that an object manages. While one is current, its window shows it in place of the cursors
// of trinkets, which come back when it is uninstalled. A window has one at a time.
#pragma once

#include "omtrinket.h"

#include <cstdint>
#include <memory>
#include <vector>

class OMTask;

class OMTCursor {
  public:
    /// By number, as those of trinkets.
    explicit OMTCursor(int id = OMTrinket::defaultCursor) : id_(id) {}
    /// Uninstalls it.
    virtual ~OMTCursor();
    OMTCursor& operator=(OMTCursor&&) = delete;

    /// The cursor shown now or at the next installation.
    [[nodiscard]] int id() const { return id_; }
    [[nodiscard]] bool imCurrent() const { return window_ != nullptr; }

    /// Makes it the window's current one; the one before is uninstalled.
    void install(OMTrinketWindow& window);
    /// A failed check unless it is current.
    void uninstall();
    /// Shows another cursor. A failed check, and no effect, unless it is current.
    void set(int id);

  protected:
    virtual void installed() {}
    virtual void uninstalled() {}
    /// The pointer moved while it is current; window pixels.
    virtual void moved(platform::Point) {}

  private:
    friend class OMTrinketWindow;

    [[nodiscard]] bool hearsMoves() const;
    void windowGone();

    int id_;
    OMTrinketWindow* window_ = nullptr; ///< in which it is current
};

/// A row of cursors that are shown one after the other, without end. Installed again, it goes on
/// where it was.
class OMAnimCursor final : public OMTCursor {
  public:
    /// A picture lasts at least a millisecond. An empty row is the game's default cursor.
    OMAnimCursor(std::vector<int> ids, std::uint32_t msPerPicture);
    ~OMAnimCursor() override;

  protected:
    void installed() override;
    void uninstalled() override;

  private:
    void step();

    std::vector<int> ids_; ///< never empty
    std::uint32_t msPerPicture_;
    std::size_t shown_ = 0;     ///< in `ids_`
    std::uint32_t sinceMs_ = 0; ///< when its time began
    std::unique_ptr<OMTask> task_;
};
