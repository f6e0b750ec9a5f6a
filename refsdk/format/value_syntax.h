// The text form of property values: parsed by a property's declared type, printed from any
// value. The same syntax writes values in scene files; docs/value-syntax.md describes it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "scene/property_type.h"
#include "scene/value.h"

namespace tovi::ref::format {

// How plugin references meet names while parsing and printing.
class PluginNames {
public:
    virtual ~PluginNames() = default;
    // The plugin of that name, and the index of its output of that name when output is not
    // empty; nothing when either is unknown.
    virtual std::optional<scene::PluginRef> resolve(std::string_view plugin, std::string_view output) const = 0;
    // The plugin's name and, for a reference to an output, the output's name (empty otherwise);
    // nothing when the plugin does not exist.
    virtual std::optional<std::pair<std::string, std::string>> names(const scene::PluginRef& ref) const = 0;
};

struct ParseError {
    size_t offset = 0;
    std::string message;
};

// Packed lists that a scene file keeps in side data files beside it (ListIntData("file", offset,
// count) and the like). Only scene files have them; elsewhere such a value is refused.
class SideDataReader {
public:
    virtual ~SideDataReader() = default;
    // `size` bytes from `offset` of the named side file; nothing, with a message, when they cannot
    // be read.
    virtual std::optional<std::vector<uint8_t>> read(std::string_view file, uint64_t offset, uint64_t size,
                                                     std::string& message) const = 0;
};

class SideDataWriter {
public:
    struct Place {
        std::string file;  // as the scene file names it
        uint64_t offset = 0;
    };
    virtual ~SideDataWriter() = default;
    // Where the bytes of a packed list went, or nothing when the list stays in the scene text.
    virtual std::optional<Place> store(const std::vector<uint8_t>& bytes) = 0;
};

// How values are written. The default is the plain syntax.
struct ValueFormat {
    bool hexArrays = false;      // packed lists of numbers as ListIntHex("...") and the like
    bool compressed = false;     // with hexArrays: zlib streams, ListIntZip(count, "...")
    bool hexTransforms = false;  // single transforms as TransformHex("...")
    SideDataWriter* sideData = nullptr;  // packed lists that it takes become ListIntData(...)
};

// The whole text as a value of the declared type. Besides the strict syntax this accepts the
// short forms a person types: a text that does not start with '"' is the value of a String
// property as it stands, and numbers separated by spaces or commas make a vector, a colour or a
// list of numbers.
std::optional<scene::Value> parseValue(std::string_view text, scene::PropertyType type, const PluginNames& names,
                                       ParseError* error = nullptr);

// One value of the strict syntax starting at position (leading white space skipped); position
// ends after it. For readers of larger texts, such as scene files.
std::optional<scene::Value> parseValueAt(std::string_view text, size_t& position, scene::PropertyType type,
                                         const PluginNames& names, ParseError* error = nullptr,
                                         const SideDataReader* sideData = nullptr);

// The strict text of a value; parsing it by the property's type gives the same value back.
std::string printValue(const scene::Value& value, const PluginNames& names);
// The same in the given format, appended to out.
void printValue(const scene::Value& value, const PluginNames& names, const ValueFormat& format, std::string& out);

// A text in quotes, with escapes where it needs them.
std::string quotedText(std::string_view text);

// Shortest texts that read back to the same number.
std::string printFloat(float value);
std::string printDouble(double value);

}  // namespace tovi::ref::format
