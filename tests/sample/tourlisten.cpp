// tourlisten RECORDINGS SOUNDS EXPECTED: listens to what was recorded of a visit to the sample
// game.
//
// RECORDINGS is a folder with WAVE files, SOUNDS the folder of the game's own sounds. A sound
// begins somewhere when the recording from there on holds it at its own loudness: the sum of the
// products of both is that of the sound with itself, whatever else is heard meanwhile. Sounds begin
// at buffers of the mixer, which are counted anew when nothing was played for a while.
//
// EXPECTED names the sounds that must be heard, in their order, one a line; several on a line are
// alternatives. Others may be heard in between. Music comes up in two seconds and goes in one:
// +NAME is where it begins, from silence, and -NAME where it begins to fade away. Besides, nowhere
// may the recording be silent for long or clipped. The exit code is 1 when anything is wrong.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using Samples = std::vector<int>; // around 0

constexpr std::size_t kBuffer = 1024;
constexpr std::size_t kHeader = 44;
constexpr int kRate = 22050;
constexpr std::size_t kCompared = 16 * kBuffer;   ///< of a sound; the rest tells nothing new
constexpr std::size_t kLongestEffect = 4 * kRate; ///< what is longer is music
constexpr std::size_t kSilence = kRate * 3 / 4;
constexpr int kSilent = 3;
constexpr int kLimit = 126;
constexpr int kClippedRun = 8;

struct Heard {
    std::size_t at; ///< samples since the first recording began
    std::string name;
};

Samples readWave(const fs::path& file) {
    std::ifstream input(file, std::ios::binary);
    const std::string bytes(std::istreambuf_iterator<char>(input), {});
    Samples samples;
    for (std::size_t i = kHeader; i < bytes.size(); ++i)
        samples.push_back(static_cast<unsigned char>(bytes[i]) - 128);
    return samples;
}

std::map<std::string, Samples> readWaves(const fs::path& folder) {
    std::map<std::string, Samples> waves;
    for (const auto& entry : fs::directory_iterator(folder))
        if (entry.path().extension() == ".wav")
            waves[entry.path().stem().string()] = readWave(entry.path());
    return waves;
}

/// How loud `count` samples of a sound from `from` on are in the recording at `at`: 1 is their own
/// loudness. The sound is repeated without end. 0 beyond the end of the recording.
double loudness(const Samples& recording, std::size_t at, const Samples& sound, std::size_t from,
                std::size_t count) {
    if (at + count > recording.size()) return 0;
    std::int64_t heard = 0;
    std::int64_t own = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const int sample = sound[(from + i) % sound.size()];
        heard += recording[at + i] * sample;
        own += sample * sample;
    }
    return own == 0 ? 0 : static_cast<double>(heard) / static_cast<double>(own);
}

bool isMusic(const Samples& sound) { return sound.size() > kLongestEffect; }

bool isFull(double loudness) { return loudness > 0.7 && loudness < 1.4; }

/// Whether `sound` begins there. One that ends early, with the recording or by a click, is not
/// heard.
bool beginsAt(const Samples& recording, std::size_t at, const Samples& sound) {
    return isFull(loudness(recording, at, sound, 0, std::min(sound.size(), kCompared)));
}

/// A music that begins at `start`, heard for a while so many milliseconds later.
double loudnessLater(const Samples& recording, std::size_t start, const Samples& music, int ms,
                     std::size_t count = kRate / 3) {
    const std::size_t later = static_cast<std::size_t>(ms) * kRate / 1000;
    return loudness(recording, start + later, music, later, count);
}

/// Whether a music begins there and comes up.
bool comesUpAt(const Samples& recording, std::size_t at, const Samples& music) {
    if (!isFull(loudnessLater(recording, at, music, 2000, 2 * kRate))) return false;
    const double begin = loudnessLater(recording, at, music, 100);
    const double middle = loudnessLater(recording, at, music, 800);
    return begin < 0.4 && middle > begin && middle < 0.85;
}

/// Where a music that has come up begins to fade away, in milliseconds behind its begin; 0 when it
/// is heard to the end of the recording, or ends in another way.
int goesAfter(const Samples& recording, std::size_t start, const Samples& music) {
    constexpr int kStep = 50;
    const auto later = [&](int ms) { return loudnessLater(recording, start, music, ms); };
    const int end = static_cast<int>((recording.size() - start) * 1000 / kRate);
    int ms = 2300;
    while (ms < end && later(ms) > 0.25) ms += kStep;
    // Here it is nearly gone: the middle of the third of a second was three quarters of the way.
    const int begin = ms - 600;
    const double half = later(begin + 350);
    const bool hasFaded = half > 0.25 && half < 0.8 && later(begin + 1100) < 0.15;
    return ms < end && hasFaded ? begin : 0;
}

