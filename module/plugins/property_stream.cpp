#include "plugins/property_stream.h"

#include "core/errors.h"
#include "core/marshal.h"
#include "lists/list_kinds.h"
#include "plugins/plugin.h"
#include "values/color.h"
#include "values/matrix.h"
#include "values/transform.h"
#include "values/vector.h"

namespace tovi {

// ---- the buffer ----

bool PropertyStream::reserve(size_t count) {
    if (failed_) return false;
    if (used_ + count <= capacity_) return true;
    size_t capacity = bytes_ == inline_ ? 128 : capacity_;
    while (capacity < used_ + count) capacity += capacity / 2;
    void* grown = bytes_ == inline_ ? PyMem_Malloc(capacity) : PyMem_Realloc(bytes_, capacity);
    if (!grown) {
        // A stream with missing bytes must never reach the SDK.
        failed_ = true;
        return false;
    }
    if (bytes_ == inline_) std::memcpy(grown, inline_, used_);
    bytes_ = static_cast<uint8_t*>(grown);
    capacity_ = capacity;
    return true;
}

void PropertyStream::write(const void* bytes, size_t count) {
    if (!reserve(count)) return;
    std::memcpy(bytes_ + used_, bytes, count);
    used_ += count;
}

void PropertyStream::putZeros(size_t count) {
    if (!reserve(count)) return;
    std::memset(bytes_ + used_, 0, count);
    used_ += count;
}

namespace {

enum Code : uint32_t {
    codeInt = 0,
    codeFloat = 1,
    codeDouble = 2,
    codeBool = 3,
    codeVector = 4,
    codeColor = 5,
    codeAColor = 6,
    codeMatrix = 7,
    codeTransform = 8,
    codeString = 9,
    codePlugin = 10,
    codeList = 12,
    codeMixedTransform = 28,
    codeIntList = 100,
    codeFloatList = 101,
    codeVectorList = 104,
    codeColorList = 105,
    codeStringList = 109,
    codePluginList = 110,
    codeMixedTransformList = 128,
    codeStringAddress = 200,
    codePluginOutput = 210,
    codeIntListAddress = 2000,
    codeFloatListAddress = 2001,
    codeVectorListAddress = 2004,
    codeColorListAddress = 2005,
    codeTransformListAddress = 2008,
};

// Padded to the next multiple of four strictly above the length.
size_t paddedLength(uint32_t length) { return (static_cast<size_t>(length) + 4) & ~static_cast<size_t>(3); }

void putFloats(PropertyStream& stream, const double* values, int count) {
    for (int index = 0; index < count; ++index) stream.put(static_cast<float>(values[index]));
}

void putVector(PropertyStream& stream, const Vec3& value) { putFloats(stream, &value.x, 3); }

void putMatrix(PropertyStream& stream, const Mat3& value) {
    putVector(stream, value.c0);
    putVector(stream, value.c1);
    putVector(stream, value.c2);
}

// Integers that fit 32 unsigned bits go as code 0 (from 2**31 up they arrive negative); every
// other number, negative integers included, goes as a float.
void putNumber(PropertyStream& stream, PyObject* value) {
    // Exact floats and ints take the same paths without a failed conversion's exception.
    if (PyFloat_CheckExact(value)) {
        stream.put<uint32_t>(codeFloat);
        stream.put(static_cast<float>(PyFloat_AS_DOUBLE(value)));
        return;
    }
    if (PyLong_CheckExact(value)) {
        int overflow = 0;
        long long integer = PyLong_AsLongLongAndOverflow(value, &overflow);
        if (!overflow && static_cast<unsigned long long>(integer) <= 0xFFFFFFFFull) {
            stream.put<uint32_t>(codeInt);
            stream.put(static_cast<uint32_t>(integer));
            return;
        }
    }
    long long integer = PyLong_AsLongLong(value);
    if (!(integer == -1 && PyErr_Occurred()) && static_cast<unsigned long long>(integer) <= 0xFFFFFFFFull) {
        stream.put<uint32_t>(codeInt);
        stream.put(static_cast<uint32_t>(integer));
        return;
    }
    PyErr_Clear();
    double number = PyFloat_AsDouble(value);
    PyErr_Clear();
    stream.put<uint32_t>(codeFloat);
    stream.put(static_cast<float>(number));
}

void putString(PropertyStream& stream, PyObject* value) {
    Py_ssize_t length;
    const char* text = PyUnicode_AsUTF8AndSize(value, &length);
    if (!text || length > UINT32_MAX) {
        PyErr_Clear();
        stream.fail();
        return;
    }
    stream.put<uint32_t>(codeString);
    stream.put(static_cast<uint32_t>(length));
    stream.write(text, length);
    stream.putZeros(paddedLength(static_cast<uint32_t>(length)) - length);
}

struct ListAddressCode {
    TypedListType* kind;
    uint32_t code;
};

bool putTypedList(PropertyStream& stream, PyObject* value) {
    const ListAddressCode codes[] = {
        {&IntListType, codeIntListAddress},       {&FloatListType, codeFloatListAddress},
        {&VectorListType, codeVectorListAddress}, {&ColorListType, codeColorListAddress},
        {&TransformListType, codeTransformListAddress},
    };
    for (const auto& entry : codes) {
        if (!PyObject_TypeCheck(value, &entry.kind->type)) continue;
        // The SDK reads the storage during the call: the list must not change meanwhile.
        stream.put(entry.code);
        stream.put(static_cast<uint32_t>(Py_SIZE(value)));
        stream.put(static_cast<uint64_t>(reinterpret_cast<uintptr_t>(asList(value)->data)));
        return true;
    }
    if (PyObject_TypeCheck(value, &PluginListType.type)) {
        stream.put<uint32_t>(codePluginList);
        stream.put(static_cast<uint32_t>(Py_SIZE(value)));
        stream.write(asList(value)->data, Py_SIZE(value) * sizeof(uint64_t));
        return true;
    }
    return false;
}

void putSequence(PropertyStream& stream, PyObject* value) {
    Py_ssize_t count = PySequence_Size(value);
    if (count < 0 || count > UINT32_MAX) {
        PyErr_Clear();
        stream.fail();
        return;
    }
    stream.put<uint32_t>(codeList);
    stream.put(static_cast<uint32_t>(count));
    for (Py_ssize_t index = 0; index < count && !stream.failed(); ++index) {
        PyRef item(PySequence_GetItem(value, index));
        if (!item) {
            PyErr_Clear();
            stream.fail();
            return;
        }
        encodePropertyValue(stream, item.get());
    }
}

}  // namespace

void encodePropertyValue(PropertyStream& stream, PyObject* value) {
    if (stream.failed()) return;
    if (Py_IS_TYPE(value, &PyBool_Type)) {
        stream.put<uint32_t>(codeBool);
        stream.put<uint32_t>(value == Py_True ? 1 : 0);
    } else if (PyNumber_Check(value)) {
        putNumber(stream, value);
    } else if (isAColor(value)) {
        stream.put<uint32_t>(codeAColor);
        putFloats(stream, colorComponents(value), 4);
    } else if (isColor(value)) {
        stream.put<uint32_t>(codeColor);
        putFloats(stream, colorComponents(value), 3);
    } else if (isVector(value)) {
        stream.put<uint32_t>(codeVector);
        putVector(stream, vectorValue(value));
    } else if (isMatrix(value)) {
        stream.put<uint32_t>(codeMatrix);
        putMatrix(stream, matrixValue(value));
    } else if (isTransform(value)) {
        // The offset keeps double precision.
        stream.put<uint32_t>(codeMixedTransform);
        putMatrix(stream, transformValue(value).matrix);
        stream.write(&transformValue(value).offset, 3 * sizeof(double));
    } else if (isPluginRef(value)) {
        stream.put<uint32_t>(codePluginOutput);
        stream.put(pluginID(value));
        stream.put(outputIndex(value));
    } else if (isPlugin(value)) {
        stream.put<uint32_t>(codePlugin);
        stream.put(pluginID(value));
    } else if (value == Py_None) {
        stream.put<uint32_t>(codePlugin);
        stream.put(noPlugin);
    } else if (PyUnicode_Check(value)) {
        putString(stream, value);
    } else if (putTypedList(stream, value)) {
    } else if (PySequence_Check(value)) {
        putSequence(stream, value);
    } else {
        stream.fail();
    }
}

// ---- decoding ----

namespace {

class Reader {
public:
    Reader(const uint8_t*& cursor, const uint8_t* end) : cursor_(cursor), end_(end) {}

