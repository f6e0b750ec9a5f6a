#include "scene/categories.h"

namespace tovi::ref::scene {

namespace {

// The numbers are part of the SDK's interface: new categories go at the end.
const char* const names[] = {
    "lights",            // 0
    "materials",         // 1
    "brdfs",             // 2
    "textures",          // 3
    "proceduralTextures",// 4
    "textureCoordinates",// 5
    "bitmaps",           // 6
    "geometry",          // 7
    "geometricObjects",  // 8
    "cameras",           // 9
    "settings",          // 10
    "renderChannels",    // 11
    "areaLights",        // 12
};

}  // namespace

int categoryCount() { return static_cast<int>(sizeof names / sizeof names[0]); }

const char* categoryName(int index) { return index >= 0 && index < categoryCount() ? names[index] : nullptr; }

std::optional<int> categoryIndex(std::string_view name) {
    for (int index = 0; index < categoryCount(); ++index) {
        if (name == names[index]) return index;
    }
    return std::nullopt;
}

bool inAllCategoriesOfAny(uint64_t classMask, const uint64_t* masks, int maskCount) {
    for (int index = 0; masks && index < maskCount; ++index) {
        if (inAllCategories(classMask, masks[index])) return true;
    }
    return false;
}

}  // namespace tovi::ref::scene
