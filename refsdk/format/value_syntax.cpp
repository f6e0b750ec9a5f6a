#include "format/value_syntax.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <limits>

#include "format/packed_data.h"

namespace tovi::ref::format {

using namespace scene;

namespace {

bool isNameChar(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '@' || c == '|' ||
           c == '_';
}

// Characters of bare words: names, keywords and numbers.
bool isWordChar(char c) { return isNameChar(c) || c == '.' || c == '+' || c == '-'; }

bool isSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

struct Number {
    bool integral = false;
    int64_t integer = 0;
    double real = 0;
};

// The whole word as a number, or nothing.
std::optional<Number> readNumber(std::string_view word) {
    if (word.empty()) return std::nullopt;
    std::string_view digits = word;
    if (digits.front() == '+') digits.remove_prefix(1);
    if (digits.empty() || digits.front() == '+') return std::nullopt;
    const char* end = digits.data() + digits.size();
    Number number;
    auto [integerEnd, integerError] = std::from_chars(digits.data(), end, number.integer);
    if (integerError == std::errc() && integerEnd == end) {
        number.integral = true;
        // "-0" is an integer, and where a real number is read it keeps its sign.
        number.real = number.integer == 0 && digits.front() == '-' ? -0.0 : static_cast<double>(number.integer);
        return number;
    }
    auto [realEnd, realError] = std::from_chars(digits.data(), end, number.real);
    if (realEnd != end || (realError != std::errc() && realError != std::errc::result_out_of_range)) return std::nullopt;
    return number;
}

// A number as a value: integers stay integers while they fit; other numbers are floats, or
// doubles where a double is expected.
Value numberValue(const Number& number, PropertyType hint) {
    if (hint == PropertyType::Double) return Value(number.real);
    if (number.integral && number.integer >= std::numeric_limits<int32_t>::min() &&
        number.integer <= std::numeric_limits<int32_t>::max()) {
        return Value(static_cast<int32_t>(number.integer));
    }
    if (number.integral) return Value(number.real);
    return Value(static_cast<float>(number.real));
}

PropertyType itemHint(PropertyType listType) {
    return isList(listType) ? elementType(listType) : PropertyType::Unspecified;
}

std::optional<PropertyType> typedListConstructor(std::string_view word) {
    if (word == "ListInt") return PropertyType::ListInt;
    if (word == "ListFloat") return PropertyType::ListFloat;
    if (word == "ListVector") return PropertyType::ListVector;
    if (word == "ListColor") return PropertyType::ListColor;
    if (word == "ListTransform") return PropertyType::ListTransform;
    if (word == "ListString") return PropertyType::ListString;
    if (word == "ListPlugin") return PropertyType::ListPlugin;
    return std::nullopt;
}

// The byte forms of packed lists: ListIntHex("..."), ListIntZip(count, "..."),
// ListIntData("file", offset, count), and likewise for Float, Vector, Color and Transform.
enum class ByteForm { Hex, Zip, Data };
struct ByteConstructor {
    PackedKind kind;
    ByteForm form;
};

std::optional<ByteConstructor> byteConstructor(std::string_view word) {
    if (word.substr(0, 4) != "List") return std::nullopt;
    word.remove_prefix(4);
    for (PackedKind kind : {PackedKind::Int, PackedKind::Float, PackedKind::Vector, PackedKind::Color,
                            PackedKind::Transform}) {
        std::string_view name = packedKindName(kind);
        if (word.substr(0, name.size()) != name) continue;
        std::string_view form = word.substr(name.size());
        if (form == "Hex") return ByteConstructor{kind, ByteForm::Hex};
        if (form == "Zip") return ByteConstructor{kind, ByteForm::Zip};
        if (form == "Data") return ByteConstructor{kind, ByteForm::Data};
    }
    return std::nullopt;
}

bool isConstructor(std::string_view word) {
    return word == "Vector" || word == "Color" || word == "AColor" || word == "Matrix" || word == "Transform" ||
           word == "TransformHex" || word == "List" || word == "Plugin" || typedListConstructor(word).has_value() ||
           byteConstructor(word).has_value();
}

// A float read as a float: reading a double and narrowing it could round twice.
bool readFloat(std::string_view word, float& value) {
    if (!word.empty() && word.front() == '+') word.remove_prefix(1);
    if (word.empty() || word.front() == '+') return false;
    auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    return end == word.data() + word.size() && (error == std::errc() || error == std::errc::result_out_of_range);
}

void appendUtf8(std::string& out, uint32_t code) {
    if (code < 0x80) {
        out += static_cast<char>(code);
    } else if (code < 0x800) {
        out += static_cast<char>(0xC0 | (code >> 6));
        out += static_cast<char>(0x80 | (code & 0x3F));
    } else {
        out += static_cast<char>(0xE0 | (code >> 12));
        out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (code & 0x3F));
    }
}

class Parser {
public:
    Parser(std::string_view text, size_t position, const PluginNames& names, const SideDataReader* sideData)
        : text_(text), pos_(position), names_(names), sideData_(sideData) {}

