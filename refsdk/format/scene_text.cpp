#include "format/scene_text.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "format/value_syntax.h"

namespace tovi::ref::format {

namespace {

// Included files within included files: deeper than this is taken for a cycle.
constexpr int includeDepthLimit = 32;

bool isNameChar(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '@' || c == '|' ||
           c == '_';
}

bool isSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

class DiskFiles : public FileAccess {
public:
    std::optional<std::string> readAll(const std::string& path) const override {
        std::error_code error;
        if (!std::filesystem::is_regular_file(path, error)) return std::nullopt;
        std::ifstream in(path, std::ios::binary);
        if (!in) return std::nullopt;
        std::string text;
        in.seekg(0, std::ios::end);
        text.resize(static_cast<size_t>(in.tellg()));
        in.seekg(0);
        in.read(text.data(), static_cast<std::streamsize>(text.size()));
        if (!in) return std::nullopt;
        return text;
    }

    std::optional<std::vector<uint8_t>> readRange(const std::string& path, uint64_t offset,
                                                  uint64_t size) const override {
        std::error_code error;
        if (!std::filesystem::is_regular_file(path, error)) return std::nullopt;
        uint64_t fileSize = std::filesystem::file_size(path, error);
        if (error || offset > fileSize || size > fileSize - offset) return std::nullopt;
        std::ifstream in(path, std::ios::binary);
        std::vector<uint8_t> bytes(static_cast<size_t>(size));
        in.seekg(static_cast<std::streamoff>(offset));
        in.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(size));
        if (!in) return std::nullopt;
        return bytes;
    }
};

// Names in quotes name no plugins.
class NoNames : public PluginNames {
public:
    std::optional<scene::PluginRef> resolve(std::string_view, std::string_view) const override { return std::nullopt; }
    std::optional<std::pair<std::string, std::string>> names(const scene::PluginRef&) const override {
        return std::nullopt;
    }
};

// Reads one source's structure.
class Scanner {
public:
    explicit Scanner(const SceneSource& source) : text_(source.text) {}

    size_t position() const { return pos_; }
    bool atEnd() const { return pos_ >= text_.size(); }
    char peek() const { return text_[pos_]; }
    void advance() { ++pos_; }

    // White space and comments; false at a comment that does not end, position at its start.
    bool skipBlank() {
        while (pos_ < text_.size()) {
            if (isSpace(text_[pos_])) {
                ++pos_;
            } else if (text_.compare(pos_, 2, "//") == 0) {
                size_t end = text_.find('\n', pos_);
                pos_ = end == std::string_view::npos ? text_.size() : end + 1;
            } else if (text_.compare(pos_, 2, "/*") == 0) {
                size_t end = text_.find("*/", pos_ + 2);
                if (end == std::string_view::npos) return false;
                pos_ = end + 2;
            } else {
                break;
            }
        }
        return true;
    }

    std::string_view word() {
        size_t start = pos_;
        while (pos_ < text_.size() && isNameChar(text_[pos_])) ++pos_;
        return text_.substr(start, pos_ - start);
    }

    // A text in quotes, as the value syntax writes texts; the opening quote is next.
    std::optional<std::string> quoted(std::string& message) {
        ParseError error;
        size_t position = pos_;
        auto text = parseValueAt(text_, position, scene::PropertyType::String, NoNames(), &error);
        if (!text) {
            pos_ = error.offset;
            message = error.message;
            return std::nullopt;
        }
        pos_ = position;
        return std::move(text->as<std::string>());
    }

    // The value's text up to the ';' that ends it, outside parentheses and quotes; the position
    // is then after the ';'. On failure the message tells why and the position where.
    std::optional<std::string_view> valueText(std::string& message) {
        size_t start = pos_;
        int depth = 0;
        while (pos_ < text_.size()) {
            char c = text_[pos_];
            if (c == '"') {
                for (++pos_; pos_ < text_.size() && text_[pos_] != '"'; ++pos_) {
                    if (text_[pos_] == '\\') ++pos_;
                }
                if (pos_ >= text_.size()) {
                    message = "the text has no closing '\"'";
                    return std::nullopt;
                }
            } else if (c == '(') {
                ++depth;
            } else if (c == ')') {
                if (--depth < 0) {
                    message = "unexpected ')'";
                    return std::nullopt;
                }
            } else if (depth == 0 && (c == ';' || c == '}')) {
                if (c == '}') break;
                std::string_view value = text_.substr(start, pos_ - start);
                ++pos_;
                return value;
            }
            ++pos_;
        }
        // The place to point at is where the value ends, not where the next statement starts.
        while (pos_ > start && isSpace(text_[pos_ - 1])) --pos_;
        message = "expected ';' after the value";
        return std::nullopt;
    }

private:
    std::string_view text_;
    size_t pos_ = 0;
};

bool isAbsolute(const std::string& path) { return !path.empty() && (path[0] == '/' || path[0] == '\\' || (path.size() > 1 && path[1] == ':')); }

}  // namespace

const FileAccess& diskFiles() {
    static const DiskFiles files;
    return files;
}

