// The value stream, byte for byte as callers write it and as the SDK answers.
#include <gtest/gtest.h>

#include <cstring>

#include "scene/value_stream.h"

using namespace tovi::ref::scene;

namespace {

struct Stream {
    std::vector<uint8_t> bytes;
    template <typename T>
    Stream& put(T value) {
        auto raw = reinterpret_cast<const uint8_t*>(&value);
        bytes.insert(bytes.end(), raw, raw + sizeof(T));
        return *this;
    }
    Stream& text(const std::string& t) {
        put<uint32_t>(static_cast<uint32_t>(t.size()));
        bytes.insert(bytes.end(), t.begin(), t.end());
        bytes.insert(bytes.end(), 4 - t.size() % 4, 0);
        return *this;
    }
    template <typename T>
    Stream& address(const T* data) { return put<uint64_t>(reinterpret_cast<uintptr_t>(data)); }

    // Decodes one item and checks that exactly the whole stream was read.
    Value decode() const {
        const uint8_t* cursor = bytes.data();
        auto value = decodeStreamItem(cursor);
        EXPECT_TRUE(value.has_value());
        EXPECT_EQ(cursor, bytes.data() + bytes.size());
        return value.value_or(Value());
    }
};

std::vector<uint8_t> encoded(const Value& value, EncodeOptions options = {}) {
    std::vector<uint8_t> out;
    encodeStreamItem(value, out, options);
    return out;
}

uint32_t codeOf(const std::vector<uint8_t>& stream) {
    uint32_t code;
    std::memcpy(&code, stream.data(), 4);
    return code;
}

}  // namespace

TEST(ValueStream, DecodesTheNumbersCallersSend) {
    // Negative integers arrive as floats and still fit an integer property.
    Value negative = Stream().put<uint32_t>(1).put<float>(-1.0f).decode();
    EXPECT_EQ(negative, Value(-1.0f));
    EXPECT_EQ(conformToType(negative, PropertyType::Int), Value(int32_t{-1}));
    EXPECT_EQ(Stream().put<uint32_t>(0).put<uint32_t>(0xFFFFFFFFu).decode(), Value(int32_t{-1}));
    EXPECT_EQ(Stream().put<uint32_t>(1).put<float>(4294967296.0f).decode(), Value(4294967296.0f));
    EXPECT_FALSE(conformToType(Value(4294967296.0f), PropertyType::Int));
    EXPECT_FALSE(conformToType(Value(2.5f), PropertyType::Int));
    EXPECT_EQ(Stream().put<uint32_t>(3).put<int32_t>(1).decode(), Value(true));
    EXPECT_EQ(Stream().put<uint32_t>(10).put<uint64_t>(~0ull).decode(), Value(PluginRef{}));
    EXPECT_TRUE(Stream().put<uint32_t>(10).put<uint64_t>(~0ull).decode().as<PluginRef>().isNone());
}

TEST(ValueStream, DecodesListsStringsAndTransforms) {
    Stream mixed;
    mixed.put<uint32_t>(12).put<uint32_t>(3).put<uint32_t>(0).put<int32_t>(1).put<uint32_t>(1).put<float>(2.5f);
    mixed.put<uint32_t>(9).text("a");
    EXPECT_EQ(mixed.bytes.size(), 4u + 4 + 8 + 8 + 4 + 4 + 4);
    EXPECT_EQ(mixed.decode(), Value(ValueList{{Value(int32_t{1}), Value(2.5f), Value("a")}}));

    Stream four;
    four.put<uint32_t>(9).text("abcd");
    EXPECT_EQ(four.bytes.size(), 16u);  // 4 bytes then 4 zeros
    EXPECT_EQ(four.decode(), Value("abcd"));
    Stream three;
    three.put<uint32_t>(9).text("abc");
    EXPECT_EQ(three.bytes.size(), 12u);  // 3 bytes then 1 zero
    EXPECT_EQ(three.decode(), Value("abc"));

    Stream transform;
    transform.put<uint32_t>(28);
    for (float f : {1.f, 2.f, 3.f, 4.f, 5.f, 6.f, 7.f, 8.f, 9.f}) transform.put(f);
    for (double d : {1e10 + 0.5, -2.25, 3.0}) transform.put(d);
    TransformValue expected{MatrixValue{{{1, 2, 3}, {4, 5, 6}, {7, 8, 9}}}, {1e10 + 0.5, -2.25, 3.0}};
    EXPECT_EQ(transform.decode(), Value(expected));

    Stream plugins;
    plugins.put<uint32_t>(110).put<uint32_t>(2).put<uint64_t>(5).put<uint64_t>(~0ull);
    EXPECT_EQ(plugins.decode(), Value(PluginList{PluginRef{5, 0}, PluginRef{}}));
    EXPECT_EQ(Stream().put<uint32_t>(210).put<uint64_t>(7).put<int32_t>(3).decode(), Value(PluginRef{7, 3}));
}

