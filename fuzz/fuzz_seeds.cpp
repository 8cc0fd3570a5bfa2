// Writes what the fuzz targets start from: fuzz_seeds FOLDER makes FOLDER/library, FOLDER/map and
// FOLDER/sound, made by the builders of the tests.
#include "nebuilder.h"
#include "soundbuilder.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

using testing_support::Bytes;
using testing_support::MacSound;
using testing_support::NEBuilder;
using testing_support::RiffSound;
using testing_support::toBytes;

std::vector<Bytes> libraries() {
    std::vector<Bytes> seeds = {
        NEBuilder().build(),
        NEBuilder().add("WAVE", 1, "one").addStandard(14, 3, "icon").add("RRGB", 2, "two").build(),
        NEBuilder(0).add("ASEQ", 2001, std::string(300, 'a')).add("WAVE", 7, "x").build(),
        NEBuilder(9).addNamed("WAVE", 44, "named").addStandard(2, 1, "bits").build(),
    };
    NEBuilder many(1);
    for (int id = 1; id < 60; ++id) many.add(id % 2 ? "WAVE" : "RRGB", id / 3, std::to_string(id));
    seeds.push_back(many.build());
    return seeds;
}

std::vector<Bytes> maps() {
    const std::string main = "MAIN\n3\na.rsc\nWAVE 1\nASEQ 2\nENDFILE\nb.rsc\nRRGB 3\nENDFILE\n";
    const std::string audio = "AO: 2001  Sequence: 3  Sound: 101\nAO:-1\tSequence:0 Sound:7\r\n";
    const std::string other = "OTHER\r\n1\r\nb.rsc\r\nWAVE 1\r\nENDFILE\r\n";
    const std::string separator = "\xFF";
    return {toBytes(main), toBytes(audio), toBytes(main + separator + main + separator + other),
            toBytes(separator + other + separator + separator + audio),
            toBytes("LONG\n2147483647\nabcdefghijk.rsc\nWAVE 32767\nWAVE 1\nENDFILE")};
}

/// Behind the bytes that say how it is played; see fuzz_sound.cpp.
Bytes played(const Bytes& sound, int plays, int start, int chunk) {
    testing_support::ByteWriter out(false);
    out.u8(31).u8(100).u8(50).u16(static_cast<std::uint32_t>(start)).u16(0xFFFF);
    out.u8(static_cast<std::uint32_t>(plays)).u8(200).u8(static_cast<std::uint32_t>(chunk));
    Bytes seed = out.bytes();
    seed.insert(seed.end(), sound.begin(), sound.end());
    return seed;
}

std::vector<Bytes> sounds() {
    std::vector<std::uint8_t> data;
    for (int i = 0; i < 400; ++i) data.push_back(static_cast<std::uint8_t>(i * 7));
    const Bytes all[] = {
        RiffSound{.data = data}.build(),
        RiffSound{.rate = 11127, .before = 5, .between = 7, .data = data}.build(),
        RiffSound{.claimed = 0xFFFFFFFF, .data = data}.build(),
        MacSound{.data = data}.build(),
        MacSound{.encoding = 0xFF, .data = data}.build(),
        MacSound{.format = 2, .data = data}.build(),
        MacSound{.format = 2, .encoding = 0xFF, .data = data}.build(),
    };
    std::vector<Bytes> seeds;
    for (const Bytes& sound : all) {
        seeds.push_back(played(sound, 0, 0, 0));
        seeds.push_back(played(sound, 2, 33, 7));
    }
    return seeds;
}

bool write(const std::filesystem::path& folder, const std::vector<Bytes>& seeds) {
    std::filesystem::create_directories(folder);
    int number = 0;
    for (const Bytes& seed : seeds) {
        std::ofstream out(folder / ("seed" + std::to_string(++number)), std::ios::binary);
        out.write(reinterpret_cast<const char*>(seed.data()),
                  static_cast<std::streamsize>(seed.size()));
        if (!out) return false;
    }
    return true;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: fuzz_seeds FOLDER\n");
        return 2;
    }
    const std::filesystem::path folder = argv[1];
    const bool written = write(folder / "library", libraries()) && write(folder / "map", maps()) &&
                         write(folder / "sound", sounds());
    if (!written) std::fprintf(stderr, "%s cannot be written\n", argv[1]);
    return written ? 0 : 1;
}
