// tovi.Plugins (a renderer's plugin instances), tovi.PluginsIterator and tovi.PropertiesIterator.
#pragma once

#define PY_SSIZE_T_CLEAN
#include <Python.h>

#include "tovi_sdk.h"

namespace tovi {

extern PyTypeObject PluginsType;
extern PyTypeObject PluginsIteratorType;
extern PyTypeObject PropertiesIteratorType;

// The renderer's `plugins` collection.
PyObject* newPluginsCollection(PyObject* renderer);

// An iterator over the names of an SDK text vector, which it takes over.
PyObject* newPropertiesIterator(ToviVector* names);

// The collections of a renderer (plugins, classes, ...) hold nothing but their renderer, and
// share these slots.
struct RendererBoundObject {
    PyObject_HEAD
    PyObject* renderer;
};
inline PyObject* boundRenderer(PyObject* self) { return reinterpret_cast<RendererBoundObject*>(self)->renderer; }
PyObject* newRendererBound(PyTypeObject* type, PyObject* renderer);
int traverseRendererBound(PyObject* self, visitproc visit, void* arg);
int clearRendererBound(PyObject* self);
void deallocRendererBound(PyObject* self);
PyObject* boundGetRenderer(PyObject* self, PyObject*);

}  // namespace tovi
