#include "plugins/property_access.h"

#include <cstring>

#include "core/errors.h"
#include "core/marshal.h"
#include "plugins/plugin.h"
#include "plugins/property_stream.h"

namespace tovi {

namespace {

constexpr int missingProperty = -22;

double nanWithBits(uint64_t bits) {
    double time;
    std::memcpy(&time, &bits, sizeof time);
    return time;
}

// The property name of a method's first argument; null with the TypeError set.
const char* propertyName(PyObject* argument) {
    if (!PyUnicode_Check(argument)) {
        raisePropertyNameNotText();
        return nullptr;
    }
    return PyUnicode_AsUTF8(argument);
}

// The time of an optional argument: only a number counts.
double optionalTime(PyObject* args, Py_ssize_t position) {
    if (PyTuple_GET_SIZE(args) <= position) return defaultValueTime();
    PyObject* time = PyTuple_GET_ITEM(args, position);
    if (!PyNumber_Check(time)) return defaultValueTime();
    double value = PyFloat_AsDouble(time);
    if (value == -1.0 && PyErr_Occurred()) {
        PyErr_Clear();
        return defaultValueTime();
    }
    return value;
}

// Encodes `value`; on success calls the SDK with the stream and answers its result.
bool writeProperty(PyObject* plugin, const char* name, PyObject* value, double time, int& result) {
    PropertyStream stream;
    encodePropertyValue(stream, value);
    if (stream.failed()) {
        replaceError(PyExc_ValueError, "Wrong property value.");
        return false;
    }
    // Typed lists travel by address: the GIL stays held so that nothing can change them.
    result = SdkApi.Tovi_ToviRenderer_setPropertyBytesValueAtTimeByID(pluginRendererHandle(plugin), pluginID(plugin), name,
                                                                      stream.data(), time,
                                                                      autoCommit(pluginRenderer(plugin)));
    return true;
}

// The name of a method's only argument, for the property-state family.
const char* singleName(PyObject* args) {
    PyObject* name;
    if (!PyArg_ParseTuple(args, "O", &name)) return nullptr;
    return propertyName(name);
}

}  // namespace

double defaultAccessTime() { return nanWithBits(0xFFFFFFFFFFFFFFFFull); }
double defaultValueTime() { return nanWithBits(0xFFFFFFFFFFFFFFFEull); }

PyObject* readProperty(PyObject* plugin, const char* name, double time, PyObject* errorType) {
    ToviRenderer* handle = pluginRendererHandle(plugin);
    SdkBlock<uint8_t> bytes;
    size_t size = 0;
    SdkApi.Tovi_getPropertyByteArrayByID(handle, pluginID(plugin), name, bytes.out(), &size, time);
    if (bytes) {
        const uint8_t* cursor = bytes.get();
        return decodePropertyValue(pluginRenderer(plugin), cursor, bytes.get() + size);
    }
    if (!SdkApi.Tovi_ToviRenderer_propertyExistsByID(handle, pluginID(plugin), name)) {
        return raisePropertyAccessError(errorType, name);
    }
    Py_RETURN_NONE;
}

int assignProperty(PyObject* plugin, const char* name, PyObject* value, PyObject* errorType) {
    if (!value) return failWith(PyExc_NotImplementedError, "Plugin properties cannot be deleted.");
    int result;
    if (PyUnicode_Check(value)) {
        // Text goes as it is: the SDK parses it by the property's type.
        const char* text = PyUnicode_AsUTF8(value);
        if (!text) return -1;
        result = SdkApi.Tovi_ToviRenderer_setPropertyValueAtTimeByID(pluginRendererHandle(plugin), pluginID(plugin), name,
                                                                     text, defaultAccessTime(),
                                                                     autoCommit(pluginRenderer(plugin)));
    } else if (!writeProperty(plugin, name, value, defaultAccessTime(), result)) {
        return -1;
    }
    if (result == 0) return 0;
    if (result == missingProperty) {
        raisePropertyAccessError(errorType, name);
        return -1;
    }
    return failWith(PyExc_RuntimeError, "Couldn't set property to value");
}

PyObject* pluginGetValue(PyObject* self, PyObject* args) {
    Py_ssize_t count = PyTuple_GET_SIZE(args);
    if (count < 1 || count > 2) {
        return replaceError(PyExc_TypeError, "This method expects 1 or 2 arguments - a property name and time (optional).");
    }
    const char* name = propertyName(PyTuple_GET_ITEM(args, 0));
    if (!name) return nullptr;
    return readProperty(self, name, optionalTime(args, 1), PyExc_NameError);
}

PyObject* pluginSetValue(PyObject* self, PyObject* args) {
    Py_ssize_t count = PyTuple_GET_SIZE(args);
    if (count < 2 || count > 3) {
        return replaceError(PyExc_TypeError,
                            "This method expects 2 or 3 arguments - a property name, a property value and time (optional).");
    }
    const char* name = propertyName(PyTuple_GET_ITEM(args, 0));
    if (!name) return nullptr;
    int result;
    if (!writeProperty(self, name, PyTuple_GET_ITEM(args, 1), optionalTime(args, 2), result)) return nullptr;
    if (result == missingProperty) return raisePropertyAccessError(PyExc_NameError, name);
    return PyBool_FromLong(result == 0);
}

PyObject* pluginGetValueAsString(PyObject* self, PyObject* args) {
    PyObject* argument;
    if (!PyArg_ParseTuple(args, "O", &argument)) return nullptr;
    const char* name = propertyName(argument);
    if (!name) return nullptr;
    SdkBlock<char> text(
        SdkApi.Tovi_ToviRenderer_getPropertyValueByID(pluginRendererHandle(self), pluginID(self), name, defaultAccessTime()));
    if (!text) return raisePropertyAccessError(PyExc_NameError, name);
    return PyUnicode_FromString(text.get());
}

PyObject* pluginSetValueAsString(PyObject* self, PyObject* args) {
    if (PyTuple_GET_SIZE(args) != 2) {
        return replaceError(PyExc_TypeError, "This method has two arguments, a property name and a property value.");
    }
    const char* name = propertyName(PyTuple_GET_ITEM(args, 0));
    if (!name) return nullptr;
    PyRef text(PyObject_Str(PyTuple_GET_ITEM(args, 1)));
    const char* value = text ? PyUnicode_AsUTF8(text.get()) : nullptr;
    if (!value) return nullptr;
    int result = SdkApi.Tovi_ToviRenderer_setPropertyValueAtTimeByID(pluginRendererHandle(self), pluginID(self), name, value,
                                                                     defaultAccessTime(), autoCommit(pluginRenderer(self)));
    if (result == missingProperty) return raisePropertyAccessError(PyExc_NameError, name);
    return PyBool_FromLong(result == 0);
}

PyObject* pluginGetPropertyState(PyObject* self, PyObject* args) {
    const char* name = singleName(args);
    if (!name) return nullptr;
    return PyLong_FromLong(SdkApi.Tovi_ToviRenderer_getPropertyStateByID(pluginRendererHandle(self), pluginID(self), name));
}

PyObject* pluginGetPropertyStateAsString(PyObject* self, PyObject* args) {
    const char* name = singleName(args);
    if (!name) return nullptr;
    static const char* const states[] = {"Invalid", "Default", "NotAnimated", "Animated"};
    int state = SdkApi.Tovi_ToviRenderer_getPropertyStateByID(pluginRendererHandle(self), pluginID(self), name);
    if (state < 0 || state > 3) Py_RETURN_NONE;
    return PyUnicode_FromString(states[state]);
}

PyObject* pluginIsPropertyAnimated(PyObject* self, PyObject* args) {
    const char* name = singleName(args);
    if (!name) return nullptr;
    int state = SdkApi.Tovi_ToviRenderer_getPropertyStateByID(pluginRendererHandle(self), pluginID(self), name);
    if (state == 0) Py_RETURN_NONE;
    return PyBool_FromLong(state == 3);
}

PyObject* pluginGetKeyframeTimes(PyObject* self, PyObject* args) {
    const char* name = singleName(args);
    if (!name) return nullptr;
    SdkBlock<double> times;
    int count = SdkApi.Tovi_ToviRenderer_getPropertyKeyframeTimesByID(pluginRendererHandle(self), pluginID(self), name,
                                                                       times.out());
    if (count < 0) return raisePropertyAccessError(PyExc_NameError, name);
    if (count > 0 && !times) return raiseSdkBroken();
    PyRef result(PyTuple_New(count));
    if (!result) return nullptr;
    for (int index = 0; index < count; ++index) {
        PyObject* time = PyFloat_FromDouble(times.get()[index]);
        if (!time) return nullptr;
        PyTuple_SET_ITEM(result.get(), index, time);
    }
    return result.release();
}

}  // namespace tovi
