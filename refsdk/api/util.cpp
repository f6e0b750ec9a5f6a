// Plugin links and IES intensity. Not built yet: every entry answers its failure value.
#include "api/entries.h"

TOVI_API int Util_getParentPlugins(ToviRenderer* renderer, ToviPluginID pluginID, int recursive, ToviPluginLink** links) {
    return -1;
}
TOVI_API int Util_getChildPlugins(ToviRenderer* renderer, ToviPluginID pluginID, int recursive, ToviPluginLink** links) {
    return -1;
}
TOVI_API float Util_getIESPrescribedIntensity(const char* iesFile) { return -1.0f; }
