// goldencompare PICTURE EXPECTED
//
// Compares two PNG files as they are stored: size, kind, palette, every pixel. Exit code 0 when
// they are the same, 1 when they differ and it was told where, 2 when one cannot be read.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <png.h>
#include <string>
#include <vector>

namespace {

constexpr int kDifferent = 1;
constexpr int kUnreadable = 2;

struct Picture {
    int width = 0;
    int height = 0;
    int kind = 0; ///< PNG colour type
    int bits = 0; ///< of a component
    std::vector<std::uint8_t> palette;
    std::vector<std::uint8_t> pixels; ///< one byte an index or component
    std::size_t bytesPerPixel = 1;
};

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

void copyRows(png_structp png, png_infop info, Picture& picture) {
    png_bytepp rows = png_get_rows(png, info);
    const auto stride = png_get_rowbytes(png, info);
    picture.bytesPerPixel = png_get_channels(png, info);
    for (int y = 0; y < picture.height; ++y)
        picture.pixels.insert(picture.pixels.end(), rows[y], rows[y] + stride);
    png_colorp colors = nullptr;
    int count = 0;
    if (png_get_PLTE(png, info, &colors, &count) == 0) return;
    for (int i = 0; i < count; ++i)
        picture.palette.insert(picture.palette.end(),
                               {colors[i].red, colors[i].green, colors[i].blue});
}

/// False when the file is no PNG that can be read.
bool read(const char* path, Picture& picture) {
    const std::unique_ptr<std::FILE, CloseFile> file(std::fopen(path, "rb"));
    if (!file) return false;
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    bool whole = false;
    if (info && setjmp(png_jmpbuf(png)) == 0) {
        png_init_io(png, file.get());
        png_read_png(png, info, PNG_TRANSFORM_PACKING | PNG_TRANSFORM_STRIP_16, nullptr);
        picture.width = static_cast<int>(png_get_image_width(png, info));
        picture.height = static_cast<int>(png_get_image_height(png, info));
        picture.kind = png_get_color_type(png, info);
        picture.bits = png_get_bit_depth(png, info);
        copyRows(png, info, picture);
        whole = true;
    }
    png_destroy_read_struct(&png, &info, nullptr);
    return whole;
}

/// How many units of `size` bytes differ; tells the first one.
std::size_t differences(const std::vector<std::uint8_t>& a, const std::vector<std::uint8_t>& b,
                        std::size_t size, std::size_t& first) {
    std::size_t count = 0;
    for (std::size_t at = 0; at + size <= a.size(); at += size) {
        bool same = true;
        for (std::size_t i = 0; i < size; ++i) same &= a[at + i] == b[at + i];
        if (!same && count++ == 0) first = at / size;
    }
    return count;
}

std::string valueAt(const std::vector<std::uint8_t>& bytes, std::size_t unit, std::size_t size) {
    std::string text;
    for (std::size_t i = 0; i < size; ++i)
        text += (i > 0 ? "," : "") + std::to_string(bytes[unit * size + i]);
    return text;
}

int compare(const Picture& got, const Picture& wanted) {
    if (got.width != wanted.width || got.height != wanted.height || got.kind != wanted.kind ||
        got.bits != wanted.bits || got.palette.size() != wanted.palette.size() ||
        got.pixels.size() != wanted.pixels.size()) {
        std::printf("%d x %d of kind %d, expected %d x %d of kind %d\n", got.width, got.height,
                    got.kind, wanted.width, wanted.height, wanted.kind);
        return kDifferent;
    }
    int result = 0;
    std::size_t first = 0;
    constexpr std::size_t kColor = 3;
    if (const auto count = differences(got.palette, wanted.palette, kColor, first)) {
        std::printf("%zu palette entries differ, the first is %zu: %s, expected %s\n", count, first,
                    valueAt(got.palette, first, kColor).c_str(),
                    valueAt(wanted.palette, first, kColor).c_str());
        result = kDifferent;
    }
    const std::size_t size = got.bytesPerPixel;
    if (const auto count = differences(got.pixels, wanted.pixels, size, first)) {
        const auto width = static_cast<std::size_t>(got.width);
        std::printf("%zu pixels differ, the first at %zu %zu: %s, expected %s\n", count,
                    first % width, first / width, valueAt(got.pixels, first, size).c_str(),
                    valueAt(wanted.pixels, first, size).c_str());
        result = kDifferent;
    }
    return result;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("goldencompare PICTURE EXPECTED\n", stderr);
        return kUnreadable;
    }
    Picture got;
    Picture wanted;
    if (!read(argv[1], got) || !read(argv[2], wanted)) {
        std::fprintf(stderr, "%s or %s cannot be read\n", argv[1], argv[2]);
        return kUnreadable;
    }
    return compare(got, wanted);
}
