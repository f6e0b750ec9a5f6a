#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <OpenEXR/ImfRgbaFile.h>
#include <tiffio.h>

#include "core/memory.h"
#include "image/codecs.h"
#include "image/operations.h"
#include "image_test_helpers.h"
#include "stb_image.h"
#include "stb_image_write.h"

using namespace tovi::ref;
using namespace tovi::ref::image;
using namespace tovi::ref::image::testing;

namespace {

// A file name of this test process, removed again at the end of the test.
class TemporaryFile {
public:
    explicit TemporaryFile(const std::string& name)
        : path_(std::filesystem::temp_directory_path() /
                (std::to_string(::getpid()) + "-" + ::testing::UnitTest::GetInstance()->current_test_info()->name() +
                 "-" + name)) {}
    ~TemporaryFile() { std::filesystem::remove(path_); }
    std::string str() const { return path_.string(); }

private:
    std::filesystem::path path_;
};

struct StbRelease {
    void operator()(void* data) const { stbi_image_free(data); }
};

// Compares colour channels after the output gamma, where 8-bit files have their steps.
void expectWithinSteps(const ToviImage& expected, const ToviImage& actual, float gamma, float step, bool alpha) {
    ASSERT_EQ(expected.width, actual.width);
    ASSERT_EQ(expected.height, actual.height);
    auto encoded = [gamma](float value) { return std::pow(std::clamp(value, 0.0f, 1.0f), 1.0f / gamma); };
    for (size_t index = 0; index < pixelCount(expected); ++index) {
        const Rgba& want = pixels(expected)[index];
        const Rgba& got = pixels(actual)[index];
        EXPECT_NEAR(encoded(got.r), encoded(want.r), step) << index;
        EXPECT_NEAR(encoded(got.g), encoded(want.g), step) << index;
        EXPECT_NEAR(encoded(got.b), encoded(want.b), step) << index;
        EXPECT_NEAR(got.a, alpha ? want.a : 1.0f, alpha ? step : 0.0f) << index;
    }
}

constexpr float byteStep = 0.5f / 255 + 1e-6f;
constexpr float wordStep = 0.5f / 65535 + 1e-7f;

}  // namespace

TEST(ImageCodecs, Png8BitRoundTripsThroughTheOutputGammaAndReadsElsewhere) {
    ImagePtr image = gradientImage(17, 9);
    for (float gamma : {1.0f, 2.2f}) {
        image->outputGamma = gamma;
        for (bool alpha : {false, true}) {
            Bytes png = encodePng(*image, alpha, false);
            ImagePtr back = decodePng(png.data(), png.size());
            EXPECT_NEAR(back->outputGamma, gamma, 1e-4f);
            expectWithinSteps(*image, *back, gamma, byteStep, alpha);

            int width = 0, height = 0, channels = 0;
            std::unique_ptr<unsigned char, StbRelease> other(
                stbi_load_from_memory(png.data(), static_cast<int>(png.size()), &width, &height, &channels, 4));
            ASSERT_TRUE(other);
            EXPECT_EQ(channels, alpha ? 4 : 3);
            ByteEncoder encode(gamma);
            const Rgba& last = pixelAt(*image, 16, 8);
            const unsigned char* stored = other.get() + (8 * 17 + 16) * 4;
            EXPECT_EQ(stored[0], encode(last.r));
            EXPECT_EQ(stored[2], encode(last.b));
            EXPECT_EQ(stored[3], alpha ? toByte(last.a) : 255);
        }
    }
}

