// One player: the numbers of what they have done (playerrecord.h), and named properties with values
// of their own. Scripts see the numbers as properties, too (computedproperties.h).
#pragma once

#include "playerrecord.h"
#include "property.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace world {

using Properties = std::vector<std::unique_ptr<Property>>;

/// The last one of the name, which is the one that scripts see; null when there is none.
[[nodiscard]] Property* lastNamed(const Properties& properties, std::string_view name);

/// The property that holds the name.
inline constexpr std::string_view kPlayerName = "playerName";

class Player {
  public:
    static constexpr std::size_t kMostStrangers = 1000;

    /// A player with all numbers 0 and the properties that everybody has, and with copies of
    /// `templates`.
    explicit Player(const Properties& templates = {});
    Player& operator=(Player&&) = delete;

    [[nodiscard]] PlayerRecord& record() { return record_; }
    [[nodiscard]] const PlayerRecord& record() const { return record_; }

    /// By which they are found.
    [[nodiscard]] const std::string& name() const { return name_->value(); }
    void setName(std::string_view name) { name_->setText(name); }

    [[nodiscard]] const Properties& stored() const { return stored_; }
    /// Named values that the data file had and nobody asks for in this run. They go back into the
    /// file: another script, or the same one later, may have them declared.
    using Strangers = std::vector<std::pair<std::string, std::string>>;
    [[nodiscard]] const Strangers& strangers() const { return strangers_; }
    /// Beyond kMostStrangers, and without a name, they are given up.
    void addStranger(std::string_view name, std::string_view value);

    // By its name, a stored property before a computed one, which speaks of the current location.
    // None and false when there is neither.
    [[nodiscard]] std::optional<std::string> value(std::string_view name);
    bool setValue(std::string_view name, std::string_view value);

  private:
    PlayerRecord record_;
    Properties stored_;
    Strangers strangers_;
    StringProperty* name_; ///< the first of the stored ones
};

} // namespace world
