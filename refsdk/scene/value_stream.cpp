#include "scene/value_stream.h"

#include <cstring>
#include <stdexcept>
#include <string>

namespace tovi::ref::scene {

namespace {

constexpr int deepestNesting = 64;

template <typename T>
T readRaw(const uint8_t*& cursor) {
    T value;
    std::memcpy(&value, cursor, sizeof(T));
    cursor += sizeof(T);
    return value;
}

uint32_t readU32(const uint8_t*& cursor) { return readRaw<uint32_t>(cursor); }
float readFloat(const uint8_t*& cursor) { return readRaw<float>(cursor); }

VectorValue readVector(const uint8_t*& cursor) {
    VectorValue v;
    v.x = readFloat(cursor);
    v.y = readFloat(cursor);
    v.z = readFloat(cursor);
    return v;
}

ColorValue readColor(const uint8_t*& cursor) {
    auto v = readVector(cursor);
    return {v.x, v.y, v.z};
}

MatrixValue readMatrix(const uint8_t*& cursor) {
    MatrixValue m;
    for (auto& column : m.columns) column = readVector(cursor);
    return m;
}

TransformValue readFloatTransform(const uint8_t*& cursor) {
    TransformValue t{readMatrix(cursor), {}};
    for (double& axis : t.offset) axis = readFloat(cursor);
    return t;
}

TransformValue readTransform(const uint8_t*& cursor) {
    TransformValue t{readMatrix(cursor), {}};
    for (double& axis : t.offset) axis = readRaw<double>(cursor);
    return t;
}

std::string readString(const uint8_t*& cursor) {
    uint32_t length = readU32(cursor);
    std::string text(reinterpret_cast<const char*>(cursor), length);
    cursor += (static_cast<size_t>(length) + 4) & ~size_t{3};
    return text;
}

template <typename List, typename Read>
List readInline(const uint8_t*& cursor, Read read) {
    uint32_t count = readU32(cursor);
    List list;
    list.reserve(count);
    for (uint32_t index = 0; index < count; ++index) list.push_back(read(cursor));
    return list;
}

// Elements read during the call from the caller's storage.
template <typename List, typename Read>
List readByAddress(const uint8_t*& cursor, Read read) {
    uint32_t count = readU32(cursor);
    auto address = reinterpret_cast<const uint8_t*>(static_cast<uintptr_t>(readRaw<uint64_t>(cursor)));
    List list;
    if (count == 0) return list;
    if (!address) throw std::invalid_argument("list without storage");
    list.reserve(count);
    for (uint32_t index = 0; index < count; ++index) list.push_back(read(address));
    return list;
}

std::optional<Value> decodeItem(const uint8_t*& cursor, int depth) {
    switch (readU32(cursor)) {
        case streamInt: return Value(readRaw<int32_t>(cursor));
        case streamFloat: return Value(readFloat(cursor));
        case streamDouble: return Value(readRaw<double>(cursor));
        case streamBool: return Value(readRaw<int32_t>(cursor) != 0);
        case streamVector: return Value(readVector(cursor));
        case streamColor: return Value(readColor(cursor));
        case streamAColor: {
            AColorValue c;
            c.r = readFloat(cursor);
            c.g = readFloat(cursor);
            c.b = readFloat(cursor);
            c.a = readFloat(cursor);
            return Value(c);
        }
        case streamMatrix: return Value(readMatrix(cursor));
        case streamTransformFloat: return Value(readFloatTransform(cursor));
        case streamString: return Value(readString(cursor));
        case streamPlugin: return Value(PluginRef{readRaw<uint64_t>(cursor), 0});
        case streamList: {
            if (depth >= deepestNesting) return std::nullopt;
            uint32_t count = readU32(cursor);
            ValueList list;
            list.items.reserve(count);
            for (uint32_t index = 0; index < count; ++index) {
                auto item = decodeItem(cursor, depth + 1);
                if (!item) return std::nullopt;
                list.items.push_back(std::move(*item));
            }
            return Value(std::move(list));
        }
        case streamTransform: return Value(readTransform(cursor));
        case streamIntList: return Value(readInline<IntList>(cursor, readRaw<int32_t>));
        case streamFloatList: return Value(readInline<FloatList>(cursor, readFloat));
        case streamVectorList: return Value(readInline<VectorList>(cursor, readVector));
        case streamColorList: return Value(readInline<ColorList>(cursor, readColor));
        case streamStringList: return Value(readInline<StringList>(cursor, readString));
        case streamPluginList:
            return Value(readInline<PluginList>(cursor, [](const uint8_t*& at) { return PluginRef{readRaw<uint64_t>(at), 0}; }));
        case streamTransformList: return Value(readInline<TransformList>(cursor, readTransform));
        case streamTextAddress: {
            auto text = reinterpret_cast<const char*>(static_cast<uintptr_t>(readRaw<uint64_t>(cursor)));
            if (!text) return std::nullopt;
            return Value(std::string(text));
        }
        case streamPluginOutput: {
            PluginRef ref;
            ref.id = readRaw<uint64_t>(cursor);
            ref.output = readRaw<int32_t>(cursor);
            return Value(ref);
        }
        case streamIntListAddress: return Value(readByAddress<IntList>(cursor, readRaw<int32_t>));
        case streamFloatListAddress: return Value(readByAddress<FloatList>(cursor, readFloat));
        case streamVectorListAddress: return Value(readByAddress<VectorList>(cursor, readVector));
        case streamColorListAddress: return Value(readByAddress<ColorList>(cursor, readColor));
        case streamTransformListAddress: return Value(readByAddress<TransformList>(cursor, readFloatTransform));
        default: return std::nullopt;
    }
}

class Writer {
public:
    explicit Writer(std::vector<uint8_t>& out) : out_(out) {}

