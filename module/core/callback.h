// Python callbacks stored in slots and called from SDK threads.
#pragma once

#define PY_SSIZE_T_CLEAN
#include <Python.h>

namespace tovi {

// Stores `callable` in `*slot`: None (or null) clears the slot; anything else must be callable
// (RuntimeError otherwise, the slot unchanged). The old object is released after the new one
// is stored. Returns 1 when a callable is now stored, 0 when the slot was cleared, -1 on error.
int storeCallback(PyObject** slot, PyObject* callable);

// storeCallback, answering the native trampoline to register with the SDK: `trampoline` when a
// callable is now stored, null when the slot was cleared. -1 on error, as storeCallback.
template <typename Trampoline>
int setCallbackSlot(PyObject** slot, PyObject* callable, Trampoline trampoline, Trampoline* toRegister) {
    int stored = storeCallback(slot, callable);
    if (stored >= 0) *toRegister = stored ? trampoline : nullptr;
    return stored;
}

// Calls `callable(*args)` with the interpreter lock held. An exception never propagates:
// SystemExit is dropped silently, any other is reported on standard error. The first form
// returns the result (null after an exception), the second drops it.
PyObject* invokeCallback(PyObject* callable, PyObject* args);
void invokeCallbackDiscardingResult(PyObject* callable, PyObject* args);

// Reports and clears the pending exception of a failed callback, as invokeCallback does.
void reportCallbackException(PyObject* callable);

}  // namespace tovi
