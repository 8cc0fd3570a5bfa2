// What is heard, byte for byte: the engine against a plain restatement of its rules that knows
// nothing of its lists, rings and tables.
#include "soundfixture.h"

#include <algorithm>
#include <deque>
#include <random>

using testing_support::Samples;
using testing_support::SoundTest;
using testing_support::TestSound;

namespace {

/// The rules of mixing, with a device that plays what it is told.
class Model {
  public:
    Model(int size, int count, int latency, int minimum)
        : size_(size), count_(count), latency_(latency), minimum_(minimum) {}

    std::vector<int> heard;

    int addVoice(const Samples& data) {
        voices_.push_back({data});
        return static_cast<int>(voices_.size()) - 1;
    }
    void setPlays(int v, int plays) { voice(v).plays = plays; }

    void device(int bytes) {
        for (Buffer& buffer : queue_)
            for (; bytes > 0 && buffer.heard < size_; --bytes)
                heard.push_back(buffer.bytes[static_cast<std::size_t>(buffer.heard++)]);
    }

    void play(int v) {
        stop(v);
        voice(v).position = voice(v).completed = 0;
        if (voice(v).paused)
            voice(v).state = State::Paused;
        else
            start(v);
    }

    void stop(int v) {
        takeOut(v);
        voice(v).state = State::Idle;
    }

    void pause(int v) {
        if (voice(v).paused) return;
        voice(v).paused = true;
        if (!sounds(voice(v))) return;
        for (const Buffer& buffer : queue_) {
            const Part* part = partOf(buffer, v);
            if (!part) continue;
            voice(v).position = part->position;
            voice(v).completed = part->completed;
            break;
        }
        takeOut(v);
        voice(v).state = State::Paused;
    }

    void resume(int v) {
        if (!voice(v).paused) return;
        voice(v).paused = false;
        if (voice(v).state == State::Paused) start(v);
    }

    void setVolume(int v, int volume) {
        for (Buffer& buffer : queue_)
            if (const Part* part = partOf(buffer, v); part && buffer.heard < size_)
                for (int i = 0; i < part->count; ++i) {
                    const int sample = raw(v, part->position + i);
                    clip(buffer, i, scaled(sample, volume) - scaled(sample, voice(v).volume));
                }
        voice(v).volume = volume;
    }

    void service() {
        while (!queue_.empty() && queue_.front().heard == size_) queue_.pop_front();
        for (Voice& each : voices_)
            if (each.state == State::Finishing && !isQueued(each)) each.state = State::Idle;
        if (std::ranges::none_of(voices_, sounds)) queue_.clear();
        for (int i = 0; i < count_ && playing() > 0 && hasRoom(); ++i) {
            mixNew();
            const auto waiting = std::ranges::count_if(
                queue_, [this](const Buffer& buffer) { return buffer.heard < size_; });
            if (waiting >= minimum_) break;
        }
    }

  private:
    enum class State { Idle, Playing, Finishing, Paused };
    struct Voice {
        Samples data;
        int volume = 100;
        int plays = 1;
        int position = 0;
        int completed = 0;
        bool paused = false;
        State state = State::Idle;
    };
    struct Part {
        int voice;
        int position;
        int completed;
        int count;
    };
    struct Buffer {
        std::vector<int> bytes;
        std::vector<Part> parts{};
        int heard = 0;
    };

    Voice& voice(int v) { return voices_[static_cast<std::size_t>(v)]; }
    static bool sounds(const Voice& each) {
        return each.state == State::Playing || each.state == State::Finishing;
    }
    [[nodiscard]] int playing() const {
        return static_cast<int>(std::ranges::count(voices_, State::Playing, &Voice::state));
    }
    [[nodiscard]] bool hasRoom() const { return static_cast<int>(queue_.size()) < count_; }
    int raw(int v, int position) { return voice(v).data[static_cast<std::size_t>(position)]; }
    static int scaled(int sample, int volume) { return (sample - 128) * volume / 100; }
    static void clip(Buffer& buffer, int i, int difference) {
        int& byte = buffer.bytes[static_cast<std::size_t>(i)];
        byte = std::clamp(byte + difference, 0, 255);
    }
    static const Part* partOf(const Buffer& buffer, int v) {
        const auto found = std::ranges::find(buffer.parts, v, &Part::voice);
        return found == buffer.parts.end() ? nullptr : &*found;
    }
    bool isQueued(const Voice& each) {
        const int v = static_cast<int>(&each - voices_.data());
        return std::ranges::any_of(queue_, [v](const Buffer& b) { return partOf(b, v); });
    }

    /// The next part of a voice, which moves on.
    Part next(int v) {
        Voice& each = voice(v);
        const int length = static_cast<int>(each.data.size());
        const Part part{v, each.position, each.completed, std::min(size_, length - each.position)};
        each.position += part.count;
        if (each.position < length) return part;
        ++each.completed;
        if (each.plays < 0 || each.completed < each.plays)
            each.position = 0;
        else
            each.state = State::Finishing;
        return part;
    }

