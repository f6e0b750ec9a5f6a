#include "api/renderer_handle.h"

#include <mutex>
#include <new>
#include <unordered_map>

#include "scene/catalogue.h"

ToviRenderer::ToviRenderer(const ToviRendererOptions* requested)
    : scene(tovi::ref::scene::catalogue(),
            requested ? (requested->flags0 & TOVI_RENDERER_FLAGS0_ALLOW_INVALID_PLUGIN_NAMES) != 0 : false) {
    if (requested) {
        options = *requested;
        if (requested->pluginLibraryPath) pluginLibraryPath = requested->pluginLibraryPath;
        if (requested->tfbLanguage) tfbLanguage = requested->tfbLanguage;
    } else {
        options.flags0 = tovi::ref::ownDefaultFlags0;
        options.flags1 = tovi::ref::ownDefaultFlags1;
    }
    options.pluginLibraryPath = pluginLibraryPath ? pluginLibraryPath->c_str() : nullptr;
    options.tfbLanguage = tfbLanguage ? tfbLanguage->c_str() : nullptr;
}

namespace tovi::ref {

namespace {

struct LiveRenderer {
    std::shared_ptr<ToviRenderer> renderer;
    int references = 1;
};

std::mutex registryMutex;
std::unordered_map<ToviRenderer*, LiveRenderer>& registry() {
    static auto* renderers = new std::unordered_map<ToviRenderer*, LiveRenderer>();
    return *renderers;
}

}  // namespace

ToviRenderer* createRenderer(const ToviRendererOptions* options) {
    try {
        auto renderer = std::make_shared<ToviRenderer>(options);
        ToviRenderer* handle = renderer.get();
        std::lock_guard<std::mutex> lock(registryMutex);
        registry().emplace(handle, LiveRenderer{std::move(renderer), 1});
        return handle;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

std::shared_ptr<ToviRenderer> acquireRenderer(ToviRenderer* handle) {
    if (!handle) return nullptr;
    std::lock_guard<std::mutex> lock(registryMutex);
    auto found = registry().find(handle);
    return found == registry().end() ? nullptr : found->second.renderer;
}

int releaseRenderer(ToviRenderer* handle) {
    std::shared_ptr<ToviRenderer> last;
    int left;
    {
        std::lock_guard<std::mutex> lock(registryMutex);
        auto found = registry().find(handle);
        if (found == registry().end()) return -1;
        left = --found->second.references;
        if (left == 0) {
            last = std::move(found->second.renderer);
            registry().erase(found);
        }
    }
    // The renderer goes away here, outside the registry's lock, unless a call still uses it.
    last.reset();
    return left;
}

int addRendererReference(ToviRenderer* handle) {
    std::lock_guard<std::mutex> lock(registryMutex);
    auto found = registry().find(handle);
    if (found == registry().end()) return -1;
    return ++found->second.references;
}

}  // namespace tovi::ref
