// Typed-list services and value builders that other parts of the module use on SDK memory.
#include <gtest/gtest.h>

#include <cstring>

#include "lists/list_kinds.h"
#include "testing.h"
#include "values/color.h"
#include "values/matrix.h"
#include "values/transform.h"
#include "values/vector.h"

namespace tovi {
namespace {

using testing::liveBlocks;
using testing::namespaceWith;
using testing::raisedText;
using testing::run;

TEST(ReadOnlyView, SharesTheOwnersMemoryAndRefusesSizeChanges) {
    PyRef owner(PyByteArray_FromStringAndSize(nullptr, 12));
    int32_t values[] = {1, 2, 3};
    std::memcpy(PyByteArray_AS_STRING(owner.get()), values, sizeof values);
    Py_ssize_t ownerReferences = Py_REFCNT(owner.get());

    PyRef view(newReadOnlyView(&IntListType.type, owner.get(), PyByteArray_AS_STRING(owner.get()), 3));
    ASSERT_TRUE(view);
    EXPECT_EQ(Py_REFCNT(owner.get()), ownerReferences + 1);
    PyRef names(namespaceWith("view", view.get()));
    PyDict_SetItemString(names.get(), "owner", owner.get());

    const std::string refused =
        "BufferError: This list is created as a read-only view. You can create a modifiable copy of it explicitly.";
    for (const char* resize : {"view.append(4)", "view.extend([4])", "del view[0]", "view *= 2", "view += [1]"}) {
        EXPECT_EQ(raisedText(resize, names.get()), refused) << resize;
    }
    PyObject* result = run(
        "view[1] = 7\n"
        "exported = memoryview(view)\n"
        "exported[0:4] = (9).to_bytes(4, 'little')\n"
        "copy = tovi.IntList(source=view)\n"
        "sliced = view[:]\n"
        "copy.append(4); sliced.append(5)\n"
        "result = (list(view), bytes(owner) == bytes(exported), exported.readonly, list(copy), list(sliced))\n"
        "exported.release()\n",
        names.get());
    ASSERT_TRUE(result);
    PyRef expected(Py_BuildValue("([iii]OO[iiii][iiii])", 9, 7, 3, Py_True, Py_False, 9, 7, 3, 4, 9, 7, 3, 5));
    EXPECT_EQ(PyObject_RichCompareBool(result, expected.get(), Py_EQ), 1);

    PyDict_Clear(names.get());
    view.reset();
    EXPECT_EQ(Py_REFCNT(owner.get()), ownerReferences);
    EXPECT_EQ(newReadOnlyView(&VectorListType.type, nullptr, nullptr, 0), nullptr);
    EXPECT_FALSE(PyErr_Occurred());
}

TEST(ListServices, CopyRoomAdoptAndRawAppend) {
    long long blocks = liveBlocks();
    ASSERT_GE(blocks, 0);
    {
        float floats[] = {1, 2, 3, 4, 5, 6};
        PyRef copied(newListCopying(&VectorListType.type, 2, floats));
        ASSERT_TRUE(copied);
        floats[0] = 99;
        PyRef first(PySequence_GetItem(copied.get(), 0));
        EXPECT_EQ(vectorValue(first.get()).x, 1.0);

        void* room = nullptr;
        PyRef filled(newListWithRoom(&TransformListType.type, 2, &room));
        ASSERT_TRUE(filled && room);
        EXPECT_EQ(PySequence_Size(filled.get()), 2);
        float packed[24];
        for (int index = 0; index < 24; ++index) packed[index] = static_cast<float>(index);
        std::memcpy(room, packed, sizeof packed);
        PyRef second(PySequence_GetItem(filled.get(), 1));
        EXPECT_EQ(transformValue(second.get()).offset.z, 23.0);

        auto* buffer = static_cast<int32_t*>(SdkApi.C_memory_alloc(3 * sizeof(int32_t)));
        ASSERT_NE(buffer, nullptr);
        buffer[0] = 5, buffer[1] = 6, buffer[2] = 7;
        PyRef adopted(adoptSdkBuffer(&IntListType.type, buffer, 3));
        ASSERT_TRUE(adopted);
        EXPECT_EQ(asList(adopted.get())->data, reinterpret_cast<char*>(buffer));
        ASSERT_EQ(appendRawElements(asList(adopted.get()), asList(adopted.get())), 0);
        PyRef text(PyObject_Repr(adopted.get()));
        EXPECT_STREQ(PyUnicode_AsUTF8(text.get()), "IntList(5, 6, 7, 5, 6, 7)");
    }
    EXPECT_EQ(liveBlocks(), blocks);
}

TEST(ValueBuilders, ReadPackedFloatsAndAdvanceTheCursor) {
    alignas(8) uint8_t bytes[60];
    float floats[15];
    for (int index = 0; index < 15; ++index) floats[index] = static_cast<float>(index) + 0.5f;
    std::memcpy(bytes, floats, sizeof floats);

    const uint8_t* cursor = bytes;
    PyRef vector(vectorFromFloats(cursor));
    EXPECT_EQ(cursor, bytes + 12);
    EXPECT_EQ(vectorValue(vector.get()).z, 2.5);
    PyRef acolor(acolorFromFloats(cursor));
    EXPECT_EQ(cursor, bytes + 28);
    EXPECT_EQ(colorComponents(acolor.get())[3], 6.5);
    cursor = bytes;
    PyRef matrix(matrixFromFloats(cursor));
    EXPECT_EQ(cursor, bytes + 36);
    cursor = bytes;
    PyRef transform(transformFromFloats(cursor));
    EXPECT_EQ(cursor, bytes + 48);
    EXPECT_EQ(transformValue(transform.get()).matrix.c1.x, 3.5);
    EXPECT_EQ(transformValue(transform.get()).offset.x, 9.5);

    // The mixed record: nine floats of the matrix, then the offset as three doubles.
    double offset[] = {0.1, 1e300, -2.0};
    std::memcpy(bytes + 36, offset, sizeof offset);
    cursor = bytes;
    PyRef mixed(transformFromMixedRecord(cursor));
    ASSERT_TRUE(mixed);
    EXPECT_EQ(cursor, bytes + 60);
    EXPECT_EQ(transformValue(mixed.get()).matrix.c2.z, 8.5);
    EXPECT_EQ(transformValue(mixed.get()).offset.x, 0.1);
    EXPECT_EQ(transformValue(mixed.get()).offset.y, 1e300);
}

}  // namespace
}  // namespace tovi
