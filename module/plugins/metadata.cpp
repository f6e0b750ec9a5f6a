#include "plugins/metadata.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <initializer_list>
#include <vector>

#include "core/errors.h"
#include "core/marshal.h"
#include "plugins/plugin.h"
#include "plugins/property_stream.h"

namespace tovi {

namespace {

// Where a definition came from: a class alone, or a plugin instance of it.
struct DefinitionSource {
    PyObject* renderer;
    const char* className;
    uint64_t pluginID;
    bool instance;
    bool isInstance() const { return instance; }
    ToviRenderer* handle() const { return rendererHandle(renderer); }
};

const char* typeName(int code) {
    static const char* const plain[] = {
        "int",     "float",   "double",  "boolean", "Vector",      "Color",        "AColor",     "Matrix",
        "Transform", "String", "Plugin", "Texture", "List<Object>", "TextureFloat", "TextureInt", "TextureVector",
        "TextureMatrix", "TextureTransform"};
    static const char* const lists[] = {
        "List<int>",     "List<float>",        "List<double>",     "List<boolean>",        "List<Vector>",
        "List<Color>",   "List<AColor>",       "List<Matrix>",     "List<Transform>",      "List<String>",
        "List<Plugin>",  "List<Texture>",      nullptr,            "List<TextureFloat>",   "List<TextureInt>",
        "List<TextureVector>", "List<TextureMatrix>", "List<TextureTransform>"};
    static const char* const outputs[] = {"OutputTexture",       "OutputTextureFloat",  "OutputTextureInt",
                                          "OutputTextureVector", "OutputTextureMatrix", "OutputTextureTransform"};
    const char* name = nullptr;
    if (code >= 0 && code <= 17) name = plain[code];
    if (code >= 100 && code <= 117) name = lists[code - 100];
    if (code >= 1000 && code <= 1005) name = outputs[code - 1000];
    if (code == 10000) name = "Unspecified";
    return name ? name : "Object";
}

const char* gpuSupportName(int value) {
    static const char* const names[] = {"Full", "Partial", "None"};
    return value >= 0 && value <= 2 ? names[value] : "Unknown";
}

// Puts a new reference under the key; false with the Python error set.
bool put(PyObject* dict, const char* key, PyObject* value) {
    if (!value) return false;
    int result = PyDict_SetItemString(dict, key, value);
    Py_DECREF(value);
    return result == 0;
}

PyObject* textOrEmpty(const char* text) { return PyUnicode_FromString(text ? text : ""); }

PyObject* aliasList(const char* text) {
    PyRef list(PyList_New(0));
    if (!list || !text || !*text) return list.release();
    for (const char* start = text;; ) {
        const char* comma = std::strchr(start, ',');
        size_t length = comma ? static_cast<size_t>(comma - start) : std::strlen(start);
        PyRef alias(PyUnicode_FromStringAndSize(start, static_cast<Py_ssize_t>(length)));
        if (!alias || PyList_Append(list.get(), alias.get()) < 0) return nullptr;
        if (!comma) break;
        start = comma + 1;
    }
    return list.release();
}

PyObject* defaultValue(const DefinitionSource& source, const ToviPropertyDefinition* definition) {
    SdkBlock<uint8_t> stream;
    size_t size = 0;
    if (SdkApi.Tovi_PluginUtils_getPropertyDefaultValue(definition, stream.out(), &size) != 0 || !stream) Py_RETURN_NONE;
    const uint8_t* cursor = stream.get();
    return decodePropertyValue(source.renderer, cursor, stream.get() + size);
}

PyObject* metadata(const DefinitionSource& source, const ToviPropertyDefinition* definition, const char* name) {
    PyRef dict(PyDict_New());
    if (!dict) return nullptr;
    PyObject* meta = dict.get();
    int elements = SdkApi.Tovi_PluginUtils_getPropertyElementsCount(definition);
    if (!put(meta, "name", textOrEmpty(SdkApi.Tovi_PluginUtils_getPropertyName(definition))) ||
        !put(meta, "aliases", aliasList(SdkApi.Tovi_PluginUtils_getPropertyAliases(definition))) ||
        !put(meta, "type", PyUnicode_FromString(typeName(SdkApi.Tovi_PluginUtils_getPropertyType(definition)))) ||
        !put(meta, "defaultValue", defaultValue(source, definition)) ||
        !put(meta, "description", textOrEmpty(SdkApi.Tovi_PluginUtils_getPropertyDescription(definition))) ||
        !put(meta, "deprecation", textOrNone(SdkApi.Tovi_PluginUtils_getPropertyDeprecation(definition))) ||
        !put(meta, "uiGuides", textOrEmpty(SdkApi.Tovi_PluginUtils_getPropertyUIGuides(definition))) ||
        !put(meta, "GPUSupport", PyUnicode_FromString(gpuSupportName(SdkApi.Tovi_PluginUtils_getPropertyGpuSupport(
                                     source.handle(), source.className, definition)))) ||
        (elements >= 0 && !put(meta, "elementsCount", PyLong_FromLong(elements)))) {
        return nullptr;
    }
    if (source.isInstance()) {
        int count = SdkApi.Tovi_ToviRenderer_getPropertyElementsCountByID(source.handle(), source.pluginID, name);
        int runtime = SdkApi.Tovi_ToviRenderer_getPropertyTypeByID(source.handle(), source.pluginID, name);
        if ((count >= 0 && !put(meta, "elementsCount", PyLong_FromLong(count))) ||
            !put(meta, "runtimeType", PyUnicode_FromString(typeName(runtime)))) {
            return nullptr;
        }
    }
    return dict.release();
}

// ---- UI guides ----

const char* const guideTypeNames[] = {
    "Enum",         "Enable",       "DisplayName",  "MinValue",     "MaxValue",     "SpinStep",
    "Units",        "FileAsset",    "Attributes",   "StringEnum",   "FileAssetNames", "FileAssetOp",
    "StartRollout", "StartTab",     "SoftMinValue", "SoftMaxValue", "QuantityType", "OverridenBy",
    "Overrides",    "GPUSupport",   "Tier",         "Hide",         "DefaultValue"};
constexpr int guideTypeCount = 23;

enum Guide {
    guideDisplayName = 2,
    guideMinValue = 3,
    guideMaxValue = 4,
    guideSpinStep = 5,
    guideUnits = 6,
    guideFileAsset = 7,
    guideAttributes = 8,
    guideFileAssetNames = 10,
    guideFileAssetOp = 11,
    guideStartRollout = 12,
    guideStartTab = 13,
    guideSoftMinValue = 14,
    guideSoftMaxValue = 15,
    guideQuantityType = 16,
    guideGpuSupport = 19,
    guideTier = 20,
    guideDefaultValue = 22,
};

// A name from a table of codes, `fallback` for any other code.
const char* named(int code, std::initializer_list<const char*> names, const char* fallback) {
    return code >= 0 && code < static_cast<int>(names.size()) ? names.begin()[code] : fallback;
}

PyObject* sdkText(int (*read)(const ToviPropertyDefinition*, ToviCharString*), const ToviPropertyDefinition* definition) {
    SdkCharString text;
    read(definition, text.out());
    return text.toPython();
}

PyObject* packedList(int (*read)(const ToviPropertyDefinition*, char**), const ToviPropertyDefinition* definition) {
    char* block = nullptr;
    int count = read(definition, &block);
    return packedStringsToList(count, block);
}

PyObject* enumStrings(const ToviPropertyDefinition* definition) {
    SdkBlock<char> labels;
    SdkBlock<int32_t> values;
    int count = SdkApi.Tovi_UIGuides_getEnumStrings(definition, labels.out(), values.out());
    PyRef dict(PyDict_New());
    if (!dict) return nullptr;
    const char* label = labels.get();
    for (int index = 0; label && values && index < count; ++index) {
        if (!put(dict.get(), label, PyLong_FromLong(values.get()[index]))) return nullptr;
        label += std::strlen(label) + 1;
    }
    return dict.release();
}

PyObject* attributeList(const ToviPropertyDefinition* definition) {
    static const char* const names[] = {"ObjectSet", "TextureSlot", "LightSet", "PartOf3dsMaxTriple",
                                        "BitSet",    "Boolean",     "None"};
    PyRef list(PyList_New(0));
    if (!list) return nullptr;
    for (int bit = 0; bit < 7; ++bit) {
        int flag = 0;
        if (SdkApi.Tovi_UIGuides_hasAttribute(definition, 1 << bit, &flag) != 0 || !flag) continue;
        PyRef name(PyUnicode_FromString(names[bit]));
        if (!name || PyList_Append(list.get(), name.get()) < 0) return nullptr;
    }
    return list.release();
}

PyObject* overrideList(const ToviPropertyDefinition* definition) {
    int count = SdkApi.Tovi_UIGuides_getCountOfOverrides(definition);
    PyRef list(PyList_New(0));
    if (!list) return nullptr;
    for (int index = 0; index < count; ++index) {
        SdkCharString text;
        SdkApi.Tovi_UIGuides_getValueOfOverride(definition, index, text.out());
        PyRef item(text.toPython());
        if (!item || PyList_Append(list.get(), item.get()) < 0) return nullptr;
    }
    return list.release();
}

// "defaultValue" for a single editor default, converted by the property's type, or
// "defaultValues" for any other count.
bool putEditorDefaults(PyObject* guides, const ToviPropertyDefinition* definition) {
    std::vector<float> values(64);
    int count = SdkApi.Tovi_UIGuides_getFloats(definition, guideDefaultValue, values.data(), static_cast<int>(values.size()));
    if (count > static_cast<int>(values.size())) {
        values.resize(static_cast<size_t>(count));
        count = std::min(count, SdkApi.Tovi_UIGuides_getFloats(definition, guideDefaultValue, values.data(), count));
    }
    if (count == 1) {
        double rounded = std::round(static_cast<double>(values[0]));
        switch (SdkApi.Tovi_PluginUtils_getPropertyType(definition)) {
            case 0: return put(guides, "defaultValue", PyLong_FromDouble(rounded));
            case 3: return put(guides, "defaultValue", PyBool_FromLong(rounded != 0));
            default: return put(guides, "defaultValue", PyFloat_FromDouble(values[0]));
        }
    }
    PyRef list(PyList_New(0));
    if (!list) return false;
    for (int index = 0; index < count; ++index) {
        PyRef value(PyFloat_FromDouble(values[index]));
        if (!value || PyList_Append(list.get(), value.get()) < 0) return false;
    }
    return put(guides, "defaultValues", list.release());
}

bool putFloat(PyObject* guides, const char* key, const ToviPropertyDefinition* definition, int type) {
    float value = 0;
    SdkApi.Tovi_UIGuides_getFloat(definition, type, &value);
    return put(guides, key, PyFloat_FromDouble(value));
}

bool putCondition(PyObject* guides, const char* key, const DefinitionSource& source,
                  int (*evaluate)(const ToviPropertyDefinition*, ToviRenderer*, ToviPluginID, int*),
                  const ToviPropertyDefinition* definition) {
    int flag = 0;
    evaluate(definition, source.handle(), source.pluginID, &flag);
    return put(guides, key, PyBool_FromLong(flag));
}

PyObject* uiGuides(const DefinitionSource& source, const ToviPropertyDefinition* definition) {
    bool present[guideTypeCount] = {};
    PyRef typeNames(PyList_New(0));
    if (!typeNames) return nullptr;
    for (int type = 0; type < guideTypeCount; ++type) {
        int flag = 0;
        present[type] = SdkApi.Tovi_UIGuides_hasType(definition, type, &flag) == 0 && flag;
        if (!present[type]) continue;
        PyRef name(PyUnicode_FromString(guideTypeNames[type]));
        if (!name || PyList_Append(typeNames.get(), name.get()) < 0) return nullptr;
    }
    PyRef dict(PyDict_New());
    if (!dict) return nullptr;
    PyObject* guides = dict.get();
    bool enabledCondition = SdkApi.Tovi_UIGuides_hasEnabledCondition(definition) != 0;
    bool hiddenCondition = SdkApi.Tovi_UIGuides_hasHiddenCondition(definition) != 0;
    bool ok = put(guides, "guideTypes", typeNames.release()) &&
              (!SdkApi.Tovi_UIGuides_isEnum(definition) || put(guides, "enumStrings", enumStrings(definition))) &&
              (!enabledCondition || put(guides, "enabledDepends", packedList(SdkApi.Tovi_UIGuides_getEnableDepends, definition))) &&
              (!hiddenCondition || put(guides, "hiddenDepends", packedList(SdkApi.Tovi_UIGuides_getHideDepends, definition))) &&
              (!present[guideDisplayName] || put(guides, "displayName", sdkText(SdkApi.Tovi_UIGuides_getDisplayName, definition))) &&
              (!present[guideStartRollout] || put(guides, "startRollout", sdkText(SdkApi.Tovi_UIGuides_getRolloutName, definition))) &&
              (!present[guideStartTab] || put(guides, "startTab", sdkText(SdkApi.Tovi_UIGuides_getTabName, definition))) &&
              (!present[guideMinValue] || putFloat(guides, "minValue", definition, guideMinValue)) &&
              (!present[guideMaxValue] || putFloat(guides, "maxValue", definition, guideMaxValue)) &&
              (!present[guideSpinStep] || putFloat(guides, "spinStep", definition, guideSpinStep)) &&
              (!present[guideSoftMinValue] || putFloat(guides, "softMinValue", definition, guideSoftMinValue)) &&
              (!present[guideSoftMaxValue] || putFloat(guides, "softMaxValue", definition, guideSoftMaxValue));
    ok = ok &&
         (!present[guideUnits] ||
          put(guides, "units", PyUnicode_FromString(named(SdkApi.Tovi_UIGuides_getUnits(definition),
                                                          {"Default", "Radians", "Degrees", "Millimeters", "Centimeters", "Meters"},
                                                          "Default")))) &&
         (!present[guideFileAssetOp] ||
          put(guides, "fileAssetOp", PyUnicode_FromString(named(SdkApi.Tovi_UIGuides_getFileAssetOp(definition),
                                                                {"Load", "Save", "LoadAndSave"}, "Load")))) &&
         (!present[guideQuantityType] ||
          put(guides, "quantity", PyUnicode_FromString(named(SdkApi.Tovi_UIGuides_getQuantityType(definition),
                                                             {"Unknown", "Distance", "Angle", "LocalSubdivs"}, "Unknown")))) &&
         (!present[guideGpuSupport] ||
          put(guides, "gpuSupport", PyUnicode_FromString(gpuSupportName(SdkApi.Tovi_UIGuides_getGPUSupportStatus(definition))))) &&
         (!present[guideTier] ||
          put(guides, "tier", PyUnicode_FromString(named(SdkApi.Tovi_UIGuides_getTier(definition),
                                                         {"Basic", "Default", "Advanced"}, "Default")))) &&
         (!present[guideAttributes] || put(guides, "attributes", attributeList(definition))) &&
         (!present[guideFileAsset] || put(guides, "fileAssetExts", packedList(SdkApi.Tovi_UIGuides_getFileAssetExts, definition))) &&
         (!present[guideFileAssetNames] ||
          put(guides, "fileAssetExtNames", packedList(SdkApi.Tovi_UIGuides_getFileAssetNames, definition))) &&
         (!SdkApi.Tovi_UIGuides_isStringEnum(definition) ||
          put(guides, "stringEnumStrings", packedList(SdkApi.Tovi_UIGuides_getStringEnumStrings, definition))) &&
         (!SdkApi.Tovi_UIGuides_hasOverriddenBy(definition) ||
          put(guides, "overridenBy", sdkText(SdkApi.Tovi_UIGuides_getValueOfOverriddenBy, definition))) &&
         (!SdkApi.Tovi_UIGuides_hasOverride(definition) || put(guides, "overrides", overrideList(definition))) &&
         (!present[guideDefaultValue] || putEditorDefaults(guides, definition));
    if (ok && source.isInstance()) {
        ok = (!enabledCondition || putCondition(guides, "enabled", source, SdkApi.Tovi_UIGuides_isEnabled, definition)) &&
             (!hiddenCondition || putCondition(guides, "hidden", source, SdkApi.Tovi_UIGuides_isHidden, definition));
    }
    return ok ? dict.release() : nullptr;
}

// ---- the call forms ----

const ToviPropertyDefinition* definitionOf(const DefinitionSource& source, const char* name) {
    return source.isInstance()
               ? SdkApi.Tovi_ToviRenderer_getPropertyDefinitionByID(source.handle(), source.pluginID, name)
               : SdkApi.Tovi_ToviRenderer_getPropertyDefinitionFromClass(source.handle(), source.className, name);
}

using Build = PyObject* (*)(const DefinitionSource&, const ToviPropertyDefinition*, const char*);

PyObject* buildMeta(const DefinitionSource& source, const ToviPropertyDefinition* definition, const char* name) {
    return metadata(source, definition, name);
}

PyObject* buildGuides(const DefinitionSource& source, const ToviPropertyDefinition* definition, const char*) {
    return uiGuides(source, definition);
}

// A dict over every property of the source; properties without a definition are left out.
PyObject* everyProperty(const DefinitionSource& source, Build build) {
    SdkVector names(source.isInstance()
                        ? SdkApi.Tovi_ToviRenderer_getPropertyNamesByID(source.handle(), source.pluginID)
                        : SdkApi.Tovi_ToviRenderer_getClassPropertyNames(source.handle(), source.className));
    PyRef dict(PyDict_New());
    if (!dict) return nullptr;
    for (int index = 0; index < names.size(); ++index) {
        const char* name = static_cast<const char*>(names.element(index));
        if (!name) continue;
        const ToviPropertyDefinition* definition = definitionOf(source, name);
        if (!definition) continue;
        if (!put(dict.get(), name, build(source, definition, name))) return nullptr;
    }
    return dict.release();
}

// The dict of all properties without an argument, else that of the named one: `missing` when
// it has no definition (null with the error set, or None).
PyObject* callForm(const DefinitionSource& source, PyObject* args, Build build, bool noneWhenMissing) {
    if (PyTuple_GET_SIZE(args) == 0) return everyProperty(source, build);
    PyObject* key = PyTuple_GET_ITEM(args, 0);
    if (!PyUnicode_Check(key)) return raisePropertyNameNotText();
    const char* name = PyUnicode_AsUTF8(key);
    if (!name) return nullptr;
    const ToviPropertyDefinition* definition = definitionOf(source, name);
    if (!definition) {
        if (noneWhenMissing) Py_RETURN_NONE;
        return raisePropertyAccessError(PyExc_NameError, name);
    }
    return build(source, definition, name);
}

DefinitionSource instanceSource(PyObject* plugin) {
    const char* type = SdkApi.Tovi_ToviRenderer_getPluginTypeByID(pluginRendererHandle(plugin), pluginID(plugin));
    return {pluginRenderer(plugin), type, pluginID(plugin), true};
}

}  // namespace

PyObject* pluginGetMeta(PyObject* plugin, PyObject* args) {
    return callForm(instanceSource(plugin), args, buildMeta, false);
}

PyObject* pluginGetUIGuides(PyObject* plugin, PyObject* args) {
    return callForm(instanceSource(plugin), args, buildGuides, true);
}

PyObject* classGetMeta(PyObject* renderer, const char* className, PyObject* args) {
    return callForm({renderer, className, noPlugin, false}, args, buildMeta, false);
}

PyObject* classGetUIGuides(PyObject* renderer, const char* className, PyObject* args) {
    return callForm({renderer, className, noPlugin, false}, args, buildGuides, true);
}

PyObject* classPropertyMeta(PyObject* renderer, const char* className, const char* name, PyObject* missingType) {
    DefinitionSource source{renderer, className, noPlugin, false};
    const ToviPropertyDefinition* definition = definitionOf(source, name);
    if (!definition) return raisePropertyAccessError(missingType, name);
    return metadata(source, definition, name);
}

}  // namespace tovi
