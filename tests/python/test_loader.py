"""Finding, loading and unloading the SDK library, each case in a fresh interpreter."""

import pytest
import tovi

from conftest import LIBRARY_FILE, bundled_library, clean_environment, run_python

SDK_CALLS = """
import json, tovi
def attempt(call):
    try:
        return ["ok", repr(call())]
    except Exception as error:
        return [type(error).__name__, str(error)]
"""


def test_import_without_a_library_anywhere(lonely_module):
    result = run_python(SDK_CALLS + """
before = tovi.getSDKLibraryErrorString()
calls = {name: attempt(call) for name, call in [
    ("getAPIVersion", tovi.getAPIVersion), ("getToviVersion", tovi.getToviVersion),
    ("getToviVersionDetails", tovi.getToviVersionDetails), ("isDR2", tovi.isDR2),
    ("getMaterialLibraryPath", tovi.getMaterialLibraryPath), ("getEnvVar", lambda: tovi.getEnvVar("HOME")),
    ("setEnvVar", lambda: tovi.setEnvVar("A", "b")), ("checkDRHost", lambda: tovi.checkDRHost("host")),
    ("enableFrameBuffer", lambda: tovi.enableFrameBuffer(True))]}
devices = [attempt(tovi.getComputeDevicesCUDA), attempt(lambda: tovi.setComputeDevicesCUDA([0])),
           attempt(tovi.setComputeDevicesEnvironmentVariable)]
report = tovi.getSDKLibraryErrorString()
tovi.close()
print(json.dumps([tovi.__file__, before, calls, devices, report, tovi.getSDKLibraryErrorString()]))
""", path=lonely_module)
    module_file, before, calls, devices, report, after_close = result
    assert module_file.startswith(str(lonely_module))
    assert before == "SDK library not loaded yet"
    assert report.startswith("Error loading SDK Library. [")
    assert report.endswith("] (" + LIBRARY_FILE + ")")
    assert LIBRARY_FILE + ": cannot open shared object file" in report
    for name, (kind, message) in calls.items():
        assert (name, kind, message) == (name, "ImportError", report)
    assert devices == [["RuntimeError", "An error occurred while listing devices."], ["ok", "False"], ["ok", "False"]]
    assert after_close == "SDK library not loaded yet"


def test_bundled_library_is_found_through_the_module_runpath():
    version, core, report, missing = run_python("""
import json, tovi
print(json.dumps([tovi.getAPIVersion(), tovi.getToviVersion(), tovi.getSDKLibraryErrorString(),
                  tovi.getSDKLibraryMissingFunctions()]))
""")
    for packed in (version, core):
        assert len(packed) == 3 and all(isinstance(part, int) and 0 <= part < 256 for part in packed)
    assert report == f"SDK library loaded correctly ({bundled_library()})"
    assert missing == []


@pytest.mark.parametrize("variable, suffix, expected", [
    ("TOVI_APPSDK_BIN", "", "complete/" + LIBRARY_FILE),
    ("TOVI_APPSDK_BIN", "/", "complete/" + LIBRARY_FILE),
    ("TOVI_APPSDK_BIN", "//\\\\/", "complete/" + LIBRARY_FILE),
    ("TOVI_SDK", "", "sdk-root/bin/" + LIBRARY_FILE),
    ("TOVI_SDK", "/\\\\", "sdk-root/bin/" + LIBRARY_FILE),
])
def test_environment_names_the_library_folder(variants, lonely_module, variable, suffix, expected):
    folder = variants / ("complete" if variable == "TOVI_APPSDK_BIN" else "sdk-root")
    report = run_python("import json, tovi; tovi.getAPIVersion(); print(json.dumps(tovi.getSDKLibraryErrorString()))",
                        env=clean_environment(**{variable: str(folder) + suffix}), path=lonely_module)
    assert report == f"SDK library loaded correctly ({variants / expected})"


@pytest.mark.parametrize("appsdk_bin, sdk_root, expected", [
    ("complete", "sdk-root", "complete/" + LIBRARY_FILE),           # TOVI_APPSDK_BIN comes first
    ("not-there", "sdk-root", "sdk-root/bin/" + LIBRARY_FILE),      # a folder without the library
    ("missing-two", "sdk-root", "sdk-root/bin/" + LIBRARY_FILE),    # an incomplete library counts as failed
    ("not-a-library", None, None),                                  # then the plain file name: the bundled one
    ("", None, None),                                               # an empty variable names no folder
])
def test_environment_search_order(variants, appsdk_bin, sdk_root, expected):
    env = clean_environment(TOVI_APPSDK_BIN=str(variants / appsdk_bin) if appsdk_bin else "")
    if sdk_root:
        env["TOVI_SDK"] = str(variants / sdk_root)
    report, missing = run_python("""
import json, tovi
tovi.getAPIVersion()
print(json.dumps([tovi.getSDKLibraryErrorString(), tovi.getSDKLibraryMissingFunctions()]))""", env=env)
    path = variants / expected if expected else bundled_library()
    assert (report, missing) == (f"SDK library loaded correctly ({path})", [])


