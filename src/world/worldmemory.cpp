#include "worldmemory.h"

#include "omlog.h"
#include "omsarguments.h"
#include "omsexception.h"
#include "rules.h"

#include <algorithm>
#include <utility>

namespace world {

namespace {

/// Whether a warning at start-up is shown.
constexpr std::string_view kBuiltInGlobals[] = {
    "informResolutionWarning",
    "informColorsWarning",
    "informWinGWarning",
    "informDirectDrawSwitchFailedWarning",
    "informDirectDrawVersionWarning",
    "informDirectDrawNotFoundWarning",
};

constexpr std::string_view kWanted = "1"; ///< of a warning: until it is switched off

constexpr char kPlaceMark = '#';
constexpr int kMostUnknownNames = 10'000; ///< reported in one reading

bool isDigit(char c) { return c >= '0' && c <= '9'; }

void log(std::string_view text) { OMLog::write(OMLog::Kind::Message, text); }

void log(std::string_view text, std::string_view name) { log(std::string(text).append(name)); }

/// Bytes that are no data file at all are full of names.
class UnknownNames {
  public:
    void report(std::string_view name) {
        if (count_++ < kMostUnknownNames) log("Player: unknown property ", name);
    }

  private:
    int count_ = 0;
};

} // namespace

void reportMessage(std::string_view line) { OMSobExceptionMessage(line).report(); }

// ---------------------------------------------------------------------------- life

WorldMemory::WorldMemory(Read read, Write write)
    : read_(std::move(read)), write_(std::move(write)) {
    log("World Memory - starting up!");
    for (const std::string_view name : kBuiltInGlobals)
        addGlobal(std::make_unique<IntProperty>(name)).setText(kWanted);
    readGlobals();
}

WorldMemory::~WorldMemory() { forget(); }

void WorldMemory::shutDown() {
    if (!std::exchange(up_, false)) return;
    log("World Memory shutting down");
    writeDataFile();
    forget();
}

void WorldMemory::forget() {
    views_.apply([](View& view) { view.memoryGoes(); });
    views_.clear();
    if (current() == this) setCurrent(nullptr);
    read_ = nullptr;
    write_ = nullptr;
    dataFileActive_ = false;
    currentPlayer_ = nullptr;
    players_.clear();
    templates_.clear();
    globals_.clear();
}

// ---------------------------------------------------------------------------- properties

Property* WorldMemory::global(std::string_view name) const { return lastNamed(globals_, name); }

Property& WorldMemory::addGlobal(std::unique_ptr<Property> property) {
    const bool isBuiltIn =
        std::ranges::find(kBuiltInGlobals, property->name()) != std::end(kBuiltInGlobals);
    if (Property* own = isBuiltIn ? global(property->name()) : nullptr) {
        OMLog::writef(OMLog::Kind::Warning,
                      "World Memory - the global %s is the program's own and is not added again: "
                      "use it as it is, or another name",
                      property->name().c_str());
        return *own;
    }
    return *globals_.emplace_back(std::move(property));
}

void WorldMemory::addTemplate(std::unique_ptr<Property> property) {
    if (Player().value(property->name())) {
        OMLog::writef(OMLog::Kind::Warning,
                      "World Memory - every player has a property %s, and none is added: use it as "
                      "it is, or another name",
                      property->name().c_str());
        return;
    }
    templates_.push_back(std::move(property));
}

// ---------------------------------------------------------------------------- data file

void WorldMemory::readGlobals() {
    if (const auto bytes = read_()) readWhole_ = datafile::readGlobals(*bytes, globals_);
}

void WorldMemory::activateDataFile() {
    if (std::exchange(dataFileActive_, true)) return;
    readPlayers();
}

void WorldMemory::readPlayers() {
    OMLog::writef(OMLog::Kind::Message, "World Memory - reading data file, sDataFileActive: %d",
                  dataFileActive_ ? 1 : 0);
    const auto bytes = read_();
    if (!bytes) return;
    UnknownNames unknown;
    readWhole_ = datafile::readPlayers(*bytes, templates_, players_,
                                       OMLinkToObj(&unknown, &UnknownNames::report));
}

void WorldMemory::writeDataFile() {
    OMLog::writef(OMLog::Kind::Message, "World Memory - writing data file, sDataFileActive: %d",
                  dataFileActive_ ? 1 : 0);
    activateDataFile();
    write_(datafile::compose(globals_, players_));
}

// ---------------------------------------------------------------------------- players

Player* WorldMemory::playerNamed(std::string_view name) const {
    const auto found =
        std::ranges::find_if(players_, [&](const auto& player) { return player->name() == name; });
    return found == players_.end() ? nullptr : found->get();
}

Player* WorldMemory::playerAt(std::string_view digits) const {
    const int place = OMSToInteger(digits);
    return place >= 0 && place < std::ssize(players_)
               ? players_[static_cast<std::size_t>(place)].get()
               : nullptr;
}

std::optional<std::string> WorldMemory::value(std::string_view name) const {
    auto value = currentPlayer_ ? currentPlayer_->value(name) : std::nullopt;
    const Property* known = value ? nullptr : global(name);
    return known ? known->text() : value;
}

Player& WorldMemory::activatePlayer(std::string_view wanted) {
    // Else a player would not be found again under the name that the file keeps.
    const std::string name = datafile::asStored(wanted);
    log("World Memory - activating player ", name);
    Player* player =
        name.starts_with(kPlaceMark) ? playerAt(std::string_view(name).substr(1)) : nullptr;
    if (!player) player = playerNamed(name);
    if (!player) {
        log("World Memory - creating new player ", name);
        player = players_.emplace_back(std::make_unique<Player>(templates_)).get();
        resetNewPlayer(player->record(), reportMessage);
        player->setName(name);
    }
    currentPlayer_ = player;
    return *player;
}

void WorldMemory::removePlayer(std::string_view name) {
    Player* player = playerNamed(datafile::asStored(name));
    if (!player && !name.empty() && isDigit(name.front())) player = playerAt(name);
    if (!player) return;
    views_.apply([player](View& view) { view.playerGoes(*player); });
    if (currentPlayer_ == player) currentPlayer_ = nullptr;
    std::erase_if(players_, [player](const auto& listed) { return listed.get() == player; });
}

Thresholds* WorldMemory::thresholds(int location) {
    return isActivity(location) ? &thresholds_[static_cast<std::size_t>(location - 1)] : nullptr;
}

} // namespace world
