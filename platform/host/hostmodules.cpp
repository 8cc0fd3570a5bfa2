#include "platform/host/hostmodules.h"

#include <algorithm>

namespace platform {

HostModules::HostModules(std::span<const ProgramResource> resources,
                         std::span<const VersionString> versionStrings)
    : resources_(resources.begin(), resources.end()),
      versionStrings_(versionStrings.begin(), versionStrings.end()) {}

std::optional<std::span<const std::byte>> HostModules::resource(std::string_view type,
                                                                int id) const {
    const auto found = std::ranges::find_if(resources_, [&](const ProgramResource& candidate) {
        return candidate.id == id && candidate.type == type;
    });
    if (found == resources_.end()) return std::nullopt;
    return found->bytes;
}

std::vector<ResourceName> HostModules::resourceNames() const {
    std::vector<ResourceName> names;
    for (const ProgramResource& resource : resources_)
        names.push_back({std::string(resource.type), resource.id});
    return names;
}

std::string HostModules::versionString(std::string_view key) const {
    const auto found = std::ranges::find(versionStrings_, key, &VersionString::key);
    return found == versionStrings_.end() ? std::string() : std::string(found->value);
}

} // namespace platform
