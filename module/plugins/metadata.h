// Property metadata and editor guides as dictionaries: getMeta and getUIGuides of plugins and
// classes, and the metadata of one class property for the class's attribute and item forms.
#pragma once

#define PY_SSIZE_T_CLEAN
#include <Python.h>

namespace tovi {

// Plugin.getMeta([name]) and Plugin.getUIGuides([name]).
PyObject* pluginGetMeta(PyObject* plugin, PyObject* args);
PyObject* pluginGetUIGuides(PyObject* plugin, PyObject* args);

// Class.getMeta([name]) and Class.getUIGuides([name]) of the class `className` of `renderer`.
PyObject* classGetMeta(PyObject* renderer, const char* className, PyObject* args);
PyObject* classGetUIGuides(PyObject* renderer, const char* className, PyObject* args);

// The metadata of one class property; a missing property raises `missingType` (KeyError(name),
// or the property access message for the other types).
PyObject* classPropertyMeta(PyObject* renderer, const char* className, const char* name, PyObject* missingType);

}  // namespace tovi
