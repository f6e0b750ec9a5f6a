// PNG through libpng. libpng reports errors by longjmp, so every call that can fail runs in a
// function whose frame holds nothing to destroy; C++ objects live in the callers.
#include <csetjmp>
#include <cmath>
#include <cstdio>
#include <cstring>

#include <png.h>

#include "image/codecs.h"

namespace tovi::ref::image {

namespace {

void pngError(png_structp png, png_const_charp) { png_longjmp(png, 1); }
void pngWarning(png_structp, png_const_charp) {}

void appendBytes(png_structp png, png_bytep data, size_t length) {
    auto* out = static_cast<Bytes*>(png_get_io_ptr(png));
    bool failed = false;
    try {
        out->insert(out->end(), data, data + length);
    } catch (...) {
        failed = true;
    }
    if (failed) png_error(png, "out of memory");
}
void flushNothing(png_structp) {}

struct MemoryReader {
    const uint8_t* data;
    size_t size;
    size_t offset;
};

void readBytes(png_structp png, png_bytep data, size_t length) {
    auto* reader = static_cast<MemoryReader*>(png_get_io_ptr(png));
    if (reader->size - reader->offset < length) png_error(png, "truncated data");
    std::memcpy(data, reader->data + reader->offset, length);
    reader->offset += length;
}

// A write or read struct with its info struct, destroyed together.
class PngHandle {
public:
    explicit PngHandle(bool writing) : writing_(writing) {
        png_ = writing ? png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, pngError, pngWarning)
                       : png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, pngError, pngWarning);
        if (png_) info_ = png_create_info_struct(png_);
        if (!png_ || !info_) {
            release();
            throw std::bad_alloc();
        }
    }
    ~PngHandle() { release(); }
    PngHandle(const PngHandle&) = delete;
    PngHandle& operator=(const PngHandle&) = delete;
    png_structp png() const { return png_; }
    png_infop info() const { return info_; }

private:
    void release() {
        if (writing_) {
            png_destroy_write_struct(&png_, info_ ? &info_ : nullptr);
        } else {
            png_destroy_read_struct(&png_, info_ ? &info_ : nullptr, nullptr);
        }
    }
    bool writing_;
    png_structp png_ = nullptr;
    png_infop info_ = nullptr;
};

bool writeRows(png_structp png, png_infop info, int width, int height, bool alpha, bool sixteenBits, float gamma,
               png_bytepp rows) {
    if (setjmp(png_jmpbuf(png))) return false;
    png_set_IHDR(png, info, static_cast<png_uint_32>(width), static_cast<png_uint_32>(height), sixteenBits ? 16 : 8,
                 alpha ? PNG_COLOR_TYPE_RGB_ALPHA : PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    // PNG's gAMA is the exponent from light to stored value: the inverse of the output gamma.
    if (!sixteenBits && gamma != 1.0f) png_set_gAMA(png, info, 1.0 / gamma);
    png_write_info(png, info);
    png_write_image(png, rows);
    png_write_end(png, info);
    return true;
}

struct PngLayout {
    png_uint_32 width;
    png_uint_32 height;
    int bitDepth;
    double fileGamma;  // 0 without a gAMA chunk
};

// Reads the header and sets the transformations that give 8- or 16-bit RGBA rows.
bool readLayout(png_structp png, png_infop info, PngLayout* layout) {
    if (setjmp(png_jmpbuf(png))) return false;
    png_read_info(png, info);
    int colorType = png_get_color_type(png, info);
    int bitDepth = png_get_bit_depth(png, info);
    png_set_expand(png);
    if (!(colorType & PNG_COLOR_MASK_COLOR)) png_set_gray_to_rgb(png);
    if (!(colorType & PNG_COLOR_MASK_ALPHA) && !png_get_valid(png, info, PNG_INFO_tRNS)) {
        png_set_filler(png, bitDepth == 16 ? 0xffff : 0xff, PNG_FILLER_AFTER);
    }
    if (bitDepth == 16) png_set_swap(png);
    png_set_interlace_handling(png);
    png_read_update_info(png, info);
    layout->width = png_get_image_width(png, info);
    layout->height = png_get_image_height(png, info);
    layout->bitDepth = png_get_bit_depth(png, info);
    if (!png_get_gAMA(png, info, &layout->fileGamma)) layout->fileGamma = 0.0;
    return png_get_rowbytes(png, info) == static_cast<size_t>(layout->width) * 4 * (layout->bitDepth / 8);
}

bool readRows(png_structp png, png_infop info, png_bytepp rows) {
    if (setjmp(png_jmpbuf(png))) return false;
    png_read_image(png, rows);
    png_read_end(png, info);
    return true;
}

bool readSize(png_structp png, png_infop info, png_uint_32* width, png_uint_32* height) {
    if (setjmp(png_jmpbuf(png))) return false;
    png_read_info(png, info);
    *width = png_get_image_width(png, info);
    *height = png_get_image_height(png, info);
    return true;
}

}  // namespace

