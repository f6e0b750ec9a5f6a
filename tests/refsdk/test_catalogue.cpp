// The reference catalogue: it reads, covers every property type, and every property's default
// round-trips through the value stream and the value syntax.
#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <sstream>

#include "format/class_definitions.h"
#include "refsdk/catalogue_markdown.h"
#include "format/value_syntax.h"
#include "scene/catalogue.h"
#include "scene/value_stream.h"

using namespace tovi::ref;
using namespace tovi::ref::scene;

namespace {

class NoNames : public format::PluginNames {
public:
    std::optional<PluginRef> resolve(std::string_view, std::string_view) const override { return std::nullopt; }
    std::optional<std::pair<std::string, std::string>> names(const PluginRef&) const override { return std::nullopt; }
};

}  // namespace

TEST(Catalogue, DeclaresTheClassesOfTheRendererAndEveryPropertyType) {
    const ClassRegistry& classes = catalogue();
    for (const char* name : {"SettingsOutput", "SettingsImageSampler", "SettingsInteractive", "RenderView", "CameraPhysical",
                             "Node", "GeomStaticMesh", "GeomPlane", "GeomSphere", "MtlSingleBRDF", "BRDFStandard",
                             "BitmapBuffer", "TexBitmap", "TexChecker", "LightRectangle", "LightSphere", "LightDome",
                             "LightOmni", "SunLight", "LightIES", "LightLuminaire", "GeomScatter", "GeomGaussians",
                             "GeomHair", "RenderChannelColor"}) {
        EXPECT_NE(classes.find(name), nullptr) << name;
    }
    std::set<int> declared;
    for (size_t c = 0; c < classes.size(); ++c) {
        const PluginClass& pluginClass = classes.at(c);
        for (size_t p = 0; p < pluginClass.propertyCount(); ++p) {
            const PropertyDefinition& property = pluginClass.property(p);
            declared.insert(static_cast<int>(property.type));
            // Outputs come after the ordinary properties, so index 0 is never an output.
            if (isOutput(property.type)) {
                EXPECT_GT(property.index, 0) << pluginClass.name();
            } else {
                EXPECT_TRUE(property.defaultValue.has_value()) << pluginClass.name() << "." << property.name;
            }
            EXPECT_FALSE(property.description.empty()) << pluginClass.name() << "." << property.name;
        }
    }
    for (int code : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 100, 101, 102, 103, 104, 105, 106, 107,
                     108, 109, 110, 111, 113, 114, 115, 116, 117, 1000, 1001, 1002, 1003, 1004, 1005}) {
        EXPECT_TRUE(declared.count(code)) << typeName(code);
    }
}

TEST(Catalogue, EveryDefaultRoundTripsThroughStreamAndText) {
    const ClassRegistry& classes = catalogue();
    NoNames names;
    for (size_t c = 0; c < classes.size(); ++c) {
        const PluginClass& pluginClass = classes.at(c);
        for (size_t p = 0; p < pluginClass.propertyCount(); ++p) {
            const PropertyDefinition& property = pluginClass.property(p);
            if (!property.defaultValue) continue;
            std::string where = pluginClass.name() + "." + property.name;
            std::vector<uint8_t> stream;
            encodeStreamItem(*property.defaultValue, stream);
            const uint8_t* cursor = stream.data();
            auto decoded = decodeStreamItem(cursor);
            ASSERT_TRUE(decoded) << where;
            EXPECT_EQ(cursor, stream.data() + stream.size()) << where;
            EXPECT_EQ(conformToType(*decoded, property.type, property.elementsCount), property.defaultValue) << where;
            std::string text = format::printValue(*property.defaultValue, names);
            EXPECT_EQ(format::parseValue(text, property.type, names), property.defaultValue) << where << ": " << text;
        }
    }
}

TEST(ClassDefinitions, ReportTheLineOfAMistake) {
    ClassRegistry registry;
    std::string error;
    EXPECT_FALSE(format::readClassDefinitions("class A\n\"a\"\n  x : float = 1 \"x\"\n  y : Vektor \"y\"\n", registry, &error));
    EXPECT_EQ(error, "line 4: unknown type 'Vektor'");
    ClassRegistry counted;
    EXPECT_FALSE(format::readClassDefinitions("class B \"b\"\n  v : List<float>[2] = ListFloat(1) \"v\"\n", counted, &error));
    EXPECT_EQ(error, "line 2: the default does not have the declared element count");
    ClassRegistry good;
    ASSERT_TRUE(format::readClassDefinitions("class C gpu=bake \"c\"\n  n (m, k) : int = 3 gpu=none \"n\"\n", good, &error)) << error;
    const PropertyDefinition* n = good.find("C")->findProperty("k");
    ASSERT_NE(n, nullptr);
    EXPECT_EQ(n->aliasesText, "m,k");
    EXPECT_EQ(n->gpuSupport, 2);
    EXPECT_EQ(good.find("C")->gpuSupport(), ClassGpuSupport::Bake);
}

TEST(Catalogue, DocumentationIsInStep) {
    std::ifstream file(TOVI_SOURCE_DIR "/docs/catalogue.md");
    ASSERT_TRUE(file) << "docs/catalogue.md is missing";
    std::stringstream text;
    text << file.rdbuf();
    EXPECT_EQ(text.str(), docs::catalogueMarkdown()) << "regenerate it with catalogue_doc > docs/catalogue.md";
}
