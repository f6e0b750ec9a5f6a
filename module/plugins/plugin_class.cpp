// tovi.Class, tovi.Classes and tovi.ClassesIterator.
#include "plugins/plugin_class.h"

#include <new>

#include "core/errors.h"
#include "core/marshal.h"
#include "lists/list_kinds.h"
#include "plugins/categories.h"
#include "plugins/metadata.h"
#include "plugins/plugin.h"
#include "plugins/plugins_collection.h"

namespace tovi {

namespace {

// ---- tovi.Class ----

struct ClassObject {
    PyObject_HEAD
    PyObject* className;  // str; its text is the key of the renderer's class cache
    PyObject* renderer;
};

ClassObject* asClass(PyObject* object) { return reinterpret_cast<ClassObject*>(object); }
const char* classNameText(PyObject* self) { return PyUnicode_AsUTF8(asClass(self)->className); }
ToviRenderer* classHandle(PyObject* self) { return rendererHandle(asClass(self)->renderer); }

void forgetClass(PyObject* self, PyObject* renderer) {
    ClassCache* cache = asRenderer(renderer)->classCache;
    if (!cache) return;
    auto entry = cache->find(classNameText(self));
    if (entry != cache->end() && entry->second == self) cache->erase(entry);
}

int classClear(PyObject* self) {
    if (PyObject* renderer = asClass(self)->renderer) {
        asClass(self)->renderer = nullptr;
        forgetClass(self, renderer);
        Py_DECREF(renderer);
    }
    return 0;
}

void classDealloc(PyObject* self) {
    PyObject_GC_UnTrack(self);
    classClear(self);
    Py_CLEAR(asClass(self)->className);
    PyObject_GC_Del(self);
}

int classTraverse(PyObject* self, visitproc visit, void* arg) {
    Py_VISIT(asClass(self)->renderer);
    return 0;
}

// Creates an instance of the class, named or with a name the SDK chooses.
PyObject* createInstance(PyObject* self, const char* name) {
    uint64_t id = noPlugin;
    PyObject* renderer = asClass(self)->renderer;
    int result =
        SdkApi.Tovi_ToviRenderer_newPlugin(rendererHandle(renderer), name, classNameText(self), autoCommit(renderer), &id);
    if (result == 0) return pluginWrapper(renderer, id, 0);
    const char* message = result == -2   ? "Plugin with the same name already exists."
                          : result == -3 ? "Invalid plugin name. Allowed characters are A-Z a-z 0-9 @ | _"
                                         : "Plugin creation error";
    return replaceError(PyExc_RuntimeError, message);
}

PyObject* classCall(PyObject* self, PyObject* args, PyObject*) {
    const char* name = nullptr;
    if (PyTuple_GET_SIZE(args) > 0) {
        PyObject* first = PyTuple_GET_ITEM(args, 0);
        if (!PyUnicode_Check(first)) return replaceError(PyExc_TypeError, "Plugin name, if provided, must be a text string.");
        if (!(name = PyUnicode_AsUTF8(first))) return nullptr;
    }
    return createInstance(self, name);
}

// The metadata of a property of the class; `missingType` when the class has no such property.
PyObject* classProperty(PyObject* self, const char* name, PyObject* missingType) {
    return classPropertyMeta(asClass(self)->renderer, classNameText(self), name, missingType);
}

PyObject* classGetAttr(PyObject* self, PyObject* name) {
    PyObject* found = PyObject_GenericGetAttr(self, name);
    if (found || !PyErr_ExceptionMatches(PyExc_AttributeError)) return found;
    PyErr_Clear();
    const char* text = PyUnicode_AsUTF8(name);
    return text ? classProperty(self, text, PyExc_AttributeError) : nullptr;
}

PyObject* classGetItem(PyObject* self, PyObject* key) {
    if (!PyUnicode_Check(key)) return raisePropertyNameNotText();
    const char* text = PyUnicode_AsUTF8(key);
    return text ? classProperty(self, text, PyExc_KeyError) : nullptr;
}

PyObject* classPropertyNames(PyObject* self) {
    return vectorToList(SdkApi.Tovi_ToviRenderer_getClassPropertyNames(classHandle(self), classNameText(self)),
                        vectorStringElement);
}

PyObject* classIter(PyObject* self) {
    return newPropertiesIterator(SdkApi.Tovi_ToviRenderer_getClassPropertyNames(classHandle(self), classNameText(self)));
}

PyObject* classStr(PyObject* self) { return Py_NewRef(asClass(self)->className); }

PyObject* classRepr(PyObject* self) {
    PyRef names(classPropertyNames(self));
    if (!names) return nullptr;
    PyRef quoted(PyList_New(0));
    if (!quoted) return nullptr;
    for (Py_ssize_t index = 0; index < PyList_GET_SIZE(names.get()); ++index) {
        PyRef item(PyUnicode_FromFormat("'%U'", PyList_GET_ITEM(names.get(), index)));
        if (!item || PyList_Append(quoted.get(), item.get()) < 0) return nullptr;
    }
    PyRef separator(PyUnicode_FromString(", "));
    PyRef joined(separator ? PyUnicode_Join(separator.get(), quoted.get()) : nullptr);
    return joined ? PyUnicode_FromFormat("{'%U': [%U]}", asClass(self)->className, joined.get()) : nullptr;
}

// The instances of the class, as an SDK array of identifiers.
SdkBlock<uint64_t> classInstances(PyObject* self, int& count) {
    count = 0;
    SdkBlock<uint64_t> ids(SdkApi.Tovi_ToviRenderer_getPluginIDsOfType(classHandle(self), classNameText(self), &count));
    if (!ids) count = 0;
    return ids;
}

PyObject* getName(PyObject* self, PyObject*) { return classStr(self); }

PyObject* getRenderer(PyObject* self, PyObject*) { return Py_NewRef(asClass(self)->renderer); }

PyObject* getInstances(PyObject* self, PyObject*) {
    int count = 0;
    uint64_t* ids = SdkApi.Tovi_ToviRenderer_getPluginIDsOfType(classHandle(self), classNameText(self), &count);
    return adoptPluginList(asClass(self)->renderer, ids, ids ? count : 0);
}

PyObject* getInstance(PyObject* self, PyObject*) {
    int count;
    SdkBlock<uint64_t> ids = classInstances(self, count);
    if (count < 1) Py_RETURN_NONE;
    return pluginWrapper(asClass(self)->renderer, ids.get()[count - 1], 0);
}

PyObject* getInstanceOrCreate(PyObject* self, PyObject* args) {
    const char* name = nullptr;
    if (!PyArg_ParseTuple(args, "|s", &name)) return nullptr;
    int count;
    SdkBlock<uint64_t> ids = classInstances(self, count);
    // An existing instance of any name is accepted.
    if (count >= 1) return pluginWrapper(asClass(self)->renderer, ids.get()[count - 1], 0);
    return createInstance(self, name);
}

PyObject* getMeta(PyObject* self, PyObject* args) {
    return classGetMeta(asClass(self)->renderer, classNameText(self), args);
}

PyObject* getUIGuides(PyObject* self, PyObject* args) {
    return classGetUIGuides(asClass(self)->renderer, classNameText(self), args);
}

PyObject* getDescription(PyObject* self, PyObject*) {
    SdkBlock<char> text(SdkApi.Tovi_ToviRenderer_getPluginDescription(classHandle(self), classNameText(self)));
    return textOrNone(text.get());
}

PyObject* getDeprecation(PyObject* self, PyObject*) {
    return textOrNone(SdkApi.Tovi_ToviRenderer_getPluginDeprecation(classHandle(self), classNameText(self)));
}

PyObject* getGPUSupport(PyObject* self, PyObject*) {
    static const char* const support[] = {"Full", "Partial", "Bake", "None"};
    int value = SdkApi.Tovi_ToviRenderer_getPluginGpuSupport(classHandle(self), classNameText(self));
    return PyUnicode_FromString(value >= 0 && value <= 3 ? support[value] : "Unknown");
}

PyObject* getCategories(PyObject* self, PyObject*) {
    uint64_t mask = SdkApi.Tovi_ToviRenderer_getPluginClassCategories(classHandle(self), classNameText(self));
    return categorySet(asClass(self)->renderer, mask);
}

PyObject* classDir(PyObject* self, PyObject*);

PyMethodDef classMethods[] = {
    {"getName", getName, METH_NOARGS, nullptr},
    {"getRenderer", getRenderer, METH_NOARGS, nullptr},
    {"getInstances", getInstances, METH_NOARGS, nullptr},
    {"getInstance", getInstance, METH_NOARGS, nullptr},
    {"getInstanceOrCreate", getInstanceOrCreate, METH_VARARGS, nullptr},
    {"getMeta", getMeta, METH_VARARGS, nullptr},
    {"getUIGuides", getUIGuides, METH_VARARGS, nullptr},
    {"getDescription", getDescription, METH_NOARGS, nullptr},
    {"getDeprecation", getDeprecation, METH_NOARGS, nullptr},
    {"getGPUSupport", getGPUSupport, METH_NOARGS, nullptr},
    {"getCategories", getCategories, METH_NOARGS, nullptr},
    {"__dir__", classDir, METH_NOARGS, nullptr},
    {nullptr, nullptr, 0, nullptr},
};

PyObject* classDir(PyObject* self, PyObject*) { return namesThenMethods(classPropertyNames(self), classMethods); }

PyMappingMethods classAsMapping = {nullptr, classGetItem, nullptr};

// ---- tovi.Classes ----

PyObject* classesRenderer(PyObject* self) { return boundRenderer(self); }
ToviRenderer* classesHandle(PyObject* self) { return rendererHandle(classesRenderer(self)); }

Py_ssize_t classesLength(PyObject* self) { return SdkApi.Tovi_ToviRenderer_getPluginClassNamesCount(classesHandle(self)); }

bool classExists(PyObject* self, const char* name) {
    return SdkApi.Tovi_ToviRenderer_pluginClassExists(classesHandle(self), name) != 0;
}

PyObject* classesGetItem(PyObject* self, PyObject* key) {
    if (PyObject_TypeCheck(key, &ClassType)) {
        if (classHandle(key) == classesHandle(self)) return Py_NewRef(key);
        PyErr_SetNone(PyExc_KeyError);
        return nullptr;
    }
    if (!PyUnicode_Check(key)) return replaceError(PyExc_TypeError, "Class name string is expected");
    const char* name = PyUnicode_AsUTF8(key);
    if (!name) return nullptr;
    if (!classExists(self, name)) {
        PyErr_SetObject(PyExc_KeyError, key);
        return nullptr;
    }
    return pluginClass(classesRenderer(self), name);
}

PyObject* classesGetAttr(PyObject* self, PyObject* name) {
    PyObject* found = PyObject_GenericGetAttr(self, name);
    if (found || !PyErr_ExceptionMatches(PyExc_AttributeError)) return found;
    PyErr_Clear();
    const char* text = PyUnicode_AsUTF8(name);
    if (!text) return nullptr;
    if (!classExists(self, text)) return replaceError(PyExc_AttributeError, "No class with the given name");
    return pluginClass(classesRenderer(self), text);
}

int classesContains(PyObject* self, PyObject* value) {
    if (PyObject_TypeCheck(value, &ClassType)) return classHandle(value) == classesHandle(self);
    if (!PyUnicode_Check(value)) return 0;
    const char* name = PyUnicode_AsUTF8(value);
    if (!name) {
        PyErr_Clear();
        return 0;
    }
    return classExists(self, name);
}

PyObject* classNamesList(PyObject* self) {
    return vectorToList(SdkApi.Tovi_ToviRenderer_getPluginClassNames(classesHandle(self)), vectorStringElement);
}

PyObject* classesRepr(PyObject* self) {
    PyRef names(classNamesList(self));
    return names ? PyObject_Str(names.get()) : nullptr;
}

PyObject* classesIter(PyObject* self);

PyObject* classesDir(PyObject* self, PyObject*);

PyMethodDef classesMethods[] = {
    {"getRenderer", boundGetRenderer, METH_NOARGS, nullptr},
    {"__dir__", classesDir, METH_NOARGS, nullptr},
    {nullptr, nullptr, 0, nullptr},
};

PyObject* classesDir(PyObject* self, PyObject*) { return namesThenMethods(classNamesList(self), classesMethods); }

PyMappingMethods classesAsMapping = {classesLength, classesGetItem, nullptr};
PySequenceMethods classesAsSequence = {
    nullptr,          // sq_length
    nullptr,          // sq_concat
    nullptr,          // sq_repeat
    nullptr,          // sq_item
    nullptr,          // was_sq_slice
    nullptr,          // sq_ass_item
    nullptr,          // was_sq_ass_slice
    classesContains,  // sq_contains
};

// ---- tovi.ClassesIterator ----

struct ClassesIteratorObject {
    PyObject_HEAD
    PyObject* renderer;
    PyObject* category;  // set when a category's classes are walked; it then owns `names`
    ToviVector* names;
    int32_t size;
    int32_t position;
};

PyObject* classesIter(PyObject* self) {
    SdkVector names(SdkApi.Tovi_ToviRenderer_getPluginClassNames(classesHandle(self)));
    auto* iterator = PyObject_GC_New(ClassesIteratorObject, &ClassesIteratorType);
    if (!iterator) return nullptr;
    iterator->renderer = Py_NewRef(classesRenderer(self));
    iterator->category = nullptr;
    iterator->size = names.size();
    iterator->position = 0;
    iterator->names = names.release();
    PyObject_GC_Track(iterator);
    return reinterpret_cast<PyObject*>(iterator);
}

PyObject* classesIteratorNext(PyObject* object) {
    auto* self = reinterpret_cast<ClassesIteratorObject*>(object);
    if (self->position >= self->size) return nullptr;
    const void* name = SdkApi.getVectorElement(self->names, self->position++);
    return pluginClass(self->renderer, static_cast<const char*>(name));
}

int classesIteratorTraverse(PyObject* object, visitproc visit, void* arg) {
    auto* self = reinterpret_cast<ClassesIteratorObject*>(object);
    Py_VISIT(self->renderer);
    Py_VISIT(self->category);
    return 0;
}

void classesIteratorDealloc(PyObject* object) {
    auto* self = reinterpret_cast<ClassesIteratorObject*>(object);
    PyObject_GC_UnTrack(object);
    if (!self->category) SdkVector owned(self->names);
    Py_CLEAR(self->category);
    Py_CLEAR(self->renderer);
    PyObject_GC_Del(object);
}

}  // namespace

PyObject* newCategoryClassesIterator(PyObject* renderer, PyObject* category, ToviVector* names) {
    auto* iterator = PyObject_GC_New(ClassesIteratorObject, &ClassesIteratorType);
    if (!iterator) return nullptr;
    iterator->renderer = Py_NewRef(renderer);
    iterator->category = Py_NewRef(category);
    iterator->names = names;
    iterator->size = names ? SdkApi.getVectorSize(names) : 0;
    iterator->position = 0;
    PyObject_GC_Track(iterator);
    return reinterpret_cast<PyObject*>(iterator);
}

const char* classNameOf(PyObject* classObject) { return classNameText(classObject); }

PyObject* pluginClass(PyObject* renderer, const char* name) {
    if (!name) Py_RETURN_NONE;
    ClassCache& cache = *asRenderer(renderer)->classCache;
    auto found = cache.find(name);
    if (found != cache.end()) return Py_NewRef(found->second);
    PyRef className(PyUnicode_FromString(name));
    if (!className) return nullptr;
    const char* key = PyUnicode_AsUTF8(className.get());
    auto* object = PyObject_GC_New(ClassObject, &ClassType);
    if (!key || !object) return nullptr;
    object->className = className.release();
    object->renderer = Py_NewRef(renderer);
    try {
        cache.emplace(key, reinterpret_cast<PyObject*>(object));
    } catch (const std::bad_alloc&) {
        object->renderer = nullptr;  // nothing to forget in the cache
        Py_DECREF(renderer);
        Py_DECREF(object);
        return PyErr_NoMemory();
    }
    PyObject_GC_Track(object);
    return reinterpret_cast<PyObject*>(object);
}

PyObject* newClassesCollection(PyObject* renderer) { return newRendererBound(&ClassesType, renderer); }

PyTypeObject ClassType = {
    PyVarObject_HEAD_INIT(nullptr, 0)
    "tovi.Class",                             // tp_name
    sizeof(ClassObject),                      // tp_basicsize
    0,                                        // tp_itemsize
    classDealloc,                             // tp_dealloc
    0,                                        // tp_vectorcall_offset
    nullptr,                                  // tp_getattr
    nullptr,                                  // tp_setattr
    nullptr,                                  // tp_as_async
    classRepr,                                // tp_repr
    nullptr,                                  // tp_as_number
    nullptr,                                  // tp_as_sequence
    &classAsMapping,                          // tp_as_mapping
    nullptr,                                  // tp_hash
    classCall,                                // tp_call
    classStr,                                 // tp_str
    classGetAttr,                             // tp_getattro
    nullptr,                                  // tp_setattro
    nullptr,                                  // tp_as_buffer
    Py_TPFLAGS_DEFAULT | Py_TPFLAGS_HAVE_GC,  // tp_flags
    nullptr,                                  // tp_doc
    classTraverse,                            // tp_traverse
    classClear,                               // tp_clear
    nullptr,                                  // tp_richcompare
    0,                                        // tp_weaklistoffset
    classIter,                                // tp_iter
    nullptr,                                  // tp_iternext
    classMethods,                             // tp_methods
};

PyTypeObject ClassesType = {
    PyVarObject_HEAD_INIT(nullptr, 0)
    "tovi.Classes",                           // tp_name
    sizeof(RendererBoundObject),              // tp_basicsize
    0,                                        // tp_itemsize
    deallocRendererBound,                     // tp_dealloc
    0,                                        // tp_vectorcall_offset
    nullptr,                                  // tp_getattr
    nullptr,                                  // tp_setattr
    nullptr,                                  // tp_as_async
    classesRepr,                              // tp_repr
    nullptr,                                  // tp_as_number
    &classesAsSequence,                       // tp_as_sequence
    &classesAsMapping,                        // tp_as_mapping
    nullptr,                                  // tp_hash
    nullptr,                                  // tp_call
    nullptr,                                  // tp_str
    classesGetAttr,                           // tp_getattro
    nullptr,                                  // tp_setattro
    nullptr,                                  // tp_as_buffer
    Py_TPFLAGS_DEFAULT | Py_TPFLAGS_HAVE_GC,  // tp_flags
    "Tovi Plugin classes dictionary",         // tp_doc
    traverseRendererBound,                    // tp_traverse
    clearRendererBound,                       // tp_clear
    nullptr,                                  // tp_richcompare
    0,                                        // tp_weaklistoffset
    classesIter,                              // tp_iter
    nullptr,                                  // tp_iternext
    classesMethods,                           // tp_methods
};

PyTypeObject ClassesIteratorType = {
    PyVarObject_HEAD_INIT(nullptr, 0)
    "tovi.ClassesIterator",                   // tp_name
    sizeof(ClassesIteratorObject),            // tp_basicsize
    0,                                        // tp_itemsize
    classesIteratorDealloc,                   // tp_dealloc
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
    "Tovi Plugin Classes iterator",           // tp_doc
    classesIteratorTraverse,                  // tp_traverse
    nullptr,                                  // tp_clear
    nullptr,                                  // tp_richcompare
    0,                                        // tp_weaklistoffset
    PyObject_SelfIter,                        // tp_iter
    classesIteratorNext,                      // tp_iternext
};

}  // namespace tovi
