// tovi.FloatList: 32-bit floats, widened to Python floats on reading.
#include <cstdio>
#include <cstring>

#include "core/errors.h"
#include "lists/list_kinds.h"

namespace tovi {

namespace {

void store(char* element, double value) {
    float narrow = static_cast<float>(value);
    std::memcpy(element, &narrow, sizeof narrow);
}

float load(const char* element) {
    float value;
    std::memcpy(&value, element, sizeof value);
    return value;
}

PyObject* getItem(PyObject*, const char* element) { return PyFloat_FromDouble(load(element)); }

int setItem(PyObject*, PyObject* value, char* element) {
    double number = PyFloat_AsDouble(value);
    if (number == -1.0 && PyErr_Occurred()) return -1;
    store(element, number);
    return 0;
}

int storeSourceItem(PyObject*, PyObject* item, char* element) {
    if (PyFloat_CheckExact(item)) {
        store(element, PyFloat_AS_DOUBLE(item));
        return 0;
    }
    if (!PyNumber_Check(item)) return failWith(PyExc_TypeError, "Source must contain only numbers");
    double number = PyFloat_AsDouble(item);
    if (number == -1.0 && PyErr_Occurred()) return failWith(PyExc_TypeError, "Source must contain only numbers");
    store(element, number);
    return 0;
}

int formatElement(PyObject*, const char* element, const char* separator, char* buffer, size_t size) {
    return std::snprintf(buffer, size, "%.7g%s", static_cast<double>(load(element)), separator);
}

PyObject* append(PyObject* self, PyObject* value) {
    if (!PyNumber_Check(value)) return replaceError(PyExc_TypeError, "Unsupported type");
    double number = PyFloat_AsDouble(value);
    if (number == -1.0 && PyErr_Occurred()) return replaceError(PyExc_ValueError, "Value out of range");
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

TypedListType FloatListType = makeListKind("tovi.FloatList", "Efficient implementation of Tovi FloatList.\n", methods, nullptr,
                                       {4, getItem, setItem, storeSourceItem, "Source must contain only numbers", "FloatList(",
                                        formatElement, 30});

}  // namespace tovi
