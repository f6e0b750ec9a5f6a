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

// "getRenderer" and "__dir__" after `names` (the collections' __dir__).
PyObject* namesWithCollectionMethods(PyObject* names);

}  // namespace tovi
