#include "texttimes.h"

#include "filesystem.h"
#include "fonts/fontbuilder.h"
#include "memorystream.h"
#include "ommemcanvas.h"
#include "omnfntfont.h"
#include "resources/fontfact.h"

#define SDL_MAIN_HANDLED
#include <SDL.h>
#include <SDL_ttf.h>

#include <array>
#include <cstring>
#include <memory>
#include <stdexcept>

namespace {

constexpr int kWidth = 640;
constexpr int kHeight = 480;
constexpr int kLines = 400; ///< drawn for one sample
constexpr std::uint8_t kInk = 1;
constexpr std::string_view kText =
    "O pequeno barco navega ao sol; the quick brown fox jumps over 12 lazy dogs.";

void require(bool holds, const char* what) {
    if (!holds) throw std::runtime_error(what);
}

std::vector<std::byte> resourceOf(const std::string& font) {
    const rsc::Bytes bytes = rsc::buildFont({}, rsc::readWholeFile(font));
    const auto view = std::as_bytes(std::span(bytes));
    return {view.begin(), view.end()};
}

struct Free {
    void operator()(SDL_Surface* surface) const { SDL_FreeSurface(surface); }
    void operator()(TTF_Font* font) const { TTF_CloseFont(font); }
};
using Surface = std::unique_ptr<SDL_Surface, Free>;

/// The characters of the text as SDL2_ttf renders them, and a canvas to blit them on. All share a
/// palette, so that a blit has nothing to translate.
class SdlText {
  public:
    SdlText(const std::string& file, bool rle) {
        require(TTF_Init() == 0, "SDL2_ttf does not start");
        const std::unique_ptr<TTF_Font, Free> font(TTF_OpenFont(file.c_str(), 14));
        require(font != nullptr, "SDL2_ttf cannot read the font");
        canvas_.reset(
            SDL_CreateRGBSurfaceWithFormat(0, kWidth, kHeight, 8, SDL_PIXELFORMAT_INDEX8));
        for (const char c : kText) add(*font, static_cast<unsigned char>(c), rle);
    }

    void draw(int x, int baseline) {
        for (const char c : kText) {
            const Character& character = characters_[static_cast<unsigned char>(c)];
            SDL_Rect at{x + character.left, baseline - character.top, 0, 0};
            if (character.picture)
                SDL_BlitSurface(character.picture.get(), nullptr, canvas_.get(), &at);
            x += character.advance;
        }
    }
    [[nodiscard]] const std::uint8_t* row(int y) const {
        return static_cast<const std::uint8_t*>(canvas_->pixels) + y * canvas_->pitch;
    }

  private:
    struct Character {
        Surface picture;
        int left = 0;
        int top = 0;
        int advance = 0;
    };

    void add(TTF_Font& font, unsigned char code, bool rle) {
        Character& character = characters_[code];
        if (character.advance > 0) return;
        int right = 0;
        int bottom = 0;
        TTF_GlyphMetrics(&font, code, &character.left, &right, &bottom, &character.top,
                         &character.advance);
        if (code == ' ') return;
        character.picture.reset(TTF_RenderGlyph_Solid(&font, code, {255, 255, 255, 255}));
        require(character.picture != nullptr, "SDL2_ttf renders no character");
        crop(character, right - character.left, character.top - bottom, TTF_FontAscent(&font));
        SDL_SetSurfacePalette(character.picture.get(), canvas_->format->palette);
        SDL_SetColorKey(character.picture.get(), SDL_TRUE, 0);
        if (rle) SDL_SetSurfaceRLE(character.picture.get(), 1);
    }

    /// Rendered characters are as high as a line; only their own box is blitted.
    static void crop(Character& character, int width, int height, int ascent) {
        Surface small(SDL_CreateRGBSurfaceWithFormat(0, width, height, 8, SDL_PIXELFORMAT_INDEX8));
        const SDL_Surface& whole = *character.picture;
        const int left = std::max(character.left, 0);
        for (int y = 0; y < height; ++y)
            std::memcpy(static_cast<std::uint8_t*>(small->pixels) + y * small->pitch,
                        static_cast<const std::uint8_t*>(whole.pixels) +
                            (y + ascent - character.top) * whole.pitch + left,
                        static_cast<std::size_t>(width));
        character.picture = std::move(small);
    }

    Surface canvas_;
    std::array<Character, 256> characters_;
};

std::size_t inkedCharacters() {
    return kText.size() - static_cast<std::size_t>(std::count(kText.begin(), kText.end(), ' '));
}

} // namespace

TextTimes measureText(const std::string& file, int repetitions) {
    testing_support::MemoryStream stream(resourceOf(file));
    OMNFNTFont font(stream);
    OMMemCanvas canvas(kWidth, kHeight, 8);
    canvas.setFont(&font);
    canvas.setTextColor(OMColor(kInk));
    SdlText plain(file, false);
    SdlText rle(file, true);

    canvas.drawText(5, 30, kText);
    plain.draw(5, 30);
    rle.draw(5, 30);
    for (int y = 0; y < kHeight; ++y)
        for (const SdlText* other : {&plain, &rle})
            require(std::memcmp(canvas.pixels().at(0, y), other->row(y), kWidth) == 0,
                    "the texts differ");

    TextTimes times;
    const double characters = static_cast<double>(inkedCharacters()) * kLines;
    const auto sample = [&](Samples& samples, const auto& draw) {
        samples.add(cpuNanoseconds([&] {
                        for (int i = 0; i < kLines; ++i) draw(5 + i % 8, 20 + i);
                    }) /
                    characters);
    };
    for (int i = 0; i < repetitions; ++i) {
        sample(times.ours, [&](int x, int y) { canvas.drawText(x, y, kText); });
        sample(times.plain, [&](int x, int y) { plain.draw(x, y); });
        sample(times.rle, [&](int x, int y) { rle.draw(x, y); });
    }
    return times;
}

FontTimes measureFonts(const std::string& file, int repetitions) {
    const std::vector<std::byte> resource = resourceOf(file);
    FontFactory fonts;
    fonts.setNFNTLocator(
        [&](int) { return std::make_unique<testing_support::MemoryStream>(resource); });
    OMFont& shared = fonts.useNFNT(1);
    FontTimes times;
    for (int i = 0; i < repetitions; ++i) {
        times.reading.add(cpuNanoseconds([&] {
            for (std::size_t n = 0; n < kFontOpenings; ++n) {
                testing_support::MemoryStream stream(resource);
                const OMNFNTFont font(stream);
                require(!font.isEmpty(), "the font cannot be read");
            }
        }));
        times.sharing.add(cpuNanoseconds([&] {
            for (std::size_t n = 0; n < kFontOpenings; ++n) fonts.doneUsing(fonts.useNFNT(1));
        }));
    }
    fonts.doneUsing(shared);
    return times;
}
