// Reads an XML file of many lines, element by element.
//
// Data: the file in blocks of whole lines. Method: an XML library tells the events. Behind a line
// that is nothing but the start of an element, the sink may take lines for itself, as long as it
// takes every one: each must be a whole element, so that the rest of the file is valid without
// them if it is with them. Documents with a type declaration are refused, so that no entity can
// grow.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace terravo {

/// Attributes of an element; the texts live as long as the call.
class XmlAttributes {
public:
    /// @param list  names and values in turn, then a null.
    explicit XmlAttributes(const char* const* list) : list_(list) {}

    /// The value of an attribute; nothing where it is not there.
    [[nodiscard]] std::optional<std::string_view> Of(std::string_view name) const {
        for (const char* const* at = list_; *at != nullptr; at += 2) {
            if (*at == name) {
                return at[1];
            }
        }
        return std::nullopt;
    }

private:
    const char* const* list_;
};

/// Who is told. False ends the reading. Nothing may be thrown.
class XmlSink {
public:
    virtual ~XmlSink() = default;
    /// @param before  text of the element around it, since the last event.
    virtual bool Start(std::string_view name, const XmlAttributes& attributes,
                       std::string_view before) = 0;
    /// @param text  of the element, since the last event.
    virtual bool End(std::string_view name, std::string_view text) = 0;
    /// Whether a line, with its end, is taken without the library: one whole element in the element
    /// that the line before has started, or another such line after it.
    virtual bool TakeLine(std::string_view line) = 0;
};

/// @return what is wrong with the file, as a sentence; nothing when all of it was read or the
///         reading was ended.
/// Throws AppError when the file cannot be read.
std::optional<std::string> ReadXml(const std::string& path, XmlSink& sink);

} // namespace terravo
