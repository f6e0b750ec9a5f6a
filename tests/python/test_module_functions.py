"""The module's functions, constants and static classes, on the bundled library."""

import pytest
import tovi

INTEGER_CONSTANTS = {
    "LOGLEVEL_ERROR": 0, "LOGLEVEL_WARNING": 1, "LOGLEVEL_INFO": 2, "LOGLEVEL_DEBUG": 3,
    "RENDERER_STATE_RENDERING_FATAL_ERROR": -1, "RENDERER_STATE_IDLE_INITIALIZED": 0,
    "RENDERER_STATE_IDLE_STOPPED": 1, "RENDERER_STATE_IDLE_ERROR": 2, "RENDERER_STATE_IDLE_FRAME_DONE": 3,
    "RENDERER_STATE_IDLE_DONE": 4, "RENDERER_STATE_PREPARING": 5, "RENDERER_STATE_RENDERING": 6,
    "RENDERER_STATE_RENDERING_PAUSED": 7, "RENDERER_STATE_RENDERING_AWAITING_CHANGES": 8,
    "READ_FLAGS_MESH_VERTICES": 16, "READ_FLAGS_MESH_NORMALS": 32, "READ_FLAGS_MESH_MTLIDS": 64,
    "READ_FLAGS_MESH_VELOCITIES": 128, "READ_FLAGS_MESH_UVS": 256, "READ_FLAGS_MESH_SHADERS": 512,
    "READ_FLAGS_MESH_OBJECTINFOS": 1024, "READ_FLAGS_MESH_HAIROBJECTINFOS": 2048,
    "READ_FLAGS_MESH_PARTICLEOBJECTINFOS": 4096, "READ_FLAGS_MESH_HAIRGEOMETRY": 8192,
    "READ_FLAGS_MESH_PARTICLESGEOMETRY": 16384, "READ_FLAGS_MESH_GEOMETRYMESHESBBOXES": 32768,
    "READ_FLAGS_MESH_HAIROBJECTBBOXES": 65536, "READ_FLAGS_MESH_PARTICLEOBJECTBBOXES": 131072,
    "READ_FLAGS_MESH_ALL": 262128, "RENDER_PASS_FINAL": 0, "RENDER_PASS_LIGHT_CACHE": 1,
    "RENDER_PASS_IRRADIANCE_MAP": 2, "TFB_STATE_MAIN": 1, "TFB_STATE_HISTORY": 2, "TFB_STATE_ALL": -1,
    "MB_LEFT": 1, "MB_RIGHT": 2, "SCANNED_MATERIAL_CHANNEL_PAINT_BITMASK": 1,
    "SCANNED_MATERIAL_CHANNEL_FILTER_BITMASK": 2, "SCANNED_MATERIAL_CHANNEL_CCMULT_BITMASK": 4,
    "PROFILER_MODE_OFF": 0, "PROFILER_MODE_SIMPLE": 1, "PROFILER_MODE_FULL": 2, "PROFILER_MODE_PROCESS": 3,
}
TEXT_CONSTANTS = {
    "SCANNED_MATERIAL_PLAIN_NONE": "PL_NONE", "SCANNED_MATERIAL_PLAIN_HOMOGENOUS": "PL_HMG",
    "SCANNED_MATERIAL_PLAIN_HOMOGENOUS_SYMMETRIC": "PL_HMGSYM", "SCANNED_MATERIAL_PLAIN_TRIPLANAR": "PL_TRIPLANAR",
    "SCANNED_MATERIAL_COLOR_SPACE_SRGB": "CS_SRGB", "SCANNED_MATERIAL_COLOR_SPACE_ADOBE": "CS_ADOBE",
    "SCANNED_MATERIAL_COLOR_SPACE_PRO_PHOTO": "CS_PP",
}


def test_constants_and_language():
    for name, value in {**INTEGER_CONSTANTS, **TEXT_CONSTANTS}.items():
        assert (name, type(getattr(tovi, name)), getattr(tovi, name)) == (name, type(value), value)
    assert READ_FLAGS_ALL_IS_EVERY_FLAG()
    assert (tovi.Language.EN_US, tovi.Language.ZH_CN) == ("en-US", "zh-CN")
    assert tovi.Language.__doc__ == "Static utility class with language constants"
    assert tovi.Language.__module__ == "tovi" and tovi.Language.__name__ == "Language"
    with pytest.raises(TypeError):
        tovi.Language()
    assert tovi.__doc__ is None


