// The image entries: argument checks, then the image library. Every failure, thrown or not,
// becomes the entry's failure value. The renderer argument is accepted everywhere it appears but
// changes nothing: the reference SDK has no colour management, so conversions to and from 8 and
// 16 bits are the plain ones that docs/images.md describes.
#include <cmath>
#include <cstring>
#include <string>

#include "api/entries.h"
#include "core/memory.h"
#include "image/codecs.h"
#include "image/image.h"
#include "image/operations.h"
#include "image/raw.h"
#include "testctl/recorder.h"

using namespace tovi::ref;
using namespace tovi::ref::image;

namespace {

constexpr int defaultTiffBits = 8;

template <typename Work, typename Result>
Result guarded(Work work, Result failure) {
    try {
        return work();
    } catch (...) {
        return failure;
    }
}

// The encoded bytes in a block of the SDK allocator, for the caller to free.
void* handOut(const Bytes& bytes, size_t* size) {
    void* block = allocateBlock(bytes.size());
    if (!block) return nullptr;
    std::memcpy(block, bytes.data(), bytes.size());
    *size = bytes.size();
    return block;
}

ToviImage* handOut(ImagePtr image) { return image.release(); }

int pngFlagsValid(int flags) { return (flags & ~(TOVI_PNG_PRESERVE_ALPHA | TOVI_PNG_16BIT)) == 0; }

Rgba colorOf(const float* color) { return {color[0], color[1], color[2], color[3]}; }

}  // namespace

TOVI_API void* ToviImage_compressToJpeg(const ToviImage* image, int quality, size_t* size, ToviRenderer* renderer) {
    TOVI_RECORD("ToviImage_compressToJpeg", {{"quality", quality}, {"renderer", renderer != nullptr}});
    if (!image || !size) return NULL;
    return guarded([&] { return handOut(encodeJpeg(*image, quality), size); }, static_cast<void*>(nullptr));
}

TOVI_API void* ToviImage_compressToPng(const ToviImage* image, int flags, size_t* size, ToviRenderer* renderer) {
    TOVI_RECORD("ToviImage_compressToPng", {{"flags", flags}, {"renderer", renderer != nullptr}});
    if (!image || !size || !pngFlagsValid(flags)) return NULL;
    return guarded(
        [&] { return handOut(encodePng(*image, flags & TOVI_PNG_PRESERVE_ALPHA, flags & TOVI_PNG_16BIT), size); },
        static_cast<void*>(nullptr));
}

TOVI_API void* ToviImage_convertToBmp(const ToviImage* image, int preserveAlpha, size_t* size, ToviRenderer* renderer,
                                      int swapChannels) {
    TOVI_RECORD("ToviImage_convertToBmp", {{"preserveAlpha", preserveAlpha},
                                           {"swapChannels", swapChannels},
                                           {"renderer", renderer != nullptr}});
    if (!image || !size) return NULL;
    return guarded([&] { return handOut(encodeBmp(*image, preserveAlpha != 0, swapChannels != 0), size); },
                   static_cast<void*>(nullptr));
}

TOVI_API void* ToviImage_toBitmapData(const ToviImage* image, size_t* size, int flags, int stride, int alphaValue) {
    TOVI_RECORD("ToviImage_toBitmapData", {{"flags", flags}, {"stride", stride}, {"alphaValue", alphaValue}});
    if (!image || !size || (flags & ~(bitmapSwapChannels | bitmapReverseY | bitmapPreserveAlpha))) return NULL;
    return guarded(
        [&]() -> void* {
            size_t bytes = bitmapDataSize(*image, flags, stride, alphaValue);
            auto* block = static_cast<uint8_t*>(allocateBlock(bytes));
            if (!block) return nullptr;
            writeBitmapData(*image, block, flags, stride, alphaValue);
            *size = bytes;
            return block;
        },
        static_cast<void*>(nullptr));
}

TOVI_API int ToviImage_toIntList(const ToviImage* image, void* data, size_t byteSize, int format) {
    TOVI_RECORD("ToviImage_toIntList", {{"byteSize", byteSize}, {"format", format}});
    if (!image || !data) return -1;
    return guarded(
        [&] {
            imageToRaw(*image, data, byteSize, format);
            return 0;
        },
        -1);
}

