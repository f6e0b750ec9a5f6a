// Editor guides: the guide text, conditions, their place in class declarations and in the
// catalogue; categories of the catalogue; the reference graph of a scene.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>

#include "format/class_definitions.h"
#include "format/ui_guides.h"
#include "scene/catalogue.h"
#include "scene/categories.h"
#include "scene/database.h"

using namespace tovi::ref;
using namespace tovi::ref::scene;

namespace {

UIGuides guidesOf(std::string_view text) {
    std::string error;
    auto guides = format::parseUIGuides(text, &error);
    EXPECT_TRUE(guides) << error;
    return guides.value_or(UIGuides{});
}

bool holds(const Condition& condition, std::map<std::string, ConditionValue> values) {
    return condition.evaluate([&](const std::string& name) { return values.count(name) ? values[name] : ConditionValue{}; });
}

}  // namespace

TEST(GuideText, ReadsEveryKindOfGuide) {
    UIGuides guides = guidesOf(
        "displayName=\"Wid\\\"th\"; min=-1.5; max=10; step=0.25; softMin=0; softMax=8; units=degrees; "
        "quantity=angle; fileAsset=(\"png\", \"exr\"); fileAssetNames=(\"PNG\", \"EXR\"); fileAssetOp=loadAndSave; "
        "rollout=\"R\"; tab=\"T\"; tier=advanced; gpu=none; attributes=(boolean, none, objectSet); "
        "enum=(-1:\"From file\", 2:\"Two\"); stringEnum=(\"a\", \"b c\"); overriddenBy=\"x\"; overrides=(\"p\", \"q\"); "
        "default=(0.5, 1, 2); enable=a == 1; hide=!b");
    EXPECT_TRUE(guides.types.all());
    EXPECT_EQ(guides.displayName, "Wid\"th");
    EXPECT_EQ(guides.floatGuide(GuideType::MinValue), -1.5f);
    EXPECT_EQ(guides.floatGuide(GuideType::SpinStep), 0.25f);
    EXPECT_EQ(guides.floatGuide(GuideType::Units), std::nullopt);
    EXPECT_EQ(guides.units, GuideUnits::Degrees);
    EXPECT_EQ(guides.quantity, GuideQuantity::Angle);
    EXPECT_EQ(guides.fileAssetOp, FileAssetOp::LoadAndSave);
    EXPECT_EQ(guides.tier, GuideTier::Advanced);
    EXPECT_EQ(guides.gpuSupport, GuideGpuSupport::None);
    EXPECT_EQ(guides.attributes, attributeBoolean | attributeNone | attributeObjectSet);
    EXPECT_EQ(guides.enumItems, (std::vector<std::pair<std::string, int>>{{"From file", -1}, {"Two", 2}}));
    EXPECT_EQ(guides.stringEnum, (std::vector<std::string>{"a", "b c"}));
    EXPECT_EQ(guides.fileAssetNames, (std::vector<std::string>{"PNG", "EXR"}));
    EXPECT_EQ(guides.overrides, (std::vector<std::string>{"p", "q"}));
    EXPECT_EQ(guides.defaults, (std::vector<float>{0.5f, 1, 2}));
    ASSERT_TRUE(guides.enable && guides.hide);
    EXPECT_EQ(guides.hide->dependencies(), std::vector<std::string>{"b"});

    std::string error;
    for (const char* wrong : {"min=1; min=2", "units=furlongs", "enum=(1 \"a\")", "colour=1", "min=1 max=2",
                              "enable=a &&", "displayName=\"open", "enable=(a == 1"}) {
        EXPECT_FALSE(format::parseUIGuides(wrong, &error)) << wrong;
    }
    EXPECT_FALSE(format::parseUIGuides("tier=basic; min=x", &error));
    EXPECT_EQ(error, "offset 16: expected a number");
}

TEST(GuideText, ConditionsReadTheirDependenciesAndEvaluate) {
    UIGuides guides = guidesOf("enable=(type == 2 || type >= 5) && !use_dof && name != \"x\" && type < 7; hide=true");
    const Condition& enable = *guides.enable;
    EXPECT_EQ(enable.dependencies(), (std::vector<std::string>{"type", "use_dof", "name"}));
    EXPECT_TRUE(holds(enable, {{"type", 2.0}, {"use_dof", 0.0}, {"name", std::string("y")}}));
    EXPECT_TRUE(holds(enable, {{"type", 6.0}, {"use_dof", 0.0}, {"name", std::string("")}}));
    EXPECT_FALSE(holds(enable, {{"type", 3.0}, {"use_dof", 0.0}, {"name", std::string("y")}}));
    EXPECT_FALSE(holds(enable, {{"type", 7.0}, {"use_dof", 0.0}, {"name", std::string("y")}}));
    EXPECT_FALSE(holds(enable, {{"type", 2.0}, {"use_dof", 1.0}, {"name", std::string("y")}}));
    EXPECT_FALSE(holds(enable, {{"type", 2.0}, {"use_dof", 0.0}, {"name", std::string("x")}}));
    // A value of neither form equals nothing, so only != holds for it.
    EXPECT_TRUE(holds(enable, {{"type", 2.0}}));
    EXPECT_TRUE(guides.hide->dependencies().empty());
    EXPECT_TRUE(holds(*guides.hide, {}));
}

