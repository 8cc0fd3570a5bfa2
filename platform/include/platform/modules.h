// What the program itself carries, resources and version strings, and libraries of native code that
// it loads.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// A library of native code that was loaded at run time; unloaded by destruction.
class Library {
  public:
    virtual ~Library() = default;
    /// A function that the library exports, or null. The caller knows its type.
    [[nodiscard]] virtual void (*entry(const char* name))() = 0;
};

/// What a resource is found by.
struct ResourceName {
    std::string type;
    int id = 0;
};

class Modules {
  public:
    virtual ~Modules() = default;

    /// Bytes of the program's own resource; they live as long as the program. None when there is no
    /// such resource. `type` is compared with case.
    [[nodiscard]] virtual std::optional<std::span<const std::byte>> resource(std::string_view type,
                                                                             int id) const = 0;

    /// The names of all of them, each once.
    [[nodiscard]] virtual std::vector<ResourceName> resourceNames() const = 0;

    /// Loads the library `name` of the current directory; null when there is none, it cannot be
    /// loaded, or the player did not allow it. Names of other folders are none.
    [[nodiscard]] virtual std::unique_ptr<Library> load(std::string_view name) = 0;

    /// Why the last `load` of a file that is there gave nothing; empty when it gave a library or
    /// there was no such file.
    [[nodiscard]] virtual std::string loadError() const = 0;

    /// A string of the program's version resource ("ProductName", "ProductVersion"), empty when
    /// missing.
    [[nodiscard]] virtual std::string versionString(std::string_view key) const = 0;
};

} // namespace platform
