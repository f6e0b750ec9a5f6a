// tovi.Categories, tovi.CategoriesIterator and tovi.Category.
#include "plugins/categories.h"
#include "plugins/plugins_collection.h"

#include <new>
#include <vector>

#include "core/errors.h"
#include "core/marshal.h"
#include "core/sdk_loader.h"
#include "lists/list_kinds.h"
#include "plugins/plugin.h"
#include "plugins/plugin_class.h"

namespace tovi {

namespace {

// The number of categories the SDK has.
int categoryCount() { return SdkApi.Tovi_getPluginCategoryEnumFromName(nullptr); }

uint64_t maskOf(uint32_t index) { return uint64_t{1} << (index & 63); }

// The renderer's table of live category objects, sized on first use; null when out of memory.
std::vector<PyObject*>* categoryTable(PyObject* renderer) {
    std::vector<PyObject*>* table = asRenderer(renderer)->categoryTable;
    int count = categoryCount();
    if (table && count > 0 && table->size() < static_cast<size_t>(count)) {
        try {
            table->resize(static_cast<size_t>(count), nullptr);
        } catch (const std::bad_alloc&) {
            PyErr_NoMemory();
            return nullptr;
        }
    }
    return table;
}

// ---- tovi.Category ----

struct CategoryObject {
    PyObject_HEAD
    PyObject* renderer;
    ToviVector* classNames;  // fetched on first need
    uint32_t index;
};

CategoryObject* asCategory(PyObject* object) { return reinterpret_cast<CategoryObject*>(object); }
bool isCategory(PyObject* object) { return PyObject_TypeCheck(object, &CategoryType); }
ToviRenderer* categoryHandle(PyObject* self) { return rendererHandle(asCategory(self)->renderer); }

ToviVector* classNames(PyObject* self) {
    CategoryObject* category = asCategory(self);
    if (!category->classNames) {
        uint64_t mask = maskOf(category->index);
        category->classNames = SdkApi.Tovi_ToviRenderer_getPluginClassNamesOfCategories(categoryHandle(self), &mask, 1);
    }
    return category->classNames;
}

int classNameCount(PyObject* self) {
    ToviVector* names = classNames(self);
    return names ? SdkApi.getVectorSize(names) : 0;
}

void forgetCategory(PyObject* self) {
    CategoryObject* category = asCategory(self);
    std::vector<PyObject*>* table = asRenderer(category->renderer)->categoryTable;
    if (table && category->index < table->size() && (*table)[category->index] == self) (*table)[category->index] = nullptr;
}

int categoryClear(PyObject* self) {
    CategoryObject* category = asCategory(self);
    if (category->renderer) {
        forgetCategory(self);
        Py_CLEAR(category->renderer);
    }
    return 0;
}

void categoryDealloc(PyObject* self) {
    PyObject_GC_UnTrack(self);
    categoryClear(self);
    if (ToviVector* names = asCategory(self)->classNames) {
        asCategory(self)->classNames = nullptr;
        if (sdkLibraryLoaded()) SdkVector released(names);
    }
    PyObject_GC_Del(self);
}

int categoryTraverse(PyObject* self, visitproc visit, void* arg) {
    Py_VISIT(asCategory(self)->renderer);
    return 0;
}

PyObject* categoryName(PyObject* self) {
    return textOrNone(SdkApi.Tovi_getPluginCategoryNameFromEnum(static_cast<int>(asCategory(self)->index)));
}

PyObject* categoryRepr(PyObject* self) {
    const char* name = SdkApi.Tovi_getPluginCategoryNameFromEnum(static_cast<int>(asCategory(self)->index));
    if (!name) Py_RETURN_NONE;
    return PyUnicode_FromFormat("Category %s", name);
}

bool classInCategory(PyObject* self, const char* className) {
    return SdkApi.Tovi_ToviRenderer_isPluginClassOfCategory(categoryHandle(self), className, asCategory(self)->index) != 0;
}

// The membership test; strict: only plugins and classes are accepted. 1, 0, or -1 with the error.
int contains(PyObject* self, PyObject* value, bool strict) {
    if (isPlugin(value)) {
        if (pluginRendererHandle(value) != categoryHandle(self)) return 0;
        return SdkApi.Tovi_ToviRenderer_isPluginOfCategories(categoryHandle(self), pluginID(value),
                                                             maskOf(asCategory(self)->index)) != 0;
    }
    const char* className = nullptr;
    if (PyObject_TypeCheck(value, &ClassType)) {
        className = classNameOf(value);
    } else if (!strict && PyUnicode_Check(value)) {
        className = PyUnicode_AsUTF8(value);
    } else {
        if (!strict) return 0;
        replaceError(PyExc_TypeError, "This function expects a plugin or a class instance");
        return -1;
    }
    if (!className) {
        PyErr_Clear();
        return 0;
    }
    return classInCategory(self, className) ? 1 : 0;
}

int categoryContains(PyObject* self, PyObject* value) { return contains(self, value, false); }

Py_ssize_t categoryLength(PyObject* self) { return classNameCount(self); }

PyObject* categoryGetItem(PyObject* self, PyObject* key) {
    PyObject* renderer = asCategory(self)->renderer;
    if (PyIndex_Check(key)) {
        Py_ssize_t index = PyNumber_AsSsize_t(key, PyExc_IndexError);
        if (index == -1 && PyErr_Occurred()) return nullptr;
        int count = classNameCount(self);
        if (index < 0) index += count;
        if (index < 0 || index >= count) return replaceError(PyExc_IndexError, "Index out of range");
        return pluginClass(renderer, static_cast<const char*>(SdkApi.getVectorElement(classNames(self), static_cast<int>(index))));
    }
    if (PyUnicode_Check(key)) {
        const char* name = PyUnicode_AsUTF8(key);
        if (!name) return nullptr;
        if (!classInCategory(self, name)) {
            PyErr_SetObject(PyExc_KeyError, key);
            return nullptr;
        }
        return pluginClass(renderer, name);
    }
    if (PyNumber_Check(key)) return replaceError(PyExc_TypeError, "Indices must be integers");
    return replaceError(PyExc_TypeError, "Class name or index is expected");
}

PyObject* categoryGetAttr(PyObject* self, PyObject* name) {
    PyObject* found = PyObject_GenericGetAttr(self, name);
    if (found || !PyErr_ExceptionMatches(PyExc_AttributeError)) return found;
    PyErr_Clear();
    const char* text = PyUnicode_AsUTF8(name);
    if (!text) return nullptr;
    if (!classInCategory(self, text)) return replaceError(PyExc_AttributeError, "No class with the given name in this category");
    return pluginClass(asCategory(self)->renderer, text);
}

PyObject* categoryIter(PyObject* self) {
    return newCategoryClassesIterator(asCategory(self)->renderer, self, classNames(self));
}

PyObject* belongs(PyObject* self, PyObject* value) {
    int result = contains(self, value, true);
    return result < 0 ? nullptr : PyBool_FromLong(result);
}

PyObject* instancesOfMasks(PyObject* renderer, const uint64_t* masks, int count) {
    int found = 0;
    void* ids = SdkApi.Tovi_ToviRenderer_getPluginsOfCategories(rendererHandle(renderer), masks, count, &found);
    return adoptPluginList(renderer, ids, ids ? found : 0);
}

PyObject* categoryGetInstances(PyObject* self, PyObject*) {
    uint64_t mask = maskOf(asCategory(self)->index);
    return instancesOfMasks(asCategory(self)->renderer, &mask, 1);
}

PyObject* categoryGetName(PyObject* self, PyObject*) { return categoryName(self); }

PyObject* categoryGetRenderer(PyObject* self, PyObject*) { return Py_NewRef(asCategory(self)->renderer); }

PyObject* categoryDir(PyObject* self, PyObject*);

PyMethodDef categoryMethods[] = {
    {"belongs", belongs, METH_O, nullptr},
    {"getInstances", categoryGetInstances, METH_NOARGS, nullptr},
    {"getName", categoryGetName, METH_NOARGS, nullptr},
    {"getRenderer", categoryGetRenderer, METH_NOARGS, nullptr},
    {"__dir__", categoryDir, METH_NOARGS, nullptr},
    {nullptr, nullptr, 0, nullptr},
};

PyObject* categoryDir(PyObject* self, PyObject*) { return namesThenMethods(vectorTexts(classNames(self)), categoryMethods); }

PyMappingMethods categoryAsMapping = {categoryLength, categoryGetItem, nullptr};
PySequenceMethods categoryAsSequence = {
    nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
    categoryContains,  // sq_contains
};

// ---- tovi.Categories ----

PyObject* categoriesRenderer(PyObject* self) { return boundRenderer(self); }

Py_ssize_t categoriesLength(PyObject*) { return categoryCount(); }

PyObject* categoriesGetItem(PyObject* self, PyObject* key) {
    if (!PyUnicode_Check(key)) return replaceError(PyExc_TypeError, "Category name string is expected");
    const char* name = PyUnicode_AsUTF8(key);
    if (!name) return nullptr;
    int index = SdkApi.Tovi_getPluginCategoryEnumFromName(name);
    if (index < 0 || index >= categoryCount()) {
        PyErr_SetObject(PyExc_KeyError, key);
        return nullptr;
    }
    return categoryObject(categoriesRenderer(self), static_cast<uint32_t>(index));
}

PyObject* categoriesGetAttr(PyObject* self, PyObject* name) {
    PyObject* found = PyObject_GenericGetAttr(self, name);
    if (found || !PyErr_ExceptionMatches(PyExc_AttributeError)) return found;
    PyErr_Clear();
    const char* text = PyUnicode_AsUTF8(name);
    if (!text) return nullptr;
    int index = SdkApi.Tovi_getPluginCategoryEnumFromName(text);
    if (index < 0 || index >= categoryCount()) return replaceError(PyExc_AttributeError, "Unrecognized category name");
    return categoryObject(categoriesRenderer(self), static_cast<uint32_t>(index));
}

int categoriesContains(PyObject* self, PyObject* value) {
    if (isCategory(value)) return categoryHandle(value) == rendererHandle(categoriesRenderer(self));
    if (!PyUnicode_Check(value)) return 0;
    const char* name = PyUnicode_AsUTF8(value);
    if (!name) {
        PyErr_Clear();
        return 0;
    }
    int index = SdkApi.Tovi_getPluginCategoryEnumFromName(name);
    return index >= 0 && index < categoryCount();
}

PyObject* categoryNameList() {
    int count = categoryCount();
    PyRef names(PyList_New(0));
    if (!names) return nullptr;
    for (int index = 0; index < count; ++index) {
        PyRef name(vectorStringElement(SdkApi.Tovi_getPluginCategoryNameFromEnum(index)));
        if (!name || PyList_Append(names.get(), name.get()) < 0) return nullptr;
    }
    return names.release();
}

PyObject* categoriesRepr(PyObject*) {
    PyRef names(categoryNameList());
    if (!names) {
        PyErr_Clear();
        Py_RETURN_NONE;
    }
    return PyObject_Str(names.get());
}

PyObject* categoriesIter(PyObject* self);

// One mask per argument, each the categories of the items of that iterable; false with the
// TypeError set.
bool masksOf(PyObject* args, std::vector<uint64_t>& masks) {
    constexpr const char* message = "This function expects a sequence of category objects or sequences of category objects";
    for (Py_ssize_t position = 0; position < PyTuple_GET_SIZE(args); ++position) {
        PyRef iterator(PyObject_GetIter(PyTuple_GET_ITEM(args, position)));
        if (!iterator) return replaceError(PyExc_TypeError, message), false;
        uint64_t mask = 0;
        while (PyObject* item = PyIter_Next(iterator.get())) {
            bool category = isCategory(item);
            if (category) mask |= maskOf(asCategory(item)->index);
            Py_DECREF(item);
            if (!category) return replaceError(PyExc_TypeError, message), false;
        }
        if (PyErr_Occurred()) return replaceError(PyExc_TypeError, message), false;
        masks.push_back(mask);
    }
    return true;
}

PyObject* categoriesGetInstances(PyObject* self, PyObject* args) {
    std::vector<uint64_t> masks;
    try {
        if (!masksOf(args, masks)) return nullptr;
    } catch (const std::bad_alloc&) {
        return PyErr_NoMemory();
    }
    return instancesOfMasks(categoriesRenderer(self), masks.data(), static_cast<int>(masks.size()));
}

PyObject* categoriesGetClasses(PyObject* self, PyObject* args) {
    std::vector<uint64_t> masks;
    try {
        if (!masksOf(args, masks)) return nullptr;
    } catch (const std::bad_alloc&) {
        return PyErr_NoMemory();
    }
    PyObject* renderer = categoriesRenderer(self);
    SdkVector names(SdkApi.Tovi_ToviRenderer_getPluginClassNamesOfCategories(rendererHandle(renderer), masks.data(),
                                                                             static_cast<int>(masks.size())));
    PyRef classes(PySet_New(nullptr));
    if (!classes) return nullptr;
    for (int index = 0; index < names.size(); ++index) {
        PyRef item(pluginClass(renderer, static_cast<const char*>(names.element(index))));
        if (!item || PySet_Add(classes.get(), item.get()) < 0) return nullptr;
    }
    return classes.release();
}

PyObject* categoriesDir(PyObject* self, PyObject*);

PyMethodDef categoriesMethods[] = {
    {"getInstances", categoriesGetInstances, METH_VARARGS,
     "Returns a list of all Plugin instances of the passed category lists (or tuples, sets or any iterables).\n"
     "The plugins returned are either of all categories of the first sequence\n"
     "or of all categories of the second sequence, etc.\n"
     "(It's an AND operation of the categories of each sequence and an OR operation between the sequences.)\n"
     "Arguments: \n"
     "  [category1, ...], [category2, ...], ... - A sequence or sequences of Category objects.\n"
     "Return:\n"
     "  An list-like sequence of all Plugin instances of this category, PluginList.\n\n"},
    {"getClasses", categoriesGetClasses, METH_VARARGS,
     "Returns a list of all Plugin classes of the passed category lists (or tuples, sets or any iterables).\n"
     "The plugins returned are either of all categories of the first sequence\n"
     "or of all categories of the second sequence, etc.\n"
     "(It's an AND operation of the categories of each sequence and an OR operation between the sequences.)\n"
     "Arguments: \n"
     "  [category1, ...], [category2, ...], ... - A sequence or sequences of Category objects.\n"
     "Return:\n"
     "  A set of all classes of this category.\n\n"},
    {"getRenderer", boundGetRenderer, METH_NOARGS, "Returns the ToviRenderer instance to which this object belongs."},
    {"__dir__", categoriesDir, METH_NOARGS, nullptr},
    {nullptr, nullptr, 0, nullptr},
};

PyObject* categoriesDir(PyObject*, PyObject*) { return namesThenMethods(categoryNameList(), categoriesMethods); }

PyMappingMethods categoriesAsMapping = {categoriesLength, categoriesGetItem, nullptr};
PySequenceMethods categoriesAsSequence = {
    nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
    categoriesContains,  // sq_contains
};

// ---- tovi.CategoriesIterator ----

struct CategoriesIteratorObject {
    PyObject_HEAD
    PyObject* renderer;
    uint64_t position;
};

PyObject* categoriesIter(PyObject* self) {
    auto* iterator = PyObject_GC_New(CategoriesIteratorObject, &CategoriesIteratorType);
    if (!iterator) return nullptr;
    iterator->renderer = Py_NewRef(categoriesRenderer(self));
    iterator->position = 0;
    PyObject_GC_Track(iterator);
    return reinterpret_cast<PyObject*>(iterator);
}

PyObject* categoriesIteratorNext(PyObject* object) {
    auto* self = reinterpret_cast<CategoriesIteratorObject*>(object);
    int count = categoryCount();
    if (count <= 0 || self->position >= static_cast<uint64_t>(count)) return nullptr;
    return categoryObject(self->renderer, static_cast<uint32_t>(self->position++));
}

int categoriesIteratorTraverse(PyObject* object, visitproc visit, void* arg) {
    Py_VISIT(reinterpret_cast<CategoriesIteratorObject*>(object)->renderer);
    return 0;
}

void categoriesIteratorDealloc(PyObject* object) {
    PyObject_GC_UnTrack(object);
    Py_CLEAR(reinterpret_cast<CategoriesIteratorObject*>(object)->renderer);
    PyObject_GC_Del(object);
}

}  // namespace

PyObject* categoryObject(PyObject* renderer, uint32_t index) {
    int count = categoryCount();
    if (count <= 0 || index >= static_cast<uint32_t>(count)) Py_RETURN_NONE;
    std::vector<PyObject*>* table = categoryTable(renderer);
    if (!table) return PyErr_Occurred() ? nullptr : PyErr_NoMemory();
    if (PyObject* live = (*table)[index]) return Py_NewRef(live);
    auto* category = PyObject_GC_New(CategoryObject, &CategoryType);
    if (!category) return nullptr;
    category->renderer = Py_NewRef(renderer);
    category->classNames = nullptr;
    category->index = index;
    (*table)[index] = reinterpret_cast<PyObject*>(category);
    PyObject_GC_Track(category);
    return reinterpret_cast<PyObject*>(category);
}

PyObject* categorySet(PyObject* renderer, uint64_t mask) {
    PyRef set(PySet_New(nullptr));
    if (!set) return nullptr;
    int count = categoryCount();
    for (int index = 0; index < 64 && index < count && (uint64_t{1} << index) <= mask; ++index) {
        if (!(mask >> index & 1)) continue;
        PyRef category(categoryObject(renderer, static_cast<uint32_t>(index)));
        if (!category || PySet_Add(set.get(), category.get()) < 0) return nullptr;
    }
    return set.release();
}

PyObject* newCategoriesCollection(PyObject* renderer) {
    // The category objects of the collection live in the renderer's table.
    if (!categoryTable(renderer)) return PyErr_Occurred() ? nullptr : PyErr_NoMemory();
    return newRendererBound(&CategoriesType, renderer);
}

PyTypeObject CategoriesType = {
    PyVarObject_HEAD_INIT(nullptr, 0)
    "tovi.Categories",                        // tp_name
    sizeof(RendererBoundObject),              // tp_basicsize
    0,                                        // tp_itemsize
    deallocRendererBound,                     // tp_dealloc
    0,                                        // tp_vectorcall_offset
    nullptr,                                  // tp_getattr
    nullptr,                                  // tp_setattr
    nullptr,                                  // tp_as_async
    categoriesRepr,                           // tp_repr
    nullptr,                                  // tp_as_number
    &categoriesAsSequence,                    // tp_as_sequence
    &categoriesAsMapping,                     // tp_as_mapping
    nullptr,                                  // tp_hash
    nullptr,                                  // tp_call
    nullptr,                                  // tp_str
    categoriesGetAttr,                        // tp_getattro
    nullptr,                                  // tp_setattro
    nullptr,                                  // tp_as_buffer
    Py_TPFLAGS_DEFAULT | Py_TPFLAGS_HAVE_GC,  // tp_flags
    "Tovi Plugin Categories dictionary",      // tp_doc
    traverseRendererBound,                    // tp_traverse
    clearRendererBound,                       // tp_clear
    nullptr,                                  // tp_richcompare
    0,                                        // tp_weaklistoffset
    categoriesIter,                           // tp_iter
    nullptr,                                  // tp_iternext
    categoriesMethods,                        // tp_methods
};

PyTypeObject CategoriesIteratorType = {
    PyVarObject_HEAD_INIT(nullptr, 0)
    "tovi.CategoriesIterator",                // tp_name
    sizeof(CategoriesIteratorObject),         // tp_basicsize
    0,                                        // tp_itemsize
    categoriesIteratorDealloc,                // tp_dealloc
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
    "Tovi Plugin Categories iterator",        // tp_doc
    categoriesIteratorTraverse,               // tp_traverse
    nullptr,                                  // tp_clear
    nullptr,                                  // tp_richcompare
    0,                                        // tp_weaklistoffset
    PyObject_SelfIter,                        // tp_iter
    categoriesIteratorNext,                   // tp_iternext
};

PyTypeObject CategoryType = {
    PyVarObject_HEAD_INIT(nullptr, 0)
    "tovi.Category",                          // tp_name
    sizeof(CategoryObject),                   // tp_basicsize
    0,                                        // tp_itemsize
    categoryDealloc,                          // tp_dealloc
    0,                                        // tp_vectorcall_offset
    nullptr,                                  // tp_getattr
    nullptr,                                  // tp_setattr
    nullptr,                                  // tp_as_async
    categoryRepr,                             // tp_repr
    nullptr,                                  // tp_as_number
    &categoryAsSequence,                      // tp_as_sequence
    &categoryAsMapping,                       // tp_as_mapping
    nullptr,                                  // tp_hash
    nullptr,                                  // tp_call
    categoryName,                             // tp_str
    categoryGetAttr,                          // tp_getattro
    nullptr,                                  // tp_setattro
    nullptr,                                  // tp_as_buffer
    Py_TPFLAGS_DEFAULT | Py_TPFLAGS_HAVE_GC,  // tp_flags
    nullptr,                                  // tp_doc
    categoryTraverse,                         // tp_traverse
    categoryClear,                            // tp_clear
    nullptr,                                  // tp_richcompare
    0,                                        // tp_weaklistoffset
    categoryIter,                             // tp_iter
    nullptr,                                  // tp_iternext
    categoryMethods,                          // tp_methods
};

}  // namespace tovi
