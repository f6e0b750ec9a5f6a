#include "scene/catalogue.h"

#include <stdexcept>
#include <string>

#include "format/class_definitions.h"

namespace tovi::ref::scene {

const std::vector<std::string_view>& catalogueSources() {
    static const std::vector<std::string_view> sources{
#include "scene/catalogue_classes.inc"
    };
    return sources;
}

const ClassRegistry& catalogue() {
    static const ClassRegistry registry = [] {
        ClassRegistry classes;
        for (std::string_view source : catalogueSources()) {
            std::string error;
            // The declarations are part of the library; a mistake in them is a build defect.
            if (!format::readClassDefinitions(source, classes, &error)) {
                throw std::logic_error("the plugin catalogue does not read: " + error);
            }
        }
        return classes;
    }();
    return registry;
}

}  // namespace tovi::ref::scene
