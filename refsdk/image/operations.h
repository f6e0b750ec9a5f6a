// Geometry and colour operations on images. New images keep the source's output gamma and
// allocator data. Operations throw ImageError for arguments they cannot honour.
#pragma once

#include "image/image.h"

namespace tovi::ref::image {

// The region [x, x + |width|) x [y, y + |height|); a negative width or height mirrors it along
// that axis. The region must lie inside the image.
ImagePtr crop(const ToviImage& image, int x, int y, int width, int height);

enum class ResizeFilter {
    Automatic,   // Catmull-Rom when enlarging, Mitchell-Netravali when reducing
    Box,         // the mean of the covered source pixels
    Triangle,    // bilinear when enlarging
    CubicBSpline,
    CatmullRom,
    Mitchell,
};
// Edges clamp; colour is filtered weighted by alpha, as straight alpha requires.
ImagePtr resize(const ToviImage& image, int width, int height, ResizeFilter filter = ResizeFilter::Automatic);
ImagePtr cropResize(const ToviImage& image, int x, int y, int cropWidth, int cropHeight, int width, int height);

// The size that keeps the aspect ratio: the largest inside width x height (fitIn), or the
// smallest covering it (fitOut); never below 1 x 1.
Size fitInSize(int imageWidth, int imageHeight, int width, int height);
Size fitOutSize(int imageWidth, int imageHeight, int width, int height);
ImagePtr fitIn(const ToviImage& image, int width, int height);
ImagePtr fitOut(const ToviImage& image, int width, int height);
// Exactly width x height: the centred source region of that aspect ratio, resized.
ImagePtr cutIn(const ToviImage& image, int width, int height);

// Draws src with its top-left corner at (x, y) of dest, clipped to dest. Opaque drawing copies
// the pixels; blending lays them over dest by the source's alpha.
void draw(ToviImage& dest, const ToviImage& src, int x, int y, bool blend);

// The colour operations leave alpha alone unless they say otherwise.
void addColor(ToviImage& image, const Rgba& color);       // all four channels
void multiplyColor(ToviImage& image, const Rgba& color);  // all four channels
void changeExposure(ToviImage& image, float stops);  // colour times 2^stops
// Each colour channel c becomes c^(1/gamma) (sign kept); gamma must be finite and positive.
void changeGamma(ToviImage& image, float gamma);
// toSrgb: linear values to the sRGB curve; otherwise back to linear.
void changeSrgb(ToviImage& image, bool toSrgb);
// Around mid-grey: c becomes (c - 0.5) * contrast + 0.5.
void changeContrast(ToviImage& image, float contrast);
void makeNegative(ToviImage& image);  // c becomes 1 - c

enum class WhiteBalanceMode { None = 0, Average = 1, WeightedAverage = 2, Highlights = 3 };
// The per-channel multiplier that makes the reference colour of the mode grey at its own mean
// level: Average takes the mean colour, WeightedAverage the mean weighted by luminance,
// Highlights the mean of the brightest twentieth of the pixels. Alpha of the result is 1. Any
// other mode, None included, gives (1, 1, 1, 1). False (and the neutral multiplier) when the
// reference colour has a channel that is not positive.
bool whiteBalanceMultiplier(const ToviImage& image, WhiteBalanceMode mode, Rgba& multiplier);

// The mean absolute difference over all pixels and all four channels; ImageError when the
// sizes differ.
float difference(const ToviImage& image, const ToviImage& other);

}  // namespace tovi::ref::image
