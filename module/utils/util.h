// tovi.Util: static functions over a scene's reference graph, and the IES intensity query.
#pragma once

#define PY_SSIZE_T_CLEAN
#include <Python.h>

namespace tovi {

extern PyTypeObject UtilType;

}  // namespace tovi
