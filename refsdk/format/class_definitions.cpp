#include "format/class_definitions.h"

#include <algorithm>
#include <charconv>

#include "format/ui_guides.h"
#include "format/value_syntax.h"
#include "scene/categories.h"

namespace tovi::ref::format {

using namespace scene;

namespace {

// Class definitions name no plugins: the only plugin default is null.
class NoPlugins : public PluginNames {
public:
    std::optional<PluginRef> resolve(std::string_view, std::string_view) const override { return std::nullopt; }
    std::optional<std::pair<std::string, std::string>> names(const PluginRef&) const override { return std::nullopt; }
};

class Reader {
public:
    Reader(std::string_view text, ClassRegistry& registry) : text_(text), registry_(registry) {}

    bool read(std::string* error) {
        skip();
        while (!atEnd()) {
            if (!readClass()) {
                if (error) *error = "line " + std::to_string(lineOf(failedAt_)) + ": " + message_;
                return false;
            }
            skip();
        }
        return true;
    }

private:
    bool atEnd() const { return pos_ >= text_.size(); }

    // White space and comments.
    void skip() {
        while (!atEnd()) {
            char c = text_[pos_];
            if (c == '#') {
                while (!atEnd() && text_[pos_] != '\n') ++pos_;
            } else if (c == ' ' || c == '\t' || c == '\n' || c == '\r') {
                ++pos_;
            } else {
                return;
            }
        }
    }

    // Spaces on the same line only.
    void skipBlanks() {
        while (!atEnd() && (text_[pos_] == ' ' || text_[pos_] == '\t')) ++pos_;
    }

    size_t lineOf(size_t position) const {
        return 1 + std::count(text_.begin(), text_.begin() + std::min(position, text_.size()), '\n');
    }

    bool fail(std::string message) {
        failedAt_ = pos_;
        message_ = std::move(message);
        return false;
    }

    std::string_view word() {
        size_t start = pos_;
        while (!atEnd()) {
            char c = text_[pos_];
            bool wordChar = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_' ||
                            c == '<' || c == '>' || c == '@' || c == '|';
            if (!wordChar) break;
            ++pos_;
        }
        return text_.substr(start, pos_ - start);
    }

    bool quoted(std::string& text) {
        skip();
        if (atEnd() || text_[pos_] != '"') return fail("expected a description in quotes");
        size_t position = pos_;
        ParseError error;
        auto value = parseValueAt(text_, position, PropertyType::String, noPlugins_, &error);
        if (!value) {
            pos_ = error.offset;
            return fail(error.message);
        }
        pos_ = position;
        text = value->as<std::string>();
        return true;
    }

    // gpu=... if it comes next; the value's index in the names.
    bool gpuOption(std::initializer_list<std::string_view> names, int& support) {
        skipBlanks();
        if (text_.substr(pos_, 4) != "gpu=") return true;
        pos_ += 4;
        std::string_view name = word();
        int index = 0;
        for (auto candidate : names) {
            if (candidate == name) {
                support = index;
                return true;
            }
            ++index;
        }
        return fail("unknown GPU support '" + std::string(name) + "'");
    }

    // categories=name,name,... if it comes next.
    bool categoriesOption(uint64_t& mask) {
        skipBlanks();
        if (text_.substr(pos_, 11) != "categories=") return true;
        pos_ += 11;
        do {
            if (!atEnd() && text_[pos_] == ',') ++pos_;
            std::string_view name = word();
            auto index = categoryIndex(name);
            if (!index) return fail("unknown category '" + std::string(name) + "'");
            mask |= uint64_t{1} << *index;
        } while (!atEnd() && text_[pos_] == ',');
        return true;
    }

