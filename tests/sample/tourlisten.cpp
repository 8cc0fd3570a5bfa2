// tourlisten RECORDINGS SOUNDS EXPECTED: listens to what was recorded of a visit to the sample
// game, WAVE files in a folder; SOUNDS is the folder of the game's own. A sound begins where the
// recording holds it at its own loudness: the sum of the products of both is that of the sound with
// itself, whatever else is heard meanwhile. Sounds begin at buffers of the mixer, which are counted
// anew when nothing was played for a while.
//
// EXPECTED names the sounds that must be heard, in their order; a|b are alternatives. Others may be
// heard in between. +NAME is music that comes up from silence in two seconds. Nowhere may the
// recording be silent for long or clipped. The exit code is 1 when anything is wrong.
#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <string>
#include <vector>

namespace {

using Samples = std::vector<int>; // around 0
using Waves = std::map<std::string, Samples>;

constexpr std::size_t kBuffer = 1024;
constexpr std::size_t kRate = 22050;

/// By samples since the first recording began.
using Heard = std::multimap<std::size_t, std::string>;

Waves readWaves(const std::filesystem::path& folder) {
    Waves waves;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() != ".wav") continue;
        std::ifstream input(entry.path(), std::ios::binary);
        input.ignore(44); // the header
        Samples& samples = waves[entry.path().stem().string()];
        for (char byte = 0; input.get(byte);)
            samples.push_back(static_cast<unsigned char>(byte) - 128);
    }
    return waves;
}

/// How loud `count` samples of a sound, which is repeated without end, are in a recording, so many
/// milliseconds behind its begin at `start`: 1 is their own loudness. 0 beyond the end.
double loudness(const Samples& recording, std::size_t start, const Samples& sound, int ms = 0,
                std::size_t count = kRate / 3) {
    const std::size_t later = static_cast<std::size_t>(ms) * kRate / 1000;
    if (start + later + count > recording.size()) return 0;
    std::int64_t heard = 0;
    std::int64_t own = 1;
    for (std::size_t i = later; i < later + count; ++i) {
        const int sample = sound[i % sound.size()];
        heard += recording[start + i] * sample;
        own += sample * sample;
    }
    return static_cast<double>(heard) / static_cast<double>(own);
}
bool isFull(double loudness) { return loudness > 0.7 && loudness < 1.4; }

bool isMusic(const Samples& sound) { return sound.size() > 4 * kRate; }

/// Whether a music begins there and comes up, perhaps no further than it steps back for who speaks.
bool comesUpAt(const Samples& recording, std::size_t at, const Samples& music) {
    const double full = loudness(recording, at, music, 2000, 2 * kRate);
    if (full < 0.55 || full > 1.4) return false;
    const double begin = loudness(recording, at, music, 100);
    const double middle = loudness(recording, at, music, 800);
    return begin < 0.4 && middle > begin && middle < 0.85;
}

/// Where the music begins that comes up out of the silence from `from` to `to`, or else `none`.
std::size_t musicBegins(const Samples& recording, std::size_t from, std::size_t to,
                        const Waves& known, std::size_t none) {
    double loudest = 0;
    for (const auto& [name, sound] : known) {
        for (std::size_t at = from; isMusic(sound) && at < to; ++at) {
            if (loudness(recording, at, sound, 2500) < 0.4 || !comesUpAt(recording, at, sound))
                continue;
            const double full = loudness(recording, at, sound, 2000, 3 * kRate);
            if (full > loudest) none = at;
            loudest = std::max(full, loudest);
        }
    }
    return none;
}

/// Adds the sounds of a recording, which begins there.
void listenTo(const Samples& recording, const Waves& known, std::size_t begin, Heard& heard) {
    std::size_t searched = 0; // up to here
    for (std::size_t at = 0; at < recording.size(); at += kBuffer) {
        // The last buffer before a silence may be cut short.
        std::size_t end = at;
        while (end < recording.size() && recording[end] == 0) ++end;
        if (end > std::max(at + kBuffer / 2, searched)) {
            at = musicBegins(recording, at - std::min(at, kBuffer), end, known, at);
            searched = end;
        }
        for (const auto& [name, sound] : known) {
            // One that ends early, with the recording or by a click, is not heard.
            const std::size_t compared = std::min(sound.size(), 16 * kBuffer);
            if (isFull(loudness(recording, at, sound, 0, compared)))
                heard.emplace(begin + at, name);
            if (isMusic(sound) && comesUpAt(recording, at, sound))
                heard.emplace(begin + at, "+" + name);
        }
    }
}

/// What is wrong with it, for messages.
std::string faultsOf(const Samples& recording) {
    std::size_t quiet = 0;
    int clipped = 0;
    for (const int sample : recording) {
        quiet = std::abs(sample) <= 3 ? quiet + 1 : 0;
        clipped = std::abs(sample) >= 126 ? clipped + 1 : 0;
        if (quiet > kRate * 3 / 4) return "silent for long\n";
        if (clipped > 8) return "clipped\n";
    }
    return {};
}

/// Every word takes the first sound that fits, begins no earlier than the one before, and was not
/// taken yet: some begin in the same buffer.
std::string missing(Heard heard, std::istream& expected) {
    std::size_t since = 0;
    for (std::string word; expected >> word;) {
        auto found = heard.lower_bound(since);
        while (found != heard.end() &&
               ("|" + word + "|").find("|" + found->second + "|") == word.npos)
            ++found;
        if (found == heard.end()) return "not heard at its place: " + word + "\n";
        since = found->first;
        heard.erase(found);
    }
    return {};
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 4) return 2;
    const Waves known = readWaves(argv[2]);
    std::ifstream expected(argv[3]);
    std::string faults = known.empty() || !expected ? "no sounds\n" : "";
    Heard heard;
    std::size_t before = 0;
    for (const auto& [name, recording] : readWaves(argv[1])) {
        faults += faultsOf(recording);
        listenTo(recording, known, before, heard);
        before += recording.size();
    }
    faults += missing(heard, expected);
    std::cerr << faults;
    for (const auto& [at, name] : heard)
        if (!faults.empty())
            std::cerr << "heard after " << at * 1000 / kRate << " ms: " << name << '\n';
    return faults.empty() ? 0 : 1;
}
