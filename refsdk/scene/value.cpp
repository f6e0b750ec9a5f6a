#include "scene/value.h"

#include <cmath>
#include <limits>

namespace tovi::ref::scene {

bool operator==(const VectorValue& a, const VectorValue& b) { return a.x == b.x && a.y == b.y && a.z == b.z; }
bool operator==(const ColorValue& a, const ColorValue& b) { return a.r == b.r && a.g == b.g && a.b == b.b; }
bool operator==(const AColorValue& a, const AColorValue& b) {
    return a.r == b.r && a.g == b.g && a.b == b.b && a.a == b.a;
}
bool operator==(const MatrixValue& a, const MatrixValue& b) {
    return a.columns[0] == b.columns[0] && a.columns[1] == b.columns[1] && a.columns[2] == b.columns[2];
}
bool operator==(const TransformValue& a, const TransformValue& b) {
    return a.matrix == b.matrix && a.offset[0] == b.offset[0] && a.offset[1] == b.offset[1] &&
           a.offset[2] == b.offset[2];
}
bool operator==(const PluginRef& a, const PluginRef& b) { return a.id == b.id && (a.isNone() || a.output == b.output); }
bool operator==(const ValueList& a, const ValueList& b) { return a.items == b.items; }
bool operator==(const Value& a, const Value& b) { return a.data == b.data; }

MatrixValue identityMatrix() { return MatrixValue{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}}; }

TransformValue identityTransform() { return TransformValue{identityMatrix(), {0, 0, 0}}; }

int elementCount(const Value& value) {
    return std::visit(
        [](const auto& held) -> int {
            using T = std::decay_t<decltype(held)>;
            if constexpr (std::is_same_v<T, ValueList>) {
                return static_cast<int>(held.items.size());
            } else if constexpr (std::is_same_v<T, IntList> || std::is_same_v<T, FloatList> ||
                                 std::is_same_v<T, VectorList> || std::is_same_v<T, ColorList> ||
                                 std::is_same_v<T, TransformList> || std::is_same_v<T, StringList> ||
                                 std::is_same_v<T, PluginList>) {
                return static_cast<int>(held.size());
            } else {
                return -1;
            }
        },
        value.data);
}

std::optional<std::vector<Value>> listItems(const Value& value) {
    return std::visit(
        [](const auto& held) -> std::optional<std::vector<Value>> {
            using T = std::decay_t<decltype(held)>;
            if constexpr (std::is_same_v<T, ValueList>) {
                return held.items;
            } else if constexpr (std::is_same_v<T, IntList> || std::is_same_v<T, FloatList> ||
                                 std::is_same_v<T, VectorList> || std::is_same_v<T, ColorList> ||
                                 std::is_same_v<T, TransformList> || std::is_same_v<T, StringList> ||
                                 std::is_same_v<T, PluginList>) {
                std::vector<Value> items;
                items.reserve(held.size());
                for (const auto& item : held) items.emplace_back(item);
                return items;
            } else {
                return std::nullopt;
            }
        },
        value.data);
}

