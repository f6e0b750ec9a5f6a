// The scene entries called exactly as the module calls them: streams in, streams and texts out,
// ownership of what they return, and the renderer's lifetime.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <nlohmann/json.hpp>

#include "api/entries.h"
#include "core/memory.h"
#include "scene/catalogue.h"
#include "scene/value_stream.h"
#include "testctl/recorder.h"
#include "testctl/testctl.h"

using namespace tovi::ref;
using namespace tovi::ref::scene;

namespace {

double bitsAsTime(uint64_t bits) {
    double time;
    std::memcpy(&time, &bits, sizeof time);
    return time;
}
const double attributeTime = bitsAsTime(~0ull);
const double valueTime = bitsAsTime(~0ull - 1);

struct Stream {
    std::vector<uint8_t> bytes;
    template <typename T>
    Stream& put(T value) {
        auto raw = reinterpret_cast<const uint8_t*>(&value);
        bytes.insert(bytes.end(), raw, raw + sizeof(T));
        return *this;
    }
};

class SceneEntries : public ::testing::Test {
protected:
    void SetUp() override {
        liveBlocksAtStart = liveBlockCount();
        renderer = Tovi_ToviRenderer_create(nullptr, nullptr);
        ASSERT_NE(renderer, nullptr);
    }
    void TearDown() override {
        EXPECT_EQ(Tovi_ToviRenderer_release(renderer), 0);
        EXPECT_EQ(liveBlockCount(), liveBlocksAtStart);
        resetTestControl();
    }

    ToviPluginID make(const char* className, const char* name) {
        ToviPluginID id = 0;
        EXPECT_EQ(Tovi_ToviRenderer_newPlugin(renderer, name, className, 1, &id), 0);
        return id;
    }
    int send(ToviPluginID id, const char* property, const Stream& stream, double time = valueTime) {
        return Tovi_ToviRenderer_setPropertyBytesValueAtTimeByID(renderer, id, property, stream.bytes.data(), time, 1);
    }
    // The value read back as a stream: its code and the decoded value.
    std::pair<uint32_t, Value> read(ToviPluginID id, const char* property, double time = attributeTime) {
        uint8_t* bytes = nullptr;
        size_t size = 0;
        EXPECT_EQ(Tovi_getPropertyByteArrayByID(renderer, id, property, &bytes, &size, time), 0) << property;
        if (!bytes) return {~0u, Value()};
        uint32_t code;
        std::memcpy(&code, bytes, 4);
        const uint8_t* cursor = bytes;
        auto value = decodeStreamItem(cursor);
        EXPECT_EQ(static_cast<size_t>(cursor - bytes), size);
        C_memory_free(bytes);
        return {code, value.value_or(Value())};
    }
    std::string text(ToviPluginID id, const char* property) {
        char* value = Tovi_ToviRenderer_getPropertyValueByID(renderer, id, property, attributeTime);
        EXPECT_NE(value, nullptr) << property;
        std::string copy = value ? value : "";
        C_memory_free(value);
        return copy;
    }

    int64_t liveBlocksAtStart = 0;
    ToviRenderer* renderer = nullptr;
};

}  // namespace