TOVI_API int ToviImage_compressToJpegFile(const ToviImage* image, int quality, const char* fileName,
                                          ToviRenderer* renderer) {
    TOVI_RECORD("ToviImage_compressToJpegFile",
                {{"quality", quality}, {"fileName", fileName ? fileName : ""}, {"renderer", renderer != nullptr}});
    if (!image || !fileName) return 0;
    return guarded(
        [&] {
            writeFile(fileName, encodeJpeg(*image, quality));
            return 1;
        },
        0);
}

TOVI_API int ToviImage_compressToPngFile(const ToviImage* image, int flags, const char* fileName,
                                         ToviRenderer* renderer) {
    TOVI_RECORD("ToviImage_compressToPngFile",
                {{"flags", flags}, {"fileName", fileName ? fileName : ""}, {"renderer", renderer != nullptr}});
    if (!image || !fileName || !pngFlagsValid(flags)) return 0;
    return guarded(
        [&] {
            writeFile(fileName, encodePng(*image, flags & TOVI_PNG_PRESERVE_ALPHA, flags & TOVI_PNG_16BIT));
            return 1;
        },
        0);
}

TOVI_API int ToviImage_SaveToBmpFile(const ToviImage* image, int preserveAlpha, const char* fileName,
                                     ToviRenderer* renderer, int swapChannels) {
    TOVI_RECORD("ToviImage_SaveToBmpFile", {{"preserveAlpha", preserveAlpha},
                                            {"fileName", fileName ? fileName : ""},
                                            {"swapChannels", swapChannels},
                                            {"renderer", renderer != nullptr}});
    if (!image || !fileName) return 0;
    return guarded(
        [&] {
            writeFile(fileName, encodeBmp(*image, preserveAlpha != 0, swapChannels != 0));
            return 1;
        },
        0);
}

TOVI_API int ToviImage_SaveToTiffFile(const ToviImage* image, const char* fileName, ToviRenderer* renderer,
                                      int bitsPerChannel) {
    TOVI_RECORD("ToviImage_SaveToTiffFile", {{"fileName", fileName ? fileName : ""},
                                             {"bitsPerChannel", bitsPerChannel},
                                             {"renderer", renderer != nullptr}});
    if (!image || !fileName) return 0;
    return guarded(
        [&] {
            writeTiff(*image, fileName, bitsPerChannel ? bitsPerChannel : defaultTiffBits);
            return 1;
        },
        0);
}

TOVI_API int ToviImage_SaveToExrFile(const ToviImage* image, const char* fileName, ToviRenderer* renderer) {
    TOVI_RECORD("ToviImage_SaveToExrFile", {{"fileName", fileName ? fileName : ""}, {"renderer", renderer != nullptr}});
    if (!image || !fileName) return 0;
    return guarded(
        [&] {
            writeExr(*image, fileName, ExrChannels::Half);
            return 1;
        },
        0);
}

TOVI_API ToviImage* ToviImage_createFromBmp(const void* data, size_t size, ToviRenderer* renderer, int flags) {
    TOVI_RECORD("ToviImage_createFromBmp", {{"size", size}, {"renderer", renderer != nullptr}, {"flags", flags}});
    if (!data) return NULL;
    return guarded([&] { return handOut(decodeBmp(static_cast<const uint8_t*>(data), size)); },
                   static_cast<ToviImage*>(nullptr));
}

TOVI_API ToviImage* ToviImage_createFromJpeg(const void* data, size_t size, ToviRenderer* renderer, int flags) {
    TOVI_RECORD("ToviImage_createFromJpeg", {{"size", size}, {"renderer", renderer != nullptr}, {"flags", flags}});
    if (!data) return NULL;
    return guarded([&] { return handOut(decodeJpeg(static_cast<const uint8_t*>(data), size)); },
                   static_cast<ToviImage*>(nullptr));
}

TOVI_API ToviImage* ToviImage_createFromPng(const void* data, size_t size, ToviRenderer* renderer, int flags) {
    TOVI_RECORD("ToviImage_createFromPng", {{"size", size}, {"renderer", renderer != nullptr}, {"flags", flags}});
    if (!data) return NULL;
    return guarded([&] { return handOut(decodePng(static_cast<const uint8_t*>(data), size)); },
                   static_cast<ToviImage*>(nullptr));
}

