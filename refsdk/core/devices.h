// The compute devices the library can render on. The reference SDK renders on the CPU, the one
// device that lists that admit a CPU (CUDA's hybrid list and the denoiser's) hold; the GPU-only
// kinds list none.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <nlohmann/json_fwd.hpp>

namespace tovi::ref {

enum class DeviceKind { Metal, MetalRT, Optix, CUDA, Denoiser };
constexpr int deviceKindCount = 5;

struct Device {
    std::string name;
    int type = 2;  // TOVI_DEVICE_TYPE_*
    int totalMemoryMB = 0;
    int numConnectedDisplays = 0;
    int frequencyMHz = 0;
    int gigaFlops = 0;
    int ccMajor = 0;
    int ccMinor = 0;
    int rtCoreVersion = 0;
    bool useForRendering = false;
    bool useForDenoising = false;
    bool isSupported = true;
};

std::optional<DeviceKind> deviceKindFromName(const std::string& name);
const char* deviceKindName(DeviceKind kind);

std::vector<Device> deviceList(DeviceKind kind);
// Uses exactly the devices at `indices` (for rendering, or for denoising in the denoiser list).
// False, changing nothing, when an index is out of range.
bool selectDevices(DeviceKind kind, const std::vector<int>& indices);
// The text the device environment variable of a kind gets: the selected indices, comma-separated.
std::string selectedDevicesText(DeviceKind kind);

// Test control: replace a list (parsed from a JSON array of device objects), or restore the
// detected one. Throws nlohmann::json::exception for malformed devices.
void scriptDeviceList(DeviceKind kind, const nlohmann::json& devices);
void restoreDeviceList(DeviceKind kind);
void restoreAllDeviceLists();

// The machine's CPU, as /proc/cpuinfo and the system describe it.
Device detectCpu();

}  // namespace tovi::ref