TEST_F(SceneEntries, DecodesEveryRowOfTheModulesStream) {
    ToviPluginID sampler = make("SettingsImageSampler", "sampler");
    ToviPluginID node = make("Node", "node");
    ToviPluginID mesh = make("GeomStaticMesh", "mesh");
    // -1 arrives as a float and fits the integer property.
    EXPECT_EQ(send(sampler, "min_shade_rate", Stream().put<uint32_t>(1).put<float>(-1.0f)), 0);
    EXPECT_EQ(read(sampler, "min_shade_rate"), std::make_pair(0u, Value(int32_t{-1})));
    EXPECT_EQ(send(sampler, "bucket_width", Stream().put<uint32_t>(0).put<uint32_t>(0xFFFFFFFFu)), 0);
    EXPECT_EQ(read(sampler, "bucket_width").second, Value(int32_t{-1}));
    EXPECT_EQ(send(sampler, "progressive_threshold", Stream().put<uint32_t>(1).put<float>(4294967296.0f)), 0);
    EXPECT_EQ(read(sampler, "progressive_threshold"), std::make_pair(1u, Value(4294967296.0f)));
    EXPECT_NE(send(sampler, "bucket_width", Stream().put<uint32_t>(1).put<float>(4294967296.0f)), 0);
    EXPECT_EQ(send(node, "visible", Stream().put<uint32_t>(3).put<int32_t>(0)), 0);
    EXPECT_EQ(read(node, "visible"), std::make_pair(3u, Value(false)));
    EXPECT_EQ(send(node, "geometry", Stream().put<uint32_t>(10).put<uint64_t>(mesh)), 0);
    EXPECT_EQ(read(node, "geometry"), std::make_pair(10u, Value(PluginRef{mesh, 0})));
    EXPECT_EQ(send(node, "geometry", Stream().put<uint32_t>(10).put<uint64_t>(~0ull)), 0);
    EXPECT_EQ(read(node, "geometry").second, Value(PluginRef{}));

    Stream mixed;
    mixed.put<uint32_t>(12).put<uint32_t>(3).put<uint32_t>(0).put<int32_t>(1).put<uint32_t>(1).put<float>(2.5f);
    mixed.put<uint32_t>(9).put<uint32_t>(1).put<char>('a').put<char>(0).put<char>(0).put<char>(0);
    setRecorderEnabled(true);
    EXPECT_EQ(send(mesh, "map_channels", mixed), 0);
    auto call = nlohmann::json::parse(*lastCall("Tovi_ToviRenderer_setPropertyBytesValueAtTimeByID"))["args"];
    EXPECT_EQ(call["value"], "List(1, 2.5, \"a\")");
    EXPECT_EQ(call["timeBits"], "fffffffffffffffe");
    EXPECT_EQ(call["stream"].get<std::string>().size(), mixed.bytes.size() * 2);
    EXPECT_EQ(call["pluginID"], mesh);
    EXPECT_EQ(read(mesh, "map_channels"), std::make_pair(12u, Value(ValueList{{Value(int32_t{1}), Value(2.5f), Value("a")}})));
    EXPECT_EQ(text(mesh, "map_channels"), "List(1, 2.5, \"a\")");

    float vertices[] = {0, 0, 0, 1, 0, 0, 0, 1, 0};
    int32_t faces[] = {0, 1, 2};
    Stream byAddress;
    byAddress.put<uint32_t>(2004).put<uint32_t>(3).put<uint64_t>(reinterpret_cast<uintptr_t>(vertices));
    EXPECT_EQ(send(mesh, "vertices", byAddress), 0);
    vertices[0] = 99;  // copied during the call
    EXPECT_EQ(read(mesh, "vertices"), std::make_pair(104u, Value(VectorList{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}})));
    EXPECT_EQ(send(mesh, "faces", Stream().put<uint32_t>(2000).put<uint32_t>(3).put<uint64_t>(reinterpret_cast<uintptr_t>(faces))), 0);
    EXPECT_EQ(read(mesh, "faces").first, 100u);
    EXPECT_EQ(Tovi_ToviRenderer_getPropertyElementsCountByID(renderer, mesh, "faces"), 3);
    EXPECT_EQ(Tovi_ToviRenderer_getPropertyElementsCountByID(renderer, node, "visible"), -1);

    Stream transform;
    transform.put<uint32_t>(28);
    for (float f : {1.f, 0.f, 0.f, 0.f, 1.f, 0.f, 0.f, 0.f, 1.f}) transform.put(f);
    for (double d : {1e9 + 0.25, 2.0, 3.0}) transform.put(d);
    EXPECT_EQ(send(node, "transform", transform), 0);
    auto [code, value] = read(node, "transform");
    EXPECT_EQ(code, 28u);
    EXPECT_EQ(value.as<TransformValue>().offset[0], 1e9 + 0.25);

    // Missing plugin or property: -22; a rejected value: another negative result.
    EXPECT_EQ(send(node, "no_such", Stream().put<uint32_t>(0).put<int32_t>(1)), -22);
    EXPECT_EQ(send(~0ull, "visible", Stream().put<uint32_t>(0).put<int32_t>(1)), -22);
    EXPECT_EQ(send(node, "geometry", Stream().put<uint32_t>(10).put<uint64_t>(424242)), -1);
    EXPECT_EQ(Tovi_ToviRenderer_getLastErrorCode(renderer), 8);
    Tovi_ToviRenderer_clearLastErrorCode(renderer);
    EXPECT_EQ(Tovi_ToviRenderer_getLastErrorCode(renderer), 0);
}

