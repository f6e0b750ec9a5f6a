// The scene of one renderer: plugin instances of the registry's classes, their property values
// and keyframes, the current time and the change index.
//
// Every member locks the database's mutex, so callers on any thread see whole changes. A render
// engine compares changeIndex() with the index it last rendered to know when to read again;
// changes made without autoCommit are held back from that index until commit().
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "scene/plugin_class.h"
#include "scene/value.h"

namespace tovi::ref::scene {

enum class PropertyState : int { Invalid = 0, Default = 1, NotAnimated = 2, Animated = 3 };

enum class SceneStatus {
    Ok,
    PluginNotFound,
    PropertyNotFound,
    ClassNotFound,
    NameTaken,
    InvalidName,
    InvalidValue,
};

// One set property of a plugin, as exports read it.
struct PropertyContents {
    const PropertyDefinition* definition = nullptr;
    PropertyState state = PropertyState::NotAnimated;
    Value value;                        // when not animated
    std::map<double, Value> keyframes;  // when animated
};

// A plugin with every property that holds a value of its own (defaults are left out).
struct PluginContents {
    ToviPluginID id = TOVI_NO_PLUGIN;
    std::string name;
    const PluginClass* pluginClass = nullptr;
    std::vector<PropertyContents> properties;
};

// Changes made together, as a scene file makes them: new plugins and values, checked as a whole
// before any of them is applied. Values may refer to the batch's own new plugins by
// batchPluginID(index of the new plugin).
struct SceneBatch {
    struct NewPlugin {
        std::string name;
        const PluginClass* pluginClass = nullptr;
    };
    struct Assignment {
        ToviPluginID plugin = TOVI_NO_PLUGIN;  // an existing plugin or batchPluginID(index)
        const PropertyDefinition* definition = nullptr;
        // Keys at their times when there are any (the property becomes or stays animated, and
        // keys at other times stay); otherwise the plain value.
        std::map<double, Value> keyframes;
        Value value;
    };
    std::vector<NewPlugin> plugins;
    std::vector<Assignment> assignments;
};
constexpr ToviPluginID batchPluginFlag = 1ull << 62;
inline ToviPluginID batchPluginID(size_t index) { return batchPluginFlag | index; }

struct BatchResult {
    SceneStatus status = SceneStatus::Ok;
    // What failed: an index into the batch's plugins or assignments, or npos.
    size_t plugin = std::string::npos;
    size_t assignment = std::string::npos;
};

// A value read from the scene, with what it came from.
struct PropertyRead {
    SceneStatus status = SceneStatus::PluginNotFound;
    const PropertyDefinition* definition = nullptr;
    PropertyState state = PropertyState::Invalid;
    std::optional<Value> value;  // nothing when the property holds no value (outputs, no default)
};

// One reference of a plugin's property value to a plugin or one of its outputs.
struct PluginLink {
    ToviPluginID referenced;
    ToviPluginID referencing;
    int32_t output;         // the referenced output, 0 for the plugin itself
    int32_t propertyIndex;  // the property of the referencing plugin that holds the reference
};

class SceneDatabase {
public:
    // allowAnyNameCharacters: plugin names may use characters beyond A-Z a-z 0-9 @ | _.
    SceneDatabase(const ClassRegistry& classes, bool allowAnyNameCharacters);

    const ClassRegistry& classes() const { return classes_; }

    // ---- plugins ----
    // No name: the database chooses a unique one. Names are unique, non-empty and, unless allowed
    // otherwise, made of A-Z a-z 0-9 @ | _.
    SceneStatus createPlugin(std::optional<std::string_view> name, std::string_view className, bool autoCommit,
                             ToviPluginID* newID);
    // References to the deleted plugin become "no plugin".
    SceneStatus deletePlugin(ToviPluginID id, bool autoCommit);
    SceneStatus renamePlugin(ToviPluginID id, std::string_view newName, bool autoCommit);
    // Every reference to id, in every value and keyframe, now names replacement (TOVI_NO_PLUGIN:
    // none). A reference to an output keeps pointing at the output of that name when the
    // replacement has one, else at the replacement itself.
    SceneStatus replacePlugin(ToviPluginID id, ToviPluginID replacement, bool autoCommit);
    void clear(bool autoCommit);
    // Applies the whole batch or, when any name or value of it is refused, nothing.
    // replaceScene: the batch's plugins replace every plugin of the scene.
    BatchResult apply(SceneBatch batch, bool replaceScene, bool autoCommit);

