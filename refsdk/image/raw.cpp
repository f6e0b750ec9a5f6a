#include "image/raw.h"

#include <cstring>

#include <Imath/half.h>

namespace tovi::ref::image {

namespace {

size_t rowBytes(int width, int format) { return static_cast<size_t>(width) * rawBytesPerPixel(format); }

float fromWord(uint16_t word) { return static_cast<float>(word) / 65535.0f; }

void readRawRow(const uint8_t* in, Rgba* out, int width, RawFormat format) {
    for (int column = 0; column < width; ++column) {
        Rgba& pixel = out[column];
        switch (format) {
            case RawFormat::BgraByte: {
                const uint8_t* bytes = in + 4 * column;
                pixel = {bytes[2] / 255.0f, bytes[1] / 255.0f, bytes[0] / 255.0f, bytes[3] / 255.0f};
                break;
            }
            case RawFormat::BgrByte: {
                const uint8_t* bytes = in + 3 * column;
                pixel = {bytes[2] / 255.0f, bytes[1] / 255.0f, bytes[0] / 255.0f, 1.0f};
                break;
            }
            case RawFormat::RgbaFloat: std::memcpy(&pixel, in + 16 * column, 16); break;
            case RawFormat::Rgba16Bit: {
                uint16_t words[4];
                std::memcpy(words, in + 8 * column, 8);
                pixel = {fromWord(words[0]), fromWord(words[1]), fromWord(words[2]), fromWord(words[3])};
                break;
            }
            case RawFormat::RgbaHalfFloat: {
                Imath::half halves[4];
                std::memcpy(halves, in + 8 * column, 8);
                pixel = {halves[0], halves[1], halves[2], halves[3]};
                break;
            }
        }
    }
}

void writeRawPixel(const Rgba& pixel, uint8_t* out, RawFormat format) {
    switch (format) {
        case RawFormat::BgraByte:
            out[0] = toByte(pixel.b), out[1] = toByte(pixel.g), out[2] = toByte(pixel.r), out[3] = toByte(pixel.a);
            break;
        case RawFormat::BgrByte: out[0] = toByte(pixel.b), out[1] = toByte(pixel.g), out[2] = toByte(pixel.r); break;
        case RawFormat::RgbaFloat: std::memcpy(out, &pixel, 16); break;
        case RawFormat::Rgba16Bit: {
            uint16_t words[4] = {toWord(pixel.r), toWord(pixel.g), toWord(pixel.b), toWord(pixel.a)};
            std::memcpy(out, words, 8);
            break;
        }
        case RawFormat::RgbaHalfFloat: {
            Imath::half halves[4] = {Imath::half(pixel.r), Imath::half(pixel.g), Imath::half(pixel.b),
                                     Imath::half(pixel.a)};
            std::memcpy(out, halves, 8);
            break;
        }
    }
}

}  // namespace

size_t rawBytesPerPixel(int format) {
    switch (format) {
        case static_cast<int>(RawFormat::BgraByte): return 4;
        case static_cast<int>(RawFormat::RgbaFloat): return 16;
        case static_cast<int>(RawFormat::Rgba16Bit): return 8;
        case static_cast<int>(RawFormat::BgrByte): return 3;
        case static_cast<int>(RawFormat::RgbaHalfFloat): return 8;
        default: return 0;
    }
}

ImagePtr imageFromRaw(const void* data, size_t size, int format, int width, int height, int stride) {
    if (rawBytesPerPixel(format) == 0) throw ImageError("unknown raw pixel format");
    if (width < 1 || height < 1) throw ImageError("image width and height must be at least 1");
    size_t row = rowBytes(width, format);
    if (stride < 0 || (stride != 0 && static_cast<size_t>(stride) < row)) throw ImageError("the stride is shorter than a row");
    size_t pitch = stride ? static_cast<size_t>(stride) : row;
    if (!data || size < row || (size - row) / pitch < static_cast<size_t>(height - 1)) {
        throw ImageError("the buffer is too small for the image");
    }
    ImagePtr image = createImage(width, height);
    const auto* bytes = static_cast<const uint8_t*>(data);
    for (int y = 0; y < height; ++y) {
        readRawRow(bytes + pitch * static_cast<size_t>(y), &pixelAt(*image, 0, y), width, static_cast<RawFormat>(format));
    }
    return image;
}

void imageToRaw(const ToviImage& image, void* data, size_t size, int format) {
    size_t bytesPerPixel = rawBytesPerPixel(format);
    if (bytesPerPixel == 0) throw ImageError("unknown raw pixel format");
    size_t count = pixelCount(image);
    if (!data || size / bytesPerPixel < count) throw ImageError("the buffer is too small for the image");
    auto* out = static_cast<uint8_t*>(data);
    const Rgba* pixel = pixels(image);
    for (size_t index = 0; index < count; ++index) {
        writeRawPixel(pixel[index], out + index * bytesPerPixel, static_cast<RawFormat>(format));
    }
}

size_t bitmapDataSize(const ToviImage& image, int flags, int stride, int alphaValue) {
    if (alphaValue < -1 || alphaValue > 255) throw ImageError("the alpha value must be -1 or 0..255");
    size_t row = static_cast<size_t>(image.width) * ((flags & bitmapPreserveAlpha) ? 4 : 3);
    if (stride < 0 || (stride != 0 && static_cast<size_t>(stride) < row)) throw ImageError("the stride is shorter than a row");
    return (stride ? static_cast<size_t>(stride) : row) * static_cast<size_t>(image.height);
}

void writeBitmapData(const ToviImage& image, uint8_t* out, int flags, int stride, int alphaValue) {
    size_t size = bitmapDataSize(image, flags, stride, alphaValue);
    size_t pitch = size / static_cast<size_t>(image.height);
    std::memset(out, 0, size);
    bool withAlpha = flags & bitmapPreserveAlpha;
    bool rgbOrder = flags & bitmapSwapChannels;
    for (int y = 0; y < image.height; ++y) {
        int sourceRow = (flags & bitmapReverseY) ? image.height - 1 - y : y;
        uint8_t* bytes = out + pitch * static_cast<size_t>(y);
        for (int x = 0; x < image.width; ++x) {
            const Rgba& pixel = pixelAt(image, x, sourceRow);
            bytes[0] = toByte(rgbOrder ? pixel.r : pixel.b);
            bytes[1] = toByte(pixel.g);
            bytes[2] = toByte(rgbOrder ? pixel.b : pixel.r);
            if (withAlpha) bytes[3] = alphaValue >= 0 ? static_cast<uint8_t>(alphaValue) : toByte(pixel.a);
            bytes += withAlpha ? 4 : 3;
        }
    }
}

}  // namespace tovi::ref::image
