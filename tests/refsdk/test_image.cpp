#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <vector>

#include <Imath/half.h>

#include "core/memory.h"
#include "image/operations.h"
#include "image/raw.h"
#include "image_test_helpers.h"

using namespace tovi::ref;
using namespace tovi::ref::image;
using namespace tovi::ref::image::testing;

namespace {

void expectPixel(const Rgba& actual, const Rgba& expected, float tolerance = 1e-6f) {
    EXPECT_NEAR(actual.r, expected.r, tolerance);
    EXPECT_NEAR(actual.g, expected.g, tolerance);
    EXPECT_NEAR(actual.b, expected.b, tolerance);
    EXPECT_NEAR(actual.a, expected.a, tolerance);
}

}  // namespace

TEST(Image, IsOneAllocatorBlockOfTransparentBlackWithGammaOne) {
    int64_t start = liveBlockCount();
    {
        ImagePtr image = createImage(3, 2);
        EXPECT_EQ(liveBlockCount(), start + 1);
        EXPECT_EQ(image->outputGamma, 1.0f);
        EXPECT_EQ(memorySize(*image), sizeof(ToviImage) + 6 * 16);
        EXPECT_EQ(reinterpret_cast<uintptr_t>(pixels(*image)) % 16, 0u);
        for (size_t index = 0; index < 6; ++index) expectPixel(pixels(*image)[index], {0, 0, 0, 0}, 0);
        image->outputGamma = 2.2f;
        pixelAt(*image, 2, 1) = {1, 2, 3, 4};
        ImagePtr copy = cloneImage(*image);
        EXPECT_EQ(copy->outputGamma, 2.2f);
        expectPixel(pixelAt(*copy, 2, 1), {1, 2, 3, 4}, 0);
    }
    EXPECT_EQ(liveBlockCount(), start);
    EXPECT_THROW(createImage(0, 5), ImageError);
    EXPECT_THROW(createImage(1 << 30, 1 << 30), std::bad_alloc);
    EXPECT_EQ(liveBlockCount(), start);
}

TEST(Image, EightAndSixteenBitCodesAreWithinHalfAStep) {
    // Values whose float product with 255 or 65535 rounds up onto the half step.
    EXPECT_EQ(toWord(0.7f), 45874);
    EXPECT_EQ(toByte(0.5039215683937073f), 128);
    EXPECT_EQ(toByte(0.5156862735748291f), 131);
    for (float value : {0.7f, 0.5039215683937073f, 0.25f, 1.0f / 3.0f}) {
        EXPECT_LE(std::fabs(toWord(value) - 65535.0 * value), 0.5) << value;
        EXPECT_LE(std::fabs(toByte(value) - 255.0 * value), 0.5) << value;
    }
}

TEST(Image, CropsRegionsMirrorsNegativeSizesAndRefusesOutsideRegions) {
    ImagePtr image = gradientImage(5, 4);
    image->outputGamma = 1.8f;
    ImagePtr part = crop(*image, 1, 2, 3, 2);
    ASSERT_EQ(part->width, 3);
    ASSERT_EQ(part->height, 2);
    EXPECT_EQ(part->outputGamma, 1.8f);
    expectPixel(pixelAt(*part, 0, 0), pixelAt(*image, 1, 2), 0);
    expectPixel(pixelAt(*part, 2, 1), pixelAt(*image, 3, 3), 0);
    ImagePtr mirrored = crop(*image, 1, 0, -3, -4);
    expectPixel(pixelAt(*mirrored, 0, 0), pixelAt(*image, 3, 3), 0);
    expectPixel(pixelAt(*mirrored, 2, 3), pixelAt(*image, 1, 0), 0);
    EXPECT_THROW(crop(*image, 3, 0, 3, 1), ImageError);
    EXPECT_THROW(crop(*image, -1, 0, 1, 1), ImageError);
    EXPECT_THROW(crop(*image, 0, 0, 0, 1), ImageError);
}

