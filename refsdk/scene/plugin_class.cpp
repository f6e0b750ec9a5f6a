#include "scene/plugin_class.h"

namespace tovi::ref::scene {

PluginClass::PluginClass(std::string name, std::string description)
    : name_(std::move(name)), description_(std::move(description)) {}

bool PluginClass::addProperty(PropertyDefinition definition) {
    if (findProperty(definition.name)) return false;
    for (const auto& alias : definition.aliases) {
        if (alias == definition.name || findProperty(alias)) return false;
    }
    definition.index = static_cast<int>(properties_.size());
    definition.aliasesText.clear();
    for (const auto& alias : definition.aliases) {
        if (!definition.aliasesText.empty()) definition.aliasesText += ',';
        definition.aliasesText += alias;
    }
    size_t index = properties_.size();
    properties_.push_back(std::make_unique<PropertyDefinition>(std::move(definition)));
    byName_.emplace(properties_.back()->name, index);
    for (const auto& alias : properties_.back()->aliases) byName_.emplace(alias, index);
    return true;
}

const PropertyDefinition* PluginClass::findProperty(std::string_view name) const {
    auto found = byName_.find(name);
    return found == byName_.end() ? nullptr : properties_[found->second].get();
}

const PropertyDefinition* PluginClass::propertyAt(int index) const {
    if (index < 0 || static_cast<size_t>(index) >= properties_.size()) return nullptr;
    return properties_[index].get();
}

bool ClassRegistry::add(std::unique_ptr<PluginClass> pluginClass) {
    if (!pluginClass || find(pluginClass->name())) return false;
    byName_.emplace(pluginClass->name(), pluginClass.get());
    classes_.push_back(std::move(pluginClass));
    return true;
}

const PluginClass* ClassRegistry::find(std::string_view name) const {
    auto found = byName_.find(name);
    return found == byName_.end() ? nullptr : found->second;
}

}  // namespace tovi::ref::scene
