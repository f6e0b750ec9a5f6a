"""Storage, growth, buffer export and the generic protocols of the typed lists."""

import array
import struct

import numpy
import pytest
import tovi
from tovi import FloatList, IntList

VIEW_MESSAGE = "This list is created as a read-only view. You can create a modifiable copy of it explicitly."


def raises(exception, message, call):
    with pytest.raises(exception) as error:
        call()
    assert type(error.value) is exception and str(error.value) == message


def test_construction_forms_and_their_messages():
    assert list(IntList(1, 2, 3)) == list(IntList(source=[1, 2, 3])) == [1, 2, 3]
    assert len(IntList(count=3)) == 3 and len(IntList(count=True)) == 1
    combination = "Only positional data elements or only one keyword 'count' or 'source' are expected"
    raises(ValueError, combination, lambda: IntList(1, count=3))
    raises(ValueError, combination, lambda: IntList(count=3, source=[1]))
    raises(ValueError, "Unknown keyword argument", lambda: IntList(size=3))
    raises(TypeError, "Count must be integer", lambda: IntList(count="3"))
    raises(TypeError, "Count must be integer", lambda: IntList(count=3.0))
    with pytest.raises(OverflowError):
        IntList(count=2**70)
    limit = "Currently more than 2147483647 number of elements are not supported"
    raises(ValueError, limit, lambda: IntList(count=2147483647))
    raises(ValueError, limit, lambda: IntList(count=-1))
    raises(TypeError, "cannot create 'tovi.TypedList' instances", tovi.TypedList)
    # Re-running the initialiser starts from an empty list.
    again = IntList(1, 2, 3)
    again.__init__(7)
    assert list(again) == [7]


def test_docstrings():
    assert tovi.TypedList.__doc__ == (
        "The base abstract type of IntList, FloatList, VectorList, ColorList, TransformList and PluginList.\n")
    for kind in (IntList, FloatList):
        assert kind.__doc__ == f"Efficient implementation of Tovi {kind.__name__}.\n"
        assert kind.__module__ == "tovi" and issubclass(kind, tovi.TypedList)


def test_capacity_follows_the_growth_policy(sdk):
    def last_realloc():
        call = sdk.last_call("C_memory_realloc")
        sdk.clearCalls()
        return call and call["newSize"] // 4

    ints = IntList()
    ints.append(1)
    assert last_realloc() == 4
    for value in range(2, 5):
        ints.append(value)
    assert last_realloc() is None  # room for four
    ints.append(5)
    assert last_realloc() == 8
    hundred = IntList(count=100)
    assert last_realloc() == 118
    while len(hundred) > 59:
        del hundred[-1]
    assert last_realloc() is None  # kept down to half the capacity
    del hundred[-1]
    assert last_realloc() == 71 and len(hundred) == 58


def test_subscripts_slices_and_deletion():
    ints = IntList(10, 11, 12, 13, 14)
    assert (ints[0], ints[-1], ints[True]) == (10, 14, 11)
    assert ints[::2] == IntList(10, 12, 14) and ints[::-1] == IntList(14, 13, 12, 11, 10)
    assert ints[3:1] == IntList() and type(ints[:]) is IntList and ints[:] is not ints
    raises(IndexError, "Index out of range", lambda: ints[5])
    raises(IndexError, "Index out of range", lambda: ints[-6])
    raises(IndexError, "Index out of range", lambda: ints[2**80])
    raises(IndexError, "Unsupported subscript type or index error", lambda: ints["a"])
    raises(IndexError, "Unsupported subscript type or index error", lambda: ints[1.0])

    def assign_slice():
        ints[0:1] = IntList(1)

    raises(IndexError, "Unsupported subscript type or index error", assign_slice)
    del ints[1]
    del ints[-1]
    assert list(ints) == [10, 12, 13]
    ints[-1] = -2**31
    assert ints[2] == -2**31
    with pytest.raises(OverflowError):
        ints[0] = 2**31
    with pytest.raises(TypeError):
        ints[0] = 1.5
    assert list(ints) == [10, 12, -2**31]


def test_concatenation_and_repetition():
    mixed = IntList(1, 2) + FloatList(1.0)
    assert type(mixed) is IntList and list(mixed) == [1, 2, 1065353216]
    assert list(FloatList(0.5) + IntList(1065353216)) == [0.5, 1.0]
    raises(TypeError, "Cannot concatenate these types", lambda: IntList(1) + [2])
    raises(TypeError, "Cannot concatenate these types", lambda: IntList(1) + array.array("i", [2]))
    assert list(IntList(1, 2) * 3) == [1, 2] * 3 and list(3 * IntList(7)) == [7] * 3
    assert list(IntList(1) * 0) == [] and list(IntList(1) * -2) == []
    grown = IntList(1, 2)
    same = grown
    grown *= 2
    grown += (3, 4)
    grown += IntList(5)
    assert grown is same and list(grown) == [1, 2, 1, 2, 3, 4, 5]
    grown.extend(grown)
    assert list(grown) == [1, 2, 1, 2, 3, 4, 5] * 2


@pytest.mark.parametrize("left, op, right, expected", [
    (IntList(1, 2), "==", IntList(1, 2), True),
    (IntList(1, 2), "==", FloatList(1.0, 2.0), False),
    (IntList(1), "<", IntList(1, 0), True),
    (IntList(1, 0), ">=", IntList(1), True),
    (IntList(2), "<", IntList(10), True),
    (IntList(2**31 - 1), "<", IntList(-1), True),  # the wrapping difference decides
    (IntList(1, 2), "!=", IntList(1), True),
    (FloatList(1.0), "<", FloatList(2.0), True),
    (FloatList(float("nan")), "<", FloatList(1.0), True),
    (FloatList(1.0), "<", FloatList(float("nan")), True),
    (FloatList(float("nan")), "==", FloatList(float("nan")), False),
])
def test_comparison(left, op, right, expected):
    assert eval(f"left {op} right") is expected


