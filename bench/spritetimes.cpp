#include "spritetimes.h"

#include "aoimage.h"
#include "ommemcanvas.h"

#include "platform/host/screen/pixels.h"

#define SDL_MAIN_HANDLED
#include <SDL.h>

#include <cstring>
#include <memory>
#include <random>
#include <stdexcept>

namespace {

constexpr int kCanvasWidth = 640;
constexpr int kCanvasHeight = 480;
constexpr int kDraws = 2000;
constexpr int kScreens = 20;
constexpr std::uint8_t kKey = 0;     ///< transparent index
constexpr std::uint8_t kBehind = 77; ///< what sprites are drawn on

void require(bool holds, const char* what) {
    if (!holds) throw std::runtime_error(what);
}

struct FreeSurface {
    void operator()(SDL_Surface* surface) const { SDL_FreeSurface(surface); }
};
using SurfacePointer = std::unique_ptr<SDL_Surface, FreeSurface>;

SurfacePointer newSurface(int width, int height, int depth, std::uint32_t format) {
    SurfacePointer made(SDL_CreateRGBSurfaceWithFormat(0, width, height, depth, format));
    require(made != nullptr, "SDL makes no surface");
    return made;
}

/// All surfaces of 8 bits share their colours, so that a blit has nothing to translate.
SurfacePointer newIndexedSurface(int width, int height) {
    static SDL_Palette* const palette = [] {
        SDL_Palette* made = SDL_AllocPalette(platform::kPaletteSize);
        for (int i = 0; i < platform::kPaletteSize; ++i) {
            const auto c = static_cast<std::uint8_t>(i);
            made->colors[i] = {c, static_cast<std::uint8_t>(255 - c),
                               static_cast<std::uint8_t>(c * 7), 255};
        }
        return made;
    }();
    SurfacePointer made = newSurface(width, height, 8, SDL_PIXELFORMAT_INDEX8);
    SDL_SetSurfacePalette(made.get(), palette);
    return made;
}

using Picture = std::vector<std::uint8_t>;

Picture pictureOf(const SpriteCase& what) {
    constexpr int kShortestRun = 16;
    constexpr int kMoreRun = 48;
    std::mt19937 random(1);
    std::bernoulli_distribution clear(what.transparency);
    Picture picture(std::size_t{kSpriteSide} * kSpriteSide);
    for (std::size_t at = 0; at < picture.size();) {
        const std::size_t run = what.longRuns ? kShortestRun + random() % kMoreRun : 1;
        const auto colour =
            clear(random) ? kKey : static_cast<std::uint8_t>(1 + random() % (255 - kKey));
        for (std::size_t i = 0; i < run && at < picture.size(); ++i) picture[at++] = colour;
    }
    return picture;
}

class Sprite {
  public:
    explicit Sprite(const SpriteCase& what)
        : at_{what.clipped ? -kSpriteSide / 2 : kSpriteSide, kSpriteSide},
          picture_(pictureOf(what)), image_(packed()), plain_(surfaceOf(false)),
          rle_(surfaceOf(true)) {
        std::memset(canvas_.pixels().first, kBehind, size());
        clear(*screen_);
        clear(*rleScreen_);
    }

    void drawOurs() {
        const OMRegion all(canvas_.bounds());
        const AOFrame& frame = image_->frame(0);
        for (int i = 0; i < kDraws; ++i) frame.draw(canvas_, all, at_, 0);
    }
    void drawPlain() { blit(*plain_, *screen_); }
    void drawRle() { blit(*rle_, *rleScreen_); }
    void copy() {
        const int left = std::max(at_.x, 0);
        const auto width = static_cast<std::size_t>(at_.x + kSpriteSide - left);
        const std::uint8_t* from = picture_.data() + (left - at_.x);
        for (int i = 0; i < kDraws; ++i) {
            for (int y = 0; y < kSpriteSide; ++y)
                std::memcpy(copied_.data() + (at_.y + y) * kCanvasWidth + left,
                            from + y * kSpriteSide, width);
            asm volatile("" ::: "memory");
        }
    }
    void compare() {
        const std::uint8_t* ours = canvas_.pixels().first;
        require(std::memcmp(ours, screen_->pixels, size()) == 0 &&
                    std::memcmp(ours, rleScreen_->pixels, size()) == 0,
                "the sprites were drawn differently");
    }

  private:
    static std::size_t size() { return std::size_t{kCanvasWidth} * kCanvasHeight; }
    static void clear(SDL_Surface& surface) { std::memset(surface.pixels, kBehind, size()); }

