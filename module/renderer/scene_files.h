// The renderer's scene file methods: load, append (files and texts, filtered or not), export,
// include paths, clearing, deleting plugins, serializing and the saved-data files.
#pragma once

#define PY_SSIZE_T_CLEAN
#include <Python.h>

namespace tovi {

PyObject* rendererLoad(PyObject* self, PyObject* args);
PyObject* rendererLoadAsText(PyObject* self, PyObject* args);
PyObject* rendererLoadFiltered(PyObject* self, PyObject* args);
PyObject* rendererLoadAsTextFiltered(PyObject* self, PyObject* args);
PyObject* rendererAppend(PyObject* self, PyObject* args);
PyObject* rendererAppendAsText(PyObject* self, PyObject* args);
PyObject* rendererAppendFiltered(PyObject* self, PyObject* args);
PyObject* rendererAppendAsTextFiltered(PyObject* self, PyObject* args);
PyObject* rendererExport(PyObject* self, PyObject* args);
PyObject* rendererSetIncludePaths(PyObject* self, PyObject* args, PyObject* keywords);
PyObject* rendererClearScene(PyObject* self, PyObject* unused);
PyObject* rendererDeletePlugins(PyObject* self, PyObject* args);
PyObject* rendererSerializeScene(PyObject* self, PyObject* unused);
PyObject* rendererSaveIrradianceMapFile(PyObject* self, PyObject* args);
PyObject* rendererSaveLightCacheFile(PyObject* self, PyObject* args);
PyObject* rendererSavePhotonMapFile(PyObject* self, PyObject* args);
PyObject* rendererSaveCausticsFile(PyObject* self, PyObject* args);

}  // namespace tovi

// Their entries of the renderer's method table.
#define TOVI_SCENE_FILE_METHODS                                                                            \
    {"load", tovi::rendererLoad, METH_VARARGS, nullptr},                                                   \
    {"loadAsText", tovi::rendererLoadAsText, METH_VARARGS, nullptr},                                       \
    {"loadFiltered", tovi::rendererLoadFiltered, METH_VARARGS, nullptr},                                   \
    {"loadAsTextFiltered", tovi::rendererLoadAsTextFiltered, METH_VARARGS, nullptr},                       \
    {"append", tovi::rendererAppend, METH_VARARGS, nullptr},                                               \
    {"appendAsText", tovi::rendererAppendAsText, METH_VARARGS, nullptr},                                   \
    {"appendFiltered", tovi::rendererAppendFiltered, METH_VARARGS, nullptr},                               \
    {"appendAsTextFiltered", tovi::rendererAppendAsTextFiltered, METH_VARARGS, nullptr},                   \
    {"export", tovi::rendererExport, METH_VARARGS, nullptr},                                               \
    {"setIncludePaths", reinterpret_cast<PyCFunction>(reinterpret_cast<void (*)()>(tovi::rendererSetIncludePaths)), \
     METH_VARARGS | METH_KEYWORDS, nullptr},                                                               \
    {"clearScene", tovi::rendererClearScene, METH_NOARGS, nullptr},                                        \
    {"deletePlugins", tovi::rendererDeletePlugins, METH_VARARGS, nullptr},                                 \
    {"serializeScene", tovi::rendererSerializeScene, METH_NOARGS, nullptr},                                \
    {"saveIrradianceMapFile", tovi::rendererSaveIrradianceMapFile, METH_VARARGS, nullptr},                 \
    {"saveLightCacheFile", tovi::rendererSaveLightCacheFile, METH_VARARGS, nullptr},                       \
    {"savePhotonMapFile", tovi::rendererSavePhotonMapFile, METH_VARARGS, nullptr},                         \
    {"saveCausticsFile", tovi::rendererSaveCausticsFile, METH_VARARGS, nullptr},
