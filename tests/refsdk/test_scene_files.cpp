// Scene files: the packed value forms, reading with exact error places, includes, filters,
// one-scene-or-nothing loads, and exports that load back to the same scene.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>

#include "format/packed_data.h"
#include "format/scene_loader.h"
#include "format/scene_writer.h"
#include "format/value_syntax.h"
#include "scene/catalogue.h"

using namespace tovi::ref;
using namespace tovi::ref::scene;
using namespace tovi::ref::format;
namespace fs = std::filesystem;

namespace {

class NoNames : public PluginNames {
public:
    std::optional<PluginRef> resolve(std::string_view, std::string_view) const override { return std::nullopt; }
    std::optional<std::pair<std::string, std::string>> names(const PluginRef&) const override { return std::nullopt; }
};

// Names of one scene, for printing values to compare scenes by.
class SceneNames : public PluginNames {
public:
    explicit SceneNames(const SceneDatabase& scene) : scene_(scene) {}
    std::optional<PluginRef> resolve(std::string_view, std::string_view) const override { return std::nullopt; }
    std::optional<std::pair<std::string, std::string>> names(const PluginRef& ref) const override {
        auto name = scene_.copyPluginName(ref.id);
        if (!name) return std::nullopt;
        const PropertyDefinition* output = ref.output ? scene_.pluginClass(ref.id)->propertyAt(ref.output) : nullptr;
        return std::make_pair(*name, output ? output->name : std::string());
    }

private:
    const SceneDatabase& scene_;
};

// A scene as text that names every value, keyframe and reference: equal texts, equal scenes.
std::string describe(const SceneDatabase& scene) {
    SceneNames names(scene);
    std::string text;
    for (const PluginContents& plugin : scene.contents()) {
        text += plugin.pluginClass->name() + " " + plugin.name + "\n";
        for (const PropertyContents& property : plugin.properties) {
            text += "  " + property.definition->name + " =";
            if (property.state == PropertyState::Animated) {
                for (const auto& [time, key] : property.keyframes) text += " @" + printDouble(time) + " " + printValue(key, names);
            } else {
                text += " " + printValue(property.value, names);
            }
            text += "\n";
        }
    }
    return text;
}

struct TempFolder {
    fs::path path;
    TempFolder() {
        path = fs::temp_directory_path() / ("tovi-scene-files-" + std::to_string(::getpid()) + "-" +
                                            ::testing::UnitTest::GetInstance()->current_test_info()->name());
        fs::remove_all(path);
        fs::create_directories(path);
    }
    ~TempFolder() { fs::remove_all(path); }
    std::string file(const std::string& name, const std::string& text = {}) const {
        std::string full = (path / name).string();
        if (!text.empty()) std::ofstream(full, std::ios::binary) << text;
        return full;
    }
};

std::string readFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

std::optional<LoadError> loadText(SceneDatabase& scene, const std::string& text, bool replace = false) {
    LoadOptions options;
    options.replaceScene = replace;
    return loadScene(scene, {{false, text}}, options);
}

// A value of the declared type; `step` makes keyframes differ. Numbers are chosen to need every
// digit (0.1f, a far offset, a subnormal) so that any rounding shows.
Value sample(const PropertyDefinition& definition, int step, const PluginRef& texture, const PluginRef& output) {
    float f = 0.1f + static_cast<float>(step);
    TransformValue transform{{{{f, 0.2f, -0.3f}, {0.0f, 1.0f / 3.0f, 0.0f}, {1e-40f, 0.0f, -0.0f}}},
                             {100000.123456789 + step, -2.5e-7, -0.0}};
    auto scalar = [&](PropertyType type, int index) -> Value {
        switch (type) {
            case PropertyType::Int: return int32_t(-7 + step + index);
            case PropertyType::Float: return f + index;
            case PropertyType::Double: return 0.1 + step + index;
            case PropertyType::Boolean: return (step + index) % 2 == 0;
            case PropertyType::Vector: return VectorValue{f, -2.5e-8f, 3.0f + index};
            case PropertyType::Color: return ColorValue{f, 0.5f, 1.0f / 3.0f + index};
            case PropertyType::AColor: return AColorValue{f, 0.25f, 0.75f, 0.5f + index};
            case PropertyType::Matrix: return transform.matrix;
            case PropertyType::Transform: return transform;
            case PropertyType::String: return std::string("text \"") + std::to_string(step + index) + "\"\n\u00e9";
            case PropertyType::Plugin: return (step + index) % 2 ? texture : output;
            default: return Value();
        }
    };
    auto element = [&](PropertyType type, int index) -> Value {
        if (type == PropertyType::Unspecified) {
            return ValueList{{int32_t(index), f, std::string("nested"), IntList{1, 2, step},
                              VectorList{{1, 2, 3}}, ValueList{{0.5, texture}}}};
        }
        if (isTexture(type)) return (step + index) % 2 ? Value(output) : scalar(textureValueType(type), index);
        return scalar(type, index);
    };
    PropertyType type = definition.type;
    if (!isList(type)) return *conformToType(element(type, 0), type);
    int count = definition.elementsCount > 0 ? definition.elementsCount : 3 + step;
    ValueList items;
    for (int index = 0; index < count; ++index) items.items.push_back(element(elementType(type), index));
    return *conformToType(Value(std::move(items)), type, definition.elementsCount);
}

// One plugin of every class with every property set: plain, or keyed at two times every other
// property.
void fillEveryProperty(SceneDatabase& scene) {
    ToviPluginID texture = 0;
    ASSERT_EQ(scene.createPlugin(std::string_view("tex"), "TexChecker", true, &texture), SceneStatus::Ok);
    PluginRef plain{texture, 0};
    PluginRef output{texture, catalogue().find("TexChecker")->findProperty("out_color")->index};
    for (size_t index = 0; index < catalogue().size(); ++index) {
        const PluginClass& pluginClass = catalogue().at(index);
        ToviPluginID id = 0;
        ASSERT_EQ(scene.createPlugin(std::string_view("the_" + pluginClass.name()), pluginClass.name(), true, &id), SceneStatus::Ok);
        for (size_t property = 0; property < pluginClass.propertyCount(); ++property) {
            const PropertyDefinition& definition = pluginClass.property(property);
            if (isOutput(definition.type)) continue;
            if (property % 2) {
                ASSERT_EQ(scene.setValue(id, definition.name, sample(definition, 0, plain, output), 0.5, true), SceneStatus::Ok) << definition.name;
                ASSERT_EQ(scene.setValue(id, definition.name, sample(definition, 1, plain, output), 1.25, true), SceneStatus::Ok) << definition.name;
            } else {
                ASSERT_EQ(scene.setValue(id, definition.name, sample(definition, 0, plain, output), NAN, true), SceneStatus::Ok) << definition.name;
            }
        }
    }
}

}  // namespace