TEST(ImageCodecs, PngDecodesGreyFilesOfAnotherWriter) {
    const uint8_t grey[6] = {0, 51, 102, 153, 204, 255};
    const uint8_t greyAlpha[4] = {10, 0, 200, 255};
    for (int channels : {1, 2}) {
        Bytes png;
        auto append = [](void* context, void* data, int size) {
            auto* bytes = static_cast<uint8_t*>(data);
            static_cast<Bytes*>(context)->insert(static_cast<Bytes*>(context)->end(), bytes, bytes + size);
        };
        ASSERT_TRUE(stbi_write_png_to_func(append, &png, channels == 1 ? 3 : 2, channels == 1 ? 2 : 1, channels,
                                           channels == 1 ? grey : greyAlpha, 0));
        ImagePtr image = decodePng(png.data(), png.size());
        if (channels == 1) {
            ASSERT_EQ(image->width, 3);
            ASSERT_EQ(image->height, 2);
            const Rgba& last = pixelAt(*image, 2, 1);
            EXPECT_FLOAT_EQ(last.r, 1.0f);
            EXPECT_FLOAT_EQ(pixelAt(*image, 1, 0).g, 0.2f);
            EXPECT_FLOAT_EQ(pixelAt(*image, 0, 1).b, 0.6f);
            EXPECT_EQ(last.a, 1.0f);
        } else {
            EXPECT_FLOAT_EQ(pixelAt(*image, 0, 0).g, 10 / 255.0f);
            EXPECT_EQ(pixelAt(*image, 0, 0).a, 0.0f);
            EXPECT_FLOAT_EQ(pixelAt(*image, 1, 0).b, 200 / 255.0f);
            EXPECT_EQ(pixelAt(*image, 1, 0).a, 1.0f);
        }
    }
}

TEST(ImageCodecs, Png16BitKeepsSixteenBits) {
    ImagePtr image = createImage(300, 2);
    for (int x = 0; x < 300; ++x) {
        float value = (x * 217 % 65536) / 65535.0f;  // neighbours closer than an 8-bit step
        pixelAt(*image, x, 0) = {value, 1.0f - value, value * 0.5f, value};
        pixelAt(*image, x, 1) = {0.3f, 0.2f, 0.1f, 1.0f};
    }
    image->outputGamma = 2.2f;  // no effect on 16 bits
    Bytes png = encodePng(*image, true, true);
    ImagePtr back = decodePng(png.data(), png.size());
    EXPECT_EQ(back->outputGamma, 1.0f);
    expectWithinSteps(*image, *back, 1.0f, wordStep, true);

    ASSERT_TRUE(stbi_is_16_bit_from_memory(png.data(), static_cast<int>(png.size())));
    int width = 0, height = 0, channels = 0;
    std::unique_ptr<stbi_us, StbRelease> other(
        stbi_load_16_from_memory(png.data(), static_cast<int>(png.size()), &width, &height, &channels, 4));
    ASSERT_TRUE(other);
    for (int x = 0; x < 300; ++x) ASSERT_EQ(other.get()[x * 4], toWord(pixelAt(*image, x, 0).r)) << x;
}

TEST(ImageCodecs, JpegGrowsWithQualityAndRoundTripsWithinItsPrecision) {
    ImagePtr image = gradientImage(64, 48);
    for (int y = 0; y < 48; ++y) {
        for (int x = 0; x < 64; ++x) pixelAt(*image, x, y).g = ((x * 7 + y * 13) % 17) / 16.0f;  // texture
    }
    size_t previous = 0;
    for (int quality : {5, 25, 50, 75, 90, 100}) {
        Bytes jpeg = encodeJpeg(*image, quality);
        EXPECT_GT(jpeg.size(), previous) << quality;
        previous = jpeg.size();
    }
    EXPECT_EQ(encodeJpeg(*image, 0).size(), encodeJpeg(*image, 90).size());
    EXPECT_THROW(encodeJpeg(*image, 101), ImageError);

    ImagePtr smooth = gradientImage(32, 32);
    smooth->outputGamma = 2.2f;
    Bytes jpeg = encodeJpeg(*smooth, 100);
    ImagePtr back = decodeJpeg(jpeg.data(), jpeg.size());
    EXPECT_EQ(back->outputGamma, 1.0f);  // JPEG records no gamma: the stored values come back
    double totalError = 0;
    for (size_t index = 0; index < pixelCount(*back); ++index) {
        float stored = std::pow(pixels(*smooth)[index].r, 1 / 2.2f);
        EXPECT_NEAR(pixels(*back)[index].r, stored, 4.0f / 255) << index;
        EXPECT_EQ(pixels(*back)[index].a, 1.0f);
        totalError += std::fabs(pixels(*back)[index].r - stored);
    }
    EXPECT_LT(totalError / pixelCount(*back), 1.0 / 255);
    int width = 0, height = 0, channels = 0;
    std::unique_ptr<unsigned char, StbRelease> other(
        stbi_load_from_memory(jpeg.data(), static_cast<int>(jpeg.size()), &width, &height, &channels, 3));
    ASSERT_TRUE(other);
    EXPECT_EQ(width, 32);
    EXPECT_NEAR(other.get()[3 * (31 * 32 + 31)] / 255.0f, std::pow(pixelAt(*smooth, 31, 31).r, 1 / 2.2f), 4.0f / 255);
}

