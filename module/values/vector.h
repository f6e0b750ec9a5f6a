// tovi.Vector: an immutable three-component vector of doubles.
#pragma once

#define PY_SSIZE_T_CLEAN
#include <Python.h>

#include <cstdint>

#include "values/kernels.h"

namespace tovi {

struct VectorObject {
    PyObject_HEAD
    Vec3 value;
};

extern PyTypeObject VectorType;

inline bool isVector(PyObject* object) {
    return Py_IS_TYPE(object, &VectorType) || PyType_IsSubtype(Py_TYPE(object), &VectorType);
}
inline const Vec3& vectorValue(PyObject* vector) { return reinterpret_cast<VectorObject*>(vector)->value; }

// A new tovi.Vector, never the cached default; null with the Python error set.
PyObject* newVector(const Vec3& value);
// Three packed floats at the cursor; the cursor advances by 12 bytes even when allocation fails.
PyObject* vectorFromFloats(const uint8_t*& cursor);
// A new tovi.Vector with the components of any Vector.
PyObject* copyVector(PyObject* vector);

// An instance of exactly `type` (a static value type), allocated without the type's generic
// allocator so that arithmetic results cost one small-object allocation.
PyObject* allocateValue(PyTypeObject* type);

// Routines shared with tovi.Color, whose record has the same three doubles.
PyObject* tripleComponent(PyObject* self, void* index);
PyObject* tripleLength(PyObject* self, PyObject*);
PyObject* tripleLengthSquared(PyObject* self, PyObject*);
int tripleIsNonZero(PyObject* self);
Py_ssize_t tripleSequenceLength(PyObject* self);
void valueDealloc(PyObject* self);
// The single-slot default-object cache of a value type: the cached object when it is of exactly
// `type`, else a new one from `type`'s allocator, initialised by `fill`, which replaces it.
PyObject* cachedDefault(PyObject*& cache, PyTypeObject* type, void (*fill)(PyObject*));
// Drops the cached `Vector()` (tovi.close()); the next one is made anew.
void releaseVectorDefault();

}  // namespace tovi
