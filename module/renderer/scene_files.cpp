#include "renderer/scene_files.h"

#include <cstring>
#include <string>
#include <vector>

#include "core/callback.h"
#include "core/errors.h"
#include "core/marshal.h"
#include "lists/list_kinds.h"
#include "plugins/plugin.h"
#include "renderer/renderer.h"

namespace tovi {

namespace {

// ---- the load error ----

constexpr int parseErrorCode = 10;

PyObject* raiseLoadError(ToviRenderer* handle) {
    int code = SdkApi.Tovi_ToviRenderer_getLastErrorCode(handle);
    SdkCharString errorText;
    const char* text = "Cannot load file or file not found.";
    if (code != 0 && SdkApi.Tovi_getErrorTextStringFromErrorCode(code, errorText.out()) >= 0) text = errorText.text();
    if (code != parseErrorCode) {
        PyErr_SetString(PyExc_RuntimeError, text);
        return nullptr;
    }
    SdkCharString fileName;
    SdkCharString parserText;
    bool haveFile = SdkApi.Tovi_ToviRenderer_getLastParserErrorFileName(handle, fileName.out()) >= 0;
    unsigned line = static_cast<unsigned>(SdkApi.Tovi_ToviRenderer_getLastParserErrorFileLine(handle));
    SdkApi.Tovi_ToviRenderer_getLastParserErrorText(handle, parserText.out());
    PyErr_Format(PyExc_RuntimeError, "%s File \"%s\" at line %u: %s.", text, haveFile ? fileName.text() : "unknown",
                 line, parserText.text());
    return nullptr;
}

PyObject* loadResult(ToviRenderer* handle, int result) {
    if (result == 0) Py_RETURN_NONE;
    return raiseLoadError(handle);
}

// ---- the plugin filter ----

struct FilterContext {
    PyObject* renderer;
    PyObject* filter;  // borrowed: the method's argument outlives the load
};

// What the SDK is told for one plugin: the SDK's own name to keep it, a new name in SDK memory,
// or null to leave it out. Runs on the loading thread, which has let go of the interpreter; the
// renderer's own thread state takes it back.
const char* filterPlugin(ToviRenderer*, const char* pluginType, const char* instanceName, void* userData) {
    auto* context = static_cast<FilterContext*>(userData);
    PyThreadState* state = asRenderer(context->renderer)->callbackThreadState;
    if (!state) return instanceName;
    PyEval_AcquireThread(state);
    const char* answer = nullptr;
    PyRef name(PyUnicode_FromString(instanceName));
    PyRef type(PyUnicode_FromString(pluginType));
    PyRef args(name && type ? PyTuple_Pack(3, context->renderer, type.get(), name.get()) : nullptr);
    PyRef result(args ? PyObject_CallObject(context->filter, args.get()) : nullptr);
    if (!result) {
        reportCallbackException(context->filter);
    } else if (result.get() == name.get()) {
        answer = instanceName;
    } else if (PyUnicode_Check(result.get())) {
        Py_ssize_t length;
        const char* text = PyUnicode_AsUTF8AndSize(result.get(), &length);
        char* copy = text ? static_cast<char*>(SdkApi.C_memory_alloc(static_cast<size_t>(length) + 1)) : nullptr;
        if (copy) {
            std::memcpy(copy, text, static_cast<size_t>(length) + 1);
            answer = copy;
        } else if (text) {
            PyErr_NoMemory();
        }
        if (!answer) reportCallbackException(context->filter);
    } else {
        int truth = PyObject_IsTrue(result.get());
        if (truth < 0) reportCallbackException(context->filter);
        answer = truth > 0 ? instanceName : nullptr;
    }
    result.reset();
    args.reset();
    type.reset();
    name.reset();
    PyEval_ReleaseThread(state);
    return answer;
}

// ---- names and texts of the multi-forms ----

// The leading names of `args` (a list first, or the leading strs) and the position of the
// argument after them; false when there are none or the list holds something else.
bool leadingTexts(PyObject* args, std::vector<const char*>& texts, Py_ssize_t& next) {
    Py_ssize_t count = PyTuple_GET_SIZE(args);
    if (count > 0 && PyList_Check(PyTuple_GET_ITEM(args, 0))) {
        PyObject* list = PyTuple_GET_ITEM(args, 0);
        for (Py_ssize_t index = 0; index < PyList_GET_SIZE(list); ++index) {
            PyObject* item = PyList_GET_ITEM(list, index);
            const char* text = PyUnicode_Check(item) ? PyUnicode_AsUTF8(item) : nullptr;
            if (!text) return false;
            texts.push_back(text);
        }
        next = 1;
        return !texts.empty();
    }
    for (next = 0; next < count && PyUnicode_Check(PyTuple_GET_ITEM(args, next)); ++next) {
        const char* text = PyUnicode_AsUTF8(PyTuple_GET_ITEM(args, next));
        if (!text) return false;
        texts.push_back(text);
    }
    return !texts.empty();
}

PyObject* appendFilteredForm(PyObject* self, PyObject* args, bool texts, const char* message) {
    std::vector<const char*> items;
    Py_ssize_t next;
    if (!leadingTexts(args, items, next) || next >= PyTuple_GET_SIZE(args)) {
        return replaceError(PyExc_TypeError, message);
    }
    FilterContext context{self, PyTuple_GET_ITEM(args, next)};
    ToviRenderer* handle = rendererHandle(self);
    int commit = autoCommit(self);
    int count = static_cast<int>(items.size());
    int result;
    {
        ReleasedGil unlocked;
        result = texts ? SdkApi.Tovi_ToviRenderer_appendMultiAsTextFiltered(handle, items.data(), count, filterPlugin,
                                                                            &context, commit)
                       : SdkApi.Tovi_ToviRenderer_appendMultiFiltered(handle, items.data(), count, filterPlugin,
                                                                      &context, commit);
    }
    return loadResult(handle, result);
}

// ---- export ----

// The options record and the Python objects whose texts it points into.
struct ExportRecord {
    ToviExportOptions options{};
    std::vector<PyRef> keptAlive;
    std::vector<ToviExportSubFileInfo> subFiles;
    std::vector<ToviPluginID> plugins;
    std::vector<const char*> includes;
};

// The mapping's value for key (a new reference), or null with no error when the key is missing.
PyObject* optionValue(PyObject* options, const char* key) {
    PyObject* value = PyMapping_GetItemString(options, key);
    if (!value && PyErr_ExceptionMatches(PyExc_KeyError)) PyErr_Clear();
    return value;
}

bool truthOption(PyObject* options, const char* key, int32_t& field) {
    PyRef value(optionValue(options, key));
    if (!value) return !PyErr_Occurred();
    int truth = PyObject_IsTrue(value.get());
    if (truth < 0) return false;
    field = truth;
    return true;
}

bool numberOption(PyObject* options, const char* key, double& field) {
    PyRef value(optionValue(options, key));
    if (!value) return !PyErr_Occurred();
    if (!PyNumber_Check(value.get())) {
        PyErr_Format(PyExc_TypeError, "The export setting '%s' must be a number.", key);
        return false;
    }
    double number = PyFloat_AsDouble(value.get());
    if (number == -1.0 && PyErr_Occurred()) return false;
    field = number;
    return true;
}

bool integerOption(PyObject* options, const char* key, int32_t& field) {
    PyRef value(optionValue(options, key));
    if (!value) return !PyErr_Occurred();
    int overflow;
    long long number = PyLong_AsLongLongAndOverflow(value.get(), &overflow);
    if (number == -1 && PyErr_Occurred()) return false;
    if (overflow || number < INT32_MIN || number > INT32_MAX) {
        PyErr_Format(PyExc_OverflowError, "The export setting '%s' is out of range.", key);
        return false;
    }
    field = static_cast<int32_t>(number);
    return true;
}

// A str's text, kept alive by the record; null with TypeError for anything else.
const char* keptText(ExportRecord& record, PyObject* value, const char* what) {
    const char* text = PyUnicode_Check(value) ? PyUnicode_AsUTF8(value) : nullptr;
    if (!text) {
        if (!PyErr_Occurred()) PyErr_Format(PyExc_TypeError, "%s must be a string.", what);
        return nullptr;
    }
    record.keptAlive.emplace_back(Py_NewRef(value));
    return text;
}

bool textOption(ExportRecord& record, PyObject* options, const char* key, const char*& field) {
    PyRef value(optionValue(options, key));
    if (!value) return !PyErr_Occurred();
    std::string what = std::string("The export setting '") + key + "'";
    field = keptText(record, value.get(), what.c_str());
    return field != nullptr;
}

// A list or tuple as a fast sequence (new reference), TypeError otherwise.
PyObject* listOption(PyObject* value, const char* key) {
    if (!PyList_Check(value) && !PyTuple_Check(value)) {
        PyErr_Format(PyExc_TypeError, "The export setting '%s' must be a list or a tuple.", key);
        return nullptr;
    }
    return Py_NewRef(value);
}

bool subFileOption(ExportRecord& record, PyObject* options) {
    PyRef value(optionValue(options, "subFileInfos"));
    if (!value) return !PyErr_Occurred();
    PyRef list(listOption(value.get(), "subFileInfos"));
    if (!list) return false;
    Py_ssize_t count = PySequence_Fast_GET_SIZE(list.get());
    for (Py_ssize_t index = 0; index < count; ++index) {
        PyObject* info = PySequence_Fast_GET_ITEM(list.get(), index);
        if (!PyMapping_Check(info)) {
            PyErr_SetString(PyExc_TypeError, "Each of the 'subFileInfos' must be a mapping with 'type' and 'suffix'.");
            return false;
        }
        ToviExportSubFileInfo subFile{};
        for (const char* key : {"type", "suffix"}) {
            PyRef text(PyMapping_GetItemString(info, key));
            if (!text) return false;
            const char* kept = keptText(record, text.get(), "The 'type' and 'suffix' of a sub-file");
            if (!kept) return false;
            (std::strcmp(key, "type") == 0 ? subFile.type : subFile.suffix) = kept;
        }
        record.subFiles.push_back(subFile);
    }
    record.options.subFileInfos = record.subFiles.data();
    record.options.subFileInfoCount = static_cast<int32_t>(record.subFiles.size());
    return true;
}

bool pluginListOption(ExportRecord& record, PyObject* options) {
    PyRef value(optionValue(options, "pluginExportList"));
    if (!value) return !PyErr_Occurred();
    PyRef sequence(PySequence_Check(value.get()) && !PyUnicode_Check(value.get())
                       ? PySequence_Fast(value.get(), "")
                       : nullptr);
    if (!sequence) {
        replaceError(PyExc_TypeError, "The export setting 'pluginExportList' must be a list of plugins.");
        return false;
    }
    Py_ssize_t count = PySequence_Fast_GET_SIZE(sequence.get());
    for (Py_ssize_t index = 0; index < count; ++index) {
        PyObject* plugin = PySequence_Fast_GET_ITEM(sequence.get(), index);
        if (!isPlugin(plugin)) {
            PyErr_SetString(PyExc_TypeError, "The export setting 'pluginExportList' must be a list of plugins.");
            return false;
        }
        record.plugins.push_back(pluginID(plugin));
    }
    record.options.pluginExportList = record.plugins.data();
    record.options.pluginExportCount = static_cast<int32_t>(record.plugins.size());
    return true;
}

bool includesOption(ExportRecord& record, PyObject* options) {
    PyRef value(optionValue(options, "additionalIncludeFiles"));
    if (!value) return !PyErr_Occurred();
    PyRef list(listOption(value.get(), "additionalIncludeFiles"));
    if (!list) return false;
    Py_ssize_t count = PySequence_Fast_GET_SIZE(list.get());
    for (Py_ssize_t index = 0; index < count; ++index) {
        const char* text = keptText(record, PySequence_Fast_GET_ITEM(list.get(), index),
                                    "Each of the 'additionalIncludeFiles'");
        if (!text) return false;
        record.includes.push_back(text);
    }
    record.options.additionalIncludeFiles = record.includes.data();
    record.options.additionalIncludeFileCount = static_cast<int32_t>(record.includes.size());
    return true;
}

bool fillExportRecord(ExportRecord& record, PyObject* options) {
    ToviExportOptions& o = record.options;
    o.compressed = o.hexArrays = o.printHeader = 1;
    if (!options) return true;
    return truthOption(options, "currentFrameOnly", o.currentFrameOnly) &&
           truthOption(options, "appendFrameSuffix", o.appendFrameSuffix) &&
           truthOption(options, "incremental", o.incremental) &&
           numberOption(options, "leftInterval", o.leftInterval) &&
           numberOption(options, "rightInterval", o.rightInterval) &&
           truthOption(options, "compressed", o.compressed) && truthOption(options, "hexArrays", o.hexArrays) &&
           truthOption(options, "hexTransforms", o.hexTransforms) &&
           truthOption(options, "renderElementsSeparateFolders", o.renderElementsSeparateFolders) &&
           truthOption(options, "printHeader", o.printHeader) && truthOption(options, "stripPaths", o.stripPaths) &&
           textOption(record, options, "hostAppString", o.hostAppString) &&
           truthOption(options, "tvdataExport", o.tvdataExport) &&
           integerOption(options, "tvdataSmallBufferSizeLimit", o.tvdataSmallBufferSizeLimit) &&
           integerOption(options, "tvdataFileSizeLimitMiB", o.tvdataFileSizeLimitMiB) &&
           truthOption(options, "tvfilesExport", o.tvfilesExport) &&
           truthOption(options, "tvfilesComputeHashes", o.tvfilesComputeHashes) &&
           textOption(record, options, "sceneBasePath", o.sceneBasePath) && subFileOption(record, options) &&
           pluginListOption(record, options) && includesOption(record, options);
}

// ---- the rest of the scene ----

const char* const deletePluginsMessage = "You must specify plugins to delete as a list of Plugins or strings (names).";

// The identifiers of the plugins and names of `plugins`; false with the Python error set.
bool pluginsToDelete(PyObject* self, PyObject* plugins, std::vector<ToviPluginID>& ids) {
    if (PyObject_TypeCheck(plugins, &PluginListType.type)) {
        const TypedList* list = asList(plugins);
        ids.resize(static_cast<size_t>(Py_SIZE(list)));
        if (!ids.empty()) std::memcpy(ids.data(), list->data, ids.size() * sizeof(ToviPluginID));
        return true;
    }
    bool collection = (PySequence_Check(plugins) || PyAnySet_Check(plugins)) && !PyUnicode_Check(plugins) &&
                      !PyBytes_Check(plugins) && !PyByteArray_Check(plugins);
    PyRef iterator(collection ? PyObject_GetIter(plugins) : nullptr);
    if (!iterator) {
        replaceError(PyExc_TypeError, deletePluginsMessage);
        return false;
    }
    unsigned long long position = 0;
    while (PyRef item{PyIter_Next(iterator.get())}) {
        if (isPlugin(item.get())) {
            ids.push_back(pluginID(item.get()));
        } else if (PyUnicode_Check(item.get())) {
            const char* name = PyUnicode_AsUTF8(item.get());
            if (!name) return false;
            ids.push_back(SdkApi.Tovi_ToviRenderer_getPluginID(rendererHandle(self), name));
        } else {
            PyErr_Format(PyExc_TypeError, "Expected plugin name or instance at position %llu (starting from 0)", position);
            return false;
        }
        ++position;
    }
    return !PyErr_Occurred();
}

PyObject* saveFile(PyObject* self, PyObject* args, int (*save)(ToviRenderer*, const char*)) {
    const char* fileName;
    if (!PyArg_ParseTuple(args, "s", &fileName)) return nullptr;
    ToviRenderer* handle = rendererHandle(self);
    int result;
    {
        ReleasedGil unlocked;
        result = save(handle, fileName);
    }
    return PyBool_FromLong(result >= 0);
}

}  // namespace

// ---- the methods ----

PyObject* rendererLoad(PyObject* self, PyObject* args) {
    const char* fileName;
    if (!PyArg_ParseTuple(args, "s", &fileName)) return replaceError(PyExc_TypeError, "You must specify a file name.");
    ToviRenderer* handle = rendererHandle(self);
    int commit = autoCommit(self);
    int result;
    {
        ReleasedGil unlocked;
        result = SdkApi.Tovi_ToviRenderer_load(handle, fileName, commit);
    }
    return loadResult(handle, result);
}

PyObject* rendererLoadAsText(PyObject* self, PyObject* args) {
    const char* text;
    if (!PyArg_ParseTuple(args, "s", &text)) return replaceError(PyExc_TypeError, "You must provide a text string.");
    ToviRenderer* handle = rendererHandle(self);
    int commit = autoCommit(self);
    int result;
    {
        ReleasedGil unlocked;
        result = SdkApi.Tovi_ToviRenderer_loadAsText(handle, text, commit);
    }
    return loadResult(handle, result);
}

PyObject* rendererLoadFiltered(PyObject* self, PyObject* args) {
    const char* fileName;
    PyObject* filter;
    if (!PyArg_ParseTuple(args, "sO", &fileName, &filter)) {
        return replaceError(PyExc_TypeError, "You must specify a file name and a callback function.");
    }
    ToviRenderer* handle = rendererHandle(self);
    int commit = autoCommit(self);
    FilterContext context{self, filter};
    int result;
    {
        ReleasedGil unlocked;
        result = SdkApi.Tovi_ToviRenderer_loadFiltered(handle, fileName, filterPlugin, &context, commit);
    }
    return loadResult(handle, result);
}

PyObject* rendererLoadAsTextFiltered(PyObject* self, PyObject* args) {
    const char* text;
    PyObject* filter;
    if (!PyArg_ParseTuple(args, "sO", &text, &filter)) {
        return replaceError(PyExc_TypeError, "You must specify a text string and a callback function.");
    }
    ToviRenderer* handle = rendererHandle(self);
    int commit = autoCommit(self);
    FilterContext context{self, filter};
    int result;
    {
        ReleasedGil unlocked;
        result = SdkApi.Tovi_ToviRenderer_loadAsTextFiltered(handle, text, filterPlugin, &context, commit);
    }
    return loadResult(handle, result);
}

PyObject* rendererAppend(PyObject* self, PyObject* args) {
    std::vector<const char*> names;
    Py_ssize_t next;
    if (!leadingTexts(args, names, next)) return replaceError(PyExc_TypeError, "You must specify a file name.");
    // Only the very bool asks for names only; other true values do not.
    PyObject* flag = next < PyTuple_GET_SIZE(args) ? PyTuple_GET_ITEM(args, next) : nullptr;
    int sendNameOnly = flag && PyBool_Check(flag) && flag == Py_True ? 1 : 0;
    ToviRenderer* handle = rendererHandle(self);
    int commit = autoCommit(self);
    int result;
    {
        ReleasedGil unlocked;
        result = SdkApi.Tovi_ToviRenderer_appendMulti(handle, names.data(), static_cast<int>(names.size()), sendNameOnly,
                                                      commit);
    }
    return loadResult(handle, result);
}

PyObject* rendererAppendAsText(PyObject* self, PyObject* args) {
    std::vector<const char*> texts;
    Py_ssize_t next;
    if (!leadingTexts(args, texts, next)) return replaceError(PyExc_TypeError, "You must specify a file name.");
    ToviRenderer* handle = rendererHandle(self);
    int commit = autoCommit(self);
    int result;
    {
        ReleasedGil unlocked;
        result = SdkApi.Tovi_ToviRenderer_appendMultiAsText(handle, texts.data(), static_cast<int>(texts.size()), commit);
    }
    return loadResult(handle, result);
}

PyObject* rendererAppendFiltered(PyObject* self, PyObject* args) {
    return appendFilteredForm(self, args, false, "You must specify a file name and a callback function.");
}

PyObject* rendererAppendAsTextFiltered(PyObject* self, PyObject* args) {
    return appendFilteredForm(self, args, true, "You must specify a text string and a callback function.");
}

PyObject* rendererExport(PyObject* self, PyObject* args) {
    const char* fileName;
    PyObject* options = nullptr;
    if (!PyArg_ParseTuple(args, "s|O", &fileName, &options)) {
        return replaceError(PyExc_TypeError, "You must specify a file name and optionally export settings.");
    }
    if (options && !PyMapping_Check(options)) {
        return replaceError(PyExc_TypeError,
                            "Export settings argument should be a dictionary or at least support the mapping protocol.");
    }
    ExportRecord record;
    if (!fillExportRecord(record, options)) return nullptr;
    ToviRenderer* handle = rendererHandle(self);
    int result;
    {
        ReleasedGil unlocked;
        result = SdkApi.Tovi_ToviRenderer_exportScene(handle, fileName, &record.options);
    }
    return PyBool_FromLong(result == 0);
}

PyObject* rendererSetIncludePaths(PyObject* self, PyObject* args, PyObject* keywords) {
    static const char* keywordList[] = {"includePaths", "overwrite", nullptr};
    const char* paths;
    PyObject* overwrite = nullptr;
    if (!PyArg_ParseTupleAndKeywords(args, keywords, "s|O", const_cast<char**>(keywordList), &paths, &overwrite)) {
        return nullptr;
    }
    int replace = 1;
    if (overwrite && (replace = PyObject_IsTrue(overwrite)) < 0) return nullptr;
    ToviRenderer* handle = rendererHandle(self);
    int result;
    {
        ReleasedGil unlocked;
        result = SdkApi.Tovi_ToviRenderer_setIncludePaths(handle, paths, replace);
    }
    return PyBool_FromLong(result == 0);
}

PyObject* rendererClearScene(PyObject* self, PyObject*) {
    ToviRenderer* handle = rendererHandle(self);
    int commit = autoCommit(self);
    int result;
    {
        ReleasedGil unlocked;
        result = SdkApi.Tovi_ToviRenderer_clearScene(handle, commit);
    }
    return PyBool_FromLong(result == 0);
}

PyObject* rendererSerializeScene(PyObject* self, PyObject*) {
    ToviRenderer* handle = rendererHandle(self);
    int result;
    {
        ReleasedGil unlocked;
        result = SdkApi.Tovi_ToviRenderer_serializeScene(handle);
    }
    return PyBool_FromLong(result == 0);
}

PyObject* rendererDeletePlugins(PyObject* self, PyObject* args) {
    PyObject* plugins;
    if (!PyArg_ParseTuple(args, "O", &plugins)) return replaceError(PyExc_TypeError, deletePluginsMessage);
    std::vector<ToviPluginID> ids;
    if (!pluginsToDelete(self, plugins, ids)) return nullptr;
    ToviRenderer* handle = rendererHandle(self);
    int commit = autoCommit(self);
    int result;
    {
        ReleasedGil unlocked;
        result = SdkApi.Tovi_ToviRenderer_deletePluginsByID(handle, ids.data(), static_cast<int>(ids.size()), commit);
    }
    return PyBool_FromLong(result == 0);
}

PyObject* rendererSaveIrradianceMapFile(PyObject* self, PyObject* args) {
    return saveFile(self, args, SdkApi.Tovi_ToviRenderer_saveIrradianceMapFile);
}

PyObject* rendererSaveLightCacheFile(PyObject* self, PyObject* args) {
    return saveFile(self, args, SdkApi.Tovi_ToviRenderer_saveLightCacheFile);
}

PyObject* rendererSavePhotonMapFile(PyObject* self, PyObject* args) {
    return saveFile(self, args, SdkApi.Tovi_ToviRenderer_savePhotonMapFile);
}

PyObject* rendererSaveCausticsFile(PyObject* self, PyObject* args) {
    return saveFile(self, args, SdkApi.Tovi_ToviRenderer_saveCausticsFile);
}

}  // namespace tovi
