#include "format/scene_writer.h"

#include "format/scene_names.h"

#include <cmath>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <system_error>

#include <zlib.h>

#include "format/scene_text.h"

namespace tovi::ref::format {

using namespace scene;
namespace fs = std::filesystem;

namespace {

const char* const categories[] = {"view", "lights", "geometry", "nodes", "materials", "textures", "bitmaps",
                                  "render_elements"};

bool startsWith(const std::string& text, std::string_view prefix) { return text.compare(0, prefix.size(), prefix) == 0; }

bool isNameChar(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '@' || c == '|' ||
           c == '_';
}


// Side data files "<stem>_<n>.tvdata" beside the scene, filled in order.
class SideDataFiles : public SideDataWriter {
public:
    SideDataFiles(const ExportSettings& settings, std::string folder, std::string stem)
        : settings_(settings), folder_(std::move(folder)), stem_(std::move(stem)) {}

    std::optional<Place> store(const std::vector<uint8_t>& bytes) override {
        if (failed_ || bytes.size() < settings_.sideDataInlineLimit) return std::nullopt;
        if (!out_.is_open() || (size_ > 0 && size_ + bytes.size() > settings_.sideDataFileLimit)) {
            if (!openNext()) return std::nullopt;
        }
        Place place{name_, size_};
        out_.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        if (!out_) failed_ = true;
        size_ += bytes.size();
        return place;
    }

    bool close() {
        if (out_.is_open()) out_.close();
        return !failed_ && !out_.fail();
    }

private:
    bool openNext() {
        out_.close();
        std::error_code error;
        // An incremental export keeps the files of the exports before it.
        do {
            name_ = stem_ + "_" + std::to_string(next_++) + ".tvdata";
        } while (fs::exists(joinPath(folder_, name_), error));
        out_.open(joinPath(folder_, name_), std::ios::binary | std::ios::trunc);
        size_ = 0;
        failed_ = !out_;
        return !failed_;
    }

    const ExportSettings& settings_;
    std::string folder_;
    std::string stem_;
    std::ofstream out_;
    std::string name_;
    uint64_t size_ = 0;
    int next_ = 0;
    bool failed_ = false;
};

// Files the scene refers to, copied into "<stem>_files/".
class CopiedFiles {
public:
    CopiedFiles(const ExportSettings& settings, std::string folder, std::string stem)
        : settings_(settings), folder_(std::move(folder)), stem_(std::move(stem)) {}

    // The path the scene names the copy by; the original when it cannot be copied.
    std::string copy(const std::string& original) {
        auto known = copies_.find(original);
        if (known != copies_.end()) return known->second;
        std::error_code error;
        if (!fs::is_regular_file(original, error)) return copies_[original] = original;
        std::string subfolder = stem_ + "_files";
        fs::create_directories(joinPath(folder_, subfolder), error);
        std::string name = fs::path(original).filename().string();
        std::string relative = subfolder + "/" + name;
        for (int index = 1; used_.count(relative); ++index) {
            relative = subfolder + "/" + fs::path(name).stem().string() + "_" + std::to_string(index) +
                       fs::path(name).extension().string();
        }
        if (!fs::copy_file(original, joinPath(folder_, relative), fs::copy_options::overwrite_existing, error)) {
            failed_ = true;
            return copies_[original] = original;
        }
        used_.insert(relative);
        list_ += relative + "\t" + original;
        if (settings_.fileHashes) list_ += "\tcrc32:" + crcOf(joinPath(folder_, relative));
        list_ += "\n";
        return copies_[original] = relative;
    }

    bool writeList() {
        if (list_.empty()) return !failed_;
        std::ofstream out(joinPath(folder_, stem_ + ".tvfiles"), std::ios::binary | std::ios::trunc);
        out << list_;
        return !failed_ && static_cast<bool>(out);
    }

private:
    static std::string crcOf(const std::string& path) {
        std::ifstream in(path, std::ios::binary);
        uLong crc = crc32(0, nullptr, 0);
        char buffer[1 << 16];
        while (in.read(buffer, sizeof buffer) || in.gcount() > 0) {
            crc = crc32(crc, reinterpret_cast<const Bytef*>(buffer), static_cast<uInt>(in.gcount()));
        }
        char text[9];
        std::snprintf(text, sizeof text, "%08lx", static_cast<unsigned long>(crc));
        return text;
    }

