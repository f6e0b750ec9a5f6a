#include "core/memory.h"

#include <atomic>
#include <cstdint>
#include <cstdlib>

namespace tovi::ref {

namespace {

std::atomic<int64_t> liveBlocks{0};
std::atomic<int64_t> liveTexts{0};
std::atomic<int64_t> liveVectors{0};

// Sizes beyond this cannot be a real request; refusing them keeps size arithmetic safe.
constexpr size_t largestBlock = static_cast<size_t>(INT64_MAX) / 2;

}  // namespace

void* allocateBlock(size_t size) {
    if (size > largestBlock) return nullptr;
    void* block = std::malloc(size ? size : 1);
    if (block) liveBlocks.fetch_add(1, std::memory_order_relaxed);
    return block;
}

void* reallocateBlock(void* block, size_t newSize) {
    if (!block) return allocateBlock(newSize);
    if (newSize == 0) {
        freeBlock(block);
        return nullptr;
    }
    if (newSize > largestBlock) return nullptr;
    return std::realloc(block, newSize);
}

void freeBlock(void* block) {
    if (!block) return;
    std::free(block);
    liveBlocks.fetch_sub(1, std::memory_order_relaxed);
}

int64_t liveBlockCount() { return liveBlocks.load(); }
int64_t liveTextCount() { return liveTexts.load(); }
int64_t liveVectorCount() { return liveVectors.load(); }
void countTextCreated() { liveTexts.fetch_add(1, std::memory_order_relaxed); }
void countTextReleased() { liveTexts.fetch_sub(1, std::memory_order_relaxed); }
void countVectorCreated() { liveVectors.fetch_add(1, std::memory_order_relaxed); }
void countVectorReleased() { liveVectors.fetch_sub(1, std::memory_order_relaxed); }

}  // namespace tovi::ref