TEST_F(SceneEntries, ProducesEveryReadCode) {
    ToviPluginID settings = make("SettingsUnitsInfo", "units");
    ToviPluginID uvw = make("UVWGenChannel", "uvw");
    ToviPluginID texture = make("TexBitmap", "bitmap");
    ToviPluginID brdf = make("BRDFStandard", "brdf");
    ToviPluginID channel = make("RenderChannelCryptomatte", "matte");
    ToviPluginID scatter = make("GeomScatter", "scatter");
    ToviPluginID hair = make("GeomHair", "hair");
    EXPECT_EQ(read(settings, "meters_scale").first, 2u);
    EXPECT_EQ(read(uvw, "uvw_transform").first, 8u);
    EXPECT_EQ(read(uvw, "crop_uv"), std::make_pair(101u, Value(FloatList{0, 1, 0, 1})));
    EXPECT_EQ(read(texture, "default_color").first, 6u);
    EXPECT_EQ(read(brdf, "fog_color").first, 5u);
    EXPECT_EQ(read(make("SettingsColorMapping", "cm"), "color_matrix").first, 7u);
    EXPECT_EQ(read(make("GeomSphere", "sphere"), "radius").first, 1u);
    // An untouched text is answered by address; a text that was set, inline.
    EXPECT_EQ(read(channel, "name"), std::make_pair(200u, Value("cryptomatte")));
    EXPECT_EQ(Tovi_ToviRenderer_setPropertyValueAtTimeByID(renderer, channel, "name", "mattes", attributeTime, 1), 0);
    EXPECT_EQ(read(channel, "name"), std::make_pair(9u, Value("mattes")));
    EXPECT_EQ(Tovi_ToviRenderer_setPropertyValueAtTimeByID(renderer, channel, "exclude_names", "List(\"a\", \"b\")", attributeTime, 1), 0);
    EXPECT_EQ(read(channel, "exclude_names"), std::make_pair(109u, Value(StringList{"a", "b"})));
    EXPECT_EQ(Tovi_ToviRenderer_setPropertyValueAtTimeByID(renderer, hair, "colors", "ListColor(Color(1, 0, 0))", attributeTime, 1), 0);
    EXPECT_EQ(read(hair, "colors").first, 105u);
    EXPECT_EQ(Tovi_ToviRenderer_setPropertyValueAtTimeByID(renderer, scatter, "instance_transforms",
                                                         "List(Transform(Matrix(Vector(1, 0, 0), Vector(0, 1, 0), Vector(0, 0, 1)), Vector(0.1, 0, 0)))",
                                                         attributeTime, 1), 0);
    EXPECT_EQ(read(scatter, "instance_transforms").first, 128u);
    EXPECT_EQ(Tovi_ToviRenderer_setPropertyValueAtTimeByID(renderer, scatter, "instances", "List(bitmap, brdf)", attributeTime, 1), 0);
    EXPECT_EQ(read(scatter, "instances"), std::make_pair(110u, Value(PluginList{{texture, 0}, {brdf, 0}})));
    EXPECT_EQ(Tovi_ToviRenderer_setPropertyValueAtTimeByID(renderer, brdf, "opacity", "bitmap::out_alpha", attributeTime, 1), 0);
    EXPECT_EQ(read(brdf, "opacity").first, 210u);
    EXPECT_EQ(text(brdf, "opacity"), "bitmap::out_alpha");
    EXPECT_EQ(Tovi_ToviRenderer_getPropertyTypeByID(renderer, brdf, "opacity"), 10);
    EXPECT_EQ(Tovi_ToviRenderer_getPropertyTypeByID(renderer, brdf, "coat_amount"), 1);
    EXPECT_EQ(Tovi_ToviRenderer_setPropertyValueAtTimeByID(renderer, brdf, "opacity", "nobody", attributeTime, 1), -1);
    EXPECT_EQ(Tovi_ToviRenderer_setPropertyValueAtTimeByID(renderer, brdf, "nothing", "1", attributeTime, 1), -22);
    // Outputs exist but hold no value.
    uint8_t* bytes = nullptr;
    EXPECT_LT(Tovi_getPropertyByteArrayByID(renderer, texture, "out_color", &bytes, nullptr, attributeTime), 0);
    EXPECT_EQ(Tovi_ToviRenderer_propertyExistsByID(renderer, texture, "out_color"), 1);
}

