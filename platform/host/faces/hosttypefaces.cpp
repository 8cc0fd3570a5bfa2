#include "platform/host/faces/hosttypefaces.h"

#include "platform/host/faces/systemfont.h"
#include "platform/host/files/hostfiles.h"

#include <array>
#include <optional>
#include <span>

namespace platform {

namespace {

constexpr std::string_view kMark = "Zorbet font resource\n";
constexpr std::size_t kMaxResource = 4096; ///< bytes

class SystemFont final : public Typeface {
  public:
    [[nodiscard]] FaceMetrics metrics() const override {
        return {systemfont::kAscent, systemfont::kDescent, systemfont::kLeading};
    }

    [[nodiscard]] const GlyphPicture& glyph(unsigned char code) override {
        std::optional<GlyphPicture>& picture = glyphs_[code];
        if (!picture) picture = pictureOf(systemfont::glyph(code));
        return *picture;
    }

  private:
    static GlyphPicture pictureOf(const systemfont::Glyph& glyph) {
        GlyphPicture picture;
        picture.left = glyph.left;
        picture.top = systemfont::kAscent;
        picture.width = glyph.width;
        picture.height = systemfont::kHeight;
        picture.advance = glyph.advance;
        for (const std::uint16_t row : glyph.rows) {
            picture.bits.push_back(static_cast<std::uint8_t>(row >> 8));
            if (glyph.width > 8) picture.bits.push_back(static_cast<std::uint8_t>(row));
        }
        picture.bits.push_back(0);
        return picture;
    }

    std::array<std::optional<GlyphPicture>, 256> glyphs_;
};

} // namespace

std::unique_ptr<Typeface> HostTypefaces::systemFont() { return std::make_unique<SystemFont>(); }

bool HostTypefaces::createFontResource(std::string_view resourcePath, std::string_view fontPath) {
    if (!files_.exists(fontPath)) return false;
    const std::string text = std::string(kMark) + files_.fullPath(fontPath) + "\n";
    // What a program that ended in its midst has left is as good as new.
    if (readFile(files_, resourcePath, kMaxResource) == text) return true;
    if (files_.exists(resourcePath)) return false;
    const std::unique_ptr<File> file = files_.open(resourcePath, OpenMode::Write);
    return file && file->write(std::as_bytes(std::span(text)));
}

bool HostTypefaces::addFontResource(std::string_view resourcePath) {
    const std::optional<std::string> text = readFile(files_, resourcePath, kMaxResource);
    if (!text || !text->starts_with(kMark)) return false;
    std::string_view path = std::string_view(*text).substr(kMark.size());
    path = path.substr(0, path.find('\n'));
    const std::optional<std::string> font = files_.hostPath(path);
    if (!font || !outlines_.addFile(*font)) return false;
    added_.emplace(files_.fullPath(resourcePath), *font);
    return true;
}

void HostTypefaces::removeFontResource(std::string_view resourcePath) {
    const auto found = added_.find(files_.fullPath(resourcePath));
    if (found == added_.end()) return;
    outlines_.removeFile(found->second);
    added_.erase(found);
}

} // namespace platform
