"""Shared fixtures: the reference SDK's test-control interface, the loader test variants, and a
helper that runs code in a fresh interpreter (the loader's state is per process)."""

import ctypes
import json
import os
import pathlib
import shutil
import subprocess
import sys
import textwrap

import pytest
import tovi

LIBRARY_FILE = "libToviSDKLibrary.so"


def build_folder():
    folder = os.environ.get("TOVI_TEST_BUILD")
    if not folder:
        pytest.fail("TOVI_TEST_BUILD must name the test build folder (scripts/run-tests.sh sets it)")
    return pathlib.Path(folder)


@pytest.fixture(scope="session")
def variants():
    """Folders holding the loader test variants of the library."""
    folder = build_folder() / "variants"
    assert (folder / "missing-two" / LIBRARY_FILE).exists(), f"no loader variants under {folder}"
    return folder


def clean_environment(**overrides):
    env = {k: v for k, v in os.environ.items() if k not in ("TOVI_APPSDK_BIN", "TOVI_SDK", "LD_LIBRARY_PATH")}
    env.update({k: str(v) for k, v in overrides.items()})
    return env


def run_python(code, env=None, path=None, timeout=60):
    """Runs `code` in a fresh interpreter and returns the JSON value it prints last."""
    env = dict(env if env is not None else clean_environment())
    if path:
        env["PYTHONPATH"] = str(path)
    result = subprocess.run([sys.executable, "-c", textwrap.dedent(code)], env=env, capture_output=True,
                            text=True, timeout=timeout)
    assert result.returncode == 0, result.stderr
    return json.loads(result.stdout.strip().splitlines()[-1])


@pytest.fixture
def lonely_module(tmp_path):
    """A folder holding only the module file: its RUNPATH finds no bundled library there."""
    shutil.copy(tovi.__file__, tmp_path)
    return tmp_path


def bundled_library():
    return pathlib.Path(tovi.__file__).parent / "tovi.libs" / LIBRARY_FILE


class TestControl:
    """The reference SDK's ToviRef_ functions on the library the module loaded."""

    def __init__(self, path):
        self.library = ctypes.CDLL(str(path))
        signatures = {
            "ToviRef_setRecorder": (None, [ctypes.c_int]),
            "ToviRef_lastCall": (ctypes.c_char_p, [ctypes.c_char_p]),
            "ToviRef_clearCalls": (None, []),
            "ToviRef_injectResult": (ctypes.c_int, [ctypes.c_char_p, ctypes.c_char_p]),
            "ToviRef_setDRGeneration": (None, [ctypes.c_int]),
            "ToviRef_setDeviceList": (ctypes.c_int, [ctypes.c_char_p, ctypes.c_char_p]),
            "ToviRef_liveCount": (ctypes.c_longlong, [ctypes.c_char_p]),
            "ToviRef_moduleReferenceCount": (ctypes.c_int, []),
            "ToviRef_reset": (None, []),
        }
        for name, (result, arguments) in signatures.items():
            function = getattr(self.library, name)
            function.restype, function.argtypes = result, arguments

    def last_call(self, entry):
        text = self.library.ToviRef_lastCall(entry.encode())
        return None if text is None else json.loads(text)["args"]

    def inject(self, entry, value):
        assert self.library.ToviRef_injectResult(entry.encode(), json.dumps(value).encode()) == 0

    def set_device_list(self, kind, devices):
        text = None if devices is None else json.dumps(devices).encode()
        assert self.library.ToviRef_setDeviceList(kind.encode(), text) == 0

    def live(self, kind):
        return self.library.ToviRef_liveCount(kind.encode())

    def __getattr__(self, name):
        return getattr(self.library, "ToviRef_" + name)


@pytest.fixture
def sdk():
    """The test-control interface of the loaded library, recorder on, reset before and after."""
    tovi.setSDKLibraryPath()
    assert tovi.getAPIVersion()
    report = tovi.getSDKLibraryErrorString()
    control = TestControl(report[report.rindex("(") + 1:-1])
    control.reset()
    control.setRecorder(1)
    yield control
    control.reset()


@pytest.fixture
def renderer():
    """A fresh renderer, closed after the test."""
    with tovi.Renderer() as fresh:
        yield fresh
