import math

import pytest
from hypothesis import assume, given, strategies as st

from tovi import Matrix, Vector
from value_reference import (add, as_tuple, cross, det, divide, dot, finite, inverse, length, mat_mul, mat_vec, matrices,
                             normalized, rotated, same_bits, scale, sub, transpose, vectors)

EPSILON = 9.999999974752427e-7  # 1e-6 in single precision
DELTA = 1e-6


def matrix(m):
    return Matrix(*(Vector(*column) for column in m))


def qr_normalized(v):
    n = length(v)
    if max(abs(x) for x in v) >= n * 1e18:
        raise ValueError
    return scale(v, 1.0 / n)


def reference_qr(m):
    c0, c1, c2 = m
    q0 = qr_normalized(c0)
    d01 = dot(q0, c1)
    q1 = qr_normalized(sub(c1, scale(q0, d01)))
    d02, d12 = dot(q0, c2), dot(q1, c2)
    q2 = qr_normalized(sub(sub(c2, scale(q0, d02)), scale(q1, d12)))
    r22 = dot(q2, c2)
    if det(m) < 0:
        q2, r22 = tuple(-x for x in q2), -r22
    return (q0, q1, q2), ((dot(q0, c0), 0.0, 0.0), (d01, dot(q1, c1), 0.0), (d02, d12, r22))


def reference_cholesky(m):
    a = lambda i, j: m[j][i]
    low = [[0.0] * 3 for _ in range(3)]  # low[i][j]: row i, column j
    for j in range(3):
        radicand = a(j, j)
        for k in range(j):
            radicand -= low[j][k] * low[j][k]
        assert radicand > 0.0
        low[j][j] = math.sqrt(radicand)
        for i in range(j + 1, 3):
            value = a(i, j)
            for k in range(j):
                value -= low[i][k] * low[j][k]
            low[i][j] = value / low[j][j]
    return tuple(tuple(low[i][j] for i in range(3)) for j in range(3))


def reference_decompose(m):
    c0, c1, c2 = m
    snap_shear = lambda s: 0.0 if abs(s) < EPSILON else s
    norm_by = lambda v, n: scale(v, 1.0 / n) if n > 1e-15 else v
    sx = length(c0)
    c0 = norm_by(c0, sx)
    hxy = snap_shear(dot(c0, c1))
    c1 = sub(c1, scale(c0, hxy))
    sy = length(c1)
    c1 = norm_by(c1, sy)
    hxz = snap_shear(dot(c0, c2))
    c2 = sub(c2, scale(c0, hxz))
    hyz = snap_shear(dot(c1, c2))
    c2 = sub(c2, scale(c1, hyz))
    sz = length(c2)
    c2 = norm_by(c2, sz)
    shear = (divide(hxy, sy), divide(hxz, sz), divide(hyz, sz))
    scales = [sx, sy, sz]
    if not dot(c0, cross(c1, c2)) >= 0.0:
        scales = [-s for s in scales]
        c0, c1, c2 = (tuple(-x for x in c) for c in (c0, c1, c2))
    ry = math.asin(-c0[2]) if abs(c0[2]) <= 1.0 else math.nan
    if abs(math.cos(ry)) > DELTA:
        rotation = [math.atan2(c1[2], c2[2]), ry, math.atan2(c0[1], c0[0])]
    else:
        rotation = [math.atan2(c1[0], c1[1]), ry, 0.0]
    for i in range(3):
        if abs(rotation[i]) < DELTA:
            rotation[i] = 0.0
        if abs(abs(scales[i]) - 1.0) < DELTA:
            scales[i] = -1.0 if scales[i] < 0.0 else 1.0
    return tuple(rotation), tuple(scales), shear


def close_matrices(a, b, tolerance):
    return all(abs(x - y) <= tolerance for ca, cb in zip(a, b) for x, y in zip(ca, cb))


def test_construction_forms_and_class_attributes():
    assert Matrix() is not Matrix() and as_tuple(Matrix()) == ((0.0,) * 3,) * 3
    assert as_tuple(Matrix(2)) == ((2.0, 0, 0), (0, 2.0, 0), (0, 0, 2.0))
    assert Matrix(diagonal=Vector(1, 2, 3)) == Matrix(Vector(1, 0, 0), Vector(0, 2, 0), Vector(0, 0, 3))
    assert Matrix.identity == Matrix(1) and Matrix.zero == Matrix() and Matrix.zero is Matrix.zero
    with pytest.raises(TypeError, match=r"^When passing a single argument, it should be a Vector or a real number\.$"):
        Matrix("a")
    with pytest.raises(TypeError):
        Matrix(Vector(), Vector())
    with pytest.raises(OverflowError):
        Matrix(10**400)
    m = Matrix(column0=Vector(1, 2, 3), column1=Vector(4, 5, 6), column2=Vector(7, 8, 9))
    assert m[0] == m.column0 == Vector(1, 2, 3) and m[-1] == m.column2 and len(m) == 3
    with pytest.raises(IndexError, match=r"^Index out of range\.$"):
        m[3]
    assert repr(m) == "Matrix(Vector(1, 2, 3), Vector(4, 5, 6), Vector(7, 8, 9))"

    class SubMatrix(Matrix):
        __slots__ = ()

    assert type(SubMatrix(2)) is SubMatrix and SubMatrix(2) == Matrix(2) and type(SubMatrix(2) * m) is Matrix