    size_t position() const { return pos_; }
    const ParseError& error() const { return error_; }

    void skipSpace() {
        while (pos_ < text_.size() && isSpace(text_[pos_])) ++pos_;
    }
    bool atEnd() const { return pos_ >= text_.size(); }

    std::optional<Value> value(PropertyType hint) {
        skipSpace();
        if (atEnd()) return fail("a value is missing");
        if (text_[pos_] == '"') {
            auto text = quoted();
            if (!text) return std::nullopt;
            return Value(std::move(*text));
        }
        size_t start = pos_;
        std::string_view word = readWord();
        if (word.empty()) return fail(std::string("unexpected '") + text_[pos_] + "'");
        size_t afterWord = pos_;
        skipSpace();
        if (!atEnd() && text_[pos_] == '(' && isConstructor(word)) return constructor(word, hint);
        pos_ = afterWord;
        if (word == "true") return Value(true);
        if (word == "false") return Value(false);
        if (word == "null") return Value(PluginRef{});
        // Where a plugin is expected, a word is a plugin name even when it looks like a number.
        if (hint != PropertyType::Plugin) {
            if (auto number = readNumber(word)) return numberValue(*number, hint);
        }
        for (char c : word) {
            if (!isNameChar(c)) {
                pos_ = start;
                return fail("'" + std::string(word) + "' is neither a number nor a plugin name");
            }
        }
        std::string_view output;
        if (text_.substr(pos_, 2) == "::") {
            pos_ += 2;
            output = readWord();
            if (output.empty()) return fail("an output name is missing after '::'");
        }
        return reference(word, output, start);
    }

    std::optional<Value> fail(std::string message) {
        if (error_.message.empty()) error_ = ParseError{pos_, std::move(message)};
        return std::nullopt;
    }

private:
    std::string_view readWord() {
        size_t start = pos_;
        while (pos_ < text_.size() && isWordChar(text_[pos_])) ++pos_;
        return text_.substr(start, pos_ - start);
    }

    bool expect(char c) {
        skipSpace();
        if (atEnd() || text_[pos_] != c) {
            fail(std::string("expected '") + c + "'");
            return false;
        }
        ++pos_;
        return true;
    }

    // Reads ',' or the closing ')'; true when the list goes on.
    std::optional<bool> separator() {
        skipSpace();
        if (!atEnd() && text_[pos_] == ',') {
            ++pos_;
            return true;
        }
        if (!atEnd() && text_[pos_] == ')') {
            ++pos_;
            return false;
        }
        fail("expected ',' or ')'");
        return std::nullopt;
    }

