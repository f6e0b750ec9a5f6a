#include "color/colorimetry.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace tovi::ref {

namespace {

struct Chromaticity {
    double x, y;
};

struct SpaceDefinition {
    Chromaticity red, green, blue, white;
};

// ITU-R BT.709 primaries with the D65 white point (IEC 61966-2-1).
constexpr SpaceDefinition srgbDefinition{{0.64, 0.33}, {0.30, 0.60}, {0.15, 0.06}, {0.3127, 0.3290}};
// ACES AP1 primaries with the ACES white point (SMPTE ST 2065-1, Academy S-2014-004).
constexpr SpaceDefinition acesCgDefinition{{0.713, 0.293}, {0.165, 0.830}, {0.128, 0.044}, {0.32168, 0.33767}};

constexpr Matrix3 identity{1, 0, 0, 0, 1, 0, 0, 0, 1};

// The Bradford cone-response matrix for chromatic adaptation.
constexpr Matrix3 bradford{0.8951, 0.2664, -0.1614, -0.7502, 1.7135, 0.0367, 0.0389, -0.0685, 1.0296};

// Integration over the visible range at 1 nm.
constexpr double firstWavelength = 360.0;
constexpr int wavelengthCount = 471;  // 360 to 830 nm
// The second radiation constant h c / k, in nm K.
constexpr double secondRadiationConstant = 1.438776877e7;

// The closest-temperature search runs over reciprocal temperatures (mireds), along which the
// black-body locus moves more evenly than along kelvins.
constexpr double lowestMired = 10.0;     // 100000 K
constexpr double highestMired = 2000.0;  // 500 K
constexpr double miredStep = 2.5;

// A piecewise Gaussian: width `below` left of the centre, `above` right of it.
double lobe(double wavelength, double centre, double below, double above) {
    double t = (wavelength - centre) / (wavelength < centre ? below : above);
    return std::exp(-0.5 * t * t);
}

const std::vector<Color3>& observerSamples() {
    static const std::vector<Color3> samples = [] {
        std::vector<Color3> table(wavelengthCount);
        for (int index = 0; index < wavelengthCount; ++index) table[index] = cieObserver(firstWavelength + index);
        return table;
    }();
    return samples;
}

// log(exp(x) - 1) without overflow for large x or cancellation for small x.
double logExpMinusOne(double x) { return x < 1.0 ? std::log(std::expm1(x)) : x + std::log1p(-std::exp(-x)); }

Color3 xyzOf(Chromaticity c) { return {c.x / c.y, 1.0, (1.0 - c.x - c.y) / c.y}; }

Matrix3 inverse(const Matrix3& m) {
    double c00 = m[4] * m[8] - m[5] * m[7];
    double c01 = m[5] * m[6] - m[3] * m[8];
    double c02 = m[3] * m[7] - m[4] * m[6];
    double det = m[0] * c00 + m[1] * c01 + m[2] * c02;
    return {c00 / det,
            (m[2] * m[7] - m[1] * m[8]) / det,
            (m[1] * m[5] - m[2] * m[4]) / det,
            c01 / det,
            (m[0] * m[8] - m[2] * m[6]) / det,
            (m[2] * m[3] - m[0] * m[5]) / det,
            c02 / det,
            (m[1] * m[6] - m[0] * m[7]) / det,
            (m[0] * m[4] - m[1] * m[3]) / det};
}

const SpaceDefinition* definition(ColorSpace space) {
    switch (space) {
    case ColorSpace::Srgb: return &srgbDefinition;
    case ColorSpace::AcesCg: return &acesCgDefinition;
    case ColorSpace::CieXyz: break;
    }
    return nullptr;
}

// Columns are the primaries' XYZ, scaled so that RGB (1, 1, 1) is the white point at Y = 1.
Matrix3 primariesToXYZ(const SpaceDefinition& space) {
    Color3 r = xyzOf(space.red), g = xyzOf(space.green), b = xyzOf(space.blue);
    Matrix3 primaries{r[0], g[0], b[0], r[1], g[1], b[1], r[2], g[2], b[2]};
    Color3 weights = multiply(inverse(primaries), xyzOf(space.white));
    for (int row = 0; row < 3; ++row) {
        for (int col = 0; col < 3; ++col) primaries[row * 3 + col] *= weights[col];
    }
    return primaries;
}

Matrix3 bradfordAdaptation(Chromaticity from, Chromaticity to) {
    Color3 source = multiply(bradford, xyzOf(from));
    Color3 target = multiply(bradford, xyzOf(to));
    Matrix3 gain{target[0] / source[0], 0, 0, 0, target[1] / source[1], 0, 0, 0, target[2] / source[2]};
    return multiply(inverse(bradford), multiply(gain, bradford));
}

// CIE 1960 UCS coordinates (u, v); false when the colour has no chromaticity.
bool ucs(const Color3& xyz, double& u, double& v) {
    double denominator = xyz[0] + 15.0 * xyz[1] + 3.0 * xyz[2];
    if (!(denominator > 0.0) || !std::isfinite(denominator)) return false;
    u = 4.0 * xyz[0] / denominator;
    v = 6.0 * xyz[1] / denominator;
    return true;
}

struct LocusPoint {
    double u, v;
};

LocusPoint locusAt(double mired) {
    LocusPoint point{};
    ucs(blackBodyXYZ(1e6 / mired), point.u, point.v);
    return point;
}

const std::vector<LocusPoint>& locusTable() {
    static const std::vector<LocusPoint> table = [] {
        std::vector<LocusPoint> points;
        for (double mired = lowestMired; mired <= highestMired; mired += miredStep) points.push_back(locusAt(mired));
        return points;
    }();
    return table;
}

double distanceSquared(const LocusPoint& point, double u, double v) {
    double du = point.u - u, dv = point.v - v;
    return du * du + dv * dv;
}

}  // namespace