TEST(PackedForms, EveryFormReadsBackExactly) {
    NoNames names;
    Value vectors = VectorList{{0.1f, -0.0f, 1e-40f}, {std::numeric_limits<float>::max(), 2.5f, -3.0f}};
    Value transforms = TransformList{{{{{0.1f, 0, 0}, {0, 1, 0}, {0, 0, 1}}}, {1e10 + 0.5, -0.1, 0}}};
    for (bool compressed : {false, true}) {
        ValueFormat packed{true, compressed, true, nullptr};
        for (const Value& value : {vectors, transforms, Value(IntList{-1, 0, std::numeric_limits<int32_t>::max()}),
                                   Value(FloatList{0.1f, -0.0f}), Value(ColorList{{0.1f, 0.2f, 0.3f}})}) {
            std::string text;
            printValue(value, names, packed, text);
            EXPECT_NE(text.find(compressed ? "Zip(" : "Hex(\""), std::string::npos) << text;
            auto kind = packedKindOf(value);
            PropertyType type = *kind == PackedKind::Int ? PropertyType::ListInt
                                : *kind == PackedKind::Float ? PropertyType::ListFloat
                                : *kind == PackedKind::Vector ? PropertyType::ListVector
                                : *kind == PackedKind::Color ? PropertyType::ListColor
                                                             : PropertyType::ListTransform;
            EXPECT_EQ(parseValue(text, type, names), value) << text;
        }
        // A single transform keeps its double offset in the hex form too.
        std::string text;
        TransformValue far{{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}}, {123456789.123, 0, 0}};
        printValue(Value(far), names, packed, text);
        EXPECT_EQ(text.substr(0, 13), "TransformHex(");
        EXPECT_EQ(parseValue(text, PropertyType::Transform, names), Value(far));
    }
    // Damaged forms are refused with a reason.
    ParseError error;
    EXPECT_FALSE(parseValue("ListIntHex(\"0100000\")", PropertyType::ListInt, names, &error));
    EXPECT_EQ(error.message, "expected an even number of hexadecimal digits");
    EXPECT_FALSE(parseValue("ListVectorHex(\"01000000\")", PropertyType::ListVector, names, &error));
    EXPECT_EQ(error.message, "the bytes are no whole number of elements");
    std::vector<uint8_t> ints{1, 0, 0, 0, 2, 0, 0, 0};
    std::vector<uint8_t> stream = compressBytes(ints.data(), ints.size());
    std::string hex;
    appendHex(stream.data(), stream.size(), hex);
    EXPECT_EQ(parseValue("ListIntZip(2, \"" + hex + "\")", PropertyType::ListInt, names), Value(IntList{1, 2}));
    // A count that the stream does not fill, or overfills, is refused without trusting it.
    EXPECT_FALSE(parseValue("ListIntZip(3, \"" + hex + "\")", PropertyType::ListInt, names, &error));
    EXPECT_EQ(error.message, "the compressed data does not inflate to 3 elements");
    EXPECT_FALSE(parseValue("ListIntZip(1, \"" + hex + "\")", PropertyType::ListInt, names));
    EXPECT_FALSE(parseValue("ListIntZip(4000000000000, \"" + hex + "\")", PropertyType::ListInt, names));
    EXPECT_FALSE(parseValue("ListIntData(\"x.tvdata\", 0, 1)", PropertyType::ListInt, names, &error));
    EXPECT_EQ(error.message, "side data files are read only with scene files");
}

