#include "lists/typed_list.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "core/errors.h"
#include "core/marshal.h"
#include "core/sdk_api.h"
#include "core/sdk_loader.h"

namespace tovi {

namespace {

constexpr Py_ssize_t elementLimit = 2147483647;

PyObject* raiseIndexOutOfRange() {
    PyErr_SetString(PyExc_IndexError, "Index out of range");
    return nullptr;
}

PyObject* raiseUnsupportedSubscript() {
    PyErr_SetString(PyExc_IndexError, "Unsupported subscript type or index error");
    return nullptr;
}

}  // namespace

// ---- storage ----

const ListConversions& listKind(PyTypeObject* type) {
    // Python subclasses are heap types; the kind is the first static type above them.
    while (type->tp_flags & Py_TPFLAGS_HEAPTYPE) type = type->tp_base;
    return reinterpret_cast<const TypedListType*>(type)->kind;
}

int resizeList(TypedList* list, Py_ssize_t n) {
    if (list->owner) {
        PyErr_SetString(PyExc_BufferError,
                        "This list is created as a read-only view. You can create a modifiable copy of it explicitly.");
        return -1;
    }
    if (list->exports > 0) {
        PyErr_SetString(PyExc_BufferError, "Existing exports of data, list cannot be resized now");
        return -1;
    }
    if (n < 0 || n >= elementLimit) {
        PyErr_Format(PyExc_ValueError, "Currently more than %u number of elements are not supported",
                     static_cast<unsigned>(elementLimit));
        return -1;
    }
    Py_ssize_t allocated = list->allocated;
    if ((allocated >> 1) <= n && n <= allocated) {
        Py_SET_SIZE(list, n);
        return 0;
    }
    size_t size = elementSize(reinterpret_cast<PyObject*>(list));
    Py_ssize_t capacity = n + (n >> 3) + (n < 9 ? 3 : 6);
    if (static_cast<uint64_t>(capacity) > static_cast<uint64_t>(INT64_MAX) / size) {
        PyErr_NoMemory();
        return -1;
    }
    if (n == 0) {
        SdkApi.C_memory_free(list->data);
        list->data = nullptr;
        list->allocated = 0;
    } else {
        void* grown = SdkApi.C_memory_realloc(list->data, capacity * size, size);
        if (!grown) {
            PyErr_NoMemory();
            return -1;
        }
        list->data = static_cast<char*>(grown);
        list->allocated = capacity;
    }
    Py_SET_SIZE(list, n);
    return 0;
}

void releaseListContents(TypedList* list) {
    if (list->allocated != 0) {
        Py_SET_SIZE(list, 0);
        // Without its library the allocator is gone and the storage is abandoned.
        if (sdkLibraryLoaded()) SdkApi.C_memory_free(list->data);
        list->data = nullptr;
        list->allocated = 0;
    }
    Py_SET_SIZE(list, 0);
    if (list->owner) list->data = nullptr;
    Py_CLEAR(list->owner);
}

char* elementAt(PyObject* self, Py_ssize_t index) {
    Py_ssize_t size = Py_SIZE(self);
    if (index < 0) index += size;
    if (index < 0 || index >= size) {
        raiseIndexOutOfRange();
        return nullptr;
    }
    return asList(self)->data + index * elementSize(self);
}

int appendRawElements(TypedList* list, TypedList* other) {
    size_t size = elementSize(reinterpret_cast<PyObject*>(list));
    Py_ssize_t start = Py_SIZE(list);
    Py_ssize_t count = Py_SIZE(other);
    if (resizeList(list, start + count) < 0) return -1;
    // `other` may be the list itself: its bytes are still in place after the resize.
    std::memmove(list->data + start * size, other->data, count * size);
    return 0;
}

// ---- services ----

PyObject* newEmptyList(PyTypeObject* type, PyObject*, PyObject*) { return type->tp_alloc(type, 0); }

PyObject* newListWithRoom(PyTypeObject* kind, Py_ssize_t count, void** data) {
    PyRef list(newEmptyList(kind, nullptr, nullptr));
    if (!list || resizeList(asList(list.get()), count) < 0) return nullptr;
    *data = asList(list.get())->data;
    return list.release();
}

PyObject* newListCopying(PyTypeObject* kind, Py_ssize_t count, const void* elements) {
    void* data = nullptr;
    PyObject* list = newListWithRoom(kind, count, &data);
    if (list && count > 0) std::memcpy(data, elements, count * listKind(kind).elementSize);
    return list;
}

PyObject* adoptSdkBuffer(PyTypeObject* kind, void* buffer, Py_ssize_t count) {
    PyObject* list = newEmptyList(kind, nullptr, nullptr);
    if (!list) {
        SdkApi.C_memory_free(buffer);
        return nullptr;
    }
    asList(list)->data = static_cast<char*>(buffer);
    asList(list)->allocated = buffer ? count : 0;
    Py_SET_SIZE(list, buffer ? count : 0);
    return list;
}

PyObject* newReadOnlyView(PyTypeObject* kind, PyObject* owner, void* data, Py_ssize_t count) {
    if (!owner) return nullptr;
    PyObject* list = newEmptyList(kind, nullptr, nullptr);
    if (!list) return nullptr;
    Py_INCREF(owner);
    asList(list)->owner = owner;
    asList(list)->data = static_cast<char*>(data);
    Py_SET_SIZE(list, count);
    return list;
}

// ---- initialisation and extension ----

int initList(PyObject* self, PyObject* args, PyObject* keywords) {
    TypedList* list = asList(self);
    Py_ssize_t keywordCount = keywords ? PyDict_GET_SIZE(keywords) : 0;
    if (keywordCount > 0 && (PyTuple_GET_SIZE(args) != 0 || keywordCount != 1)) {
        PyErr_SetString(PyExc_ValueError, "Only positional data elements or only one keyword 'count' or 'source' are expected");
        return -1;
    }
    if (list->exports > 0) {
        PyErr_SetString(PyExc_BufferError, "Existing exports of data, list cannot be initialized");
        return -1;
    }
    // Storage comes from the SDK allocator.
    if (requireSdk() < 0) return -1;
    releaseListContents(list);
    if (keywordCount == 0) return extendList(self, args);

    Py_ssize_t position = 0;
    PyObject *key, *value;
    PyDict_Next(keywords, &position, &key, &value);
    if (PyUnicode_Check(key) && PyUnicode_CompareWithASCIIString(key, "count") == 0) {
        if (!PyIndex_Check(value)) {
            PyErr_SetString(PyExc_TypeError, "Count must be integer");
            return -1;
        }
        Py_ssize_t count = PyNumber_AsSsize_t(value, PyExc_OverflowError);
        if (count == -1 && PyErr_Occurred()) return -1;
        return resizeList(list, count);
    }
    if (PyUnicode_Check(key) && PyUnicode_CompareWithASCIIString(key, "source") == 0) return extendList(self, value);
    PyErr_SetString(PyExc_ValueError, "Unknown keyword argument");
    return -1;
}

namespace {

// A sequence is taken by position after growing once; list and tuple items directly.
int extendFromSequence(PyObject* self, PyObject* source, Py_ssize_t count) {
    const ListConversions& kind = listKind(self);
    TypedList* list = asList(self);
    Py_ssize_t start = Py_SIZE(list);
    // Keeps start + count from overflowing; the resize reports the limit.
    if (count > elementLimit) count = elementLimit;
    if (resizeList(list, start + count) < 0) return -1;
    bool direct = PyList_CheckExact(source) || PyTuple_CheckExact(source);
    for (Py_ssize_t index = 0; index < count; ++index) {
        PyObject* item;
        if (direct) {
            // An item's conversion may change a list: check the size again and hold the item.
            if (index >= PySequence_Fast_GET_SIZE(source)) {
                item = nullptr;
            } else {
                item = PySequence_Fast_GET_ITEM(source, index);
                Py_INCREF(item);
            }
        } else {
            item = PySequence_GetItem(source, index);
        }
        int stored = -1;
        if (item) {
            stored = kind.storeSourceItem(self, item, list->data + (start + index) * kind.elementSize);
            Py_DECREF(item);
        } else {
            replaceError(PyExc_TypeError, kind.wrongSourceItemMessage);
        }
        if (stored < 0) {
            PendingError pending;
            resizeList(list, start);
            return -1;
        }
    }
    return 0;
}

int extendFromIterator(PyObject* self, PyObject* source) {
    const ListConversions& kind = listKind(self);
    TypedList* list = asList(self);
    PyRef iterator(PyObject_GetIter(source));
    if (!iterator) return failWith(PyExc_TypeError, "Source must be iterable");
    Py_ssize_t start = Py_SIZE(list);
    while (PyObject* item = PyIter_Next(iterator.get())) {
        PyRef held(item);
        if (appendElement(self, [&](char* element) { return kind.storeSourceItem(self, item, element); }) < 0) break;
    }
    if (!PyErr_Occurred()) return 0;
    PendingError pending;
    if (Py_SIZE(list) != start) resizeList(list, start);
    return -1;
}

}  // namespace

int extendList(PyObject* self, PyObject* source) {
    if (isTypedList(source) && &listKind(source) == &listKind(self)) {
        const ListBinding* binding = listKind(self).binding;
        if (binding && binding->accept(self, source) < 0) return -1;
        return appendRawElements(asList(self), asList(source));
    }
    if (PySequence_Check(source)) {
        Py_ssize_t count = PySequence_Size(source);
        if (count >= 0) return extendFromSequence(self, source, count);
        PyErr_Clear();
    }
    return extendFromIterator(self, source);
}

PyObject* extendMethod(PyObject* self, PyObject* source) {
    if (extendList(self, source) < 0) return nullptr;
    Py_RETURN_NONE;
}

}  // namespace tovi