TOVI_API ToviImage* ToviImage_createFromRawData(const void* data, size_t size, int format, int width, int height,
                                                int stride) {
    TOVI_RECORD("ToviImage_createFromRawData",
                {{"size", size}, {"format", format}, {"width", width}, {"height", height}, {"stride", stride}});
    return guarded([&] { return handOut(imageFromRaw(data, size, format, width, height, stride)); },
                   static_cast<ToviImage*>(nullptr));
}

TOVI_API ToviImage* ToviImage_crop(const ToviImage* image, int x, int y, int width, int height) {
    TOVI_RECORD("ToviImage_crop", {{"x", x}, {"y", y}, {"width", width}, {"height", height}});
    if (!image) return NULL;
    return guarded([&] { return handOut(crop(*image, x, y, width, height)); }, static_cast<ToviImage*>(nullptr));
}

TOVI_API ToviImage* ToviImage_resize(const ToviImage* image, int width, int height) {
    TOVI_RECORD("ToviImage_resize", {{"width", width}, {"height", height}});
    if (!image) return NULL;
    return guarded([&] { return handOut(resize(*image, width, height)); }, static_cast<ToviImage*>(nullptr));
}

TOVI_API ToviImage* ToviImage_crop_resize(const ToviImage* image, int x, int y, int cropWidth, int cropHeight,
                                          int width, int height) {
    TOVI_RECORD("ToviImage_crop_resize", {{"x", x},
                                          {"y", y},
                                          {"cropWidth", cropWidth},
                                          {"cropHeight", cropHeight},
                                          {"width", width},
                                          {"height", height}});
    if (!image) return NULL;
    return guarded([&] { return handOut(cropResize(*image, x, y, cropWidth, cropHeight, width, height)); },
                   static_cast<ToviImage*>(nullptr));
}

TOVI_API ToviImage* ToviImage_fitIn(const ToviImage* image, int width, int height) {
    TOVI_RECORD("ToviImage_fitIn", {{"width", width}, {"height", height}});
    if (!image) return NULL;
    return guarded([&] { return handOut(fitIn(*image, width, height)); }, static_cast<ToviImage*>(nullptr));
}

TOVI_API ToviImage* ToviImage_fitOut(const ToviImage* image, int width, int height) {
    TOVI_RECORD("ToviImage_fitOut", {{"width", width}, {"height", height}});
    if (!image) return NULL;
    return guarded([&] { return handOut(fitOut(*image, width, height)); }, static_cast<ToviImage*>(nullptr));
}

TOVI_API ToviImage* ToviImage_cutIn(const ToviImage* image, int width, int height) {
    TOVI_RECORD("ToviImage_cutIn", {{"width", width}, {"height", height}});
    if (!image) return NULL;
    return guarded([&] { return handOut(cutIn(*image, width, height)); }, static_cast<ToviImage*>(nullptr));
}

TOVI_API ToviImage* ToviImage_clone(const ToviImage* image) {
    if (!image) return NULL;
    return guarded([&] { return handOut(cloneImage(*image)); }, static_cast<ToviImage*>(nullptr));
}

TOVI_API ToviImage* ToviImage_create(int width, int height) {
    TOVI_RECORD("ToviImage_create", {{"width", width}, {"height", height}});
    return guarded([&] { return handOut(createImage(width, height)); }, static_cast<ToviImage*>(nullptr));
}

TOVI_API int ToviImage_getSize(const ToviImage* image, int* width, int* height) {
    if (!image || !width || !height) return 0;
    *width = image->width;
    *height = image->height;
    return 1;
}

TOVI_API void* ToviImage_getAllocatorData(const ToviImage* image) { return image ? image->allocatorData : NULL; }

TOVI_API size_t ToviImage_getMemorySize(const ToviImage* image) { return image ? memorySize(*image) : 0; }

TOVI_API float* ToviImage_getPixelDataPointerAndPixelCount(ToviImage* image, size_t* pixelCount) {
    if (!image || !pixelCount) return NULL;
    *pixelCount = tovi::ref::image::pixelCount(*image);
    return &pixels(*image)->r;
}