    const ExportSettings& settings_;
    std::string folder_;
    std::string stem_;
    std::map<std::string, std::string> copies_;
    std::set<std::string> used_;
    std::string list_;
    bool failed_ = false;
};

// Text properties that name files the scene reads (bitmaps, IES and light-field files, ...).
bool isFilePath(const PluginClass& pluginClass, const PropertyDefinition& definition) {
    if (definition.type != PropertyType::String || startsWith(pluginClass.name(), "Settings")) return false;
    const std::string& name = definition.name;
    return name == "file" || (name.size() > 5 && name.compare(name.size() - 5, 5, "_file") == 0);
}

Value valueAt(const std::map<double, Value>& keys, double time) {
    auto after = keys.lower_bound(time);
    if (after == keys.end()) return std::prev(after)->second;
    if (after->first == time || after == keys.begin()) return after->second;
    auto before = std::prev(after);
    return interpolate(before->second, after->second, (time - before->first) / (after->first - before->first));
}

struct Output {
    std::string path;
    std::string text;
};

class Writer {
public:
    Writer(const SceneDatabase& scene, const ExportSettings& settings, SideDataFiles* sideData, CopiedFiles* files,
           bool keysOnly)
        : settings_(settings), names_(scene), files_(files), keysOnly_(keysOnly), now_(scene.currentTime()) {
        format_ = settings.values;
        format_.sideData = sideData;
    }

    void plugin(const PluginContents& plugin, std::string& out) {
        std::string body;
        for (const PropertyContents& property : plugin.properties) {
            if (keysOnly_ && property.state != PropertyState::Animated) continue;
            body += "  " + property.definition->name + " = ";
            if (property.state == PropertyState::Animated) {
                keyframes(plugin, property, body);
            } else {
                value(plugin, property, property.value, body);
            }
            body += ";\n";
        }
        if (settings_.renderElementsSeparateFolders && !keysOnly_ && plugin.pluginClass->name() == "SettingsOutput") {
            body += "  img_separateFolders = true;\n";
        }
        if (keysOnly_ && body.empty()) return;
        out += plugin.pluginClass->name() + " ";
        name(plugin.name, out);
        out += " {\n" + body + "}\n\n";
    }

private:
    void name(const std::string& name, std::string& out) {
        bool plain = !name.empty();
        for (char c : name) plain = plain && isNameChar(c);
        out += plain ? name : quotedText(name);
    }

    void keyframes(const PluginContents& plugin, const PropertyContents& property, std::string& out) {
        std::map<double, const Value*> chosen;
        Value current;
        if (!settings_.currentFrameOnly) {
            for (const auto& [time, key] : property.keyframes) chosen.emplace(time, &key);
        } else {
            double left = now_ - settings_.leftInterval;
            double right = now_ + settings_.rightInterval;
            if (left < right) {
                for (auto key = property.keyframes.lower_bound(left); key != property.keyframes.end() && key->first < right; ++key) {
                    chosen.emplace(key->first, &key->second);
                }
            }
            if (chosen.empty()) {
                current = valueAt(property.keyframes, now_);
                chosen.emplace(now_, &current);
            }
        }
        out += "interpolate(";
        bool first = true;
        for (const auto& [time, key] : chosen) {
            out += first ? "\n    (" : ",\n    (";
            first = false;
            printValue(Value(time), names_, ValueFormat{}, out);
            out += ", ";
            value(plugin, property, *key, out);
            out += ")";
        }
        out += "\n  )";
    }

    void value(const PluginContents& plugin, const PropertyContents& property, const Value& value, std::string& out) {
        if (value.is<std::string>() && isFilePath(*plugin.pluginClass, *property.definition)) {
            printValue(Value(filePath(value.as<std::string>())), names_, format_, out);
            return;
        }
        printValue(value, names_, format_, out);
    }

    std::string filePath(const std::string& path) {
        if (path.empty()) return path;
        if (files_) {
            std::string copy = files_->copy(path);
            if (copy != path) return copy;
        }
        if (settings_.stripPaths) return fs::path(path).filename().string();
        const std::string& base = settings_.basePath;
        if (!base.empty()) {
            std::string prefix = base.back() == '/' || base.back() == '\\' ? base : base + "/";
            if (startsWith(path, prefix)) return path.substr(prefix.size());
        }
        return path;
    }

