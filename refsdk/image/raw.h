// Raw pixel buffers and 8-bit bitmap data. These are plain quantisations: the output gamma,
// which belongs to encoded files, does not apply.
#pragma once

#include <cstddef>
#include <cstdint>

#include "image/image.h"

namespace tovi::ref::image {

// Codes of ToviRawImageFormat. Byte and 16-bit channels are values in [0, 1] (clamped on the
// way out); float and half channels carry the values unchanged.
enum class RawFormat { BgraByte = 0, RgbaFloat = 1, Rgba16Bit = 3, BgrByte = 4, RgbaHalfFloat = 5 };

// 0 for a code that is not a raw format.
size_t rawBytesPerPixel(int format);

// stride: bytes from one row to the next, 0 for unpadded rows. Byte formats give alpha 1 when
// they have none. ImageError for an unknown format or a buffer too small for the size.
ImagePtr imageFromRaw(const void* data, size_t size, int format, int width, int height, int stride);
// Unpadded rows; ImageError for an unknown format or a buffer of fewer than the pixels' bytes.
void imageToRaw(const ToviImage& image, void* data, size_t size, int format);

// ToviBitmapDataFlags.
constexpr int bitmapSwapChannels = 1;
constexpr int bitmapReverseY = 2;
constexpr int bitmapPreserveAlpha = 4;

// Bytes of the bitmap data for these flags and stride (0: unpadded rows); ImageError when the
// stride is shorter than a row or the alpha value is neither -1 nor 0..255.
size_t bitmapDataSize(const ToviImage& image, int flags, int stride, int alphaValue);
// Writes bitmapDataSize bytes; row padding is zero.
void writeBitmapData(const ToviImage& image, uint8_t* out, int flags, int stride, int alphaValue);

}  // namespace tovi::ref::image
