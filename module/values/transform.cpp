// tovi.Transform: the record, its slots, its method table and its type object.
#include "values/transform.h"

#include <cmath>

#include "values/matrix.h"
#include "values/vector.h"

namespace tovi {

namespace {

constexpr int transformNumberCount = 12;
static_assert(sizeof(Affine) == transformNumberCount * sizeof(double), "a transform is twelve packed doubles");

const double* numbers(const Affine& value) { return &value.matrix.c0.x; }

Affine scale(const Affine& value, double factor) {
    return {scale(value.matrix, factor), scale(value.offset, factor)};
}

Affine inverse(const Affine& value) {
    Mat3 inverted = inverse(value.matrix);
    return {inverted, negate(multiply(inverted, value.offset))};
}

PyObject* transformNew(PyTypeObject* type, PyObject* args, PyObject* kwds) {
    Affine value{};
    if (kwds || PyTuple_GET_SIZE(args) != 0) {
        static const char* const keywords[] = {"matrix", "offset", nullptr};
        PyObject* matrix;
        PyObject* offset;
        if (!PyArg_ParseTupleAndKeywords(args, kwds, "O!O!", const_cast<char**>(keywords), &MatrixType, &matrix,
                                         &VectorType, &offset)) {
            return nullptr;
        }
        value = {matrixValue(matrix), vectorValue(offset)};
    }
    PyObject* self = type->tp_alloc(type, 0);
    if (self) reinterpret_cast<TransformObject*>(self)->value = value;
    return self;
}

PyObject* transformRepr(PyObject* self) {
    const Mat3& m = transformValue(self).matrix;
    const Vec3& o = transformValue(self).offset;
    char text[512];
    PyOS_snprintf(text, sizeof text,
                  "Transform(Matrix(Vector(%g, %g, %g), Vector(%g, %g, %g), Vector(%g, %g, %g)), Vector(%g, %g, %g))",
                  m.c0.x, m.c0.y, m.c0.z, m.c1.x, m.c1.y, m.c1.z, m.c2.x, m.c2.y, m.c2.z, o.x, o.y, o.z);
    return PyUnicode_FromString(text);
}

Py_ssize_t transformLength(PyObject*) { return 2; }

PyObject* transformItem(PyObject* self, Py_ssize_t index) {
    if (index == 0) return newMatrix(transformValue(self).matrix);
    if (index == 1) return newVector(transformValue(self).offset);
    PyErr_SetString(PyExc_IndexError, "Index out of range.");
    return nullptr;
}

PyObject* transformRichCompare(PyObject* a, PyObject* b, int op) {
    if (!isTransform(a) || !isTransform(b)) Py_RETURN_NOTIMPLEMENTED;
    if (op != Py_EQ && op != Py_NE) {
        PyErr_SetString(PyExc_TypeError, "Transforms only support equality comparisons.");
        return nullptr;
    }
    bool equal = sameValues(numbers(transformValue(a)), numbers(transformValue(b)), transformNumberCount);
    return PyBool_FromLong(equal == (op == Py_EQ));
}

PyObject* transformAdd(PyObject* a, PyObject* b) {
    if (!isTransform(a) || !isTransform(b)) Py_RETURN_NOTIMPLEMENTED;
    const Affine& x = transformValue(a);
    const Affine& y = transformValue(b);
    return newTransform(Affine{add(x.matrix, y.matrix), add(x.offset, y.offset)});
}

PyObject* transformSubtract(PyObject* a, PyObject* b) {
    if (!isTransform(a) || !isTransform(b)) Py_RETURN_NOTIMPLEMENTED;
    const Affine& x = transformValue(a);
    const Affine& y = transformValue(b);
    return newTransform(Affine{sub(x.matrix, y.matrix), sub(x.offset, y.offset)});
}

// A number scales all twelve values; a Vector is transformed as a point; two transforms compose
// so that the result applies the right one first.
PyObject* transformMultiply(PyObject* a, PyObject* b) {
    double factor;
    if (!isTransform(a)) {
        if (!PyNumber_Check(a)) Py_RETURN_NOTIMPLEMENTED;
        if (!numberValue(a, factor)) return nullptr;
        return newTransform(scale(transformValue(b), factor));
    }
    const Affine& left = transformValue(a);
    if (PyNumber_Check(b)) {
        if (!numberValue(b, factor)) return nullptr;
        return newTransform(scale(left, factor));
    }
    if (!isTransform(b)) {
        if (!isVector(b)) Py_RETURN_NOTIMPLEMENTED;
        return newVector(add(multiply(left.matrix, vectorValue(b)), left.offset));
    }
    const Affine& right = transformValue(b);
    return newTransform(
        Affine{multiply(left.matrix, right.matrix), add(multiply(left.matrix, right.offset), left.offset)});
}

// No zero test: dividing by zero gives infinities and NaNs, as IEEE arithmetic does.
PyObject* transformDivide(PyObject* a, PyObject* b) {
    if (!isTransform(a) || !PyNumber_Check(b)) Py_RETURN_NOTIMPLEMENTED;
    double divisor;
    if (!numberValue(b, divisor)) return nullptr;
    return newTransform(scale(transformValue(a), 1.0 / divisor));
}

PyObject* transformNegative(PyObject* self) {
    const Affine& value = transformValue(self);
    return newTransform(Affine{negate(value.matrix), negate(value.offset)});
}

PyObject* transformPositive(PyObject* self) { return newTransform(transformValue(self)); }

PyObject* transformAbsolute(PyObject* self) {
    Affine value = transformValue(self);
    double* first = &value.matrix.c0.x;
    for (double* number = first; number != first + transformNumberCount; ++number) *number = std::fabs(*number);
    return newTransform(value);
}

int transformIsNonZero(PyObject* self) { return anyNonZero(numbers(transformValue(self)), transformNumberCount); }

PyObject* transformInverse(PyObject* self, PyObject* = nullptr) { return newTransform(inverse(transformValue(self))); }

PyObject* transformMatrix(PyObject* self, void*) { return newMatrix(transformValue(self).matrix); }

PyObject* transformOffset(PyObject* self, void*) { return newVector(transformValue(self).offset); }

// The one positional argument of the methods below, or null with the parser's error.
PyObject* singleArgument(PyObject* args) {
    PyObject* argument;
    return PyArg_ParseTuple(args, "O", &argument) ? argument : nullptr;
}

PyObject* transformTransformVector(PyObject* self, PyObject* args) {
    PyObject* vector = singleArgument(args);
    if (!vector) return nullptr;
    if (!isVector(vector)) Py_RETURN_NOTIMPLEMENTED;
    return newVector(multiply(transformValue(self).matrix, vectorValue(vector)));
}

PyObject* transformReplaceMatrix(PyObject* self, PyObject* args) {
    PyObject* matrix = singleArgument(args);
    if (!matrix) return nullptr;
    if (!isMatrix(matrix)) Py_RETURN_NOTIMPLEMENTED;
    return newTransform(Affine{matrixValue(matrix), transformValue(self).offset});
}

PyObject* transformReplaceOffset(PyObject* self, PyObject* args) {
    PyObject* offset = singleArgument(args);
    if (!offset) return nullptr;
    if (!isVector(offset)) Py_RETURN_NOTIMPLEMENTED;
    return newTransform(Affine{transformValue(self).matrix, vectorValue(offset)});
}

// diag(s) * matrix; the offset is deliberately left unscaled.
PyObject* transformScale(PyObject* self, PyObject* args) {
    PyObject* factors = singleArgument(args);
    if (!factors) return nullptr;
    if (!isVector(factors)) Py_RETURN_NOTIMPLEMENTED;
    Affine value = transformValue(self);
    const Vec3& s = vectorValue(factors);
    for (int index = 0; index < 3; ++index) {
        Vec3& c = column(value.matrix, index);
        c = Vec3{c.x * s.x, c.y * s.y, c.z * s.z};
    }
    return newTransform(value);
}

PyObject* transformRotate(PyObject* self, PyObject* args) {
    PyObject* axis = singleArgument(args);
    if (!axis) return nullptr;
    if (!isVector(axis)) Py_RETURN_NOTIMPLEMENTED;
    Affine value = transformValue(self);
    for (int index = 0; index < 3; ++index) {
        rotatedAbout(column(value.matrix, index), vectorValue(axis), column(value.matrix, index));
    }
    return newTransform(value);
}

PyObject* transformTranslate(PyObject* self, PyObject* args) {
    PyObject* offset = singleArgument(args);
    if (!offset) return nullptr;
    if (!isVector(offset)) Py_RETURN_NOTIMPLEMENTED;
    const Affine& value = transformValue(self);
    return newTransform(Affine{value.matrix, add(value.offset, vectorValue(offset))});
}

PyGetSetDef transformGetSet[] = {
    {"matrix", transformMatrix, nullptr, "The rotation & scale matrix", nullptr},
    {"offset", transformOffset, nullptr, "The translation vector", nullptr},
    {nullptr},
};

PyMethodDef transformMethods[] = {
    {"transformVector", transformTransformVector, METH_VARARGS,
     "transformVector(self, vector: Vector) -> Vector\nTransform a vector by the transformation, ignoring "
     "translation. This is different from operator*, which adds in the translation."},
    {"inverse", transformInverse, METH_NOARGS,
     "inverse(self) -> Transform\nReturns the inverted matrix and transformed translation vector."},
    {"replaceMatrix", transformReplaceMatrix, METH_VARARGS,
     "replaceMatrix(self, matrix: Matrix) -> Transform\nReturns copy of the Transform with the matrix replaced by the "
     "given one."},
    {"replaceOffset", transformReplaceOffset, METH_VARARGS,
     "replaceOffset(self, offset: Vector) -> Transform\nReturns copy of the Transform with the offset replaced by the "
     "given one."},
    {"scale", transformScale, METH_VARARGS,
     "scale(self, scale: Vector) -> Transform\nReturns copy of the Transform with a scale operation applied after the "
     "current transformation."},
    {"rotate", transformRotate, METH_VARARGS,
     "rotate(self, axis: Vector) -> Transform\nReturns copy of the Transform with a rotation applied after the "
     "current transformation.\n\n * axis The axis to rotate around. The length of the axis is the tangent of the "
     "angle of rotation."},
    {"translate", transformTranslate, METH_VARARGS,
     "translate(self, offset: Vector) -> Transform\nReturns copy of the Transform with the offset translated by the "
     "given vector."},
    {nullptr},
};

PyNumberMethods transformNumber = [] {
    PyNumberMethods number{};
    number.nb_add = transformAdd;
    number.nb_subtract = transformSubtract;
    number.nb_multiply = transformMultiply;
    number.nb_negative = transformNegative;
    number.nb_positive = transformPositive;
    number.nb_absolute = transformAbsolute;
    number.nb_bool = transformIsNonZero;
    number.nb_invert = [](PyObject* self) { return transformInverse(self); };
    number.nb_true_divide = transformDivide;
    return number;
}();

PySequenceMethods transformSequence = [] {
    PySequenceMethods sequence{};
    sequence.sq_length = transformLength;
    sequence.sq_item = transformItem;
    return sequence;
}();

}  // namespace

PyTypeObject TransformType = [] {
    PyTypeObject type = {PyVarObject_HEAD_INIT(nullptr, 0)};
    type.tp_name = "tovi.Transform";
    type.tp_basicsize = sizeof(TransformObject);
    type.tp_dealloc = valueDealloc;
    type.tp_repr = transformRepr;
    type.tp_as_number = &transformNumber;
    type.tp_as_sequence = &transformSequence;
    type.tp_str = transformRepr;
    type.tp_flags = Py_TPFLAGS_DEFAULT | Py_TPFLAGS_BASETYPE;
    type.tp_doc =
        "The object is a composite of a tovi.Matrix and a tovi.Vector that represent\nan affine transformation. It "
        "supports mathematical operations like\nmultiplication and addition; equality comparison; indexing, where "
        "the\nmatrix is [0] and the offset [1].\nThis object is immutable.\n\n * Transform() -> new Transform with "
        "matrix and offset initialized to 0\n * Transform(matrix, offset) -> new Transform from tovi.Matrix and "
        "tovi.Vector\n";
    type.tp_richcompare = transformRichCompare;
    type.tp_methods = transformMethods;
    type.tp_getset = transformGetSet;
    type.tp_new = transformNew;
    return type;
}();

PyObject* newTransform(const Affine& value) {
    PyObject* self = allocateValue(&TransformType);
    if (self) reinterpret_cast<TransformObject*>(self)->value = value;
    return self;
}

PyObject* transformFromFloats(const uint8_t*& cursor) {
    Affine value;
    readFloats(cursor, &value.matrix.c0.x, transformNumberCount);
    return newTransform(value);
}

PyObject* transformFromMixedRecord(const uint8_t*& cursor) {
    Affine value;
    readFloats(cursor, &value.matrix.c0.x, 9);
    std::memcpy(&value.offset, cursor, sizeof value.offset);
    cursor += sizeof value.offset;
    return newTransform(value);
}

}  // namespace tovi
