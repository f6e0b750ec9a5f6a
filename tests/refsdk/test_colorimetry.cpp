#include <gtest/gtest.h>

#include <cmath>

#include "color/colorimetry.h"

using namespace tovi::ref;

namespace {

Color3 chromaticity(const Color3& xyz) {
    double sum = xyz[0] + xyz[1] + xyz[2];
    return {xyz[0] / sum, xyz[1] / sum, xyz[2] / sum};
}

}  // namespace

// IEC 61966-2-1, the sRGB standard, gives the matrix to four decimals.
TEST(Colorimetry, SrgbToXyzMatchesThePublishedCoefficients) {
    const double published[9] = {0.4124, 0.3576, 0.1805, 0.2126, 0.7152, 0.0722, 0.0193, 0.1192, 0.9505};
    Matrix3 matrix = rgbToXYZ(ColorSpace::Srgb);
    for (int index = 0; index < 9; ++index) EXPECT_NEAR(matrix[index], published[index], 5e-5) << index;
}

// Academy S-2014-004 gives the AP1-to-XYZ matrix to ten decimals.
TEST(Colorimetry, AcesCgToXyzMatchesThePublishedCoefficients) {
    const double published[9] = {0.6624541811, 0.1340042065, 0.1561876870,  0.2722287168, 0.6740817658,
                                 0.0536895174, -0.0055746495, 0.0040607335, 1.0103391003};
    Matrix3 matrix = rgbToXYZ(ColorSpace::AcesCg);
    for (int index = 0; index < 9; ++index) EXPECT_NEAR(matrix[index], published[index], 2e-9) << index;
}

TEST(Colorimetry, ConversionsBetweenSpacesAreConsistent) {
    const ColorSpace spaces[] = {ColorSpace::CieXyz, ColorSpace::Srgb, ColorSpace::AcesCg};
    for (ColorSpace from : spaces) {
        for (ColorSpace to : spaces) {
            Matrix3 roundTrip = multiply(rgbToRGB(to, from), rgbToRGB(from, to));
            for (int index = 0; index < 9; ++index) EXPECT_NEAR(roundTrip[index], index % 4 == 0 ? 1.0 : 0.0, 1e-12);
        }
    }
    // Chromatic adaptation carries white to white.
    Color3 white = multiply(rgbToRGB(ColorSpace::Srgb, ColorSpace::AcesCg), Color3{1.0, 1.0, 1.0});
    for (double channel : white) EXPECT_NEAR(channel, 1.0, 1e-12);
    // Into XYZ the colour is absolute: sRGB white is D65.
    Color3 d65 = chromaticity(multiply(rgbToRGB(ColorSpace::Srgb, ColorSpace::CieXyz), Color3{1.0, 1.0, 1.0}));
    EXPECT_NEAR(d65[0], 0.3127, 1e-12);
    EXPECT_NEAR(d65[1], 0.3290, 1e-12);
}

// CIE 15: illuminant A is a 2856 K black body at x = 0.44757, y = 0.40745; the Planckian locus
// passes through x = 0.3135, y = 0.3237 at 6500 K.
TEST(Colorimetry, BlackBodyChromaticitiesMatchThePlanckianLocus) {
    Color3 a = chromaticity(blackBodyXYZ(2856.0));
    EXPECT_NEAR(a[0], 0.44757, 1.5e-3);
    EXPECT_NEAR(a[1], 0.40745, 1.5e-3);
    Color3 daylight = chromaticity(blackBodyXYZ(6500.0));
    EXPECT_NEAR(daylight[0], 0.3135, 1.5e-3);
    EXPECT_NEAR(daylight[1], 0.3237, 1.5e-3);
    EXPECT_NEAR(blackBodyXYZ(6500.0)[1], 1.0, 1e-15);
}

TEST(Colorimetry, A6500KelvinBlackBodyIsNearlyWhiteInSrgb) {
    Color3 rgb;
    ASSERT_TRUE(blackBodyColor(6500.0, ColorSpace::Srgb, rgb));
    for (double channel : rgb) EXPECT_NEAR(channel, 1.0, 0.06) << rgb[0] << " " << rgb[1] << " " << rgb[2];
    // D65 lies a little above the locus (towards green), so the black body is a little magenta.
    EXPECT_LT(rgb[1], rgb[0]);
    EXPECT_LT(rgb[1], rgb[2]);
}

TEST(Colorimetry, ExtremeTemperaturesStayFiniteAndInvalidOnesFail) {
    Color3 rgb;
    for (double temperature : {1.0, 100.0, 1e6, 1e9}) {
        ASSERT_TRUE(blackBodyColor(temperature, ColorSpace::AcesCg, rgb)) << temperature;
        for (double channel : rgb) EXPECT_TRUE(std::isfinite(channel)) << temperature;
    }
    for (double temperature : {0.0, -5.0, double(NAN), double(INFINITY)}) EXPECT_FALSE(blackBodyColor(temperature, ColorSpace::Srgb, rgb));
}

TEST(Colorimetry, ClosestTemperatureOfABlackBodyIsItsOwn) {
    for (ColorSpace space : {ColorSpace::CieXyz, ColorSpace::Srgb, ColorSpace::AcesCg}) {
        for (double temperature = 1000.0; temperature <= 40000.0; temperature *= 1.37) {
            Color3 rgb, closest;
            ASSERT_TRUE(blackBodyColor(temperature, space, rgb));
            // The luminance does not matter, only the chromaticity.
            for (double& channel : rgb) channel *= 0.25;
            double found = closestBlackBodyTemperature(rgb, space, &closest);
            EXPECT_NEAR(found, temperature, temperature * 1e-4);
            Color3 expected;
            blackBodyColor(found, space, expected);
            for (int channel = 0; channel < 3; ++channel) EXPECT_DOUBLE_EQ(closest[channel], expected[channel]);
        }
    }
}

TEST(Colorimetry, ColoursWithoutChromaticityHaveNoClosestTemperature) {
    EXPECT_LT(closestBlackBodyTemperature({0.0, 0.0, 0.0}, ColorSpace::Srgb, nullptr), 0.0);
    EXPECT_LT(closestBlackBodyTemperature({-1.0, -1.0, -1.0}, ColorSpace::Srgb, nullptr), 0.0);
    EXPECT_LT(closestBlackBodyTemperature({NAN, 0.5, 0.5}, ColorSpace::Srgb, nullptr), 0.0);
    ColorSpace space;
    EXPECT_FALSE(colorSpaceFromNumber(3, space));
    EXPECT_FALSE(colorSpaceFromNumber(-1, space));
}