    std::optional<std::string> quoted() {
        ++pos_;
        std::string text;
        while (!atEnd()) {
            char c = text_[pos_++];
            if (c == '"') return text;
            if (c != '\\') {
                text += c;
                continue;
            }
            if (atEnd()) break;
            char escaped = text_[pos_++];
            switch (escaped) {
                case '"': text += '"'; break;
                case '\\': text += '\\'; break;
                case 'n': text += '\n'; break;
                case 'r': text += '\r'; break;
                case 't': text += '\t'; break;
                case 'u': {
                    uint32_t code = 0;
                    auto digits = text_.substr(pos_, 4);
                    auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), code, 16);
                    if (digits.size() != 4 || error != std::errc() || end != digits.data() + 4) {
                        fail("\\u needs four hexadecimal digits");
                        return std::nullopt;
                    }
                    pos_ += 4;
                    appendUtf8(text, code);
                    break;
                }
                default:
                    --pos_;
                    fail(std::string("unknown escape '\\") + escaped + "'");
                    return std::nullopt;
            }
        }
        fail("the text has no closing '\"'");
        return std::nullopt;
    }

    std::optional<float> floatArgument() {
        skipSpace();
        float number;
        if (!readFloat(readWord(), number)) {
            fail("expected a number");
            return std::nullopt;
        }
        return number;
    }

    // "(a, b, ...)" with exactly n floats; the opening parenthesis is next.
    template <size_t n>
    std::optional<std::array<float, n>> floatArguments() {
        std::array<float, n> numbers{};
        if (!expect('(')) return std::nullopt;
        for (size_t index = 0; index < n; ++index) {
            auto number = floatArgument();
            if (!number) return std::nullopt;
            numbers[index] = *number;
            if (!expect(index + 1 < n ? ',' : ')')) return std::nullopt;
        }
        return numbers;
    }

    std::optional<double> numberArgument() {
        skipSpace();
        std::string_view word = readWord();
        auto number = readNumber(word);
        if (!number) {
            fail("expected a number");
            return std::nullopt;
        }
        return number->real;
    }

    // "(a, b, ...)" with exactly n numbers; the opening parenthesis is next.
    template <size_t n>
    std::optional<std::array<double, n>> numberArguments() {
        std::array<double, n> numbers{};
        if (!expect('(')) return std::nullopt;
        for (size_t index = 0; index < n; ++index) {
            auto number = numberArgument();
            if (!number) return std::nullopt;
            numbers[index] = *number;
            if (!expect(index + 1 < n ? ',' : ')')) return std::nullopt;
        }
        return numbers;
    }

    std::optional<std::vector<Value>> items(PropertyType hint) {
        std::vector<Value> list;
        if (!expect('(')) return std::nullopt;
        skipSpace();
        if (!atEnd() && text_[pos_] == ')') {
            ++pos_;
            return list;
        }
        while (true) {
            auto item = value(hint);
            if (!item) return std::nullopt;
            list.push_back(std::move(*item));
            auto more = separator();
            if (!more) return std::nullopt;
            if (!*more) return list;
        }
    }

    std::optional<Value> typed(std::optional<Value> value, PropertyType type, const char* what) {
        if (!value) return std::nullopt;
        auto conformed = conformToType(std::move(*value), type);
        if (!conformed) return fail(std::string("expected ") + what);
        return conformed;
    }

    std::optional<Value> constructor(std::string_view word, PropertyType hint) {
        if (word == "Vector") {
            auto n = floatArguments<3>();
            if (!n) return std::nullopt;
            return Value(VectorValue{(*n)[0], (*n)[1], (*n)[2]});
        }
        if (word == "Color") {
            auto n = floatArguments<3>();
            if (!n) return std::nullopt;
            return Value(ColorValue{(*n)[0], (*n)[1], (*n)[2]});
        }
        if (word == "AColor") {
            auto n = floatArguments<4>();
            if (!n) return std::nullopt;
            return Value(AColorValue{(*n)[0], (*n)[1], (*n)[2], (*n)[3]});
        }
        if (word == "Matrix") {
            if (!expect('(')) return std::nullopt;
            MatrixValue matrix;
            for (int column = 0; column < 3; ++column) {
                auto vector = typed(value(PropertyType::Vector), PropertyType::Vector, "a Vector");
                if (!vector) return std::nullopt;
                matrix.columns[column] = vector->as<VectorValue>();
                if (!expect(column < 2 ? ',' : ')')) return std::nullopt;
            }
            return Value(matrix);
        }
        if (word == "Transform") {
            if (!expect('(')) return std::nullopt;
            auto matrix = typed(value(PropertyType::Matrix), PropertyType::Matrix, "a Matrix");
            if (!matrix || !expect(',')) return std::nullopt;
            // The offset keeps double precision, so it is read here rather than as a Vector.
            skipSpace();
            if (readWord() != "Vector") return fail("expected the offset as Vector(x, y, z)");
            auto offset = numberArguments<3>();
            if (!offset || !expect(')')) return std::nullopt;
            return Value(TransformValue{matrix->as<MatrixValue>(), {(*offset)[0], (*offset)[1], (*offset)[2]}});
        }
        if (word == "TransformHex") {
            auto bytes = hexArgument(true);
            if (!bytes) return std::nullopt;
            if (bytes->size() != transformRecordSize) return fail("a transform takes 60 bytes");
            return Value(transformFromRecord(bytes->data()));
        }
        if (auto form = byteConstructor(word)) return bytesList(*form);
        if (word == "List") {
            auto list = items(itemHint(hint));
            if (!list) return std::nullopt;
            return Value(ValueList{std::move(*list)});
        }
        if (word == "Plugin") {
            size_t start = pos_;
            if (!expect('(')) return std::nullopt;
            skipSpace();
            if (atEnd() || text_[pos_] != '"') return fail("expected the plugin name in quotes");
            auto name = quoted();
            if (!name) return std::nullopt;
            std::string output;
            auto more = separator();
            if (!more) return std::nullopt;
            if (*more) {
                skipSpace();
                if (atEnd() || text_[pos_] != '"') return fail("expected the output name in quotes");
                auto outputName = quoted();
                if (!outputName || !expect(')')) return std::nullopt;
                output = std::move(*outputName);
            }
            return reference(*name, output, start);
        }
        PropertyType listType = *typedListConstructor(word);
        if (auto packed = plainPackedList(listType)) return packed;
        auto list = items(elementType(listType));
        if (!list) return std::nullopt;
        return typed(Value(ValueList{std::move(*list)}), listType, "elements of the list's type");
    }

    std::optional<Value> reference(std::string_view name, std::string_view output, size_t start) {
        auto ref = names_.resolve(name, output);
        if (ref) return Value(*ref);
        pos_ = start;
        if (output.empty()) return fail("no plugin named '" + std::string(name) + "'");
        return fail("no output '" + std::string(output) + "' of a plugin named '" + std::string(name) + "'");
    }

    // A quoted text of hexadecimal digits as bytes; the opening parenthesis is next when
    // `opening`, and the closing one follows the text when `closing`.
    std::optional<std::vector<uint8_t>> hexArgument(bool opening, bool closing = true) {
        if (opening && !expect('(')) return std::nullopt;
        skipSpace();
        if (atEnd() || text_[pos_] != '"') {
            fail("expected hexadecimal digits in quotes");
            return std::nullopt;
        }
        size_t end = text_.find('"', pos_ + 1);
        if (end == std::string_view::npos) {
            fail("the text has no closing '\"'");
            return std::nullopt;
        }
        auto bytes = bytesFromHex(text_.substr(pos_ + 1, end - pos_ - 1));
        if (!bytes) {
            fail("expected an even number of hexadecimal digits");
            return std::nullopt;
        }
        pos_ = end + 1;
        if (closing && !expect(')')) return std::nullopt;
        return bytes;
    }

    std::optional<uint64_t> countArgument() {
        skipSpace();
        auto number = readNumber(readWord());
        if (!number || !number->integral || number->integer < 0) {
            fail("expected a count");
            return std::nullopt;
        }
        return static_cast<uint64_t>(number->integer);
    }

    std::optional<Value> bytesList(ByteConstructor constructor) {
        size_t elementSize = packedElementSize(constructor.kind);
        std::optional<std::vector<uint8_t>> bytes;
        if (constructor.form == ByteForm::Hex) {
            bytes = hexArgument(true);
        } else if (constructor.form == ByteForm::Zip) {
            if (!expect('(')) return std::nullopt;
            auto count = countArgument();
            if (!count || !expect(',')) return std::nullopt;
            size_t start = pos_;
            auto stream = hexArgument(false);
            if (!stream) return std::nullopt;
            if (*count > std::numeric_limits<size_t>::max() / elementSize) return fail("the count is too large");
            bytes = inflateBytes(stream->data(), stream->size(), *count * elementSize);
            if (!bytes) {
                pos_ = start;
                return fail("the compressed data does not inflate to " + std::to_string(*count) + " elements");
            }
        } else {
            bytes = sideDataArgument(elementSize);
        }
        if (!bytes) return std::nullopt;
        auto list = packedFromBytes(constructor.kind, bytes->data(), bytes->size());
        if (!list) return fail("the bytes are no whole number of elements");
        return list;
    }

    std::optional<std::vector<uint8_t>> sideDataArgument(size_t elementSize) {
        size_t start = pos_;
        if (!expect('(')) return std::nullopt;
        skipSpace();
        if (atEnd() || text_[pos_] != '"') {
            fail("expected the side data file's name in quotes");
            return std::nullopt;
        }
        auto file = quoted();
        if (!file || !expect(',')) return std::nullopt;
        auto offset = countArgument();
        if (!offset || !expect(',')) return std::nullopt;
        auto count = countArgument();
        if (!count || !expect(')')) return std::nullopt;
        if (!sideData_) {
            pos_ = start;
            fail("side data files are read only with scene files");
            return std::nullopt;
        }
        if (*count > std::numeric_limits<uint64_t>::max() / elementSize) {
            fail("the count is too large");
            return std::nullopt;
        }
        std::string message;
        auto bytes = sideData_->read(*file, *offset, *count * elementSize, message);
        if (!bytes) {
            pos_ = start;
            fail(message);
        }
        return bytes;
    }

    // ListInt(1, 2), ListFloat(0.5), ListVector(Vector(1, 2, 3)), ListColor(Color(...)) written
    // plainly are read straight into their packed form; anything else (other item forms, errors)
    // goes the general way, from the same position.
    std::optional<Value> plainPackedList(PropertyType listType) {
        size_t start = pos_;
        std::optional<Value> list;
        switch (listType) {
            case PropertyType::ListInt: list = plainItems<IntList>([this](IntList& out) { return plainInt(out); }); break;
            case PropertyType::ListFloat:
                list = plainItems<FloatList>([this](FloatList& out) { return plainFloat(out); });
                break;
            case PropertyType::ListVector:
                list = plainItems<VectorList>([this](VectorList& out) { return plainTriple(out, "Vector"); });
                break;
            case PropertyType::ListColor:
                list = plainItems<ColorList>([this](ColorList& out) { return plainTriple(out, "Color"); });
                break;
            default: break;
        }
        if (!list) pos_ = start;
        return list;
    }

    bool plainChar(char c) {
        skipSpace();
        if (atEnd() || text_[pos_] != c) return false;
        ++pos_;
        return true;
    }

    template <typename List, typename ReadItem>
    std::optional<Value> plainItems(ReadItem readItem) {
        List list;
        if (!plainChar('(')) return std::nullopt;
        if (plainChar(')')) return Value(std::move(list));
        do {
            if (!readItem(list)) return std::nullopt;
        } while (plainChar(','));
        if (!plainChar(')')) return std::nullopt;
        return Value(std::move(list));
    }

    bool plainInt(IntList& out) {
        skipSpace();
        std::string_view word = readWord();
        int32_t number;
        auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
        if (word.empty() || error != std::errc() || end != word.data() + word.size()) return false;
        out.push_back(number);
        return true;
    }

    bool plainFloat(FloatList& out) {
        skipSpace();
        float number;
        if (!readFloat(readWord(), number)) return false;
        out.push_back(number);
        return true;
    }

    template <typename List>
    bool plainTriple(List& out, std::string_view name) {
        skipSpace();
        if (readWord() != name || !plainChar('(')) return false;
        float numbers[3];
        for (int index = 0; index < 3; ++index) {
            skipSpace();
            if (!readFloat(readWord(), numbers[index]) || !plainChar(index < 2 ? ',' : ')')) return false;
        }
        out.push_back({numbers[0], numbers[1], numbers[2]});
        return true;
    }

    std::string_view text_;
    size_t pos_;
    const PluginNames& names_;
    const SideDataReader* sideData_;
    ParseError error_;
};

