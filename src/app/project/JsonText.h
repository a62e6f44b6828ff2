// JSON as a person likes to read it.
//
// Data: the text so far. Method: members stand one a line, in the order in which they are written,
// and so do the entries of a list, each of which may be a row of numbers. Numbers are the shortest
// text that gives the same double again.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

namespace terravo {

class JsonText {
public:
    /// Begins an object or a list: the whole text, an entry of a list, or behind Key a member.
    void Begin(char bracket);
    /// Ends what was begun last; one without an entry stands on one line.
    void End();

    /// The name of the next value.
    JsonText& Key(std::string_view name);

    void Add(std::string_view text);
    void Add(const char* text) { Add(std::string_view(text)); }
    void Add(bool value) { Put(value ? "true" : "false"); }
    void Add(double value);
    void AddWhole(std::int64_t value) { Put(std::to_string(value)); }
    /// A row of numbers in brackets, on one line.
    void AddRow(std::initializer_list<double> numbers);
    /// A number in a list, with as many others on its line as there is room for.
    void AddInLine(std::int64_t value);

    /// All of it, ended by a line end.
    [[nodiscard]] std::string Take();

private:
    void Put(std::string_view value);
    void BeginEntry();

    std::string text_;
    std::string open_; // the closing brackets that are due
    bool isFirst_ = true;
    bool hasKey_ = false;
    std::size_t lineBegin_ = 0;
};

} // namespace terravo