bool colorSpaceFromNumber(int number, ColorSpace& space) {
    if (number < 0 || number > 2) return false;
    space = static_cast<ColorSpace>(number);
    return true;
}

// The multi-lobe Gaussian fit of Wyman, Sloan and Shirley, "Simple Analytic Approximations to the
// CIE XYZ Color Matching Functions", Journal of Computer Graphics Techniques 2(2), 2013.
Color3 cieObserver(double w) {
    return {1.056 * lobe(w, 599.8, 37.9, 31.0) + 0.362 * lobe(w, 442.0, 16.0, 26.7) - 0.065 * lobe(w, 501.1, 20.4, 26.2),
            0.821 * lobe(w, 568.8, 46.9, 40.5) + 0.286 * lobe(w, 530.9, 16.3, 31.1),
            1.217 * lobe(w, 437.0, 11.8, 36.0) + 0.681 * lobe(w, 459.0, 26.0, 13.8)};
}

// Planck's law integrated against the observer. The radiance is summed relative to its largest
// sample (in logarithms), so that very low and very high temperatures neither overflow nor
// vanish; the scale drops out with the normalisation to Y = 1.
Color3 blackBodyXYZ(double temperature) {
    const std::vector<Color3>& observer = observerSamples();
    double logRadiance[wavelengthCount];
    double largest = -HUGE_VAL;
    for (int index = 0; index < wavelengthCount; ++index) {
        double wavelength = firstWavelength + index;
        logRadiance[index] =
            -5.0 * std::log(wavelength) - logExpMinusOne(secondRadiationConstant / (wavelength * temperature));
        largest = std::max(largest, logRadiance[index]);
    }
    Color3 xyz{0.0, 0.0, 0.0};
    for (int index = 0; index < wavelengthCount; ++index) {
        double weight = std::exp(logRadiance[index] - largest);
        for (int channel = 0; channel < 3; ++channel) xyz[channel] += weight * observer[index][channel];
    }
    double luminance = xyz[1];
    for (double& channel : xyz) channel /= luminance;
    return xyz;
}

Matrix3 rgbToXYZ(ColorSpace space) {
    const SpaceDefinition* primaries = definition(space);
    return primaries ? primariesToXYZ(*primaries) : identity;
}

Matrix3 xyzToRGB(ColorSpace space) { return inverse(rgbToXYZ(space)); }

Matrix3 rgbToRGB(ColorSpace source, ColorSpace destination) {
    if (source == destination) return identity;
    const SpaceDefinition* from = definition(source);
    const SpaceDefinition* to = definition(destination);
    Matrix3 adaptation = from && to ? bradfordAdaptation(from->white, to->white) : identity;
    return multiply(xyzToRGB(destination), multiply(adaptation, rgbToXYZ(source)));
}

Color3 multiply(const Matrix3& m, const Color3& v) {
    return {m[0] * v[0] + m[1] * v[1] + m[2] * v[2], m[3] * v[0] + m[4] * v[1] + m[5] * v[2],
            m[6] * v[0] + m[7] * v[1] + m[8] * v[2]};
}

Matrix3 multiply(const Matrix3& a, const Matrix3& b) {
    Matrix3 product{};
    for (int row = 0; row < 3; ++row) {
        for (int col = 0; col < 3; ++col) {
            for (int k = 0; k < 3; ++k) product[row * 3 + col] += a[row * 3 + k] * b[k * 3 + col];
        }
    }
    return product;
}

bool blackBodyColor(double temperature, ColorSpace space, Color3& rgb) {
    if (!(temperature > 0.0) || !std::isfinite(temperature)) return false;
    rgb = multiply(xyzToRGB(space), blackBodyXYZ(temperature));
    return true;
}

// A scan of the tabulated locus finds the nearest grid point; a golden-section search between its
// neighbours refines it.
double closestBlackBodyTemperature(const Color3& rgb, ColorSpace space, Color3* closest) {
    double u, v;
    if (!ucs(multiply(rgbToXYZ(space), rgb), u, v)) return -1.0;
    const std::vector<LocusPoint>& table = locusTable();
    size_t nearest = 0;
    for (size_t index = 1; index < table.size(); ++index) {
        if (distanceSquared(table[index], u, v) < distanceSquared(table[nearest], u, v)) nearest = index;
    }
    double low = std::max(lowestMired, lowestMired + (static_cast<double>(nearest) - 1.0) * miredStep);
    double high = std::min(highestMired, lowestMired + (static_cast<double>(nearest) + 1.0) * miredStep);
    const double ratio = (std::sqrt(5.0) - 1.0) / 2.0;
    double a = high - ratio * (high - low), b = low + ratio * (high - low);
    double fa = distanceSquared(locusAt(a), u, v), fb = distanceSquared(locusAt(b), u, v);
    for (int step = 0; step < 48; ++step) {
        if (fa < fb) {
            high = b;
            b = a;
            fb = fa;
            a = high - ratio * (high - low);
            fa = distanceSquared(locusAt(a), u, v);
        } else {
            low = a;
            a = b;
            fa = fb;
            b = low + ratio * (high - low);
            fb = distanceSquared(locusAt(b), u, v);
        }
    }
    double temperature = 1e6 / (0.5 * (low + high));
    if (closest) blackBodyColor(temperature, space, *closest);
    return temperature;
}

}  // namespace tovi::ref
