// The renderer: its lifetime, creation options, user data and last error. The scene entries are
// in scene.cpp, scene files in scene_files.cpp; the entries below the lifetime ones are not built
// yet and answer their failure values (and the error text where they have an error record).
#include "api/entries.h"
#include "api/renderer_handle.h"
#include "core/errors.h"
#include "core/text.h"
#include "testctl/recorder.h"

using tovi::ref::reportUnsupported;

namespace {

nlohmann::json optionsRecord(const ToviRendererOptions* options) {
    if (!options) return nullptr;
    auto text = [](const char* value) { return value ? nlohmann::json(value) : nlohmann::json(); };
    return {{"pluginLibraryPath", text(options->pluginLibraryPath)},
            {"tfbDrawStyle", options->tfbDrawStyle},
            {"flags0", options->flags0},
            {"flags1", options->flags1},
            {"flags2", options->flags2},
            {"reserved0", options->reserved0},
            {"reserved1", options->reserved1},
            {"tfbLanguage", text(options->tfbLanguage)}};
}

}  // namespace

TOVI_API ToviRenderer* Tovi_ToviRenderer_create(const ToviRendererOptions* options, ToviCharString* error) {
    TOVI_RECORD("Tovi_ToviRenderer_create", {{"options", optionsRecord(options)}});
    ToviRenderer* renderer = tovi::ref::createRenderer(options);
    if (!renderer && error) tovi::ref::setText(error, tovi::ref::errorText(tovi::ref::errorOutOfMemory));
    return renderer;
}

TOVI_API int Tovi_ToviRenderer_release(ToviRenderer* renderer) { return tovi::ref::releaseRenderer(renderer); }

TOVI_API int Tovi_ToviRenderer_incRef(ToviRenderer* renderer) { return tovi::ref::addRendererReference(renderer); }

TOVI_API int Tovi_ToviRenderer_getRenderOptions(ToviRenderer* renderer, ToviRendererOptions* options) {
    auto live = tovi::ref::acquireRenderer(renderer);
    if (!live || !options) return -1;
    *options = live->options;
    return 0;
}

TOVI_API int Tovi_ToviRenderer_setUserData(ToviRenderer* renderer, int index, void* data) {
    auto live = tovi::ref::acquireRenderer(renderer);
    if (!live || index < 0 || index >= tovi::ref::userDataSlotCount) return -1;
    live->userData[index].store(data);
    return 0;
}

TOVI_API void* Tovi_ToviRenderer_getUserData(ToviRenderer* renderer, int index) {
    auto live = tovi::ref::acquireRenderer(renderer);
    if (!live || index < 0 || index >= tovi::ref::userDataSlotCount) return nullptr;
    return live->userData[index].load();
}

TOVI_API int Tovi_ToviRenderer_getLastErrorCode(ToviRenderer* renderer) {
    auto live = tovi::ref::acquireRenderer(renderer);
    return live ? live->lastError.load() : -1;
}

TOVI_API void Tovi_ToviRenderer_clearLastErrorCode(ToviRenderer* renderer) {
    if (auto live = tovi::ref::acquireRenderer(renderer)) live->lastError.store(0);
}

