// tovi.CompressedImage: owns a block of encoded bytes from the SDK allocator and exports it as a
// read-only buffer, so that scripts receive encoded images without a copy.
#pragma once

#define PY_SSIZE_T_CLEAN
#include <Python.h>

#include <cstdint>

namespace tovi {

extern PyTypeObject CompressedImageType;

// Takes over `data` (`size` bytes from the SDK allocator; freed also when this fails). The buffer
// has items of `elementKind` bytes: 1 (unsigned bytes), 2 (unsigned 16-bit) or 4 (32-bit,
// signed when `isSigned`). A new reference, or null with the Python error set.
PyObject* newCompressedImage(void* data, uint64_t size, int32_t elementKind, bool isSigned);

// memoryview(CompressedImage) over unsigned bytes: what every encoding method answers.
PyObject* encodedBytesView(void* data, uint64_t size);

}  // namespace tovi
