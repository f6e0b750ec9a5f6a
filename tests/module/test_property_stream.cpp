// The property value stream: every code the module reads, and the encoder's buffer.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "lists/list_kinds.h"
#include "plugins/property_stream.h"
#include "testing.h"

namespace tovi {
namespace {

class Stream {
public:
    template <typename T>
    Stream& put(T value) {
        const auto* bytes = reinterpret_cast<const uint8_t*>(&value);
        data.insert(data.end(), bytes, bytes + sizeof value);
        return *this;
    }
    Stream& text(const std::string& value) {
        put<uint32_t>(static_cast<uint32_t>(value.size()));
        data.insert(data.end(), value.begin(), value.end());
        data.resize(data.size() + ((value.size() + 4) & ~size_t{3}) - value.size(), 0);
        return *this;
    }
    std::vector<uint8_t> data;
};

// The repr of the decoded value, and how many bytes were consumed.
std::pair<std::string, size_t> decoded(const Stream& stream) {
    const uint8_t* cursor = stream.data.data();
    PyRef value(decodePropertyValue(nullptr, cursor, stream.data.data() + stream.data.size()));
    if (!value) {
        PyErr_Clear();
        return {"<error>", cursor - stream.data.data()};
    }
    PyRef text(PyObject_Repr(value.get()));
    return {PyUnicode_AsUTF8(text.get()), cursor - stream.data.data()};
}

TEST(PropertyStream, DecodesEveryCode) {
    std::vector<std::pair<Stream, std::string>> cases;
    auto add = [&](Stream stream, const std::string& expected) { cases.emplace_back(std::move(stream), expected); };
    add(Stream().put<uint32_t>(0).put<int32_t>(-5), "-5");
    add(Stream().put<uint32_t>(1).put<float>(0.5f), "0.5");
    add(Stream().put<uint32_t>(2).put<double>(0.1), "0.1");
    add(Stream().put<uint32_t>(3).put<int32_t>(7), "True");
    add(Stream().put<uint32_t>(4).put(1.0f).put(2.0f).put(3.0f), "Vector(1, 2, 3)");
    add(Stream().put<uint32_t>(5).put(1.0f).put(0.5f).put(0.0f), "Color(1, 0.5, 0)");
    add(Stream().put<uint32_t>(6).put(1.0f).put(0.5f).put(0.0f).put(0.25f), "AColor(1, 0.5, 0, 0.25)");
    Stream matrix;
    matrix.put<uint32_t>(7);
    for (int index = 1; index <= 9; ++index) matrix.put(static_cast<float>(index));
    add(matrix, "Matrix(Vector(1, 2, 3), Vector(4, 5, 6), Vector(7, 8, 9))");
    Stream transform;
    transform.put<uint32_t>(8);
    for (int index = 1; index <= 12; ++index) transform.put(static_cast<float>(index));
    add(transform, "Transform(Matrix(Vector(1, 2, 3), Vector(4, 5, 6), Vector(7, 8, 9)), Vector(10, 11, 12))");
    Stream mixed;
    mixed.put<uint32_t>(28);
    for (int index = 1; index <= 9; ++index) mixed.put(static_cast<float>(index));
    mixed.put(0.1).put(1e300).put(-2.0);
    add(mixed, "Transform(Matrix(Vector(1, 2, 3), Vector(4, 5, 6), Vector(7, 8, 9)), Vector(0.1, 1e+300, -2))");
    add(Stream().put<uint32_t>(9).text("abcd"), "'abcd'");
    add(Stream().put<uint32_t>(10).put<uint64_t>(5), "None");  // no renderer
    add(Stream().put<uint32_t>(12).put<uint32_t>(2).put<uint32_t>(0).put<int32_t>(1).put<uint32_t>(9).text("a"),
        "[1, 'a']");
    add(Stream().put<uint32_t>(12).put<uint32_t>(0), "[]");
    add(Stream().put<uint32_t>(100).put<uint32_t>(2).put<int32_t>(-1).put<int32_t>(2), "IntList(-1, 2)");
    add(Stream().put<uint32_t>(101).put<uint32_t>(1).put(0.25f), "FloatList(0.25)");
    add(Stream().put<uint32_t>(104).put<uint32_t>(1).put(1.0f).put(2.0f).put(3.0f), "VectorList(Vector(1, 2, 3))");
    add(Stream().put<uint32_t>(105).put<uint32_t>(1).put(1.0f).put(0.0f).put(0.5f), "ColorList(Color(1, 0, 0.5))");
    add(Stream().put<uint32_t>(109).put<uint32_t>(2).text("abc").text(""), "['abc', '']");
    add(Stream().put<uint32_t>(110).put<uint32_t>(1).put<uint64_t>(UINT64_MAX), "PluginList(None)");
    Stream mixedList;
    mixedList.put<uint32_t>(128).put<uint32_t>(5);
    for (int element = 0; element < 5; ++element) {
        for (int index = 0; index < 9; ++index) mixedList.put(index == 0 ? static_cast<float>(element) : 0.0f);
        mixedList.put(0.5).put(static_cast<double>(element)).put(-1.0);
    }
    add(mixedList, "");
    static const char addressed[] = "from the SDK";
    add(Stream().put<uint32_t>(200).put<uint64_t>(reinterpret_cast<uintptr_t>(addressed)), "'from the SDK'");
    add(Stream().put<uint32_t>(210).put<uint64_t>(5).put<int32_t>(2), "None");
    for (uint32_t unknown : {11u, 13u, 150u, 209u, 211u, 2000u, 99999u}) {
        add(Stream().put<uint32_t>(unknown).put<uint32_t>(0xdeadbeef), "None");
    }

    for (auto& [stream, expected] : cases) {
        auto [text, consumed] = decoded(stream);
        uint32_t code;
        std::memcpy(&code, stream.data.data(), 4);
        bool unknown = expected == "None" && code != 10 && code != 210;
        if (code == 128) {
            EXPECT_EQ(text.rfind("TransformList(Transform(Matrix(Vector(0, 0, 0)", 0), 0u) << text;
            EXPECT_NE(text.find("Vector(0.5, 4, -1))"), std::string::npos) << text;
        } else {
            EXPECT_EQ(text, expected) << "code " << code;
        }
        // Unknown codes consume nothing beyond the code; the others exactly their item.
        EXPECT_EQ(consumed, unknown ? 4u : stream.data.size()) << "code " << code;
    }
}

TEST(PropertyStream, TruncatedItemsAreTheSdksFault) {
    for (uint32_t code : {2u, 4u, 8u, 9u, 12u, 28u, 100u, 109u, 110u, 128u, 200u, 210u}) {
        Stream stream;
        stream.put(code).put<uint32_t>(3);  // too short for every one of these
        auto [text, consumed] = decoded(stream);
        EXPECT_EQ(text, "<error>") << "code " << code;
    }
}

TEST(PropertyStream, GrowsPastItsInlineBytesWithoutLosingAny) {
    PyRef items(PyList_New(0));
    for (int index = 0; index < 100; ++index) {
        PyRef number(PyLong_FromLong(index));
        PyList_Append(items.get(), number.get());
    }
    PropertyStream stream;
    encodePropertyValue(stream, items.get());
    ASSERT_FALSE(stream.failed());
    ASSERT_EQ(stream.size(), 8u + 100 * 8);
    const uint8_t* cursor = stream.data();
    PyRef back(decodePropertyValue(nullptr, cursor, stream.data() + stream.size()));
    EXPECT_EQ(PyObject_RichCompareBool(back.get(), items.get(), Py_EQ), 1);

    PyRef dictionary(PyDict_New());
    PropertyStream refused;
    encodePropertyValue(refused, dictionary.get());
    EXPECT_TRUE(refused.failed());
    EXPECT_FALSE(PyErr_Occurred());
}

}  // namespace
}  // namespace tovi
