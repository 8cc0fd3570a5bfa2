// Movies of coloured blocks, a frame every kFrameMs milliseconds of the test's clock.
#pragma once

#include "ompp/memoryfiles.h"

#include "platform/movies.h"

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace testing_support {

struct FakeFrame {
    std::vector<std::pair<platform::Rect, int>> blocks; ///< what changes, in colour indices
    std::optional<int> red;                             ///< new: all colours have that much
};

/// Movies of 40 x 20 pixels.
class FakeMovies final : public platform::Movies {
  public:
    static constexpr int kFrameMs = 15;
    static constexpr platform::Rect kAll{0, 0, 40, 20};

    explicit FakeMovies(const MemoryClock& clock) : clock_(clock) {}

    std::map<std::string, std::vector<FakeFrame>, std::less<>> files; ///< by path
    std::vector<std::string> requests;
    int openCount = 0; ///< movies
    int running = 0;

    /// Frames of one colour each, from 'a' on.
    static std::vector<FakeFrame> plain(int count) {
        std::vector<FakeFrame> frames;
        for (int i = 0; i < count; ++i) frames.push_back({{{kAll, 'a' + i}}, std::nullopt});
        return frames;
    }
    std::unique_ptr<platform::Movie> open(const platform::MovieRequest& request) override {
        requests.push_back(std::string(request.path) + " " + std::to_string(request.extraBuffer) +
                           (request.preload ? " preloaded" : ""));
        const auto found = files.find(request.path);
        return found == files.end() ? nullptr : std::make_unique<FakeMovie>(*this, found->second);
    }

  private:
    class FakeMovie final : public platform::Movie {
      public:
        FakeMovie(FakeMovies& all, std::vector<FakeFrame> frames)
            : all_(all), frames_(std::move(frames)) {
            ++all_.openCount;
            readPalette();
        }
        ~FakeMovie() override {
            --all_.openCount;
            run(false);
        }
        int width() const override { return kAll.width(); }
        int height() const override { return kAll.height(); }
        int frameCount() const override { return static_cast<int>(frames_.size()); }
        int frameTime() const override { return 6666; }
        int frame() const override { return frame_; }
        void run(bool on) override {
            all_.running += int{on} - int{std::exchange(running_, on)};
            dueMs_ = all_.clock_.now;
        }
        bool wait() override { return !running_ || all_.clock_.now < dueMs_; }
        bool hasNewPalette() const override { return newPalette_; }
        void clearNewPalette() override { newPalette_ = false; }
        const std::array<platform::Rgb, 256>& palette() const override { return palette_; }
        void doFrame() override {
            for (const auto& [area, color] : current().blocks) {
                for (int y = area.top; y < area.bottom; ++y)
                    std::fill_n(picture_.row(y) + area.left, area.width(),
                                static_cast<std::uint8_t>(color));
                changed_.push_back(area);
            }
        }
        const platform::Surface& picture() const override { return picture_; }
        std::optional<platform::Rect> takeChanged() override {
            if (changed_.empty()) return std::nullopt;
            const platform::Rect area = changed_.back();
            changed_.pop_back();
            return area;
        }
        void nextFrame() override {
            dueMs_ += kFrameMs;
            goTo(frame_ + 1);
        }
        void goTo(int frame) override {
            frame_ = frame;
            readPalette();
        }
        void addBlitTime(std::uint32_t) override {}
        platform::MovieSummary summary() const override {
            platform::MovieSummary facts{};
            for (std::uint32_t i = 0; i < facts.size(); ++i) facts[i] = 4'000'000'000U + i;
            return facts;
        }

      private:
        const FakeFrame& current() const { return frames_[static_cast<std::size_t>(frame_)]; }
        void readPalette() {
            if (!current().red) return;
            palette_.fill({static_cast<std::uint8_t>(*current().red), 0, 0});
            newPalette_ = true;
        }

        FakeMovies& all_;
        std::vector<FakeFrame> frames_;
        platform::Surface picture_{kAll.width(), kAll.height(), 8};
        std::array<platform::Rgb, 256> palette_{};
        std::vector<platform::Rect> changed_;
        int frame_ = 0;
        bool newPalette_ = true;
        bool running_ = false;
        std::uint32_t dueMs_ = 0;
    };

    const MemoryClock& clock_;
};

} // namespace testing_support