def READ_FLAGS_ALL_IS_EVERY_FLAG():
    flags = [value for name, value in INTEGER_CONSTANTS.items()
             if name.startswith("READ_FLAGS_MESH_") and name != "READ_FLAGS_MESH_ALL"]
    return sum(flags) == tovi.READ_FLAGS_MESH_ALL == 0x3FFF0


def test_docstrings():
    assert tovi.getSDKLibraryErrorString.__doc__ == "Returns detailed error info about SDK library loading errors."
    assert tovi.getSDKLibraryMissingFunctions.__doc__ == (
        "Returns a tuple containing the names of the missing SDK library functions from the imported module.")
    assert tovi.getAPIVersion.__doc__ == "Returns the AppSDK API version as a tuple."
    assert tovi.getToviVersion.__doc__ == "Returns the Tovi Core version as a tuple."
    assert tovi.getToviVersionDetails.__doc__ == "Returns the detailed Tovi Core version as a string."
    assert tovi.getMaterialLibraryPath.__doc__ == (
        "Returns the path to the Material Library folder or None if it's not installed.")
    assert tovi.isDR2.__doc__ == ("Returns true, if Tovi is built with DR2 - Distributed Rendering generation 2.\n"
                                  "Returns false, in case of a DR1 build.")


def test_versions_and_generation(sdk):
    assert tovi.getAPIVersion() == (1, 0, 0)
    assert tovi.getToviVersion() == (0, 1, 0)
    assert tovi.getToviVersionDetails().startswith("Tovi reference SDK 0.1.0")
    assert tovi.getMaterialLibraryPath() is None
    sdk.setDRGeneration(1)
    assert tovi.isDR2() is False
    sdk.setDRGeneration(2)
    assert tovi.isDR2() is True


def test_environment_variables(sdk):
    assert tovi.setEnvVar("TOVI_TEST_VALUE", "caf\u00e9 \u4e2d") is True
    assert tovi.getEnvVar("TOVI_TEST_VALUE") == "caf\u00e9 \u4e2d"
    assert tovi.setEnvVar("TOVI_TEST_VALUE", None) is True
    assert sdk.last_call("Tovi_setEnvironmentVariable") == {"name": "TOVI_TEST_VALUE", "value": None}
    assert tovi.getEnvVar("TOVI_TEST_VALUE") is None
    assert tovi.setEnvVar("TOVI_TEST_VALUE", "x") and tovi.setEnvVar("TOVI_TEST_VALUE") is True
    assert tovi.getEnvVar("TOVI_TEST_VALUE") is None
    assert tovi.setEnvVar("", "refused") is False
    for call, message in [
        (lambda: tovi.setEnvVar(), "You must specify a var name and optionally a string value."),
        (lambda: tovi.setEnvVar(1, "x"), "You must specify a var name and optionally a string value."),
        (lambda: tovi.setEnvVar("A", 3), "Second argument must be a string value."),
        (lambda: tovi.setEnvVar("A", b"x"), "Second argument must be a string value."),
        (lambda: tovi.getEnvVar(), "You must specify a var name string."),
        (lambda: tovi.getEnvVar(None), "You must specify a var name string."),
    ]:
        with pytest.raises(TypeError) as error:
            call()
        assert str(error.value) == message


def test_enable_frame_buffer(sdk):
    class Falsy:
        def __bool__(self):
            return False

    class Broken:
        def __bool__(self):
            raise ZeroDivisionError("no truth")

    for flag, expected in [(True, 1), ([], 0), ("x", 1), (Falsy(), 0)]:
        assert tovi.enableFrameBuffer(flag) is None
        assert sdk.last_call("Tovi_enableFrameBuffer") == {"enable": expected}
    with pytest.raises(ValueError) as error:
        tovi.enableFrameBuffer()
    assert str(error.value) == "A boolean argument is missing."
    with pytest.raises(ZeroDivisionError):
        tovi.enableFrameBuffer(Broken())


