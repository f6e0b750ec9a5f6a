// Plain 3-vector and 3x3 column-major matrix arithmetic shared by the value types. Every formula
// keeps its evaluation order: results are compared bit for bit against reference computations,
// so nothing here may be reassociated (the module is built with -ffp-contract=off).
#pragma once

#define PY_SSIZE_T_CLEAN
#include <Python.h>

#include <cmath>
#include <cstdint>
#include <cstring>

namespace tovi {

struct Vec3 {
    double x, y, z;
};

// Columns c0, c1, c2; element (row i, column j) is component i of column j.
struct Mat3 {
    Vec3 c0, c1, c2;
};

static_assert(sizeof(Vec3) == 3 * sizeof(double), "Vec3 is three packed doubles");
static_assert(sizeof(Mat3) == 9 * sizeof(double), "Mat3 is nine packed doubles");

// Values below this length are treated as zero vectors that cannot be normalised.
constexpr double tinyLength = 1e-15;

inline Vec3 add(const Vec3& a, const Vec3& b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
inline Vec3 sub(const Vec3& a, const Vec3& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
inline Vec3 scale(const Vec3& a, double k) { return {a.x * k, a.y * k, a.z * k}; }
inline Vec3 negate(const Vec3& a) { return {-a.x, -a.y, -a.z}; }
inline double dot(const Vec3& a, const Vec3& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
inline Vec3 cross(const Vec3& a, const Vec3& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline double lengthSquared(const Vec3& a) { return a.x * a.x + a.y * a.y + a.z * a.z; }
inline double length(const Vec3& a) { return std::sqrt(lengthSquared(a)); }

// Multiplies by the reciprocal of the length; a vector of length <= 1e-15 is returned as it is.
inline Vec3 normalized(const Vec3& a) {
    double len = length(a);
    return len > tinyLength ? scale(a, 1.0 / len) : a;
}

// A first-order rotation of `v` about `axis` by an angle equal to the axis length, rescaled to
// keep the length of `v`. False when the rotated vector is too short to rescale.
inline bool rotatedAbout(const Vec3& v, const Vec3& axis, Vec3& result) {
    double before = lengthSquared(v);
    Vec3 r = add(cross(axis, v), v);
    double after = lengthSquared(r);
    if (!(after >= tinyLength)) return false;
    result = scale(r, std::sqrt(before / after));
    return true;
}

inline double at(const Vec3& a, int index) { return index == 0 ? a.x : index == 1 ? a.y : a.z; }
inline double& at(Vec3& a, int index) { return index == 0 ? a.x : index == 1 ? a.y : a.z; }
inline const Vec3& column(const Mat3& m, int index) { return index == 0 ? m.c0 : index == 1 ? m.c1 : m.c2; }
inline Vec3& column(Mat3& m, int index) { return index == 0 ? m.c0 : index == 1 ? m.c1 : m.c2; }

inline Mat3 add(const Mat3& a, const Mat3& b) { return {add(a.c0, b.c0), add(a.c1, b.c1), add(a.c2, b.c2)}; }
inline Mat3 sub(const Mat3& a, const Mat3& b) { return {sub(a.c0, b.c0), sub(a.c1, b.c1), sub(a.c2, b.c2)}; }
inline Mat3 scale(const Mat3& a, double k) { return {scale(a.c0, k), scale(a.c1, k), scale(a.c2, k)}; }
inline Mat3 negate(const Mat3& a) { return {negate(a.c0), negate(a.c1), negate(a.c2)}; }

// c0 * v.x + c1 * v.y + c2 * v.z
inline Vec3 multiply(const Mat3& m, const Vec3& v) {
    return {m.c0.x * v.x + m.c1.x * v.y + m.c2.x * v.z, m.c0.y * v.x + m.c1.y * v.y + m.c2.y * v.z,
            m.c0.z * v.x + m.c1.z * v.y + m.c2.z * v.z};
}

// Column j of the product is a applied to column j of b.
inline Mat3 multiply(const Mat3& a, const Mat3& b) { return {multiply(a, b.c0), multiply(a, b.c1), multiply(a, b.c2)}; }

// The transpose applied to v: (v . c0, v . c1, v . c2).
inline Vec3 multiplyTransposed(const Vec3& v, const Mat3& m) { return {dot(v, m.c0), dot(v, m.c1), dot(v, m.c2)}; }

inline Mat3 transpose(const Mat3& m) {
    return {{m.c0.x, m.c1.x, m.c2.x}, {m.c0.y, m.c1.y, m.c2.y}, {m.c0.z, m.c1.z, m.c2.z}};
}

inline double determinant(const Mat3& m) { return dot(cross(m.c0, m.c1), m.c2); }

// The adjugate times 1/det; a zero or NaN determinant gives the zero matrix.
inline Mat3 inverse(const Mat3& m) {
    double det = determinant(m);
    if (!(det < 0.0 || det > 0.0)) return Mat3{};
    double reciprocal = 1.0 / det;
    // The rows of the inverse are these cross products.
    Vec3 row0 = scale(cross(m.c1, m.c2), reciprocal);
    Vec3 row1 = scale(cross(m.c2, m.c0), reciprocal);
    Vec3 row2 = scale(cross(m.c0, m.c1), reciprocal);
    return transpose(Mat3{row0, row1, row2});
}

// Two values count as equal unless one is less or greater than the other: NaN equals anything.
inline bool sameValue(double a, double b) { return !(a < b || a > b); }
inline bool nonZero(double value) { return value < 0.0 || value > 0.0; }

inline bool sameValues(const double* a, const double* b, int count) {
    for (int index = 0; index < count; ++index) {
        if (!sameValue(a[index], b[index])) return false;
    }
    return true;
}

inline bool anyNonZero(const double* values, int count) {
    for (int index = 0; index < count; ++index) {
        if (nonZero(values[index])) return true;
    }
    return false;
}

// Packed SDK floats at a read cursor, widened; the cursor moves past what was read.
inline void readFloats(const uint8_t*& cursor, double* out, int count) {
    for (int index = 0; index < count; ++index) {
        float value;
        std::memcpy(&value, cursor, sizeof value);
        cursor += sizeof value;
        out[index] = value;
    }
}

// A method-table entry for a function that takes keywords (or any other signature).
template <typename Function>
PyCFunction asMethod(Function function) {
    return reinterpret_cast<PyCFunction>(reinterpret_cast<void (*)()>(function));
}

// The value of a number operand through its own float conversion (its index conversion when it
// has none). False with the Python error set when the conversion fails.
bool numberValue(PyObject* number, double& value);

}  // namespace tovi
