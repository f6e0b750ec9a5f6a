// tovi.ToviImage.
#include "image/image.h"

#include <cctype>
#include <climits>
#include <cstdint>
#include <cstring>

#include "core/errors.h"
#include "core/marshal.h"
#include "core/sdk_loader.h"
#include "image/compressed_image.h"
#include "lists/list_kinds.h"
#include "renderer/renderer.h"
#include "values/color.h"

namespace tovi {

namespace {

struct ImageObject {
    PyObject_HEAD
    ToviImage* image;  // null: no image
    int32_t x, y;      // bucket position
    int32_t width, height;
    PyObject* host;    // str, or null
    // Buffer exports and unlocked SDK calls using the pixels; the image is not replaced meanwhile.
    Py_ssize_t pins;
    Py_ssize_t shape[2];  // of the exported pixels: pixel count, 4
    Py_ssize_t strides[2];
};

ImageObject* asImage(PyObject* object) { return reinterpret_cast<ImageObject*>(object); }

const char noImageMessage[] = "This instance contains no image.";
const char rawFormatMessage[] =
    "Unknown type. Supported types are 'bgra' ('bgra_byte') (default), 'bgr' ('bgr_byte'), 'rgba16' "
    "('rgba_16bit'), 'rgba32' ('rgba_float'), 'rgba_half_float' ('rgba_float16')";
const char notImageArgumentMessage[] = "Expected argument of type ToviImage.";

PyObject* raiseNoImage(PyObject* type) {
    PyErr_SetString(type, noImageMessage);
    return nullptr;
}

// The image of an instance method's object; null with RuntimeError when there is none.
ToviImage* requireImage(PyObject* self) {
    ToviImage* image = asImage(self)->image;
    if (!image) raiseNoImage(PyExc_RuntimeError);
    return image;
}

// ASCII comparisons that ignore case.
bool sameText(const char* text, const char* expected) {
    for (; *text && *expected; ++text, ++expected) {
        if (std::tolower(static_cast<unsigned char>(*text)) != *expected) return false;
    }
    return *text == *expected;
}

bool startsWithText(const char* text, const char* prefix) {
    for (; *prefix; ++text, ++prefix) {
        if (!*text || std::tolower(static_cast<unsigned char>(*text)) != *prefix) return false;
    }
    return true;
}

// Keeps the image from being replaced while its pixels are in use without the lock.
class ImagePin {
public:
    explicit ImagePin(ImageObject* image) : image_(image) { ++image_->pins; }
    ImagePin(const ImagePin&) = delete;
    ImagePin& operator=(const ImagePin&) = delete;
    ~ImagePin() { --image_->pins; }

private:
    ImageObject* image_;
};

// A buffer of another object, held for a scope.
class HeldBuffer {
public:
    HeldBuffer() = default;
    HeldBuffer(const HeldBuffer&) = delete;
    HeldBuffer& operator=(const HeldBuffer&) = delete;
    ~HeldBuffer() {
        if (view.obj) PyBuffer_Release(&view);
    }
    Py_buffer view{};
};

ToviRenderer* rendererOf(PyObject* renderer) { return renderer && isRenderer(renderer) ? rendererHandle(renderer) : nullptr; }

// Stores `handle` (may be null) with its size and frees the image the object held before.
void setImage(ImageObject* self, ToviImage* handle) {
    ToviImage* old = self->image;
    self->image = handle;
    self->width = self->height = 0;
    if (handle && !SdkApi.ToviImage_getSize(handle, &self->width, &self->height)) self->width = self->height = 0;
    if (old && sdkLibraryLoaded()) SdkApi.C_memory_free(old);
}

// A new image from an SDK operation; RuntimeError when the operation gave none.
PyObject* operationResult(ToviImage* result) {
    if (!result) return raiseImageOperationFailed();
    return newImageWrapper(result, 0, 0, nullptr);
}

// An int argument's value, 0 when the object is not an int; -1 with the error set on overflow.
int intOrZero(PyObject* object, int& value) {
    value = 0;
    if (!object || !PyLong_Check(object)) return 0;
    long number = PyLong_AsLong(object);
    if (number == -1 && PyErr_Occurred()) return -1;
    if (number < INT_MIN || number > INT_MAX) {
        PyErr_SetString(PyExc_OverflowError, "Python int too large to convert to C int");
        return -1;
    }
    value = static_cast<int>(number);
    return 0;
}

// The truth of an optional argument (false when absent); -1 with the error set.
int truthOf(PyObject* object) { return object ? PyObject_IsTrue(object) : 0; }

// A raw pixel format given by code or name; -1 with the raw-format TypeError.
int rawFormatCode(PyObject* type, int& code) {
    if (PyLong_Check(type)) {
        long number = PyLong_AsLong(type);
        if (number == -1 && PyErr_Occurred()) return failWith(PyExc_TypeError, rawFormatMessage);
        if (number < 0 || number > INT_MAX) return failWith(PyExc_TypeError, rawFormatMessage);
        code = static_cast<int>(number);
        return 0;
    }
    if (PyUnicode_Check(type)) {
        const struct {
            const char* name;
            int code;
        } names[] = {{"bgra", 0},   {"bgra_byte", 0},  {"bgr", 4},    {"bgr_byte", 4},
                     {"rgba16", 3}, {"rgba_16bit", 3}, {"rgba32", 1}, {"rgba_float", 1},
                     {"rgba_half_float", 5}, {"rgba_float16", 5}};
        const char* text = PyUnicode_AsUTF8(type);
        for (const auto& entry : names) {
            if (text && sameText(text, entry.name)) {
                code = entry.code;
                return 0;
            }
        }
    }
    return failWith(PyExc_TypeError, rawFormatMessage);
}

// ---- construction ----

void imageDealloc(PyObject* self) {
    ImageObject* image = asImage(self);
    Py_CLEAR(image->host);
    if (image->image && sdkLibraryLoaded()) SdkApi.C_memory_free(image->image);
    Py_TYPE(self)->tp_free(self);
}

using Decoder = ToviImage* (*)(const void* data, size_t size, ToviRenderer* renderer, int flags);

// The constructor's decoding form: `buffer` is released here.
int decodeInto(ImageObject* self, Py_buffer& buffer, const char* type, PyObject* renderer) {
    HeldBuffer held;
    held.view = buffer;
    Decoder decode = nullptr;
    if (sameText(type, "jpg") || sameText(type, "jpeg")) {
        decode = SdkApi.ToviImage_createFromJpeg;
    } else if (sameText(type, "png")) {
        decode = SdkApi.ToviImage_createFromPng;
    } else {
        return failWith(PyExc_TypeError, "Invalid image type string.");
    }
    ToviRenderer* handle = rendererOf(renderer);
    ToviImage* decoded;
    {
        ReleasedGil unlocked;
        decoded = decode(held.view.buf, static_cast<size_t>(held.view.len), handle, 0);
    }
    setImage(self, decoded);
    return decoded ? 0 : failWith(PyExc_TypeError, "Image decompression error.");
}

// ToviImage(image), ToviImage(buffer, type[, renderer]), ToviImage(width, height), tried in
// that order.
int imageInit(PyObject* object, PyObject* args, PyObject* keywords) {
    if (requireSdk() < 0) return -1;
    ImageObject* self = asImage(object);
    if (self->pins > 0) {
        PyErr_SetString(PyExc_BufferError, "Existing exports of data, image cannot be replaced");
        return -1;
    }
    static const char* cloneKeywords[] = {"image", nullptr};
    PyObject* source = nullptr;
    if (PyArg_ParseTupleAndKeywords(args, keywords, "O", const_cast<char**>(cloneKeywords), &source)) {
        if (!isImage(source)) return failWith(PyExc_TypeError, "When passing a single argument, it should be of type ToviImage.");
        ToviImage* copy = SdkApi.ToviImage_clone(asImage(source)->image);
        setImage(self, copy);
        return copy ? 0 : failWith(PyExc_TypeError, "Cannot copy ToviImage.");
    }
    PyErr_Clear();

    static const char* decodeKeywords[] = {"buffer", "type", "renderer", nullptr};
    Py_buffer buffer;
    const char* type = nullptr;
    PyObject* renderer = nullptr;
    if (PyArg_ParseTupleAndKeywords(args, keywords, "s*s|O", const_cast<char**>(decodeKeywords), &buffer, &type,
                                    &renderer)) {
        return decodeInto(self, buffer, type, renderer);
    }
    PyErr_Clear();

    static const char* sizeKeywords[] = {"width", "height", nullptr};
    int width = 0, height = 0;
    if (!PyArg_ParseTupleAndKeywords(args, keywords, "ii", const_cast<char**>(sizeKeywords), &width, &height) ||
        width < 1 || height < 1) {
        return failWith(PyExc_TypeError, "Image width and height must be greater than 0.");
    }
    ToviImage* created = SdkApi.ToviImage_create(width, height);
    setImage(self, created);
    return created ? 0 : failWith(PyExc_TypeError, "Cannot create ToviImage.");
}

// ---- class methods ----

PyObject* createFromBuffer(PyObject*, PyObject* args, PyObject* keywords) {
    if (requireSdk() < 0) return nullptr;
    static const char* names[] = {"buffer", "type", "renderer", nullptr};
    PyObject* source = nullptr;
    const char* type = nullptr;
    PyObject* renderer = nullptr;
    if (!PyArg_ParseTupleAndKeywords(args, keywords, "Os|O", const_cast<char**>(names), &source, &type, &renderer)) {
        return nullptr;
    }
    HeldBuffer buffer;
    if (PyObject_GetBuffer(source, &buffer.view, PyBUF_SIMPLE) < 0) return replaceError(PyExc_TypeError, "Invalid buffer");
    Decoder decode = nullptr;
    if (sameText(type, "bmp")) {
        decode = SdkApi.ToviImage_createFromBmp;
    } else if (sameText(type, "png")) {
        decode = SdkApi.ToviImage_createFromPng;
    } else if (sameText(type, "jpg") || sameText(type, "jpeg")) {
        decode = SdkApi.ToviImage_createFromJpeg;
    } else {
        return replaceError(PyExc_TypeError, "Type must be: 'bmp', 'png', 'jpg' or 'jpeg'.");
    }
    ToviRenderer* handle = rendererOf(renderer);
    ToviImage* decoded;
    {
        ReleasedGil unlocked;
        decoded = decode(buffer.view.buf, static_cast<size_t>(buffer.view.len), handle, 0);
    }
    if (!decoded) return replaceError(PyExc_RuntimeError, "Error creating image. A possible cause is wrong data.");
    return newImageWrapper(decoded, 0, 0, nullptr);
}

PyObject* createFromRawData(PyObject*, PyObject* args, PyObject* keywords) {
    if (requireSdk() < 0) return nullptr;
    static const char* names[] = {"buffer", "type", "width", "height", nullptr};
    PyObject* source = nullptr;
    PyObject* type = nullptr;
    int width = 0, height = 0;
    if (!PyArg_ParseTupleAndKeywords(args, keywords, "OOii", const_cast<char**>(names), &source, &type, &width,
                                     &height)) {
        return nullptr;
    }
    int code = 0;
    if (rawFormatCode(type, code) < 0) return nullptr;
    HeldBuffer buffer;
    if (PyObject_GetBuffer(source, &buffer.view, PyBUF_SIMPLE) < 0) return replaceError(PyExc_TypeError, "Invalid buffer");
    ToviImage* created;
    {
        ReleasedGil unlocked;
        created = SdkApi.ToviImage_createFromRawData(buffer.view.buf, static_cast<size_t>(buffer.view.len), code, width,
                                                     height, 0);
    }
    return newImageWrapper(created, 0, 0, nullptr);
}

PyObject* loadImage(PyObject*, PyObject* args, PyObject* keywords) {
    if (requireSdk() < 0) return nullptr;
    static const char* names[] = {"fileName", nullptr};
    const char* fileName = nullptr;
    if (!PyArg_ParseTupleAndKeywords(args, keywords, "s", const_cast<char**>(names), &fileName)) return nullptr;
    ToviImage* loaded;
    {
        ReleasedGil unlocked;
        loaded = SdkApi.ToviImage_load(fileName);
    }
    if (!loaded) return replaceError(PyExc_RuntimeError, "Error loading image.");
    return newImageWrapper(loaded, 0, 0, nullptr);
}

PyObject* loadImageSize(PyObject*, PyObject* args, PyObject* keywords) {
    if (requireSdk() < 0) return nullptr;
    static const char* names[] = {"fileName", nullptr};
    const char* fileName = nullptr;
    if (!PyArg_ParseTupleAndKeywords(args, keywords, "s", const_cast<char**>(names), &fileName)) return nullptr;
    int width = 0, height = 0;
    if (!SdkApi.ToviImage_loadSize(fileName, &width, &height)) {
        return replaceError(PyExc_RuntimeError, "Error loading image size.");
    }
    return Py_BuildValue("(ii)", width, height);
}

// ---- saving and compressing ----

// The encoder arguments of save() and compress(); null when not given.
struct EncoderArguments {
    PyObject* quality = nullptr;
    PyObject* preserveAlpha = nullptr;
    PyObject* swapChannels = nullptr;
    PyObject* type = nullptr;
    PyObject* bitsPerChannel = nullptr;
    PyObject* renderer = nullptr;

