// tovi.Categories (the renderer's `categories`), tovi.CategoriesIterator and tovi.Category: the
// SDK's numbered plugin categories, one category object per index and renderer.
#pragma once

#define PY_SSIZE_T_CLEAN
#include <Python.h>

#include <cstdint>

namespace tovi {

extern PyTypeObject CategoriesType;
extern PyTypeObject CategoriesIteratorType;
extern PyTypeObject CategoryType;

// The category object of an index for a renderer: the live one or a new one; None for an index
// the SDK does not have.
PyObject* categoryObject(PyObject* renderer, uint32_t index);

// A set of the category objects of the bits of a mask.
PyObject* categorySet(PyObject* renderer, uint64_t mask);

// The renderer's `categories` collection.
PyObject* newCategoriesCollection(PyObject* renderer);

}  // namespace tovi
