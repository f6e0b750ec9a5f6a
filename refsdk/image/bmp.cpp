// BMP through stb_image and stb_image_write.
#include <climits>
#include <cstdlib>
#include <memory>

#include "stb_image.h"
#include "stb_image_write.h"

#include "image/codecs.h"

namespace tovi::ref::image {

namespace {

struct WriteTarget {
    Bytes* out;
    bool failed;
};

void appendBytes(void* context, void* data, int size) {
    auto* target = static_cast<WriteTarget*>(context);
    if (target->failed) return;
    try {
        auto* bytes = static_cast<uint8_t*>(data);
        target->out->insert(target->out->end(), bytes, bytes + size);
    } catch (...) {
        target->failed = true;
    }
}

struct StbRelease {
    void operator()(unsigned char* data) const { stbi_image_free(data); }
};

}  // namespace

Bytes encodeBmp(const ToviImage& image, bool alpha, bool swapChannels) {
    int channels = alpha ? 4 : 3;
    Bytes samples(pixelCount(image) * static_cast<size_t>(channels));
    ByteEncoder encode(image.outputGamma);
    const Rgba* pixel = pixels(image);
    for (size_t index = 0, count = pixelCount(image); index < count; ++index) {
        uint8_t* out = samples.data() + index * static_cast<size_t>(channels);
        out[0] = encode(swapChannels ? pixel[index].b : pixel[index].r);
        out[1] = encode(pixel[index].g);
        out[2] = encode(swapChannels ? pixel[index].r : pixel[index].b);
        if (alpha) out[3] = toByte(pixel[index].a);
    }
    Bytes encoded;
    WriteTarget target{&encoded, false};
    if (!stbi_write_bmp_to_func(appendBytes, &target, image.width, image.height, channels, samples.data()) ||
        target.failed) {
        throw ImageError("BMP encoding failed");
    }
    return encoded;
}

ImagePtr decodeBmp(const uint8_t* data, size_t size) {
    if (!data || size < 2 || data[0] != 'B' || data[1] != 'M' || size > INT_MAX) throw ImageError("not BMP data");
    int width = 0, height = 0, channels = 0;
    std::unique_ptr<unsigned char, StbRelease> samples(
        stbi_load_from_memory(data, static_cast<int>(size), &width, &height, &channels, 4));
    if (!samples) throw ImageError("corrupt BMP data");
    ImagePtr image = createImage(width, height);
    Rgba* pixel = pixels(*image);
    for (size_t index = 0, count = pixelCount(*image); index < count; ++index) {
        const unsigned char* rgba = samples.get() + index * 4;
        pixel[index] = {rgba[0] / 255.0f, rgba[1] / 255.0f, rgba[2] / 255.0f, rgba[3] / 255.0f};
    }
    return image;
}

Size bmpFileSize(const std::string& fileName) {
    OpenFile file(fileName);
    int width = 0, height = 0, channels = 0;
    if (!stbi_info_from_file(file.get(), &width, &height, &channels)) throw ImageError("unreadable BMP header");
    return {width, height};
}

}  // namespace tovi::ref::image