TEST(ValueStream, ReadsTypedListsByAddressDuringTheCall) {
    int32_t ints[] = {1, -2, 3};
    float floats[] = {0.5f, 1.5f};
    float vectors[] = {1, 2, 3, 4, 5, 6};
    float transforms[12] = {1, 0, 0, 0, 1, 0, 0, 0, 1, 10, 20, 30};
    EXPECT_EQ(Stream().put<uint32_t>(2000).put<uint32_t>(3).address(ints).decode(), Value(IntList{1, -2, 3}));
    EXPECT_EQ(Stream().put<uint32_t>(2001).put<uint32_t>(2).address(floats).decode(), Value(FloatList{0.5f, 1.5f}));
    EXPECT_EQ(Stream().put<uint32_t>(2004).put<uint32_t>(2).address(vectors).decode(),
              Value(VectorList{{1, 2, 3}, {4, 5, 6}}));
    EXPECT_EQ(Stream().put<uint32_t>(2005).put<uint32_t>(2).address(vectors).decode(),
              Value(ColorList{{1, 2, 3}, {4, 5, 6}}));
    TransformValue moved = identityTransform();
    moved.offset[0] = 10;
    moved.offset[1] = 20;
    moved.offset[2] = 30;
    EXPECT_EQ(Stream().put<uint32_t>(2008).put<uint32_t>(1).address(transforms).decode(), Value(TransformList{moved}));
    EXPECT_EQ(Stream().put<uint32_t>(2000).put<uint32_t>(0).address<int32_t>(nullptr).decode(), Value(IntList{}));
    // A non-empty list without storage and an unknown code are refused, not read.
    Stream missing;
    missing.put<uint32_t>(2000).put<uint32_t>(2).address<int32_t>(nullptr);
    const uint8_t* cursor = missing.bytes.data();
    EXPECT_FALSE(decodeStreamItem(cursor));
    Stream unknown;
    unknown.put<uint32_t>(11);
    const uint8_t* at = unknown.bytes.data();
    EXPECT_FALSE(decodeStreamItem(at));
}

TEST(ValueStream, WritesEveryReadCode) {
    struct Case {
        Value value;
        uint32_t code;
        size_t size;
    };
    TransformValue t = identityTransform();
    std::vector<Case> cases = {
        {Value(int32_t{5}), 0, 8},
        {Value(0.5f), 1, 8},
        {Value(0.25), 2, 12},
        {Value(true), 3, 8},
        {Value(VectorValue{1, 2, 3}), 4, 16},
        {Value(ColorValue{1, 2, 3}), 5, 16},
        {Value(AColorValue{1, 2, 3, 4}), 6, 20},
        {Value(identityMatrix()), 7, 40},
        {Value(t), 28, 64},
        {Value("abcd"), 9, 16},
        {Value(PluginRef{9, 0}), 10, 12},
        {Value(ValueList{{Value(int32_t{1})}}), 12, 16},
        {Value(IntList{1, 2}), 100, 16},
        {Value(FloatList{1}), 101, 12},
        {Value(VectorList{{1, 2, 3}}), 104, 20},
        {Value(ColorList{{1, 2, 3}}), 105, 20},
        {Value(StringList{"abc", "abcd"}), 109, 8 + 8 + 12},
        {Value(PluginList{PluginRef{1, 0}, PluginRef{}}), 110, 24},
        {Value(TransformList{t, t}), 128, 8 + 120},
        {Value(PluginRef{9, 2}), 210, 16},
    };
    for (const auto& c : cases) {
        auto stream = encoded(c.value);
        EXPECT_EQ(codeOf(stream), c.code);
        EXPECT_EQ(stream.size(), c.size) << c.code;
        const uint8_t* cursor = stream.data();
        auto back = decodeStreamItem(cursor);
        ASSERT_TRUE(back) << c.code;
        EXPECT_EQ(cursor, stream.data() + stream.size());
        EXPECT_EQ(*back, c.value) << c.code;
    }
    // References to outputs do not fit the packed plugin list: they go as items.
    auto outputs = encoded(Value(PluginList{PluginRef{1, 2}}));
    EXPECT_EQ(codeOf(outputs), 12u);
    const uint8_t* at = outputs.data();
    EXPECT_EQ(decodeStreamItem(at), Value(ValueList{{Value(PluginRef{1, 2})}}));
    EncodeOptions floats;
    floats.singlePrecisionTransforms = true;
    auto single = encoded(Value(t), floats);
    EXPECT_EQ(codeOf(single), 8u);
    EXPECT_EQ(single.size(), 52u);
    static const char lasting[] = "kept";
    EncodeOptions byAddress;
    byAddress.lastingText = lasting;
    auto text = encoded(Value("kept"), byAddress);
    EXPECT_EQ(codeOf(text), 200u);
    ASSERT_EQ(text.size(), 12u);
    const uint8_t* cursor = text.data();
    EXPECT_EQ(decodeStreamItem(cursor), Value("kept"));
}
