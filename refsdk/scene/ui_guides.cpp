#include "scene/ui_guides.h"

namespace tovi::ref::scene {

namespace {

using Node = Condition::Node;

bool truth(const ConditionValue& value) {
    if (auto* number = std::get_if<double>(&value)) return *number != 0;
    if (auto* text = std::get_if<std::string>(&value)) return !text->empty();
    return false;
}

// Numbers compare with numbers and texts with texts; any other pair is unequal and unordered.
bool compare(Node::Kind kind, const ConditionValue& a, const ConditionValue& b) {
    int order;
    if (a.index() != b.index() || std::holds_alternative<std::monostate>(a)) {
        return kind == Node::Kind::NotEqual;
    }
    if (auto* number = std::get_if<double>(&a)) {
        double other = std::get<double>(b);
        order = *number < other ? -1 : *number > other ? 1 : 0;
    } else {
        order = std::get<std::string>(a).compare(std::get<std::string>(b));
    }
    switch (kind) {
        case Node::Kind::Equal: return order == 0;
        case Node::Kind::NotEqual: return order != 0;
        case Node::Kind::Less: return order < 0;
        case Node::Kind::LessEqual: return order <= 0;
        case Node::Kind::Greater: return order > 0;
        case Node::Kind::GreaterEqual: return order >= 0;
        default: return false;
    }
}

ConditionValue evaluateNode(const Node& node, const std::function<ConditionValue(const std::string&)>& valueOf) {
    switch (node.kind) {
        case Node::Kind::Number: return node.number;
        case Node::Kind::Text: return node.text;
        case Node::Kind::Property: return valueOf(node.text);
        case Node::Kind::Not: return truth(evaluateNode(*node.left, valueOf)) ? 0.0 : 1.0;
        case Node::Kind::And:
            return truth(evaluateNode(*node.left, valueOf)) && truth(evaluateNode(*node.right, valueOf)) ? 1.0 : 0.0;
        case Node::Kind::Or:
            return truth(evaluateNode(*node.left, valueOf)) || truth(evaluateNode(*node.right, valueOf)) ? 1.0 : 0.0;
        default:
            return compare(node.kind, evaluateNode(*node.left, valueOf), evaluateNode(*node.right, valueOf)) ? 1.0 : 0.0;
    }
}

}  // namespace

Condition::Condition(std::shared_ptr<const Node> root, std::vector<std::string> dependencies)
    : root_(std::move(root)), dependencies_(std::move(dependencies)) {}

bool Condition::evaluate(const std::function<ConditionValue(const std::string&)>& valueOf) const {
    return truth(evaluateNode(*root_, valueOf));
}

std::optional<float> UIGuides::floatGuide(GuideType type) const {
    if (!has(type)) return std::nullopt;
    switch (type) {
        case GuideType::MinValue: return minValue;
        case GuideType::MaxValue: return maxValue;
        case GuideType::SpinStep: return spinStep;
        case GuideType::SoftMinValue: return softMinValue;
        case GuideType::SoftMaxValue: return softMaxValue;
        default: return std::nullopt;
    }
}

}  // namespace tovi::ref::scene
