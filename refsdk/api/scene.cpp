// The scene entries of the renderer: plugins, classes, property values as streams and as text,
// property states and keyframes, the time, and commits.
#include <cmath>
#include <cstring>
#include <deque>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "api/entries.h"
#include "api/renderer_handle.h"
#include "core/errors.h"
#include "core/memory.h"
#include "core/text.h"
#include "format/class_definitions.h"
#include "format/scene_names.h"
#include "format/value_syntax.h"
#include "scene/catalogue.h"
#include "scene/categories.h"
#include "scene/value_stream.h"
#include "testctl/recorder.h"

using namespace tovi::ref;
using namespace tovi::ref::scene;

namespace {

// What the value setters answer for a missing plugin or property.
constexpr int noSuchProperty = -22;

ErrorCode errorOf(SceneStatus status) {
    switch (status) {
        case SceneStatus::Ok: return errorNone;
        case SceneStatus::PluginNotFound: return errorPluginNotFound;
        case SceneStatus::PropertyNotFound: return errorPropertyNotFound;
        case SceneStatus::ClassNotFound: return errorClassNotFound;
        case SceneStatus::NameTaken:
        case SceneStatus::InvalidName: return errorInvalidPluginName;
        case SceneStatus::InvalidValue: return errorInvalidPropertyValue;
    }
    return errorFailed;
}

// Runs an entry's work on a live renderer; an unknown handle or an exception gives the failure.
template <typename Result, typename Work>
Result withRenderer(ToviRenderer* handle, Result failure, Work&& work) {
    try {
        auto renderer = acquireRenderer(handle);
        if (!renderer) return failure;
        return work(*renderer);
    } catch (...) {
        return failure;
    }
}

// Keeps the status as the renderer's last error when it is one.
SceneStatus noted(ToviRenderer& renderer, SceneStatus status) {
    if (status != SceneStatus::Ok) renderer.lastError.store(errorOf(status));
    return status;
}

int setterResult(ToviRenderer& renderer, SceneStatus status) {
    noted(renderer, status);
    switch (status) {
        case SceneStatus::Ok: return 0;
        case SceneStatus::PluginNotFound:
        case SceneStatus::PropertyNotFound: return noSuchProperty;
        default: return -1;
    }
}


std::string hexOf(const uint8_t* bytes, size_t size) {
    static const char digits[] = "0123456789abcdef";
    std::string hex;
    hex.reserve(size * 2);
    for (size_t index = 0; index < size; ++index) {
        hex += digits[bytes[index] >> 4];
        hex += digits[bytes[index] & 0xF];
    }
    return hex;
}

// The time's bits, so that records tell the two default-time patterns apart.
std::string timeBits(double time) {
    uint64_t bits;
    std::memcpy(&bits, &time, sizeof bits);
    uint8_t bytes[8];
    for (int index = 0; index < 8; ++index) bytes[index] = static_cast<uint8_t>(bits >> (8 * (7 - index)));
    return hexOf(bytes, 8);
}

nlohmann::json textOrNull(const char* text) { return text ? nlohmann::json(text) : nlohmann::json(); }

template <typename T>
T* blockOf(const std::vector<T>& values) {
    auto* block = static_cast<T*>(allocateBlock(values.size() * sizeof(T)));
    if (block && !values.empty()) std::memcpy(block, values.data(), values.size() * sizeof(T));
    return block;
}

char* textBlock(const std::string& text) {
    auto* block = static_cast<char*>(allocateBlock(text.size() + 1));
    if (block) std::memcpy(block, text.c_str(), text.size() + 1);
    return block;
}

ToviPluginID idOfName(const ToviRenderer& renderer, const char* name) {
    return name ? renderer.scene.findPlugin(name) : TOVI_NO_PLUGIN;
}

int setBytes(ToviRenderer& renderer, ToviPluginID id, const char* property, const uint8_t* stream, double time,
             int autoCommit) {
    const uint8_t* cursor = stream;
    auto value = decodeStreamItem(cursor);
    TOVI_RECORD("Tovi_ToviRenderer_setPropertyBytesValueAtTimeByID",
                {{"pluginID", id},
                 {"property", textOrNull(property)},
                 {"stream", stream ? nlohmann::json(hexOf(stream, value ? cursor - stream : 4)) : nlohmann::json()},
                 {"value", value ? nlohmann::json(format::printValue(*value, format::SceneNames(renderer.scene))) : nlohmann::json()},
                 {"timeBits", timeBits(time)},
                 {"autoCommit", autoCommit}});
    if (!property) return setterResult(renderer, SceneStatus::PropertyNotFound);
    if (!renderer.scene.findProperty(id, property)) {
        return setterResult(renderer, renderer.scene.pluginExists(id) ? SceneStatus::PropertyNotFound
                                                                       : SceneStatus::PluginNotFound);
    }
    if (!value) return setterResult(renderer, SceneStatus::InvalidValue);
    return setterResult(renderer, renderer.scene.setValue(id, property, std::move(*value), time, autoCommit != 0));
}

int setText(ToviRenderer& renderer, ToviPluginID id, const char* property, const char* text, double time,
            int autoCommit) {
    TOVI_RECORD("Tovi_ToviRenderer_setPropertyValueAtTimeByID", {{"pluginID", id},
                                                                  {"property", textOrNull(property)},
                                                                  {"value", textOrNull(text)},
                                                                  {"timeBits", timeBits(time)},
                                                                  {"autoCommit", autoCommit}});
    const PropertyDefinition* definition = property ? renderer.scene.findProperty(id, property) : nullptr;
    if (!definition) {
        return setterResult(renderer, renderer.scene.pluginExists(id) ? SceneStatus::PropertyNotFound
                                                                       : SceneStatus::PluginNotFound);
    }
    if (!text) return setterResult(renderer, SceneStatus::InvalidValue);
    auto value = format::parseValue(text, definition->type, format::SceneNames(renderer.scene));
    if (!value) return setterResult(renderer, SceneStatus::InvalidValue);
    return setterResult(renderer, renderer.scene.setValue(id, property, std::move(*value), time, autoCommit != 0));
}

int readBytes(ToviRenderer& renderer, ToviPluginID id, const char* property, uint8_t** bytes, size_t* size,
              double time) {
    if (!property || !bytes) return -1;
    PropertyRead read = renderer.scene.getValue(id, property, time);
    if (noted(renderer, read.status) != SceneStatus::Ok || !read.value) return -1;
    EncodeOptions options;
    options.singlePrecisionTransforms = read.definition->type == PropertyType::TextureTransform;
    // Untouched texts live in the catalogue for as long as the library is loaded.
    if (read.state == PropertyState::Default && read.value->is<std::string>()) {
        options.lastingText = read.definition->defaultValue->as<std::string>().c_str();
    }
    std::vector<uint8_t> stream;
    encodeStreamItem(*read.value, stream, options);
    uint8_t* block = blockOf(stream);
    if (!block) return -1;
    *bytes = block;
    if (size) *size = stream.size();
    return 0;
}

char* readText(ToviRenderer& renderer, ToviPluginID id, const char* property, double time) {
    if (!property) return nullptr;
    PropertyRead read = renderer.scene.getValue(id, property, time);
    if (noted(renderer, read.status) != SceneStatus::Ok) return nullptr;
    // A property without a value reads as an empty text.
    return textBlock(read.value ? format::printValue(*read.value, format::SceneNames(renderer.scene)) : std::string());
}

int runtimeType(ToviRenderer& renderer, ToviPluginID id, const char* property) {
    if (!property) return -1;
    PropertyRead read = renderer.scene.getValue(id, property, NAN);
    if (noted(renderer, read.status) != SceneStatus::Ok) return -1;
    return read.value ? runtimeTypeCode(read.definition->type, *read.value) : static_cast<int>(read.definition->type);
}

int elementsCount(ToviRenderer& renderer, ToviPluginID id, const char* property) {
    if (!property) return -1;
    PropertyRead read = renderer.scene.getValue(id, property, NAN);
    if (noted(renderer, read.status) != SceneStatus::Ok || !read.value) return -1;
    return elementCount(*read.value);
}

ToviVector* propertyNamesOf(const PluginClass* pluginClass) {
    if (!pluginClass) return nullptr;
    std::vector<std::string> names;
    for (size_t index = 0; index < pluginClass->propertyCount(); ++index) names.push_back(pluginClass->property(index).name);
    return newTextVector(std::move(names));
}

int deleteOne(ToviRenderer& renderer, ToviPluginID id, int autoCommit) {
    return noted(renderer, renderer.scene.deletePlugin(id, autoCommit != 0)) == SceneStatus::Ok ? 0 : -1;
}

int rename(ToviRenderer& renderer, ToviPluginID id, const char* newName, int autoCommit) {
    TOVI_RECORD("Tovi_ToviRenderer_renamePluginByID", {{"pluginID", id}, {"newName", textOrNull(newName)}, {"autoCommit", autoCommit}});
    if (!newName) return -3;
    switch (noted(renderer, renderer.scene.renamePlugin(id, newName, autoCommit != 0))) {
        case SceneStatus::Ok: return 0;
        case SceneStatus::NameTaken: return -2;
        case SceneStatus::InvalidName: return -3;
        default: return -1;
    }
}

const PluginClass* classNamed(const char* className) { return className ? catalogue().find(className) : nullptr; }

// A test's injected property: the first property of a class declared in the injected text, or
// null when the text does not read. Handles must outlive the call, so the classes stay for as
// long as the library is loaded.
const PropertyDefinition* injectedProperty(const nlohmann::json& declaration) {
    static std::mutex mutex;
    static std::deque<ClassRegistry> registries;
    if (!declaration.is_string()) return nullptr;
    std::lock_guard<std::mutex> lock(mutex);
    ClassRegistry& registry = registries.emplace_back();
    if (!format::readClassDefinitions(declaration.get<std::string>(), registry, nullptr) || registry.size() == 0 ||
        registry.at(0).propertyCount() == 0) {
        return nullptr;
    }
    return &registry.at(0).property(0);
}

uint64_t pluginCategories(const ToviRenderer& renderer, ToviPluginID id) {
    const PluginClass* pluginClass = renderer.scene.pluginClass(id);
    return pluginClass ? pluginClass->categories() : 0;
}

}  // namespace