TEST(ClassDefinitions, GuidesAndCategories) {
    ClassRegistry registry;
    std::string error;
    ASSERT_TRUE(format::readClassDefinitions("class C categories=lights,areaLights \"c\"\n"
                                             "  a : int = 1 \"a\" {min=0;\n     enum=(0:\"x\",\n 1:\"y  z\")}\n"
                                             "  b : float = 1 \"b\"\n",
                                             registry, &error))
        << error;
    const PluginClass* c = registry.find("C");
    EXPECT_EQ(c->categories(), (1u << *categoryIndex("lights")) | (1u << *categoryIndex("areaLights")));
    EXPECT_EQ(c->findProperty("a")->uiGuides, "min=0; enum=(0:\"x\", 1:\"y  z\")");
    EXPECT_EQ(c->findProperty("a")->guides.enumItems.size(), 2u);
    EXPECT_TRUE(c->findProperty("b")->uiGuides.empty());
    EXPECT_FALSE(c->findProperty("b")->guides.types.any());

    ClassRegistry bad;
    EXPECT_FALSE(format::readClassDefinitions("class D categories=lamps \"d\"\n", bad, &error));
    EXPECT_EQ(error, "line 1: unknown category 'lamps'");
    EXPECT_FALSE(format::readClassDefinitions("class E \"e\"\n  a : int \"a\" {min=}\n", bad, &error));
    EXPECT_EQ(error, "line 2: guides: offset 4: expected a number");
}

TEST(Catalogue, GuidesAndCategoriesNameWhatExists) {
    const ClassRegistry& classes = catalogue();
    std::bitset<guideTypeCount> typesUsed;
    for (size_t c = 0; c < classes.size(); ++c) {
        const PluginClass& pluginClass = classes.at(c);
        EXPECT_NE(pluginClass.categories(), 0u) << pluginClass.name();
        EXPECT_EQ(pluginClass.categories() >> categoryCount(), 0u) << pluginClass.name();
        for (size_t p = 0; p < pluginClass.propertyCount(); ++p) {
            const PropertyDefinition& property = pluginClass.property(p);
            typesUsed |= property.guides.types;
            // Conditions, overrides and string enums name properties and values that exist.
            for (const auto* condition : {&property.guides.enable, &property.guides.hide}) {
                if (!*condition) continue;
                for (const auto& name : (*condition)->dependencies()) {
                    EXPECT_TRUE(pluginClass.findProperty(name)) << pluginClass.name() << "." << property.name << ": " << name;
                }
            }
            for (const auto& name : property.guides.overrides) EXPECT_TRUE(pluginClass.findProperty(name)) << name;
            if (property.guides.has(GuideType::OverriddenBy)) {
                EXPECT_TRUE(pluginClass.findProperty(property.guides.overriddenBy)) << property.name;
            }
            if (property.guides.has(GuideType::FileAssetNames)) {
                EXPECT_EQ(property.guides.fileAssetNames.size(), property.guides.fileAssetExts.size()) << property.name;
            }
            if (property.guides.has(GuideType::StringEnum) && property.defaultValue) {
                const auto& options = property.guides.stringEnum;
                EXPECT_NE(std::find(options.begin(), options.end(), property.defaultValue->as<std::string>()), options.end());
            }
        }
    }
    // Every kind of guide has a natural example in the catalogue.
    EXPECT_TRUE(typesUsed.all()) << typesUsed;
    for (int index = 0; index < categoryCount(); ++index) {
        EXPECT_EQ(categoryIndex(categoryName(index)), index);
    }
    EXPECT_EQ(categoryName(categoryCount()), nullptr);
    EXPECT_FALSE(categoryIndex("Lights"));
}

TEST(Categories, AllOfAMaskAnyOfTheMasks) {
    const uint64_t masks[] = {0b011, 0b100};
    EXPECT_TRUE(inAllCategoriesOfAny(0b011, masks, 2));
    EXPECT_TRUE(inAllCategoriesOfAny(0b100, masks, 2));
    EXPECT_FALSE(inAllCategoriesOfAny(0b001, masks, 2));
    EXPECT_FALSE(inAllCategoriesOfAny(0b111, masks, 0));
    const uint64_t none[] = {0};
    EXPECT_TRUE(inAllCategoriesOfAny(0, none, 1));
}

