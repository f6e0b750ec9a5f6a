#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "core/devices.h"

using namespace tovi::ref;

class DeviceLists : public ::testing::Test {
protected:
    void TearDown() override { restoreAllDeviceLists(); }
};

TEST_F(DeviceLists, OnlyTheListsThatAdmitACpuHoldIt) {
    for (DeviceKind kind : {DeviceKind::Metal, DeviceKind::MetalRT, DeviceKind::Optix}) {
        EXPECT_TRUE(deviceList(kind).empty()) << deviceKindName(kind);
    }
    auto cuda = deviceList(DeviceKind::CUDA);
    ASSERT_EQ(cuda.size(), 1u);
    EXPECT_EQ(cuda[0].type, 2);
    EXPECT_FALSE(cuda[0].name.empty());
    EXPECT_GT(cuda[0].totalMemoryMB, 0);
    EXPECT_TRUE(cuda[0].useForRendering);
    auto denoiser = deviceList(DeviceKind::Denoiser);
    ASSERT_EQ(denoiser.size(), 1u);
    EXPECT_TRUE(denoiser[0].useForDenoising);
    EXPECT_FALSE(denoiser[0].useForRendering);
}

TEST_F(DeviceLists, SelectionChecksEveryIndexBeforeChangingAnything) {
    scriptDeviceList(DeviceKind::Optix, nlohmann::json::parse(R"([{"name": "A"}, {"name": "B"}, {"name": "C"}])"));
    EXPECT_TRUE(selectDevices(DeviceKind::Optix, {0, 2}));
    EXPECT_EQ(selectedDevicesText(DeviceKind::Optix), "0,2");
    EXPECT_FALSE(selectDevices(DeviceKind::Optix, {1, 3}));
    EXPECT_FALSE(selectDevices(DeviceKind::Optix, {-1}));
    EXPECT_EQ(selectedDevicesText(DeviceKind::Optix), "0,2");
    EXPECT_TRUE(selectDevices(DeviceKind::Optix, {}));
    EXPECT_EQ(selectedDevicesText(DeviceKind::Optix), "");
}

TEST_F(DeviceLists, ScriptedListsKeepEveryFieldAndRestore) {
    scriptDeviceList(DeviceKind::CUDA, nlohmann::json::parse(R"([{"name": "Card", "type": 8, "totalMemoryMB": -1,
        "numConnectedDisplays": 2, "frequencyMHz": 1500, "gigaFlops": 9000, "ccMajor": 8, "ccMinor": 6,
        "rtCoreVersion": 2, "useForRendering": true, "useForDenoising": true, "isSupported": false}])"));
    auto list = deviceList(DeviceKind::CUDA);
    ASSERT_EQ(list.size(), 1u);
    const Device& card = list[0];
    EXPECT_EQ(card.name, "Card");
    EXPECT_EQ(card.type, 8);
    EXPECT_EQ(card.totalMemoryMB, -1);
    EXPECT_EQ(card.numConnectedDisplays, 2);
    EXPECT_EQ(card.frequencyMHz, 1500);
    EXPECT_EQ(card.gigaFlops, 9000);
    EXPECT_EQ(card.ccMajor, 8);
    EXPECT_EQ(card.ccMinor, 6);
    EXPECT_EQ(card.rtCoreVersion, 2);
    EXPECT_TRUE(card.useForRendering && card.useForDenoising);
    EXPECT_FALSE(card.isSupported);
    EXPECT_THROW(scriptDeviceList(DeviceKind::CUDA, nlohmann::json::parse(R"({"name": "x"})")), nlohmann::json::exception);
    restoreDeviceList(DeviceKind::CUDA);
    EXPECT_EQ(deviceList(DeviceKind::CUDA)[0].type, 2);
}
