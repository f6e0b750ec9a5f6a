// The per-renderer scene: names, identifiers, references, keyframes, time and commits.
#include <gtest/gtest.h>

#include <cmath>
#include <thread>

#include "scene/catalogue.h"
#include "scene/database.h"

using namespace tovi::ref::scene;

namespace {

ToviPluginID create(SceneDatabase& scene, const char* className, std::optional<std::string_view> name) {
    ToviPluginID id = 0;
    EXPECT_EQ(scene.createPlugin(name, className, true, &id), SceneStatus::Ok);
    return id;
}

}  // namespace

TEST(SceneDatabase, NamesAndIdentifiers) {
    SceneDatabase scene(catalogue(), false);
    ToviPluginID a = create(scene, "Node", std::string_view("a"));
    EXPECT_NE(a, 0u);
    EXPECT_NE(a, TOVI_NO_PLUGIN);
    ToviPluginID id = 0;
    EXPECT_EQ(scene.createPlugin(std::string_view("a"), "Node", true, &id), SceneStatus::NameTaken);
    EXPECT_EQ(scene.createPlugin(std::string_view("a b"), "Node", true, &id), SceneStatus::InvalidName);
    EXPECT_EQ(scene.createPlugin(std::string_view(""), "Node", true, &id), SceneStatus::InvalidName);
    EXPECT_EQ(scene.createPlugin(std::string_view("Ok@1|x_Y"), "Node", true, &id), SceneStatus::Ok);
    EXPECT_EQ(scene.createPlugin(std::nullopt, "NoSuchClass", true, &id), SceneStatus::ClassNotFound);
    // An automatic name never takes one that a script chose.
    create(scene, "Node", std::string_view("Node@1"));
    ToviPluginID automatic = create(scene, "Node", std::nullopt);
    EXPECT_STREQ(scene.pluginName(automatic), "Node@2");
    EXPECT_EQ(scene.renamePlugin(a, "Node@2", true), SceneStatus::NameTaken);
    EXPECT_EQ(scene.renamePlugin(a, "renamed", true), SceneStatus::Ok);
    EXPECT_EQ(scene.findPlugin("a"), TOVI_NO_PLUGIN);
    EXPECT_EQ(scene.findPlugin("renamed"), a);
    EXPECT_EQ(scene.pluginIDs(catalogue().find("Node")).size(), 4u);

    SceneDatabase lenient(catalogue(), true);
    EXPECT_EQ(lenient.createPlugin(std::string_view("a b/c"), "Node", true, &id), SceneStatus::Ok);
}

TEST(SceneDatabase, ReplacementAndDeletionRedirectEveryReference) {
    SceneDatabase scene(catalogue(), false);
    ToviPluginID checker = create(scene, "TexChecker", std::string_view("checker"));
    ToviPluginID noise = create(scene, "TexNoise", std::string_view("noise"));
    ToviPluginID brdf = create(scene, "BRDFStandard", std::string_view("brdf"));
    ToviPluginID multi = create(scene, "MtlMulti", std::string_view("multi"));
    int checkerOut = catalogue().find("TexChecker")->findProperty("out_alpha")->index;
    int noiseOut = catalogue().find("TexNoise")->findProperty("out_alpha")->index;
    ASSERT_EQ(scene.setValue(brdf, "diffuse", Value(PluginRef{checker, 0}), NAN, true), SceneStatus::Ok);
    ASSERT_EQ(scene.setValue(brdf, "opacity", Value(PluginRef{checker, checkerOut}), NAN, true), SceneStatus::Ok);
    ASSERT_EQ(scene.setValue(brdf, "bump_amount", Value(PluginRef{checker, checkerOut}), 2.0, true), SceneStatus::Ok);
    ASSERT_EQ(scene.setValue(multi, "mtls_list", Value(PluginList{{checker, 0}, {brdf, 0}}), NAN, true), SceneStatus::Ok);
    // Only existing plugins and real outputs can be referenced.
    EXPECT_EQ(scene.setValue(brdf, "diffuse", Value(PluginRef{999, 0}), NAN, true), SceneStatus::InvalidValue);
    EXPECT_EQ(scene.setValue(brdf, "diffuse", Value(PluginRef{checker, 1}), NAN, true), SceneStatus::InvalidValue);

    EXPECT_EQ(scene.replacePlugin(checker, noise, true), SceneStatus::Ok);
    EXPECT_EQ(scene.getValue(brdf, "diffuse", NAN).value, Value(PluginRef{noise, 0}));
    EXPECT_EQ(scene.getValue(brdf, "opacity", NAN).value, Value(PluginRef{noise, noiseOut}));
    EXPECT_EQ(scene.getValue(brdf, "bump_amount", 2.0).value, Value(PluginRef{noise, noiseOut}));
    EXPECT_EQ(scene.getValue(multi, "mtls_list", NAN).value, Value(PluginList{{noise, 0}, {brdf, 0}}));
    EXPECT_TRUE(scene.pluginExists(checker));

    EXPECT_EQ(scene.deletePlugin(noise, true), SceneStatus::Ok);
    EXPECT_FALSE(scene.pluginExists(noise));
    EXPECT_EQ(scene.getValue(brdf, "diffuse", NAN).value, Value(PluginRef{}));
    EXPECT_EQ(scene.getValue(multi, "mtls_list", NAN).value, Value(PluginList{{TOVI_NO_PLUGIN, 0}, {brdf, 0}}));
    EXPECT_EQ(scene.deletePlugin(noise, true), SceneStatus::PluginNotFound);
    EXPECT_EQ(scene.replacePlugin(checker, 12345, true), SceneStatus::PluginNotFound);
}

