#include "format/ui_guides.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <initializer_list>
#include <utility>

namespace tovi::ref::format {

using namespace scene;

namespace {

class GuideReader {
public:
    explicit GuideReader(std::string_view text) : text_(text) {}

    std::optional<UIGuides> read(std::string* error) {
        UIGuides guides;
        skip();
        while (!atEnd()) {
            if (!readItem(guides)) {
                if (error) *error = "offset " + std::to_string(pos_) + ": " + message_;
                return std::nullopt;
            }
            skip();
            if (atEnd()) break;
            if (text_[pos_] != ';') {
                if (error) *error = "offset " + std::to_string(pos_) + ": expected ';' between guides";
                return std::nullopt;
            }
            ++pos_;
            skip();
        }
        return guides;
    }

private:
    using Node = Condition::Node;
    using NodePtr = std::shared_ptr<const Node>;

    bool atEnd() const { return pos_ >= text_.size(); }
    void skip() {
        while (!atEnd() && std::isspace(static_cast<unsigned char>(text_[pos_]))) ++pos_;
    }
    bool fail(std::string message) {
        message_ = std::move(message);
        return false;
    }
    bool take(char c) {
        skip();
        if (atEnd() || text_[pos_] != c) return false;
        ++pos_;
        return true;
    }
    bool takeText(std::string_view token) {
        skip();
        if (text_.substr(pos_, token.size()) != token) return false;
        pos_ += token.size();
        return true;
    }

    std::string_view word() {
        skip();
        size_t start = pos_;
        while (!atEnd() && (std::isalnum(static_cast<unsigned char>(text_[pos_])) || text_[pos_] == '_')) ++pos_;
        return text_.substr(start, pos_ - start);
    }

    bool quoted(std::string& out) {
        skip();
        if (atEnd() || text_[pos_] != '"') return fail("expected a text in quotes");
        out.clear();
        for (++pos_; !atEnd(); ++pos_) {
            char c = text_[pos_];
            if (c == '"') {
                ++pos_;
                return true;
            }
            if (c == '\\' && pos_ + 1 < text_.size()) c = text_[++pos_];
            out += c;
        }
        return fail("the text in quotes does not end");
    }

    bool number(double& out) {
        skip();
        size_t start = pos_;
        while (!atEnd() && (std::isdigit(static_cast<unsigned char>(text_[pos_])) ||
                            std::string_view("+-.eE").find(text_[pos_]) != std::string_view::npos)) {
            ++pos_;
        }
        std::string digits(text_.substr(start, pos_ - start));
        if (digits.empty()) return fail("expected a number");
        char* end = nullptr;
        out = std::strtod(digits.c_str(), &end);
        if (end != digits.c_str() + digits.size() || !std::isfinite(out)) return fail("expected a number");
        return true;
    }

    template <typename Enum>
    bool choice(std::initializer_list<std::pair<std::string_view, Enum>> names, Enum& out) {
        std::string_view name = word();
        for (const auto& [candidate, value] : names) {
            if (candidate == name) {
                out = value;
                return true;
            }
        }
        return fail("unknown value '" + std::string(name) + "'");
    }

    // (item, item, ...), each read by `item`.
    template <typename Item>
    bool list(Item&& item) {
        if (!take('(')) return fail("expected '('");
        if (take(')')) return true;
        do {
            if (!item()) return false;
        } while (take(','));
        if (!take(')')) return fail("expected ')' or ','");
        return true;
    }

    bool texts(std::vector<std::string>& out) {
        return list([&] {
            std::string text;
            if (!quoted(text)) return false;
            out.push_back(std::move(text));
            return true;
        });
    }

    // ---- conditions ----

    NodePtr node(Node::Kind kind, NodePtr left = nullptr, NodePtr right = nullptr) {
        auto made = std::make_shared<Node>();
        made->kind = kind;
        made->left = std::move(left);
        made->right = std::move(right);
        return made;
    }

    NodePtr orExpression() {
        NodePtr left = andExpression();
        while (left && takeText("||")) {
            NodePtr right = andExpression();
            if (!right) return nullptr;
            left = node(Node::Kind::Or, left, right);
        }
        return left;
    }

