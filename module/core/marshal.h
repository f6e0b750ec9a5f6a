// Owning guards for everything that crosses the SDK boundary, so that "released on every path"
// holds by construction: Python references, SDK memory blocks, SDK text records, SDK vectors,
// and scopes that run without the interpreter lock.
#pragma once

#define PY_SSIZE_T_CLEAN
#include <Python.h>

#include <cstdint>

#include "core/sdk_api.h"

namespace tovi {

// An owned Python reference.
class PyRef {
public:
    PyRef() = default;
    explicit PyRef(PyObject* object) : object_(object) {}
    PyRef(PyRef&& other) noexcept : object_(other.release()) {}
    PyRef& operator=(PyRef&& other) noexcept {
        reset(other.release());
        return *this;
    }
    PyRef(const PyRef&) = delete;
    PyRef& operator=(const PyRef&) = delete;
    ~PyRef() { Py_XDECREF(object_); }

    PyObject* get() const { return object_; }
    explicit operator bool() const { return object_ != nullptr; }
    PyObject* release() {
        PyObject* object = object_;
        object_ = nullptr;
        return object;
    }
    void reset(PyObject* object = nullptr) {
        PyObject* old = object_;
        object_ = object;
        Py_XDECREF(old);
    }

private:
    PyObject* object_ = nullptr;
};

// A block from the SDK allocator, handed back with C_memory_free.
template <typename T = void>
class SdkBlock {
public:
    SdkBlock() = default;
    explicit SdkBlock(T* block) : block_(block) {}
    SdkBlock(SdkBlock&& other) noexcept : block_(other.block_) { other.block_ = nullptr; }
    SdkBlock(const SdkBlock&) = delete;
    SdkBlock& operator=(const SdkBlock&) = delete;
    ~SdkBlock() { reset(); }

    // For an SDK out-parameter: the address to fill.
    T** out() {
        reset();
        return &block_;
    }
    T* get() const { return block_; }
    T* operator->() const { return block_; }
    // Hands the block over to a new owner.
    T* release() {
        T* block = block_;
        block_ = nullptr;
        return block;
    }
    explicit operator bool() const { return block_ != nullptr; }
    void reset(T* block = nullptr) {
        if (block_) SdkApi.C_memory_free(const_cast<void*>(static_cast<const void*>(block_)));
        block_ = block;
    }

private:
    T* block_ = nullptr;
};

// An SDK text record on the caller's side: zeroed for the SDK to fill, released on every path.
class SdkCharString {
public:
    SdkCharString() = default;
    SdkCharString(const SdkCharString&) = delete;
    SdkCharString& operator=(const SdkCharString&) = delete;
    ~SdkCharString() { SdkApi.releaseCharString(&record_); }

    ToviCharString* out() { return &record_; }
    // Never null: an empty record reads as "".
    const char* text() const;
    size_t length() const { return SdkApi.getCharStringLength(&record_); }
    // A new str, or null with the Python error set.
    PyObject* toPython() const;

private:
    ToviCharString record_{};
};

// An SDK vector handle, released exactly once.
class SdkVector {
public:
    explicit SdkVector(ToviVector* vector) : vector_(vector) {}
    SdkVector(const SdkVector&) = delete;
    SdkVector& operator=(const SdkVector&) = delete;
    ~SdkVector() {
        if (vector_) SdkApi.releaseVector(vector_);
    }

    int size() const { return vector_ ? SdkApi.getVectorSize(vector_) : 0; }
    // Hands the vector over to a new owner.
    ToviVector* release() {
        ToviVector* vector = vector_;
        vector_ = nullptr;
        return vector;
    }
    const void* element(int index) const { return SdkApi.getVectorElement(vector_, index); }

private:
    ToviVector* vector_;
};

// The interpreter lock is released for the lifetime of the scope; nothing inside may touch a
// Python object.
class ReleasedGil {
public:
    ReleasedGil() : state_(PyEval_SaveThread()) {}
    ReleasedGil(const ReleasedGil&) = delete;
    ReleasedGil& operator=(const ReleasedGil&) = delete;
    ~ReleasedGil() { PyEval_RestoreThread(state_); }

private:
    PyThreadState* state_;
};

// Keeps the pending exception aside for the lifetime of the scope (cleanup code may call into
// Python meanwhile) and puts it back at the end.
class PendingError {
public:
    PendingError() { PyErr_Fetch(&type_, &value_, &traceback_); }
    PendingError(const PendingError&) = delete;
    PendingError& operator=(const PendingError&) = delete;
    ~PendingError() { PyErr_Restore(type_, value_, traceback_); }

private:
    PyObject* type_;
    PyObject* value_;
    PyObject* traceback_;
};

// A str from SDK text; None for null.
PyObject* textOrNone(const char* text);

// (major, minor, patch) of a packed SDK version.
PyObject* versionTuple(uint32_t packedVersion);

// A list from an SDK vector, one element through `convert(const void*)` (a new reference or
// null). The vector is released on every path; a count below 1 gives an empty list.
template <typename Convert>
PyObject* vectorToList(ToviVector* handle, Convert convert) {
    SdkVector vector(handle);
    int count = vector.size();
    PyRef list(PyList_New(count > 0 ? count : 0));
    if (!list) return nullptr;
    for (int index = 0; index < count; ++index) {
        PyObject* item = convert(vector.element(index));
        if (!item) return nullptr;
        PyList_SET_ITEM(list.get(), index, item);
    }
    return list.release();
}

// A list of the texts of a string vector that its owner keeps.
PyObject* vectorTexts(const ToviVector* vector);

// The element conversion of string vectors.
PyObject* vectorStringElement(const void* element);

// `names` (a list, taken over; null passes through) followed by the names of `methods`: the
// __dir__ of objects whose attributes are names of the scene first.
PyObject* namesThenMethods(PyObject* names, const PyMethodDef* methods);

// A list of str from a packed string list: `count` zero-terminated texts back to back in one
// SDK block, which is freed on every path.
PyObject* packedStringsToList(int count, char* block);

}  // namespace tovi
