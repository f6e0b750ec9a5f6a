// tovi.Plugins, tovi.PluginsIterator and tovi.PropertiesIterator.
#include "plugins/plugins_collection.h"

#include "core/errors.h"
#include "core/marshal.h"
#include "plugins/plugin.h"

namespace tovi {

namespace {

// ---- tovi.Plugins ----

PyObject* collectionRenderer(PyObject* self) { return boundRenderer(self); }
ToviRenderer* collectionHandle(PyObject* self) { return rendererHandle(collectionRenderer(self)); }

// Whether a wrapper belongs to this collection's renderer and its plugin exists.
bool holdsPlugin(PyObject* self, PyObject* plugin) {
    return pluginRendererHandle(plugin) == collectionHandle(self) && isValidPluginID(pluginID(plugin)) &&
           SdkApi.Tovi_ToviRenderer_pluginExistsByID(collectionHandle(self), pluginID(plugin)) != 0;
}

// The identifier of a named plugin; false when there is none.
bool namedPlugin(PyObject* self, const char* name, uint64_t& id) {
    id = SdkApi.Tovi_ToviRenderer_getPluginID(collectionHandle(self), name);
    return isValidPluginID(id);
}

Py_ssize_t pluginsLength(PyObject* self) {
    return SdkApi.Tovi_ToviRenderer_getPluginsCountOfType(collectionHandle(self), nullptr);
}

PyObject* pluginsGetItem(PyObject* self, PyObject* key) {
    if (isPlugin(key)) {
        if (holdsPlugin(self, key)) return Py_NewRef(key);
        PyErr_SetNone(PyExc_KeyError);
        return nullptr;
    }
    if (!PyUnicode_Check(key)) return replaceError(PyExc_TypeError, "Plugin name string is expected");
    const char* name = PyUnicode_AsUTF8(key);
    if (!name) return nullptr;
    uint64_t id;
    if (!namedPlugin(self, name, id)) {
        PyErr_SetObject(PyExc_KeyError, key);
        return nullptr;
    }
    return pluginWrapper(collectionRenderer(self), id, 0);
}

// Deletion by wrapper or name; assignment is refused. `missingType` reports a name that names
// no plugin.
int pluginsAssign(PyObject* self, PyObject* key, PyObject* value, PyObject* missingType) {
    if (value) return failWith(PyExc_RuntimeError, "You cannot assign values to plugins");
    int commit = autoCommit(collectionRenderer(self));
    if (isPlugin(key)) {
        SdkApi.Tovi_ToviRenderer_deletePluginByID(collectionHandle(self), pluginID(key), commit);
        return 0;
    }
    if (!PyUnicode_Check(key)) return failWith(PyExc_TypeError, "Expected plugin name or instance");
    const char* name = PyUnicode_AsUTF8(key);
    if (!name) return -1;
    if (SdkApi.Tovi_ToviRenderer_deletePlugin(collectionHandle(self), name, commit) == 0) return 0;
    if (missingType == PyExc_KeyError) {
        PyErr_SetObject(PyExc_KeyError, key);
        return -1;
    }
    return failWith(missingType, "No plugin with the given name");
}

int pluginsSetItem(PyObject* self, PyObject* key, PyObject* value) { return pluginsAssign(self, key, value, PyExc_KeyError); }

int pluginsSetAttr(PyObject* self, PyObject* name, PyObject* value) {
    return pluginsAssign(self, name, value, PyExc_AttributeError);
}

PyObject* pluginsGetAttr(PyObject* self, PyObject* name) {
    PyObject* found = PyObject_GenericGetAttr(self, name);
    if (found || !PyErr_ExceptionMatches(PyExc_AttributeError)) return found;
    PyErr_Clear();
    const char* text = PyUnicode_AsUTF8(name);
    if (!text) return nullptr;
    uint64_t id;
    if (!namedPlugin(self, text, id)) return replaceError(PyExc_AttributeError, "No plugin with the given name");
    return pluginWrapper(collectionRenderer(self), id, 0);
}

int pluginsContains(PyObject* self, PyObject* value) {
    if (isPlugin(value)) return holdsPlugin(self, value);
    if (!PyUnicode_Check(value)) return 0;
    const char* name = PyUnicode_AsUTF8(value);
    if (!name) {
        PyErr_Clear();
        return 0;
    }
    uint64_t id;
    return namedPlugin(self, name, id);
}

PyObject* pluginNamesList(PyObject* self) {
    return vectorToList(SdkApi.Tovi_ToviRenderer_getPluginNames(collectionHandle(self)), vectorStringElement);
}

PyObject* pluginsRepr(PyObject* self) {
    PyRef names(pluginNamesList(self));
    return names ? PyObject_Str(names.get()) : nullptr;
}

PyObject* pluginsIter(PyObject* self);

PyObject* pluginsDir(PyObject* self, PyObject*);

PyMethodDef pluginsMethods[] = {
    {"getRenderer", boundGetRenderer, METH_NOARGS, nullptr},
    {"__dir__", pluginsDir, METH_NOARGS, nullptr},
    {nullptr, nullptr, 0, nullptr},
};

PyObject* pluginsDir(PyObject* self, PyObject*) { return namesThenMethods(pluginNamesList(self), pluginsMethods); }

PyMappingMethods pluginsAsMapping = {pluginsLength, pluginsGetItem, pluginsSetItem};
PySequenceMethods pluginsAsSequence = {
    nullptr,          // sq_length
    nullptr,          // sq_concat
    nullptr,          // sq_repeat
    nullptr,          // sq_item
    nullptr,          // was_sq_slice
    nullptr,          // sq_ass_item
    nullptr,          // was_sq_ass_slice
    pluginsContains,  // sq_contains
};

// ---- tovi.PluginsIterator ----

struct PluginsIteratorObject {
    PyObject_HEAD
    PyObject* plugins;  // the collection it came from
    uint64_t* ids;      // a snapshot from the SDK allocator
    int32_t count;
    int32_t position;
};

PyObject* pluginsIter(PyObject* self) {
    auto* iterator = PyObject_GC_New(PluginsIteratorObject, &PluginsIteratorType);
    if (!iterator) return nullptr;
    int count = 0;
    iterator->ids = SdkApi.Tovi_ToviRenderer_getPluginIDsOfType(collectionHandle(self), nullptr, &count);
    iterator->count = iterator->ids ? count : 0;
    iterator->position = 0;
    iterator->plugins = Py_NewRef(self);
    PyObject_GC_Track(iterator);
    return reinterpret_cast<PyObject*>(iterator);
}

PyObject* pluginsIteratorNext(PyObject* object) {
    auto* self = reinterpret_cast<PluginsIteratorObject*>(object);
    if (self->position >= self->count) return nullptr;
    // A plugin deleted since the snapshot gives None.
    return pluginWrapper(collectionRenderer(self->plugins), self->ids[self->position++], 0);
}

int pluginsIteratorTraverse(PyObject* object, visitproc visit, void* arg) {
    Py_VISIT(reinterpret_cast<PluginsIteratorObject*>(object)->plugins);
    return 0;
}

void pluginsIteratorDealloc(PyObject* object) {
    auto* self = reinterpret_cast<PluginsIteratorObject*>(object);
    PyObject_GC_UnTrack(object);
    SdkBlock<uint64_t> ids(self->ids);
    Py_CLEAR(self->plugins);
    PyObject_GC_Del(object);
}

// ---- tovi.PropertiesIterator ----

struct PropertiesIteratorObject {
    PyObject_HEAD
    ToviVector* names;
    int32_t size;
    int32_t position;
};

PyObject* propertiesIteratorNext(PyObject* object) {
    auto* self = reinterpret_cast<PropertiesIteratorObject*>(object);
    if (self->position >= self->size) return nullptr;
    return vectorStringElement(SdkApi.getVectorElement(self->names, self->position++));
}

void propertiesIteratorDealloc(PyObject* object) {
    SdkVector names(reinterpret_cast<PropertiesIteratorObject*>(object)->names);
    PyObject_Free(object);
}

}  // namespace

PyObject* newRendererBound(PyTypeObject* type, PyObject* renderer) {
    auto* object = PyObject_GC_New(RendererBoundObject, type);
    if (!object) return nullptr;
    object->renderer = Py_NewRef(renderer);
    PyObject_GC_Track(object);
    return reinterpret_cast<PyObject*>(object);
}

int traverseRendererBound(PyObject* self, visitproc visit, void* arg) {
    Py_VISIT(boundRenderer(self));
    return 0;
}

int clearRendererBound(PyObject* self) {
    Py_CLEAR(reinterpret_cast<RendererBoundObject*>(self)->renderer);
    return 0;
}

void deallocRendererBound(PyObject* self) {
    PyObject_GC_UnTrack(self);
    clearRendererBound(self);
    PyObject_GC_Del(self);
}

PyObject* boundGetRenderer(PyObject* self, PyObject*) { return Py_NewRef(boundRenderer(self)); }

PyObject* newPluginsCollection(PyObject* renderer) { return newRendererBound(&PluginsType, renderer); }

PyObject* newPropertiesIterator(ToviVector* names) {
    SdkVector owned(names);
    auto* iterator = PyObject_New(PropertiesIteratorObject, &PropertiesIteratorType);
    if (!iterator) return nullptr;
    iterator->size = owned.size();
    iterator->position = 0;
    iterator->names = names;
    owned.release();
    return reinterpret_cast<PyObject*>(iterator);
}

PyTypeObject PluginsType = {
    PyVarObject_HEAD_INIT(nullptr, 0)
    "tovi.Plugins",                           // tp_name
    sizeof(RendererBoundObject),              // tp_basicsize
    0,                                        // tp_itemsize
    deallocRendererBound,                     // tp_dealloc
    0,                                        // tp_vectorcall_offset
    nullptr,                                  // tp_getattr
    nullptr,                                  // tp_setattr
    nullptr,                                  // tp_as_async
    pluginsRepr,                              // tp_repr
    nullptr,                                  // tp_as_number
    &pluginsAsSequence,                       // tp_as_sequence
    &pluginsAsMapping,                        // tp_as_mapping
    nullptr,                                  // tp_hash
    nullptr,                                  // tp_call
    nullptr,                                  // tp_str
    pluginsGetAttr,                           // tp_getattro
    pluginsSetAttr,                           // tp_setattro
    nullptr,                                  // tp_as_buffer
    Py_TPFLAGS_DEFAULT | Py_TPFLAGS_HAVE_GC,  // tp_flags
    nullptr,                                  // tp_doc
    traverseRendererBound,                    // tp_traverse
    clearRendererBound,                       // tp_clear
    nullptr,                                  // tp_richcompare
    0,                                        // tp_weaklistoffset
    pluginsIter,                              // tp_iter
    nullptr,                                  // tp_iternext
    pluginsMethods,                           // tp_methods
};

PyTypeObject PluginsIteratorType = {
    PyVarObject_HEAD_INIT(nullptr, 0)
    "tovi.PluginsIterator",                   // tp_name
    sizeof(PluginsIteratorObject),            // tp_basicsize
    0,                                        // tp_itemsize
    pluginsIteratorDealloc,                   // tp_dealloc
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
    Py_TPFLAGS_DEFAULT | Py_TPFLAGS_HAVE_GC,  // tp_flags
    "Tovi Plugin instances iterator",         // tp_doc
    pluginsIteratorTraverse,                  // tp_traverse
    nullptr,                                  // tp_clear
    nullptr,                                  // tp_richcompare
    0,                                        // tp_weaklistoffset
    PyObject_SelfIter,                        // tp_iter
    pluginsIteratorNext,                      // tp_iternext
};

PyTypeObject PropertiesIteratorType = {
    PyVarObject_HEAD_INIT(nullptr, 0)
    "tovi.PropertiesIterator",                // tp_name
    sizeof(PropertiesIteratorObject),         // tp_basicsize
    0,                                        // tp_itemsize
    propertiesIteratorDealloc,                // tp_dealloc
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
    "Tovi Plugin Properties iterator",        // tp_doc
    nullptr,                                  // tp_traverse
    nullptr,                                  // tp_clear
    nullptr,                                  // tp_richcompare
    0,                                        // tp_weaklistoffset
    PyObject_SelfIter,                        // tp_iter
    propertiesIteratorNext,                   // tp_iternext
};

}  // namespace tovi
