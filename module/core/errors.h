// The shared raisers: every one sets the Python error and returns null (or -1 for requireSdk).
#pragma once

#define PY_SSIZE_T_CLEAN
#include <Python.h>

namespace tovi {

class SdkCharString;

// 0 when the SDK may be called; otherwise ImportError with the load report, and -1.
int requireSdk();
// ImportError with the load report.
PyObject* raiseSdkLoadError();

// Replaces whatever error is pending (the argument parser's, typically) with `type(message)`.
PyObject* replaceError(PyObject* type, const char* message);
// replaceError for slots that answer -1.
inline int failWith(PyObject* type, const char* message) {
    replaceError(type, message);
    return -1;
}

PyObject* raiseImageOperationFailed();
PyObject* raisePropertyNameNotText();
// KeyError(name) for KeyError, otherwise `type` with the property access message.
PyObject* raisePropertyAccessError(PyObject* type, const char* name);
// The base Exception with the SDK's error text, replacing any pending error.
PyObject* raiseSdkErrorText(const SdkCharString& text);
PyObject* raiseSdkBroken();

}  // namespace tovi
