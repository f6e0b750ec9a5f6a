// tovi.Matrix: the record, its slots, its method table and its type object.
#include "values/matrix.h"

#include <algorithm>
#include <cmath>

#include "values/vector.h"

namespace tovi {

namespace {

double element(const Mat3& m, int row, int col) { return at(column(m, col), row); }
double& element(Mat3& m, int row, int col) { return at(column(m, col), row); }

Mat3 diagonal(const Vec3& d) { return {{d.x, 0.0, 0.0}, {0.0, d.y, 0.0}, {0.0, 0.0, d.z}}; }

// Numbers that fail their float conversion are not operands of the matrix operators.
bool matrixOperandValue(PyObject* number, double& value) {
    if (numberValue(number, value)) return true;
    PyErr_Clear();
    return false;
}

PyObject* matrixNew(PyTypeObject* type, PyObject* args, PyObject* kwds) {
    Py_ssize_t count = PyTuple_GET_SIZE(args) + (kwds ? PyDict_GET_SIZE(kwds) : 0);
    Mat3 value{};
    if (count == 1) {
        static const char* const keywords[] = {"diagonal", nullptr};
        PyObject* argument;
        if (!PyArg_ParseTupleAndKeywords(args, kwds, "O", const_cast<char**>(keywords), &argument)) return nullptr;
        if (isVector(argument)) {
            value = diagonal(vectorValue(argument));
        } else if (PyNumber_Check(argument)) {
            double number = PyFloat_AsDouble(argument);
            if (number == -1.0 && PyErr_Occurred()) return nullptr;
            value = diagonal(Vec3{number, number, number});
        } else {
            PyErr_SetString(PyExc_TypeError, "When passing a single argument, it should be a Vector or a real number.");
            return nullptr;
        }
    } else if (count > 1) {
        static const char* const keywords[] = {"column0", "column1", "column2", nullptr};
        PyObject* columns[3];
        if (!PyArg_ParseTupleAndKeywords(args, kwds, "O!O!O!", const_cast<char**>(keywords), &VectorType, &columns[0],
                                         &VectorType, &columns[1], &VectorType, &columns[2])) {
            return nullptr;
        }
        value = {vectorValue(columns[0]), vectorValue(columns[1]), vectorValue(columns[2])};
    }
    PyObject* self = type->tp_alloc(type, 0);
    if (self) reinterpret_cast<MatrixObject*>(self)->value = value;
    return self;
}

PyObject* matrixRepr(PyObject* self) {
    const Mat3& m = matrixValue(self);
    char text[512];
    PyOS_snprintf(text, sizeof text, "Matrix(Vector(%g, %g, %g), Vector(%g, %g, %g), Vector(%g, %g, %g))", m.c0.x,
                  m.c0.y, m.c0.z, m.c1.x, m.c1.y, m.c1.z, m.c2.x, m.c2.y, m.c2.z);
    return PyUnicode_FromString(text);
}

Py_ssize_t matrixLength(PyObject*) { return 3; }

PyObject* matrixItem(PyObject* self, Py_ssize_t index) {
    if (index < 0 || index >= 3) {
        PyErr_SetString(PyExc_IndexError, "Index out of range.");
        return nullptr;
    }
    return newVector(column(matrixValue(self), static_cast<int>(index)));
}

PyObject* matrixRichCompare(PyObject* a, PyObject* b, int op) {
    if (!isMatrix(a) || !isMatrix(b)) Py_RETURN_NOTIMPLEMENTED;
    if (op != Py_EQ && op != Py_NE) {
        PyErr_SetString(PyExc_TypeError, "Matrices only support equality comparisons.");
        return nullptr;
    }
    bool equal = sameValues(&matrixValue(a).c0.x, &matrixValue(b).c0.x, 9);
    return PyBool_FromLong(equal == (op == Py_EQ));
}

PyObject* matrixAdd(PyObject* a, PyObject* b) {
    if (!isMatrix(a) || !isMatrix(b)) Py_RETURN_NOTIMPLEMENTED;
    return newMatrix(add(matrixValue(a), matrixValue(b)));
}

PyObject* matrixSubtract(PyObject* a, PyObject* b) {
    if (!isMatrix(a) || !isMatrix(b)) Py_RETURN_NOTIMPLEMENTED;
    return newMatrix(sub(matrixValue(a), matrixValue(b)));
}

// With a matrix on the left the other operand is tried as a number, a Vector, then a Matrix; on
// the right, as a number, then a Vector (which multiplies by the transpose).
PyObject* matrixMultiply(PyObject* a, PyObject* b) {
    double factor;
    if (isMatrix(a)) {
        if (PyNumber_Check(b)) {
            if (!matrixOperandValue(b, factor)) Py_RETURN_NOTIMPLEMENTED;
            return newMatrix(scale(matrixValue(a), factor));
        }
        if (isVector(b)) return newVector(multiply(matrixValue(a), vectorValue(b)));
        if (isMatrix(b)) return newMatrix(multiply(matrixValue(a), matrixValue(b)));
        Py_RETURN_NOTIMPLEMENTED;
    }
    if (PyNumber_Check(a)) {
        if (!matrixOperandValue(a, factor)) Py_RETURN_NOTIMPLEMENTED;
        return newMatrix(scale(matrixValue(b), factor));
    }
    if (isVector(a)) return newVector(multiplyTransposed(vectorValue(a), matrixValue(b)));
    Py_RETURN_NOTIMPLEMENTED;
}

// A matrix over a number scales by the reciprocal; a number over a matrix is a float, the number
// over the determinant.
PyObject* matrixDivide(PyObject* a, PyObject* b) {
    double number;
    if (isMatrix(a) && PyNumber_Check(b)) {
        if (!matrixOperandValue(b, number)) Py_RETURN_NOTIMPLEMENTED;
        if (!nonZero(number)) {
            PyErr_SetString(PyExc_ZeroDivisionError, "Division by zero.");
            return nullptr;
        }
        return newMatrix(scale(matrixValue(a), 1.0 / number));
    }
    if (PyNumber_Check(a) && isMatrix(b)) {
        if (!matrixOperandValue(a, number)) Py_RETURN_NOTIMPLEMENTED;
        double det = determinant(matrixValue(b));
        if (!nonZero(det)) {
            PyErr_SetString(PyExc_ZeroDivisionError, "Determinant is zero.");
            return nullptr;
        }
        return PyFloat_FromDouble(number / det);
    }
    Py_RETURN_NOTIMPLEMENTED;
}

PyObject* matrixCross(PyObject* a, PyObject* b) {
    if (isMatrix(a) && isVector(b)) {
        const Mat3& m = matrixValue(a);
        const Vec3& v = vectorValue(b);
        return newMatrix(Mat3{cross(m.c0, v), cross(m.c1, v), cross(m.c2, v)});
    }
    if (isVector(a) && isMatrix(b)) {
        const Vec3& v = vectorValue(a);
        const Mat3& m = matrixValue(b);
        return newMatrix(Mat3{cross(v, m.c0), cross(v, m.c1), cross(v, m.c2)});
    }
    Py_RETURN_NOTIMPLEMENTED;
}

PyObject* matrixNegative(PyObject* self) { return newMatrix(negate(matrixValue(self))); }

PyObject* matrixPositive(PyObject* self) { return newMatrix(matrixValue(self)); }

PyObject* matrixAbsolute(PyObject* self) {
    Mat3 m = matrixValue(self);
    for (double* value = &m.c0.x; value != &m.c0.x + 9; ++value) *value = std::fabs(*value);
    return newMatrix(m);
}

int matrixIsNonZero(PyObject* self) { return anyNonZero(&matrixValue(self).c0.x, 9); }

PyObject* matrixInverse(PyObject* self, PyObject* = nullptr) { return newMatrix(inverse(matrixValue(self))); }

PyObject* matrixTranspose(PyObject* self, PyObject*) { return newMatrix(transpose(matrixValue(self))); }

PyObject* matrixColumn(PyObject* self, void* index) {
    return newVector(column(matrixValue(self), static_cast<int>(reinterpret_cast<intptr_t>(index))));
}

bool rotationAngle(PyObject* args, double& angle) {
    if (PyArg_ParseTuple(args, "d", &angle)) return true;
    PyErr_SetString(PyExc_SyntaxError, "An angle (a number in radians) should be passed.");
    return false;
}

PyObject* makeRotationX(PyObject*, PyObject* args) {
    double angle;
    if (!rotationAngle(args, angle)) return nullptr;
    double s = std::sin(angle), c = std::cos(angle);
    return newMatrix(Mat3{{1.0, 0.0, 0.0}, {0.0, c, s}, {0.0, -s, c}});
}

PyObject* makeRotationY(PyObject*, PyObject* args) {
    double angle;
    if (!rotationAngle(args, angle)) return nullptr;
    double s = std::sin(angle), c = std::cos(angle);
    return newMatrix(Mat3{{c, 0.0, -s}, {0.0, 1.0, 0.0}, {s, 0.0, c}});
}

PyObject* makeRotationZ(PyObject*, PyObject* args) {
    double angle;
    if (!rotationAngle(args, angle)) return nullptr;
    double s = std::sin(angle), c = std::cos(angle);
    return newMatrix(Mat3{{c, s, 0.0}, {-s, c, 0.0}, {0.0, 0.0, 1.0}});
}

// Directions change, column lengths stay.
PyObject* matrixOrthogonal(PyObject* self, PyObject*) {
    const Mat3& m = matrixValue(self);
    Vec3 u0 = normalized(m.c0);
    Vec3 u1 = normalized(cross(m.c2, m.c0));
    return newMatrix(Mat3{scale(u0, length(m.c0)), scale(u1, length(m.c1)), scale(cross(u0, u1), length(m.c2))});
}

PyObject* matrixOrthonormal(PyObject* self, PyObject*) {
    const Mat3& m = matrixValue(self);
    Vec3 r0 = normalized(m.c0);
    Vec3 r1 = normalized(cross(m.c2, m.c0));
    return newMatrix(Mat3{r0, r1, cross(r0, r1)});
}

PyObject* matrixWithoutScale(PyObject* self, PyObject*) {
    const Mat3& m = matrixValue(self);
    return newMatrix(Mat3{normalized(m.c0), normalized(m.c1), normalized(m.c2)});
}

PyObject* matrixRotate(PyObject* self, PyObject* args, PyObject* kwds) {
    static const char* const keywords[] = {"axis", nullptr};
    PyObject* axis;
    if (!PyArg_ParseTupleAndKeywords(args, kwds, "O", const_cast<char**>(keywords), &axis)) return nullptr;
    if (!isVector(axis)) Py_RETURN_NOTIMPLEMENTED;
    Mat3 m = matrixValue(self);
    for (int index = 0; index < 3; ++index) rotatedAbout(column(m, index), vectorValue(axis), column(m, index));
    return newMatrix(m);
}

PyObject* matrixOuterProduct(PyObject*, PyObject* args) {
    PyObject* first;
    PyObject* second;
    if (!PyArg_ParseTuple(args, "OO", &first, &second)) return nullptr;
    if (!isVector(first) || !isVector(second)) Py_RETURN_NOTIMPLEMENTED;
    const Vec3& v1 = vectorValue(first);
    const Vec3& v2 = vectorValue(second);
    return newMatrix(Mat3{scale(v2, v1.x), scale(v2, v1.y), scale(v2, v1.z)});
}

// Parses (index, vector) for the row and column replacements; null with an error, NotImplemented
// for a value that is not a Vector, or Py_None with the two outputs set.
PyObject* replacementArguments(PyObject* args, PyObject* kwds, unsigned int& index, PyObject*& vector) {
    static const char* const keywords[] = {"index", "vector", nullptr};
    if (!PyArg_ParseTupleAndKeywords(args, kwds, "IO", const_cast<char**>(keywords), &index, &vector)) return nullptr;
    if (index >= 3) {
        PyErr_SetString(PyExc_IndexError, "Index out of range.");
        return nullptr;
    }
    return isVector(vector) ? Py_None : Py_NotImplemented;
}

PyObject* matrixReplaceRow(PyObject* self, PyObject* args, PyObject* kwds) {
    unsigned int index;
    PyObject* vector;
    PyObject* outcome = replacementArguments(args, kwds, index, vector);
    if (outcome != Py_None) return Py_XNewRef(outcome);
    Mat3 m = matrixValue(self);
    const Vec3& row = vectorValue(vector);
    at(m.c0, index) = row.x;
    at(m.c1, index) = row.y;
    at(m.c2, index) = row.z;
    return newMatrix(m);
}

PyObject* matrixReplaceColumn(PyObject* self, PyObject* args, PyObject* kwds) {
    unsigned int index;
    PyObject* vector;
    PyObject* outcome = replacementArguments(args, kwds, index, vector);
    if (outcome != Py_None) return Py_XNewRef(outcome);
    Mat3 m = matrixValue(self);
    column(m, index) = vectorValue(vector);
    return newMatrix(m);
}

PyObject* matrixAddDiagonal(PyObject* self, PyObject* args) {
    PyObject* diag;
    if (!PyArg_ParseTuple(args, "O", &diag)) return nullptr;
    if (!isVector(diag)) Py_RETURN_NOTIMPLEMENTED;
    Mat3 m = matrixValue(self);
    const Vec3& d = vectorValue(diag);
    m.c0.x += d.x;
    m.c1.y += d.y;
    m.c2.z += d.z;
    return newMatrix(m);
}

PyObject* matrixAddTransposed(PyObject* self, PyObject* args) {
    PyObject* other;
    if (!PyArg_ParseTuple(args, "O", &other)) return nullptr;
    if (!isMatrix(other)) Py_RETURN_NOTIMPLEMENTED;
    return newMatrix(add(matrixValue(self), transpose(matrixValue(other))));
}

// The single-precision value of 1e-6: shears below it are snapped to zero.
constexpr double shearEpsilon = static_cast<double>(1e-6f);
// Rotations below it snap to zero and scales within it of +-1 snap to +-1.
constexpr double snapDelta = 1e-6;

double snappedShear(double shear) { return std::fabs(shear) < shearEpsilon ? 0.0 : shear; }

void snapRotationAndScale(double& rotation, double& scaleFactor) {
    if (std::fabs(rotation) < snapDelta) rotation = 0.0;
    if (std::fabs(std::fabs(scaleFactor) - 1.0) < snapDelta) scaleFactor = scaleFactor < 0.0 ? -1.0 : 1.0;
}

void normalizeBy(Vec3& v, double len) {
    if (len > tinyLength) v = scale(v, 1.0 / len);
}

// Gram-Schmidt on the columns: scales, shears, then the X/Y/Z angles of what remains.
PyObject* matrixSimpleDecompose(PyObject* self, PyObject*) {
    Mat3 m = matrixValue(self);
    Vec3 scaling, shear, rotation;

    scaling.x = length(m.c0);
    normalizeBy(m.c0, scaling.x);

    shear.x = snappedShear(dot(m.c0, m.c1));
    m.c1 = sub(m.c1, scale(m.c0, shear.x));
    scaling.y = length(m.c1);
    normalizeBy(m.c1, scaling.y);

    shear.y = snappedShear(dot(m.c0, m.c2));
    m.c2 = sub(m.c2, scale(m.c0, shear.y));
    shear.z = snappedShear(dot(m.c1, m.c2));
    m.c2 = sub(m.c2, scale(m.c1, shear.z));
    scaling.z = length(m.c2);
    normalizeBy(m.c2, scaling.z);

    shear.x = shear.x / scaling.y;
    shear.y = shear.y / scaling.z;
    shear.z = shear.z / scaling.z;

    if (!(dot(m.c0, cross(m.c1, m.c2)) >= 0.0)) {
        scaling = negate(scaling);
        m = negate(m);
    }

    rotation.y = std::asin(-m.c0.z);
    if (std::fabs(std::cos(rotation.y)) > snapDelta) {
        rotation.x = std::atan2(m.c1.z, m.c2.z);
        rotation.z = std::atan2(m.c0.y, m.c0.x);
    } else {
        rotation.x = std::atan2(m.c1.x, m.c1.y);
        rotation.z = 0.0;
    }

    snapRotationAndScale(rotation.x, scaling.x);
    snapRotationAndScale(rotation.y, scaling.y);
    snapRotationAndScale(rotation.z, scaling.z);

    PyObject* parts[3] = {newVector(rotation), newVector(scaling), newVector(shear)};
    if (!parts[0] || !parts[1] || !parts[2]) {
        for (PyObject* part : parts) Py_XDECREF(part);
        return nullptr;
    }
    PyObject* result = PyTuple_New(3);
    if (!result) {
        for (PyObject* part : parts) Py_DECREF(part);
        return nullptr;
    }
    for (int index = 0; index < 3; ++index) PyTuple_SET_ITEM(result, index, parts[index]);
    return result;
}

// The inverse of the decomposition: the rotated axes, sheared, then scaled.
PyObject* matrixSimpleCompose(PyObject*, PyObject* args, PyObject* kwds) {
    static const char* const keywords[] = {"rotation", "scale", "shear", nullptr};
    PyObject* parts[3];
    if (!PyArg_ParseTupleAndKeywords(args, kwds, "O!O!O!", const_cast<char**>(keywords), &VectorType, &parts[0],
                                     &VectorType, &parts[1], &VectorType, &parts[2])) {
        return nullptr;
    }
    const Vec3& rotation = vectorValue(parts[0]);
    const Vec3& scaling = vectorValue(parts[1]);
    const Vec3& shear = vectorValue(parts[2]);
    double sx = std::sin(rotation.x), cx = std::cos(rotation.x);
    double sy = std::sin(rotation.y), cy = std::cos(rotation.y);
    double sz = std::sin(rotation.z), cz = std::cos(rotation.z);
    Vec3 u0{cy * cz, cy * sz, -sy};
    Vec3 u1{sx * sy * cz - cx * sz, sx * sy * sz + cx * cz, sx * cy};
    Vec3 u2{cx * sy * cz + sx * sz, cx * sy * sz - sx * cz, cx * cy};
    return newMatrix(Mat3{scale(u0, scaling.x), scale(add(scale(u0, shear.x), u1), scaling.y),
                          scale(add(add(scale(u0, shear.y), scale(u1, shear.z)), u2), scaling.z)});
}

// Normalisation for the QR factorisation, which refuses vectors that are (nearly) zero.
bool qrNormalized(const Vec3& v, Vec3& result) {
    double len = length(v);
    double largest = std::max({std::fabs(v.x), std::fabs(v.y), std::fabs(v.z)});
    if (largest >= len * 1e18) return false;
    result = scale(v, 1.0 / len);
    return true;
}

PyObject* pairOfMatrices(const Mat3& first, const Mat3& second) {
    PyObject* a = newMatrix(first);
    if (!a) return nullptr;
    PyObject* b = newMatrix(second);
    if (!b) {
        Py_DECREF(a);
        return nullptr;
    }
    PyObject* pair = PyTuple_New(2);
    if (!pair) {
        Py_DECREF(a);
        Py_DECREF(b);
        return nullptr;
    }
    PyTuple_SET_ITEM(pair, 0, a);
    PyTuple_SET_ITEM(pair, 1, b);
    return pair;
}

// Classical Gram-Schmidt; Q is made a proper rotation by flipping its last column.
PyObject* matrixQRFactorization(PyObject* self, PyObject*) {
    const Mat3& a = matrixValue(self);
    Vec3 q0, q1, q2;
    double d01 = 0.0, d02 = 0.0, d12 = 0.0;
    bool valid = qrNormalized(a.c0, q0);
    if (valid) {
        d01 = dot(q0, a.c1);
        valid = qrNormalized(sub(a.c1, scale(q0, d01)), q1);
    }
    if (valid) {
        d02 = dot(q0, a.c2);
        d12 = dot(q1, a.c2);
        valid = qrNormalized(sub(sub(a.c2, scale(q0, d02)), scale(q1, d12)), q2);
    }
    if (!valid) {
        PyErr_SetString(PyExc_ValueError, "A valid QR Factorization cannot be computed for current matrix.");
        return nullptr;
    }
    Mat3 r{{dot(q0, a.c0), 0.0, 0.0}, {d01, dot(q1, a.c1), 0.0}, {d02, d12, dot(q2, a.c2)}};
    if (determinant(a) < 0.0) {
        q2 = negate(q2);
        r.c2.z = -r.c2.z;
    }
    return pairOfMatrices(Mat3{q0, q1, q2}, r);
}

PyObject* matrixCholesky(PyObject* self, PyObject*) {
    const Mat3& a = matrixValue(self);
    Mat3 l{};
    for (int j = 0; j < 3; ++j) {
        double radicand = element(a, j, j);
        for (int k = 0; k < j; ++k) radicand -= element(l, j, k) * element(l, j, k);
        if (!(radicand > 0.0)) {
            PyErr_SetString(PyExc_ValueError, "A valid Cholesky Decompostion cannot be computed for current matrix.");
            return nullptr;
        }
        element(l, j, j) = std::sqrt(radicand);
        for (int i = j + 1; i < 3; ++i) {
            double value = element(a, i, j);
            for (int k = 0; k < j; ++k) value -= element(l, i, k) * element(l, j, k);
            element(l, i, j) = value / element(l, j, j);
        }
    }
    return newMatrix(l);
}

PyGetSetDef matrixGetSet[] = {
    {"column0", matrixColumn, nullptr, "Column0 of the matrix", reinterpret_cast<void*>(0)},
    {"column1", matrixColumn, nullptr, "Column1 of the matrix", reinterpret_cast<void*>(1)},
    {"column2", matrixColumn, nullptr, "Column2 of the matrix", reinterpret_cast<void*>(2)},
    {nullptr},
};

PyMethodDef matrixMethods[] = {
    {"makeRotationMatrixX", makeRotationX, METH_VARARGS | METH_STATIC,
     "makeRotationMatrixX(angle: float) -> Matrix\nCreates a rotational matrix around the x axis given an angle in "
     "radians."},
    {"makeRotationMatrixY", makeRotationY, METH_VARARGS | METH_STATIC,
     "makeRotationMatrixY(angle: float) -> Matrix\nCreates a rotational matrix around the y axis given an angle in "
     "radians."},
    {"makeRotationMatrixZ", makeRotationZ, METH_VARARGS | METH_STATIC,
     "makeRotationMatrixZ(angle: float) -> Matrix\nCreates a rotational matrix around the z axis given an angle in "
     "radians."},
    {"orthogonal", matrixOrthogonal, METH_NOARGS,
     "orthogonal(self) -> Matrix\nGet a orthogonal copy of the matrix(each column vector is orthogonal to the other "
     "two in 3D space)."},
    {"orthonormal", matrixOrthonormal, METH_NOARGS, "orthonormal(self) -> Matrix\nGet a orthonormal copy of the matrix"},
    {"transpose", matrixTranspose, METH_NOARGS, "transpose(self) -> Matrix\nGet a transposed copy of the matrix."},
    {"inverse", matrixInverse, METH_NOARGS, "inverse(self) -> Matrix\nCompute the inverse of a matrix."},
    {"withoutScale", matrixWithoutScale, METH_NOARGS,
     "withoutScale(self) -> Matrix\nGet the copy of the matrix with normalised columns. This effectively removes "
     "scaling from a transform matrix."},
    {"rotate", asMethod(matrixRotate), METH_VARARGS | METH_KEYWORDS,
     "rotate(self, axis: Vector) -> Matrix\nGet a copy of this matrix rotated around the given axis. \n\n * axis - An "
     "axis vector to rotate around. The length of the axis is the tangent of the angle of rotation.\n"},
    {"outerProduct", matrixOuterProduct, METH_VARARGS | METH_STATIC,
     "outerProduct(v1: Vector, v2: Vector) -> Matrix\nGets an outer product matrix of the two given tovi.Vector-s."},
    {"replaceRow", asMethod(matrixReplaceRow), METH_VARARGS | METH_KEYWORDS,
     "replaceRow(self, index: int, vector: Vector) -> Matrix\nGet a copy of the matrix with changed row. \n\n * index "
     "- Row index to be changed. \n * vector - New vector value \n"},
    {"replaceColumn", asMethod(matrixReplaceColumn), METH_VARARGS | METH_KEYWORDS,
     "replaceColumn(self, index: int, vector: Vector) -> Matrix\nGet a copy of the matrix with changed column. \n\n * "
     "index - Column index to be changed. \n * vector - New vector value \n"},
    {"addDiagonal", matrixAddDiagonal, METH_VARARGS,
     "addDiagonal(self, diag: Vector) -> Matrix\nGets a copy of the matrix with added diagonal \n\n * diag - New "
     "vector value \n"},
    {"addTransposed", matrixAddTransposed, METH_VARARGS,
     "addTransposed(self, matrix: Matrix) -> Matrix\n Gets a copy of the matrix with added another matrix "
     "transposed. \n\n * matrix - Another matrix to transpose and add \n"},
    {"simpleDecompose", matrixSimpleDecompose, METH_NOARGS,
     "simpleDecompose(self) -> tuple[Vector, Vector, Vector]\nDecomposes a non-singular transformation matrix into "
     "its primitive parts.\nReturns a tuple (rotation, scale, shear) containing the primitive parts:\n\n* rotation  "
     "The X/Y/Z rotations in radians\n* scale     Scale factors - could be negative\n* shear     XY/XZ/YZ shear "
     "values"},
    {"simpleCompose", asMethod(matrixSimpleCompose), METH_VARARGS | METH_KEYWORDS | METH_STATIC,
     "simpleCompose(rotation: Vector, scale: Vector, shear: Vector) -> Matrix\nComposes a transformation matrix from "
     "primitive operations.\n\n* rotation The X/Y/Z rotations in radians\n* scale    Scale factors - could be "
     "negative\n* shear    XY/XZ/YZ shear values"},
    {"computeQRFactorization", matrixQRFactorization, METH_NOARGS,
     "computeQRFactorization(self) -> tuple[Matrix, Matrix]\nCompute the QR-factorization m=q*r of a matrix m.\nThe "
     "method fails to factorize singular and close to singular matrices.\nThrows a ValueError on failure.\nReturns a "
     "tuple (q, r) containing the result of the factorization on success.\n\n* q       Orthogonal matrix factor, "
     "containing the rotational component of m.\n* r       Upper triangular matrix factor, having the scales on the "
     "diagonal and the shears above it."},
    {"computeCholeskyDecomposition", matrixCholesky, METH_NOARGS,
     "computeCholeskyDecomposition(self) -> Matrix\nCompute the Cholesky decomposition of the given matrix: M = "
     "LL*.\nThe Cholesky decomposition is valid only for symmetric, positive-definite matrices.\nThrows a ValueError "
     "on failure.\nReturns the Matrix L on success"},
    {nullptr},
};

PyNumberMethods matrixNumber = [] {
    PyNumberMethods number{};
    number.nb_add = matrixAdd;
    number.nb_subtract = matrixSubtract;
    number.nb_multiply = matrixMultiply;
    number.nb_negative = matrixNegative;
    number.nb_positive = matrixPositive;
    number.nb_absolute = matrixAbsolute;
    number.nb_bool = matrixIsNonZero;
    number.nb_invert = [](PyObject* self) { return matrixInverse(self); };
    number.nb_xor = matrixCross;
    number.nb_true_divide = matrixDivide;
    return number;
}();

PySequenceMethods matrixSequence = [] {
    PySequenceMethods sequence{};
    sequence.sq_length = matrixLength;
    sequence.sq_item = matrixItem;
    return sequence;
}();

}  // namespace

PyTypeObject MatrixType = [] {
    PyTypeObject type = {PyVarObject_HEAD_INIT(nullptr, 0)};
    type.tp_name = "tovi.Matrix";
    type.tp_basicsize = sizeof(MatrixObject);
    type.tp_dealloc = valueDealloc;
    type.tp_repr = matrixRepr;
    type.tp_as_number = &matrixNumber;
    type.tp_as_sequence = &matrixSequence;
    type.tp_str = matrixRepr;
    type.tp_flags = Py_TPFLAGS_DEFAULT | Py_TPFLAGS_BASETYPE;
    type.tp_doc =
        "A 3x3 column-major matrix. Each column is a tovi.Vector that can be indexed.\nThe usual mathematical "
        "operations are supported as well as equality checks.\nThis object is immutable.\n\n * Matrix() -> new Matrix "
        "initialized to all zeroes\n * Matrix(diagonal) -> new Matrix initialized with 'diagonal' along the "
        "diagonal\n * Matrix(col0, col1, col2) -> new Matrix initialized with the 3 tovi.Vector-s\n";
    type.tp_richcompare = matrixRichCompare;
    type.tp_methods = matrixMethods;
    type.tp_getset = matrixGetSet;
    type.tp_new = matrixNew;
    return type;
}();

PyObject* newMatrix(const Mat3& value) {
    PyObject* self = allocateValue(&MatrixType);
    if (self) reinterpret_cast<MatrixObject*>(self)->value = value;
    return self;
}

PyObject* matrixFromFloats(const uint8_t*& cursor) {
    Mat3 value;
    readFloats(cursor, &value.c0.x, 9);
    return newMatrix(value);
}

int addMatrixClassAttributes() {
    PyObject* zero = newMatrix(Mat3{});
    if (!zero) return -1;
    int failed = PyDict_SetItemString(MatrixType.tp_dict, "zero", zero);
    Py_DECREF(zero);
    if (failed) return -1;
    PyObject* identity = newMatrix(diagonal(Vec3{1.0, 1.0, 1.0}));
    if (!identity) return -1;
    failed = PyDict_SetItemString(MatrixType.tp_dict, "identity", identity);
    Py_DECREF(identity);
    if (failed) return -1;
    PyType_Modified(&MatrixType);
    return 0;
}

}  // namespace tovi
