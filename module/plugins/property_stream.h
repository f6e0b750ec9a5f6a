// The property value stream: the tagged little-endian byte format in which property values
// travel to and from the SDK.
#pragma once

#define PY_SSIZE_T_CLEAN
#include <Python.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace tovi {

// A byte buffer for one encoded value: 64 bytes inline, then a heap block that grows by half.
// Encoding never raises: a value it cannot encode, or a failed growth, sets the failure flag.
class PropertyStream {
public:
    PropertyStream() = default;
    PropertyStream(const PropertyStream&) = delete;
    PropertyStream& operator=(const PropertyStream&) = delete;
    ~PropertyStream() {
        if (bytes_ != inline_) PyMem_Free(bytes_);
    }

    bool failed() const { return failed_; }
    void fail() { failed_ = true; }
    const uint8_t* data() const { return bytes_; }
    size_t size() const { return used_; }

    void write(const void* bytes, size_t count);
    template <typename T>
    void put(T value) {
        write(&value, sizeof value);
    }
    void putZeros(size_t count);

private:
    bool reserve(size_t count);

    uint8_t inline_[64];
    uint8_t* bytes_ = inline_;
    size_t capacity_ = sizeof inline_;
    size_t used_ = 0;
    bool failed_ = false;
};

// Appends one item for a Python value (sets the failure flag for a value without an encoding).
void encodePropertyValue(PropertyStream& stream, PyObject* value);

// Reads one item at the cursor and advances past it. A new reference, or null with the Python
// error set (a stream that ends inside an item is the SDK's fault). Unknown codes give None.
PyObject* decodePropertyValue(PyObject* renderer, const uint8_t*& cursor, const uint8_t* end);

}  // namespace tovi
