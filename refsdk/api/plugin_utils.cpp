// Property definitions, answered from the plugin classes that own them.
#include <cstring>
#include <vector>

#include "api/entries.h"
#include "core/memory.h"
#include "scene/plugin_class.h"
#include "scene/value_stream.h"
#include "testctl/recorder.h"

using namespace tovi::ref;
using namespace tovi::ref::scene;

namespace {

const char* textOrNull(const std::string& text) { return text.empty() ? nullptr : text.c_str(); }

}  // namespace

TOVI_API int Tovi_PluginUtils_getPropertyDefaultValue(const ToviPropertyDefinition* definition, uint8_t** stream, size_t* size) {
    if (!definition || !definition->defaultValue || !stream) return -1;
    try {
        EncodeOptions options;
        options.singlePrecisionTransforms = definition->type == PropertyType::TextureTransform;
        // Default texts belong to the definition, which lives as long as the library.
        if (definition->defaultValue->is<std::string>()) options.lastingText = definition->defaultValue->as<std::string>().c_str();
        std::vector<uint8_t> bytes;
        encodeStreamItem(*definition->defaultValue, bytes, options);
        auto* block = static_cast<uint8_t*>(allocateBlock(bytes.size()));
        if (!block) return -1;
        std::memcpy(block, bytes.data(), bytes.size());
        *stream = block;
        if (size) *size = bytes.size();
        return 0;
    } catch (...) {
        return -1;
    }
}
TOVI_API const char* Tovi_PluginUtils_getPropertyDescription(const ToviPropertyDefinition* definition) {
    return definition ? textOrNull(definition->description) : nullptr;
}
TOVI_API const char* Tovi_PluginUtils_getPropertyUIGuides(const ToviPropertyDefinition* definition) {
    return definition ? textOrNull(definition->uiGuides) : nullptr;
}
TOVI_API const char* Tovi_PluginUtils_getPropertyName(const ToviPropertyDefinition* definition) {
    return definition ? definition->name.c_str() : nullptr;
}
TOVI_API const char* Tovi_PluginUtils_getPropertyAliases(const ToviPropertyDefinition* definition) {
    return definition ? textOrNull(definition->aliasesText) : nullptr;
}
TOVI_API const char* Tovi_PluginUtils_getPropertyDeprecation(const ToviPropertyDefinition* definition) {
    return definition ? textOrNull(definition->deprecation) : nullptr;
}
TOVI_API int Tovi_PluginUtils_getPropertyType(const ToviPropertyDefinition* definition) {
    return definition ? static_cast<int>(definition->type) : -1;
}
TOVI_API int Tovi_PluginUtils_getPropertyElementsCount(const ToviPropertyDefinition* definition) {
    return definition ? definition->elementsCount : -1;
}
TOVI_API int Tovi_PluginUtils_getPropertyGpuSupport(ToviRenderer* renderer, const char* className, const ToviPropertyDefinition* definition) {
    TOVI_RECORD("Tovi_PluginUtils_getPropertyGpuSupport", {{"className", className ? nlohmann::json(className) : nlohmann::json()}});
    try {
        if (auto injected = takeInjectedResult("Tovi_PluginUtils_getPropertyGpuSupport")) return injected->get<int>();
    } catch (...) {
        return -1;
    }
    return definition ? definition->gpuSupport : -1;
}
