#pragma once

#define PY_SSIZE_T_CLEAN
#include <Python.h>

namespace tovi {

// The module-level functions, in method-table order.
extern PyMethodDef moduleFunctions[];

}  // namespace tovi