    bool pluginExists(ToviPluginID id) const;
    // TOVI_NO_PLUGIN when there is no plugin of that name.
    ToviPluginID findPlugin(std::string_view name) const;
    // Valid until the plugin is renamed or deleted; null when there is no such plugin.
    const char* pluginName(ToviPluginID id) const;
    // A copy of the name, safe while other threads rename.
    std::optional<std::string> copyPluginName(ToviPluginID id) const;
    const PluginClass* pluginClass(ToviPluginID id) const;
    // In creation order; every plugin when pluginClass is null.
    std::vector<ToviPluginID> pluginIDs(const PluginClass* ofClass = nullptr) const;
    std::vector<std::string> pluginNames() const;
    // Whether the text would be accepted as a new plugin name (characters only).
    bool isValidName(std::string_view name) const;

    // ---- properties ----
    // The definition of a plugin's property by name or alias; null when plugin or property is missing.
    const PropertyDefinition* findProperty(ToviPluginID id, std::string_view property) const;
    // time NaN: without an explicit time (a keyframe at the current time while properties are
    // animated, otherwise the value itself); any other time sets a keyframe there.
    SceneStatus setValue(ToviPluginID id, std::string_view property, Value value, double time, bool autoCommit);
    // time NaN: at the current time.
    PropertyRead getValue(ToviPluginID id, std::string_view property, double time) const;
    PropertyState propertyState(ToviPluginID id, std::string_view property) const;
    // Nothing when plugin or property is missing; empty when the property is not animated.
    std::optional<std::vector<double>> keyframeTimes(ToviPluginID id, std::string_view property) const;
    // Copies of the plugins in creation order, taken at one moment; only those of `only` that
    // exist when it is given.
    std::vector<PluginContents> contents(const std::vector<ToviPluginID>* only = nullptr) const;

    // ---- references ----
    // The references made by the plugin's current values, property by property and list item by
    // list item. Recursive: then those of the plugins referred to, breadth first, each plugin
    // once. Nothing for a missing plugin.
    std::vector<PluginLink> childLinks(ToviPluginID id, bool recursive) const;
    // The references to the plugin or its outputs, by plugin in creation order. Recursive: then
    // the references to those plugins, breadth first, each plugin once.
    std::vector<PluginLink> parentLinks(ToviPluginID id, bool recursive) const;

    // ---- time ----
    // Frames and seconds are tied by the output settings' frame rate.
    void setCurrentTime(double seconds);
    double currentTime() const;
    void setCurrentFrame(int frame);
    int currentFrame() const;
    void setAnimateProperties(bool animate);
    bool animateProperties() const;

    // ---- changes ----
    // The new change index, or 0 when there was nothing to commit and force was not given.
    uint64_t commit(bool force);
    uint64_t changeIndex() const;

private:
    struct PropertySlot {
        PropertyState state = PropertyState::Default;
        Value value;
        std::map<double, Value> keyframes;
    };
    struct PluginRecord {
        ToviPluginID id;
        std::string name;
        const PluginClass* pluginClass;
        std::vector<PropertySlot> slots;
    };

    PluginRecord* findLocked(ToviPluginID id) const;
    SceneStatus checkNewName(std::string_view name) const;
    bool referencesAreValid(Value& value) const;
    BatchResult checkBatchLocked(SceneBatch& batch, bool replaceScene) const;
    void applyBatchLocked(SceneBatch& batch, bool autoCommit);
    Value valueAt(const PropertySlot& slot, double time) const;
    // The value a property holds at the current time; nothing when it holds none.
    std::optional<Value> currentValueLocked(const PluginRecord& record, size_t index) const;
    template <typename Visit>
    void forEachLinkFromLocked(const PluginRecord& record, Visit&& visit) const;
    double framesPerSecondLocked() const;
    void changedLocked(bool autoCommit);
    void redirectLocked(ToviPluginID id, ToviPluginID replacement);

    const ClassRegistry& classes_;
    const bool allowAnyNameCharacters_;
    mutable std::mutex mutex_;
    std::map<ToviPluginID, std::unique_ptr<PluginRecord>> plugins_;
    std::map<std::string, ToviPluginID, std::less<>> byName_;
    ToviPluginID nextID_ = 1;
    uint64_t nextAutomaticName_ = 1;
    double currentTime_ = 0;
    int currentFrame_ = 0;
    bool animate_ = false;
    bool uncommitted_ = false;
    uint64_t changeIndex_ = 0;
};

}  // namespace tovi::ref::scene
