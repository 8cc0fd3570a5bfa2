// The machine with a person in front of it: a real window, mouse and keyboard. Needs nothing of SDL
// to be included.
#pragma once

#include "platform/host/files/hostfiles.h"
#include "platform/host/game/comfort.h"
#include "platform/host/game/gameinfo.h"
#include "platform/host/game/workshop.h"
#include "platform/host/machine/hostmodules.h"
#include "platform/host/screen/boxbuttons.h"
#include "platform/host/visit/leavingkey.h"
#include "platform/host/visit/visitwriter.h"
#include "platform/platform.h"

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <variant>

namespace platform {

struct SdlOptions {
    HostOptions host{};
    GameInfo game{}; ///< gives the window its title and icon, and the desktop the program's name
    bool author = false;               ///< the window's title tells what the program says too
    bool playsByKeys = false;          ///< also when the player has not chosen it before
    std::optional<LeavingKey> kiosk{}; ///< the full screen is left by this key only
    bool speaksTexts = false;          ///< the same
    Comfort comfort{};                 ///< goes before what the player has chosen
    std::optional<WorkshopOptions> workshop{}; ///< what the author saves is loaded again
    std::string profile{};        ///< file for where the time of scripts goes; or empty
    VisitWriter* visit = nullptr; ///< gets what happens; null: it is not recorded
    ScreenMode screen{};
    std::span<const ProgramResource> resources{};
    std::span<const VersionString> versionStrings{};
    ButtonLabels buttons{};
    std::string language{}; ///< of the boxes; a tag, or empty
};

/// Or why there is no window. At most one may exist at a time. The window appears with the first
/// thing that is presented.
[[nodiscard]] std::variant<std::unique_ptr<Platform>, std::string>
makeSdlPlatform(const SdlOptions& options);

} // namespace platform
