// Library-wide entries: versions, error texts, the environment, the frame-buffer switch and the
// render-server host check.
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <string>

#include "api/entries.h"
#include "core/errors.h"
#include "core/library.h"
#include "core/memory.h"
#include "core/text.h"
#include "material/scanned_params.h"
#include "testctl/recorder.h"

using namespace tovi::ref;

namespace {

constexpr uint32_t packVersion(uint32_t major, uint32_t minor, uint32_t patch) {
    return (major << 16) | (minor << 8) | patch;
}

constexpr uint32_t apiVersion = packVersion(1, 0, 0);
constexpr uint32_t coreVersion = packVersion(0, 1, 0);

std::atomic<int> frameBufferEnabled{1};

char* blockCopy(const std::string& text) {
    auto* block = static_cast<char*>(allocateBlock(text.size() + 1));
    if (block) std::memcpy(block, text.c_str(), text.size() + 1);
    return block;
}

// One block: the record, then its texts.
ToviDRHostCheck* hostCheckRecord(const nlohmann::json& answer) {
    const char* keys[] = {"hostResolved", "hostConnectedTo", "revisionTime"};
    size_t textBytes = 0;
    for (const char* key : keys) {
        if (answer.contains(key) && answer[key].is_string()) textBytes += answer[key].get<std::string>().size() + 1;
    }
    auto* record = static_cast<ToviDRHostCheck*>(allocateBlock(sizeof(ToviDRHostCheck) + textBytes));
    if (!record) return nullptr;
    *record = ToviDRHostCheck{};
    record->status = answer.value("status", TOVI_DR_HOST_UNKNOWN);
    record->cpuCount = answer.value("cpuCount", 0);
    record->toviVersion = answer.value("toviVersion", 0u);
    char* cursor = reinterpret_cast<char*>(record + 1);
    const char** fields[] = {&record->hostResolved, &record->hostConnectedTo, &record->revisionTime};
    for (int index = 0; index < 3; ++index) {
        if (!(answer.contains(keys[index]) && answer[keys[index]].is_string())) continue;
        std::string text = answer[keys[index]].get<std::string>();
        std::memcpy(cursor, text.c_str(), text.size() + 1);
        *fields[index] = cursor;
        cursor += text.size() + 1;
    }
    return record;
}

}  // namespace

TOVI_API int Tovi_incrementModuleReferenceCounter(void) {
    TOVI_RECORD("Tovi_incrementModuleReferenceCounter", nlohmann::json::object());
    return addModuleReference();
}

TOVI_API uint32_t Tovi_getSDKVersion(void) { return apiVersion; }

TOVI_API uint32_t Tovi_getToviVersion(void) { return coreVersion; }

TOVI_API const char* Tovi_getToviVersionDetails(void) {
    return "Tovi reference SDK 0.1.0 (CPU renderer, built " __DATE__ " with GCC " __VERSION__ ")";
}

// The reference SDK ships no material library.
TOVI_API const char* Tovi_getMaterialLibraryPath(void) { return nullptr; }

TOVI_API int Tovi_isDR2(void) { return drGeneration() == 2 ? 1 : 0; }

TOVI_API int Tovi_getErrorTextStringFromErrorCode(int errorCode, ToviCharString* text) {
    const char* message = errorText(errorCode);
    if (!message || !text) return -1;
    return setText(text, message) ? 0 : -1;
}

TOVI_API void Tovi_enableFrameBuffer(int enable) {
    TOVI_RECORD("Tovi_enableFrameBuffer", {{"enable", enable}});
    frameBufferEnabled.store(enable != 0);
}

TOVI_API int Tovi_setEnvironmentVariable(const char* name, const char* value) {
    TOVI_RECORD("Tovi_setEnvironmentVariable", {{"name", name ? name : ""}, {"value", value ? nlohmann::json(value) : nlohmann::json()}});
    if (!name || !*name || std::strchr(name, '=')) return -1;
    return (value ? setenv(name, value, 1) : unsetenv(name)) == 0 ? 0 : -1;
}

TOVI_API char* Tovi_getEnvironmentVariable(const char* name) {
    const char* value = name ? std::getenv(name) : nullptr;
    return value ? blockCopy(value) : nullptr;
}

TOVI_API int Tovi_encodeBRDFScannedParams(const ToviBRDFScannedParams* params, int32_t** words) {
    if (!params || !words) return -1;
    try {
        auto encoded = encodeScannedParams(*params);
        if (!encoded) return -1;
        auto* block = static_cast<int32_t*>(allocateBlock(encoded->size() * sizeof(int32_t)));
        if (!block) return -1;
        std::memcpy(block, encoded->data(), encoded->size() * sizeof(int32_t));
        *words = block;
        return static_cast<int>(encoded->size());
    } catch (const std::exception&) {
        return -1;
    }
}

// The reference SDK has no render-server client yet: a check answers only what a test injected.
TOVI_API ToviDRHostCheck* Tovi_checkDRHost(const char* host) {
    TOVI_RECORD("Tovi_checkDRHost", {{"host", host ? host : ""}});
    auto answer = takeInjectedResult("Tovi_checkDRHost");
    if (!answer || answer->is_null()) return nullptr;
    try {
        return hostCheckRecord(*answer);
    } catch (const std::exception&) {
        return nullptr;
    }
}

// Not built yet: these answer their failure values.

TOVI_API int Tovi_getUserDataCount(void) { return userDataSlotCount; }
TOVI_API int Tovi_setUSDProvider(const char* provider) { return -1; }
TOVI_API int Tovi_getRenderElementDescs(ToviRenderElementDesc** descs) { return -1; }
TOVI_API int Tovi_getRenderElementTypeFromTypeString(const char* typeString) { return 0; }
TOVI_API const char* Tovi_getRenderElementTypeStringFromType(int type) { return NULL; }
TOVI_API int Tovi_newRenderElementPlugin(ToviRenderer* renderer, int type, const char* instanceName, const char* displayName, ToviPluginID* pluginID, int autoCommit) {
    return -1;
}
TOVI_API int Tovi_getRenderElementPlugin(ToviRenderer* renderer, int type, ToviPluginID* pluginID) { return -1; }
TOVI_API int Tovi_getRenderElementPluginsList(ToviRenderer* renderer, int type, ToviPluginID** pluginIDs) {
    return -1;
}
TOVI_API int Tovi_getRenderElementInfo(ToviRenderer* renderer, ToviPluginID pluginID, int type, ToviRenderElementInfo* info) {
    return -1;
}
TOVI_API int Tovi_getRenderElementData(ToviRenderer* renderer, ToviPluginID pluginID, ToviPluginID alphaPluginID, int type, int layerIndex, int pixelFormat, int rgbOrder, int left, int top, int right, int bottom, void** data, size_t* size, ToviCharString* errorText) {
    reportUnsupported(errorText);
    return -1;
}
TOVI_API ToviImage* Tovi_getRenderElementAsImage(ToviRenderer* renderer, ToviPluginID pluginID, int type, int layerIndex, int left, int top, int right, int bottom, int doColorCorrect, int stripAlpha, int flipImage) {
    return NULL;
}
TOVI_API int Tovi_getRenderElementMetadata(ToviRenderer* renderer, ToviPluginID pluginID, int type, ToviCharString* metadata) {
    return -1;
}
TOVI_API int Tovi_isFileAvailable(const char* fileName) { return 0; }
TOVI_API int Tovi_getOSLParameters(const char* shaderSource, ToviOSLParameter** parameters, ToviCharString* errorText) {
    reportUnsupported(errorText);
    return -1;
}