@given(matrices, matrices, vectors, st.floats(min_value=-1e3, max_value=1e3).filter(lambda k: k != 0))
def test_operators_match_reference_bit_for_bit(a, b, v, k):
    ma, mb, vv = matrix(a), matrix(b), Vector(*v)
    assert same_bits(as_tuple(ma + mb), tuple(map(add, a, b)))
    assert same_bits(as_tuple(ma - mb), tuple(map(sub, a, b)))
    assert same_bits(as_tuple(ma * mb), mat_mul(a, b))
    assert same_bits(as_tuple(ma * vv), mat_vec(a, v))
    assert same_bits(as_tuple(vv * ma), tuple(dot(v, c) for c in a))
    assert same_bits(as_tuple(ma * k), tuple(scale(c, k) for c in a)) and ma * k == k * ma
    assert same_bits(as_tuple(ma / k), tuple(scale(c, 1.0 / k) for c in a))
    assert same_bits(as_tuple(ma ^ vv), tuple(cross(c, v) for c in a))
    assert same_bits(as_tuple(vv ^ ma), tuple(cross(v, c) for c in a))
    assert same_bits(as_tuple(-ma), tuple(scale(c, -1.0) for c in a))
    assert same_bits(as_tuple(abs(ma)), tuple(tuple(map(abs, c)) for c in a)) and as_tuple(+ma) == a
    assert same_bits(as_tuple(ma.inverse()), inverse(a)) and ma.inverse() == ~ma
    assert same_bits(as_tuple(ma.transpose()), transpose(a))
    if det(a) != 0.0:
        assert same_bits(k / ma, k / det(a))


@given(matrices, vectors, vectors)
def test_copy_methods_match_reference_bit_for_bit(a, v, w):
    ma, vv = matrix(a), Vector(*v)
    u0, u1 = normalized(a[0]), normalized(cross(a[2], a[0]))
    expected = (scale(u0, length(a[0])), scale(u1, length(a[1])), scale(cross(u0, u1), length(a[2])))
    assert same_bits(as_tuple(ma.orthogonal()), expected)
    assert same_bits(as_tuple(ma.orthonormal()), (u0, u1, cross(u0, u1)))
    assert same_bits(as_tuple(ma.withoutScale()), tuple(map(normalized, a)))
    assert same_bits(as_tuple(ma.rotate(axis=vv)), tuple(rotated(c, v) or c for c in a))
    assert same_bits(as_tuple(Matrix.outerProduct(vv, Vector(*w))), tuple(scale(w, x) for x in v))
    assert same_bits(as_tuple(ma.replaceColumn(1, vv)), (a[0], v, a[2]))
    assert same_bits(as_tuple(ma.replaceRow(index=2, vector=vv)), tuple(c[:2] + (x,) for c, x in zip(a, v)))
    diagonal = tuple(tuple(c[i] + v[i] if i == j else c[i] for i in range(3)) for j, c in enumerate(a))
    assert same_bits(as_tuple(ma.addDiagonal(vv)), diagonal)
    assert same_bits(as_tuple(ma.addTransposed(ma)), tuple(map(add, a, transpose(a))))


@given(matrices)
def test_factorisations_match_reference_bit_for_bit(a):
    try:
        expected = reference_qr(a)
    except ValueError:
        with pytest.raises(ValueError, match=r"^A valid QR Factorization cannot be computed for current matrix\.$"):
            matrix(a).computeQRFactorization()
    else:
        assert same_bits(as_tuple(matrix(a).computeQRFactorization()), expected)
    assert same_bits(as_tuple(matrix(a).simpleDecompose()), reference_decompose(a))
    spd = mat_mul(a, transpose(a))
    try:
        expected = reference_cholesky(spd)
    except AssertionError:
        with pytest.raises(ValueError, match=r"^A valid Cholesky Decompostion cannot be computed for current matrix\.$"):
            matrix(spd).computeCholeskyDecomposition()
    else:
        assert same_bits(as_tuple(matrix(spd).computeCholeskyDecomposition()), expected)


well_conditioned = matrices.filter(lambda m: abs(det(m)) > 1e-3 * max(length(c) for c in m) ** 3)


@given(well_conditioned)
def test_inverse_times_matrix_is_identity(a):
    product = as_tuple(matrix(a).inverse() * matrix(a))
    assert close_matrices(product, as_tuple(Matrix(1)), 1e-8)