TEST(Image, ResizeFiltersOnKnownImages) {
    // A constant image stays constant under every filter, in both directions.
    ImagePtr flat = filledImage(7, 5, {0.2f, 0.4f, 0.6f, 1.0f});
    for (ResizeFilter filter : {ResizeFilter::Automatic, ResizeFilter::Box, ResizeFilter::Triangle,
                                ResizeFilter::CubicBSpline, ResizeFilter::CatmullRom, ResizeFilter::Mitchell}) {
        for (auto [width, height] : {std::pair{3, 2}, std::pair{16, 11}}) {
            ImagePtr result = resize(*flat, width, height, filter);
            ASSERT_EQ(result->width, width);
            ASSERT_EQ(result->height, height);
            for (size_t index = 0; index < pixelCount(*result); ++index) {
                expectPixel(pixels(*result)[index], {0.2f, 0.4f, 0.6f, 1.0f}, 1e-5f);
            }
        }
    }
    // Halving with the box filter averages pixel pairs.
    ImagePtr row = createImage(4, 1);
    const float values[4] = {0.0f, 1.0f, 0.5f, 0.25f};
    for (int x = 0; x < 4; ++x) pixelAt(*row, x, 0) = {values[x], values[x], values[x], 1.0f};
    ImagePtr halved = resize(*row, 2, 1, ResizeFilter::Box);
    EXPECT_NEAR(pixelAt(*halved, 0, 0).r, 0.5f, 1e-6f);
    EXPECT_NEAR(pixelAt(*halved, 1, 0).g, 0.375f, 1e-6f);
    // Doubling with the triangle filter interpolates linearly between pixel centres.
    ImagePtr pair = createImage(2, 1);
    pixelAt(*pair, 0, 0) = {0, 0, 0, 1};
    pixelAt(*pair, 1, 0) = {1, 1, 1, 1};
    ImagePtr doubled = resize(*pair, 4, 1, ResizeFilter::Triangle);
    const float expected[4] = {0.0f, 0.25f, 0.75f, 1.0f};
    for (int x = 0; x < 4; ++x) EXPECT_NEAR(pixelAt(*doubled, x, 0).r, expected[x], 1e-6f) << x;
    EXPECT_THROW(resize(*pair, 0, 1), ImageError);
}

TEST(Image, FitAndCutGeometry) {
    EXPECT_EQ(fitInSize(400, 200, 100, 100).width, 100);
    EXPECT_EQ(fitInSize(400, 200, 100, 100).height, 50);
    EXPECT_EQ(fitOutSize(400, 200, 100, 100).width, 200);
    EXPECT_EQ(fitOutSize(400, 200, 100, 100).height, 100);
    EXPECT_EQ(fitInSize(1000, 1, 10, 10).height, 1);  // never below one pixel
    for (auto [width, height] : {std::pair{30, 17}, std::pair{5, 40}, std::pair{64, 64}}) {
        Size in = fitInSize(48, 36, width, height);
        Size out = fitOutSize(48, 36, width, height);
        EXPECT_TRUE(in.width <= width && in.height <= height && (in.width == width || in.height == height));
        EXPECT_TRUE(out.width >= width && out.height >= height && (out.width == width || out.height == height));
    }
    // cutIn keeps the centre: a wide image with red sides and a green middle, cut to a square.
    ImagePtr wide = filledImage(30, 10, {1, 0, 0, 1});
    for (int y = 0; y < 10; ++y) {
        for (int x = 10; x < 20; ++x) pixelAt(*wide, x, y) = {0, 1, 0, 1};
    }
    ImagePtr square = cutIn(*wide, 5, 5);
    ASSERT_EQ(square->width, 5);
    ASSERT_EQ(square->height, 5);
    for (size_t index = 0; index < 25; ++index) expectPixel(pixels(*square)[index], {0, 1, 0, 1}, 1e-5f);
    ImagePtr fitted = fitIn(*wide, 9, 9);
    EXPECT_EQ(fitted->width, 9);
    EXPECT_EQ(fitted->height, 3);
    ImagePtr part = cropResize(*wide, 10, 0, 10, 10, 2, 2);
    expectPixel(pixelAt(*part, 1, 1), {0, 1, 0, 1}, 1e-5f);
}

