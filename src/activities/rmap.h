// The map game: a board of cells on a picture, with a start, a finish and traps. The player
// composes moves; when they are run, a trail of pictures goes from cell to cell, until the moves
// are used up, or a trap or the edge of the board ends it.
//
//     m=RMap x y [z]             the place of the map's picture
//
// The map is a group whose members are its own pictures: the map, the start, the finish, and two
// trails that take turns, so that the trail of the run before stays to be seen.
#pragma once

#include "mapboard.h"
#include "omlink.h"
#include "ommultitrinket.h"
#include "omtask.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

class OMAnimation;

class RMap final : public OMSCopied<RMap, OMMultiTrinket> {
  public:
    static const OMSClass kClass;

    static constexpr int kNone = -1; ///< instead of the id of a graphic or a sound
    static constexpr int kTraps = 10;
    static constexpr int kLargestCell = 10'000; ///< pixels
    static constexpr int kFarthestCell = 1'000'000;

    // Slots of its members.
    static constexpr int kMapSlot = 1;
    static constexpr int kStartSlot = 2;
    static constexpr int kFinishSlot = 3;
    static constexpr int kTrailLength = 100;
    static constexpr int kFirstTrail = 200; ///< its first slot
    static constexpr int kSecondTrail = 100;

    explicit RMap(OMTrinketWindow& window);
    /// A map with the same settings and moves, without trails, standing.
    RMap(const RMap& other);
    /// Whoever waits for a run is told when the map is gone.
    ~RMap() override;

    [[nodiscard]] static std::unique_ptr<OMScriptableObject> createFromScript();

    // Running the moves.

    /// Walks through the queued moves from the start cell on. `done` is called once: after the
    /// event "finished", also when a handler of it has destroyed the map, or without it when the
    /// run is stopped or the map destroyed in the middle of it. A run in progress is stopped.
    /// With no moves queued the event is raised at once, and a run in progress goes on.
    void move(OMLink done);
    /// Stops the run, if there is one.
    void interruptMove();
    /// The run stands still until `resume`. Without a run, or twice, neither does anything.
    void pause();
    void resume();

    // For scripts. Lengths below 0 count as 0.

    [[nodiscard]] int cellsH() const { return board_.columns(); }
    void setCellsH(int columns) { board_.setColumns(columns); }
    [[nodiscard]] int cellsV() const { return board_.rows(); }
    void setCellsV(int rows) { board_.setRows(rows); }
    [[nodiscard]] int cellSizeH() const { return cellWidth_; }
    void setCellSizeH(int pixels);
    [[nodiscard]] int cellSizeV() const { return cellHeight_; }
    void setCellSizeV(int pixels);
    [[nodiscard]] int startX() const { return start_.x; }
    void setStartX(int column);
    [[nodiscard]] int startY() const { return start_.y; }
    void setStartY(int row);
    [[nodiscard]] int finishX() const { return finish_.x; }
    void setFinishX(int column);
    [[nodiscard]] int finishY() const { return finish_.y; }
    void setFinishY(int row);

    [[nodiscard]] int mapGraphicID() const { return mapId_; }
    void setMapGraphicID(int id);
    [[nodiscard]] int startGraphicID() const { return startId_; }
    void setStartGraphicID(int id);
    [[nodiscard]] int finishGraphicID() const { return finishId_; }
    void setFinishGraphicID(int id);
    [[nodiscard]] int offMapSoundID() const { return offMapSoundId_; }
    void setOffMapSoundID(int id) { offMapSoundId_ = id; }
    // The next argument is the direction, or the trap from 0 to 9; without one that is, they read
    // as an empty text and writing does nothing.
    [[nodiscard]] std::string directionGraphicID() const;
    void setDirectionGraphicID(int id);
    [[nodiscard]] std::string trapSoundID() const;
    void setTrapSoundID(int id);

    /// Milliseconds; below 1: a step in every pass.
    [[nodiscard]] int moveDelay() const { return moveDelay_; }
    void setMoveDelay(int ms) { moveDelay_ = ms; }

    void setTerrain(const std::string& terrain) { board_.setTerrain(terrain); }
    void addMove(int direction, int length);
    void clearMoves() { walk_.clear(); }
    /// Lasts until the run is over.
    void moveForScript() { move(takeCompletion()); }
    void resumeForScript();

    void setAttribute(Attribute which, int value, int second = 0) override;

  private:
    void onRetire() override;
    struct Run;

    // The run.
    void tick();
    void makeStep();
    /// The next move that has a length; false without any.
    bool takeMove();
    /// What to tell when the run is over, or null.
    [[nodiscard]] OMLink stop();
    void finish(std::string_view report);
    void raiseFinished(const OMLink& done);

    // The pictures.
    void beginTrail();
    void leaveMark();
    void clearSlot(int slot);
    /// In place of what was in the slot; to be placed, and made a member. Null, and the slot is
    /// empty, without such a resource.
    OMAnimation* makeGraphic(int slot, int id);
    void putMap();
    void putMarker(int slot, int id, MapCell cell);
    void placeOn(OMAnimation& graphic, MapCell cell) const;
    void placeMarkers();

    MapBoard board_;
    MapWalk walk_;
    MapCell start_;
    MapCell finish_;
    int cellWidth_ = 0; ///< pixels
    int cellHeight_ = 0;
    int moveDelay_ = 60;

    int mapId_ = kNone;
    int startId_ = kNone;
    int finishId_ = kNone;
    int offMapSoundId_ = kNone;
    std::array<int, MapWalk::kDirections> directionIds_;
    std::array<int, kTraps> trapSoundIds_;

    platform::Point origin_{}; ///< left upper corner of the first cell, and of the map's picture
    std::array<std::unique_ptr<OMAnimation>, kFirstTrail + kTrailLength> graphics_; ///< by slot
    int trail_ = kSecondTrail;
    int nextMark_ = 0;
    std::unique_ptr<Run> run_; ///< null while it stands
};
