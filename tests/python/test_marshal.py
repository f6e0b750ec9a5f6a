"""Every SDK-owned result is handed back to the SDK, on success and on failure."""

import tovi


def test_sdk_blocks_are_released(sdk):
    sdk.set_device_list("Optix", [{"name": "gpu %d" % index, "type": 4} for index in range(8)])
    tovi.setEnvVar("TOVI_TEST_BLOCKS", "x" * 1000)
    blocks = sdk.live("blocks")
    for _ in range(2000):
        assert len(tovi.getComputeDevicesOptix()) == 8
        assert len(tovi.getEnvVar("TOVI_TEST_BLOCKS")) == 1000
        sdk.inject("Tovi_checkDRHost", {"status": 0, "hostResolved": "h" * 100})
        assert tovi.checkDRHost("h")["ready"] is True
    assert sdk.live("blocks") == blocks


def test_device_list_of_a_bad_record_size_is_refused(sdk):
    import ctypes

    pointer = ctypes.c_void_p()
    entry = sdk.library.Tovi_getDeviceListCUDA
    entry.restype, entry.argtypes = ctypes.c_int, [ctypes.POINTER(ctypes.c_void_p), ctypes.c_int]
    assert entry(ctypes.byref(pointer), 111) == -1 and not pointer
    blocks = sdk.live("blocks")
    assert entry(ctypes.byref(pointer), 112) == 1 and pointer
    free = sdk.library.C_memory_free
    free.argtypes = [ctypes.c_void_p]
    free(pointer)
    assert sdk.live("blocks") == blocks


def test_sdk_error_text_becomes_the_exception_message(sdk):
    texts = sdk.live("texts")
    for _ in range(100):
        try:
            tovi.getOSLParameters("shader glow(output color Cout = 1) {}")
        except Exception as error:  # the base type, not a subclass
            assert type(error) is Exception
            assert str(error) == "Not supported by the reference SDK yet."
        else:
            raise AssertionError("the reference SDK cannot compile shaders yet")
    assert sdk.live("texts") == texts
