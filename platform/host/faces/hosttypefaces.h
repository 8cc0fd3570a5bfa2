// The faces of every back end: the system font that the program carries, and the outline fonts of
// the host. A font resource file is a text: a line that says what it is, and the path of the font
// file.
#pragma once

#include "platform/host/faces/outlinefaces.h"
#include "platform/typefaces.h"

#include <map>
#include <string>

namespace platform {

class HostFiles;

class HostTypefaces final : public Typefaces {
  public:
    /// The files must outlive the faces.
    explicit HostTypefaces(HostFiles& files) : files_(files) {}

    [[nodiscard]] std::unique_ptr<Typeface> systemFont() override;
    [[nodiscard]] bool hasFamily(std::string_view family) override {
        return outlines_.hasFamily(family);
    }
    [[nodiscard]] std::unique_ptr<Typeface> open(const TypefaceRequest& request) override {
        return outlines_.open(request);
    }
    bool createFontResource(std::string_view resourcePath, std::string_view fontPath) override;
    bool addFontResource(std::string_view resourcePath) override;
    void removeFontResource(std::string_view resourcePath) override;

  private:
    HostFiles& files_;
    OutlineFaces outlines_;
    /// The host's font file of each that was added; the program's resource file may be gone when it
    /// is removed.
    std::multimap<std::string, std::string> added_;
};

} // namespace platform
