// Helpers of the embedded-interpreter tests.
#pragma once

#define PY_SSIZE_T_CLEAN
#include <Python.h>

#include <dlfcn.h>

#include <string>

#include "core/marshal.h"

namespace tovi::testing {

extern PyObject* module;

// The reference SDK's count of live allocator blocks; -1 when the library cannot be asked.
inline long long liveBlocks() {
    static auto* count = [] {
        void* library = dlopen(TOVI_TEST_SDK_FOLDER "/libToviSDKLibrary.so", RTLD_NOW | RTLD_NOLOAD);
        return reinterpret_cast<long long (*)(const char*)>(library ? dlsym(library, "ToviRef_liveCount") : nullptr);
    }();
    return count ? count("blocks") : -1;
}

// Runs Python code with `names` as its globals; the value of the last expression statement is
// bound to `result` by the code itself. Fails the test on an exception.
inline PyObject* run(const char* code, PyObject* names) {
    PyRef outcome(PyRun_String(code, Py_file_input, names, names));
    if (!outcome) {
        PyErr_Print();
        return nullptr;
    }
    return PyDict_GetItemString(names, "result");
}

// A globals dictionary with builtins, the module as `tovi`, and `extra` under `name`.
inline PyObject* namespaceWith(const char* name, PyObject* extra) {
    PyObject* names = PyDict_New();
    PyDict_SetItemString(names, "__builtins__", PyEval_GetBuiltins());
    PyDict_SetItemString(names, "tovi", module);
    if (name) PyDict_SetItemString(names, name, extra);
    return names;
}

// The text of an exception that `code` raises, "" when it raises none.
inline std::string raisedText(const char* code, PyObject* names) {
    PyRef outcome(PyRun_String(code, Py_file_input, names, names));
    if (outcome) return "";
    PyObject *type, *value, *traceback;
    PyErr_Fetch(&type, &value, &traceback);
    PyErr_NormalizeException(&type, &value, &traceback);
    PyRef text(PyObject_Str(value));
    std::string result = std::string(reinterpret_cast<PyTypeObject*>(type)->tp_name) + ": " + PyUnicode_AsUTF8(text.get());
    Py_XDECREF(type);
    Py_XDECREF(value);
    Py_XDECREF(traceback);
    return result;
}

}  // namespace tovi::testing
