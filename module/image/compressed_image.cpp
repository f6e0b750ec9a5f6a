// tovi.CompressedImage.
#include "image/compressed_image.h"

#include "core/marshal.h"
#include "core/sdk_loader.h"

namespace tovi {

namespace {

struct CompressedImageObject {
    PyObject_HEAD
    void* data;            // SDK allocator block
    int32_t elementKind;   // bytes per exported item: 1, 2 or 4
    bool isSigned;         // 4-byte items are signed
    Py_ssize_t shape[1];   // item count, for exports that ask for a shape
    Py_ssize_t strides[1];
};

CompressedImageObject* asCompressed(PyObject* object) { return reinterpret_cast<CompressedImageObject*>(object); }

void compressedDealloc(PyObject* self) {
    CompressedImageObject* image = asCompressed(self);
    if (image->data && sdkLibraryLoaded()) SdkApi.C_memory_free(image->data);
    Py_TYPE(self)->tp_free(self);
}

char* itemFormat(const CompressedImageObject* image) {
    switch (image->elementKind) {
        case 2: return const_cast<char*>("H");
        case 4: return const_cast<char*>(image->isSigned ? "i" : "I");
        default: return const_cast<char*>("B");
    }
}

int compressedGetBuffer(PyObject* self, Py_buffer* view, int flags) {
    if (flags & PyBUF_WRITABLE) {
        PyErr_SetString(PyExc_BufferError, "Object is not writable.");
        return -1;
    }
    CompressedImageObject* image = asCompressed(self);
    Py_ssize_t itemSize = image->elementKind;
    view->obj = Py_NewRef(self);
    view->buf = image->data;
    view->len = image->shape[0] * itemSize;
    view->readonly = 1;
    view->itemsize = itemSize;
    view->format = (flags & PyBUF_FORMAT) ? itemFormat(image) : nullptr;
    view->ndim = 1;
    view->shape = (flags & PyBUF_ND) == PyBUF_ND ? image->shape : nullptr;
    view->strides = (flags & PyBUF_STRIDES) == PyBUF_STRIDES ? image->strides : nullptr;
    view->suboffsets = nullptr;
    view->internal = nullptr;
    return 0;
}

PyBufferProcs compressedAsBuffer = {
    compressedGetBuffer,  // bf_getbuffer
    nullptr,              // bf_releasebuffer: the block lives as long as the object
};

}  // namespace

PyTypeObject CompressedImageType = [] {
    PyTypeObject type = {PyVarObject_HEAD_INIT(nullptr, 0)};
    type.tp_name = "tovi.CompressedImage";
    type.tp_basicsize = sizeof(CompressedImageObject);
    type.tp_dealloc = compressedDealloc;
    type.tp_as_buffer = &compressedAsBuffer;
    type.tp_flags = Py_TPFLAGS_DEFAULT;
    type.tp_doc = "Encoded image bytes owned by the SDK, exported as a read-only buffer.";
    return type;
}();

PyObject* newCompressedImage(void* data, uint64_t size, int32_t elementKind, bool isSigned) {
    SdkBlock<> block(data);
    if (elementKind != 1 && elementKind != 2 && elementKind != 4) {
        PyErr_Format(PyExc_ValueError, "Unsupported element size %d.", static_cast<int>(elementKind));
        return nullptr;
    }
    if (size > static_cast<uint64_t>(PY_SSIZE_T_MAX)) return PyErr_NoMemory();
    PyObject* self = PyType_GenericAlloc(&CompressedImageType, 0);
    if (!self) return nullptr;
    CompressedImageObject* image = asCompressed(self);
    image->elementKind = elementKind;
    image->isSigned = isSigned;
    image->shape[0] = static_cast<Py_ssize_t>(size / static_cast<uint64_t>(elementKind));
    image->strides[0] = elementKind;
    image->data = block.release();
    return self;
}

PyObject* encodedBytesView(void* data, uint64_t size) {
    PyRef owner(newCompressedImage(data, size, 1, false));
    return owner ? PyMemoryView_FromObject(owner.get()) : nullptr;
}

}  // namespace tovi
