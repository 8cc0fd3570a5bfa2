// The commands of zorbet-rsc and zorbet-mps on files of a folder.
#pragma once

#include "fonts/bdf.h"
#include "formats/reading.h"
#include "library/extract.h"
#include "library/list.h"
#include "library/nelibrary.h"
#include "manifest/pack.h"
#include "pictures/picture.h"
#include "platform/temporaryfolder.h"
#include "refusal.h"
#include "zorbetmps/commandline.h"

#include <gmock/gmock.h>
#include <numeric>
#include <set>

namespace testfiles {

using rsc::Bytes;
using Pixels = std::vector<rsc::Pixel>;
using Files = std::vector<std::string>;
using testing::HasSubstr;
using testing_support::asBytes;
using testing_support::bytesOf;
using testing_support::isTold;
using testing_support::replacedAll;
using testing_support::rowsOf;

template <class Value>
std::vector<Value> join(std::vector<Value> all, const std::vector<Value>& more) {
    all.insert(all.end(), more.begin(), more.end());
    return all;
}

inline Bytes changed(Bytes bytes, std::size_t at, std::uint8_t value) {
    bytes.at(at) = value;
    return bytes;
}

inline std::string replaced(std::string text, const std::string& old, const std::string& now) {
    return text.replace(text.find(old), old.size(), now);
}

inline Files wordsOf(const std::string& text) {
    std::istringstream words(text);
    return {std::istream_iterator<std::string>(words), {}};
}

inline Bytes png(std::size_t width, const Pixels& pixels) {
    return rsc::writeTruecolourPng(static_cast<int>(width), static_cast<int>(pixels.size() / width),
                                   pixels);
}
inline Bytes indexedPng(std::size_t width, const Bytes& indices, const Pixels& palette) {
    return rsc::writeIndexedPng(static_cast<int>(width), static_cast<int>(indices.size() / width),
                                indices, palette);
}

/// Rows with "/" between them, in black, blue, red, green, yellow, white and, ".", nothing; x and X
/// are red that is just transparent, and just not.
inline Bytes drawn(const std::string& rows) {
    static const std::map<char, rsc::Pixel> kPixels = {
        {'.', {{1, 2, 3}, 0}},      {'k', {}},
        {'b', {{20, 20, 200}}},     {'r', {{200, 20, 20}}},
        {'g', {{40, 160, 60}}},     {'y', {{240, 220, 30}}},
        {'w', {{255, 255, 255}}},   {'x', {{200, 20, 20}, 127}},
        {'X', {{200, 20, 20}, 128}}};
    Pixels pixels;
    for (const char c : rows)
        if (c != '/') pixels.push_back(kPixels.at(c));
    return png(std::min(rows.find('/'), rows.size()), pixels);
}

inline Bytes wav(int rate, int channels, int bits, const Bytes& samples) {
    const auto size = static_cast<std::uint32_t>(samples.size());
    return join(formats::sound::riffHead({rate, channels, bits}, size), samples);
}

inline const rsc::Glyph kHook{4, -1, 2, 3, 3, {1, 1, 1, 1, 0, 1, 0, 0, 1}};
inline const rsc::Glyph kDash{3, 1, 1, 2, 1, {1, 1}};
inline const std::string kSmallBdf =
    rsc::writeBdf({2, 1, 0, {{1, kHook}, {3, kDash}}, {}}, "small");

constexpr std::uint16_t kNumber = 0x8000; ///< mark of an id

/// Of a library as other tools might have made it.
struct ForeignResource {
    std::string type;
    std::uint16_t id = 0;                ///< as stored
    std::int64_t offset = 0, length = 0; ///< in units, from where the data begin
    std::string name{};                  ///< instead of a number
};

/// The data, at the first unit, lie before the table, in which each has a type record of its own.
inline Bytes foreignLibrary(int shift, const std::vector<ForeignResource>& all, const Bytes& data) {
    formats::ByteWriter file, table, names;
    const auto addName = [&](const std::string& name) {
        const auto at = static_cast<std::int64_t>(4 + all.size() * 20 + names.size());
        names.u8(std::ssize(name)).text(name);
        return at;
    };
    const std::int64_t unit = 1 << shift, first = (0x40 + unit - 1) / unit;
    table.u16(shift);
    for (const auto& [type, id, offset, length, name] : all) {
        table.u16(addName(type)).u16(1).u32(0x12345678).u16(first + offset).u16(length);
        table.u16(0x1C10).u16(name.empty() ? id : addName(name)).u32(0);
    }
    table.u16(0).block(names.bytes());
    file.text("MZ").zeros(0x16).u16(0x40).zeros(0x22).u32(first * unit + std::ssize(data));
    file.block(Bytes(static_cast<std::size_t>(first * unit - 0x40), 0xEE)).block(data).text("NE");
    file.block(Bytes(0x22, 0x77)).u16(0x40).u16(0x40 + std::ssize(table.bytes()));
    return file.block(Bytes(0x18, 0x77)).block(table.bytes()).take();
}

/// What a call is refused with; empty when it is not.
template <class Call>
std::string refusalOf(Call call) {
    try {
        static_cast<void>(call());
        return {};
    } catch (const rsc::Refusal& refusal) {
        return refusal.what();
    }
}

class ToolTest : public testing::Test {
  protected:
    void write(const std::string& name, const Bytes& data) const {
        folder_.make(name, {data.begin(), data.end()});
    }
    void write(const std::string& name, const std::vector<rsc::Resource>& resources) const {
        write(name, rsc::buildNeLibrary("X", resources));
    }
    [[nodiscard]] std::string read(const std::string& name) const { return folder_.contents(name); }
    [[nodiscard]] std::filesystem::path at(const std::string& name) const {
        return folder_.path(name);
    }
    [[nodiscard]] std::vector<std::filesystem::path> paths(const Files& names) const {
        std::vector<std::filesystem::path> all;
        for (const std::string& name : names) all.push_back(at(name));
        return all;
    }
    /// The names of all files in a folder, sorted, with a blank behind each.
    [[nodiscard]] std::string namesIn(const std::string& folder) const {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(at(folder)))
            names.insert(entry.path().filename().string() + " ");
        return std::accumulate(names.begin(), names.end(), std::string());
    }

