// tovi.Color and tovi.AColor: the records, their slots, their method tables and their type
// objects. The arithmetic is written once over the component count: 3 for Color, 4 for AColor.
#include "values/color.h"

#include <algorithm>
#include <cmath>

#include "core/errors.h"
#include "core/sdk_api.h"
#include "values/matrix.h"

namespace tovi {

namespace {

// The single cached `Color()` and `AColor()`, each for the type last asked for.
PyObject* defaultColor = nullptr;
PyObject* defaultAColor = nullptr;

constexpr double oneThird = 0.3333333333333333;

template <int N>
PyTypeObject* familyType() {
    return N == 3 ? &ColorType : &AColorType;
}

template <int N>
bool isOfFamily(PyObject* object) {
    return N == 3 ? isColor(object) : isAColor(object);
}

double* mutableComponents(PyObject* color) { return &reinterpret_cast<ColorObject*>(color)->r; }

// A new object of exactly the family's type holding `values`.
template <int N>
PyObject* newOfFamily(const double* values) {
    PyObject* self = allocateValue(familyType<N>());
    if (self) std::copy(values, values + N, mutableComponents(self));
    return self;
}

template <int N, typename Operation>
PyObject* mapComponents(PyObject* self, Operation operation) {
    double values[N];
    const double* source = colorComponents(self);
    for (int index = 0; index < N; ++index) values[index] = operation(source[index]);
    return newOfFamily<N>(values);
}

template <int N, typename Operation>
PyObject* combineComponents(PyObject* a, PyObject* b, Operation operation) {
    double values[N];
    const double* x = colorComponents(a);
    const double* y = colorComponents(b);
    for (int index = 0; index < N; ++index) values[index] = operation(x[index], y[index]);
    return newOfFamily<N>(values);
}

void fillBlack(PyObject* self) {
    double* values = mutableComponents(self);
    std::fill(values, values + 3, 0.0);
}

void fillOpaqueBlack(PyObject* self) {
    fillBlack(self);
    reinterpret_cast<AColorObject*>(self)->alpha = 1.0;
}

PyObject* allocateFilled(PyTypeObject* type, const double* values, int count) {
    PyObject* self = type->tp_alloc(type, 0);
    if (self) std::copy(values, values + count, mutableComponents(self));
    return self;
}

PyObject* colorNew(PyTypeObject* type, PyObject* args, PyObject* kwds) {
    if (!kwds && PyTuple_GET_SIZE(args) == 0) return cachedDefault(defaultColor, type, fillBlack);
    static const char* const keywords[] = {"red", "green", "blue", nullptr};
    double values[3];
    if (!PyArg_ParseTupleAndKeywords(args, kwds, "ddd", const_cast<char**>(keywords), &values[0], &values[1],
                                     &values[2])) {
        return nullptr;
    }
    return allocateFilled(type, values, 3);
}

// AColor(), AColor(color, alpha=1.0) or AColor(red, green, blue, alpha=1.0).
PyObject* acolorNew(PyTypeObject* type, PyObject* args, PyObject* kwds) {
    if (!kwds && PyTuple_GET_SIZE(args) == 0) return cachedDefault(defaultAColor, type, fillOpaqueBlack);
    double values[4] = {0.0, 0.0, 0.0, 1.0};
    if (PyTuple_GET_SIZE(args) < 3) {
        static const char* const keywords[] = {"color", "alpha", nullptr};
        PyObject* color;
        if (PyArg_ParseTupleAndKeywords(args, kwds, "O|d", const_cast<char**>(keywords), &color, &values[3])) {
            if (!isColor(color)) {
                PyErr_SetString(PyExc_TypeError,
                                "The one and two-argument constructors take a color and an optional alpha argument.");
                return nullptr;
            }
            std::copy(colorComponents(color), colorComponents(color) + 3, values);
            return allocateFilled(type, values, 4);
        }
        PyErr_Clear();
    }
    static const char* const keywords[] = {"red", "green", "blue", "alpha", nullptr};
    if (!PyArg_ParseTupleAndKeywords(args, kwds, "ddd|d", const_cast<char**>(keywords), &values[0], &values[1],
                                     &values[2], &values[3])) {
        return nullptr;
    }
    return allocateFilled(type, values, 4);
}

PyObject* colorRepr(PyObject* self) {
    const double* c = colorComponents(self);
    char text[128];
    PyOS_snprintf(text, sizeof text, "Color(%g, %g, %g)", c[0], c[1], c[2]);
    return PyUnicode_FromString(text);
}

PyObject* acolorRepr(PyObject* self) {
    const double* c = colorComponents(self);
    char text[128];
    PyOS_snprintf(text, sizeof text, "AColor(%g, %g, %g, %g)", c[0], c[1], c[2], c[3]);
    return PyUnicode_FromString(text);
}

Py_ssize_t acolorLength(PyObject*) { return 4; }

template <int N>
PyObject* colorItem(PyObject* self, Py_ssize_t index) {
    if (index < 0 || index >= N) {
        PyErr_SetString(PyExc_IndexError, "Index out of range.");
        return nullptr;
    }
    return PyFloat_FromDouble(colorComponents(self)[index]);
}

template <int N>
PyObject* colorRichCompare(PyObject* a, PyObject* b, int op) {
    if (!isOfFamily<N>(a) || !isOfFamily<N>(b)) Py_RETURN_NOTIMPLEMENTED;
    if (op != Py_EQ && op != Py_NE) {
        PyErr_SetString(PyExc_TypeError, N == 3 ? "Colors only support equality comparisons."
                                                : "AColors only support equality comparisons.");
        return nullptr;
    }
    bool equal = sameValues(colorComponents(a), colorComponents(b), N);
    return PyBool_FromLong(equal == (op == Py_EQ));
}

template <int N>
PyObject* colorAdd(PyObject* a, PyObject* b) {
    if (!isOfFamily<N>(a) || !isOfFamily<N>(b)) Py_RETURN_NOTIMPLEMENTED;
    return combineComponents<N>(a, b, [](double x, double y) { return x + y; });
}

template <int N>
PyObject* colorSubtract(PyObject* a, PyObject* b) {
    if (!isOfFamily<N>(a) || !isOfFamily<N>(b)) Py_RETURN_NOTIMPLEMENTED;
    return combineComponents<N>(a, b, [](double x, double y) { return x - y; });
}

// A colour times a number scales it; two colours multiply component by component.
template <int N>
PyObject* colorMultiply(PyObject* a, PyObject* b) {
    double factor;
    if (isOfFamily<N>(a) && PyNumber_Check(b)) {
        if (!numberValue(b, factor)) return nullptr;
        return mapComponents<N>(a, [factor](double x) { return x * factor; });
    }
    if (isOfFamily<N>(b) && PyNumber_Check(a)) {
        if (!numberValue(a, factor)) return nullptr;
        return mapComponents<N>(b, [factor](double x) { return x * factor; });
    }
    if (isOfFamily<N>(a) && isOfFamily<N>(b)) {
        return combineComponents<N>(a, b, [](double x, double y) { return x * y; });
    }
    Py_RETURN_NOTIMPLEMENTED;
}

PyObject* raiseDivisionByZero() {
    PyErr_SetString(PyExc_ZeroDivisionError, "Division by zero.");
    return nullptr;
}

// By a number: multiplication by its reciprocal. By a colour: true division per component.
template <int N>
PyObject* colorDivide(PyObject* a, PyObject* b) {
    if (!isOfFamily<N>(a)) Py_RETURN_NOTIMPLEMENTED;
    if (PyNumber_Check(b)) {
        double divisor;
        if (!numberValue(b, divisor) || !nonZero(divisor)) return raiseDivisionByZero();
        double reciprocal = 1.0 / divisor;
        return mapComponents<N>(a, [reciprocal](double x) { return x * reciprocal; });
    }
    if (!isOfFamily<N>(b)) Py_RETURN_NOTIMPLEMENTED;
    const double* divisors = colorComponents(b);
    for (int index = 0; index < N; ++index) {
        if (!nonZero(divisors[index])) return raiseDivisionByZero();
    }
    return combineComponents<N>(a, b, [](double x, double y) { return x / y; });
}

template <int N>
PyObject* colorPower(PyObject* base, PyObject* exponent, PyObject* modulus) {
    if (modulus != Py_None) {
        PyErr_SetString(PyExc_SyntaxError, "Three argument pow is not supported.");
        return nullptr;
    }
    if (!isOfFamily<N>(base) || !PyNumber_Check(exponent)) Py_RETURN_NOTIMPLEMENTED;
    double power;
    if (!numberValue(exponent, power)) return nullptr;
    return mapComponents<N>(base, [power](double x) { return std::pow(x, power); });
}

template <int N>
PyObject* colorNegative(PyObject* self) {
    return mapComponents<N>(self, [](double x) { return -x; });
}

template <int N>
PyObject* colorPositive(PyObject* self) {
    return newOfFamily<N>(colorComponents(self));
}

template <int N>
PyObject* colorAbsolute(PyObject* self) {
    return mapComponents<N>(self, [](double x) { return std::fabs(x); });
}

int acolorIsNonZero(PyObject* self) { return anyNonZero(colorComponents(self), 4); }

// sRGB decoding: 1/1.055 and 0.055/1.055 in one fused multiply-add, then the 2.4 power.
double fromSRGBComponent(double c) {
    return c >= 0.04045 ? std::pow(std::fma(c, 0.9478672985781991, 0.05213270142180095), 2.4)
                        : c * 0.07739938080495357;
}

// sRGB encoding: the 1/2.4 power, then 1.055 x - 0.055 in one fused multiply-add.
double toSRGBComponent(double c) {
    return c > 0.0031308 ? std::fma(std::pow(c, 0.4166666666666667), 1.055, -0.055) : c * 12.92;
}

// The transfer applies to r, g, b; alpha passes unchanged.
template <int N>
PyObject* colorFromSRGB(PyObject* self, PyObject*) {
    double values[N];
    const double* c = colorComponents(self);
    for (int index = 0; index < N; ++index) values[index] = index < 3 ? fromSRGBComponent(c[index]) : c[index];
    return newOfFamily<N>(values);
}

template <int N>
PyObject* colorToSRGB(PyObject* self, PyObject*) {
    double values[N];
    const double* c = colorComponents(self);
    for (int index = 0; index < N; ++index) values[index] = index < 3 ? toSRGBComponent(c[index]) : c[index];
    return newOfFamily<N>(values);
}

PyObject* colorIntensity(PyObject* self, PyObject*) {
    const double* c = colorComponents(self);
    return PyFloat_FromDouble((c[1] + c[0] + c[2]) * oneThird);
}

PyObject* colorLuminance(PyObject* self, PyObject*) {
    const double* c = colorComponents(self);
    return PyFloat_FromDouble(c[0] * 0.3 + c[1] * 0.59 + c[2] * 0.11);
}

PyObject* colorComponentSum(PyObject* self, PyObject*) {
    const double* c = colorComponents(self);
    return PyFloat_FromDouble(c[1] + c[0] + c[2]);
}

double acolorLengthSquaredValue(PyObject* self) {
    const double* c = colorComponents(self);
    return c[0] * c[0] + c[1] * c[1] + c[2] * c[2] + c[3] * c[3];
}

PyObject* acolorLengthSquared(PyObject* self, PyObject*) { return PyFloat_FromDouble(acolorLengthSquaredValue(self)); }

PyObject* acolorLength(PyObject* self, PyObject*) { return PyFloat_FromDouble(std::sqrt(acolorLengthSquaredValue(self))); }

// A parse failure returns NotImplemented as the result with the parser's error still set; the
// interpreter then reports it as a SystemError caused by that error.
PyObject* colorSetSaturation(PyObject* self, PyObject* args) {
    double k;
    if (!PyArg_ParseTuple(args, "d", &k)) return Py_NewRef(Py_NotImplemented);
    const double* c = colorComponents(self);
    if (!(k < 1.0 || k > 1.0)) return newColor(c[0], c[1], c[2]);
    double average = (c[1] + c[0] + c[2]) * oneThird;
    double keep = 1.0 - k;
    return newColor(average * keep + c[0] * k, average * keep + c[1] * k, average * keep + c[2] * k);
}

PyObject* colorSetContrast(PyObject* self, PyObject* args, PyObject* kwds) {
    static const char* const keywords[] = {"k", "middle", nullptr};
    double k;
    double middle = 0.5;
    if (!PyArg_ParseTupleAndKeywords(args, kwds, "d|d", const_cast<char**>(keywords), &k, &middle)) {
        return Py_NewRef(Py_NotImplemented);
    }
    const double* c = colorComponents(self);
    if (!(k < 1.0 || k > 1.0)) return newColor(c[0], c[1], c[2]);
    return newColor(k * (c[0] - middle) + middle, k * (c[1] - middle) + middle, k * (c[2] - middle) + middle);
}

// Each component is first rounded to single precision.
PyObject* colorWhiteComplement(PyObject* self, PyObject*) {
    const double* c = colorComponents(self);
    double values[3];
    for (int index = 0; index < 3; ++index) {
        double narrowed = static_cast<float>(c[index]);
        values[index] = std::max(0.0, 1.0 - narrowed);
    }
    return newColor(values[0], values[1], values[2]);
}

PyObject* acolorWhiteComplement(PyObject* self, PyObject*) {
    return mapComponents<4>(self, [](double x) { return std::max(0.0, 1.0 - x); });
}

PyObject* raiseColorSpaceOutOfRange() {
    PyErr_SetString(PyExc_IndexError, "rgbColorSpace value out of range.");
    return nullptr;
}

PyObject* colorFromTemperature(PyObject*, PyObject* args, PyObject* kwds) {
    static const char* const keywords[] = {"temperature", "rgbColorSpace", nullptr};
    float temperature;
    int colorSpace = 1;
    if (!PyArg_ParseTupleAndKeywords(args, kwds, "f|i", const_cast<char**>(keywords), &temperature, &colorSpace)) {
        return nullptr;
    }
    if (requireSdk() < 0) return nullptr;
    float rgb[3];
    if (!SdkApi.Tovi_getBlackBodyColorRGB(rgb, temperature, colorSpace)) return raiseColorSpaceOutOfRange();
    return newColor(rgb[0], rgb[1], rgb[2]);
}

PyObject* colorRGBToRGBMatrix(PyObject*, PyObject* args, PyObject* kwds) {
    static const char* const keywords[] = {"srcRgbColorSpace", "dstRgbColorSpace", nullptr};
    int source;
    int destination;
    if (!PyArg_ParseTupleAndKeywords(args, kwds, "ii", const_cast<char**>(keywords), &source, &destination)) {
        return nullptr;
    }
    if (requireSdk() < 0) return nullptr;
    // The entry's result is not examined: a refused pair of spaces leaves the zero matrix.
    float matrix[9] = {};
    SdkApi.Tovi_getRGBtoRGBMatrix(source, destination, matrix);
    const uint8_t* cursor = reinterpret_cast<const uint8_t*>(matrix);
    return matrixFromFloats(cursor);
}

// The temperature of the black body closest to the colour, and that body's colour when
// `closest` is given. False with IndexError set when the SDK refuses.
bool closestTemperature(PyObject* self, PyObject* args, PyObject* kwds, float* closest, float& temperature) {
    static const char* const keywords[] = {"rgbColorSpace", nullptr};
    int colorSpace = 1;
    if (!PyArg_ParseTupleAndKeywords(args, kwds, "|i", const_cast<char**>(keywords), &colorSpace)) return false;
    if (requireSdk() < 0) return false;
    const double* c = colorComponents(self);
    float rgb[3] = {static_cast<float>(c[0]), static_cast<float>(c[1]), static_cast<float>(c[2])};
    temperature = SdkApi.Tovi_getBlackBodyClosestTemperature(rgb, closest, colorSpace);
    if (!(temperature >= 0.0f)) {
        raiseColorSpaceOutOfRange();
        return false;
    }
    return true;
}

PyObject* colorClosestTemperature(PyObject* self, PyObject* args, PyObject* kwds) {
    float temperature;
    if (!closestTemperature(self, args, kwds, nullptr, temperature)) return nullptr;
    return PyFloat_FromDouble(temperature);
}

PyObject* colorClosestTemperatureAndColor(PyObject* self, PyObject* args, PyObject* kwds) {
    float temperature;
    float closest[3];
    if (!closestTemperature(self, args, kwds, closest, temperature)) return nullptr;
    PyObject* kelvin = PyFloat_FromDouble(temperature);
    if (!kelvin) return nullptr;
    PyObject* color = newColor(closest[0], closest[1], closest[2]);
    if (!color) {
        Py_DECREF(kelvin);
        return nullptr;
    }
    PyObject* pair = PyTuple_New(2);
    if (!pair) {
        Py_DECREF(kelvin);
        Py_DECREF(color);
        return nullptr;
    }
    PyTuple_SET_ITEM(pair, 0, kelvin);
    PyTuple_SET_ITEM(pair, 1, color);
    return pair;
}

PyObject* acolorAlpha(PyObject* self, void*) { return PyFloat_FromDouble(reinterpret_cast<AColorObject*>(self)->alpha); }

PyGetSetDef colorGetSet[] = {
    {"r", tripleComponent, nullptr, "Color red component", reinterpret_cast<void*>(0)},
    {"g", tripleComponent, nullptr, "Color green component", reinterpret_cast<void*>(1)},
    {"b", tripleComponent, nullptr, "Color blue component", reinterpret_cast<void*>(2)},
    {nullptr},
};

PyGetSetDef acolorGetSet[] = {
    {"a", acolorAlpha, nullptr, "AColor alpha component", nullptr},
    {"alpha", acolorAlpha, nullptr, "AColor alpha component", nullptr},
    {nullptr},
};

#define COLOR_SPACE_CHOICES \
    "``[tovi.Color.COLOR_SPACE_CIE, tovi.Color.COLOR_SPACE_SRGB, tovi.Color.COLOR_SPACE_ACEScg]``"

PyMethodDef colorMethods[] = {
    {"fromTemperature", asMethod(colorFromTemperature), METH_VARARGS | METH_KEYWORDS | METH_STATIC,
     "fromTemperature(self, temperature: float, rgbColorSpace: int) -> Color\nCreates a color with components equal "
     "to the normalized RGB color of a black body with the given temperature in Kelvin.\n\n * temperature The color "
     "temperature in Kelvin.\n * rgbColorSpace The color space to use from " COLOR_SPACE_CHOICES
     "\n\nReturns the created Color.\n"},
    {"getRGBToRGBMatrix", asMethod(colorRGBToRGBMatrix), METH_VARARGS | METH_KEYWORDS | METH_STATIC,
     "getRGBToRGBMatrix(self, srcColorSpace: int, dstColorSpace: int) -> Matrix\nCompute the rgb to rgb "
     "transformation matrix between two linear color spaces\nThis is an expensive operation and you should cache the "
     "matrix if possible\n\n * srcColorSpace Source RGB color space from " COLOR_SPACE_CHOICES
     "\n * dstColorSpace Destination RGB color space from " COLOR_SPACE_CHOICES
     "\n\nReturns Matrix that converts from source to destination.\n"},
    {"getClosestTemperature", asMethod(colorClosestTemperature), METH_VARARGS | METH_KEYWORDS,
     "getClosestTemperature(self, rgbColorSpace: int) -> float\nFinds the black body color that is closest to the "
     "given color and returns its temperature in Kelvin.\n\n * rgbColorSpace The color space to use "
     "from " COLOR_SPACE_CHOICES "\n\nReturns a number.\n"},
    {"getClosestTemperatureAndColor", asMethod(colorClosestTemperatureAndColor), METH_VARARGS | METH_KEYWORDS,
     "getClosestTemperatureAndColor(self, rgbColorSpace: int) -> tuple[float, Color]\nFinds the black body color "
     "that is closest to the given color and returns it and its temperature in Kelvin.\n\n * rgbColorSpace The color "
     "space to use from " COLOR_SPACE_CHOICES "\n\nReturns a tuple with two elements.\n"},
    {"fromSRGB", colorFromSRGB<3>, METH_NOARGS,
     "fromSRGB(self) -> Color\nCreates a color with R, G and B values converted from sRGB to linear values. Returns "
     "the created Color."},
    {"toSRGB", colorToSRGB<3>, METH_NOARGS,
     "toSRGB(self) -> Color\nCreates a color with R, G and B values converted from (presumably) linear to sRGB values. "
     "Returns the created Color."},
    {"getIntensity", colorIntensity, METH_NOARGS,
     "getIntensity(self) -> float\nReturns the intensity of the color (also called chroma or saturation) which is the "
     "brightness or dullness of a color.\n\nReturns the intensity of the color.\n"},
    {"getLuminance", colorLuminance, METH_NOARGS,
     "getLuminance(self) -> float\nReturns the luminance of the color which is a measure of the intensity of light "
     "that reaches the eye.\n\nReturns the luminance of the color.\n"},
    {"getLengthSquared", tripleLengthSquared, METH_NOARGS,
     "getLengthSquared(self) -> float\nReturns the squared length of the color.\n"},
    {"getLength", tripleLength, METH_NOARGS, "getLength(self) -> float\nReturns the length of the color.\n"},
    {"getPower", colorComponentSum, METH_NOARGS, "getPower(self) -> float\nReturns the sum of all color components.\n"},
    {"setSaturation", colorSetSaturation, METH_VARARGS,
     "setSaturation(self, k: float) -> Color\n(De)saturates the given color and returns the new color.\n\n * k double "
     "number: for k=0.0 means color is greyed; for k=1.0 means the color is unchanged; for k>1.0 adds more color\n"},
    {"setContrast", asMethod(colorSetContrast), METH_VARARGS | METH_KEYWORDS,
     "setContrast(self, k: float, middle: float = 0.5) -> Color\nApplies a contrast correction to the color and "
     "returns the new color.\n\n * k double number: the contrast scale - 1.0 leaves the color unchanged and 0.0 makes "
     "the color equal to the middle\n * middle double number: an optional argument the contrast base - the level "
     "that remains unchanged (default value set to 0.5)\n"},
    {"getWhiteComplement", colorWhiteComplement, METH_NOARGS,
     "getWhiteComplement(self) -> Color\nReturns the white complement of the Color.\n\nNote that this will clamp "
     "(restrict a number between two other numbers) the color from below (e.g. no component will be below zero).\n"},
    {nullptr},
};

PyMethodDef acolorMethods[] = {
    {"fromSRGB", colorFromSRGB<4>, METH_NOARGS,
     "fromSRGB(self) -> AColor\nCreates a color with R, G and B values converted from sRGB to linear values. Returns "
     "the created AColor."},
    {"toSRGB", colorToSRGB<4>, METH_NOARGS,
     "toSRGB(self) -> AColor\nCreates a color with R, G and B values converted from (presumably) linear to sRGB "
     "values. Returns the created AColor."},
    {"getLengthSquared", acolorLengthSquared, METH_NOARGS,
     "getLengthSquared(self) -> float\nReturns the squared length of the color.\n"},
    {"getLength", acolorLength, METH_NOARGS, "getLength(self) -> float\nReturns the length of the color.\n"},
    {"getWhiteComplement", acolorWhiteComplement, METH_NOARGS,
     "getWhiteComplement(self) -> AColor\nReturns the white complement of the Color.\n\nNote that this will clamp "
     "(restrict a number between two other numbers) the color from below (e.g. no component will be below zero).\n"},
    {nullptr},
};

template <int N>
PyNumberMethods familyNumber() {
    PyNumberMethods number{};
    number.nb_add = colorAdd<N>;
    number.nb_subtract = colorSubtract<N>;
    number.nb_multiply = colorMultiply<N>;
    number.nb_power = colorPower<N>;
    number.nb_negative = colorNegative<N>;
    number.nb_positive = colorPositive<N>;
    number.nb_absolute = colorAbsolute<N>;
    number.nb_bool = N == 3 ? tripleIsNonZero : acolorIsNonZero;
    number.nb_true_divide = colorDivide<N>;
    return number;
}

PyNumberMethods colorNumber = familyNumber<3>();
PyNumberMethods acolorNumber = familyNumber<4>();

PySequenceMethods colorSequence = [] {
    PySequenceMethods sequence{};
    sequence.sq_length = tripleSequenceLength;
    sequence.sq_item = colorItem<3>;
    return sequence;
}();

PySequenceMethods acolorSequence = [] {
    PySequenceMethods sequence{};
    sequence.sq_length = acolorLength;
    sequence.sq_item = colorItem<4>;
    return sequence;
}();

}  // namespace

void releaseColorDefaults() {
    Py_CLEAR(defaultColor);
    Py_CLEAR(defaultAColor);
}

PyTypeObject ColorType = [] {
    PyTypeObject type = {PyVarObject_HEAD_INIT(nullptr, 0)};
    type.tp_name = "tovi.Color";
    type.tp_basicsize = sizeof(ColorObject);
    type.tp_dealloc = valueDealloc;
    type.tp_repr = colorRepr;
    type.tp_as_number = &colorNumber;
    type.tp_as_sequence = &colorSequence;
    type.tp_str = colorRepr;
    type.tp_flags = Py_TPFLAGS_DEFAULT | Py_TPFLAGS_BASETYPE;
    type.tp_doc =
        "A 3-component floating point color value.\nIt supports mathematical operations, indexing and equality "
        "checking.\nIn most contexts the component values are in the range (0; 1), but\nin lighting calculations HDR "
        "values above 1.0 are possible.\nThis object is immutable.\n\n * Color() -> new Color with value (0, 0, 0)\n * "
        "Color(red, green, blue) -> new Color full constructor\n";
    type.tp_richcompare = colorRichCompare<3>;
    type.tp_methods = colorMethods;
    type.tp_getset = colorGetSet;
    type.tp_new = colorNew;
    return type;
}();

PyTypeObject AColorType = [] {
    PyTypeObject type = {PyVarObject_HEAD_INIT(nullptr, 0)};
    type.tp_name = "tovi.AColor";
    type.tp_basicsize = sizeof(AColorObject);
    type.tp_dealloc = valueDealloc;
    type.tp_repr = acolorRepr;
    type.tp_as_number = &acolorNumber;
    type.tp_as_sequence = &acolorSequence;
    type.tp_str = acolorRepr;
    type.tp_flags = Py_TPFLAGS_DEFAULT | Py_TPFLAGS_BASETYPE;
    type.tp_doc =
        "An extension of tovi.Color that adds an alpha channel as the 4th component.\n\"alpha\" means opacity, the "
        "opposite of transparency.\n\n * AColor() -> new AColor with value (0, 0, 0, 1)\n * AColor(color, alpha) -> "
        "new AColor from a Color object with added alpha\n * AColor(red, green, blue, alpha) -> new AColor full "
        "constructor\n";
    type.tp_richcompare = colorRichCompare<4>;
    type.tp_methods = acolorMethods;
    type.tp_getset = acolorGetSet;
    type.tp_base = &ColorType;
    type.tp_new = acolorNew;
    return type;
}();

PyObject* newColor(double r, double g, double b) {
    const double values[3] = {r, g, b};
    return newOfFamily<3>(values);
}

PyObject* newAColor(double r, double g, double b, double alpha) {
    const double values[4] = {r, g, b, alpha};
    return newOfFamily<4>(values);
}

PyObject* colorFromFloats(const uint8_t*& cursor) {
    double values[3];
    readFloats(cursor, values, 3);
    return newOfFamily<3>(values);
}

PyObject* acolorFromFloats(const uint8_t*& cursor) {
    double values[4];
    readFloats(cursor, values, 4);
    return newOfFamily<4>(values);
}

void addColorSpaceConstants() {
    struct ColorSpace {
        const char* name;
        long value;
    };
    const ColorSpace colorSpaces[] = {{"COLOR_SPACE_CIE", 0}, {"COLOR_SPACE_SRGB", 1}, {"COLOR_SPACE_ACEScg", 2}};
    for (const ColorSpace& space : colorSpaces) {
        PyObject* value = PyLong_FromLong(space.value);
        if (!value || PyDict_SetItemString(ColorType.tp_dict, space.name, value) < 0) PyErr_Clear();
        Py_XDECREF(value);
    }
    PyType_Modified(&ColorType);
}

}  // namespace tovi
