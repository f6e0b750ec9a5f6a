// tovi.Plugin and tovi.PluginRef: records, the wrapper cache, slots, methods, type objects.
#include "plugins/plugin.h"

#include <new>

#include "core/errors.h"
#include "core/marshal.h"
#include "plugins/categories.h"
#include "plugins/metadata.h"
#include "plugins/plugin_class.h"
#include "plugins/plugins_collection.h"
#include "plugins/property_access.h"

namespace tovi {

// ---- the wrapper cache ----

PyObject* pluginWrapper(PyObject* renderer, uint64_t id, int32_t output) {
    if (!renderer || !isValidPluginID(id)) Py_RETURN_NONE;
    if (output < 0) output = 0;
    PluginCache& cache = *asRenderer(renderer)->pluginCache;
    auto [first, last] = cache.equal_range(id);
    for (auto entry = first; entry != last; ++entry) {
        if (entry->second.outputIndex == output) return Py_NewRef(entry->second.wrapper);
    }
    if (!SdkApi.Tovi_ToviRenderer_getPluginName(rendererHandle(renderer), id)) Py_RETURN_NONE;
    PyTypeObject* type = output >= 1 ? &PluginRefType : &PluginType;
    PyObject* wrapper = PyObject_GC_New(PyObject, type);
    if (!wrapper) return nullptr;
    asPlugin(wrapper)->renderer = Py_NewRef(renderer);
    asPlugin(wrapper)->pluginID = id;
    if (output >= 1) reinterpret_cast<PluginRefObject*>(wrapper)->outputIndex = output;
    try {
        cache.emplace(id, PluginCacheEntry{wrapper, output});
    } catch (const std::bad_alloc&) {
        Py_DECREF(wrapper);  // its destruction finds no entry to remove
        return PyErr_NoMemory();
    }
    PyObject_GC_Track(wrapper);
    return wrapper;
}

PyObject* pluginName(PyObject* plugin) {
    const char* name = SdkApi.Tovi_ToviRenderer_getPluginName(pluginRendererHandle(plugin), pluginID(plugin));
    return PyUnicode_FromString(name ? name : "");
}

namespace {

// The entry of this wrapper (by its current identifier and output) leaves the cache.
void forgetWrapper(PyObject* self, PyObject* renderer) {
    PluginCache* cache = asRenderer(renderer)->pluginCache;
    if (!cache) return;
    auto [first, last] = cache->equal_range(pluginID(self));
    for (auto entry = first; entry != last; ++entry) {
        if (entry->second.wrapper == self) {
            cache->erase(entry);
            return;
        }
    }
}

// ---- slots ----

void pluginDealloc(PyObject* self) {
    PyObject_GC_UnTrack(self);
    if (PyObject* renderer = asPlugin(self)->renderer) {
        asPlugin(self)->renderer = nullptr;
        forgetWrapper(self, renderer);
        Py_DECREF(renderer);
    }
    PyObject_GC_Del(self);
}

int pluginTraverse(PyObject* self, visitproc visit, void* arg) {
    Py_VISIT(asPlugin(self)->renderer);
    return 0;
}

int pluginClear(PyObject* self) {
    if (PyObject* renderer = asPlugin(self)->renderer) {
        asPlugin(self)->renderer = nullptr;
        forgetWrapper(self, renderer);
        Py_DECREF(renderer);
    }
    return 0;
}

bool pluginIsValid(PyObject* self) {
    ToviRenderer* handle = pluginRendererHandle(self);
    return isValidPluginID(pluginID(self)) && handle &&
           SdkApi.Tovi_ToviRenderer_pluginExistsByID(handle, pluginID(self)) != 0;
}

int pluginBool(PyObject* self) { return pluginIsValid(self) ? 1 : 0; }

PyObject* pluginGetAttr(PyObject* self, PyObject* name) {
    // Methods first; any other name is a property (asked without a failed lookup's exception).
    if (!PyUnicode_Check(name) || _PyType_Lookup(Py_TYPE(self), name)) return PyObject_GenericGetAttr(self, name);
    const char* text = PyUnicode_AsUTF8(name);
    if (!text) return nullptr;
    return readProperty(self, text, defaultAccessTime(), PyExc_AttributeError);
}

int pluginSetAttr(PyObject* self, PyObject* name, PyObject* value) {
    const char* text = PyUnicode_AsUTF8(name);
    if (!text) return -1;
    return assignProperty(self, text, value, PyExc_AttributeError);
}

// The key of an item access; null with the TypeError set.
const char* itemName(PyObject* key) {
    if (!PyUnicode_Check(key)) {
        PyErr_Format(PyExc_TypeError, "Property name string is expected, not %s", Py_TYPE(key)->tp_name);
        return nullptr;
    }
    return PyUnicode_AsUTF8(key);
}

PyObject* pluginGetItem(PyObject* self, PyObject* key) {
    const char* name = itemName(key);
    return name ? readProperty(self, name, defaultAccessTime(), PyExc_KeyError) : nullptr;
}

int pluginSetItem(PyObject* self, PyObject* key, PyObject* value) {
    const char* name = itemName(key);
    return name ? assignProperty(self, name, value, PyExc_KeyError) : -1;
}

PyObject* pluginIter(PyObject* self) {
    return newPropertiesIterator(
        SdkApi.Tovi_ToviRenderer_getPropertyNamesByID(pluginRendererHandle(self), pluginID(self)));
}

PyObject* pluginStr(PyObject* self) { return pluginName(self); }

// A property value as it appears in a plugin's text: nested plugins by name.
PyObject* valueText(PyObject* value) {
    if (isPlugin(value)) return PyUnicode_FromFormat("'%S'", value);
    return PyObject_Repr(value);
}

PyObject* pluginReprText(PyObject* self) {
    PyRef name(pluginName(self));
    const char* type = SdkApi.Tovi_ToviRenderer_getPluginTypeByID(pluginRendererHandle(self), pluginID(self));
    if (!name) return nullptr;
    PyRef parts(PyList_New(0));
    PyRef head(PyUnicode_FromFormat("{'name': '%U', 'type': '%s', 'value': {", name.get(), type ? type : ""));
    if (!parts || !head || PyList_Append(parts.get(), head.get()) < 0) return nullptr;
    PyRef names(vectorToList(SdkApi.Tovi_ToviRenderer_getPropertyNamesByID(pluginRendererHandle(self), pluginID(self)),
                             vectorStringElement));
    if (!names) return nullptr;
    for (Py_ssize_t index = 0; index < PyList_GET_SIZE(names.get()); ++index) {
        PyObject* property = PyList_GET_ITEM(names.get(), index);
        const char* propertyText = PyUnicode_AsUTF8(property);
        if (!propertyText) return nullptr;
        PyRef value(readProperty(self, propertyText, defaultAccessTime(), PyExc_AttributeError));
        if (!value) {
            PyErr_Clear();
            value.reset(Py_NewRef(Py_None));
        }
        PyRef text(valueText(value.get()));
        if (!text) return nullptr;
        PyRef item(PyUnicode_FromFormat("%s'%U': %U", index ? ", " : "", property, text.get()));
        if (!item || PyList_Append(parts.get(), item.get()) < 0) return nullptr;
    }
    PyRef tail(PyUnicode_FromString("}}"));
    if (!tail || PyList_Append(parts.get(), tail.get()) < 0) return nullptr;
    PyRef empty(PyUnicode_FromString(""));
    return empty ? PyUnicode_Join(empty.get(), parts.get()) : nullptr;
}

PyObject* pluginRepr(PyObject* self) {
    PyObject* renderer = pluginRenderer(self);
    if (!renderer) return PyUnicode_FromString("{}");
    bool& inProgress = asRenderer(renderer)->reprInProgress;
    if (inProgress) {
        PyRef name(PyObject_Str(self));
        return name ? PyUnicode_FromFormat("'%U'", name.get()) : nullptr;
    }
    inProgress = true;
    PyObject* text = pluginReprText(self);
    inProgress = false;
    return text;
}

// "name::output", or the name alone when the output has no name.
PyObject* pluginRefText(PyObject* self) {
    const char* output = SdkApi.Tovi_ToviRenderer_getPropertyNameFromIndexByID(pluginRendererHandle(self), pluginID(self),
                                                                                outputIndex(self));
    if (!output) return pluginName(self);
    PyRef name(pluginName(self));
    return name ? PyUnicode_FromFormat("%U::%s", name.get(), output) : nullptr;
}

// ---- methods ----

PyObject* getIntegerID(PyObject* self, PyObject*) { return PyLong_FromLongLong(static_cast<long long>(pluginID(self))); }

PyObject* getName(PyObject* self, PyObject*) { return pluginName(self); }

PyObject* setName(PyObject* self, PyObject* args) {
    PyObject* name = PyTuple_GET_SIZE(args) > 0 ? PyTuple_GET_ITEM(args, 0) : nullptr;
    if (!name || !PyUnicode_Check(name)) return replaceError(PyExc_TypeError, "You must provide a new name for the Plugin.");
    const char* text = PyUnicode_AsUTF8(name);
    if (!text) return nullptr;
    int result = SdkApi.Tovi_ToviRenderer_renamePluginByID(pluginRendererHandle(self), pluginID(self), text,
                                                          autoCommit(pluginRenderer(self)));
    return PyBool_FromLong(result == 0);
}

PyObject* getType(PyObject* self, PyObject*) {
    const char* type = SdkApi.Tovi_ToviRenderer_getPluginTypeByID(pluginRendererHandle(self), pluginID(self));
    return PyUnicode_FromString(type ? type : "");
}

PyObject* getClass(PyObject* self, PyObject*) {
    const char* type = SdkApi.Tovi_ToviRenderer_getPluginTypeByID(pluginRendererHandle(self), pluginID(self));
    return pluginClass(pluginRenderer(self), type);
}

PyObject* getCategories(PyObject* self, PyObject*) {
    uint64_t mask = SdkApi.Tovi_ToviRenderer_getPluginCategories(pluginRendererHandle(self), pluginID(self));
    return categorySet(pluginRenderer(self), mask);
}

PyObject* getRenderer(PyObject* self, PyObject*) { return Py_NewRef(pluginRenderer(self)); }

PyObject* getMeta(PyObject* self, PyObject* args) { return pluginGetMeta(self, args); }

PyObject* getUIGuides(PyObject* self, PyObject* args) { return pluginGetUIGuides(self, args); }

PyObject* replaceWith(PyObject* self, PyObject* args) {
    constexpr const char* usage = "This method has one argument, plugin instance, plugin name or None.";
    if (PyTuple_GET_SIZE(args) != 1) return replaceError(PyExc_TypeError, usage);
    PyObject* replacement = PyTuple_GET_ITEM(args, 0);
    uint64_t replacementID;
    if (replacement == Py_None) {
        replacementID = noPlugin;
    } else if (isPlugin(replacement)) {
        replacementID = pluginID(replacement);
    } else if (PyUnicode_Check(replacement)) {
        const char* name = PyUnicode_AsUTF8(replacement);
        if (!name) return nullptr;
        replacementID = SdkApi.Tovi_ToviRenderer_getPluginID(pluginRendererHandle(self), name);
        if (!isValidPluginID(replacementID)) {
            return replaceError(PyExc_TypeError, "No plugin with the given name in the scene.");
        }
    } else {
        return replaceError(PyExc_TypeError, usage);
    }
    int result = SdkApi.Tovi_ToviRenderer_replacePluginByID(pluginRendererHandle(self), pluginID(self), replacementID,
                                                           autoCommit(pluginRenderer(self)));
    return PyBool_FromLong(result == 0);
}

PyObject* getOutputName(PyObject* self, PyObject*) {
    if (!isPluginRef(self)) Py_RETURN_NONE;
    return textOrNone(SdkApi.Tovi_ToviRenderer_getPropertyNameFromIndexByID(pluginRendererHandle(self), pluginID(self),
                                                                            outputIndex(self)));
}

PyObject* getReference(PyObject* self, PyObject* args) {
    if (PyTuple_GET_SIZE(args) != 1) {
        return replaceError(PyExc_TypeError, "A single string argument - a property name is expected.");
    }
    PyObject* name = PyTuple_GET_ITEM(args, 0);
    if (!PyUnicode_Check(name)) return replaceError(PyExc_TypeError, "You must provide a property name.");
    const char* text = PyUnicode_AsUTF8(name);
    if (!text) return nullptr;
    int index = SdkApi.Tovi_ToviRenderer_getPropertyIndexFromNameByID(pluginRendererHandle(self), pluginID(self), text);
    if (index < 0) Py_RETURN_NONE;
    return pluginWrapper(pluginRenderer(self), pluginID(self), index);
}

PyObject* getPlugin(PyObject* self, PyObject*) {
    if (!isPluginRef(self)) return Py_NewRef(self);
    return pluginWrapper(pluginRenderer(self), pluginID(self), 0);
}

PyObject* deleteThis(PyObject* self, PyObject*) {
    int result = SdkApi.Tovi_ToviRenderer_deletePluginByID(pluginRendererHandle(self), pluginID(self),
                                                          autoCommit(pluginRenderer(self)));
    if (result != 0) Py_RETURN_FALSE;
    // The cache entry goes with the identifier, so that a new wrapper of the old id is never
    // this dead one.
    forgetWrapper(self, pluginRenderer(self));
    asPlugin(self)->pluginID = noPlugin;
    Py_RETURN_TRUE;
}

PyObject* isValid(PyObject* self, PyObject*) { return PyBool_FromLong(pluginIsValid(self)); }

PyObject* setUpdatedDefaultProperties(PyObject* self, PyObject*) {
    int result = SdkApi.Tovi_ToviRenderer_setUpdatedDefaultsPluginID(pluginRendererHandle(self), pluginID(self),
                                                                    autoCommit(pluginRenderer(self)));
    return PyBool_FromLong(result != 0);
}

PyObject* pluginDir(PyObject* self, PyObject*);

PyMethodDef pluginMethods[] = {
    {"getValueAsString", pluginGetValueAsString, METH_VARARGS, nullptr},
    {"setValueAsString", pluginSetValueAsString, METH_VARARGS, nullptr},
    {"getValue", pluginGetValue, METH_VARARGS, nullptr},
    {"setValue", pluginSetValue, METH_VARARGS, nullptr},
    {"getIntegerID", getIntegerID, METH_NOARGS, nullptr},
    {"getName", getName, METH_NOARGS, nullptr},
    {"setName", setName, METH_VARARGS, nullptr},
    {"getType", getType, METH_NOARGS, nullptr},
    {"getClass", getClass, METH_NOARGS, nullptr},
    {"getCategories", getCategories, METH_NOARGS, nullptr},
    {"getRenderer", getRenderer, METH_NOARGS, nullptr},
    {"getMeta", getMeta, METH_VARARGS, nullptr},
    {"getUIGuides", getUIGuides, METH_VARARGS, nullptr},
    {"isPropertyAnimated", pluginIsPropertyAnimated, METH_VARARGS, nullptr},
    {"getPropertyState", pluginGetPropertyState, METH_VARARGS, nullptr},
    {"getPropertyStateAsString", pluginGetPropertyStateAsString, METH_VARARGS, nullptr},
    {"getKeyframeTimes", pluginGetKeyframeTimes, METH_VARARGS, nullptr},
    {"replaceWith", replaceWith, METH_VARARGS, nullptr},
    {"getOutputName", getOutputName, METH_NOARGS, nullptr},
    {"getReference", getReference, METH_VARARGS, nullptr},
    {"getPlugin", getPlugin, METH_NOARGS, nullptr},
    {"deleteThis", deleteThis, METH_NOARGS, nullptr},
    {"isValid", isValid, METH_NOARGS, nullptr},
    {"setUpdatedDefaultProperties", setUpdatedDefaultProperties, METH_NOARGS, nullptr},
    {"__dir__", pluginDir, METH_NOARGS, nullptr},
    {nullptr, nullptr, 0, nullptr},
};

// The plugin's property names, then the names of the methods above.
PyObject* pluginDir(PyObject* self, PyObject*) {
    return namesThenMethods(
        vectorToList(SdkApi.Tovi_ToviRenderer_getPropertyNamesByID(pluginRendererHandle(self), pluginID(self)),
                     vectorStringElement),
        pluginMethods);
}

PyNumberMethods pluginAsNumber = {
    nullptr,     // nb_add
    nullptr,     // nb_subtract
    nullptr,     // nb_multiply
    nullptr,     // nb_remainder
    nullptr,     // nb_divmod
    nullptr,     // nb_power
    nullptr,     // nb_negative
    nullptr,     // nb_positive
    nullptr,     // nb_absolute
    pluginBool,  // nb_bool
};
PyMappingMethods pluginAsMapping = {nullptr, pluginGetItem, pluginSetItem};

}  // namespace

PyTypeObject PluginType = {
    PyVarObject_HEAD_INIT(nullptr, 0)
    "tovi.Plugin",                            // tp_name
    sizeof(PluginObject),                     // tp_basicsize
    0,                                        // tp_itemsize
    pluginDealloc,                            // tp_dealloc
    0,                                        // tp_vectorcall_offset
    nullptr,                                  // tp_getattr
    nullptr,                                  // tp_setattr
    nullptr,                                  // tp_as_async
    pluginRepr,                               // tp_repr
    &pluginAsNumber,                          // tp_as_number
    nullptr,                                  // tp_as_sequence
    &pluginAsMapping,                         // tp_as_mapping
    nullptr,                                  // tp_hash
    nullptr,                                  // tp_call
    pluginStr,                                // tp_str
    pluginGetAttr,                            // tp_getattro
    pluginSetAttr,                            // tp_setattro
    nullptr,                                  // tp_as_buffer
    Py_TPFLAGS_DEFAULT | Py_TPFLAGS_HAVE_GC,  // tp_flags: not subclassable from Python
    nullptr,                                  // tp_doc
    pluginTraverse,                           // tp_traverse
    pluginClear,                              // tp_clear
    nullptr,                                  // tp_richcompare
    0,                                        // tp_weaklistoffset
    pluginIter,                               // tp_iter
    nullptr,                                  // tp_iternext
    pluginMethods,                            // tp_methods
};

PyTypeObject PluginRefType = {
    PyVarObject_HEAD_INIT(nullptr, 0)
    "tovi.PluginRef",                         // tp_name
    sizeof(PluginRefObject),                  // tp_basicsize
    0,                                        // tp_itemsize
    pluginDealloc,                            // tp_dealloc
    0,                                        // tp_vectorcall_offset
    nullptr,                                  // tp_getattr
    nullptr,                                  // tp_setattr
    nullptr,                                  // tp_as_async
    pluginRefText,                            // tp_repr
    nullptr,                                  // tp_as_number
    nullptr,                                  // tp_as_sequence
    nullptr,                                  // tp_as_mapping
    nullptr,                                  // tp_hash
    nullptr,                                  // tp_call
    pluginRefText,                            // tp_str
    nullptr,                                  // tp_getattro
    nullptr,                                  // tp_setattro
    nullptr,                                  // tp_as_buffer
    Py_TPFLAGS_DEFAULT | Py_TPFLAGS_HAVE_GC,  // tp_flags
    nullptr,                                  // tp_doc
    pluginTraverse,                           // tp_traverse
    pluginClear,                              // tp_clear
    nullptr,                                  // tp_richcompare
    0,                                        // tp_weaklistoffset
    nullptr,                                  // tp_iter
    nullptr,                                  // tp_iternext
    nullptr,                                  // tp_methods
    nullptr,                                  // tp_members
    nullptr,                                  // tp_getset
    &PluginType,                              // tp_base
};

}  // namespace tovi