// ---- values as streams ----

TOVI_API int Tovi_getPropertyByteArray(ToviRenderer* renderer, const char* pluginName, const char* propertyName, uint8_t** bytes, size_t* size, double time) {
    return withRenderer(renderer, -1, [&](ToviRenderer& r) {
        return readBytes(r, idOfName(r, pluginName), propertyName, bytes, size, time);
    });
}

TOVI_API int Tovi_getPropertyByteArrayByID(ToviRenderer* renderer, ToviPluginID pluginID, const char* propertyName, uint8_t** bytes, size_t* size, double time) {
    return withRenderer(renderer, -1, [&](ToviRenderer& r) { return readBytes(r, pluginID, propertyName, bytes, size, time); });
}

TOVI_API int Tovi_ToviRenderer_setPropertyBytesValueAtTime(ToviRenderer* renderer, const char* pluginName, const char* propertyName, const uint8_t* stream, double time, int autoCommit) {
    return withRenderer(renderer, -1, [&](ToviRenderer& r) {
        return setBytes(r, idOfName(r, pluginName), propertyName, stream, time, autoCommit);
    });
}

TOVI_API int Tovi_ToviRenderer_setPropertyBytesValueAtTimeByID(ToviRenderer* renderer, ToviPluginID plugin, const char* propertyName, const uint8_t* stream, double time, int autoCommit) {
    return withRenderer(renderer, -1, [&](ToviRenderer& r) { return setBytes(r, plugin, propertyName, stream, time, autoCommit); });
}