TEST(SceneFiles, ReadsBlocksKeyframesAndForwardReferences) {
    SceneDatabase scene(catalogue(), false);
    auto error = loadText(scene, R"(// a comment
/* a block
   comment */
Node box {
  geometry = mesh;        // declared further down
  material = interpolate((0, null), (2.5, brdf));
  transform = Transform(Matrix(Vector(1, 0, 0), Vector(0, 1, 0), Vector(0, 0, 1)), Vector(0.5, 0, 100000.25));
}
GeomStaticMesh mesh { faces = ListInt(0, 1, 2); vertices = ListVector(Vector(0, 0, 0), Vector(1, 0, 0), Vector(0, 1, 0)); }
BRDFStandard brdf { }
)");
    ASSERT_FALSE(error) << error->message;
    ToviPluginID box = scene.findPlugin("box");
    EXPECT_EQ(scene.getValue(box, "geometry", NAN).value, Value(PluginRef{scene.findPlugin("mesh"), 0}));
    EXPECT_EQ(*scene.keyframeTimes(box, "material"), (std::vector<double>{0, 2.5}));
    EXPECT_EQ(scene.getValue(box, "material", 3.0).value->as<PluginRef>().id, scene.findPlugin("brdf"));
    EXPECT_EQ(scene.getValue(box, "transform", NAN).value->as<TransformValue>().offset[2], 100000.25);
    EXPECT_EQ(scene.getValue(scene.findPlugin("mesh"), "faces", NAN).value, Value(IntList{0, 1, 2}));
}