bool takesNumberSequence(PropertyType type) {
    switch (type) {
        case PropertyType::Vector:
        case PropertyType::Color:
        case PropertyType::AColor:
        case PropertyType::Texture:
        case PropertyType::TextureVector:
        case PropertyType::ListInt:
        case PropertyType::ListFloat:
        case PropertyType::ListDouble: return true;
        default: return false;
    }
}

// "1 2 3" or "1, 2, 3": numbers only, as a list.
std::optional<Value> numberSequence(std::string_view text, PropertyType type) {
    PropertyType hint = isList(type) ? elementType(type) : PropertyType::Float;
    ValueList list;
    size_t position = 0;
    while (position < text.size()) {
        if (isSpace(text[position]) || text[position] == ',') {
            ++position;
            continue;
        }
        size_t start = position;
        while (position < text.size() && !isSpace(text[position]) && text[position] != ',') ++position;
        auto number = readNumber(text.substr(start, position - start));
        if (!number) return std::nullopt;
        list.items.push_back(numberValue(*number, hint));
    }
    if (list.items.empty()) return std::nullopt;
    return conformToType(Value(std::move(list)), type);
}

}  // namespace

std::optional<Value> parseValueAt(std::string_view text, size_t& position, PropertyType type,
                                  const PluginNames& names, ParseError* error, const SideDataReader* sideData) {
    Parser parser(text, position, names, sideData);
    auto value = parser.value(isTexture(type) ? textureValueType(type) : type);
    if (value) {
        value = conformToType(std::move(*value), type);
        if (!value) parser.fail("the value does not fit a " + std::string(typeName(static_cast<int>(type))) + " property");
    }
    if (!value) {
        if (error) *error = parser.error();
        return std::nullopt;
    }
    position = parser.position();
    return value;
}