    const ExportSettings& settings_;
    SceneNames names_;
    ValueFormat format_;
    CopiedFiles* files_;
    bool keysOnly_;
    double now_;
};

std::string header(const ExportSettings& settings) {
    std::time_t now = std::time(nullptr);
    std::tm utc{};
    gmtime_r(&now, &utc);
    char stamp[32];
    std::strftime(stamp, sizeof stamp, "%Y-%m-%d %H:%M:%S UTC", &utc);
    std::string text = "// Tovi scene file, written " + std::string(stamp) + "\n";
    if (!settings.hostApplication.empty()) text += "// Host application: " + settings.hostApplication + "\n";
    return text + "\n";
}

std::string includeLine(const std::string& path) { return "#include " + quotedText(path) + "\n"; }

}  // namespace

std::optional<std::string> exportCategory(const PluginClass& pluginClass) {
    const std::string& name = pluginClass.name();
    if (name == "RenderView" || startsWith(name, "Camera")) return "view";
    if (startsWith(name, "Light") || name == "SunLight") return "lights";
    if (startsWith(name, "Geom")) return "geometry";
    if (name == "Node") return "nodes";
    if (startsWith(name, "Mtl") || startsWith(name, "BRDF")) return "materials";
    if (startsWith(name, "Tex") || startsWith(name, "UVWGen")) return "textures";
    if (name == "BitmapBuffer") return "bitmaps";
    if (startsWith(name, "RenderChannel")) return "render_elements";
    return std::nullopt;
}

std::string sceneText(const SceneDatabase& scene, const ValueFormat& values) {
    ExportSettings settings;
    settings.values = values;
    Writer writer(scene, settings, nullptr, nullptr, false);
    std::string text;
    for (const PluginContents& plugin : scene.contents()) writer.plugin(plugin, text);
    return text;
}

std::optional<ExportError> exportScene(const SceneDatabase& scene, const std::string& path,
                                       const ExportSettings& settings) {
    std::map<std::string, std::string> suffixes;  // category to suffix
    for (const auto& [category, suffix] : settings.subFiles) {
        bool known = false;
        for (const char* each : categories) known = known || category == each;
        if (!known) return ExportError{errorInvalidArgument, "unknown plugin category '" + category + "'"};
        suffixes[category] = suffix;
    }
    if (settings.plugins) {
        for (ToviPluginID id : *settings.plugins) {
            if (!scene.pluginExists(id)) return ExportError{errorPluginNotFound, "no plugin " + std::to_string(id)};
        }
    }

    fs::path mainPath(path);
    if (settings.currentFrameOnly && settings.appendFrameSuffix) {
        char frame[16];
        std::snprintf(frame, sizeof frame, "_%04d", scene.currentFrame());
        mainPath.replace_filename(mainPath.stem().string() + frame + mainPath.extension().string());
    }
    std::string folder = mainPath.parent_path().string();
    std::string stem = mainPath.stem().string();
    std::string extension = mainPath.extension().string();
    std::error_code error;
    bool keysOnly = settings.currentFrameOnly && settings.incremental && !settings.appendFrameSuffix &&
                    fs::exists(mainPath, error);

    Output main{mainPath.string(), std::string()};
    std::map<std::string, Output> subFiles;
    for (const auto& [category, suffix] : suffixes) {
        subFiles[category].path = joinPath(folder, stem + suffix + extension);
    }
    if (settings.printHeader && !keysOnly) main.text += header(settings);
    if (!keysOnly) {
        for (const auto& [category, file] : subFiles) main.text += includeLine(fs::path(file.path).filename().string());
        if (!subFiles.empty()) main.text += "\n";
    }

    SideDataFiles sideData(settings, folder, stem);
    CopiedFiles copies(settings, folder, stem);
    Writer writer(scene, settings, settings.sideData ? &sideData : nullptr, settings.copyFiles ? &copies : nullptr,
                  keysOnly);
    const std::vector<ToviPluginID>* only = settings.plugins ? &*settings.plugins : nullptr;
    for (const PluginContents& plugin : scene.contents(only)) {
        auto category = exportCategory(*plugin.pluginClass);
        auto sub = category ? subFiles.find(*category) : subFiles.end();
        writer.plugin(plugin, sub != subFiles.end() ? sub->second.text : main.text);
    }
    if (!keysOnly) {
        for (const std::string& include : settings.includes) main.text += includeLine(include);
    }
    if (!sideData.close() || !copies.writeList()) return ExportError{errorFileWrite, "cannot write the side files"};

    auto mode = std::ios::binary | (keysOnly ? std::ios::app : std::ios::trunc);
    std::vector<const Output*> outputs{&main};
    for (const auto& [category, file] : subFiles) outputs.push_back(&file);
    for (const Output* output : outputs) {
        std::ofstream out(output->path, mode);
        out.write(output->text.data(), static_cast<std::streamsize>(output->text.size()));
        out.close();
        if (!out) return ExportError{errorFileWrite, "cannot write '" + output->path + "'"};
    }
    return std::nullopt;
}

}  // namespace tovi::ref::format
