// Declared property types: the codes a property definition reports, their names, and what each
// accepts.
#pragma once

#include <optional>
#include <string_view>

namespace tovi::ref::scene {

enum class PropertyType : int {
    Int = 0,
    Float = 1,
    Double = 2,
    Boolean = 3,
    Vector = 4,
    Color = 5,
    AColor = 6,
    Matrix = 7,
    Transform = 8,
    String = 9,
    Plugin = 10,
    Texture = 11,
    ListObject = 12,
    TextureFloat = 13,
    TextureInt = 14,
    TextureVector = 15,
    TextureMatrix = 16,
    TextureTransform = 17,
    ListInt = 100,
    ListFloat = 101,
    ListDouble = 102,
    ListBoolean = 103,
    ListVector = 104,
    ListColor = 105,
    ListAColor = 106,
    ListMatrix = 107,
    ListTransform = 108,
    ListString = 109,
    ListPlugin = 110,
    ListTexture = 111,
    ListTextureFloat = 113,
    ListTextureInt = 114,
    ListTextureVector = 115,
    ListTextureMatrix = 116,
    ListTextureTransform = 117,
    OutputTexture = 1000,
    OutputTextureFloat = 1001,
    OutputTextureInt = 1002,
    OutputTextureVector = 1003,
    OutputTextureMatrix = 1004,
    OutputTextureTransform = 1005,
    Unspecified = 10000,
};

// "int", "List<Vector>", ...; "Object" for a code with no name of its own.
std::string_view typeName(int code);
// The type of a name as typeName gives it; nothing for "Object" or an unknown name.
std::optional<PropertyType> typeFromName(std::string_view name);

// Lists of one element type (List<Object> is a list too, of any elements).
bool isList(PropertyType type);
// The element type of a list; Unspecified for List<Object>.
PropertyType elementType(PropertyType type);
// Texture slots hold either a constant of their value type or a plugin output.
bool isTexture(PropertyType type);
// The constant type of a texture slot (Texture holds an AColor).
PropertyType textureValueType(PropertyType type);
// Named outputs of a plugin: they hold no value and are what references to outputs point at.
bool isOutput(PropertyType type);

}  // namespace tovi::ref::scene
