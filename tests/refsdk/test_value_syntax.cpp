// The text form of values: parsing by declared type, printing, and round trips.
#include <gtest/gtest.h>

#include <map>

#include "format/value_syntax.h"

using namespace tovi::ref;
using namespace tovi::ref::scene;
using format::parseValue;
using format::printValue;

namespace {

// Plugins "mat" (id 1, output "out_color" at index 2), "7up", "odd name" and "12" (ids 2 to 4).
class TwoPlugins : public format::PluginNames {
public:
    std::optional<PluginRef> resolve(std::string_view plugin, std::string_view output) const override {
        ToviPluginID id = plugin == "mat" ? 1 : plugin == "7up" ? 2 : plugin == "odd name" ? 3 : plugin == "12" ? 4 : 0;
        if (!id) return std::nullopt;
        if (output.empty()) return PluginRef{id, 0};
        if (output == "out_color") return PluginRef{id, 2};
        return std::nullopt;
    }
    std::optional<std::pair<std::string, std::string>> names(const PluginRef& ref) const override {
        static const std::map<ToviPluginID, std::string> byID{{1, "mat"}, {2, "7up"}, {3, "odd name"}, {4, "12"}};
        auto found = byID.find(ref.id);
        if (found == byID.end()) return std::nullopt;
        return std::make_pair(found->second, ref.output == 2 ? std::string("out_color") : std::string());
    }
};

const TwoPlugins names;

Value parsed(std::string_view text, PropertyType type) {
    format::ParseError error;
    auto value = parseValue(text, type, names, &error);
    EXPECT_TRUE(value) << text << ": " << error.message << " at " << error.offset;
    return value.value_or(Value());
}

}  // namespace

TEST(ValueSyntax, ParsesByTheDeclaredType) {
    EXPECT_EQ(parsed("-3", PropertyType::Int), Value(int32_t{-3}));
    EXPECT_EQ(parsed("2.0", PropertyType::Int), Value(int32_t{2}));
    EXPECT_EQ(parsed("0.1", PropertyType::Float), Value(0.1f));
    EXPECT_EQ(parsed("0.1", PropertyType::Double), Value(0.1));
    EXPECT_EQ(parsed("true", PropertyType::Boolean), Value(true));
    EXPECT_EQ(parsed("0", PropertyType::Boolean), Value(false));
    EXPECT_EQ(parsed("1 2 3", PropertyType::Vector), Value(VectorValue{1, 2, 3}));
    EXPECT_EQ(parsed("1, 0.5, 0", PropertyType::Color), Value(ColorValue{1, 0.5f, 0}));
    EXPECT_EQ(parsed("Color(1, 0.5, 0)", PropertyType::AColor), Value(AColorValue{1, 0.5f, 0, 1}));
    EXPECT_EQ(parsed("1 2 3", PropertyType::ListInt), Value(IntList{1, 2, 3}));
    EXPECT_EQ(parsed("C:/maps/wood.png", PropertyType::String), Value("C:/maps/wood.png"));
    EXPECT_EQ(parsed("\"tab\\there \\\"q\\\" \\u00e9\"", PropertyType::String), Value("tab\there \"q\" \xC3\xA9"));
    EXPECT_EQ(parsed("mat::out_color", PropertyType::Texture), Value(PluginRef{1, 2}));
    EXPECT_EQ(parsed("AColor(1, 0, 0, 0.5)", PropertyType::Texture), Value(AColorValue{1, 0, 0, 0.5f}));
    EXPECT_EQ(parsed("0.25", PropertyType::TextureFloat), Value(0.25f));
    EXPECT_EQ(parsed("7up", PropertyType::Plugin), Value(PluginRef{2, 0}));
    EXPECT_EQ(parsed("null", PropertyType::Plugin), Value(PluginRef{}));
    EXPECT_EQ(parsed("List(mat, null, Plugin(\"odd name\"))", PropertyType::ListPlugin),
              Value(PluginList{PluginRef{1, 0}, PluginRef{}, PluginRef{3, 0}}));
    EXPECT_EQ(parsed("List(1, 2.5, \"a\", List())", PropertyType::ListObject),
              Value(ValueList{{Value(int32_t{1}), Value(2.5f), Value("a"), Value(ValueList{})}}));
    EXPECT_EQ(parsed("List(0.1, 2)", PropertyType::ListDouble), Value(ValueList{{Value(0.1), Value(2.0)}}));
}

