// Editor guides of properties, answered from the guides their definitions were declared with.
#include <cmath>
#include <cstring>
#include <string>
#include <vector>

#include "api/entries.h"
#include "api/renderer_handle.h"
#include "core/memory.h"
#include "core/text.h"
#include "scene/plugin_class.h"
#include "testctl/recorder.h"

using namespace tovi::ref;
using namespace tovi::ref::scene;

namespace {

const UIGuides* guidesOf(const ToviPropertyDefinition* definition) { return definition ? &definition->guides : nullptr; }

bool has(const ToviPropertyDefinition* definition, GuideType type) {
    return definition && definition->guides.has(type);
}

// A test's injected answer, or the guide's own code (the failure value when it is absent).
template <typename Code>
int codeOf(const char* entry, const ToviPropertyDefinition* definition, GuideType type, Code code) {
    try {
        if (auto injected = takeInjectedResult(entry)) return injected->get<int>();
    } catch (...) {
        return -1;
    }
    return has(definition, type) ? static_cast<int>(code) : -1;
}

// count texts back to back, each ended by a zero byte, in one block; no block for none.
int packedList(const std::vector<std::string>& texts, char** list) {
    if (!list) return -1;
    *list = nullptr;
    if (texts.empty()) return 0;
    size_t size = 0;
    for (const auto& text : texts) size += text.size() + 1;
    auto* block = static_cast<char*>(allocateBlock(size));
    if (!block) return -1;
    char* cursor = block;
    for (const auto& text : texts) {
        std::memcpy(cursor, text.c_str(), text.size() + 1);
        cursor += text.size() + 1;
    }
    *list = block;
    return static_cast<int>(texts.size());
}

int listOf(const ToviPropertyDefinition* definition, GuideType type, const std::vector<std::string>& texts,
           char** list) {
    if (!has(definition, type)) return -1;
    try {
        return packedList(texts, list);
    } catch (...) {
        return -1;
    }
}

int textOf(const ToviPropertyDefinition* definition, GuideType type, const std::string& text, ToviCharString* record) {
    if (!has(definition, type) || !record) return -1;
    return setText(record, text) ? 0 : -1;
}

// The value a condition reads for a property of the plugin at the current time.
ConditionValue conditionValue(const ToviRenderer& renderer, ToviPluginID pluginID, const std::string& name) {
    PropertyRead read = renderer.scene.getValue(pluginID, name, NAN);
    if (read.status != SceneStatus::Ok || !read.value) return {};
    const Value& value = *read.value;
    if (value.is<int32_t>()) return static_cast<double>(value.as<int32_t>());
    if (value.is<float>()) return static_cast<double>(value.as<float>());
    if (value.is<double>()) return value.as<double>();
    if (value.is<bool>()) return value.as<bool>() ? 1.0 : 0.0;
    if (value.is<std::string>()) return value.as<std::string>();
    if (value.is<PluginRef>()) return value.as<PluginRef>().isNone() ? 0.0 : 1.0;
    return {};
}

// Evaluates an enable or hide condition for a plugin; `absent` when the guide has none.
int evaluate(const char* entry, const std::optional<Condition>& condition, int absent, ToviRenderer* handle,
             ToviPluginID pluginID, int* flag) {
    TOVI_RECORD(entry, {{"pluginID", pluginID}, {"renderer", handle != nullptr}});
    if (!flag) return -1;
    try {
        auto renderer = acquireRenderer(handle);
        if (!renderer || !renderer->scene.pluginExists(pluginID)) return -1;
        *flag = condition ? condition->evaluate([&](const std::string& name) {
            return conditionValue(*renderer, pluginID, name);
        }) : absent;
        return 0;
    } catch (...) {
        return -1;
    }
}

}  // namespace

