"""Property values: the bytes sent to the SDK, the values read back, the access forms."""

import math
import struct

import numpy
import pytest
import tovi
from tovi import (AColor, Color, ColorList, FloatList, IntList, Matrix, PluginList, Transform, TransformList, Vector,
                  VectorList)

from test_typed_lists import raises

ACCESS_TIME = "ffffffffffffffff"  # attribute and item access, the text forms
VALUE_TIME = "fffffffffffffffe"   # getValue and setValue without a time


def item(code, payload=b""):
    return (struct.pack("<I", code) + payload).hex()


def sent(sdk, plugin, value, name="object_id"):
    sdk.clearCalls()
    plugin.setValue(name, value)
    call = sdk.last_call("Tovi_ToviRenderer_setPropertyBytesValueAtTimeByID")
    assert call["timeBits"] == VALUE_TIME and call["property"] == name
    return call["stream"]


def address(values):
    return numpy.frombuffer(values, dtype=numpy.uint8).ctypes.data


def test_stream_of_each_python_value(sdk, renderer):
    node = renderer.classes.Node("n")
    other = renderer.classes.Node("other")
    texture = renderer.classes.TexBitmap("t")
    f32 = lambda *values: struct.pack(f"<{len(values)}f", *values)
    assert sent(sdk, node, -1) == item(1, f32(-1.0))
    assert sent(sdk, node, 4294967295) == item(0, b"\xff\xff\xff\xff")
    assert sent(sdk, node, 2147483648) == item(0, struct.pack("<I", 2147483648))
    assert sent(sdk, node, 4294967296) == item(1, f32(4294967296.0))
    assert sent(sdk, node, 2.5) == item(1, f32(2.5))
    assert sent(sdk, node, numpy.int16(7)) == item(0, struct.pack("<I", 7))
    assert sent(sdk, node, True) == item(3, struct.pack("<I", 1))
    assert sent(sdk, node, None) == item(10, b"\xff" * 8)
    assert sent(sdk, node, other) == item(10, struct.pack("<Q", other.getIntegerID()))
    output = list(texture).index("out_alpha")
    reference = texture.getReference("out_alpha")
    assert sent(sdk, node, reference) == item(210, struct.pack("<Qi", texture.getIntegerID(), output))
    assert sent(sdk, node, [1, 2.5, "a"]) == item(12, struct.pack("<I", 3)) + item(0, struct.pack("<I", 1)) + \
        item(1, f32(2.5)) + item(9, struct.pack("<I", 1) + b"a\0\0\0")
    assert sent(sdk, node, "abcd") == item(9, struct.pack("<I", 4) + b"abcd" + b"\0" * 4)
    assert sent(sdk, node, "abc") == item(9, struct.pack("<I", 3) + b"abc\0")
    assert sent(sdk, node, "\u00e9") == item(9, struct.pack("<I", 2) + "\u00e9".encode() + b"\0\0")
    assert sent(sdk, node, Vector(1, 2, 3)) == item(4, f32(1, 2, 3))
    assert sent(sdk, node, Color(0.5, 0, 1)) == item(5, f32(0.5, 0, 1))
    assert sent(sdk, node, AColor(0.5, 0, 1, 0.25)) == item(6, f32(0.5, 0, 1, 0.25))
    matrix = Matrix(Vector(1, 2, 3), Vector(4, 5, 6), Vector(7, 8, 9))
    assert sent(sdk, node, matrix) == item(7, f32(*range(1, 10)))
    transform = Transform(matrix, Vector(0.1, 1e300, -2))
    assert sent(sdk, node, transform) == item(28, f32(*range(1, 10)) + struct.pack("<3d", 0.1, 1e300, -2))


@pytest.mark.parametrize("kind, code, values", [
    (IntList, 2000, [1, 2]), (FloatList, 2001, [0.5]), (VectorList, 2004, [Vector(1, 2, 3)]),
    (ColorList, 2005, [Color(1, 0, 0)]), (TransformList, 2008, [Transform()]),
])
def test_typed_lists_travel_by_address(sdk, renderer, kind, code, values):
    node = renderer.classes.Node("n")
    values = kind(*values)
    assert sent(sdk, node, values) == item(code, struct.pack("<IQ", len(values), address(values)))


def test_plugin_lists_travel_inline_and_bad_values_never_reach_the_sdk(sdk, renderer):
    node = renderer.classes.Node("n")
    first, second = renderer.classes.Node("a"), renderer.classes.Node("b")
    ids = [first.getIntegerID(), second.getIntegerID()]
    assert sent(sdk, node, PluginList(first, None, second)) == item(
        110, struct.pack("<IQQQ", 3, ids[0], 2**64 - 1, ids[1]))
    for bad in [{"a": 1}, {1, 2}, object(), [1, {}], (1, object())]:
        sdk.clearCalls()
        raises(ValueError, "Wrong property value.", lambda: node.setValue("object_id", bad))
        raises(ValueError, "Wrong property value.", lambda: setattr(node, "object_id", bad))
        assert sdk.last_call("Tovi_ToviRenderer_setPropertyBytesValueAtTimeByID") is None


