// One player: the numbers of what they have done (playerrecord.h), and named properties. Scripts
// see both as properties: the stored ones have values of their own, the computed ones speak of the
// numbers.
#pragma once

#include "playerrecord.h"
#include "property.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace world {

using Properties = std::vector<std::unique_ptr<Property>>;

/// The last one of the name, which is the one that scripts see; null when there is none.
[[nodiscard]] Property* lastNamed(const Properties& properties, std::string_view name);

class Player {
  public:
    /// A player with all numbers 0 and the properties that everybody has, and with copies of
    /// `templates`.
    explicit Player(const Properties& templates = {});
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;

    [[nodiscard]] PlayerRecord& record() { return record_; }
    [[nodiscard]] const PlayerRecord& record() const { return record_; }

    /// By which they are found.
    [[nodiscard]] const std::string& name() const { return name_->value(); }
    void setName(std::string_view name) { name_->setText(name); }

    [[nodiscard]] const Properties& stored() const { return stored_; }
    [[nodiscard]] const Properties& computed() const { return computed_; }
    /// A stored one before a computed one; null when there is neither.
    [[nodiscard]] Property* property(std::string_view name) const;

  private:
    PlayerRecord record_;
    Properties stored_;
    Properties computed_;
    StringProperty* name_; ///< the first of the stored ones
};

} // namespace world
