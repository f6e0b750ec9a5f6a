// The module-level functions: library location and load report, versions, environment, the
// render-server host check and the compute-device lists.
#include <climits>
#include <cstring>
#include <initializer_list>
#include <memory>

#include "core/errors.h"
#include "core/marshal.h"
#include "core/module.h"
#include "core/repr_strings.h"
#include "core/sdk_loader.h"
#include "lists/list_kinds.h"
#include "values/color.h"
#include "values/vector.h"

namespace tovi {

namespace {

PyObject* boolResult(bool value) { return PyBool_FromLong(value ? 1 : 0); }

PyObject* setSDKLibraryPath(PyObject*, PyObject* args) {
    PyObject* path = nullptr;
    PyObject* loadNow = nullptr;
    if (!PyArg_ParseTuple(args, "|OO", &path, &loadNow)) return nullptr;
    if (path) {
        if (path != Py_None && !PyUnicode_Check(path)) {
            PyErr_SetString(PyExc_TypeError, "Path must be a string or None. Or skip it to restore default behavior");
            return nullptr;
        }
        const char* folder = nullptr;
        if (path != Py_None && !(folder = PyUnicode_AsUTF8(path))) return nullptr;
        setSdkLoadState(SdkLoadState::Configured);
        setSdkLibraryLocation(folder, false);
    } else {
        setSdkLoadState(SdkLoadState::SearchDefault);
    }
    if (loadNow) {
        int load = PyObject_IsTrue(loadNow);
        if (load < 0) return nullptr;
        if (!load) Py_RETURN_TRUE;
        int outcome = ensureSdkLoaded();
        if (sdkLoadState() == SdkLoadState::Configured) setSdkLoadState(SdkLoadState::Accepted);
        return boolResult(outcome == 0);
    }
    return boolResult(ensureSdkLoaded() == 0);
}

PyObject* getSDKLibraryErrorString(PyObject*, PyObject*) {
    const char* report = sdkLoadReport();
    return PyUnicode_FromString(report ? report : "SDK library not loaded yet");
}

PyObject* getSDKLibraryMissingFunctions(PyObject*, PyObject*) {
    PyRef names(PyTuple_New(missingEntryCount()));
    if (!names) return nullptr;
    const char* cursor = missingEntryNames();
    for (uint32_t index = 0; index < missingEntryCount(); ++index) {
        PyObject* name = PyUnicode_FromString(cursor);
        if (!name) return nullptr;
        PyTuple_SET_ITEM(names.get(), index, name);
        cursor += std::strlen(cursor) + 1;
    }
    return names.release();
}

PyObject* enableFrameBuffer(PyObject*, PyObject* args) {
    PyObject* flag = nullptr;
    if (!PyArg_ParseTuple(args, "|O", &flag)) return nullptr;
    if (!flag) {
        PyErr_SetString(PyExc_ValueError, "A boolean argument is missing.");
        return nullptr;
    }
    int enable = PyObject_IsTrue(flag);
    if (enable < 0 || requireSdk() < 0) return nullptr;
    SdkApi.Tovi_enableFrameBuffer(enable);
    Py_RETURN_NONE;
}

PyObject* close(PyObject*, PyObject*) {
    releaseReprStrings();
    releaseVectorDefault();
    releaseColorDefaults();
    PyGC_Collect();
    unloadSdkLibrary(true);
    Py_RETURN_NONE;
}

PyObject* getAPIVersion(PyObject*, PyObject*) {
    if (requireSdk() < 0) return nullptr;
    return versionTuple(SdkApi.Tovi_getSDKVersion());
}

PyObject* getToviVersion(PyObject*, PyObject*) {
    if (requireSdk() < 0) return nullptr;
    return versionTuple(SdkApi.Tovi_getToviVersion());
}

PyObject* getToviVersionDetails(PyObject*, PyObject*) {
    if (requireSdk() < 0) return nullptr;
    const char* details = SdkApi.Tovi_getToviVersionDetails();
    return PyUnicode_FromString(details ? details : "");
}

PyObject* getMaterialLibraryPath(PyObject*, PyObject*) {
    if (requireSdk() < 0) return nullptr;
    return textOrNone(SdkApi.Tovi_getMaterialLibraryPath());
}

PyObject* isDR2(PyObject*, PyObject*) {
    if (requireSdk() < 0) return nullptr;
    return boolResult(SdkApi.Tovi_isDR2() != 0);
}

PyObject* setEnvVar(PyObject*, PyObject* args) {
    const char* name = nullptr;
    PyObject* value = nullptr;
    if (!PyArg_ParseTuple(args, "s|O", &name, &value)) {
        return replaceError(PyExc_TypeError, "You must specify a var name and optionally a string value.");
    }
    const char* text = nullptr;
    if (value && value != Py_None) {
        if (!PyUnicode_Check(value)) {
            PyErr_SetString(PyExc_TypeError, "Second argument must be a string value.");
            return nullptr;
        }
        if (!(text = PyUnicode_AsUTF8(value))) return nullptr;
    }
    if (requireSdk() < 0) return nullptr;
    return boolResult(SdkApi.Tovi_setEnvironmentVariable(name, text) == 0);
}

PyObject* getEnvVar(PyObject*, PyObject* args) {
    const char* name = nullptr;
    if (!PyArg_ParseTuple(args, "s", &name)) {
        return replaceError(PyExc_TypeError, "You must specify a var name string.");
    }
    if (requireSdk() < 0) return nullptr;
    SdkBlock<char> value(SdkApi.Tovi_getEnvironmentVariable(name));
    return textOrNone(value.get());
}

// A colour-like argument: a Color or any sequence of `count` numbers.
bool floatsFrom(PyObject* value, float* target, Py_ssize_t count, const char* name) {
    PyRef items(PySequence_Check(value) ? PySequence_Tuple(value) : nullptr);
    if (!items || PyTuple_GET_SIZE(items.get()) != count) {
        PyErr_Clear();
        PyErr_Format(PyExc_TypeError, "%s must be a sequence of %zd numbers.", name, count);
        return false;
    }
    for (Py_ssize_t index = 0; index < count; ++index) {
        double number = PyFloat_AsDouble(PyTuple_GET_ITEM(items.get(), index));
        if (number == -1.0 && PyErr_Occurred()) {
            PyErr_Clear();
            PyErr_Format(PyExc_TypeError, "%s must be a sequence of %zd numbers.", name, count);
            return false;
        }
        target[index] = static_cast<float>(number);
    }
    return true;
}

// The index of `text` in `names` (the module's text constants), or -1 with ValueError.
int namedCode(const char* text, std::initializer_list<const char*> names, const char* what) {
    int code = 0;
    for (const char* name : names) {
        if (std::strcmp(text, name) == 0) return code;
        ++code;
    }
    PyErr_Format(PyExc_ValueError, "Unknown %s '%s'.", what, text);
    return -1;
}

PyObject* encodeScannedMaterialParams(PyObject*, PyObject* args, PyObject* keywords) {
    static const char* const names[] = {"filterColor", "paintColor", "ccMultiplier", "uvScale",    "uvRotation",
                                        "bumpMultiplier", "saturation", "channelMask", "plainMode", "colorSpace",
                                        nullptr};
    PyObject *filter = nullptr, *paint = nullptr, *multiplier = nullptr, *uvScale = nullptr;
    double rotation = 0.0, bump = 1.0, saturation = 1.0;
    int channelMask = 0;
    const char* plainMode = nullptr;
    const char* colorSpace = nullptr;
    if (!PyArg_ParseTupleAndKeywords(args, keywords, "|$OOOOdddiss", const_cast<char**>(names), &filter, &paint,
                                     &multiplier, &uvScale, &rotation, &bump, &saturation, &channelMask, &plainMode,
                                     &colorSpace)) {
        return nullptr;
    }
    if (requireSdk() < 0) return nullptr;
    ToviBRDFScannedParams params;
    if (SdkApi.Tovi_BRDFScannedParams_initialize(&params) != 0) return raiseSdkBroken();
    if ((filter && !floatsFrom(filter, params.filterColor, 3, "filterColor")) ||
        (paint && !floatsFrom(paint, params.paintColor, 3, "paintColor")) ||
        (multiplier && !floatsFrom(multiplier, params.ccMultiplier, 3, "ccMultiplier")) ||
        (uvScale && !floatsFrom(uvScale, params.uvScale, 2, "uvScale"))) {
        return nullptr;
    }
    if (keywords) {
        // Only the numbers that were given replace the SDK's defaults.
        if (PyDict_GetItemString(keywords, "uvRotation")) params.uvRotation = static_cast<float>(rotation);
        if (PyDict_GetItemString(keywords, "bumpMultiplier")) params.bumpMultiplier = static_cast<float>(bump);
        if (PyDict_GetItemString(keywords, "saturation")) params.saturation = static_cast<float>(saturation);
        if (PyDict_GetItemString(keywords, "channelMask")) params.channelMask = channelMask;
    }
    if (plainMode) {
        int code = namedCode(plainMode, {"PL_NONE", "PL_HMG", "PL_HMGSYM", "PL_TRIPLANAR"}, "plain mode");
        if (code < 0) return nullptr;
        params.plainMode = code;
    }
    if (colorSpace) {
        int code = namedCode(colorSpace, {"CS_SRGB", "CS_ADOBE", "CS_PP"}, "color space");
        if (code < 0) return nullptr;
        params.colorSpace = code;
    }
    int32_t* words = nullptr;
    int count = SdkApi.Tovi_encodeBRDFScannedParams(&params, &words);
    if (count < 0 || !words) {
        SdkApi.C_memory_free(words);
        PyErr_SetString(PyExc_ValueError, "The scanned material parameters are out of range.");
        return nullptr;
    }
    return adoptSdkBuffer(&IntListType.type, words, count);
}

// The default of a shader parameter, by its value type: int, float, vector or colour (3
// floats), matrix (16 floats), string; None for the others.
PyObject* oslDefault(const ToviOSLParameter& parameter) {
    auto floats = [&](int count) {
        PyObject* tuple = PyTuple_New(count);
        for (int index = 0; tuple && index < count; ++index) {
            PyObject* number = PyFloat_FromDouble(parameter.defaultFloats[index]);
            if (!number) {
                Py_CLEAR(tuple);
                break;
            }
            PyTuple_SET_ITEM(tuple, index, number);
        }
        return tuple;
    };
    switch (parameter.type) {
        case 0: return PyLong_FromLong(parameter.defaultInt);
        case 1: return PyFloat_FromDouble(parameter.defaultFloats[0]);
        case 4:
        case 5: return floats(3);
        case 7: return floats(16);
        case 9: return textOrNone(parameter.defaultString);
        default: Py_RETURN_NONE;
    }
}

PyObject* oslParameterDictionary(const ToviOSLParameter& parameter) {
    return Py_BuildValue("{s:s,s:i,s:O,s:i,s:N}", "name", parameter.name ? parameter.name : "", "type", parameter.type,
                         "isOutput", parameter.isOutput ? Py_True : Py_False, "arrayLength", parameter.arrayLength,
                         "default", oslDefault(parameter));
}

PyObject* getOSLParameters(PyObject*, PyObject* args) {
    const char* source = nullptr;
    if (!PyArg_ParseTuple(args, "s", &source) || requireSdk() < 0) return nullptr;
    SdkBlock<ToviOSLParameter> parameters;
    SdkCharString errorText;
    int count;
    {
        // Reading the parameters compiles the shader.
        ReleasedGil unlocked;
        count = SdkApi.Tovi_getOSLParameters(source, parameters.out(), errorText.out());
    }
    if (count < 0) return errorText.length() ? raiseSdkErrorText(errorText) : raiseSdkBroken();
    PyRef list(PyList_New(count));
    if (!list) return nullptr;
    for (int index = 0; index < count; ++index) {
        PyObject* parameter = parameters ? oslParameterDictionary(parameters.get()[index]) : nullptr;
        if (!parameter) return PyErr_Occurred() ? nullptr : raiseSdkBroken();
        PyList_SET_ITEM(list.get(), index, parameter);
    }
    return list.release();
}

const char* hostStatusText(int32_t status) {
    switch (status) {
        case TOVI_DR_HOST_ERROR_RESOLVE: return "Error Resolve";
        case TOVI_DR_HOST_ERROR_CONNECT: return "Error Connect";
        case TOVI_DR_HOST_ERROR_TIMEOUT: return "Error Timeout";
        case TOVI_DR_HOST_READY: return "Server Ready";
        case TOVI_DR_HOST_UNKNOWN: return "Server Unknown";
        case TOVI_DR_HOST_ERROR: return "Server Error";
        case TOVI_DR_HOST_BUSY: return "Server Busy";
        default: return nullptr;
    }
}

int setItem(PyObject* dictionary, const char* key, PyObject* value) {
    if (!value) return -1;
    int failed = PyDict_SetItemString(dictionary, key, value);
    Py_DECREF(value);
    return failed;
}

PyObject* hostCheckDictionary(const ToviDRHostCheck& check) {
    PyRef result(PyDict_New());
    if (!result) return nullptr;
    PyObject* dictionary = result.get();
    if (setItem(dictionary, "ready", PyBool_FromLong(check.status == TOVI_DR_HOST_READY)) < 0) return nullptr;
    if (const char* status = hostStatusText(check.status)) {
        if (setItem(dictionary, "status", PyUnicode_FromString(status)) < 0) return nullptr;
    }
    if (check.cpuCount != 0 && setItem(dictionary, "cpuCount", PyLong_FromLong(check.cpuCount)) < 0) return nullptr;
    if (check.toviVersion != 0 && setItem(dictionary, "toviVersion", versionTuple(check.toviVersion)) < 0) return nullptr;
    const struct {
        const char* key;
        const char* text;
    } texts[] = {
        {"hostResolved", check.hostResolved},
        {"hostConnectedTo", check.hostConnectedTo},
        {"revisionTime", check.revisionTime},
    };
    for (const auto& text : texts) {
        if (text.text && setItem(dictionary, text.key, PyUnicode_FromString(text.text)) < 0) return nullptr;
    }
    return result.release();
}

PyObject* checkDRHost(PyObject*, PyObject* args) {
    const char* host = nullptr;
    if (!PyArg_ParseTuple(args, "s", &host)) {
        return replaceError(PyExc_TypeError, "Missing 'hostName' or 'host:port' argument.");
    }
    if (requireSdk() < 0) return nullptr;
    SdkBlock<ToviDRHostCheck> check;
    {
        // The check talks to the network.
        ReleasedGil unlocked;
        check.reset(SdkApi.Tovi_checkDRHost(host));
    }
    if (!check) Py_RETURN_NONE;
    return hostCheckDictionary(*check.get());
}

const char* deviceTypeText(int32_t type) {
    switch (type) {
        case TOVI_DEVICE_TYPE_CPU: return "CPU";
        case TOVI_DEVICE_TYPE_GPU: return "GPU";
        case TOVI_DEVICE_TYPE_ACCELERATOR: return "Accelerator";
        default: return "unknown";
    }
}

PyObject* deviceDictionary(const ToviComputeDevice& device) {
    PyRef result(PyDict_New());
    if (!result) return nullptr;
    PyObject* dictionary = result.get();
    const struct {
        const char* key;
        PyObject* value;
    } items[] = {
        {"name", PyUnicode_FromString(device.name ? device.name : "")},
        {"useForRendering", PyBool_FromLong(device.useForRendering != 0)},
        {"useForDenoising", PyBool_FromLong(device.useForDenoising != 0)},
        {"isSupported", PyBool_FromLong(device.isSupported != 0)},
        {"type", PyUnicode_FromString(deviceTypeText(device.type))},
        // A 32-bit count shown, sign-extended, as an unsigned 64-bit number.
        {"totalMemoryMB", PyLong_FromUnsignedLongLong(static_cast<uint64_t>(static_cast<int64_t>(device.totalMemoryMB)))},
        {"numConnectedDisplays", PyLong_FromLong(device.numConnectedDisplays)},
        {"frequencyMHz", PyLong_FromLong(device.frequencyMHz)},
        {"gigaFlops", PyLong_FromLong(device.gigaFlops)},
        {"ccMajor", PyLong_FromLong(device.ccMajor)},
        {"ccMinor", PyLong_FromLong(device.ccMinor)},
        {"rtCoreVersion", PyLong_FromLong(device.rtCoreVersion)},
    };
    // Every value is consumed, also after the first failure.
    int failed = 0;
    for (const auto& item : items) {
        if (failed || !item.value) {
            failed = 1;
            Py_XDECREF(item.value);
            continue;
        }
        failed = setItem(dictionary, item.key, item.value) < 0;
    }
    return failed ? nullptr : result.release();
}

using DeviceListEntry = int (*)(ToviComputeDevice** devices, int recordSize);
using DeviceSelectionEntry = int (*)(const int32_t* indices, int count);

// The device functions use the library an earlier call loaded; before any load every entry is
// its stub, whose empty answer reads as a failed listing.
PyObject* listDevices(DeviceListEntry entry) {
    SdkBlock<ToviComputeDevice> devices;
    int count = entry(devices.out(), static_cast<int>(sizeof(ToviComputeDevice)));
    if (!devices || count < 0) {
        if (!PyErr_Occurred()) PyErr_SetString(PyExc_RuntimeError, "An error occurred while listing devices.");
        return nullptr;
    }
    PyRef list(PyList_New(count));
    if (!list) return nullptr;
    for (int index = 0; index < count; ++index) {
        PyObject* device = deviceDictionary(devices.get()[index]);
        if (!device) return nullptr;
        PyList_SET_ITEM(list.get(), index, device);
    }
    return list.release();
}

PyObject* typeError(const char* message) {
    PyErr_SetString(PyExc_TypeError, message);
    return nullptr;
}

bool isNumber(PyObject* object) { return PyLong_Check(object) || PyFloat_Check(object); }

// A device index from a number; false with the Python error set.
bool deviceIndex(PyObject* number, int32_t& index) {
    PyRef integer(PyNumber_Long(number));
    if (!integer) return false;
    long value = PyLong_AsLong(integer.get());
    if (value == -1 && PyErr_Occurred()) return false;
    if (value < INT32_MIN || value > INT32_MAX) {
        PyErr_SetString(PyExc_OverflowError, "device index out of range");
        return false;
    }
    index = static_cast<int32_t>(value);
    return true;
}

PyObject* selectDevices(PyObject* args, DeviceSelectionEntry entry) {
    constexpr const char* expectedList =
        "Expected a list of device indices to use (matching the indices of devices returned by getComputeDevices).";
    PyObject* list = nullptr;
    if (!PyArg_ParseTuple(args, "O", &list)) return replaceError(PyExc_TypeError, expectedList);
    if (!PyList_Check(list)) return typeError(expectedList);
    Py_ssize_t count = PyList_GET_SIZE(list);
    if (count > INT_MAX) return typeError(expectedList);
    auto* indices = static_cast<int32_t*>(PyMem_Malloc(count > 0 ? count * sizeof(int32_t) : 1));
    if (!indices) return PyErr_NoMemory();
    std::unique_ptr<int32_t, void (*)(void*)> ownedIndices(indices, &PyMem_Free);
    for (Py_ssize_t position = 0; position < PyList_GET_SIZE(list) && position < count; ++position) {
        PyRef element(PyList_GET_ITEM(list, position));
        Py_INCREF(element.get());
        PyObject* number = element.get();
        PyRef first;
        if (!isNumber(number)) {
            if (!PySequence_Check(number)) return typeError("Expected a list with elements that are numbers or number-bool pairs");
            Py_ssize_t length = PySequence_Size(number);
            if (length < 0) return nullptr;
            if (length != 2) return typeError("Each tuple must be of length 2 - one index and one boolean");
            first.reset(PySequence_GetItem(number, 0));
            if (!first) return nullptr;
            // The pair's boolean is accepted and not read.
            if (!isNumber(first.get())) return typeError("The first tuple element must be an integer number");
            number = first.get();
        }
        if (!deviceIndex(number, indices[position])) return nullptr;
    }
    return boolResult(entry(indices, static_cast<int>(count)) == 0);
}

// Without a library the selection is checked as usual and answers False.
PyObject* selectDevicesWithoutLibrary(PyObject* args) {
    PyRef checked(selectDevices(args, [](const int32_t*, int) { return -1; }));
    if (!checked) return nullptr;
    Py_RETURN_FALSE;
}

// The device functions read the table at call time: a later load replaces the entries.
#define TOVI_DEVICE_FUNCTIONS(Kind)                                                        \
    PyObject* getComputeDevices##Kind(PyObject*, PyObject*) {                              \
        return listDevices(SdkApi.Tovi_getDeviceList##Kind);                               \
    }                                                                                      \
    PyObject* setComputeDevices##Kind(PyObject*, PyObject* args) {                         \
        if (!sdkLibraryLoaded()) return selectDevicesWithoutLibrary(args);                  \
        return selectDevices(args, SdkApi.Tovi_setDeviceList##Kind);                       \
    }

TOVI_DEVICE_FUNCTIONS(Metal)
TOVI_DEVICE_FUNCTIONS(MetalRT)
TOVI_DEVICE_FUNCTIONS(Optix)
TOVI_DEVICE_FUNCTIONS(CUDA)
TOVI_DEVICE_FUNCTIONS(Denoiser)
#undef TOVI_DEVICE_FUNCTIONS

PyObject* setComputeDevicesEnvironmentVariable(PyObject*, PyObject*) {
    if (!sdkLibraryLoaded()) Py_RETURN_FALSE;
    return boolResult(SdkApi.Tovi_setGPUDevicesEnvironmentVariable() == 0);
}

}  // namespace

PyMethodDef moduleFunctions[] = {
    {"setSDKLibraryPath", setSDKLibraryPath, METH_VARARGS, nullptr},
    {"getSDKLibraryErrorString", getSDKLibraryErrorString, METH_NOARGS,
     "Returns detailed error info about SDK library loading errors."},
    {"getSDKLibraryMissingFunctions", getSDKLibraryMissingFunctions, METH_NOARGS,
     "Returns a tuple containing the names of the missing SDK library functions from the imported module."},
    {"enableFrameBuffer", enableFrameBuffer, METH_VARARGS, nullptr},
    {"close", close, METH_NOARGS, nullptr},
    {"getAPIVersion", getAPIVersion, METH_NOARGS, "Returns the AppSDK API version as a tuple."},
    {"getToviVersion", getToviVersion, METH_NOARGS, "Returns the Tovi Core version as a tuple."},
    {"getToviVersionDetails", getToviVersionDetails, METH_NOARGS, "Returns the detailed Tovi Core version as a string."},
    {"getMaterialLibraryPath", getMaterialLibraryPath, METH_NOARGS,
     "Returns the path to the Material Library folder or None if it's not installed."},
    {"isDR2", isDR2, METH_NOARGS,
     "Returns true, if Tovi is built with DR2 - Distributed Rendering generation 2.\n"
     "Returns false, in case of a DR1 build."},
    {"encodeScannedMaterialParams", reinterpret_cast<PyCFunction>(reinterpret_cast<void (*)()>(encodeScannedMaterialParams)),
     METH_VARARGS | METH_KEYWORDS, nullptr},
    {"getOSLParameters", getOSLParameters, METH_VARARGS, nullptr},
    {"setEnvVar", setEnvVar, METH_VARARGS, nullptr},
    {"getEnvVar", getEnvVar, METH_VARARGS, nullptr},
    {"checkDRHost", checkDRHost, METH_VARARGS, nullptr},
    {"getComputeDevicesMetal", getComputeDevicesMetal, METH_NOARGS, nullptr},
    {"getComputeDevicesMetalRT", getComputeDevicesMetalRT, METH_NOARGS, nullptr},
    {"getComputeDevicesOptix", getComputeDevicesOptix, METH_NOARGS, nullptr},
    {"getComputeDevicesCUDA", getComputeDevicesCUDA, METH_NOARGS, nullptr},
    {"getComputeDevicesDenoiser", getComputeDevicesDenoiser, METH_NOARGS, nullptr},
    {"setComputeDevicesMetal", setComputeDevicesMetal, METH_VARARGS, nullptr},
    {"setComputeDevicesMetalRT", setComputeDevicesMetalRT, METH_VARARGS, nullptr},
    {"setComputeDevicesOptix", setComputeDevicesOptix, METH_VARARGS, nullptr},
    {"setComputeDevicesCUDA", setComputeDevicesCUDA, METH_VARARGS, nullptr},
    {"setComputeDevicesDenoiser", setComputeDevicesDenoiser, METH_VARARGS, nullptr},
    {"setComputeDevicesEnvironmentVariable", setComputeDevicesEnvironmentVariable, METH_NOARGS, nullptr},
    {nullptr, nullptr, 0, nullptr},
};

}  // namespace tovi
