// The program's own resources and version strings, from tables built into it, and libraries of the
// host.
#pragma once

#include "platform/host/files/hostfiles.h"
#include "platform/modules.h"

#include <vector>

namespace platform {

/// The icon of the program's window: a BMP file of 8 bits a pixel, whose colour 0 is transparent.
inline constexpr std::string_view kIconType = "ICON";
inline constexpr int kAppIcon = 1;

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
    /// `files` must outlive the modules. Without `components` no library is loaded.
    HostModules(const HostFiles& files, bool components, std::span<const ProgramResource> resources,
                std::span<const VersionString> versionStrings);

    [[nodiscard]] std::optional<std::span<const std::byte>> resource(std::string_view type,
                                                                     int id) const override;
    /// What the library leaves open is filled in from the program.
    [[nodiscard]] std::unique_ptr<Library> load(std::string_view name) override;
    [[nodiscard]] std::string loadError() const override { return loadError_; }
    [[nodiscard]] std::vector<ResourceName> resourceNames() const override;
    [[nodiscard]] std::string versionString(std::string_view key) const override;

  private:
    const HostFiles& files_;
    bool components_;
    std::string loadError_;
    std::vector<ProgramResource> resources_;
    std::vector<VersionString> versionStrings_;
};

} // namespace platform
