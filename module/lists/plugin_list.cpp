// tovi.PluginList: 64-bit plugin identifiers bound to the renderer whose plugins they are.
#include <cstdio>
#include <cstring>

#include "core/errors.h"
#include "core/sdk_api.h"
#include "lists/list_kinds.h"
#include "plugins/plugin.h"

namespace tovi {

namespace {

struct PluginListObject {
    TypedList list;
    PyObject* renderer;  // null while no plugin has been stored
};

PluginListObject* asPluginList(PyObject* object) { return reinterpret_cast<PluginListObject*>(object); }

uint64_t load(const char* element) {
    uint64_t id;
    std::memcpy(&id, element, sizeof id);
    return id;
}

void store(char* element, uint64_t id) { std::memcpy(element, &id, sizeof id); }

int refuseOtherRenderer() {
    return failWith(PyExc_ValueError, "Only plugins belonging to the same renderer are accepted");
}

// A plugin may join the list when the list is unbound (it then binds to the plugin's renderer)
// or bound to the same renderer.
int acceptRenderer(PyObject* self, PyObject* renderer) {
    PyObject*& bound = asPluginList(self)->renderer;
    if (!renderer) return 0;
    if (!bound) {
        bound = Py_NewRef(renderer);
        return 0;
    }
    return bound == renderer ? 0 : refuseOtherRenderer();
}

// None is the empty slot; a plugin's identifier once its renderer is accepted.
int storePlugin(PyObject* self, PyObject* value, char* element, const char* wrongType) {
    if (value == Py_None) {
        store(element, noPlugin);
        return 0;
    }
    if (!isPlugin(value)) return failWith(PyExc_TypeError, wrongType);
    if (acceptRenderer(self, pluginRenderer(value)) < 0) return -1;
    store(element, pluginID(value));
    return 0;
}

PyObject* getItem(PyObject* self, const char* element) {
    return pluginWrapper(asPluginList(self)->renderer, load(element), 0);
}

int setItem(PyObject* self, PyObject* value, char* element) {
    return storePlugin(self, value, element, "Only Plugin can be set");
}

int storeSourceItem(PyObject* self, PyObject* item, char* element) {
    return storePlugin(self, item, element, "Source must contain only plugins");
}

int formatElement(PyObject* self, const char* element, const char* separator, char* buffer, size_t size) {
    PyObject* renderer = asPluginList(self)->renderer;
    uint64_t id = load(element);
    const char* name = nullptr;
    if (renderer && isValidPluginID(id)) name = SdkApi.Tovi_ToviRenderer_getPluginName(rendererHandle(renderer), id);
    return std::snprintf(buffer, size, "%s%s", name ? name : "None", separator);
}

int compareRuns(const char* left, const char* right, Py_ssize_t elements, size_t) {
    for (Py_ssize_t index = 0; index < elements; ++index) {
        uint64_t a = load(left + index * 8), b = load(right + index * 8);
        if (a != b) return a < b ? -1 : 1;
    }
    return 0;
}

PyObject* richCompare(PyObject* self, PyObject* other, int op) {
    return compareLists(self, other, op, &PluginListType.type, compareRuns);
}

int contains(PyObject* self, PyObject* value) {
    Py_ssize_t count = Py_SIZE(self);
    const char* data = asList(self)->data;
    if (Py_IS_TYPE(value, &PluginType)) {
        PyObject* renderer = asPluginList(self)->renderer;
        if (renderer && pluginRenderer(value) != renderer) return 0;
        for (Py_ssize_t index = 0; index < count; ++index) {
            if (load(data + index * 8) == pluginID(value)) return 1;
        }
        return 0;
    }
    if (value == Py_None) {
        for (Py_ssize_t index = 0; index < count; ++index) {
            uint64_t id = load(data + index * 8);
            if (id == noPlugin || id == 0) return 1;
        }
    }
    return 0;
}

PyObject* append(PyObject* self, PyObject* value) {
    if (value != Py_None && !isPlugin(value)) return replaceError(PyExc_TypeError, "Unsupported type");
    auto write = [&](char* element) { return storePlugin(self, value, element, "Unsupported type"); };
    if (appendElement(self, write) < 0) return nullptr;
    Py_RETURN_NONE;
}

void inherit(PyObject* result, PyObject* source) {
    Py_XSETREF(asPluginList(result)->renderer, Py_XNewRef(asPluginList(source)->renderer));
}

int accept(PyObject* self, PyObject* other) { return acceptRenderer(self, asPluginList(other)->renderer); }

void emptied(PyObject* self) { Py_CLEAR(asPluginList(self)->renderer); }

const ListBinding rendererBinding = {inherit, accept, emptied};

int traverse(PyObject* self, visitproc visit, void* arg) {
    Py_VISIT(asPluginList(self)->renderer);
    return 0;
}

int clear(PyObject* self) {
    Py_CLEAR(asPluginList(self)->renderer);
    return 0;
}

void dealloc(PyObject* self) {
    PyObject_GC_UnTrack(self);
    releaseListContents(asList(self));
    Py_CLEAR(asPluginList(self)->renderer);
    Py_TYPE(self)->tp_free(self);
}

PyMethodDef methods[] = {
    {"append", append, METH_O, nullptr},
    {"extend", extendMethod, METH_O, nullptr},
    {nullptr, nullptr, 0, nullptr},
};

PySequenceMethods sequenceMethods;

TypedListType makePluginListType() {
    TypedListType kind = makeListKind("tovi.PluginList", "Efficient implementation of Tovi PluginList.\n", methods,
                                      richCompare,
                                      {8, getItem, setItem, storeSourceItem, "Source must contain only plugins",
                                       "PluginList(", formatElement, 12, &rendererBinding});
    PyTypeObject& type = kind.type;
    type.tp_basicsize = sizeof(PluginListObject);
    type.tp_flags |= Py_TPFLAGS_HAVE_GC;
    type.tp_traverse = traverse;
    type.tp_clear = clear;
    type.tp_dealloc = dealloc;
    // The base's sequence slots, with membership added.
    sequenceMethods = *TypedListBaseType.type.tp_as_sequence;
    sequenceMethods.sq_contains = contains;
    type.tp_as_sequence = &sequenceMethods;
    return kind;
}

}  // namespace

TypedListType PluginListType = makePluginListType();

PyObject* newPluginList(PyObject* renderer, Py_ssize_t count, const void* ids) {
    PyObject* list = newListCopying(&PluginListType.type, count, ids);
    if (list) asPluginList(list)->renderer = Py_XNewRef(renderer);
    return list;
}

PyObject* adoptPluginList(PyObject* renderer, void* ids, Py_ssize_t count) {
    PyObject* list = adoptSdkBuffer(&PluginListType.type, ids, count);
    if (list) asPluginList(list)->renderer = Py_XNewRef(renderer);
    return list;
}

}  // namespace tovi
