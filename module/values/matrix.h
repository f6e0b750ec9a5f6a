// tovi.Matrix: an immutable 3x3 column-major matrix of doubles.
#pragma once

#define PY_SSIZE_T_CLEAN
#include <Python.h>

#include <cstdint>

#include "values/kernels.h"

namespace tovi {

struct MatrixObject {
    PyObject_HEAD
    Mat3 value;
};

extern PyTypeObject MatrixType;

inline bool isMatrix(PyObject* object) {
    return Py_IS_TYPE(object, &MatrixType) || PyType_IsSubtype(Py_TYPE(object), &MatrixType);
}
inline const Mat3& matrixValue(PyObject* matrix) { return reinterpret_cast<MatrixObject*>(matrix)->value; }

// A new tovi.Matrix; null with the Python error set.
PyObject* newMatrix(const Mat3& value);
// Nine packed floats (three columns of three) at the cursor; the cursor advances by 36 bytes even
// when allocation fails.
PyObject* matrixFromFloats(const uint8_t*& cursor);

// The class attributes `zero` and `identity`, once the type is ready.
int addMatrixClassAttributes();

}  // namespace tovi
