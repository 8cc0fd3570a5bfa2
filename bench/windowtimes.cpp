#include "windowtimes.h"

#include "mediamachine.h"

#include "aoimage.h"
#include "omao.h"
#include "omtrinketwindow.h"

#include <memory>
#include <random>
#include <stdexcept>
#include <vector>

namespace {

constexpr int kWidth = 640;
constexpr int kHeight = 480;
constexpr platform::Rect kWindow{0, 0, kWidth, kHeight};
constexpr int kSide = 64; ///< of the animations, pixels
constexpr int kIdleCycles = 2000;
constexpr int kMovingCycles = 50;
constexpr int kHits = 200000;
constexpr std::uint8_t kClear = 0;

/// A ball: a disc of rings, transparent around it.
std::shared_ptr<AOImage> makeBall() {
    OMMemCanvas canvas(kSide, kSide, 8);
    const OMPixels pixels = canvas.pixels();
    constexpr int kMiddle = kSide / 2;
    for (int y = 0; y < kSide; ++y)
        for (int x = 0; x < kSide; ++x) {
            const int square = (x - kMiddle) * (x - kMiddle) + (y - kMiddle) * (y - kMiddle);
            if (square < kMiddle * kMiddle)
                *pixels.at(x, y) = static_cast<std::uint8_t>(20 + square / 64);
        }
    std::string problem;
    std::shared_ptr<AOImage> image = AOImage::read(AOPack(canvas, {}, kClear), problem);
    if (!image) throw std::runtime_error(problem);
    return image;
}

class Scene {
  public:
    explicit Scene(std::size_t animations) {
        const auto image = makeBall();
        for (std::size_t i = 0; i < animations; ++i) {
            const int x = static_cast<int>(random_() % (kWidth - kSide));
            const int y = static_cast<int>(random_() % (kHeight - kSide));
            animations_.push_back(std::make_unique<OMAnimation>(window_, image, 1, x, y));
        }
        window_.idle();
    }

    void idle(int cycles) {
        for (int i = 0; i < cycles; ++i) window_.idle();
    }
    void move(int cycles) {
        for (int i = 0; i < cycles; ++i) {
            for (std::size_t n = 0; n < animations_.size(); ++n) {
                const int way = (i / 8 + static_cast<int>(n)) % 2 == 0 ? 2 : -2;
                animations_[n]->offset(way, n % 3 == 0 ? way : 0);
            }
            window_.idle();
        }
    }
    /// Returns what was found, so that no test is left out.
    std::size_t hitPixels() {
        std::size_t hits = 0;
        for (int i = 0; i < kHits; ++i) {
            const OMAnimation& animation =
                *animations_[static_cast<std::size_t>(i) % animations_.size()];
            hits += animation.containsPoint(
                {animation.x() + i % kSide, animation.y() + i / kSide % kSide});
        }
        return hits;
    }
    std::size_t hitWindow() {
        std::size_t hits = 0;
        for (int i = 0; i < kHits; ++i)
            hits += window_.input().hitTest({i * 7 % kWidth, i * 13 % kHeight}) != nullptr;
        return hits;
    }

  private:
    MediaMachine machine_;
    OMTrinketWindow window_{kWindow, nullptr, "bench"};
    std::mt19937 random_{3};
    std::vector<std::unique_ptr<OMAnimation>> animations_;
};

} // namespace

WindowTimes measureWindow(int repetitions) {
    WindowTimes times;
    times.coverage = static_cast<double>(kMovingAnimations) * kSide * kSide / (kWidth * kHeight);
    for (int i = 0; i < repetitions; ++i) {
        {
            Scene scene(kIdleTrinkets);
            times.idleNanoseconds.add(cpuNanoseconds([&] { scene.idle(kIdleCycles); }) /
                                      kIdleCycles);
        }
        Scene scene(kMovingAnimations);
        times.movingNanoseconds.add(cpuNanoseconds([&] { scene.move(kMovingCycles); }) /
                                    kMovingCycles);
        std::size_t hits = 0;
        times.pixelNanoseconds.add(cpuNanoseconds([&] { hits += scene.hitPixels(); }) / kHits);
        times.windowNanoseconds.add(cpuNanoseconds([&] { hits += scene.hitWindow(); }) / kHits);
        if (hits == 0) throw std::runtime_error("nothing was hit");
    }
    return times;
}
