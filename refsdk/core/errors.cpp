#include "core/errors.h"

namespace tovi::ref {

const char* errorText(int code) {
    static const char* const texts[] = {
        "No error.",
        "The renderer is not valid.",
        "Invalid argument.",
        "Out of memory.",
        "Plugin not found.",
        "Property not found.",
        "Plugin class not found.",
        "Invalid plugin name.",
        "Invalid property value.",
        "Cannot load file or file not found.",
        "Scene file parse error.",
        "Cannot write file.",
        "Invalid render mode.",
        "The renderer is busy.",
        "Not supported by the reference SDK yet.",
        "The operation failed.",
    };
    if (code < 0 || code >= static_cast<int>(sizeof(texts) / sizeof(texts[0]))) return nullptr;
    return texts[code];
}

}  // namespace tovi::ref