TEST(SceneFiles, ErrorsNameTheFileAndLineAndChangeNothing) {
    TempFolder folder;
    SceneDatabase scene(catalogue(), false);
    ASSERT_FALSE(loadText(scene, "Node kept { visible = false; }"));
    std::string before = describe(scene);
    const struct {
        const char* text;
        int line;
        const char* message;
    } broken[] = {
        {"Node a {\n  visible = true;\n\n  object_id = 2.5;\n}", 4, "the value does not fit a int property"},
        {"Node a {\n  no_such = 1;\n}", 2, "Node has no property 'no_such'"},
        {"\n\nNoClass a { }", 3, "unknown plugin class 'NoClass'"},
        {"Node a {\n  visible = true\n}", 2, "expected ';' after the value of 'visible'"},
        {"Node a { geometry = nowhere; }", 1, "no plugin named 'nowhere'"},
        {"Node a { }\n\nGeomPlane a { }", 3, "'a' is declared as a Node already"},
        {"GeomPlane kept { }", 1, "the scene has a Node named 'kept' already"},
        {"Node a {\n  transform = interpolate((0, 1));\n}", 2, "the value does not fit a Transform property"},
        {"/* open", 1, "the comment has no closing '*/'"},
        {"#include \"nowhere.tvscene\"", 1, "cannot find the included file 'nowhere.tvscene'"},
        {"GeomStaticMesh m {\n faces = ListIntData(\"m_0.tvdata\", 0, 4);\n}", 2,
         "cannot read 16 bytes at 0 of the side data file 'm_0.tvdata'"},
    };
    for (const auto& each : broken) {
        std::string path = folder.file("broken.tvscene", each.text);
        LoadOptions options;
        auto error = loadScene(scene, {{true, path}}, options);
        ASSERT_TRUE(error) << each.text;
        EXPECT_EQ(error->code, errorSceneParse);
        EXPECT_EQ(error->file, path);
        EXPECT_EQ(error->line, each.line) << each.text;
        EXPECT_EQ(error->message, each.message);
        EXPECT_EQ(describe(scene), before);
    }
    // A failing include fails the whole append, other files of the same call included; the
    // error names the included file and its line.
    std::string good = folder.file("good.tvscene", "Node fine { }");
    folder.file("sub.tvscene", "Node from_sub { }\nNode bad { object_id = x; }");
    std::string main = folder.file("main.tvscene", "GeomPlane plane { }\n#include \"sub.tvscene\"\n");
    auto error = loadScene(scene, {{true, good}, {true, main}}, LoadOptions{});
    ASSERT_TRUE(error);
    EXPECT_EQ(error->file, (folder.path / "sub.tvscene").string());
    EXPECT_EQ(error->line, 2);
    EXPECT_EQ(describe(scene), before);
    // A file that is not there is no parse error.
    error = loadScene(scene, {{true, (folder.path / "none.tvscene").string()}}, LoadOptions{});
    ASSERT_TRUE(error);
    EXPECT_EQ(error->code, errorFileNotFound);
    // Includes are found beside the including file, then in the include paths.
    fs::create_directories(folder.path / "assets");
    folder.file("assets/lib.tvscene", "GeomPlane from_lib { }");
    folder.file("included.tvscene", "#include \"lib.tvscene\"\nNode user { geometry = from_lib; }");
    LoadOptions withPaths;
    withPaths.includePaths = {"assets"};
    ASSERT_FALSE(loadScene(scene, {{true, folder.file("included.tvscene")}}, withPaths));
    EXPECT_NE(scene.findPlugin("user"), TOVI_NO_PLUGIN);
    // An include of itself is a cycle, not a hang.
    error = loadScene(scene, {{true, folder.file("self.tvscene", "#include \"self.tvscene\"")}}, LoadOptions{});
    ASSERT_TRUE(error);
    EXPECT_EQ(error->message, "included files nest too deep (an include cycle?)");
}

TEST(SceneFiles, LoadReplacesAndAppendMergesAndTheFilterDecides) {
    SceneDatabase scene(catalogue(), false);
    ASSERT_FALSE(loadText(scene, "Node old { }"));
    ASSERT_FALSE(loadText(scene, "Node a { object_id = 1; }\nNode a { visible = false; }", true));
    EXPECT_EQ(scene.pluginNames(), (std::vector<std::string>{"a"}));
    EXPECT_EQ(scene.getValue(scene.findPlugin("a"), "object_id", NAN).value, Value(int32_t{1}));
    // Appending to an existing plugin of the same class changes its values and adds keys.
    ASSERT_FALSE(loadText(scene, "Node a { object_id = interpolate((1, 5)); }"));
    ASSERT_FALSE(loadText(scene, "Node a { object_id = interpolate((2, 6)); }"));
    EXPECT_EQ(*scene.keyframeTimes(scene.findPlugin("a"), "object_id"), (std::vector<double>{1, 2}));

    std::vector<std::string> asked;
    LoadOptions options;
    options.filter = [&](const std::string& className, const std::string& name) -> std::optional<std::string> {
        asked.push_back(className + " " + name);
        if (name == "dropped") return std::nullopt;
        if (name == "renamed") return std::string("new_name");
        return name;
    };
    auto error = loadScene(scene,
                           {{false, "GeomPlane dropped { }\nNode renamed { geometry = dropped; }\nNode a { }"},
                            {false, "Node user { material = renamed; }"}},
                           options);
    ASSERT_FALSE(error) << error->message;
    // Only plugins about to be created are asked about, once each, in reading order.
    EXPECT_EQ(asked, (std::vector<std::string>{"GeomPlane dropped", "Node renamed", "Node user"}));
    EXPECT_EQ(scene.findPlugin("dropped"), TOVI_NO_PLUGIN);
    ToviPluginID renamed = scene.findPlugin("new_name");
    ASSERT_NE(renamed, TOVI_NO_PLUGIN);
    EXPECT_TRUE(scene.getValue(renamed, "geometry", NAN).value->as<PluginRef>().isNone());
    EXPECT_EQ(scene.getValue(scene.findPlugin("user"), "material", NAN).value, Value(PluginRef{renamed, 0}));
    // A filter's name that is taken fails the load with the place of the block.
    options.filter = [](const std::string&, const std::string&) { return std::optional<std::string>("a"); };
    error = loadScene(scene, {{false, "\nNode b { }"}}, options);
    ASSERT_TRUE(error);
    EXPECT_EQ(error->code, errorInvalidPluginName);
    EXPECT_EQ(error->line, 2);
    EXPECT_EQ(error->message, "the filter's name 'a' for 'b' is taken");
}