// ---- values as text ----

TOVI_API int Tovi_ToviRenderer_setPropertyValueAtTime(ToviRenderer* renderer, const char* pluginName, const char* propertyName, const char* value, double time, int autoCommit) {
    return withRenderer(renderer, -1, [&](ToviRenderer& r) {
        return setText(r, idOfName(r, pluginName), propertyName, value, time, autoCommit);
    });
}

TOVI_API int Tovi_ToviRenderer_setPropertyValueAtTimeByID(ToviRenderer* renderer, ToviPluginID pluginID, const char* propertyName, const char* value, double time, int autoCommit) {
    return withRenderer(renderer, -1, [&](ToviRenderer& r) { return setText(r, pluginID, propertyName, value, time, autoCommit); });
}

TOVI_API char* Tovi_ToviRenderer_getPropertyValue(ToviRenderer* renderer, const char* pluginName, const char* propertyName, double time) {
    return withRenderer(renderer, static_cast<char*>(nullptr), [&](ToviRenderer& r) {
        return readText(r, idOfName(r, pluginName), propertyName, time);
    });
}

TOVI_API char* Tovi_ToviRenderer_getPropertyValueByID(ToviRenderer* renderer, ToviPluginID pluginID, const char* propertyName, double time) {
    return withRenderer(renderer, static_cast<char*>(nullptr), [&](ToviRenderer& r) { return readText(r, pluginID, propertyName, time); });
}

