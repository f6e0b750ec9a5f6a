#include "format/scene_loader.h"

#include <map>
#include <set>

#include "format/value_syntax.h"

namespace tovi::ref::format {

using namespace scene;

namespace {

// A plugin name declared by the blocks read: what it stands for while values are read.
struct Declared {
    const PluginClass* pluginClass = nullptr;
    // A plugin of the batch, a plugin of the scene that the blocks change, or TOVI_NO_PLUGIN for
    // one that the filter left out.
    ToviPluginID id = TOVI_NO_PLUGIN;
};

using DeclaredNames = std::map<std::string, Declared, std::less<>>;

// Names in values: the blocks' own first, then (when appending) the scene's.
class LoadNames : public PluginNames {
public:
    LoadNames(const DeclaredNames& declared, const SceneDatabase* scene) : declared_(declared), scene_(scene) {}

    std::optional<PluginRef> resolve(std::string_view plugin, std::string_view output) const override {
        auto found = declared_.find(plugin);
        if (found != declared_.end()) {
            if (found->second.id == TOVI_NO_PLUGIN || output.empty()) return PluginRef{found->second.id, 0};
            const PropertyDefinition* definition = found->second.pluginClass->findProperty(output);
            if (!definition || !isOutput(definition->type)) return std::nullopt;
            return PluginRef{found->second.id, definition->index};
        }
        if (!scene_) return std::nullopt;
        ToviPluginID id = scene_->findPlugin(plugin);
        if (id == TOVI_NO_PLUGIN) return std::nullopt;
        if (output.empty()) return PluginRef{id, 0};
        const PropertyDefinition* definition = scene_->findProperty(id, output);
        if (!definition || !isOutput(definition->type)) return std::nullopt;
        return PluginRef{id, definition->index};
    }

    std::optional<std::pair<std::string, std::string>> names(const PluginRef&) const override { return std::nullopt; }

private:
    const DeclaredNames& declared_;
    const SceneDatabase* scene_;
};

// Side data files are found beside the scene file that names them.
class SourceSideData : public SideDataReader {
public:
    SourceSideData(const FileAccess& files, const SceneSource& source) : files_(files), source_(source) {}

    std::optional<std::vector<uint8_t>> read(std::string_view file, uint64_t offset, uint64_t size,
                                             std::string& message) const override {
        auto bytes = files_.readRange(joinPath(source_.folder, std::string(file)), offset, size);
        if (!bytes) {
            message = "cannot read " + std::to_string(size) + " bytes at " + std::to_string(offset) +
                      " of the side data file '" + std::string(file) + "'";
        }
        return bytes;
    }

private:
    const FileAccess& files_;
    const SceneSource& source_;
};

LoadError errorAt(const SceneSource& source, size_t offset, std::string message, ErrorCode code = errorSceneParse) {
    return LoadError{code, source.name, source.lineOf(offset), std::move(message)};
}

void skipSpace(std::string_view text, size_t& position) {
    while (position < text.size() && (text[position] == ' ' || text[position] == '\t' || text[position] == '\n' ||
                                      text[position] == '\r')) {
        ++position;
    }
}

bool takeChar(std::string_view text, size_t& position, char c) {
    skipSpace(text, position);
    if (position >= text.size() || text[position] != c) return false;
    ++position;
    return true;
}

// Reads one statement's value: a plain value or interpolate((time, value), ...).
class StatementReader {
public:
    StatementReader(const PropertyDefinition& definition, const PluginNames& names, const SideDataReader& sideData)
        : definition_(definition), names_(names), sideData_(sideData) {}

    // False with message and the offset (in the value's text) where it went wrong.
    bool read(std::string_view text, SceneBatch::Assignment& assignment) {
        size_t position = 0;
        skipSpace(text, position);
        constexpr std::string_view keyword = "interpolate";
        size_t afterKeyword = position + keyword.size();
        // A plugin named "interpolate" stays a plugin name: only the word and '(' make keyframes.
        if (text.compare(position, keyword.size(), keyword) == 0 && takeChar(text, afterKeyword, '(')) {
            position = afterKeyword;
            if (!keyframes(text, position, assignment.keyframes)) return false;
        } else {
            auto value = oneValue(text, position);
            if (!value) return false;
            assignment.value = std::move(*value);
        }
        skipSpace(text, position);
        if (position != text.size()) return fail(position, "unexpected text after the value");
        return true;
    }

    size_t offset = 0;
    std::string message;

private:
    bool fail(size_t at, std::string why) {
        offset = at;
        message = std::move(why);
        return false;
    }

    std::optional<Value> oneValue(std::string_view text, size_t& position) {
        ParseError error;
        auto value = parseValueAt(text, position, definition_.type, names_, &error, &sideData_);
        if (!value) {
            fail(error.offset, error.message);
            return std::nullopt;
        }
        if (definition_.elementsCount > 0) {
            size_t start = position;
            value = conformToType(std::move(*value), definition_.type, definition_.elementsCount);
            if (!value) {
                fail(start, "'" + definition_.name + "' takes exactly " + std::to_string(definition_.elementsCount) +
                                " elements");
                return std::nullopt;
            }
        }
        return value;
    }

    bool keyframes(std::string_view text, size_t& position, std::map<double, Value>& keys) {
        if (takeChar(text, position, ')')) return fail(position, "interpolate needs at least one keyframe");
        do {
            if (!takeChar(text, position, '(')) return fail(position, "expected '(' before a keyframe");
            ParseError error;
            auto time = parseValueAt(text, position, PropertyType::Double, names_, &error);
            if (!time) return fail(error.offset, "expected the keyframe's time");
            if (!takeChar(text, position, ',')) return fail(position, "expected ',' after the keyframe's time");
            auto value = oneValue(text, position);
            if (!value) return false;
            if (!takeChar(text, position, ')')) return fail(position, "expected ')' after the keyframe's value");
            keys[time->as<double>()] = std::move(*value);
        } while (takeChar(text, position, ','));
        if (!takeChar(text, position, ')')) return fail(position, "expected ',' or ')' after a keyframe");
        return true;
    }

