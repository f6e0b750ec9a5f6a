// tovi.Plugin and tovi.PluginRef: one wrapper per plugin (and output) per renderer.
#pragma once

#define PY_SSIZE_T_CLEAN
#include <Python.h>

#include <cstdint>

#include "renderer/renderer.h"

namespace tovi {

constexpr uint64_t noPlugin = UINT64_MAX;

inline bool isValidPluginID(uint64_t id) { return id != 0 && id != noPlugin; }

struct PluginObject {
    PyObject_HEAD
    PyObject* renderer;  // the owning ToviRenderer
    uint64_t pluginID;
};

struct PluginRefObject {
    PluginObject base;
    int32_t outputIndex;  // at least 1
};

extern PyTypeObject PluginType;
extern PyTypeObject PluginRefType;

inline bool isPlugin(PyObject* object) { return PyObject_TypeCheck(object, &PluginType); }
inline bool isPluginRef(PyObject* object) { return PyObject_TypeCheck(object, &PluginRefType); }
inline PluginObject* asPlugin(PyObject* object) { return reinterpret_cast<PluginObject*>(object); }
inline uint64_t pluginID(PyObject* plugin) { return asPlugin(plugin)->pluginID; }
inline PyObject* pluginRenderer(PyObject* plugin) { return asPlugin(plugin)->renderer; }
inline int32_t outputIndex(PyObject* plugin) {
    return isPluginRef(plugin) ? reinterpret_cast<PluginRefObject*>(plugin)->outputIndex : 0;
}
inline ToviRenderer* pluginRendererHandle(PyObject* plugin) {
    PyObject* renderer = pluginRenderer(plugin);
    return renderer ? rendererHandle(renderer) : nullptr;
}

// The wrapper of a plugin and output for a renderer: the cached one, or a new one when the
// plugin exists; None for no renderer, an invalid identifier or a plugin that does not exist.
// A negative output index counts as 0.
PyObject* pluginWrapper(PyObject* renderer, uint64_t pluginID, int32_t outputIndex = 0);

// The plugin's instance name as a new str ("" when the SDK has none).
PyObject* pluginName(PyObject* plugin);

}  // namespace tovi
