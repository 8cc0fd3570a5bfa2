#include "pictures/writepng.h"

#include "refusal.h"

#include <png.h>

namespace rsc {

using formats::Bytes;
using formats::ByteSpan;

namespace {

png_image imageOf(int width, int height, png_uint_32 format) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(width);
    image.height = static_cast<png_uint_32>(height);
    image.format = format;
    return image;
}

Bytes rgbaOf(std::span<const Pixel> pixels) {
    Bytes rgba;
    for (const auto& [colour, alpha] : pixels)
        rgba.insert(rgba.end(), {colour.red, colour.green, colour.blue, alpha});
    return rgba;
}

/// `palette` may be absent.
Bytes write(png_image image, ByteSpan pixels, const std::uint8_t* palette) {
    Bytes png(PNG_IMAGE_PNG_SIZE_MAX(image));
    png_alloc_size_t size = png.size();
    if (png_image_write_to_memory(&image, png.data(), &size, 0, pixels.data(), 0, palette) == 0)
        throw Refusal("a PNG cannot be written: " + std::string(image.message));
    png.resize(size);
    png.shrink_to_fit();
    return png;
}

} // namespace

Bytes writeIndexedPng(int width, int height, ByteSpan indices, std::span<const Pixel> palette) {
    png_image image = imageOf(width, height, PNG_FORMAT_RGBA_COLORMAP);
    image.colormap_entries = static_cast<png_uint_32>(palette.size());
    return write(image, indices, rgbaOf(palette).data());
}

Bytes writeTruecolourPng(int width, int height, std::span<const Pixel> pixels) {
    return write(imageOf(width, height, PNG_FORMAT_RGBA), rgbaOf(pixels), nullptr);
}

} // namespace rsc
