// The module entry point: readies the types, creates the module, adds the types, aliases and
// constants, and installs the process hooks. Importing never loads the SDK library.
#include "core/module.h"

#include "core/language.h"
#include "core/repr_strings.h"
#include "core/sdk_loader.h"
#include "image/compressed_image.h"
#include "image/image.h"
#include "lists/list_kinds.h"
#include "plugins/categories.h"
#include "plugins/plugin.h"
#include "plugins/plugin_class.h"
#include "plugins/plugins_collection.h"
#include "renderer/renderer.h"
#include "utils/util.h"
#include "values/color.h"
#include "values/matrix.h"
#include "values/transform.h"
#include "values/vector.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace tovi {

namespace {

// Every type of the module, in the order it is readied.
PyTypeObject* const typesInReadyOrder[] = {
    &ToviRendererType,
    &ToviImageType,
    &CompressedImageType,
    &PluginsType,
    &ClassesType,
    &PluginsIteratorType,
    &ClassesIteratorType,
    &PluginType,
    &PluginRefType,
    &ClassType,
    &CategoriesType,
    &CategoryType,
    &CategoriesIteratorType,
    &PropertiesIteratorType,
    &ColorType,
    &AColorType,
    &VectorType,
    &MatrixType,
    &TransformType,
    &UtilType,
    &LanguageType,
    &TypedListBaseType.type,
    &IntListType.type,
    &FloatListType.type,
    &VectorListType.type,
    &ColorListType.type,
    &TransformListType.type,
    &PluginListType.type,
};

struct ModuleType {
    const char* name;
    PyTypeObject* type;
};

// The types the module exposes, under their names and aliases, in the order they are added.
const ModuleType moduleTypes[] = {
    {"ToviRenderer", &ToviRendererType},
    {"Renderer", &ToviRendererType},
    {"ToviImage", &ToviImageType},
    {"Plugin", &PluginType},
    {"PluginRef", &PluginRefType},
    {"Class", &ClassType},
    {"Category", &CategoryType},
    {"Color", &ColorType},
    {"AColor", &AColorType},
    {"Vector", &VectorType},
    {"Matrix", &MatrixType},
    {"Transform", &TransformType},
    {"Util", &UtilType},
    {"Language", &LanguageType},
    {"TypedList", &TypedListBaseType.type},
    {"IntList", &IntListType.type},
    {"FloatList", &FloatListType.type},
    {"VectorList", &VectorListType.type},
    {"ColorList", &ColorListType.type},
    {"TransformList", &TransformListType.type},
    {"PluginList", &PluginListType.type},
};

struct ModuleConstant {
    const char* name;
    long number;
    const char* text;  // a str constant when not null
};

const ModuleConstant moduleConstants[] = {
    {"LOGLEVEL_ERROR", 0, nullptr},
    {"LOGLEVEL_WARNING", 1, nullptr},
    {"LOGLEVEL_INFO", 2, nullptr},
    {"LOGLEVEL_DEBUG", 3, nullptr},
    {"RENDERER_STATE_RENDERING_FATAL_ERROR", -1, nullptr},
    {"RENDERER_STATE_IDLE_INITIALIZED", 0, nullptr},
    {"RENDERER_STATE_IDLE_STOPPED", 1, nullptr},
    {"RENDERER_STATE_IDLE_ERROR", 2, nullptr},
    {"RENDERER_STATE_IDLE_FRAME_DONE", 3, nullptr},
    {"RENDERER_STATE_IDLE_DONE", 4, nullptr},
    {"RENDERER_STATE_PREPARING", 5, nullptr},
    {"RENDERER_STATE_RENDERING", 6, nullptr},
    {"RENDERER_STATE_RENDERING_PAUSED", 7, nullptr},
    {"RENDERER_STATE_RENDERING_AWAITING_CHANGES", 8, nullptr},
    {"READ_FLAGS_MESH_VERTICES", 16, nullptr},
    {"READ_FLAGS_MESH_NORMALS", 32, nullptr},
    {"READ_FLAGS_MESH_MTLIDS", 64, nullptr},
    {"READ_FLAGS_MESH_VELOCITIES", 128, nullptr},
    {"READ_FLAGS_MESH_UVS", 256, nullptr},
    {"READ_FLAGS_MESH_SHADERS", 512, nullptr},
    {"READ_FLAGS_MESH_OBJECTINFOS", 1024, nullptr},
    {"READ_FLAGS_MESH_HAIROBJECTINFOS", 2048, nullptr},
    {"READ_FLAGS_MESH_PARTICLEOBJECTINFOS", 4096, nullptr},
    {"READ_FLAGS_MESH_HAIRGEOMETRY", 8192, nullptr},
    {"READ_FLAGS_MESH_PARTICLESGEOMETRY", 16384, nullptr},
    {"READ_FLAGS_MESH_GEOMETRYMESHESBBOXES", 32768, nullptr},
    {"READ_FLAGS_MESH_HAIROBJECTBBOXES", 65536, nullptr},
    {"READ_FLAGS_MESH_PARTICLEOBJECTBBOXES", 131072, nullptr},
    {"READ_FLAGS_MESH_ALL", 0x3FFF0, nullptr},
    {"RENDER_PASS_FINAL", 0, nullptr},
    {"RENDER_PASS_LIGHT_CACHE", 1, nullptr},
    {"RENDER_PASS_IRRADIANCE_MAP", 2, nullptr},
    {"TFB_STATE_MAIN", 1, nullptr},
    {"TFB_STATE_HISTORY", 2, nullptr},
    {"TFB_STATE_ALL", -1, nullptr},
    {"MB_LEFT", 1, nullptr},
    {"MB_RIGHT", 2, nullptr},
    {"SCANNED_MATERIAL_PLAIN_NONE", 0, "PL_NONE"},
    {"SCANNED_MATERIAL_PLAIN_HOMOGENOUS", 0, "PL_HMG"},
    {"SCANNED_MATERIAL_PLAIN_HOMOGENOUS_SYMMETRIC", 0, "PL_HMGSYM"},
    {"SCANNED_MATERIAL_PLAIN_TRIPLANAR", 0, "PL_TRIPLANAR"},
    {"SCANNED_MATERIAL_CHANNEL_PAINT_BITMASK", 1, nullptr},
    {"SCANNED_MATERIAL_CHANNEL_FILTER_BITMASK", 2, nullptr},
    {"SCANNED_MATERIAL_CHANNEL_CCMULT_BITMASK", 4, nullptr},
    {"SCANNED_MATERIAL_COLOR_SPACE_SRGB", 0, "CS_SRGB"},
    {"SCANNED_MATERIAL_COLOR_SPACE_ADOBE", 0, "CS_ADOBE"},
    {"SCANNED_MATERIAL_COLOR_SPACE_PRO_PHOTO", 0, "CS_PP"},
    {"PROFILER_MODE_OFF", 0, nullptr},
    {"PROFILER_MODE_SIMPLE", 1, nullptr},
    {"PROFILER_MODE_FULL", 2, nullptr},
    {"PROFILER_MODE_PROCESS", 3, nullptr},
};

PyModuleDef moduleDefinition = {
    PyModuleDef_HEAD_INIT,
    "tovi",           // m_name
    nullptr,          // m_doc
    -1,               // m_size: single-phase, process-global state
    moduleFunctions,  // m_methods
};

// Registered with Py_AtExit: runs after the interpreter has finalised.
void unloadAtExit() { unloadSdkLibrary(true); }

#ifdef _WIN32
// Ctrl+C goes on to Python's own handler; every other console event ends the process at once.
BOOL WINAPI consoleControlHandler(DWORD event) {
    if (event == CTRL_C_EVENT) return FALSE;
    TerminateProcess(GetCurrentProcess(), 1);
    return TRUE;
}
#endif

// A failed constant insertion is not fatal to the import.
void addConstant(PyObject* module, const ModuleConstant& constant) {
    int failed = constant.text ? PyModule_AddStringConstant(module, constant.name, constant.text)
                               : PyModule_AddIntConstant(module, constant.name, constant.number);
    if (failed) PyErr_Clear();
}

// The property states, as class constants of Plugin.
void addPropertyStates() {
    const struct {
        const char* name;
        long value;
    } states[] = {{"PROPERTY_STATE_INVALID", 0},
                  {"PROPERTY_STATE_DEFAULT", 1},
                  {"PROPERTY_STATE_NOT_ANIMATED", 2},
                  {"PROPERTY_STATE_ANIMATED", 3}};
    for (const auto& state : states) {
        PyObject* value = PyLong_FromLong(state.value);
        if (!value || PyDict_SetItemString(PluginType.tp_dict, state.name, value) < 0) PyErr_Clear();
        Py_XDECREF(value);
    }
    PyType_Modified(&PluginType);
}

}  // namespace

PyObject* initModule() {
    if (createReprStrings() < 0) return nullptr;
    ToviImageType.tp_new = PyType_GenericNew;
    setUpLanguageType();
    for (PyTypeObject* type : typesInReadyOrder) {
        if (PyType_Ready(type) < 0) return nullptr;
    }
    if (addMatrixClassAttributes() < 0) return nullptr;
    if (fillLanguageConstants() < 0) return nullptr;

    PyObject* module = PyModule_Create2(&moduleDefinition, 1013);
    if (!module) return nullptr;
    addColorSpaceConstants();

    for (const ModuleType& entry : moduleTypes) {
        Py_INCREF(entry.type);
        if (PyModule_AddObject(module, entry.name, reinterpret_cast<PyObject*>(entry.type)) < 0) {
            Py_DECREF(entry.type);
            Py_DECREF(module);
            return nullptr;
        }
    }
    for (const ModuleConstant& constant : moduleConstants) addConstant(module, constant);
    addPropertyStates();

    Py_AtExit(&unloadAtExit);
#ifdef _WIN32
    SetConsoleCtrlHandler(&consoleControlHandler, TRUE);
#endif
    return module;
}

}  // namespace tovi

PyMODINIT_FUNC PyInit_tovi() { return tovi::initModule(); }