def test_comparison_of_other_types():
    ints = IntList(1)
    assert ints == ints and not ints != ints and ints <= ints
    assert (ints == [1]) is False
    with pytest.raises(TypeError):
        ints < [1]
    with pytest.raises(TypeError):
        hash(ints)


def test_text_forms():
    floats = FloatList(source=range(100))
    assert str(floats) == "FloatList(" + ", ".join(map(str, range(30))) + ", ... 70 more items)"
    assert repr(floats) == "FloatList(" + ", ".join(map(str, range(100))) + ")"
    assert str(IntList(source=range(33))) == repr(IntList(source=range(33)))
    assert str(IntList(source=range(34))).endswith(", 29, ... 4 more items)")
    assert str(IntList()) == "IntList()" and repr(FloatList(0.1, 1e30, -2.5)) == "FloatList(0.1, 1e+30, -2.5)"
    assert repr(IntList(-2**31)) == "IntList(-2147483648)"


def test_buffer_export_blocks_size_changes_only():
    ints = IntList(1, 2, 3)
    view = memoryview(ints)
    assert (view.nbytes, view.readonly, view.format, view.ndim) == (12, False, "B", 1)
    resize = "Existing exports of data, list cannot be resized now"
    raises(BufferError, resize, lambda: ints.append(1))
    raises(BufferError, resize, lambda: ints.extend([1]))
    raises(BufferError, resize, lambda: ints.__delitem__(0))
    raises(BufferError, "Existing exports of data, list cannot be initialized", lambda: ints.__init__(1))
    ints[0] = 5
    view[4:8] = struct.pack("<i", -7)
    assert list(ints) == [5, -7, 3]
    second = memoryview(ints)
    view.release()
    raises(BufferError, resize, lambda: ints.append(1))
    second.release()
    ints.append(4)
    assert list(ints) == [5, -7, 3, 4]


@pytest.mark.parametrize("kind, dtype, values", [
    (IntList, numpy.int32, [1, -2, 3, 2**31 - 1]),
    (FloatList, numpy.float32, [0.5, -1.25, 3.0]),
])
def test_numpy_sees_the_storage_without_a_copy(kind, dtype, values):
    lst = kind(*values)
    data = numpy.frombuffer(lst, dtype=dtype)
    assert data.tolist() == values
    data[0] = 42
    assert lst[0] == 42
    with pytest.raises(BufferError):
        lst.append(1)
    del data
    lst.append(1)
    assert len(lst) == len(values) + 1


class Exploding:
    def __index__(self):
        raise RuntimeError("boom")

    def __float__(self):
        raise RuntimeError("boom")


def failing_iterator(items):
    yield from items
    raise KeyError("iteration failed")


@pytest.mark.parametrize("kind, good, source, exception, message", [
    (IntList, [1, 2], [3, "x", 4], TypeError, "Source must contain only integers"),
    (IntList, [1, 2], [3, 2**31], ValueError, "Source contains out of range value"),
    (IntList, [1, 2], [3, Exploding()], ValueError, "Source contains out of range value"),
    (IntList, [1, 2], iter([3, None]), TypeError, "Source must contain only integers"),
    (IntList, [1, 2], failing_iterator([3, 4, 5]), KeyError, "'iteration failed'"),
    (IntList, [1, 2], 5, TypeError, "Source must be iterable"),
    (FloatList, [1.0], [2.0, "x"], TypeError, "Source must contain only numbers"),
    (FloatList, [1.0], iter([2.0, Exploding()]), TypeError, "Source must contain only numbers"),
    (FloatList, [1.0], failing_iterator([2.0]), KeyError, "'iteration failed'"),
])
def test_failed_extend_keeps_length_and_bytes(kind, good, source, exception, message):
    lst = kind(*good)
    before = bytes(lst)
    raises(exception, message, lambda: lst.extend(source))
    assert bytes(lst) == before and len(lst) == len(good)


def test_append_conversions():
    ints = IntList()
    ints.append(True)
    ints.append(numpy.int64(-5))
    raises(ValueError, "Value out of range", lambda: ints.append(2147483648))
    raises(ValueError, "Value out of range", lambda: ints.append(-2147483649))
    raises(ValueError, "Value out of range", lambda: ints.append(Exploding()))
    raises(TypeError, "Unsupported type", lambda: ints.append(1.5))
    assert list(ints) == [1, -5]
    floats = FloatList(1, 2.5)
    floats.append(numpy.float64(0.1))
    raises(TypeError, "Unsupported type", lambda: floats.append("x"))
    raises(ValueError, "Value out of range", lambda: floats.append(1j))
    raises(ValueError, "Value out of range", lambda: floats.append(Exploding()))
    assert list(floats) == [1.0, 2.5, 0.10000000149011612]
    floats[0] = 3
    with pytest.raises(TypeError):
        floats[0] = "x"
    assert floats[0] == 3.0


def test_no_storage_leaks(sdk):
    blocks = sdk.live("blocks")
    source = list(range(50))
    for _ in range(100_000):
        ints = IntList(source=source)
        ints.extend(ints)
        floats = FloatList(source=ints[::3])
        del ints, floats
    assert sdk.live("blocks") == blocks
