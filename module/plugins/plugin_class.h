// tovi.Class (one per class name and renderer), tovi.Classes and tovi.ClassesIterator.
#pragma once

#define PY_SSIZE_T_CLEAN
#include <Python.h>

namespace tovi {

extern PyTypeObject ClassType;
extern PyTypeObject ClassesType;
extern PyTypeObject ClassesIteratorType;

// The class object of a name for a renderer: the cached one or a new one; None for no name.
PyObject* pluginClass(PyObject* renderer, const char* name);

// The renderer's `classes` collection.
PyObject* newClassesCollection(PyObject* renderer);

}  // namespace tovi