std::optional<Value> parseValue(std::string_view text, PropertyType type, const PluginNames& names,
                                ParseError* error) {
    if (type == PropertyType::String) {
        size_t first = 0;
        while (first < text.size() && isSpace(text[first])) ++first;
        if (first == text.size() || text[first] != '"') return Value(std::string(text));
    }
    size_t position = 0;
    ParseError strictError;
    auto value = parseValueAt(text, position, type, names, &strictError);
    if (value) {
        while (position < text.size() && isSpace(text[position])) ++position;
        if (position == text.size()) return value;
        strictError = ParseError{position, "unexpected text after the value"};
    }
    if (takesNumberSequence(type)) {
        if (auto sequence = numberSequence(text, type)) return sequence;
    }
    if (error) *error = strictError;
    return std::nullopt;
}

std::string printFloat(float value) {
    char buffer[64];
    auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return std::string(buffer, result.ptr);
}

std::string printDouble(double value) {
    char buffer[64];
    auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return std::string(buffer, result.ptr);
}

namespace {

// A number standing alone must not read back as an integer.
std::string markedAsReal(std::string text) {
    if (text.find_first_of(".eni") == std::string::npos) text += ".0";
    return text;
}

bool isPlainName(const std::string& name) {
    if (name.empty() || name == "true" || name == "false" || name == "null" || readNumber(name)) return false;
    for (char c : name) {
        if (!isNameChar(c)) return false;
    }
    return true;
}

void printQuoted(const std::string& text, std::string& out) {
    out += '"';
    for (char c : text) {
        switch (c) {
            case '"': out += "\\\""; break;
            case '\\': out += "\\\\"; break;
            case '\n': out += "\\n"; break;
            case '\r': out += "\\r"; break;
            case '\t': out += "\\t"; break;
            default:
                if (static_cast<unsigned char>(c) < 0x20) {
                    static const char hex[] = "0123456789abcdef";
                    out += "\\u00";
                    out += hex[(c >> 4) & 0xF];
                    out += hex[c & 0xF];
                } else {
                    out += c;
                }
        }
    }
    out += '"';
}

class Printer {
public:
    Printer(std::string& out, const PluginNames& names, const ValueFormat& format)
        : out_(out), names_(names), format_(format) {}

