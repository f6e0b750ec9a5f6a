"""Every property of every class of the catalogue, set from Python and read back."""

import ctypes
import math

import pytest
import tovi
from tovi import (AColor, Color, ColorList, FloatList, IntList, Matrix, PluginList, Transform, TransformList, Vector,
                  VectorList)

MATRIX = Matrix(Vector(0.5, 0, 0), Vector(0, 2, 0), Vector(0.25, 0, 1))


def declared_type(sdk, renderer, class_name, name):
    """The property's declared type code, from the class definition."""
    library = sdk.library
    definition = library.Tovi_ToviRenderer_getPropertyDefinitionFromClass
    definition.restype, definition.argtypes = ctypes.c_void_p, [ctypes.c_void_p, ctypes.c_char_p, ctypes.c_char_p]
    type_of = library.Tovi_PluginUtils_getPropertyType
    type_of.restype, type_of.argtypes = ctypes.c_int, [ctypes.c_void_p]
    return type_of(definition(renderer.getInstanceHandle(), class_name.encode(), name.encode()))


def same(a, b):
    """Equal after the SDK's single-precision storage."""
    if isinstance(a, bool) or isinstance(b, bool) or isinstance(a, (tovi.Plugin, str)) or a is None:
        return a is b or a == b
    if isinstance(a, (int, float)):
        return isinstance(b, (int, float)) and math.isclose(a, b, rel_tol=1e-6, abs_tol=1e-6)
    if isinstance(a, tovi.PluginList):
        return type(b) is tovi.PluginList and list(a) == list(b)
    if isinstance(a, Transform):
        return type(b) is Transform and same(a.matrix, b.matrix) and same(a.offset, b.offset)
    return type(a) is type(b) and len(a) == len(b) and all(same(x, y) for x, y in zip(a, b))


def value_for(code, default, renderer, step):
    """A value of the declared type that differs from the default (and with `step`)."""
    texture = renderer.classes.TexChecker.getInstanceOrCreate()
    count = len(default) if isinstance(default, (list, tovi.TypedList)) and len(default) else 3
    scalar = {
        0: 7 + step, 1: 0.25 + step, 2: 0.5 + step, 3: not default if step == 0 else bool(default),
        4: Vector(0.5, -1, 2 + step), 5: Color(0.25, 0.5 + step * 0.25, 0.75),
        6: AColor(0.25, 0.5, 0.75, 0.5 - step * 0.25), 7: MATRIX * (1 + step),
        8: Transform(MATRIX, Vector(1, -2, step)), 9: f"text {step}", 10: texture,
        11: texture if step else AColor(0.5, 0.25, 1, 1), 13: 0.75 + step, 14: 5 + step,
        15: Vector(1, step, 0), 16: MATRIX * (2 + step), 17: Transform(MATRIX, Vector(step, 0, 1)),
    }
    if code in scalar:
        return scalar[code]
    if code >= 1000:
        return None  # an output takes no value
    lists = {
        100: lambda: IntList(source=range(step, step + count)),
        101: lambda: FloatList(source=[0.5 * index + step for index in range(count)]),
        104: lambda: VectorList(source=[Vector(index, step, 1) for index in range(count)]),
        105: lambda: ColorList(source=[Color(index / 4, step / 4, 1) for index in range(count)]),
        108: lambda: TransformList(source=[Transform(MATRIX, Vector(index, step, 0)) for index in range(count)]),
        110: lambda: PluginList(source=[texture] * count),
        12: lambda: [1, [0.5 + step, "nested"], VectorList(Vector(1, 2, 3)), IntList(0, step)],
    }
    if code in lists:
        return lists[code]()
    element = value_for(code - 100, None, renderer, step)
    return [element if index % 2 else value_for(code - 100, None, renderer, step + 1) for index in range(count)]


CLASSES = sorted(tovi.Renderer().classes.__dir__()[:-2])


@pytest.mark.parametrize("class_name", CLASSES)
def test_every_property_round_trips(sdk, renderer, class_name):
    plugin = getattr(renderer.classes, class_name)("subject")
    for name in list(plugin):
        code = declared_type(sdk, renderer, class_name, name)
        default = plugin.getValue(name)
        value = value_for(code, default, renderer, 0)
        if value is None:
            assert default is None and plugin.setValue(name, 1) is False, name
            continue
        assert plugin.setValue(name, value) is True, (name, code, value)
        assert same(value, plugin.getValue(name)) and same(value, plugin[name]), (name, value, plugin.getValue(name))
        assert plugin.getPropertyState(name) == 2 and plugin.getKeyframeTimes(name) == ()
        later = value_for(code, default, renderer, 1)
        assert plugin.setValue(name, later, 2.0) is True and plugin.setValue(name, value, 1.0) is True
        assert plugin.getKeyframeTimes(name) == (1.0, 2.0) and plugin.isPropertyAnimated(name) is True
        assert same(plugin.getValue(name, 1.0), value) and same(plugin.getValue(name, 2.0), later), name
