// Reading and writing a plugin's properties through the property value stream.
#pragma once

#define PY_SSIZE_T_CLEAN
#include <Python.h>

#include <cstdint>

namespace tovi {

// No time given: two distinct NaN patterns. Attribute and item access and the text forms pass
// the first; getValue and setValue the second.
double defaultAccessTime();
double defaultValueTime();

// The property's value, None when it exists without a value; a missing property raises
// `errorType` (KeyError(name), or the access message for the other types).
PyObject* readProperty(PyObject* plugin, const char* name, double time, PyObject* errorType);

// Attribute and item assignment; `errorType` as for readProperty. 0, or -1 with the error set.
int assignProperty(PyObject* plugin, const char* name, PyObject* value, PyObject* errorType);

// The methods of tovi.Plugin that read and write properties.
PyObject* pluginGetValue(PyObject* self, PyObject* args);
PyObject* pluginSetValue(PyObject* self, PyObject* args);
PyObject* pluginGetValueAsString(PyObject* self, PyObject* args);
PyObject* pluginSetValueAsString(PyObject* self, PyObject* args);
PyObject* pluginGetPropertyState(PyObject* self, PyObject* args);
PyObject* pluginGetPropertyStateAsString(PyObject* self, PyObject* args);
PyObject* pluginIsPropertyAnimated(PyObject* self, PyObject* args);
PyObject* pluginGetKeyframeTimes(PyObject* self, PyObject* args);

}  // namespace tovi
