// A value of a JSON text that knows where it stands.
//
// Data: the value, and a link to the one around it. Method: each question says what kind of value
// it wants; an answer of another kind is a fault that names the place ("surface.heights[3][1]"),
// which is put together only then.
#pragma once

#include "util/Array1.h"

#include <QJsonObject>
#include <QJsonValue>
#include <QString>

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace terravo {

/// What cannot be, and where: a sentence without the file and a full stop.
class JsonFault : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class JsonNode {
public:
    explicit JsonNode(QJsonValue value) : value_(std::move(value)) {}

    /// The place, "" for the whole text.
    [[nodiscard]] std::string Place() const;
    /// Throws JsonFault: the place and what is wrong there.
    [[noreturn]] void Refuse(const std::string& why) const;

    // Each throws JsonFault for another kind of value.
    [[nodiscard]] std::string Text() const;
    [[nodiscard]] bool Flag() const;
    [[nodiscard]] double Number() const;
    [[nodiscard]] std::int64_t Whole(std::int64_t low, std::int64_t high) const;
    /// A number of this place, which has to be such a whole one.
    [[nodiscard]] std::int64_t RequireWhole(double number, std::int64_t low,
                                            std::int64_t high) const;
    /// The position of a text among names.
    [[nodiscard]] std::size_t Choice(std::span<const char* const> names) const;

    /// Calls for each entry of a list.
    void ForEach(const std::function<void(const JsonNode& entry)>& take) const;
    /// A list of numbers, at least `fewest` and at most `most`.
    [[nodiscard]] std::vector<double> Numbers(std::size_t fewest, std::size_t most) const;

private:
    friend class JsonMembers;
    JsonNode(QJsonValue value, const JsonNode& around, QString name)
        : value_(std::move(value)), around_(&around), name_(std::move(name)) {}
    JsonNode(QJsonValue value, const JsonNode& around, qsizetype position)
        : value_(std::move(value)), around_(&around), position_(position) {}

    QJsonValue value_;
    const JsonNode* around_ = nullptr; // outlives this one
    QString name_;
    qsizetype position_ = -1;
};

/// The members of an object, asked for one by one.
class JsonMembers {
public:
    /// @param node     outlives the members. Throws JsonFault for what is no object.
    /// @param remarks  get a sentence for each member that nobody has asked for.
    JsonMembers(const JsonNode& node, std::vector<std::string>& remarks);

    [[nodiscard]] std::optional<JsonNode> Find(const char* name);
    /// Throws JsonFault when it is missing.
    [[nodiscard]] JsonNode At(const char* name);
    /// To be called when all that is known has been asked for.
    void RemarkOnOthers();

private:
    const JsonNode& node_;
    QJsonObject left_; // not yet asked for
    std::vector<std::string>& remarks_;
};

} // namespace terravo