    void value(const Value& value) {
        std::visit([this](const auto& held) { print(held); }, value.data);
    }

private:
    void print(int32_t v) { out_ += std::to_string(v); }
    void print(float v) { out_ += markedAsReal(printFloat(v)); }
    void print(double v) { out_ += markedAsReal(printDouble(v)); }
    void print(bool v) { out_ += v ? "true" : "false"; }
    void numbers(const char* name, std::initializer_list<float> values) {
        out_ += name;
        out_ += '(';
        bool first = true;
        for (float v : values) {
            if (!first) out_ += ", ";
            first = false;
            out_ += printFloat(v);
        }
        out_ += ')';
    }
    void print(const VectorValue& v) { numbers("Vector", {v.x, v.y, v.z}); }
    void print(const ColorValue& c) { numbers("Color", {c.r, c.g, c.b}); }
    void print(const AColorValue& c) { numbers("AColor", {c.r, c.g, c.b, c.a}); }
    void print(const MatrixValue& m) {
        out_ += "Matrix(";
        for (int column = 0; column < 3; ++column) {
            if (column) out_ += ", ";
            print(m.columns[column]);
        }
        out_ += ')';
    }
    void print(const TransformValue& t) {
        if (format_.hexTransforms) {
            std::vector<uint8_t> record;
            appendTransformRecord(t, record);
            out_ += "TransformHex(\"";
            appendHex(record.data(), record.size(), out_);
            out_ += "\")";
            return;
        }
        out_ += "Transform(";
        print(t.matrix);
        out_ += ", Vector(" + printDouble(t.offset[0]) + ", " + printDouble(t.offset[1]) + ", " +
                printDouble(t.offset[2]) + "))";
    }
    void print(const std::string& text) { printQuoted(text, out_); }
    void print(const PluginRef& ref) {
        auto names = ref.isNone() ? std::nullopt : names_.names(ref);
        if (!names) {
            out_ += "null";
            return;
        }
        const auto& [plugin, output] = *names;
        if (isPlainName(plugin) && (output.empty() || isPlainName(output))) {
            out_ += plugin;
            if (!output.empty()) out_ += "::" + output;
            return;
        }
        out_ += "Plugin(";
        printQuoted(plugin, out_);
        if (!output.empty()) {
            out_ += ", ";
            printQuoted(output, out_);
        }
        out_ += ')';
    }
    template <typename List>
    void list(const char* name, const List& items) {
        out_ += name;
        out_ += '(';
        bool first = true;
        for (const auto& item : items) {
            if (!first) out_ += ", ";
            first = false;
            print(item);
        }
        out_ += ')';
    }
    // A packed list of numbers in a byte form; false when it is written plainly.
    template <typename List>
    bool bytes(const List& items) {
        if (items.empty() || (!format_.hexArrays && !format_.sideData)) return false;
        const char* kind = packedKindName(packedKindOf<List>());
        std::vector<uint8_t> raw = packedBytes(items);
        if (format_.sideData) {
            if (auto place = format_.sideData->store(raw)) {
                out_ += std::string("List") + kind + "Data(";
                printQuoted(place->file, out_);
                out_ += ", " + std::to_string(place->offset) + ", " + std::to_string(items.size()) + ")";
                return true;
            }
        }
        if (!format_.hexArrays) return false;
        if (format_.compressed) {
            std::vector<uint8_t> stream = compressBytes(raw.data(), raw.size());
            out_ += std::string("List") + kind + "Zip(" + std::to_string(items.size()) + ", \"";
            appendHex(stream.data(), stream.size(), out_);
        } else {
            out_ += std::string("List") + kind + "Hex(\"";
            appendHex(raw.data(), raw.size(), out_);
        }
        out_ += "\")";
        return true;
    }