TEST(ValueSyntax, RefusesWhatDoesNotFit) {
    format::ParseError error;
    EXPECT_FALSE(parseValue("2.5", PropertyType::Int, names, &error));
    EXPECT_EQ(error.message, "the value does not fit a int property");
    EXPECT_FALSE(parseValue("nobody", PropertyType::Plugin, names, &error));
    EXPECT_EQ(error.message, "no plugin named 'nobody'");
    EXPECT_EQ(error.offset, 0u);
    EXPECT_FALSE(parseValue("mat::nothing", PropertyType::Plugin, names, &error));
    EXPECT_EQ(error.message, "no output 'nothing' of a plugin named 'mat'");
    EXPECT_FALSE(parseValue("Vector(1, 2)", PropertyType::Vector, names, &error));
    EXPECT_EQ(error.message, "expected ','");
    EXPECT_FALSE(parseValue("1 2", PropertyType::Float, names));
    EXPECT_FALSE(parseValue("\"open", PropertyType::String, names));
    EXPECT_FALSE(parseValue("ListInt(1, 2.5)", PropertyType::ListInt, names));
}

TEST(ValueSyntax, PrintsTextThatReadsBackTheSameValue) {
    TransformValue far = identityTransform();
    far.offset[0] = 123456789.123;
    std::vector<std::pair<Value, PropertyType>> cases = {
        {Value(int32_t{-7}), PropertyType::Int},
        {Value(0.1f), PropertyType::Float},
        {Value(0.1), PropertyType::Double},
        {Value(false), PropertyType::Boolean},
        {Value(MatrixValue{{{1, 2, 3}, {4, 5, 6}, {7, 8, 9}}}), PropertyType::Matrix},
        {Value(far), PropertyType::Transform},
        {Value("line\nbreak \"quoted\""), PropertyType::String},
        {Value(PluginRef{3, 0}), PropertyType::Plugin},
        {Value(PluginRef{2, 0}), PropertyType::Plugin},
        {Value(ValueList{{Value(PluginRef{4, 0}), Value(int32_t{12})}}), PropertyType::ListObject},
        {Value(ValueList{{Value(int32_t{1}), Value(1.0f), Value(PluginRef{1, 2}), Value(ValueList{})}}), PropertyType::ListObject},
        {Value(TransformList{far}), PropertyType::ListTransform},
        {Value(StringList{"a", ""}), PropertyType::ListString},
        {Value(ColorList{{0.5f, 0.25f, 1e-8f}}), PropertyType::ListColor},
    };
    for (const auto& [value, type] : cases) {
        std::string text = printValue(value, names);
        EXPECT_EQ(parsed(text, type), value) << text;
    }
    EXPECT_EQ(printValue(Value(1.0f), names), "1.0");
    EXPECT_EQ(printValue(Value(PluginRef{1, 2}), names), "mat::out_color");
    EXPECT_EQ(printValue(Value(PluginRef{2, 0}), names), "7up");
    EXPECT_EQ(printValue(Value(PluginRef{4, 0}), names), "Plugin(\"12\")");
    EXPECT_EQ(printValue(Value(PluginRef{3, 0}), names), "Plugin(\"odd name\")");
    EXPECT_EQ(printValue(Value(PluginRef{99, 0}), names), "null");
    EXPECT_EQ(printValue(Value(far), names),
              "Transform(Matrix(Vector(1, 0, 0), Vector(0, 1, 0), Vector(0, 0, 1)), Vector(123456789.123, 0, 0))");
    EXPECT_EQ(printValue(Value(ValueList{{Value(int32_t{1}), Value(2.5f), Value("a")}}), names), "List(1, 2.5, \"a\")");
}
