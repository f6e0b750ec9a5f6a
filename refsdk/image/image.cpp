#include "image/image.h"

#include <cmath>
#include <cstring>
#include <new>

#include "core/memory.h"

namespace tovi::ref::image {

void ImageRelease::operator()(ToviImage* image) const { freeBlock(image); }

ImagePtr createImage(int width, int height) {
    if (width < 1 || height < 1) throw ImageError("image width and height must be at least 1");
    size_t count = static_cast<size_t>(width) * static_cast<size_t>(height);
    if (count > (SIZE_MAX - sizeof(ToviImage)) / sizeof(Rgba)) throw std::bad_alloc();
    size_t bytes = sizeof(ToviImage) + count * sizeof(Rgba);
    auto* block = static_cast<ToviImage*>(allocateBlock(bytes));
    if (!block) throw std::bad_alloc();
    std::memset(static_cast<void*>(block), 0, bytes);
    block->width = width;
    block->height = height;
    block->outputGamma = 1.0f;
    return ImagePtr(block);
}

ImagePtr cloneImage(const ToviImage& image) {
    ImagePtr copy = createImage(image.width, image.height);
    std::memcpy(static_cast<void*>(copy.get()), &image, memorySize(image));
    return copy;
}

// The products are exact in double; in float they can round up onto the half step.
uint8_t toByte(float value) {
    if (!(value > 0.0f)) return 0;
    if (value >= 1.0f) return 255;
    return static_cast<uint8_t>(std::lround(static_cast<double>(value) * 255.0));
}

uint16_t toWord(float value) {
    if (!(value > 0.0f)) return 0;
    if (value >= 1.0f) return 65535;
    return static_cast<uint16_t>(std::lround(static_cast<double>(value) * 65535.0));
}

ByteEncoder::ByteEncoder(float gamma) : inverseGamma_(1.0f / gamma) {}

uint8_t ByteEncoder::operator()(float value) const {
    if (inverseGamma_ == 1.0f || !(value > 0.0f) || value >= 1.0f) return toByte(value);
    return toByte(std::pow(value, inverseGamma_));
}

ByteDecoder::ByteDecoder(float gamma) {
    for (int code = 0; code < 256; ++code) {
        float value = static_cast<float>(code) / 255.0f;
        table_[code] = gamma == 1.0f ? value : std::pow(value, gamma);
    }
}

}  // namespace tovi::ref::image
