// What the desk of an author has on every back end: the profile, which goes into a file.
#pragma once

#include "platform/authordesk.h"

#include <fstream>
#include <string>

namespace platform {

class HostDesk : public AuthorDesk {
  public:
    /// The file is opened at once, while the program may still write where it likes; empty: none.
    explicit HostDesk(const std::string& profile) {
        if (!profile.empty()) profile_.open(profile, std::ios::binary);
    }

    [[nodiscard]] bool wantsProfile() const override { return profile_.is_open(); }
    void giveProfile(std::string_view report) override { profile_ << report << std::flush; }

  private:
    std::ofstream profile_;
};

} // namespace platform