// ---- properties ----

TOVI_API int Tovi_ToviRenderer_getPropertyType(ToviRenderer* renderer, const char* pluginName, const char* propertyName) {
    return withRenderer(renderer, -1, [&](ToviRenderer& r) { return runtimeType(r, idOfName(r, pluginName), propertyName); });
}

TOVI_API int Tovi_ToviRenderer_getPropertyTypeByID(ToviRenderer* renderer, ToviPluginID pluginID, const char* propertyName) {
    return withRenderer(renderer, -1, [&](ToviRenderer& r) { return runtimeType(r, pluginID, propertyName); });
}

TOVI_API int Tovi_ToviRenderer_getPropertyElementsCount(ToviRenderer* renderer, const char* pluginName, const char* propertyName) {
    return withRenderer(renderer, -1, [&](ToviRenderer& r) { return elementsCount(r, idOfName(r, pluginName), propertyName); });
}

TOVI_API int Tovi_ToviRenderer_getPropertyElementsCountByID(ToviRenderer* renderer, ToviPluginID pluginID, const char* propertyName) {
    return withRenderer(renderer, -1, [&](ToviRenderer& r) { return elementsCount(r, pluginID, propertyName); });
}

TOVI_API ToviVector* Tovi_ToviRenderer_getPropertyNames(ToviRenderer* renderer, const char* pluginName) {
    return withRenderer(renderer, static_cast<ToviVector*>(nullptr), [&](ToviRenderer& r) {
        return propertyNamesOf(r.scene.pluginClass(idOfName(r, pluginName)));
    });
}

TOVI_API ToviVector* Tovi_ToviRenderer_getPropertyNamesByID(ToviRenderer* renderer, ToviPluginID pluginID) {
    return withRenderer(renderer, static_cast<ToviVector*>(nullptr),
                        [&](ToviRenderer& r) { return propertyNamesOf(r.scene.pluginClass(pluginID)); });
}

TOVI_API const ToviPropertyDefinition* Tovi_ToviRenderer_getPropertyDefinitionByID(ToviRenderer* renderer, ToviPluginID pluginID, const char* propertyName) {
    return withRenderer(renderer, static_cast<const ToviPropertyDefinition*>(nullptr), [&](ToviRenderer& r) {
        return propertyName ? r.scene.findProperty(pluginID, propertyName) : nullptr;
    });
}

TOVI_API const ToviPropertyDefinition* Tovi_ToviRenderer_getPropertyDefinitionFromClass(ToviRenderer* renderer, const char* className, const char* propertyName) {
    return withRenderer(renderer, static_cast<const ToviPropertyDefinition*>(nullptr), [&](ToviRenderer&) {
        if (auto injected = takeInjectedResult("Tovi_ToviRenderer_getPropertyDefinitionFromClass")) {
            return injectedProperty(*injected);
        }
        const PluginClass* pluginClass = classNamed(className);
        return pluginClass && propertyName ? pluginClass->findProperty(propertyName) : nullptr;
    });
}

TOVI_API int Tovi_ToviRenderer_getPropertyIndexFromNameByID(ToviRenderer* renderer, ToviPluginID pluginID, const char* propertyName) {
    return withRenderer(renderer, -1, [&](ToviRenderer& r) {
        const PropertyDefinition* definition = propertyName ? r.scene.findProperty(pluginID, propertyName) : nullptr;
        return definition ? definition->index : -1;
    });
}