TEST_F(SceneEntries, EveryPropertyOfEveryClassRoundTrips) {
    const ClassRegistry& classes = catalogue();
    for (size_t c = 0; c < classes.size(); ++c) {
        const PluginClass& pluginClass = classes.at(c);
        ToviPluginID id = make(pluginClass.name().c_str(), nullptr);
        for (size_t p = 0; p < pluginClass.propertyCount(); ++p) {
            const PropertyDefinition& property = pluginClass.property(p);
            if (isOutput(property.type)) continue;
            std::string where = pluginClass.name() + "." + property.name;
            // Through the stream: what was read is accepted back unchanged.
            uint8_t* bytes = nullptr;
            ASSERT_EQ(Tovi_getPropertyByteArrayByID(renderer, id, property.name.c_str(), &bytes, nullptr, attributeTime), 0) << where;
            EXPECT_EQ(Tovi_ToviRenderer_setPropertyBytesValueAtTimeByID(renderer, id, property.name.c_str(), bytes, attributeTime, 1), 0) << where;
            C_memory_free(bytes);
            EXPECT_EQ(Tovi_ToviRenderer_getPropertyStateByID(renderer, id, property.name.c_str()), 2) << where;
            EXPECT_EQ(read(id, property.name.c_str()).second, *property.defaultValue) << where;
            // Through the text.
            std::string printed = text(id, property.name.c_str());
            EXPECT_EQ(Tovi_ToviRenderer_setPropertyValueAtTimeByID(renderer, id, property.name.c_str(), printed.c_str(), 5.0, 1), 0) << where;
            EXPECT_EQ(text(id, property.name.c_str()), printed) << where;
            EXPECT_EQ(Tovi_ToviRenderer_getPropertyStateByID(renderer, id, property.name.c_str()), 3) << where;
        }
    }
}