int fault(const std::string& text) {
    std::cerr << text << '\n';
    return 1;
}

int checkLoudness(const std::string& name, const Samples& recording) {
    std::size_t quiet = 0;
    int clipped = 0;
    for (const int sample : recording) {
        quiet = std::abs(sample) <= kSilent ? quiet + 1 : 0;
        clipped = std::abs(sample) >= kLimit ? clipped + 1 : 0;
        if (quiet > kSilence) return fault(name + ": silent for long");
        if (clipped > kClippedRun) return fault(name + ": clipped");
    }
    return 0;
}

/// Every line takes the first sound that fits, begins no earlier than the one before, and was not
/// taken yet: some begin in the same buffer.
int checkOrder(std::vector<Heard> heard, const fs::path& expected) {
    std::ifstream input(expected);
    if (!input) return fault(expected.string() + ": cannot be read");
    std::size_t since = 0;
    int faults = 0;
    std::string line;
    while (std::getline(input, line)) {
        std::istringstream words(line);
        const std::vector<std::string> names(std::istream_iterator<std::string>(words), {});
        if (names.empty() || names[0].starts_with('#')) continue;
        const auto found = std::ranges::find_if(heard, [&](const Heard& sound) {
            return sound.at >= since && std::ranges::find(names, sound.name) != names.end();
        });
        if (found == heard.end()) {
            faults += fault("not heard at its place: " + line);
            continue;
        }
        since = found->at;
        heard.erase(found);
    }
    return faults;
}

/// Where the music begins that comes up out of the silence from `from` to `to`; `none` if none
/// does.
std::size_t musicBegins(const Samples& recording, std::size_t from, std::size_t to,
                        const std::map<std::string, Samples>& known, std::size_t none) {
    std::size_t begin = none;
    double loudest = 0;
    for (const auto& [name, sound] : known) {
        if (!isMusic(sound)) continue;
        for (std::size_t at = from; at < to; ++at) {
            const bool mayBe = loudnessLater(recording, at, sound, 2500) > 0.5;
            if (!mayBe || !comesUpAt(recording, at, sound)) continue;
            const double full = loudnessLater(recording, at, sound, 2000, 3 * kRate);
            if (full <= loudest) continue;
            loudest = full;
            begin = at;
        }
    }
    return begin;
}

/// Where the mixer's buffers begin. The last one before a silence may be cut short.
std::vector<std::size_t> buffers(const Samples& recording,
                                 const std::map<std::string, Samples>& known) {
    std::vector<std::size_t> begins;
    std::size_t searched = 0; // up to here
    std::size_t at = 0;
    while (at < recording.size()) {
        const auto from = recording.begin() + static_cast<std::ptrdiff_t>(at);
        const auto heard = std::find_if(from, recording.end(), [](int sample) { return sample; });
        const auto end = static_cast<std::size_t>(heard - recording.begin());
        if (end > std::max(at + kBuffer / 2, searched)) {
            at = musicBegins(recording, at - std::min(at, kBuffer), end, known, at);
            searched = end;
        }
        begins.push_back(at);
        at += kBuffer;
    }
    return begins;
}

std::vector<Heard> listenTo(const Samples& recording, const std::map<std::string, Samples>& known) {
    std::vector<Heard> heard;
    for (const std::size_t at : buffers(recording, known)) {
        for (const auto& [name, sound] : known) {
            if (beginsAt(recording, at, sound)) heard.push_back({at, name});
            if (!isMusic(sound) || !comesUpAt(recording, at, sound)) continue;
            heard.push_back({at, "+" + name});
            if (const int ms = goesAfter(recording, at, sound))
                heard.push_back({at + static_cast<std::size_t>(ms) * kRate / 1000, "-" + name});
        }
    }
    std::ranges::stable_sort(heard, {}, &Heard::at);
    return heard;
}

int listen(const fs::path& recordings, const fs::path& sounds, const fs::path& expected) {
    const auto known = readWaves(sounds);
    if (known.empty()) return fault(sounds.string() + ": no sounds");
    int faults = 0;
    std::vector<Heard> heard;
    std::size_t before = 0;
    for (const auto& [name, recording] : readWaves(recordings)) {
        faults += checkLoudness(name, recording);
        for (const Heard& sound : listenTo(recording, known))
            heard.push_back({before + sound.at, sound.name});
        before += recording.size();
    }
    faults += checkOrder(heard, expected);
    if (faults > 0)
        for (const Heard& sound : heard)
            std::cerr << "heard after " << sound.at * 1000 / kRate << " ms: " << sound.name << '\n';
    return faults > 0 ? 1 : 0;
}

} // namespace

int main(int argc, char** argv) {
    if (argc == 4) return listen(argv[1], argv[2], argv[3]);
    std::cerr << "usage: tourlisten RECORDINGS SOUNDS EXPECTED\n";
    return 2;
}
