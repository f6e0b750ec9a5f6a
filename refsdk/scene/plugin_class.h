// Plugin classes and the definitions of their properties.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "scene/property_type.h"
#include "scene/ui_guides.h"
#include "scene/value.h"
#include "tovi_sdk.h"

// The library's own definition of the opaque definition handle. Definitions belong to their
// class and never move, so handles stay valid as long as the class registry lives.
struct ToviPropertyDefinition {
    std::string name;
    std::vector<std::string> aliases;
    std::string aliasesText;  // joined with ','
    tovi::ref::scene::PropertyType type = tovi::ref::scene::PropertyType::Unspecified;
    std::optional<tovi::ref::scene::Value> defaultValue;
    std::string description;
    std::string deprecation;  // empty: not deprecated
    std::string uiGuides;     // the raw guide text; empty when none
    tovi::ref::scene::UIGuides guides;  // read from uiGuides
    // -1: not a list; 0: a list of any length; n > 0: exactly n elements.
    int elementsCount = -1;
    // 0 full, 1 partial, 2 none.
    int gpuSupport = 0;
    int index = 0;  // position in the class's property list
};

namespace tovi::ref::scene {

using PropertyDefinition = ::ToviPropertyDefinition;

enum class ClassGpuSupport : int { Full = 0, Partial = 1, Bake = 2, None = 3 };

class PluginClass {
public:
    PluginClass(std::string name, std::string description);

    const std::string& name() const { return name_; }
    const std::string& description() const { return description_; }
    const std::string& deprecation() const { return deprecation_; }
    ClassGpuSupport gpuSupport() const { return gpuSupport_; }
    uint64_t categories() const { return categories_; }

    void setDeprecation(std::string text) { deprecation_ = std::move(text); }
    void setGpuSupport(ClassGpuSupport support) { gpuSupport_ = support; }
    void setCategories(uint64_t mask) { categories_ = mask; }

    // Appends a property; false when its name or an alias is taken already.
    bool addProperty(PropertyDefinition definition);

    size_t propertyCount() const { return properties_.size(); }
    const PropertyDefinition& property(size_t index) const { return *properties_[index]; }
    // By name or alias; null when none.
    const PropertyDefinition* findProperty(std::string_view name) const;
    // Null when the index names no property.
    const PropertyDefinition* propertyAt(int index) const;

private:
    std::string name_;
    std::string description_;
    std::string deprecation_;
    ClassGpuSupport gpuSupport_ = ClassGpuSupport::Full;
    uint64_t categories_ = 0;
    std::vector<std::unique_ptr<PropertyDefinition>> properties_;
    std::map<std::string, size_t, std::less<>> byName_;
};

// All classes a renderer knows, in a fixed order.
class ClassRegistry {
public:
    // False when a class of that name exists already.
    bool add(std::unique_ptr<PluginClass> pluginClass);
    const PluginClass* find(std::string_view name) const;
    size_t size() const { return classes_.size(); }
    const PluginClass& at(size_t index) const { return *classes_[index]; }

private:
    std::vector<std::unique_ptr<PluginClass>> classes_;
    std::map<std::string, const PluginClass*, std::less<>> byName_;
};

}  // namespace tovi::ref::scene
