// Scene files: loading and appending .tvscene files, texts and buffers (filtered or not), the
// include paths, the last parse error, exporting and serializing the scene.
#include <cmath>
#include <string>
#include <vector>

#include "api/entries.h"
#include "api/renderer_handle.h"
#include "core/errors.h"
#include "core/memory.h"
#include "core/text.h"
#include "format/scene_loader.h"
#include "format/scene_writer.h"
#include "testctl/recorder.h"

using namespace tovi::ref;

namespace {

nlohmann::json textOrNull(const char* text) { return text ? nlohmann::json(text) : nlohmann::json(); }

struct Filter {
    ToviPluginFilterFn function = nullptr;
    void* data = nullptr;
};

// The inputs of a multi-form entry; nothing when the array or one of its texts is missing.
std::optional<std::vector<format::SceneInput>> inputsOf(const char* const* items, const size_t* sizes, int count,
                                                        bool areFiles) {
    if (count < 1 || !items) return std::nullopt;
    std::vector<format::SceneInput> inputs;
    for (int index = 0; index < count; ++index) {
        if (!items[index]) return std::nullopt;
        inputs.push_back({areFiles, sizes ? std::string(items[index], sizes[index]) : std::string(items[index])});
    }
    return inputs;
}

nlohmann::json namesRecord(const char* const* items, int count) {
    nlohmann::json names = nlohmann::json::array();
    for (int index = 0; items && index < count; ++index) names.push_back(textOrNull(items[index]));
    return names;
}

int load(ToviRenderer* handle, std::optional<std::vector<format::SceneInput>> inputs, bool replaceScene,
         Filter filter, int autoCommit) {
    try {
        auto renderer = acquireRenderer(handle);
        if (!renderer) return -1;
        {
            std::lock_guard<std::mutex> lock(renderer->sceneFilesMutex);
            renderer->lastParserError.reset();
        }
        if (!inputs) {
            renderer->lastError.store(errorInvalidArgument);
            return -1;
        }
        format::LoadOptions options;
        options.replaceScene = replaceScene;
        options.autoCommit = autoCommit != 0;
        {
            std::lock_guard<std::mutex> lock(renderer->sceneFilesMutex);
            options.includePaths = renderer->includePaths;
        }
        if (filter.function) {
            options.filter = [&](const std::string& className, const std::string& name) -> std::optional<std::string> {
                const char* answer = filter.function(handle, className.c_str(), name.c_str(), filter.data);
                if (!answer) return std::nullopt;
                if (answer == name.c_str()) return name;
                std::string kept(answer);
                freeBlock(const_cast<char*>(answer));
                return kept;
            };
        }
        auto error = format::loadScene(renderer->scene, *inputs, options);
        if (!error) return 0;
        renderer->lastError.store(error->code);
        if (error->line > 0 || error->code == errorSceneParse) {
            std::lock_guard<std::mutex> lock(renderer->sceneFilesMutex);
            renderer->lastParserError = ToviRenderer::ParserError{error->file, error->line, error->message};
        }
        return -1;
    } catch (...) {
        if (auto renderer = acquireRenderer(handle)) renderer->lastError.store(errorOutOfMemory);
        return -1;
    }
}

std::optional<std::vector<format::SceneInput>> one(const char* item, bool isFile) {
    if (!item) return std::nullopt;
    return std::vector<format::SceneInput>{{isFile, item}};
}

std::optional<std::vector<format::SceneInput>> buffer(const char* data, size_t size) {
    if (!data && size) return std::nullopt;
    return std::vector<format::SceneInput>{{false, std::string(data ? data : "", size)}};
}

void recordLoad(const char* entry, const char* const* items, int count, const char* itemsKey, bool filtered,
                int sendNameOnly, int autoCommit) {
    TOVI_RECORD(entry, {{itemsKey, namesRecord(items, count)},
                        {"count", count},
                        {"filter", filtered},
                        {"sendNameOnly", sendNameOnly},
                        {"autoCommit", autoCommit}});
}

nlohmann::json exportRecord(const ToviExportOptions* options) {
    if (!options) return nullptr;
    nlohmann::json subFiles = nlohmann::json::array();
    for (int index = 0; options->subFileInfos && index < options->subFileInfoCount; ++index) {
        subFiles.push_back({{"type", textOrNull(options->subFileInfos[index].type)},
                            {"suffix", textOrNull(options->subFileInfos[index].suffix)}});
    }
    nlohmann::json plugins = nlohmann::json::array();
    for (int index = 0; options->pluginExportList && index < options->pluginExportCount; ++index) {
        plugins.push_back(options->pluginExportList[index]);
    }
    return {{"currentFrameOnly", options->currentFrameOnly},
            {"appendFrameSuffix", options->appendFrameSuffix},
            {"incremental", options->incremental},
            {"compressed", options->compressed},
            {"hexArrays", options->hexArrays},
            {"hexTransforms", options->hexTransforms},
            {"renderElementsSeparateFolders", options->renderElementsSeparateFolders},
            {"printHeader", options->printHeader},
            {"stripPaths", options->stripPaths},
            {"tvdataExport", options->tvdataExport},
            {"tvfilesExport", options->tvfilesExport},
            {"tvfilesComputeHashes", options->tvfilesComputeHashes},
            {"leftInterval", options->leftInterval},
            {"rightInterval", options->rightInterval},
            {"tvdataSmallBufferSizeLimit", options->tvdataSmallBufferSizeLimit},
            {"tvdataFileSizeLimitMiB", options->tvdataFileSizeLimitMiB},
            {"hostAppString", textOrNull(options->hostAppString)},
            {"sceneBasePath", textOrNull(options->sceneBasePath)},
            {"subFileInfos", options->subFileInfos ? subFiles : nlohmann::json()},
            {"subFileInfoCount", options->subFileInfoCount},
            {"pluginExportList", options->pluginExportList ? plugins : nlohmann::json()},
            {"pluginExportCount", options->pluginExportCount},
            {"additionalIncludeFiles", options->additionalIncludeFiles
                                           ? namesRecord(options->additionalIncludeFiles, options->additionalIncludeFileCount)
                                           : nlohmann::json()},
            {"additionalIncludeFileCount", options->additionalIncludeFileCount},
            {"reserved", options->reserved}};
}

// The settings of an options record; nothing when a list in it is malformed.
std::optional<format::ExportSettings> settingsOf(const ToviExportOptions* options) {
    format::ExportSettings settings;
    if (!options) return settings;
    settings.currentFrameOnly = options->currentFrameOnly != 0;
    settings.appendFrameSuffix = options->appendFrameSuffix != 0;
    settings.incremental = options->incremental != 0;
    settings.leftInterval = options->leftInterval;
    settings.rightInterval = options->rightInterval;
    if (!std::isfinite(settings.leftInterval) || !std::isfinite(settings.rightInterval)) return std::nullopt;
    settings.values.compressed = options->compressed != 0;
    settings.values.hexArrays = options->hexArrays != 0;
    settings.values.hexTransforms = options->hexTransforms != 0;
    settings.renderElementsSeparateFolders = options->renderElementsSeparateFolders != 0;
    settings.printHeader = options->printHeader != 0;
    settings.stripPaths = options->stripPaths != 0;
    settings.sideData = options->tvdataExport != 0;
    if (options->tvdataSmallBufferSizeLimit > 0) settings.sideDataInlineLimit = uint64_t(options->tvdataSmallBufferSizeLimit);
    if (options->tvdataFileSizeLimitMiB > 0) settings.sideDataFileLimit = uint64_t(options->tvdataFileSizeLimitMiB) << 20;
    settings.copyFiles = options->tvfilesExport != 0;
    settings.fileHashes = options->tvfilesComputeHashes != 0;
    if (options->hostAppString) settings.hostApplication = options->hostAppString;
    if (options->sceneBasePath) settings.basePath = options->sceneBasePath;
    if (options->subFileInfoCount < 0 || (options->subFileInfoCount > 0 && !options->subFileInfos)) return std::nullopt;
    for (int index = 0; index < options->subFileInfoCount; ++index) {
        const ToviExportSubFileInfo& info = options->subFileInfos[index];
        if (!info.type || !info.suffix) return std::nullopt;
        settings.subFiles.emplace_back(info.type, info.suffix);
    }
    if (options->pluginExportCount < 0 || (options->pluginExportCount > 0 && !options->pluginExportList)) return std::nullopt;
    if (options->pluginExportList) {
        settings.plugins.emplace(options->pluginExportList, options->pluginExportList + options->pluginExportCount);
    }
    if (options->additionalIncludeFileCount < 0 ||
        (options->additionalIncludeFileCount > 0 && !options->additionalIncludeFiles)) {
        return std::nullopt;
    }
    for (int index = 0; index < options->additionalIncludeFileCount; ++index) {
        if (!options->additionalIncludeFiles[index]) return std::nullopt;
        settings.includes.emplace_back(options->additionalIncludeFiles[index]);
    }
    return settings;
}

}  // namespace