TOVI_API int Tovi_ToviRenderer_setImprovedDefaults(ToviRenderer* renderer, int level) { return 0; }
TOVI_API int Tovi_ToviRenderer_setUpdatedDefaults(ToviRenderer* renderer, int autoCommit) { return 0; }
TOVI_API int Tovi_ToviRenderer_setUpdatedDefaultsPluginID(ToviRenderer* renderer, ToviPluginID pluginID, int autoCommit) {
    return 0;
}
TOVI_API double Tovi_ToviRenderer_getCurrentEventTime(ToviRenderer* renderer) { return 0.0; }
TOVI_API int Tovi_ToviRenderer_setRenderMode(ToviRenderer* renderer, int mode) { return -1; }
TOVI_API int Tovi_ToviRenderer_getRenderMode(ToviRenderer* renderer) { return -2; }
TOVI_API int Tovi_ToviRenderer_setInteractiveSampleLevel(ToviRenderer* renderer, int sampleLevel, int autoCommit) {
    return 0;
}
TOVI_API int Tovi_ToviRenderer_setInteractiveNoiseThreshold(ToviRenderer* renderer, float threshold, int autoCommit) {
    return 0;
}
TOVI_API int Tovi_ToviRenderer_setInteractiveTimeout(ToviRenderer* renderer, int timeoutMs, int autoCommit) {
    return 0;
}
TOVI_API int Tovi_ToviRenderer_setKeepInteractiveRunning(ToviRenderer* renderer, int keepRunning) { return -1; }
TOVI_API int Tovi_ToviRenderer_getKeepInteractiveRunning(ToviRenderer* renderer) { return 0; }
TOVI_API int Tovi_ToviRenderer_setDREnabled(ToviRenderer* renderer, int drEnabled, int enableBroadcastListener) {
    return 0;
}
TOVI_API int Tovi_ToviRenderer_getDREnabled(ToviRenderer* renderer) { return 0; }
TOVI_API int Tovi_ToviRenderer_setInProcess(ToviRenderer* renderer, int inProcess) { return -1; }
TOVI_API int Tovi_ToviRenderer_getInProcess(ToviRenderer* renderer) { return 0; }
TOVI_API int Tovi_ToviRenderer_enableDRClient(ToviRenderer* renderer, const char* dispatcher, const char* httpProxy, int localRendering, int withBroadcastListener, int pipelinedUpstream, int enableAssigningWUsAsBackups, int immediatelyForwardReadySplitBucketSubunits, int connectTimeout, int upstreamChannels, int verboseLevel) {
    return 0;
}
TOVI_API int Tovi_ToviRenderer_disableDRClient(ToviRenderer* renderer) { return 0; }
TOVI_API int Tovi_ToviRenderer_isDRClientEnabled(ToviRenderer* renderer) { return 0; }
TOVI_API int Tovi_ToviRenderer_setNumThreads(ToviRenderer* renderer, int numThreads) { return -1; }
TOVI_API int Tovi_ToviRenderer_getNumThreads(ToviRenderer* renderer) { return -1; }
TOVI_API int Tovi_ToviRenderer_clearAllFrameValuesUpToTime(ToviRenderer* renderer, double time) { return -1; }
TOVI_API int Tovi_ToviRenderer_clearFrameValuesUpToTime(ToviRenderer* renderer, double time) { return -1; }
TOVI_API int Tovi_ToviRenderer_showFrameBuffer(ToviRenderer* renderer, int show, int activate) { return -1; }
TOVI_API int Tovi_ToviRenderer_isFrameBufferShown(ToviRenderer* renderer) { return 0; }
TOVI_API int Tovi_ToviRenderer_enableTFBInteractivity(ToviRenderer* renderer, int enable) { return -1; }
TOVI_API int Tovi_ToviRenderer_isTFBInteractivityEnabled(ToviRenderer* renderer) { return 0; }
TOVI_API int Tovi_ToviRenderer_enableVisualDebugger(ToviRenderer* renderer, int enable) { return -1; }
TOVI_API int Tovi_ToviRenderer_isVisualDebuggerEnabled(ToviRenderer* renderer) { return 0; }
TOVI_API int Tovi_ToviRenderer_enableTFBConfirmation(ToviRenderer* renderer, int enable) { return -1; }
TOVI_API int Tovi_ToviRenderer_isTFBConfirmationEnabled(ToviRenderer* renderer) { return 0; }
TOVI_API int Tovi_ToviRenderer_setTfbPositionAndSize(ToviRenderer* renderer, const ToviTfbPositionAndSize* rect) {
    return 0;
}
TOVI_API int Tovi_ToviRenderer_getTfbPositionAndSize(ToviRenderer* renderer, ToviTfbPositionAndSize* rect) {
    return 0;
}
TOVI_API int Tovi_ToviRenderer_setTfbAlwaysOnTop(ToviRenderer* renderer, int onTop) { return -1; }
TOVI_API void* Tovi_ToviRenderer_getTfbState(ToviRenderer* renderer, size_t* size, int parts) { return NULL; }
TOVI_API int Tovi_ToviRenderer_setTfbState(ToviRenderer* renderer, const void* state, size_t size, int parts) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_resetTfbState(ToviRenderer* renderer) { return -1; }
TOVI_API void* Tovi_ToviRenderer_getTfbPersistentState(ToviRenderer* renderer, size_t* size) { return NULL; }
TOVI_API int Tovi_ToviRenderer_setTfbPersistentState(ToviRenderer* renderer, const void* state, size_t size) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_getTfbSettings(ToviRenderer* renderer, ToviCharString* settingsJson) { return -1; }
TOVI_API int Tovi_ToviRenderer_setTfbSettings(ToviRenderer* renderer, const char* settingsJson) { return -1; }
TOVI_API int Tovi_ToviRenderer_getTfbLayers(ToviRenderer* renderer, ToviCharString* layersJson) { return -1; }
TOVI_API int Tovi_ToviRenderer_setTfbLayers(ToviRenderer* renderer, const char* layersJson) { return -1; }
TOVI_API int Tovi_ToviRenderer_resetToDefaultTfbLayers(ToviRenderer* renderer) { return -1; }
TOVI_API int Tovi_ToviRenderer_getTfbLayersCount(ToviRenderer* renderer) { return -1; }
TOVI_API int Tovi_ToviRenderer_getAllLayersListIDs(ToviRenderer* renderer, ToviLayerID** layerIDs) { return -1; }
TOVI_API ToviVector* Tovi_ToviRenderer_getCreatableLayerClasses(ToviRenderer* renderer) { return NULL; }
TOVI_API int Tovi_ToviRenderer_loadAllLayers(ToviRenderer* renderer, const char* fileName) { return -1; }
TOVI_API int Tovi_ToviRenderer_saveAllLayers(ToviRenderer* renderer, const char* fileName) { return -1; }
TOVI_API int Tovi_ToviRenderer_bakeLayersToLUT(ToviRenderer* renderer, const char* fileName) { return -1; }
TOVI_API int Tovi_ToviRenderer_getAllLayers(ToviRenderer* renderer, ToviCharString* layersJson) { return -1; }
TOVI_API int Tovi_ToviRenderer_setAllLayers(ToviRenderer* renderer, const char* layersJson) { return -1; }
TOVI_API ToviLayerID Tovi_ToviRenderer_createLayer(ToviRenderer* renderer, const char* layerClass, ToviLayerID parentID) {
    return 0;
}
TOVI_API int Tovi_ToviRenderer_deleteLayer(ToviRenderer* renderer, ToviLayerID layerID) { return -1; }
TOVI_API ToviLayerID Tovi_ToviRenderer_getRootLayerID(ToviRenderer* renderer) { return 0; }
TOVI_API ToviLayerID Tovi_ToviRenderer_getDisplayCorrectionLayerID(ToviRenderer* renderer) { return 0; }
TOVI_API ToviLayerID Tovi_ToviRenderer_getStampLayerID(ToviRenderer* renderer) { return 0; }
TOVI_API ToviLayerID Tovi_ToviRenderer_getSourceLayerID(ToviRenderer* renderer) { return 0; }
TOVI_API ToviLayerID Tovi_ToviRenderer_getDenoiserLayerID(ToviRenderer* renderer) { return 0; }
TOVI_API ToviLayerID Tovi_ToviRenderer_getSharpenBlurLayerID(ToviRenderer* renderer) { return 0; }
TOVI_API ToviLayerID Tovi_ToviRenderer_getLensEffectsLayerID(ToviRenderer* renderer) { return 0; }
TOVI_API ToviLayerID Tovi_ToviRenderer_getLightMixLayerID(ToviRenderer* renderer) { return 0; }
TOVI_API int Tovi_ToviRenderer_findAllLayerIDsWithLayerClass(ToviRenderer* renderer, const char* layerClass, ToviLayerID** layerIDs) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_findAllLayerIDsWithUserName(ToviRenderer* renderer, const char* userName, ToviLayerID** layerIDs) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_getAllEnabledLayerIDs(ToviRenderer* renderer, ToviLayerID** layerIDs) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_getAllBlendableLayerIDs(ToviRenderer* renderer, ToviLayerID** layerIDs) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_lockLayers(ToviRenderer* renderer) { return -1; }
TOVI_API int Tovi_ToviRenderer_tryLockLayers(ToviRenderer* renderer) { return 0; }
TOVI_API int Tovi_ToviRenderer_unlockLayers(ToviRenderer* renderer) { return -1; }
TOVI_API int Tovi_ToviRenderer_getUniqueTreePathID(ToviRenderer* renderer, ToviLayerID layerID, ToviCharString* treePath) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_getLayerClass(ToviRenderer* renderer, ToviLayerID layerID, ToviCharString* layerClass) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_getLayerEnabled(ToviRenderer* renderer, ToviLayerID layerID) { return -1; }
TOVI_API int Tovi_ToviRenderer_setLayerEnabled(ToviRenderer* renderer, ToviLayerID layerID, int enabled) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_canDeleteLayer(ToviRenderer* renderer, ToviLayerID layerID) { return -1; }
TOVI_API ToviLayerID Tovi_ToviRenderer_getLayerParentID(ToviRenderer* renderer, ToviLayerID layerID) { return 0; }
TOVI_API int Tovi_ToviRenderer_getLayerUserName(ToviRenderer* renderer, ToviLayerID layerID, ToviCharString* userName) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setLayerUserName(ToviRenderer* renderer, ToviLayerID layerID, const char* userName) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_getLayerChildrenCount(ToviRenderer* renderer, ToviLayerID layerID) { return -1; }
TOVI_API int Tovi_ToviRenderer_getLayerChildren(ToviRenderer* renderer, ToviLayerID layerID, ToviLayerID** childIDs) {
    return -1;
}
TOVI_API ToviLayerID Tovi_ToviRenderer_getLayerChild(ToviRenderer* renderer, ToviLayerID layerID, int index) {
    return 0;
}
TOVI_API int Tovi_ToviRenderer_getLayerOpacity(ToviRenderer* renderer, ToviLayerID layerID, float* opacity) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setLayerOpacity(ToviRenderer* renderer, ToviLayerID layerID, float opacity) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_canLayerBlend(ToviRenderer* renderer, ToviLayerID layerID) { return -1; }
TOVI_API int Tovi_ToviRenderer_getLayerBlendMode(ToviRenderer* renderer, ToviLayerID layerID) { return -1; }
TOVI_API int Tovi_ToviRenderer_setLayerBlendMode(ToviRenderer* renderer, ToviLayerID layerID, int blendMode) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_getLayerPropertiesCount(ToviRenderer* renderer, ToviLayerID layerID) { return -1; }
TOVI_API ToviVector* Tovi_ToviRenderer_getLayerPropertyNames(ToviRenderer* renderer, ToviLayerID layerID) {
    return NULL;
}
TOVI_API int Tovi_ToviRenderer_getLayerPropertyDisplayName(ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName, ToviCharString* displayName) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_resetLayerPropertyToDefault(ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName) {
    return -1;
}
TOVI_API ToviVector* Tovi_ToviRenderer_getLayerPropertiesReadOnly(ToviRenderer* renderer, ToviLayerID layerID) {
    return NULL;
}
TOVI_API int Tovi_ToviRenderer_isLayerPropertyReadOnly(ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName) {
    return -1;
}
TOVI_API ToviVector* Tovi_ToviRenderer_getLayerPropertiesOfType(ToviRenderer* renderer, ToviLayerID layerID, int propertyType) {
    return NULL;
}
TOVI_API int Tovi_ToviRenderer_getLayerPropertyType(ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_getLayerPropertyFlags(ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_getLayerPropertyBoolValue(ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName, int* value) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setLayerPropertyBoolValue(ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName, int value) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_getLayerPropertyIntValue(ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName, int* value) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setLayerPropertyIntValue(ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName, int value) {
    return -1;
}
TOVI_API ToviVector* Tovi_ToviRenderer_getLayerEnumProperties(ToviRenderer* renderer, ToviLayerID layerID) {
    return NULL;
}
TOVI_API int Tovi_ToviRenderer_getLayerPropertyIntEnumValues(ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName, char** labels, int32_t** values) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_getLayerPropertyIntEnumLabel(ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName, ToviCharString* label) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setLayerPropertyIntByEnumLabel(ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName, const char* label) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_getLayerPropertyIntEnumIndex(ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setLayerPropertyIntByEnumIndex(ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName, int index) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_getLayerPropertyFloatValue(ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName, float* value) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setLayerPropertyFloatValue(ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName, float value) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_getLayerPropertyStringValue(ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName, ToviCharString* value) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setLayerPropertyStringValue(ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName, const char* value) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_getLayerPropertyColorValue(ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName, float rgb[3]) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setLayerPropertyColorValue(ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName, const float rgb[3]) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_getLayerPropertyStampRawStringValue(ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName, ToviCharString* value) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setLayerPropertyStampRawStringValue(ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName, const char* value) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_getLayerPropertyStampFontDescValue(ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName, ToviLayerStampFontDesc* value) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setLayerPropertyStampFontDescValue(ToviRenderer* renderer, ToviLayerID layerID, const char* propertyName, const ToviLayerStampFontDesc* value) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_TFBHistory_getHistoryWindowStatus(ToviRenderer* renderer) { return -1; }
TOVI_API int Tovi_ToviRenderer_TFBHistory_setHistoryWindowStatus(ToviRenderer* renderer, int shown) { return -1; }
TOVI_API int Tovi_ToviRenderer_TFBHistory_getHistoryPanelStatus(ToviRenderer* renderer) { return -1; }
TOVI_API int Tovi_ToviRenderer_TFBHistory_setHistoryPanelStatus(ToviRenderer* renderer, int shown) { return -1; }
TOVI_API int Tovi_ToviRenderer_TFBHistory_getHistoryMaximumSize(ToviRenderer* renderer) { return -1; }
TOVI_API int Tovi_ToviRenderer_TFBHistory_setHistoryMaximumSize(ToviRenderer* renderer, int maximumSizeMB) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_TFBHistory_getHistoryTemporaryPath(ToviRenderer* renderer, ToviCharString* path) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_TFBHistory_setHistoryTemporaryPath(ToviRenderer* renderer, const char* path) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_TFBToolbar_getMainToolbarButtonStatus(ToviRenderer* renderer, int button) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_TFBToolbar_setMainToolbarButtonStatus(ToviRenderer* renderer, int button, int status) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_TFBToolbar_getBucketLockPoint(ToviRenderer* renderer, int* x, int* y) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_TFBToolbar_setBucketLockPoint(ToviRenderer* renderer, int x, int y) { return -1; }
TOVI_API int Tovi_ToviRenderer_TFBToolbar_getBucketLockedStatus(ToviRenderer* renderer) { return -1; }
TOVI_API int Tovi_ToviRenderer_TFBToolbar_setBucketLockedStatus(ToviRenderer* renderer, int locked) { return -1; }
TOVI_API int Tovi_ToviRenderer_TFBToolbar_getTestResolution(ToviRenderer* renderer) { return -1; }
TOVI_API int Tovi_ToviRenderer_TFBToolbar_setTestResolution(ToviRenderer* renderer, int testResolution) {
    return -1;
}
TOVI_API ToviVector* Tovi_ToviRenderer_TFBToolbar_getChannelNames(ToviRenderer* renderer) { return NULL; }
TOVI_API int Tovi_ToviRenderer_TFBToolbar_getCurrentChannel(ToviRenderer* renderer) { return -1; }
TOVI_API int Tovi_ToviRenderer_TFBToolbar_setCurrentChannel(ToviRenderer* renderer, int channelIndex) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_TFBToolbar_getRenderRegionButtonStatus(ToviRenderer* renderer) { return -1; }
TOVI_API int Tovi_ToviRenderer_TFBToolbar_setRenderRegionButtonStatus(ToviRenderer* renderer, int status) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_loadTfbColorCorrectionsPreset(ToviRenderer* renderer, const char* fileName) {
    return 0;
}
TOVI_API int Tovi_ToviRenderer_saveTfbColorCorrectionsPreset(ToviRenderer* renderer, const char* fileName) {
    return 0;
}
TOVI_API int Tovi_ToviRenderer_setTfbTitlePrefix(ToviRenderer* renderer, const char* prefix) { return 0; }
TOVI_API int Tovi_ToviRenderer_setTfbProjectPath(ToviRenderer* renderer, const char* path) { return 0; }
TOVI_API int Tovi_ToviRenderer_enableTfbProgressBar(ToviRenderer* renderer, int enable) { return -1; }
TOVI_API int Tovi_ToviRenderer_setTfbProgressText(ToviRenderer* renderer, const char* text) { return -1; }
TOVI_API int Tovi_ToviRenderer_setTfbProgressValue(ToviRenderer* renderer, float value) { return -1; }
TOVI_API int Tovi_ToviRenderer_setTfbProgressTextAndValue(ToviRenderer* renderer, const char* text, float value) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setTfbContextMenuItems(ToviRenderer* renderer, const ToviTfbContextMenuItem* items, int count) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setTfbContextMenuSelectedCallback(ToviRenderer* renderer, const ToviCallbackRecord* callback) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setTfbContextMenuItemValue(ToviRenderer* renderer, int commandId, int value) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_getTfbContextMenuItemValue(ToviRenderer* renderer, int commandId, int* value) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_fillSettingsTFB(ToviRenderer* renderer, const char* instanceName, int autoCommit) {
    return 0;
}
TOVI_API int Tovi_ToviRenderer_applySettingsTFB(ToviRenderer* renderer) { return 0; }
TOVI_API int Tovi_ToviRenderer_loadTfbImage(ToviRenderer* renderer, const char* fileName) { return 0; }
TOVI_API int Tovi_ToviRenderer_clearTfbImage(ToviRenderer* renderer) { return -1; }
TOVI_API int Tovi_ToviRenderer_logTfbMessage(ToviRenderer* renderer, int level, const char* text) { return -1; }
TOVI_API int Tovi_ToviRenderer_render(ToviRenderer* renderer) { return -1; }
TOVI_API int Tovi_ToviRenderer_startSync(ToviRenderer* renderer) { return -1; }
TOVI_API int Tovi_ToviRenderer_renderSequence(ToviRenderer* renderer, const ToviFrameRange* ranges, int count) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_continueSequence(ToviRenderer* renderer) { return -1; }
TOVI_API int Tovi_ToviRenderer_getState(ToviRenderer* renderer) { return -1; }
TOVI_API int Tovi_ToviRenderer_pauseRT(ToviRenderer* renderer, int pause) { return -1; }
TOVI_API int Tovi_ToviRenderer_getPauseRTStatus(ToviRenderer* renderer) { return 0; }
TOVI_API int Tovi_ToviRenderer_getRTStatistics(ToviRenderer* renderer, ToviRTStatistics** stats) { return -1; }
TOVI_API int Tovi_ToviRenderer_getBoundingBox(ToviRenderer* renderer, ToviBoundingBox* box) { return -1; }
TOVI_API int Tovi_ToviRenderer_setCurrentCamera(ToviRenderer* renderer, const char* pluginName) { return -1; }
TOVI_API int Tovi_ToviRenderer_setCurrentCameraByID(ToviRenderer* renderer, ToviPluginID pluginID) { return -1; }
TOVI_API int Tovi_ToviRenderer_getCurrentCamera(ToviRenderer* renderer, ToviPluginID* pluginID) { return -1; }
TOVI_API int Tovi_ToviRenderer_setCameraName(ToviRenderer* renderer, const char* name) { return -1; }
TOVI_API int Tovi_ToviRenderer_getCameraName(ToviRenderer* renderer, ToviCharString* name) { return -1; }
TOVI_API int Tovi_ToviRenderer_stop(ToviRenderer* renderer) { return -1; }
TOVI_API ToviImage* Tovi_ToviRenderer_getImage(ToviRenderer* renderer, const ToviImageRequest* request) {
    return NULL;
}
TOVI_API int Tovi_ToviRenderer_isRenderEnded(ToviRenderer* renderer) { return 0; }
TOVI_API int Tovi_ToviRenderer_isSequenceEnded(ToviRenderer* renderer) { return 0; }
TOVI_API int Tovi_ToviRenderer_isFrameSkipped(ToviRenderer* renderer) { return 0; }
TOVI_API int Tovi_ToviRenderer_waitRenderEnd(ToviRenderer* renderer, int timeoutMs) { return 0; }
TOVI_API int Tovi_ToviRenderer_waitSequenceEnd(ToviRenderer* renderer, int timeoutMs) { return 0; }
TOVI_API int Tovi_ToviRenderer_waitTFBClosed(ToviRenderer* renderer, int timeoutMs) { return 0; }
TOVI_API ToviPluginID Tovi_ToviRenderer_pickPluginByXY(ToviRenderer* renderer, int x, int y, int timeoutMs) {
    return 0;
}
TOVI_API int Tovi_ToviRenderer_pickPluginsByXY(ToviRenderer* renderer, int x, int y, int maxCount, int timeoutMs, ToviPickedPlugin** picks) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_bucketRenderNearest(ToviRenderer* renderer, int x, int y) { return -1; }
TOVI_API int Tovi_ToviRenderer_setAllocatorData(ToviRenderer* renderer, void* data) { return -1; }
TOVI_API void* Tovi_ToviRenderer_getAllocatorData(ToviRenderer* renderer) { return NULL; }
TOVI_API int Tovi_ToviRenderer_setBucketInitCallback(ToviRenderer* renderer, const ToviCallbackRecord* callback) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setBucketReadyCallback(ToviRenderer* renderer, const ToviCallbackRecord* callback) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setBucketFailedCallback(ToviRenderer* renderer, const ToviCallbackRecord* callback) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setImageUpdatedCallback(ToviRenderer* renderer, const ToviCallbackRecord* callback) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setStateChangedCallback(ToviRenderer* renderer, const ToviCallbackRecord* callback) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setDumpMessageCallback(ToviRenderer* renderer, const ToviCallbackRecord* callback, int minLogLevel) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setRendererCloseCallback(ToviRenderer* renderer, const ToviCallbackRecord* callback) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setProgressCallback(ToviRenderer* renderer, const ToviCallbackRecord* callback) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setRenderViewChangedCallback(ToviRenderer* renderer, const ToviCallbackRecord* callback) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setRenderLastCallback(ToviRenderer* renderer, const ToviCallbackRecord* callback) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setRenderInteractiveStartCallback(ToviRenderer* renderer, const ToviCallbackRecord* callback) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setTFBClosedCallback(ToviRenderer* renderer, const ToviCallbackRecord* callback) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setPostEffectsUpdatedCallback(ToviRenderer* renderer, const ToviCallbackRecord* callback) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setShowMessagesWindowCallback(ToviRenderer* renderer, const ToviCallbackRecord* callback) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setDRHostConnectedCallback(ToviRenderer* renderer, const ToviCallbackRecord* callback) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setDRHostDisconnectedCallback(ToviRenderer* renderer, const ToviCallbackRecord* callback) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setLightMixTransferToSceneCallback(ToviRenderer* renderer, const ToviCallbackRecord* callback) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setUploadToCollaborationCallback(ToviRenderer* renderer, const ToviCallbackRecord* callback) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setEnhanceOnCollaborationCallback(ToviRenderer* renderer, const ToviCallbackRecord* callback) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setTFBPauseIPRNotifyCallback(ToviRenderer* renderer, const ToviCallbackRecord* callback) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setTFBUpdateIPRNotifyCallback(ToviRenderer* renderer, const ToviCallbackRecord* callback) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setTFBCopyToHostFrameBufferNotifyCallback(ToviRenderer* renderer, const ToviCallbackRecord* callback) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setTFBAddRenderElementToSceneCallback(ToviRenderer* renderer, const ToviCallbackRecord* callback) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setTFBClickCallback(ToviRenderer* renderer, const ToviCallbackRecord* callback) {
    return -1;
}
TOVI_API double Tovi_ToviRenderer_setRTImageUpdateDifference(ToviRenderer* renderer, double difference) {
    return -1.0;
}
TOVI_API int Tovi_ToviRenderer_setRTImageUpdateTimeout(ToviRenderer* renderer, int timeoutMs) { return -1; }
TOVI_API int Tovi_ToviRenderer_setKeepRTframesInCallback(ToviRenderer* renderer, int keep) { return -1; }
TOVI_API int Tovi_ToviRenderer_setKeepBucketsInCallback(ToviRenderer* renderer, int keep) { return -1; }
TOVI_API int Tovi_ToviRenderer_setImageUpdatedHasBuffer(ToviRenderer* renderer, int hasBuffer) { return -1; }
TOVI_API int Tovi_ToviRenderer_getImageUpdatedHasBuffer(ToviRenderer* renderer) { return 0; }
TOVI_API int Tovi_ToviRenderer_setBucketReadyHasBuffer(ToviRenderer* renderer, int hasBuffer) { return -1; }
TOVI_API int Tovi_ToviRenderer_getBucketReadyHasBuffer(ToviRenderer* renderer) { return 0; }
TOVI_API int Tovi_ToviRenderer_clientAddHosts(ToviRenderer* renderer, const char* hosts) { return -1; }
TOVI_API int Tovi_ToviRenderer_clientRemoveHosts(ToviRenderer* renderer, const char* hosts) { return -1; }
TOVI_API int Tovi_ToviRenderer_clientResetHosts(ToviRenderer* renderer, const char* hosts) { return -1; }
TOVI_API int Tovi_ToviRenderer_clientGetAllHosts(ToviRenderer* renderer, ToviCharString* hosts) { return -1; }
TOVI_API int Tovi_ToviRenderer_clientGetActiveHosts(ToviRenderer* renderer, ToviCharString* hosts) { return -1; }
TOVI_API int Tovi_ToviRenderer_clientGetInactiveHosts(ToviRenderer* renderer, ToviCharString* hosts) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_getImageSize(ToviRenderer* renderer, int* width, int* height) { return -1; }
TOVI_API int Tovi_ToviRenderer_setImageSize(ToviRenderer* renderer, int width, int height, int autoCommit) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setImageSizeEx(ToviRenderer* renderer, int width, int height, int resetRenderRegion, int resetCropRegion, int autoCommit) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_getRenderRegion(ToviRenderer* renderer, ToviRenderRegion* region) { return -1; }
TOVI_API int Tovi_ToviRenderer_setRenderRegion(ToviRenderer* renderer, const ToviRenderRegion* region, int autoCommit) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_getCropRegion(ToviRenderer* renderer, ToviCropRegion* region) { return -1; }
TOVI_API int Tovi_ToviRenderer_setCropRegion(ToviRenderer* renderer, const ToviCropRegion* region, int autoCommit) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_saveTfbToFile(ToviRenderer* renderer, const char* fileName, const ToviImageWriterFlags* flags) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_getDeviceListMetal(ToviRenderer* renderer, ToviComputeDevice** devices, int recordSize) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_getDeviceListMetalRT(ToviRenderer* renderer, ToviComputeDevice** devices, int recordSize) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_getDeviceListOptix(ToviRenderer* renderer, ToviComputeDevice** devices, int recordSize) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_getDeviceListCUDA(ToviRenderer* renderer, ToviComputeDevice** devices, int recordSize) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_getDeviceListDenoiser(ToviRenderer* renderer, ToviComputeDevice** devices, int recordSize) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setDeviceListMetal(ToviRenderer* renderer, const int32_t* indices, int count) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setDeviceListMetalRT(ToviRenderer* renderer, const int32_t* indices, int count) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setDeviceListOptix(ToviRenderer* renderer, const int32_t* indices, int count) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setDeviceListCUDA(ToviRenderer* renderer, const int32_t* indices, int count) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setDeviceListDenoiser(ToviRenderer* renderer, const int32_t* indices, int count) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setGPUDevicesEnvironmentVariable(ToviRenderer* renderer) { return -1; }
TOVI_API int Tovi_ToviRenderer_saveIrradianceMapFile(ToviRenderer* renderer, const char* fileName) { return -1; }
TOVI_API int Tovi_ToviRenderer_saveLightCacheFile(ToviRenderer* renderer, const char* fileName) { return -1; }
TOVI_API int Tovi_ToviRenderer_savePhotonMapFile(ToviRenderer* renderer, const char* fileName) { return -1; }
TOVI_API int Tovi_ToviRenderer_saveCausticsFile(ToviRenderer* renderer, const char* fileName) { return -1; }
TOVI_API int Tovi_ToviRenderer_setResumableRendering(ToviRenderer* renderer, int enable, const char* outputFile, int compressProgressiveFiles, int deleteResumableFileOnSuccess, int progressiveAutoSaveSeconds) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setDenoiserOptions(ToviRenderer* renderer, const ToviDenoiserOptions* options) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setBitmapCache(ToviRenderer* renderer, int enable) { return -1; }
TOVI_API int Tovi_ToviRenderer_denoiseNow(ToviRenderer* renderer, const ToviDenoiseRequest* request) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_updateLightingAnalysis(ToviRenderer* renderer) { return -1; }
TOVI_API int Tovi_ToviRenderer_getAutoExposureResult(ToviRenderer* renderer, double* autoExposure, double* autoWhiteBalance) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_setToviProfiler(ToviRenderer* renderer, const ToviProfilerOptions* options) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_addToviProfilerMetadata(ToviRenderer* renderer, const char* category, const char* key, const char* value) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_initAndStartToviProfiler(ToviRenderer* renderer, const ToviProfilerOptions* options) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_hasToviProfilerStartedManually(ToviRenderer* renderer) { return 0; }
TOVI_API int Tovi_ToviRenderer_startDurationEvent(ToviRenderer* renderer, const char* eventName, int threadIndex) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_endDurationEvent(ToviRenderer* renderer, const char* eventName, int threadIndex) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_writeAndFreeToviProfiler(ToviRenderer* renderer) { return -1; }
TOVI_API int Tovi_ToviRenderer_setUserSceneName(ToviRenderer* renderer, const char* name) { return -1; }
TOVI_API int Tovi_ToviRenderer_getUserSceneName(ToviRenderer* renderer, ToviCharString* name) { return -1; }
TOVI_API int Tovi_ToviRenderer_setDebugShadingSelection(ToviRenderer* renderer, const ToviPluginID* plugins, int count) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_halfResolutionMode(ToviRenderer* renderer) { return 0; }
TOVI_API int Tovi_ToviRenderer_readProxyPreview(ToviRenderer* renderer, ToviPluginID pluginID, int readFlags, ToviProxyData* data) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_readProxyPrepare(ToviRenderer* renderer, ToviPluginID pluginID, int readFlags, ToviProxyData* data, ToviProxyReader** reader) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_readProxyFinalize(ToviRenderer* renderer, ToviProxyReader* reader, ToviProxyData* data) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_readProxyFullPrepare(ToviRenderer* renderer, ToviPluginID pluginID, int readFlags, ToviProxyData* data, ToviProxyReader** reader) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_readProxyFullFinalize(ToviRenderer* renderer, ToviProxyReader* reader, ToviProxyData* data) {
    return -1;
}
TOVI_API int Tovi_ToviRenderer_createProxyFile(ToviRenderer* renderer, const ToviPluginID* pluginIDs, int count, const ToviProxyCreateParams* params, ToviCharString* errorText) {
    reportUnsupported(errorText);
    return -1;
}
TOVI_API int Tovi_ToviRenderer_readScatterData(ToviRenderer* renderer, ToviPluginID pluginID, float** transforms, int32_t** ints, int* transformCount, int* intCount) {
    return 0;
}
TOVI_API int Tovi_ToviRenderer_readGaussianData(ToviRenderer* renderer, ToviPluginID pluginID, ToviGaussianData** data, float* bbox) {
    return 0;
}
TOVI_API int Tovi_ToviRenderer_readScatterPreset(ToviRenderer* renderer, const ToviScatterPresetParams* params, const ToviScatterPresetCallback* callback) {
    return 0;
}
TOVI_API int Tovi_ToviRenderer_readGeomHairData(ToviRenderer* renderer, ToviPluginID pluginID, float** vertices, int32_t** ints, int* vertexCount, int* intCount, int countHint) {
    return 0;
}
TOVI_API int Tovi_ToviRenderer_getLuminaireFieldHandle(ToviRenderer* renderer, ToviPluginID pluginID, ToviLuminaireField** field) {
    return 0;
}
TOVI_API int Tovi_ToviRenderer_getIESPreviewData(ToviRenderer* renderer, ToviPluginID pluginID, float** vertices, int32_t** indices, int* vertexCount, int* triangleCount) {
    return 0;
}
