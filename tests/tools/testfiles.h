// Folders and pictures for the tests of the tools.
#pragma once

#include "filesystem.h"
#include "platform/temporaryfolder.h"
#include "refusal.h"

#include <gmock/gmock.h>
#include <png.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

namespace testfiles {

struct Rgba {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    std::uint8_t alpha = 255;
};

inline rsc::Bytes writePng(png_image& image, const void* pixels, const void* palette) {
    png_alloc_size_t size = 0;
    EXPECT_TRUE(png_image_write_to_memory(&image, nullptr, &size, 0, pixels, 0, palette));
    rsc::Bytes png(size);
    EXPECT_TRUE(png_image_write_to_memory(&image, png.data(), &size, 0, pixels, 0, palette));
    png.resize(size);
    return png;
}

inline png_image pngImage(int width, std::size_t pixels, png_uint_32 format) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(width);
    image.height = static_cast<png_uint_32>(pixels / static_cast<std::size_t>(width));
    image.format = format;
    return image;
}

inline rsc::Bytes truecolourPng(int width, const std::vector<Rgba>& pixels) {
    png_image image = pngImage(width, pixels.size(), PNG_FORMAT_RGBA);
    return writePng(image, pixels.data(), nullptr);
}

inline rsc::Bytes indexedPng(int width, const rsc::Bytes& pixels,
                             const std::vector<Rgba>& palette) {
    png_image image = pngImage(width, pixels.size(), PNG_FORMAT_RGBA_COLORMAP);
    image.colormap_entries = static_cast<png_uint_32>(palette.size());
    return writePng(image, pixels.data(), palette.data());
}

inline rsc::Bytes asBytes(std::string_view text) { return {text.begin(), text.end()}; }

inline rsc::Bytes join(std::initializer_list<rsc::Bytes> parts) {
    rsc::Bytes all;
    for (const rsc::Bytes& part : parts) all.insert(all.end(), part.begin(), part.end());
    return all;
}

inline rsc::Bytes words(std::initializer_list<std::size_t> values) {
    formats::ByteWriter out;
    for (const std::size_t value : values) out.u16(static_cast<std::int64_t>(value));
    return out.take();
}

inline rsc::Bytes chunk(std::string_view tag, const rsc::Bytes& data) {
    return formats::ByteWriter().text(tag).u32(std::ssize(data)).block(data).padTo(2).take();
}

inline rsc::Bytes wavFile(std::size_t rate, std::size_t channels, std::size_t bits,
                          const rsc::Bytes& samples) {
    const std::size_t point = channels * bits / 8;
    const rsc::Bytes format = words({1, channels, rate, 0, 0, 0, point, bits});
    return chunk("RIFF", join({asBytes("WAVE"), chunk("fmt ", format), chunk("LIST", rsc::Bytes(3)),
                               chunk("data", samples)}));
}

inline rsc::Bytes changed(rsc::Bytes bytes, std::size_t at, std::uint8_t value) {
    bytes.at(at) = value;
    return bytes;
}

/// A folder of its own that is removed at the end.
struct TestFolder : TemporaryFolder {
    [[nodiscard]] std::filesystem::path at(const std::string& name) const { return path(name); }
    void write(const std::string& name, const rsc::Bytes& data) const {
        make(name, {data.begin(), data.end()});
    }
    void write(const std::string& name, std::string_view text) const {
        make(name, std::string(text));
    }
    [[nodiscard]] std::string read(const std::string& name) const { return contents(name); }
};

/// "LINE: TEXT" of the refusal that a call ends with; empty when it does not.
inline std::string refusalOf(const std::function<void()>& call) {
    try {
        call();
        return {};
    } catch (const rsc::Refusal& refusal) {
        return std::to_string(refusal.line()) + ": " + refusal.what();
    }
}

struct Damage {
    std::size_t at;
    std::uint8_t value;
    std::string text; ///< part of the refusal
};
struct Change {
    std::string old;
    std::string now;
    std::string text; ///< part of the refusal; empty: it is taken
};

inline std::string replaced(std::string text, const std::string& old, const std::string& now) {
    return text.replace(text.find(old), old.size(), now);
}

/// Data are refused with any one of these bytes, and when they are cut off anywhere.
inline void expectRefused(const rsc::Bytes& data, const std::vector<Damage>& damages,
                          const std::function<void(const rsc::Bytes&)>& read) {
    for (const Damage& row : damages)
        EXPECT_THAT(refusalOf([&] { read(changed(data, row.at, row.value)); }),
                    testing::HasSubstr(row.text))
            << row.at;
    for (std::size_t size = 0; size < data.size(); ++size)
        EXPECT_THROW(read(rsc::Bytes(data.begin(), data.begin() + static_cast<long>(size))),
                     rsc::Refusal)
            << size;
}

/// A text is refused with any one of these changes.
inline void expectRefused(const std::string& text, const std::vector<Change>& changes,
                          const std::function<void(const std::string&)>& read) {
    for (const Change& row : changes) {
        const std::string refusal = refusalOf([&] { read(replaced(text, row.old, row.now)); });
        EXPECT_EQ(refusal.empty(), row.text.empty()) << row.now;
        EXPECT_THAT(refusal, testing::HasSubstr(row.text)) << row.now;
    }
}

/// The names of all files in a folder, sorted.
inline std::vector<std::string> namesIn(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace testfiles
