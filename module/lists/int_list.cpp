// tovi.IntList: signed 32-bit integers.
#include <climits>
#include <cstdio>
#include <cstring>

#include "core/errors.h"
#include "core/marshal.h"
#include "lists/list_kinds.h"

namespace tovi {

namespace {

void store(char* element, long long value) {
    int32_t narrow = static_cast<int32_t>(value);
    std::memcpy(element, &narrow, sizeof narrow);
}

int32_t load(const char* element) {
    int32_t value;
    std::memcpy(&value, element, sizeof value);
    return value;
}

// An integer-like object's value when it fits 32 bits; false otherwise (error pending or not).
bool int32Value(PyObject* object, long long& value) {
    PyRef number(PyNumber_Index(object));
    if (!number) return false;
    int overflow = 0;
    value = PyLong_AsLongLongAndOverflow(number.get(), &overflow);
    if (overflow || (value == -1 && PyErr_Occurred())) return false;
    return value >= INT32_MIN && value <= INT32_MAX;
}

PyObject* getItem(PyObject*, const char* element) { return PyLong_FromLong(load(element)); }

int setItem(PyObject*, PyObject* value, char* element) {
    long number = PyLong_AsLong(value);
    if (number == -1 && PyErr_Occurred()) return -1;
    if (number > INT32_MAX || number < INT32_MIN) {
        PyErr_SetString(PyExc_OverflowError,
                        number > INT32_MAX ? "signed integer is greater than maximum" : "signed integer is less than minimum");
        return -1;
    }
    store(element, number);
    return 0;
}

int storeSourceItem(PyObject*, PyObject* item, char* element) {
    if (!PyIndex_Check(item)) return failWith(PyExc_TypeError, "Source must contain only integers");
    long long value;
    if (!int32Value(item, value)) return failWith(PyExc_ValueError, "Source contains out of range value");
    store(element, value);
    return 0;
}

int formatElement(PyObject*, const char* element, const char* separator, char* buffer, size_t size) {
    return std::snprintf(buffer, size, "%d%s", load(element), separator);
}

// The sign of the difference in wrapping 32-bit arithmetic decides, so values more than 2**31
// apart compare inverted.
int compareRuns(const char* left, const char* right, Py_ssize_t elements, size_t) {
    for (Py_ssize_t index = 0; index < elements; ++index) {
        auto difference = static_cast<int32_t>(static_cast<uint32_t>(load(left + index * 4)) -
                                               static_cast<uint32_t>(load(right + index * 4)));
        if (difference != 0) return difference < 0 ? -1 : 1;
    }
    return 0;
}

PyObject* richCompare(PyObject* self, PyObject* other, int op) {
    return compareLists(self, other, op, &IntListType.type, compareRuns);
}

PyObject* append(PyObject* self, PyObject* value) {
    if (!PyIndex_Check(value)) return replaceError(PyExc_TypeError, "Unsupported type");
    long long number;
    if (!int32Value(value, number)) return replaceError(PyExc_ValueError, "Value out of range");
    auto write = [&](char* element) {
        store(element, number);
        return 0;
    };
    if (appendElement(self, write) < 0) return nullptr;
    Py_RETURN_NONE;
}

PyMethodDef methods[] = {
    {"append", append, METH_O, nullptr},
    {"extend", extendMethod, METH_O, nullptr},
    {nullptr, nullptr, 0, nullptr},
};

}  // namespace

TypedListType IntListType = makeListKind("tovi.IntList", "Efficient implementation of Tovi IntList.\n", methods, richCompare,
                                       {4, getItem, setItem, storeSourceItem, "Source must contain only integers", "IntList(",
                                        formatElement, 30});

}  // namespace tovi