TEST(Image, DrawsOpaqueOrBlendedAndClipsAtTheEdges) {
    ImagePtr dest = filledImage(4, 4, {0, 0, 1, 1});
    ImagePtr src = filledImage(3, 3, {1, 0, 0, 0.25f});
    draw(*dest, *src, 2, -1, false);
    expectPixel(pixelAt(*dest, 2, 0), {1, 0, 0, 0.25f});
    expectPixel(pixelAt(*dest, 3, 1), {1, 0, 0, 0.25f});
    expectPixel(pixelAt(*dest, 1, 0), {0, 0, 1, 1});
    expectPixel(pixelAt(*dest, 2, 2), {0, 0, 1, 1});

    ImagePtr under = filledImage(2, 2, {0, 0, 1, 1});
    draw(*under, *src, -1, -1, true);
    expectPixel(pixelAt(*under, 0, 0), {0.25f, 0, 0.75f, 1});
    expectPixel(pixelAt(*under, 1, 1), {0.25f, 0, 0.75f, 1});
    // Over a transparent pixel, blending keeps the source's colour.
    ImagePtr clear = createImage(1, 1);
    draw(*clear, *src, 0, 0, true);
    expectPixel(pixelAt(*clear, 0, 0), {1, 0, 0, 0.25f});
    draw(*clear, *src, 5, 5, true);  // entirely outside: nothing happens
    expectPixel(pixelAt(*clear, 0, 0), {1, 0, 0, 0.25f});
    // Onto itself, shifted: every pixel comes from the image as it was.
    ImagePtr ramp = createImage(4, 1);
    for (int x = 0; x < 4; ++x) pixelAt(*ramp, x, 0) = {float(x), 0, 0, 1};
    draw(*ramp, *ramp, 1, 0, false);
    for (int x = 0; x < 4; ++x) EXPECT_EQ(pixelAt(*ramp, x, 0).r, float(x == 0 ? 0 : x - 1)) << x;
}

TEST(Image, ColourOperations) {
    ImagePtr image = filledImage(2, 1, {0.25f, 0.5f, 1.0f, 0.5f});
    addColor(*image, {0.25f, 0, -0.5f, 0});
    expectPixel(pixelAt(*image, 1, 0), {0.5f, 0.5f, 0.5f, 0.5f});
    multiplyColor(*image, {2, 1, 0.5f, 2});
    expectPixel(pixelAt(*image, 0, 0), {1, 0.5f, 0.25f, 1});
    changeExposure(*image, -1);
    expectPixel(pixelAt(*image, 0, 0), {0.5f, 0.25f, 0.125f, 1});
    changeGamma(*image, 0.5f);
    expectPixel(pixelAt(*image, 0, 0), {0.25f, 0.0625f, 0.015625f, 1});
    makeNegative(*image);
    expectPixel(pixelAt(*image, 0, 0), {0.75f, 0.9375f, 0.984375f, 1});
    changeContrast(*image, 2);
    expectPixel(pixelAt(*image, 0, 0), {1.0f, 1.375f, 1.46875f, 1});
    EXPECT_THROW(changeGamma(*image, 0), ImageError);
    EXPECT_THROW(changeExposure(*image, NAN), ImageError);

    ImagePtr grey = filledImage(1, 1, {0.0f, 0.002f, 0.5f, 0.3f});
    changeSrgb(*grey, true);
    expectPixel(pixelAt(*grey, 0, 0), {0.0f, 0.002f * 12.92f, 0.735357f, 0.3f}, 1e-5f);
    changeSrgb(*grey, false);
    expectPixel(pixelAt(*grey, 0, 0), {0.0f, 0.002f, 0.5f, 0.3f}, 1e-5f);
}

