#include "goldenpicture.h"

#include <cstdio>
#include <png.h>

namespace golden {

std::optional<Picture> readPicture(const std::string& file) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    const auto refused = [&](const char* why) {
        std::fprintf(stderr, "%s: %s\n", file.c_str(), why);
        png_image_free(&image);
        return std::nullopt;
    };
    if (png_image_begin_read_from_file(&image, file.c_str()) == 0) return refused(image.message);
    if ((image.format & (PNG_FORMAT_FLAG_ALPHA | PNG_FORMAT_FLAG_LINEAR)) != 0)
        return refused("is neither indexed nor RGB with 8 bits");
    Picture picture;
    picture.width = static_cast<int>(image.width);
    picture.height = static_cast<int>(image.height);
    picture.indexed = (image.format & PNG_FORMAT_FLAG_COLORMAP) != 0;
    image.format = picture.indexed ? PNG_FORMAT_RGB_COLORMAP : PNG_FORMAT_RGB;
    std::vector<std::uint8_t> bytes(PNG_IMAGE_SIZE(image));
    std::array<std::uint8_t, 3 * 256> colors{};
    if (png_image_finish_read(&image, nullptr, bytes.data(), 0, colors.data()) == 0)
        return refused(image.message);
    if (picture.indexed) {
        picture.pixels.assign(bytes.begin(), bytes.end());
        for (std::size_t i = 0; i < picture.palette.size(); ++i)
            picture.palette[i] = rgb(colors[3 * i], colors[3 * i + 1], colors[3 * i + 2]);
    }
    for (std::size_t i = 0; !picture.indexed && i < bytes.size(); i += 3)
        picture.pixels.push_back(rgb(bytes[i], bytes[i + 1], bytes[i + 2]));
    return picture;
}

bool writePicture(const std::string& file, const Picture& picture) {
    std::vector<std::uint8_t> bytes;
    bytes.reserve(picture.pixels.size() * 3);
    for (const std::uint32_t color : picture.pixels)
        for (const int part : {red(color), green(color), blue(color)})
            bytes.push_back(static_cast<std::uint8_t>(part));
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.width);
    image.height = static_cast<png_uint_32>(picture.height);
    image.format = PNG_FORMAT_RGB;
    return png_image_write_to_file(&image, file.c_str(), 0, bytes.data(), 0, nullptr) != 0;
}

} // namespace golden