// ---- loading ----

TOVI_API int Tovi_ToviRenderer_load(ToviRenderer* renderer, const char* fileName, int autoCommit) {
    recordLoad("Tovi_ToviRenderer_load", &fileName, 1, "fileNames", false, 0, autoCommit);
    return load(renderer, one(fileName, true), true, {}, autoCommit);
}

TOVI_API int Tovi_ToviRenderer_loadFiltered(ToviRenderer* renderer, const char* fileName, ToviPluginFilterFn filter, void* filterData, int autoCommit) {
    recordLoad("Tovi_ToviRenderer_loadFiltered", &fileName, 1, "fileNames", filter != nullptr, 0, autoCommit);
    return load(renderer, one(fileName, true), true, {filter, filterData}, autoCommit);
}

TOVI_API int Tovi_ToviRenderer_loadAsText(ToviRenderer* renderer, const char* sceneText, int autoCommit) {
    recordLoad("Tovi_ToviRenderer_loadAsText", &sceneText, 1, "texts", false, 0, autoCommit);
    return load(renderer, one(sceneText, false), true, {}, autoCommit);
}

TOVI_API int Tovi_ToviRenderer_loadAsTextFiltered(ToviRenderer* renderer, const char* sceneText, ToviPluginFilterFn filter, void* filterData, int autoCommit) {
    recordLoad("Tovi_ToviRenderer_loadAsTextFiltered", &sceneText, 1, "texts", filter != nullptr, 0, autoCommit);
    return load(renderer, one(sceneText, false), true, {filter, filterData}, autoCommit);
}

