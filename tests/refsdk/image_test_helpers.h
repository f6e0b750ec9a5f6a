// Synthetic images shared by the image tests.
#pragma once

#include "image/image.h"

namespace tovi::ref::image::testing {

// Every channel different across the image, all in [0, 1]; alpha varies too.
inline ImagePtr gradientImage(int width, int height) {
    ImagePtr image = createImage(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            float u = (x + 0.5f) / width, v = (y + 0.5f) / height;
            pixelAt(*image, x, y) = {u, v, 1.0f - u * v, 0.25f + 0.75f * v};
        }
    }
    return image;
}

inline ImagePtr filledImage(int width, int height, Rgba colour) {
    ImagePtr image = createImage(width, height);
    for (size_t index = 0; index < pixelCount(*image); ++index) pixels(*image)[index] = colour;
    return image;
}

}  // namespace tovi::ref::image::testing
