"""The value kinds of typed lists: VectorList, ColorList, TransformList."""

import numpy
import pytest
from tovi import AColor, Color, ColorList, Matrix, Transform, TransformList, Vector, VectorList

from test_typed_lists import raises

TRANSFORM = Transform(Matrix(Vector(1, 2, 3), Vector(4, 5, 6), Vector(7, 8, 9)), Vector(10, 11, 12))


@pytest.mark.parametrize("kind, value, other, wrong, item_message, source_message", [
    (VectorList, Vector(1, 2, 3), Vector(0.1, -2, 1e30), (1, 2, 3), "Only Vector can be set",
     "Source must contain only vectors"),
    (ColorList, Color(1, 0.5, 0), Color(0.1, 0.2, 0.3), Vector(1, 2, 3), "Only Color can be set",
     "Source must contain only colors"),
    (TransformList, TRANSFORM, Transform(), Matrix(), "Only Transform can be set",
     "Source must contain only Transforms"),
])
def test_conversions_and_messages(kind, value, other, wrong, item_message, source_message):
    values = kind(value, other)
    assert values[0] == value and type(values[1]) is type(other)
    values[1] = value
    assert values[1] == value
    raises(TypeError, item_message, lambda: values.__setitem__(0, wrong))
    raises(TypeError, "Unsupported type", lambda: values.append(wrong))
    raises(TypeError, source_message, lambda: values.extend([value, wrong]))
    raises(TypeError, source_message, lambda: values.extend(iter([value, wrong])))
    raises(TypeError, "Source must be iterable", lambda: kind(source=3))
    assert list(values) == [value, value]


def test_values_are_narrowed_to_single_precision():
    vectors = VectorList(Vector(0.1, 1e-50, 3e38))
    assert tuple(vectors[0]) == (numpy.float32(0.1), 0.0, numpy.float32(3e38))
    assert ColorList(AColor(1, 0, 0, 0.5))[0] == Color(1, 0, 0)
    assert type(ColorList(AColor(1, 0, 0, 0.5))[0]) is Color
    transform = TransformList(TRANSFORM)[0]
    assert transform == TRANSFORM and type(transform) is Transform


def test_packed_layout_of_transforms():
    data = numpy.frombuffer(TransformList(TRANSFORM), dtype=numpy.float32)
    # The matrix's three columns, then the offset.
    assert data.tolist() == [1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12]


@pytest.mark.parametrize("kind, value, floats", [
    (VectorList, Vector(1, 2, 3), 3), (ColorList, Color(1, 2, 3), 3), (TransformList, TRANSFORM, 12),
])
def test_numpy_shares_the_storage(kind, value, floats):
    values = kind(value, value)
    data = numpy.frombuffer(values, dtype=numpy.float32).reshape(-1, floats)
    assert data.shape == (2, floats)
    data[1, 0] = 42
    assert values[1][0] == 42 if kind is not TransformList else values[1].matrix[0][0] == 42
    raises(BufferError, "Existing exports of data, list cannot be resized now", lambda: values.append(value))
    del data
    values.append(value)
    assert len(values) == 3


def test_text_forms():
    assert repr(VectorList(Vector(1, 2.5, -3))) == "VectorList(Vector(1, 2.5, -3))"
    assert repr(ColorList(Color(0.1, 0, 1))) == "ColorList(Color(0.1, 0, 1))"
    assert str(VectorList(source=[Vector(index, 0, 0) for index in range(14)])).endswith(
        "Vector(9, 0, 0), ... 4 more items)")
    transforms = TransformList(source=[TRANSFORM] * 7)
    assert str(transforms).count("Transform(Matrix") == 3 and str(transforms).endswith(", ... 4 more items)")
    piece = "Transform(Matrix(Vector(1, 2, 3), Vector(4, 5, 6), Vector(7, 8, 9)), Vector(10, 11, 12))"
    assert repr(TransformList(TRANSFORM)) == "TransformList(" + piece + ")"
    # A piece is cut at 100 characters.
    long = Transform(Matrix(Vector(1.234567, 2.345678, 3.456789), Vector(4.567891, 5.678912, 6.789123),
                            Vector(7.891234, 8.912345, 9.123456)), Vector(0.1234567, 0.2345678, 0.3456789))
    assert len(repr(TransformList(long))) == len("TransformList(") + 100 + len(")")


def test_concatenation_and_slices_keep_the_kind():
    vectors = VectorList(Vector(1, 0, 0), Vector(2, 0, 0), Vector(3, 0, 0))
    assert vectors[::2] == VectorList(Vector(1, 0, 0), Vector(3, 0, 0))
    mixed = vectors + ColorList(Color(4, 5, 6))  # same element size: the colour's floats
    assert type(mixed) is VectorList and mixed[3] == Vector(4, 5, 6)
    raises(TypeError, "Cannot concatenate these types", lambda: vectors + TransformList())
    assert vectors == VectorList(source=vectors) and vectors != ColorList(Color(1, 0, 0))
