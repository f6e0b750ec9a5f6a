// The compute-device lists and their selection.
#include <cstdlib>
#include <cstring>
#include <vector>

#include "api/entries.h"
#include "core/devices.h"
#include "core/memory.h"
#include "testctl/recorder.h"

using namespace tovi::ref;

namespace {

// One block: the records, then the devices' names.
int packDeviceList(DeviceKind kind, ToviComputeDevice** out, int recordSize) {
    if (!out || recordSize != static_cast<int>(sizeof(ToviComputeDevice))) return -1;
    try {
        std::vector<Device> devices = deviceList(kind);
        size_t nameBytes = 0;
        for (const Device& device : devices) nameBytes += device.name.size() + 1;
        auto* records = static_cast<ToviComputeDevice*>(allocateBlock(devices.size() * sizeof(ToviComputeDevice) + nameBytes));
        if (!records) return -1;
        char* names = reinterpret_cast<char*>(records + devices.size());
        for (size_t index = 0; index < devices.size(); ++index) {
            const Device& device = devices[index];
            ToviComputeDevice& record = records[index];
            record = ToviComputeDevice{};
            record.index = static_cast<int32_t>(index);
            std::memcpy(names, device.name.c_str(), device.name.size() + 1);
            record.name = names;
            names += device.name.size() + 1;
            record.type = device.type;
            record.totalMemoryMB = device.totalMemoryMB;
            record.numConnectedDisplays = device.numConnectedDisplays;
            record.frequencyMHz = device.frequencyMHz;
            record.gigaFlops = device.gigaFlops;
            record.ccMajor = device.ccMajor;
            record.ccMinor = device.ccMinor;
            record.rtCoreVersion = device.rtCoreVersion;
            record.useForRendering = device.useForRendering;
            record.useForDenoising = device.useForDenoising;
            record.isSupported = device.isSupported;
        }
        *out = records;
        return static_cast<int>(devices.size());
    } catch (const std::exception&) {
        return -1;
    }
}

int selectDeviceList(DeviceKind kind, const char* entry, const int32_t* indices, int count) {
    if (count < 0 || (count > 0 && !indices)) return -1;
    try {
        std::vector<int> chosen(indices, indices + count);
        TOVI_RECORD(entry, {{"indices", chosen}});
        return selectDevices(kind, chosen) ? 0 : -1;
    } catch (const std::exception&) {
        return -1;
    }
}

}  // namespace

TOVI_API int Tovi_getDeviceListMetal(ToviComputeDevice** devices, int recordSize) {
    return packDeviceList(DeviceKind::Metal, devices, recordSize);
}
TOVI_API int Tovi_getDeviceListMetalRT(ToviComputeDevice** devices, int recordSize) {
    return packDeviceList(DeviceKind::MetalRT, devices, recordSize);
}
TOVI_API int Tovi_getDeviceListOptix(ToviComputeDevice** devices, int recordSize) {
    return packDeviceList(DeviceKind::Optix, devices, recordSize);
}
TOVI_API int Tovi_getDeviceListCUDA(ToviComputeDevice** devices, int recordSize) {
    return packDeviceList(DeviceKind::CUDA, devices, recordSize);
}
TOVI_API int Tovi_getDeviceListDenoiser(ToviComputeDevice** devices, int recordSize) {
    return packDeviceList(DeviceKind::Denoiser, devices, recordSize);
}

TOVI_API int Tovi_setDeviceListMetal(const int32_t* indices, int count) {
    return selectDeviceList(DeviceKind::Metal, "Tovi_setDeviceListMetal", indices, count);
}
TOVI_API int Tovi_setDeviceListMetalRT(const int32_t* indices, int count) {
    return selectDeviceList(DeviceKind::MetalRT, "Tovi_setDeviceListMetalRT", indices, count);
}
TOVI_API int Tovi_setDeviceListOptix(const int32_t* indices, int count) {
    return selectDeviceList(DeviceKind::Optix, "Tovi_setDeviceListOptix", indices, count);
}
TOVI_API int Tovi_setDeviceListCUDA(const int32_t* indices, int count) {
    return selectDeviceList(DeviceKind::CUDA, "Tovi_setDeviceListCUDA", indices, count);
}
TOVI_API int Tovi_setDeviceListDenoiser(const int32_t* indices, int count) {
    return selectDeviceList(DeviceKind::Denoiser, "Tovi_setDeviceListDenoiser", indices, count);
}

// Publishes each kind's selection as TOVI_DEVICES_<KIND> (comma-separated indices) for render
// processes started from this one.
TOVI_API int Tovi_setGPUDevicesEnvironmentVariable(void) {
    try {
        for (int kind = 0; kind < deviceKindCount; ++kind) {
            auto deviceKind = static_cast<DeviceKind>(kind);
            std::string variable = std::string("TOVI_DEVICES_") + deviceKindName(deviceKind);
            if (setenv(variable.c_str(), selectedDevicesText(deviceKind).c_str(), 1) != 0) return -1;
        }
        return 0;
    } catch (const std::exception&) {
        return -1;
    }
}
