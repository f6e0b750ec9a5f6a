#include "scene/property_type.h"

#include <array>
#include <utility>

namespace tovi::ref::scene {

namespace {

constexpr std::array<std::pair<int, std::string_view>, 42> typeNames{{
    {0, "int"},
    {1, "float"},
    {2, "double"},
    {3, "boolean"},
    {4, "Vector"},
    {5, "Color"},
    {6, "AColor"},
    {7, "Matrix"},
    {8, "Transform"},
    {9, "String"},
    {10, "Plugin"},
    {11, "Texture"},
    {12, "List<Object>"},
    {13, "TextureFloat"},
    {14, "TextureInt"},
    {15, "TextureVector"},
    {16, "TextureMatrix"},
    {17, "TextureTransform"},
    {100, "List<int>"},
    {101, "List<float>"},
    {102, "List<double>"},
    {103, "List<boolean>"},
    {104, "List<Vector>"},
    {105, "List<Color>"},
    {106, "List<AColor>"},
    {107, "List<Matrix>"},
    {108, "List<Transform>"},
    {109, "List<String>"},
    {110, "List<Plugin>"},
    {111, "List<Texture>"},
    {113, "List<TextureFloat>"},
    {114, "List<TextureInt>"},
    {115, "List<TextureVector>"},
    {116, "List<TextureMatrix>"},
    {117, "List<TextureTransform>"},
    {1000, "OutputTexture"},
    {1001, "OutputTextureFloat"},
    {1002, "OutputTextureInt"},
    {1003, "OutputTextureVector"},
    {1004, "OutputTextureMatrix"},
    {1005, "OutputTextureTransform"},
    {10000, "Unspecified"},
}};

}  // namespace

std::string_view typeName(int code) {
    for (const auto& [typeCode, name] : typeNames) {
        if (typeCode == code) return name;
    }
    return "Object";
}

std::optional<PropertyType> typeFromName(std::string_view name) {
    for (const auto& [typeCode, typeText] : typeNames) {
        if (typeText == name) return static_cast<PropertyType>(typeCode);
    }
    return std::nullopt;
}

bool isList(PropertyType type) {
    int code = static_cast<int>(type);
    return code == 12 || (code >= 100 && code <= 117);
}

PropertyType elementType(PropertyType type) {
    if (type == PropertyType::ListObject) return PropertyType::Unspecified;
    if (type == PropertyType::ListTexture) return PropertyType::Texture;
    int code = static_cast<int>(type);
    if (code >= 100 && code <= 110) return static_cast<PropertyType>(code - 100);
    if (code >= 113 && code <= 117) return static_cast<PropertyType>(code - 100);
    return PropertyType::Unspecified;
}

bool isTexture(PropertyType type) {
    int code = static_cast<int>(type);
    return code == 11 || (code >= 13 && code <= 17);
}

PropertyType textureValueType(PropertyType type) {
    switch (type) {
        case PropertyType::Texture: return PropertyType::AColor;
        case PropertyType::TextureFloat: return PropertyType::Float;
        case PropertyType::TextureInt: return PropertyType::Int;
        case PropertyType::TextureVector: return PropertyType::Vector;
        case PropertyType::TextureMatrix: return PropertyType::Matrix;
        case PropertyType::TextureTransform: return PropertyType::Transform;
        default: return type;
    }
}

bool isOutput(PropertyType type) {
    int code = static_cast<int>(type);
    return code >= 1000 && code <= 1005;
}

}  // namespace tovi::ref::scene
