// The memory of the world: global properties, the players, who of them is playing, and the data
// file that keeps all of it between runs.
//
// There is one, which the main procedure owns. It reads and writes the bytes of the data file
// through links. Scripts see it through RWorldPort objects, each of which is a view.
#pragma once

#include "datafile.h"
#include "ominstalled.h"
#include "omlink.h"
#include "omlist.h"
#include "rules.h"

#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace world {

class WorldMemory : public OMInstalled<WorldMemory> {
  public:
    /// The bytes of the data file; none when it cannot be opened.
    using Read = OMLinkTo<std::optional<std::string>()>;
    using Write = OMLinkTo<void(const std::string&)>;

    /// Whoever shows properties of the memory: told while these are still there.
    class View {
      public:
        virtual void playerGoes(const Player& player) = 0;
        virtual void memoryGoes() = 0;

      protected:
        ~View() = default;
    };

    /// Starts up: the built-in globals, with the values that the data file has for them.
    WorldMemory(Read read, Write write);
    /// Forgets everything that was not saved.
    ~WorldMemory();

    /// Writes the data file and forgets everything; nothing works afterwards, and nothing happens
    /// when it is called again.
    void shutDown();

    void addView(View& view) { views_.append(&view); }
    void removeView(View& view) { views_.remove(&view); }

    [[nodiscard]] const Properties& globals() const { return globals_; }
    /// The last one of the name, or null.
    [[nodiscard]] Property* global(std::string_view name) const;
    /// One that is named like a built-in global is refused with a line in the log, and that one is
    /// returned.
    Property& addGlobal(std::unique_ptr<Property> property);
    /// What every player who comes later has. One that is named like a built-in property is refused
    /// with a line in the log: it would take that one's place in the data file.
    void addTemplate(std::unique_ptr<Property> property);

    /// The first call reads the players of the data file.
    void activateDataFile();
    /// Reads the players before, unless they have been read.
    void writeDataFile();
    /// Whether what was last read of the data file ended as it should, or there was no file. If
    /// not, writing it loses what could not be read. At start-up only the globals are read.
    [[nodiscard]] bool wasReadWhole() const { return readWhole_; }

    [[nodiscard]] std::size_t playersCount() const { return players_.size(); }
    /// Null when nobody plays.
    [[nodiscard]] Player* currentPlayer() const { return currentPlayer_; }
    /// What the name means now: of the current player, else the last global; none when there is
    /// none.
    [[nodiscard]] std::optional<std::string> value(std::string_view name) const;
    /// "#" and a number name the player at that place, from 0; if there is none, and for all other
    /// names, the player who has that name, who is made when there is none.
    Player& activatePlayer(std::string_view wanted);
    /// The player who has the name; if there is none, a name that begins with a digit is a place.
    void removePlayer(std::string_view name);

    /// Null for a location that is no activity.
    [[nodiscard]] Thresholds* thresholds(int location);

  private:
    [[nodiscard]] Player* playerNamed(std::string_view name) const;
    /// Null when there are not so many; `digits` may be followed by others.
    [[nodiscard]] Player* playerAt(std::string_view digits) const;
    void readGlobals();
    void readPlayers();
    void forget();

    Read read_;
    Write write_;
    bool up_ = true;
    bool dataFileActive_ = false; ///< its players have been read
    bool readWhole_ = true;
    Properties globals_;
    Properties templates_;
    Players players_;
    Player* currentPlayer_ = nullptr;
    std::array<Thresholds, kActivities> thresholds_{};
    OMList<View> views_;
};

/// Reports of the world become messages of the script objects.
void reportMessage(std::string_view line);

} // namespace world
