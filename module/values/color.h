// tovi.Color, an immutable RGB colour of doubles, and tovi.AColor, which derives from it and
// adds alpha (opacity).
#pragma once

#define PY_SSIZE_T_CLEAN
#include <Python.h>

#include <cstddef>
#include <cstdint>

#include "values/vector.h"

namespace tovi {

// The same record as tovi.Vector's: the two types share their component routines.
struct ColorObject {
    PyObject_HEAD
    double r, g, b;
};

struct AColorObject {
    PyObject_HEAD
    double r, g, b, alpha;
};

static_assert(offsetof(ColorObject, r) == offsetof(VectorObject, value) && sizeof(ColorObject) == sizeof(VectorObject),
              "Color and Vector records match");
static_assert(offsetof(AColorObject, alpha) == sizeof(ColorObject), "AColor extends the Color record");

extern PyTypeObject ColorType;
extern PyTypeObject AColorType;

// True for Color and AColor, and subclasses.
inline bool isColor(PyObject* object) {
    return Py_IS_TYPE(object, &ColorType) || PyType_IsSubtype(Py_TYPE(object), &ColorType);
}
inline bool isAColor(PyObject* object) {
    return Py_IS_TYPE(object, &AColorType) || PyType_IsSubtype(Py_TYPE(object), &AColorType);
}
// r, g, b (and alpha for an AColor), in record order.
inline const double* colorComponents(PyObject* color) { return &reinterpret_cast<ColorObject*>(color)->r; }

// New objects, never the cached defaults; null with the Python error set.
PyObject* newColor(double r, double g, double b);
PyObject* newAColor(double r, double g, double b, double alpha);
// Packed floats at the cursor, which advances by 12 (Color) or 16 (AColor) bytes even when
// allocation fails.
PyObject* colorFromFloats(const uint8_t*& cursor);
PyObject* acolorFromFloats(const uint8_t*& cursor);

// Drops the cached `Color()` and `AColor()` (tovi.close()); the next ones are made anew.
void releaseColorDefaults();

// COLOR_SPACE_CIE, COLOR_SPACE_SRGB and COLOR_SPACE_ACEScg in Color's dictionary; a constant
// that cannot be added is skipped.
void addColorSpaceConstants();

}  // namespace tovi
