// tovi.ToviRenderer: the record, its slots, its methods and attributes, its type object.
#include "renderer/renderer.h"

#include <cctype>
#include <new>
#include <string>

#include "core/errors.h"
#include "core/marshal.h"
#include "core/sdk_loader.h"
#include "plugins/categories.h"
#include "plugins/plugin_class.h"
#include "plugins/plugins_collection.h"
#include "renderer/scene_files.h"

namespace tovi {

namespace {

// ---- options ----

struct BooleanOption {
    const char* keyword;
    int byte;
    uint8_t bit;
    bool byDefault;
};

// In the order of the constructor's keyword list.
constexpr BooleanOption booleanOptions[] = {
    {"enableFrameBuffer", 0, TOVI_RENDERER_FLAGS0_ENABLE_FRAME_BUFFER, true},
    {"showFrameBuffer", 0, 0x02, true},
    {"useDefaultTfbTheme", 0, 0x08, true},
    {"showTfbButtonInteractiveStart", 0, 0x10, false},
    {"previewRenderer", 0, 0x20, false},
    {"allowInvalidCharactersInPluginNames", 0, 0x40, false},
    {"hideToSceneButton", 1, 0x01, false},
    {"useTfbLog", 1, 0x02, true},
    {"enableTfbPlugins", 1, 0x04, false},
    {"showTfbButtonDebugShading", 1, 0x08, false},
    {"showTfbButtonTestResolution", 1, 0x10, false},
    {"showTfbButtonIPRPause", 1, 0x20, false},
    {"showTfbButtonIPRUpdate", 1, 0x40, false},
    {"showTfbButtonCopyToHostFrameBuffer", 1, 0x80, false},
    {"showTfbAddLightMixREToSceneButton", 2, 0x01, false},
    {"showTfbAddDenoiserREToSceneButton", 2, 0x02, false},
    {"forwardProgressToTfbProgressBar", 2, 0x04, false},
};
constexpr int booleanOptionCount = sizeof(booleanOptions) / sizeof(booleanOptions[0]);

uint8_t& flagByte(ToviRendererOptions& options, int byte) {
    return byte == 0 ? options.flags0 : byte == 1 ? options.flags1 : options.flags2;
}

// A failed truth test sets bit 0 of a byte (set on any non-zero result) and clears the others
// (set on a positive result only).
void applyBoolean(ToviRendererOptions& options, const BooleanOption& option, PyObject* value) {
    int truth = PyObject_IsTrue(value);
    if (truth < 0) PyErr_Clear();
    bool set = option.bit == 0x01 ? truth != 0 : truth > 0;
    uint8_t& flags = flagByte(options, option.byte);
    flags = set ? (flags | option.bit) : (flags & ~option.bit);
}

bool drawStyleFromText(const char* text, int32_t& style) {
    std::string lower(text);
    for (char& c : lower) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    const struct {
        const char* name;
        int32_t style;
    } styles[] = {{"", TOVI_TFB_DRAW_STYLE_AUTO},           {"auto", TOVI_TFB_DRAW_STYLE_AUTO},
                  {"standalone", TOVI_TFB_DRAW_STYLE_STANDALONE}, {"3dsmax", TOVI_TFB_DRAW_STYLE_3DSMAX},
                  {"3dsmaxqt", TOVI_TFB_DRAW_STYLE_3DSMAXQT},  {"maya", TOVI_TFB_DRAW_STYLE_MAYA}};
    for (const auto& entry : styles) {
        if (lower == entry.name) {
            style = entry.style;
            return true;
        }
    }
    return false;
}

// Fills `options` from the constructor's arguments; false with the Python error set.
bool parseOptions(PyObject* args, PyObject* keywords, ToviRendererOptions& options) {
    static const char* keywordList[booleanOptionCount + 4] = {};
    if (!keywordList[0]) {
        for (int index = 0; index < booleanOptionCount; ++index) keywordList[index] = booleanOptions[index].keyword;
        keywordList[booleanOptionCount] = "pluginLibraryPath";
        keywordList[booleanOptionCount + 1] = "tfbDrawStyle";
        keywordList[booleanOptionCount + 2] = "tfbLanguage";
    }
    PyObject* flags[booleanOptionCount] = {};
    const char* pluginLibraryPath = nullptr;
    const char* drawStyle = nullptr;
    const char* language = nullptr;
    if (!PyArg_ParseTupleAndKeywords(args, keywords, "|OOOOOOOOOOOOOOOOOsss", const_cast<char**>(keywordList),
                                     &flags[0], &flags[1], &flags[2], &flags[3], &flags[4], &flags[5], &flags[6],
                                     &flags[7], &flags[8], &flags[9], &flags[10], &flags[11], &flags[12], &flags[13],
                                     &flags[14], &flags[15], &flags[16], &pluginLibraryPath, &drawStyle, &language)) {
        return false;
    }
    options = ToviRendererOptions{};
    for (const BooleanOption& option : booleanOptions) {
        if (option.byDefault) flagByte(options, option.byte) |= option.bit;
    }
    for (int index = 0; index < booleanOptionCount; ++index) {
        if (flags[index]) applyBoolean(options, booleanOptions[index], flags[index]);
    }
    if (drawStyle && !drawStyleFromText(drawStyle, options.tfbDrawStyle)) {
        PyErr_SetString(PyExc_TypeError, "Unknown draw style passed.");
        return false;
    }
    options.pluginLibraryPath = pluginLibraryPath;
    options.tfbLanguage = language;
    return true;
}

// ---- lifetime ----

bool threadStateIsAlive(PyThreadState* state) {
    for (PyThreadState* each = PyInterpreterState_ThreadHead(state->interp); each; each = PyThreadState_Next(each)) {
        if (each == state) return true;
    }
    return false;
}

void clearWrappers(RendererObject* self) {
    Py_CLEAR(self->plugins);
    Py_CLEAR(self->classes);
    Py_CLEAR(self->renderElements);
    Py_CLEAR(self->tfb);
    Py_CLEAR(self->profiler);
    Py_CLEAR(self->categories);
}

// The slots whose callables outlive a release: the frame-buffer window may still ask for them.
bool keptOnRelease(int event) {
    return event == static_cast<int>(RendererEvent::TFBRenderInteractive) ||
           event == static_cast<int>(RendererEvent::TFBShowMessagesWindow);
}

void releaseRenderer(RendererObject* self) {
    if (ToviRenderer* handle = self->rendererHandle) {
        self->rendererHandle = nullptr;
        // Render threads may deliver callbacks until the release returns.
        if (sdkLibraryLoaded()) {
            ReleasedGil unlocked;
            SdkApi.Tovi_ToviRenderer_release(handle);
        }
    }
    PyThreadState* state = self->callbackThreadState;
    if (state && state != PyThreadState_Get()) {
        if (threadStateIsAlive(state)) {
            PyThreadState_Clear(state);
            PyThreadState_Delete(state);
        }
        self->callbackThreadState = nullptr;
        for (int event = 0; event < rendererEventCount; ++event) {
            if (!keptOnRelease(event)) Py_CLEAR(self->callbacks[event]);
        }
    }
    clearWrappers(self);
}

void startCallbackThreadState(RendererObject* self) {
    self->callbackThreadState = PyThreadState_New(PyThreadState_Get()->interp);
}

PyObject* rendererNew(PyTypeObject* type, PyObject*, PyObject*) {
    PyRef object(type->tp_alloc(type, 0));
    if (!object) return nullptr;
    auto* self = asRenderer(object.get());
    self->pluginCache = new (std::nothrow) PluginCache();
    self->classCache = new (std::nothrow) ClassCache();
    self->scratchList = new (std::nothrow) std::vector<uint64_t>();
    self->categoryTable = new (std::nothrow) std::vector<PyObject*>();
    if (!self->pluginCache || !self->classCache || !self->scratchList || !self->categoryTable) return PyErr_NoMemory();
    return object.release();
}

PyObject* raiseInstantiationError() {
    PyErr_SetString(PyExc_RuntimeError, "Instantiation error.");
    return nullptr;
}

// Wraps a host's renderer: one SDK reference of our own on it.
bool adoptHandle(RendererObject* self, ToviRenderer* handle) {
    if (!handle) {
        raiseInstantiationError();
        return false;
    }
    SdkApi.Tovi_ToviRenderer_incRef(handle);
    self->rendererHandle = handle;
    return true;
}

int rendererInit(PyObject* object, PyObject* args, PyObject* keywords) {
    auto* self = asRenderer(object);
    if (requireSdk() < 0) return -1;
    releaseRenderer(self);
    self->autoCommit = true;
    Py_ssize_t positional = PyTuple_GET_SIZE(args);
    Py_ssize_t keywordCount = keywords ? PyDict_GET_SIZE(keywords) : 0;
    if (positional == 0 && keywordCount == 1) {
        if (PyObject* handle = PyDict_GetItemString(keywords, "instanceHandle")) {
            void* pointer = PyLong_AsVoidPtr(handle);
            if (!pointer && PyErr_Occurred()) return -1;
            if (!adoptHandle(self, static_cast<ToviRenderer*>(pointer))) return -1;
            startCallbackThreadState(self);
            return 0;
        }
    }
    ToviRendererOptions options;
    bool withOptions = positional > 0 || keywordCount > 0;
    if (withOptions && !parseOptions(args, keywords, options)) return -1;
    SdkCharString error;
    ToviRenderer* handle = SdkApi.Tovi_ToviRenderer_create(withOptions ? &options : nullptr, error.out());
    if (!handle) {
        raiseInstantiationError();
        return -1;
    }
    self->rendererHandle = handle;
    startCallbackThreadState(self);
    return 0;
}

int rendererTraverse(PyObject* object, visitproc visit, void* arg) {
    auto* self = asRenderer(object);
    Py_VISIT(self->plugins);
    Py_VISIT(self->classes);
    Py_VISIT(self->renderElements);
    Py_VISIT(self->tfb);
    Py_VISIT(self->profiler);
    Py_VISIT(self->categories);
    return 0;
}

int rendererClear(PyObject* object) {
    clearWrappers(asRenderer(object));
    return 0;
}

void rendererDealloc(PyObject* object) {
    auto* self = asRenderer(object);
    PyObject_GC_UnTrack(object);
    delete self->scratchList;
    self->scratchList = nullptr;
    delete self->classCache;
    self->classCache = nullptr;
    delete self->pluginCache;
    self->pluginCache = nullptr;
    delete self->categoryTable;
    self->categoryTable = nullptr;
    releaseRenderer(self);
    for (PyObject*& callback : self->callbacks) Py_CLEAR(callback);
    Py_TYPE(object)->tp_free(object);
}

// ---- methods ----

PyObject* rendererClose(PyObject* object, PyObject*) {
    auto* self = asRenderer(object);
    releaseRenderer(self);
    self->scratchList->clear();
    self->classCache->clear();
    self->pluginCache->clear();
    Py_RETURN_NONE;
}

PyObject* rendererEnter(PyObject* object, PyObject*) { return Py_NewRef(object); }

PyObject* rendererExit(PyObject* object, PyObject*) { return rendererClose(object, nullptr); }

PyObject* getInstanceHandle(PyObject* object, PyObject*) { return PyLong_FromVoidPtr(rendererHandle(object)); }

PyMethodDef rendererMethods[] = {
    {"close", rendererClose, METH_NOARGS, nullptr},
    {"__enter__", rendererEnter, METH_NOARGS, "__enter__(self) -> Renderer\nTovi Renderer context guard."},
    {"__exit__", rendererExit, METH_VARARGS, "__exit__(self) -> None\nTovi Renderer finalizer."},
    {"getInstanceHandle", getInstanceHandle, METH_NOARGS, nullptr},
    TOVI_SCENE_FILE_METHODS
    {nullptr, nullptr, 0, nullptr},
};

// ---- attributes ----

PyObject* getClosed(PyObject* object, void*) { return PyBool_FromLong(rendererHandle(object) == nullptr); }

PyObject* getAutoCommit(PyObject* object, void*) { return PyBool_FromLong(asRenderer(object)->autoCommit); }

int setAutoCommit(PyObject* object, PyObject* value, void*) {
    if (!value) return failWith(PyExc_TypeError, "Cannot delete the 'autoCommit' attribute.");
    int truth = PyObject_IsTrue(value);
    if (truth < 0) return failWith(PyExc_TypeError, "autoCommit can only be set to a boolean value.");
    asRenderer(object)->autoCommit = truth != 0;
    return 0;
}

// A lazily created collection: made on first use, then the same object every time.
PyObject* lazyWrapper(PyObject*& field, PyObject* (*create)(PyObject* renderer), PyObject* renderer) {
    if (!field) field = create(renderer);
    return Py_XNewRef(field);
}

PyObject* getPlugins(PyObject* object, void*) { return lazyWrapper(asRenderer(object)->plugins, newPluginsCollection, object); }

PyObject* getClasses(PyObject* object, void*) { return lazyWrapper(asRenderer(object)->classes, newClassesCollection, object); }

PyObject* getCategories(PyObject* object, void*) {
    return lazyWrapper(asRenderer(object)->categories, newCategoriesCollection, object);
}

PyGetSetDef rendererAttributes[] = {
    {"closed", getClosed, nullptr, "Renderer already closed and unusable if true.", nullptr},
    {"autoCommit", getAutoCommit, setAutoCommit, nullptr, nullptr},
    {"plugins", getPlugins, nullptr, nullptr, nullptr},
    {"classes", getClasses, nullptr, nullptr, nullptr},
    {"categories", getCategories, nullptr, nullptr, nullptr},
    {nullptr, nullptr, nullptr, nullptr, nullptr},
};

}  // namespace

PyTypeObject ToviRendererType = {
    PyVarObject_HEAD_INIT(nullptr, 0)
    "tovi.ToviRenderer",                                            // tp_name
    sizeof(RendererObject),                                         // tp_basicsize
    0,                                                              // tp_itemsize
    rendererDealloc,                                                // tp_dealloc
    0,                                                              // tp_vectorcall_offset
    nullptr,                                                        // tp_getattr
    nullptr,                                                        // tp_setattr
    nullptr,                                                        // tp_as_async
    nullptr,                                                        // tp_repr
    nullptr,                                                        // tp_as_number
    nullptr,                                                        // tp_as_sequence
    nullptr,                                                        // tp_as_mapping
    nullptr,                                                        // tp_hash
    nullptr,                                                        // tp_call
    nullptr,                                                        // tp_str
    nullptr,                                                        // tp_getattro
    nullptr,                                                        // tp_setattro
    nullptr,                                                        // tp_as_buffer
    Py_TPFLAGS_DEFAULT | Py_TPFLAGS_BASETYPE | Py_TPFLAGS_HAVE_GC,  // tp_flags
    nullptr,                                                        // tp_doc
    rendererTraverse,                                               // tp_traverse
    rendererClear,                                                  // tp_clear
    nullptr,                                                        // tp_richcompare
    0,                                                              // tp_weaklistoffset
    nullptr,                                                        // tp_iter
    nullptr,                                                        // tp_iternext
    rendererMethods,                                                // tp_methods
    nullptr,                                                        // tp_members
    rendererAttributes,                                             // tp_getset
    nullptr,                                                        // tp_base
    nullptr,                                                        // tp_dict
    nullptr,                                                        // tp_descr_get
    nullptr,                                                        // tp_descr_set
    0,                                                              // tp_dictoffset
    rendererInit,                                                   // tp_init
    nullptr,                                                        // tp_alloc
    rendererNew,                                                    // tp_new
};

}  // namespace tovi

PyObject* PyToviRenderer_createFromHandle(void* handle) {
    using namespace tovi;
    PyRef object(rendererNew(&ToviRendererType, nullptr, nullptr));
    if (!object) return nullptr;
    auto* self = asRenderer(object.get());
    if (!adoptHandle(self, static_cast<ToviRenderer*>(handle))) return nullptr;
    self->autoCommit = true;
    startCallbackThreadState(self);
    return object.release();
}
