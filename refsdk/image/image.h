// The SDK's image: a float RGBA raster, rows top first, straight (not premultiplied) alpha.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <stdexcept>

#include "tovi_sdk.h"

// An image handle is one block of the SDK allocator: this header, then the pixels. The caller
// therefore releases an image with C_memory_free like any other block the SDK hands out.
struct ToviImage {
    int32_t width;
    int32_t height;
    float outputGamma;  // of 8-bit encodings; 1 leaves the values as they are
    int32_t reserved;
    void* allocatorData;  // the producing renderer's host pointer, or null
    uint64_t padding;     // keeps the pixels that follow 16-byte aligned
};
static_assert(sizeof(ToviImage) == 32, "the pixels follow the header at a 16-byte boundary");

namespace tovi::ref::image {

struct Rgba {
    float r, g, b, a;
};
static_assert(sizeof(Rgba) == 16, "pixels are four packed floats");

struct Size {
    int width;
    int height;
};

// Codec and argument failures; the entries turn them into their failure values.
class ImageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct ImageRelease {
    void operator()(ToviImage* image) const;
};
using ImagePtr = std::unique_ptr<ToviImage, ImageRelease>;

// Transparent black, output gamma 1. Throws ImageError for a size below 1 and std::bad_alloc
// when the allocator refuses.
ImagePtr createImage(int width, int height);
ImagePtr cloneImage(const ToviImage& image);

inline size_t pixelCount(const ToviImage& image) {
    return static_cast<size_t>(image.width) * static_cast<size_t>(image.height);
}
inline Rgba* pixels(ToviImage& image) { return reinterpret_cast<Rgba*>(&image + 1); }
inline const Rgba* pixels(const ToviImage& image) { return reinterpret_cast<const Rgba*>(&image + 1); }
inline Rgba& pixelAt(ToviImage& image, int x, int y) {
    return pixels(image)[static_cast<size_t>(y) * static_cast<size_t>(image.width) + static_cast<size_t>(x)];
}
inline const Rgba& pixelAt(const ToviImage& image, int x, int y) {
    return pixels(image)[static_cast<size_t>(y) * static_cast<size_t>(image.width) + static_cast<size_t>(x)];
}
inline size_t memorySize(const ToviImage& image) { return sizeof(ToviImage) + pixelCount(image) * sizeof(Rgba); }

// Quantisation shared by the 8- and 16-bit encoders and the raw formats: values are clamped to
// [0, 1] (NaN counts as 0) and rounded to the nearest step.
uint8_t toByte(float value);
uint16_t toWord(float value);
// The 8-bit step of a colour channel under an output gamma: value^(1/gamma), then toByte.
class ByteEncoder {
public:
    explicit ByteEncoder(float gamma);
    uint8_t operator()(float value) const;

private:
    float inverseGamma_;
};
// The inverse: the float that the 8-bit code stands for under an output gamma, (code/255)^gamma.
class ByteDecoder {
public:
    explicit ByteDecoder(float gamma);
    float operator()(uint8_t code) const { return table_[code]; }

private:
    float table_[256];
};

}  // namespace tovi::ref::image
