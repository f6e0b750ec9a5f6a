// tovi.Transform: an immutable affine transformation, a 3x3 matrix and an offset.
#pragma once

#define PY_SSIZE_T_CLEAN
#include <Python.h>

#include <cstdint>

#include "values/kernels.h"

namespace tovi {

// Applied to a point p: matrix * p + offset.
struct Affine {
    Mat3 matrix;
    Vec3 offset;
};

struct TransformObject {
    PyObject_HEAD
    Affine value;
};

extern PyTypeObject TransformType;

inline bool isTransform(PyObject* object) {
    return Py_IS_TYPE(object, &TransformType) || PyType_IsSubtype(Py_TYPE(object), &TransformType);
}
inline const Affine& transformValue(PyObject* transform) { return reinterpret_cast<TransformObject*>(transform)->value; }

// A new tovi.Transform; null with the Python error set.
PyObject* newTransform(const Affine& value);
// Twelve packed floats (matrix columns, then offset) at the cursor; it advances by 48 bytes even
// when allocation fails.
PyObject* transformFromFloats(const uint8_t*& cursor);
// The SDK's 60-byte record: nine floats (the matrix), then three doubles (the offset). The cursor
// advances by 60 bytes even when allocation fails.
PyObject* transformFromMixedRecord(const uint8_t*& cursor);

}  // namespace tovi
