// Folders and pictures for the tests of the tools.
#pragma once

#include "bytes.h"
#include "platform/display.h"

#include <gtest/gtest.h>
#include <png.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
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

/// A folder of its own that is removed at the end.
class TestFolder {
  public:
    TestFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "zorbet-test-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
        path_ = name;
    }
    ~TestFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;

    [[nodiscard]] std::filesystem::path at(const std::string& name) const { return path_ / name; }

    void write(const std::string& name, const rsc::Bytes& data) const {
        std::ofstream(at(name), std::ios::binary)
            .write(reinterpret_cast<const char*>(data.data()), std::ssize(data));
    }
    void write(const std::string& name, std::string_view text) const {
        write(name, rsc::Bytes(text.begin(), text.end()));
    }
    [[nodiscard]] std::string read(const std::string& name) const {
        std::ifstream in(at(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }

  private:
    std::filesystem::path path_;
};

/// The names of all files in a folder, sorted.
inline std::vector<std::string> namesIn(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace testfiles
