// tovi.VectorList, tovi.ColorList and tovi.TransformList: packed 32-bit floats of the value
// types, narrowed on the way in and widened to new value objects on the way out.
#include <cstdio>
#include <cstring>

#include "core/errors.h"
#include "lists/list_kinds.h"
#include "values/color.h"
#include "values/transform.h"
#include "values/vector.h"

namespace tovi {

namespace {

void storeTriple(float* packed, const Vec3& value) {
    packed[0] = static_cast<float>(value.x);
    packed[1] = static_cast<float>(value.y);
    packed[2] = static_cast<float>(value.z);
}

// How one value kind is recognised, packed and made again from packed floats.
struct ValueKind {
    static constexpr int maxFloats = 12;
    int floats;
    bool (*accepts)(PyObject* value);
    void (*pack)(PyObject* value, float* packed);
    PyObject* (*fromFloats)(const uint8_t*& cursor);
    const char* wrongItemMessage;    // item assignment
    const char* wrongSourceMessage;  // extend
};

void packVector(PyObject* vector, float* packed) { storeTriple(packed, vectorValue(vector)); }

// An AColor's alpha is dropped.
void packColor(PyObject* color, float* packed) {
    const double* rgb = colorComponents(color);
    storeTriple(packed, {rgb[0], rgb[1], rgb[2]});
}

// Matrix columns 0, 1, 2, then the offset.
void packTransform(PyObject* transform, float* packed) {
    const Affine& affine = transformValue(transform);
    storeTriple(packed, affine.matrix.c0);
    storeTriple(packed + 3, affine.matrix.c1);
    storeTriple(packed + 6, affine.matrix.c2);
    storeTriple(packed + 9, affine.offset);
}

const ValueKind vectorKind = {3, isVector, packVector, vectorFromFloats, "Only Vector can be set",
                              "Source must contain only vectors"};
const ValueKind colorKind = {3, isColor, packColor, colorFromFloats, "Only Color can be set",
                             "Source must contain only colors"};
const ValueKind transformKind = {12, isTransform, packTransform, transformFromFloats, "Only Transform can be set",
                                 "Source must contain only Transforms"};

// Converts `item` into the element, or fails with `message`.
int store(const ValueKind& kind, PyObject* item, char* element, const char* message) {
    if (!kind.accepts(item)) return failWith(PyExc_TypeError, message);
    float packed[ValueKind::maxFloats];
    kind.pack(item, packed);
    std::memcpy(element, packed, kind.floats * sizeof(float));
    return 0;
}

template <const ValueKind& kind>
struct Conversions {
    static PyObject* getItem(PyObject*, const char* element) {
        const auto* cursor = reinterpret_cast<const uint8_t*>(element);
        return kind.fromFloats(cursor);
    }
    static int setItem(PyObject*, PyObject* value, char* element) {
        return store(kind, value, element, kind.wrongItemMessage);
    }
    static int storeSourceItem(PyObject*, PyObject* item, char* element) {
        return store(kind, item, element, kind.wrongSourceMessage);
    }
    static PyObject* append(PyObject* self, PyObject* value) {
        if (!kind.accepts(value)) return replaceError(PyExc_TypeError, "Unsupported type");
        if (appendElement(self, [&](char* element) { return store(kind, value, element, nullptr); }) < 0) return nullptr;
        Py_RETURN_NONE;
    }
    static inline PyMethodDef methods[] = {
        {"append", append, METH_O, nullptr},
        {"extend", extendMethod, METH_O, nullptr},
        {nullptr, nullptr, 0, nullptr},
    };
};

float floatAt(const char* element, int index) {
    float value;
    std::memcpy(&value, element + index * sizeof(float), sizeof value);
    return value;
}

int formatVector(PyObject*, const char* e, const char* separator, char* buffer, size_t size) {
    return std::snprintf(buffer, size, "Vector(%.7g, %.7g, %.7g)%s", floatAt(e, 0), floatAt(e, 1), floatAt(e, 2),
                         separator);
}

int formatColor(PyObject*, const char* e, const char* separator, char* buffer, size_t size) {
    return std::snprintf(buffer, size, "Color(%.7g, %.7g, %.7g)%s", floatAt(e, 0), floatAt(e, 1), floatAt(e, 2),
                         separator);
}

int formatTransform(PyObject*, const char* e, const char* separator, char* buffer, size_t size) {
    return std::snprintf(buffer, size,
                         "Transform(Matrix(Vector(%.7g, %.7g, %.7g), Vector(%.7g, %.7g, %.7g), Vector(%.7g, %.7g, "
                         "%.7g)), Vector(%.7g, %.7g, %.7g))%s",
                         floatAt(e, 0), floatAt(e, 1), floatAt(e, 2), floatAt(e, 3), floatAt(e, 4), floatAt(e, 5),
                         floatAt(e, 6), floatAt(e, 7), floatAt(e, 8), floatAt(e, 9), floatAt(e, 10), floatAt(e, 11),
                         separator);
}

template <const ValueKind& kind>
ListConversions conversions(const char* prefix, ElementFormatter format, Py_ssize_t strLimit) {
    return {kind.floats * sizeof(float), Conversions<kind>::getItem, Conversions<kind>::setItem,
            Conversions<kind>::storeSourceItem, kind.wrongSourceMessage, prefix, format, strLimit};
}

}  // namespace

TypedListType VectorListType =
    makeListKind("tovi.VectorList", "Efficient implementation of Tovi VectorList.\n", Conversions<vectorKind>::methods,
                 nullptr, conversions<vectorKind>("VectorList(", formatVector, 10));
TypedListType ColorListType =
    makeListKind("tovi.ColorList", "Efficient implementation of Tovi ColorList.\n", Conversions<colorKind>::methods,
                 nullptr, conversions<colorKind>("ColorList(", formatColor, 10));
TypedListType TransformListType = makeListKind(
    "tovi.TransformList", "Efficient implementation of Tovi TransformList.\n", Conversions<transformKind>::methods,
    nullptr, conversions<transformKind>("TransformList(", formatTransform, 3));

}  // namespace tovi