TEST_F(SceneEntries, PluginsClassesAndWhatTheyHandOut) {
    EXPECT_EQ(Tovi_ToviRenderer_newPlugin(renderer, "a b", "Node", 1, nullptr), -3);
    ToviPluginID a = make("Node", "a");
    ToviPluginID id = 0;
    EXPECT_EQ(Tovi_ToviRenderer_newPlugin(renderer, "a", "Node", 1, &id), -2);
    EXPECT_EQ(Tovi_ToviRenderer_newPlugin(renderer, "z", "NoSuchClass", 1, &id), -1);
    ToviPluginID b = make("LightSphere", nullptr);
    EXPECT_STREQ(Tovi_ToviRenderer_getPluginName(renderer, b), "LightSphere@1");
    EXPECT_STREQ(Tovi_ToviRenderer_getPluginTypeByID(renderer, b), "LightSphere");
    EXPECT_EQ(Tovi_ToviRenderer_getPluginID(renderer, "a"), a);
    EXPECT_EQ(Tovi_ToviRenderer_getPluginsCountOfType(renderer, nullptr), 2);
    int count = 0;
    ToviPluginID* ids = Tovi_ToviRenderer_getPluginIDsOfType(renderer, "LightSphere", &count);
    ASSERT_EQ(count, 1);
    EXPECT_EQ(ids[0], b);
    C_memory_free(ids);
    EXPECT_EQ(Tovi_ToviRenderer_getPluginIDsOfType(renderer, "GeomPlane", &count), nullptr);
    EXPECT_EQ(count, 0);

    int64_t vectors = liveVectorCount();
    ToviVector* names = Tovi_ToviRenderer_getPropertyNamesByID(renderer, a);
    ASSERT_NE(names, nullptr);
    EXPECT_STREQ(static_cast<const char*>(getVectorElement(names, 0)), "transform");
    releaseVector(names);
    EXPECT_EQ(liveVectorCount(), vectors);
    EXPECT_EQ(Tovi_ToviRenderer_getPropertyIndexFromNameByID(renderer, a, "camera_visibility"), 4);
    EXPECT_STREQ(Tovi_ToviRenderer_getPropertyNameFromIndexByID(renderer, a, 4), "primary_visibility");
    EXPECT_EQ(Tovi_ToviRenderer_getPropertyNameFromIndexByID(renderer, a, 99), nullptr);

    const ToviPropertyDefinition* definition = Tovi_ToviRenderer_getPropertyDefinitionFromClass(renderer, "Node", "primary_visibility");
    ASSERT_NE(definition, nullptr);
    EXPECT_EQ(definition, Tovi_ToviRenderer_getPropertyDefinitionByID(renderer, a, "camera_visibility"));
    EXPECT_STREQ(Tovi_PluginUtils_getPropertyAliases(definition), "camera_visibility");
    EXPECT_EQ(Tovi_PluginUtils_getPropertyType(definition), 3);
    EXPECT_EQ(Tovi_PluginUtils_getPropertyElementsCount(definition), -1);
    uint8_t* stream = nullptr;
    size_t size = 0;
    ASSERT_EQ(Tovi_PluginUtils_getPropertyDefaultValue(definition, &stream, &size), 0);
    EXPECT_EQ(size, 8u);
    C_memory_free(stream);
    char* description = Tovi_ToviRenderer_getPluginDescription(renderer, "GeomPlane");
    ASSERT_NE(description, nullptr);
    C_memory_free(description);
    EXPECT_EQ(Tovi_ToviRenderer_getPluginGpuSupport(renderer, "GeomGaussians"), 1);
    EXPECT_EQ(Tovi_ToviRenderer_getPluginGpuSupport(renderer, "Nope"), -1);
    EXPECT_EQ(Tovi_ToviRenderer_pluginClassExists(renderer, "Node"), 1);

    EXPECT_EQ(Tovi_ToviRenderer_renamePluginByID(renderer, a, "LightSphere@1", 1), -2);
    EXPECT_EQ(Tovi_ToviRenderer_renamePluginByID(renderer, a, "fresh", 1), 0);
    ToviPluginID both[] = {a, 777};
    EXPECT_NE(Tovi_ToviRenderer_deletePluginsByID(renderer, both, 2, 1), 0);
    EXPECT_EQ(Tovi_ToviRenderer_pluginExistsByID(renderer, a), 0);
    EXPECT_EQ(Tovi_ToviRenderer_deletePlugin(renderer, "LightSphere@1", 1), 0);
    EXPECT_EQ(Tovi_ToviRenderer_getPluginsCountOfType(renderer, nullptr), 0);
}

