// What is heard, byte for byte, and which links are called when: against a plain restatement.
#include "soundfixture.h"

#include <deque>
#include <random>

using namespace testing_support;

namespace {

/// The rules of mixing, with a device that plays what it is told.
class MixModel {
  public:
    Samples heard;
    std::string events; ///< a letter for the link, the number of the sound

    void addVoice(const Samples& data) { voices_.push_back({data}); }
    void setPlays(int v, int plays) { voice(v).plays = plays; }
    [[nodiscard]] bool usesDevice() const {
        return std::ranges::any_of(voices_, [](auto& each) { return each.state != State::Idle; });
    }
    void device(int bytes) {
        for (Buffer& buffer : queue_)
            for (; bytes > 0 && buffer.heard < kSize; --bytes)
                heard.push_back(static_cast<std::uint8_t>(buffer.bytes[buffer.heard++]));
    }
    void play(int v) {
        stop(v);
        voice(v).position = 0, voice(v).completed = 0;
        voice(v).state = State::Paused;
        if (!voice(v).paused) start(v, false);
    }
    void stop(int v) {
        const bool was = voice(v).state != State::Idle;
        takeOut(v);
        voice(v).state = State::Idle;
        if (was) tellFinished(v);
    }
    void pause(int v) {
        if (std::exchange(voice(v).paused, true) || !sounds(voice(v))) return;
        for (const Buffer& buffer : queue_)
            if (const Part* part = partOf(buffer, v)) {
                voice(v).position = part->position, voice(v).completed = part->completed;
                break;
            }
        takeOut(v);
        voice(v).state = State::Paused;
        tell('p', v);
    }
    void resume(int v) {
        if (std::exchange(voice(v).paused, false) && voice(v).state == State::Paused)
            start(v, true);
    }
    void setVolume(int v, int volume) {
        for (Buffer& buffer : queue_)
            if (const Part* part = partOf(buffer, v); part && buffer.heard < kSize)
                mix(buffer, *part, {volume, -voice(v).volume});
        voice(v).volume = volume;
    }
    void service() {
        while (!queue_.empty()) {
            Buffer& head = queue_.front();
            for (Part& part : head.parts)
                if (std::exchange(part.starts, false) &&
                    !std::exchange(voice(part.voice).told, true))
                    tell('s', part.voice);
            for (Part& part : head.parts)
                if (std::exchange(part.resumes, false)) tell('r', part.voice);
            if (head.heard < kSize) break;
            const std::vector<Part> parts = head.parts;
            queue_.pop_front();
            for (const Part& part : parts)
                if (voice(part.voice).state == State::Finishing && !isQueued(part.voice)) {
                    voice(part.voice).state = State::Idle;
                    tellFinished(part.voice);
                }
        }
        if (std::ranges::none_of(voices_, sounds)) queue_.clear();
        for (std::size_t i = 0; i < kCount && playing() > 0 && queue_.size() < kCount; ++i) {
            mixNew();
            if (std::ranges::count_if(queue_, [](auto& b) { return b.heard < kSize; }) >= kMinimum)
                break;
        }
    }

  private:
    static constexpr std::size_t kSize = 8, kCount = 6, kLatency = 2;
    static constexpr int kMinimum = 4;

    enum class State { Idle, Playing, Finishing, Paused };
    struct Voice {
        Samples data;
        int volume = 100, plays = 1, completed = 0;
        std::size_t position = 0;
        bool paused = false, told = false, starts = false, resumes = false;
        State state = State::Idle;
    };
    struct Part {
        int voice, completed;
        std::size_t position, count;
        bool starts, resumes;
    };
    struct Buffer {
        std::vector<int> bytes = std::vector<int>(kSize, 128);
        std::vector<Part> parts{};
        std::size_t heard = 0;
    };

    Voice& voice(int v) { return voices_[static_cast<std::size_t>(v)]; }
    static bool sounds(const Voice& each) {
        return each.state == State::Playing || each.state == State::Finishing;
    }
    [[nodiscard]] std::ptrdiff_t playing() const {
        return std::ranges::count(voices_, State::Playing, &Voice::state);
    }
    static int scaled(int sample, int volume) { return (sample - 128) * volume / 100; }
    /// Adds a part at each of the volumes; one that is negative takes it out.
    void mix(Buffer& buffer, const Part& part, std::initializer_list<int> volumes) {
        for (std::size_t i = 0; i < part.count; ++i) {
            const int sample = voice(part.voice).data[part.position + i];
            for (const int volume : volumes) buffer.bytes[i] += scaled(sample, volume);
            buffer.bytes[i] = std::clamp(buffer.bytes[i], 0, 255);
        }
    }
    static const Part* partOf(const Buffer& buffer, int v) {
        const auto found = std::ranges::find(buffer.parts, v, &Part::voice);
        return found == buffer.parts.end() ? nullptr : &*found;
    }
    [[nodiscard]] bool isQueued(int v) const {
        return std::ranges::any_of(queue_, [v](const Buffer& b) { return partOf(b, v); });
    }
    void tell(char link, int v) { events += link + std::to_string(v); }
    void tellFinished(int v) {
        if (std::exchange(voice(v).told, false)) tell('f', v);
    }

