// TIFF through libtiff. Its messages go to a per-file handler instead of the process's stderr.
#include <algorithm>
#include <cstring>
#include <memory>

#include <tiffio.h>

#include "image/codecs.h"

namespace tovi::ref::image {

namespace {

int ignoreMessage(TIFF*, void*, const char*, const char*, va_list) { return 1; }

struct TiffClose {
    void operator()(TIFF* tiff) const { TIFFClose(tiff); }
};
using TiffPtr = std::unique_ptr<TIFF, TiffClose>;

TiffPtr openTiff(const std::string& fileName, const char* mode) {
    std::unique_ptr<TIFFOpenOptions, void (*)(TIFFOpenOptions*)> options(TIFFOpenOptionsAlloc(), TIFFOpenOptionsFree);
    if (!options) throw std::bad_alloc();
    TIFFOpenOptionsSetErrorHandlerExtR(options.get(), ignoreMessage, nullptr);
    TIFFOpenOptionsSetWarningHandlerExtR(options.get(), ignoreMessage, nullptr);
    TiffPtr tiff(TIFFOpenExt(fileName.c_str(), mode, options.get()));
    if (!tiff) throw ImageError("cannot open the TIFF file");
    return tiff;
}

template <typename Value>
Value field(TIFF* tiff, ttag_t tag) {
    Value value{};
    TIFFGetFieldDefaulted(tiff, tag, &value);
    return value;
}

// Files with 1 to 4 contiguous channels of 8, 16 or 32 bits in strips; anything else is
// read through libtiff's 8-bit RGBA reader.
bool readsDirectly(TIFF* tiff) {
    auto bits = field<uint16_t>(tiff, TIFFTAG_BITSPERSAMPLE);
    auto format = field<uint16_t>(tiff, TIFFTAG_SAMPLEFORMAT);
    auto samples = field<uint16_t>(tiff, TIFFTAG_SAMPLESPERPIXEL);
    auto photometric = field<uint16_t>(tiff, TIFFTAG_PHOTOMETRIC);
    bool known = (format == SAMPLEFORMAT_UINT && (bits == 8 || bits == 16)) || (format == SAMPLEFORMAT_IEEEFP && bits == 32);
    bool colour = (photometric == PHOTOMETRIC_RGB && samples >= 3) || (photometric == PHOTOMETRIC_MINISBLACK && samples >= 1);
    return known && colour && samples <= 4 && !TIFFIsTiled(tiff) &&
           field<uint16_t>(tiff, TIFFTAG_PLANARCONFIG) == PLANARCONFIG_CONTIG;
}

void readScanlines(TIFF* tiff, ToviImage& image) {
    auto bits = field<uint16_t>(tiff, TIFFTAG_BITSPERSAMPLE);
    auto samples = field<uint16_t>(tiff, TIFFTAG_SAMPLESPERPIXEL);
    bool grey = field<uint16_t>(tiff, TIFFTAG_PHOTOMETRIC) == PHOTOMETRIC_MINISBLACK;
    int colourSamples = grey ? 1 : 3;
    bool alpha = samples > colourSamples;
    Bytes row(static_cast<size_t>(TIFFScanlineSize64(tiff)));
    size_t sampleBytes = bits / 8;
    if (row.size() < static_cast<size_t>(image.width) * samples * sampleBytes) throw ImageError("corrupt TIFF layout");
    for (int y = 0; y < image.height; ++y) {
        if (TIFFReadScanline(tiff, row.data(), static_cast<uint32_t>(y), 0) < 0) throw ImageError("corrupt TIFF data");
        for (int x = 0; x < image.width; ++x) {
            float values[4];
            for (int sample = 0; sample < samples; ++sample) {
                const uint8_t* at = row.data() + (static_cast<size_t>(x) * samples + sample) * sampleBytes;
                if (bits == 8) {
                    values[sample] = *at / 255.0f;
                } else if (bits == 16) {
                    uint16_t word;
                    std::memcpy(&word, at, 2);
                    values[sample] = word / 65535.0f;
                } else {
                    std::memcpy(&values[sample], at, 4);
                }
            }
            float opacity = alpha ? values[colourSamples] : 1.0f;
            pixelAt(image, x, y) = grey ? Rgba{values[0], values[0], values[0], opacity}
                                        : Rgba{values[0], values[1], values[2], opacity};
        }
    }
}

void readRgba(TIFF* tiff, ToviImage& image) {
    std::vector<uint32_t> packed(pixelCount(image));
    if (!TIFFReadRGBAImageOriented(tiff, static_cast<uint32_t>(image.width), static_cast<uint32_t>(image.height),
                                   packed.data(), ORIENTATION_TOPLEFT, 0)) {
        throw ImageError("corrupt TIFF data");
    }
    // libtiff's RGBA reader premultiplies; the image keeps straight alpha.
    Rgba* pixel = pixels(image);
    for (size_t index = 0; index < packed.size(); ++index) {
        uint32_t value = packed[index];
        float alpha = TIFFGetA(value) / 255.0f;
        float unmultiply = alpha > 0.0f ? 1.0f / (alpha * 255.0f) : 1.0f / 255.0f;
        pixel[index] = {std::min(1.0f, TIFFGetR(value) * unmultiply), std::min(1.0f, TIFFGetG(value) * unmultiply),
                        std::min(1.0f, TIFFGetB(value) * unmultiply), alpha};
    }
}

Size imageSize(TIFF* tiff) {
    auto width = field<uint32_t>(tiff, TIFFTAG_IMAGEWIDTH);
    auto height = field<uint32_t>(tiff, TIFFTAG_IMAGELENGTH);
    if (width < 1 || height < 1 || width > INT32_MAX || height > INT32_MAX) throw ImageError("bad TIFF image size");
    return {static_cast<int>(width), static_cast<int>(height)};
}

}  // namespace

void writeTiff(const ToviImage& image, const std::string& fileName, int bitsPerChannel) {
    if (bitsPerChannel != 8 && bitsPerChannel != 16 && bitsPerChannel != 32) {
        throw ImageError("TIFF channels have 8, 16 or 32 bits");
    }
    TiffPtr tiff = openTiff(fileName, "w");
    uint16_t extra[] = {EXTRASAMPLE_UNASSALPHA};
    TIFFSetField(tiff.get(), TIFFTAG_IMAGEWIDTH, static_cast<uint32_t>(image.width));
    TIFFSetField(tiff.get(), TIFFTAG_IMAGELENGTH, static_cast<uint32_t>(image.height));
    TIFFSetField(tiff.get(), TIFFTAG_SAMPLESPERPIXEL, 4);
    TIFFSetField(tiff.get(), TIFFTAG_EXTRASAMPLES, 1, extra);
    TIFFSetField(tiff.get(), TIFFTAG_BITSPERSAMPLE, bitsPerChannel);
    TIFFSetField(tiff.get(), TIFFTAG_SAMPLEFORMAT, bitsPerChannel == 32 ? SAMPLEFORMAT_IEEEFP : SAMPLEFORMAT_UINT);
    TIFFSetField(tiff.get(), TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB);
    TIFFSetField(tiff.get(), TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(tiff.get(), TIFFTAG_COMPRESSION, COMPRESSION_ADOBE_DEFLATE);
    TIFFSetField(tiff.get(), TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
    TIFFSetField(tiff.get(), TIFFTAG_ROWSPERSTRIP, TIFFDefaultStripSize(tiff.get(), 0));
    size_t sampleBytes = static_cast<size_t>(bitsPerChannel) / 8;
    Bytes row(static_cast<size_t>(image.width) * 4 * sampleBytes);
    ByteEncoder encode(image.outputGamma);
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x) {
            const Rgba& pixel = pixelAt(image, x, y);
            const float values[4] = {pixel.r, pixel.g, pixel.b, pixel.a};
            uint8_t* at = row.data() + static_cast<size_t>(x) * 4 * sampleBytes;
            for (int channel = 0; channel < 4; ++channel, at += sampleBytes) {
                if (bitsPerChannel == 8) {
                    *at = channel == 3 ? toByte(values[channel]) : encode(values[channel]);
                } else if (bitsPerChannel == 16) {
                    uint16_t word = toWord(values[channel]);
                    std::memcpy(at, &word, 2);
                } else {
                    std::memcpy(at, &values[channel], 4);
                }
            }
        }
        if (TIFFWriteScanline(tiff.get(), row.data(), static_cast<uint32_t>(y), 0) < 0) {
            throw ImageError("cannot write the TIFF file");
        }
    }
    if (!TIFFFlush(tiff.get())) throw ImageError("cannot write the TIFF file");
}

ImagePtr readTiff(const std::string& fileName) {
    TiffPtr tiff = openTiff(fileName, "r");
    Size size = imageSize(tiff.get());
    ImagePtr image = createImage(size.width, size.height);
    if (readsDirectly(tiff.get())) {
        readScanlines(tiff.get(), *image);
    } else {
        readRgba(tiff.get(), *image);
    }
    return image;
}

Size tiffFileSize(const std::string& fileName) { return imageSize(openTiff(fileName, "r").get()); }

}  // namespace tovi::ref::image
