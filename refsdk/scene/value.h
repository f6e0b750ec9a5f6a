// Property values as the scene holds them, and how a value is made to fit a declared type.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "scene/property_type.h"
#include "tovi_sdk.h"

namespace tovi::ref::scene {

struct VectorValue {
    float x = 0, y = 0, z = 0;
};
struct ColorValue {
    float r = 0, g = 0, b = 0;
};
struct AColorValue {
    float r = 0, g = 0, b = 0, a = 1;
};
// Three columns.
struct MatrixValue {
    VectorValue columns[3];
};
// The offset keeps double precision: scenes far from the origin need it.
struct TransformValue {
    MatrixValue matrix;
    double offset[3] = {0, 0, 0};
};
// A plugin, or one of its named outputs (output: the output's index in the plugin's property
// list, 0 for the plugin itself). id TOVI_NO_PLUGIN is "no plugin".
struct PluginRef {
    ToviPluginID id = TOVI_NO_PLUGIN;
    int32_t output = 0;
    bool isNone() const { return id == TOVI_NO_PLUGIN; }
};

struct Value;
// A list whose items carry their own types (List<Object>, and lists of element types that have
// no packed form: doubles, booleans, AColors, matrices, texture slots).
struct ValueList {
    std::vector<Value> items;
};
using IntList = std::vector<int32_t>;
using FloatList = std::vector<float>;
using VectorList = std::vector<VectorValue>;
using ColorList = std::vector<ColorValue>;
using TransformList = std::vector<TransformValue>;
using StringList = std::vector<std::string>;
using PluginList = std::vector<PluginRef>;

struct Value {
    using Data = std::variant<int32_t, float, double, bool, VectorValue, ColorValue, AColorValue, MatrixValue,
                              TransformValue, std::string, PluginRef, ValueList, IntList, FloatList, VectorList,
                              ColorList, TransformList, StringList, PluginList>;
    Data data;

    Value() = default;
    template <typename T, typename = std::enable_if_t<!std::is_same_v<std::decay_t<T>, Value>>>
    Value(T&& value) : data(std::forward<T>(value)) {}
    // A bare C text would otherwise become a bool.
    Value(const char* text) : data(std::string(text)) {}

    template <typename T>
    bool is() const { return std::holds_alternative<T>(data); }
    template <typename T>
    const T& as() const { return std::get<T>(data); }
    template <typename T>
    T& as() { return std::get<T>(data); }
};

bool operator==(const VectorValue& a, const VectorValue& b);
bool operator==(const ColorValue& a, const ColorValue& b);
bool operator==(const AColorValue& a, const AColorValue& b);
bool operator==(const MatrixValue& a, const MatrixValue& b);
bool operator==(const TransformValue& a, const TransformValue& b);
bool operator==(const PluginRef& a, const PluginRef& b);
bool operator==(const ValueList& a, const ValueList& b);
bool operator==(const Value& a, const Value& b);
inline bool operator!=(const Value& a, const Value& b) { return !(a == b); }

MatrixValue identityMatrix();
TransformValue identityTransform();

// Number of elements of a list value, -1 for any other value.
int elementCount(const Value& value);
// The items of any list value, each as a value of its own; nothing for a value that is no list.
std::optional<std::vector<Value>> listItems(const Value& value);

// The value made to fit the declared type (numbers widened or narrowed, colours and vectors
// exchanged, lists packed into their type's form), or nothing when it cannot fit. A positive
// fixedCount demands exactly that many list elements. Plugin identifiers are not checked here.
std::optional<Value> conformToType(Value value, PropertyType type, int fixedCount = -1);

// The code of the type a property holding this value reports at run time: the declared type,
// except that a texture slot reports the plugin or the constant it holds.
int runtimeTypeCode(PropertyType declared, const Value& value);

// The value between two keyframes (weight 0 gives a, 1 gives b). Numbers, vectors, colours,
// matrices and transforms blend linearly; every other value holds a until b.
Value interpolate(const Value& a, const Value& b, double weight);

// Calls visit on every plugin reference inside the value, lists included.
template <typename Visit>
void forEachPluginRef(Value& value, Visit&& visit) {
    if (auto* ref = std::get_if<PluginRef>(&value.data)) {
        visit(*ref);
    } else if (auto* refs = std::get_if<PluginList>(&value.data)) {
        for (auto& item : *refs) visit(item);
    } else if (auto* list = std::get_if<ValueList>(&value.data)) {
        for (auto& item : list->items) forEachPluginRef(item, visit);
    }
}

}  // namespace tovi::ref::scene