    /// The next part of a voice, which moves on.
    Part next(int v) {
        Voice& each = voice(v);
        const Part part{v,
                        each.completed,
                        each.position,
                        std::min(kSize, each.data.size() - each.position),
                        std::exchange(each.starts, false),
                        std::exchange(each.resumes, false)};
        each.position += part.count;
        if (each.position < each.data.size()) return part;
        ++each.completed;
        if (each.plays < 0 || each.completed < each.plays)
            each.position = 0;
        else
            each.state = State::Finishing;
        return part;
    }
    void start(int v, bool resuming) {
        std::erase(order_, v);
        order_.push_back(v);
        voice(v).state = State::Playing;
        voice(v).starts = true, voice(v).resumes = resuming;
        const bool isDry = queue_.empty() || queue_.back().heard == kSize;
        std::size_t target = kLatency;
        for (const Buffer& buffer : queue_) target += buffer.heard == kSize;
        for (; target < queue_.size() && voice(v).state == State::Playing; ++target)
            add(queue_[target], v);
        const int completed = voice(v).completed;
        while (voice(v).state == State::Playing && playing() == 1 && queue_.size() < kCount &&
               voice(v).completed == completed)
            mixNew();
        if (!isDry || !resuming) return;
        for (Buffer& buffer : queue_)
            for (Part& part : buffer.parts) part.resumes = part.resumes && part.voice != v;
        voice(v).resumes = false;
        tell('r', v);
    }
    void add(Buffer& buffer, int v) {
        const Part part = next(v);
        mix(buffer, part, {voice(v).volume});
        buffer.parts.push_back(part);
    }
    void mixNew() {
        Buffer buffer;
        for (const int v : order_) {
            if (voice(v).state != State::Playing) continue;
            const Part part = next(v);
            for (std::size_t i = 0; i < part.count; ++i)
                buffer.bytes[i] += scaled(voice(v).data[part.position + i], voice(v).volume);
            buffer.parts.push_back(part);
        }
        for (int& sum : buffer.bytes) sum = std::clamp(sum, 0, 255);
        queue_.push_back(buffer);
    }
    void takeOut(int v) {
        if (!sounds(voice(v))) return;
        voice(v).state = State::Idle;
        if (std::ranges::none_of(voices_, sounds)) queue_.clear();
        for (Buffer& buffer : queue_)
            if (const Part* part = partOf(buffer, v)) {
                if (buffer.heard < kSize) mix(buffer, *part, {-voice(v).volume});
                std::erase_if(buffer.parts, [v](const Part& each) { return each.voice == v; });
            }
    }

    std::vector<Voice> voices_;
    std::vector<int> order_; ///< of their starts
    std::deque<Buffer> queue_;
};

/// Plays the same on the engine and on the model.
class OMWaveMixTest : public SoundTest {
  protected:
    void add(const Samples& data, int mode = kOMIStreamCache) {
        const std::string number = std::to_string(sounds.size());
        const auto note = [&](char link) { return [=, this] { events += link + number; }; };
        sounds.push_back(make(data, mode));
        sounds.back()->setStartedLink(note('s'));
        sounds.back()->setFinishedLink(note('f'));
        sounds.back()->setPausedLink(note('p'));
        sounds.back()->setResumedLink(note('r'));
        model.addVoice(data);
    }
    /// The device plays, then the engine is serviced.
    void pass(int bytes, int count = 1) {
        for (int i = 0; i < count; ++i) {
            device.play(static_cast<std::size_t>(bytes)), model.device(bytes);
            engine.service(), model.service();
            ASSERT_EQ(device.isOpen(), model.usesDevice());
        }
    }

    MixModel model;
    std::vector<TestSound> sounds;
    std::string events;
};

TEST_F(OMWaveMixTest, RandomScenariosOfWholeAndStreamedSounds) {
    for (unsigned seed = 0; seed < 60; ++seed) {
        std::mt19937 random(seed);
        const auto below = [&](unsigned limit) { return static_cast<int>(random() % limit); };
        sounds.clear(), device.heard.clear(), events.clear();
        engine.service();
        model = {};
        for (int v = 0; v < 4; ++v) {
            Samples noise(static_cast<std::size_t>(1 + below(v == 0 ? 300 : 40)));
            for (std::uint8_t& sample : noise) sample = static_cast<std::uint8_t>(random());
            add(noise, v % 3 == 0 ? kOMIStreamCache : v % 3 == 1 ? kOMIStreamBuffered : 5);
        }
        for (int step = 0; step < 400; ++step) {
            const int v = below(4);
            OMWaveSound& sound = *sounds[static_cast<std::size_t>(v)].sound;
            const int volume = below(2) == 0 ? below(3) * 50 : below(101);
            const int plays = below(3) == 0 ? -1 : 1 + below(3);
            switch (below(9)) {
            case 0: sound.play(true), model.play(v); break;
            case 1: sound.pause(), model.pause(v); break;
            case 2:
            case 3: sound.resume(), model.resume(v); break;
            case 4:
                if (below(4) == 0)
                    sound.stop(), model.stop(v);
                else
                    pass(below(9));
                break;
            case 5:
            case 6: sound.setVolume(volume), model.setVolume(v, volume); break;
            case 7: sound.setPlayCount(plays), model.setPlays(v, plays); break;
            default: pass(below(below(5) == 0 ? 60 : 20), 1 + below(4));
            }
            ASSERT_EQ(events, model.events) << seed << " step " << step;
        }
        ASSERT_EQ(device.heard, model.heard) << seed;
        EXPECT_GT(device.heard.size(), 200u);
    }
}

} // namespace
