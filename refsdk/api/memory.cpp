// The SDK allocator and the SDK-owned texts and vectors.
#include "api/entries.h"
#include "core/memory.h"
#include "core/text.h"
#include "testctl/recorder.h"

using namespace tovi::ref;

TOVI_API const void* getVectorElement(const ToviVector* vector, int index) { return vectorElement(vector, index); }

TOVI_API int getVectorSize(const ToviVector* vector) { return vectorSize(vector); }

TOVI_API void releaseVector(ToviVector* vector) { tovi::ref::releaseVector(vector); }

TOVI_API const char* getCharStringContent(const ToviCharString* text) { return textContent(text); }

TOVI_API size_t getCharStringLength(const ToviCharString* text) { return textLength(text); }

TOVI_API void releaseCharString(ToviCharString* text) { releaseText(text); }

TOVI_API void C_memory_free(void* block) { freeBlock(block); }

TOVI_API void* C_memory_alloc(size_t size) {
    TOVI_RECORD("C_memory_alloc", {{"size", size}});
    return allocateBlock(size);
}

TOVI_API void* C_memory_realloc(void* block, size_t newSize, size_t elementSize) {
    TOVI_RECORD("C_memory_realloc", {{"newSize", newSize}, {"elementSize", elementSize}, {"hadBlock", block != nullptr}});
    if (elementSize != 0 && newSize % elementSize != 0) return nullptr;
    return reallocateBlock(block, newSize);
}
