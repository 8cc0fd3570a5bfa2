#include "pictures/picture.h"

#include "refusal.h"

#include <png.h>

#include <algorithm>
#include <csetjmp>
#include <cstring>

namespace rsc {

using formats::Bytes;
using formats::ByteSpan;

namespace {

constexpr png_uint_32 kLargestSide = 32767; ///< what a frame can hold
constexpr std::size_t kSignatureSize = 8;
constexpr std::size_t kRgbaSize = 4;

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

/// One run of libpng. The library reports errors by a jump, so the two functions that may be left
/// that way hold nothing that would need to be destroyed.
class PngDecoder {
  public:
    explicit PngDecoder(ByteSpan bytes) : bytes_(bytes) {}
    ~PngDecoder() { png_destroy_read_struct(&png_, &info_, nullptr); }
    PngDecoder& operator=(PngDecoder&&) = delete;

    Picture decode() {
        start();
        if (!readHead()) fail();
        if (height() * width() > kMostPixels)
            throw Refusal("the picture is too large: it has " + std::to_string(width()) + "x" +
                          std::to_string(height()) + " pixels, in all at most " +
                          std::to_string(kMostPixels));
        if (!prepare()) fail();
        rowBytes_ = png_get_rowbytes(png_, info_);
        buffer_.resize(rowBytes_ * height());
        for (std::size_t y = 0; y < height(); ++y) rows_.push_back(buffer_.data() + y * rowBytes_);
        if (!readRows()) fail();
        return makePicture();
    }

  private:
    static PngDecoder& self(png_voidp pointer) { return *static_cast<PngDecoder*>(pointer); }

    static void onError(png_structp png, png_const_charp text) {
        PngDecoder& decoder = self(png_get_error_ptr(png));
        std::strncpy(decoder.error_, text, sizeof decoder.error_ - 1);
        png_longjmp(png, 1);
    }

    static void onWarning(png_structp, png_const_charp) {}

    static void onRead(png_structp png, png_bytep to, std::size_t count) {
        PngDecoder& decoder = self(png_get_io_ptr(png));
        if (count > decoder.bytes_.size() - decoder.at_) png_error(png, "the file is cut off");
        std::memcpy(to, decoder.bytes_.data() + decoder.at_, count);
        decoder.at_ += count;
    }

    [[noreturn]] void fail() const {
        throw Refusal("the PNG cannot be read: " +
                      std::string(error_[0] ? error_ : "out of memory"));
    }

    void start() {
        png_ = png_create_read_struct(PNG_LIBPNG_VER_STRING, this, onError, onWarning);
        if (png_) info_ = png_create_info_struct(png_);
        if (!info_) fail();
        png_set_read_fn(png_, this, onRead);
        png_set_user_limits(png_, kLargestSide, kLargestSide);
    }

    bool readHead() {
        if (setjmp(png_jmpbuf(png_))) return false;
        png_read_info(png_, info_);
        return true;
    }

    /// Asks for one byte a pixel from indexed files and for four from all others.
    bool prepare() {
        if (setjmp(png_jmpbuf(png_))) return false;
        indexed_ = png_get_color_type(png_, info_) == PNG_COLOR_TYPE_PALETTE;
        if (indexed_) {
            png_set_packing(png_);
        } else {
            png_set_expand(png_);
            png_set_scale_16(png_);
            png_set_gray_to_rgb(png_);
            png_set_add_alpha(png_, 0xFF, PNG_FILLER_AFTER);
        }
        png_set_interlace_handling(png_);
        png_read_update_info(png_, info_);
        return true;
    }

    bool readRows() {
        if (setjmp(png_jmpbuf(png_))) return false;
        png_read_image(png_, rows_.data());
        png_read_end(png_, nullptr);
        return true;
    }

    [[nodiscard]] std::size_t width() const { return png_get_image_width(png_, info_); }
    [[nodiscard]] std::size_t height() const { return png_get_image_height(png_, info_); }

    Picture makePicture() {
        Picture picture;
        picture.width_ = static_cast<int>(width());
        picture.height_ = static_cast<int>(height());
        if (indexed_)
            fillIndexed(picture);
        else
            fillTruecolour(picture);
        return picture;
    }

    void fillIndexed(Picture& picture) {
        png_colorp colours = nullptr;
        png_bytep alphas = nullptr;
        int count = 0;
        int alphaCount = 0;
        png_get_PLTE(png_, info_, &colours, &count);
        png_get_tRNS(png_, info_, &alphas, &alphaCount, nullptr);
        for (int i = 0; i < count; ++i) {
            const std::uint8_t alpha = i < alphaCount ? alphas[i] : std::uint8_t{255};
            picture.palette_.push_back(
                {{colours[i].red, colours[i].green, colours[i].blue}, alpha});
        }
        picture.indices_ = std::move(buffer_);
        const auto beyond = [&](std::uint8_t index) { return index >= count; };
        if (count == 0 || std::ranges::any_of(picture.indices_, beyond))
            throw Refusal("damaged PNG: a pixel lies outside of its palette; save it anew");
    }

    void fillTruecolour(Picture& picture) {
        picture.pixels_.reserve(picture.size());
        for (std::size_t i = 0; i + kRgbaSize <= buffer_.size(); i += kRgbaSize) {
            const std::uint8_t* rgba = buffer_.data() + i;
            picture.pixels_.push_back({{rgba[0], rgba[1], rgba[2]}, rgba[3]});
        }
    }

    ByteSpan bytes_;
    std::size_t at_ = 0;
    png_structp png_ = nullptr;
    png_infop info_ = nullptr;
    bool indexed_ = false;
    std::size_t rowBytes_ = 0;
    Bytes buffer_;
    std::vector<png_bytep> rows_;
    char error_[120] = {};
};

Picture Picture::fromPng(ByteSpan png) {
    if (png.size() < kSignatureSize || png_sig_cmp(png.data(), 0, kSignatureSize) != 0)
        throw Refusal("no PNG picture: save it as one");
    return PngDecoder(png).decode();
}

Bytes writeIndexedPng(int width, int height, ByteSpan indices, std::span<const Pixel> palette) {
    png_image image = imageOf(width, height, PNG_FORMAT_RGBA_COLORMAP);
    image.colormap_entries = static_cast<png_uint_32>(palette.size());
    return write(image, indices, rgbaOf(palette).data());
}

Bytes writeTruecolourPng(int width, int height, std::span<const Pixel> pixels) {
    return write(imageOf(width, height, PNG_FORMAT_RGBA), rgbaOf(pixels), nullptr);
}

} // namespace rsc