    /// Runs `command(out, errors)`; its exit code. In what it says "@/" is the folder.
    template <class Command>
    int run(Command command) {
        std::ostringstream out, errors;
        const int code = command(out, errors);
        out_ = replacedAll(out.str(), folder_.path(), "@");
        errors_ = replacedAll(errors.str(), folder_.path(), "@");
        return code;
    }
    int pack(const std::string& manifest = "game.txt", const std::string& to = "out") {
        return run([&](auto&, auto& errors) {
            return rsc::runPack({at(manifest), at(to)}, errors);
        });
    }
    int packText(const std::string& manifest) {
        folder_.make("game.txt", manifest);
        return pack();
    }
    int mps(Files arguments) {
        arguments.insert(arguments.begin(), "zorbet-mps");
        std::vector<const char*> argv;
        for (const std::string& argument : arguments) argv.push_back(argument.c_str());
        return run([&](auto& out, auto& errors) {
            return mps::run(static_cast<int>(argv.size()), argv.data(), out, errors);
        });
    }
    int list(const Files& files) {
        return run(
            [&](auto& out, auto& errors) { return rsc::runList(paths(files), out, errors); });
    }
    /// Into "out", which is emptied, if no other folder is named.
    int extract(const Files& files, rsc::ExtractOptions options = {}) {
        options.files = paths(files);
        if (options.folder.empty()) std::filesystem::remove_all(options.folder = at("out"));
        return run([&](auto& out, auto& errors) { return rsc::runExtract(options, out, errors); });
    }

    TemporaryFolder folder_;
    std::string out_, errors_;
};

} // namespace testfiles
