import math

import pytest
from hypothesis import given

from tovi import Matrix, Transform, Vector
from value_reference import (add, as_tuple, finite, inverse, mat_mul, mat_vec, matrices, rotated, same_bits, scale,
                             sub, vectors)


def transform(m, offset):
    return Transform(Matrix(*(Vector(*c) for c in m)), Vector(*offset))


def numbers(t):
    m, offset = as_tuple(t)
    return m + (offset,)


class SubTransform(Transform):
    __slots__ = ()


def test_construction_sequence_and_attributes():
    assert Transform() is not Transform() and numbers(Transform()) == ((0.0,) * 3,) * 4
    assert Transform() * Vector(1, 2, 3) == Vector(0, 0, 0)
    t = Transform(matrix=Matrix(2), offset=Vector(1, 2, 3))
    assert t[0] == t.matrix == Matrix(2) and t[1] == t[-1] == t.offset == Vector(1, 2, 3) and len(t) == 2
    assert t.matrix is not t.matrix
    for index in (2, -3):
        with pytest.raises(IndexError, match=r"^Index out of range\.$"):
            t[index]
    for args in ((Matrix(),), (Vector(), Vector()), (Matrix(), Matrix())):
        with pytest.raises(TypeError):
            Transform(*args)
    assert repr(t) == "Transform(Matrix(Vector(2, 0, 0), Vector(0, 2, 0), Vector(0, 0, 2)), Vector(1, 2, 3))"
    sub_transform = SubTransform(Matrix(1), Vector())
    assert type(sub_transform) is SubTransform and type(sub_transform * sub_transform) is Transform


@given(matrices, vectors, matrices, vectors, vectors, finite.filter(lambda k: k != 0))
def test_operators_match_reference_bit_for_bit(a, oa, b, ob, v, k):
    ta, tb, vv = transform(a, oa), transform(b, ob), Vector(*v)
    assert same_bits(numbers(ta + tb), tuple(map(add, a + (oa,), b + (ob,))))
    assert same_bits(numbers(ta - tb), tuple(map(sub, a + (oa,), b + (ob,))))
    assert same_bits(numbers(ta * tb), mat_mul(a, b) + (add(mat_vec(a, ob), oa),))
    assert same_bits(as_tuple(ta * vv), add(mat_vec(a, v), oa))
    assert same_bits(as_tuple(ta.transformVector(vv)), mat_vec(a, v))
    scaled = tuple(scale(c, k) for c in a + (oa,))
    assert same_bits(numbers(ta * k), scaled) and same_bits(numbers(k * ta), scaled)
    assert same_bits(numbers(ta / k), tuple(scale(c, 1.0 / k) for c in a + (oa,)))
    assert same_bits(numbers(-ta), tuple(scale(c, -1.0) for c in a + (oa,))) and +ta == ta
    assert same_bits(numbers(abs(ta)), tuple(tuple(map(abs, c)) for c in a + (oa,)))
    inverted = inverse(a)
    assert same_bits(numbers(ta.inverse()), inverted + (tuple(-x for x in mat_vec(inverted, oa)),))
    assert ~ta == ta.inverse()
    assert same_bits(numbers(ta.scale(vv)), tuple(tuple(x * s for x, s in zip(c, v)) for c in a) + (oa,))
    assert same_bits(numbers(ta.rotate(vv)), tuple(rotated(c, v) or c for c in a) + (oa,))
    assert same_bits(numbers(ta.translate(vv)), a + (add(oa, v),))
    assert numbers(ta.replaceMatrix(tb.matrix)) == b + (oa,) and numbers(ta.replaceOffset(vv)) == a + (v,)


def test_documented_edge_cases():
    assert Transform(Matrix(1), Vector(1, 2, 3)) * Vector(1, 1, 1) == Vector(2, 3, 4)
    assert Transform(Matrix(1), Vector(1, 2, 3)).transformVector(Vector(1, 1, 1)) == Vector(1, 1, 1)
    a = Transform(Matrix(2), Vector(1, 0, 0))
    b = Transform(Matrix(1), Vector(0, 1, 0))
    p = Vector(0.5, -2, 7)
    assert (a * b) * p == a * (b * p) and (a * b).offset == Vector(1, 2, 0)
    inverted = Transform(Matrix(2), Vector(2, 4, 6)).inverse()
    assert inverted.matrix == Matrix(0.5) and inverted.offset == Vector(-1, -2, -3)
    assert numbers(Transform().inverse()) == ((0.0,) * 3,) * 4
    halved = numbers(Transform(Matrix(1), Vector(1, 1, 1)) / 0)
    assert math.isinf(halved[0][0]) and math.isnan(halved[0][1]) and math.isinf(halved[3][2])
    scaled = Transform(Matrix(1), Vector(1, 1, 1)).scale(Vector(2, 3, 4))
    assert scaled.matrix == Matrix(Vector(2, 3, 4)) and scaled.offset == Vector(1, 1, 1)


def test_wrong_operands():
    t = Transform(Matrix(1), Vector(1, 2, 3))
    for method in (t.replaceMatrix, t.replaceOffset, t.scale, t.rotate, t.translate, t.transformVector):
        assert method(Matrix() if method != t.replaceMatrix else Vector()) is NotImplemented
    with pytest.raises(TypeError):
        t.translate(offset=Vector())
    for expression in (lambda: Vector(1, 2, 3) * t, lambda: t + 1, lambda: 1 / t, lambda: t / t, lambda: t * "a"):
        with pytest.raises(TypeError):
            expression()
    with pytest.raises(OverflowError):
        t * 10**400
    with pytest.raises(TypeError, match=r"^Transforms only support equality comparisons\.$"):
        t > t
    nan = float("nan")
    assert Transform(Matrix(nan), Vector()) == Transform(Matrix(1), Vector()) and t != Transform() and t != 1
    assert not Transform() and Transform(Matrix(), Vector(0, 0, 1e-300)) and not Transform(Matrix(nan), Vector())


def test_docstrings():
    assert Transform.__doc__.endswith(" * Transform(matrix, offset) -> new Transform from tovi.Matrix and tovi.Vector\n")
    assert Transform.matrix.__doc__ == "The rotation & scale matrix"
    assert Transform.inverse.__doc__ == (
        "inverse(self) -> Transform\nReturns the inverted matrix and transformed translation vector.")
