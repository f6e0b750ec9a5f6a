import math

import pytest
from hypothesis import given, strategies as st

from tovi import AColor, Color, Matrix, Vector
from value_reference import as_tuple, divide, f32, finite, fma, same_bits

NAN = float("nan")
THIRD = 0.3333333333333333
components = st.floats(min_value=-2.0, max_value=50.0, allow_nan=False)
colors = st.tuples(components, components, components)


def from_srgb(c):
    return math.pow(fma(c, 0.9478672985781991, 0.05213270142180095), 2.4) if c >= 0.04045 else c * 0.07739938080495357


def to_srgb(c):
    return fma(math.pow(c, 0.4166666666666667), 1.055, -0.055) if c > 0.0031308 else c * 12.92


class SubColor(Color):
    __slots__ = ()


def test_default_objects_are_cached_per_type():
    assert Color() is Color() and AColor() is AColor() and Color() is not AColor()
    assert as_tuple(AColor()) == (0.0, 0.0, 0.0, 1.0) and as_tuple(Color()) == (0.0, 0.0, 0.0)
    assert type(SubColor()) is SubColor and SubColor() is SubColor() and type(Color()) is Color
    assert Color(0, 0, 0) is not Color(0, 0, 0)


def test_constructors():
    assert as_tuple(AColor(Color(1, 0, 0))) == (1.0, 0.0, 0.0, 1.0)
    assert as_tuple(AColor(AColor(1, 0, 0, 0.5))) == (1.0, 0.0, 0.0, 1.0)
    assert as_tuple(AColor(color=Color(1, 2, 3), alpha=0.25)) == (1.0, 2.0, 3.0, 0.25)
    assert as_tuple(AColor(red=1, green=0, blue=0)) == (1.0, 0.0, 0.0, 1.0)
    assert as_tuple(AColor(1, 2, 3)) == (1.0, 2.0, 3.0, 1.0)
    assert as_tuple(Color(red=1, green=2, blue=3)) == (1.0, 2.0, 3.0)
    for args in ((5,), (1, 2)):
        with pytest.raises(TypeError, match=r"^The one and two-argument constructors take a color and an optional "
                                            r"alpha argument\.$"):
            AColor(*args)
    for make in (lambda: Color(1, 2), lambda: AColor(1, 2, 3, 4, 5), lambda: Color(r=1, g=2, b=3)):
        with pytest.raises(TypeError):
            make()
    c = AColor(1, 2, 3, 4)
    assert (c[3], c[-1], len(c), c.a, c.alpha, c.r, len(Color())) == (4.0, 4.0, 4, 4.0, 4.0, 1.0, 3)
    with pytest.raises(IndexError, match=r"^Index out of range\.$"):
        c[4]
    with pytest.raises(IndexError, match=r"^Index out of range\.$"):
        Color()[-4]
    assert repr(c) == "AColor(1, 2, 3, 4)" and str(Color(0.5, 1e-7, 2)) == "Color(0.5, 1e-07, 2)"


@pytest.mark.parametrize("value", [0.04045, 0.0031308, 0.04044999999999999, 0.0031308000000000003, 0.0, -0.5, 0.5,
                                   1.0, 7.25, 1e-300])
@pytest.mark.parametrize("kind", [Color, AColor])
def test_srgb_transfer_bit_for_bit(value, kind):
    c = kind(value, 0.25, 2.0) if kind is Color else kind(value, 0.25, 2.0, 0.3)
    decoded, encoded = as_tuple(c.fromSRGB()), as_tuple(c.toSRGB())
    assert type(c.fromSRGB()) is kind and type(c.toSRGB()) is kind
    assert same_bits(decoded[:3], tuple(from_srgb(x) for x in (value, 0.25, 2.0)))
    assert same_bits(encoded[:3], tuple(to_srgb(x) for x in (value, 0.25, 2.0)))
    assert decoded[3:] == encoded[3:] == as_tuple(c)[3:]