TOVI_API int Tovi_ToviRenderer_loadAsBuffer(ToviRenderer* renderer, const char* data, size_t size, int autoCommit) {
    return load(renderer, buffer(data, size), true, {}, autoCommit);
}

TOVI_API int Tovi_ToviRenderer_append(ToviRenderer* renderer, const char* fileName, int sendNameOnly, int autoCommit) {
    return Tovi_ToviRenderer_appendMulti(renderer, &fileName, 1, sendNameOnly, autoCommit);
}

TOVI_API int Tovi_ToviRenderer_appendFiltered(ToviRenderer* renderer, const char* fileName, ToviPluginFilterFn filter, void* filterData, int autoCommit) {
    return Tovi_ToviRenderer_appendMultiFiltered(renderer, &fileName, 1, filter, filterData, autoCommit);
}

TOVI_API int Tovi_ToviRenderer_appendAsText(ToviRenderer* renderer, const char* sceneText, int autoCommit) {
    return Tovi_ToviRenderer_appendMultiAsText(renderer, &sceneText, 1, autoCommit);
}

TOVI_API int Tovi_ToviRenderer_appendAsTextFiltered(ToviRenderer* renderer, const char* sceneText, ToviPluginFilterFn filter, void* filterData, int autoCommit) {
    return Tovi_ToviRenderer_appendMultiAsTextFiltered(renderer, &sceneText, 1, filter, filterData, autoCommit);
}

// The reference SDK keeps no distributed-rendering hosts yet, so sendNameOnly changes nothing
// here; it is recorded for the callers' tests.
TOVI_API int Tovi_ToviRenderer_appendMulti(ToviRenderer* renderer, const char* const* fileNames, int count, int sendNameOnly, int autoCommit) {
    recordLoad("Tovi_ToviRenderer_appendMulti", fileNames, count, "fileNames", false, sendNameOnly, autoCommit);
    return load(renderer, inputsOf(fileNames, nullptr, count, true), false, {}, autoCommit);
}

TOVI_API int Tovi_ToviRenderer_appendMultiAsText(ToviRenderer* renderer, const char* const* sceneTexts, int count, int autoCommit) {
    recordLoad("Tovi_ToviRenderer_appendMultiAsText", sceneTexts, count, "texts", false, 0, autoCommit);
    return load(renderer, inputsOf(sceneTexts, nullptr, count, false), false, {}, autoCommit);
}

TOVI_API int Tovi_ToviRenderer_appendMultiFiltered(ToviRenderer* renderer, const char* const* fileNames, int count, ToviPluginFilterFn filter, void* filterData, int autoCommit) {
    recordLoad("Tovi_ToviRenderer_appendMultiFiltered", fileNames, count, "fileNames", filter != nullptr, 0, autoCommit);
    return load(renderer, inputsOf(fileNames, nullptr, count, true), false, {filter, filterData}, autoCommit);
}

