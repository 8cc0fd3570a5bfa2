#include "platform/host/machine/hostmodules.h"

#include "platform/host/game/playerpermits.h"

#include <algorithm>
#include <bit>
#include <dlfcn.h>
#include <filesystem>
#include <utility>

namespace platform {

namespace {

struct LibraryCloser {
    void operator()(void* library) const { ::dlclose(library); }
};
using LibraryHandle = std::unique_ptr<void, LibraryCloser>;

class HostLibrary final : public Library {
  public:
    explicit HostLibrary(LibraryHandle handle) : handle_(std::move(handle)) {}

    [[nodiscard]] void (*entry(const char* name))() override {
        return std::bit_cast<void (*)()>(::dlsym(handle_.get(), name));
    }

  private:
    LibraryHandle handle_;
};

} // namespace

HostModules::HostModules(const HostFiles& files, bool components,
                         std::span<const ProgramResource> resources,
                         std::span<const VersionString> versionStrings)
    : files_(files), components_(components), resources_(resources.begin(), resources.end()),
      versionStrings_(versionStrings.begin(), versionStrings.end()) {}

std::optional<std::span<const std::byte>> HostModules::resource(std::string_view type,
                                                                int id) const {
    const auto found = std::ranges::find_if(resources_, [&](const ProgramResource& candidate) {
        return candidate.id == id && candidate.type == type;
    });
    if (found == resources_.end()) return std::nullopt;
    return found->bytes;
}

std::unique_ptr<Library> HostModules::load(std::string_view name) {
    loadError_.clear();
    if (name.find_first_of("\\/:") != std::string_view::npos || !files_.exists(name))
        return nullptr;
    const auto hostPath = files_.hostPath(name);
    const auto folder = files_.hostPath(files_.currentDirectory());
    if (!hostPath || !folder || std::filesystem::path(*hostPath).parent_path() != *folder)
        return nullptr;
    if (!components_) {
        loadError_ = "native code of a game runs only when the player allows it: start zorbet with "
                     "--components, or write components=yes below [" +
                     *folder + "] into " + permitsFile() + ", if you trust whoever made this game";
        return nullptr;
    }
    LibraryHandle handle(::dlopen(hostPath->c_str(), RTLD_NOW | RTLD_LOCAL));
    if (!handle) {
        const char* error = ::dlerror();
        loadError_ = error ? error : *hostPath;
        return nullptr;
    }
    return std::make_unique<HostLibrary>(std::move(handle));
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
