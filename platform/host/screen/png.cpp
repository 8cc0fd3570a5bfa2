#include "platform/host/screen/png.h"

#include "platform/host/screen/pixels.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <png.h>
#include <span>
#include <vector>

namespace platform {

namespace {

constexpr std::size_t kRgbBytes = 3;
/// As bytes in memory, so that each pixel is 0xAARRGGBB as a number.
constexpr png_uint_32 kPictureFormat =
    std::endian::native == std::endian::little ? PNG_FORMAT_BGRA : PNG_FORMAT_ARGB;

png_image imageOf(const Surface& surface) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(surface.width());
    image.height = static_cast<png_uint_32>(surface.height());
    return image;
}

bool writeIndexed(const std::string& hostPath, const Surface& surface,
                  const std::array<Rgb, kPaletteSize>& palette) {
    std::vector<std::uint8_t> colourMap;
    for (const Rgb& colour : palette) {
        colourMap.insert(colourMap.end(), {colour.red, colour.green, colour.blue});
    }
    png_image image = imageOf(surface);
    image.format = PNG_FORMAT_RGB_COLORMAP;
    image.colormap_entries = kPaletteSize;
    return png_image_write_to_file(&image, hostPath.c_str(), 0, surface.row(0),
                                   static_cast<png_int_32>(surface.stride()),
                                   colourMap.data()) != 0;
}

std::vector<std::uint8_t> rgbBytes(const Surface& surface,
                                   const std::array<Rgb, kPaletteSize>& palette) {
    const auto width = static_cast<std::size_t>(surface.width());
    std::vector<std::uint8_t> bytes;
    bytes.reserve(kRgbBytes * width * static_cast<std::size_t>(surface.height()));
    std::vector<std::uint32_t> colours(width);
    const ColourReader reader(surface, palette);
    for (int y = 0; y < surface.height(); ++y) {
        reader.read(y, 0, colours);
        for (const std::uint32_t colour : colours) {
            bytes.push_back(static_cast<std::uint8_t>(colour >> 16));
            bytes.push_back(static_cast<std::uint8_t>(colour >> 8));
            bytes.push_back(static_cast<std::uint8_t>(colour));
        }
    }
    return bytes;
}

} // namespace

std::optional<Picture> readPng(const std::string& hostPath, int mostSide) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_file(&image, hostPath.c_str()) == 0) return std::nullopt;
    const auto most = static_cast<png_uint_32>(mostSide);
    Picture picture;
    if (image.width <= most && image.height <= most) {
        image.format = kPictureFormat;
        picture = {static_cast<int>(image.width), static_cast<int>(image.height), {}};
        picture.pixels.resize(std::size_t{image.width} * image.height);
        if (png_image_finish_read(&image, nullptr, picture.pixels.data(), 0, nullptr) != 0)
            return picture;
    }
    png_image_free(&image);
    return std::nullopt;
}

bool writePng(const std::string& hostPath, const Picture& picture) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.width);
    image.height = static_cast<png_uint_32>(picture.height);
    image.format = kPictureFormat;
    return png_image_write_to_file(&image, hostPath.c_str(), 0, picture.pixels.data(), 0,
                                   nullptr) != 0;
}

bool writePng(const std::string& hostPath, const Surface& surface,
              const std::array<Rgb, kPaletteSize>& palette) {
    if (surface.depth() == 8) return writeIndexed(hostPath, surface, palette);
    png_image image = imageOf(surface);
    image.format = PNG_FORMAT_RGB;
    const std::vector<std::uint8_t> bytes = rgbBytes(surface, palette);
    return png_image_write_to_file(&image, hostPath.c_str(), 0, bytes.data(), 0, nullptr) != 0;
}

} // namespace platform
