#include "indexedpng.h"

#include <png.h>

namespace rsc {

namespace {

/// The size of what is written, which goes to `to` unless that is absent.
std::size_t write(png_image image, std::uint8_t* to, std::size_t room, ByteSpan indices,
                  ByteSpan palette) {
    png_alloc_size_t size = room;
    if (png_image_write_to_memory(&image, to, &size, 0, indices.data(), 0, palette.data()) == 0)
        throw Refusal("a PNG cannot be written: " + std::string(image.message));
    return size;
}

} // namespace

Bytes writeIndexedPng(int width, int height, ByteSpan indices, std::span<const Pixel> palette) {
    Bytes entries;
    for (const auto& [colour, alpha] : palette)
        entries.insert(entries.end(), {colour.red, colour.green, colour.blue, alpha});
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(width);
    image.height = static_cast<png_uint_32>(height);
    image.format = PNG_FORMAT_RGBA_COLORMAP;
    image.colormap_entries = static_cast<png_uint_32>(palette.size());
    Bytes png(PNG_IMAGE_PNG_SIZE_MAX(image));
    png.resize(write(image, png.data(), png.size(), indices, entries));
    png.shrink_to_fit();
    return png;
}

} // namespace rsc