FULL_RECORD = {"cpuCount": 16, "toviVersion": 0x010203, "hostResolved": "render-7.local",
               "hostConnectedTo": "10.0.0.7:20207", "revisionTime": "2026-11-01"}


@pytest.mark.parametrize("status, text", [
    (-3, "Error Resolve"), (-2, "Error Connect"), (-1, "Error Timeout"), (0, "Server Ready"),
    (1, "Server Unknown"), (2, "Server Error"), (3, "Server Busy"), (4, None), (-4, None),
])
def test_host_check_status(sdk, status, text):
    sdk.inject("Tovi_checkDRHost", {"status": status, **FULL_RECORD})
    expected = {"ready": status == 0}
    if text:
        expected["status"] = text
    expected.update(cpuCount=16, toviVersion=(1, 2, 3), hostResolved="render-7.local",
                    hostConnectedTo="10.0.0.7:20207", revisionTime="2026-11-01")
    result = tovi.checkDRHost("render-7:20207")
    assert result == expected and list(result) == list(expected)
    assert sdk.last_call("Tovi_checkDRHost") == {"host": "render-7:20207"}


def test_host_check_optional_keys_and_errors(sdk):
    sdk.inject("Tovi_checkDRHost", {"status": 3})
    assert tovi.checkDRHost("busy") == {"ready": False, "status": "Server Busy"}
    sdk.inject("Tovi_checkDRHost", {"status": 0, "hostConnectedTo": ""})
    assert tovi.checkDRHost("h") == {"ready": True, "status": "Server Ready", "hostConnectedTo": ""}
    assert tovi.checkDRHost("nothing injected") is None
    for arguments in [(), (3,), (None,)]:
        with pytest.raises(TypeError) as error:
            tovi.checkDRHost(*arguments)
        assert str(error.value) == "Missing 'hostName' or 'host:port' argument."


DEVICE_KEYS = ["name", "useForRendering", "useForDenoising", "isSupported", "type", "totalMemoryMB",
               "numConnectedDisplays", "frequencyMHz", "gigaFlops", "ccMajor", "ccMinor", "rtCoreVersion"]


def test_device_lists(sdk):
    assert tovi.getComputeDevicesOptix() == tovi.getComputeDevicesMetal() == tovi.getComputeDevicesMetalRT() == []
    (cpu,) = tovi.getComputeDevicesCUDA()
    assert list(cpu) == DEVICE_KEYS
    assert cpu["type"] == "CPU" and cpu["useForRendering"] is True and cpu["totalMemoryMB"] > 0
    (denoiser,) = tovi.getComputeDevicesDenoiser()
    assert denoiser["useForDenoising"] is True and denoiser["useForRendering"] is False

    sdk.set_device_list("Optix", [
        {"name": "Card \u00e9", "type": 4, "totalMemoryMB": -1, "numConnectedDisplays": 2, "frequencyMHz": 1500,
         "gigaFlops": 9000, "ccMajor": 8, "ccMinor": 6, "rtCoreVersion": 2, "useForRendering": True,
         "isSupported": False},
        {"name": "", "type": 8}, {"name": "odd", "type": 5}, {"name": "cpu", "type": 2}])
    devices = tovi.getComputeDevicesOptix()
    assert devices[0] == {"name": "Card \u00e9", "useForRendering": True, "useForDenoising": False,
                          "isSupported": False, "type": "GPU", "totalMemoryMB": 2**64 - 1,
                          "numConnectedDisplays": 2, "frequencyMHz": 1500, "gigaFlops": 9000, "ccMajor": 8,
                          "ccMinor": 6, "rtCoreVersion": 2}
    assert [device["type"] for device in devices] == ["GPU", "Accelerator", "unknown", "CPU"]
    assert all(list(device) == DEVICE_KEYS for device in devices)


def test_device_selection(sdk):
    sdk.set_device_list("CUDA", [{"name": "a"}, {"name": "b"}, {"name": "c"}])
    assert tovi.setComputeDevicesCUDA([0, (2, False)]) is True
    assert sdk.last_call("Tovi_setDeviceListCUDA") == {"indices": [0, 2]}
    assert [device["useForRendering"] for device in tovi.getComputeDevicesCUDA()] == [True, False, True]
    assert tovi.setComputeDevicesEnvironmentVariable() is True
    assert tovi.getEnvVar("TOVI_DEVICES_CUDA") == "0,2"
    assert tovi.setComputeDevicesCUDA([1.0, [1, "ignored"], (True, 0)]) is True
    assert sdk.last_call("Tovi_setDeviceListCUDA") == {"indices": [1, 1, 1]}
    assert tovi.setComputeDevicesCUDA([]) is True
    assert tovi.setComputeDevicesCUDA([3]) is False  # the SDK refuses an index past its list
    assert tovi.setComputeDevicesOptix([0]) is False
    assert tovi.setComputeDevicesDenoiser([0]) is True


