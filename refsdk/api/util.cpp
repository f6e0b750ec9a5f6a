// The reference graph of a scene, and the IES intensity query.
#include <cstring>
#include <vector>

#include "api/entries.h"
#include "api/renderer_handle.h"
#include "core/memory.h"
#include "testctl/recorder.h"

using namespace tovi::ref;
using namespace tovi::ref::scene;

namespace {

int linksResult(const std::vector<PluginLink>& found, ToviPluginLink** links) {
    *links = nullptr;
    if (found.empty()) return 0;
    auto* block = static_cast<ToviPluginLink*>(allocateBlock(found.size() * sizeof(ToviPluginLink)));
    if (!block) return -1;
    for (size_t index = 0; index < found.size(); ++index) {
        block[index] = ToviPluginLink{found[index].referenced, found[index].referencing, found[index].output,
                                      found[index].propertyIndex};
    }
    *links = block;
    return static_cast<int>(found.size());
}

template <typename Query>
int links(const char* entry, ToviRenderer* handle, ToviPluginID pluginID, int recursive, ToviPluginLink** out,
          Query&& query) {
    TOVI_RECORD(entry, {{"pluginID", pluginID}, {"recursive", recursive}});
    if (!out) return -1;
    *out = nullptr;
    try {
        auto renderer = acquireRenderer(handle);
        if (!renderer || !renderer->scene.pluginExists(pluginID)) return -1;
        return linksResult(query(renderer->scene), out);
    } catch (...) {
        return -1;
    }
}

}  // namespace

TOVI_API int Util_getParentPlugins(ToviRenderer* renderer, ToviPluginID pluginID, int recursive, ToviPluginLink** links) {
    return ::links("Util_getParentPlugins", renderer, pluginID, recursive, links,
                   [&](const SceneDatabase& scene) { return scene.parentLinks(pluginID, recursive != 0); });
}
TOVI_API int Util_getChildPlugins(ToviRenderer* renderer, ToviPluginID pluginID, int recursive, ToviPluginLink** links) {
    return ::links("Util_getChildPlugins", renderer, pluginID, recursive, links,
                   [&](const SceneDatabase& scene) { return scene.childLinks(pluginID, recursive != 0); });
}
// No IES reader yet.
TOVI_API float Util_getIESPrescribedIntensity(const char* iesFile) { return -1.0f; }