    NodePtr andExpression() {
        NodePtr left = unary();
        while (left && takeText("&&")) {
            NodePtr right = unary();
            if (!right) return nullptr;
            left = node(Node::Kind::And, left, right);
        }
        return left;
    }

    NodePtr unary() {
        skip();
        if (!atEnd() && text_[pos_] == '!' && text_.substr(pos_, 2) != "!=") {
            ++pos_;
            NodePtr operand = unary();
            return operand ? node(Node::Kind::Not, operand) : nullptr;
        }
        return comparison();
    }

    NodePtr comparison() {
        NodePtr left = operand();
        if (!left) return nullptr;
        static const std::pair<std::string_view, Node::Kind> operators[] = {
            {"==", Node::Kind::Equal}, {"!=", Node::Kind::NotEqual},   {"<=", Node::Kind::LessEqual},
            {">=", Node::Kind::GreaterEqual}, {"<", Node::Kind::Less}, {">", Node::Kind::Greater},
        };
        for (const auto& [token, kind] : operators) {
            if (takeText(token)) {
                NodePtr right = operand();
                return right ? node(kind, left, right) : nullptr;
            }
        }
        return left;
    }

    NodePtr operand() {
        skip();
        if (atEnd()) return fail("expected an operand"), nullptr;
        char c = text_[pos_];
        if (c == '(') {
            ++pos_;
            NodePtr inner = orExpression();
            if (inner && !take(')')) return fail("expected ')'"), nullptr;
            return inner;
        }
        auto leaf = std::make_shared<Node>();
        if (c == '"') {
            leaf->kind = Node::Kind::Text;
            if (!quoted(leaf->text)) return nullptr;
        } else if (std::isdigit(static_cast<unsigned char>(c)) || c == '-' || c == '.') {
            leaf->kind = Node::Kind::Number;
            if (!number(leaf->number)) return nullptr;
        } else {
            std::string name(word());
            if (name.empty()) return fail("expected an operand"), nullptr;
            if (name == "true" || name == "false") {
                leaf->kind = Node::Kind::Number;
                leaf->number = name == "true" ? 1 : 0;
            } else {
                leaf->kind = Node::Kind::Property;
                if (std::find(dependencies_.begin(), dependencies_.end(), name) == dependencies_.end()) {
                    dependencies_.push_back(name);
                }
                leaf->text = std::move(name);
            }
        }
        return leaf;
    }

    bool condition(std::optional<Condition>& out) {
        dependencies_.clear();
        NodePtr root = orExpression();
        if (!root) return false;
        out.emplace(std::move(root), std::move(dependencies_));
        return true;
    }

    // ---- items ----

    bool readItem(UIGuides& guides) {
        std::string key(word());
        if (key.empty()) return fail("expected a guide name");
        if (!take('=')) return fail("expected '=' after '" + key + "'");
        GuideType type;
        bool ok = readValue(key, guides, type);
        if (!ok) return false;
        if (guides.types.test(static_cast<int>(type))) return fail("the guide '" + key + "' is given twice");
        guides.types.set(static_cast<int>(type));
        return true;
    }

    bool readFloat(float& out) {
        double value;
        if (!number(value)) return false;
        out = static_cast<float>(value);
        return true;
    }

