#include "core/errors.h"

#include "core/marshal.h"
#include "core/sdk_loader.h"

namespace tovi {

PyObject* raiseSdkLoadError() {
    const char* report = sdkLoadReport();
    PyErr_SetString(PyExc_ImportError, report ? report : "Error loading SDK Library.");
    return nullptr;
}

int requireSdk() {
    if (ensureSdkLoaded() == 0) return 0;
    raiseSdkLoadError();
    return -1;
}

PyObject* replaceError(PyObject* type, const char* message) {
    PyErr_Clear();
    PyErr_SetString(type, message);
    return nullptr;
}

PyObject* raiseImageOperationFailed() {
    PyErr_SetString(PyExc_RuntimeError, "Image operation failed.");
    return nullptr;
}

PyObject* raisePropertyNameNotText() {
    PyErr_SetString(PyExc_TypeError, "You must provide a property name as a text string.");
    return nullptr;
}

PyObject* raisePropertyAccessError(PyObject* type, const char* name) {
    if (type == PyExc_KeyError) {
        PyRef key(PyUnicode_FromString(name));
        if (key) PyErr_SetObject(PyExc_KeyError, key.get());
        return nullptr;
    }
    PyErr_Format(type, "Error accessing property '%s' or wrong property name", name);
    return nullptr;
}

PyObject* raiseSdkErrorText(const SdkCharString& text) { return replaceError(PyExc_Exception, text.text()); }

PyObject* raiseSdkBroken() {
    PyErr_SetString(PyExc_RuntimeError, "Internal error (the SDK is broken)");
    return nullptr;
}

}  // namespace tovi
