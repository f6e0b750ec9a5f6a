// tovi.TypedList: the common base of the packed element lists. Storage comes from the SDK
// allocator so that whole arrays pass to and from the SDK by pointer.
#pragma once

#define PY_SSIZE_T_CLEAN
#include <Python.h>

#include <cstdint>

namespace tovi {

// ob_size is the number of elements in use.
struct TypedList {
    PyObject_VAR_HEAD
    Py_ssize_t allocated;  // capacity in elements; 0 for a view or an empty list
    char* data;
    uint64_t exports;      // live buffer exports
    PyObject* owner;       // a read-only view's owner of `data`, else null
};

// The textual form of one element: writes at most `size` bytes, answers the count, as snprintf.
using ElementFormatter = int (*)(PyObject* self, const char* element, const char* separator, char* buffer, size_t size);

// A kind whose elements belong to an owner (plugins to their renderer) tells the generic
// routines how the binding travels.
struct ListBinding {
    // A list made from `source` (slice, repetition, concatenation) shares its binding.
    void (*inherit)(PyObject* result, PyObject* source);
    // Before `other`'s elements join `self`: -1 with the Python error set when they may not.
    int (*accept)(PyObject* self, PyObject* other);
    // The list lost its last element.
    void (*emptied)(PyObject* self);
};

// What distinguishes one list kind from another; the generic routines call its conversions.
struct ListConversions {
    uint64_t elementSize;
    PyObject* (*getItem)(PyObject* self, const char* element);
    // Item assignment: -1 with the Python error set, the element unchanged.
    int (*setItem)(PyObject* self, PyObject* value, char* element);
    // One item of an extend source; -1 with the kind's message (or the item's error) set.
    int (*storeSourceItem)(PyObject* self, PyObject* item, char* element);
    const char* wrongSourceItemMessage;  // TypeError of an extend item that cannot be fetched
    const char* textPrefix;              // "IntList(" ...
    ElementFormatter formatElement;
    Py_ssize_t strLimit;                 // str() shows at most this many elements
    const ListBinding* binding = nullptr;
};

// A list kind's type object carries the byte size of one element, then the other conversions.
struct TypedListType {
    PyTypeObject type;
    ListConversions kind;
};

// The type object of a kind: the base's slots with the kind's name, docstring, methods,
// comparison (null: the base rule) and conversions.
TypedListType makeListKind(const char* name, const char* doc, PyMethodDef* methods, richcmpfunc compare,
                           const ListConversions& conversions);

extern TypedListType TypedListBaseType;

inline TypedList* asList(PyObject* object) { return reinterpret_cast<TypedList*>(object); }
inline bool isTypedList(PyObject* object) { return PyObject_TypeCheck(object, &TypedListBaseType.type); }


// The kind of a list type; Python subclasses have their kind's.
const ListConversions& listKind(PyTypeObject* type);
inline const ListConversions& listKind(PyObject* list) { return listKind(Py_TYPE(list)); }

inline size_t elementSize(PyObject* list) { return listKind(list).elementSize; }

// Sets the size to n elements, growing or shrinking the storage by the list's policy.
// -1 with the Python error set, the list unchanged.
int resizeList(TypedList* list, Py_ssize_t n);

// Frees the storage (while the SDK library that allocated it is loaded) and drops the owner.
void releaseListContents(TypedList* list);

// The generic extend: a list of the same kind by raw copy, a sequence by position, any other
// iterable item by item. On failure the list keeps its former length and contents.
int extendList(PyObject* self, PyObject* source);
// The kinds' append and extend methods, over their TypedListType conversions.
PyObject* extendMethod(PyObject* self, PyObject* source);

// Appends one element through `store(slot)`; -1 with the Python error set, the list unchanged.
template <typename Store>
int appendElement(PyObject* self, Store store) {
    TypedList* list = asList(self);
    Py_ssize_t size = Py_SIZE(list);
    if (resizeList(list, size + 1) < 0) return -1;
    if (store(list->data + size * elementSize(self)) < 0) {
        resizeList(list, size);
        return -1;
    }
    return 0;
}

// The element at an index (negative counts from the end); null with IndexError when outside.
char* elementAt(PyObject* self, Py_ssize_t index);

// Services for other parts of the module. Each answers a new reference or null with the error.
PyObject* newListCopying(PyTypeObject* kind, Py_ssize_t count, const void* elements);
PyObject* newListWithRoom(PyTypeObject* kind, Py_ssize_t count, void** data);
// Takes over a buffer from the SDK allocator holding `count` packed elements.
PyObject* adoptSdkBuffer(PyTypeObject* kind, void* buffer, Py_ssize_t count);
// A list over memory of `owner`, which it keeps alive; null (no error) when owner is null.
PyObject* newReadOnlyView(PyTypeObject* kind, PyObject* owner, void* data, Py_ssize_t count);
// Appends the other list's bytes.
int appendRawElements(TypedList* list, TypedList* other);

// Rich comparison of two lists of exactly the same type within `family`: the first difference
// of `compareRuns` (-1, 0, 1 over `elements` elements) decides, then the sizes.
PyObject* compareLists(PyObject* self, PyObject* other, int op, PyTypeObject* family,
                       int (*compareRuns)(const char* left, const char* right, Py_ssize_t elements, size_t elementSize));

// Slots the kinds share.
PyObject* newEmptyList(PyTypeObject* type, PyObject* args, PyObject* keywords);
int initList(PyObject* self, PyObject* args, PyObject* keywords);
void deallocList(PyObject* self);


}  // namespace tovi
