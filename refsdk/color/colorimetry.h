// Colorimetry of the reference SDK: black-body colours and conversions between linear RGB
// colour spaces, derived from their primaries and white points.
#pragma once

#include <array>

namespace tovi::ref {

using Color3 = std::array<double, 3>;
// Row-major: element (row, column) at index row * 3 + column.
using Matrix3 = std::array<double, 9>;

// The colour spaces by their numbers in the SDK interface.
enum class ColorSpace { CieXyz = 0, Srgb = 1, AcesCg = 2 };

// False for a number that names no colour space.
bool colorSpaceFromNumber(int number, ColorSpace& space);

// The CIE 1931 2-degree colour-matching functions (x-bar, y-bar, z-bar) at a wavelength in nm.
Color3 cieObserver(double wavelengthNm);

// CIE XYZ of a black body at `temperature` kelvin, scaled to luminance Y = 1. The temperature
// must be positive and finite.
Color3 blackBodyXYZ(double temperature);

Matrix3 rgbToXYZ(ColorSpace space);
Matrix3 xyzToRGB(ColorSpace space);
// Converts linear RGB of `source` into `destination`, adapting the white point (Bradford) when
// both spaces have one and they differ.
Matrix3 rgbToRGB(ColorSpace source, ColorSpace destination);

Color3 multiply(const Matrix3& matrix, const Color3& vector);
Matrix3 multiply(const Matrix3& a, const Matrix3& b);

// The black body's colour in `space`, at luminance 1. False for a temperature that is not
// positive and finite.
bool blackBodyColor(double temperature, ColorSpace space, Color3& rgb);

// The temperature (kelvin, 500 to 100000) of the black body whose chromaticity lies closest to
// that of `rgb` in the CIE 1960 UCS, and that body's colour when `closest` is given. Negative
// when `rgb` has no chromaticity (black, or negative light).
double closestBlackBodyTemperature(const Color3& rgb, ColorSpace space, Color3* closest);

}  // namespace tovi::ref
