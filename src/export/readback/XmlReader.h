// Reads an XML file element by element.
//
// Data: one buffer of the file. Method: the events of an XML library, with the text of an element
// put together before its end is told. Documents with a type declaration are refused, so that no
// entity can grow.
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
};

/// @return what is wrong with the file, as a sentence; nothing when all of it was read or the
///         reading was ended.
/// Throws AppError when the file cannot be read.
std::optional<std::string> ReadXml(const std::string& path, XmlSink& sink);

} // namespace terravo