TOVI_API const char* Tovi_ToviRenderer_getPropertyNameFromIndexByID(ToviRenderer* renderer, ToviPluginID pluginID, int index) {
    return withRenderer(renderer, static_cast<const char*>(nullptr), [&](ToviRenderer& r) -> const char* {
        const PluginClass* pluginClass = r.scene.pluginClass(pluginID);
        const PropertyDefinition* definition = pluginClass ? pluginClass->propertyAt(index) : nullptr;
        return definition ? definition->name.c_str() : nullptr;
    });
}

TOVI_API int Tovi_ToviRenderer_propertyExistsByID(ToviRenderer* renderer, ToviPluginID pluginID, const char* propertyName) {
    return withRenderer(renderer, 0, [&](ToviRenderer& r) {
        return propertyName && r.scene.findProperty(pluginID, propertyName) ? 1 : 0;
    });
}

TOVI_API int Tovi_ToviRenderer_getPropertyStateByID(ToviRenderer* renderer, ToviPluginID pluginID, const char* propertyName) {
    return withRenderer(renderer, 0, [&](ToviRenderer& r) {
        return propertyName ? static_cast<int>(r.scene.propertyState(pluginID, propertyName)) : 0;
    });
}

TOVI_API int Tovi_ToviRenderer_getPropertyKeyframeTimesByID(ToviRenderer* renderer, ToviPluginID pluginID, const char* propertyName, double** times) {
    return withRenderer(renderer, -1, [&](ToviRenderer& r) {
        auto keyframes = propertyName ? r.scene.keyframeTimes(pluginID, propertyName) : std::nullopt;
        if (!keyframes || !times) return -1;
        *times = nullptr;
        if (keyframes->empty()) return 0;
        double* block = blockOf(*keyframes);
        if (!block) return -1;
        *times = block;
        return static_cast<int>(keyframes->size());
    });
}

// ---- plugins ----

TOVI_API int Tovi_ToviRenderer_newPlugin(ToviRenderer* renderer, const char* name, const char* className, int autoCommit, ToviPluginID* newID) {
    TOVI_RECORD("Tovi_ToviRenderer_newPlugin", {{"name", textOrNull(name)}, {"className", textOrNull(className)}, {"autoCommit", autoCommit}});
    return withRenderer(renderer, -1, [&](ToviRenderer& r) {
        if (!className) return -1;
        ToviPluginID id = TOVI_NO_PLUGIN;
        auto chosenName = name ? std::optional<std::string_view>(name) : std::nullopt;
        switch (noted(r, r.scene.createPlugin(chosenName, className, autoCommit != 0, &id))) {
            case SceneStatus::Ok:
                if (newID) *newID = id;
                return 0;
            case SceneStatus::NameTaken: return -2;
            case SceneStatus::InvalidName: return -3;
            default: return -1;
        }
    });
}

TOVI_API int Tovi_ToviRenderer_deletePlugin(ToviRenderer* renderer, const char* name, int autoCommit) {
    return withRenderer(renderer, -1, [&](ToviRenderer& r) { return deleteOne(r, idOfName(r, name), autoCommit); });
}

TOVI_API int Tovi_ToviRenderer_deletePluginByID(ToviRenderer* renderer, ToviPluginID pluginID, int autoCommit) {
    TOVI_RECORD("Tovi_ToviRenderer_deletePluginByID", {{"pluginID", pluginID}, {"autoCommit", autoCommit}});
    return withRenderer(renderer, -1, [&](ToviRenderer& r) { return deleteOne(r, pluginID, autoCommit); });
}

TOVI_API int Tovi_ToviRenderer_deletePluginsByID(ToviRenderer* renderer, const ToviPluginID* pluginIDs, int count, int autoCommit) {
    return withRenderer(renderer, -1, [&](ToviRenderer& r) {
        if (count < 0 || (count > 0 && !pluginIDs)) return -1;
        int result = 0;
        for (int index = 0; index < count; ++index) {
            if (deleteOne(r, pluginIDs[index], autoCommit) != 0) result = -1;
        }
        return result;
    });
}

