// The structure of .tvscene text: include directives, plugin blocks and their property
// statements. Values are kept as the text between '=' and ';' and read later, once every plugin
// name of the scene is known (a value may name a plugin declared further down or in another file).
// docs/tvscene-format.md describes the format.
#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tovi::ref::format {

// Where scene files and side data files come from; tests and the fuzz target give their own.
class FileAccess {
public:
    virtual ~FileAccess() = default;
    // The whole file; nothing when it cannot be read or is no regular file.
    virtual std::optional<std::string> readAll(const std::string& path) const = 0;
    // `size` bytes from `offset`; nothing when the file is shorter or cannot be read.
    virtual std::optional<std::vector<uint8_t>> readRange(const std::string& path, uint64_t offset,
                                                          uint64_t size) const = 0;
};
const FileAccess& diskFiles();

// One file or text read, alive as long as the scene text that holds it.
struct SceneSource {
    std::string name;    // the path as opened, or "<text N>" for texts
    std::string folder;  // where its relative paths start ("" for texts: the working folder)
    std::string text;
    // 1-based line of a position in the text.
    int lineOf(size_t offset) const;
};

struct PropertyStatement {
    std::string name;
    size_t offset = 0;       // of the name in its source
    std::string_view value;  // the value's text, inside the source
    size_t valueOffset = 0;  // of the value's text in its source
};

struct PluginBlock {
    const SceneSource* source = nullptr;
    size_t offset = 0;  // of the class name
    std::string className;
    std::string name;
    std::vector<PropertyStatement> properties;
};

struct SceneTextError {
    std::string file;
    int line = 0;
    std::string message;
};

// The blocks of a set of scene files and texts, includes resolved, in reading order.
class SceneText {
public:
    // includePaths: folders searched for included files after the including file's own folder;
    // relative ones start at the folder of the first file read.
    SceneText(const FileAccess& files, std::vector<std::string> includePaths);

    // False with error() set. A file that cannot be read at all sets no line.
    bool readFile(const std::string& path);
    bool readText(std::string text);

    const std::vector<PluginBlock>& blocks() const { return blocks_; }
    const SceneTextError& error() const { return error_; }
    bool fileMissing() const { return fileMissing_; }

private:
    bool read(const SceneSource& source, int depth);
    bool include(const SceneSource& from, size_t offset, const std::string& name, int depth);
    bool fail(const SceneSource& source, size_t offset, std::string message);

    const FileAccess& files_;
    std::vector<std::string> includePaths_;
    std::string firstFolder_;
    bool haveFirstFolder_ = false;
    int textCount_ = 0;
    std::deque<SceneSource> sources_;
    std::vector<PluginBlock> blocks_;
    SceneTextError error_;
    bool fileMissing_ = false;
};

// The folder part of a path ("" when it has none) and a path joined to a folder.
std::string folderOf(const std::string& path);
std::string joinPath(const std::string& folder, const std::string& path);

}  // namespace tovi::ref::format
