// The commands of zorbet-rsc on files of a folder.
#pragma once

#include "fonts/bdf.h"
#include "formats/sound/wave.h"
#include "library/extract.h"
#include "library/list.h"
#include "library/nelibrary.h"
#include "manifest/pack.h"
#include "pictures/picture.h"
#include "platform/temporaryfolder.h"
#include "refusal.h"

#include <gmock/gmock.h>

#include <map>
#include <numeric>
#include <set>
#include <sstream>

namespace testfiles {

using rsc::Bytes;
using Pixels = std::vector<rsc::Pixel>;
using Files = std::vector<std::string>;
using testing::HasSubstr;

inline Bytes asBytes(std::string_view text) { return {text.begin(), text.end()}; }

inline Bytes join(std::initializer_list<Bytes> parts) {
    Bytes all;
    for (const Bytes& part : parts) all.insert(all.end(), part.begin(), part.end());
    return all;
}

inline Bytes changed(Bytes bytes, std::size_t at, std::uint8_t value) {
    bytes.at(at) = value;
    return bytes;
}

inline std::string replaced(std::string text, const std::string& old, const std::string& now) {
    return text.replace(text.find(old), old.size(), now);
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
    return join({formats::sound::riffHead({rate, channels, bits}, size), samples});
}

/// A hook, 1, and a dash, 3.
inline const std::string kSmallBdf = rsc::writeBdf(
    {2,
     1,
     0,
     {{1, {4, -1, 2, 3, 3, {1, 1, 1, 1, 0, 1, 0, 0, 1}}}, {3, {3, 1, 1, 2, 1, {1, 1}}}},
     {}},
    "small");

// Libraries as other tools might have made them: any types, names, units and places.

struct ForeignResource {
    std::string type;       ///< by name
    std::uint16_t id = 0;   ///< as stored: with the high bit for a number
    std::string name;       ///< when it has no number
    std::size_t offset = 0; ///< in units, from where the data begin
    std::size_t length = 0; ///< in units
};

/// Each resource has a type record of its own; the data begin at the unit behind the table.
inline Bytes foreignLibrary(int shift, const std::vector<ForeignResource>& resources,
                            const Bytes& data) {
    constexpr std::size_t kNe = 0x60;
    const auto tableAt = [&](std::size_t firstUnit) {
        formats::ByteWriter names;
        formats::ByteWriter table;
        const auto addName = [&](const std::string& name) {
            const std::size_t at = 2 + resources.size() * (8 + 12) + 2 + names.size();
            names.u8(std::ssize(name)).text(name);
            return static_cast<std::int64_t>(at);
        };
        table.u16(shift);
        for (const auto& [type, id, name, offset, length] : resources) {
            table.u16(addName(type)).u16(1).u32(0x12345678);
            table.u16(static_cast<std::int64_t>(firstUnit + offset))
                .u16(static_cast<std::int64_t>(length))
                .u16(0x1C10)
                .u16(name.empty() ? id : addName(name))
                .u32(0);
        }
        return table.u16(0).block(names.bytes()).take();
    };
    const std::size_t unit = std::size_t{1} << shift;
    const Bytes table = tableAt((kNe + 0x40 + tableAt(0).size() + unit - 1) / unit);
    formats::ByteWriter file; // with a program of its own
    file.text("MZ").zeros(0x16).u16(0x40).zeros(0x22).u32(kNe).block(Bytes(kNe - 0x40, 0xEE));
    file.text("NE").block(Bytes(0x22, 0x77)).u16(0x40).u16(0x40 + std::ssize(table));
    file.block(Bytes(0x18, 0x77)).block(table);
    file.block(Bytes((unit - file.size() % unit) % unit, 0xDD)).block(data);
    return file.take();
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
        std::ostringstream out;
        std::ostringstream errors;
        const int code = command(out, errors);
        out_ = out.str();
        errors_ = errors.str();
        for (std::string* text : {&out_, &errors_})
            while (text->find(folder_.path()) != std::string::npos)
                *text = replaced(*text, folder_.path(), "@");
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
    int list(const Files& files) {
        return run(
            [&](auto& out, auto& errors) { return rsc::runList(paths(files), out, errors); });
    }
    int extract(const Files& files, rsc::ExtractOptions options = {}) {
        options.files = paths(files);
        if (options.folder.empty()) options.folder = at("out");
        return run([&](auto& out, auto& errors) { return rsc::runExtract(options, out, errors); });
    }

    TemporaryFolder folder_;
    std::string out_;
    std::string errors_;
};

} // namespace testfiles