TEST(SceneFiles, EveryPropertyOfTheCatalogueRoundTripsInEveryForm) {
    SceneDatabase scene(catalogue(), false);
    fillEveryProperty(scene);
    std::string expected = describe(scene);
    TempFolder folder;
    for (int form = 0; form < 8; ++form) {
        ExportSettings settings;
        settings.values = ValueFormat{(form & 1) != 0, (form & 2) != 0, (form & 4) != 0, nullptr};
        std::string path = folder.file("every.tvscene");
        ASSERT_FALSE(exportScene(scene, path, settings));
        SceneDatabase loaded(catalogue(), false);
        auto error = loadScene(loaded, {{true, path}}, LoadOptions{});
        ASSERT_FALSE(error) << error->message << " at line " << error->line;
        EXPECT_EQ(describe(loaded), expected) << "form " << form;
        EXPECT_EQ(readFile(path).find("Hex(\"") != std::string::npos, ((form & 1) && !(form & 2)) || (form & 4));
    }
    // Side data files with a small file limit: several files, the same scene.
    ExportSettings sideData;
    sideData.sideData = true;
    sideData.sideDataInlineLimit = 16;
    sideData.sideDataFileLimit = 64;
    ASSERT_FALSE(exportScene(scene, folder.file("side.tvscene"), sideData));
    EXPECT_TRUE(fs::exists(folder.path / "side_0.tvdata") && fs::exists(folder.path / "side_1.tvdata"));
    for (const auto& entry : fs::directory_iterator(folder.path)) {
        if (entry.path().extension() == ".tvdata" && entry.file_size() > 64) {
            // Only a list larger than the limit has a file of its own beyond it.
            EXPECT_EQ(readFile(entry.path().string()).size(), entry.file_size());
        }
    }
    SceneDatabase loaded(catalogue(), false);
    ASSERT_FALSE(loadScene(loaded, {{true, folder.file("side.tvscene")}}, LoadOptions{}));
    EXPECT_EQ(describe(loaded), expected);
}

