// The image services for other parts of the module: the wrapper that renderer events and images
// use, and CompressedImage's element kinds (every encoding method hands out bytes).
#include <gtest/gtest.h>

#include <cstring>

#include "image/compressed_image.h"
#include "image/image.h"
#include "testing.h"

namespace tovi {
namespace {

using testing::liveBlocks;
using testing::namespaceWith;
using testing::run;

// A memoryview over 8 SDK bytes 0xFF, 0xFE, ... exported with the given element kind: its format,
// item size, length, read-only flag and the first item.
PyObject* describe(int32_t elementKind, bool isSigned) {
    auto* bytes = static_cast<uint8_t*>(SdkApi.C_memory_alloc(8));
    for (int index = 0; index < 8; ++index) bytes[index] = static_cast<uint8_t>(0xFF - index);
    PyRef image(newCompressedImage(bytes, 8, elementKind, isSigned));
    if (!image) return nullptr;
    PyRef names(namespaceWith("image", image.get()));
    PyObject* result = run(
        "view = memoryview(image)\n"
        "result = (view.format, view.itemsize, len(view), view.readonly, view[0], view.nbytes)\n"
        "view.release()\n",
        names.get());
    return Py_XNewRef(result);
}

TEST(CompressedImage, ExportsItemsOfItsElementKindAndFreesItsBlock) {
    long long blocks = liveBlocks();
    struct Case {
        int32_t kind;
        bool isSigned;
        const char* expected;
    } cases[] = {
        {1, false, "('B', 1, 8, True, 255, 8)"},
        {2, false, "('H', 2, 4, True, 65279, 8)"},
        {4, false, "('I', 4, 2, True, 4244504319, 8)"},
        {4, true, "('i', 4, 2, True, -50462977, 8)"},
    };
    for (const Case& c : cases) {
        PyRef described(describe(c.kind, c.isSigned));
        ASSERT_TRUE(described) << c.kind;
        PyRef text(PyObject_Repr(described.get()));
        EXPECT_STREQ(PyUnicode_AsUTF8(text.get()), c.expected);
    }
    EXPECT_EQ(liveBlocks(), blocks);

    // A writable export is refused; a kind it cannot export frees the block too.
    PyRef image(newCompressedImage(SdkApi.C_memory_alloc(4), 4, 1, false));
    Py_buffer view;
    EXPECT_EQ(PyObject_GetBuffer(image.get(), &view, PyBUF_WRITABLE), -1);
    EXPECT_TRUE(PyErr_ExceptionMatches(PyExc_BufferError));
    PyErr_Clear();
    EXPECT_EQ(newCompressedImage(SdkApi.C_memory_alloc(4), 4, 3, false), nullptr);
    EXPECT_TRUE(PyErr_ExceptionMatches(PyExc_ValueError));
    PyErr_Clear();
    image.reset();
    EXPECT_EQ(liveBlocks(), blocks);
}

TEST(ImageWrapper, TakesOverTheHandleAndCarriesPositionAndHost) {
    long long blocks = liveBlocks();
    PyRef region(newImageWrapper(nullptr, 16, 32, "render-node-2"));
    ASSERT_TRUE(region);
    PyRef names(namespaceWith("region", region.get()));
    PyObject* result = run("result = (region.x, region.y, region.width, len(region), region.host)", names.get());
    ASSERT_TRUE(result);
    PyRef text(PyObject_Repr(result));
    EXPECT_STREQ(PyUnicode_AsUTF8(text.get()), "(16, 32, 0, 0, 'render-node-2')");

    // A host text that is not UTF-8 still makes an image: the bad byte reads as U+FFFD.
    PyRef image(newImageWrapper(SdkApi.ToviImage_create(3, 2), 1, 2, "\xff"));
    ASSERT_TRUE(image);
    PyDict_SetItemString(names.get(), "image", image.get());
    result = run("result = (image.x, image.y, image.width, image.height, len(image), image.host)", names.get());
    ASSERT_TRUE(result);
    text.reset(PyObject_Repr(result));
    EXPECT_STREQ(PyUnicode_AsUTF8(text.get()), "(1, 2, 3, 2, 6, '\xEF\xBF\xBD')");
    PyDict_Clear(names.get());
    image.reset();
    EXPECT_EQ(liveBlocks(), blocks);
}

}  // namespace
}  // namespace tovi
