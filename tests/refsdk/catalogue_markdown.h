// docs/catalogue.md as the catalogue gives it; the test keeps the file in step and the
// catalogue_doc tool rewrites it.
#pragma once

#include <string>

#include "format/value_syntax.h"
#include "scene/catalogue.h"
#include "scene/categories.h"

namespace tovi::ref::docs {

inline std::string catalogueMarkdown() {
    using namespace scene;
    struct NoPlugins : format::PluginNames {
        std::optional<PluginRef> resolve(std::string_view, std::string_view) const override { return std::nullopt; }
        std::optional<std::pair<std::string, std::string>> names(const PluginRef&) const override { return std::nullopt; }
    } noPlugins;
    static const char* const classGpu[] = {"full", "partial", "bake", "none"};
    static const char* const propertyGpu[] = {"full", "partial", "none"};
    const ClassRegistry& classes = catalogue();
    std::string out =
        "# The plugin catalogue\n\n"
        "The classes of the reference renderer, in the order the SDK lists them. Each property gives its type\n"
        "(as property types are named), its default in the value syntax (docs/value-syntax.md) and its\n"
        "meaning. Output properties hold no value: a reference to an output (`plugin::output`) reads it.\n"
        "A list type followed by [n] takes exactly n elements. The last column holds the property's\n"
        "editor guides in the guide text (refsdk/format/ui_guides.h), as the SDK hands them out.\n"
        "Generated from the catalogue by `catalogue_doc` in the test build; a test keeps this file in\n"
        "step with it.\n"
        "\n## Categories\n\n"
        "Every class belongs to the categories listed under it. The numbers are fixed; a set of\n"
        "categories travels as a mask with bit n for category n.\n\n"
        "| number | category |\n|---|---|\n";
    for (int index = 0; index < categoryCount(); ++index) {
        out += "| " + std::to_string(index) + " | `" + categoryName(index) + "` |\n";
    }
    // Cells hold conditions with ||, which would end a table cell.
    auto cell = [](const std::string& text) {
        std::string escaped;
        for (char c : text) {
            if (c == '|') escaped += '\\';
            escaped += c;
        }
        return escaped;
    };
    for (size_t c = 0; c < classes.size(); ++c) {
        const PluginClass& pluginClass = classes.at(c);
        out += "\n## " + pluginClass.name() + "\n\n" + pluginClass.description() + " GPU support: " +
               classGpu[static_cast<int>(pluginClass.gpuSupport())] + ".";
        std::string categories;
        for (int index = 0; index < categoryCount(); ++index) {
            if (!(pluginClass.categories() >> index & 1)) continue;
            categories += std::string(categories.empty() ? "" : ", ") + "`" + categoryName(index) + "`";
        }
        out += " Categories: " + (categories.empty() ? std::string("none") : categories) + ".\n";
        if (pluginClass.propertyCount() == 0) {
            out += "\nNo properties.\n";
            continue;
        }
        out += "\n| property | type | default | meaning | editor guides |\n|---|---|---|---|---|\n";
        for (size_t p = 0; p < pluginClass.propertyCount(); ++p) {
            const PropertyDefinition& property = pluginClass.property(p);
            std::string name = "`" + property.name + "`";
            if (!property.aliases.empty()) name += " (also `" + property.aliasesText + "`)";
            std::string type(typeName(static_cast<int>(property.type)));
            if (property.elementsCount > 0) type += "[" + std::to_string(property.elementsCount) + "]";
            std::string fallback = property.defaultValue ? "`" + format::printValue(*property.defaultValue, noPlugins) + "`" : "";
            std::string meaning = property.description;
            if (property.gpuSupport != 0) meaning += " GPU support: " + std::string(propertyGpu[property.gpuSupport]) + ".";
            std::string guides = property.uiGuides.empty() ? "" : "`" + cell(property.uiGuides) + "`";
            out += "| " + name + " | `" + type + "` | " + fallback + " | " + meaning + " | " + guides + " |\n";
        }
    }
    return out;
}

}  // namespace tovi::ref::docs