@given(colors, st.floats(-3, 3), st.floats(-3, 3))
def test_colour_functions_bit_for_bit(rgb, k, middle):
    r, g, b = rgb
    c = Color(*rgb)
    assert same_bits(c.getIntensity(), (g + r + b) * THIRD)
    assert same_bits(c.getLuminance(), r * 0.3 + g * 0.59 + b * 0.11)
    assert same_bits(c.getPower(), g + r + b)
    assert same_bits(c.getLengthSquared(), r * r + g * g + b * b) and same_bits(c.getLength(), math.sqrt(r * r + g * g + b * b))
    average = (g + r + b) * THIRD
    saturated = tuple(average * (1 - k) + x * k for x in rgb) if k != 1.0 else rgb
    assert same_bits(as_tuple(c.setSaturation(k)), saturated)
    contrasted = tuple(k * (x - middle) + middle for x in rgb) if k != 1.0 else rgb
    assert same_bits(as_tuple(c.setContrast(k, middle=middle)), contrasted)
    assert same_bits(as_tuple(c.getWhiteComplement()), tuple(max(0.0, 1.0 - f32(x)) for x in rgb))
    a = AColor(r, g, b, k)
    assert same_bits(as_tuple(a.getWhiteComplement()), tuple(max(0.0, 1.0 - x) for x in (r, g, b, k)))
    assert same_bits(a.getLengthSquared(), r * r + g * g + b * b + k * k)
    assert type(a.setSaturation(0.5)) is Color


@given(colors, colors, finite.filter(lambda k: k != 0), st.floats(-3, 3))
@pytest.mark.parametrize("kind", [Color, AColor])
def test_arithmetic_bit_for_bit(kind, x, y, k, p):
    x, y = (x + (0.75,), y + (-0.5,)) if kind is AColor else (x, y)
    cx, cy = kind(*x), kind(*y)
    expectations = [
        (cx + cy, tuple(a + b for a, b in zip(x, y))), (cx - cy, tuple(a - b for a, b in zip(x, y))),
        (cx * cy, tuple(a * b for a, b in zip(x, y))), (cx * k, tuple(a * k for a in x)), (k * cx, tuple(a * k for a in x)),
        (cx / k, tuple(a * (1.0 / k) for a in x)), (-cx, tuple(-a for a in x)), (abs(cx), tuple(map(abs, x))),
        (+cx, x),
    ]
    if all(y):
        expectations.append((cx / cy, tuple(divide(a, b) for a, b in zip(x, y))))
    if all(a > 1e-3 for a in x):
        expectations.append((cx ** p, tuple(math.pow(a, p) for a in x)))
    for result, expected in expectations:
        assert type(result) is kind and same_bits(as_tuple(result), expected)


def test_mixed_colour_kinds_fall_back_to_plain_colour():
    assert type(AColor(1, 1, 1, 1) + Color(1, 1, 1)) is Color and AColor(1, 1, 1, 1) + Color(1, 1, 1) == Color(2, 2, 2)
    assert type(Color(1, 1, 1) * AColor(1, 2, 3, 4)) is Color and Color(1, 2, 3) * AColor(2, 2, 2, 0) == Color(2, 4, 6)
    assert AColor(1, 2, 3, 0.5) == Color(1, 2, 3) and AColor(1, 2, 3, 0.5) != AColor(1, 2, 3, 1)
    assert Color(NAN, 0, 0) == Color(7, 0, 0) and AColor(0, 0, 0, NAN) == AColor(0, 0, 0, 3)
    assert not Color(NAN, 0, -0.0) and not AColor(0, 0, 0, 0) and AColor(0, 0, 0, 0.5) and not Color(0, 0, 0)
    with pytest.raises(TypeError, match=r"^Colors only support equality comparisons\.$"):
        Color() < Color()
    with pytest.raises(TypeError, match=r"^AColors only support equality comparisons\.$"):
        AColor() >= AColor()
    with pytest.raises(TypeError, match=r"^Colors only support equality comparisons\.$"):
        AColor() < Color()


@pytest.mark.parametrize("divisor", [0, NAN, Color(1, 0, 1), AColor(1, 1, 1, 0)])
def test_division_by_zero(divisor):
    dividend = AColor(1, 2, 3, 4) if isinstance(divisor, AColor) else Color(1, 2, 3)
    with pytest.raises(ZeroDivisionError, match=r"^Division by zero\.$"):
        dividend / divisor


