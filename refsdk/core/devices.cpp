#include "core/devices.h"

#include <unistd.h>

#include <array>
#include <cmath>
#include <fstream>
#include <mutex>
#include <thread>

#include <nlohmann/json.hpp>

namespace tovi::ref {

namespace {

constexpr const char* kindNames[deviceKindCount] = {"Metal", "MetalRT", "Optix", "CUDA", "Denoiser"};

std::mutex devicesMutex;
std::array<std::optional<std::vector<Device>>, deviceKindCount> lists;

bool admitsCpu(DeviceKind kind) { return kind == DeviceKind::CUDA || kind == DeviceKind::Denoiser; }

std::vector<Device> detectedList(DeviceKind kind) {
    if (!admitsCpu(kind)) return {};
    Device cpu = detectCpu();
    cpu.useForRendering = kind != DeviceKind::Denoiser;
    cpu.useForDenoising = kind == DeviceKind::Denoiser;
    return {cpu};
}

std::vector<Device>& listOf(DeviceKind kind) {
    auto& list = lists[static_cast<int>(kind)];
    if (!list) list = detectedList(kind);
    return *list;
}

std::string cpuInfoField(const std::string& field) {
    std::ifstream cpuInfo("/proc/cpuinfo");
    std::string line;
    while (std::getline(cpuInfo, line)) {
        if (line.compare(0, field.size(), field) != 0) continue;
        auto colon = line.find(':');
        if (colon == std::string::npos) continue;
        auto start = line.find_first_not_of(" \t", colon + 1);
        return start == std::string::npos ? std::string() : line.substr(start);
    }
    return {};
}

}  // namespace

std::optional<DeviceKind> deviceKindFromName(const std::string& name) {
    for (int kind = 0; kind < deviceKindCount; ++kind) {
        if (name == kindNames[kind]) return static_cast<DeviceKind>(kind);
    }
    return std::nullopt;
}

const char* deviceKindName(DeviceKind kind) { return kindNames[static_cast<int>(kind)]; }

Device detectCpu() {
    Device cpu;
    cpu.name = cpuInfoField("model name");
    if (cpu.name.empty()) cpu.name = "CPU";
    cpu.type = 2;
    long pages = sysconf(_SC_PHYS_PAGES);
    long pageSize = sysconf(_SC_PAGESIZE);
    if (pages > 0 && pageSize > 0) cpu.totalMemoryMB = static_cast<int>((static_cast<long long>(pages) * pageSize) >> 20);
    std::string megahertz = cpuInfoField("cpu MHz");
    if (!megahertz.empty()) cpu.frequencyMHz = static_cast<int>(std::lround(std::atof(megahertz.c_str())));
    // Single-precision peak with one 8-wide fused multiply-add per cycle and thread.
    unsigned threads = std::thread::hardware_concurrency();
    cpu.gigaFlops = static_cast<int>(static_cast<long long>(threads) * cpu.frequencyMHz * 16 / 1000);
    cpu.isSupported = true;
    return cpu;
}

std::vector<Device> deviceList(DeviceKind kind) {
    std::lock_guard<std::mutex> lock(devicesMutex);
    return listOf(kind);
}

bool selectDevices(DeviceKind kind, const std::vector<int>& indices) {
    std::lock_guard<std::mutex> lock(devicesMutex);
    auto& list = listOf(kind);
    for (int index : indices) {
        if (index < 0 || static_cast<size_t>(index) >= list.size()) return false;
    }
    for (size_t position = 0; position < list.size(); ++position) {
        bool selected = false;
        for (int index : indices) selected = selected || static_cast<size_t>(index) == position;
        if (kind == DeviceKind::Denoiser) {
            list[position].useForDenoising = selected;
        } else {
            list[position].useForRendering = selected;
        }
    }
    return true;
}

std::string selectedDevicesText(DeviceKind kind) {
    std::lock_guard<std::mutex> lock(devicesMutex);
    std::string text;
    const auto& list = listOf(kind);
    for (size_t position = 0; position < list.size(); ++position) {
        bool used = kind == DeviceKind::Denoiser ? list[position].useForDenoising : list[position].useForRendering;
        if (!used) continue;
        if (!text.empty()) text += ',';
        text += std::to_string(position);
    }
    return text;
}

void scriptDeviceList(DeviceKind kind, const nlohmann::json& devices) {
    if (!devices.is_array()) throw nlohmann::json::type_error::create(302, "a device list is a JSON array", nullptr);
    std::vector<Device> list;
    for (const auto& item : devices) {
        Device device;
        device.name = item.value("name", std::string());
        device.type = item.value("type", 4);
        device.totalMemoryMB = item.value("totalMemoryMB", 0);
        device.numConnectedDisplays = item.value("numConnectedDisplays", 0);
        device.frequencyMHz = item.value("frequencyMHz", 0);
        device.gigaFlops = item.value("gigaFlops", 0);
        device.ccMajor = item.value("ccMajor", 0);
        device.ccMinor = item.value("ccMinor", 0);
        device.rtCoreVersion = item.value("rtCoreVersion", 0);
        device.useForRendering = item.value("useForRendering", false);
        device.useForDenoising = item.value("useForDenoising", false);
        device.isSupported = item.value("isSupported", true);
        list.push_back(std::move(device));
    }
    std::lock_guard<std::mutex> lock(devicesMutex);
    lists[static_cast<int>(kind)] = std::move(list);
}

void restoreDeviceList(DeviceKind kind) {
    std::lock_guard<std::mutex> lock(devicesMutex);
    lists[static_cast<int>(kind)].reset();
}

void restoreAllDeviceLists() {
    for (int kind = 0; kind < deviceKindCount; ++kind) restoreDeviceList(static_cast<DeviceKind>(kind));
}

}  // namespace tovi::ref