TEST(ImageCodecs, BmpStoresAlphaAndSwappedChannelsInTheFileLayout) {
    ImagePtr image = gradientImage(3, 2);
    for (bool alpha : {false, true}) {
        for (bool swap : {false, true}) {
            Bytes bmp = encodeBmp(*image, alpha, swap);
            ASSERT_GT(bmp.size(), 54u);
            EXPECT_EQ(bmp[0], 'B');
            int32_t width, height, offset;
            uint16_t bits;
            std::memcpy(&offset, &bmp[10], 4);
            std::memcpy(&width, &bmp[18], 4);
            std::memcpy(&height, &bmp[22], 4);
            std::memcpy(&bits, &bmp[28], 2);
            EXPECT_EQ(width, 3);
            EXPECT_EQ(height, 2);  // positive: bottom row first
            EXPECT_EQ(bits, alpha ? 32 : 24);
            // The first stored pixel is the bottom-left one, blue first unless swapped.
            const Rgba& bottomLeft = pixelAt(*image, 0, 1);
            EXPECT_EQ(bmp[offset], toByte(swap ? bottomLeft.r : bottomLeft.b));
            EXPECT_EQ(bmp[offset + 2], toByte(swap ? bottomLeft.b : bottomLeft.r));
            if (alpha) {
                EXPECT_EQ(bmp[offset + 3], toByte(bottomLeft.a));
            }

            ImagePtr back = decodeBmp(bmp.data(), bmp.size());
            ImagePtr expected = cloneImage(*image);
            if (swap) {
                for (size_t index = 0; index < 6; ++index) std::swap(pixels(*expected)[index].r, pixels(*expected)[index].b);
            }
            expectWithinSteps(*expected, *back, 1.0f, byteStep, alpha);
        }
    }
}

TEST(ImageCodecs, TiffKeepsEightSixteenAndThirtyTwoBits) {
    ImagePtr image = gradientImage(7, 5);
    pixelAt(*image, 0, 0).r = 3.5f;  // only float keeps values beyond 1
    for (int bits : {8, 16, 32}) {
        TemporaryFile file("image.tif");
        writeTiff(*image, file.str(), bits);
        ImagePtr back = readTiff(file.str());
        EXPECT_EQ(back->width, 7);
        if (bits == 32) {
            EXPECT_EQ(std::memcmp(pixels(*back), pixels(*image), pixelCount(*image) * sizeof(Rgba)), 0);
        } else {
            ImagePtr clamped = cloneImage(*image);
            pixelAt(*clamped, 0, 0).r = 1.0f;
            expectWithinSteps(*clamped, *back, 1.0f, bits == 8 ? byteStep : wordStep, true);
        }
        std::unique_ptr<TIFF, void (*)(TIFF*)> tiff(TIFFOpen(file.str().c_str(), "r"), TIFFClose);
        ASSERT_TRUE(tiff);
        uint16_t storedBits = 0, samples = 0;
        TIFFGetField(tiff.get(), TIFFTAG_BITSPERSAMPLE, &storedBits);
        TIFFGetField(tiff.get(), TIFFTAG_SAMPLESPERPIXEL, &samples);
        EXPECT_EQ(storedBits, bits);
        EXPECT_EQ(samples, 4);
        if (bits == 8) {
            uint32_t packed[35];
            ASSERT_TRUE(TIFFReadRGBAImageOriented(tiff.get(), 7, 5, packed, ORIENTATION_TOPLEFT, 0));
            // libtiff's reader premultiplies the unassociated alpha that the file declares.
            const Rgba& corner = pixelAt(*image, 6, 4);
            EXPECT_EQ(TIFFGetA(packed[34]), toByte(corner.a));
            EXPECT_NEAR(TIFFGetG(packed[34]), toByte(corner.g) * toByte(corner.a) / 255.0, 1.0);
        }
    }
    EXPECT_THROW(writeTiff(*image, "/nonexistent-folder/x.tif", 8), ImageError);
    EXPECT_THROW(writeTiff(*image, "unused.tif", 12), ImageError);
}