int SceneSource::lineOf(size_t offset) const {
    offset = std::min(offset, text.size());
    return 1 + static_cast<int>(std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(offset), '\n'));
}

std::string folderOf(const std::string& path) {
    size_t slash = path.find_last_of("/\\");
    return slash == std::string::npos ? std::string() : path.substr(0, slash);
}

std::string joinPath(const std::string& folder, const std::string& path) {
    if (folder.empty() || isAbsolute(path)) return path;
    return folder + "/" + path;
}

SceneText::SceneText(const FileAccess& files, std::vector<std::string> includePaths)
    : files_(files), includePaths_(std::move(includePaths)) {}

bool SceneText::fail(const SceneSource& source, size_t offset, std::string message) {
    error_ = SceneTextError{source.name, source.lineOf(offset), std::move(message)};
    return false;
}

bool SceneText::readFile(const std::string& path) {
    auto text = files_.readAll(path);
    if (!text) {
        fileMissing_ = true;
        error_ = SceneTextError{path, 0, "cannot read the file"};
        return false;
    }
    if (!haveFirstFolder_) {
        firstFolder_ = folderOf(path);
        haveFirstFolder_ = true;
    }
    sources_.push_back(SceneSource{path, folderOf(path), std::move(*text)});
    return read(sources_.back(), 0);
}

bool SceneText::readText(std::string text) {
    haveFirstFolder_ = true;
    sources_.push_back(SceneSource{"<text " + std::to_string(++textCount_) + ">", std::string(), std::move(text)});
    return read(sources_.back(), 0);
}

bool SceneText::include(const SceneSource& from, size_t offset, const std::string& name, int depth) {
    if (depth >= includeDepthLimit) return fail(from, offset, "included files nest too deep (an include cycle?)");
    std::vector<std::string> candidates;
    if (isAbsolute(name)) {
        candidates.push_back(name);
    } else {
        candidates.push_back(joinPath(from.folder, name));
        for (const std::string& folder : includePaths_) {
            candidates.push_back(joinPath(joinPath(firstFolder_, folder), name));
        }
    }
    for (const std::string& candidate : candidates) {
        if (auto text = files_.readAll(candidate)) {
            sources_.push_back(SceneSource{candidate, folderOf(candidate), std::move(*text)});
            return read(sources_.back(), depth + 1);
        }
    }
    return fail(from, offset, "cannot find the included file '" + name + "'");
}

bool SceneText::read(const SceneSource& source, int depth) {
    Scanner scan(source);
    std::string message;
    auto blank = [&]() {
        size_t start = scan.position();
        if (scan.skipBlank()) return true;
        return fail(source, start, "the comment has no closing '*/'");
    };
    while (true) {
        if (!blank()) return false;
        if (scan.atEnd()) return true;
        size_t start = scan.position();
        if (scan.peek() == '#') {
            scan.advance();
            if (scan.word() != "include") return fail(source, start, "unknown directive; expected #include");
            if (!blank()) return false;
            if (scan.atEnd() || scan.peek() != '"') return fail(source, scan.position(), "expected the included file's name in quotes");
            auto name = scan.quoted(message);
            if (!name) return fail(source, scan.position(), message);
            if (!include(source, start, *name, depth)) return false;
            continue;
        }
        PluginBlock block;
        block.source = &source;
        block.offset = start;
        block.className = std::string(scan.word());
        if (block.className.empty()) return fail(source, start, std::string("unexpected '") + scan.peek() + "'; expected a plugin class");
        if (!blank()) return false;
        if (!scan.atEnd() && scan.peek() == '"') {
            auto name = scan.quoted(message);
            if (!name) return fail(source, scan.position(), message);
            block.name = std::move(*name);
        } else {
            block.name = std::string(scan.word());
        }
        if (block.name.empty()) return fail(source, scan.position(), "expected the plugin's name after '" + block.className + "'");
        if (!blank()) return false;
        if (scan.atEnd() || scan.peek() != '{') return fail(source, scan.position(), "expected '{' after the plugin's name");
        scan.advance();
        while (true) {
            if (!blank()) return false;
            if (scan.atEnd()) return fail(source, scan.position(), "the block of '" + block.name + "' has no closing '}'");
            if (scan.peek() == '}') {
                scan.advance();
                break;
            }
            PropertyStatement statement;
            statement.offset = scan.position();
            statement.name = std::string(scan.word());
            if (statement.name.empty()) return fail(source, scan.position(), std::string("unexpected '") + scan.peek() + "'; expected a property name");
            if (!blank()) return false;
            if (scan.atEnd() || scan.peek() != '=') return fail(source, scan.position(), "expected '=' after '" + statement.name + "'");
            scan.advance();
            statement.valueOffset = scan.position();
            auto value = scan.valueText(message);
            if (!value) return fail(source, scan.position(), message + " of '" + statement.name + "'");
            statement.value = *value;
            block.properties.push_back(std::move(statement));
        }
        blocks_.push_back(std::move(block));
    }
}

}  // namespace tovi::ref::format