TOVI_API int Tovi_ToviRenderer_appendMultiAsTextFiltered(ToviRenderer* renderer, const char* const* sceneTexts, int count, ToviPluginFilterFn filter, void* filterData, int autoCommit) {
    recordLoad("Tovi_ToviRenderer_appendMultiAsTextFiltered", sceneTexts, count, "texts", filter != nullptr, 0, autoCommit);
    return load(renderer, inputsOf(sceneTexts, nullptr, count, false), false, {filter, filterData}, autoCommit);
}

TOVI_API int Tovi_ToviRenderer_appendMultiAsBuffer(ToviRenderer* renderer, const char* const* buffers, const size_t* sizes, int count, int autoCommit) {
    if (!sizes) return load(renderer, std::nullopt, false, {}, autoCommit);
    return load(renderer, inputsOf(buffers, sizes, count, false), false, {}, autoCommit);
}

TOVI_API int Tovi_ToviRenderer_appendMultiAsBufferFiltered(ToviRenderer* renderer, const char* const* buffers, const size_t* sizes, int count, ToviPluginFilterFn filter, void* filterData, int autoCommit) {
    if (!sizes) return load(renderer, std::nullopt, false, {}, autoCommit);
    return load(renderer, inputsOf(buffers, sizes, count, false), false, {filter, filterData}, autoCommit);
}

TOVI_API int Tovi_ToviRenderer_setIncludePaths(ToviRenderer* renderer, const char* includePaths, int overwrite) {
    TOVI_RECORD("Tovi_ToviRenderer_setIncludePaths", {{"includePaths", textOrNull(includePaths)}, {"overwrite", overwrite}});
    try {
        auto live = acquireRenderer(renderer);
        if (!live || !includePaths) return -1;
        std::lock_guard<std::mutex> lock(live->sceneFilesMutex);
        if (overwrite) live->includePaths.clear();
        std::string paths(includePaths);
        for (size_t start = 0; start <= paths.size();) {
            size_t end = paths.find(';', start);
            if (end == std::string::npos) end = paths.size();
            if (end > start) live->includePaths.push_back(paths.substr(start, end - start));
            start = end + 1;
        }
        return 0;
    } catch (...) {
        return -1;
    }
}

// ---- the last parse error ----

TOVI_API int Tovi_ToviRenderer_getLastParserErrorFileName(ToviRenderer* renderer, ToviCharString* fileName) {
    auto live = acquireRenderer(renderer);
    if (!live || !fileName) return -1;
    std::lock_guard<std::mutex> lock(live->sceneFilesMutex);
    if (!live->lastParserError) return -1;
    return setText(fileName, live->lastParserError->file) ? 0 : -1;
}

TOVI_API int Tovi_ToviRenderer_getLastParserErrorFileLine(ToviRenderer* renderer) {
    auto live = acquireRenderer(renderer);
    if (!live) return 0;
    std::lock_guard<std::mutex> lock(live->sceneFilesMutex);
    return live->lastParserError ? live->lastParserError->line : 0;
}

TOVI_API int Tovi_ToviRenderer_getLastParserErrorText(ToviRenderer* renderer, ToviCharString* text) {
    auto live = acquireRenderer(renderer);
    if (!live || !text) return -1;
    std::lock_guard<std::mutex> lock(live->sceneFilesMutex);
    if (!live->lastParserError) return -1;
    return setText(text, live->lastParserError->text) ? 0 : -1;
}

// ---- export ----

TOVI_API int Tovi_ToviRenderer_exportScene(ToviRenderer* renderer, const char* fileName, const ToviExportOptions* options) {
    TOVI_RECORD("Tovi_ToviRenderer_exportScene", {{"fileName", textOrNull(fileName)}, {"options", exportRecord(options)}});
    try {
        auto live = acquireRenderer(renderer);
        if (!live) return -1;
        auto settings = settingsOf(options);
        if (!fileName || !*fileName || !settings) {
            live->lastError.store(errorInvalidArgument);
            return -1;
        }
        auto error = format::exportScene(live->scene, fileName, *settings);
        if (!error) return 0;
        live->lastError.store(error->code);
        return -1;
    } catch (...) {
        return -1;
    }
}

TOVI_API int Tovi_ToviRenderer_serializeScene(ToviRenderer* renderer) {
    try {
        auto live = acquireRenderer(renderer);
        if (!live) return -1;
        format::ValueFormat packed{true, true, true, nullptr};
        std::string text = format::sceneText(live->scene, packed);
        std::lock_guard<std::mutex> lock(live->sceneFilesMutex);
        live->serializedScene = std::move(text);
        return 0;
    } catch (...) {
        return -1;
    }
}