def test_access_forms_and_their_times(sdk, renderer):
    node = renderer.classes.Node("n")
    node.object_id = 5
    assert sdk.last_call("Tovi_ToviRenderer_setPropertyBytesValueAtTimeByID")["timeBits"] == ACCESS_TIME
    node["object_id"] = 6
    node.user_attributes = "a=1"  # text goes to the SDK's parser
    call = sdk.last_call("Tovi_ToviRenderer_setPropertyValueAtTimeByID")
    assert (call["value"], call["timeBits"], call["autoCommit"]) == ("a=1", ACCESS_TIME, 1)
    assert node.setValue("user_attributes", "b=2") is True  # setValue always encodes: a code 9 string
    assert sdk.last_call("Tovi_ToviRenderer_setPropertyBytesValueAtTimeByID")["stream"].startswith(item(9))
    assert node.setValue("object_id", 7, 2.5) is True
    assert sdk.last_call("Tovi_ToviRenderer_setPropertyBytesValueAtTimeByID")["timeBits"] == struct.pack(">d", 2.5).hex()
    assert node.setValue("object_id", 8, "not a time") is True
    assert sdk.last_call("Tovi_ToviRenderer_setPropertyBytesValueAtTimeByID")["timeBits"] == VALUE_TIME
    renderer.autoCommit = False
    node.object_id = 9
    assert sdk.last_call("Tovi_ToviRenderer_setPropertyBytesValueAtTimeByID")["autoCommit"] == 0
    assert node.setValueAsString("object_id", 10) is True
    assert sdk.last_call("Tovi_ToviRenderer_setPropertyValueAtTimeByID")["value"] == "10"
    assert node.getValueAsString("object_id") == "10" and node.getValue("object_id") == 10


def test_missing_properties_by_access_form(renderer):
    node = renderer.classes.Node("n")
    message = "Error accessing property 'nope' or wrong property name"
    raises(AttributeError, message, lambda: node.nope)
    raises(KeyError, "'nope'", lambda: node["nope"])
    raises(NameError, message, lambda: node.getValue("nope"))
    raises(NameError, message, lambda: node.setValue("nope", 1))
    raises(NameError, message, lambda: node.getValueAsString("nope"))
    raises(NameError, message, lambda: node.setValueAsString("nope", 1))
    raises(NameError, message, lambda: node.getKeyframeTimes("nope"))
    raises(AttributeError, message, lambda: setattr(node, "nope", 1))
    raises(KeyError, "'nope'", lambda: node.__setitem__("nope", 1))
    raises(RuntimeError, "Couldn't set property to value", lambda: setattr(node, "object_id", Vector(1, 2, 3)))
    assert node.setValue("object_id", Vector(1, 2, 3)) is False and node.setValueAsString("object_id", "x") is False
    # An output exists but holds no value.
    assert renderer.classes.TexBitmap("t").out_alpha is None


def test_argument_errors(renderer):
    node = renderer.classes.Node("n")
    name_message = "You must provide a property name as a text string."
    raises(TypeError, "This method expects 1 or 2 arguments - a property name and time (optional).", node.getValue)
    raises(TypeError, "This method expects 1 or 2 arguments - a property name and time (optional).",
           lambda: node.getValue("a", 1, 2))
    raises(TypeError, "This method expects 2 or 3 arguments - a property name, a property value and time "
                      "(optional).", lambda: node.setValue("a"))
    raises(TypeError, "This method has two arguments, a property name and a property value.",
           lambda: node.setValueAsString("a"))
    for call in [lambda: node.getValue(1), lambda: node.setValue(1, 2), lambda: node.getValueAsString(1),
                 lambda: node.setValueAsString(1, 2), lambda: node.getPropertyState(1),
                 lambda: node.getKeyframeTimes(b"x"), lambda: node.isPropertyAnimated(None)]:
        raises(TypeError, name_message, call)


def test_states_and_keyframes(renderer):
    node = renderer.classes.Node("n")
    assert node.getPropertyState("object_id") == 1 and node.getPropertyStateAsString("object_id") == "Default"
    assert node.isPropertyAnimated("object_id") is False and node.getKeyframeTimes("object_id") == ()
    node.object_id = 3
    assert node.getPropertyStateAsString("object_id") == "NotAnimated"
    for time, value in [(0.0, 0), (1.0, 10), (2.0, 20)]:
        node.setValue("object_id", value, time)
    assert node.getPropertyState("object_id") == 3 and node.isPropertyAnimated("object_id") is True
    assert node.getKeyframeTimes("object_id") == (0.0, 1.0, 2.0)
    assert [node.getValue("object_id", time) for time in (0.0, 1.0, 2.0)] == [0, 10, 20]
    assert node.getPropertyState("nope") == 0 and node.getPropertyStateAsString("nope") == "Invalid"
    assert node.isPropertyAnimated("nope") is None
