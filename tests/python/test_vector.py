import math
from fractions import Fraction

import pytest
from hypothesis import given, strategies as st

import tovi
from tovi import Vector
from value_reference import (as_tuple, add, cross, dot, finite, length, length_sqr, normalized, rotated, same_bits,
                             scale, sub, vectors)

NAN = float("nan")


class SubVector(Vector):
    __slots__ = ()


def test_default_vector_is_cached_per_requested_type():
    assert Vector() is Vector()
    assert Vector(0, 0, 0) is not Vector(0, 0, 0)
    sub_default = SubVector()
    assert type(sub_default) is SubVector and SubVector() is sub_default
    plain = Vector()
    assert type(plain) is Vector and plain is not sub_default and Vector() is plain
    assert as_tuple(plain) == (0.0, 0.0, 0.0)


def test_construction_attributes_and_sequence():
    v = Vector(x=1, y=2.5, z=Fraction(3))  # any object with a float conversion is accepted
    assert (v.x, v.y, v.z) == (1.0, 2.5, 3.0)
    assert (len(v), v[-1], list(v)) == (3, 3.0, [1.0, 2.5, 3.0])
    for index in (3, -4):
        with pytest.raises(IndexError, match=r"^Index out of range\.$"):
            v[index]
    with pytest.raises(TypeError):
        Vector(1, 2)
    with pytest.raises(AttributeError):
        v.x = 5
    assert repr(Vector(1, 2.5, -3)) == str(Vector(1, 2.5, -3)) == "Vector(1, 2.5, -3)"
    assert type(SubVector(1, 2, 3) + SubVector(1, 1, 1)) is Vector


@given(vectors, vectors, finite)
def test_arithmetic_matches_reference_bit_for_bit(a, b, k):
    va, vb = Vector(*a), Vector(*b)
    assert same_bits(as_tuple(va + vb), add(a, b))
    assert same_bits(as_tuple(va - vb), sub(a, b))
    assert same_bits(as_tuple(va * k), scale(a, k)) and same_bits(as_tuple(k * va), scale(a, k))
    assert same_bits(va * vb, dot(a, b))
    assert same_bits(as_tuple(va ^ vb), cross(a, b))
    assert same_bits(as_tuple(Vector.mul(va, vb)), tuple(x * y for x, y in zip(a, b)))
    assert same_bits(Vector.mixed(va, vb, Vector(*b[::-1])), dot(cross(a, b), b[::-1]))
    assert same_bits(as_tuple(-va), tuple(-x for x in a)) and same_bits(as_tuple(+va), a)
    assert same_bits(abs(va), length(a)) and same_bits(va.length(), length(a))
    assert same_bits(va.lengthSqr(), length_sqr(a))
    assert same_bits(as_tuple(va.normalize()), normalized(a))
    if k != 0.0:
        assert same_bits(as_tuple(va / k), scale(a, 1.0 / k))  # by the reciprocal, not three divisions
    expected = rotated(a, b)
    result = va.rotate(axis=vb)
    assert result is va if expected is None else same_bits(as_tuple(result), expected)


@pytest.mark.parametrize("p", [2, 0.5, -1, 3.0])
def test_power_sums_the_components_raised_y_first(p):
    a = (1.5, 2.25, 0.75)
    assert same_bits(Vector(*a) ** p, math.pow(a[1], p) + math.pow(a[0], p) + math.pow(a[2], p))
    with pytest.raises(SyntaxError, match=r"^Three argument pow is not supported\.$"):
        pow(Vector(*a), p, 5)


@pytest.mark.parametrize("divisor", [0, 0.0, -0.0, NAN, True - True])
def test_division_by_zero_or_nan(divisor):
    with pytest.raises(ZeroDivisionError, match=r"^Division by zero\.$"):
        Vector(1, 2, 3) / divisor


@pytest.mark.parametrize("expression", [lambda v: 2 / v, lambda v: v + 1, lambda v: v ^ 2, lambda v: v - None,
                                        lambda v: v * "a", lambda v: 2 ** v])
def test_unsupported_operands_raise_pythons_type_error(expression):
    with pytest.raises(TypeError):
        expression(Vector(1, 2, 3))


def test_failed_number_conversion_propagates():
    with pytest.raises(OverflowError):
        Vector(1, 2, 3) * 10**400
    with pytest.raises(TypeError):
        Vector(1, 2, 3) * 1j


def test_methods_given_wrong_types_return_not_implemented():
    v = Vector(1, 0, 0)
    assert v.rotate(5) is NotImplemented
    assert Vector.mul(v, 2) is NotImplemented
    assert Vector.mixed(v, v, 1) is NotImplemented


def test_rotation_edge_cases():
    v = Vector(1, 0, 0)
    assert v.rotate(Vector(0, 0, 0)) == v and v.rotate(Vector(0, 0, 0)) is not v
    zero = Vector(0, 0, 0)
    assert zero.rotate(Vector(1, 0, 0)) is zero
    turned = Vector(3, 0, 4).rotate(Vector(0, 0, 1))
    assert math.isclose(turned.length(), 5.0) and turned.y > 0


def test_comparisons_and_truth():
    assert Vector(NAN, 0, 0) == Vector(1, 0, 0) and not Vector(NAN, 0, 0) != Vector(1, 0, 0)
    assert Vector(1, 2, 3) != Vector(1, 2, 4)
    assert (Vector(1, 2, 3) == 5) is False
    with pytest.raises(TypeError, match=r"^Vectors only support equality comparisons\.$"):
        Vector(1, 2, 3) < Vector(1, 2, 3)
    assert not Vector(NAN, 0, -0.0) and Vector(0, 0, 1e-300)
    assert all(map(math.isclose, Vector(3, 0, 4).normalize(), (0.6, 0, 0.8))) and not Vector(0, 0, 0).normalize()


def test_docstrings():
    assert Vector.__doc__ == (
        "A mathematical vector in 3D space. Supports the usual mathematical operations\nincluding dot and cross "
        "products (* and ^). The three components can be\nindexed like a list.\nThis object is immutable.\n\n"
        " * Vector() -> new Vector with value (0, 0, 0)\n * Vector(x,y,z) -> new Vector initialized to (x,y,z)\n")
    assert Vector.mul.__doc__.endswith("which does dot product. ")
    assert Vector.mixed.__doc__.startswith("mixed(a: Vector, b: Vector, c: Vector) -> Vector\n")
    assert Vector.x.__doc__ == "Vector X axis value" and Vector.rotate.__doc__ is None
    assert tovi.Vector.length.__doc__ == "length(self) -> float\nReturns the length of this vector."