@given(well_conditioned)
def test_compose_reproduces_the_decomposed_matrix(a):
    rotation, scales, shear = matrix(a).simpleDecompose()
    assume(abs(math.cos(rotation.y)) > 1e-3)  # away from gimbal lock, where the angles are not unique
    size = max(length(c) for c in a)
    assert close_matrices(as_tuple(Matrix.simpleCompose(rotation, scales, shear=shear)), a, 1e-5 * size)


@given(well_conditioned)
def test_qr_gives_a_rotation_and_an_upper_triangle(a):
    q, r = matrix(a).computeQRFactorization()
    assert close_matrices(as_tuple(q.transpose() * q), as_tuple(Matrix(1)), 1e-9)
    assert math.isclose(det(as_tuple(q)), 1.0, rel_tol=1e-9)
    assert r[0][1] == r[0][2] == r[1][2] == 0.0  # below the diagonal
    assert close_matrices(as_tuple(q * r), a, 1e-9 * max(length(c) for c in a))


@given(st.tuples(*[st.floats(0.5, 10)] * 3), st.tuples(*[st.floats(-10, 10)] * 3))
def test_cholesky_of_l_l_transposed_gives_l(diagonal, below):
    low = ((diagonal[0], below[0], below[1]), (0.0, diagonal[1], below[2]), (0.0, 0.0, diagonal[2]))
    found = as_tuple((matrix(low) * matrix(low).transpose()).computeCholeskyDecomposition())
    assert close_matrices(found, low, 1e-9)


def test_documented_edge_cases():
    third = Matrix(Vector(1, 2, 3)).inverse()
    assert as_tuple(third)[2][2] == 1.0 / 3.0 and as_tuple(third)[1][1] == 0.5
    assert ~Matrix() == Matrix() and Matrix().inverse() == Matrix()
    assert 1 / Matrix(2) == 0.125
    with pytest.raises(ZeroDivisionError, match=r"^Determinant is zero\.$"):
        1 / Matrix()
    with pytest.raises(ZeroDivisionError, match=r"^Division by zero\.$"):
        Matrix(2) / 0
    rz = Matrix.makeRotationMatrixZ(math.pi / 2)
    assert close_matrices([rz * Vector(1, 0, 0), Vector(1, 0, 0) * rz], [(0, 1, 0), (0, -1, 0)], 1e-15)
    angle = 0.3
    assert as_tuple(Matrix.makeRotationMatrixX(angle))[1] == (0.0, math.cos(angle), math.sin(angle))
    assert as_tuple(Matrix.makeRotationMatrixY(angle))[0] == (math.cos(angle), 0.0, -math.sin(angle))
    with pytest.raises(SyntaxError, match=r"^An angle \(a number in radians\) should be passed\.$"):
        Matrix.makeRotationMatrixX("x")
    q, r = Matrix(Vector(-2, 1, 1)).computeQRFactorization()
    assert det(as_tuple(q)) == 1.0 and r[2][2] < 0
    with pytest.raises(ValueError):
        Matrix().computeQRFactorization()
    assert Matrix(Vector(4, 9, 16)).computeCholeskyDecomposition() == Matrix(Vector(2, 3, 4))
    with pytest.raises(ValueError, match="Cholesky Decompostion"):
        Matrix(-1).computeCholeskyDecomposition()
    assert as_tuple(Matrix(Vector(2, 3, 4)).simpleDecompose()) == ((0, 0, 0), (2, 3, 4), (0, 0, 0))
    assert as_tuple(Matrix(1.0000001).simpleDecompose()[1]) == (1.0, 1.0, 1.0)


def test_wrong_arguments():
    m = Matrix(1)
    for index in (3, -1):
        with pytest.raises(IndexError, match=r"^Index out of range\.$"):
            m.replaceRow(index, Vector())
    for result in (m.replaceRow(0, 5), m.replaceColumn(0, 5), m.addDiagonal(5), m.addTransposed(Vector()),
                   m.rotate(1), Matrix.outerProduct(m, m)):
        assert result is NotImplemented
    with pytest.raises(TypeError):
        m.addDiagonal(diag=Vector())
    with pytest.raises(TypeError):
        Matrix.simpleCompose(Vector(), Vector(), 1)
    for expression in (lambda: m + 1, lambda: m * "a", lambda: "a" / m, lambda: m ^ m, lambda: m * 1j):
        with pytest.raises(TypeError):
            expression()
    with pytest.raises(TypeError, match=r"^Matrices only support equality comparisons\.$"):
        m <= m
    nan = float("nan")
    assert Matrix(nan) == Matrix(5) and not Matrix(nan) and Matrix(Vector(0, 0, 1e-300)) and m != 1


def test_docstrings():
    assert Matrix.__doc__.startswith("A 3x3 column-major matrix. Each column is a tovi.Vector that can be indexed.\n")
    assert Matrix.addTransposed.__doc__.startswith("addTransposed(self, matrix: Matrix) -> Matrix\n Gets a copy")
    assert Matrix.computeCholeskyDecomposition.__doc__.endswith("Returns the Matrix L on success")
    assert Matrix.column1.__doc__ == "Column1 of the matrix"
