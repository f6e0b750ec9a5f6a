#include "format/packed_data.h"

#include <cstring>

#include <zlib.h>

namespace tovi::ref::format {

using namespace scene;

static_assert(sizeof(float) == 4 && sizeof(double) == 8, "packed data assumes IEEE single and double");
// Packed bytes are the host's own: the reference SDK is built for little-endian machines only.
static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "packed scene data is little-endian");

void appendHex(const uint8_t* bytes, size_t size, std::string& out) {
    static const char digits[] = "0123456789abcdef";
    size_t start = out.size();
    out.resize(start + size * 2);
    char* cursor = out.data() + start;
    for (size_t index = 0; index < size; ++index) {
        *cursor++ = digits[bytes[index] >> 4];
        *cursor++ = digits[bytes[index] & 0xF];
    }
}

namespace {

int hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

}  // namespace

std::optional<std::vector<uint8_t>> bytesFromHex(std::string_view hex) {
    if (hex.size() % 2) return std::nullopt;
    std::vector<uint8_t> bytes(hex.size() / 2);
    for (size_t index = 0; index < bytes.size(); ++index) {
        int high = hexDigit(hex[2 * index]);
        int low = hexDigit(hex[2 * index + 1]);
        if (high < 0 || low < 0) return std::nullopt;
        bytes[index] = static_cast<uint8_t>(high << 4 | low);
    }
    return bytes;
}

std::vector<uint8_t> compressBytes(const uint8_t* bytes, size_t size) {
    uLongf bound = compressBound(static_cast<uLong>(size));
    std::vector<uint8_t> stream(bound);
    // The fastest level: on mesh data the higher ones gain little size for several times the time.
    if (compress2(stream.data(), &bound, bytes, static_cast<uLong>(size), Z_BEST_SPEED) != Z_OK) return {};
    stream.resize(bound);
    return stream;
}

std::optional<std::vector<uint8_t>> inflateBytes(const uint8_t* stream, size_t streamSize, size_t size) {
    z_stream z{};
    if (inflateInit(&z) != Z_OK) return std::nullopt;
    std::vector<uint8_t> out;
    constexpr size_t chunk = 1 << 16;
    z.next_in = const_cast<Bytef*>(stream);
    z.avail_in = static_cast<uInt>(streamSize);
    int status = Z_OK;
    while (status == Z_OK) {
        size_t room = std::min(chunk, size - out.size());
        // One spare byte tells a stream that holds more than announced.
        if (room == 0) room = 1;
        size_t before = out.size();
        out.resize(before + room);
        z.next_out = out.data() + before;
        z.avail_out = static_cast<uInt>(room);
        status = inflate(&z, Z_NO_FLUSH);
        out.resize(before + room - z.avail_out);
        if (out.size() > size) status = Z_DATA_ERROR;
        if (status == Z_BUF_ERROR && z.avail_in == 0) break;
    }
    inflateEnd(&z);
    if (status != Z_STREAM_END || out.size() != size || z.avail_in != 0) return std::nullopt;
    return out;
}

void appendTransformRecord(const TransformValue& transform, std::vector<uint8_t>& out) {
    size_t start = out.size();
    out.resize(start + transformRecordSize);
    uint8_t* cursor = out.data() + start;
    for (const VectorValue& column : transform.matrix.columns) {
        const float numbers[3] = {column.x, column.y, column.z};
        std::memcpy(cursor, numbers, sizeof numbers);
        cursor += sizeof numbers;
    }
    std::memcpy(cursor, transform.offset, sizeof transform.offset);
}

TransformValue transformFromRecord(const uint8_t* record) {
    TransformValue transform;
    for (VectorValue& column : transform.matrix.columns) {
        float numbers[3];
        std::memcpy(numbers, record, sizeof numbers);
        record += sizeof numbers;
        column = VectorValue{numbers[0], numbers[1], numbers[2]};
    }
    std::memcpy(transform.offset, record, sizeof transform.offset);
    return transform;
}

size_t packedElementSize(PackedKind kind) {
    switch (kind) {
        case PackedKind::Int:
        case PackedKind::Float: return 4;
        case PackedKind::Vector:
        case PackedKind::Color: return 12;
        case PackedKind::Transform: return transformRecordSize;
    }
    return 0;
}

const char* packedKindName(PackedKind kind) {
    switch (kind) {
        case PackedKind::Int: return "Int";
        case PackedKind::Float: return "Float";
        case PackedKind::Vector: return "Vector";
        case PackedKind::Color: return "Color";
        case PackedKind::Transform: return "Transform";
    }
    return "";
}

std::optional<PackedKind> packedKindOf(const Value& value) {
    if (value.is<IntList>()) return PackedKind::Int;
    if (value.is<FloatList>()) return PackedKind::Float;
    if (value.is<VectorList>()) return PackedKind::Vector;
    if (value.is<ColorList>()) return PackedKind::Color;
    if (value.is<TransformList>()) return PackedKind::Transform;
    return std::nullopt;
}

namespace {

template <typename List>
std::vector<uint8_t> rawBytes(const List& list) {
    static_assert(std::is_trivially_copyable_v<typename List::value_type>, "packed elements are plain numbers");
    auto begin = reinterpret_cast<const uint8_t*>(list.data());
    return std::vector<uint8_t>(begin, begin + list.size() * sizeof(typename List::value_type));
}

template <typename List>
Value rawList(const uint8_t* bytes, size_t count) {
    List list(count);
    if (count) std::memcpy(list.data(), bytes, count * sizeof(typename List::value_type));
    return Value(std::move(list));
}

static_assert(sizeof(VectorValue) == 12 && sizeof(ColorValue) == 12, "vectors and colours are three floats");

}  // namespace

std::vector<uint8_t> packedBytes(const IntList& list) { return rawBytes(list); }
std::vector<uint8_t> packedBytes(const FloatList& list) { return rawBytes(list); }
std::vector<uint8_t> packedBytes(const VectorList& list) { return rawBytes(list); }
std::vector<uint8_t> packedBytes(const ColorList& list) { return rawBytes(list); }

std::vector<uint8_t> packedBytes(const TransformList& list) {
    std::vector<uint8_t> bytes;
    bytes.reserve(list.size() * transformRecordSize);
    for (const auto& transform : list) appendTransformRecord(transform, bytes);
    return bytes;
}

std::vector<uint8_t> packedBytes(const Value& value) {
    if (value.is<IntList>()) return packedBytes(value.as<IntList>());
    if (value.is<FloatList>()) return packedBytes(value.as<FloatList>());
    if (value.is<VectorList>()) return packedBytes(value.as<VectorList>());
    if (value.is<ColorList>()) return packedBytes(value.as<ColorList>());
    if (value.is<TransformList>()) return packedBytes(value.as<TransformList>());
    return {};
}

std::optional<Value> packedFromBytes(PackedKind kind, const uint8_t* bytes, size_t size) {
    size_t elementSize = packedElementSize(kind);
    if (size % elementSize) return std::nullopt;
    size_t count = size / elementSize;
    switch (kind) {
        case PackedKind::Int: return rawList<IntList>(bytes, count);
        case PackedKind::Float: return rawList<FloatList>(bytes, count);
        case PackedKind::Vector: return rawList<VectorList>(bytes, count);
        case PackedKind::Color: return rawList<ColorList>(bytes, count);
        case PackedKind::Transform: {
            TransformList list;
            list.reserve(count);
            for (size_t index = 0; index < count; ++index) list.push_back(transformFromRecord(bytes + index * elementSize));
            return Value(std::move(list));
        }
    }
    return std::nullopt;
}

}  // namespace tovi::ref::format
