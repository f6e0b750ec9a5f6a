// Editor guides of properties. Not built yet: every entry answers its failure value.
#include "api/entries.h"

TOVI_API int Tovi_UIGuides_isEnum(const ToviPropertyDefinition* definition) { return 0; }
TOVI_API int Tovi_UIGuides_hasType(const ToviPropertyDefinition* definition, int guideType, int* flag) {
    return -1;
}
TOVI_API int Tovi_UIGuides_getFloat(const ToviPropertyDefinition* definition, int guideType, float* value) {
    return -1;
}
TOVI_API int Tovi_UIGuides_getFloats(const ToviPropertyDefinition* definition, int guideType, float* values, int capacity) {
    return -1;
}
TOVI_API int Tovi_UIGuides_getDisplayName(const ToviPropertyDefinition* definition, ToviCharString* text) {
    return -1;
}
TOVI_API int Tovi_UIGuides_getEnumStrings(const ToviPropertyDefinition* definition, char** labels, int32_t** values) {
    return -1;
}
TOVI_API int Tovi_UIGuides_getQuantityType(const ToviPropertyDefinition* definition) { return -1; }
TOVI_API int Tovi_UIGuides_getUnits(const ToviPropertyDefinition* definition) { return -1; }
TOVI_API int Tovi_UIGuides_getFileAssetExts(const ToviPropertyDefinition* definition, char** list) { return -1; }
TOVI_API int Tovi_UIGuides_getFileAssetNames(const ToviPropertyDefinition* definition, char** list) { return -1; }
TOVI_API int Tovi_UIGuides_getFileAssetOp(const ToviPropertyDefinition* definition) { return -1; }
TOVI_API int Tovi_UIGuides_hasAttribute(const ToviPropertyDefinition* definition, int attribute, int* flag) {
    return -1;
}
TOVI_API int Tovi_UIGuides_getStringEnumStrings(const ToviPropertyDefinition* definition, char** list) {
    return -1;
}
TOVI_API int Tovi_UIGuides_isStringEnum(const ToviPropertyDefinition* definition) { return 0; }
TOVI_API int Tovi_UIGuides_getRolloutName(const ToviPropertyDefinition* definition, ToviCharString* text) {
    return -1;
}
TOVI_API int Tovi_UIGuides_getTabName(const ToviPropertyDefinition* definition, ToviCharString* text) {
    return -1;
}
TOVI_API int Tovi_UIGuides_hasOverriddenBy(const ToviPropertyDefinition* definition) { return 0; }
TOVI_API int Tovi_UIGuides_getValueOfOverriddenBy(const ToviPropertyDefinition* definition, ToviCharString* text) {
    return -1;
}
TOVI_API int Tovi_UIGuides_getTier(const ToviPropertyDefinition* definition) { return -1; }
TOVI_API int Tovi_UIGuides_hasOverride(const ToviPropertyDefinition* definition) { return 0; }
TOVI_API int Tovi_UIGuides_getCountOfOverrides(const ToviPropertyDefinition* definition) { return -1; }
TOVI_API int Tovi_UIGuides_getValueOfOverride(const ToviPropertyDefinition* definition, int index, ToviCharString* text) {
    return -1;
}
TOVI_API int Tovi_UIGuides_hasEnabledCondition(const ToviPropertyDefinition* definition) { return 0; }
TOVI_API int Tovi_UIGuides_getEnableDepends(const ToviPropertyDefinition* definition, char** list) { return -1; }
TOVI_API int Tovi_UIGuides_getGPUSupportStatus(const ToviPropertyDefinition* definition) { return -1; }
TOVI_API int Tovi_UIGuides_hasHiddenCondition(const ToviPropertyDefinition* definition) { return 0; }
TOVI_API int Tovi_UIGuides_getHideDepends(const ToviPropertyDefinition* definition, char** list) { return -1; }
TOVI_API int Tovi_UIGuides_isEnabled(const ToviPropertyDefinition* definition, ToviRenderer* renderer, ToviPluginID pluginID, int* flag) {
    return -1;
}
TOVI_API int Tovi_UIGuides_isHidden(const ToviPropertyDefinition* definition, ToviRenderer* renderer, ToviPluginID pluginID, int* flag) {
    return -1;
}
