"""Pure-Python reference arithmetic for the value types, evaluated in the same order as the
module so that results can be compared bit for bit. Vectors are 3-tuples, matrices 3-tuples of
columns."""
import math
import struct
from fractions import Fraction

from hypothesis import strategies as st

TINY = 1e-15


def bits(value):
    return struct.pack("<d", value)


def same_bits(actual, expected):
    """Element-wise bit equality of floats or nested sequences of floats; NaNs of any payload match."""
    if isinstance(expected, float):
        actual = float(actual)
        return bits(actual) == bits(expected) or (math.isnan(actual) and math.isnan(expected))
    return len(actual) == len(expected) and all(same_bits(a, e) for a, e in zip(actual, expected))


def as_tuple(value):
    """A tovi value as nested tuples of floats."""
    return tuple(as_tuple(item) if hasattr(item, "__len__") else float(item) for item in value)


def fma(a, b, c):
    """a * b + c with a single rounding."""
    return float(Fraction(a) * Fraction(b) + Fraction(c))


def f32(value):
    return struct.unpack("<f", struct.pack("<f", value))[0]


def divide(a, b):
    """IEEE division: infinities and NaN instead of ZeroDivisionError."""
    if b != 0.0 or math.isnan(b):
        return a / b
    if a == 0.0 or math.isnan(a):
        return math.nan
    return math.copysign(math.inf, a) * math.copysign(1.0, b)


def add(a, b):
    return tuple(x + y for x, y in zip(a, b))


def sub(a, b):
    return tuple(x - y for x, y in zip(a, b))


def scale(a, k):
    return tuple(x * k for x in a)


def dot(a, b):
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]


def cross(a, b):
    return (a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0])


def length_sqr(a):
    return a[0] * a[0] + a[1] * a[1] + a[2] * a[2]


def length(a):
    return math.sqrt(length_sqr(a))


def normalized(a):
    n = length(a)
    return scale(a, 1.0 / n) if n > TINY else a


def rotated(v, axis):
    """None when the rotated vector is too short to rescale."""
    before = length_sqr(v)
    r = add(cross(axis, v), v)
    after = length_sqr(r)
    if not after >= TINY:
        return None
    return scale(r, math.sqrt(before / after))


def transpose(m):
    return tuple(tuple(m[j][i] for j in range(3)) for i in range(3))


def mat_vec(m, v):
    return tuple(m[0][i] * v[0] + m[1][i] * v[1] + m[2][i] * v[2] for i in range(3))


def mat_mul(a, b):
    return tuple(mat_vec(a, column) for column in b)


def det(m):
    return dot(cross(m[0], m[1]), m[2])


def inverse(m):
    d = det(m)
    if not (d < 0.0 or d > 0.0):
        return ((0.0,) * 3,) * 3
    k = 1.0 / d
    rows = (scale(cross(m[1], m[2]), k), scale(cross(m[2], m[0]), k), scale(cross(m[0], m[1]), k))
    return transpose(rows)


finite = st.floats(min_value=-1e6, max_value=1e6, allow_nan=False, allow_infinity=False)
vectors = st.tuples(finite, finite, finite)
matrices = st.tuples(vectors, vectors, vectors)
