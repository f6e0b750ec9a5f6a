// The test-control interface (testctl/testctl.h).
#include "testctl/testctl.h"

#include <cstring>
#include <string>

#include "api/entries.h"
#include "core/devices.h"
#include "core/library.h"
#include "core/memory.h"
#include "testctl/recorder.h"

using namespace tovi::ref;

#define TOVI_REF_API extern "C" __attribute__((visibility("default")))

TOVI_REF_API void ToviRef_setRecorder(int on) { setRecorderEnabled(on != 0); }

TOVI_REF_API const char* ToviRef_lastCall(const char* entry) {
    static thread_local std::string text;
    if (!entry) return nullptr;
    try {
        auto call = lastCall(entry);
        if (!call) return nullptr;
        text = std::move(*call);
        return text.c_str();
    } catch (const std::exception&) {
        return nullptr;
    }
}

TOVI_REF_API void ToviRef_clearCalls(void) { clearCalls(); }

TOVI_REF_API int ToviRef_injectResult(const char* entry, const char* json) {
    if (!entry || !json) return -1;
    try {
        injectResult(entry, nlohmann::json::parse(json));
        return 0;
    } catch (const std::exception&) {
        return -1;
    }
}

TOVI_REF_API void ToviRef_setDRGeneration(int generation) { setDRGeneration(generation); }

TOVI_REF_API int ToviRef_setDeviceList(const char* kind, const char* json) {
    auto deviceKind = kind ? deviceKindFromName(kind) : std::nullopt;
    if (!deviceKind) return -1;
    try {
        if (json) {
            scriptDeviceList(*deviceKind, nlohmann::json::parse(json));
        } else {
            restoreDeviceList(*deviceKind);
        }
        return 0;
    } catch (const std::exception&) {
        return -1;
    }
}

TOVI_REF_API long long ToviRef_liveCount(const char* kind) {
    if (!kind) return -1;
    if (std::strcmp(kind, "blocks") == 0) return liveBlockCount();
    if (std::strcmp(kind, "texts") == 0) return liveTextCount();
    if (std::strcmp(kind, "vectors") == 0) return liveVectorCount();
    return -1;
}

TOVI_REF_API int ToviRef_moduleReferenceCount(void) { return moduleReferenceCount(); }

TOVI_REF_API void ToviRef_reset(void) {
    resetTestControl();
    restoreAllDeviceLists();
    resetModuleReferences();
}