TEST_F(SceneEntries, KeyframesTimeAndCommits) {
    ToviPluginID light = make("LightOmni", "omni");
    EXPECT_EQ(Tovi_ToviRenderer_getPropertyStateByID(renderer, light, "decay"), 1);
    EXPECT_EQ(Tovi_ToviRenderer_setPropertyValueAtTimeByID(renderer, light, "decay", "1", 0.5, 1), 0);
    EXPECT_EQ(send(light, "decay", Stream().put<uint32_t>(1).put<float>(3.0f), 1.5), 0);
    double* times = nullptr;
    ASSERT_EQ(Tovi_ToviRenderer_getPropertyKeyframeTimesByID(renderer, light, "decay", &times), 2);
    EXPECT_EQ(times[0], 0.5);
    EXPECT_EQ(times[1], 1.5);
    C_memory_free(times);
    EXPECT_EQ(Tovi_ToviRenderer_getPropertyKeyframeTimesByID(renderer, light, "color", &times), 0);
    EXPECT_EQ(times, nullptr);
    EXPECT_EQ(Tovi_ToviRenderer_getPropertyKeyframeTimesByID(renderer, light, "nothing", &times), -1);
    EXPECT_EQ(Tovi_ToviRenderer_getPropertyStateByID(renderer, light, "decay"), 3);
    EXPECT_EQ(Tovi_ToviRenderer_getPropertyStateByID(renderer, light, "nothing"), 0);
    EXPECT_EQ(read(light, "decay", 1.0).second, Value(2.0f));
    EXPECT_EQ(Tovi_ToviRenderer_setCurrentFrame(renderer, 36), 0);
    EXPECT_DOUBLE_EQ(Tovi_ToviRenderer_getCurrentTime(renderer), 1.5);
    EXPECT_EQ(read(light, "decay").second, Value(3.0f));

    uint64_t before = Tovi_ToviRenderer_getChangeIndex(renderer);
    EXPECT_EQ(Tovi_ToviRenderer_setPropertyBytesValueAtTimeByID(renderer, light, "shadows",
                                                              Stream().put<uint32_t>(3).put<int32_t>(0).bytes.data(), attributeTime, 0), 0);
    EXPECT_EQ(Tovi_ToviRenderer_getChangeIndex(renderer), before);
    EXPECT_EQ(Tovi_ToviRenderer_commit(renderer, 0), before + 1);
    EXPECT_EQ(Tovi_ToviRenderer_commit(renderer, 0), 0u);
}

