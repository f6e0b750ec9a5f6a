// Packed numbers of scene files: hexadecimal text of little-endian bytes, zlib streams, and the
// byte layouts of the packed list elements.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "scene/value.h"

namespace tovi::ref::format {

// Lowercase hexadecimal digits, two per byte, appended to out.
void appendHex(const uint8_t* bytes, size_t size, std::string& out);
// Nothing for an odd length or a character that is not a hexadecimal digit.
std::optional<std::vector<uint8_t>> bytesFromHex(std::string_view hex);

// A zlib stream of the bytes.
std::vector<uint8_t> compressBytes(const uint8_t* bytes, size_t size);
// The stream inflated to exactly `size` bytes; nothing when it is damaged, shorter or longer.
// Memory grows with what the stream really holds, so a stream that lies about its size cannot
// make the reader allocate more than the stream inflates to (and never more than `size`).
std::optional<std::vector<uint8_t>> inflateBytes(const uint8_t* stream, size_t streamSize, size_t size);

// Transforms travel as 60 bytes: the matrix as nine floats, column by column, then the offset as
// three doubles, so that packed transforms keep the offset's double precision.
constexpr size_t transformRecordSize = 60;
void appendTransformRecord(const scene::TransformValue& transform, std::vector<uint8_t>& out);
scene::TransformValue transformFromRecord(const uint8_t* record);

// The packed list kinds that have a byte form, by the name their constructors carry.
enum class PackedKind { Int, Float, Vector, Color, Transform };
size_t packedElementSize(PackedKind kind);
const char* packedKindName(PackedKind kind);  // "Int", "Float", "Vector", "Color", "Transform"
std::optional<PackedKind> packedKindOf(const scene::Value& value);
// The bytes of a packed list value.
std::vector<uint8_t> packedBytes(const scene::Value& value);
std::vector<uint8_t> packedBytes(const scene::IntList& list);
std::vector<uint8_t> packedBytes(const scene::FloatList& list);
std::vector<uint8_t> packedBytes(const scene::VectorList& list);
std::vector<uint8_t> packedBytes(const scene::ColorList& list);
std::vector<uint8_t> packedBytes(const scene::TransformList& list);
// The kind of a packed list type.
template <typename List>
constexpr PackedKind packedKindOf() {
    if constexpr (std::is_same_v<List, scene::IntList>) return PackedKind::Int;
    if constexpr (std::is_same_v<List, scene::FloatList>) return PackedKind::Float;
    if constexpr (std::is_same_v<List, scene::VectorList>) return PackedKind::Vector;
    if constexpr (std::is_same_v<List, scene::ColorList>) return PackedKind::Color;
    return PackedKind::Transform;
}
// A packed list from whole elements of bytes; nothing when the size is not a multiple.
std::optional<scene::Value> packedFromBytes(PackedKind kind, const uint8_t* bytes, size_t size);

}  // namespace tovi::ref::format
