// The SDK allocator: every block the SDK hands out or takes over comes from here, and the live
// counts let tests prove that the module releases what it receives.
#pragma once

#include <cstddef>
#include <cstdint>

namespace tovi::ref {

// Size 0 gives a valid, empty block. Null when out of memory or when the size cannot be held.
void* allocateBlock(size_t size);
// Block null allocates; newSize 0 frees and gives null; on failure null and the block stays valid.
void* reallocateBlock(void* block, size_t newSize);
void freeBlock(void* block);

// What is alive now: blocks of the allocator, filled text records and vectors.
int64_t liveBlockCount();
int64_t liveTextCount();
int64_t liveVectorCount();
void countTextCreated();
void countTextReleased();
void countVectorCreated();
void countVectorReleased();

}  // namespace tovi::ref
