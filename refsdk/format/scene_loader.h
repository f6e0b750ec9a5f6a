// Loading .tvscene files and texts into a scene: every file and text of one call forms one
// scene, read and checked as a whole before the scene changes; when any part fails nothing
// changes.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/errors.h"
#include "format/scene_text.h"
#include "scene/database.h"

namespace tovi::ref::format {

struct SceneInput {
    bool isFile = true;
    std::string fileOrText;
};

struct LoadOptions {
    // The loaded plugins replace the scene's (load) instead of joining them (append).
    bool replaceScene = false;
    bool autoCommit = true;
    std::vector<std::string> includePaths;
    // Asked about every plugin the load is about to create, with its class and name: the name to
    // create it under, or nothing to leave it out (references to it then name no plugin).
    std::function<std::optional<std::string>(const std::string& className, const std::string& name)> filter;
    const FileAccess* files = nullptr;  // null: the disk
};

struct LoadError {
    ErrorCode code = errorSceneParse;
    // Where, for errors in the text (code errorSceneParse and the names the filter chose); line 0
    // when there is no place.
    std::string file;
    int line = 0;
    std::string message;
};

// Nothing on success.
std::optional<LoadError> loadScene(scene::SceneDatabase& scene, const std::vector<SceneInput>& inputs,
                                   const LoadOptions& options);

}  // namespace tovi::ref::format