namespace tovi {

// ---- sequence and mapping slots ----

namespace {

void inheritBinding(PyObject* result, PyObject* source) {
    if (const ListBinding* binding = listKind(source).binding) binding->inherit(result, source);
}

Py_ssize_t listLength(PyObject* self) { return Py_SIZE(self); }

PyObject* listItem(PyObject* self, Py_ssize_t index) {
    char* element = elementAt(self, index);
    return element ? listKind(self).getItem(self, element) : nullptr;
}

PyObject* listSlice(PyObject* self, PyObject* slice) {
    Py_ssize_t start, stop, step;
    if (PySlice_Unpack(slice, &start, &stop, &step) < 0) return nullptr;
    Py_ssize_t count = PySlice_AdjustIndices(Py_SIZE(self), &start, &stop, step);
    size_t size = elementSize(self);
    void* data = nullptr;
    PyObject* result = newListWithRoom(Py_TYPE(self), count, &data);
    if (!result) return nullptr;
    inheritBinding(result, self);
    const char* source = asList(self)->data;
    if (step == 1) {
        if (count > 0) std::memcpy(data, source + start * size, count * size);
    } else {
        char* target = static_cast<char*>(data);
        for (Py_ssize_t index = 0; index < count; ++index, start += step) {
            std::memcpy(target + index * size, source + start * size, size);
        }
    }
    return result;
}

PyObject* listSubscript(PyObject* self, PyObject* key) {
    if (PyIndex_Check(key)) {
        Py_ssize_t index = PyNumber_AsSsize_t(key, PyExc_IndexError);
        if (index == -1 && PyErr_Occurred()) return replaceError(PyExc_IndexError, "Index out of range");
        return listItem(self, index);
    }
    if (PySlice_Check(key)) return listSlice(self, key);
    return raiseUnsupportedSubscript();
}

int deleteElement(PyObject* self, Py_ssize_t index) {
    char* element = elementAt(self, index);
    if (!element) return -1;
    TypedList* list = asList(self);
    size_t size = elementSize(self);
    Py_ssize_t count = Py_SIZE(list);
    // Refused up front so that a failing resize cannot leave the elements moved.
    if (list->owner || list->exports > 0) return resizeList(list, count - 1);
    char* end = list->data + count * size;
    std::memmove(element, element + size, end - element - size);
    if (resizeList(list, count - 1) < 0) return -1;
    const ListBinding* binding = listKind(self).binding;
    if (binding && count == 1) binding->emptied(self);
    return 0;
}

int listAssignSubscript(PyObject* self, PyObject* key, PyObject* value) {
    if (!PyIndex_Check(key)) {
        raiseUnsupportedSubscript();
        return -1;
    }
    Py_ssize_t index = PyNumber_AsSsize_t(key, PyExc_IndexError);
    if (index == -1 && PyErr_Occurred()) {
        replaceError(PyExc_IndexError, "Index out of range");
        return -1;
    }
    if (!value) return deleteElement(self, index);
    char* element = elementAt(self, index);
    return element ? listKind(self).setItem(self, value, element) : -1;
}

PyObject* listConcat(PyObject* self, PyObject* other) {
    if (!isTypedList(other) || elementSize(other) != elementSize(self)) {
        PyErr_SetString(PyExc_TypeError, "Cannot concatenate these types");
        return nullptr;
    }
    PyRef result(newListCopying(Py_TYPE(self), Py_SIZE(self), asList(self)->data));
    if (!result) return nullptr;
    inheritBinding(result.get(), self);
    const ListBinding* binding = listKind(self).binding;
    if (binding && binding->accept(result.get(), other) < 0) return nullptr;
    if (appendRawElements(asList(result.get()), asList(other)) < 0) return nullptr;
    return result.release();
}

// Copies the first `count` elements after themselves until `times` copies stand.
int repeatInPlace(TypedList* list, Py_ssize_t count, Py_ssize_t times) {
    if (times <= 0 || count == 0) return resizeList(list, 0);
    if (count > PY_SSIZE_T_MAX / times) return resizeList(list, -1);  // reports the limit
    if (resizeList(list, count * times) < 0) return -1;
    size_t bytes = count * elementSize(reinterpret_cast<PyObject*>(list));
    for (Py_ssize_t copy = 1; copy < times; ++copy) std::memcpy(list->data + copy * bytes, list->data, bytes);
    return 0;
}

PyObject* listRepeat(PyObject* self, Py_ssize_t times) {
    Py_ssize_t count = Py_SIZE(self);
    PyRef result(newListCopying(Py_TYPE(self), count, asList(self)->data));
    if (!result) return nullptr;
    inheritBinding(result.get(), self);
    if (repeatInPlace(asList(result.get()), count, times) < 0) return nullptr;
    return result.release();
}

PyObject* listInPlaceRepeat(PyObject* self, Py_ssize_t times) {
    if (repeatInPlace(asList(self), Py_SIZE(self), times) < 0) return nullptr;
    return Py_NewRef(self);
}

PyObject* listInPlaceConcat(PyObject* self, PyObject* source) {
    if (extendList(self, source) < 0) return nullptr;
    return Py_NewRef(self);
}

// ---- comparison ----

// The outcome of comparing two runs whose first difference gave `order` (-1, 0, 1); when the
// compared runs are equal the sizes decide.
PyObject* orderResult(int order, Py_ssize_t leftSize, Py_ssize_t rightSize, int op) {
    if (order == 0) order = leftSize < rightSize ? -1 : (leftSize > rightSize ? 1 : 0);
    bool result;
    switch (op) {
        case Py_LT: result = order < 0; break;
        case Py_LE: result = order <= 0; break;
        case Py_EQ: result = order == 0; break;
        case Py_NE: result = order != 0; break;
        case Py_GT: result = order > 0; break;
        default: result = order >= 0; break;
    }
    return PyBool_FromLong(result);
}

// The base rule: the storage as a run of 32-bit floats; a pair is "less" when the first is not
// greater than or equal to the second, so a NaN on the left counts as less.
int compareFloatRuns(const char* left, const char* right, Py_ssize_t count) {
    for (Py_ssize_t index = 0; index < count; ++index) {
        float a, b;
        std::memcpy(&a, left + index * 4, 4);
        std::memcpy(&b, right + index * 4, 4);
        if (a > b) return 1;
        if (!(a >= b)) return -1;
    }
    return 0;
}

}  // namespace

PyObject* compareLists(PyObject* self, PyObject* other, int op, PyTypeObject* family,
                       int (*compareRuns)(const char* left, const char* right, Py_ssize_t elements, size_t elementSize)) {
    if (self == other) return PyBool_FromLong(op == Py_EQ || op == Py_LE || op == Py_GE);
    if (Py_TYPE(self) != Py_TYPE(other) || !PyObject_TypeCheck(self, family)) Py_RETURN_NOTIMPLEMENTED;
    Py_ssize_t leftSize = Py_SIZE(self), rightSize = Py_SIZE(other);
    if (leftSize != rightSize && (op == Py_EQ || op == Py_NE)) return PyBool_FromLong(op == Py_NE);
    Py_ssize_t shorter = leftSize < rightSize ? leftSize : rightSize;
    int order = compareRuns(asList(self)->data, asList(other)->data, shorter, elementSize(self));
    return orderResult(order, leftSize, rightSize, op);
}

namespace {

PyObject* listRichCompare(PyObject* self, PyObject* other, int op) {
    return compareLists(self, other, op, &TypedListBaseType.type,
                        [](const char* left, const char* right, Py_ssize_t elements, size_t size) {
                            return compareFloatRuns(left, right, elements * static_cast<Py_ssize_t>(size / 4));
                        });
}

// ---- buffer ----

int listGetBuffer(PyObject* self, Py_buffer* view, int flags) {
    TypedList* list = asList(self);
    if (PyBuffer_FillInfo(view, self, list->data, Py_SIZE(list) * elementSize(self), 0, flags) < 0) return -1;
    ++list->exports;
    return 0;
}

void listReleaseBuffer(PyObject* self, Py_buffer*) { --asList(self)->exports; }

// ---- text ----

// A byte buffer that grows as the text form asks: size + 6 + size / 2 at a time.
class TextBuffer {
public:
    ~TextBuffer() { PyMem_Free(bytes_); }
    bool append(const char* text, size_t length) {
        while (used_ + length > capacity_) {
            size_t capacity = capacity_ + 6 + capacity_ / 2;
            char* grown = static_cast<char*>(PyMem_Realloc(bytes_, capacity));
            if (!grown) {
                PyErr_NoMemory();
                return false;
            }
            bytes_ = grown;
            capacity_ = capacity;
        }
        std::memcpy(bytes_ + used_, text, length);
        used_ += length;
        return true;
    }
    PyObject* toPython() const { return PyUnicode_FromStringAndSize(bytes_, used_); }

private:
    char* bytes_ = nullptr;
    size_t used_ = 0;
    size_t capacity_ = 0;
};

PyObject* listText(PyObject* self, bool shortened) {
    const ListConversions& kind = listKind(self);
    Py_ssize_t size = Py_SIZE(self);
    Py_ssize_t shown = size;
    // Fewer than four hidden elements are shown instead.
    if (shortened && size - kind.strLimit >= 4) shown = kind.strLimit;
    TextBuffer text;
    if (!text.append(kind.textPrefix, std::strlen(kind.textPrefix))) return nullptr;
    char piece[101];
    for (Py_ssize_t index = 0; index < shown; ++index) {
        const char* element = asList(self)->data + index * kind.elementSize;
        int length = kind.formatElement(self, element, index + 1 < shown ? ", " : "", piece, sizeof piece);
        if (length < 0) return nullptr;
        if (!text.append(piece, std::min<size_t>(length, sizeof piece - 1))) return nullptr;
    }
    if (shown < size) {
        int length = std::snprintf(piece, 31, ", ... %u more items", static_cast<unsigned>(size - shown));
        if (!text.append(piece, std::min(length, 30))) return nullptr;
    }
    if (!text.append(")", 1)) return nullptr;
    return text.toPython();
}

PyObject* listRepr(PyObject* self) { return listText(self, false); }
PyObject* listStr(PyObject* self) { return listText(self, true); }

PySequenceMethods listAsSequence = {
    listLength,         // sq_length
    listConcat,         // sq_concat
    listRepeat,         // sq_repeat
    listItem,           // sq_item
    nullptr,            // was_sq_slice
    nullptr,            // sq_ass_item
    nullptr,            // was_sq_ass_slice
    nullptr,            // sq_contains
    listInPlaceConcat,  // sq_inplace_concat
    listInPlaceRepeat,  // sq_inplace_repeat
};

PyMappingMethods listAsMapping = {
    listLength,           // mp_length
    listSubscript,        // mp_subscript
    listAssignSubscript,  // mp_ass_subscript
};

PyBufferProcs listAsBuffer = {
    listGetBuffer,      // bf_getbuffer
    listReleaseBuffer,  // bf_releasebuffer
};

}  // namespace

void deallocList(PyObject* self) {
    releaseListContents(asList(self));
    Py_TYPE(self)->tp_free(self);
}

TypedListType TypedListBaseType = {{
    PyVarObject_HEAD_INIT(nullptr, 0)
    "tovi.TypedList",                         // tp_name
    sizeof(TypedList),                        // tp_basicsize
    0,                                        // tp_itemsize
    deallocList,                              // tp_dealloc
    0,                                        // tp_vectorcall_offset
    nullptr,                                  // tp_getattr
    nullptr,                                  // tp_setattr
    nullptr,                                  // tp_as_async
    listRepr,                                 // tp_repr
    nullptr,                                  // tp_as_number
    &listAsSequence,                          // tp_as_sequence
    &listAsMapping,                           // tp_as_mapping
    nullptr,                                  // tp_hash
    nullptr,                                  // tp_call
    listStr,                                  // tp_str
    nullptr,                                  // tp_getattro
    nullptr,                                  // tp_setattro
    &listAsBuffer,                            // tp_as_buffer
    Py_TPFLAGS_DEFAULT | Py_TPFLAGS_BASETYPE, // tp_flags
    "The base abstract type of IntList, FloatList, VectorList, ColorList, TransformList and PluginList.\n",  // tp_doc
    nullptr,                                  // tp_traverse
    nullptr,                                  // tp_clear
    listRichCompare,                          // tp_richcompare
}};

}  // namespace tovi

namespace tovi {

TypedListType makeListKind(const char* name, const char* doc, PyMethodDef* methods, richcmpfunc compare,
                           const ListConversions& conversions) {
    TypedListType kind = {{PyVarObject_HEAD_INIT(nullptr, 0)}, conversions};
    PyTypeObject& type = kind.type;
    type.tp_name = name;
    type.tp_basicsize = sizeof(TypedList);
    type.tp_dealloc = deallocList;
    type.tp_flags = Py_TPFLAGS_DEFAULT | Py_TPFLAGS_BASETYPE;
    type.tp_doc = doc;
    type.tp_richcompare = compare;
    type.tp_methods = methods;
    type.tp_base = &TypedListBaseType.type;
    type.tp_init = initList;
    type.tp_new = newEmptyList;
    return kind;
}

}  // namespace tovi
