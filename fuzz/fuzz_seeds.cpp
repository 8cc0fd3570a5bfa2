// Writes what the fuzz targets start from: fuzz_seeds FOLDER makes a folder in it for each target,
// FOLDER/animation and so on, made by the builders of the tests.
#include "cursorfiles.h"
#include "formats/font/nfnt.h"
#include "formats/soundbuilder.h"
#include "nebuilder.h"
#include "platform/moviebuilder.h"
#include "trinkets/aseqbuilder.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

namespace {

using testing_support::AseqBuilder;
using testing_support::Bytes;
using testing_support::MacSound;
using testing_support::NEBuilder;
using testing_support::RiffSound;
using testing_support::toBytes;

std::vector<Bytes> libraries() {
    std::vector<Bytes> seeds = {
        NEBuilder().build(),
        NEBuilder().add("WAVE", 1, "one").add("ICON", 3, "icon").add("RRGB", 2, "two").build(),
        NEBuilder().add("ASEQ", 2001, std::string(300, 'a')).add("WAVE", 7, "x").build(),
        NEBuilder().add("WAVE", 44, "named").add("BITMAP", 1, "bits").build(),
    };
    constexpr std::size_t kShift = formats::library::kWrittenTable;
    constexpr std::size_t kFirstId = kShift + 2 + 8 + 6;
    seeds[2][kShift] = std::byte{0};
    seeds[3][kFirstId + 1] = std::byte{0};
    NEBuilder many;
    for (int id = 1; id < 60; ++id) many.add(id % 2 ? "WAVE" : "RRGB", id / 3, std::to_string(id));
    seeds.push_back(many.build());
    return seeds;
}

std::vector<Bytes> maps() {
    const std::string main = "MAIN\n3\na.rsc\nWAVE 1\nASEQ 2\nENDFILE\nb.rsc\nRRGB 3\nENDFILE\n";
    const std::string audio = "AO: 2001  Sequence: 3  Sound: 101\nAO:-1\tSequence:0 Sound:7\r\n";
    const std::string other = "OTHER\r\n1\r\nb.rsc\r\nWAVE 1\r\nENDFILE\r\n";
    const std::string progress =
        "GAME ; of all places\nPANEL 12 0 5\nCLOSE 7 5 5\nNAME 1 2 -1 255\nMUSIC 3 0 0 4 9 0\n"
        "MAP HERE 9 -5 6\nPART seenIt 5 CWS* OMA\nLEVELS OMA 1 1 1 2 2 2 3 3 3 4 4 4 5 5 5\n";
    const std::string separator = "\xFF";
    return {toBytes(main),
            toBytes(audio),
            toBytes(main + separator + main + separator + other),
            toBytes(separator + other + separator + separator + audio),
            toBytes(separator + separator + separator + separator + progress),
            toBytes("LONG\n2147483647\nabcdefghijk.rsc\nWAVE 32767\nWAVE 1\nENDFILE")};
}

/// Behind the bytes that say how it is played; see fuzz_sound.cpp.
Bytes played(const formats::Bytes& sound, int plays, int start, int chunk) {
    formats::ByteWriter out;
    out.u8(31).u8(100).u8(50).u16(start).u16(0xFFFF).u8(plays).u8(200).u8(chunk).block(sound);
    return toBytes(out.bytes());
}

std::vector<Bytes> sounds() {
    std::vector<std::uint8_t> data;
    for (int i = 0; i < 400; ++i) data.push_back(static_cast<std::uint8_t>(i * 7));
    const formats::Bytes all[] = {
        RiffSound{.data = data}.build(),
        RiffSound{.rate = 11127, .before = 5, .between = 7, .data = data}.build(),
        RiffSound{.claimed = 0xFFFFFFFF, .data = data}.build(),
        MacSound{.data = data}.build(),
        MacSound{.encoding = 0xFF, .data = data}.build(),
        MacSound{.format = 2, .data = data}.build(),
        MacSound{.format = 2, .encoding = 0xFF, .data = data}.build(),
    };
    std::vector<Bytes> seeds;
    for (const formats::Bytes& sound : all) {
        seeds.push_back(played(sound, 0, 0, 0));
        seeds.push_back(played(sound, 2, 33, 7));
    }
    return seeds;
}

/// Behind the bytes that say what is done with it; see fuzz_animation.cpp.
Bytes acted(const Bytes& animation, std::uint32_t depth, std::uint32_t how,
            std::initializer_list<std::pair<int, int>> acts) {
    formats::ByteWriter out;
    out.u8(depth / 8 - 1).u16(5).u16(3).u8(how).u8(static_cast<std::uint32_t>(acts.size()));
    for (const auto& [what, value] : acts)
        out.u8(static_cast<std::uint32_t>(what)).u16(static_cast<std::uint32_t>(value));
    Bytes seed = toBytes(out.bytes());
    seed.insert(seed.end(), animation.begin(), animation.end());
    return seed;
}

AseqBuilder smallAnimation() {
    AseqBuilder builder;
    builder.rate = 12;
    builder.x = 3;
    builder.y = -4;
    builder.depth = 7;
    builder.frame({"abbbbb", "..c...", "......"}).frame({"zz", "z.", "yx"});
    builder.sequence({{1, -2, 0, 30}, {0, 0, -500, 0}, {3, 3, 1, 40}, {0, 0, -2, 0}});
    builder.sequence({{0, 0, -4, 0}, {0, 0, -101, 6}, {0, 0, 1, 0}, {0, 0, -101, 1}, {0, 0, 0, 9}});
    builder.sequence({{0, 0, -101, 8}, {0, 0, -700, 0}, {0, 0, -2, 0}});
    return builder;
}

std::vector<Bytes> animations() {
    AseqBuilder wide;
    std::string row;
    for (int i = 0; i < 300; ++i) row += i < 260 ? static_cast<char>('a' + i % 26) : 'q';
    wide.frame({row, std::string(300, '.'), std::string(300, 'p')});
    wide.sequence({{-200, 0, 0, 1}, {0, 0, -2, 0}});
    AseqBuilder damaged = smallAnimation();
    damaged.rate = 0;
    damaged.frames.push_back({4, 3, {2, 10, 11, 251, 255, 12, 9, 0, 1, 1, 13}});
    damaged.frames.push_back({32767, 32767, {0, 250, 255, 3, 250}});
    damaged.sequence({{0, 0, 2, 5}, {0, 0, 3, 5}, {0, 0, 9, 5}});
    Bytes overlapping = smallAnimation().build();
    overlapping[14] = std::byte{8}; // the second frame lies in the rows of the first
    const Bytes files[] = {smallAnimation().build(), smallAnimation().build(std::endian::big),
                           wide.build(), damaged.build(), overlapping};
    std::vector<Bytes> seeds;
    for (const Bytes& file : files) {
        seeds.push_back(acted(file, 8, 0, {{37, 100}, {37, 60}, {29, 0}, {30, 0x0503}, {26, 0}}));
        seeds.push_back(
            acted(file, 8, 0x3C, {{24, 2}, {0, 0}, {38, 9}, {35, 0}, {10, 7}, {34, 0}}));
        seeds.push_back(acted(file, 16, 0x13, {{38, 20}, {31, 9}, {10, 5}, {29, 0}, {32, 0}}));
        seeds.push_back(acted(file, 32, 0x27, {{5, 3}, {18, 0x0104}, {38, 50}, {38, 50}, {17, 0}}));
        seeds.push_back(
            acted(file, 8, 0x24, {{22, 0x6162}, {21, 0x7A61}, {29, 0}, {14, 3}, {15, 1}}));
    }
    return seeds;
}

/// See fuzz_palette.cpp.
std::vector<Bytes> palettes() {
    Bytes palette(256 * 6);
    for (std::size_t i = 0; i < palette.size(); ++i) palette[i] = static_cast<std::byte>(i * 5);
    std::vector<Bytes> seeds;
    for (std::uint32_t depth = 0; depth < 4; ++depth)
        for (const std::uint32_t length : {0u, 1535u, 1536u, 1540u}) {
            formats::ByteWriter out;
            out.u8(depth).u8(depth * 2 + length % 2).u16(length);
            Bytes seed = toBytes(out.bytes());
            seed.insert(seed.end(), palette.begin(), palette.end());
            seed.insert(seed.end(), palette.rbegin(), palette.rend());
            seeds.push_back(std::move(seed));
        }
    return seeds;
}

/// Behind the places where it is drawn and an invisible colour; see fuzz_bitmap.cpp.
std::vector<Bytes> bitmaps() {
    const std::vector<std::uint32_t> pixels{0xFF, 252, 0x7FFF, 0x801F, 0xAA0000FF, 0x1F, 7, 252, 9};
    std::vector<Bytes> seeds;
    for (const std::uint16_t depth : {8, 16, 24, 32})
        for (const int height : {3, -3})
            for (const bool isFile : {true, false}) {
                formats::ByteWriter out;
                out.u16(2).u16(1).u8(isFile ? 1 : 0).u16(0xFFFF).u16(14).u8(0);
                out.u8(depth == 8 ? 0 : 1).u8(7).zeros(6);
                if (isFile) out.text("BM").zeros(12);
                formats::picture::writeDibHeader(out, {3, height, depth}, 0);
                for (unsigned i = 0; depth == 8 && i < 256; ++i)
                    out.u8(0x11).u8(0x22).u16(static_cast<std::uint8_t>(i));
                fuzzing::putRows(out, pixels, 3, 3, depth, false);
                Bytes seed = toBytes(out.bytes());
                seeds.push_back(std::move(seed));
            }
    return seeds;
}

/// See fuzz_cursor.cpp.
std::vector<Bytes> cursors() {
    using fuzzing::CurPicture;
    std::vector<CurPicture> pictures;
    for (const int depth : {1, 4, 8, 24, 32}) {
        CurPicture picture{.width = 5, .height = 3, .depth = depth, .hotSpot = {4, 1}};
        if (depth <= 8) picture.table.assign(std::size_t{1} << depth, 0x804020);
        picture.pixels = {1, 0, 1, 1, 0, 0, 1};
        picture.mask = {0, 1, 1, 0, 0, 1, 1};
        if (depth == 32) picture.pixels.push_back(0xFF00FF00);
        pictures.push_back(picture);
    }
    std::vector<Bytes> seeds;
    for (const CurPicture& picture : pictures) seeds.push_back(fuzzing::buildCursor({picture}));
    pictures.push_back({.width = 32, .height = 32, .depth = 1, .table = {0, 0xFFFFFF}});
    seeds.push_back(fuzzing::buildCursor(pictures));
    return seeds;
}

/// Behind the text and its place; see fuzz_font.cpp.
std::vector<Bytes> fonts() {
    const std::vector<bool> letter{0, 1, 0, 1, 0, 1, 1, 1, 1, 1, 0, 1},
        dash{0, 0, 0, 0, 1, 1, 0, 0};
    std::vector<Bytes> seeds;
    for (const int lastChar : {66, 90, 127, 255}) {
        for (const bool bigEndian : {false, true}) {
            formats::font::Font font{
                bigEndian, 0, lastChar, 3, 1, 2, {{'A', {4, 0, 3, 3, 4, letter}}}};
            if (lastChar > 126) font.glyphs[126] = {3, 0, 3, 2, 4, dash};
            Bytes seed = toBytes("BADC?B\x78");
            const Bytes record = toBytes(formats::font::write(font).value);
            seed.insert(seed.end(), record.begin(), record.end());
            seeds.push_back(std::move(seed));
        }
    }
    return seeds;
}

/// Behind what is done with them; see fuzz_datafile.cpp.
std::vector<Bytes> dataFiles() {
    const std::string moves(32, '\x07');
    const std::string globals = "informColorsWarning\n0\nGLOBAL_END\n";
    const std::string player = std::string(2980, '\0') + "playerName\nAna\nplayerScore\n12\n"
                                                         "currentLocation\nOHUB\nPLAYER_END\n";
    std::vector<Bytes> seeds;
    for (const std::string& file :
         {globals, globals + player, globals + player + player, globals + player.substr(0, 1000)})
        seeds.push_back(toBytes(moves + file));
    return seeds;
}

/// Behind what is done with them; see fuzz_movie.cpp.
std::vector<Bytes> movies() {
    using testing_support::MovieBuilder;
    std::vector<Bytes> seeds;
    for (const bool packed : {false, true})
        for (const int bits : {8, 16})
            for (const int channels : {1, 2}) {
                MovieBuilder movie{.flags = packed ? 2u : 0u};
                movie.tracks[0] = {8000, bits, channels, packed};
                for (std::size_t frame = 0; frame < 4; ++frame) {
                    MovieBuilder::Frame& added = movie.frames.emplace_back();
                    for (std::size_t i = 0;
                         i < static_cast<std::size_t>(movie.width * movie.height); ++i)
                        added.pixels.push_back(
                            static_cast<std::uint8_t>(frame == 1 ? 7 : i / 32 * i % (3 + frame)));
                    if (frame % 2 == 0) added.palette = formats::MoviePalette{{{4, 8, 12}}};
                    for (std::uint8_t i = 0; i < 80; ++i)
                        added.sounds[0].push_back(static_cast<std::uint8_t>(i * i));
                }
                if (packed) movie.ring = movie.frames.front();
                formats::ByteWriter out;
                out.u8(channels).u16(bits == 8 ? 100 : 0xFFFF).u8(12).u8(0).u16(1);
                for (int i = 0; i < 5; ++i) out.u8(13).u16(0).u8(1).u16(70);
                out.u8(2).u16(1);
                seeds.push_back(toBytes(out.block(movie.build()).bytes()));
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
    const bool written =
        write(folder / "animation", animations()) && write(folder / "bitmap", bitmaps()) &&
        write(folder / "cursor", cursors()) && write(folder / "datafile", dataFiles()) &&
        write(folder / "font", fonts()) && write(folder / "library", libraries()) &&
        write(folder / "map", maps()) && write(folder / "movie", movies()) &&
        write(folder / "palette", palettes()) && write(folder / "sound", sounds());
    if (!written) std::fprintf(stderr, "%s cannot be written\n", argv[1]);
    return written ? 0 : 1;
}
