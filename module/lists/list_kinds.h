// The element list kinds.
#pragma once

#include "lists/typed_list.h"

namespace tovi {

extern TypedListType IntListType;
extern TypedListType FloatListType;
extern TypedListType VectorListType;
extern TypedListType ColorListType;
extern TypedListType TransformListType;
extern TypedListType PluginListType;

// A PluginList of `count` identifiers bound to `renderer`: copied, or taking over an SDK array.
PyObject* newPluginList(PyObject* renderer, Py_ssize_t count, const void* ids);
PyObject* adoptPluginList(PyObject* renderer, void* ids, Py_ssize_t count);

}  // namespace tovi
