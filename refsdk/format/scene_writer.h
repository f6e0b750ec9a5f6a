// Writing a scene as .tvscene text: the whole timeline or the keys around the current time, in
// plain or packed forms, split into files by plugin category, with side data files and the
// files the scene refers to.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/errors.h"
#include "format/value_syntax.h"
#include "scene/database.h"

namespace tovi::ref::format {

struct ExportSettings {
    // Only the keys in [current time - leftInterval, current time + rightInterval); equal ends
    // (both 0) write the value at the current time as its one key.
    bool currentFrameOnly = false;
    double leftInterval = 0;
    double rightInterval = 0;
    // With currentFrameOnly: the file name gets the current frame as _NNNN before its extension.
    bool appendFrameSuffix = false;
    // With currentFrameOnly, without appendFrameSuffix: when the files exist, only the keys of
    // animated properties are appended to them.
    bool incremental = false;
    ValueFormat values{true, true, false, nullptr};
    bool renderElementsSeparateFolders = false;
    bool printHeader = true;
    std::string hostApplication;  // empty: none
    // File paths of plugins (bitmaps, IES files, ...): only their file names.
    bool stripPaths = false;
    // Paths under this folder are written relative to it; empty: none.
    std::string basePath;
    // Packed lists of at least sideDataInlineLimit bytes go to side data files "<name>_<n>.tvdata"
    // of at most sideDataFileLimit bytes each (a larger list has a file of its own).
    bool sideData = false;
    uint64_t sideDataInlineLimit = 16 * 1024;
    uint64_t sideDataFileLimit = uint64_t(1024) << 20;
    // Copies the files the scene refers to into "<name>_files/" and points the scene at the
    // copies; the list "<name>.tvfiles" tells what came from where, with CRC-32s when asked.
    bool copyFiles = false;
    bool fileHashes = false;
    // Plugins of these categories go to files of their own, "<name><suffix>.<extension>",
    // included by the main file. Categories: view, lights, geometry, nodes, materials, textures,
    // bitmaps, render_elements.
    std::vector<std::pair<std::string, std::string>> subFiles;
    // Only these plugins; nothing: every plugin.
    std::optional<std::vector<ToviPluginID>> plugins;
    // Include directives written at the end of the main file.
    std::vector<std::string> includes;
};

struct ExportError {
    ErrorCode code = errorFileWrite;
    std::string message;
};

// Nothing on success.
std::optional<ExportError> exportScene(const scene::SceneDatabase& scene, const std::string& path,
                                       const ExportSettings& settings);

// The whole scene as one text in the given value format, as exports write it without a header.
std::string sceneText(const scene::SceneDatabase& scene, const ValueFormat& values);

// The category of a class for split exports; nothing for classes that stay in the main file
// (settings).
std::optional<std::string> exportCategory(const scene::PluginClass& pluginClass);

}  // namespace tovi::ref::format
