// The renderer object behind a ToviRenderer handle, shared by every family of renderer entries.
#pragma once

#include <array>
#include <atomic>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "core/library.h"
#include "scene/database.h"
#include "tovi_sdk.h"

struct ToviRenderer {
    explicit ToviRenderer(const ToviRendererOptions* requested);
    ToviRenderer(const ToviRenderer&) = delete;
    ToviRenderer& operator=(const ToviRenderer&) = delete;

    // The options in effect; their texts point into the strings below.
    ToviRendererOptions options{};
    std::optional<std::string> pluginLibraryPath;
    std::optional<std::string> tfbLanguage;

    tovi::ref::scene::SceneDatabase scene;
    std::atomic<int> lastError{0};

    // Scene files: where includes are searched, where the last load failed to parse, and the
    // scene serialized for distributed rendering.
    struct ParserError {
        std::string file;
        int line = 0;
        std::string text;
    };
    std::mutex sceneFilesMutex;
    std::vector<std::string> includePaths;
    std::optional<ParserError> lastParserError;
    std::string serializedScene;
    std::array<std::atomic<void*>, tovi::ref::userDataSlotCount> userData{};
};

namespace tovi::ref {

// Options of a renderer created without a record.
constexpr uint8_t ownDefaultFlags0 = TOVI_RENDERER_FLAGS0_ENABLE_FRAME_BUFFER | TOVI_RENDERER_FLAGS0_USE_DEFAULT_TFB_THEME;
constexpr uint8_t ownDefaultFlags1 = TOVI_RENDERER_FLAGS1_USE_TFB_LOG;

// A new renderer holding one reference; null when out of memory.
ToviRenderer* createRenderer(const ToviRendererOptions* options);
// The renderer behind a live handle, kept alive while the caller holds it; null for a handle
// that is unknown or released, so a stale handle fails instead of crashing.
std::shared_ptr<ToviRenderer> acquireRenderer(ToviRenderer* handle);
// The references left (0: released), -1 for an unknown handle.
int releaseRenderer(ToviRenderer* handle);
// The new reference count, -1 for an unknown handle.
int addRendererReference(ToviRenderer* handle);

}  // namespace tovi::ref
