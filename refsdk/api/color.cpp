// Black-body colours and RGB colour-space conversion matrices.
#include <exception>

#include "api/entries.h"
#include "color/colorimetry.h"

using namespace tovi::ref;

TOVI_API int Tovi_getBlackBodyColorRGB(float* rgb, float temperature, int colorSpace) {
    ColorSpace space;
    if (!rgb || !colorSpaceFromNumber(colorSpace, space)) return 0;
    try {
        Color3 color;
        if (!blackBodyColor(temperature, space, color)) return 0;
        for (int channel = 0; channel < 3; ++channel) rgb[channel] = static_cast<float>(color[channel]);
        return 1;
    } catch (const std::exception&) {
        return 0;
    }
}

TOVI_API float Tovi_getBlackBodyClosestTemperature(const float* rgb, float* closestRgb, int colorSpace) {
    ColorSpace space;
    if (!rgb || !colorSpaceFromNumber(colorSpace, space)) return -1.0f;
    try {
        Color3 closest;
        double temperature = closestBlackBodyTemperature({rgb[0], rgb[1], rgb[2]}, space, closestRgb ? &closest : nullptr);
        if (temperature < 0.0) return -1.0f;
        if (closestRgb) {
            for (int channel = 0; channel < 3; ++channel) closestRgb[channel] = static_cast<float>(closest[channel]);
        }
        return static_cast<float>(temperature);
    } catch (const std::exception&) {
        return -1.0f;
    }
}

// The matrix goes out as three columns of three.
TOVI_API int Tovi_getRGBtoRGBMatrix(int srcColorSpace, int dstColorSpace, float* matrix) {
    ColorSpace source, destination;
    if (!matrix || !colorSpaceFromNumber(srcColorSpace, source) || !colorSpaceFromNumber(dstColorSpace, destination)) {
        return -1;
    }
    Matrix3 conversion = rgbToRGB(source, destination);
    for (int col = 0; col < 3; ++col) {
        for (int row = 0; row < 3; ++row) matrix[col * 3 + row] = static_cast<float>(conversion[row * 3 + col]);
    }
    return 0;
}