    void print(const Value& item) { value(item); }
    void print(const ValueList& v) { list("List", v.items); }
    void print(const IntList& v) {
        if (!bytes(v)) list("ListInt", v);
    }
    void print(const FloatList& v) {
        if (bytes(v)) return;
        out_ += "ListFloat(";
        for (size_t index = 0; index < v.size(); ++index) {
            if (index) out_ += ", ";
            out_ += printFloat(v[index]);
        }
        out_ += ')';
    }
    void print(const VectorList& v) {
        if (!bytes(v)) list("ListVector", v);
    }
    void print(const ColorList& v) {
        if (!bytes(v)) list("ListColor", v);
    }
    void print(const TransformList& v) {
        if (bytes(v)) return;
        // Elements of a plain list stay plain whatever the form of single transforms.
        ValueFormat plain;
        Printer(out_, names_, plain).list("ListTransform", v);
    }
    void print(const StringList& v) { list("ListString", v); }
    void print(const PluginList& v) { list("ListPlugin", v); }

    std::string& out_;
    const PluginNames& names_;
    const ValueFormat& format_;
};

}  // namespace

std::string quotedText(std::string_view text) {
    std::string out;
    printQuoted(std::string(text), out);
    return out;
}

std::string printValue(const Value& value, const PluginNames& names) {
    std::string out;
    printValue(value, names, ValueFormat{}, out);
    return out;
}

void printValue(const Value& value, const PluginNames& names, const ValueFormat& format, std::string& out) {
    Printer(out, names, format).value(value);
}

}  // namespace tovi::ref::format
