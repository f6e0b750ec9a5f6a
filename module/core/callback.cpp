#include "core/callback.h"

#include "core/marshal.h"

namespace tovi {

int storeCallback(PyObject** slot, PyObject* callable) {
    if (!callable || callable == Py_None) {
        Py_CLEAR(*slot);
        return 0;
    }
    if (!PyCallable_Check(callable)) {
        PyErr_SetString(PyExc_RuntimeError, "You must provide a callback function.");
        return -1;
    }
    PyObject* old = *slot;
    Py_INCREF(callable);
    *slot = callable;
    Py_XDECREF(old);
    return 1;
}

void reportCallbackException(PyObject* callable) {
    if (!PyErr_Occurred()) return;
    if (PyErr_ExceptionMatches(PyExc_SystemExit)) {
        PyErr_Clear();
        return;
    }
    {
        // The header goes to sys.stderr (the process's standard error when sys.stderr is
        // missing) while the exception waits to be printed after it.
        PendingError pending;
        PySys_FormatStderr("Unhandled exception in callback %R\n", callable);
        PyErr_Clear();
    }
    PyErr_PrintEx(0);
}

PyObject* invokeCallback(PyObject* callable, PyObject* args) {
    PyObject* result = PyObject_CallObject(callable, args);
    if (!result) reportCallbackException(callable);
    return result;
}

void invokeCallbackDiscardingResult(PyObject* callable, PyObject* args) { Py_XDECREF(invokeCallback(callable, args)); }

}  // namespace tovi