TEST(Image, WhiteBalanceMakesTheReferenceColourGrey) {
    Rgba multiplier{};
    ImagePtr tinted = filledImage(10, 10, {0.8f, 0.4f, 0.2f, 1});
    ASSERT_TRUE(whiteBalanceMultiplier(*tinted, WhiteBalanceMode::Average, multiplier));
    expectPixel({0.8f * multiplier.r, 0.4f * multiplier.g, 0.2f * multiplier.b, multiplier.a},
                {1.4f / 3, 1.4f / 3, 1.4f / 3, 1}, 1e-5f);
    // A bright warm twentieth among dim blue pixels: the average sees mostly blue, the weighted
    // average leans to the bright pixels, highlights see only them.
    ImagePtr scene = filledImage(20, 20, {0.02f, 0.02f, 0.1f, 1});
    for (int y = 4; y < 8; ++y) {
        for (int x = 3; x < 8; ++x) pixelAt(*scene, x, y) = {1.0f, 0.8f, 0.5f, 1};
    }
    Rgba average{}, weighted{}, highlights{};
    ASSERT_TRUE(whiteBalanceMultiplier(*scene, WhiteBalanceMode::Average, average));
    ASSERT_TRUE(whiteBalanceMultiplier(*scene, WhiteBalanceMode::WeightedAverage, weighted));
    ASSERT_TRUE(whiteBalanceMultiplier(*scene, WhiteBalanceMode::Highlights, highlights));
    EXPECT_GT(average.r, average.b);
    EXPECT_LT(weighted.r / weighted.b, average.r / average.b);
    EXPECT_NEAR(highlights.r * 1.0f, highlights.b * 0.5f, 1e-5f);
    EXPECT_NEAR(highlights.g * 0.8f, highlights.b * 0.5f, 1e-5f);

    ASSERT_TRUE(whiteBalanceMultiplier(*scene, WhiteBalanceMode::None, multiplier));
    expectPixel(multiplier, {1, 1, 1, 1}, 0);
    ASSERT_TRUE(whiteBalanceMultiplier(*scene, static_cast<WhiteBalanceMode>(9), multiplier));
    expectPixel(multiplier, {1, 1, 1, 1}, 0);
    ImagePtr black = createImage(3, 3);
    EXPECT_FALSE(whiteBalanceMultiplier(*black, WhiteBalanceMode::Average, multiplier));
    expectPixel(multiplier, {1, 1, 1, 1}, 0);
}

TEST(Image, DifferenceIsAMeanAbsoluteDistance) {
    ImagePtr first = gradientImage(6, 3);
    ImagePtr second = cloneImage(*first);
    EXPECT_EQ(difference(*first, *second), 0.0f);
    pixelAt(*second, 2, 1).r += 0.6f;
    pixelAt(*second, 5, 2).a -= 1.2f;
    float distance = difference(*first, *second);
    EXPECT_NEAR(distance, 1.8f / (6 * 3 * 4), 1e-6f);
    EXPECT_EQ(distance, difference(*second, *first));
    addColor(*second, {0.1f, 0.1f, 0.1f, 0.1f});
    EXPECT_GT(difference(*first, *second), distance);  // the two changes stay apart from the shift
    ImagePtr other = createImage(3, 6);
    EXPECT_THROW(difference(*first, *other), ImageError);
}

