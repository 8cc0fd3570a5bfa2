#include "goldenpicture.h"

#include <csetjmp>
#include <cstdio>
#include <memory>
#include <png.h>

namespace golden {

namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

/// What libpng keeps while a file is read.
struct Reading {
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png ? png_create_info_struct(png) : nullptr;

    Reading() = default;
    Reading(const Reading&) = delete;
    Reading& operator=(const Reading&) = delete;
    ~Reading() { png_destroy_read_struct(&png, &info, nullptr); }
};

/// False after an error, which libpng has told. Has nothing that a jump would leave behind.
bool readAll(const Reading& reading, std::FILE* file) {
    if (setjmp(png_jmpbuf(reading.png)) != 0) return false;
    png_init_io(reading.png, file);
    png_read_png(reading.png, reading.info, PNG_TRANSFORM_IDENTITY, nullptr);
    return true;
}

std::optional<Picture> refused(const std::string& file, const char* why) {
    std::fprintf(stderr, "%s %s\n", file.c_str(), why);
    return std::nullopt;
}

void takePalette(const Reading& reading, Picture& picture) {
    png_colorp colors = nullptr;
    int count = 0;
    png_get_PLTE(reading.png, reading.info, &colors, &count);
    for (int i = 0; i < count; ++i)
        picture.palette.at(static_cast<std::size_t>(i)) =
            rgb(colors[i].red, colors[i].green, colors[i].blue);
}

void takePixels(const Reading& reading, Picture& picture) {
    const png_bytepp rows = png_get_rows(reading.png, reading.info);
    for (int y = 0; y < picture.height; ++y) {
        const png_byte* at = rows[y];
        for (int x = 0; x < picture.width; ++x, at += picture.indexed ? 1 : 3)
            picture.pixels.push_back(picture.indexed ? *at : rgb(at[0], at[1], at[2]));
    }
}

} // namespace

std::optional<Picture> readPicture(const std::string& file) {
    const std::unique_ptr<std::FILE, CloseFile> input(std::fopen(file.c_str(), "rb"));
    if (!input) return refused(file, "cannot be opened");
    const Reading reading;
    if (!reading.info || !readAll(reading, input.get())) return refused(file, "cannot be read");
    const int kind = png_get_color_type(reading.png, reading.info);
    if (png_get_bit_depth(reading.png, reading.info) != 8 ||
        (kind != PNG_COLOR_TYPE_PALETTE && kind != PNG_COLOR_TYPE_RGB))
        return refused(file, "is neither indexed nor RGB with 8 bits");

    Picture picture;
    picture.width = static_cast<int>(png_get_image_width(reading.png, reading.info));
    picture.height = static_cast<int>(png_get_image_height(reading.png, reading.info));
    picture.indexed = kind == PNG_COLOR_TYPE_PALETTE;
    if (picture.indexed) takePalette(reading, picture);
    takePixels(reading, picture);
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