TEST(SceneDatabase, StatesKeyframesAndTime) {
    SceneDatabase scene(catalogue(), false);
    ToviPluginID light = create(scene, "LightSphere", std::string_view("light"));
    EXPECT_EQ(scene.propertyState(light, "radius"), PropertyState::Default);
    EXPECT_EQ(scene.getValue(light, "radius", NAN).value, Value(1.0f));
    EXPECT_EQ(scene.propertyState(light, "nothing"), PropertyState::Invalid);
    EXPECT_EQ(scene.setValue(light, "radius", Value(int32_t{2}), NAN, true), SceneStatus::Ok);
    EXPECT_EQ(scene.propertyState(light, "radius"), PropertyState::NotAnimated);
    EXPECT_EQ(scene.getValue(light, "radius", 5.0).value, Value(2.0f));
    EXPECT_EQ(scene.setValue(light, "radius", Value("big"), NAN, true), SceneStatus::InvalidValue);
    // An alias names the same property.
    EXPECT_EQ(scene.setValue(light, "multiplier", Value(3.0f), NAN, true), SceneStatus::Ok);
    EXPECT_EQ(scene.getValue(light, "intensity", NAN).value, Value(3.0f));

    EXPECT_EQ(scene.setValue(light, "radius", Value(1.0f), 1.0, true), SceneStatus::Ok);
    EXPECT_EQ(scene.setValue(light, "radius", Value(3.0f), 3.0, true), SceneStatus::Ok);
    EXPECT_EQ(scene.setValue(light, "enabled", Value(false), 2.0, true), SceneStatus::Ok);
    EXPECT_EQ(scene.propertyState(light, "radius"), PropertyState::Animated);
    EXPECT_EQ(scene.keyframeTimes(light, "radius"), (std::vector<double>{1.0, 3.0}));
    EXPECT_EQ(scene.keyframeTimes(light, "color"), std::vector<double>{});
    EXPECT_FALSE(scene.keyframeTimes(light, "nothing"));
    EXPECT_EQ(scene.getValue(light, "radius", 0.0).value, Value(1.0f));
    EXPECT_EQ(scene.getValue(light, "radius", 2.5).value, Value(2.5f));
    EXPECT_EQ(scene.getValue(light, "radius", 9.0).value, Value(3.0f));
    EXPECT_EQ(scene.getValue(light, "enabled", 1.0).value, Value(false));  // one key holds everywhere

    // Without an explicit time the current time applies, and animated setting keys it.
    scene.setCurrentTime(2.0);
    EXPECT_EQ(scene.currentFrame(), 48);
    EXPECT_EQ(scene.getValue(light, "radius", NAN).value, Value(2.0f));
    scene.setAnimateProperties(true);
    EXPECT_EQ(scene.setValue(light, "radius", Value(10.0f), NAN, true), SceneStatus::Ok);
    EXPECT_EQ(scene.keyframeTimes(light, "radius"), (std::vector<double>{1.0, 2.0, 3.0}));
    scene.setAnimateProperties(false);
    EXPECT_EQ(scene.setValue(light, "radius", Value(4.0f), NAN, true), SceneStatus::Ok);
    EXPECT_EQ(scene.propertyState(light, "radius"), PropertyState::NotAnimated);

    // Frames follow the output settings' frame rate.
    ToviPluginID output = create(scene, "SettingsOutput", std::nullopt);
    EXPECT_EQ(scene.setValue(output, "fps", Value(int32_t{25}), NAN, true), SceneStatus::Ok);
    scene.setCurrentFrame(50);
    EXPECT_DOUBLE_EQ(scene.currentTime(), 2.0);
    scene.setCurrentTime(0.52);
    EXPECT_EQ(scene.currentFrame(), 13);
}

TEST(SceneDatabase, CommitsAndConcurrentUse) {
    SceneDatabase scene(catalogue(), false);
    EXPECT_EQ(scene.commit(false), 0u);
    ToviPluginID id = 0;
    ASSERT_EQ(scene.createPlugin(std::nullopt, "GeomSphere", false, &id), SceneStatus::Ok);
    EXPECT_EQ(scene.changeIndex(), 0u);
    EXPECT_EQ(scene.commit(false), 1u);
    EXPECT_EQ(scene.commit(false), 0u);
    EXPECT_EQ(scene.commit(true), 2u);
    EXPECT_EQ(scene.setValue(id, "radius", Value(2.0f), NAN, true), SceneStatus::Ok);
    EXPECT_EQ(scene.changeIndex(), 3u);

    std::vector<std::thread> workers;
    for (int worker = 0; worker < 4; ++worker) {
        workers.emplace_back([&scene, worker] {
            for (int index = 0; index < 200; ++index) {
                ToviPluginID made = 0;
                scene.createPlugin(std::nullopt, "GeomSphere", true, &made);
                scene.setValue(made, "radius", Value(static_cast<float>(index)), worker, true);
                scene.getValue(made, "radius", NAN);
                if (index % 2) scene.deletePlugin(made, true);
            }
        });
    }
    for (auto& worker : workers) worker.join();
    EXPECT_EQ(scene.pluginIDs().size(), 1u + 4 * 100);
    EXPECT_EQ(scene.changeIndex(), 3u + 4 * (200 + 200 + 100));
}
