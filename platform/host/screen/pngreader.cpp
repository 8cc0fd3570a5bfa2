#include "platform/host/screen/pngreader.h"

#include <bit>
#include <png.h>

namespace platform {

std::optional<Picture> readPng(const std::string& hostPath, int mostSide) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_file(&image, hostPath.c_str()) == 0) return std::nullopt;
    const auto most = static_cast<png_uint_32>(mostSide);
    Picture picture;
    if (image.width <= most && image.height <= most) {
        // As bytes in memory, so that each pixel is 0xAARRGGBB as a number.
        image.format =
            std::endian::native == std::endian::little ? PNG_FORMAT_BGRA : PNG_FORMAT_ARGB;
        picture = {static_cast<int>(image.width), static_cast<int>(image.height), {}};
        picture.pixels.resize(std::size_t{image.width} * image.height);
        if (png_image_finish_read(&image, nullptr, picture.pixels.data(), 0, nullptr) != 0)
            return picture;
    }
    png_image_free(&image);
    return std::nullopt;
}

} // namespace platform
