// Property definitions. Not built yet: every entry answers its failure value.
#include "api/entries.h"

TOVI_API int Tovi_PluginUtils_getPropertyDefaultValue(const ToviPropertyDefinition* definition, uint8_t** stream, size_t* size) {
    return -1;
}
TOVI_API const char* Tovi_PluginUtils_getPropertyDescription(const ToviPropertyDefinition* definition) {
    return NULL;
}
TOVI_API const char* Tovi_PluginUtils_getPropertyUIGuides(const ToviPropertyDefinition* definition) {
    return NULL;
}
TOVI_API const char* Tovi_PluginUtils_getPropertyName(const ToviPropertyDefinition* definition) { return NULL; }
TOVI_API const char* Tovi_PluginUtils_getPropertyAliases(const ToviPropertyDefinition* definition) {
    return NULL;
}
TOVI_API const char* Tovi_PluginUtils_getPropertyDeprecation(const ToviPropertyDefinition* definition) {
    return NULL;
}
TOVI_API int Tovi_PluginUtils_getPropertyType(const ToviPropertyDefinition* definition) { return -1; }
TOVI_API int Tovi_PluginUtils_getPropertyElementsCount(const ToviPropertyDefinition* definition) { return -1; }
TOVI_API int Tovi_PluginUtils_getPropertyGpuSupport(ToviRenderer* renderer, const char* className, const ToviPropertyDefinition* definition) {
    return -1;
}
