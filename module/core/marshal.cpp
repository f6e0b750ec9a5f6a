#include "core/marshal.h"

#include <cstring>

namespace tovi {

const char* SdkCharString::text() const {
    const char* text = SdkApi.getCharStringContent(&record_);
    return text ? text : "";
}

PyObject* SdkCharString::toPython() const {
    const char* content = SdkApi.getCharStringContent(&record_);
    if (!content) return PyUnicode_FromStringAndSize("", 0);
    return PyUnicode_FromStringAndSize(content, static_cast<Py_ssize_t>(length()));
}

PyObject* textOrNone(const char* text) {
    if (!text) Py_RETURN_NONE;
    return PyUnicode_FromString(text);
}

PyObject* versionTuple(uint32_t packedVersion) {
    return Py_BuildValue("(kkk)", static_cast<unsigned long>(TOVI_VERSION_MAJOR(packedVersion)),
                         static_cast<unsigned long>(TOVI_VERSION_MINOR(packedVersion)),
                         static_cast<unsigned long>(TOVI_VERSION_PATCH(packedVersion)));
}

PyObject* vectorStringElement(const void* element) {
    return PyUnicode_FromString(element ? static_cast<const char*>(element) : "");
}

PyObject* vectorTexts(const ToviVector* vector) {
    int count = vector ? SdkApi.getVectorSize(vector) : 0;
    PyRef list(PyList_New(count > 0 ? count : 0));
    if (!list) return nullptr;
    for (int index = 0; index < count; ++index) {
        PyObject* text = vectorStringElement(SdkApi.getVectorElement(vector, index));
        if (!text) return nullptr;
        PyList_SET_ITEM(list.get(), index, text);
    }
    return list.release();
}

PyObject* namesThenMethods(PyObject* names, const PyMethodDef* methods) {
    PyRef list(names);
    if (!list) return nullptr;
    for (const PyMethodDef* method = methods; method->ml_name; ++method) {
        PyRef name(PyUnicode_FromString(method->ml_name));
        if (!name || PyList_Append(list.get(), name.get()) < 0) return nullptr;
    }
    return list.release();
}

PyObject* packedStringsToList(int count, char* block) {
    SdkBlock<char> owned(block);
    PyRef list(PyList_New(0));
    if (!list) return nullptr;
    const char* cursor = block;
    for (int index = 0; cursor && index < count; ++index) {
        PyRef text(PyUnicode_FromString(cursor));
        if (!text || PyList_Append(list.get(), text.get()) < 0) return nullptr;
        cursor += std::strlen(cursor) + 1;
    }
    return list.release();
}

}  // namespace tovi
