// The fixed, numbered set of plugin categories. A class belongs to any number of them; a set of
// categories is a mask with bit i for category i.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace tovi::ref::scene {

int categoryCount();
// Null for an index out of range.
const char* categoryName(int index);
std::optional<int> categoryIndex(std::string_view name);

// Whether a class of `classMask` is in every category of `mask` (every class is in all of none).
inline bool inAllCategories(uint64_t classMask, uint64_t mask) { return (classMask & mask) == mask; }
// Whether it is in every category of at least one of the masks.
bool inAllCategoriesOfAny(uint64_t classMask, const uint64_t* masks, int maskCount);

}  // namespace tovi::ref::scene