TEST(SceneDatabase, ChildAndParentLinks) {
    SceneDatabase scene(catalogue(), false);
    auto create = [&](const char* className, const char* name) {
        ToviPluginID id = 0;
        EXPECT_EQ(scene.createPlugin(std::string_view(name), className, true, &id), SceneStatus::Ok);
        return id;
    };
    ToviPluginID node = create("Node", "node");
    ToviPluginID sphere = create("GeomSphere", "sphere");
    ToviPluginID material = create("MtlSingleBRDF", "material");
    ToviPluginID brdf = create("BRDFDiffuse", "brdf");
    ToviPluginID checker = create("TexChecker", "checker");
    ToviPluginID multi = create("MtlMulti", "multi");
    const PluginClass& checkerClass = *catalogue().find("TexChecker");
    int outColor = checkerClass.findProperty("out_color")->index;
    int geometry = catalogue().find("Node")->findProperty("geometry")->index;
    int materialIndex = catalogue().find("Node")->findProperty("material")->index;
    int brdfIndex = catalogue().find("MtlSingleBRDF")->findProperty("brdf")->index;
    int colorIndex = catalogue().find("BRDFDiffuse")->findProperty("color")->index;
    int listIndex = catalogue().find("MtlMulti")->findProperty("mtls_list")->index;
    ASSERT_EQ(scene.setValue(node, "geometry", PluginRef{sphere, 0}, NAN, true), SceneStatus::Ok);
    ASSERT_EQ(scene.setValue(node, "material", PluginRef{material, 0}, NAN, true), SceneStatus::Ok);
    ASSERT_EQ(scene.setValue(material, "brdf", PluginRef{brdf, 0}, NAN, true), SceneStatus::Ok);
    ASSERT_EQ(scene.setValue(brdf, "color", PluginRef{checker, outColor}, NAN, true), SceneStatus::Ok);
    ASSERT_EQ(scene.setValue(multi, "mtls_list", PluginList{{material, 0}, {TOVI_NO_PLUGIN, 0}, {material, 0}}, NAN, true),
              SceneStatus::Ok);

    auto same = [](const std::vector<PluginLink>& links, std::vector<PluginLink> expected) {
        ASSERT_EQ(links.size(), expected.size());
        for (size_t i = 0; i < links.size(); ++i) {
            EXPECT_EQ(links[i].referenced, expected[i].referenced) << i;
            EXPECT_EQ(links[i].referencing, expected[i].referencing) << i;
            EXPECT_EQ(links[i].output, expected[i].output) << i;
            EXPECT_EQ(links[i].propertyIndex, expected[i].propertyIndex) << i;
        }
    };
    same(scene.childLinks(node, false), {{sphere, node, 0, geometry}, {material, node, 0, materialIndex}});
    same(scene.childLinks(node, true), {{sphere, node, 0, geometry},
                                        {material, node, 0, materialIndex},
                                        {brdf, material, 0, brdfIndex},
                                        {checker, brdf, outColor, colorIndex}});
    same(scene.childLinks(checker, true), {});
    same(scene.childLinks(multi, false), {{material, multi, 0, listIndex}, {material, multi, 0, listIndex}});
    same(scene.parentLinks(material, false),
         {{material, node, 0, materialIndex}, {material, multi, 0, listIndex}, {material, multi, 0, listIndex}});
    same(scene.parentLinks(checker, true), {{checker, brdf, outColor, colorIndex},
                                            {brdf, material, 0, brdfIndex},
                                            {material, node, 0, materialIndex},
                                            {material, multi, 0, listIndex},
                                            {material, multi, 0, listIndex}});
    EXPECT_TRUE(scene.childLinks(12345, true).empty());

    // A cycle ends where it started; an animated reference counts at the current time.
    ASSERT_EQ(scene.setValue(checker, "uvwgen", PluginRef{node, 0}, NAN, true), SceneStatus::Ok);
    EXPECT_EQ(scene.childLinks(node, true).size(), 5u);
    ASSERT_EQ(scene.setValue(sphere, "radius", 2.0f, 0.0, true), SceneStatus::Ok);
    ASSERT_EQ(scene.setValue(node, "geometry", PluginRef{sphere, 0}, 0.0, true), SceneStatus::Ok);
    ASSERT_EQ(scene.setValue(node, "geometry", PluginRef{TOVI_NO_PLUGIN, 0}, 10.0, true), SceneStatus::Ok);
    EXPECT_EQ(scene.childLinks(node, false).size(), 2u);
    scene.setCurrentTime(10.0);
    same(scene.childLinks(node, false), {{material, node, 0, materialIndex}});
}
