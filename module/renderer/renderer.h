// tovi.ToviRenderer (also tovi.Renderer): the Python object that owns one SDK renderer.
#pragma once

#define PY_SSIZE_T_CLEAN
#include <Python.h>

#include <cstdint>
#include <cstring>
#include <map>
#include <vector>

#include "tovi_sdk.h"

namespace tovi {

// One wrapper per plugin and output. Borrowed references: a wrapper removes its own entry when
// it is destroyed.
struct PluginCacheEntry {
    PyObject* wrapper;
    int32_t outputIndex;
};
using PluginCache = std::multimap<uint64_t, PluginCacheEntry>;

// Class objects by name; the key is the class object's own name text. Borrowed references.
struct TextLess {
    bool operator()(const char* a, const char* b) const { return std::strcmp(a, b) < 0; }
};
using ClassCache = std::map<const char*, PyObject*, TextLess>;

// The SDK events a renderer delivers to Python, one callback slot each.
enum class RendererEvent {
    BucketInit,
    BucketReady,
    BucketFailed,
    StateChanged,
    ProgressiveImageUpdated,
    LogMessage,
    Progress,
    RenderViewChanged,
    TFBRenderLast,
    TFBRenderInteractive,
    TFBClosed,
    PostEffectsUpdated,
    TFBShowMessagesWindow,
    HostConnected,
    HostDisconnected,
    TFBContextMenuSelected,
    LightMixTransferToScene,
    UploadToCollaboration,
    EnhanceOnCollaboration,
    TFBPauseInteractive,
    TFBUpdateInteractive,
    TFBCopyToHostFrameBuffer,
    TFBAddRenderElementToScene,
    TFBClick,
    Count
};
constexpr int rendererEventCount = static_cast<int>(RendererEvent::Count);

struct RendererObject {
    PyObject_HEAD
    PluginCache* pluginCache;
    ClassCache* classCache;
    std::vector<uint64_t>* scratchList;
    ToviRenderer* rendererHandle;  // null once closed
    // Created on first use by their attributes.
    PyObject* plugins;
    PyObject* classes;
    PyObject* renderElements;
    PyObject* tfb;
    PyObject* profiler;
    PyObject* categories;
    PyObject* callbacks[rendererEventCount];
    // The thread state SDK threads take to run this renderer's callbacks.
    PyThreadState* callbackThreadState;
    bool autoCommit;
    // Set while a plugin value is printed, so that nested plugins print by name.
    bool reprInProgress;
    // One borrowed pointer per SDK category index to its live category object.
    std::vector<PyObject*>* categoryTable;
};

extern PyTypeObject ToviRendererType;

inline bool isRenderer(PyObject* object) { return PyObject_TypeCheck(object, &ToviRendererType); }
inline RendererObject* asRenderer(PyObject* object) { return reinterpret_cast<RendererObject*>(object); }
inline ToviRenderer* rendererHandle(PyObject* renderer) { return asRenderer(renderer)->rendererHandle; }
inline int autoCommit(PyObject* renderer) { return asRenderer(renderer)->autoCommit ? 1 : 0; }

}  // namespace tovi

// For host programs that embed Python and own an SDK renderer: a new ToviRenderer around
// `handle`, holding one SDK reference of its own. The caller holds the interpreter lock.
extern "C" Py_EXPORTED_SYMBOL PyObject* PyToviRenderer_createFromHandle(void* handle);
