// OpenEXR files.
#include <vector>

#include <Imath/half.h>
#include <OpenEXR/ImfChannelList.h>
#include <OpenEXR/ImfFrameBuffer.h>
#include <OpenEXR/ImfHeader.h>
#include <OpenEXR/ImfInputFile.h>
#include <OpenEXR/ImfOutputFile.h>

#include "image/codecs.h"

namespace tovi::ref::image {

namespace {

constexpr const char* channelNames[4] = {"R", "G", "B", "A"};

Size windowSize(const Imath::Box2i& window) {
    int64_t width = static_cast<int64_t>(window.max.x) - window.min.x + 1;
    int64_t height = static_cast<int64_t>(window.max.y) - window.min.y + 1;
    if (width < 1 || height < 1 || width > INT32_MAX || height > INT32_MAX) throw ImageError("bad EXR data window");
    return {static_cast<int>(width), static_cast<int>(height)};
}

}  // namespace

void writeExr(const ToviImage& image, const std::string& fileName, ExrChannels channels) {
    Imf::PixelType type = channels == ExrChannels::Half ? Imf::HALF : Imf::FLOAT;
    Imf::Header header(image.width, image.height);
    for (const char* name : channelNames) header.channels().insert(name, Imf::Channel(type));
    // Output slices must have their channels' type, so half channels are written from a copy.
    std::vector<Imath::half> halves;
    const char* base = reinterpret_cast<const char*>(pixels(image));
    size_t sampleSize = sizeof(float);
    if (type == Imf::HALF) {
        const float* values = &pixels(image)->r;
        halves.assign(values, values + 4 * pixelCount(image));
        base = reinterpret_cast<const char*>(halves.data());
        sampleSize = sizeof(Imath::half);
    }
    Imf::FrameBuffer frame;
    size_t pixelStride = 4 * sampleSize;
    size_t rowStride = pixelStride * static_cast<size_t>(image.width);
    for (size_t channel = 0; channel < 4; ++channel) {
        // OpenEXR takes a char* for both directions; an output file only reads through it.
        frame.insert(channelNames[channel],
                     Imf::Slice(type, const_cast<char*>(base) + channel * sampleSize, pixelStride, rowStride));
    }
    Imf::OutputFile file(fileName.c_str(), header);
    file.setFrameBuffer(frame);
    file.writePixels(image.height);
}

ImagePtr readExr(const std::string& fileName) {
    Imf::InputFile file(fileName.c_str());
    const Imath::Box2i& window = file.header().dataWindow();
    Size size = windowSize(window);
    ImagePtr image = createImage(size.width, size.height);
    Imf::FrameBuffer frame;
    char* base = reinterpret_cast<char*>(pixels(*image));
    size_t rowStride = sizeof(Rgba) * static_cast<size_t>(size.width);
    for (size_t channel = 0; channel < 4; ++channel) {
        double fill = channel == 3 ? 1.0 : 0.0;  // a file without alpha is opaque
        frame.insert(channelNames[channel], Imf::Slice::Make(Imf::FLOAT, base + channel * sizeof(float), window,
                                                              sizeof(Rgba), rowStride, 1, 1, fill));
    }
    file.setFrameBuffer(frame);
    file.readPixels(window.min.y, window.max.y);
    return image;
}

Size exrFileSize(const std::string& fileName) {
    Imf::InputFile file(fileName.c_str());
    return windowSize(file.header().dataWindow());
}

}  // namespace tovi::ref::image