TOVI_API int Tovi_ToviRenderer_replacePluginByID(ToviRenderer* renderer, ToviPluginID pluginID, ToviPluginID replacementID, int autoCommit) {
    TOVI_RECORD("Tovi_ToviRenderer_replacePluginByID", {{"pluginID", pluginID}, {"replacementID", replacementID}, {"autoCommit", autoCommit}});
    return withRenderer(renderer, -1, [&](ToviRenderer& r) {
        return noted(r, r.scene.replacePlugin(pluginID, replacementID, autoCommit != 0)) == SceneStatus::Ok ? 0 : -1;
    });
}

TOVI_API int Tovi_ToviRenderer_renamePlugin(ToviRenderer* renderer, const char* oldName, const char* newName, int autoCommit) {
    return withRenderer(renderer, -1, [&](ToviRenderer& r) { return rename(r, idOfName(r, oldName), newName, autoCommit); });
}

TOVI_API int Tovi_ToviRenderer_renamePluginByID(ToviRenderer* renderer, ToviPluginID pluginID, const char* newName, int autoCommit) {
    return withRenderer(renderer, -1, [&](ToviRenderer& r) { return rename(r, pluginID, newName, autoCommit); });
}

TOVI_API int Tovi_ToviRenderer_clearScene(ToviRenderer* renderer, int autoCommit) {
    return withRenderer(renderer, -1, [&](ToviRenderer& r) {
        r.scene.clear(autoCommit != 0);
        return 0;
    });
}

TOVI_API const char* Tovi_ToviRenderer_getPluginType(ToviRenderer* renderer, const char* pluginName) {
    return withRenderer(renderer, static_cast<const char*>(nullptr), [&](ToviRenderer& r) -> const char* {
        const PluginClass* pluginClass = r.scene.pluginClass(idOfName(r, pluginName));
        return pluginClass ? pluginClass->name().c_str() : nullptr;
    });
}

TOVI_API const char* Tovi_ToviRenderer_getPluginTypeByID(ToviRenderer* renderer, ToviPluginID pluginID) {
    return withRenderer(renderer, static_cast<const char*>(nullptr), [&](ToviRenderer& r) -> const char* {
        const PluginClass* pluginClass = r.scene.pluginClass(pluginID);
        return pluginClass ? pluginClass->name().c_str() : nullptr;
    });
}

TOVI_API int Tovi_ToviRenderer_getPluginsCountOfType(ToviRenderer* renderer, const char* className) {
    return withRenderer(renderer, 0, [&](ToviRenderer& r) {
        const PluginClass* pluginClass = classNamed(className);
        if (className && !pluginClass) return 0;
        return static_cast<int>(r.scene.pluginIDs(pluginClass).size());
    });
}

TOVI_API ToviPluginID* Tovi_ToviRenderer_getPluginIDsOfType(ToviRenderer* renderer, const char* className, int* count) {
    if (count) *count = 0;
    return withRenderer(renderer, static_cast<ToviPluginID*>(nullptr), [&](ToviRenderer& r) -> ToviPluginID* {
        const PluginClass* pluginClass = classNamed(className);
        if (className && !pluginClass) return nullptr;
        auto ids = r.scene.pluginIDs(pluginClass);
        if (ids.empty()) return nullptr;
        ToviPluginID* block = blockOf(ids);
        if (block && count) *count = static_cast<int>(ids.size());
        return block;
    });
}

TOVI_API ToviVector* Tovi_ToviRenderer_getPluginNames(ToviRenderer* renderer) {
    return withRenderer(renderer, static_cast<ToviVector*>(nullptr),
                        [&](ToviRenderer& r) { return newTextVector(r.scene.pluginNames()); });
}

TOVI_API int Tovi_ToviRenderer_pluginExistsByID(ToviRenderer* renderer, ToviPluginID pluginID) {
    return withRenderer(renderer, 0, [&](ToviRenderer& r) { return r.scene.pluginExists(pluginID) ? 1 : 0; });
}

TOVI_API ToviPluginID Tovi_ToviRenderer_getPluginID(ToviRenderer* renderer, const char* name) {
    return withRenderer(renderer, TOVI_NO_PLUGIN, [&](ToviRenderer& r) { return idOfName(r, name); });
}

TOVI_API const char* Tovi_ToviRenderer_getPluginName(ToviRenderer* renderer, ToviPluginID pluginID) {
    return withRenderer(renderer, static_cast<const char*>(nullptr), [&](ToviRenderer& r) { return r.scene.pluginName(pluginID); });
}

