// Copying plugins between renderers. Not built yet: every entry answers its failure value.
#include "api/entries.h"

TOVI_API int Tovi_ToviRendererUtils_copyPlugins(ToviRenderer* srcRenderer, ToviRenderer* dstRenderer, const ToviPluginID* includeIDs, int includeCount, const ToviPluginID* excludeIDs, int excludeCount, ToviPluginCopyPreCreateFn preCreate, ToviPluginCopyPostCreateFn postCreate, void* userData, int autoCommit) {
    return -1;
}
TOVI_API int Tovi_ToviRendererUtils_copyPluginsOfType(ToviRenderer* srcRenderer, ToviRenderer* dstRenderer, const char* pluginType, ToviPluginCopyPreCreateFn preCreate, ToviPluginCopyPostCreateFn postCreate, void* userData, int autoCommit) {
    return -1;
}