    template <typename T>
    void raw(T value) {
        auto bytes = reinterpret_cast<const uint8_t*>(&value);
        out_.insert(out_.end(), bytes, bytes + sizeof(T));
    }
    void u32(uint32_t value) { raw(value); }
    void count(size_t size) { u32(static_cast<uint32_t>(size)); }
    void vector(const VectorValue& v) {
        raw(v.x);
        raw(v.y);
        raw(v.z);
    }
    void color(const ColorValue& c) {
        raw(c.r);
        raw(c.g);
        raw(c.b);
    }
    void matrix(const MatrixValue& m) {
        for (const auto& column : m.columns) vector(column);
    }
    void transform(const TransformValue& t) {
        matrix(t.matrix);
        for (double axis : t.offset) raw(axis);
    }
    // Zero bytes up to the next multiple of 4 strictly above the length.
    void string(const std::string& text) {
        count(text.size());
        out_.insert(out_.end(), text.begin(), text.end());
        out_.insert(out_.end(), 4 - text.size() % 4, uint8_t{0});
    }

private:
    std::vector<uint8_t>& out_;
};

void encodeItem(const Value& value, Writer& w, const EncodeOptions& options) {
    std::visit(
        [&](const auto& held) {
            using T = std::decay_t<decltype(held)>;
            if constexpr (std::is_same_v<T, int32_t>) {
                w.u32(streamInt);
                w.raw(held);
            } else if constexpr (std::is_same_v<T, float>) {
                w.u32(streamFloat);
                w.raw(held);
            } else if constexpr (std::is_same_v<T, double>) {
                w.u32(streamDouble);
                w.raw(held);
            } else if constexpr (std::is_same_v<T, bool>) {
                w.u32(streamBool);
                w.raw(int32_t{held ? 1 : 0});
            } else if constexpr (std::is_same_v<T, VectorValue>) {
                w.u32(streamVector);
                w.vector(held);
            } else if constexpr (std::is_same_v<T, ColorValue>) {
                w.u32(streamColor);
                w.color(held);
            } else if constexpr (std::is_same_v<T, AColorValue>) {
                w.u32(streamAColor);
                w.raw(held.r);
                w.raw(held.g);
                w.raw(held.b);
                w.raw(held.a);
            } else if constexpr (std::is_same_v<T, MatrixValue>) {
                w.u32(streamMatrix);
                w.matrix(held);
            } else if constexpr (std::is_same_v<T, TransformValue>) {
                if (options.singlePrecisionTransforms) {
                    w.u32(streamTransformFloat);
                    w.matrix(held.matrix);
                    for (double axis : held.offset) w.raw(static_cast<float>(axis));
                } else {
                    w.u32(streamTransform);
                    w.transform(held);
                }
            } else if constexpr (std::is_same_v<T, std::string>) {
                if (options.lastingText) {
                    w.u32(streamTextAddress);
                    w.raw(static_cast<uint64_t>(reinterpret_cast<uintptr_t>(options.lastingText)));
                } else {
                    w.u32(streamString);
                    w.string(held);
                }
            } else if constexpr (std::is_same_v<T, PluginRef>) {
                if (held.isNone() || held.output <= 0) {
                    w.u32(streamPlugin);
                    w.raw(held.id);
                } else {
                    w.u32(streamPluginOutput);
                    w.raw(held.id);
                    w.raw(held.output);
                }
            } else if constexpr (std::is_same_v<T, ValueList>) {
                w.u32(streamList);
                w.count(held.items.size());
                for (const auto& item : held.items) encodeItem(item, w, options);
            } else if constexpr (std::is_same_v<T, IntList>) {
                w.u32(streamIntList);
                w.count(held.size());
                for (int32_t item : held) w.raw(item);
            } else if constexpr (std::is_same_v<T, FloatList>) {
                w.u32(streamFloatList);
                w.count(held.size());
                for (float item : held) w.raw(item);
            } else if constexpr (std::is_same_v<T, VectorList>) {
                w.u32(streamVectorList);
                w.count(held.size());
                for (const auto& item : held) w.vector(item);
            } else if constexpr (std::is_same_v<T, ColorList>) {
                w.u32(streamColorList);
                w.count(held.size());
                for (const auto& item : held) w.color(item);
            } else if constexpr (std::is_same_v<T, TransformList>) {
                w.u32(streamTransformList);
                w.count(held.size());
                for (const auto& item : held) w.transform(item);
            } else if constexpr (std::is_same_v<T, StringList>) {
                w.u32(streamStringList);
                w.count(held.size());
                for (const auto& item : held) w.string(item);
            } else if constexpr (std::is_same_v<T, PluginList>) {
                // The packed form carries identifiers only; references to outputs need items.
                bool onlyPlugins = true;
                for (const auto& item : held) onlyPlugins = onlyPlugins && (item.isNone() || item.output <= 0);
                if (onlyPlugins) {
                    w.u32(streamPluginList);
                    w.count(held.size());
                    for (const auto& item : held) w.raw(item.id);
                } else {
                    w.u32(streamList);
                    w.count(held.size());
                    for (const auto& item : held) encodeItem(Value(item), w, options);
                }
            }
        },
        value.data);
}

}  // namespace

std::optional<Value> decodeStreamItem(const uint8_t*& cursor) {
    if (!cursor) return std::nullopt;
    try {
        return decodeItem(cursor, 0);
    } catch (const std::invalid_argument&) {
        return std::nullopt;
    }
}

void encodeStreamItem(const Value& value, std::vector<uint8_t>& out, const EncodeOptions& options) {
    Writer writer(out);
    encodeItem(value, writer, options);
}

}  // namespace tovi::ref::scene