TOVI_API int ToviImage_drawImage(ToviImage* dest, const ToviImage* src, int x, int y, int blend) {
    TOVI_RECORD("ToviImage_drawImage", {{"x", x}, {"y", y}, {"blend", blend}});
    if (!dest || !src) return 0;
    return guarded(
        [&] {
            draw(*dest, *src, x, y, blend != 0);
            return 1;
        },
        0);
}

TOVI_API int ToviImage_addColor(ToviImage* image, const float* color) {
    if (!image || !color) return 0;
    TOVI_RECORD("ToviImage_addColor", {{"color", {color[0], color[1], color[2], color[3]}}});
    addColor(*image, colorOf(color));
    return 1;
}

TOVI_API int ToviImage_mulColor(ToviImage* image, const float* color) {
    if (!image || !color) return 0;
    TOVI_RECORD("ToviImage_mulColor", {{"color", {color[0], color[1], color[2], color[3]}}});
    multiplyColor(*image, colorOf(color));
    return 1;
}

TOVI_API int ToviImage_changeExposure(ToviImage* image, float value) {
    TOVI_RECORD("ToviImage_changeExposure", {{"value", value}});
    if (!image) return 0;
    return guarded(
        [&] {
            changeExposure(*image, value);
            return 1;
        },
        0);
}

TOVI_API int ToviImage_changeGamma(ToviImage* image, float value) {
    TOVI_RECORD("ToviImage_changeGamma", {{"value", value}});
    if (!image) return 0;
    return guarded(
        [&] {
            changeGamma(*image, value);
            return 1;
        },
        0);
}

TOVI_API int ToviImage_changeSRGB(ToviImage* image, int inverse) {
    TOVI_RECORD("ToviImage_changeSRGB", {{"inverse", inverse}});
    if (!image) return 0;
    changeSrgb(*image, inverse == 0);
    return 1;
}

TOVI_API int ToviImage_changeContrast(ToviImage* image, float value) {
    TOVI_RECORD("ToviImage_changeContrast", {{"value", value}});
    if (!image) return 0;
    return guarded(
        [&] {
            changeContrast(*image, value);
            return 1;
        },
        0);
}

TOVI_API int ToviImage_makeNegative(ToviImage* image) {
    if (!image) return 0;
    makeNegative(*image);
    return 1;
}

TOVI_API int ToviImage_setGamma(ToviImage* image, float gamma) {
    TOVI_RECORD("ToviImage_setGamma", {{"gamma", gamma}});
    if (!image || !std::isfinite(gamma) || gamma <= 0.0f) return 0;
    image->outputGamma = gamma;
    return 1;
}

TOVI_API float ToviImage_getGamma(const ToviImage* image) { return image ? image->outputGamma : 0.0f; }

TOVI_API ToviImage* ToviImage_load(const char* fileName) {
    TOVI_RECORD("ToviImage_load", {{"fileName", fileName ? fileName : ""}});
    if (!fileName) return NULL;
    return guarded([&] { return handOut(loadImage(fileName)); }, static_cast<ToviImage*>(nullptr));
}

TOVI_API int ToviImage_loadSize(const char* fileName, int* width, int* height) {
    TOVI_RECORD("ToviImage_loadSize", {{"fileName", fileName ? fileName : ""}});
    if (!fileName || !width || !height) return 0;
    return guarded(
        [&] {
            Size size = loadImageSize(fileName);
            *width = size.width;
            *height = size.height;
            return 1;
        },
        0);
}

TOVI_API int ToviImage_calculateWhiteBalanceMultiplier(const ToviImage* image, int mode, float* multiplier) {
    TOVI_RECORD("ToviImage_calculateWhiteBalanceMultiplier", {{"mode", mode}});
    if (!image || !multiplier) return 0;
    Rgba result{1.0f, 1.0f, 1.0f, 1.0f};
    bool computed = guarded([&] { return whiteBalanceMultiplier(*image, static_cast<WhiteBalanceMode>(mode), result); },
                            false);
    multiplier[0] = result.r, multiplier[1] = result.g, multiplier[2] = result.b, multiplier[3] = result.a;
    return computed ? 1 : 0;
}

TOVI_API float ToviImage_calculateDifference(const ToviImage* image, const ToviImage* other) {
    if (!image || !other || image->width != other->width || image->height != other->height) return -1.0f;
    return guarded([&] { return difference(*image, *other); }, -1.0f);
}