namespace {

std::optional<double> numberOf(const Value& value) {
    if (value.is<int32_t>()) return value.as<int32_t>();
    if (value.is<float>()) return value.as<float>();
    if (value.is<double>()) return value.as<double>();
    if (value.is<bool>()) return value.as<bool>() ? 1.0 : 0.0;
    return std::nullopt;
}

// Exactly n numbers, from a list of numbers.
std::optional<std::vector<float>> numbersOf(const Value& value, size_t minimum, size_t maximum) {
    auto items = listItems(value);
    if (!items || items->size() < minimum || items->size() > maximum) return std::nullopt;
    std::vector<float> numbers;
    for (const auto& item : *items) {
        auto number = numberOf(item);
        if (!number) return std::nullopt;
        numbers.push_back(static_cast<float>(*number));
    }
    return numbers;
}

std::optional<Value> conformScalar(Value value, PropertyType type) {
    switch (type) {
        case PropertyType::Int: {
            if (value.is<int32_t>()) return value;
            auto number = numberOf(value);
            // Scripts send negative integers as floats; only whole numbers fit an integer.
            if (!number || std::trunc(*number) != *number || *number < std::numeric_limits<int32_t>::min() ||
                *number > std::numeric_limits<int32_t>::max()) {
                return std::nullopt;
            }
            return Value(static_cast<int32_t>(*number));
        }
        case PropertyType::Float: {
            auto number = numberOf(value);
            if (!number) return std::nullopt;
            return Value(static_cast<float>(*number));
        }
        case PropertyType::Double: {
            auto number = numberOf(value);
            if (!number) return std::nullopt;
            return Value(*number);
        }
        case PropertyType::Boolean: {
            auto number = numberOf(value);
            if (!number) return std::nullopt;
            return Value(*number != 0.0);
        }
        case PropertyType::Vector: {
            if (value.is<VectorValue>()) return value;
            if (value.is<ColorValue>()) {
                const auto& c = value.as<ColorValue>();
                return Value(VectorValue{c.r, c.g, c.b});
            }
            auto numbers = numbersOf(value, 3, 3);
            if (!numbers) return std::nullopt;
            return Value(VectorValue{(*numbers)[0], (*numbers)[1], (*numbers)[2]});
        }
        case PropertyType::Color: {
            if (value.is<ColorValue>()) return value;
            if (value.is<VectorValue>()) {
                const auto& v = value.as<VectorValue>();
                return Value(ColorValue{v.x, v.y, v.z});
            }
            auto numbers = numbersOf(value, 3, 3);
            if (!numbers) return std::nullopt;
            return Value(ColorValue{(*numbers)[0], (*numbers)[1], (*numbers)[2]});
        }
        case PropertyType::AColor: {
            if (value.is<AColorValue>()) return value;
            if (value.is<ColorValue>()) {
                const auto& c = value.as<ColorValue>();
                return Value(AColorValue{c.r, c.g, c.b, 1.0f});
            }
            auto numbers = numbersOf(value, 3, 4);
            if (!numbers) return std::nullopt;
            float alpha = numbers->size() == 4 ? (*numbers)[3] : 1.0f;
            return Value(AColorValue{(*numbers)[0], (*numbers)[1], (*numbers)[2], alpha});
        }
        case PropertyType::Matrix: {
            if (value.is<MatrixValue>()) return value;
            auto items = listItems(value);
            if (!items || items->size() != 3) return std::nullopt;
            MatrixValue matrix;
            for (int column = 0; column < 3; ++column) {
                auto vector = conformScalar((*items)[column], PropertyType::Vector);
                if (!vector) return std::nullopt;
                matrix.columns[column] = vector->as<VectorValue>();
            }
            return Value(matrix);
        }
        case PropertyType::Transform: {
            if (value.is<TransformValue>()) return value;
            if (value.is<MatrixValue>()) return Value(TransformValue{value.as<MatrixValue>(), {0, 0, 0}});
            return std::nullopt;
        }
        case PropertyType::String:
            if (value.is<std::string>()) return value;
            return std::nullopt;
        case PropertyType::Plugin:
            if (value.is<PluginRef>()) return value;
            return std::nullopt;
        default:
            return std::nullopt;
    }
}

template <typename Packed, typename Element>
std::optional<Value> packItems(std::vector<Value>& items) {
    Packed packed;
    packed.reserve(items.size());
    for (auto& item : items) packed.push_back(std::move(item.as<Element>()));
    return Value(std::move(packed));
}

}  // namespace