def test_unsupported_operands_and_quirks():
    for expression in (lambda: 2 / Color(1, 1, 1), lambda: 2 ** Color(1, 1, 1), lambda: Color() ** Color(),
                       lambda: Color() + Vector(), lambda: Color() + 1):
        with pytest.raises(TypeError):
            expression()
    with pytest.raises(SyntaxError, match=r"^Three argument pow is not supported\.$"):
        pow(Color(1, 1, 1), 2, 3)
    with pytest.raises(OverflowError):
        Color(1, 1, 1) * 10**400
    # A failed argument parse returns NotImplemented with the error still set, which the
    # interpreter reports as a SystemError caused by the parser's error.
    for call in (lambda: Color(1, 1, 1).setSaturation("x"), lambda: Color(1, 1, 1).setContrast(k="x")):
        with pytest.raises(SystemError) as raised:
            call()
        assert isinstance(raised.value.__cause__, TypeError)
    grey = Color(0.2, 0.4, 0.6).setSaturation(0)
    assert all(math.isclose(x, 0.4) for x in grey) and Color(0.2, 0.4, 0.6).setContrast(0) == Color(0.5, 0.5, 0.5)
    assert Color(0.2, 0.4, 0.6).setContrast(1) == Color(0.2, 0.4, 0.6) == Color(0.2, 0.4, 0.6).setSaturation(NAN)
    assert as_tuple(Color(2, 0.1, 0.3).getWhiteComplement()) == (0.0, 1.0 - f32(0.1), 1.0 - f32(0.3))
    assert as_tuple(AColor(2, 0.1, 0.3, 0.25).getWhiteComplement()) == (0.0, 1.0 - 0.1, 1.0 - 0.3, 0.75)


def test_black_body_colours_through_the_sdk():
    assert Color.COLOR_SPACE_CIE == 0 and Color.COLOR_SPACE_SRGB == 1 and AColor.COLOR_SPACE_ACEScg == 2
    white = Color.fromTemperature(6500)
    assert white == Color.fromTemperature(temperature=6500, rgbColorSpace=1) != Color.fromTemperature(6500, 2)
    assert all(abs(x - 1.0) < 0.06 for x in white)
    for temperature in (1000, 1850, 2856, 4000, 6500, 10000, 25000, 40000):
        for space in (0, 1, 2):
            colour = Color.fromTemperature(temperature, space)
            found, closest = (colour * 3).getClosestTemperatureAndColor(rgbColorSpace=space)
            assert abs(found - temperature) < 0.01 * temperature
            assert abs(colour.getClosestTemperature(space) - temperature) < 0.01 * temperature
            assert all(math.isclose(a, b, rel_tol=1e-3, abs_tol=1e-6) for a, b in zip(closest, colour))
    for call in (lambda: Color.fromTemperature(6500, 7), lambda: Color(1, 1, 1).getClosestTemperature(-1),
                 lambda: Color().getClosestTemperatureAndColor(), lambda: Color.fromTemperature(-10)):
        with pytest.raises(IndexError, match=r"^rgbColorSpace value out of range\.$"):
            call()


def test_rgb_to_rgb_matrices_through_the_sdk():
    to_xyz = Color.getRGBToRGBMatrix(srcRgbColorSpace=1, dstRgbColorSpace=0)
    published = ((0.4124, 0.2126, 0.0193), (0.3576, 0.7152, 0.1192), (0.1805, 0.0722, 0.9505))  # IEC 61966-2-1
    assert type(to_xyz) is Matrix
    assert all(abs(a - b) < 1e-4 for column, expected in zip(to_xyz, published) for a, b in zip(column, expected))
    round_trip = Color.getRGBToRGBMatrix(2, 1) * Color.getRGBToRGBMatrix(1, 2)
    assert all(abs(a - b) < 1e-6 for column, expected in zip(round_trip, Matrix(1)) for a, b in zip(column, expected))
    assert Color.getRGBToRGBMatrix(1, 9) == Matrix()  # a refused pair leaves the zero matrix
    with pytest.raises(TypeError):
        Color.getRGBToRGBMatrix(srcColorSpace=0, dstColorSpace=1)


def test_docstrings():
    assert Color.__doc__.startswith("A 3-component floating point color value.\n")
    assert AColor.__doc__.startswith('An extension of tovi.Color that adds an alpha channel as the 4th component.\n"alpha"')
    assert Color.getRGBToRGBMatrix.__doc__.startswith("getRGBToRGBMatrix(self, srcColorSpace: int, dstColorSpace: int)")
    assert ("from ``[tovi.Color.COLOR_SPACE_CIE, tovi.Color.COLOR_SPACE_SRGB, tovi.Color.COLOR_SPACE_ACEScg]``\n\nReturns "
            "a number.\n") in Color.getClosestTemperature.__doc__
    assert AColor.toSRGB.__doc__.endswith("Returns the created AColor.") and AColor.a.__doc__ == "AColor alpha component"
    assert AColor.getLength.__doc__ == Color.getLength.__doc__ == "getLength(self) -> float\nReturns the length of the color.\n"
