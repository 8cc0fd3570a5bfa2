// A TrueType face of the platform at one size and style. A font file that lies beside the program
// can be registered with it, for as long as the font lives.
#pragma once

#include "omfont.h"

class OMTTFont final : public OMTypefaceFont {
  public:
    static constexpr int kDefaultSize = 16; ///< pixels of the em square

    /// A font file with its folder and that of the font resource that stands for it; folders
    /// default to the home directory. No file: the face is installed already.
    struct File {
        std::string_view name; ///< without ".ttf"
        std::string_view folder;
        std::string_view resourceFolder;
    };

    /// An empty name and a face that is not installed fail a check; the characters are then those
    /// of the system font.
    explicit OMTTFont(std::string_view faceName) : OMTTFont(faceName, File()) {}
    OMTTFont(std::string_view faceName, const File& file);
    /// Unregisters the font file and deletes the font resource that was made for it.
    ~OMTTFont() override;

    [[nodiscard]] static bool isInstalled(std::string_view faceName);

    void setSize(int pixels) override;
    void setStyle(int bits) override;

  private:
    void registerFile(const File& file);
    void openFace();

    int size_ = kDefaultSize;
    int style_ = 0;
    std::string resource_; ///< the path of the font resource that was added
    bool resourceIsOwn_ = false;
};