// ---- classes ----

TOVI_API int Tovi_ToviRenderer_getPluginClassNamesCount(ToviRenderer* renderer) {
    return withRenderer(renderer, 0, [&](ToviRenderer& r) { return static_cast<int>(r.scene.classes().size()); });
}

TOVI_API ToviVector* Tovi_ToviRenderer_getPluginClassNames(ToviRenderer* renderer) {
    return withRenderer(renderer, static_cast<ToviVector*>(nullptr), [&](ToviRenderer& r) {
        std::vector<std::string> names;
        for (size_t index = 0; index < r.scene.classes().size(); ++index) names.push_back(r.scene.classes().at(index).name());
        return newTextVector(std::move(names));
    });
}

TOVI_API ToviVector* Tovi_ToviRenderer_getClassPropertyNames(ToviRenderer* renderer, const char* className) {
    return withRenderer(renderer, static_cast<ToviVector*>(nullptr),
                        [&](ToviRenderer&) { return propertyNamesOf(classNamed(className)); });
}

TOVI_API int Tovi_ToviRenderer_pluginClassExists(ToviRenderer* renderer, const char* className) {
    return withRenderer(renderer, 0, [&](ToviRenderer&) { return classNamed(className) ? 1 : 0; });
}

TOVI_API int Tovi_ToviRenderer_getPluginGpuSupport(ToviRenderer* renderer, const char* className) {
    return withRenderer(renderer, -1, [&](ToviRenderer&) {
        const PluginClass* pluginClass = classNamed(className);
        return pluginClass ? static_cast<int>(pluginClass->gpuSupport()) : -1;
    });
}

TOVI_API char* Tovi_ToviRenderer_getPluginDescription(ToviRenderer* renderer, const char* className) {
    return withRenderer(renderer, static_cast<char*>(nullptr), [&](ToviRenderer&) -> char* {
        const PluginClass* pluginClass = classNamed(className);
        return pluginClass && !pluginClass->description().empty() ? textBlock(pluginClass->description()) : nullptr;
    });
}

TOVI_API const char* Tovi_ToviRenderer_getPluginDeprecation(ToviRenderer* renderer, const char* className) {
    return withRenderer(renderer, static_cast<const char*>(nullptr), [&](ToviRenderer&) -> const char* {
        const PluginClass* pluginClass = classNamed(className);
        return pluginClass && !pluginClass->deprecation().empty() ? pluginClass->deprecation().c_str() : nullptr;
    });
}

// ---- categories ----

TOVI_API const char* Tovi_getPluginCategoryNameFromEnum(int index) { return categoryName(index); }

TOVI_API int Tovi_getPluginCategoryEnumFromName(const char* name) {
    if (!name) return categoryCount();
    return categoryIndex(name).value_or(categoryCount());
}

TOVI_API ToviPluginID* Tovi_ToviRenderer_getPluginsOfCategories(ToviRenderer* renderer, const uint64_t* categoryMasks, int maskCount, int* count) {
    TOVI_RECORD("Tovi_ToviRenderer_getPluginsOfCategories",
                {{"masks", categoryMasks && maskCount > 0 ? std::vector<uint64_t>(categoryMasks, categoryMasks + maskCount)
                                                         : std::vector<uint64_t>()}});
    if (count) *count = 0;
    if (!count) return nullptr;
    return withRenderer(renderer, static_cast<ToviPluginID*>(nullptr), [&](ToviRenderer& r) -> ToviPluginID* {
        std::vector<ToviPluginID> found;
        for (ToviPluginID id : r.scene.pluginIDs()) {
            if (inAllCategoriesOfAny(pluginCategories(r, id), categoryMasks, maskCount)) found.push_back(id);
        }
        if (found.empty()) return nullptr;
        ToviPluginID* ids = blockOf(found);
        if (ids) *count = static_cast<int>(found.size());
        return ids;
    });
}

TOVI_API int Tovi_ToviRenderer_isPluginOfCategories(ToviRenderer* renderer, ToviPluginID pluginID, uint64_t categoryMask) {
    return withRenderer(renderer, 0, [&](ToviRenderer& r) {
        return r.scene.pluginExists(pluginID) && inAllCategories(pluginCategories(r, pluginID), categoryMask) ? 1 : 0;
    });
}

