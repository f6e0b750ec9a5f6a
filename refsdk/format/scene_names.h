// Plugin names as one scene has them now, for the text forms of values.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "format/value_syntax.h"
#include "scene/database.h"

namespace tovi::ref::format {

class SceneNames : public PluginNames {
public:
    explicit SceneNames(const scene::SceneDatabase& scene) : scene_(scene) {}

    std::optional<scene::PluginRef> resolve(std::string_view plugin, std::string_view output) const override {
        ToviPluginID id = scene_.findPlugin(plugin);
        if (id == TOVI_NO_PLUGIN) return std::nullopt;
        if (output.empty()) return scene::PluginRef{id, 0};
        const scene::PropertyDefinition* definition = scene_.findProperty(id, output);
        if (!definition || !scene::isOutput(definition->type)) return std::nullopt;
        return scene::PluginRef{id, definition->index};
    }

    std::optional<std::pair<std::string, std::string>> names(const scene::PluginRef& ref) const override {
        auto name = scene_.copyPluginName(ref.id);
        const scene::PluginClass* pluginClass = scene_.pluginClass(ref.id);
        if (!name || !pluginClass) return std::nullopt;
        const scene::PropertyDefinition* output = ref.output > 0 ? pluginClass->propertyAt(ref.output) : nullptr;
        return std::make_pair(std::move(*name), output ? output->name : std::string());
    }

private:
    const scene::SceneDatabase& scene_;
};

}  // namespace tovi::ref::format
