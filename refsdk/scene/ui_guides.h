// Editor guides of a property: how an editor shows and constrains it. Read from the guide text
// of a property declaration (format/ui_guides.h) and answered by the Tovi_UIGuides_ entries.
#pragma once

#include <bitset>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace tovi::ref::scene {

// The kinds of guide a property can carry; the numbers are the SDK's guide type codes.
enum class GuideType : int {
    Enum = 0,
    Enable = 1,
    DisplayName = 2,
    MinValue = 3,
    MaxValue = 4,
    SpinStep = 5,
    Units = 6,
    FileAsset = 7,
    Attributes = 8,
    StringEnum = 9,
    FileAssetNames = 10,
    FileAssetOp = 11,
    StartRollout = 12,
    StartTab = 13,
    SoftMinValue = 14,
    SoftMaxValue = 15,
    QuantityType = 16,
    OverriddenBy = 17,
    Overrides = 18,
    GpuSupport = 19,
    Tier = 20,
    Hide = 21,
    DefaultValue = 22,
};
constexpr int guideTypeCount = 23;

// Codes of the enumerated guides, as the entries answer them.
enum class GuideUnits : int { Default = 0, Radians = 1, Degrees = 2, Millimeters = 3, Centimeters = 4, Meters = 5 };
enum class GuideQuantity : int { Unknown = 0, Distance = 1, Angle = 2, LocalSubdivs = 3 };
enum class FileAssetOp : int { Load = 0, Save = 1, LoadAndSave = 2 };
enum class GuideTier : int { Basic = 0, Default = 1, Advanced = 2 };
enum class GuideGpuSupport : int { Full = 0, Partial = 1, None = 2 };
// Attribute bits.
constexpr unsigned attributeObjectSet = 1, attributeTextureSlot = 2, attributeLightSet = 4,
                   attributeTripleComponent = 8, attributeBitSet = 16, attributeBoolean = 32, attributeNone = 64;

// An operand of a condition as it is compared: a number (booleans, integers and plugin
// references, set or not, count as numbers), a text, or nothing for values with neither form.
using ConditionValue = std::variant<std::monostate, double, std::string>;

// An enable or hide condition over the values of the plugin's own properties, such as
// `type == 2 && !use_dof`.
class Condition {
public:
    struct Node;

    Condition(std::shared_ptr<const Node> root, std::vector<std::string> dependencies);

    // The property names the condition reads, in the order they first appear.
    const std::vector<std::string>& dependencies() const { return dependencies_; }
    // The condition's truth for the values that `valueOf` gives for property names.
    bool evaluate(const std::function<ConditionValue(const std::string&)>& valueOf) const;

private:
    std::shared_ptr<const Node> root_;
    std::vector<std::string> dependencies_;
};

struct Condition::Node {
    enum class Kind { Number, Text, Property, Not, And, Or, Equal, NotEqual, Less, LessEqual, Greater, GreaterEqual };
    Kind kind;
    double number = 0;
    std::string text;  // the text of Text, the property name of Property
    std::shared_ptr<const Node> left, right;
};

struct UIGuides {
    std::bitset<guideTypeCount> types;
    std::string displayName;
    std::string rollout;
    std::string tab;
    std::string overriddenBy;
    float minValue = 0, maxValue = 0, spinStep = 0, softMinValue = 0, softMaxValue = 0;
    GuideUnits units = GuideUnits::Default;
    GuideQuantity quantity = GuideQuantity::Unknown;
    FileAssetOp fileAssetOp = FileAssetOp::Load;
    GuideTier tier = GuideTier::Default;
    GuideGpuSupport gpuSupport = GuideGpuSupport::Full;
    unsigned attributes = 0;
    std::vector<std::pair<std::string, int>> enumItems;  // label, value
    std::vector<std::string> stringEnum;
    std::vector<std::string> fileAssetExts;
    std::vector<std::string> fileAssetNames;
    std::vector<std::string> overrides;
    std::optional<Condition> enable;
    std::optional<Condition> hide;
    std::vector<float> defaults;  // the editor's defaults

    bool has(GuideType type) const { return types.test(static_cast<int>(type)); }
    // The value of a single-float guide (minimum, maximum, spin step, soft limits); nothing when
    // the type is not one or is absent.
    std::optional<float> floatGuide(GuideType type) const;
};

}  // namespace tovi::ref::scene