Bytes encodePng(const ToviImage& image, bool alpha, bool sixteenBits) {
    size_t channels = alpha ? 4 : 3;
    size_t rowBytes = static_cast<size_t>(image.width) * channels * (sixteenBits ? 2 : 1);
    Bytes samples(rowBytes * static_cast<size_t>(image.height));
    std::vector<png_bytep> rows(static_cast<size_t>(image.height));
    ByteEncoder encode(image.outputGamma);
    for (int y = 0; y < image.height; ++y) {
        uint8_t* out = samples.data() + rowBytes * static_cast<size_t>(y);
        rows[static_cast<size_t>(y)] = out;
        for (int x = 0; x < image.width; ++x) {
            const Rgba& pixel = pixelAt(image, x, y);
            const float values[4] = {pixel.r, pixel.g, pixel.b, pixel.a};
            for (size_t channel = 0; channel < channels; ++channel) {
                if (sixteenBits) {
                    uint16_t word = toWord(values[channel]);
                    *out++ = static_cast<uint8_t>(word >> 8);  // PNG samples are big-endian
                    *out++ = static_cast<uint8_t>(word & 0xff);
                } else {
                    *out++ = channel == 3 ? toByte(values[channel]) : encode(values[channel]);
                }
            }
        }
    }
    PngHandle handle(true);
    Bytes encoded;
    png_set_write_fn(handle.png(), &encoded, appendBytes, flushNothing);
    if (!writeRows(handle.png(), handle.info(), image.width, image.height, alpha, sixteenBits, image.outputGamma,
                   rows.data())) {
        throw ImageError("PNG encoding failed");
    }
    return encoded;
}

ImagePtr decodePng(const uint8_t* data, size_t size) {
    if (!data || size < 8 || png_sig_cmp(data, 0, 8) != 0) throw ImageError("not PNG data");
    PngHandle handle(false);
    MemoryReader reader{data, size, 0};
    png_set_read_fn(handle.png(), &reader, readBytes);
    PngLayout layout{};
    if (!readLayout(handle.png(), handle.info(), &layout) || layout.width > INT32_MAX || layout.height > INT32_MAX) {
        throw ImageError("unreadable PNG header");
    }
    ImagePtr image = createImage(static_cast<int>(layout.width), static_cast<int>(layout.height));
    size_t rowBytes = static_cast<size_t>(layout.width) * 4 * (layout.bitDepth / 8);
    Bytes samples(rowBytes * layout.height);
    std::vector<png_bytep> rows(layout.height);
    for (size_t y = 0; y < layout.height; ++y) rows[y] = samples.data() + rowBytes * y;
    if (!readRows(handle.png(), handle.info(), rows.data())) throw ImageError("corrupt PNG data");

    float gamma = layout.fileGamma > 0.0 ? static_cast<float>(1.0 / layout.fileGamma) : 1.0f;
    image->outputGamma = gamma;
    ByteDecoder decodeByte(gamma);
    Rgba* pixel = pixels(*image);
    for (size_t index = 0, count = pixelCount(*image); index < count; ++index) {
        float values[4];
        for (size_t channel = 0; channel < 4; ++channel) {
            if (layout.bitDepth == 16) {
                uint16_t word;
                std::memcpy(&word, samples.data() + (index * 4 + channel) * 2, 2);
                float value = static_cast<float>(word) / 65535.0f;
                values[channel] = channel == 3 || gamma == 1.0f ? value : std::pow(value, gamma);
            } else {
                uint8_t code = samples[index * 4 + channel];
                values[channel] = channel == 3 ? static_cast<float>(code) / 255.0f : decodeByte(code);
            }
        }
        pixel[index] = {values[0], values[1], values[2], values[3]};
    }
    return image;
}

Size pngFileSize(const std::string& fileName) {
    OpenFile file(fileName);
    PngHandle handle(false);
    png_init_io(handle.png(), file.get());
    png_uint_32 width = 0, height = 0;
    if (!readSize(handle.png(), handle.info(), &width, &height) || width > INT32_MAX || height > INT32_MAX) {
        throw ImageError("unreadable PNG header");
    }
    return {static_cast<int>(width), static_cast<int>(height)};
}

}  // namespace tovi::ref::image