    [[nodiscard]] std::shared_ptr<AOImage> packed() const {
        OMMemCanvas canvas(kSpriteSide, kSpriteSide, 8);
        std::memcpy(canvas.pixels().first, picture_.data(), picture_.size());
        std::string problem;
        std::shared_ptr<AOImage> image = AOImage::read(AOPack(canvas, {}, kKey), problem);
        require(image != nullptr, problem.c_str());
        return image;
    }
    [[nodiscard]] SurfacePointer surfaceOf(bool rle) const {
        SurfacePointer made = newIndexedSurface(kSpriteSide, kSpriteSide);
        std::memcpy(made->pixels, picture_.data(), picture_.size());
        SDL_SetColorKey(made.get(), rle ? SDL_TRUE | SDL_RLEACCEL : SDL_TRUE, kKey);
        return made;
    }
    void blit(SDL_Surface& sprite, SDL_Surface& screen) const {
        for (int i = 0; i < kDraws; ++i) {
            SDL_Rect place{at_.x, at_.y, 0, 0};
            SDL_BlitSurface(&sprite, nullptr, &screen, &place);
        }
    }

    platform::Point at_;
    Picture picture_;
    std::shared_ptr<AOImage> image_;
    SurfacePointer plain_;
    SurfacePointer rle_;
    OMMemCanvas canvas_{kCanvasWidth, kCanvasHeight, 8};
    SurfacePointer screen_ = newIndexedSurface(kCanvasWidth, kCanvasHeight);
    SurfacePointer rleScreen_ = newIndexedSurface(kCanvasWidth, kCanvasHeight);
    Picture copied_ = Picture(size());
};

} // namespace

std::vector<SpriteCase> spriteCases() {
    std::vector<SpriteCase> cases;
    for (const bool longRuns : {true, false})
        for (const double transparency : {0.0, 0.5, 0.9})
            for (const bool clipped : {false, true})
                cases.push_back({std::string(longRuns ? "long runs" : "noise") + ", " +
                                     std::to_string(static_cast<int>(transparency * 100)) +
                                     "% clear" + (clipped ? ", half clipped" : ""),
                                 longRuns, transparency, clipped});
    return cases;
}

SpriteTimes measureSprites(const SpriteCase& what, int repetitions) {
    Sprite sprite(what);
    SpriteTimes times;
    const auto measure = [](auto draw) { return cpuNanoseconds(draw) / kDraws; };
    for (int i = 0; i < repetitions; ++i) {
        times.ours.add(measure([&] { sprite.drawOurs(); }));
        times.plain.add(measure([&] { sprite.drawPlain(); }));
        times.rle.add(measure([&] { sprite.drawRle(); }));
        times.copy.add(measure([&] { sprite.copy(); }));
    }
    sprite.compare();
    return times;
}

ExpansionTimes measureExpansion(int repetitions) {
    platform::Surface indices(kCanvasWidth, kCanvasHeight, 8);
    const SurfacePointer from = newIndexedSurface(kCanvasWidth, kCanvasHeight);
    const SurfacePointer to = newSurface(kCanvasWidth, kCanvasHeight, 32, SDL_PIXELFORMAT_ARGB8888);
    SDL_SetSurfaceBlendMode(from.get(), SDL_BLENDMODE_NONE);
    std::mt19937 random(2);
    for (int y = 0; y < kCanvasHeight; ++y)
        for (int x = 0; x < kCanvasWidth; ++x)
            static_cast<std::uint8_t*>(from->pixels)[y * from->pitch + x] = indices.row(y)[x] =
                static_cast<std::uint8_t>(random());
    std::array<platform::Rgb, platform::kPaletteSize> palette;
    for (std::size_t i = 0; i < palette.size(); ++i) {
        const SDL_Color& color = from->format->palette->colors[i];
        palette[i] = {color.r, color.g, color.b};
    }
    std::vector<std::uint32_t> colours(std::size_t{kCanvasWidth} * kCanvasHeight);
    ExpansionTimes times;
    for (int i = 0; i < repetitions; ++i) {
        times.ours.add(
            cpuNanoseconds([&] {
                for (int screen = 0; screen < kScreens; ++screen) {
                    const platform::ColourReader reader(indices, palette);
                    for (int y = 0; y < kCanvasHeight; ++y)
                        reader.read(y, 0,
                                    std::span(colours).subspan(
                                        static_cast<std::size_t>(y) * kCanvasWidth, kCanvasWidth));
                }
            }) /
            kScreens);
        times.sdl.add(cpuNanoseconds([&] {
                          for (int screen = 0; screen < kScreens; ++screen)
                              SDL_BlitSurface(from.get(), nullptr, to.get(), nullptr);
                      }) /
                      kScreens);
    }
    require(std::memcmp(colours.data(), to->pixels, colours.size() * sizeof colours[0]) == 0,
            "the screens were converted differently");
    return times;
}
