// tovi.Vector: the record, its slots, its method table and its type object.
#include "values/vector.h"

#include <cmath>

namespace tovi {

namespace {

// The one cached `Vector()`: `Vector() is Vector()` holds for the type last asked for.
PyObject* zeroVector = nullptr;

void fillZero(PyObject* self) { reinterpret_cast<VectorObject*>(self)->value = Vec3{0.0, 0.0, 0.0}; }

PyObject* vectorNew(PyTypeObject* type, PyObject* args, PyObject* kwds) {
    if (!kwds && PyTuple_GET_SIZE(args) == 0) return cachedDefault(zeroVector, type, fillZero);
    static const char* const keywords[] = {"x", "y", "z", nullptr};
    Vec3 value;
    if (!PyArg_ParseTupleAndKeywords(args, kwds, "ddd", const_cast<char**>(keywords), &value.x, &value.y, &value.z)) {
        return nullptr;
    }
    PyObject* self = type->tp_alloc(type, 0);
    if (self) reinterpret_cast<VectorObject*>(self)->value = value;
    return self;
}

PyObject* vectorRepr(PyObject* self) {
    const Vec3& v = vectorValue(self);
    char text[128];
    PyOS_snprintf(text, sizeof text, "Vector(%g, %g, %g)", v.x, v.y, v.z);
    return PyUnicode_FromString(text);
}

PyObject* vectorItem(PyObject* self, Py_ssize_t index) {
    if (index < 0 || index >= 3) {
        PyErr_SetString(PyExc_IndexError, "Index out of range.");
        return nullptr;
    }
    return PyFloat_FromDouble(at(vectorValue(self), static_cast<int>(index)));
}

PyObject* vectorRichCompare(PyObject* a, PyObject* b, int op) {
    if (!isVector(a) || !isVector(b)) Py_RETURN_NOTIMPLEMENTED;
    if (op != Py_EQ && op != Py_NE) {
        PyErr_SetString(PyExc_TypeError, "Vectors only support equality comparisons.");
        return nullptr;
    }
    bool equal = sameValues(&vectorValue(a).x, &vectorValue(b).x, 3);
    return PyBool_FromLong(equal == (op == Py_EQ));
}

PyObject* vectorAdd(PyObject* a, PyObject* b) {
    if (!isVector(a) || !isVector(b)) Py_RETURN_NOTIMPLEMENTED;
    return newVector(add(vectorValue(a), vectorValue(b)));
}

PyObject* vectorSubtract(PyObject* a, PyObject* b) {
    if (!isVector(a) || !isVector(b)) Py_RETURN_NOTIMPLEMENTED;
    return newVector(sub(vectorValue(a), vectorValue(b)));
}

// A vector times a number scales it; two vectors give their dot product.
PyObject* vectorMultiply(PyObject* a, PyObject* b) {
    double factor;
    if (isVector(a) && PyNumber_Check(b)) {
        if (!numberValue(b, factor)) return nullptr;
        return newVector(scale(vectorValue(a), factor));
    }
    if (isVector(b) && PyNumber_Check(a)) {
        if (!numberValue(a, factor)) return nullptr;
        return newVector(scale(vectorValue(b), factor));
    }
    if (isVector(a) && isVector(b)) return PyFloat_FromDouble(dot(vectorValue(a), vectorValue(b)));
    Py_RETURN_NOTIMPLEMENTED;
}

// Multiplies by the reciprocal, computed once.
PyObject* vectorDivide(PyObject* a, PyObject* b) {
    if (!isVector(a) || !PyNumber_Check(b)) Py_RETURN_NOTIMPLEMENTED;
    double divisor;
    if (!numberValue(b, divisor) || !nonZero(divisor)) {
        PyErr_SetString(PyExc_ZeroDivisionError, "Division by zero.");
        return nullptr;
    }
    return newVector(scale(vectorValue(a), 1.0 / divisor));
}

PyObject* vectorCross(PyObject* a, PyObject* b) {
    if (!isVector(a) || !isVector(b)) Py_RETURN_NOTIMPLEMENTED;
    return newVector(cross(vectorValue(a), vectorValue(b)));
}

// The sum of the components each raised to the power, y first.
PyObject* vectorPower(PyObject* base, PyObject* exponent, PyObject* modulus) {
    if (modulus != Py_None) {
        PyErr_SetString(PyExc_SyntaxError, "Three argument pow is not supported.");
        return nullptr;
    }
    if (!isVector(base) || !PyNumber_Check(exponent)) Py_RETURN_NOTIMPLEMENTED;
    double power;
    if (!numberValue(exponent, power)) return nullptr;
    const Vec3& v = vectorValue(base);
    return PyFloat_FromDouble(std::pow(v.y, power) + std::pow(v.x, power) + std::pow(v.z, power));
}

PyObject* vectorNegative(PyObject* self) { return newVector(negate(vectorValue(self))); }

PyObject* vectorAbsolute(PyObject* self) { return PyFloat_FromDouble(length(vectorValue(self))); }

PyObject* vectorNormalize(PyObject* self, PyObject*) { return newVector(normalized(vectorValue(self))); }

PyObject* vectorRotate(PyObject* self, PyObject* args, PyObject* kwds) {
    static const char* const keywords[] = {"axis", nullptr};
    PyObject* axis;
    if (!PyArg_ParseTupleAndKeywords(args, kwds, "O", const_cast<char**>(keywords), &axis)) return nullptr;
    if (!isVector(axis)) Py_RETURN_NOTIMPLEMENTED;
    Vec3 rotated;
    if (!rotatedAbout(vectorValue(self), vectorValue(axis), rotated)) return Py_NewRef(self);
    return newVector(rotated);
}

PyObject* vectorComponentProduct(PyObject*, PyObject* args) {
    PyObject* first;
    PyObject* second;
    if (!PyArg_ParseTuple(args, "OO", &first, &second)) return nullptr;
    if (!isVector(first) || !isVector(second)) Py_RETURN_NOTIMPLEMENTED;
    const Vec3& a = vectorValue(first);
    const Vec3& b = vectorValue(second);
    return newVector(Vec3{a.x * b.x, a.y * b.y, a.z * b.z});
}

PyObject* vectorMixedProduct(PyObject*, PyObject* args) {
    PyObject* a;
    PyObject* b;
    PyObject* c;
    if (!PyArg_ParseTuple(args, "OOO", &a, &b, &c)) return nullptr;
    if (!isVector(a) || !isVector(b) || !isVector(c)) Py_RETURN_NOTIMPLEMENTED;
    return PyFloat_FromDouble(dot(cross(vectorValue(a), vectorValue(b)), vectorValue(c)));
}

PyGetSetDef vectorGetSet[] = {
    {"x", tripleComponent, nullptr, "Vector X axis value", reinterpret_cast<void*>(0)},
    {"y", tripleComponent, nullptr, "Vector Y axis value", reinterpret_cast<void*>(1)},
    {"z", tripleComponent, nullptr, "Vector Z axis value", reinterpret_cast<void*>(2)},
    {nullptr},
};

PyMethodDef vectorMethods[] = {
    {"lengthSqr", tripleLengthSquared, METH_NOARGS, "lengthSqr(self) -> float\nReturns the length of this vector squared."},
    {"length", tripleLength, METH_NOARGS, "length(self) -> float\nReturns the length of this vector."},
    {"normalize", vectorNormalize, METH_NOARGS,
     "normalize(self) -> Vector\nReturns the normalized copy of the given vector."},
    {"rotate", asMethod(vectorRotate), METH_VARARGS | METH_KEYWORDS,
     nullptr},
    {"mul", vectorComponentProduct, METH_VARARGS | METH_STATIC,
     "mul(first: Vector, second: Vector) -> Vector\nMutiplies the components of the given vectors. Note that this "
     "is different from operator*, which does dot product. "},
    {"mixed", vectorMixedProduct, METH_VARARGS | METH_STATIC,
     "mixed(a: Vector, b: Vector, c: Vector) -> Vector\nReturns the mixed product of the three vectors ((a ^ b) * c)"},
    {nullptr},
};

PyNumberMethods vectorNumber = [] {
    PyNumberMethods number{};
    number.nb_add = vectorAdd;
    number.nb_subtract = vectorSubtract;
    number.nb_multiply = vectorMultiply;
    number.nb_power = vectorPower;
    number.nb_negative = vectorNegative;
    number.nb_positive = copyVector;
    number.nb_absolute = vectorAbsolute;
    number.nb_bool = tripleIsNonZero;
    number.nb_xor = vectorCross;
    number.nb_true_divide = vectorDivide;
    return number;
}();

PySequenceMethods vectorSequence = [] {
    PySequenceMethods sequence{};
    sequence.sq_length = tripleSequenceLength;
    sequence.sq_item = vectorItem;
    return sequence;
}();

}  // namespace

PyTypeObject VectorType = [] {
    PyTypeObject type = {PyVarObject_HEAD_INIT(nullptr, 0)};
    type.tp_name = "tovi.Vector";
    type.tp_basicsize = sizeof(VectorObject);
    type.tp_dealloc = valueDealloc;
    type.tp_repr = vectorRepr;
    type.tp_as_number = &vectorNumber;
    type.tp_as_sequence = &vectorSequence;
    type.tp_str = vectorRepr;
    type.tp_flags = Py_TPFLAGS_DEFAULT | Py_TPFLAGS_BASETYPE;
    type.tp_doc =
        "A mathematical vector in 3D space. Supports the usual mathematical operations\nincluding dot and cross "
        "products (* and ^). The three components can be\nindexed like a list.\nThis object is immutable.\n\n * "
        "Vector() -> new Vector with value (0, 0, 0)\n * Vector(x,y,z) -> new Vector initialized to (x,y,z)\n";
    type.tp_richcompare = vectorRichCompare;
    type.tp_methods = vectorMethods;
    type.tp_getset = vectorGetSet;
    type.tp_new = vectorNew;
    return type;
}();

PyObject* allocateValue(PyTypeObject* type) {
    void* memory = PyObject_Malloc(static_cast<size_t>(type->tp_basicsize));
    if (!memory) return PyErr_NoMemory();
    return PyObject_Init(static_cast<PyObject*>(memory), type);
}

PyObject* newVector(const Vec3& value) {
    PyObject* self = allocateValue(&VectorType);
    if (self) reinterpret_cast<VectorObject*>(self)->value = value;
    return self;
}

PyObject* vectorFromFloats(const uint8_t*& cursor) {
    Vec3 value;
    readFloats(cursor, &value.x, 3);
    return newVector(value);
}

PyObject* copyVector(PyObject* vector) { return newVector(vectorValue(vector)); }

bool numberValue(PyObject* number, double& value) {
    if (PyFloat_CheckExact(number)) {
        value = PyFloat_AS_DOUBLE(number);
        return true;
    }
    value = PyFloat_AsDouble(number);
    return !(value == -1.0 && PyErr_Occurred());
}

PyObject* tripleComponent(PyObject* self, void* index) {
    return PyFloat_FromDouble(at(vectorValue(self), static_cast<int>(reinterpret_cast<intptr_t>(index))));
}

PyObject* tripleLength(PyObject* self, PyObject*) { return PyFloat_FromDouble(length(vectorValue(self))); }

PyObject* tripleLengthSquared(PyObject* self, PyObject*) { return PyFloat_FromDouble(lengthSquared(vectorValue(self))); }

int tripleIsNonZero(PyObject* self) { return anyNonZero(&vectorValue(self).x, 3); }

Py_ssize_t tripleSequenceLength(PyObject*) { return 3; }

void valueDealloc(PyObject* self) { Py_TYPE(self)->tp_free(self); }

void releaseVectorDefault() { Py_CLEAR(zeroVector); }

PyObject* cachedDefault(PyObject*& cache, PyTypeObject* type, void (*fill)(PyObject*)) {
    if (cache && Py_IS_TYPE(cache, type)) return Py_NewRef(cache);
    PyObject* self = type->tp_alloc(type, 0);
    if (!self) return nullptr;
    fill(self);
    Py_XSETREF(cache, Py_NewRef(self));
    return self;
}

}  // namespace tovi