std::optional<Value> conformToType(Value value, PropertyType type, int fixedCount) {
    if (type == PropertyType::Unspecified) return value;
    if (isOutput(type)) return std::nullopt;
    if (isTexture(type)) {
        if (value.is<PluginRef>()) return value;
        return conformScalar(std::move(value), textureValueType(type));
    }
    if (!isList(type)) return conformScalar(std::move(value), type);

    auto matches = [fixedCount](const Value& list) { return fixedCount <= 0 || elementCount(list) == fixedCount; };
    // Packed lists that already have their type's form move through untouched.
    bool alreadyPacked = (type == PropertyType::ListInt && value.is<IntList>()) ||
                         (type == PropertyType::ListFloat && value.is<FloatList>()) ||
                         (type == PropertyType::ListVector && value.is<VectorList>()) ||
                         (type == PropertyType::ListColor && value.is<ColorList>()) ||
                         (type == PropertyType::ListTransform && value.is<TransformList>()) ||
                         (type == PropertyType::ListString && value.is<StringList>()) ||
                         (type == PropertyType::ListPlugin && value.is<PluginList>()) ||
                         (type == PropertyType::ListObject && value.is<ValueList>());
    if (alreadyPacked) return matches(value) ? std::optional<Value>(std::move(value)) : std::nullopt;

    auto items = listItems(value);
    if (!items) return std::nullopt;
    if (fixedCount > 0 && static_cast<int>(items->size()) != fixedCount) return std::nullopt;
    PropertyType itemType = elementType(type);
    for (auto& item : *items) {
        auto conformed = conformToType(std::move(item), itemType);
        if (!conformed) return std::nullopt;
        item = std::move(*conformed);
    }
    switch (type) {
        case PropertyType::ListInt: return packItems<IntList, int32_t>(*items);
        case PropertyType::ListFloat: return packItems<FloatList, float>(*items);
        case PropertyType::ListVector: return packItems<VectorList, VectorValue>(*items);
        case PropertyType::ListColor: return packItems<ColorList, ColorValue>(*items);
        case PropertyType::ListTransform: return packItems<TransformList, TransformValue>(*items);
        case PropertyType::ListString: return packItems<StringList, std::string>(*items);
        case PropertyType::ListPlugin: return packItems<PluginList, PluginRef>(*items);
        default: return Value(ValueList{std::move(*items)});
    }
}

int runtimeTypeCode(PropertyType declared, const Value& value) {
    if (isTexture(declared)) {
        return value.is<PluginRef>() ? static_cast<int>(PropertyType::Plugin)
                                     : static_cast<int>(textureValueType(declared));
    }
    return static_cast<int>(declared);
}

namespace {

float blend(float a, float b, double weight) { return static_cast<float>(a + (b - a) * weight); }

VectorValue blend(const VectorValue& a, const VectorValue& b, double weight) {
    return {blend(a.x, b.x, weight), blend(a.y, b.y, weight), blend(a.z, b.z, weight)};
}

MatrixValue blend(const MatrixValue& a, const MatrixValue& b, double weight) {
    MatrixValue result;
    for (int column = 0; column < 3; ++column) result.columns[column] = blend(a.columns[column], b.columns[column], weight);
    return result;
}

}  // namespace

Value interpolate(const Value& a, const Value& b, double weight) {
    if (a.data.index() != b.data.index()) return a;
    if (a.is<float>()) return Value(blend(a.as<float>(), b.as<float>(), weight));
    if (a.is<double>()) return Value(a.as<double>() + (b.as<double>() - a.as<double>()) * weight);
    if (a.is<VectorValue>()) return Value(blend(a.as<VectorValue>(), b.as<VectorValue>(), weight));
    if (a.is<ColorValue>()) {
        const auto &x = a.as<ColorValue>(), &y = b.as<ColorValue>();
        return Value(ColorValue{blend(x.r, y.r, weight), blend(x.g, y.g, weight), blend(x.b, y.b, weight)});
    }
    if (a.is<AColorValue>()) {
        const auto &x = a.as<AColorValue>(), &y = b.as<AColorValue>();
        return Value(AColorValue{blend(x.r, y.r, weight), blend(x.g, y.g, weight), blend(x.b, y.b, weight),
                                 blend(x.a, y.a, weight)});
    }
    if (a.is<MatrixValue>()) return Value(blend(a.as<MatrixValue>(), b.as<MatrixValue>(), weight));
    if (a.is<TransformValue>()) {
        const auto &x = a.as<TransformValue>(), &y = b.as<TransformValue>();
        TransformValue result{blend(x.matrix, y.matrix, weight), {}};
        for (int axis = 0; axis < 3; ++axis) result.offset[axis] = x.offset[axis] + (y.offset[axis] - x.offset[axis]) * weight;
        return Value(result);
    }
    return a;
}

}  // namespace tovi::ref::scene