    // The guide text in braces after a property's description, if it comes next: its lines
    // joined by single spaces.
    bool guideBlock(PropertyDefinition& definition) {
        skip();
        if (atEnd() || text_[pos_] != '{') return true;
        size_t start = ++pos_;
        bool inQuotes = false;
        while (!atEnd() && (inQuotes || text_[pos_] != '}')) {
            if (text_[pos_] == '\\' && inQuotes) ++pos_;
            else if (text_[pos_] == '"') inQuotes = !inQuotes;
            ++pos_;
        }
        if (atEnd()) return fail("the guides in braces do not end");
        std::string joined;
        bool space = false;
        bool escaped = false;
        for (char c : text_.substr(start, pos_ - start)) {
            bool blank = c == ' ' || c == '\t' || c == '\n' || c == '\r';
            if (blank && !inQuotes) {
                space = !joined.empty();
                continue;
            }
            if (c == '"' && !escaped) inQuotes = !inQuotes;
            escaped = inQuotes && c == '\\' && !escaped;
            if (space) joined += ' ';
            space = false;
            joined += c;
        }
        std::string error;
        auto guides = parseUIGuides(joined, &error);
        if (!guides) {
            pos_ = start;
            return fail("guides: " + error);
        }
        ++pos_;
        definition.uiGuides = std::move(joined);
        definition.guides = std::move(*guides);
        return true;
    }

    bool readClass() {
        if (word() != "class") return fail("expected 'class'");
        skipBlanks();
        std::string name(word());
        if (name.empty()) return fail("expected the class name");
        int gpu = 0;
        if (!gpuOption({"full", "partial", "bake", "none"}, gpu)) return false;
        uint64_t categories = 0;
        if (!categoriesOption(categories)) return false;
        std::string description;
        if (!quoted(description)) return false;
        auto pluginClass = std::make_unique<PluginClass>(name, description);
        pluginClass->setGpuSupport(static_cast<ClassGpuSupport>(gpu));
        pluginClass->setCategories(categories);
        skip();
        while (!atEnd() && text_.substr(pos_, 6) != "class ") {
            if (!readProperty(*pluginClass)) return false;
            skip();
        }
        if (!registry_.add(std::move(pluginClass))) return fail("class '" + name + "' is declared twice");
        return true;
    }

    bool readProperty(PluginClass& pluginClass) {
        PropertyDefinition definition;
        definition.name = std::string(word());
        if (definition.name.empty()) return fail("expected a property name");
        skipBlanks();
        if (!atEnd() && text_[pos_] == '(') {
            do {
                ++pos_;
                skipBlanks();
                std::string alias(word());
                if (alias.empty()) return fail("expected an alias");
                definition.aliases.push_back(alias);
                skipBlanks();
            } while (!atEnd() && text_[pos_] == ',');
            if (atEnd() || text_[pos_] != ')') return fail("expected ')' after the aliases");
            ++pos_;
            skipBlanks();
        }
        if (atEnd() || text_[pos_] != ':') return fail("expected ':' and the type");
        ++pos_;
        skipBlanks();
        std::string_view typeText = word();
        auto type = typeFromName(typeText);
        if (!type) return fail("unknown type '" + std::string(typeText) + "'");
        definition.type = *type;
        if (isList(*type)) definition.elementsCount = 0;
        if (!atEnd() && text_[pos_] == '[') {
            ++pos_;
            auto digits = word();
            int count = 0;
            auto [end, failure] = std::from_chars(digits.data(), digits.data() + digits.size(), count);
            if (!isList(*type) || failure != std::errc() || end != digits.data() + digits.size() || count <= 0 ||
                atEnd() || text_[pos_] != ']') {
                return fail("expected a positive element count of a list in brackets");
            }
            ++pos_;
            definition.elementsCount = count;
        }
        skipBlanks();
        if (!atEnd() && text_[pos_] == '=') {
            size_t position = pos_ + 1;
            ParseError error;
            auto value = parseValueAt(text_, position, *type, noPlugins_, &error);
            if (!value) {
                pos_ = error.offset;
                return fail(error.message);
            }
            value = conformToType(std::move(*value), *type, definition.elementsCount);
            if (!value) return fail("the default does not have the declared element count");
            definition.defaultValue = std::move(value);
            pos_ = position;
        }
        if (!gpuOption({"full", "partial", "none"}, definition.gpuSupport)) return false;
        if (!quoted(definition.description)) return false;
        if (!guideBlock(definition)) return false;
        std::string name = definition.name;
        if (!pluginClass.addProperty(std::move(definition))) return fail("property '" + name + "' is declared twice");
        return true;
    }

    std::string_view text_;
    ClassRegistry& registry_;
    size_t pos_ = 0;
    size_t failedAt_ = 0;
    std::string message_;
    NoPlugins noPlugins_;
};

}  // namespace

bool readClassDefinitions(std::string_view text, ClassRegistry& registry, std::string* error) {
    return Reader(text, registry).read(error);
}

}  // namespace tovi::ref::format