    // The str naming the file type, or null: `type`, else a text in the fourth or third position
    // (which then counts as not given), else, for compress(), a text in the first position, which
    // preserveAlpha then takes as its own.
    PyObject* takeTypeText(bool qualityMayNameType) {
        if (type && PyUnicode_Check(type)) return type;
        PyObject* text = nullptr;
        if (swapChannels && PyUnicode_Check(swapChannels)) {
            text = swapChannels;
            swapChannels = nullptr;
        } else if (preserveAlpha && PyUnicode_Check(preserveAlpha)) {
            text = preserveAlpha;
            preserveAlpha = nullptr;
        } else if (qualityMayNameType && quality && PyUnicode_Check(quality)) {
            text = quality;
            preserveAlpha = quality;
        }
        return text;
    }
    // preserveAlpha, else quality, by truth; -1 with the error set.
    int alpha() const { return PyObject_IsTrue(preserveAlpha ? preserveAlpha : quality ? quality : Py_False); }
    // The PNG flags: 16 bits when bitsPerChannel is 16, alpha as alpha(); -1 with the error set.
    int pngFlags() const {
        int bits = 0;
        int withAlpha = alpha();
        if (withAlpha < 0 || intOrZero(bitsPerChannel, bits) < 0) return -1;
        return (bits == 16 ? TOVI_PNG_16BIT : 0) + (withAlpha ? TOVI_PNG_PRESERVE_ALPHA : 0);
    }
};

enum class Codec { Bmp, Png, Jpeg, Tiff, Exr, Unknown };

Codec codecNamed(const char* text) {
    if (sameText(text, "bmp")) return Codec::Bmp;
    if (sameText(text, "png")) return Codec::Png;
    if (sameText(text, "jpg") || sameText(text, "jpeg")) return Codec::Jpeg;
    if (sameText(text, "tif") || sameText(text, "tiff")) return Codec::Tiff;
    if (sameText(text, "exr")) return Codec::Exr;
    return Codec::Unknown;
}

PyObject* saveImage(PyObject* self, PyObject* args, PyObject* keywords) {
    ToviImage* image = requireImage(self);
    if (!image) return nullptr;
    static const char* names[] = {"fileName", "quality", "preserveAlpha", "swapChannels", "type", "bitsPerChannel",
                                  "renderer", nullptr};
    PyObject* fileNameObject = nullptr;
    EncoderArguments given;
    if (!PyArg_ParseTupleAndKeywords(args, keywords, "|OOOOOOO", const_cast<char**>(names), &fileNameObject,
                                     &given.quality, &given.preserveAlpha, &given.swapChannels, &given.type,
                                     &given.bitsPerChannel, &given.renderer)) {
        return nullptr;
    }
    if (!fileNameObject || !PyUnicode_Check(fileNameObject)) return replaceError(PyExc_TypeError, "You must provide a fileName.");
    const char* fileName = PyUnicode_AsUTF8(fileNameObject);
    if (!fileName) return nullptr;
    const char* typeText;
    if (PyObject* typeObject = given.takeTypeText(false)) {
        if (!(typeText = PyUnicode_AsUTF8(typeObject))) return nullptr;
    } else {
        const char* dot = std::strrchr(fileName, '.');
        if (!dot) {
            return replaceError(PyExc_TypeError,
                                "Image file type cannot be determined from file name. You can pass it as a type "
                                "argument: 'bmp', 'png', 'jpeg', 'tiff' or 'exr'.");
        }
        typeText = dot + 1;
    }
    ToviRenderer* renderer = rendererOf(given.renderer);
    ImagePin pin(asImage(self));
    int saved = 0;
    switch (codecNamed(typeText)) {
        case Codec::Bmp: {
            int alpha = given.alpha();
            if (alpha < 0) return nullptr;
            int swap = truthOf(given.swapChannels);
            if (swap < 0) return nullptr;
            ReleasedGil unlocked;
            saved = SdkApi.ToviImage_SaveToBmpFile(image, alpha, fileName, renderer, swap);
            break;
        }
        case Codec::Png: {
            int flags = given.pngFlags();
            if (flags < 0) return nullptr;
            ReleasedGil unlocked;
            saved = SdkApi.ToviImage_compressToPngFile(image, flags, fileName, renderer);
            break;
        }
        case Codec::Jpeg: {
            int quality = 0;
            if (intOrZero(given.quality, quality) < 0) return nullptr;
            ReleasedGil unlocked;
            saved = SdkApi.ToviImage_compressToJpegFile(image, quality, fileName, renderer);
            break;
        }
        case Codec::Tiff: {
            int bits = 0;
            if (intOrZero(given.bitsPerChannel, bits) < 0) return nullptr;
            ReleasedGil unlocked;
            saved = SdkApi.ToviImage_SaveToTiffFile(image, fileName, renderer, bits);
            break;
        }
        case Codec::Exr: {
            ReleasedGil unlocked;
            saved = SdkApi.ToviImage_SaveToExrFile(image, fileName, renderer);
            break;
        }
        case Codec::Unknown:
            return replaceError(PyExc_TypeError, "type must be: 'bmp', 'png', 'jpeg', 'tiff' or 'exr'.");
    }
    return PyBool_FromLong(saved != 0);
}

PyObject* compressImage(PyObject* self, PyObject* args, PyObject* keywords) {
    ToviImage* image = requireImage(self);
    if (!image) return nullptr;
    static const char* names[] = {"quality", "preserveAlpha", "swapChannels", "type", "bitsPerChannel", "renderer",
                                  nullptr};
    EncoderArguments given;
    if (!PyArg_ParseTupleAndKeywords(args, keywords, "|OOOOOO", const_cast<char**>(names), &given.quality,
                                     &given.preserveAlpha, &given.swapChannels, &given.type, &given.bitsPerChannel,
                                     &given.renderer)) {
        return nullptr;
    }
    const char* typeText = "";
    if (PyObject* typeObject = given.takeTypeText(true)) {
        if (!(typeText = PyUnicode_AsUTF8(typeObject))) return nullptr;
    }
    ToviRenderer* renderer = rendererOf(given.renderer);
    ImagePin pin(asImage(self));
    void* encoded = nullptr;
    size_t size = 0;
    switch (codecNamed(typeText)) {
        case Codec::Bmp: {
            int alpha = given.alpha();
            if (alpha < 0) return nullptr;
            int swap = truthOf(given.swapChannels);
            if (swap < 0) return nullptr;
            ReleasedGil unlocked;
            encoded = SdkApi.ToviImage_convertToBmp(image, alpha, &size, renderer, swap);
            break;
        }
        case Codec::Png: {
            int flags = given.pngFlags();
            if (flags < 0) return nullptr;
            ReleasedGil unlocked;
            encoded = SdkApi.ToviImage_compressToPng(image, flags, &size, renderer);
            break;
        }
        case Codec::Jpeg: {
            int quality = 0;
            if (intOrZero(given.quality, quality) < 0) return nullptr;
            ReleasedGil unlocked;
            encoded = SdkApi.ToviImage_compressToJpeg(image, quality, &size, renderer);
            break;
        }
        default:
            return replaceError(PyExc_TypeError, "type must be: 'bmp', 'png' or 'jpeg'.");
    }
    if (!encoded) return replaceError(PyExc_RuntimeError, "Error compressing the image.");
    return encodedBytesView(encoded, size);
}

// ---- geometry ----

PyObject* getCropped(PyObject* self, PyObject* args) {
    ToviImage* image = requireImage(self);
    if (!image) return nullptr;
    int x, y, width, height;
    if (!PyArg_ParseTuple(args, "iiii", &x, &y, &width, &height)) return nullptr;
    // 64-bit: the absolute value of the smallest int and the sums must not overflow.
    long long spanX = width < 0 ? -static_cast<long long>(width) : width;
    long long spanY = height < 0 ? -static_cast<long long>(height) : height;
    ImageObject* source = asImage(self);
    if (x < 0 || y < 0 || width == 0 || height == 0 || x + spanX > source->width || y + spanY > source->height) {
        return replaceError(PyExc_ValueError, "Arguments are out of range.");
    }
    return operationResult(SdkApi.ToviImage_crop(image, x, y, width, height));
}

PyObject* resizedImage(PyObject* self, PyObject* args, bool downscale) {
    ToviImage* image = requireImage(self);
    if (!image) return nullptr;
    int width, height;
    if (!PyArg_ParseTuple(args, "ii", &width, &height)) return nullptr;
    ImageObject* source = asImage(self);
    if (width <= 0 || height <= 0 || (downscale && (width > source->width || height > source->height))) {
        return replaceError(PyExc_ValueError, "Image width and height out of range.");
    }
    return operationResult(SdkApi.ToviImage_resize(image, width, height));
}

PyObject* getResized(PyObject* self, PyObject* args) { return resizedImage(self, args, false); }
PyObject* getDownscaled(PyObject* self, PyObject* args) { return resizedImage(self, args, true); }

// getResizedCropped and getDownscaledCropped: the same checks, the same operation.
PyObject* croppedResizedImage(PyObject* self, PyObject* args) {
    ToviImage* image = requireImage(self);
    if (!image) return nullptr;
    int x, y, cropWidth, cropHeight, width, height;
    if (!PyArg_ParseTuple(args, "iiiiii", &x, &y, &cropWidth, &cropHeight, &width, &height)) return nullptr;
    ImageObject* source = asImage(self);
    if (x < 0 || y < 0 || cropWidth <= 0 || cropHeight <= 0 || width <= 0 || height <= 0 ||
        static_cast<long long>(x) + cropWidth > source->width || static_cast<long long>(y) + cropHeight > source->height ||
        width > cropWidth || height > cropHeight) {
        return replaceError(PyExc_ValueError, "Arguments are out of range.");
    }
    return operationResult(SdkApi.ToviImage_crop_resize(image, x, y, cropWidth, cropHeight, width, height));
}

using Fit = ToviImage* (*)(const ToviImage* image, int width, int height);

PyObject* fittedImage(PyObject* self, PyObject* args, Fit fit) {
    ToviImage* image = requireImage(self);
    if (!image) return nullptr;
    int width, height;
    if (!PyArg_ParseTuple(args, "ii", &width, &height)) return nullptr;
    if (width <= 0 || height <= 0) return replaceError(PyExc_ValueError, "Image width and height must be greater than 0.");
    return operationResult(fit(image, width, height));
}

PyObject* getFitIn(PyObject* self, PyObject* args) { return fittedImage(self, args, SdkApi.ToviImage_fitIn); }
PyObject* getFitOut(PyObject* self, PyObject* args) { return fittedImage(self, args, SdkApi.ToviImage_fitOut); }
PyObject* getCutIn(PyObject* self, PyObject* args) { return fittedImage(self, args, SdkApi.ToviImage_cutIn); }

// ---- drawing and colour ----

// An optional int argument of draw(), converted as the "i" format does.
struct OptionalInt {
    int value = 0;
    bool given = false;
};

int convertOptionalInt(PyObject* object, void* target) {
    long number = PyLong_AsLong(object);
    if (number == -1 && PyErr_Occurred()) return 0;
    if (number < INT_MIN || number > INT_MAX) {
        PyErr_SetString(PyExc_OverflowError, "signed integer is out of range");
        return 0;
    }
    auto* result = static_cast<OptionalInt*>(target);
    result->value = static_cast<int>(number);
    result->given = true;
    return 1;
}

// The source's own position attribute, 0 when it cannot be read.
int positionAttribute(PyObject* source, const char* name) {
    PyRef value(PyObject_GetAttrString(source, name));
    long number = value ? PyLong_AsLong(value.get()) : -1;
    if (PyErr_Occurred()) {
        PyErr_Clear();
        return 0;
    }
    return static_cast<int>(number);
}

PyObject* drawImage(PyObject* self, PyObject* args, PyObject* keywords) {
    ToviImage* image = requireImage(self);
    if (!image) return nullptr;
    static const char* names[] = {"image", "x", "y", "mode", nullptr};
    PyObject* source = nullptr;
    OptionalInt x, y;
    const char* mode = nullptr;
    if (!PyArg_ParseTupleAndKeywords(args, keywords, "O|O&O&s", const_cast<char**>(names), &source,
                                     &convertOptionalInt, &x, &convertOptionalInt, &y, &mode)) {
        return nullptr;
    }
    if (!isImage(source)) return replaceError(PyExc_TypeError, notImageArgumentMessage);
    if (!x.given) x.value = positionAttribute(source, "x");
    if (!y.given) y.value = positionAttribute(source, "y");
    int blend = mode && startsWithText(mode, "blend") ? 1 : 0;
    return PyBool_FromLong(SdkApi.ToviImage_drawImage(image, asImage(source)->image, x.value, y.value, blend));
}

PyObject* addColor(PyObject* self, PyObject* args) {
    ToviImage* image = requireImage(self);
    if (!image) return nullptr;
    PyObject* color = nullptr;
    if (!PyArg_ParseTuple(args, "O", &color)) {
        return replaceError(PyExc_TypeError, "One argument of type Color or AColor expected.");
    }
    if (!isColor(color)) return replaceError(PyExc_TypeError, "Argument must be Color or AColor.");
    const double* components = colorComponents(color);
    // A colour without alpha adds nothing to alpha.
    float added[4] = {static_cast<float>(components[0]), static_cast<float>(components[1]),
                      static_cast<float>(components[2]), isAColor(color) ? static_cast<float>(components[3]) : 0.0f};
    return PyBool_FromLong(SdkApi.ToviImage_addColor(image, added));
}

using ColorChange = int (*)(ToviImage* image, float value);

PyObject* changeColors(PyObject* self, PyObject* args, ColorChange change) {
    ToviImage* image = requireImage(self);
    if (!image) return nullptr;
    float value;
    if (!PyArg_ParseTuple(args, "f", &value)) return nullptr;
    return PyBool_FromLong(change(image, value));
}

PyObject* changeExposure(PyObject* self, PyObject* args) {
    return changeColors(self, args, SdkApi.ToviImage_changeExposure);
}
PyObject* changeContrast(PyObject* self, PyObject* args) {
    return changeColors(self, args, SdkApi.ToviImage_changeContrast);
}
PyObject* changeGamma(PyObject* self, PyObject* args) { return changeColors(self, args, SdkApi.ToviImage_changeGamma); }

PyObject* changeSRGB(PyObject* self, PyObject* args) {
    ToviImage* image = requireImage(self);
    if (!image) return nullptr;
    PyObject* inverse = nullptr;
    if (!PyArg_ParseTuple(args, "|O", &inverse)) return nullptr;
    int flag = truthOf(inverse);
    if (flag < 0) return nullptr;
    return PyBool_FromLong(SdkApi.ToviImage_changeSRGB(image, flag));
}

PyObject* makeNegative(PyObject* self, PyObject*) {
    ToviImage* image = requireImage(self);
    if (!image) return nullptr;
    return PyBool_FromLong(SdkApi.ToviImage_makeNegative(image));
}

// ---- conversions and measures ----

PyObject* toBitmapData(PyObject* self, PyObject* args, PyObject* keywords) {
    ToviImage* image = requireImage(self);
    if (!image) return nullptr;
    static const char* names[] = {"preserveAlpha", "swapChannels", "reverseY", "stride", "alphaValue", nullptr};
    PyObject *preserveAlpha = nullptr, *swapChannels = nullptr, *reverseY = nullptr;
    int stride = 0, alphaValue = -1;
    if (!PyArg_ParseTupleAndKeywords(args, keywords, "|OOOii", const_cast<char**>(names), &preserveAlpha,
                                     &swapChannels, &reverseY, &stride, &alphaValue)) {
        return nullptr;
    }
    int alpha = truthOf(preserveAlpha), swap = truthOf(swapChannels), reverse = truthOf(reverseY);
    if (alpha < 0 || swap < 0 || reverse < 0) return nullptr;
    int flags = (alpha ? TOVI_BITMAP_PRESERVE_ALPHA : 0) | (swap ? TOVI_BITMAP_SWAP_CHANNELS : 0) |
                (reverse ? TOVI_BITMAP_REVERSE_Y : 0);
    ImagePin pin(asImage(self));
    void* bytes;
    size_t size = 0;
    {
        ReleasedGil unlocked;
        bytes = SdkApi.ToviImage_toBitmapData(image, &size, flags, stride, alphaValue);
    }
    if (!bytes) return replaceError(PyExc_RuntimeError, "Error converting image data.");
    return encodedBytesView(bytes, size);
}

PyObject* toIntList(PyObject* self, PyObject* args, PyObject* keywords) {
    ToviImage* image = requireImage(self);
    if (!image) return nullptr;
    static const char* names[] = {"type", nullptr};
    PyObject* type = nullptr;
    if (!PyArg_ParseTupleAndKeywords(args, keywords, "|O", const_cast<char**>(names), &type)) return nullptr;
    int code = TOVI_RAW_FORMAT_BGRA_BYTE;
    if (type && rawFormatCode(type, code) < 0) return nullptr;
    Py_ssize_t pixels = static_cast<Py_ssize_t>(asImage(self)->width) * asImage(self)->height;
    Py_ssize_t length;
    switch (code) {
        case TOVI_RAW_FORMAT_RGBA_FLOAT: length = 4 * pixels; break;
        case TOVI_RAW_FORMAT_RGBA_16BIT:
        case TOVI_RAW_FORMAT_RGBA_HALF_FLOAT: length = 2 * pixels; break;
        case TOVI_RAW_FORMAT_BGR_BYTE: length = (pixels + 1) * 3 / 4; break;
        default: length = pixels; break;
    }
    void* data = nullptr;
    PyRef list(newListWithRoom(&IntListType.type, length, &data));
    if (!list) return nullptr;
    // Three-byte pixels may leave the tail of the last integer unwritten.
    if (length > 0) static_cast<int32_t*>(data)[length - 1] = 0;
    ImagePin pin(asImage(self));
    int result;
    {
        ReleasedGil unlocked;
        result = SdkApi.ToviImage_toIntList(image, data, static_cast<size_t>(length) * 4, code);
    }
    if (result != 0) return replaceError(PyExc_RuntimeError, "Internal image error");
    return list.release();
}

PyObject* calculateWhiteBalanceMultiplier(PyObject* self, PyObject* args, PyObject* keywords) {
    ToviImage* image = requireImage(self);
    if (!image) return nullptr;
    static const char* names[] = {"mode", nullptr};
    PyObject* modeObject = nullptr;
    if (!PyArg_ParseTupleAndKeywords(args, keywords, "O", const_cast<char**>(names), &modeObject)) return nullptr;
    int mode = TOVI_WHITE_BALANCE_NONE;
    if (PyUnicode_Check(modeObject)) {
        const char* text = PyUnicode_AsUTF8(modeObject);
        if (!text) return nullptr;
        if (sameText(text, "average")) {
            mode = TOVI_WHITE_BALANCE_AVERAGE;
        } else if (sameText(text, "weightedaverage") || sameText(text, "weighted_average")) {
            mode = TOVI_WHITE_BALANCE_WEIGHTED_AVERAGE;
        } else if (sameText(text, "highlights")) {
            mode = TOVI_WHITE_BALANCE_HIGHLIGHTS;
        }
    } else if (PyIndex_Check(modeObject)) {
        // A value that does not convert reaches the SDK as -1, which it answers neutrally.
        Py_ssize_t number = PyNumber_AsSsize_t(modeObject, nullptr);
        if (number == -1 && PyErr_Occurred()) PyErr_Clear();
        mode = number < INT_MIN || number > INT_MAX ? -1 : static_cast<int>(number);
    } else {
        return replaceError(PyExc_RuntimeError, "Mode argument should be a string or integer");
    }
    float multiplier[4] = {1.0f, 1.0f, 1.0f, 1.0f};
    SdkApi.ToviImage_calculateWhiteBalanceMultiplier(image, mode, multiplier);
    return newAColor(multiplier[0], multiplier[1], multiplier[2], multiplier[3]);
}

PyObject* calculateDifference(PyObject* self, PyObject* args) {
    ToviImage* image = requireImage(self);
    if (!image) return nullptr;
    PyObject* other = nullptr;
    if (!PyArg_ParseTuple(args, "O", &other)) return nullptr;
    if (!isImage(other)) return replaceError(PyExc_TypeError, notImageArgumentMessage);
    return PyFloat_FromDouble(SdkApi.ToviImage_calculateDifference(image, asImage(other)->image));
}

// ---- attributes ----

PyObject* getX(PyObject* self, void*) { return PyLong_FromLong(asImage(self)->x); }
PyObject* getY(PyObject* self, void*) { return PyLong_FromLong(asImage(self)->y); }
PyObject* getWidth(PyObject* self, void*) { return PyLong_FromLong(asImage(self)->width); }
PyObject* getHeight(PyObject* self, void*) { return PyLong_FromLong(asImage(self)->height); }

int setPosition(PyObject* value, int32_t& position, const char* deleteMessage, const char* typeMessage) {
    if (!value) return failWith(PyExc_TypeError, deleteMessage);
    if (!PyLong_Check(value)) return failWith(PyExc_TypeError, typeMessage);
    int number = 0;
    if (intOrZero(value, number) < 0) return -1;
    position = number;
    return 0;
}

int setX(PyObject* self, PyObject* value, void*) {
    return setPosition(value, asImage(self)->x, "Cannot delete the 'x' attribute.", "x can only be set to an integer value.");
}

int setY(PyObject* self, PyObject* value, void*) {
    return setPosition(value, asImage(self)->y, "Cannot delete the 'y' attribute.", "y can only be set to an integer value.");
}

PyObject* getHost(PyObject* self, void*) {
    PyObject* host = asImage(self)->host;
    return Py_NewRef(host ? host : Py_None);
}

PyObject* getGamma(PyObject* self, void*) {
    ToviImage* image = requireImage(self);
    if (!image) return nullptr;
    return PyFloat_FromDouble(SdkApi.ToviImage_getGamma(image));
}

int setGamma(PyObject* self, PyObject* value, void*) {
    if (!value) return failWith(PyExc_TypeError, "Cannot delete the 'gamma' attribute.");
    ToviImage* image = asImage(self)->image;
    if (!image) return failWith(PyExc_BufferError, noImageMessage);
    if (!PyNumber_Check(value)) return failWith(PyExc_TypeError, "gamma can only be set to a number.");
    double gamma = PyFloat_AsDouble(value);
    if (gamma == -1.0 && PyErr_Occurred()) return -1;
    if (!SdkApi.ToviImage_setGamma(image, static_cast<float>(gamma))) return failWith(PyExc_ValueError, "Wrong gamma value passed.");
    return 0;
}

PyGetSetDef imageGetSet[] = {
    {"x", getX, setX, "Bucket horizontal (left) position.", nullptr},
    {"y", getY, setY, "Bucket vertical (top) position.", nullptr},
    {"width", getWidth, nullptr, "Pixel width of this object.", nullptr},
    {"height", getHeight, nullptr, "Pixel height of this object.", nullptr},
    {"host", getHost, nullptr, "Host name that produced the image, if available.", nullptr},
    {"gamma", getGamma, setGamma,
     "Gets/sets the output gamma for 8-bit images. Affects the methods compress() and save()", nullptr},
    {nullptr},
};

// ---- sequence and buffer ----

// The pixels, 4 floats each, or null with `errorType` raised when there is no image.
float* pixelArray(PyObject* self, size_t& count, PyObject* errorType) {
    ToviImage* image = asImage(self)->image;
    float* pixels = image ? SdkApi.ToviImage_getPixelDataPointerAndPixelCount(image, &count) : nullptr;
    if (!pixels) raiseNoImage(errorType);
    return pixels;
}

Py_ssize_t imageLength(PyObject* self) {
    return static_cast<Py_ssize_t>(asImage(self)->width) * asImage(self)->height;
}

PyObject* imageItem(PyObject* self, Py_ssize_t index) {
    size_t count = 0;
    const float* pixels = pixelArray(self, count, PyExc_RuntimeError);
    if (!pixels) return nullptr;
    if (index < 0 || static_cast<size_t>(index) >= count) {
        PyErr_SetString(PyExc_IndexError, "Index out of range.");
        return nullptr;
    }
    const float* pixel = pixels + 4 * index;
    return newAColor(pixel[0], pixel[1], pixel[2], pixel[3]);
}

int imageAssignItem(PyObject* self, Py_ssize_t index, PyObject* value) {
    size_t count = 0;
    float* pixels = pixelArray(self, count, PyExc_BufferError);
    if (!pixels) return -1;
    if (index < 0 || static_cast<size_t>(index) >= count) return failWith(PyExc_IndexError, "Index out of range.");
    if (!value) return failWith(PyExc_TypeError, "Pixels cannot be deleted.");
    if (!isAColor(value)) return failWith(PyExc_TypeError, "Only AColor can be set");
    const double* components = colorComponents(value);
    float* pixel = pixels + 4 * index;
    for (int channel = 0; channel < 4; ++channel) pixel[channel] = static_cast<float>(components[channel]);
    return 0;
}

PySequenceMethods imageSequence = {
    imageLength,      // sq_length
    nullptr,          // sq_concat
    nullptr,          // sq_repeat
    imageItem,        // sq_item
    nullptr,          // was_sq_slice
    imageAssignItem,  // sq_ass_item
};

// The pixels in place, writable: pixel count x 4 floats.
int imageGetBuffer(PyObject* self, Py_buffer* view, int flags) {
    size_t count = 0;
    float* pixels = pixelArray(self, count, PyExc_BufferError);
    if (!pixels) return -1;
    ImageObject* image = asImage(self);
    image->shape[0] = static_cast<Py_ssize_t>(count);
    image->shape[1] = 4;
    image->strides[0] = 4 * sizeof(float);
    image->strides[1] = sizeof(float);
    bool withShape = (flags & PyBUF_ND) == PyBUF_ND;
    view->obj = Py_NewRef(self);
    view->buf = pixels;
    view->len = static_cast<Py_ssize_t>(count) * 4 * static_cast<Py_ssize_t>(sizeof(float));
    view->readonly = 0;
    view->itemsize = sizeof(float);
    view->format = (flags & PyBUF_FORMAT) ? const_cast<char*>("f") : nullptr;
    view->ndim = withShape ? 2 : 1;
    view->shape = withShape ? image->shape : nullptr;
    view->strides = withShape && (flags & PyBUF_STRIDES) == PyBUF_STRIDES ? image->strides : nullptr;
    view->suboffsets = nullptr;
    view->internal = nullptr;
    ++image->pins;
    return 0;
}

void imageReleaseBuffer(PyObject* self, Py_buffer*) { --asImage(self)->pins; }

PyBufferProcs imageAsBuffer = {
    imageGetBuffer,      // bf_getbuffer
    imageReleaseBuffer,  // bf_releasebuffer
};

// ---- methods ----

#define TOVI_KEYWORDS(function) reinterpret_cast<PyCFunction>(reinterpret_cast<void (*)()>(function))

PyMethodDef imageMethods[] = {
    {"createFromBuffer", TOVI_KEYWORDS(createFromBuffer), METH_VARARGS | METH_KEYWORDS | METH_CLASS,
     "createFromBuffer(buffer, type, renderer=None) -> ToviImage decoded from 'bmp', 'png', 'jpg' or 'jpeg' bytes."},
    {"createFromRawData", TOVI_KEYWORDS(createFromRawData), METH_VARARGS | METH_KEYWORDS | METH_CLASS,
     "createFromRawData(buffer, type, width, height) -> ToviImage from raw pixels of the given format."},
    {"load", TOVI_KEYWORDS(loadImage), METH_VARARGS | METH_KEYWORDS | METH_CLASS,
     "load(fileName) -> ToviImage read from an image file."},
    {"loadSize", TOVI_KEYWORDS(loadImageSize), METH_VARARGS | METH_KEYWORDS | METH_STATIC,
     "loadSize(fileName) -> (width, height) of an image file, read from its header."},
    {"save", TOVI_KEYWORDS(saveImage), METH_VARARGS | METH_KEYWORDS,
     "save(fileName, quality, preserveAlpha, swapChannels, type, bitsPerChannel, renderer) -> bool\nWrites a bmp, "
     "png, jpeg, tiff or exr file; the type comes from the file name unless given."},
    {"compress", TOVI_KEYWORDS(compressImage), METH_VARARGS | METH_KEYWORDS,
     "compress(quality, preserveAlpha, swapChannels, type, bitsPerChannel, renderer) -> memoryview\nEncodes the "
     "image as 'bmp', 'png' or 'jpeg'."},
    {"getCropped", getCropped, METH_VARARGS, "getCropped(x, y, width, height) -> ToviImage of the region."},
    {"getResized", getResized, METH_VARARGS, "getResized(width, height) -> ToviImage resampled to the size."},
    {"getDownscaled", getDownscaled, METH_VARARGS,
     "getDownscaled(width, height) -> ToviImage resampled to a size not larger than this one."},
    {"getResizedCropped", croppedResizedImage, METH_VARARGS,
     "getResizedCropped(x, y, cropWidth, cropHeight, width, height) -> ToviImage of the region, resampled."},
    {"getDownscaledCropped", croppedResizedImage, METH_VARARGS,
     "getDownscaledCropped(x, y, cropWidth, cropHeight, width, height) -> ToviImage of the region, resampled."},
    {"getFitIn", getFitIn, METH_VARARGS, "getFitIn(width, height) -> the largest scaled copy inside the size."},
    {"getFitOut", getFitOut, METH_VARARGS, "getFitOut(width, height) -> the smallest scaled copy covering the size."},
    {"getCutIn", getCutIn, METH_VARARGS, "getCutIn(width, height) -> a scaled, centre-cropped copy of exactly the size."},
    {"draw", TOVI_KEYWORDS(drawImage), METH_VARARGS | METH_KEYWORDS,
     "draw(image, x, y, mode='copy') -> bool\nDraws another image onto this one, copied or with mode 'blend'."},
    {"addColor", addColor, METH_VARARGS, "addColor(color) -> bool\nAdds a Color or AColor to every pixel."},
    {"changeExposure", changeExposure, METH_VARARGS, "changeExposure(stops) -> bool"},
    {"changeContrast", changeContrast, METH_VARARGS, "changeContrast(factor) -> bool"},
    {"changeGamma", changeGamma, METH_VARARGS, "changeGamma(gamma) -> bool"},
    {"changeSRGB", changeSRGB, METH_VARARGS,
     "changeSRGB(inverse=False) -> bool\nApplies the sRGB curve, or removes it when inverse is true."},
    {"makeNegative", makeNegative, METH_NOARGS, "makeNegative() -> bool"},
    {"toBitmapData", TOVI_KEYWORDS(toBitmapData), METH_VARARGS | METH_KEYWORDS,
     "toBitmapData(preserveAlpha, swapChannels, reverseY, stride=0, alphaValue=-1) -> memoryview of 8-bit rows."},
    {"toIntList", TOVI_KEYWORDS(toIntList), METH_VARARGS | METH_KEYWORDS,
     "toIntList(type='bgra') -> IntList holding the raw pixels."},
    {"calculateWhiteBalanceMultiplier", TOVI_KEYWORDS(calculateWhiteBalanceMultiplier), METH_VARARGS | METH_KEYWORDS,
     "calculateWhiteBalanceMultiplier(mode) -> AColor\nmode: 'Average', 'WeightedAverage', 'Highlights' or 1..3."},
    {"calculateDifference", calculateDifference, METH_VARARGS,
     "calculateDifference(image) -> float, the mean absolute difference of the pixels."},
    {nullptr},
};

#undef TOVI_KEYWORDS

}  // namespace

PyTypeObject ToviImageType = [] {
    PyTypeObject type = {PyVarObject_HEAD_INIT(nullptr, 0)};
    type.tp_name = "tovi.ToviImage";
    type.tp_basicsize = sizeof(ImageObject);
    type.tp_dealloc = imageDealloc;
    type.tp_as_sequence = &imageSequence;
    type.tp_as_buffer = &imageAsBuffer;
    type.tp_flags = Py_TPFLAGS_DEFAULT;
    type.tp_doc =
        "A floating-point RGBA image.\n\n * ToviImage(image) -> a copy of another ToviImage\n * ToviImage(buffer, "
        "type, renderer=None) -> decoded from 'png' or 'jpeg' bytes\n * ToviImage(width, height) -> transparent black "
        "image of the size\n";
    type.tp_methods = imageMethods;
    type.tp_getset = imageGetSet;
    type.tp_init = imageInit;
    return type;
}();

PyObject* newImageWrapper(ToviImage* handle, int x, int y, const char* host) {
    PyObject* self = PyType_GenericAlloc(&ToviImageType, 0);
    if (!self) {
        if (handle && sdkLibraryLoaded()) SdkApi.C_memory_free(handle);
        return nullptr;
    }
    ImageObject* image = asImage(self);
    setImage(image, handle);
    image->x = x;
    image->y = y;
    if (host && !(image->host = PyUnicode_DecodeUTF8(host, static_cast<Py_ssize_t>(std::strlen(host)), "replace"))) {
        Py_DECREF(self);
        return nullptr;
    }
    return self;
}

}  // namespace tovi
