// The SDK calls behind the scene benchmarks of bench_scene.py, made directly from C++: the
// difference between the two is the module's own share.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstring>
#include <vector>

#include "tovi_sdk.h"

extern "C" {
#define TOVI_BENCH_DECLARE(result, name, params, failure) result name params;
TOVI_SDK_ENTRIES(TOVI_BENCH_DECLARE)
#undef TOVI_BENCH_DECLARE
}

namespace {

const double noTime = std::nan("");

struct Scene {
    ToviRenderer* renderer = Tovi_ToviRenderer_create(nullptr, nullptr);
    ToviPluginID light = 0;
    ToviPluginID mesh = 0;
    Scene() {
        Tovi_ToviRenderer_newPlugin(renderer, "light", "LightSphere", 1, &light);
        Tovi_ToviRenderer_newPlugin(renderer, "mesh", "GeomStaticMesh", 1, &mesh);
    }
    ~Scene() { Tovi_ToviRenderer_release(renderer); }
};

void SetFloatProperty(benchmark::State& state) {
    Scene scene;
    uint8_t stream[8];
    uint32_t code = 1;
    float value = 1.0f;
    std::memcpy(stream, &code, 4);
    std::memcpy(stream + 4, &value, 4);
    for (auto _ : state) {
        benchmark::DoNotOptimize(Tovi_ToviRenderer_setPropertyBytesValueAtTimeByID(scene.renderer, scene.light,
                                                                                   "intensity", stream, noTime, 1));
    }
}
BENCHMARK(SetFloatProperty);

void GetFloatProperty(benchmark::State& state) {
    Scene scene;
    for (auto _ : state) {
        uint8_t* bytes = nullptr;
        size_t size = 0;
        Tovi_getPropertyByteArrayByID(scene.renderer, scene.light, "intensity", &bytes, &size, noTime);
        C_memory_free(bytes);
    }
}
BENCHMARK(GetFloatProperty);

void SetMillionVectors(benchmark::State& state) {
    Scene scene;
    std::vector<float> vertices(3 * 1000000, 0.5f);
    uint8_t stream[16];
    uint32_t header[2] = {2004, 1000000};
    uint64_t address = reinterpret_cast<uintptr_t>(vertices.data());
    std::memcpy(stream, header, 8);
    std::memcpy(stream + 8, &address, 8);
    for (auto _ : state) {
        benchmark::DoNotOptimize(Tovi_ToviRenderer_setPropertyBytesValueAtTimeByID(scene.renderer, scene.mesh,
                                                                                   "vertices", stream, noTime, 1));
    }
}
BENCHMARK(SetMillionVectors)->Unit(benchmark::kMillisecond);

void CreateHundredThousandPlugins(benchmark::State& state) {
    for (auto _ : state) {
        Scene scene;
        for (int index = 0; index < 100000; ++index) {
            ToviPluginID id;
            Tovi_ToviRenderer_newPlugin(scene.renderer, nullptr, "Node", 1, &id);
        }
    }
}
BENCHMARK(CreateHundredThousandPlugins)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