@pytest.mark.parametrize("argument, message", [
    ((0, 1), "Expected a list of device indices to use (matching the indices of devices returned by getComputeDevices)."),
    ("0", "Expected a list of device indices to use (matching the indices of devices returned by getComputeDevices)."),
    ([(1,)], "Each tuple must be of length 2 - one index and one boolean"),
    ([0, (1, True, 2)], "Each tuple must be of length 2 - one index and one boolean"),
    (["ab"], "The first tuple element must be an integer number"),
    ([(None, True)], "The first tuple element must be an integer number"),
    ([object()], "Expected a list with elements that are numbers or number-bool pairs"),
    ([None], "Expected a list with elements that are numbers or number-bool pairs"),
])
def test_device_selection_errors(sdk, argument, message):
    sdk.clearCalls()
    with pytest.raises(TypeError) as error:
        tovi.setComputeDevicesCUDA(argument)
    assert str(error.value) == message
    assert sdk.last_call("Tovi_setDeviceListCUDA") is None
    with pytest.raises(TypeError) as error:
        tovi.setComputeDevicesCUDA()
    assert str(error.value).startswith("Expected a list of device indices")


def test_close_drops_the_cached_default_values():
    vector, color, acolor = tovi.Vector(), tovi.Color(), tovi.AColor()
    assert tovi.Vector() is vector and tovi.Color() is color and tovi.AColor() is acolor
    tovi.close()
    assert tovi.Vector() is not vector and tovi.Color() is not color and tovi.AColor() is not acolor
    assert tovi.Vector() == vector and tovi.AColor() == acolor


def test_scanned_material_parameters(sdk):
    import struct

    default = tovi.encodeScannedMaterialParams()
    assert type(default) is tovi.IntList and len(default) == 24
    words = bytes(default)
    assert words[:8] == struct.pack("<II", 0x43535654, 1)
    assert struct.unpack_from("<12f", words, 8) == (1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 0)
    encoded = tovi.encodeScannedMaterialParams(
        filterColor=tovi.Color(0.5, 0.25, 1), paintColor=(1, 0, 0), uvScale=[2, 4], uvRotation=90, saturation=0.5,
        channelMask=tovi.SCANNED_MATERIAL_CHANNEL_FILTER_BITMASK | tovi.SCANNED_MATERIAL_CHANNEL_PAINT_BITMASK,
        plainMode=tovi.SCANNED_MATERIAL_PLAIN_TRIPLANAR, colorSpace=tovi.SCANNED_MATERIAL_COLOR_SPACE_PRO_PHOTO)
    fields = struct.unpack_from("<14f3i", bytes(encoded), 8)
    assert fields[:6] == (0.5, 0.25, 1, 1, 0, 0) and fields[9:14] == (2, 4, 90, 1, 0.5) and fields[14:] == (3, 3, 2)
    for arguments, error, message in [
        ({"plainMode": "PL_X"}, ValueError, "Unknown plain mode 'PL_X'."),
        ({"colorSpace": "sRGB"}, ValueError, "Unknown color space 'sRGB'."),
        ({"filterColor": (1, 2)}, TypeError, "filterColor must be a sequence of 3 numbers."),
        ({"uvScale": "ab"}, TypeError, "uvScale must be a sequence of 2 numbers."),
        ({"channelMask": 8}, ValueError, "The scanned material parameters are out of range."),
        ({"saturation": float("inf")}, ValueError, "The scanned material parameters are out of range."),
    ]:
        with pytest.raises(error) as raised:
            tovi.encodeScannedMaterialParams(**arguments)
        assert str(raised.value) == message
    with pytest.raises(TypeError):
        tovi.encodeScannedMaterialParams((1, 1, 1))
