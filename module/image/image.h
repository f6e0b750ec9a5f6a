// tovi.ToviImage: one SDK image (a float RGBA raster owned by the SDK allocator) with its bucket
// position and the host that produced it.
#pragma once

#define PY_SSIZE_T_CLEAN
#include <Python.h>

#include "tovi_sdk.h"

namespace tovi {

extern PyTypeObject ToviImageType;

inline bool isImage(PyObject* object) { return PyObject_TypeCheck(object, &ToviImageType); }

// A new ToviImage that takes over `handle` (may be null: an empty image that only carries its
// region and host). The handle is freed also when this fails. `host` may be null.
PyObject* newImageWrapper(ToviImage* handle, int x, int y, const char* host);

}  // namespace tovi
