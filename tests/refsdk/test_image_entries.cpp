// The image entries of the built library, called as the module calls them.
#include <gtest/gtest.h>

#include <unistd.h>

#include <cstring>
#include <nlohmann/json.hpp>
#include <filesystem>
#include <string>
#include <vector>

#include "api/entries.h"
#include "testctl/testctl.h"

namespace {

long long liveBlocks() { return ToviRef_liveCount("blocks"); }

ToviImage* gradient(int width, int height) {
    ToviImage* image = ToviImage_create(width, height);
    size_t count = 0;
    float* data = ToviImage_getPixelDataPointerAndPixelCount(image, &count);
    for (size_t index = 0; index < count; ++index) {
        data[4 * index] = static_cast<float>(index % 7) / 6;
        data[4 * index + 1] = static_cast<float>(index % 5) / 4;
        data[4 * index + 2] = 0.5f;
        data[4 * index + 3] = 1.0f;
    }
    return image;
}

std::string temporaryPath(const char* name) {
    return (std::filesystem::temp_directory_path() / (std::to_string(::getpid()) + "-entries-" + name)).string();
}

}  // namespace

TEST(ImageEntries, ManyCyclesLeaveNoLiveBlock) {
    long long start = liveBlocks();
    for (int cycle = 0; cycle < 150; ++cycle) {
        ToviImage* image = gradient(24 + cycle % 5, 16);
        ASSERT_NE(image, nullptr);
        size_t pngSize = 0, jpegSize = 0, bmpSize = 0, bitmapSize = 0;
        void* png = ToviImage_compressToPng(image, TOVI_PNG_PRESERVE_ALPHA | (cycle % 2 ? TOVI_PNG_16BIT : 0), &pngSize, nullptr);
        void* jpeg = ToviImage_compressToJpeg(image, 1 + cycle % 100, &jpegSize, nullptr);
        void* bmp = ToviImage_convertToBmp(image, cycle % 2, &bmpSize, nullptr, 1);
        void* bitmap = ToviImage_toBitmapData(image, &bitmapSize, TOVI_BITMAP_PRESERVE_ALPHA, 0, -1);
        ASSERT_TRUE(png && jpeg && bmp && bitmap);
        EXPECT_EQ(bitmapSize, static_cast<size_t>(ToviImage_getMemorySize(image) - 32) / 4);
        ToviImage* decoded[] = {ToviImage_createFromPng(png, pngSize, nullptr, 0),
                                ToviImage_createFromJpeg(jpeg, jpegSize, nullptr, 0),
                                ToviImage_createFromBmp(bmp, bmpSize, nullptr, 0),
                                ToviImage_crop(image, 1, 1, -4, 3),
                                ToviImage_resize(image, 9, 31),
                                ToviImage_cutIn(image, 5, 5),
                                ToviImage_clone(image)};
        for (ToviImage* each : decoded) {
            ASSERT_NE(each, nullptr);
            C_memory_free(each);
        }
        EXPECT_EQ(ToviImage_createFromPng(jpeg, jpegSize, nullptr, 0), nullptr);
        for (void* block : {png, jpeg, bmp, bitmap}) C_memory_free(block);
        C_memory_free(image);
    }
    EXPECT_EQ(liveBlocks(), start);
}

