// tovi.Class (one per class name and renderer), tovi.Classes and tovi.ClassesIterator.
#pragma once

#define PY_SSIZE_T_CLEAN
#include <Python.h>

#include "tovi_sdk.h"

namespace tovi {

extern PyTypeObject ClassType;
extern PyTypeObject ClassesType;
extern PyTypeObject ClassesIteratorType;

// The class object of a name for a renderer: the cached one or a new one; None for no name.
PyObject* pluginClass(PyObject* renderer, const char* name);

// A ClassesIterator over the class names of a category; the category keeps owning `names`.
PyObject* newCategoryClassesIterator(PyObject* renderer, PyObject* category, ToviVector* names);

// The name of a tovi.Class object, as UTF-8 owned by the object.
const char* classNameOf(PyObject* classObject);

// The renderer's `classes` collection.
PyObject* newClassesCollection(PyObject* renderer);

}  // namespace tovi