TEST_F(SceneEntries, GuidesCategoriesAndLinksAsTheyAreHandedOut) {
    const ToviPropertyDefinition* file = Tovi_ToviRenderer_getPropertyDefinitionFromClass(renderer, "BitmapBuffer", "file");
    ASSERT_NE(file, nullptr);
    char* list = nullptr;
    int count = Tovi_UIGuides_getFileAssetExts(file, &list);
    ASSERT_EQ(count, 8);
    EXPECT_EQ(std::string(list), "png");
    EXPECT_EQ(std::string(list + 4), "jpg");
    C_memory_free(list);
    ToviCharString name{};
    EXPECT_EQ(Tovi_UIGuides_getDisplayName(file, &name), 0);
    EXPECT_STREQ(getCharStringContent(&name), "Image file");
    releaseCharString(&name);
    // Absent guides answer their failure values and hand out nothing.
    EXPECT_EQ(Tovi_UIGuides_getTabName(file, &name), -1);
    EXPECT_EQ(Tovi_UIGuides_getUnits(file), -1);
    EXPECT_EQ(Tovi_UIGuides_getStringEnumStrings(file, &list), -1);
    int flag = 7;
    EXPECT_EQ(Tovi_UIGuides_hasType(file, 23, &flag), -1);
    EXPECT_EQ(Tovi_UIGuides_hasAttribute(file, 3, &flag), -1);

    const ToviPropertyDefinition* type = Tovi_ToviRenderer_getPropertyDefinitionFromClass(renderer, "BitmapBuffer", "color_space");
    int32_t* values = nullptr;
    ASSERT_EQ(Tovi_UIGuides_getEnumStrings(type, &list, &values), 3);
    EXPECT_EQ(std::string(list + 7), "sRGB");
    EXPECT_EQ(values[2], 2);
    C_memory_free(list);
    C_memory_free(values);
    const ToviPropertyDefinition* gamma = Tovi_ToviRenderer_getPropertyDefinitionFromClass(renderer, "BitmapBuffer", "gamma");
    ToviPluginID bitmap = make("BitmapBuffer", "bitmap");
    EXPECT_EQ(Tovi_UIGuides_isEnabled(gamma, renderer, bitmap, &flag), 0);
    EXPECT_EQ(flag, 0);
    ASSERT_EQ(send(bitmap, "color_space", Stream().put<uint32_t>(0).put<int32_t>(2)), 0);
    EXPECT_EQ(Tovi_UIGuides_isEnabled(gamma, renderer, bitmap, &flag), 0);
    EXPECT_EQ(flag, 1);
    EXPECT_EQ(Tovi_UIGuides_isHidden(gamma, renderer, bitmap, &flag), 0);
    EXPECT_EQ(flag, 0);
    EXPECT_EQ(Tovi_UIGuides_isEnabled(gamma, renderer, 999, &flag), -1);

    int lights = Tovi_getPluginCategoryEnumFromName("lights");
    int areas = Tovi_getPluginCategoryEnumFromName("areaLights");
    EXPECT_EQ(Tovi_getPluginCategoryEnumFromName("lamps"), Tovi_getPluginCategoryEnumFromName(nullptr));
    EXPECT_STREQ(Tovi_getPluginCategoryNameFromEnum(areas), "areaLights");
    EXPECT_EQ(Tovi_getPluginCategoryNameFromEnum(-1), nullptr);
    ToviPluginID omni = make("LightOmni", "omni");
    ToviPluginID sphere = make("LightSphere", "sphere");
    uint64_t both = (1ull << lights) | (1ull << areas);
    int found = -1;
    ToviPluginID* ids = Tovi_ToviRenderer_getPluginsOfCategories(renderer, &both, 1, &found);
    ASSERT_EQ(found, 1);
    EXPECT_EQ(ids[0], sphere);
    C_memory_free(ids);
    uint64_t masks[] = {1ull << areas, 1ull << lights};
    ids = Tovi_ToviRenderer_getPluginsOfCategories(renderer, masks, 2, &found);
    ASSERT_EQ(found, 2);
    EXPECT_EQ(ids[0], omni);
    C_memory_free(ids);
    EXPECT_EQ(Tovi_ToviRenderer_getPluginsOfCategories(renderer, masks, 0, &found), nullptr);
    EXPECT_EQ(found, 0);
    EXPECT_EQ(Tovi_ToviRenderer_isPluginOfCategories(renderer, omni, both), 0);
    EXPECT_EQ(Tovi_ToviRenderer_getPluginCategories(renderer, sphere), both);
    EXPECT_EQ(Tovi_ToviRenderer_isPluginClassOfCategory(renderer, "LightSphere", static_cast<uint32_t>(areas)), 1);

    ToviPluginID texture = make("TexBitmap", "texture");
    ASSERT_EQ(send(texture, "bitmap", Stream().put<uint32_t>(10).put<uint64_t>(bitmap).put<int32_t>(0)), 0);
    ToviPluginLink* links = nullptr;
    ASSERT_EQ(Util_getParentPlugins(renderer, bitmap, 0, &links), 1);
    EXPECT_EQ(links[0].referencingID, texture);
    EXPECT_EQ(links[0].referencedID, bitmap);
    EXPECT_STREQ(Tovi_ToviRenderer_getPropertyNameFromIndexByID(renderer, texture, links[0].propertyIndex), "bitmap");
    C_memory_free(links);
    EXPECT_EQ(Util_getChildPlugins(renderer, bitmap, 1, &links), 0);
    EXPECT_EQ(links, nullptr);
    EXPECT_EQ(Util_getChildPlugins(renderer, 999, 1, &links), -1);
}