TEST(ImageEntries, FailureValuesForBadArguments) {
    ToviImage* image = gradient(3, 1);
    size_t size = 0;
    EXPECT_EQ(ToviImage_compressToPng(image, 4, &size, nullptr), nullptr);
    EXPECT_EQ(ToviImage_compressToPng(image, 0, nullptr, nullptr), nullptr);
    EXPECT_EQ(ToviImage_compressToJpeg(nullptr, 0, &size, nullptr), nullptr);
    EXPECT_EQ(ToviImage_toBitmapData(image, &size, 8, 0, -1), nullptr);
    EXPECT_EQ(ToviImage_create(0, 1), nullptr);
    EXPECT_EQ(ToviImage_crop(image, 0, 0, 4, 1), nullptr);
    EXPECT_EQ(ToviImage_fitIn(image, 0, 1), nullptr);
    EXPECT_EQ(ToviImage_load("/nonexistent-folder/a.png"), nullptr);
    int width = -1, height = -1;
    EXPECT_EQ(ToviImage_loadSize("/nonexistent-folder/a.png", &width, &height), 0);
    EXPECT_EQ(ToviImage_SaveToTiffFile(image, temporaryPath("bad.tif").c_str(), nullptr, 24), 0);

    // bgr of three pixels fills exactly three 32-bit integers; one byte less is refused.
    int32_t words[3] = {};
    EXPECT_EQ(ToviImage_toIntList(image, words, sizeof words, TOVI_RAW_FORMAT_BGR_BYTE), 0);
    EXPECT_NE(ToviImage_toIntList(image, words, sizeof words - 4, TOVI_RAW_FORMAT_BGRA_BYTE), 0);
    EXPECT_NE(ToviImage_toIntList(image, words, sizeof words, 7), 0);
    EXPECT_EQ(ToviImage_createFromRawData(words, sizeof words, 7, 1, 1, 0), nullptr);
    EXPECT_EQ(ToviImage_createFromRawData(words, 8, TOVI_RAW_FORMAT_BGR_BYTE, 3, 1, 0), nullptr);

    EXPECT_EQ(ToviImage_getGamma(image), 1.0f);
    EXPECT_EQ(ToviImage_setGamma(image, 0.0f), 0);
    EXPECT_EQ(ToviImage_setGamma(image, -2.0f), 0);
    EXPECT_EQ(ToviImage_setGamma(image, 2.2f), 1);
    EXPECT_EQ(ToviImage_getGamma(image), 2.2f);
    EXPECT_EQ(ToviImage_getGamma(nullptr), 0.0f);

    ToviImage* other = gradient(1, 3);
    EXPECT_EQ(ToviImage_calculateDifference(image, other), -1.0f);
    EXPECT_EQ(ToviImage_calculateDifference(image, image), 0.0f);
    EXPECT_EQ(ToviImage_drawImage(image, other, 1, -1, 1), 1);
    float multiplier[4] = {};
    EXPECT_EQ(ToviImage_calculateWhiteBalanceMultiplier(image, 0, multiplier), 1);
    EXPECT_EQ(multiplier[0], 1.0f);
    EXPECT_EQ(multiplier[3], 1.0f);
    float color[4] = {0.5f, 0.5f, 0.5f, 0.0f};
    EXPECT_EQ(ToviImage_addColor(nullptr, color), 0);
    EXPECT_EQ(ToviImage_changeGamma(image, 0.0f), 0);
    C_memory_free(other);
    C_memory_free(image);
}

TEST(ImageEntries, FilesSavedByEachEntryLoadBack) {
    ToviImage* image = gradient(8, 6);
    std::string png = temporaryPath("a.png"), jpeg = temporaryPath("a.jpg"), bmp = temporaryPath("a.bmp"),
                tiff = temporaryPath("a.tif"), exr = temporaryPath("a.exr");
    EXPECT_EQ(ToviImage_compressToPngFile(image, TOVI_PNG_16BIT, png.c_str(), nullptr), 1);
    EXPECT_EQ(ToviImage_compressToJpegFile(image, 0, jpeg.c_str(), nullptr), 1);
    EXPECT_EQ(ToviImage_SaveToBmpFile(image, 1, bmp.c_str(), nullptr, 0), 1);
    EXPECT_EQ(ToviImage_SaveToTiffFile(image, tiff.c_str(), nullptr, 0), 1);
    EXPECT_EQ(ToviImage_SaveToExrFile(image, exr.c_str(), nullptr), 1);
    for (const std::string& path : {png, jpeg, bmp, tiff, exr}) {
        int width = 0, height = 0;
        EXPECT_EQ(ToviImage_loadSize(path.c_str(), &width, &height), 1) << path;
        EXPECT_EQ(width, 8);
        EXPECT_EQ(height, 6);
        ToviImage* loaded = ToviImage_load(path.c_str());
        ASSERT_NE(loaded, nullptr) << path;
        EXPECT_LT(ToviImage_calculateDifference(image, loaded), path == jpeg ? 0.03f : 0.002f) << path;
        C_memory_free(loaded);
        std::filesystem::remove(path);
    }
    C_memory_free(image);
}

TEST(ImageEntries, RecordTheModulesArguments) {
    ToviImage* image = gradient(2, 2);
    ToviRef_setRecorder(1);
    std::string tiff = temporaryPath("recorded.tif");
    EXPECT_EQ(ToviImage_SaveToTiffFile(image, tiff.c_str(), nullptr, 16), 1);
    int32_t words[6];
    EXPECT_EQ(ToviImage_toIntList(image, words, sizeof words, TOVI_RAW_FORMAT_BGR_BYTE), 0);
    const float color[4] = {0.25f, 0.5f, 1.0f, 0.0f};
    EXPECT_EQ(ToviImage_addColor(image, color), 1);
    const char* saved = ToviRef_lastCall("ToviImage_SaveToTiffFile");
    ASSERT_NE(saved, nullptr);
    EXPECT_EQ(nlohmann::json::parse(saved)["args"],
              nlohmann::json({{"fileName", tiff}, {"bitsPerChannel", 16}, {"renderer", false}}));
    EXPECT_EQ(nlohmann::json::parse(ToviRef_lastCall("ToviImage_toIntList"))["args"],
              nlohmann::json({{"byteSize", 24}, {"format", 4}}));
    EXPECT_EQ(nlohmann::json::parse(ToviRef_lastCall("ToviImage_addColor"))["args"]["color"],
              nlohmann::json({0.25, 0.5, 1.0, 0.0}));
    ToviRef_reset();
    std::filesystem::remove(tiff);
    C_memory_free(image);
}