TEST(ImageCodecs, ExrHalfAndFloat) {
    ImagePtr image = gradientImage(6, 4);
    pixelAt(*image, 1, 1) = {1000.0f, -2.0f, 1e-3f, 0.5f};
    TemporaryFile halfFile("half.exr"), floatFile("float.exr");
    writeExr(*image, halfFile.str(), ExrChannels::Half);
    writeExr(*image, floatFile.str(), ExrChannels::Float);
    ImagePtr fromHalf = readExr(halfFile.str());
    ImagePtr fromFloat = readExr(floatFile.str());
    EXPECT_EQ(std::memcmp(pixels(*fromFloat), pixels(*image), pixelCount(*image) * sizeof(Rgba)), 0);
    Imf::RgbaInputFile other(halfFile.str().c_str());
    std::vector<Imf::Rgba> stored(24);
    other.setFrameBuffer(stored.data(), 1, 6);
    other.readPixels(0, 3);
    for (int y = 0; y < 4; ++y) {
        for (int x = 0; x < 6; ++x) {
            const Rgba& want = pixelAt(*image, x, y);
            const Rgba& got = pixelAt(*fromHalf, x, y);
            EXPECT_EQ(got.r, float(Imath::half(want.r)));
            EXPECT_EQ(got.a, float(Imath::half(want.a)));
            EXPECT_NEAR(got.g, want.g, std::fabs(want.g) / 1024 + 1e-7f);
            EXPECT_EQ(float(stored[static_cast<size_t>(y * 6 + x)].b), float(Imath::half(want.b)));
        }
    }
}

TEST(ImageCodecs, LoadsByContentAndReadsSizesFromHeaders) {
    ImagePtr image = gradientImage(9, 4);
    for (size_t index = 0; index < pixelCount(*image); ++index) pixels(*image)[index].a = 1.0f;  // as JPEG keeps it
    TemporaryFile png("misnamed.jpg"), jpeg("a.jpeg"), bmp("a.bmp"), tiff("a.tif"), exr("a.exr"), text("a.png");
    writeFile(png.str(), encodePng(*image, true, false));
    writeFile(jpeg.str(), encodeJpeg(*image, 95));
    writeFile(bmp.str(), encodeBmp(*image, false, false));
    writeTiff(*image, tiff.str(), 16);
    writeExr(*image, exr.str(), ExrChannels::Half);
    writeFile(text.str(), Bytes{'n', 'o', 't', ' ', 'a', 'n', ' ', 'i', 'm', 'a', 'g', 'e'});
    for (const TemporaryFile* file : {&png, &jpeg, &bmp, &tiff, &exr}) {
        Size size = loadImageSize(file->str());
        EXPECT_EQ(size.width, 9) << file->str();
        EXPECT_EQ(size.height, 4) << file->str();
        ImagePtr loaded = loadImage(file->str());
        EXPECT_LT(difference(*loaded, *image), 0.02f) << file->str();
    }
    EXPECT_THROW(loadImage(text.str()), ImageError);
    EXPECT_THROW(loadImageSize(text.str()), ImageError);
    EXPECT_THROW(loadImage("/nonexistent-folder/a.png"), ImageError);
}

TEST(ImageCodecs, RefusesCorruptDataWithoutLeaking) {
    ImagePtr image = gradientImage(40, 30);
    int64_t start = liveBlockCount();
    Bytes png = encodePng(*image, true, false);
    Bytes jpeg = encodeJpeg(*image, 90);
    Bytes bmp = encodeBmp(*image, true, false);
    for (Bytes* data : {&png, &jpeg, &bmp}) {
        Bytes cut(data->begin(), data->begin() + static_cast<ptrdiff_t>(data->size() / 2));
        Bytes garbled = *data;
        for (size_t index = 8; index < garbled.size(); index += 7) garbled[index] ^= 0x5A;
        for (const Bytes* bad : {&cut, &garbled}) {
            try {
                if (data == &png) decodePng(bad->data(), bad->size());
                if (data == &bmp) decodeBmp(bad->data(), bad->size());
                if (data == &jpeg) decodeJpeg(bad->data(), bad->size());
            } catch (const ImageError&) {
            }
        }
    }
    EXPECT_THROW(decodePng(png.data(), png.size() / 2), ImageError);
    EXPECT_THROW(decodePng(jpeg.data(), jpeg.size()), ImageError);
    EXPECT_THROW(decodeJpeg(png.data(), png.size()), ImageError);
    EXPECT_THROW(decodeBmp(png.data(), png.size()), ImageError);
    EXPECT_EQ(liveBlockCount(), start);
}