    const PropertyDefinition& definition_;
    const PluginNames& names_;
    const SideDataReader& sideData_;
};

}  // namespace

std::optional<LoadError> loadScene(SceneDatabase& scene, const std::vector<SceneInput>& inputs,
                                   const LoadOptions& options) {
    const FileAccess& files = options.files ? *options.files : diskFiles();
    SceneText text(files, options.includePaths);
    for (const SceneInput& input : inputs) {
        if (input.isFile ? text.readFile(input.fileOrText) : text.readText(input.fileOrText)) continue;
        const SceneTextError& error = text.error();
        if (text.fileMissing()) return LoadError{errorFileNotFound, error.file, 0, error.message};
        return LoadError{errorSceneParse, error.file, error.line, error.message};
    }

    const SceneDatabase* existing = options.replaceScene ? nullptr : &scene;
    DeclaredNames declared;
    SceneBatch batch;
    std::vector<const PluginBlock*> newBlocks;
    std::set<std::string, std::less<>> newNames;
    for (const PluginBlock& block : text.blocks()) {
        const PluginClass* pluginClass = scene.classes().find(block.className);
        if (!pluginClass) return errorAt(*block.source, block.offset, "unknown plugin class '" + block.className + "'");
        if (!scene.isValidName(block.name)) {
            return errorAt(*block.source, block.offset, "'" + block.name + "' is no valid plugin name");
        }
        auto found = declared.find(block.name);
        if (found != declared.end()) {
            if (found->second.pluginClass != pluginClass) {
                return errorAt(*block.source, block.offset,
                               "'" + block.name + "' is declared as a " + found->second.pluginClass->name() + " already");
            }
            continue;
        }
        ToviPluginID existingID = existing ? scene.findPlugin(block.name) : TOVI_NO_PLUGIN;
        if (existingID != TOVI_NO_PLUGIN) {
            const PluginClass* existingClass = scene.pluginClass(existingID);
            if (existingClass != pluginClass) {
                return errorAt(*block.source, block.offset,
                               "the scene has a " + (existingClass ? existingClass->name() : std::string("plugin")) +
                                   " named '" + block.name + "' already");
            }
            declared.emplace(block.name, Declared{pluginClass, existingID});
            continue;
        }
        std::string name = block.name;
        if (options.filter) {
            auto kept = options.filter(block.className, block.name);
            if (!kept) {
                declared.emplace(block.name, Declared{pluginClass, TOVI_NO_PLUGIN});
                continue;
            }
            if (*kept != name) {
                bool taken = newNames.count(*kept) || declared.count(*kept) ||
                             (existing && scene.findPlugin(*kept) != TOVI_NO_PLUGIN);
                if (!scene.isValidName(*kept) || taken) {
                    return errorAt(*block.source, block.offset,
                                   "the filter's name '" + *kept + "' for '" + block.name + "' is " +
                                       (taken ? "taken" : "no valid plugin name"),
                                   errorInvalidPluginName);
                }
                name = std::move(*kept);
            }
        }
        if (!newNames.insert(name).second) {
            return errorAt(*block.source, block.offset, "the name '" + name + "' is taken", errorInvalidPluginName);
        }
        declared.emplace(block.name, Declared{pluginClass, batchPluginID(batch.plugins.size())});
        batch.plugins.push_back({std::move(name), pluginClass});
        newBlocks.push_back(&block);
    }

    LoadNames names(declared, existing);
    std::vector<std::pair<const PluginBlock*, const PropertyStatement*>> places;
    for (const PluginBlock& block : text.blocks()) {
        const Declared& plugin = declared.find(block.name)->second;
        if (plugin.id == TOVI_NO_PLUGIN) continue;
        SourceSideData sideData(files, *block.source);
        for (const PropertyStatement& statement : block.properties) {
            const PropertyDefinition* definition = plugin.pluginClass->findProperty(statement.name);
            if (!definition) {
                return errorAt(*block.source, statement.offset,
                               block.className + " has no property '" + statement.name + "'");
            }
            if (isOutput(definition->type)) {
                return errorAt(*block.source, statement.offset, "'" + statement.name + "' is an output and takes no value");
            }
            SceneBatch::Assignment assignment;
            assignment.plugin = plugin.id;
            assignment.definition = definition;
            StatementReader reader(*definition, names, sideData);
            if (!reader.read(statement.value, assignment)) {
                return errorAt(*block.source, statement.valueOffset + reader.offset, reader.message);
            }
            batch.assignments.push_back(std::move(assignment));
            places.emplace_back(&block, &statement);
        }
    }

    BatchResult result = scene.apply(std::move(batch), options.replaceScene, options.autoCommit);
    if (result.status == SceneStatus::Ok) return std::nullopt;
    // The checks above leave only what changed meanwhile (another thread deleting a plugin).
    if (result.plugin != std::string::npos) {
        const PluginBlock& block = *newBlocks[result.plugin];
        return errorAt(*block.source, block.offset, "the plugin '" + block.name + "' cannot be created",
                       errorInvalidPluginName);
    }
    if (result.assignment != std::string::npos) {
        const auto& [block, statement] = places[result.assignment];
        return errorAt(*block->source, statement->valueOffset, "the value of '" + statement->name + "' is refused",
                       errorInvalidPropertyValue);
    }
    return LoadError{errorFailed, "", 0, "the scene refused the changes"};
}

}  // namespace tovi::ref::format
