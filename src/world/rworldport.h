// What scripts see of the memory of the world: its globals, the player who is playing, and how the
// world changes.
//
//     world=RWorldPort 0         (the language wants a word; any will do)
//
// Every port is a view on the same memory. It shows the globals and the player that there were when
// it was made, and what it was asked for itself since then; a player who is removed and a memory
// that ends are gone from all ports.
#pragma once

#include "computedproperties.h"
#include "omscrptb.h"
#include "worldmemory.h"

#include <memory>
#include <optional>
#include <string>

class RWorldPort final : public OMScriptableObject, private world::WorldMemory::View {
  public:
    static const OMSClass kClass;

    /// The memory may end before the port, which has nothing to show then.
    explicit RWorldPort(world::WorldMemory& memory);
    ~RWorldPort() override { retire(); }

    /// Null without a memory.
    [[nodiscard]] static std::unique_ptr<OMScriptableObject> createFromScript();

    [[nodiscard]] std::unique_ptr<OMScriptableObject> duplicate() override;
    /// Also shows the globals and the player.
    void declareProperties() override;

    [[nodiscard]] int playersCount() const;
    /// Of the activity that the argument names; empty when it is none.
    template <int world::Thresholds::*Threshold>
    [[nodiscard]] std::string threshold();
    template <int world::Thresholds::*Threshold>
    void setThreshold(int value);

    // The flag tells whether the property is stored in the data file; it is when there is none.
    template <class Property>
    void addGlobal(const std::string& name, std::optional<int> persistent);
    template <class Property>
    void addTemplate(const std::string& name, std::optional<int> persistent);
    void activateDataFile();
    void activatePlayer(const std::string& name);
    void removePlayer(const std::string& name);

    // While a player is shown. What is out of range, and a location without a record of the kind,
    // changes nothing.
    void addObject(int item, const std::string& location);
    void autoLevel(const std::string& location);
    void backpackAddObject(int item);
    void backpackRemoveObject(int slot);
    void correctGuess(const std::string& location);
    void distributeItems();
    void incorrectGuess(const std::string& location);
    void newGame();
    void removeNextObjectFromQueue(const std::string& location);
    void removeObjectFromLocation(int item, const std::string& location);

  private:
    void onRetire() override;
    void playerGoes(const world::Player& player) override;
    void memoryGoes() override;

    void show(world::Property& property);
    void show(const world::ComputedProperty& row);
    /// Shows the current player in place of the one who was shown.
    void showCurrentPlayer();
    void withdrawPlayer();
    [[nodiscard]] world::Thresholds* namedThresholds() const;
    void recordGuess(const std::string& location, bool correct);

    world::WorldMemory* memory_;      ///< null when it is gone
    world::Player* player_ = nullptr; ///< who is shown
};