TEST(RendererLifetime, OptionsReferencesAndUserData) {
    setRecorderEnabled(true);
    ToviRendererOptions options{};
    options.pluginLibraryPath = "/plugins";
    options.tfbDrawStyle = TOVI_TFB_DRAW_STYLE_MAYA;
    options.flags0 = TOVI_RENDERER_FLAGS0_DEFAULT | TOVI_RENDERER_FLAGS0_ALLOW_INVALID_PLUGIN_NAMES;
    options.flags1 = TOVI_RENDERER_FLAGS1_DEFAULT;
    options.flags2 = TOVI_RENDERER_FLAGS2_FORWARD_PROGRESS_TO_TFB;
    ToviRenderer* renderer = Tovi_ToviRenderer_create(&options, nullptr);
    ASSERT_NE(renderer, nullptr);
    auto call = nlohmann::json::parse(*lastCall("Tovi_ToviRenderer_create"));
    EXPECT_EQ(call["args"]["options"],
              nlohmann::json({{"pluginLibraryPath", "/plugins"}, {"tfbDrawStyle", 4}, {"flags0", 0x4B}, {"flags1", 2},
                              {"flags2", 4}, {"reserved0", 0}, {"reserved1", 0}, {"tfbLanguage", nullptr}}));
    ToviRendererOptions kept{};
    ASSERT_EQ(Tovi_ToviRenderer_getRenderOptions(renderer, &kept), 0);
    EXPECT_STREQ(kept.pluginLibraryPath, "/plugins");
    EXPECT_NE(kept.pluginLibraryPath, options.pluginLibraryPath);
    EXPECT_EQ(kept.flags0, 0x4B);
    EXPECT_EQ(kept.tfbLanguage, nullptr);
    // Other characters are allowed in names when the renderer was created so.
    ToviPluginID id = 0;
    EXPECT_EQ(Tovi_ToviRenderer_newPlugin(renderer, "a b", "Node", 1, &id), 0);

    int slot = 3;
    EXPECT_EQ(Tovi_getUserDataCount(), 8);
    EXPECT_EQ(Tovi_ToviRenderer_setUserData(renderer, 1, &slot), 0);
    EXPECT_EQ(Tovi_ToviRenderer_getUserData(renderer, 1), &slot);
    EXPECT_EQ(Tovi_ToviRenderer_setUserData(renderer, 8, &slot), -1);

    EXPECT_EQ(Tovi_ToviRenderer_incRef(renderer), 2);
    EXPECT_EQ(Tovi_ToviRenderer_release(renderer), 1);
    EXPECT_EQ(Tovi_ToviRenderer_pluginExistsByID(renderer, id), 1);
    EXPECT_EQ(Tovi_ToviRenderer_release(renderer), 0);
    // A released handle is refused, not used.
    EXPECT_EQ(Tovi_ToviRenderer_release(renderer), -1);
    EXPECT_EQ(Tovi_ToviRenderer_pluginExistsByID(renderer, id), 0);
    EXPECT_EQ(Tovi_ToviRenderer_getLastErrorCode(renderer), -1);
    EXPECT_EQ(Tovi_ToviRenderer_release(nullptr), -1);
    resetTestControl();
}

TEST_F(SceneEntries, SceneBuffersAndTheParserErrorEntries) {
    // Buffers need no terminating zero: the text ends where its size says.
    const char text[] = "Node a { }Node cut_off { }";
    ASSERT_EQ(Tovi_ToviRenderer_loadAsBuffer(renderer, text, 10, 1), 0);
    EXPECT_NE(Tovi_ToviRenderer_getPluginID(renderer, "a"), TOVI_NO_PLUGIN);
    EXPECT_EQ(Tovi_ToviRenderer_getPluginID(renderer, "cut_off"), TOVI_NO_PLUGIN);
    EXPECT_EQ(Tovi_ToviRenderer_getLastParserErrorFileLine(renderer), 0);

    const char* buffers[] = {"Node b { }", "Node c {\n  visible = maybe;\n}"};
    const size_t sizes[] = {std::strlen(buffers[0]), std::strlen(buffers[1])};
    ASSERT_LT(Tovi_ToviRenderer_appendMultiAsBuffer(renderer, buffers, sizes, 2, 1), 0);
    EXPECT_EQ(Tovi_ToviRenderer_getPluginID(renderer, "b"), TOVI_NO_PLUGIN);
    EXPECT_EQ(Tovi_ToviRenderer_getLastErrorCode(renderer), 10);
    ToviCharString file{}, message{};
    ASSERT_EQ(Tovi_ToviRenderer_getLastParserErrorFileName(renderer, &file), 0);
    ASSERT_EQ(Tovi_ToviRenderer_getLastParserErrorText(renderer, &message), 0);
    EXPECT_STREQ(getCharStringContent(&file), "<text 2>");
    EXPECT_EQ(Tovi_ToviRenderer_getLastParserErrorFileLine(renderer), 2);
    EXPECT_STREQ(getCharStringContent(&message), "no plugin named 'maybe'");
    releaseCharString(&file);
    releaseCharString(&message);
    // The next load starts without a parse error.
    ASSERT_EQ(Tovi_ToviRenderer_appendAsText(renderer, "Node d { }", 1), 0);
    EXPECT_LT(Tovi_ToviRenderer_getLastParserErrorFileName(renderer, &file), 0);
}