    bool readValue(const std::string& key, UIGuides& guides, GuideType& type) {
        if (key == "displayName") return type = GuideType::DisplayName, quoted(guides.displayName);
        if (key == "rollout") return type = GuideType::StartRollout, quoted(guides.rollout);
        if (key == "tab") return type = GuideType::StartTab, quoted(guides.tab);
        if (key == "overriddenBy") return type = GuideType::OverriddenBy, quoted(guides.overriddenBy);
        if (key == "min") return type = GuideType::MinValue, readFloat(guides.minValue);
        if (key == "max") return type = GuideType::MaxValue, readFloat(guides.maxValue);
        if (key == "step") return type = GuideType::SpinStep, readFloat(guides.spinStep);
        if (key == "softMin") return type = GuideType::SoftMinValue, readFloat(guides.softMinValue);
        if (key == "softMax") return type = GuideType::SoftMaxValue, readFloat(guides.softMaxValue);
        if (key == "units") {
            type = GuideType::Units;
            return choice<GuideUnits>({{"default", GuideUnits::Default},
                                       {"radians", GuideUnits::Radians},
                                       {"degrees", GuideUnits::Degrees},
                                       {"millimeters", GuideUnits::Millimeters},
                                       {"centimeters", GuideUnits::Centimeters},
                                       {"meters", GuideUnits::Meters}},
                                      guides.units);
        }
        if (key == "quantity") {
            type = GuideType::QuantityType;
            return choice<GuideQuantity>({{"unknown", GuideQuantity::Unknown},
                                          {"distance", GuideQuantity::Distance},
                                          {"angle", GuideQuantity::Angle},
                                          {"localSubdivs", GuideQuantity::LocalSubdivs}},
                                         guides.quantity);
        }
        if (key == "fileAssetOp") {
            type = GuideType::FileAssetOp;
            return choice<FileAssetOp>(
                {{"load", FileAssetOp::Load}, {"save", FileAssetOp::Save}, {"loadAndSave", FileAssetOp::LoadAndSave}},
                guides.fileAssetOp);
        }
        if (key == "tier") {
            type = GuideType::Tier;
            return choice<GuideTier>(
                {{"basic", GuideTier::Basic}, {"default", GuideTier::Default}, {"advanced", GuideTier::Advanced}},
                guides.tier);
        }
        if (key == "gpu") {
            type = GuideType::GpuSupport;
            return choice<GuideGpuSupport>({{"full", GuideGpuSupport::Full},
                                            {"partial", GuideGpuSupport::Partial},
                                            {"none", GuideGpuSupport::None}},
                                           guides.gpuSupport);
        }
        if (key == "enum") {
            type = GuideType::Enum;
            return list([&] {
                double value;
                std::string label;
                if (!number(value)) return false;
                if (value != std::floor(value) || std::fabs(value) > 2147483647.0) return fail("expected an integer");
                if (!take(':')) return fail("expected ':' between value and label");
                if (!quoted(label)) return false;
                guides.enumItems.emplace_back(std::move(label), static_cast<int>(value));
                return true;
            });
        }
        if (key == "stringEnum") return type = GuideType::StringEnum, texts(guides.stringEnum);
        if (key == "fileAsset") return type = GuideType::FileAsset, texts(guides.fileAssetExts);
        if (key == "fileAssetNames") return type = GuideType::FileAssetNames, texts(guides.fileAssetNames);
        if (key == "overrides") return type = GuideType::Overrides, texts(guides.overrides);
        if (key == "attributes") {
            type = GuideType::Attributes;
            return list([&] {
                unsigned bit = 0;
                if (!choice<unsigned>({{"objectSet", attributeObjectSet},
                                       {"textureSlot", attributeTextureSlot},
                                       {"lightSet", attributeLightSet},
                                       {"tripleComponent", attributeTripleComponent},
                                       {"bitSet", attributeBitSet},
                                       {"boolean", attributeBoolean},
                                       {"none", attributeNone}},
                                      bit)) {
                    return false;
                }
                guides.attributes |= bit;
                return true;
            });
        }
        if (key == "default") {
            type = GuideType::DefaultValue;
            return list([&] {
                float value;
                if (!readFloat(value)) return false;
                guides.defaults.push_back(value);
                return true;
            });
        }
        if (key == "enable") return type = GuideType::Enable, condition(guides.enable);
        if (key == "hide") return type = GuideType::Hide, condition(guides.hide);
        return fail("unknown guide '" + key + "'");
    }

    std::string_view text_;
    size_t pos_ = 0;
    std::string message_;
    std::vector<std::string> dependencies_;
};

}  // namespace

std::optional<UIGuides> parseUIGuides(std::string_view text, std::string* error) {
    return GuideReader(text).read(error);
}

}  // namespace tovi::ref::format
