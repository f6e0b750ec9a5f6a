// The SDK calls behind bench_images.py, made directly from C++ on the same 1920x1080 image: the
// difference between the two is the module's own share of encoding and saving.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "tovi_sdk.h"

extern "C" {
#define TOVI_BENCH_DECLARE(result, name, params, failure) result name params;
TOVI_SDK_ENTRIES(TOVI_BENCH_DECLARE)
#undef TOVI_BENCH_DECLARE
}

namespace {

constexpr int width = 1920;
constexpr int height = 1080;

// The pattern bench_images.py fills: smooth ramps with a fine-grained third channel, so that the
// codecs have real work.
struct TestImage {
    ToviImage* image = ToviImage_create(width, height);
    TestImage() {
        size_t count = 0;
        float* pixels = ToviImage_getPixelDataPointerAndPixelCount(image, &count);
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                float* pixel = pixels + 4 * (static_cast<size_t>(y) * width + x);
                pixel[0] = static_cast<float>(x) / width;
                pixel[1] = static_cast<float>(y) / height;
                pixel[2] = static_cast<float>((x * 7 + y * 13) % 256) / 255.0f;
                pixel[3] = 1.0f;
            }
        }
    }
    ~TestImage() { C_memory_free(image); }
};

const TestImage& testImage() {
    static TestImage shared;
    return shared;
}

const std::string folder = [] {
    const char* temporary = std::getenv("TMPDIR");
    return std::string(temporary ? temporary : "/tmp");
}();

void CompressPng(benchmark::State& state) {
    for (auto _ : state) {
        size_t size = 0;
        C_memory_free(ToviImage_compressToPng(testImage().image, 0, &size, nullptr));
    }
}
BENCHMARK(CompressPng)->Unit(benchmark::kMillisecond);

void CompressJpeg(benchmark::State& state) {
    for (auto _ : state) {
        size_t size = 0;
        C_memory_free(ToviImage_compressToJpeg(testImage().image, 90, &size, nullptr));
    }
}
BENCHMARK(CompressJpeg)->Unit(benchmark::kMillisecond);

void SavePng(benchmark::State& state) {
    std::string path = folder + "/tovi_bench_native.png";
    for (auto _ : state) benchmark::DoNotOptimize(ToviImage_compressToPngFile(testImage().image, 0, path.c_str(), nullptr));
    std::remove(path.c_str());
}
BENCHMARK(SavePng)->Unit(benchmark::kMillisecond);

void SaveJpeg(benchmark::State& state) {
    std::string path = folder + "/tovi_bench_native.jpg";
    for (auto _ : state) benchmark::DoNotOptimize(ToviImage_compressToJpegFile(testImage().image, 90, path.c_str(), nullptr));
    std::remove(path.c_str());
}
BENCHMARK(SaveJpeg)->Unit(benchmark::kMillisecond);

void SaveExr(benchmark::State& state) {
    std::string path = folder + "/tovi_bench_native.exr";
    for (auto _ : state) benchmark::DoNotOptimize(ToviImage_SaveToExrFile(testImage().image, path.c_str(), nullptr));
    std::remove(path.c_str());
}
BENCHMARK(SaveExr)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
