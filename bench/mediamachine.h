// The framework as a program has it, on the headless platform with the host's real files: an
// application in a temporary folder that is its current directory and its search path.
#pragma once

#include "platform/headless/headlessplatform.h"

#include "omapp.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <span>
#include <sstream>
#include <string>

class MediaMachine {
  public:
    MediaMachine();
    /// Removes the folder with all that is in it.
    ~MediaMachine();
    MediaMachine& operator=(MediaMachine&&) = delete;

    [[nodiscard]] OMApp& app() { return *app_; }
    [[nodiscard]] std::filesystem::path hostPath(const std::string& name) const {
        return folder_ / name;
    }
    /// Writes a file into the folder and waits until it is on the disk.
    void put(const std::string& name, std::span<const std::byte> bytes) const;

  private:
    std::filesystem::path folder_;
    std::ostringstream report_;
    std::optional<platform::HeadlessPlatform> platform_;
    std::optional<OMApp> app_;
};