    void start(int v) {
        voice(v).state = State::Playing;
        int target = latency_;
        for (const Buffer& buffer : queue_) target += buffer.heard == size_;
        for (; target < static_cast<int>(queue_.size()) && voice(v).state == State::Playing;
             ++target) {
            Buffer& buffer = queue_[static_cast<std::size_t>(target)];
            const Part part = next(v);
            for (int i = 0; i < part.count; ++i)
                clip(buffer, i, scaled(raw(v, part.position + i), voice(v).volume));
            buffer.parts.push_back(part);
        }
        const int completed = voice(v).completed;
        while (voice(v).state == State::Playing && playing() == 1 && hasRoom() &&
               voice(v).completed == completed)
            mixNew();
    }

    void mixNew() {
        std::vector<int> sums(static_cast<std::size_t>(size_));
        Buffer buffer{{}};
        for (int v = 0; v < static_cast<int>(voices_.size()); ++v) {
            if (voice(v).state != State::Playing) continue;
            buffer.parts.push_back(next(v));
            for (int i = 0; i < buffer.parts.back().count; ++i)
                sums[static_cast<std::size_t>(i)] +=
                    scaled(raw(v, buffer.parts.back().position + i), voice(v).volume);
        }
        for (const int sum : sums) buffer.bytes.push_back(std::clamp(sum + 128, 0, 255));
        queue_.push_back(buffer);
    }

    void takeOut(int v) {
        if (!sounds(voice(v))) return;
        voice(v).state = State::Idle;
        if (std::ranges::none_of(voices_, sounds)) queue_.clear();
        for (Buffer& buffer : queue_)
            if (const Part* part = partOf(buffer, v)) {
                for (int i = 0; i < part->count && buffer.heard < size_; ++i)
                    clip(buffer, i, -scaled(raw(v, part->position + i), voice(v).volume));
                std::erase_if(buffer.parts, [v](const Part& each) { return each.voice == v; });
            }
    }

    int size_;
    int count_;
    int latency_;
    int minimum_;
    std::vector<Voice> voices_;
    std::deque<Buffer> queue_;
};

/// Plays the same on the engine and on the model.
class OMWaveMixTest : public SoundTest {
  protected:
    void add(const Samples& data, int mode = kOMIStreamCache) {
        sounds.push_back(make(data, mode));
        model.addVoice(data);
    }
    /// The device plays, then the engine is serviced.
    void pass(int bytes, int count = 1) {
        for (int i = 0; i < count; ++i) {
            device.play(static_cast<std::size_t>(bytes));
            model.device(bytes);
            engine.service();
            model.service();
        }
    }
    void compare() {
        const Samples expected(model.heard.begin(), model.heard.end());
        ASSERT_EQ(device.heard, expected);
    }

    Model model{kSize, 6, 2, 4};
    std::vector<TestSound> sounds;
};

TEST_F(OMWaveMixTest, RandomScenariosOfWholeAndStreamedSounds) {
    for (unsigned seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        const auto below = [&](unsigned limit) { return static_cast<int>(random() % limit); };
        sounds.clear();
        model = Model{kSize, 6, 2, 4};
        device.heard.clear();
        for (int v = 0; v < 4; ++v) {
            Samples noise(static_cast<std::size_t>(1 + below(v == 0 ? 300 : 40)));
            for (std::uint8_t& sample : noise) sample = static_cast<std::uint8_t>(random());
            add(noise, v % 3 == 0 ? kOMIStreamCache : v % 3 == 1 ? kOMIStreamBuffered : 5);
        }
        for (int step = 0; step < 400; ++step) {
            const int v = below(4);
            OMWaveSound& sound = *sounds[static_cast<std::size_t>(v)];
            const auto volume = [&](int percent) {
                sound.setVolume(percent), model.setVolume(v, percent);
            };
            const auto plays = [&](int count) {
                sound.setPlayCount(count), model.setPlays(v, count);
            };
            switch (below(9)) {
            case 0:
                EXPECT_TRUE(sound.play(true));
                model.play(v);
                break;
            case 1: sound.pause(), model.pause(v); break;
            case 2:
            case 3: sound.resume(), model.resume(v); break;
            case 4:
                if (below(4) == 0)
                    sound.stop(), model.stop(v);
                else
                    pass(below(9));
                break;
            case 5: volume(below(3) * 50); break;
            case 6: volume(below(101)); break;
            case 7: plays(below(3) == 0 ? -1 : 1 + below(3)); break;
            default: pass(below(below(5) == 0 ? 60 : 20), 1 + below(4)); break;
            }
        }
        compare();
        if (HasFatalFailure()) return;
        EXPECT_GT(device.heard.size(), 200u);
    }
}

TEST_F(OMWaveMixTest, NoSoundIsLostInASumOfMany) {
    for (int i = 0; i < 40; ++i) {
        add(Samples(100, i % 2 ? 255 : 1));
        sounds.back()->setPlayCount(kOMSoundPlayForever), model.setPlays(i, -1);
        sounds.back()->play(true), model.play(i);
    }
    pass(8, 30);
    compare();
    EXPECT_GT(std::ranges::count(device.heard, 128), 8 * 10) << "loud ones cancel out";
}

} // namespace