TEST(SceneFiles, ExportOptionsShapeTheFiles) {
    TempFolder folder;
    SceneDatabase scene(catalogue(), false);
    std::string texture = folder.file("wood.png", "not really a png");
    ASSERT_FALSE(loadText(scene, "SettingsOutput out { frames_per_second = 10; }\n"
                                 "BitmapBuffer bitmap { file = \"" + texture + "\"; }\n"
                                 "Node node { object_id = interpolate((0, 0), (1, 10), (2, 20)); visible = false; }\n"
                                 "GeomPlane plane { }\nLightOmni omni { }"));
    scene.setCurrentTime(1.0);

    ExportSettings split;
    split.subFiles = {{"nodes", "_nodes"}, {"lights", "_lights"}};
    split.includes = {"extra.tvscene"};
    split.printHeader = false;
    split.hostApplication = "Host 1.0";
    split.renderElementsSeparateFolders = true;
    split.stripPaths = true;
    ASSERT_FALSE(exportScene(scene, folder.file("split.tvscene"), split));
    std::string main = readFile(folder.file("split.tvscene"));
    EXPECT_EQ(main.substr(0, 64), "#include \"split_lights.tvscene\"\n#include \"split_nodes.tvscene\"\n\n");
    EXPECT_NE(main.find("file = \"wood.png\";"), std::string::npos);
    EXPECT_NE(main.find("img_separateFolders = true;"), std::string::npos);
    EXPECT_EQ(main.find("Host 1.0"), std::string::npos);
    EXPECT_EQ(main.substr(main.size() - 25), "#include \"extra.tvscene\"\n");
    EXPECT_NE(readFile(folder.file("split_nodes.tvscene")).find("Node node {"), std::string::npos);
    EXPECT_EQ(main.find("Node node"), std::string::npos);
    split.subFiles = {{"cameras", "_c"}};
    EXPECT_EQ(exportScene(scene, folder.file("bad.tvscene"), split)->code, errorInvalidArgument);

    // One frame: the key at the current time; with an interval the keys inside it.
    ExportSettings frame;
    frame.currentFrameOnly = true;
    frame.appendFrameSuffix = true;
    frame.hostApplication = "Host 1.0";
    frame.plugins = std::vector<ToviPluginID>{scene.findPlugin("node")};
    ASSERT_FALSE(exportScene(scene, folder.file("frame.tvscene"), frame));
    std::string text = readFile(folder.file("frame_0010.tvscene"));
    EXPECT_NE(text.find("// Host application: Host 1.0\n"), std::string::npos);
    EXPECT_NE(text.find("object_id = interpolate(\n    (1.0, 10)\n  );"), std::string::npos) << text;
    EXPECT_EQ(text.find("BitmapBuffer"), std::string::npos);
    frame.appendFrameSuffix = false;
    frame.leftInterval = 1;
    frame.rightInterval = 1;
    ASSERT_FALSE(exportScene(scene, folder.file("interval.tvscene"), frame));
    EXPECT_NE(readFile(folder.file("interval.tvscene")).find("(0.0, 0),\n    (1.0, 10)\n  );"), std::string::npos);

    // Incremental: the first export writes everything, the next ones append their keys.
    frame.leftInterval = frame.rightInterval = 0;
    frame.incremental = true;
    frame.plugins.reset();
    std::string incremental = folder.file("incremental.tvscene");
    for (double time : {0.0, 1.0, 2.0}) {
        scene.setCurrentTime(time);
        ASSERT_FALSE(exportScene(scene, incremental, frame));
    }
    SceneDatabase loaded(catalogue(), false);
    ASSERT_FALSE(loadScene(loaded, {{true, incremental}}, LoadOptions{}));
    EXPECT_EQ(describe(loaded), describe(scene));

    // Referenced files copied beside the scene, with their CRC-32 in the list.
    ExportSettings files;
    files.copyFiles = files.fileHashes = true;
    ASSERT_FALSE(exportScene(scene, folder.file("copied.tvscene"), files));
    EXPECT_EQ(readFile(folder.file("copied_files/wood.png")), "not really a png");
    // The CRC-32 of the text, as zlib.crc32 in Python computes it.
    EXPECT_EQ(readFile(folder.file("copied.tvfiles")), "copied_files/wood.png\t" + texture + "\tcrc32:4fd2f738\n");
    EXPECT_NE(readFile(folder.file("copied.tvscene")).find("file = \"copied_files/wood.png\";"), std::string::npos);
    ExportSettings based;
    based.basePath = folder.path.string();
    ASSERT_FALSE(exportScene(scene, folder.file("based.tvscene"), based));
    EXPECT_NE(readFile(folder.file("based.tvscene")).find("file = \"wood.png\";"), std::string::npos);
    EXPECT_EQ(exportScene(scene, (folder.path / "no" / "such" / "x.tvscene").string(), based)->code, errorFileWrite);
}

TEST(SceneFiles, TheDocumentedExamplesLoad) {
    std::string page = readFile(std::string(TOVI_SOURCE_DIR) + "/docs/tvscene-format.md");
    int examples = 0;
    for (size_t start = page.find("```tvscene\n"); start != std::string::npos; start = page.find("```tvscene\n", start)) {
        start += 11;
        size_t end = page.find("```", start);
        SceneDatabase scene(catalogue(), false);
        auto error = loadText(scene, page.substr(start, end - start));
        EXPECT_FALSE(error) << error->message << " at line " << error->line;
        ++examples;
    }
    EXPECT_EQ(examples, 3);
}