TOVI_API ToviVector* Tovi_ToviRenderer_getPluginClassNamesOfCategories(ToviRenderer* renderer, const uint64_t* categoryMasks, int maskCount) {
    TOVI_RECORD("Tovi_ToviRenderer_getPluginClassNamesOfCategories",
                {{"masks", categoryMasks && maskCount > 0 ? std::vector<uint64_t>(categoryMasks, categoryMasks + maskCount)
                                                         : std::vector<uint64_t>()}});
    return withRenderer(renderer, static_cast<ToviVector*>(nullptr), [&](ToviRenderer& r) {
        std::vector<std::string> names;
        for (size_t index = 0; index < r.scene.classes().size(); ++index) {
            const PluginClass& pluginClass = r.scene.classes().at(index);
            if (inAllCategoriesOfAny(pluginClass.categories(), categoryMasks, maskCount)) names.push_back(pluginClass.name());
        }
        return newTextVector(std::move(names));
    });
}

TOVI_API int Tovi_ToviRenderer_isPluginClassOfCategory(ToviRenderer* renderer, const char* className, uint32_t categoryIndex) {
    return withRenderer(renderer, 0, [&](ToviRenderer&) {
        const PluginClass* pluginClass = classNamed(className);
        return pluginClass && categoryIndex < 64 && (pluginClass->categories() >> categoryIndex & 1) ? 1 : 0;
    });
}

TOVI_API uint64_t Tovi_ToviRenderer_getPluginClassCategories(ToviRenderer* renderer, const char* className) {
    return withRenderer(renderer, uint64_t{0}, [&](ToviRenderer&) {
        const PluginClass* pluginClass = classNamed(className);
        return pluginClass ? pluginClass->categories() : uint64_t{0};
    });
}

TOVI_API uint64_t Tovi_ToviRenderer_getPluginCategories(ToviRenderer* renderer, ToviPluginID pluginID) {
    return withRenderer(renderer, uint64_t{0}, [&](ToviRenderer& r) { return pluginCategories(r, pluginID); });
}

// ---- time and commits ----

TOVI_API int Tovi_ToviRenderer_setCurrentTime(ToviRenderer* renderer, double time) {
    return withRenderer(renderer, -1, [&](ToviRenderer& r) {
        if (!std::isfinite(time)) return -1;
        r.scene.setCurrentTime(time);
        return 0;
    });
}

TOVI_API double Tovi_ToviRenderer_getCurrentTime(ToviRenderer* renderer) {
    return withRenderer(renderer, 0.0, [&](ToviRenderer& r) { return r.scene.currentTime(); });
}

TOVI_API int Tovi_ToviRenderer_setCurrentFrame(ToviRenderer* renderer, int frame) {
    return withRenderer(renderer, -1, [&](ToviRenderer& r) {
        r.scene.setCurrentFrame(frame);
        return 0;
    });
}

TOVI_API int Tovi_ToviRenderer_getCurrentFrame(ToviRenderer* renderer) {
    return withRenderer(renderer, 0, [&](ToviRenderer& r) { return r.scene.currentFrame(); });
}

TOVI_API int Tovi_ToviRenderer_setAnimateProperties(ToviRenderer* renderer, int animate) {
    return withRenderer(renderer, -1, [&](ToviRenderer& r) {
        r.scene.setAnimateProperties(animate != 0);
        return 0;
    });
}

TOVI_API int Tovi_ToviRenderer_getAnimateProperties(ToviRenderer* renderer) {
    return withRenderer(renderer, 0, [&](ToviRenderer& r) { return r.scene.animateProperties() ? 1 : 0; });
}

TOVI_API uint64_t Tovi_ToviRenderer_commit(ToviRenderer* renderer, int force) {
    return withRenderer(renderer, uint64_t{0}, [&](ToviRenderer& r) { return r.scene.commit(force != 0); });
}

TOVI_API uint64_t Tovi_ToviRenderer_getChangeIndex(ToviRenderer* renderer) {
    return withRenderer(renderer, uint64_t{0}, [&](ToviRenderer& r) { return r.scene.changeIndex(); });
}
