// tourlisten RECORDINGS SOUNDS EXPECTED: listens to what was recorded of a visit to the sample
// game.
//
// RECORDINGS is a folder with WAVE files, SOUNDS the folder of the game's own sounds. A sound
// begins somewhere when the recording from there on holds it at its own loudness: the sum of the
// products of both is that of the sound with itself, whatever else is heard meanwhile. Sounds begin
// at buffers of the mixer.
//
// EXPECTED names the sounds that must be heard, in their order, one a line; several on a line are
// alternatives. Others may be heard in between. Besides, nowhere may the recording be silent for
// long or clipped. The exit code is 1 when anything is wrong.
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
constexpr std::size_t kCompared = 16 * kBuffer; ///< of a sound; the rest tells nothing new
constexpr std::size_t kSilence = kRate / 2;
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

double product(const Samples& recording, std::size_t at, const Samples& sound, std::size_t count) {
    std::int64_t sum = 0;
    for (std::size_t i = 0; i < count; ++i) sum += recording[at + i] * sound[i];
    return static_cast<double>(sum);
}

/// Whether `sound` begins there. One that ends early, with the recording or by a click, is not
/// heard.
bool beginsAt(const Samples& recording, std::size_t at, const Samples& sound) {
    const std::size_t count = std::min(sound.size(), kCompared);
    if (at + count > recording.size()) return false;
    const double part = product(recording, at, sound, count) / product(sound, 0, sound, count);
    return part > 0.7 && part < 1.4;
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
        if (quiet > kSilence) return fault(name + ": silent for half a second");
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

int listen(const fs::path& recordings, const fs::path& sounds, const fs::path& expected) {
    const auto known = readWaves(sounds);
    if (known.empty()) return fault(sounds.string() + ": no sounds");
    int faults = 0;
    std::vector<Heard> heard;
    std::size_t before = 0;
    for (const auto& [name, recording] : readWaves(recordings)) {
        faults += checkLoudness(name, recording);
        for (std::size_t at = 0; at < recording.size(); at += kBuffer)
            for (const auto& [sound, samples] : known)
                if (beginsAt(recording, at, samples)) heard.push_back({before + at, sound});
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
