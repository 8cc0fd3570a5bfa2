// The program's own resources and version strings, from tables built into it.
#pragma once

#include "platform/modules.h"

#include <vector>

namespace platform {

/// Views of data that lives as long as the program.
struct ProgramResource {
    std::string_view type;
    int id = 0;
    std::span<const std::byte> bytes;
};

struct VersionString {
    std::string_view key;
    std::string_view value;
};

class HostModules final : public Modules {
  public:
    HostModules(std::span<const ProgramResource> resources,
                std::span<const VersionString> versionStrings);

    [[nodiscard]] std::optional<std::span<const std::byte>> resource(std::string_view type,
                                                                     int id) const override;
    [[nodiscard]] std::vector<ResourceName> resourceNames() const override;
    [[nodiscard]] std::string versionString(std::string_view key) const override;

  private:
    std::vector<ProgramResource> resources_;
    std::vector<VersionString> versionStrings_;
};

} // namespace platform