TEST(Image, RawFormatsRoundTrip) {
    ImagePtr image = gradientImage(5, 3);
    for (int format : {0, 1, 3, 4, 5}) {
        size_t bytesPerPixel = rawBytesPerPixel(format);
        std::vector<uint8_t> raw(bytesPerPixel * 15);
        imageToRaw(*image, raw.data(), raw.size(), format);
        ImagePtr back = imageFromRaw(raw.data(), raw.size(), format, 5, 3, 0);
        float tolerance = format == 1 ? 0.0f : format == 5 ? 1e-3f : format == 3 ? 0.5f / 65535 : 0.5f / 255;
        for (size_t index = 0; index < 15; ++index) {
            Rgba expected = pixels(*image)[index];
            if (format == 4) expected.a = 1.0f;
            expectPixel(pixels(*back)[index], expected, tolerance * 1.0001f);
        }
    }
    // BGRA byte order and padded rows.
    const uint8_t padded[] = {10, 20, 30, 40, 0xEE, 0xEE, 50, 60, 70, 80, 0xEE, 0xEE};
    ImagePtr two = imageFromRaw(padded, sizeof padded - 2, 0, 1, 2, 6);
    expectPixel(pixelAt(*two, 0, 1), {70 / 255.0f, 60 / 255.0f, 50 / 255.0f, 80 / 255.0f});
    std::vector<uint8_t> small(4 * 15 - 1);
    EXPECT_THROW(imageToRaw(*image, small.data(), small.size(), 0), ImageError);
    EXPECT_THROW(imageToRaw(*image, small.data(), small.size(), 2), ImageError);
    EXPECT_THROW(imageFromRaw(padded, sizeof padded - 3, 0, 1, 2, 6), ImageError);
    EXPECT_THROW(imageFromRaw(padded, sizeof padded, 0, 1, 2, 3), ImageError);
    // Half floats keep values beyond 1, bytes clamp them.
    ImagePtr bright = filledImage(1, 1, {4.0f, -1.0f, 0.5f, 1.0f});
    Imath::half halves[4];
    imageToRaw(*bright, halves, sizeof halves, 5);
    EXPECT_EQ(float(halves[0]), 4.0f);
    EXPECT_EQ(float(halves[1]), -1.0f);
    uint8_t bgr[3];
    imageToRaw(*bright, bgr, 3, 4);
    EXPECT_EQ(bgr[0], 128);
    EXPECT_EQ(bgr[1], 0);
    EXPECT_EQ(bgr[2], 255);
}

TEST(Image, BitmapDataFlagsStrideAndAlpha) {
    ImagePtr image = createImage(2, 2);
    pixelAt(*image, 0, 0) = {1, 0, 0, 1};
    pixelAt(*image, 1, 0) = {0, 1, 0, 0.5f};
    pixelAt(*image, 0, 1) = {0, 0, 1, 0};
    pixelAt(*image, 1, 1) = {1, 1, 1, 1};
    EXPECT_EQ(bitmapDataSize(*image, 0, 0, -1), 12u);
    std::vector<uint8_t> plain(12);
    writeBitmapData(*image, plain.data(), 0, 0, -1);
    EXPECT_EQ(plain, (std::vector<uint8_t>{0, 0, 255, 0, 255, 0, 255, 0, 0, 255, 255, 255}));

    int flags = bitmapPreserveAlpha | bitmapSwapChannels | bitmapReverseY;
    ASSERT_EQ(bitmapDataSize(*image, flags, 10, -1), 20u);
    std::vector<uint8_t> padded(20, 0xEE);
    writeBitmapData(*image, padded.data(), flags, 10, -1);
    EXPECT_EQ(padded, (std::vector<uint8_t>{0, 0, 255, 0, 255, 255, 255, 255, 0, 0,  //
                                            255, 0, 0, 255, 0, 255, 0, 128, 0, 0}));
    std::vector<uint8_t> constant(16);
    writeBitmapData(*image, constant.data(), bitmapPreserveAlpha, 0, 7);
    EXPECT_EQ(constant[3], 7);
    EXPECT_EQ(constant[15], 7);
    EXPECT_THROW(bitmapDataSize(*image, bitmapPreserveAlpha, 7, -1), ImageError);
    EXPECT_THROW(bitmapDataSize(*image, 0, 0, 256), ImageError);
}