TOVI_API int Tovi_UIGuides_isEnum(const ToviPropertyDefinition* definition) {
    return has(definition, GuideType::Enum) ? 1 : 0;
}
TOVI_API int Tovi_UIGuides_hasType(const ToviPropertyDefinition* definition, int guideType, int* flag) {
    if (!definition || !flag || guideType < 0 || guideType >= guideTypeCount) return -1;
    *flag = definition->guides.types.test(guideType) ? 1 : 0;
    return 0;
}
TOVI_API int Tovi_UIGuides_getFloat(const ToviPropertyDefinition* definition, int guideType, float* value) {
    if (!definition || !value || guideType < 0 || guideType >= guideTypeCount) return -1;
    auto found = definition->guides.floatGuide(static_cast<GuideType>(guideType));
    if (!found) return -1;
    *value = *found;
    return 0;
}
TOVI_API int Tovi_UIGuides_getFloats(const ToviPropertyDefinition* definition, int guideType, float* values, int capacity) {
    TOVI_RECORD("Tovi_UIGuides_getFloats", {{"guideType", guideType}, {"capacity", capacity}});
    try {
        if (auto injected = takeInjectedResult("Tovi_UIGuides_getFloats")) {
            auto floats = injected->get<std::vector<float>>();
            for (int index = 0; values && index < capacity && index < static_cast<int>(floats.size()); ++index) {
                values[index] = floats[index];
            }
            return static_cast<int>(floats.size());
        }
    } catch (...) {
        return -1;
    }
    if (!definition || capacity < 0 || (capacity > 0 && !values) || guideType < 0 || guideType >= guideTypeCount) {
        return -1;
    }
    std::vector<float> floats;
    if (guideType == static_cast<int>(GuideType::DefaultValue)) {
        if (!definition->guides.has(GuideType::DefaultValue)) return -1;
        floats = definition->guides.defaults;
    } else if (auto single = definition->guides.floatGuide(static_cast<GuideType>(guideType))) {
        floats.push_back(*single);
    } else {
        return -1;
    }
    for (int index = 0; index < capacity && index < static_cast<int>(floats.size()); ++index) values[index] = floats[index];
    return static_cast<int>(floats.size());
}
TOVI_API int Tovi_UIGuides_getDisplayName(const ToviPropertyDefinition* definition, ToviCharString* text) {
    return definition ? textOf(definition, GuideType::DisplayName, definition->guides.displayName, text) : -1;
}
TOVI_API int Tovi_UIGuides_getEnumStrings(const ToviPropertyDefinition* definition, char** labels, int32_t** values) {
    if (!has(definition, GuideType::Enum) || !labels || !values) return -1;
    try {
        const auto& items = definition->guides.enumItems;
        std::vector<std::string> texts;
        std::vector<int32_t> numbers;
        for (const auto& [label, value] : items) {
            texts.push_back(label);
            numbers.push_back(value);
        }
        auto* block = static_cast<int32_t*>(allocateBlock(numbers.size() * sizeof(int32_t)));
        if (!block) return -1;
        if (!numbers.empty()) std::memcpy(block, numbers.data(), numbers.size() * sizeof(int32_t));
        int count = packedList(texts, labels);
        if (count < 0) {
            freeBlock(block);
            return -1;
        }
        *values = block;
        return count;
    } catch (...) {
        return -1;
    }
}
TOVI_API int Tovi_UIGuides_getQuantityType(const ToviPropertyDefinition* definition) {
    return codeOf("Tovi_UIGuides_getQuantityType", definition, GuideType::QuantityType,
                  definition ? definition->guides.quantity : GuideQuantity::Unknown);
}
TOVI_API int Tovi_UIGuides_getUnits(const ToviPropertyDefinition* definition) {
    return codeOf("Tovi_UIGuides_getUnits", definition, GuideType::Units,
                  definition ? definition->guides.units : GuideUnits::Default);
}
TOVI_API int Tovi_UIGuides_getFileAssetExts(const ToviPropertyDefinition* definition, char** list) {
    return definition ? listOf(definition, GuideType::FileAsset, definition->guides.fileAssetExts, list) : -1;
}
TOVI_API int Tovi_UIGuides_getFileAssetNames(const ToviPropertyDefinition* definition, char** list) {
    return definition ? listOf(definition, GuideType::FileAssetNames, definition->guides.fileAssetNames, list) : -1;
}
TOVI_API int Tovi_UIGuides_getFileAssetOp(const ToviPropertyDefinition* definition) {
    return codeOf("Tovi_UIGuides_getFileAssetOp", definition, GuideType::FileAssetOp,
                  definition ? definition->guides.fileAssetOp : FileAssetOp::Load);
}
TOVI_API int Tovi_UIGuides_hasAttribute(const ToviPropertyDefinition* definition, int attribute, int* flag) {
    const UIGuides* guides = guidesOf(definition);
    bool oneBit = attribute > 0 && attribute <= static_cast<int>(attributeNone) && (attribute & (attribute - 1)) == 0;
    if (!guides || !flag || !oneBit) return -1;
    *flag = (guides->attributes & static_cast<unsigned>(attribute)) ? 1 : 0;
    return 0;
}
TOVI_API int Tovi_UIGuides_getStringEnumStrings(const ToviPropertyDefinition* definition, char** list) {
    return definition ? listOf(definition, GuideType::StringEnum, definition->guides.stringEnum, list) : -1;
}
TOVI_API int Tovi_UIGuides_isStringEnum(const ToviPropertyDefinition* definition) {
    return has(definition, GuideType::StringEnum) ? 1 : 0;
}
TOVI_API int Tovi_UIGuides_getRolloutName(const ToviPropertyDefinition* definition, ToviCharString* text) {
    return definition ? textOf(definition, GuideType::StartRollout, definition->guides.rollout, text) : -1;
}
TOVI_API int Tovi_UIGuides_getTabName(const ToviPropertyDefinition* definition, ToviCharString* text) {
    return definition ? textOf(definition, GuideType::StartTab, definition->guides.tab, text) : -1;
}
TOVI_API int Tovi_UIGuides_hasOverriddenBy(const ToviPropertyDefinition* definition) {
    return has(definition, GuideType::OverriddenBy) ? 1 : 0;
}
TOVI_API int Tovi_UIGuides_getValueOfOverriddenBy(const ToviPropertyDefinition* definition, ToviCharString* text) {
    return definition ? textOf(definition, GuideType::OverriddenBy, definition->guides.overriddenBy, text) : -1;
}
TOVI_API int Tovi_UIGuides_getTier(const ToviPropertyDefinition* definition) {
    return codeOf("Tovi_UIGuides_getTier", definition, GuideType::Tier,
                  definition ? definition->guides.tier : GuideTier::Default);
}
TOVI_API int Tovi_UIGuides_hasOverride(const ToviPropertyDefinition* definition) {
    return has(definition, GuideType::Overrides) ? 1 : 0;
}
TOVI_API int Tovi_UIGuides_getCountOfOverrides(const ToviPropertyDefinition* definition) {
    return has(definition, GuideType::Overrides) ? static_cast<int>(definition->guides.overrides.size()) : -1;
}
TOVI_API int Tovi_UIGuides_getValueOfOverride(const ToviPropertyDefinition* definition, int index, ToviCharString* text) {
    if (!has(definition, GuideType::Overrides) || index < 0 ||
        index >= static_cast<int>(definition->guides.overrides.size()) || !text) {
        return -1;
    }
    return setText(text, definition->guides.overrides[index]) ? 0 : -1;
}
TOVI_API int Tovi_UIGuides_hasEnabledCondition(const ToviPropertyDefinition* definition) {
    return definition && definition->guides.enable ? 1 : 0;
}
TOVI_API int Tovi_UIGuides_getEnableDepends(const ToviPropertyDefinition* definition, char** list) {
    if (!definition || !definition->guides.enable) return -1;
    return listOf(definition, GuideType::Enable, definition->guides.enable->dependencies(), list);
}
TOVI_API int Tovi_UIGuides_getGPUSupportStatus(const ToviPropertyDefinition* definition) {
    return codeOf("Tovi_UIGuides_getGPUSupportStatus", definition, GuideType::GpuSupport,
                  definition ? definition->guides.gpuSupport : GuideGpuSupport::Full);
}
TOVI_API int Tovi_UIGuides_hasHiddenCondition(const ToviPropertyDefinition* definition) {
    return definition && definition->guides.hide ? 1 : 0;
}
TOVI_API int Tovi_UIGuides_getHideDepends(const ToviPropertyDefinition* definition, char** list) {
    if (!definition || !definition->guides.hide) return -1;
    return listOf(definition, GuideType::Hide, definition->guides.hide->dependencies(), list);
}
TOVI_API int Tovi_UIGuides_isEnabled(const ToviPropertyDefinition* definition, ToviRenderer* renderer, ToviPluginID pluginID, int* flag) {
    if (!definition) return -1;
    return evaluate("Tovi_UIGuides_isEnabled", definition->guides.enable, 1, renderer, pluginID, flag);
}
TOVI_API int Tovi_UIGuides_isHidden(const ToviPropertyDefinition* definition, ToviRenderer* renderer, ToviPluginID pluginID, int* flag) {
    if (!definition) return -1;
    return evaluate("Tovi_UIGuides_isHidden", definition->guides.hide, 0, renderer, pluginID, flag);
}
