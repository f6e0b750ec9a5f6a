#include "utils/util.h"

#include "core/errors.h"
#include "core/marshal.h"
#include "plugins/plugin.h"

namespace tovi {

namespace {

using LinksEntry = int (*)(ToviRenderer*, ToviPluginID, int, ToviPluginLink**);

// (referencing plugin, property name, referenced plugin or output) for each link of the entry.
PyObject* pluginLinks(PyObject* args, LinksEntry entry) {
    PyObject* plugin = nullptr;
    int recursive = 0;
    if (!PyArg_ParseTuple(args, "O|i", &plugin, &recursive)) {
        return replaceError(PyExc_TypeError, "You must specify a plugin and whether the search is recursive.");
    }
    if (!isPlugin(plugin)) return replaceError(PyExc_TypeError, "You must specify a Plugin as first parameter.");
    PyObject* renderer = pluginRenderer(plugin);
    ToviRenderer* handle = pluginRendererHandle(plugin);
    SdkBlock<ToviPluginLink> links;
    int count = entry(handle, pluginID(plugin), recursive, links.out());
    if (count < 0 || !links) count = 0;
    PyRef list(PyList_New(count));
    if (!list) return nullptr;
    for (int index = 0; index < count; ++index) {
        const ToviPluginLink& link = links.get()[index];
        PyObject* tuple = PyTuple_New(3);
        if (!tuple) return nullptr;
        PyList_SET_ITEM(list.get(), index, tuple);
        const char* property = SdkApi.Tovi_ToviRenderer_getPropertyNameFromIndexByID(handle, link.referencingID, link.propertyIndex);
        PyObject* referencing = pluginWrapper(renderer, link.referencingID, 0);
        PyObject* name = PyUnicode_FromString(property ? property : "");
        PyObject* referenced = pluginWrapper(renderer, link.referencedID, link.outputIndex);
        PyTuple_SET_ITEM(tuple, 0, referencing);
        PyTuple_SET_ITEM(tuple, 1, name);
        PyTuple_SET_ITEM(tuple, 2, referenced);
        if (!referencing || !name || !referenced) return nullptr;
    }
    return list.release();
}

PyObject* getChildPlugins(PyObject*, PyObject* args) { return pluginLinks(args, SdkApi.Util_getChildPlugins); }

PyObject* getParentPlugins(PyObject*, PyObject* args) { return pluginLinks(args, SdkApi.Util_getParentPlugins); }

PyObject* getIESPrescribedIntensity(PyObject*, PyObject* args) {
    const char* path = nullptr;
    if (!PyArg_ParseTuple(args, "s", &path)) return nullptr;
    return PyFloat_FromDouble(SdkApi.Util_getIESPrescribedIntensity(path));
}

PyMethodDef utilMethods[] = {
    {"getChildPlugins", getChildPlugins, METH_VARARGS | METH_STATIC,
     "getChildPlugins(root, recursive=0) -> list of (plugin, property name, referenced plugin)\n"
     "The references that the plugin's properties make."},
    {"getParentPlugins", getParentPlugins, METH_VARARGS | METH_STATIC,
     "getParentPlugins(child, recursive=0) -> list of (plugin, property name, referenced plugin)\n"
     "The references that other plugins' properties make to the plugin."},
    {"getIESPrescribedIntensity", getIESPrescribedIntensity, METH_VARARGS | METH_STATIC,
     "getIESPrescribedIntensity(iesFile) -> float\nThe intensity an IES file prescribes, in candela."},
    {nullptr, nullptr, 0, nullptr},
};

}  // namespace

PyTypeObject UtilType = {
    PyVarObject_HEAD_INIT(nullptr, 0)
    "tovi.Util",                              // tp_name
    sizeof(PyObject),                         // tp_basicsize
    0,                                        // tp_itemsize
    nullptr,                                  // tp_dealloc
    0,                                        // tp_vectorcall_offset
    nullptr,                                  // tp_getattr
    nullptr,                                  // tp_setattr
    nullptr,                                  // tp_as_async
    nullptr,                                  // tp_repr
    nullptr,                                  // tp_as_number
    nullptr,                                  // tp_as_sequence
    nullptr,                                  // tp_as_mapping
    nullptr,                                  // tp_hash
    nullptr,                                  // tp_call
    nullptr,                                  // tp_str
    nullptr,                                  // tp_getattro
    nullptr,                                  // tp_setattro
    nullptr,                                  // tp_as_buffer
    Py_TPFLAGS_DEFAULT,                       // tp_flags
    "Static utility functions over a scene's plugins",  // tp_doc
    nullptr,                                  // tp_traverse
    nullptr,                                  // tp_clear
    nullptr,                                  // tp_richcompare
    0,                                        // tp_weaklistoffset
    nullptr,                                  // tp_iter
    nullptr,                                  // tp_iternext
    utilMethods,                              // tp_methods
};

}  // namespace tovi
