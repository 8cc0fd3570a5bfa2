// What of the host's files a game may open: a few folders with all that lies below, and single
// files that the player chose. All else does not exist for it.
//
// Names are real ones of the host: absolute, without "." and "..", and no part of them is a link.
// Opening goes down from the folder on its own, and stops at a link: one that was put there after
// the name was worked out leads nowhere.
#pragma once

#include "platform/host/files/descriptor.h"

#include <cstdint>
#include <mutex>
#include <set>
#include <string>
#include <vector>

namespace platform {

class Fence {
  public:
    enum class Use : std::uint8_t { Read, Write };
    struct Ground {
        std::string folder; ///< without "/" at its end, so empty for the root
        bool writable = false;
    };

    /// The folders need not be there yet.
    explicit Fence(std::vector<Ground> grounds) : grounds_(std::move(grounds)) {}

    [[nodiscard]] const std::vector<Ground>& grounds() const { return grounds_; }

    /// From now on this file may be read, wherever it lies. By any thread, as all that follows.
    void admit(const std::string& file);

    /// Whether `name`, a folder of ours, or a file or folder below one, is inside.
    [[nodiscard]] bool encloses(const std::string& name, Use use) const;

    /// The folder itself, to open what is in it; not open, and `errno` tells why, when it is not
    /// there, no folder, or when a link has come in between. To be asked of what is enclosed only.
    [[nodiscard]] Descriptor openFolder(const std::string& folder) const;

  private:
    [[nodiscard]] const Ground* groundOf(const std::string& name, Use use) const;

    std::vector<Ground> grounds_;
    mutable std::mutex mutex_;
    std::set<std::string> admitted_;
};

} // namespace platform