    bool has(size_t count) const { return static_cast<size_t>(end_ - cursor_) >= count; }
    template <typename T>
    bool read(T& value) {
        if (!has(sizeof value)) return false;
        std::memcpy(&value, cursor_, sizeof value);
        cursor_ += sizeof value;
        return true;
    }
    const uint8_t*& cursor() { return cursor_; }
    const uint8_t* end() const { return end_; }

private:
    const uint8_t*& cursor_;
    const uint8_t* end_;
};

PyObject* truncatedStream() { return raiseSdkBroken(); }

// A value object from `size` packed bytes, through its builder at the cursor.
PyObject* fixedValue(Reader& reader, size_t size, PyObject* (*build)(const uint8_t*& cursor)) {
    if (!reader.has(size)) return truncatedStream();
    return build(reader.cursor());
}

// A typed list of `count` elements of `size` bytes, copied from the stream.
PyObject* inlineList(Reader& reader, TypedListType& kind, size_t size) {
    uint32_t count;
    if (!reader.read(count) || !reader.has(static_cast<size_t>(count) * size)) return truncatedStream();
    PyObject* list = newListCopying(&kind.type, count, reader.cursor());
    reader.cursor() += static_cast<size_t>(count) * size;
    return list;
}

bool readText(Reader& reader, const char*& text, uint32_t& length) {
    if (!reader.read(length) || !reader.has(paddedLength(length))) return false;
    text = reinterpret_cast<const char*>(reader.cursor());
    reader.cursor() += paddedLength(length);
    return true;
}

PyObject* decodeList(PyObject* renderer, Reader& reader) {
    uint32_t count;
    if (!reader.read(count)) return truncatedStream();
    PyRef list(PyList_New(0));
    if (!list) return nullptr;
    for (uint32_t index = 0; index < count; ++index) {
        PyRef item(decodePropertyValue(renderer, reader.cursor(), reader.end()));
        if (!item || PyList_Append(list.get(), item.get()) < 0) return nullptr;
    }
    return list.release();
}

PyObject* decodeStringList(Reader& reader) {
    uint32_t count;
    if (!reader.read(count)) return truncatedStream();
    PyRef list(PyList_New(0));
    if (!list) return nullptr;
    for (uint32_t index = 0; index < count; ++index) {
        const char* text;
        uint32_t length;
        if (!readText(reader, text, length)) return truncatedStream();
        PyRef item(PyUnicode_FromStringAndSize(text, length));
        if (!item || PyList_Append(list.get(), item.get()) < 0) return nullptr;
    }
    return list.release();
}

// 60-byte elements (nine floats, three doubles) become packed transforms with float offsets.
PyObject* decodeMixedTransformList(Reader& reader) {
    constexpr size_t sourceSize = 9 * sizeof(float) + 3 * sizeof(double);
    uint32_t count;
    if (!reader.read(count) || !reader.has(static_cast<size_t>(count) * sourceSize)) return truncatedStream();
    void* data = nullptr;
    PyObject* list = newListWithRoom(&TransformListType.type, count, &data);
    if (!list) return nullptr;
    auto* target = static_cast<float*>(data);
    const uint8_t* source = reader.cursor();
    for (uint32_t index = 0; index < count; ++index, source += sourceSize, target += 12) {
        std::memcpy(target, source, 9 * sizeof(float));
        double offset[3];
        std::memcpy(offset, source + 9 * sizeof(float), sizeof offset);
        for (int axis = 0; axis < 3; ++axis) target[9 + axis] = static_cast<float>(offset[axis]);
    }
    reader.cursor() = source;
    return list;
}

PyObject* decodePluginList(PyObject* renderer, Reader& reader) {
    uint32_t count;
    if (!reader.read(count) || !reader.has(static_cast<size_t>(count) * sizeof(uint64_t))) return truncatedStream();
    PyObject* list = newPluginList(renderer, count, reader.cursor());
    reader.cursor() += static_cast<size_t>(count) * sizeof(uint64_t);
    return list;
}

}  // namespace

PyObject* decodePropertyValue(PyObject* renderer, const uint8_t*& cursor, const uint8_t* end) {
    Reader reader(cursor, end);
    uint32_t code;
    if (!reader.read(code)) return truncatedStream();
    switch (code) {
        case codeInt: {
            int32_t value;
            return reader.read(value) ? PyLong_FromLong(value) : truncatedStream();
        }
        case codeFloat: {
            float value;
            return reader.read(value) ? PyFloat_FromDouble(value) : truncatedStream();
        }
        case codeDouble: {
            double value;
            return reader.read(value) ? PyFloat_FromDouble(value) : truncatedStream();
        }
        case codeBool: {
            int32_t value;
            return reader.read(value) ? PyBool_FromLong(value != 0) : truncatedStream();
        }
        case codeVector: return fixedValue(reader, 12, vectorFromFloats);
        case codeColor: return fixedValue(reader, 12, colorFromFloats);
        case codeAColor: return fixedValue(reader, 16, acolorFromFloats);
        case codeMatrix: return fixedValue(reader, 36, matrixFromFloats);
        case codeTransform: return fixedValue(reader, 48, transformFromFloats);
        case codeMixedTransform: return fixedValue(reader, 60, transformFromMixedRecord);
        case codeString: {
            const char* text;
            uint32_t length;
            return readText(reader, text, length) ? PyUnicode_FromStringAndSize(text, length) : truncatedStream();
        }
        case codePlugin: {
            uint64_t id;
            return reader.read(id) ? pluginWrapper(renderer, id, 0) : truncatedStream();
        }
        case codeList: return decodeList(renderer, reader);
        case codeIntList: return inlineList(reader, IntListType, 4);
        case codeFloatList: return inlineList(reader, FloatListType, 4);
        case codeVectorList: return inlineList(reader, VectorListType, 12);
        case codeColorList: return inlineList(reader, ColorListType, 12);
        case codeStringList: return decodeStringList(reader);
        case codePluginList: return decodePluginList(renderer, reader);
        case codeMixedTransformList: return decodeMixedTransformList(reader);
        case codeStringAddress: {
            uint64_t address;
            if (!reader.read(address)) return truncatedStream();
            return textOrNone(reinterpret_cast<const char*>(static_cast<uintptr_t>(address)));
        }
        case codePluginOutput: {
            uint64_t id;
            int32_t output;
            if (!reader.read(id) || !reader.read(output)) return truncatedStream();
            return pluginWrapper(renderer, id, output);
        }
        default: Py_RETURN_NONE;  // nothing past the code is consumed
    }
}

}  // namespace tovi
