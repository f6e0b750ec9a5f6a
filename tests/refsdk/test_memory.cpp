#include <gtest/gtest.h>

#include <cstring>

#include "core/memory.h"
#include "core/text.h"

using namespace tovi::ref;

TEST(Allocator, CountsLiveBlocksAndKeepsContentsOnGrowth) {
    int64_t start = liveBlockCount();
    void* empty = allocateBlock(0);
    ASSERT_NE(empty, nullptr);
    auto* block = static_cast<char*>(allocateBlock(16));
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(liveBlockCount(), start + 2);
    std::memcpy(block, "0123456789abcdef", 16);
    block = static_cast<char*>(reallocateBlock(block, 1 << 20));
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(std::memcmp(block, "0123456789abcdef", 16), 0);
    EXPECT_EQ(liveBlockCount(), start + 2);
    freeBlock(empty);
    freeBlock(block);
    freeBlock(nullptr);
    EXPECT_EQ(liveBlockCount(), start);
}

TEST(Allocator, ReallocateFromNullAllocatesAndToZeroFrees) {
    int64_t start = liveBlockCount();
    void* block = reallocateBlock(nullptr, 8);
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(liveBlockCount(), start + 1);
    EXPECT_EQ(reallocateBlock(block, 0), nullptr);
    EXPECT_EQ(liveBlockCount(), start);
}

TEST(Allocator, RefusesImpossibleSizesAndKeepsTheOldBlock) {
    int64_t start = liveBlockCount();
    EXPECT_EQ(allocateBlock(SIZE_MAX), nullptr);
    auto* block = static_cast<char*>(allocateBlock(4));
    ASSERT_NE(block, nullptr);
    block[0] = 'x';
    EXPECT_EQ(reallocateBlock(block, SIZE_MAX / 2), nullptr);
    EXPECT_EQ(block[0], 'x');
    freeBlock(block);
    EXPECT_EQ(liveBlockCount(), start);
}

TEST(Text, FillReadReleaseAndRefill) {
    int64_t start = liveTextCount();
    ToviCharString record{};
    EXPECT_EQ(textContent(&record), nullptr);
    EXPECT_EQ(textLength(&record), 0u);
    releaseText(&record);  // a zeroed record is harmless to release
    EXPECT_EQ(liveTextCount(), start);

    ASSERT_TRUE(setText(&record, std::string_view("caf\xc3\xa9\0tail", 10)));
    EXPECT_EQ(textLength(&record), 10u);
    EXPECT_EQ(std::memcmp(textContent(&record), "caf\xc3\xa9\0tail", 11), 0);
    ASSERT_TRUE(setText(&record, "second"));  // refilling releases the first text
    EXPECT_STREQ(textContent(&record), "second");
    EXPECT_EQ(liveTextCount(), start + 1);
    releaseText(&record);
    releaseText(&record);
    EXPECT_EQ(liveTextCount(), start);
}

TEST(Vectors, TextAndValueElementsWithBounds) {
    int64_t start = liveVectorCount();
    ToviVector* texts = newTextVector({"a", "", "third"});
    ASSERT_NE(texts, nullptr);
    EXPECT_EQ(vectorSize(texts), 3);
    EXPECT_STREQ(static_cast<const char*>(vectorElement(texts, 2)), "third");
    EXPECT_STREQ(static_cast<const char*>(vectorElement(texts, 1)), "");
    EXPECT_EQ(vectorElement(texts, 3), nullptr);
    EXPECT_EQ(vectorElement(texts, -1), nullptr);

    std::vector<uint64_t> ids = {7, UINT64_MAX};
    ToviVector* values = newValueVector(ids);
    ASSERT_NE(values, nullptr);
    EXPECT_EQ(vectorSize(values), 2);
    EXPECT_EQ(*static_cast<const uint64_t*>(vectorElement(values, 1)), UINT64_MAX);
    EXPECT_EQ(liveVectorCount(), start + 2);
    releaseVector(texts);
    releaseVector(values);
    releaseVector(nullptr);
    EXPECT_EQ(liveVectorCount(), start);
    EXPECT_EQ(vectorSize(nullptr), 0);
}