def test_library_missing_two_entries(variants):
    folder = variants / "missing-two"
    result = run_python(SDK_CALLS + f"""
folder = {str(folder)!r}
first = [tovi.setSDKLibraryPath(folder), tovi.getSDKLibraryErrorString(), tovi.getSDKLibraryMissingFunctions()]
again = attempt(tovi.getAPIVersion)
accepted = tovi.setSDKLibraryPath(folder, True)
after = [attempt(tovi.getAPIVersion), attempt(tovi.isDR2), attempt(tovi.getMaterialLibraryPath),
         tovi.getSDKLibraryMissingFunctions()]
print(json.dumps([first, again, accepted, after]))
""")
    (loaded, report, missing), again, accepted, after = result
    assert loaded is False
    assert report.startswith("Incorrect SDK library loaded! Number of missing functions: 2. [")
    assert report.endswith(f"] ({folder / LIBRARY_FILE})")
    assert "undefined symbol: Tovi_isDR2" in report  # the last entry that failed to resolve
    assert missing == ["Tovi_getMaterialLibraryPath", "Tovi_isDR2"]
    assert again == ["ImportError", report]  # still configured: the next request loads again
    assert accepted is False
    assert after == [["ok", "(1, 0, 0)"], ["ok", "False"], ["ok", "None"], missing]


def test_file_that_is_not_a_library(variants):
    folder = variants / "not-a-library"
    loaded, report, missing = run_python(f"""
import json, tovi
print(json.dumps([tovi.setSDKLibraryPath({str(folder)!r}), tovi.getSDKLibraryErrorString(),
                  tovi.getSDKLibraryMissingFunctions()]))""")
    assert loaded is False and missing == []
    assert report.startswith("Error loading SDK Library. [" + str(folder / LIBRARY_FILE) + ": ")
    assert report.endswith(f"] ({folder / LIBRARY_FILE})")


def test_set_path_choices(variants, lonely_module):
    complete = variants / "complete"
    result = run_python(SDK_CALLS + """
steps = []
steps.append([tovi.setSDKLibraryPath("/no/such/folder//", False), tovi.getSDKLibraryErrorString()])
steps.append([attempt(tovi.getAPIVersion)])
steps.append([tovi.setSDKLibraryPath(None), tovi.getSDKLibraryErrorString()])
steps.append([tovi.setSDKLibraryPath(), tovi.getSDKLibraryErrorString()])
steps.append([attempt(lambda: tovi.setSDKLibraryPath(3)), attempt(lambda: tovi.setSDKLibraryPath(b"/x"))])
print(json.dumps(steps))
""", env=clean_environment(TOVI_APPSDK_BIN=complete), path=lonely_module)
    deferred, failed, plain, restored, wrong = result
    # False as the second argument defers the load: nothing is touched.
    assert deferred == [True, "SDK library not loaded yet"]
    assert failed[0][0] == "ImportError"
    assert failed[0][1].startswith("Error loading SDK Library. [/no/such/folder/" + LIBRARY_FILE + ": ")
    assert failed[0][1].endswith("(/no/such/folder/" + LIBRARY_FILE + ")")
    # None loads by plain file name, not through the environment: nothing is found here.
    assert plain[0] is False and plain[1].endswith("] (" + LIBRARY_FILE + ")")
    # No argument restores the environment search.
    assert restored == [True, f"SDK library loaded correctly ({complete / LIBRARY_FILE})"]
    message = "Path must be a string or None. Or skip it to restore default behavior"
    assert wrong == [["TypeError", message], ["TypeError", message]]


def test_plain_file_name_uses_the_loader_search_path(variants, lonely_module):
    complete = variants / "complete"
    loaded, report = run_python("""
import json, tovi
print(json.dumps([tovi.setSDKLibraryPath(None), tovi.getSDKLibraryErrorString()]))""",
                                env=clean_environment(LD_LIBRARY_PATH=complete), path=lonely_module)
    assert loaded is True
    assert report == f"SDK library loaded correctly ({complete / LIBRARY_FILE})"


def test_close_unloads_and_forgets_the_location(variants):
    result = run_python(f"""
import json, tovi
first = tovi.setSDKLibraryPath({str(variants / "complete")!r})
tovi.close()
closed = tovi.getSDKLibraryErrorString()
tovi.getAPIVersion()
print(json.dumps([first, closed, tovi.getSDKLibraryErrorString()]))""")
    # After close the next request loads by plain file name: the bundled library.
    assert result == [True, "SDK library not loaded yet", f"SDK library loaded correctly ({bundled_library()})"]


def test_every_load_counts_one_module_reference(sdk):
    before = sdk.moduleReferenceCount()
    tovi.close()
    assert tovi.getAPIVersion()
    tovi.setSDKLibraryPath(str(bundled_library().parent))
    assert sdk.moduleReferenceCount() == before + 2


def test_accepting_a_library_that_did_not_load_answers_through_stubs():
    result = run_python(SDK_CALLS + """
accepted = tovi.setSDKLibraryPath("/no/such/folder", True)
print(json.dumps([accepted, attempt(tovi.getAPIVersion), attempt(tovi.isDR2), attempt(tovi.getToviVersionDetails),
                  attempt(tovi.getComputeDevicesCUDA), attempt(lambda: tovi.setComputeDevicesCUDA([0])),
                  tovi.getSDKLibraryErrorString().startswith("Error loading SDK Library. [")]))""")
    assert result == [False, ["ok", "(0, 0, 0)"], ["ok", "False"], ["ok", "''"],
                      ["RuntimeError", "An error occurred while listing devices."], ["ok", "False"], True]
