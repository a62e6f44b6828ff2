#include "app/project/JsonNode.h"

#include "util/NumberText.h"

#include <QJsonArray>

#include <algorithm>
#include <cmath>

namespace terravo {

std::string JsonNode::Place() const {
    if (around_ == nullptr) {
        return {};
    }
    const std::string outside = around_->Place();
    if (position_ >= 0) {
        return outside + "[" + std::to_string(position_ + 1) + "]";
    }
    return outside + (outside.empty() ? "" : ".") + name_.toStdString();
}

void JsonNode::Refuse(const std::string& why) const {
    const std::string place = Place();
    throw JsonFault((place.empty() ? "" : place + ": ") + why);
}

std::string JsonNode::Text() const {
    if (!value_.isString()) {
        Refuse("a text is needed");
    }
    return value_.toString().toStdString();
}

bool JsonNode::Flag() const {
    if (!value_.isBool()) {
        Refuse("true or false is needed");
    }
    return value_.toBool();
}

double JsonNode::Number() const {
    if (value_.isString() && value_.toString() == QLatin1String("-0")) {
        return -0.0;
    }
    if (!value_.isDouble() || !std::isfinite(value_.toDouble())) {
        Refuse("a number is needed");
    }
    return value_.toDouble();
}

std::int64_t JsonNode::Whole(std::int64_t low, std::int64_t high) const {
    return RequireWhole(Number(), low, high);
}

std::int64_t JsonNode::RequireWhole(double number, std::int64_t low, std::int64_t high) const {
    const bool isWithin = number >= static_cast<double>(low) && number <= static_cast<double>(high);
    if (!isWithin || number != std::floor(number)) {
        Refuse("a whole number from " + std::to_string(low) + " to " + std::to_string(high) +
               " is needed, not " + NumberText::General(number));
    }
    return static_cast<std::int64_t>(number);
}

std::size_t JsonNode::Choice(std::span<const char* const> names) const {
    const std::string text = Text();
    const auto found = std::find(names.begin(), names.end(), text);
    if (found == names.end()) {
        std::string choices;
        for (const char* name : names) {
            choices += (choices.empty() ? "\"" : ", \"") + std::string(name) + "\"";
        }
        Refuse("one of " + choices + " is needed, not \"" + text + "\"");
    }
    return static_cast<std::size_t>(std::distance(names.begin(), found));
}

void JsonNode::ForEach(const std::function<void(const JsonNode& entry)>& take) const {
    if (!value_.isArray()) {
        Refuse("a list is needed");
    }
    const QJsonArray list = value_.toArray();
    for (qsizetype i = 0; i < list.size(); ++i) {
        take(JsonNode(list.at(i), *this, i));
    }
}

std::vector<double> JsonNode::Numbers(std::size_t fewest, std::size_t most) const {
    std::vector<double> numbers;
    ForEach([&numbers](const JsonNode& entry) { numbers.push_back(entry.Number()); });
    if (numbers.size() < fewest || numbers.size() > most) {
        Refuse(fewest == most ? std::to_string(most) + " numbers are needed"
                              : std::to_string(fewest) + " or " + std::to_string(most) +
                                    " numbers are needed");
    }
    return numbers;
}

JsonMembers::JsonMembers(const JsonNode& node, std::vector<std::string>& remarks)
    : node_(node), left_(node.value_.toObject()), remarks_(remarks) {
    if (!node.value_.isObject()) {
        node.Refuse("an object is needed");
    }
}

std::optional<JsonNode> JsonMembers::Find(const char* name) {
    const QString key = QString::fromUtf8(name);
    const QJsonValue value = left_.take(key);
    return value.isUndefined() ? std::nullopt : std::optional(JsonNode(value, node_, key));
}

JsonNode JsonMembers::At(const char* name) {
    std::optional<JsonNode> found = Find(name);
    if (!found) {
        node_.Refuse("\"" + std::string(name) + "\" is missing");
    }
    return *std::move(found);
}

void JsonMembers::RemarkOnOthers() {
    for (auto other = left_.begin(); other != left_.end(); ++other) {
        remarks_.push_back(JsonNode(other.value(), node_, other.key()).Place() +
                           " is not known and is left out.");
    }
}

} // namespace terravo
